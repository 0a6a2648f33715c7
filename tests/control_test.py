#!/usr/bin/env python3
"""Drives a8000ctl.exe under Wine through installing, loading, tracing and removing, and compares
what it says. Needs the Wine server of scripts/wine; leaves the driver installed."""

import os
import subprocess
import sys
import tempfile

from run_cases import STARTER

FOLDER = os.path.abspath(sys.argv[1])
INSTALLED = "The simulated adapter is installed and running.\n"
NOT_INSTALLED = "a8000: the driver is not installed; run a8000ctl install\n"


def start(program, *words):
    return subprocess.Popen([*STARTER, os.path.join(FOLDER, program), *words], text=True,
                            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                            stderr=subprocess.PIPE)


def expect(words, output="", errors=""):
    program = start("a8000ctl.exe", *words)
    said = tuple(text.replace("\r", "") for text in program.communicate())
    status = 1 if errors else 0
    if said != (output, errors) or program.returncode != status:
        sys.exit(f"a8000ctl {words}: {program.returncode} {said}, expected {(output, errors)}")


def status(scenario, requests, opened, trace, left_out=""):
    return (f"The simulated adapter is running.\nScenario:  {scenario}\nRequests:  {requests}\n"
            f"Opened by: {opened}\nTrace:     {trace} bytes{left_out}\n")


def main():
    builtin = subprocess.run([*STARTER, os.path.join(FOLDER, "a8000ctl.exe"), "status"],
                             capture_output=True, text=True).stdout.split("Scenario:  ")[0]
    assert builtin == "The simulated adapter is running.\n", builtin
    expect(["remove"], "The simulated adapter is removed.\n")
    for words in (["remove"], ["status"], ["trace", "kept"], ["scenario", "--builtin"]):
        expect(words, errors=NOT_INSTALLED)
    assert not os.path.exists("kept")
    expect(["install"], INSTALLED)
    expect(["install"], INSTALLED)

    scenario = "0xFFFCF105 ok 0:021a2b3c4d5e\nregister 1 2\n"
    open("small", "w").write(scenario)
    open("bad", "w").write(scenario + "0xFFFCF105 okay")
    open("large", "w").write("#" * 1000000 + "\n")
    open("huge", "w").write(("#" * 999 + "\n") * 16778)
    loaded = "The simulated adapter answers from small.\n"
    expect(["scenario", "small"], loaded)
    for name, what in (("missing", "0: No such file or directory"),
                       ("bad", "3: unknown word: okay"),
                       ("huge", "0: scenario is larger than 16 MiB")):
        expect(["scenario", name], errors=f"a8000: {name}:{what}\n")
    expect(["status"], status("loaded, 1 rules, 1 registers", 0, 0, 0))

    holder = start("driver_test.exe", "hold")
    assert holder.stdout.readline() == "0\n"
    expect(["status"], status("loaded, 1 rules, 1 registers", 1, 1, 77))
    holder.kill()
    holder.wait()
    trace = ("open ok\n0xFFFCF105 len=8 if 0:0000000000000000 ok 0:021a2b3c4d5e0000 times=1\n"
             "close ok\n")
    expect(["trace", "trace"])
    assert open("trace").read() == trace, open("trace").read()
    expect(["trace", "missing/trace"], errors="a8000: missing/trace:0: No such file or directory\n")
    open("any", "w").write("1 ok\n")
    expect(["scenario", "any"], "The simulated adapter answers from any.\n")
    filler = start("driver_test.exe", "fill")
    filler.communicate()
    assert filler.returncode == 0
    expect(["trace", "full"],
           errors="a8000: the trace lacks calls for which there was no room: 2\n")
    assert open("full").readlines()[-1] == "# calls left out, for which there was no room: 2\n"
    size = os.path.getsize("full") - len("# calls left out, for which there was no room: 2\n")
    expect(["status"], status("loaded, 1 rules, 0 registers", 70, 0, size, ", calls left out: 2"))
    expect(["scenario", "full"], "The simulated adapter answers from full.\n")
    expect(["scenario", "large"], "The simulated adapter answers from large.\n")
    expect(["scenario", "trace"], "The simulated adapter answers from trace.\n")
    expect(["status"], status("loaded, 1 rules, 0 registers", 0, 0, 0))

    holder = start("driver_test.exe", "hold")
    assert holder.stdout.readline() == "0\n"
    expect(["remove"], "The simulated adapter is removed.\n")
    expect(["install"], INSTALLED)
    holder.kill()
    holder.wait()
    expect(["scenario", "small"], loaded)


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        main()
