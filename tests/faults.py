#!/usr/bin/env python3
"""Faults that no scenario reaches: memory, standard output and files that fail, and a killed run.
Nothing may hang or crash, and the requests are those of an undisturbed run.
"""

import argparse
import fcntl
import os
import re
import resource
import select
import signal
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

import programs

TIME = re.compile(r'timestamp="[^"]*"')
REPORT = ["export_rssi_report", "rssi", "5g", "net", "70"]
PROGRAMS = ""
SCENARIOS = Path(__file__).resolve().parent.parent / "simulator" / "scenarios"


class Faults(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def start(self, words, program="wlanx", closed=(), variables=None, room=None, **more):
        """`room` is the largest size that a file can have."""
        def prepare():
            for descriptor in closed:
                os.close(descriptor)
            if room:
                if program != "a8000redact":  # that one has to survive the signal by itself
                    signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
                resource.setrlimit(resource.RLIMIT_FSIZE, (room, room))
        environment = {**os.environ, "A8000_SCENARIO": "",
                       "A8000_TRACE": str(self.folder / "trace"), **(variables or {})}
        process = programs.start([os.path.join(PROGRAMS, program)] + words, cwd=self.folder,
                                 env=environment, stdin=subprocess.DEVNULL, preexec_fn=prepare,
                                 **{"stdout": subprocess.PIPE, "stderr": subprocess.PIPE, **more})
        self.addCleanup(programs.end, process)
        return process

    def run_tool(self, words, **more):
        process = self.start(words, **more)
        output, errors = programs.finish(process)
        return process.returncode, output, errors

    def trace(self):
        path = self.folder / "trace"
        return path.read_text() if path.exists() else ""

    def trace_into_pipe(self, room):
        """Makes the trace a pipe that has room for `room` bytes."""
        path = self.folder / "trace"
        path.unlink()
        os.mkfifo(path)
        pipe = os.open(path, os.O_RDWR)
        self.addCleanup(os.close, pipe)
        os.write(pipe, b"x" * (fcntl.fcntl(pipe, fcntl.F_SETPIPE_SZ, 4096) - room))

    def test_no_memory(self):
        for words, printed, status in (
                (["stat"], "Allocated memory failed\n", 0),
                (["get_wfd"], "Allocated memory failed\n", 0),
                (["get_umac"], "argv[1] = get_umac\nAllocated memory failed\n", 1),
                (["txbf", "TxBfProfileTagRead", "1-1"], "Allocated memory failed\n", 0),
                (["oid_len_test", "4096"], "size = 4096\nAllocated memory failed\n", 0)):
            with self.subTest(words=words):
                code, output, errors = self.run_tool(words, program="wlanx-without-memory")
                self.assertEqual((code, errors), (status, b""))
                self.assertEqual(output.decode().split("\n\n", 1)[1], printed)
                self.assertEqual(self.trace(), "open ok\nclose ok\n")

    def test_help_ignores_further_words(self):
        self.assertEqual(self.run_tool(["help", "stat", ""]), self.run_tool(["help"]))

    def test_negative_length(self):
        """It is sent as it stands. The trace has no room for such a call."""
        scenario = self.folder / "length.a8000"
        scenario.write_text("0xFFFCF100 len=4294967295 error=87 returned=9\n")
        code, output, _ = self.run_tool(["oid_len_test", "-1"], program="wlanx-eng",
                                        variables={"A8000_SCENARIO": scenario})
        self.assertEqual((code, output.decode().split("\n\n", 1)[1]), (
            0, "size = -1\nError in DeviceIoControl : 87\nbytesReturned = 9, Input size=-1\n"))
        self.assertTrue(self.trace().startswith("open ok\nclose ok\n# calls left out"), self.trace())

    def test_output_is_lost(self):
        """Closed, full, or without a reader: only the output is lost."""
        read_end, write_end = os.pipe()
        os.close(read_end)
        self.addCleanup(os.close, write_end)
        with open("/dev/full", "w") as full:
            for words in (["stat"], ["set_pcie_driving"], REPORT + ["report.xml"], [], ["sar"]):
                code, _, _ = self.run_tool(words)
                expected = code, self.trace()
                for fault in ({"closed": (1,)}, {"closed": (0, 1)}, {"closed": (0, 1, 2)},
                              {"stdout": full}, {"stdout": write_end}):
                    with self.subTest(words=words, fault=fault):
                        code, _, errors = self.run_tool(words, **fault)
                        self.assertEqual((code, self.trace()), expected)
                        self.assertFalse(errors)
                        if words == REPORT + ["report.xml"]:
                            self.assertRegex((self.folder / words[-1]).read_text(),
                                             r"\A<\?xml[^\0?]*\?>[^\0?]*</Results>\n\Z")

    def test_report_on_a_full_disk(self):
        code, output, errors = self.run_tool(REPORT + ["/dev/full"])
        self.assertEqual((code, errors), (0, b""))
        self.assertEqual(self.trace().count("\n0x"), 1)

    def test_trace_on_a_full_disk(self):
        (self.folder / "trace").symlink_to("/dev/full")
        code, output, errors = self.run_tool(["get_mac_Add"])
        self.assertEqual(code, 0)
        self.assertEqual(errors.count(b"No space left on device"), 1)

    def test_trace_without_room_for_a_whole_line(self):
        """The recording ends before the line that does not fit, and the run goes on."""
        code, output, errors = self.run_tool(["get_mac_Add"], room=1000)
        self.assertEqual(errors, b"")
        whole = self.trace()
        opened = whole.index("\n") + 1
        for room in (opened + 1, whole.index("close") - 1, len(whole) - 1):
            with self.subTest(room=room):
                run = self.run_tool(["get_mac_Add"], variables={"A8000_TRACE": "trace"}, room=room)
                self.assertEqual(run, (code, output, b"a8000: trace:0: File too large\n"))
                self.assertEqual(self.trace(), whole[:whole.rindex("\n", 0, room) + 1])

    def test_report_is_whole_before_the_device_closes(self):
        """Closing hangs: the trace is a pipe without room for its line."""
        self.run_tool(REPORT + ["report.xml"])
        report = self.folder / "report.xml"
        whole = TIME.sub("", report.read_text())
        report.unlink()
        self.trace_into_pipe(len(self.trace()) - 1)
        process = self.start(REPORT + ["report.xml"], stdout=subprocess.DEVNULL,
                             stderr=subprocess.DEVNULL)
        text, until = "", time.monotonic() + programs.SECONDS
        while text != whole and time.monotonic() < until:
            time.sleep(0.05)
            text = TIME.sub("", report.read_text()) if report.exists() else ""
        running = process.poll() is None
        programs.end(process)
        self.assertEqual((text, running), (whole, True))

    def test_unusable_files(self):
        """Opening fails, and standard error says why; a long word is cut."""
        (self.folder / "s").write_bytes(
            b"# \n" * 1233 + b"open \x1b\xff\x7f" + b"x" * 61 + b"\n")
        builtin = str(SCENARIOS / "builtin.a8000")
        for program, variables, message in (
                ("wlanx", {"A8000_SCENARIO": "s"}, "s:1234: unknown outcome: ???" + "x" * 57),
                ("wlanx", {"A8000_SCENARIO": "."}, ".:0: Is a directory"),
                ("wlanx", {"A8000_SCENARIO": "/dev/zero"},
                 "/dev/zero:0: scenario is larger than 16 MiB"),
                ("wlanx", {"A8000_TRACE": "a/b"}, "a/b:0: No such file or directory"),
                ("wlanx", {"A8000_SCENARIO": "s", "A8000_TRACE": "./s"},
                 "./s:0: the trace would take the place of the scenario"),
                ("wlanx-without-memory", {"A8000_SCENARIO": builtin},
                 builtin + ":0: Cannot allocate memory")):
            code, output, errors = self.run_tool(["stat"], program=program, variables=variables)
            self.assertEqual((code, errors.decode()), (1, f"a8000: {message}\n"))
            self.assertIn(b"CreateFile I/O failed : 13\n", output)
            if "A8000_TRACE" not in variables:
                self.assertEqual(self.trace(), "open error=13\n")

    def test_empty_variables(self):
        code, _, errors = self.run_tool(["get_mac_Add"], variables={"A8000_TRACE": ""})
        self.assertEqual((code, errors, os.listdir(self.folder)), (0, b"", []))

    def test_driver_that_hangs(self):
        """What was printed is on the screen while opening or closing lasts: the trace is a pipe
        without room for the call's line."""
        _, printed, _ = self.run_tool(["get_mac_Add"])
        recorded = len(self.trace())
        banner = printed[:printed.index(b"\n\n") + 2]
        for room, expected in ((len("open ok"), banner), (recorded - 1, printed)):
            self.trace_into_pipe(room)
            process = self.start(["get_mac_Add"])
            output = b""
            while (output != expected and
                   select.select([process.stdout], [], [], programs.SECONDS)[0] and
                   (piece := os.read(process.stdout.fileno(), 4096))):
                output += piece
            self.assertEqual((output, process.poll()), (expected, None))
            programs.end(process)

    def test_killed_between_requests(self):
        """If anything of a request was printed, the trace has the request as a whole line."""
        read_end, write_end = os.pipe()
        fcntl.fcntl(write_end, fcntl.F_SETPIPE_SZ, 4096)
        os.write(write_end, b"x" * 2500)  # leaves room for some of the lines
        process = self.start(["wtbl", "1"], program="wlanx-eng", stdout=write_end)
        os.close(write_end)
        before = None
        while self.trace() != before or not before:
            before = self.trace()
            time.sleep(0.1)
        process.kill()
        programs.finish(process)
        self.assertEqual(process.returncode, -signal.SIGKILL)
        with os.fdopen(read_end, "rb") as pipe:
            printed = pipe.read().count(b" WTBL 01 EntryDW[")
        lines = self.trace().split("\n")
        self.assertEqual(lines[0], "open ok")
        self.assertEqual(lines[-1], "")
        self.assertTrue(all(line.startswith("0xFFFCF001 len=8 if 0:") and
                            line.endswith(" times=1") for line in lines[1:-1]))
        self.assertIn(len(lines) - 2 - printed, (0, 1))

    def redact(self, *words, room=None):
        status, output, errors = self.run_tool([*words], program="a8000redact", room=room)
        return status, output.decode(), errors.decode()

    def test_report_is_whole_or_nothing(self):
        self.run_tool(["get_mac_Add"])
        recorded = self.trace()
        (self.folder / "link").symlink_to("trace")
        os.link(self.folder / "trace", self.folder / "same")
        report = self.folder / "report"
        report.write_text("earlier")
        files = sorted(os.listdir(self.folder))
        taken = "the report would take the place of the trace"
        for words, room, what in (
                (["trace", "report"], 50, "report:0: File too large"),
                (["trace", "trace"], None, f"trace:0: {taken}"),
                (["link", "trace"], None, f"trace:0: {taken}"),
                (["trace", "same"], None, f"same:0: {taken}"),
                (["trace", "/dev/full"], None, "/dev/full:0: Invalid argument"),
                (["trace", "a/b"], None, "a/b:0: No such file or directory"),
                (["trace", "/dev/zero", "report"], None,
                 "/dev/zero:0: the traces are larger than 16 MiB"),
                (["trace", "report", "new"], None, "report:1: unknown statement: earlier")):
            self.assertEqual(self.redact(*words, room=room), (1, "", f"a8000: {what}\n"))
            self.assertEqual((self.trace(), sorted(os.listdir(self.folder))), (recorded, files))
            self.assertEqual(report.read_text(), "earlier")
        self.assertEqual(self.redact("trace", "report")[0], 0)

    def test_reports_replay(self):
        """A run that a redacted report answers sends the requests of the report."""
        for words, scenario in (
                ("set_pcie_driving", ""), ("set_pcie_driving", "pcie-write-ignored"),
                ("sar get_sar_table", "sar-184"), ("sar get_geo_table", "sar-176-6ghz"),
                ("rf rssi aa 60", "no-network"), ("wtbl 1", ""), ("uwtbl 1", ""), ("stat", ""),
                ("country get_pwr_tbl vht80 100", ""), ("txbf TxBfProfileTagRead 1-1", ""),
                ("efuse read 0x17", ""), ("efuse write 0x17 0x17", ""), ("coex_info 0x81", ""),
                ("set_cs 0x10 0x5a000001", ""), ("chan_pref_cfg 2 36 1 128 3", ""),
                ("set_bssid bssid 02:00:00:00:00:01", ""), ("setreg TxopLimit 0x7", ""),
                ("set_cmd_str xx 00", ""), ("oid_len_test 300", ""), ("get_fw_ver", "")):
            with self.subTest(words=words, scenario=scenario):
                path = SCENARIOS / f"{scenario or 'builtin'}.a8000"
                run = {"program": "wlanx-eng", "variables": {"A8000_SCENARIO": path}}
                status = self.run_tool(words.split(), **run)[0]
                self.assertEqual(self.redact("trace", "report")[0], 0)
                run["variables"] = {"A8000_SCENARIO": "report"}
                self.assertEqual(self.run_tool(words.split(), **run)[0], status)
                self.assertEqual(self.trace(), (self.folder / "report").read_text())


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--programs", required=True)
    options, rest = parser.parse_known_args()
    PROGRAMS = os.path.abspath(options.programs)
    unittest.main(argv=sys.argv[:1] + rest)
