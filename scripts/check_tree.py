#!/usr/bin/env python3
"""Checks which layer includes which, and how long functions and files are."""

import os
import re
import sys

from tree_files import ROOT, tree_files

# The layers from top to bottom, and what each may include besides itself.
LAYERS = {
    "app": ["commands", "channel", "app/console", "platform"],
    "commands": ["channel", "app/console"],
    "channel": ["app/console", "device"],
    "app/console": ["platform"],
    "device": ["platform", "simulator"],
    "platform": [],
    "json": [],  # a program of its own
    "simulator": [],
    "simulator/redact": ["simulator"],
    "simulator/windows": ["simulator", "simulator/redact"],
}
# Includes that are allowed though the layers forbid them.
ALLOWED = {
    ("commands", "platform/clock.h"),
    ("app", "version.h"),                      # generated, like the next one
    ("simulator", "builtin_scenario_text.h"),
    ("simulator", "app/console/digit.h"),      # headers alone, this and the next ones
    ("simulator", "channel/oid.h"),
    ("simulator/redact", "channel/oid.h"),
    ("simulator/redact", "commands/internal/internal_oid.h"),
}
UNBOUND = ("tests", "fuzz")  # may include everything

CPP = (".c", ".cc", ".cpp", ".h", ".inc")
LONGEST_FUNCTION = 60
LONGEST_FILE = 500  # besides its tables and records


def layer_of(path):
    return max((layer for layer in LAYERS if path.startswith(layer + "/")), key=len, default=path)


def include_problems(path, text):
    if path.split("/")[0] in UNBOUND:
        return
    own = layer_of(path)
    for number, line in enumerate(text.splitlines(), 1):
        found = re.match(r'\s*#include "([^"]+)"', line)
        if not found:
            continue
        target = found[1]
        layer = layer_of(target)
        if layer == own or layer in LAYERS.get(own, []):
            continue
        if not {(who, what) for who in (path, own) for what in (target, layer)} & ALLOWED:
            yield f"{path}:{number}: {own} must not include {target}"


def blocks(lines):
    """The blocks in braces of a C++ text: kind, number of the first line, number of lines. As clang-format
    lays it out, a block ends with the next line that begins with a brace."""
    start = None
    for number, line in enumerate(lines, 1):
        if start is None and line.endswith("{") and not re.match(r'namespace|extern "C" {', line):
            start, kind = number, "table" if line.endswith("= {") else "function"
        elif start is not None and line.startswith("}"):
            if kind == "function" and line.startswith("};"):
                kind = "record"
            yield kind, start, number - start + 1
            start = None


def length_problems(path, text):
    lines = text.splitlines()
    code = len(lines)
    for kind, number, length in blocks(lines) if path.endswith(CPP) else ():
        if kind != "function":
            code -= length
        elif length > LONGEST_FUNCTION:
            yield f"{path}:{number}: a function of {length} lines, at most {LONGEST_FUNCTION}"
    if code > LONGEST_FILE:
        yield f"{path}: {code} lines besides tables and records, at most {LONGEST_FILE}"


def main():
    problems, files = [], 0
    for path in tree_files():
        if not re.search(r"\.(c|cc|cpp|h|inc|py|cmake|cases)$", path):
            continue
        files += 1
        text = open(os.path.join(ROOT, path), encoding="utf-8").read()
        if path.endswith(CPP):
            problems += include_problems(path, text)
        problems += length_problems(path, text)
    print("\n".join(problems + [f"{files} files, {len(problems)} problems"]))
    return 1 if problems or not files else 0


if __name__ == "__main__":
    sys.exit(main())
