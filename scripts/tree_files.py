#!/usr/bin/env python3
"""The files of the project: those that git knows, and new ones beside them. Without a repository, as
in a source archive, they are all files except those of build folders.

  tree_files.py [PATTERN...]    prints those that match a pattern such as "*.h" or "app/*.h"
"""

import fnmatch
import os
import subprocess
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))


def in_folders():
    for folder, folders, names in os.walk(ROOT):
        if "CMakeCache.txt" in names and folder != ROOT:
            folders.clear()
            continue
        at = os.path.relpath(folder, ROOT)
        folders[:] = [name for name in folders if name != "__pycache__" and
                      (at, name) not in ((".", "build"), (".", ".git"))]
        for name in names:
            yield os.path.normpath(os.path.join(at, name))


def ls_files(*options):
    listed = subprocess.run(["git", "ls-files", "-z", "--exclude-standard", *options], cwd=ROOT,
                            stdout=subprocess.PIPE, text=True, check=True).stdout.split("\0")
    return [path for path in listed if path and os.path.exists(os.path.join(ROOT, path))]


def tree_files():
    if not os.path.exists(os.path.join(ROOT, ".git")):
        return sorted(in_folders())
    known = ls_files("-c")
    folders = {os.path.dirname(path) for path in known}
    return sorted({*known, *(path for path in ls_files("-o") if os.path.dirname(path) in folders)})


if __name__ == "__main__":
    for path in tree_files():
        if any(fnmatch.fnmatchcase(path, pattern) for pattern in sys.argv[1:] or "*"):
            print(path)
