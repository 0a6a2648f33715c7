#!/usr/bin/env python3
"""Measures what runs of the tool cost, and compares it with the limits.

Instructions are counted by callgrind and given as multiples of a dynamically linked one-line C
program's, counted in the same run, so that the figures carry over to other machines.

  measure.py LINUX_PROGRAMS [WINDOWS_PROGRAMS]
"""

import os
import re
import subprocess
import sys
import tempfile

# Words, edition and limit of the ratio. With the built-in scenario all do what they are for.
LISTING, TABLE, COMMAND, LARGEST_SAR = 3.0, 15.0, 2.0, 6.0
RUNS = [
    ("", "wlanx", LISTING),
    ("help", "wlanx", LISTING),
    ("get_mac_Add", "wlanx", 1.3),
    ("stat", "wlanx", COMMAND),
    ("fixedrate 2-8-1-11-2-1-0-0-1-0", "wlanx", COMMAND),
    ("get_wfd", "wlanx", COMMAND),
    ("get_umac", "wlanx", COMMAND),
    ("country now", "wlanx", COMMAND),
    ("country get_pwr_tbl cck 1", "wlanx", COMMAND),
    ("rf rssi 5g net 70", "wlanx", COMMAND),
    ("TRx auto", "wlanx", COMMAND),
    ("sar get_sar_table", "wlanx", COMMAND),
    ("sar get_siso_sar_table", "wlanx", COMMAND),
    ("sar get_geo_table", "wlanx", COMMAND),
    ("sar get_country_list", "wlanx", COMMAND),
    ("sar get_TxMaxPower_table", "wlanx", LARGEST_SAR),
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
    ("wtbl 1", "wlanx-eng", TABLE),
]
OTHERS = [["iw", "--version"], ["ethtool", "--version"], ["lspci", "--version"]]
EXTRA_WRITES = 2
LARGEST_WINDOWS_TOOL = 100 * 1024


def environment(**more):
    plain = {name: value for name, value in os.environ.items() if not name.startswith("A8000_")}
    return {**plain, "PATH": os.environ["PATH"] + ":/usr/sbin:/sbin", **more}


def run(command, folder, **more):
    return subprocess.run(command, cwd=folder, env=environment(**more), capture_output=True,
                          check=False)


def instructions(command, folder):
    done = run(["valgrind", "--tool=callgrind", f"--callgrind-out-file={folder}/callgrind"] +
               command, folder)
    return int(re.search(rb"Collected : (\d+)", done.stderr)[1])


def writes(command, folder):
    """Write calls to standard output."""
    log = os.path.join(folder, "strace")
    run(["strace", "-f", "-e", "trace=write,writev", "-o", log] + command, folder)
    return sum(1 for line in open(log, errors="replace") if re.search(r"writev?\(1,", line))


def requests(command, folder):
    trace = os.path.join(folder, "trace")
    if os.path.exists(trace):
        os.remove(trace)
    run(command, folder, A8000_TRACE=trace)
    text = open(trace).read() if os.path.exists(trace) else ""
    return sum(1 for line in text.splitlines() if line.startswith("0x"))


def peak_memory(command, folder):
    """KiB."""
    return int(run(["/usr/bin/time", "-f", "%M"] + command, folder).stderr.split()[-1])


def baseline(folder):
    """The path of a dynamically linked program that prints one line."""
    source, program = os.path.join(folder, "line.c"), os.path.join(folder, "line")
    with open(source, "w") as file:
        file.write('#include <stdio.h>\nint main(void) { puts("one line"); return 0; }\n')
    subprocess.run(["gcc", "-O2", "-o", program, source], check=True)
    return program


def measure_runs(programs, folder, base):
    over = 0
    print(f"{'instructions':>12} {'ratio':>7} {'limit':>5} {'writes':>6} {'requests':>8} {'KiB':>5}")
    for words, edition, limit in RUNS:
        command = [os.path.join(programs, edition)] + words.split()
        count = instructions(command, folder)
        written, sent = writes(command, folder), requests(command, folder)
        refused = sent == 0 and limit != LISTING
        broken = refused or count > limit * base or written > sent + EXTRA_WRITES
        over += broken
        print(f"{count:12} {count / base:7.2f} {limit:5.1f} {written:6} {sent:8} "
              f"{peak_memory(command, folder):5}  {edition} {words}{'  OVER' if broken else ''}")
    return over


def measure_sizes(linux, windows):
    over = 0
    for folder, names in ((linux, ("wlanx", "wlanx-eng")),
                          (windows, ("wlanx.exe", "wlanx-eng.exe", "a8000ctl.exe", "a8000sim.sys"))):
        for name in names:
            path = os.path.join(folder or "", name)
            if folder is None or not os.path.exists(path):
                continue
            size = os.path.getsize(path)
            broken = name == "wlanx.exe" and size > LARGEST_WINDOWS_TOOL
            over += broken
            print(f"{size:12} bytes  {name}{'  OVER' if broken else ''}")
    return over


def main():
    linux = os.path.abspath(sys.argv[1])
    windows = os.path.abspath(sys.argv[2]) if len(sys.argv) > 2 else None
    with tempfile.TemporaryDirectory() as folder:
        program = baseline(folder)
        base = instructions([program], folder)
        over = measure_runs(linux, folder, base)
        print(f"{base:12} {1:7.2f} {'':5} {'':6} {'':8} {peak_memory([program], folder):5}  "
              "(a dynamically linked puts)")
        for command in OTHERS:
            count = instructions(command, folder)
            print(f"{count:12} {count / base:7.2f} {'':5} {writes(command, folder):6} {'':8} "
                  f"{peak_memory(command, folder):5}  ({' '.join(command)})")
        over += measure_sizes(linux, windows)
    print(f"bench: {over} of {len(RUNS)} runs and sizes over their limits")
    return 1 if over else 0


if __name__ == "__main__":
    sys.exit(main())
