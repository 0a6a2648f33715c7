"""The changes that scripts/mutate makes: slips in tokens, rows and lines, and rules that are misread.
A change is its kind and its edits, each (start, end, new text)."""

import re
from itertools import pairwise

SWAPS = {"==": "!=", "!=": "==", "<": "<=", "<=": "<", ">": ">=", ">=": ">", "&&": "||",
         "||": "&&", "+": "-", "-": "+", "*": "+", "/": "*", "%": "/", "<<": ">>", ">>": "<<",
         "&": "|", "|": "&", "+=": "-=", "-=": "+=", "++": "--", "--": "++",
         "true": "false", "false": "true"}
TOKEN = re.compile(
    r'(?P<text>R"(\w*)\((?s:.*?)\)\2"|"(?:[^"\\\n]|\\.)*")'
    r"|(?P<character>'(?:[^'\\\n]|\\.)+')"
    r"|(?P<comment>//.*|^#.*|^ *static_assert\((?s:.*?)\);)"
    r"|(?P<number>\b(?:0x[0-9A-Fa-f]+|\d+)(?:U|u)?\b(?!\.))"
    r"|(?P<word>\btrue\b|\bfalse\b)"
    r"|(?P<step>\+\+|--)"
    r"|(?P<operator>(?<= )(?:==|!=|<=|>=|&&|\|\||\+=|-=|<<|>>|[<>+\-*/%&|])(?= ))", re.M)
ROW = re.compile(r"^\s*\{.*\},?$")
STATEMENT = re.compile(r"^\s+(?!return\b|constexpr\b|const\b|static\b|using\b|else\b|case\b)"
                       r"(?:if \(.*\) (?:return.*|break|continue);|[\w\[\]>.*:-]+(?: [|&+-]?= |"
                       r"\().*;)(?:  //.*)?$")

# Two neighbouring arguments; what makes one of them a field; a request with its record.
EXPRESSION = r"(?:\*|&)?\w+(?:(?:\.|->)\w+|\[\w+\])*"
ARGUMENTS = re.compile(rf"(?<=[( ])(?=({EXPRESSION}), ({EXPRESSION})[,)])")
FIELD = re.compile(r"->|\.|\[")
REQUEST = re.compile(r"^ *(?:if|return|bool \w+ =|const bool \w+ =|\w)[^;]*?"
                     r"\b(?:(?:Read|Write)Register|\w*Request|Send\w*)\((?:\w+, )*?(&?)"
                     r"([a-z]\w*)(?:, \w+)*\)", re.M)

# What the structures declare, and what a name's type says of its values.
STRUCT = re.compile(r"^struct (\w+)[^;{]* \{$(.*?)^\};", re.M | re.S)
MEMBER = re.compile(r"^ +(?:const )?([\w:]+(?:\*|&)?) (\w+)(?:\[\w+\])?(?: = [^;]*)?;", re.M)
CAST = re.compile(r"static_cast<(u?int(?:\d+_t)?|unsigned|char|size_t)>\(")
MASK = re.compile(r" & (?:0x[0-9A-Fa-f]+U?|\d+U?|[A-Z]\w+)\b")
TEST = re.compile(r"(?:== 1|!= 0|== 0|!= 1)\b")
TESTS = {"== 1": "!= 0", "!= 0": "== 1", "== 0": "!= 1", "!= 1": "== 0"}
CONVERSION = re.compile(r"%%|%(?P<flag>-?0?)(?P<width>\d*)(?P<cut>\.(?:\d+|\*))?"
                        r"(?P<length>hh|h|ll|l)?(?P<type>[diuxXcs])")
BITS = {"bool": 8, "char": 8, "uint8_t": 8, "uint16_t": 16, "int": 32, "unsigned": 32,
        "int8_t": 32, "int16_t": 32, "int32_t": 32, "uint32_t": 32}  # negative ones print as 32


def changed_number(text, rng):
    suffix = text[-1] if text[-1] in "uU" else ""
    digits = text.rstrip("uU")
    value = int(digits, 0) if not re.fullmatch(r"0\d+", digits) else int(digits, 8)
    changed = value ^ (1 << rng.randrange(8)) if digits.startswith("0x") and value > 255 else (
        value - 1 if value > 0 and rng.random() < 0.5 else value + 1)
    return (f"0x{changed:0{len(digits) - 2}X}" if digits.startswith("0x") else str(changed)) + suffix


def changed_text(text, rng):
    letters = [i for i in range(text.index('"') + 1, len(text) - 1)
               if text[i].isalpha() and text[i - 1] not in "\\%" and not re.search(
                   r"(%[-0-9.*]*[hl]*|\\x.?)$", text[:i])]
    if not letters:
        return None
    at = rng.choice(letters)
    letter = "q" if text[at].islower() else "Q"
    return text[:at] + (letter if text[at] != letter else "z") + text[at + 1:]


def token_changes(source, rng):
    for token in source.tokens:
        kind, old = token.lastgroup, token[0]
        if kind == "text":
            new = changed_text(old, rng)
        elif kind == "character":
            new = "'q'" if old != "'q'" else "'z'"
        elif kind == "number":
            new = changed_number(old, rng)
        else:
            new = SWAPS[old]
        if new is not None:
            in_row = ROW.match(source.lines[source.line_of(token.start())])
            yield "row " * bool(in_row) + kind, [(token.start(), token.end(), new)]


def line_changes(source):
    """Rows dropped and exchanged, statements removed."""
    for at, line in enumerate(source.lines):
        start, end = source.starts[at], source.starts[at] + len(line)
        if ROW.match(line):
            yield "row dropped", [(start, end + 1, "")]
            following = source.lines[at + 1] if at + 1 < len(source.lines) else ""
            if ROW.match(following) and line.endswith("},") and following.endswith("},"):
                yield "row swapped", [(start, end + 1 + len(following), f"{following}\n{line}")]
        if STATEMENT.match(line):
            yield "line removed", [(start, end, "")]


def argument_changes(source):
    """Arguments of a call that are fields, each replaced by its neighbour."""
    for pair in ARGUMENTS.finditer(source.code):
        if pair[1] != pair[2] and (FIELD.search(pair[1]) or FIELD.search(pair[2])):
            yield "argument replaced", [(*pair.span(1), pair[2])]
            yield "argument replaced", [(*pair.span(2), pair[1])]


OPERAND_END = re.compile(r"[;,?]|&&|\|\|| : ")
OPERAND_START = re.compile(r"(?:[;,?]|&&|\|\|| = |\|= | : |return )$")


def operand_end(code, at):
    """The end of the operand that begins at `at`."""
    depth = 0
    while at < len(code):
        depth += (code[at] in "([{") - (code[at] in ")]}")
        if depth < 0 or depth == 0 and OPERAND_END.match(code, at):
            break
        at += 1
    return at


def operand_start(code, at):
    """The start of the operand that ends at `at`."""
    depth = 0
    while at > 0:
        depth += (code[at - 1] in ")]}") - (code[at - 1] in "([{")
        if depth < 0 or depth == 0 and OPERAND_START.search(code[max(at - 7, 0):at]):
            break
        at -= 1
    return at


def clause_changes(source):
    for found in re.finditer(r"\s(?:&&|\|\|)\s+", source.code):
        yield "clause left out", [(operand_start(source.code, found.start()), found.end(), "")]
        end = operand_end(source.code, found.end())
        yield "clause left out", [(found.start(), end, " " * source.code[:end].endswith(" "))]


def narrowing_changes(source):
    """Casts and masks left out, and numbers that are too large cut to the largest."""
    for cast in CAST.finditer(source.code):
        end = operand_end(source.code, cast.end())
        value = source.text[cast.end():end]
        yield "narrowing left out", [(cast.start(), cast.end(), "(")]
        if cast[1] in ("uint8_t", "uint16_t"):
            most = 255 if cast[1] == "uint8_t" else 65535
            yield "narrowing saturates", [
                (cast.end(), end, f"({value}) > {most} ? {most} : ({value})")]
    for mask in MASK.finditer(source.code):
        yield "narrowing left out", [(*mask.span(), "")]


def test_changes(source):
    for test in TEST.finditer(source.code):
        yield "one for any", [(*test.span(), TESTS[test[0]])]


def printed_values(source, literal):
    """The values after a text, up to the end of the call or the row."""
    values, at = [], literal.end()
    while source.code[at:at + 1] == ",":
        end = operand_end(source.code, at + 1)
        values.append(source.code[at + 1:end].strip())
        at = end
    return values


def conversion_changes(source):
    """Conversions of another width or sign, if some value is printed differently."""
    for literal in source.tokens:
        if literal.lastgroup != "text":
            continue
        values = printed_values(source, literal)
        scans = re.fullmatch(r'"((0x)?%\w+-?)+"', literal[0])
        number = 0
        for found in CONVERSION.finditer(literal[0]):
            if found[0] == "%%":
                continue
            number += found["cut"] == ".*"
            value = values[number] if number < len(values) else ""
            number += 1
            start = literal.start() + found.start()
            for new in sorted(conversions(found, scans, source.bits_of(value))):
                yield "conversion", [(start, start + len(found[0]), new)]


def conversions(found, scans, bits):
    flag, width, cut, length, kind = (found[name] or "" for name in
                                      ("flag", "width", "cut", "length", "type"))
    made = set()
    if width:
        made.add(f"%{cut}{length}{kind}")
        if int(width) < 4:
            made.add(f"%{flag}{int(width) + 1}{cut}{length}{kind}")
    if kind not in "duxX":
        return made
    if scans:
        if not width:
            made.add(f"%2{length}{kind}")
        made.add(f"%{flag}{width}{ {'hh': 'h', 'h': 'hh'}.get(length, 'h')}{kind}")
        return made  # every sign is read alike
    if not width:
        made.add(f"%08{length}{kind}")
    other = {"d": "u", "u": "d", "x": "X", "X": "x"}[kind]
    if bits == 32 or kind in "xX":
        made.add(f"%{flag}{width}{cut}{length}{other}")
    if bits and (bits > 8 or kind == "d"):
        made.add(f"%{flag}{width}{cut}{'h' if bits == 32 else 'hh'}{kind}")
    return made


def carried_changes(source):
    """Each field of a request's record, cleared before the request."""
    for request in REQUEST.finditer(source.code):
        for field in sorted(set(re.findall(rf"\b{request[2]}(?:->|\.)\w+\b(?!\()", source.code))):
            yield "carried value cleared", [(request.start(), request.start(), f"  {field} = {{}};\n")]


def exchange_changes(source):
    """After a request, the value that was sent in place of the one that came back, and the reverse."""
    for request in REQUEST.finditer(source.code):
        name, start, end = request[2], request.start(), request.end()
        end_of_function = source.code.find("\n}", end)
        head = source.code.rfind("\n}", 0, start) + 1
        after = source.code[end:end_of_function]
        used = re.compile(rf"\b{name}(\.|->)(?=[a-z]\w*\b(?!\())", re.I)
        pointer = re.search(rf"\b\w+\* {name}\b|auto\* {name}\b", source.code[head:start])
        copy = f"  const auto asked = {'*' * bool(pointer)}{name};\n"
        for use in used.finditer(after):
            yield "request for reply", [(start, start, copy),
                                        (end + use.start(), end + use.end(), "asked.")]
        # Variables that were copied into the record or out of it.
        before = source.code[head:start]
        into = re.findall(rf"\b({name}(?:->|\.)[\w.\[\]]+) = (?:static_cast<\w+>\()?([a-z]\w*)\)?;",
                          before)
        out = re.findall(rf"\b(\w+) = ()({name}(?:->|\.)[\w.\[\]]+);", before)
        for field, variable in into + [(field, variable) for variable, _, field in out]:
            for use in re.finditer(rf"(?<![\w.>]){variable}\b(?!\()", after):
                yield "reply for request", [(end + use.start(), end + use.end(), field)]
    # A row says by its list of entries which of the two it prints; with both lists it does not compile.
    for side in re.finditer(r"^    \.(before|after) = ", source.code, re.M):
        yield (("reply for request", [(*side.span(1), "after")]) if side[1] == "before" else
               ("request for reply", [(*side.span(1), "before")]))


def field_changes(source):
    """The field beside the one that is meant."""
    uses = re.finditer(r"(?<=[\w\])])(?:\.|->)([A-Za-z]\w*)\b(?!\()|offsetof\((\w+), (\w+)\)",
                       source.code)
    for use in uses:
        group = 1 if use[1] else 3
        for other in source.fields.neighbours(use[2], use[group]):
            yield "field beside", [(*use.span(group), other)]


class Fields:
    """The members of all structures."""

    def __init__(self, texts):
        self.records, self.types = [], {}
        for text in texts:
            for name, body in STRUCT.findall(re.sub(r"//.*", "", text)):
                members = MEMBER.findall(body)
                self.records.append((name, [member for _, member in members]))
                self.types.update((member, kind) for kind, member in members)

    def neighbours(self, record, field):
        for name, members in self.records:
            if field in members and record in (None, name):
                for pair in pairwise(m for m in members if m == field or not re.match(
                        r"unused|auc?(Reserved|Unused)|ucReserved", m)):
                    if field in pair:
                        yield pair[pair[0] == field]
                return


class Source:
    """A file's text with its tokens. In `code` its texts are blanked, and so are comments,
    static_assert and lines of the preprocessor."""

    def __init__(self, text, fields):
        self.text, self.fields, self.lines = text, fields, text.split("\n")
        self.starts = [0]
        for line in self.lines:
            self.starts.append(self.starts[-1] + len(line) + 1)
        code, self.tokens = list(text), []
        for token in TOKEN.finditer(text):
            if token.lastgroup != "comment":
                self.tokens.append(token)
            if token.lastgroup in ("comment", "character", "text"):
                code[token.start():token.end()] = "\"" + re.sub(
                    r"[^\n]", "_", token[0][1:-1]) + "\"" * (len(token[0]) > 1)
        self.code = "".join(code)

    def line_of(self, at):
        return self.text.count("\n", 0, at)

    def bits_of(self, value):
        """How many bits a printed value has by its type; 0 if that is not known."""
        if value in ("Byte", "Number"):
            return 8 if value == "Byte" else 32
        name = re.fullmatch(r"(?:.*(?:\.|->))?(\w+)(\[.*\])?", value)
        local = name and re.findall(rf"\b(\w+) {name[1]}\b(?=[;,)]| =|\[)", self.code)
        kind = (self.fields.types.get(name[1]) or "".join(local[:1])) if name else ""
        return BITS.get(kind, 0)


def changes(text, fields, rng, rules_only):
    """Yields (kind, edits); with `rules_only` no slips."""
    source = Source(text, fields)
    made = [clause_changes, narrowing_changes, test_changes, conversion_changes, carried_changes,
            exchange_changes, field_changes, argument_changes]
    if not rules_only:
        made += [lambda source: token_changes(source, rng), line_changes]
    for make in made:
        yield from make(source)


def applied(text, edits):
    for start, end, new in sorted(edits, reverse=True):
        text = text[:start] + new + text[end:]
    return text
