#!/usr/bin/env python3
"""Compares wlanx-json with what the tool prints: every run of the cases and every example of the documents
as data, the outcome of every command in every situation, saved output in each encoding."""

import argparse
import concurrent.futures
import glob
import json
import os
import re
import shlex
import shutil
import sys
import tempfile
import unittest

import jsonschema

import programs
import run_cases
from run_cases import ROOT, STARTER

sys.path.append(os.path.join(ROOT, "scripts"))
import check_documents  # noqa: E402
from command_rows import ENGINEERING, TOOL, command_rows  # noqa: E402

BANNER = b"\nWLANX tool, Version 1.00.00.0070\nA notice.\n\n"
SCHEMA = json.loads(check_documents.read("docs/wlanx-json.schema.json"))
# By what text an outcome other than done is known. If several match, the first one counts.
WORDS = {
    "no_device": r"(Open|Close)Device Failed$",
    "refused": r"^Error (Code )?in DeviceIoControl ?[: ]|Error in DeviceIoControl : |^Cannot find SSID"
               r"|^Can't find SSID|^Network is activated|^SmartCountryDecision|^Port is not Idle|NonMS Fail"
               r'|ErrorCode" value="[23]',
    "failed": r"^Allocated memory|^Return table size|is out of range, |^Invalid table index|not Gen2!!"
              r"|Setting Fail!",
    "wrong_arguments": r"Invalid parameter|^E(rror|RROR):? |^Unavailable|^RSSI threshold|^PHY ICS|^nicctl .*<"
                       r"|^Not an ICS|is WRONG$|^Help menu$"
                       r'|ErrorCode" value="1',
}
HOSTILE = [b"\xff\xfe\x00", b"a = 1\n" * 30000, b" = 1," * 20000, b" " * 200000, b"SSID: \nBSSID: " * 3000,
           b"[Flag 99999999999999999999][ON]: \n", b"rows: 1\n  Index1: 0x1\n",
           b"PASS\n== a ==\nThreshold: 1\nAverage: 1\nPASS\nPASS\n", b"ERROR size > 256 lines = 1, x = 2\n",
           b"lines=5\npairs=5\nreport=5\n", b"[NA]  x\n[5]  y\n[Flag 1][7]: x\nNAIndex1: 0x1\n"]
PROGRAMS = ""


def convert(*arguments, data=None, folder=None, environment=None, program=None):
    """Returns the printed object, which has passed the checks of every object; or the text of an error."""
    path = program or os.path.join(PROGRAMS, "wlanx-json")
    command = [*STARTER, path + ".exe"] if os.path.exists(path + ".exe") else [path]
    done = programs.run_reliably([*command, *arguments], input=data, cwd=folder,
                                 env={**os.environ, **(environment or {})})
    if done.returncode == 2:
        return done.stderr.decode()
    assert done.stdout.isascii() and done.stdout.count(b"\n") == 1, done
    result = json.loads(done.stdout)
    jsonschema.Draft202012Validator(SCHEMA).validate(result)  # a validator is for one thread only
    assert done.returncode == (0 if result["outcome"] == "done" else 1), done
    return result


def each(check, items):
    """Calls the check with each item's parts, as many at a time as there are cores, and reports every failure."""
    def failure(item):
        try:
            check(*item)
        except Exception as error:
            return f"{str(item)[:300]}: {error!r}"

    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        failures = list(filter(None, pool.map(failure, items)))
    assert not failures, "\n\n".join(failures)


def saved(words, status, text, engineering=True, banner=BANNER):
    options = ["--eng"] * engineering + ["--read", "-"] + ["--status", str(status)] * (status is not None)
    return convert(*options, *words, data=banner + text)


def outcome_of(text, status):
    if status == 3:
        return "ended"
    return next((outcome for outcome, words in WORDS.items() if re.search(words, text, re.M)), "done")


def leaves(value):
    if isinstance(value, dict):
        yield from value
        value = list(value.values())
    for item in value if isinstance(value, list) else []:
        yield from leaves(item)
    if not isinstance(value, list):
        yield value


def lost_numbers(result):
    found = list(leaves([result["values"], result["error"]]))
    texts = " ".join(str(item) for item in found)
    numbers = {item for item in found if isinstance(item, (int, float))}
    lines = re.sub(r"^arg[cv].*\n|=0x0 addr|^nicctl .*|^u?W?TBL DW.*|XML|^Error.*|^\[.*|^13 param.*", "", result["text"], flags=re.M)
    base = 16 if result["command"] == ["get_sr_ind"] else 10
    for token in re.findall(r"(?<![\w.\]])(?<!\w\[)(?:0x[0-9a-fA-F]+|-?\d+(?:\.\d+)?)(?![\w*])", lines):
        number = float(token) if "." in token else int(token, 16 if token[:2] == "0x" else base)
        if not numbers & {number, number % 256} and token not in texts:
            yield token


class Cases(unittest.TestCase):
    def check(self, result, text, status):
        self.assertEqual((result["unread"], result["fault"]), ([], None), result["command"])
        self.assertEqual(result["outcome"], outcome_of(text, status))
        self.assertEqual(list(lost_numbers(result)), [])

    def check_run(self, path, run):
        is_report = run.words[0].lower() == "export_rssi_report" and run.status < 3 and not run.output
        for text in run.files.values() if is_report else [run.output]:
            text = text.replace(b"<time>", b"01/02/2026 03:04:05")
            result = saved(run.words, run.status, text, run.edition == "wlanx-eng", b"" if is_report else BANNER)
            if text or run.status != 1 or result["outcome"] != "unknown_command":
                self.check(result, text.decode("latin-1"), run.status)

    def test_cases(self):
        paths = glob.glob(f"{ROOT}/tests/cases/*.cases")
        each(self.check_run, [(path, run) for path in paths for case in run_cases.read_cases(path)
                              for run in case.runs])

    def check_document(self, path):
        """Runs the examples by wlanx-json. A pipe in an example is left out."""
        with tempfile.TemporaryDirectory() as folder:
            os.symlink(f"{ROOT}/simulator", f"{folder}/simulator")
            for fence in check_documents.FENCE.finditer(check_documents.read(path)):
                if fence[2]:
                    with open(f"{folder}/{fence[2]}", "w") as file:
                        file.write(fence[3])
                for line in re.findall(r"^\$ ((?:\w+=\S+ )*wlanx(?:-eng)?(?: .*)?)$", fence[3], re.M):
                    words = shlex.split(line.partition(" |")[0])
                    setting = [word for word in words if word.startswith("A8000_")]
                    tool, *words = words[len(setting):]
                    if "help" in words or not words or ">" in words:
                        continue
                    result = convert(*["--eng"] * tool.endswith("g"), *words, folder=folder,
                                     environment=dict(word.split("=", 1) for word in setting))
                    text = "\n".join((result["error"] or {}).get("lines", []))
                    self.check(result, text, result["status"])

    def test_documents(self):
        each(self.check_document, [(path,) for path in glob.glob(f"{ROOT}/docs/*.md")])

    def test_listing(self):
        for edition in ("wlanx", "wlanx-eng"):
            printed = programs.run([f"{PROGRAMS}/{edition}"]).stdout
            listing = saved([], 1, printed, banner=b"")
            self.check(listing, "", 1)
            text, commands = printed.decode().split("Available parameters\n")[1], listing["values"]["commands"]
            self.assertEqual([command["name"] for command in commands], re.findall(r"^(\w+) ", text, re.M))
            self.assertEqual([line for command in commands for line in command["usage"]],
                             re.findall(r"^ {20}(.*)$", text, re.M))
        self.assertEqual(convert("help")["values"]["commands"][0]["name"], "stat")

    def test_row_in_force(self):
        rows = convert("sar", "get_sar_table")["values"]["rows"]
        self.assertEqual([row["index"] for row in rows if row["in_force"]], [3])


class Situations(unittest.TestCase):
    """Every command, when it succeeds and when it fails in each way."""

    def run_tool(self, folder, words, scenario=None, trace=""):
        environment = {"A8000_TRACE": trace, "A8000_SCENARIO": ""}
        if scenario is not None:
            environment["A8000_SCENARIO"] = f"{folder}/scenario"
            with open(f"{folder}/scenario", "w") as file:
                file.write(scenario)
        return convert("--eng", *words, folder=folder, environment=environment)

    def expect(self, outcome, result):
        self.assertEqual((result["outcome"], result["fault"], result["unread"]), (outcome, None, []))

    def refuse_each(self, folder, words):
        """Refuses one request after the other. Those before it are answered as they were."""
        self.run_tool(folder, words, trace=f"{folder}/trace")
        requests = re.findall("^0x.*\n", check_documents.read(f"{folder}/trace"), re.M)
        for number in {0, 1, len(requests) // 2, len(requests) - 1} & set(range(len(requests))):
            refused = re.sub(r" ok.*", " error=31", requests[number])
            result = self.run_tool(folder, words, "".join(requests[:number]) + refused)
            if words[0] == "set_pcie_driving" and number > 0:
                self.assertIn(result["outcome"], ("failed", "done"))
            elif words[0] != "sar" or number > 0:
                self.expect("refused", result)
                code = result["error"].get("code", 31)
                self.assertEqual((code, bool(result["error"]["lines"])), (31, True))

    def check_command(self, name, *words):
        with tempfile.TemporaryDirectory() as folder:
            done = self.run_tool(folder, words)
            self.expect("done", done)
            if name != "export_rssi_report":
                text = done["text"].encode("latin-1")
                for status, fault in ((1 - done["status"], "contradiction"), (139, "killed")):
                    result = saved(words, status, text)
                    self.assertEqual((result["outcome"], result["fault"]), (None, fault))
                self.assertEqual(saved(words, None, text)["outcome"], "done")
                self.assertEqual(saved(words, 3, text[:20])["outcome"], "ended")
            if name != "help":
                self.refuse_each(folder, words)
            self.expect("no_device", self.run_tool(folder, words, "open error=2\n"))
            builtin = check_documents.read("simulator/scenarios/builtin.a8000")
            self.expect("no_device", self.run_tool(folder, words, builtin + "\nclose error=6\n"))
            takes_all = ("help", "get_mac_add", "sta_stat", "get_dbg_level", "set_cmd_str", "get_cmd_str")
            self.expect("done" if name in takes_all else "wrong_arguments",
                        self.run_tool(folder, [words[0]] + ["?"] * 20))

    def test_situations(self):
        """Takes the first example of each command that the documents show."""
        found = {}
        for name in ("commands", "engineering-commands"):
            for words in re.findall(r"^\$ wlanx(?:-eng)? (\w+.*)$", check_documents.read(f"docs/{name}.md"), re.M):
                words = shlex.split(words.partition(" |")[0])
                found.setdefault(words[0].lower(), words)
        commands = {name.lower() for _, name in command_rows(TOOL) + command_rows(ENGINEERING)}
        self.assertEqual(commands - set(found), set())
        each(self.check_command, [(name, *found[name]) for name in commands])

    def test_texts_of_the_driver(self):
        """The driver may say what the tool says; the status tells whose words they are."""
        error = b"Error in DeviceIoControl : 31"
        def check(words, status, text, outcome):
            result = saved(words, status, text)
            self.assertEqual((result["outcome"], result["unread"]), (outcome, []))

        each(check, (
                (["stat"], 0, error, "refused"), (["stat"], 0, error + b"\n", "refused"),
                (["stat"], 1, error + b"\n", "done"), (["stat"], None, error, "refused"),
                (["stat"], 1, error, None), (["stat"], 0, b"text\n", None),
                (["stat"], 1, b"Invalid parameters\n", "done"),
                (["stat", "x"], 1, b"Invalid parameters\n", "wrong_arguments"),
                (["stat"], 1, error + b"\nCloseDevice Failed\n", "no_device"),
                (["get_umac"], 0, b"argv[1] = get_umac\nOpenDevice Failed\nCloseDevice Failed\n", "done"),
                (["get_cmd_str", "a"], 1, b"0 \n" + error, "done"),
                (["get_cmd_str", "a"], 0, b"0 \n" + error, "refused"),
                (["txbf", "TxBfProfileTagRead", "1"], 1,
                 b"Set_TxBfProfileTagRead, profileIdx = 1, fgBFer = 0\nInvalid parameters\n", "done")))

    def test_cut_output(self):
        for words, text, unread in ((["get_mac_add"], b"", 0), (["get_mac_add"], b"MAC Addr", 1),
                                    (["sar", "get_sar_table"], b"SAR Status: 1\n  Index1", 1),
                                    (["fixedrate", "1"], b"u4WCID=1\nu4Mo", 1)):
            for status in (None, 0):
                result = saved(words, status, text)
                self.assertEqual((result["fault"], len(result["unread"])), ("unfinished", unread), text)
        self.assertEqual(saved(["nothing"], 1, b"a line\n")["fault"], "contradiction")
        self.assertEqual(saved(["wtbl", "1"], 1, b"", engineering=False)["outcome"], "unknown_command")

    def test_reports(self):
        words = ["export_rssi_report", "rssi", "5g", "AC1900-5G", "60", "out.xml"]
        with tempfile.TemporaryDirectory() as folder:
            for scenario, outcome, report in (
                    (None, "done", "out.xml"), ("0xFFFCF016 error=31\n", "refused", "error.xml"),
                    ("0xFFFCF016 error=5\n", "refused", "error.xml"), (None, "done", "out.xml"),
                    ("close error=6\n0xFFFCF016 ok\n", "no_device", "out.xml")):
                result = self.run_tool(folder, words, scenario)
                self.expect(outcome, result)
                self.assertEqual(result["values"]["report"], report)
        by_name = {row["name"]: row for row in result["values"]["results"]}
        self.assertEqual((by_name["Antenna2"]["rssi"], by_name["Arguments"]["threshold"]), (0, -60))
        self.assertEqual(saved(words, 1, b"")["fault"], "unfinished")


class Input(unittest.TestCase):
    def test_encodings(self):
        text = "Channel Scanning, Café 日......\nCannot find SSID, Café 日"
        output = BANNER.decode() + text
        words = ["rf", "rssi", "Café 日", "60"]
        with tempfile.TemporaryDirectory() as folder:
            found = []
            for changed in (output, output.replace("\n", "\r\n")):
                for data in (changed.encode(), b"\xef\xbb\xbf" + changed.encode(),
                             b"\xff\xfe" + changed.encode("utf-16-le"), changed.encode("utf-16-le"),
                             b"\xfe\xff" + changed.encode("utf-16-be")):
                    with open(os.path.join(folder, "sæved"), "wb") as file:
                        file.write(data)
                    found.append(convert("--read", "sæved", "--status", "1", *words, folder=folder))
        self.assertEqual(found, found[:1] * 10)
        self.assertEqual((found[0]["outcome"], found[0]["text"]), ("refused", text))
        self.assertEqual(found[0]["error"]["ssid"], words[2])
        result = saved(["country", "now"], 0, b"\x00\xe9 (0xe900)\n")
        self.assertEqual(result["values"], {"country": "\x00é", "country_code": 0xE900})

    def test_hostile_input(self):
        commands = (["stat"], ["sar", "x"], ["rf"], ["fixedrate"], ["wtbl"], ["help"], ["get_sr_ind"],
                    ["ax_basize"])
        each(lambda *run: self.assertIsInstance(saved(*run), dict),
             [(words, 1, text) for text in HOSTILE for words in commands])
        for data in (b"", b"text\n", BANNER[:30], b"\0" * 100, b"\xff\xfe", BANNER + b"x" * (8 << 20)):
            self.assertIn("this is no output", convert("--read", "-", "stat", data=data))

    def test_misuse(self):
        for arguments, words in ((["--nonsense"], "no option"), ([], "COMMAND"), (["--read"], "a value"),
                                 (["--status", "1", "stat"], "belongs"), (["--read", "no file", "stat"], "open"),
                                 (["--read", "-", "--status", "x"], "not a number")):
            self.assertIn(words, convert(*arguments))


class Windows(unittest.TestCase):
    def test_words_are_handed_on(self):
        for name in ('a "b" \\', "", "*", "a\\\\\"", "a b\\\\"):
            self.assertEqual(convert("--eng", "getreg", name)["values"]["name"], name)
        programs.run_reliably([*STARTER, f"{PROGRAMS}/a8000ctl.exe", "scenario", "--builtin"])
        self.assertEqual(convert("get_mac_add")["outcome"], "done")


class Start(unittest.TestCase):
    """A stand-in for the tool beside a copy of the program, or in PATH."""

    def start(self, script, *words, in_path=False):
        with tempfile.TemporaryDirectory() as folder:
            program = shutil.copy(f"{PROGRAMS}/wlanx-json", folder)
            place = os.path.join(folder, "path") if in_path else folder
            os.makedirs(place, exist_ok=True)
            with open(f"{place}/wlanx", "w") as file:
                file.write(f"#!/bin/sh\nprintf '\\nWLANX tool, Version 1.0\\nA notice\\n\\n'\n{script}\n")
            os.chmod(f"{place}/wlanx", 0o755 if script else 0o644)
            return convert(*words, program=program, environment={"PATH": f"{place}:{os.environ['PATH']}"})

    def test_words_are_handed_on(self):
        words = ["getreg", "", 'a "b" \\', "--eng", "*", "é\udcff"]
        for in_path in (False, True):
            result = self.start('printf "%s\\n" "$@"', *words, in_path=in_path)
            self.assertEqual(result["unread"], ["getreg", 'a "b" \\', "--eng", "*", "éÿ"])
            self.assertEqual(result["command"], words[:-1] + ["éÿ"])

    def test_ends(self):
        killed = self.start("echo 'MAC Address: 02-A8-00-5C-1D-42'; kill -9 $$", "get_mac_add")
        self.assertEqual((killed["fault"], killed["status"]), ("killed", 137))
        self.assertEqual(killed["values"], {"mac_address": "02-A8-00-5C-1D-42"})
        self.assertEqual(self.start("exit 77", "get_mac_add")["fault"], "unfinished")
        self.assertIn("denied", self.start("", "get_mac_add"))
        self.assertIn("too long", self.start("head -c 9000000 /dev/zero", "stat"))

    def test_error_names(self):
        rows = re.findall(r"^\| (\d+) \| (ERROR_\w+) \|", check_documents.read("docs/commands.md"), re.M)
        table = re.findall(r'\{(\d+), "(ERROR_\w+)"\}', check_documents.read("json/forms.cpp"))
        self.assertTrue(rows)
        self.assertEqual(set(rows) - set(table), set())


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--programs", required=True)
    options, rest = parser.parse_known_args()
    PROGRAMS = os.path.abspath(options.programs)
    unittest.main(argv=[sys.argv[0]] + (rest or ["Cases", "Situations", "Input", "Start"]))
