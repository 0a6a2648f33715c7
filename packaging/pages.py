#!/usr/bin/env python3
"""Makes the documents of a package: each as Markdown and as a page for a browser.

Documents link to each other by their names here. In a package the links lead to the documents' places
there, and a link to a document that it does not have becomes plain text. Examples are lines for a Unix
shell here. In a package they are lines as one types them in cmd:

  $ A8000_SCENARIO=simulator/scenarios/pcie-gen1.a8000 wlanx pcie gen_switch_chk
  > a8000ctl scenario scenarios\\pcie-gen1.a8000      (in the engineering package only)
  > wlanx pcie gen_switch_chk                         (wlanx-eng in the engineering package)

A part of a document may be for some readers only. NAMES is one or more of "sources", "program" and
"engineering":

  <!-- NAMES -->text<!-- end -->     a text that the sources show
  <!-- NAMES                         a text that only packages show
  text -->
"""

import argparse
import html
import os
import re
import shutil
import subprocess

FOLDER = os.path.dirname(os.path.abspath(__file__))
LINK = re.compile(r"\[([^][]*)\]\(([^)#\s]*\.md)(#[\w-]+)?\)")
FENCE = re.compile(r"^(```.*?^```)$", re.M | re.S)
VARIABLE = re.compile(r"(A8000_\w+)=(\S+) ")
PRODUCTS = {"program": "wlanx", "engineering": "wlanx, engineering edition"}

PAGE = """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>{title}</title>
<link rel="stylesheet" href="{style}">
</head>
<body>
<nav>{pages}</nav>
{body}</body>
</html>
"""


def for_readers(text, edition):
    """Keeps what the package's readers are to see."""
    text = re.sub(r"<!-- ([a-z ]+) -->\n?(.*?)<!-- end -->\n?",
                  lambda m: m[2] if edition in m[1].split() else "", text, flags=re.S)
    text = re.sub(r"<!-- ([a-z ]+)\n(.*?)-->\n?",
                  lambda m: m[2] if edition in m[1].split() else "", text, flags=re.S)
    return re.sub(r"<!-- sources: .* -->\n\n?", "", text)  # what a table is compared with


def renamed(text, edition):
    """Names the programs that the package has. The listing pads the tool's name on the left."""
    if edition != "engineering":
        return text
    text = re.sub(r"\bwlanx-json(?= (?!--[ehv]))", "wlanx-json --eng", text)
    return re.sub(r"(?: {4})?\bwlanx(?=[ \t]|$)", "wlanx-eng", text, flags=re.M)


class Example:
    """Turns examples into lines for cmd, and remembers which scenario they loaded."""

    def __init__(self, edition):
        self.edition, self.loaded = edition, None

    def load(self, scenario):
        """Without a scenario the built-in one answers."""
        if self.edition == "program" or scenario == self.loaded:
            return ""
        self.loaded = scenario
        name = (scenario or "--builtin").replace("simulator/", "").replace("/", "\\")
        return f"> a8000ctl scenario {name}\n"

    def piece(self, piece):
        """A line "$ " and what it prints."""
        command, _, shown = piece.partition("\n")
        if not command.startswith("$ "):
            return renamed(piece, self.edition)
        variables = dict(VARIABLE.findall(command))
        command = VARIABLE.sub("", command[2:])
        shown = re.sub(r"(\\r)?(\\c)?$", "", shown, flags=re.M).replace("\\\\", "\\")
        if command == "wlanx" and self.edition == "engineering":
            shown += "...\n"  # wlanx-eng lists more
        if command.startswith("wlanx"):
            lines = self.load(variables.get("A8000_SCENARIO"))
        else:
            lines = ""
        trace = variables.get("A8000_TRACE")
        command = re.sub("^cat ", "type ", command.replace("echo $?", "echo %ERRORLEVEL%"))
        lines += f"> set A8000_TRACE={trace}\n" if trace else ""
        lines += renamed(f"> {command}\n{shown}", self.edition)
        return lines + ("> set A8000_TRACE=\n" if trace else "")

    def fence(self, text):
        head, _, body = text.removesuffix("```").partition("\n")
        if "\n$ " not in text:
            if "a8000ctl scenario" in body:
                self.loaded = ""  # another one than this knows
            elif body.startswith("> wlanx"):
                body = self.load(None) + body
            return renamed(f"{head}\n{body}```", self.edition)
        if "A8000_SCENARIO" in body:
            self.loaded = ""  # each such block says which scenario it needs
        pieces = map(self.piece, re.split(r"^(?=\$ )", body, flags=re.M))
        return f"{head}\n{''.join(pieces)}```"


def in_package(text, folder, places, edition):
    """The form of a document that the package has in `folder`."""

    def link(match):
        place = places.get(os.path.basename(match[2]))
        return f"[{match[1]}]({os.path.relpath(place, folder)}{match[3] or ''})" if place else match[1]

    example = Example(edition)
    pieces = FENCE.split(for_readers(text, edition))
    pieces[::2] = [re.sub(r"`[^`\n]+`", lambda m: renamed(m[0], edition), LINK.sub(link, piece))
                   for piece in pieces[::2]]
    pieces[1::2] = map(example.fence, pieces[1::2])
    return "".join(pieces)


def heading(match):
    level, content = match.groups()
    text = html.unescape(re.sub("<[^>]*>", "", content)).lower()
    anchor = re.sub(r"[^\w -]", "", text).replace(" ", "-")
    return f'<h{level} id="{anchor}">{content}</h{level}>'


def typed(match):
    """Marks what one types, so that a page shows the prompt but does not let one copy it. JSON wraps."""
    text = re.sub(r"^((?:<pre><code[^>]*>)?)&gt; (.*)$", r"\1<kbd>\2</kbd>", match[0], flags=re.M)
    return text.replace("<pre>", '<pre class="json">') if "\n{&quot;" in text else text


def page(text, title, pages, converter, style):
    done = subprocess.run([converter, "--unsafe", "-e", "table", "--to", "html"], input=text,
                          check=True, capture_output=True, encoding="utf-8")  # unsafe keeps <br>
    body = re.sub(r"<h(\d)>(.*?)</h\1>", heading, done.stdout)
    body = re.sub(r'(href="(?!\w+:)[^"#]*)\.md(?=["#])', r"\1.html", body)
    body = re.sub(r'<pre><code class="language-text">.*?</pre>', typed, body, flags=re.S)
    return PAGE.format(title=title, pages=pages, style=style, body=body)


def write(path, text):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8", newline="\n") as file:
        file.write(text)


def main():
    parser = argparse.ArgumentParser(description=__doc__.partition("\n\n")[0])
    parser.add_argument("--converter", required=True, help="the program cmark-gfm")
    parser.add_argument("--edition", required=True, choices=PRODUCTS, help="the package")
    parser.add_argument("--version", required=True, help="its version")
    parser.add_argument("--output", required=True, help="the folder for the documents")
    parser.add_argument("documents", nargs="+", metavar="PLACE=FILE")
    options = parser.parse_args()
    shutil.rmtree(options.output, ignore_errors=True)
    files = dict(document.split("=", 1) for document in options.documents)
    places = {os.path.basename(place): place for place in files}
    texts, titles = {}, {}
    for place, name in files.items():
        with open(name, encoding="utf-8") as file:
            texts[place] = in_package(file.read(), os.path.dirname(place), places, options.edition)
        titles[place] = re.search("^# (.*)", texts[place])[1]
    product = f"{PRODUCTS[options.edition]} {options.version}"
    for place, text in texts.items():
        folder = os.path.dirname(place)
        links = [f"<strong>{html.escape(product)}</strong>"]
        for other, title in titles.items():
            name = "Start" if other == "README.md" else html.escape(title)
            target = os.path.relpath(other[:-len("md")] + "html", folder)
            links.append(f"<b>{name}</b>" if other == place else f'<a href="{target}">{name}</a>')
        title = product if place == "README.md" else f"{titles[place]} - {product}"
        write(os.path.join(options.output, place), text)
        write(os.path.join(options.output, place[:-len("md")] + "html"),
              page(text, html.escape(title), "\n".join(links), options.converter,
                   os.path.relpath("docs/style.css", folder)))
    shutil.copy(os.path.join(FOLDER, "style.css"), os.path.join(options.output, "docs"))


if __name__ == "__main__":
    main()
