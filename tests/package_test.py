#!/usr/bin/env python3
"""Makes both packages, unpacks them, checks the checksums, follows the links of their documents and
runs what is in them, the documents' batch files too."""

import glob
import hashlib
import os
import re
import subprocess
import sys
import tempfile
import zipfile

import check_documents
from run_cases import STARTER


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


def check_links(folder):
    check_documents.ROOT = folder
    for path in glob.glob("**/*.md", root_dir=folder, recursive=True):
        problems = check_documents.check_links(path, check_documents.read(path))
        assert not problems, f"{path}: {problems}"
        with open(f"{folder}/{path[:-3]}.html", encoding="utf-8") as file:
            page = file.read()
        for link in re.findall(r'(?:href|src)="([^"]*)"', page):
            name, _, anchor = link.partition("#")
            target = os.path.join(folder, os.path.dirname(path), name) if name else file.name
            assert os.path.exists(target) and not target.endswith(".md"), f"{path}: {link}"
            assert not anchor or f'id="{anchor}"' in check_documents.read(target), f"{path}: {link}"


def check_batch_files(folder, document):
    """Runs the lines after "> " in a document with batch files as cmd does."""
    check_documents.ROOT = folder
    text = check_documents.read(document)
    for name, lines in re.findall(r"^```bat (\S+)\n(.*?)^```", text, re.M | re.S):
        open(f"{folder}/{name}", "w", newline="\r\n").write(lines)
    runs = re.findall(r"^> (.*)\n((?!```|> ).*)", text, re.M)
    assert runs
    for line, shown in runs:
        done = subprocess.run([*STARTER, "cmd", "/c", line], cwd=folder, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, text=True)
        assert done.stdout == shown + "\n", f"{line}: {done.stdout}"


def check_program(path, objdump):
    headers = subprocess.run([objdump, "-p", path], check=True, capture_output=True,
                             text=True).stdout
    libraries = set(re.findall(r"DLL Name: (\S+)", headers))
    assert libraries == {"KERNEL32.dll", "msvcrt.dll"}, libraries
    for flag in ("HIGH_ENTROPY_VA", "DYNAMIC_BASE", "NX_COMPAT"):
        assert flag in headers, flag
    data = open(path, "rb").read()
    assert len(data) <= 100 * 1024
    for text in ("1.00.00.0070", "Command line tool"):
        assert text.encode("utf-16-le") in data, text
    assert b'level="asInvoker"' in data
    assert b"A8000_TRACE" not in data  # only wlanx-eng records


def run(*words):
    done = subprocess.run([*STARTER, *words], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          text=True)
    return done.stdout.splitlines()


def main(build, objdump):
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(["cpack", "-B", folder], cwd=build, check=True, stdout=subprocess.DEVNULL)
        program = unpack(f"{folder}/wlanx-1.0.0.70-win64.zip", folder)
        engineering = unpack(f"{folder}/wlanx-engineering-1.0.0.70-win64.zip", folder)
        check_program(f"{program}/wlanx.exe", objdump)
        check_links(engineering)
        check_links(program)
        # The driver is the one in the package, too.
        run(f"{engineering}/a8000ctl.exe", "install")
        for tool in (f"{program}/wlanx.exe", f"{engineering}/wlanx-eng.exe"):
            assert run(tool, "get_mac_add")[-1] == "MAC Address: 02-A8-00-5C-1D-42"
        check_batch_files(program, "docs/commands.md")
        check_batch_files(engineering, "docs/engineering-commands.md")
        run(f"{engineering}/a8000ctl.exe", "scenario", f"{engineering}/scenarios/refusal.a8000")
        assert run(f"{program}/wlanx.exe", "get_mac_add")[-1].startswith("Error")
        run(f"{build}/a8000ctl.exe", "install")


if __name__ == "__main__":
    main(*sys.argv[1:])
