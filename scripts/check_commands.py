#!/usr/bin/env python3
"""Names what a command lacks. Every row of the command table has a usage text, a case, a case in which
the driver refuses, its places in the documents and a line in the change log. Every record has its size
and offsets asserted. No engineering row has a longer payload than its engine has room for."""

import glob
import os
import re
import sys

from command_rows import ENGINEERING, TOOL, command_rows
from tree_files import ROOT

sys.path.insert(0, os.path.join(ROOT, "tests"))
from run_cases import read_cases  # noqa: E402

# The listing leaves them out.
UNLISTED = {
    "help", "get_mac_Add", "set_bcc", "pwrsave_mode", "pwrsave", "set_ser", "set_usb_speed",
    "get_usb_speed", "oid_len_test", "txbf", "set_bssid", "set_bssid2", "set_cmd_str",
    "get_cmd_str", "chan_pref_cfg", "twt_setup", "set_apsd",
}
SEND_NOTHING = {"help", "get_cs", "set_cs"}
TEXTS = "app/usage_texts.cpp"


def read(path):
    with open(os.path.join(ROOT, path), encoding="utf-8") as file:
        return file.read()


def names(text):
    """The first word of each text in backticks."""
    return set(re.findall(r"`(\w+)[^`\n]*`", text))


def section(text, heading):
    """The text from a heading to the next one of any level."""
    return text.partition(f"\n{heading}\n")[2].partition("\n#")[0]


def first_cells(text):
    return "\n".join(re.findall(r"^\|([^|]*)\|", text, re.M))


def places(own):
    """Yields the places that name the rows of one table: the place, the commands that it names, and what
    a command wants there."""
    if own == TOOL:
        path, name = "docs/commands.md", "wlanx"
        text = read(path)
        yield (f"{path}, list of the sections", names("\n".join(re.findall(
            r"^- \[.*\]\(#.*\):.*\n(?:  .*\n)*", text, re.M))), "the name after its section")
        yield (f'{path}, "Exit statuses"', names(first_cells(section(text, "## Exit statuses"))),
               "a row")
        yield path, set(re.findall(r"^### (\w+)$", text, re.M)), "a heading of its own"
    else:
        path, name = "docs/engineering-commands.md", "wlanx-eng"
        text = read(path)
        headings = set(re.findall(r"\w+", "\n".join(re.findall(r"^### (.*)$", text, re.M))))
        yield path, headings | names(first_cells(text)), "a row or a heading of its own"
    yield f'{path}, "Find a command"', names(section(text, "## Find a command")) | {"help"}, "a row"
    yield "CHANGELOG.md", names(read("CHANGELOG.md")), "a line"
    cases = [case for file in glob.glob("tests/cases/*.cases", root_dir=ROOT)
             for case in read_cases(os.path.join(ROOT, file))]
    for wanted, chosen, exempt in (
            ("a case that runs it", cases, set()),
            ("a case in which the driver refuses, as in refusals.cases", filter(refuses, cases),
             SEND_NOTHING)):
        lower = {run.words[0].lower() for case in chosen for run in case.runs
                 if run.words and run.edition in (name, "wlanx-eng")}
        yield ("tests/cases", {row for _, row in command_rows(own) if row.lower() in lower} | exempt,
               wanted)


def refuses(case):
    """Whether the scenario refuses requests: by an error, or because it has no rule."""
    requests = [line for line in case.lines if line.startswith("0x")]
    return any("error=" in line for line in requests) or (case.lines and not requests)


def record_problems():
    """Names records of requests without an asserted size or offset, and rows that are too long."""
    sources = {path: read(path) for path in glob.glob("commands/**/*.*", root_dir=ROOT, recursive=True)
               if path.endswith((".cpp", ".h"))}
    every = "".join(sources.values())
    records = dict(re.findall(r"^struct (\w+) \{(.*?)^\};", every, re.M | re.S))
    longest = int(re.search(r"LongestRowPayload = (\d+)", every)[1])
    for path, text in sources.items():
        sent = set(re.findall(r"OidRequest\([^,;]+, &?(\w+)[,)]", text))
        types = {kind for name in sent for kind in re.findall(rf"\b([A-Z]\w+)[*&]? {name}\b", text)}
        for kind in sorted(types & set(records)):
            fields = re.findall(r"^  .*?(\w+)(?:\[.*?\])?;", records[kind], re.M)
            several = len([field for field in fields if not re.match("unused|reserved", field)]) > 1
            for assertion in ("sizeof({}) ==", "offsetof({}, ")[:2 if several else 1]:
                if "sizeof(" not in records[kind] and \
                        f"static_assert({assertion.format(kind)}" not in every:
                    yield f"{path}: {kind} wants static_assert({assertion.format(kind)}... after it"
        for row, length in re.findall(r"InternalRow (\w+) = \{[^;]*?\.length = (\d+)", text):
            if int(length) > longest:
                yield f"{path}: {row} has {length} bytes, LongestRowPayload is {longest}"


def main():
    problems, total = [], 0
    texts = re.findall(r'^ *TextOf\((\w+),[^"\n]*(?:"(\w+)")?\)', read(TEXTS), re.M)
    for own in (TOOL, ENGINEERING):
        found = command_rows(own)
        total += len(found)
        for where, there, wanted in places(own):
            problems += [f"{where}: {name} of {own} wants {wanted}"
                         for _, name in found if name not in there]
        for key, name in found:
            listed = any(key == of and only in ("", name) for of, only in texts)
            if not listed and name not in UNLISTED:
                problems.append(f"{TEXTS}: {name} of {own} wants a text, TextOf({key}, ...)")
            elif listed and name in UNLISTED:
                problems.append(f"scripts/check_commands.py: {name} has a text, it is not UNLISTED")
    for path in ["README.md", *sorted(glob.glob("docs/*.md", root_dir=ROOT))]:
        for count, more in re.findall(r"\b(\d+)( more|) commands\b", read(path)):
            right = len(command_rows(ENGINEERING if more else TOOL))
            if int(count) != right:
                problems.append(f"{path}: not {count} but {right}{more} commands")
    problems += record_problems()
    print("\n".join(problems + [f"{total} commands, {len(problems)} problems"]))
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
