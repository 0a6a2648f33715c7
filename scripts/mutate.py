#!/usr/bin/env python3
"""Changes one thing at a time in a copy of the tool's sources, builds what that touches, runs the
tests and lists the changes that no test noticed. If the plain build's tests do not notice a change, the
cases of its folder are run once more with the sanitizers.

A change that does not compile, or compiles to the same code, is replaced by another one. Changes
that make no difference are listed with their reason in scripts/equivalent_mutants.txt.
"""

import argparse
import os
import random
import re
import shutil
import subprocess
import sys
import time
from collections import Counter, defaultdict

import mutants
from tree_files import ROOT, tree_files

WORK = os.path.join(ROOT, "build", "mutate")
TREE, PLAIN, SANITIZED = (os.path.join(WORK, name) for name in ("tree", "plain", "sanitized"))
EQUIVALENT = os.path.join(ROOT, "scripts", "equivalent_mutants.txt")
LIMIT = 0.9
PROGRAMS = ("wlanx", "wlanx-eng")
CORES = str(os.cpu_count())

# Other hosts' code.
LEFT_OUT = re.compile(r"^simulator/windows/|^device/(driver|recorded)_|_windows\.cpp$")
SOURCE = re.compile(r"^(app|channel|commands|device|platform|simulator)/.*\.(cpp|h|inc)$")
# Tests of the sources and of other programs.
NOT_RUN = r"^(json|harness|documents\.commands|completions.*|install)$"


def choose(options):
    """Yields changes without end: takes the folders in turn, and in each a random change of a random kind."""
    rng = random.Random(options.seed)
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


def succeeds(*command, seconds=900):
    """Runs a command within limits of time, memory and file size. It ends with this program, too.

    A test may raise the limits, which need not hold for what it starts."""
    # A test asks for 4 GiB. The sanitizers reserve terabytes.
    memory = "unlimited" if SANITIZED in command else 8 << 30
    return subprocess.run(
        ["setpriv", "--pdeathsig", "TERM", "timeout", "-k", "2", str(seconds),
         "prlimit", f"--as={memory}:", f"--fsize={256 << 20}:", *command],
        env={**os.environ, "TMPDIR": WORK}, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
        stderr=subprocess.DEVNULL, check=False).returncode == 0


def compiles(folder, *targets):
    return succeeds("ninja", "-C", folder, *targets)


def notice(folder, *choice):
    """Whether one of the chosen tests fails."""
    return not succeeds("ctest", "--test-dir", folder, "-j", CORES, "--stop-on-failure", *choice,
                        seconds=300)


def prepare():
    """Makes the copy and builds it, without a change."""
    shutil.rmtree(WORK, ignore_errors=True)
    for path in tree_files():
        target = os.path.join(TREE, path)
        os.makedirs(os.path.dirname(target), exist_ok=True)
        shutil.copy(os.path.join(ROOT, path), target)
    for folder, sanitize, targets, choice in (
            (PLAIN, "OFF", [], ["-E", NOT_RUN]), (SANITIZED, "ON", PROGRAMS, ["-R", "^cases"])):
        if not (succeeds("cmake", "-G", "Ninja", "-S", TREE, "-B", folder, "-DCMAKE_BUILD_TYPE=",
                         "-DCMAKE_CXX_FLAGS=-O1 -w", f"-DWLANX_SANITIZE={sanitize}")
                and compiles(folder, *targets)):
            sys.exit(f"the unchanged tree does not build in {folder}")
        if notice(folder, "--no-tests=error", *choice):
            sys.exit(f"the tests fail on the unchanged tree in {folder}")


def programs():
    return [read(os.path.join(PLAIN, name)) for name in PROGRAMS]


def try_change(original, path, text, edits):
    """Returns None if the programs are the `original` ones, else whether a test notices the change."""
    target = os.path.join(TREE, path)
    near = rf"^cases\..*{path.split('/')[-2]}"
    likely = rf"{near}|^cases\.refusals$"
    try:
        write(target, mutants.applied(text, edits))
        if not compiles(PLAIN, *PROGRAMS) or programs() == original:
            return None
        return (notice(PLAIN, "-R", likely)
                or not compiles(PLAIN)
                or notice(PLAIN, "--no-tests=error", "-E", f"{likely}|{NOT_RUN}")
                or not compiles(SANITIZED, *PROGRAMS)
                or notice(SANITIZED, "-R", "^cases"))
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


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--sample", type=int, default=60, metavar="N", help="changes to try (60)")
    parser.add_argument("--seed", type=int, default=1, metavar="S", help="draws other ones (1)")
    parser.add_argument("--misread", action="store_true",
                        help="only changes made by a person who reads a rule wrongly")
    parser.add_argument("paths", nargs="*", default=[""], metavar="PATH",
                        help="only in files whose paths begin so")
    options = parser.parse_args()
    tried, caught, harmless = Counter(), Counter(), 0
    known = equivalents()
    prepare()
    original, started = programs(), time.time()
    for path, text, kind, edits in choose(options):
        noticed = try_change(original, path, text, edits)
        if noticed is None:
            continue
        number, old, new = lines_of(text, edits)
        if not noticed and {(path, new), (path, kind)} & known:
            harmless += 1
            continue
        if not noticed:
            print(f"{path}:{number}: {kind}\n  - {old}\n  + {new}", flush=True)
        tried[os.path.dirname(path)] += 1
        caught[os.path.dirname(path)] += noticed
        if sum(tried.values()) == options.sample:
            break
    for folder in sorted(tried):
        print(f"{caught[folder]:4} of {tried[folder]:4} noticed in {folder}")
    count, seen = sum(tried.values()), sum(caught.values())
    rate = seen / count if count else 0
    print(f"mutate: {seen} of {count} changes noticed ({100 * rate:.1f} %), {harmless} harmless "
          f"ones left out, {(time.time() - started) / max(count, 1):.1f} s each")
    return 0 if rate >= LIMIT else 1


if __name__ == "__main__":
    sys.exit(main())
