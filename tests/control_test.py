#!/usr/bin/env python3
"""Drives a8000ctl.exe under Wine through installing, loading, tracing and removing, and compares
what it says. Needs the Wine server of scripts/wine; leaves the driver installed."""

import os
import shutil
import subprocess
import sys
import tempfile

import programs
from run_cases import STARTER

FOLDER = os.path.abspath(sys.argv[1])
INSTALLED = "The simulated adapter is installed and running.\n"
NOT_INSTALLED = "a8000: the driver is not installed; run a8000ctl install\n"
REMOVED = "The simulated adapter is removed.\n"
IN_USE = "a8000: the driver is in use; close the programs that have the device open\n"
HELD = ("a8000: the driver is still being removed; close the programs that have the device open, "
        "and the Services console\n")
NAME_TAKEN = "a8000: another driver has the name A8000; disable the adapter that it belongs to\n"


def start(program, *words, stdin=subprocess.DEVNULL):
    return programs.start([*STARTER, program, *words], encoding="utf-8", stdin=stdin,
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE)


def control(*words):
    return start(os.path.join(FOLDER, "a8000ctl.exe"), *words)


def expect_of(program, output="", errors="", tries=5):
    said = tuple(text.replace("\r", "") for text in programs.finish(program))
    status = 1 if errors else 0
    if said == ("", "") and program.returncode == 1 and tries:  # Wine has not started it
        expect_of(start(*program.args[len(STARTER):]), output, errors, tries - 1)
    elif said != (output, errors) or program.returncode != status:
        sys.exit(f"{program.args}: {program.returncode} {said}, expected {(output, errors)}")


def expect(words, output="", errors=""):
    expect_of(control(*words), output, errors)


def services(*words):
    """The system's own control of services. Returns its status."""
    return programs.run_reliably([*STARTER, "sc.exe", *words]).returncode


def hold(what):
    """A program that holds something until it is killed."""
    for _ in range(5):
        holder = start(os.path.join(FOLDER, "driver_test.exe"), what)
        if said := programs.read_line(holder):
            break
    assert said == "0\n", said
    return holder


def write(name, text):
    with open(name, "w", newline="\n") as file:
        file.write(text)


def status(scenario, requests, opened, trace, left_out=""):
    return (f"The simulated adapter is running.\nScenario:  {scenario}\nRequests:  {requests}\n"
            f"Opened by: {opened}\nTrace:     {trace} bytes{left_out}\n")


def main():
    assert programs.finish(control("status"))[0].startswith("The simulated adapter is running.\n")
    expect(["remove"], REMOVED)
    for words in (["remove"], ["status"], ["trace", "kept"], ["scenario", "--builtin"]):
        expect(words, errors=NOT_INSTALLED)
    assert not os.path.exists("kept")
    expect(["install"], INSTALLED)
    expect(["install"], INSTALLED)

    scenario = "0xFFFCF105 ok 0:021a2b3c4d5e\nregister 1 2\n"
    write("small", scenario)
    write("bad", scenario + "0xFFFCF105 okay")
    write("large", "#" * 1000000 + "\n")
    huge = ("#" * 1023 + "\n") * 16383 + "#" * 1019 + "\n7 on"
    write("mistake", huge)
    write("huge", huge + "\n")
    loaded = "The simulated adapter answers from small.\n"
    expect(["scenario", "small"], loaded)
    for name, what in (("missing", "0: No such file or directory"),
                       ("bad", "3: unknown word: okay"),
                       ("mistake", "16385: unknown word: on"),
                       ("huge", "0: scenario is larger than 16 MiB")):
        expect(["scenario", name], errors=f"a8000: {name}:{what}\n")
    expect(["status"], status("small, 1 rules, 1 registers", 0, 0, 0))

    holder = hold("device")
    expect(["install"], errors=IN_USE)
    expect(["status"], status("small, 1 rules, 1 registers", 1, 1, 77))
    programs.end(holder)
    trace = ("open ok\n0xFFFCF105 len=8 if 0:0000000000000000 ok 0:021a2b3c4d5e0000 times=1\n"
             "close ok\n")
    expect(["trace", "trace"], "The trace is in trace.\n")
    assert open("trace").read() == trace, open("trace").read()
    expect(["trace", "missing/trace"], errors="a8000: missing/trace:0: No such file or directory\n")
    write("any", "1 ok\n")
    expect(["scenario", "any"], "The simulated adapter answers from any.\n")
    filler = start(os.path.join(FOLDER, "driver_test.exe"), "fill")
    programs.finish(filler)
    assert filler.returncode == 0
    expect(["trace", "full"],
           errors="a8000: the trace lacks calls for which there was no room: 2\n")
    assert open("full").readlines()[-1] == "# calls left out, for which there was no room: 2\n"
    size = os.path.getsize("full") - len("# calls left out, for which there was no room: 2\n")
    expect(["status"], status("any, 1 rules, 0 registers", 70, 0, size, ", calls left out: 2"))
    expect(["scenario", "full"], "The simulated adapter answers from full.\n")
    expect(["redact", "trace", "redacted"],
           "address 02-1a-2b-3c-4d-5e is now 02-00-00-00-00-01, places: 1\n"
           "requests left out, of a code or length that is not known: 0\ncomments left out: 0\n"
           "This list is private: it tells what the report does not.\n")
    assert open("redacted").read() == trace.replace("021a2b3c4d5e", "020000000001")
    expect(["redact", "trace", "trace"],
           errors="a8000: trace:0: the report would take the place of the trace\n")
    expect(["scenario", "large"], "The simulated adapter answers from large.\n")
    expect(["scenario", "trace"], "The simulated adapter answers from trace.\n")
    expect(["status"], status("trace, 1 rules, 0 registers", 0, 0, 0))

    for _ in range(3):
        expect(["scenario", "small"], loaded)
        programs.end(hold("requests"))
    expect(["scenario", "small"], loaded)
    expect(["status"], status("small, 1 rules, 1 registers", 0, 0, 0))
    check_input()
    check_services()
    expect(["install"], INSTALLED)


def check_input():
    """Names outside of any one code page, and lines that are no commands."""
    folder = "two blanks \u00fc\u0416"
    os.mkdir(folder)
    for name in ("a8000ctl.exe", "a8000sim.sys"):
        shutil.copy(os.path.join(FOLDER, name), folder)
    expect_of(start(os.path.join(folder, "a8000ctl.exe"), "install"), INSTALLED)
    name = os.path.join(folder, "\u00fc \u0416")
    write(name, "1 ok\n")
    expect(["scenario", name], f"The simulated adapter answers from {name}.\n")
    program = start(os.path.join(FOLDER, "a8000ctl.exe"), "-", stdin=subprocess.PIPE)
    said = programs.finish(program, "remove " * 1000 + "\nremove\0\n" + "x" * 4090 +
                           "remove\nscenario " + name)
    assert said[0].replace("\r", "") == "= 1\n" * 3 + (
        f"The simulated adapter answers from {name}.\n= 0\n"), said
    assert said[1].count("a8000: a line is too long or holds a zero byte") == 3, said


def check_services():
    """Other drivers and services, and several control programs at the same time."""
    shutil.copy(os.path.join(FOLDER, "a8000sim.sys"), "other.sys")
    image = os.path.abspath("other.sys").replace("/", "\\")
    image = "\\??\\" + (image if ":" in image else "Z:" + image)
    services("create", "other", "type=", "kernel", "binPath=", image)
    services("start", "other")
    expect(["scenario", "--builtin"], "The simulated adapter answers from the built-in scenario.\n")

    holder = hold("service")
    expect(["remove"], errors=HELD)
    expect(["install"], errors=HELD)
    programs.end(holder)
    expect(["install"], INSTALLED)
    together = [control("install"), control("remove"), control("install")]
    for program, output in zip(together, (INSTALLED, REMOVED, INSTALLED)):
        expect_of(program, output)
    expect(["install"], INSTALLED)
    expect(["remove"], REMOVED)

    assert services("start", "other") == 0
    expect(["install"], errors=NAME_TAKEN)
    services("stop", "other")
    services("delete", "other")
    expect(["remove"], errors=NOT_INSTALLED)  # an install that fails leaves no service

    foreign = f"a8000: the service a8000sim is another program's: {image}\n"
    services("create", "a8000sim", "type=", "kernel", "binPath=", image)
    for word in ("status", "install", "remove"):
        expect([word], errors=foreign)
    assert services("delete", "a8000sim") == 0


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        main()
