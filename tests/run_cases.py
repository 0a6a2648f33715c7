#!/usr/bin/env python3
"""Runs the cases of tests/cases/*.cases against the built programs and compares what they print,
their exit status, the requests that reached the adapter and the files that were left.

CONTRIBUTING.md says how a case is written.
"""

import argparse
import difflib
import glob
import itertools
import os
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
import time
from types import SimpleNamespace

import programs

# What starts a Windows program on another host.
STARTER = [] if os.name == "nt" else [os.environ.get("WINE", "wine64")]
ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
with open(os.path.join(ROOT, "CMakeLists.txt"), encoding="utf-8") as file:
    VERSION = re.search(r"^project\(\w+ VERSION ([\d.]+)", file.read(), re.M)[1]
SHOWN_VERSION = "{:d}.{:02d}.{:02d}.{:04d}".format(*map(int, VERSION.split(".")))
BANNER = re.compile(rb"\r?\nWLANX tool, Version %s\r?\n[^\r\n]+\r?\n\r?\n" %
                    re.escape(SHOWN_VERSION).encode())
LONGEST_LINE = 200
TIME = re.compile(rb"\d\d/\d\d/\d{4} \d\d:\d\d:\d\d")
TRACED = re.compile(rb"0x([0-9A-F]{8}) len=(\d+)(?: if 0:([0-9a-f]*))? ")


def named_if_now(match):
    """Replaces the local time of the last two minutes by "<time>"."""
    age = time.time() - time.mktime(time.strptime(match[0].decode(), "%m/%d/%Y %H:%M:%S"))
    return b"<time>" if 0 <= age < 120 else match[0]


def unescape(text):
    named = {"n": b"\n", "r": b"\r", "t": b"\t", "\\": b"\\"}
    pieces = re.split(r"(\\x[0-9a-fA-F]{2}|\\[nrt\\])", text)
    return b"".join(
        (bytes([int(p[2:], 16)]) if p[1:2] == "x" else named[p[1:]]) if i % 2 else p.encode()
        for i, p in enumerate(pieces))


def payload(words):
    data = b""
    for word in shlex.split(words, posix=False):
        fill = re.fullmatch(r"([0-9a-fA-F]{2})\*(\d+)", word)
        if word.startswith('"'):
            data += unescape(word[1:-1])
        elif fill:
            data += bytes.fromhex(fill[1]) * int(fill[2])
        else:
            data += bytes.fromhex(word)
    return data


def requests(text):
    pairs = [item.partition(" ") for item in text.split(" | ")]
    return [(oid.upper(), payload(words)) for oid, _, words in pairs]


def expand(text, names):
    text = re.sub(r"\{([A-Z]+)\}", lambda m: names.get(m[1], m[0]), text)
    return re.sub(r"\{(.)\*(\d+)\}", lambda m: m[1] * int(m[2]), text)


def read_cases(path):
    """Returns the cases of a file. A wrong line ends the program."""
    cases, names, environment, program_path, target = [], {}, {}, None, None
    for number, line in enumerate(open(path, encoding="utf-8", errors="surrogateescape"), 1):
        line, place = line.rstrip("\n"), f"{path}:{number}"
        mark, _, rest = line.partition(" ")
        case = cases[-1] if cases else None
        run = case.runs[-1] if case and case.runs else None
        if line == "" or mark.startswith("#"):
            continue
        try:
            if len(line) > LONGEST_LINE:
                raise ValueError(f"is longer than {LONGEST_LINE} characters")
            if mark == ":":
                names.update([rest.split(" ", 1)])
            elif mark == "==":
                cases.append(SimpleNamespace(place=place, title=rest, scenario=None, lines=[],
                                             line_places=[], runs=[]))
                program_path = None
            elif not case:
                raise ValueError("no case begins above it")
            elif mark == "@":
                case.scenario = os.path.join(ROOT, "simulator", "scenarios", rest)
                if not os.path.isfile(case.scenario):
                    raise ValueError("no such scenario")
            elif mark == "<":
                case.lines.append(rest)
                case.line_places.append(place)
            elif mark == "%":
                environment.update([rest.split("=", 1)])
            elif mark == "^":
                program_path = expand(rest, names)
            elif mark in ("=", "=eng"):
                head, *told = rest.split(" => ")
                status, _, words = head.partition(" ")
                run = SimpleNamespace(
                    line=number, edition="wlanx-eng" if mark == "=eng" else "wlanx",
                    words=[expand(word, names) for word in shlex.split(words)],
                    environment=environment, path=program_path, status=int(status), output=b"",
                    requests=None, files={}, absent=[])
                if told:
                    run.output = unescape(expand(told[0], names))
                    run.requests = [item for items in told[1:] for item in requests(items)]
                case.runs.append(run)
                environment, target = {}, None
            elif mark not in (">", "~", "!", "+", "-"):
                raise ValueError("unknown mark")
            elif not run:
                raise ValueError("no run stands above it")
            elif mark in (">", "~"):
                text = unescape(expand(rest, names)) + (b"\n" if mark == ">" else b"")
                if target is None:
                    run.output += text
                else:
                    run.files[target] += text
            elif mark == "!":
                run.requests = (run.requests or []) + ([] if rest == "none" else requests(rest))
            elif mark == "+":
                target = rest
                run.files[target] = b""
            else:
                run.absent.append(rest)
        except ValueError as error:
            sys.exit(f"{place}: {line}: {error}")
    for empty in [f"{case.place}: a case without a run" for case in cases if not case.runs]:
        sys.exit(empty)
    return cases


class LinuxHost:
    """Runs a program with the adapter in its own process."""

    line_end = b"\n"

    def __init__(self, folder):
        self.folder = folder

    def skips(self, case, run):
        return False

    def check_record(self, case, run, folder, trace):
        return ""

    def run(self, case, run, scenario, work):
        trace = os.path.join(work, "..", "trace")
        environment = {**os.environ, **run.environment, "A8000_TRACE": trace}
        environment.pop("A8000_SCENARIO", None)
        if scenario:
            environment["A8000_SCENARIO"] = scenario
        done = programs.run([run.path or run.edition] + run.words, cwd=work, env=environment,
                            executable=os.path.join(self.folder, run.edition))
        data = open(trace, "rb").read() if os.path.exists(trace) else b""
        return done.stdout, done.stderr, done.returncode, data


class WindowsHost:
    """Runs a Windows program; the adapter is a driver, reached by its control program."""

    line_end = b"\r\n"
    # The runtime knows time zones only as POSIX texts, with the rules of the United States.
    zones = {"America/New_York": "EST5EDT"}

    def __init__(self, folder, replay):
        self.replay = LinuxHost(replay) if replay else None
        # A command cannot hold every path: files are handed over in the control program's folder.
        self.exchange = tempfile.TemporaryDirectory()
        self.folder = folder
        if STARTER:  # Windows' 8-bit calls may not be able to name the programs' own path
            self.folder = os.path.join(self.exchange.name, "programs")
            os.symlink(folder, self.folder)
        self.control = programs.start(
            STARTER + [os.path.join(folder, "a8000ctl.exe"), "-"], cwd=self.exchange.name,
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)

    def skips(self, case, run):
        zone = run.environment.get("TZ", "")
        return "/" in zone and zone not in self.zones

    def fault(self, case, call):
        """How opening or closing ends: "ok", "null" or an error code."""
        ends = [line.split()[1] for line in case.lines if line.startswith(call + " ")]
        return ends[-1].replace("error=", "") if ends else "ok"

    def ask(self, command):
        """Returns what the control program says if it fails."""
        self.control.stdin.write(command + "\n")
        self.control.stdin.flush()
        said = f"a8000ctl {command}: "
        while answer := programs.read_line(self.control):
            if answer.startswith("= "):
                return "" if answer == "= 0\n" else said
            said += answer
        sys.exit(said + f"no answer in {programs.SECONDS} seconds: the driver hangs")

    def run(self, case, run, scenario, work):
        trace = os.path.join(self.exchange.name, "trace")
        if scenario:
            shutil.copyfile(scenario, os.path.join(self.exchange.name, "case.a8000"))
        refusal = self.ask("scenario " + ("case.a8000" if scenario else "--builtin"))
        if refusal:
            return b"", refusal.encode(), None, b""
        faults = {"A8000_OPEN": self.fault(case, "open"), "A8000_CLOSE": self.fault(case, "close")}
        fails = set(faults.values()) != {"ok"}
        program = [os.path.join(self.folder, ("wlanx-failing" if fails else run.edition) + ".exe")]
        if run.path or fails:
            program = [os.path.join(self.folder, "start_program.exe"), *program,
                       run.path or run.edition]
        environment = {**os.environ, **run.environment, **faults, "A8000_TRACE": "../recorded"}
        zone = environment.get("TZ", "")
        environment["TZ"] = self.zones.get(zone, zone)
        done = programs.run_reliably([*STARTER, *program, *run.words], cwd=work, env=environment)
        errors = done.stderr + self.ask("trace trace").encode()
        return done.stdout, errors, done.returncode, open(trace, "rb").read()

    def check_record(self, case, run, folder, trace):
        """Compares what wlanx-eng recorded with the driver's trace, and replays it on Linux."""
        name = os.path.join(folder, "recorded")
        if run.edition != "wlanx-eng":
            return "wlanx records\n" if os.path.exists(name) else ""
        recorded = open(name, "rb").read()
        seen, made = ([line.decode() for line in text.splitlines(True)
                       if not line.startswith(b"#")] for text in (trace, recorded))
        problems = differences("recorded", seen, made)
        if self.replay:
            work = os.path.join(folder, "replay")
            os.makedirs(work)
            output, errors, status, replayed = self.replay.run(case, run, name, work)
            printed = BANNER.sub(b"", output, 1)
            if (printed, errors, status) != (run.output, b"", run.status):
                problems += f"replayed: {status} {printed!r} {errors!r}\n"
            problems += request_differences(requests_of(recorded), requests_of(replayed))
        return problems


def requests_of(trace):
    return [(m[1].decode(), bytes.fromhex((m[3] or b"").decode())) for m in TRACED.finditer(trace)]


def notation(sent):
    """A request as a case writes it. Texts of fewer than four characters stay in hex."""
    oid, data = sent
    words = [oid]
    for piece in re.finditer(rb"(.)\1{3,}|[ !#-\[\]-~]{4,}|.", data, re.S):
        if piece[1]:
            words.append(f"{piece[1].hex()}*{len(piece[0])}")
        elif len(piece[0]) > 1:
            words.append(f'"{piece[0].decode()}"')
        elif len(words) > 1 and words[-1].isalnum():
            words[-1] += piece[0].hex()
        else:
            words.append(piece[0].hex())
    return " ".join(words)


def request_differences(expected, sent):
    text = ""
    for number, pair in enumerate(itertools.zip_longest(expected, sent), 1):
        wanted, got = pair
        if wanted != got:
            text += (f"request {number} expected: {notation(wanted) if wanted else 'none'}\n"
                     f"request {number} sent:     {notation(got) if got else 'none'}\n")
            if None not in pair and wanted[0] == got[0]:
                both = len(os.path.commonprefix([wanted[1], got[1]]))
                text += f"  the first difference is at offset {both}\n"
    return text


def differences(what, expected, actual):
    return "".join(difflib.unified_diff(expected, actual, f"expected {what}", what, n=1))


def lines_of(data):
    text = data.decode("latin-1").replace("\r", "\\r")
    return [line if line.endswith("\n") else line + "<no line end>\n"
            for line in text.splitlines(keepends=True)]


def check(host, case, run, folder):
    """Returns what differs, as text; empty if nothing does."""
    work = os.path.join(folder, "work")
    os.makedirs(work)
    scenario = case.scenario
    if case.lines:
        text = open(scenario, encoding="latin-1").read() if scenario else ""
        scenario = os.path.join(folder, "case.a8000")
        with open(scenario, "w", encoding="latin-1") as file:
            # Of several rules for a request the first one answers.
            file.write("\n".join(case.lines) + "\n" + text)
    output, errors, status, trace = host.run(case, run, scenario, work)
    wrong = re.search(rb"case\.a8000:(\d+): (.*)", errors)
    if wrong and 0 < int(wrong[1]) <= len(case.lines):
        return f"{case.line_places[int(wrong[1]) - 1]}: {wrong[2].decode()}\n"
    wanted = run.output.replace(b"\n", host.line_end)
    problems = ""
    banner = BANNER.match(output)
    if not banner:
        problems += f"no banner: {output[:200]!r}\n"
    printed = output[banner.end():] if banner else output
    if printed != wanted:
        problems += differences("output", lines_of(wanted), lines_of(printed))
    if status != run.status:
        problems += f"status {status}, expected {run.status}\n"
    if errors:
        problems += f"standard error: {errors!r}\n"
    sent = requests_of(trace)
    if run.requests is not None and sent != run.requests:
        problems += request_differences(run.requests, sent)
    for name, text in run.files.items():
        expected = text.replace(b"\n", host.line_end)
        path = os.path.join(work, name)
        data = TIME.sub(named_if_now, open(path, "rb").read()) if os.path.exists(path) else b""
        if data != expected:
            problems += differences(name, lines_of(expected), lines_of(data))
    left = set(os.listdir(work)) - set(run.files)
    for name in sorted(left & set(run.absent)) or (sorted(left) if run.files else []):
        problems += f"left the file {name}\n"
    return problems + host.check_record(case, run, folder, trace)


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--programs", required=True, help="the folder of the built programs")
    parser.add_argument("--host", choices=("linux", "windows"), default="linux")
    parser.add_argument("--replay", metavar="FOLDER",
                        help="replay what wlanx-eng.exe records with the Linux programs there")
    parser.add_argument("cases", nargs="+", help="files, or patterns of them")
    options = parser.parse_args()
    folder = os.path.abspath(options.programs)
    host = (LinuxHost(folder) if options.host == "linux" else
            WindowsHost(folder, options.replay and os.path.abspath(options.replay)))
    passed = failed = skipped = 0
    for path in [path for given in options.cases for path in glob.glob(given) or [given]]:
        for case in read_cases(path):
            for run in case.runs:
                if host.skips(case, run):
                    skipped += 1
                    continue
                with tempfile.TemporaryDirectory() as folder:
                    problems = check(host, case, run, folder)
                if problems:
                    failed += 1
                    words = " ".join([run.edition] + run.words)
                    print(f"{path}:{run.line}: {case.title}: {words}\n{problems}")
                else:
                    passed += 1
    print(f"{passed} passed, {failed} failed, {skipped} skipped")
    return 0 if passed and not failed else 1


if __name__ == "__main__":
    sys.exit(main())
