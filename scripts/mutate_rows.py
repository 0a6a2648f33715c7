"""Changes to the rows of tables, every one of every table, all in one build: in a copy of the
sources each value that a change touches is chosen when the program starts, by the number of the
change in the environment. So a change costs the run of the tests that could notice it only.

A number is moved by one, a letter of a text changed, a truth value turned over, a row replaced by
the next one, or exchanged with it where it is not found by a number that it begins with; a named
element replaced by the next one's value.
"""

import random
import re

HEADER = "mutants.h"
VARIABLE = "MUTANT"
RUNTIME = r"""#pragma once
#include <cstdlib>
#include <initializer_list>
#include <type_traits>

#pragma GCC diagnostic ignored "-Winit-list-lifetime"  // of tables, which stay

inline int ChosenMutant() {
  static const char* const text = getenv("MUTANT");
  static const int chosen = text != nullptr ? atoi(text) : 0;
  return chosen;
}

template <typename Value>
struct MutantOf {
  int mutant;
  Value value;
};

// What is written as a number or truth value takes the type of what it begins.
template <typename Value>
struct Plain_ {
  Value value;
  template <typename Target>
    requires(std::is_arithmetic_v<Target>)
  operator Target() const {
    return static_cast<Target>(value);
  }
};

template <typename Value>
auto Chosen(Value value, std::initializer_list<MutantOf<std::type_identity_t<Value>>> mutants) {
  for (const auto& other : mutants) {
    if (other.mutant == ChosenMutant()) value = other.value;
  }
  if constexpr (std::is_arithmetic_v<Value>) {
    return Plain_<Value>{value};
  } else {
    return value;
  }
}
"""

# A table begins with a line that ends in its opening brace, or is written in one.
TABLE = re.compile(r"^(?:constexpr|const) (?P<type>[\w:]+(?: ?\*)?(?: const| char\*)*) ?"
                   r"\w+(?:\[\w*\])? = (?=\{)", re.M)
TOKEN = re.compile(r'\s+|//[^\n]*|(?P<text>(?:(?:R"\((?:.|\n)*?\)"|"(?:[^"\\\n]|\\.)*")\s*)+)'
                   r"|(?P<number>\b(?:0x[0-9A-Fa-f]+|\d+)[uU]?\b)"
                   r"|(?P<word>[A-Za-z_]\w*)|(?P<mark>.)")


class Element:
    """An element of a table: a group of others, or a value, which stands at start..end."""

    def __init__(self, kind, start, end, text="", children=(), named=False, call=False):
        self.kind, self.start, self.end, self.text = kind, start, end, text
        self.children, self.named, self.call = list(children), named, call
        self.others = []  # (change, text) of the values that it can have instead

    def shape(self):
        if self.kind == "group":
            return (self.call, *(child.shape() for child in self.children))
        return "value" if self.kind in ("name", "truth") else self.kind

    def values(self):
        if self.kind != "group":
            return [self]
        return [value for child in self.children for value in child.values()]


def parse(text, at):
    """Returns the group whose opening brace or parenthesis stands at `at`."""
    start, closing = at, {"{": "}", "(": ")"}[text[at]]
    group = Element("group", start, start, call=closing == ")")
    tokens, pieces, at = [], [], at + 1

    def finish():
        if not pieces:
            return
        named = len(pieces) > 3 and text[pieces[0][1]] == "." and text[pieces[2][1]] == "="
        kinds = [piece[0] for piece in pieces][3 if named else 0:]
        first = pieces[3 if named else 0]
        end = pieces[-1][2]
        written = text[first[1]:end].rstrip()
        end = first[1] + len(written)
        if kinds == ["group"]:
            group.children.append(first[3])
        elif kinds == ["word", "group"] and pieces[-1][3].call and not named and (
                written.startswith("TextOf(")):
            group.children.append(pieces[-1][3])
        elif kinds in (["number"], ["text"]) or (kinds == ["mark", "number"] and
                                                 written[0] == "-"):
            group.children.append(Element(kinds[-1], first[1], end, written, named=named))
        else:
            kind = "truth" if written in ("true", "false") else "name"
            kind = "none" if written == "nullptr" else kind
            group.children.append(Element(kind, first[1], end, written, named=named))
        pieces.clear()

    while True:
        token = TOKEN.match(text, at)
        kind, begin, at = token.lastgroup, at, token.end()
        if kind is None:
            continue
        if kind == "mark" and token[0] in "{(":
            inner = parse(text, begin)
            at = inner.end
            pieces.append(("group", begin, at, inner))
        elif kind == "mark" and token[0] == closing:
            finish()
            group.end = at
            group.text = " ".join(text[start:at].split())
            return group
        elif kind == "mark" and token[0] == ",":
            finish()
        else:
            pieces.append((kind, begin, at, None))


def changed_number(text, rng):
    digits = text.lstrip("-").rstrip("uU")
    value = int(text.rstrip("uU"), 0)
    value += 1 if value == 0 or rng.random() < 0.5 else -1
    return f"0x{value:0{len(digits) - 2}X}" if digits.startswith("0x") else str(value)


class Change:
    """One change: what it does, and the values that it gives to elements."""

    def __init__(self, path, line, kind, shown, values):
        self.path, self.line, self.kind, self.shown, self.values = path, line, kind, shown, values


def group_changes(group, changed_text, seed):
    """Yields (kind, what it shows, [(element, its new text)]). What a row's change is hangs on the
    row and the seed only."""
    for number, element in enumerate(group.children):
        rng = random.Random(f"{seed} {number} {group.text}")
        new = None
        if element.kind == "group":
            yield from group_changes(element, changed_text, seed)
        elif element.kind == "number":
            new = changed_number(element.text, rng)
        elif element.kind == "text":
            new = changed_text(element.text, rng)
        elif element.kind == "truth":
            new = {"true": "false", "false": "true"}[element.text]
        if new is not None and (element.kind != "truth" or not group.call):
            where = "" if len(group.text) > 200 else f" in {group.text}"
            yield f"row {element.kind}", f"{element.text} -> {new}{where}", [(element, new)]
    for element, following in zip(group.children, group.children[1:]):
        if element.shape() != following.shape():
            continue
        if element.kind != "group" and not (element.named or group.call is False and
                                            element.kind == "text" and
                                            {c.kind for c in group.children} == {"text"}):
            continue
        pairs = [(a, b) for a, b in zip(element.values(), following.values())
                 if a.text != b.text and not (element.call and a.kind == "name")]
        if not pairs:
            continue
        yield ("row repeated", f"{following.text} for {element.text}",
               [(a, b.text) for a, b in pairs])
        if element.values()[0].kind != "number" and element.kind == "group":
            yield ("row swapped", f"{element.text} <-> {following.text}",
                   [(a, b.text) for a, b in pairs] + [(b, a.text) for a, b in pairs])


def changes(path, text, changed_text, seed):
    """Returns the changes to a file's tables, and the tables."""
    found, groups = [], []
    for table in TABLE.finditer(text):
        group = parse(text, table.end())
        groups.append((table, group))
        for kind, shown, values in group_changes(group, changed_text, seed):
            line = text.count("\n", 0, values[0][0].start) + 1
            found.append(Change(path, line, kind, " ".join(shown.split()), values))
    return found, groups


def literal(text, suffix):
    return text.rstrip("uU") + suffix if suffix else text


def instrumented(text, groups):
    """Returns the text with a choice of values for each element, by its `others`."""
    out, at = [f'#include "{HEADER}"\n'], 0
    for table, group in groups:
        # What is chosen at the start is no constant.
        declared = re.sub(r"^constexpr (const )?", "const ", table[0])
        out += [text[at:table.start()], declared]
        at = table.end()
        for value in group.values():
            if value.others:
                wide = "LL" if value.kind == "number" else ""
                others = ", ".join(f"{{{number}, {literal(new, wide)}}}"
                                   for number, new in value.others)
                out += [text[at:value.start],
                        f"Chosen({literal(value.text, wide)}, {{{others}}})"]
                at = value.end
    text = "".join(out) + text[at:]
    return re.sub(r"^static_assert\(.*?\);", "", text, flags=re.M | re.S)
