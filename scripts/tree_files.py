#!/usr/bin/env python3
"""Which files belong to the tree: those that git knows or would add; without a repository, as in a
source archive, those that are there.

  tree_files.py [PATTERN...]    prints those that match one of the patterns, as "*.h" or "app/*.h"
"""

import fnmatch
import os
import subprocess
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))


def in_folders():
    for folder, folders, names in os.walk(ROOT):
        at = os.path.relpath(folder, ROOT)
        folders[:] = [name for name in folders if name != "__pycache__" and
                      (at, name) not in ((".", "build"), (".", ".git"))]
        for name in names:
            yield os.path.normpath(os.path.join(at, name))


def tree_files():
    if not os.path.exists(os.path.join(ROOT, ".git")):
        return sorted(in_folders())
    listed = subprocess.run(["git", "ls-files", "-coz", "--exclude-standard"], cwd=ROOT,
                            stdout=subprocess.PIPE, text=True, check=True).stdout.split("\0")
    return sorted(path for path in set(listed) if path and os.path.exists(os.path.join(ROOT, path)))


if __name__ == "__main__":
    for path in tree_files():
        if any(fnmatch.fnmatchcase(path, pattern) for pattern in sys.argv[1:] or "*"):
            print(path)
