#!/usr/bin/env python3
"""Asks the completions for bash for words, and holds those for PowerShell, which is not here to be
asked, to bash's: the same words at the same places, every bracket closed."""

import os
import re
import subprocess

FOLDER = os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), "completions")
ASK = """. ./$1.bash; compopt() { COMPREPLY+=("$*"); }; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1))
_${1//-/_}; echo "${COMPREPLY[@]}" """
WORDS = {
    "wlanx get_f": "get_fw_ver", "wlanx SAR get_g": "get_geo_table", "wlanx rf rssi net ": "",
    "wlanx sniffer on 5g 100 bw1": "bw160", "wlanx TRx 1T1R ": "WF0 WF1", "wlanx nosuch ": "",
    "wlanx-eng efuse f": "free", "wlanx efuse f": "", "wlanx-eng fw_log 0 ": "1 2"}
PAIRS = {")": "(", "}": "{", "]": "["}

for line, words in WORDS.items():
    reply = subprocess.run(["bash", "-uc", ASK, "ask", *line.split(" ")], cwd=FOLDER, check=True,
                           stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True).stdout
    assert reply.split() == words.split(), f"{line}: {reply}"
for program in ("wlanx", "wlanx-eng"):
    bash, powershell = (open(f"{FOLDER}/{program}.{kind}").read() for kind in ("bash", "ps1"))
    ours = re.findall(r"^    '(.*)' \{ -split '(.*)' \}$", powershell, re.M)
    theirs = re.findall(r'^    "(.*)\) words="(.*)" ;;$', bash, re.M)
    assert [(place.lower(), words) for place, words in ours] == \
        [(place.replace('"', ""), words) for place, words in theirs], program
    left = []
    for bracket in re.sub(r"'[^'\n]*'|\"[^\"\n]*\"|[^][(){}]", "", powershell):
        assert bracket in PAIRS.values() or left.pop() == PAIRS[bracket], program
        left += bracket if bracket in PAIRS.values() else ""
    assert not left, program
