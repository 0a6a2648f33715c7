#!/usr/bin/env python3
"""Changes one thing at a time in a copy of the tool's sources, builds what that touches, runs the
tests and lists the changes that none of them noticed. What the plain build's tests let pass is
tried once more by the cases of its folder with the sanitizers.

A change that does not compile, or compiles to the same code, is replaced by another one. Changes
that make no difference are listed with their reason in scripts/equivalent_mutants.txt.
"""

import argparse
import os
import queue
import random
import re
import resource
import shutil
import signal
import subprocess
import sys
import time
from collections import Counter, defaultdict
from concurrent.futures import ThreadPoolExecutor

import mutants
from tree_files import ROOT, tree_files

WORK = os.path.join(ROOT, "build", "mutate")
EQUIVALENT = os.path.join(ROOT, "scripts", "equivalent_mutants.txt")
LIMIT = 0.9
PROGRAMS = ("wlanx", "wlanx-eng")
STARTED = set()  # groups of processes that run now

# Other hosts' code.
LEFT_OUT = re.compile(r"^simulator/windows/|^device/(driver|recorded)_|_windows\.cpp$")
SOURCE = re.compile(r"^(app|channel|commands|device|platform|simulator)/.*\.(cpp|h|inc)$")


def choose(options, rng):
    """Endless: folders in turn, in each a random kind, of it a random change."""
    texts = {path: read(os.path.join(ROOT, path)).decode() for path in tree_files()
             if SOURCE.match(path) and not LEFT_OUT.search(path)}
    fields = mutants.Fields(texts.values())
    pools = defaultdict(lambda: defaultdict(list))
    for path, text in texts.items():
        if path.startswith(tuple(options.paths)):
            for kind, edits in mutants.changes(text, fields, rng, options.misread):
                pools[os.path.dirname(path)][kind].append((path, text, kind, edits))
    total = sum(len(pool) for kinds in pools.values() for pool in kinds.values())
    print(f"{total} changes in {len(pools)} folders, {options.sample} of them drawn", flush=True)
    while pools:
        for folder in list(pools):
            kinds = pools[folder]
            kind = rng.choice(sorted(kinds))
            yield kinds[kind].pop(rng.randrange(len(kinds[kind])))
            if not kinds[kind]:
                del kinds[kind]
            if not kinds:
                del pools[folder]


def read(path):
    with open(path, "rb") as file:
        return file.read()


def write(path, text):
    with open(path, "w", encoding="utf-8") as file:
        file.write(text)


def kill(group):
    try:
        os.killpg(group, signal.SIGTERM)  # a test takes along what it started
        time.sleep(0.5)
        os.killpg(group, signal.SIGKILL)
    except ProcessLookupError:
        pass


def end(*_):
    for group in list(STARTED):
        kill(group)
    os._exit(1)


class Place:
    """A copy of the tree with its builds, where one change at a time is tried."""

    def __init__(self, number, cores):
        self.cores = cores
        self.folder = os.path.join(WORK, str(number))
        self.tree, self.plain, self.sanitized = (os.path.join(self.folder, name)
                                                 for name in ("tree", "build", "sanitized"))
        self.copy_tree()
        # The documents' check asks git which files there are.
        subprocess.run("git init -q && git add -A", shell=True, cwd=self.tree, check=True)
        self.made = set()
        self.make(self.plain, "-DCMAKE_CXX_FLAGS=-O1 -w")
        self.original = self.digest()

    def copy_tree(self):
        """Files that are the same keep their time, and what is built of them."""
        wanted = set(tree_files())
        for path in wanted:
            source, target = os.path.join(ROOT, path), os.path.join(self.tree, path)
            os.makedirs(os.path.dirname(target), exist_ok=True)
            if not os.path.exists(target) or read(source) != read(target):
                shutil.copyfile(source, target)
                shutil.copymode(source, target)
        for folder, _, names in os.walk(self.tree):
            for name in names:
                path = os.path.relpath(os.path.join(folder, name), self.tree)
                if path not in wanted and not path.startswith(".git" + os.sep):
                    os.remove(os.path.join(self.tree, path))

    def quiet(self, command, seconds=300):
        """Whether it succeeds; False too where it does not end."""
        def limits():
            if not any(self.sanitized in word for word in command):  # it reserves terabytes
                resource.setrlimit(resource.RLIMIT_AS, (8 << 30, 8 << 30))  # a test asks for 4 GiB
            resource.setrlimit(resource.RLIMIT_FSIZE, (256 << 20, 256 << 20))
        process = subprocess.Popen(command, cwd=self.folder, env={
            **os.environ, "TMPDIR": self.folder, "TEST_TMPDIR": self.folder},
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
            start_new_session=True, preexec_fn=limits)
        STARTED.add(process.pid)
        try:
            return process.wait(seconds) == 0
        except subprocess.TimeoutExpired:
            kill(process.pid)
            process.wait()
            return False
        finally:
            STARTED.discard(process.pid)

    def make(self, build, *choices):
        """Builds the unchanged tree, once, and tries the tests on it."""
        if build in self.made:
            return
        self.made.add(build)
        if not (self.quiet(["cmake", "-G", "Ninja", "-S", self.tree, "-B", build,
                            "-DCMAKE_BUILD_TYPE=", *choices], 900) and self.compiles(build)):
            sys.exit(f"the unchanged tree does not build in {build}")
        if self.noticed(build, ["status.cases"]):
            sys.exit(f"the tests fail on the unchanged tree in {build}")

    def compiles(self, build):
        return self.quiet(["ninja", "-C", build, "-j", str(self.cores), *PROGRAMS], 900)

    def digest(self):
        return [read(os.path.join(self.plain, name)) for name in PROGRAMS]

    def test_commands(self, build, near):
        """The Linux tests, those first that are most likely to notice and start at once; with the
        sanitizers, which take their time, only those."""
        tests = os.path.join(self.tree, "tests")
        files = sorted(os.listdir(os.path.join(tests, "cases")))
        cases = [["python3", f"{tests}/run_cases.py", "--first", "--programs", build,
                  f"{tests}/cases/{name}"]
                 for name in [*near, *(name for name in files if name not in near)]]
        yield from cases[:len(near)]
        if build == self.sanitized:
            return
        yield ["ninja", "-C", build, "-j", str(self.cores)]  # the tests that are programs
        yield [f"{build}/tests/unit_tests"]
        yield [f"{build}/tests/handlers_test"]
        yield from cases[len(near):]
        for path in ("tests/faults.py", "scripts/check_documents.py"):
            yield ["python3", os.path.join(self.tree, path), "--programs", build]

    def noticed(self, build, near):
        return not all(self.quiet(command) for command in self.test_commands(build, near))

    def try_change(self, path, text, edits):
        """Returns None where it is no change, else whether a test notices it."""
        target = os.path.join(self.tree, path)
        changed = mutants.applied(text, edits)
        try:
            write(target, changed)
            if not self.compiles(self.plain) or self.digest() == self.original:
                return None
            cases = os.listdir(os.path.join(self.tree, "tests", "cases"))
            near = sorted(name for name in cases if path.split("/")[-2] in name)
            if self.noticed(self.plain, [*near, "refusals.cases"]):
                return True
            write(target, text)
            self.make(self.sanitized, "-DWLANX_SANITIZE=ON", "-DCMAKE_CXX_FLAGS=-O1 -w")
            write(target, changed)
            return not self.compiles(self.sanitized) or self.noticed(self.sanitized, near)
        finally:
            write(target, text)


def equivalents():
    """Pairs of a path and a new text or a kind of change. In the file the reason follows them."""
    pairs = set()
    for line in open(EQUIVALENT, encoding="utf-8"):
        if line.strip() and not line.startswith("#"):
            path, change = line.split("  ## ")[0].split(": ", 1)
            pairs.add((path, change.strip()))
    return pairs


def lines_of(text, edits):
    """The number of the first changed line, what stood there, and what stands there now."""
    new = mutants.applied(text, edits)
    first = text.count("\n", 0, min(start for start, _, _ in edits))
    last = text.count("\n", 0, max(end for _, end, _ in edits))
    before, after = text.split("\n"), new.split("\n")
    old, now = before[first:last + 1], after[first:last + 1 + len(after) - len(before)]
    changed = [line.strip() for line in now if line not in old and line.strip()]
    removed = [line.strip() for line in old if line not in now]
    if not removed and not changed:  # rows exchanged
        changed, removed = ([line.strip() for line in lines] for lines in (now, old))
    return first + 1, " / ".join(removed), " / ".join(changed) or f"(nothing) {' '.join(removed)}"


def try_sample(options):
    """Yields (the change's folder, whether it is harmless, whether it was noticed)."""
    known = equivalents()
    places = queue.SimpleQueue()
    drawn = choose(options, random.Random(options.seed))
    def try_one(change):
        place = places.get()
        try:
            path, text, _, edits = change
            return change, place.try_change(path, text, edits)
        finally:
            places.put(place)

    pool = ThreadPoolExecutor(options.jobs)
    try:
        cores = max(os.cpu_count() // options.jobs, 1)
        for place in pool.map(lambda number: Place(number, cores), range(options.jobs)):
            places.put(place)
        while batch := [change for _, change in zip(range(4 * options.jobs), drawn)]:
            for (path, text, kind, edits), result in pool.map(try_one, batch):
                if result is None:
                    continue
                number, old, shown = lines_of(text, edits)
                harmless = not result and bool({(path, shown), (path, kind)} & known)
                if not result and not harmless:
                    print(f"{path}:{number}: {kind}\n  - {old}\n  + {shown}", flush=True)
                yield os.path.dirname(path), harmless, result
    finally:
        pool.shutdown(cancel_futures=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--sample", type=int, default=60, metavar="N", help="changes to try (60)")
    parser.add_argument("--seed", type=int, default=1, metavar="S", help="chooses other ones (1)")
    parser.add_argument("--misread", action="store_true",
                        help="only changes as a person makes them who reads a rule wrongly")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), metavar="N",
                        help="changes to try at the same time (one for each core)")
    parser.add_argument("paths", nargs="*", default=[""], metavar="PATH",
                        help="only in files whose paths begin so")
    options = parser.parse_args()
    for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
        signal.signal(number, end)
    tried, caught, harmless = Counter(), Counter(), 0
    started = time.time()
    for place, known, result in try_sample(options):
        harmless += known
        tried[place] += not known
        caught[place] += result
        if sum(tried.values()) == options.sample:
            break
    for place in sorted(tried):
        print(f"{caught[place]:4} of {tried[place]:4} noticed in {place}")
    count, seen = sum(tried.values()), sum(caught.values())
    rate = seen / count if count else 0
    print(f"mutate: {seen} of {count} changes noticed ({100 * rate:.1f} %), {harmless} harmless "
          f"ones left out, {(time.time() - started) / max(count, 1):.1f} s each")
    return 0 if rate >= LIMIT else 1


if __name__ == "__main__":
    sys.exit(main())
