#!/usr/bin/env python3
"""Runs the documents' PowerShell lines: with an adapter, with one that refuses everything, and without a
driver. Completes the same lines as the test of bash's completions.

A block "```powershell NAME" is a script. The document has a table with a row for each NAME and a column
for each case. A cell has the lines that the script prints, in backticks, or "nothing"."""

import glob
import os
import re
import subprocess
import sys
import tempfile

from tree_files import ROOT

sys.path.insert(0, os.path.join(ROOT, "tests"))
from completions_test import WORDS, read  # noqa: E402
from run_cases import BANNER  # noqa: E402

CASES = ["", "close ok\n", "open error=2\n"]
PARSE = """$errors = $null
[void][System.Management.Automation.Language.Parser]::ParseInput({text}, [ref]$null, [ref]$errors)
$errors.Message
"""


def quoted(text):
    return "'" + text.replace("'", "''") + "'"


def run(pwsh, folder, pieces, **more):
    """The output of each piece of PowerShell, with its errors. A piece that fails does not end the next."""
    session = ""
    for number, text in enumerate(pieces):
        with open(f"{folder}/{number}.ps1", "w") as file:
            file.write(text)
        session += f"& ./{number}.ps1 *>&1 | Out-String -Stream -Width 500\n'[next]'\n"
    with open(f"{folder}/session.ps1", "w") as file:
        file.write(session)
    done = subprocess.run([pwsh, "-NoProfile", "-NonInteractive", "-File", "session.ps1"], cwd=folder,
                          env={**os.environ, "NO_COLOR": "1", "HOME": folder, **more}, timeout=300,
                          stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    printed = BANNER.sub(b"", done.stdout).decode().replace("\r", "").split("[next]\n")
    assert len(printed) == len(pieces) + 1 and not printed.pop(), done.stdout.decode()
    return printed


def check_scripts(pwsh, folder, text):
    scripts = dict(re.findall(r"^```powershell (\S+)\n(.*?)^```", text, re.M | re.S))
    assert scripts and len(scripts) == text.count("```powershell"), "a block has no name"
    shown = {name: re.split(r" +\| +", cells) for name, cells in
             re.findall(r"^\| `(\w+\.ps1)` \| (.*) \|$", text, re.M)}
    for column, scenario in enumerate(CASES):
        with open(f"{folder}/scenario", "w") as file:
            file.write(scenario)
        more = {"A8000_SCENARIO": "scenario"} if scenario else {}
        for name, printed in zip(scripts, run(pwsh, folder, scripts.values(), **more), strict=True):
            expected = re.findall("`([^`]*)`", shown[name][column])
            assert expected or shown[name][column] == "nothing", name
            if [line.strip() for line in printed.splitlines()] != expected:
                yield f"{name} prints, with the scenario {scenario!r}:\n{printed}"


def check_lines(pwsh, folder, texts):
    """Single lines print no error. Those that only Windows can run are only parsed."""
    lines, parsed = [], []
    for text in texts:
        lines += re.findall(r"^\.\\wlanx.*$", text, re.M)
        lines += re.findall(r"`(\.\\wlanx[^`]*|\$env:[^`]*)`", text)
        parsed += re.findall(r"`(\. C:[^`]*|(?:Set-ExecutionPolicy|Unblock-File)[^`]*)`", text)
        if "In an elevated PowerShell" in text:
            parsed += re.findall("(?:^    .*\n)+", text, re.M)
    assert lines and parsed
    runs = lines + [PARSE.format(text=quoted(line)) for line in parsed]
    for line, printed in zip(lines + parsed, run(pwsh, folder, runs), strict=True):
        if re.search(r"\.ps1:\d", printed) or (line in parsed and printed):
            yield f"{line}:\n{printed}"


def check_completions(pwsh, folder):
    files = [f". {quoted(path)}\n" for path in glob.glob(f"{ROOT}/completions/*.ps1")]
    ask = "".join(files) + "(TabExpansion2 {0} {1}).CompletionMatches.CompletionText"
    runs = [ask.format(quoted(line), len(line)) for line in WORDS]
    for (line, words), printed in zip(WORDS.items(), run(pwsh, folder, runs), strict=True):
        offered = [word for word in printed.split() if not word.startswith("./")]  # no files
        if offered != words.split():
            yield f"{line!r} is completed by {offered}, not by {words.split()}"


def main(pwsh, programs):
    paths = glob.glob(f"{ROOT}/docs/*.md") + glob.glob(f"{ROOT}/packaging/*.md")
    texts = [read(path) for path in paths]
    problems = []
    with tempfile.TemporaryDirectory() as folder:
        for name in ("wlanx", "wlanx-eng", "wlanx-json"):
            os.symlink(os.path.join(os.path.abspath(programs), name), f"{folder}/{name}")
        for text in texts:
            if "```powershell" in text:
                problems += check_scripts(pwsh, folder, text)
        problems += check_lines(pwsh, folder, texts)
    with tempfile.TemporaryDirectory() as folder:
        problems += check_completions(pwsh, folder)
    print("\n".join([*problems, f"PowerShell: {len(problems)} problems"]))
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
