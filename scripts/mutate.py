#!/usr/bin/env python3
"""Changes one thing at a time in a copy of the tool's sources, builds what that touches, runs the
tests and lists the changes that none of them noticed. What the plain build's tests let pass is
tried once more with the sanitizers.

A change that does not compile, or compiles to the same code, is replaced by another one. Changes
that make no difference are listed with their reason in scripts/equivalent_mutants.txt.

With --rows no sample is drawn: every row of the tables in ROWS is changed in every way that
scripts/mutate_rows.py knows.
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
import tempfile
import threading
import time
from collections import Counter, defaultdict
from concurrent.futures import ThreadPoolExecutor

import mutate_rows

from tree_files import ROOT, tree_files

WORK = os.path.join(ROOT, "build", "mutate")
TREE = os.path.join(WORK, "tree")
BUILD = os.path.join(WORK, "build")
SANITIZED = os.path.join(WORK, "sanitized")
EQUIVALENT = os.path.join(ROOT, "scripts", "equivalent_mutants.txt")
LIMIT = 0.9
ROWS_LIMIT = 0.99

# The files whose tables --rows goes through, and the tests that notice most of their changes: unit
# tests by their filter, cases and documents by their name.
ROWS = {
    "commands/internal/lmac_wtbl.cpp": ["Tables.WtblRows*", "Tables.*", "wtbl-example.md"],
    "commands/internal/umac_wtbl.cpp": ["Tables.WtblRows*", "Tables.*", "wtbl-example.md"],
    "commands/internal/value_names.cpp": ["Tables.*"],
    "commands/radio/fixed_rate_validation.cpp": ["FixedRate.*"],
    "app/usage_texts.cpp": ["usage-texts.md"],
    "commands/sar/sar_query.h": ["sar.cases"],
    "commands/sar/sar_query.cpp": ["SarQueryFailure.*", "sar.cases"],
    "commands/sar/sar_command.cpp": ["refusals.cases", "sar.cases"],
    "commands/sar/sar_tables_view.cpp": ["sar.cases"],
    "commands/sar/geo_table_view.cpp": ["sar.cases"],
    "commands/sar/tx_max_power_view.cpp": ["sar.cases"],
    "commands/sar/country_list_view.cpp": ["sar.cases"],
}

# Other hosts' code, and what is compared with by its address only.
LEFT_OUT = re.compile(r"^simulator/windows/|^device/(driver|recorded)_|_windows\.cpp$")
SOURCE = re.compile(r"^(app|channel|commands|device|platform|simulator)/.*\.(cpp|h|inc)$")

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

# Runs the examples of some documents, without what compares documents with sources.
EXAMPLES = """
import sys, tempfile
tests, programs, *paths = sys.argv[1:]
sys.path.insert(0, tests)
import check_documents as documents
for path in paths:
    with tempfile.TemporaryDirectory() as folder:
        session = documents.Session(programs, folder)
        documents.FENCE.sub(session.visit, documents.read(path))
    if session.problems:
        sys.exit(1)
"""

# Two neighbouring arguments, and what makes one of them a field; a request with its record.
EXPRESSION = r"(?:\*|&)?\w+(?:(?:\.|->)\w+|\[\w+\])*"
ARGUMENTS = re.compile(rf"(?<=[( ])(?=({EXPRESSION}), ({EXPRESSION})[,)])")
FIELD = re.compile(r"->|\.|\[")
REQUEST = re.compile(r"\b(?:Read|Write)Register\(&?(\w+)\)|\bOidRequest\(\w+, &?(\w+)")


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


def argument_mutants(line):
    """Arguments of a call that are fields, each replaced by its neighbour."""
    for pair in ARGUMENTS.finditer(line):
        if pair[1] != pair[2] and (FIELD.search(pair[1]) or FIELD.search(pair[2])):
            yield line[:pair.start(1)] + pair[2] + line[pair.end(1):]
            yield line[:pair.start(2)] + pair[1] + line[pair.end(2):]


def carried_mutants(line, text):
    """Before a request, each field of its record loses what it carries."""
    record = REQUEST.search(line)
    if not record or line.lstrip().startswith(("bool", "return Oid", "template")):
        return
    name = record[1] or record[2]
    for field in sorted(set(re.findall(rf"\b{name}(?:->|\.)\w+\b(?!\()", text))):
        yield f"{line[:len(line) - len(line.lstrip())]}{field} = {{}};"


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
        for new in argument_mutants(line):
            yield "argument replaced", at, [line], [new]
        for new in carried_mutants(line, "\n".join(lines)):
            yield "carried value cleared", at, [line], [new, line]


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


def quiet(command, seconds=300, folder=TREE, variables=None):
    """Whether it succeeds; False too where it does not end."""
    def limits():
        if not any(SANITIZED in word for word in command):  # the sanitizers reserve terabytes
            resource.setrlimit(resource.RLIMIT_AS, (4 << 30, 4 << 30))
        resource.setrlimit(resource.RLIMIT_FSIZE, (256 << 20, 256 << 20))
    process = subprocess.Popen(command, cwd=folder, env={**os.environ, **(variables or {})},
                               stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL, start_new_session=True,
                               preexec_fn=limits)
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


def test_commands(build, near, rows):
    """The Linux tests, those first that are most likely to notice."""
    tests = os.path.join(TREE, "tests")
    cases = sorted(name for name in os.listdir(os.path.join(tests, "cases")))
    run_cases = ["python3", f"{tests}/run_cases.py", "--programs", build]
    examples = ["python3", "-c", EXAMPLES, tests, build]
    for name in near:
        if name.endswith(".cases"):
            yield [*run_cases, f"{tests}/cases/{name}"]
        elif name.endswith(".md"):
            yield [*examples, f"docs/{name}"]
        else:
            yield [f"{build}/tests/unit_tests", f"--gtest_filter={name}"]
    yield [f"{build}/tests/unit_tests"]
    yield [f"{build}/tests/handlers_test"]
    yield from ([*run_cases, f"{tests}/cases/{name}"] for name in cases if name not in near)
    if rows:
        # No fault depends on a row; and the sources are not those that documents speak of.
        yield examples + [f"docs/{name}" for name in sorted(os.listdir(f"{TREE}/docs"))
                          if name.endswith(".md")]
    else:
        for name in ("faults.py", "check_documents.py"):
            yield ["python3", f"{tests}/{name}", "--programs", build]


def noticed(build, near, rows=False, **where):
    return not all(quiet(command, 300, **where) for command in test_commands(build, near, rows))


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


def build_and_test(build, *choices, rows=False):
    if not configure(build, "-DCMAKE_BUILD_TYPE=", *choices):
        sys.exit("the unchanged tree does not build")
    if noticed(build, [], rows, folder=build):
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
        near = [name for name in os.listdir(os.path.join(TREE, "tests", "cases"))
                if path.split("/")[-2] in name]
        return (noticed(BUILD, near, folder=BUILD) or not compiles(SANITIZED) or
                noticed(SANITIZED, near, folder=SANITIZED))
    finally:
        with open(target, "w", encoding="utf-8") as file:
            file.write(text)


def try_sample(count, rng):
    """Changes one thing at a time; yields (its folder, whether it is harmless, whether noticed)."""
    build_and_test(BUILD, "-DCMAKE_CXX_FLAGS=-O1")
    build_and_test(SANITIZED, "-DWLANX_SANITIZE=ON")
    original = digest()
    known = equivalents()
    for path, kind, at, old, new in choose(count, rng):
        shown = " / ".join(line.strip() for line in new)
        if not shown:
            shown = "(nothing) " + old[0].strip()
        result = try_mutant((path, kind, at, old, new), original)
        if result is None:
            continue
        harmless = not result and bool({(path, shown), (path, kind)} & known)
        if not result and not harmless:
            print(f"{path}:{at + 1}: {kind}\n  - {' / '.join(line.strip() for line in old)}\n"
                  f"  + {shown}", flush=True)
        yield folder_of(path), harmless, result


def build_rows(seed):
    """Builds the tables with all changes to their rows; returns the changes by their number."""
    found = [None]  # number 0 is the unchanged program
    with open(os.path.join(TREE, mutate_rows.HEADER), "w", encoding="utf-8") as file:
        file.write(mutate_rows.RUNTIME)
    for path in ROWS:
        target = os.path.join(TREE, path)
        text = open(target, encoding="utf-8").read()
        changes, tables = mutate_rows.changes(path, text, changed_text, seed)
        if not changes:
            sys.exit(f"{path}: no rows")
        for change in changes:
            for value, new in change.values:
                value.others.append((len(found), new))
            found.append(change)
        with open(target, "w", encoding="utf-8") as file:
            file.write(mutate_rows.instrumented(text, tables))
    build_and_test(BUILD, "-DCMAKE_CXX_FLAGS=-O1", rows=True)
    return found


def try_rows(seed, jobs):
    """Tries every change of every row; yields as try_sample does."""
    changes = build_rows(seed)
    print(f"{len(changes) - 1} changes to the rows of {len(ROWS)} files", flush=True)
    known = equivalents()
    places = threading.local()

    def try_one(number):
        change = changes[number]
        if not hasattr(places, "folder"):
            places.folder = tempfile.mkdtemp(dir=WORK)
        result = noticed(BUILD, ROWS[change.path], rows=True, folder=places.folder, variables={
            mutate_rows.VARIABLE: str(number), "TEST_TMPDIR": places.folder})
        shown = f"{change.kind}: {change.shown}"
        harmless = not result and bool({(change.path, change.kind), (change.path, shown)} & known)
        if not result and not harmless:
            print(f"{change.path}:{change.line}: {shown}", flush=True)
        return change.path, harmless, result

    with ThreadPoolExecutor(jobs) as pool:
        yield from pool.map(try_one, range(1, len(changes)))


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--sample", type=int, default=60, metavar="N", help="changes to try (60)")
    parser.add_argument("--seed", type=int, default=1, metavar="S", help="chooses other ones (1)")
    parser.add_argument("--rows", action="store_true", help="try every row of the tables instead")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), metavar="N",
                        help="rows to try at the same time (one for each core)")
    options = parser.parse_args()
    prepare()
    tried, killed, harmless = Counter(), Counter(), 0
    started = time.time()
    if options.rows:
        results = try_rows(options.seed, options.jobs)
    else:
        results = try_sample(options.sample, random.Random(options.seed))
    for place, known, result in results:
        harmless += known
        tried[place] += not known
        killed[place] += result
        if not options.rows and sum(tried.values()) == options.sample:
            break
    for place in sorted(tried):
        print(f"{killed[place]:4} of {tried[place]:4} noticed in {place}")
    count, caught = sum(tried.values()), sum(killed.values())
    rate = caught / count if count else 0
    print(f"mutate: {caught} of {count} changes noticed ({100 * rate:.1f} %), {harmless} harmless "
          f"ones left out, {(time.time() - started) / max(count, 1):.1f} s each")
    return 0 if rate >= (ROWS_LIMIT if options.rows else LIMIT) else 1


if __name__ == "__main__":
    sys.exit(main())
