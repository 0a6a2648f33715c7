"""Starts what the tests run. No program outlives its time limit or the test that started it."""

import os
import shlex
import signal
import subprocess
import sys
import threading

SECONDS = 60  # a thousand times what a run takes


def start(words, **more):
    """As subprocess.Popen, in a group of its own, so that what the program starts ends with it."""
    return subprocess.Popen(words, start_new_session=os.name != "nt", **more)


def end(process):
    """Kills a program with all that it started."""
    try:
        if os.name == "nt":
            subprocess.run(["taskkill", "/f", "/t", "/pid", str(process.pid)], timeout=SECONDS,
                           capture_output=True, check=False)
        else:
            os.killpg(process.pid, signal.SIGKILL)
    except ProcessLookupError:
        pass
    process.wait()


def finish(process, text=None, seconds=SECONDS):
    """Waits for a program and returns what it printed; raises TimeoutExpired if it hangs."""
    try:
        return process.communicate(text, timeout=seconds)
    except BaseException:
        end(process)
        raise


def run(words, seconds=SECONDS, input=None, **more):
    """As subprocess.run without `check`; ends the tests if the program hangs."""
    pipes = {"stdout": subprocess.PIPE, "stderr": subprocess.PIPE,
             "stdin": subprocess.DEVNULL if input is None else subprocess.PIPE}
    process = start(words, **{**pipes, **more})
    try:
        output, errors = finish(process, input, seconds)
    except subprocess.TimeoutExpired:
        sys.exit(f"{shlex.join(words)}: still runs after {seconds} seconds")
    return subprocess.CompletedProcess(words, process.returncode, output, errors)


def run_reliably(words, **more):
    """As run. Of a thousand programs Wine fails to start one or two, which then print nothing and
    seem to end with status 1: they are started again."""
    for _ in range(5):
        done = run(words, **more)
        if done.stdout or done.stderr or done.returncode != 1:
            break
    return done


def read_line(process, seconds=SECONDS):
    """The next line of a program's output; empty if it has ended or took too long."""
    timer = threading.Timer(seconds, end, [process])
    timer.start()
    try:
        return process.stdout.readline()
    finally:
        timer.cancel()


# A test that is told to end first ends what it started.
signal.signal(signal.SIGTERM, lambda *_: sys.exit(128 + signal.SIGTERM))
