#!/usr/bin/env python3
"""Holds the documents to the product: runs their examples, compares their tables with the sources
and follows their links.

A fenced block with lines that begin with "$ " is an example: a shell runs each such line, and what
stands below it is what it prints, byte for byte. "\\xHH" and "\\r" stand for a byte, "\\c" at the end
of a line for a missing line end; the banner may be left out. A block with a file name behind its
language ("```text a.a8000") is put into that file. The examples of a document share a folder.
"```cases" are run as cases, "```diff" have to fit the tree.
"""

import argparse
import glob
import os
import re
import subprocess
import sys
import tempfile

from run_cases import BANNER, ROOT, TRACED, differences, lines_of, unescape

FENCE = re.compile(r"^```(\w*) ?([\w.-]*)\n(.*?)^```$", re.M | re.S)
ROW = re.compile(r"^\| (.*) \|$", re.M)
PROTOCOL = "docs/driver-protocol.md"


def read(path):
    with open(os.path.join(ROOT, path), encoding="utf-8", newline="") as file:
        return file.read()


def rows(text):
    return [[cell.strip(" `") for cell in row.split("|")] for row in ROW.findall(text)]


def as_printed(output):
    text = re.sub(rb"[^\t\n -\[\]-~]", lambda m: b"\\x%02X" % ord(m[0]), output).decode()
    text = text.replace("\\x0D", "\\r").replace("\\x5C", "\\\\")
    return text if text.endswith("\n") or not text else text + "\\c\n"


class Session:
    """Runs a document's examples and collects the requests that reached the adapter."""

    def __init__(self, programs, folder):
        self.programs = programs
        self.folder = folder
        self.status = 0
        self.problems = ""
        self.requests = set()
        os.symlink(os.path.join(ROOT, "simulator"), os.path.join(folder, "simulator"))
        self.environment = {k: v for k, v in os.environ.items() if not k.startswith("A8000_")}
        self.environment.update(PATH=programs + os.pathsep + os.environ["PATH"], TZ="UTC",
                                A8000_TRACE="trace")

    def run(self, command):
        command = command.replace("scripts/run --eng ", "wlanx-eng ")
        command = command.replace("scripts/run ", "wlanx ")
        done = subprocess.run(
            ["sh", "-c", f"(exit {self.status})\n{command}"], cwd=self.folder,
            env=self.environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT)
        self.status = done.returncode
        for path in glob.glob(os.path.join(self.folder, "*trace")):
            with open(path, "rb") as file:
                self.requests |= {(m[1].decode(), int(m[2])) for m in TRACED.finditer(file.read())}
        return done.stdout

    def visit(self, fence):
        """Runs a block; returns it as it should be."""
        language, name, text = fence.groups()
        if language == "cases":
            name = "document.cases"
        if name:
            with open(os.path.join(self.folder, name), "w", encoding="utf-8") as file:
                file.write(text)
        if language == "cases":
            runner = os.path.join(ROOT, "tests", "run_cases.py")
            output = self.run(f"'{sys.executable}' '{runner}' --programs '{self.programs}' {name}")
            self.problems += output.decode() if self.status else ""
            return fence[0]
        right = ""
        for piece in re.split(r"^(?=\$ )", text, flags=re.M):
            command, _, shown = piece.partition("\n")
            if not command.startswith("$ "):
                right += piece
                continue
            output = self.run(command[2:])
            expected = unescape(shown.replace("\\c\n", ""))
            if not BANNER.match(expected):
                output = BANNER.sub(b"", output, count=1)
            if output != expected:
                self.problems += command + "\n"
                self.problems += differences("", lines_of(expected), lines_of(output))
            right += command + "\n" + as_printed(output)
        return f"```{language}{' ' + name if name else ''}\n{right}```"


def check_examples(path, programs, update, requests):
    text = read(path)
    with tempfile.TemporaryDirectory() as folder:
        session = Session(programs, folder)
        right = FENCE.sub(session.visit, text)
    requests |= session.requests
    if not update:
        return session.problems
    with open(os.path.join(ROOT, path), "w", encoding="utf-8", newline="") as file:
        file.write(right)
    return ""


def check_patch(path):
    """The changes that a document shows fit the tree, or have been made."""
    patch = "".join(f[2] for f in FENCE.findall(read(path)) if f[0] == "diff")
    results = [subprocess.run(["git", "apply", "--check", *reverse], input=patch, cwd=ROOT,
                              capture_output=True, text=True) for reverse in ([], ["-R"])]
    return "" if not patch or 0 in [r.returncode for r in results] else results[0].stderr


def slugs(text):
    headings = re.findall(r"^#+ (.*)$", FENCE.sub("", text), re.M)
    return {re.sub(r"[^\w -]", "", h.lower()).replace(" ", "-") for h in headings}


def check_links(path):
    problems = ""
    for target in re.findall(r"\]\(([^)\s]+)\)", FENCE.sub("", read(path))):
        name, _, anchor = target.partition("#")
        file = os.path.normpath(os.path.join(os.path.dirname(path), name)) if name else path
        if not os.path.exists(os.path.join(ROOT, file)):
            problems += f"no such file: {target}\n"
        elif anchor and anchor not in slugs(read(file)):
            problems += f"no such heading: {target}\n"
    return problems


def check_records(text, sources):
    """Lets the compiler compare the record tables with the structures that the sources declare."""
    problems, lines = "", ["#include <cstddef>", "#include <cstdint>"]
    lines += sorted(set(re.findall(r"^constexpr \w+ \w+ = \d+;", sources, re.M)))
    declared = {m[1]: m[0] for m in re.finditer(r"^struct (\w+) {.*?^};", sources, re.M | re.S)}
    records = {m[1]: (m[2], rows(m[3])) for m in re.finditer(
        r"^#+ `(\w+)`, (\d+) bytes?$(.*?)(?=^#|\Z)", text, re.M | re.S)}
    for name in re.findall(r"static_assert\(sizeof\((\w+)\) ==", sources):
        if name in declared and name not in records:
            problems += f"not documented: {name}\n"
    for name, (size, fields) in records.items():
        lines += [declared[name], f"static_assert(sizeof({name}) == {size}, \"{name}\");"]
        end = 0
        for at, length, field, *_ in (f for f in fields if f[0].isdigit() and len(f) == 5):
            if int(at) > end:
                problems += f"{name}: nothing is said about the bytes from {end}\n"
            end = max(end, int(at) + int(length))
            field = field.strip("()")
            lines.append(f"static_assert(offsetof({name}, {field}) == {at} && "
                         f"sizeof((({name}*)0)->{field}) == {length}, \"{name}.{field}\");")
        if end != int(size):
            problems += f"{name}: the fields end at {end}\n"
    done = subprocess.run(["c++", "-std=c++20", "-fsyntax-only", "-Wno-invalid-offsetof", "-xc++",
                           "-"], input="\n".join(lines), capture_output=True, text=True)
    return problems + "".join(re.findall(r"error: (.*\n)", done.stderr))


def check_constants(text, sources):
    """Compares table rows that begin with a constant's name with its numbers."""
    problems, values = "", {}
    for name, value in re.findall(r"^constexpr \w+ (\w+At|\w+Length|Layout\d+|Zw\w+) = \{?([^;}]*)",
                                  sources, re.M):
        numbers = re.findall(r"\b\d+\b(?: \+ \d+)?", value.replace("TableAt", "16"))
        values.setdefault(name, []).append([sum(map(int, n.split(" + "))) for n in numbers])
    for name, *cells in rows(text):
        numbers = [int(cell) for cell in cells if cell.isdigit()]
        if name in values and not any(all(map(int.__eq__, numbers, v)) for v in values[name]):
            problems += f"{name}: {numbers}, in the sources {values[name]}\n"
    return problems


def check_oids(text, requests):
    problems, known, lengths = "", set(), set()
    for oid, name, _, length, *_ in (r for r in rows(text) if r[0].startswith("0x")):
        known.add((name, oid))
        lengths |= {(oid[2:], n if n == "any" else int(n)) for n in re.findall(r"\d+|any", length)}
    declared = re.findall(r"constexpr uint32_t (Oid\w+) = (0x\w+);",
                          read("channel/oid.h") + read("commands/internal/internal_oid.h"))
    for name, oid in sorted(known ^ set(declared)):
        problems += f"in one place only: {name} {oid}\n"
    for oid, length in sorted(requests):
        if not lengths & {(oid, length), (oid, "any")}:
            problems += f"no row for 0x{oid} with {length} bytes\n"
    for oid, length in lengths:
        if not {r for r in requests if r[0] == oid and length in ("any", r[1])}:
            problems += f"no example sends 0x{oid} with {length} bytes\n"
    return problems


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--programs", required=True, help="the folder of the built programs")
    parser.add_argument("--update", action="store_true",
                        help="put what the examples print into the documents")
    options = parser.parse_args()
    programs = os.path.abspath(options.programs)
    requests, failed = set(), False
    for path in sorted(glob.glob("*.md", root_dir=ROOT) + glob.glob("docs/*.md", root_dir=ROOT)):
        problems = check_examples(path, programs, options.update, requests)
        problems += check_links(path) + check_patch(path)
        failed = failed or bool(problems)
        if problems:
            print(f"{path}:\n{problems}")
    text = read(PROTOCOL)
    files = glob.glob(os.path.join(ROOT, "commands/**/*.h"), recursive=True)
    files += glob.glob(os.path.join(ROOT, "commands/**/*.cpp"), recursive=True)
    sources = "".join(map(read, files))
    problems = check_records(text, sources) + check_constants(text, sources)
    problems += check_oids(text, requests)
    if problems:
        print(f"{PROTOCOL}:\n{problems}")
    return 1 if failed or problems else 0


if __name__ == "__main__":
    sys.exit(main())
