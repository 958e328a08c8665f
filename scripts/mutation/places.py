"""Which mutants a room has: every place of its sources and what may stand there instead."""

import collections
import hashlib
import pathlib
import re

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent

Mutant = collections.namedtuple("Mutant", "id path line start end new before after")

NOT_CODE = re.compile(
    r"""//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|'(?:\\.|[^'\\\n])+'|^[ ]*\#(?:\\\n|[^\n])*"""
    r"""|^[ ]*(?:static_assert|using|namespace)\b[^;{]*""",
    re.S | re.M | re.X,
)
# The formatter puts spaces around binary operators, and none inside of template brackets or
# between a type and its * or &.
BINARY = re.compile(r"(?<= )(\+|-|\*|/|<=|>=|<|>|==|!=|&&|\|\||\+=|-=|\*=|/=)(?=[ \n])")
OTHER_OPERATOR = {
    "+": "-", "-": "+", "*": "/", "/": "*", "<": "<=", "<=": "<", ">": ">=", ">=": ">",
    "==": "!=", "!=": "==", "&&": "||", "||": "&&", "+=": "-=", "-=": "+=", "*=": "/=", "/=": "*=",
}
NEGATION = re.compile(r"!(?=[\w(:])|(?<=[(\[{])-(?=[\w(:])|(?<=[,=<>?:&|+*/] )-(?=[\w(:])"
                      r"|(?<=return )-(?=[\w(:])")
STEP = re.compile(r"\+\+|--")
OTHER_STEP = {"++": "--", "--": "++"}
WORD = re.compile(r"\b(true|false|std::min|std::max)\b")
OTHER_WORD = {"true": "false", "false": "true", "std::min": "std::max", "std::max": "std::min"}
NUMBER = re.compile(r"(?<![\w.])(\d[\d']*\.\d*(?:[eE][+-]?\d+)?|\d+[eE][+-]?\d+|\d[\d']*)([uUlL]*)"
                    r"(?![\w.])")


def blanked(text):
    """The text with comments, strings and directives overwritten by spaces."""
    return NOT_CODE.sub(lambda m: re.sub(r"[^\n]", " ", m.group()), text)


def other_numbers(number, suffix):
    if number.isdigit():
        value = int(number)
        return [f"{n}{suffix}" for n in (value + 1, value - 1) if n >= 0]
    value = float(number.replace("'", ""))
    if value == 0.0:
        return ["1.0"]
    return [repr(value * 1.125), repr(value * 0.875)]


def changes(code):
    for m in BINARY.finditer(code):
        yield m.start(1), m.end(1), OTHER_OPERATOR[m.group(1)]
    for m in NEGATION.finditer(code):
        yield m.start(), m.end(), ""
    for m in STEP.finditer(code):
        yield m.start(), m.end(), OTHER_STEP[m.group()]
    for m in WORD.finditer(code):
        yield m.start(), m.end(), OTHER_WORD[m.group()]
    for m in NUMBER.finditer(code):
        for new in other_numbers(*m.groups()):
            yield m.start(), m.end(), new


def mutants_of_file(path):
    text = path.read_text()
    name = str(path.relative_to(ROOT))
    seen = collections.Counter()
    for start, end, new in sorted(changes(blanked(text))):
        first = text.rfind("\n", 0, start) + 1
        last = text.find("\n", start)
        before = text[first:last].strip()
        after = (text[first:start] + new + text[end:last]).strip()
        seen[before, after] += 1
        # Named by what it changes, not by where, so that a name outlives edits above it.
        key = f"{name}\n{before}\n{after}\n{seen[before, after]}"
        ident = hashlib.sha1(key.encode()).hexdigest()[:8]
        yield Mutant(ident, name, text.count("\n", 0, start) + 1, start, end, new, before, after)


def mutants_of_room(room):
    files = sorted(p for p in (ROOT / "tiltpole" / room).rglob("*") if p.suffix in (".h", ".cpp"))
    return [m for path in files for m in mutants_of_file(path)]
