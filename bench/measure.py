#!/usr/bin/env python3
"""Measures what runs of the tool cost, and compares it with the limits.

Instructions are counted by callgrind and given as multiples of a dynamically linked one-line C
program's, counted in the same run, so that the figures carry over to other machines. Every program
runs with the same few variables and by the same name, on which the counts depend too.

  measure.py LINUX_PROGRAMS [WINDOWS_PROGRAMS]
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile

# Words, edition and limit of the ratio. With the built-in scenario all do what they are for.
COMMAND = 0.7
RUNS = [
    ("", "wlanx", 1.0),
    ("help", "wlanx", 1.0),
    ("get_mac_Add", "wlanx", 0.37),
    ("stat", "wlanx", COMMAND),
    ("fixedrate 2-8-1-11-2-1-0-0-1-0", "wlanx", COMMAND),
    ("get_wfd", "wlanx", COMMAND),
    ("get_umac", "wlanx", COMMAND),
    ("country now", "wlanx", COMMAND),
    ("country get_pwr_tbl cck 1", "wlanx", COMMAND),
    ("rf rssi 5g net 70", "wlanx", COMMAND),
    ("TRx auto", "wlanx", COMMAND),
    ("sar get_sar_table", "wlanx", 0.8),
    ("sar get_siso_sar_table", "wlanx", 0.8),
    ("sar get_geo_table", "wlanx", COMMAND),
    ("sar get_country_list", "wlanx", COMMAND),
    ("sar get_TxMaxPower_table", "wlanx", 1.2),
    ("sar get_sensor_info", "wlanx", COMMAND),
    ("sar get_country_code", "wlanx", COMMAND),
    ("sar get_FlagTable", "wlanx", COMMAND),
    ("txhang_counter", "wlanx", COMMAND),
    ("sniffer stast", "wlanx", COMMAND),
    ("get_lp", "wlanx", COMMAND),
    ("ics 2-1-0-0-2-0-0-0-0-0", "wlanx", COMMAND),
    ("NonMS 1", "wlanx", COMMAND),
    ("setreg TxopLimit 0x5e", "wlanx", COMMAND),
    ("getreg TxopLimit", "wlanx", COMMAND),
    ("set_pcie_driving", "wlanx", COMMAND),
    ("get_fw_ver", "wlanx", COMMAND),
    ("export_rssi_report rssi 5g net 70 report.xml", "wlanx", COMMAND),
    ("pcie gen_switch_chk", "wlanx", COMMAND),
    ("wtbl 1", "wlanx-eng", 2.6),
]
# The largest table: 80 rows of power limits, from a scenario of its own, which the run parses too.
ROWS = "".join(f"{i % 3:02x}{36 + i:02x}{i % 15:02x}{32 + i % 12:02x}" for i in range(80))
LARGEST = f"0xFFFCF017 ok 8:u32=328 16:u8=1 17:u8=80 20:{ROWS}\n"
LARGEST_LIMIT = 2.4
OTHERS = ["iw", "ethtool", "lspci"]
EXTRA_WRITES = 2
LARGEST_WINDOWS_TOOL = 72192


# Libraries are looked for where they are, since the way through the loader's cache gets longer with
# every library that is installed.
VARIABLES = {"LC_ALL": "C", "PATH": "/usr/bin:/bin:/usr/sbin:/sbin", "TZ": "UTC0",
             "LD_LIBRARY_PATH": "/lib/x86_64-linux-gnu"}
NAME = "./program"
# Debian's valgrind is a script, which adds variables to those of the program.
VALGRIND = shutil.which("valgrind.bin") or "valgrind"


def run(program, words, folder, before=(), **more):
    """Runs a program by the name that all have here, behind the words of the one that watches it."""
    link = os.path.join(folder, NAME)
    if os.path.lexists(link):
        os.remove(link)
    os.symlink(program, link)
    return subprocess.run([*before, NAME, *words], cwd=folder, env={**VARIABLES, **more},
                          capture_output=True, stdin=subprocess.DEVNULL, check=False)


def instructions(program, words, folder, **more):
    done = run(program, words, folder,
               [VALGRIND, "--tool=callgrind", "--callgrind-out-file=/dev/null"], **more)
    return int(re.search(rb"Collected : (\d+)", done.stderr)[1])


def writes(program, words, folder, **more):
    """Write calls to standard output."""
    run(program, words, folder, ["strace", "-f", "-e", "trace=write,writev", "-o", "strace"], **more)
    log = open(os.path.join(folder, "strace"), errors="replace")
    return sum(1 for line in log if re.search(r"writev?\(1,", line))


def requests(program, words, folder, **more):
    trace = os.path.join(folder, "trace")
    if os.path.exists(trace):
        os.remove(trace)
    run(program, words, folder, A8000_TRACE=trace, **more)
    text = open(trace).read() if os.path.exists(trace) else ""
    return sum(1 for line in text.splitlines() if line.startswith("0x"))


def peak_memory(program, words, folder, **more):
    """MiB, of five runs: what the kernel maps ahead differs, and with where the program lies."""
    before = ["setarch", "-R", "time", "-f", "%M"]
    return max(int(run(program, words, folder, before, **more).stderr.split()[-1])
               for _ in range(5)) / 1024


def baseline(folder):
    """The path of a dynamically linked program that prints one line."""
    source, program = os.path.join(folder, "line.c"), os.path.join(folder, "line")
    with open(source, "w") as file:
        file.write('#include <stdio.h>\nint main(void) { puts("one line"); return 0; }\n')
    subprocess.run(["gcc", "-O2", "-o", program, source], check=True)
    return program


def measure_runs(programs, folder, base):
    scenario = os.path.join(folder, "largest.a8000")
    with open(scenario, "w") as file:
        file.write(LARGEST)
    runs = [(edition, words.split(), limit, words, {}) for words, edition, limit in RUNS]
    runs += [("wlanx", ["sar", "get_TxMaxPower_table"], LARGEST_LIMIT,
              "sar get_TxMaxPower_table (80 rows)", {"A8000_SCENARIO": "largest.a8000"})]
    over = 0
    print(f"{'instructions':>12} {'ratio':>7} {'limit':>5} {'writes':>6} {'requests':>8} {'MiB':>5}")
    for edition, words, limit, title, more in runs:
        run_of = (os.path.join(programs, edition), words, folder)
        count = instructions(*run_of, **more)
        written, sent = writes(*run_of, **more), requests(*run_of, **more)
        refused = sent == 0 and words not in ([], ["help"])
        broken = refused or count > limit * base or written > sent + EXTRA_WRITES
        over += broken
        print(f"{count:12} {count / base:7.2f} {limit:5.2f} {written:6} {sent:8} "
              f"{peak_memory(*run_of, **more):5.1f}  {edition} {title}{'  OVER' if broken else ''}")
    return over


def measure_sizes(linux, windows):
    over = 0
    for folder, names in ((linux, ("wlanx", "wlanx-eng")),
                          (windows, ("wlanx.exe", "wlanx-eng.exe", "a8000ctl.exe", "a8000sim.sys"))):
        for name in names:
            if folder is None:
                continue
            size = os.path.getsize(os.path.join(folder, name))
            broken = name == "wlanx.exe" and size > LARGEST_WINDOWS_TOOL
            over += broken
            print(f"{size:12} bytes  {name}{'  OVER' if broken else ''}")
    return over


def main():
    linux = os.path.abspath(sys.argv[1])
    windows = os.path.abspath(sys.argv[2]) if len(sys.argv) > 2 else None
    with tempfile.TemporaryDirectory() as folder:
        program = baseline(folder)
        base = instructions(program, [], folder)
        over = measure_runs(linux, folder, base)
        print(f"{base:12} {1:7.2f} {'':5} {writes(program, [], folder):6} {'':8} "
              f"{peak_memory(program, [], folder):5.1f}  (a dynamically linked puts)")
        for name in OTHERS:
            other = (shutil.which(name, path=VARIABLES["PATH"]), ["--version"], folder)
            count = instructions(*other)
            print(f"{count:12} {count / base:7.2f} {'':5} {writes(*other):6} {'':8} "
                  f"{peak_memory(*other):5.1f}  ({name} --version)")
        over += measure_sizes(linux, windows)
    print(f"bench: {over} of {len(RUNS) + 1} runs and sizes over their limits")
    return 1 if over else 0


if __name__ == "__main__":
    sys.exit(main())
