#!/usr/bin/env python3
"""Makes both packages, unpacks them, checks the checksums, follows the links of their documents, looks
for what their readers do not have, and runs what is in them, the documents' examples too."""

import glob
import hashlib
import os
import re
import sys
import tempfile
import zipfile

import programs
from run_cases import BANNER, ROOT, SHOWN_VERSION, STARTER, VERSION, differences, lines_of

sys.path.append(os.path.join(ROOT, "scripts"))
import check_documents  # noqa: E402


# A line for cmd, and how what it prints ends: with an adapter, with one that refuses everything, and
# without a driver.
BATCH = [
    ("address", "address is 02-A8-00-5C-1D-42", "no address", "no address"),
    ("version 2.0.4.118-240509", "as expected", "no answer", "no answer"),
    ("rate 2-2-1-7-0-0-0-0-0-0", "\nset", "not set", "not set"),
    ("rate auto", "\nset", "not set", "not set"),
    ("rate 1-2", "not set", "not set", "not set"),
    ("antennas AC1900-5G 61", "PASS", 'value="Error in DeviceIoControl"/>', "no report: status 1"),
    ("antennas6 AC1900-5G 61", "PASS", "refused by the driver", "no driver"),
    ("antennas6 AC1900-5G 50", "FAIL", "refused by the driver", "no driver"),
    ("antennas6 12345678901234567890123456789012 50", *["ended with status 3"] * 2, "no driver"),
    ("done set_ser 1", "\ndone", "not done", "not done"),
]


def unpack(archive, folder):
    with zipfile.ZipFile(archive) as packed:
        packed.extractall(folder)
    folder = os.path.join(folder, os.path.basename(archive)[:-len(".zip")])
    found = {os.path.relpath(name, folder) for name in glob.glob(f"{folder}/**", recursive=True)
             if os.path.isfile(name)}
    for line in open(os.path.join(folder, "SHA256SUMS")):
        checksum, name = line.split()
        data = open(os.path.join(folder, name), "rb").read()
        assert hashlib.sha256(data).hexdigest() == checksum, name
        found.remove(name)
    assert found == {"SHA256SUMS"}, found
    return folder


def check_texts(folder, edition):
    check_documents.ROOT = folder
    for path in glob.glob("**/*.md", root_dir=folder, recursive=True):
        text = check_documents.read(path)
        problems = check_documents.check_readers(edition, text)
        assert not problems, f"{path}: {problems}"
        with open(f"{folder}/{path[:-3]}.html", encoding="utf-8") as file:
            page = file.read()
        assert "<!--" not in page, f"{path}: something was left out"
        for link in re.findall(r'(?:href|src)="([^"]*)"', page):
            name, _, anchor = link.partition("#")
            target = os.path.join(folder, os.path.dirname(path), name) if name else file.name
            assert os.path.exists(target) and not target.endswith(".md"), f"{path}: {link}"
            assert not anchor or f'id="{anchor}"' in check_documents.read(target), f"{path}: {link}"


def run_in(folder, line):
    printed = programs.run_reliably([*STARTER, "cmd", "/c", line + " 2>&1"], cwd=folder).stdout
    return re.sub(rb"[\x80-\xFF]", lambda m: b"\\x%02X" % ord(m[0]), printed).decode().replace("\r", "")


def insist(check, *arguments):
    """Calls a check, which returns what is wrong, up to three times: among the programs that cmd
    starts may be one that Wine fails to start, as programs.run_reliably says."""
    for _ in range(3):
        problem = check(*arguments)
        if not problem:
            return
    sys.exit(problem)


def check_examples(folder, document):
    """Runs what a document of a package lets one type, one cmd for each of its blocks."""
    check_documents.ROOT = folder
    blocks = check_documents.FENCE.findall(check_documents.read(document))
    for _, name, text in blocks:
        if name:
            check_documents.write(name, text.replace("\n", "\r\n"))
    # Under Wine the device opens whatever the scenario says.
    runs = [text for _, _, text in blocks
            if text.startswith("> ") and "no-driver.a8000" not in text]
    assert runs, document
    run_in(folder, "a8000ctl scenario --builtin")
    for text in runs:
        insist(check_block, folder, document, text)


def check_block(folder, document, text):
    pieces = [piece.partition("\n") for piece in re.split(r"^> ", text, flags=re.M)[1:]]
    check_documents.write("block.cmd", "@echo off\r\n" + "".join(
        f"{'' if line.startswith(('set', 'echo')) else 'call '}{line}\r\necho [next]\r\n"
        for line, _, _ in pieces))
    output = run_in(folder, "block.cmd").split("[next]\n")
    output += [""] * (len(pieces) + 1 - len(output))  # after a cmd that Wine failed to start
    for (line, _, shown), printed in zip(pieces, output[:-1], strict=True):
        shown, printed = (BANNER.sub(b"", text.encode(), count=1).rstrip()
                          for text in (shown, printed))
        silent = line.startswith("a8000ctl") and not shown
        if not silent and not check_documents.fits(shown, printed):
            return f"{document}: {line}\n" + differences("", lines_of(shown), lines_of(printed))
    return ""


def check_batch_files(folder):
    """Runs the batch files that the examples left there."""
    check_documents.write("refuses.a8000", "close ok\n")
    for number, change in enumerate(("scenario --builtin", "scenario refuses.a8000", "remove"), 1):
        run_in(folder, f"a8000ctl {change}")
        for line, *ends in BATCH:
            insist(check_end, folder, line, ends[number - 1])
    run_in(folder, "a8000ctl install")


def check_end(folder, line, end):
    printed = "\n" + run_in(folder, line).rstrip()
    return "" if printed.endswith(end) else f"{line} has to end with {end}: {printed}"


def check_program(path, objdump):
    headers = programs.run([objdump, "-p", path], text=True).stdout
    libraries = set(re.findall(r"DLL Name: (\S+)", headers))
    assert libraries == {"KERNEL32.dll", "msvcrt.dll"}, libraries
    for flag in ("HIGH_ENTROPY_VA", "DYNAMIC_BASE", "NX_COMPAT"):
        assert flag in headers, flag
    data = open(path, "rb").read()
    assert len(data) <= 100 * 1024
    for text in (SHOWN_VERSION, "Command line tool"):
        assert text.encode("utf-16-le") in data, text
    assert b'level="asInvoker"' in data
    assert b"A8000_TRACE" not in data  # only wlanx-eng records


def check_header(folder, compiler):
    """Compiles the header, and with it the dispatch routine that the driver protocol shows."""
    check_documents.ROOT = folder
    routine = re.search(r"^```c dispatch.c\n(.*?)^```",
                        check_documents.read("docs/driver-protocol.md"), re.M | re.S)[1]
    for language, text in (("c", routine), ("c", '#include "a8000_protocol.h"\n'),
                           ("c++", '#include "a8000_protocol.h"\n')):
        done = programs.run([*compiler, "-fsyntax-only", "-Wall", "-Werror", f"-I{folder}/include",
                             f"-x{language}", "-"], input=text, text=True)
        assert done.returncode == 0, done


def main(build, objdump, *compiler):
    with tempfile.TemporaryDirectory() as folder:
        packed = programs.run(["cpack", "-B", folder], 300, cwd=build, text=True)
        assert packed.returncode == 0, packed
        program = unpack(f"{folder}/wlanx-{VERSION}-win64.zip", folder)
        engineering = unpack(f"{folder}/wlanx-engineering-{VERSION}-win64.zip", folder)
        check_program(f"{program}/wlanx.exe", objdump)
        check_header(engineering, compiler)
        check_texts(engineering, "engineering")
        check_texts(program, "program")
        run_in(engineering, "a8000ctl install")
        assert run_in(program, "wlanx get_mac_add").endswith(": 02-A8-00-5C-1D-42\n")
        for document in ("commands", "usage-texts", "engineering-commands", "driver-protocol",
                         "simulator", "json", "wtbl-example"):
            check_examples(engineering, f"docs/{document}.md")
        check_batch_files(engineering)
        check_examples(engineering, "docs/without-adapter.md")  # removes the driver at its end
        run_in(build, "a8000ctl install")


if __name__ == "__main__":
    main(*sys.argv[1:])
