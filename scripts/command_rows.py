"""The rows of the command table in the sources."""

import os
import re

from tree_files import ROOT

TOOL, ENGINEERING = "app/command_table.cpp", "app/internal_rows.inc"


def command_rows(path):
    """The key of the usage text and the name of each row, in the table's order."""
    with open(os.path.join(ROOT, path), encoding="utf-8") as file:
        found = re.findall(r'^ *\{(\w+), "(\w+)",', file.read(), re.M)
    assert found, f"{path}: found no row"
    return found
