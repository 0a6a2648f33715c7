#!/usr/bin/env python3
"""Asks bash's completions for words, also for every word that a handler compares an argument with.
PowerShell's have to hold the same words at the same places; scripts/powershell asks them."""

import glob
import os
import re
import subprocess

import programs

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
FOLDER = os.path.join(ROOT, "completions")
ASK = """. ./$1.bash; compopt() { COMPREPLY+=("$*"); }; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1))
_${1//-/_}; echo "${COMPREPLY[@]}" """
WORDS = {
    "wlanx GET_F": "get_fw_ver", "wlanx SAR get_G": "get_geo_table", "wlanx rf rssi net ": "",
    "wlanx sniffer on 5g 100 bw1": "bw160", "wlanx TRx 1T1R ": "WF0 WF1", "wlanx nosuch ": "",
    "wlanx-eng efuse f": "free", "wlanx efuse f": "", "wlanx-eng fw_log 0 ": "1 2",
    "wlanx country SET_S": "set_st_pwr_tbl", "wlanx-eng chan_pref_cfg ": "1 2 3 4",
    "wlanx-eng txbf t": "TxBfProfileTagRead TxBfProfileDataRead", "wlanx-eng set_sr ": "1 0"}
COMPARED = r'EqualsIgnoreCase\([^;"]*"(\w{2,})"|^    \{"(\w+)", Show'


def read(path):
    with open(path, encoding="utf-8") as file:
        return file.read()


def main():
    for line, words in WORDS.items():
        reply = programs.run(["bash", "-uc", ASK, "ask", *line.split(" ")], cwd=FOLDER,
                             stderr=subprocess.STDOUT, text=True)
        assert reply.returncode == 0 and reply.stdout.split() == words.split(), f"{line}: {reply}"
    for program in ("wlanx", "wlanx-eng"):
        bash, powershell = (read(f"{FOLDER}/{program}.{kind}") for kind in ("bash", "ps1"))
        ours = re.findall(r"^    '(.*)' \{ -split '(.*)' \}$", powershell, re.M)
        theirs = re.findall(r'^    "(.*)\) words="(.*)" ;;$', bash, re.M)
        assert [(place.lower(), words) for place, words in ours] == \
            [(place.replace('"', ""), words) for place, words in theirs], program
    offered = {word for _, words in ours for word in words.split()}
    handlers = "".join(map(read, glob.glob(f"{ROOT}/commands/**/*.cpp", recursive=True)))
    compared = {word for pair in re.findall(COMPARED, handlers, re.M) for word in pair if word}
    assert "get_FlagTable" in compared and "auto" in compared, compared
    assert compared <= offered, f"LEFT_OUT in generate.py wants {compared - offered}"


if __name__ == "__main__":
    main()
