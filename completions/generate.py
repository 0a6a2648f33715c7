#!/usr/bin/env python3
"""Makes the completions of both programs for bash and PowerShell.

They offer the words of the command table. After each they offer the words of its usage text, as the
program lists it, and those that the text leaves out. With --check the program writes nothing, and names
the files that have drifted.
"""

import argparse
import os
import re
import subprocess
import sys

FOLDER = os.path.dirname(os.path.abspath(__file__))
sys.path.append(os.path.join(os.path.dirname(FOLDER), "scripts"))
from command_rows import ENGINEERING, TOOL, command_rows  # noqa: E402

# Usage texts write these for values that the user chooses, and words in <>.
VALUES = set("Address Value Index DebugCategory DebugLevel regname regvalue addr_hex val_hex wlanidx "
             "set_ax_basize".split())
FILES = "(files)"
# What the commands take and their usage texts leave out, in the form of usage texts.
LEFT_OUT = """
sar get_country_code
country set_st_pwr_tbl <country>
fixedrate UseWCID
fixedrate ApplyAll
txbf TxBfProfileTagRead <values>
txbf TxBfProfileDataRead <values>
set_sr <1/0>
radar_detect <1/0>
rdd_dbdc <0/1>
dynamic_dtim <1/0>
pwrsave <1/0>
set_bssid bssid <address>
set_bssid2 bssid <address>
chan_pref_cfg <1/2/3/4>
"""

BASH = """# Completion of {program} in bash. Made by generate.py.
_{name}() {{
  local IFS=$' \\t\\n' words= word
  local typed="$COMP_CWORD ${{COMP_WORDS[*]:1:COMP_CWORD-1}}"
  case "${{typed,,}}" in
{cases}
  esac
  COMPREPLY=()
  typed=${{COMP_WORDS[COMP_CWORD]}}
  for word in $words; do
    if [[ ${{word,,}} == "${{typed,,}}"* ]]; then COMPREPLY+=("$word"); fi
  done
}}
complete -F _{name} {program} {program}.exe
"""
POWERSHELL = """# Completion of {program} in PowerShell. Made by generate.py.
Register-ArgumentCompleter -Native -CommandName '{program}', '{program}.exe' -ScriptBlock {{
  param($word, $line, $cursor)
  $before = @($line.CommandElements | Where-Object {{ $_.Extent.EndOffset -lt $cursor }})
  $typed = ($before | Select-Object -Skip 1 | ForEach-Object {{ $_.Extent.Text }}) -join ' '
  $words = switch -Wildcard ("$($before.Count) $typed") {{
{cases}
  }}
  $words | Where-Object {{ $_.StartsWith($word, 'OrdinalIgnoreCase') }} |
    ForEach-Object {{ [System.Management.Automation.CompletionResult]::new($_) }}
}}
"""


class Place:
    """What may stand at one place of a command line, and the places after it."""

    def __init__(self):
        self.words, self.values, self.after = {}, [], None

    def value(self, values):
        self.values += [value for value in values if value not in self.values]
        self.after = self.after or Place()
        return self.after

    def word(self, word, example):
        """A word of a text: one to type, or an example of a value if a value stands in its place."""
        if word in self.values:
            return self.after
        if word not in self.words:
            if self.after and not re.fullmatch("[a-z]+", word):
                return self.after
            if example and word.isdigit() and word not in ("0", "1", "2"):
                return self.value([])
        return self.words.setdefault(word, Place())


def read_usage(text, program, command):
    """The places after a command word, from its usage text."""
    lists = {name: [value.split("/")[0] for value in values.split(", ")]
             for name, values in re.findall(r"^[ \t]+(?:\d\. <)?([\w ]+)>?: (.*)$", text, re.M)}
    first, example = Place(), False
    for line in text.splitlines():
        example = "xample" in line or example and "Usage" not in line
        match = re.search(rf"\b{program}\s+{command}\b(.*)", line)
        place = first
        given = re.sub(r" \(.*", "", match[1]) if match else ""
        for token in re.findall(r"<[^>]*>|\[[^]]*\]|\S+", given):
            inner = token.strip("<>[]")
            choices = lists.get(inner, re.split("/| or ", inner))
            if token == "<xml file path>":
                place = place.value([FILES])
            elif token in VALUES or token[0] == "<" and len(choices) == 1:
                place = place.value([])
            elif token[0] in "<[" and len(choices) > 1:
                place = place.value([word for word in choices if re.fullmatch(r"[\w.]+", word)])
            else:
                place = place.word(inner, example)
    return first


def list_places(place, path):
    """Each place with something to offer: what is typed before it, and its words."""
    offered = list(place.words) + place.values
    yield from [(path, offered)] if offered else []
    for word, following in place.words.items():
        yield from list_places(following, path + [word])
    if place.after:
        yield from list_places(place.after, path + ["*"])


def places_of(program, programs):
    listing = subprocess.run([program], executable=os.path.join(programs, program),
                             stdout=subprocess.PIPE, text=True, timeout=60).stdout
    rows = command_rows(TOOL) + command_rows(ENGINEERING) * (program == "wlanx-eng")
    first = Place()
    for _, command in rows:
        texts = re.findall(rf"^{command} .*\n((?:[ \t].*\n|\n(?=[ \t]))*)", listing, re.M)
        left_out = re.sub(r"^(?=\w)", f"{program} ", LEFT_OUT, flags=re.M)
        first.words[command] = read_usage(left_out + "".join(texts), program, command)
    return list(list_places(first, []))


def bash_case(path, words):
    pattern = '"' + f"{len(path) + 1} {' '.join(path)}".lower().replace("*", '"*"') + '"'
    action = "compopt -o default" if words == [FILES] else f'words="{" ".join(words)}"'
    return f"    {pattern.removesuffix(chr(34) * 2)}) {action} ;;"


def powershell_case(path, words):
    return f"    '{len(path) + 1} {' '.join(path)}' {{ -split '{' '.join(words)}' }}"


def completions(program, programs):
    """The files of a program, by name."""
    places = places_of(program, programs)
    shown = [place for place in places if place[1] != [FILES]]  # PowerShell offers files by itself
    names = {"program": program, "name": program.replace("-", "_")}
    return {
        f"{program}.bash": BASH.format(cases="\n".join(bash_case(*p) for p in places), **names),
        f"{program}.ps1": POWERSHELL.format(cases="\n".join(powershell_case(*p) for p in shown), **names)}


def main():
    parser = argparse.ArgumentParser(description=__doc__.partition("\n\n")[0])
    parser.add_argument("--programs", required=True, help="the folder of the built programs")
    parser.add_argument("--check", action="store_true", help="write nothing, name the files that have drifted")
    options = parser.parse_args()
    drifted = []
    for program in ("wlanx", "wlanx-eng"):
        for name, text in completions(program, options.programs).items():
            path = os.path.join(FOLDER, name)
            if not options.check:
                with open(path, "w", encoding="utf-8", newline="\n") as file:
                    file.write(text)
            elif not os.path.exists(path) or open(path, encoding="utf-8", newline="").read() != text:
                drifted.append(name)
    for name in drifted:
        print(f"completions/{name} is not what generate.py makes: run it without --check")
    return 1 if drifted else 0


if __name__ == "__main__":
    sys.exit(main())
