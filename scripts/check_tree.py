#!/usr/bin/env python3
"""Checks what no compiler checks: which layer includes which, and how long files are."""

import os
import re
import subprocess
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))

# What each layer may include besides itself, from the top to the bottom.
LAYERS = {
    "app": ["commands", "channel", "app/console", "platform"],
    "commands": ["channel", "app/console"],
    "channel": ["app/console"],
    "app/console": ["platform"],
    "platform": [],
    "simulator": [],
    "simulator/windows": ["simulator"],
}
# Single includes that the layers do not allow.
ALLOWED = {
    ("commands", "platform/clock.h"),
    ("channel/driver_channel.h", "platform/device_io.h"),
    ("platform/simulated_device.cpp", "simulator"),
    ("simulator", "builtin_scenario_text.h"),  # generated
}
UNBOUND = ("tests", "fuzz")  # may include everything

LONGEST = 500
DATA_TABLES = {"app/usage_texts.cpp", "commands/internal/lmac_wtbl_fields.cpp"}


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


def main():
    listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], cwd=ROOT,
                            capture_output=True, text=True, check=True).stdout.split("\n")
    problems, files = [], 0
    for path in listed:
        full = os.path.join(ROOT, path)
        if not re.search(r"\.(c|cc|cpp|h|inc|py|cmake|cases)$", path) or not os.path.exists(full):
            continue
        files += 1
        text = open(full, encoding="utf-8").read()
        if path.endswith((".c", ".cc", ".cpp", ".h", ".inc")):
            problems += include_problems(path, text)
        length = text.count("\n")
        if length > LONGEST and path not in DATA_TABLES:
            problems.append(f"{path}: {length} lines, at most {LONGEST} are allowed")
    print("\n".join(problems + [f"{files} files, {len(problems)} problems"]))
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
