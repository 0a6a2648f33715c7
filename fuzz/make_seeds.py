#!/usr/bin/env python3
"""Makes the fuzz programs' first inputs from what the tree holds: every run of the cases, with the
answers that it got and with what it printed; every scenario; a few argument texts. Also checks that
scan_fuzz.cpp knows every format that is in use.

  make_seeds.py PROGRAMS FOLDER    PROGRAMS: the folder of the built programs
"""

import glob
import os
import re
import subprocess
import sys
import tempfile

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
sys.path[:0] = [os.path.join(ROOT, "tests"), os.path.join(ROOT, "scripts")]
import run_cases  # noqa: E402
from command_rows import ENGINEERING, TOOL, command_rows  # noqa: E402

ANSWER = re.compile(rb"0x[0-9A-F]{8} len=\d+(?: if 0:[0-9a-f]*)? (ok|error=(\d+))(?: 0:([0-9a-f]*))?")
ARGUMENTS = ["1", "-12-0x3f-77", "1-1-4-3-1-0-0-0-0-0-0-0-0", "0x74031090", " +5", "11-22-33-44",
             "1-0-2-3-100-200-300-ff-0x1f-aaaa-9", "99999999999999999999", "RoamingPolicy x"]


def read(path):
    with open(os.path.join(ROOT, path), encoding="utf-8") as file:
        return file.read()


def answers_of(trace):
    """The traced answers as replies_fuzz.cpp reads them: a prefix, and an error if it failed."""
    data = b""
    for match in ANSWER.finditer(trace):
        payload = bytes.fromhex((match[3] or b"").decode()).rstrip(b"\0")
        data += bytes([0xC2 if match[2] else 2]) + len(payload).to_bytes(2, "little") + payload
        if match[2]:
            data += bytes([int(match[2]) & 255])
    return data


def case_runs():
    for path in sorted(glob.glob(os.path.join(ROOT, "tests", "cases", "*.cases"))):
        for case in run_cases.read_cases(path):
            yield from ((case, run) for run in case.runs if run.words)


def reply_seeds(programs):
    """For each run of the cases: an input of replies_fuzz.cpp, and the trace."""
    rows = [name.lower() for _, name in command_rows(TOOL) + command_rows(ENGINEERING)]
    for case, run in case_runs():
        if run.words[0].lower() not in rows:
            continue
        with tempfile.TemporaryDirectory() as folder:
            trace = trace_of(programs, case, run, folder)
            yield (bytes([rows.index(run.words[0].lower()), 0]) +
                   " ".join(run.words[1:]).encode() + b"\n" + answers_of(trace), trace)


def output_seeds():
    """For each run of the cases an input of json_fuzz.cpp. A report's input is its text."""
    rules = re.search(r"Rules\[\] = \{\n(.*?)\n\};", read("json/forms.cpp"), re.S)[1]
    names = [name for text in re.findall(r'"([^"]*)"', rules) for name in text.lower().split()]
    for _, run in case_runs():
        if run.words[0].lower() not in names:
            continue
        flags = {0: 1, 1: 2, 3: 3}[run.status] + 8 * (run.edition == "wlanx-eng")
        head, arguments = names.index(run.words[0].lower()), " ".join(run.words[1:]).encode()
        for more, text in [(0, run.output), *((32, report) for report in run.files.values())]:
            yield bytes([head, flags + more]) + arguments + b"\n" + text


def trace_of(programs, case, run, folder):
    trace, scenario = os.path.join(folder, "trace"), os.path.join(folder, "scenario")
    base = read(case.scenario) if case.scenario else ""
    environment = {**os.environ, "A8000_TRACE": trace}
    if base or case.lines:
        with open(scenario, "w", encoding="latin-1") as file:
            file.write("\n".join(case.lines) + "\n" + base)
        environment["A8000_SCENARIO"] = scenario
    subprocess.run([os.path.join(programs, "wlanx-eng")] + run.words, env=environment, cwd=folder,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
    return open(trace, "rb").read() if os.path.exists(trace) else b""


def check_formats():
    """Returns how many formats scan_fuzz.cpp knows; it has to know all that the commands use. A format
    of arguments stands in a call of ScanArgument or beside its field."""
    known = set(re.findall(r'^    "([^"]*)",$', read("fuzz/scan_fuzz.cpp"), re.M))
    used = set()
    for path in glob.glob(os.path.join(ROOT, "commands", "**", "*.cpp"), recursive=True):
        text = open(path, encoding="utf-8").read()
        used |= set(re.findall(r'ScanArgument\([^"]*?,\s*"([^"]*)"', text))
        used |= {name for fields in re.findall(r"\.fields = \{(.*?)\}\},", text, re.S)
                 for name in re.findall(r'\{"([^"]*)"', fields)}
    if not used or used - known:
        sys.exit(f"of {len(used)} formats in use scan_fuzz.cpp lacks {sorted(used - known)}")
    return len(known)


def main():
    programs, folder = sys.argv[1:]
    formats = check_formats()
    replies, traces = map(set, zip(*reply_seeds(os.path.abspath(programs))))
    seeds = {
        "replies_fuzz": replies,
        "scenario_fuzz": traces | {read(path).encode("latin-1") for path in
                                   glob.glob("simulator/scenarios/*.a8000", root_dir=ROOT)},
        "json_fuzz": set(output_seeds()),
        "scan_fuzz": {bytes([index]) + text.encode() for index in range(formats)
                      for text in ARGUMENTS},
    }
    for target, inputs in seeds.items():
        if not inputs:
            sys.exit(f"{target}: no first input")
        os.makedirs(os.path.join(folder, target), exist_ok=True)
        for number, data in enumerate(sorted(inputs)):
            with open(os.path.join(folder, target, f"seed{number:03}"), "wb") as file:
                file.write(data)


if __name__ == "__main__":
    main()
