#!/usr/bin/env python3
"""Compares the documents with the product: runs their examples, compares their tables with the sources
and follows their links.

A fenced block with lines that begin with "$ " is an example. A shell runs each such line, which has to
print the lines below it, byte for byte. "\\xHH" and "\\r" stand for a byte, "\\c" at the end of a line
for a missing line end. The banner may be left out. A line "..." stands for one or more lines. A block
with a file name after its language ("```text a.a8000") is written into that file. The examples of a
document share a folder. "```cases" are run as cases; "```diff" have to fit the tree. The form of a
document for a package may hold nothing that the package's readers do not have.
"""

import argparse
import glob
import os
import re
import shlex
import subprocess
import sys
import tempfile

from tree_files import ROOT

sys.path += [os.path.join(ROOT, "tests"), os.path.join(ROOT, "packaging")]
import pages  # noqa: E402
import programs  # noqa: E402
from protocol_header import declared_records, documented_records, header, rows  # noqa: E402
from run_cases import BANNER, TRACED, differences, lines_of, unescape  # noqa: E402

FENCE = re.compile(r"^```(\w*) ?([\w.-]*)\n(.*?)^```$", re.M | re.S)
PROTOCOL = "docs/driver-protocol.md"
# What readers of each package cannot use; the programs that they can type.
UNIX = r"\$\?|^\$ |A8000_SCENARIO|build/linux|scripts/|tests/|simulator/\w|\bsed\b|\| (?:tail|head|grep)|```(?:sh|cases)"
FOREIGN = {"program": re.compile(UNIX + "|wlanx-eng|a8000\\w|simulat|scenario", re.M),
           "engineering": re.compile(UNIX + "|^wlanx ", re.M)}
TYPED = {"program": "wlanx wlanx-json echo type",
         "engineering": "wlanx-eng wlanx-json a8000ctl echo type set copy findstr"}


def read(path):
    with open(os.path.join(ROOT, path), encoding="utf-8", newline="") as file:
        return file.read()


def write(path, text):
    with open(os.path.join(ROOT, path), "w", encoding="utf-8", newline="") as file:
        file.write(text)


def fits(expected, output):
    """Whether an example prints what the document shows. A line "..." stands for lines, a quoted ... for
    any text."""
    pattern = rb"".join(rb"(?:.*\n|.+\Z)+" if line.rstrip() == b"..."
                        else re.escape(line).replace(rb'"\.\.\."', rb'"[^"]*"')
                        for line in expected.splitlines(keepends=True))
    return re.fullmatch(pattern, output) is not None


def as_printed(output):
    text = re.sub(rb"[^\t\n -\[\]-~]", lambda m: b"\\x%02X" % ord(m[0]), output).decode()
    text = text.replace("\\x0D", "\\r").replace("\\x5C", "\\\\")
    return text if text.endswith("\n") or not text else text + "\\c\n"


class Session:
    """Runs a document's examples and collects the requests that they send."""

    def __init__(self, tools, folder):
        self.tools, self.folder = tools, folder
        self.status, self.problems, self.requests = 0, "", set()
        os.symlink(os.path.join(ROOT, "simulator"), os.path.join(folder, "simulator"))
        self.environment = {k: v for k, v in os.environ.items() if not k.startswith("A8000_")}
        self.environment.update(PATH=tools + os.pathsep + os.environ["PATH"], TZ="UTC",
                                A8000_TRACE="trace")

    def run(self, command):
        command = command.replace("scripts/run --eng", "wlanx-eng").replace("scripts/run", "wlanx")
        done = programs.run(["sh", "-c", f"(exit {self.status})\n{command}"], cwd=self.folder,
                            env=self.environment, stderr=subprocess.STDOUT)
        self.status = done.returncode
        for path in glob.glob(os.path.join(self.folder, "*trace")):
            trace = read(path).encode()
            self.requests |= {(m[1].decode(), int(m[2])) for m in TRACED.finditer(trace)}
        return done.stdout

    def visit(self, fence):
        """Runs a block; returns it as it should be."""
        language, name, text = fence.groups()
        if language == "cases":
            write(os.path.join(self.folder, "document.cases"), text)
            output = self.run(shlex.join([sys.executable, f"{ROOT}/tests/run_cases.py", "--programs",
                                          self.tools, "document.cases"]))
            self.problems += output.decode() if self.status else ""
            return fence[0]
        if name:
            write(os.path.join(self.folder, name), text)
        right = fence[0].partition("\n")[0] + "\n"
        for piece in re.split(r"^(?=\$ )", text, flags=re.M):
            command, _, shown = piece.partition("\n")
            if not command.startswith("$ "):
                right += piece
                continue
            output = self.run(command[2:])
            expected = unescape(shown.replace("\\c\n", ""))
            if not BANNER.match(expected):
                output = BANNER.sub(b"", output, count=1)
            if fits(expected, output):
                right += piece
                continue
            self.problems += f"{command}\n"
            self.problems += differences("", lines_of(expected), lines_of(output))
            right += f"{command}\n{as_printed(output)}"
        return right + "```"


def slugs(text):
    headings = re.findall(r"^#+ (.*)$", FENCE.sub("", text), re.M)
    return {re.sub(r"[^\w -]", "", h.lower()).replace(" ", "-") for h in headings}


def check_scenarios(text, session):
    """A table of scenarios has a row for each file: its name, its first line, a command that it answers."""
    problems, named = "", [row for row in rows(text) if row[0].endswith(".a8000")]
    for name, sentence, command in named:
        path = f"simulator/scenarios/{name}"
        first = read(path).partition("\n")[0].removeprefix("# ")
        if sentence != first:
            problems += f"{name}: {first}\n"
        session.run(f"A8000_SCENARIO={path} {command}")
        if b"# no" in read(os.path.join(session.folder, "trace")).encode():
            problems += f"{name} does not answer {command}\n"
    there = glob.glob("*.a8000", root_dir=os.path.join(ROOT, "simulator/scenarios"))
    return problems + "".join(f"in one place only: {name}\n"
                              for name in {row[0] for row in named} ^ set(there) if named)


def check_links(path, text):
    problems = ""
    for target in re.findall(r"\]\(([^)\s]+)\)", FENCE.sub("", text)):
        name, _, anchor = target.partition("#")
        file = os.path.normpath(os.path.join(os.path.dirname(path), name)) if name else path
        if not os.path.exists(os.path.join(ROOT, file)):
            problems += f"no such file: {target}\n"
        elif anchor and anchor not in slugs(read(file)):
            problems += f"no such heading: {target}\n"
    return problems


def check_readers(edition, text):
    """A document of a package holds nothing that its readers do not have."""
    problems = "".join(f"not for readers of the package {edition}: {found[0]}\n"
                       for found in FOREIGN[edition].finditer(text))
    typed = TYPED[edition].split() + [f[1].split(".")[0] for f in FENCE.findall(text)]
    return problems + "".join(f"cannot be typed with the package {edition}: {word}\n"
                              for word in re.findall(r"^> (\S+)", text, re.M)
                              if word not in typed)


def check_patch(text):
    """The changes that a document shows fit the tree, or have been made."""
    patch = "".join(f[2] for f in FENCE.findall(text) if f[0] == "diff")
    # In another repository git would skip all that lies outside of the current folder.
    alone = {**os.environ, "GIT_CEILING_DIRECTORIES": os.path.dirname(ROOT)}
    results = [programs.run(["git", "apply", "--unidiff-zero", "--check", *reverse], cwd=ROOT,
                            input=patch, env=alone, text=True)
               for reverse in ([], ["-R"])]
    if not patch or 0 in [result.returncode for result in results]:
        return ""
    return results[0].stderr + """Each block for a file that is named here needs a line of context that the file
has now, before or after the lines that it adds. The number after @@ - may be about right.
"""


def compile_errors(text, *options):
    done = programs.run(["c++", "-fsyntax-only", *options, "-"], input=text, text=True,
                        env={**os.environ, "LC_ALL": "C"})
    return "".join(re.findall(r"error: (.*\n)", done.stderr)) or done.stderr


def check_records(text, sources):
    """Lets the compiler compare the record tables with the structures that the sources declare."""
    problems, lines = "", ["#include <cstddef>", "#include <cstdint>"]
    declared, records = declared_records(sources), documented_records(text)
    asserted = set(re.findall(r"static_assert\(sizeof\((\w+)\) ==", sources))
    for name in sorted((asserted & set(declared)) - set(records)):
        problems += f"not documented: {name}\n"
    for name, (size, fields) in records.items():
        lines += [declared[name], f'static_assert(sizeof({name}) == {size}, "{name}");']
        end = 0
        for at, length, field, *_ in fields:
            if int(at) > end:
                problems += f"{name}: nothing is said about the bytes from {end}\n"
            end = max(end, int(at) + int(length))
            field = field.strip("()")
            lines.append(f"static_assert(offsetof({name}, {field}) == {at} && "
                         f'sizeof((({name}*)0)->{field}) == {length}, "{name}.{field}");')
        if end != size:
            problems += f"{name}: the fields end at {end}\n"
    return problems + compile_errors("\n".join(lines), "-std=c++20", "-Wno-invalid-offsetof", "-xc++")


def check_header():
    """The C header compiles as both languages, with its checks of every size and offset."""
    return "".join(compile_errors(header(), "-Wall", "-Wextra", "-Werror", *language)
                   for language in (("-xc", "-std=c11"), ("-xc++", "-std=c++11")))


def oid_rows(text):
    """The rows of the table of OIDs: OID, name, direction, lengths, payload, command."""
    return [row for row in rows(text) if row[0].startswith("0x")]


def check_redaction(text):
    """Compares the rows of redaction with the tables of OIDs and records. Each OID has a row. The row's
    stretches begin and end with fields, and together hold each field that has a meaning. The row's
    comment names the record, and the first and last field of each stretch that is not kept whole."""
    path = "simulator/redact/payload_rows.h"
    problems, found = "", set()
    codes = {row[1]: (row[0], row[4]) for row in oid_rows(text)}
    records = documented_records(text)
    for above, oid, stated, body, beside in re.findall(
            r"((?:^ +//.*\n)*)^ +\{(Oid\w+),\s*(\w+),\s*\{([^/;]*?)\}\},(?: +//(.*))?$",
            read(path), re.M):
        found.add((codes[oid][0], stated.replace("AnyLength", "any")))
        record, _, names = re.sub(r"\s*//", "", above or beside).strip().partition(": ")
        size, fields = records.get(record, (0, []))
        fields = [(int(at), int(at) + int(length), field) for at, length, field, *_ in fields]
        stretches = [(int(at), int(at) + int(count), content) for at, count, content in
                     re.findall(r"\{(\d+), (\d+), (\w+)\}", body)]
        private = []
        for start, end, content in stretches if fields else ():
            first = [name for at, _, name in fields if at == start]
            last = [name for _, to, name in fields if to == end]
            if not first or not last:
                problems += f"{path}: {oid}: no fields are from {start} to {end}\n"
            elif content != "Keep":
                private.append(first[0] + (f" to {last[-1]}" if last[-1] not in first else ""))
        if fields and (str(size) != stated or ", ".join(private) != names):
            problems += f"{path}: {oid}: {record}: {', '.join(private)} in {size} bytes\n"
        problems += "".join(
            f"{path}: {oid}: {name} is in no stretch\n" for at, to, name in fields
            if not re.search(r"^\(|eserved", name)
            and not any(start <= at and to <= end for start, end, _ in stretches))
        if "](" in codes[oid][1] and not (fields and record.startswith(
                re.search(r"(\w+)\]", codes[oid][1])[1])):
            problems += f"{path}: {oid} wants its record: {codes[oid][1]}\n"
    wanted = {(row[0], n) for row in oid_rows(text) for n in re.findall(r"\d+|any", row[3])}
    return problems + "".join(f"{path}: a row for {entry}\n" for entry in sorted(wanted ^ found))


def source_values(name, sources):
    """The values of a name in the sources: the pairs of number and text of an array, or the numbers of
    each constant of that name."""
    array = re.search(rf"\b{name}\[\](?:\[\d+\])? = \{{\s*(.*?)\}};", sources, re.S)
    if array:
        numbers = re.findall(r"\{(0x[0-9A-F]{8}), ", array[1])
        names = [text.removesuffix("\\n").strip() for text in re.findall(r'"([^"]*)"', array[1])]
        return set(zip(numbers or map(str, range(len(names))), names, strict=True))
    constants = re.findall(rf"^constexpr \w+ {name} = \{{?([^;}}]*)", sources, re.M)
    return [[sum(map(int, number.split(" + "))) for number in re.findall(
        r"\b\d+\b(?: \+ \d+)?", value.replace("TableFieldsAt", "16"))] for value in constants]


def check_values(text, sources):
    """Compares the table after "<!-- sources: NAME... -->" with the sources. If NAME is an array, its
    pairs are the table's neighbouring cells. Otherwise each row has the numbers of the next NAME."""
    problems = ""
    for names, table in re.findall(r"^<!-- sources: (.*) -->\n\n.*\n((?:\|.*\n)+)", text, re.M):
        names, body = names.split(), rows(table)
        values = [source_values(name, sources) for name in names]
        if isinstance(values[0], set):
            cells = {pair for row in body for pair in zip(row, row[1:]) if pair[0][:1].isdigit()}
            problems += "".join(f"{names[0]}: in one place only: {pair}\n" for pair in values[0] ^ cells)
            continue
        for name, row, there in zip(names, body, values, strict=True):
            numbers = [int(cell) for cell in row if cell.isdigit()]
            if not numbers or not any(all(map(int.__eq__, numbers, value)) for value in there):
                problems += f"{name}: {numbers}, in the sources {there}\n"
    return problems


def check_oids(text, requests):
    table = oid_rows(text)
    declared = re.findall(r"constexpr uint32_t (Oid\w+) = (0x\w+);",
                          read("channel/oid.h") + read("commands/internal/internal_oid.h"))
    lengths = {(row[0][2:], n) for row in table for n in re.findall(r"\d+|any", row[3])}
    sent = {(oid, "any" if (oid, "any") in lengths else str(n)) for oid, n in requests}
    return "".join(
        [f"{name}, {code}: in this table only, not in channel/oid.h or commands/internal/internal_oid.h\n"
         for name, code in {(r[1], r[0]) for r in table} - set(declared)]
        + [f"{name}, {code}: declared in the sources only, wants a row in the table of OIDs here\n"
           for name, code in set(declared) - {(r[1], r[0]) for r in table}]
        + [f"sent, but not in the table: {entry}\n" for entry in sent - lengths]
        + [f"in no example: {entry}\n" for entry in lengths - sent])


def main():
    parser = argparse.ArgumentParser(description=__doc__.partition("\n\n")[0])
    parser.add_argument("--programs", required=True, help="the folder of the built programs")
    parser.add_argument("--update", action="store_true",
                        help="write the examples' output into the documents")
    parser.add_argument("documents", nargs="*", help="only these")
    options = parser.parse_args()
    problems, requests = {}, set()
    sources = "".join(read(path) for path in glob.glob(f"{ROOT}/commands/**/*.*", recursive=True))
    packages = {m[1]: m[2].split() + ["CHANGELOG.md"] for m in re.finditer(
        r"documents\((\w+)_documents ([^)]*)\)", read("packaging/CMakeLists.txt"))}
    documents = sorted(glob.glob("*.md", root_dir=ROOT) + glob.glob("docs/*.md", root_dir=ROOT))
    for path in options.documents or documents:
        text = read(path)
        with tempfile.TemporaryDirectory() as folder:
            session = Session(os.path.abspath(options.programs), folder)
            right = FENCE.sub(session.visit, text)
            problems[path] = check_scenarios(text, session)
        requests |= session.requests
        problems[path] += check_links(path, text) + check_patch(text) + check_values(text, sources)
        for edition in packages:
            if os.path.basename(path) in packages[edition]:
                problems[path] += check_readers(edition, pages.in_package(text, "", {}, edition))
        if options.update:
            write(path, right)
        else:
            problems[path] += session.problems
    if PROTOCOL in problems:
        text = read(PROTOCOL)
        problems[PROTOCOL] += check_records(text, sources) + check_header()
        problems[PROTOCOL] += check_oids(text, requests) + check_redaction(text)
    for path, found in problems.items():
        print(f"{path}:\n{found}" if found else "", end="")
    return 1 if any(problems.values()) else 0


if __name__ == "__main__":
    sys.exit(main())
