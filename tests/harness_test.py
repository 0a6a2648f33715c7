#!/usr/bin/env python3
"""Checks that the tests' own programs report what is wrong: the runs of wrong.cases, and trees that
are wrong in one place."""

import os
import re
import shutil
import sys
import tempfile

import programs
from run_cases import ROOT, read_cases

CASES = os.path.join(ROOT, "tests", "wrong.cases")
COMMANDS = ["scripts/check_commands.py"]
DOCUMENTS = ["scripts/check_documents.py", "--programs", os.path.abspath(sys.argv[1])]
EXAMPLE, PROTOCOL = "docs/commands.md", "docs/driver-protocol.md"

# A check; a file, what is replaced in it and by what; what has to be reported.
WRONG = (
    (COMMANDS, "app/usage_texts.cpp", "TextOf(OidBluetoothVersion, WordAlone),", "",
     "get_fw_ver of app/command_table.cpp wants a text"),
    (COMMANDS, EXAMPLE, "### get_lp\n", "", f"{EXAMPLE}: get_lp of app/command_table.cpp wants"),
    (COMMANDS, "CHANGELOG.md", "`wtbl`", "", "CHANGELOG.md: wtbl of app/internal_rows.inc wants"),
    (COMMANDS, "README.md", "45 more", "46 more", "README.md: not 46 but 45 more commands"),
    (COMMANDS, "commands/status/status_queries.cpp", "static_assert(sizeof(MacAddressReply) == 8);", "",
     "MacAddressReply wants static_assert(sizeof(MacAddressReply) =="),
    (COMMANDS, "commands/internal/internal_commands.cpp", ".length = 4,", ".length = 265,",
     "has 265 bytes, LongestRowPayload is 264"),
    ([*DOCUMENTS, EXAMPLE], EXAMPLE, "MAC Address: 02-A8-00-5C-1D-42",
     "MAC Address: 02-A8-00-5C-1D-43", "+MAC Address: 02-A8-00-5C-1D-42"),
    ([*DOCUMENTS, EXAMPLE], EXAMPLE, "](#status)", "](#state)", "no such heading: #state"),
    ([*DOCUMENTS, PROTOCOL], PROTOCOL, "`RegAccessParam`, 8 bytes", "`RegAccessParam`, 12 bytes",
     "static assertion failed: RegAccessParam"),
    ([*DOCUMENTS, PROTOCOL], PROTOCOL, "| `0xFFFCF105` |", "| `0xFFFCF106` |",
     "OidMacAddress, 0xFFFCF105: declared in the sources only, wants a row"),
)


def check(status, text, wanted):
    if status != 1 or wanted not in text:
        sys.exit(f"not reported: {wanted}\n{text}")


def check_runs():
    done = programs.run([sys.executable, f"{ROOT}/tests/run_cases.py", "--programs", sys.argv[1],
                         CASES], text=True)
    runs = [(case, run) for case in read_cases(CASES) for run in case.runs]
    reports = dict(re.findall(r"^\S+:(\d+): .*\n((?:.+\n)+)", done.stdout, re.M))
    for case, run in runs:
        check(done.returncode, reports.get(str(run.line), done.stdout), case.title)
    check(done.returncode, done.stdout, f"0 passed, {len(runs)} failed, 0 skipped\n")


def check_long_line():
    done = programs.run([sys.executable, f"{ROOT}/tests/run_cases.py", "--programs", sys.argv[1],
                         "/dev/stdin"], text=True, input=f"== {'x' * 198}\n= 1 getreg\n")
    check(done.returncode, done.stderr, "is longer than 200 characters")


def check_trees():
    with tempfile.TemporaryDirectory() as folder:
        tree = os.path.join(folder, "tree")
        shutil.copytree(ROOT, tree, ignore=shutil.ignore_patterns("build", ".git", "__pycache__"))
        for command, path, old, new, wanted in WRONG:
            with open(os.path.join(tree, path), encoding="utf-8") as file:
                right = file.read()
            assert old in right, f"{path}: {old}"
            with open(file.name, "w", encoding="utf-8") as file:
                file.write(right.replace(old, new))
            done = programs.run([sys.executable, os.path.join(tree, command[0]), *command[1:]],
                                cwd=tree, text=True)
            check(done.returncode, done.stdout, wanted)
            with open(file.name, "w", encoding="utf-8") as file:
                file.write(right)


check_runs()
check_long_line()
check_trees()
