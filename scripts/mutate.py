#!/usr/bin/env python3
"""Changes one thing at a time in a copy of the tool's sources, builds what that touches, runs the
tests and lists the changes that none of them noticed. What the plain build's tests let pass is
tried once more with the sanitizers.

A change that does not compile, or compiles to the same code, is replaced by another one. Changes
that make no difference are listed with their reason in scripts/equivalent_mutants.txt.
"""

import argparse
import os
import random
import re
import resource
import shutil
import signal
import subprocess
import sys
import time
from collections import Counter, defaultdict

from tree_files import ROOT, tree_files

WORK = os.path.join(ROOT, "build", "mutate")
TREE = os.path.join(WORK, "tree")
BUILD = os.path.join(WORK, "build")
SANITIZED = os.path.join(WORK, "sanitized")
EQUIVALENT = os.path.join(ROOT, "scripts", "equivalent_mutants.txt")
LIMIT = 0.9

# Other hosts' code, and what is compared with by its address only.
LEFT_OUT = re.compile(r"^simulator/windows/|_windows\.cpp$")
SOURCE = re.compile(r"^(app|channel|commands|platform|simulator)/.*\.(cpp|h|inc)$")

SWAPS = {"==": "!=", "!=": "==", "<": "<=", "<=": "<", ">": ">=", ">=": ">", "&&": "||",
         "||": "&&", "+": "-", "-": "+", "*": "+", "/": "*", "%": "/", "<<": ">>", ">>": "<<",
         "&": "|", "|": "&", "+=": "-=", "-=": "+=", "++": "--", "--": "++",
         "true": "false", "false": "true"}
TOKEN = re.compile(
    r'(?P<text>(?:R"\w*\(.*?\)\w*"|"(?:[^"\\]|\\.)*"))'
    r"|(?P<character>'(?:[^'\\]|\\.)+')"
    r"|(?P<comment>//.*)"
    r"|(?P<number>\b(?:0x[0-9A-Fa-f]+|\d+)(?:U|u)?\b(?!\.))"
    r"|(?P<word>\btrue\b|\bfalse\b)"
    r"|(?P<step>\+\+|--)"
    r"|(?P<operator>(?<= )(?:==|!=|<=|>=|&&|\|\||\+=|-=|<<|>>|[<>+\-*/%&|])(?= ))")
ROW = re.compile(r"^\s*\{.*\},?$")
STATEMENT = re.compile(r"^\s+(?!return\b|constexpr\b|const\b|static\b|using\b|else\b|case\b)"
                       r"(?:if \(.*\) (?:return.*|break|continue);|[\w\[\]>.*:-]+(?: [|&+-]?= |"
                       r"\().*;)(?:  //.*)?$")


def changed_number(text, rng):
    suffix = text[-1] if text[-1] in "uU" else ""
    digits = text.rstrip("uU")
    value = int(digits, 0) if not re.fullmatch(r"0\d+", digits) else int(digits, 8)
    changed = value ^ (1 << rng.randrange(8)) if digits.startswith("0x") and value > 255 else (
        value - 1 if value > 0 and rng.random() < 0.5 else value + 1)
    return (f"0x{changed:0{len(digits) - 2}X}" if digits.startswith("0x") else str(changed)) + suffix


def changed_text(text, rng):
    letters = [i for i in range(text.index('"') + 1, len(text) - 1)
               if text[i].isalpha() and text[i - 1] not in "\\%" and not re.search(
                   r"(%[-0-9.*]*[hl]*|\\x.?)$", text[:i])]
    if not letters:
        return None
    at = rng.choice(letters)
    letter = "q" if text[at].islower() else "Q"
    return text[:at] + (letter if text[at] != letter else "z") + text[at + 1:]


def token_mutants(line, rng):
    for token in TOKEN.finditer(line):
        kind, old = token.lastgroup, token[0]
        if kind == "comment":
            return
        if kind == "text":
            new = changed_text(old, rng)
        elif kind == "character":
            new = "'q'" if old != "'q'" else "'z'"
        elif kind == "number":
            new = changed_number(old, rng)
        else:
            new = SWAPS[old]
        if new is not None:
            yield kind, line[:token.start()] + new + line[token.end():]


def file_mutants(path, rng):
    """Yields (kind, number of the first line, its new lines)."""
    lines = open(os.path.join(ROOT, path), encoding="utf-8").read().split("\n")
    foreign = False
    assertion = False
    for at, line in enumerate(lines):
        if line.startswith("#ifdef _WIN32") or line.startswith("#ifndef WLANX_ENGINEERING"):
            foreign = True
        elif line.startswith(("#else", "#endif")):
            foreign = False
        assertion = assertion or "static_assert" in line
        if foreign or line.startswith(("#", "//", "template", "extern")) or assertion:
            assertion = assertion and not line.endswith(";")
            continue
        row = ROW.match(line)
        for kind, new in token_mutants(line, rng):
            yield ("row " + kind if row else kind), at, [line], [new]
        if row:
            yield "row dropped", at, [line], []
            if at + 1 < len(lines) and ROW.match(lines[at + 1]) and line.endswith("},"):
                pair = lines[at:at + 2]
                if pair[1].endswith("},"):
                    yield "row swapped", at, pair, pair[::-1]
        if STATEMENT.match(line):
            yield "line removed", at, [line], [""]


def folder_of(path):
    return os.path.dirname(path)


def choose(sample, rng):
    """Endless: folders in turn, in each a random kind, of it a random change."""
    pools = defaultdict(lambda: defaultdict(list))
    for path in tree_files():
        if SOURCE.match(path) and not LEFT_OUT.search(path):
            for mutant in file_mutants(path, rng):
                pools[folder_of(path)][mutant[0]].append((path,) + mutant)
    total = sum(len(pool) for kinds in pools.values() for pool in kinds.values())
    print(f"{total} changes in {len(pools)} folders, {sample} of them drawn", flush=True)
    while pools:
        for folder in list(pools):
            kinds = pools[folder]
            kind = rng.choice(sorted(kinds))
            yield kinds[kind].pop(rng.randrange(len(kinds[kind])))
            if not kinds[kind]:
                del kinds[kind]
            if not kinds:
                del pools[folder]


def quiet(command, seconds=300):
    """Whether it succeeds; False too where it does not end."""
    def limits():
        if not any(SANITIZED in word for word in command):  # the sanitizers reserve terabytes
            resource.setrlimit(resource.RLIMIT_AS, (4 << 30, 4 << 30))
        resource.setrlimit(resource.RLIMIT_FSIZE, (256 << 20, 256 << 20))
    process = subprocess.Popen(command, cwd=TREE, stdin=subprocess.DEVNULL,
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                               start_new_session=True, preexec_fn=limits)
    try:
        return process.wait(seconds) == 0
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, signal.SIGKILL)
        process.wait()
        return False


def configure(build, *options):
    return quiet(["cmake", "-G", "Ninja", "-S", TREE, "-B", build, *options]) and compiles(build)


def compiles(build):
    return quiet(["cmake", "--build", build, "-j", str(os.cpu_count())])


def noticed(path, build):
    """Runs the tests, those first that are most likely to notice."""
    cases = sorted(name for name in os.listdir(os.path.join(TREE, "tests", "cases")))
    near = [name for name in cases if path.split("/")[-2] in name]
    cases = near + [name for name in cases if name not in near]
    tests = os.path.join(TREE, "tests")
    commands = [[os.path.join(build, "tests", name)] for name in ("unit_tests", "handlers_test")] + [
        ["python3", f"{tests}/run_cases.py", "--programs", build, f"{tests}/cases/{name}"]
        for name in cases] + [
        ["python3", f"{tests}/{name}", "--programs", build]
        for name in ("faults.py", "check_documents.py") if os.path.exists(f"{tests}/{name}")]
    return not all(quiet(command, 60) for command in commands)


def digest():
    return [hash(read(os.path.join(BUILD, name))) for name in ("wlanx", "wlanx-eng")]


def read(path):
    with open(path, "rb") as file:
        return file.read()


def copy_tree():
    """Files that are the same keep their time, and what is built of them."""
    wanted = set(tree_files())
    for path in wanted:
        source, target = os.path.join(ROOT, path), os.path.join(TREE, path)
        os.makedirs(os.path.dirname(target), exist_ok=True)
        if not os.path.exists(target) or read(source) != read(target):
            shutil.copyfile(source, target)
            shutil.copymode(source, target)
    for folder, _, names in os.walk(TREE):
        for name in names:
            path = os.path.relpath(os.path.join(folder, name), TREE)
            if path not in wanted and not path.startswith(".git" + os.sep):
                os.remove(os.path.join(TREE, path))


def prepare():
    copy_tree()
    # The documents' check asks git which files there are.
    subprocess.run("git init -q && git add -A", shell=True, cwd=TREE, check=True)
    if not (configure(BUILD, "-DCMAKE_BUILD_TYPE=", "-DCMAKE_CXX_FLAGS=-O1") and
            configure(SANITIZED, "-DCMAKE_BUILD_TYPE=", "-DWLANX_SANITIZE=ON")):
        sys.exit("the unchanged tree does not build")
    if noticed("app/main.cpp", BUILD) or noticed("app/main.cpp", SANITIZED):
        sys.exit("the tests fail on the unchanged tree")


def equivalents():
    """Pairs of a path and a new text or a kind of change; the reason stands behind them."""
    pairs = set()
    if os.path.exists(EQUIVALENT):
        for line in open(EQUIVALENT, encoding="utf-8"):
            if line.strip() and not line.startswith("#"):
                path, change = line.split("  ## ")[0].split(": ", 1)
                pairs.add((path, change.strip()))
    return pairs


def try_mutant(mutant, original):
    """Returns None where it is no change, else whether a test notices it."""
    path, _, at, old, new = mutant
    target = os.path.join(TREE, path)
    text = open(target, encoding="utf-8").read()
    lines = text.split("\n")
    assert lines[at:at + len(old)] == old
    lines[at:at + len(old)] = new
    with open(target, "w", encoding="utf-8") as file:
        file.write("\n".join(lines))
    try:
        if not compiles(BUILD) or digest() == original:
            return None
        return noticed(path, BUILD) or not compiles(SANITIZED) or noticed(path, SANITIZED)
    finally:
        with open(target, "w", encoding="utf-8") as file:
            file.write(text)


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--sample", type=int, default=60, metavar="N", help="changes to try (60)")
    parser.add_argument("--seed", type=int, default=1, metavar="S", help="chooses other ones (1)")
    options = parser.parse_args()
    rng = random.Random(options.seed)
    prepare()
    original = digest()
    known = equivalents()
    tried, killed, harmless = Counter(), Counter(), 0
    started = time.time()
    for mutant in choose(options.sample, rng):
        if sum(tried.values()) == options.sample:
            break
        path, kind, at, old, new = mutant
        shown = " / ".join(line.strip() for line in new)
        if not shown:
            shown = "(nothing) " + old[0].strip()
        result = try_mutant(mutant, original)
        if result is None:
            continue
        if not result and {(path, shown), (path, kind)} & known:
            harmless += 1
            continue
        tried[folder_of(path)] += 1
        killed[folder_of(path)] += result
        if not result:
            print(f"{path}:{at + 1}: {kind}\n  - {' / '.join(line.strip() for line in old)}\n"
                  f"  + {shown}", flush=True)
    for folder in sorted(tried):
        print(f"{killed[folder]:4} of {tried[folder]:4} noticed in {folder}/")
    count, caught = sum(tried.values()), sum(killed.values())
    rate = caught / count if count else 0
    print(f"mutate: {caught} of {count} changes noticed ({100 * rate:.1f} %), {harmless} harmless "
          f"ones left out, {(time.time() - started) / max(count, 1):.1f} s each")
    return 0 if rate >= LIMIT else 1


if __name__ == "__main__":
    sys.exit(main())
