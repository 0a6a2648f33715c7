#!/usr/bin/env python3
"""Makes the documents of a package: each as Markdown and as a page for a browser.

Documents link to each other by their names here; in the package they find each other wherever it
has them, and a link to a document that it does not have becomes plain text.
"""

import argparse
import html
import os
import re
import shutil
import subprocess

FOLDER = os.path.dirname(os.path.abspath(__file__))
LINK = re.compile(r"\[([^][]*)\]\(([^)#\s]*\.md)(#[\w-]+)?\)")

PAGE = """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>{title}</title>
<link rel="stylesheet" href="{style}">
</head>
<body>
{body}</body>
</html>
"""


def heading(match):
    level, content = match.groups()
    text = html.unescape(re.sub("<[^>]*>", "", content)).lower()
    anchor = re.sub(r"[^\w -]", "", text).replace(" ", "-")
    return f'<h{level} id="{anchor}">{content}</h{level}>'


def page(text, converter, style):
    done = subprocess.run([converter, "-e", "table", "--to", "html"], input=text, check=True,
                          capture_output=True, encoding="utf-8")
    body = re.sub(r"<h(\d)>(.*?)</h\1>", heading, done.stdout)
    body = re.sub(r'(href="(?!\w+:)[^"#]*)\.md(?=["#])', r"\1.html", body)
    return PAGE.format(title=re.search("^# (.*)", text)[1], style=style, body=body)


def in_package(text, folder, places):
    """Turns the links of a document of `folder` to where the package has what they lead to."""

    def link(match):
        place = places.get(os.path.basename(match[2]))
        return f"[{match[1]}]({os.path.relpath(place, folder)}{match[3] or ''})" if place else match[1]

    pieces = re.split(r"^(```.*?^```)$", text, flags=re.M | re.S)
    pieces[::2] = [LINK.sub(link, piece) for piece in pieces[::2]]
    return "".join(pieces)


def write(path, text):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8", newline="\n") as file:
        file.write(text)


def main():
    parser = argparse.ArgumentParser(description=__doc__.partition("\n\n")[0])
    parser.add_argument("--converter", required=True, help="the program cmark-gfm")
    parser.add_argument("--output", required=True, help="the folder for the documents")
    parser.add_argument("documents", nargs="+", metavar="PLACE=FILE")
    options = parser.parse_args()
    shutil.rmtree(options.output, ignore_errors=True)
    files = dict(document.split("=", 1) for document in options.documents)
    places = {os.path.basename(place): place for place in files}
    for place, name in files.items():
        folder = os.path.dirname(place)
        with open(name, encoding="utf-8") as file:
            text = in_package(file.read(), folder, places)
        style = os.path.relpath("docs/style.css", folder)
        write(os.path.join(options.output, place), text)
        write(os.path.join(options.output, place[:-len(".md")] + ".html"),
              page(text, options.converter, style))
    shutil.copy(os.path.join(FOLDER, "style.css"), os.path.join(options.output, "docs"))


if __name__ == "__main__":
    main()
