#!/usr/bin/env python3
"""Makes the C header for authors of drivers: requests, records and checks of their layout.

The records come from the sources of the commands, what a field means from the driver protocol.
"""

import argparse
import glob
import os
import re
import textwrap

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
PROTOCOL = "docs/driver-protocol.md"

BEGIN = """/* Requests and records of the driver of an A8000 adapter, as wlanx sends them. For C11 and C++. */
#ifndef A8000_PROTOCOL_H
#define A8000_PROTOCOL_H

#include <assert.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The device, and the one control code. The input buffer holds the request code in four bytes, the
 * output buffer is the record, in both directions. All numbers are little-endian. */
#define A8000_DEVICE "\\\\\\\\.\\\\A8000"
#define A8000_CONTROL_CODE 0x00170002U

"""
END = """
#ifdef __cplusplus
}
#endif

#endif
"""


def read(path):
    with open(os.path.join(ROOT, path), encoding="utf-8") as file:
        return file.read()


def sources():
    return "".join(read(path) for path in
                   sorted(glob.glob("commands/**/*.*", root_dir=ROOT, recursive=True)))


def rows(text):
    return [[cell.strip(" `") for cell in row.split("|")]
            for row in re.findall(r"^\| (.*) \|$", text, re.M)]


def declared_records(text):
    """The structures by their names, with numbers for the named sizes of their arrays."""
    sizes = dict(re.findall(r"^constexpr \w+ (\w+) = (\d+);", text, re.M))
    records = {m[1]: m[0] for m in re.finditer(r"^struct (\w+) {.*?^};", text, re.M | re.S)}
    return {name: re.sub(r"\[(\w+)\]", lambda m: f"[{sizes.get(m[1], m[1])}]", record)
            for name, record in records.items()}


def documented_records(text):
    """By name: the size, and a row of offset, size, name, direction and meaning for each field. One
    table has a column of offsets for each generation of a record, and their sizes in its last row."""
    records = {m[1]: (int(m[2]), [f for f in rows(m[3]) if f[0].isdigit() and len(f) == 5])
               for m in re.finditer(r"^#+ `(\w+)`, (\d+) bytes?$(.*?)(?=^#|\Z)", text, re.M | re.S)}
    head, table = re.search(r"^((?:\| in \d+ )+)\| size .*\n((?:\|.*\n)+)", text, re.M).groups()
    generations = re.findall(r"\d+", head)
    *fields, ends = rows(table)
    for i, generation in enumerate(generations):
        own = [[row[i], *row[len(generations):]] for row in fields if row[i]]
        for row in own:
            sizes = row[1].split(", ")
            row[1] = sizes[i % len(sizes)]
        records["AcpiTableQuery" + generation] = (int(ends[i]), own)
    return records


def plain(markdown):
    return re.sub(r"\[([^]]*)\]\([^)]*\)", r"\1", markdown).replace("`", "").replace("\\", "")


def comment(text, indent=""):
    yield textwrap.fill(f"{text} */", 100, initial_indent=f"{indent}/* ",
                        subsequent_indent=f"{indent} * ", break_on_hyphens=False) + "\n"


def requests(text):
    for oid, name, direction, length, payload, commands in (
            row for row in rows(text) if re.fullmatch("0x[0-9A-F]{8}", row[0]) and len(row) == 6):
        way = f"{direction}, " if direction else ""
        unit = "byte" if length == "1" else "bytes"
        yield from comment(f"{way}{length} {unit}: {plain(payload)}; sent by {plain(commands)}")
        yield f"#define {name} {oid}U\n"


def record(name, declaration, size, fields):
    notes = {field.strip("()").rpartition(".")[2]: ": ".join(filter(None, map(plain, rest)))
             for _, _, field, *rest in fields}
    yield "\n"
    for line in declaration.splitlines():
        code = re.sub(r" *//.*", "", line)
        field = re.search(r"(\w+)(?:\[\d+\])?;$", code)
        if code.strip():
            note = notes.get(field[1], "") if field else ""
            yield from comment(note, "  ") if note else ""
            code = f"}} {name};" if code == "};" else code
            yield code.replace(f"struct {name}", f"typedef struct {name}") + "\n"
    yield f'static_assert(sizeof({name}) == {size}, "{name}");\n'
    for at, _, field, *_ in fields:
        field = field.strip("()")
        yield f'static_assert(offsetof({name}, {field}) == {at}, "{name}.{field}");\n'


def header():
    text, declared = read(PROTOCOL), declared_records(sources())
    pieces = [BEGIN, *requests(text)]
    for name, (size, fields) in documented_records(text).items():
        pieces += record(name, declared[name], size, fields)
    return "".join([*pieces, END])


def main():
    parser = argparse.ArgumentParser(description=__doc__.partition("\n\n")[0])
    parser.add_argument("output", help="the header to write")
    with open(parser.parse_args().output, "w", encoding="utf-8", newline="\n") as file:
        file.write(header())


if __name__ == "__main__":
    main()
