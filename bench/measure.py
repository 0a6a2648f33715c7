#!/usr/bin/env python3
"""Measures what runs of the tool cost, and compares it with the limits.

callgrind counts the instructions. They are given as multiples of those of a C program that prints the
same bytes with printf and is linked as the tool is. So the figures hold on other machines, too. Every
program runs by the same name and with the same few variables, since the counts depend on these.

  measure.py LINUX_PROGRAMS [WINDOWS_PROGRAMS]
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile

# Edition and words. With the built-in scenario every run succeeds.
RUNS = [
    ("wlanx", ""),
    ("wlanx", "get_mac_Add"),
    ("wlanx", "stat"),
    ("wlanx", "fixedrate 2-8-1-11-2-1-0-0-1-0"),
    ("wlanx", "get_wfd"),
    ("wlanx", "get_umac"),
    ("wlanx", "country now"),
    ("wlanx", "country get_pwr_tbl cck 1"),
    ("wlanx", "rf rssi 5g net 70"),
    ("wlanx", "TRx auto"),
    ("wlanx", "sar get_sar_table"),
    ("wlanx", "sar get_siso_sar_table"),
    ("wlanx", "sar get_geo_table"),
    ("wlanx", "sar get_country_list"),
    ("wlanx", "sar get_TxMaxPower_table"),
    ("wlanx", "sar get_sensor_info"),
    ("wlanx", "sar get_country_code"),
    ("wlanx", "sar get_FlagTable"),
    ("wlanx", "txhang_counter"),
    ("wlanx", "sniffer stast"),
    ("wlanx", "get_lp"),
    ("wlanx", "ics 2-1-0-0-2-0-0-0-0-0"),
    ("wlanx", "NonMS 1"),
    ("wlanx", "setreg TxopLimit 0x5e"),
    ("wlanx", "getreg TxopLimit"),
    ("wlanx", "set_pcie_driving"),
    ("wlanx", "get_fw_ver"),
    ("wlanx", "export_rssi_report rssi 5g net 70 report.xml"),
    ("wlanx", "pcie gen_switch_chk"),
    ("wlanx-eng", "wtbl 1"),
]
LIMITS = {"wtbl 1": 1.5, "export_rssi_report rssi 5g net 70 report.xml": 3.0}
OTHER_LIMIT = 2.5
EXTRA_WRITES = 2
LARGEST = {"wlanx.exe": 72192, "wlanx-eng.exe": 155648}

VARIABLES = {"LC_ALL": "C", "PATH": "/usr/bin:/bin:/usr/sbin:/sbin", "TZ": "UTC0"}
NAME = "./program"
# Debian's valgrind is a script, which adds variables to those of the program.
VALGRIND = shutil.which("valgrind.bin") or "valgrind"
# In a line of output numbers are printed by a conversion, the rest as it stands.
NUMBER = re.compile(r"0x(?P<hex>[1-9a-f][0-9a-f]{0,7})\b|0x(?P<filled>0[0-9a-f]{7})\b|"
                    r"\b(?P<decimal>0|[1-9]\d{0,8})\b")
FORMATS = {"hex": "0x%x", "filled": "0x%08x", "decimal": "%d"}


def run(program, words, folder, before=(), **more):
    """Runs a program by the common name, under the program that watches it."""
    link = os.path.join(folder, NAME)
    if os.path.lexists(link):
        os.remove(link)
    os.symlink(program, link)
    return subprocess.run([*before, NAME, *words], cwd=folder, env={**VARIABLES, **more},
                          capture_output=True, stdin=subprocess.DEVNULL, check=False)


def instructions(program, words, folder):
    done = run(program, words, folder,
               [VALGRIND, "--tool=callgrind", "--callgrind-out-file=/dev/null"])
    return int(re.search(rb"Collected : (\d+)", done.stderr)[1])


def writes(program, words, folder):
    """Write calls to standard output."""
    run(program, words, folder, ["strace", "-f", "-e", "trace=write,writev", "-o", "strace"])
    log = open(os.path.join(folder, "strace"), errors="replace")
    return sum(1 for line in log if re.search(r"writev?\(1,", line))


def requests(program, words, folder):
    trace = os.path.join(folder, "trace")
    if os.path.exists(trace):
        os.remove(trace)
    run(program, words, folder, A8000_TRACE=trace)
    text = open(trace).read() if os.path.exists(trace) else ""
    return sum(1 for line in text.splitlines() if line.startswith("0x"))


def peak_memory(program, words, folder):
    """MiB, the most of five runs: how much the kernel maps ahead differs between them."""
    before = ["setarch", "-R", "time", "-f", "%M"]
    return max(int(run(program, words, folder, before).stderr.split()[-1])
               for _ in range(5)) / 1024


def printf_of(line):
    """A call of printf for one line of output."""
    values, after, text = [], 0, ""
    for found in NUMBER.finditer(line):
        text += line[after:found.start()].replace("%", "%%") + FORMATS[found.lastgroup]
        values.append(found[0])
        after = found.end()
    text += line[after:].replace("%", "%%")
    quoted = "".join(c if c.isalnum() or c in " %" else f"\\{ord(c):03o}" for c in text)
    return f'  printf({", ".join([chr(34) + quoted + chr(34), *values])});\n'


def printing(output, folder):
    """The path of a C program that prints the same with a printf a line."""
    source, program = os.path.join(folder, "same.c"), os.path.join(folder, "same")
    calls = "".join(printf_of(line) for line in output.decode("latin-1").splitlines(True))
    with open(source, "w") as file:
        file.write(f"#include <stdio.h>\nint main(void) {{\n{calls}  return 0;\n}}\n")
    subprocess.run(["gcc", "-O2", "-fno-builtin", "-static", "-s", "-o", program, source], check=True)
    if run(program, [], folder).stdout != output:
        sys.exit("bench: the program to compare with prints something else")
    return program


def measure_runs(programs, folder):
    over = 0
    print(f"{'instructions':>12} {'printf':>8} {'ratio':>5} {'limit':>5} {'writes':>6} "
          f"{'requests':>8} {'MiB':>5}")
    for edition, words in RUNS:
        run_of = (os.path.join(programs, edition), words.split(), folder)
        same = printing(run(*run_of).stdout, folder)
        count, base = instructions(*run_of), instructions(same, [], folder)
        written, sent = writes(*run_of), requests(*run_of)
        limit = LIMITS.get(words, OTHER_LIMIT)
        broken = (sent == 0 and words != "") or count > limit * base or written > sent + EXTRA_WRITES
        over += broken
        print(f"{count:12} {base:8} {count / base:5.2f} {limit:5.2f} {written:6} {sent:8} "
              f"{peak_memory(*run_of):5.1f}  {edition} {words}{'  OVER' if broken else ''}")
    return over


def measure_sizes(linux, windows):
    over = 0
    for folder, names in ((linux, ("wlanx", "wlanx-eng")),
                          (windows, ("wlanx.exe", "wlanx-eng.exe", "a8000ctl.exe", "a8000sim.sys"))):
        for name in names:
            if folder is None:
                continue
            size = os.path.getsize(os.path.join(folder, name))
            broken = size > LARGEST.get(name, size)
            over += broken
            print(f"{size:12} bytes  {name}{'  OVER' if broken else ''}")
    return over


def main():
    linux = os.path.abspath(sys.argv[1])
    windows = os.path.abspath(sys.argv[2]) if len(sys.argv) > 2 else None
    with tempfile.TemporaryDirectory() as folder:
        over = measure_runs(linux, folder) + measure_sizes(linux, windows)
    print(f"bench: {over} runs and sizes over their limits, of {len(RUNS) + len(LARGEST)}")
    return 1 if over else 0


if __name__ == "__main__":
    sys.exit(main())
