# SPDX-License-Identifier: MIT
"""Which mutants a C++ source has."""

import re
from dataclasses import dataclass, field

from cpptokens import closing_position, end_position, is_operand_end, template_positions, tokens_of

# Each binary operator with what takes its place: a near miss, and for the ordered comparisons the negation.
BINARY = {
    "+": ("-",),
    "-": ("+",),
    "*": ("/",),
    "/": ("*",),
    "%": ("*",),
    "&": ("|",),
    "|": ("&",),
    "^": ("&",),
    "<<": (">>",),
    ">>": ("<<",),
    "&&": ("||",),
    "||": ("&&",),
    "<": ("<=", ">="),
    ">": (">=", "<="),
    "<=": ("<", ">"),
    ">=": (">", "<"),
    "==": ("!=",),
    "!=": ("==",),
    "+=": ("-=",),
    "-=": ("+=",),
    "*=": ("/=",),
    "/=": ("*=",),
    "%=": ("*=",),
    "&=": ("|=",),
    "|=": ("&=",),
    "^=": ("&=",),
    "<<=": (">>=",),
    ">>=": ("<<=",),
}
COMPARISONS = {"<", ">", "<=", ">=", "==", "!="}
WORDS = {"true": "false", "false": "true"}
STEPS = {"++": "--", "--": "++"}

# Arguments of these are read by the compiler alone.
_UNEVALUATED = {"static_assert", "Q_UNUSED", "alignas", "decltype", "noexcept"}
_NO_CALLS = {"return", "if", "for", "while", "switch", "case", "using", "else", "do", "goto", "delete", "new"}
_STATEMENT_ENDS = {";", "{", "}", ":"}
_DEFAULT_VALUE = re.compile(r"\{\}|0|false|nullptr|(std::)?nullopt|[QC][A-Z]\w*\(\)")
_INTEGER = re.compile(r"(0[xX][0-9a-fA-F']+|0[bB][01']+|[0-9][0-9']*)([uUlLzZ]*)")
_FLOAT = re.compile(r"(?!0[xX])[0-9.]+(?:[eE][+-]?[0-9]+)?([fFlL]?)")


@dataclass(frozen=True)
class Mutant:
    """One change of one file: text[start:end] becomes `replacement`."""

    file: str
    start: int
    end: int
    replacement: str
    kind: str
    line: int = field(compare=False)
    original: str = field(compare=False)  # the changed lines before, with single blanks
    changed: str = field(compare=False)  # and after
    occurrence: int = field(default=0, compare=False)  # of the same change of the same text in this file

    def applied_to(self, text):
        return text[: self.start] + self.replacement + text[self.end :]

    @property
    def identity(self):
        """What stays the same when lines elsewhere in the file come and go."""
        return f"{self.file}\n{self.original}\n{self.changed}\n{self.occurrence}"

    @property
    def subsystem(self):
        return self.file.split("/")[1]


class _Source:
    """One file under mutation; the mutators below append to its changes."""

    def __init__(self, text):
        self.text = text
        self.tokens = tokens_of(text)
        self.skipped = template_positions(self.tokens) | self._unevaluated()
        self.changes = []  # (start, end, replacement, kind)

    def _unevaluated(self):
        found = set()
        for position, token in enumerate(self.tokens[:-1]):
            if token.text in _UNEVALUATED and self.tokens[position + 1].text == "(":
                found.update(range(position, closing_position(self.tokens, position + 1) + 1))
        return found

    def before(self, position):
        """The text of the token before, empty at the beginning."""
        return self.tokens[position - 1].text if position > 0 else ""

    def between(self, begin, end):
        """The text from one token to the last one before another."""
        return self.text[self.tokens[begin].start : self.tokens[end - 1].end] if begin < end else ""

    def replace(self, position, replacement, kind):
        token = self.tokens[position]
        self.changes.append((token.start, token.end, replacement, kind))

    def replace_range(self, begin, end, replacement, kind):
        self.changes.append((self.tokens[begin].start, self.tokens[end - 1].end, replacement, kind))


def _mutate_operator(source, position):
    token = source.tokens[position]
    if position == 0 or source.before(position) == "operator":
        return
    is_binary = is_operand_end(source.tokens[position - 1])
    if token.text in BINARY and is_binary and token.is_between_blanks:
        for replacement in BINARY[token.text]:
            source.replace(position, replacement, "operator")
    elif token.text in STEPS:
        source.replace(position, STEPS[token.text], "step")
    elif token.text in ("!", "~") or (token.text == "-" and not is_binary):
        source.replace(position, "", "removed sign")


def _mutate_number(source, position):
    text = source.tokens[position].text
    integer = _INTEGER.fullmatch(text)
    if integer:
        digits, suffix = integer.group(1).replace("'", ""), integer.group(2)
        is_octal = digits.isdigit() and digits.startswith("0")
        value = int(digits, 8 if is_octal else 0)
        write = hex if digits.lower().startswith("0x") else str
        source.replace(position, write(value + 1) + suffix, "constant")
        if value != 0:
            source.replace(position, "0" + suffix, "constant")
        return
    floating = _FLOAT.fullmatch(text)
    if floating:
        source.replace(position, f"({text} + 1)", "constant")
        if float(text.rstrip("fFlL")) != 0:
            source.replace(position, "0.0" + floating.group(1), "constant")


def _mutate_literal(source, position):
    token = source.tokens[position]
    prefix = re.match(r"\w*", token.text).group()
    if token.kind == "character":
        source.replace(position, prefix + r"'\1'", "constant")
    elif token.text != prefix + '""' and source.before(position) != "extern":
        # The context of a text for translators is not compiled.
        if position < 2 or source.tokens[position - 2].text != "QT_TRANSLATE_NOOP":
            source.replace(position, prefix + '""', "string")


def _mutate_return(source, position):
    end = end_position(source.tokens, position + 1, {";"})
    value = source.between(position + 1, end)
    if value and not _DEFAULT_VALUE.fullmatch(value):
        source.replace_range(position + 1, end, "{}", "return value")


def _mutate_condition(source, position):
    opening = position + 1
    if source.tokens[opening].text != "(":
        return
    closing = closing_position(source.tokens, opening)
    inside = [token.text for token in source.tokens[opening + 1 : closing]]
    if ";" in inside or "=" in inside:
        return
    condition = source.between(opening + 1, closing)
    source.replace_range(opening + 1, closing, f"false && ({condition})", "condition")
    # Where a changed comparison or a removed "!" says the same, once is enough.
    is_compound = "&&" in inside or "||" in inside
    if is_compound or (inside[0] != "!" and not COMPARISONS.intersection(inside)):
        source.replace_range(opening + 1, closing, f"!({condition})", "condition")


def _is_call(tokens):
    """Whether these tokens are one call: names joined by "::", "." or "->", brackets behind, at last ()."""
    position = 0
    name_may_follow = True
    if len(tokens) < 3 or tokens[-1].text != ")":
        return False
    while position < len(tokens):
        token = tokens[position]
        if token.kind == "name":
            if not name_may_follow or token.text in _NO_CALLS:
                return False
            name_may_follow = False
        elif token.text in ("::", ".", "->"):
            name_may_follow = True
        elif token.text in ("(", "["):
            position = closing_position(tokens, position)
        elif token.text == "<" and not token.blank_before:
            while position < len(tokens) and tokens[position].text not in (">", ">>"):
                position += 1
        elif not (token.text == "*" and position == 0):
            return False
        position += 1
    return True


def _mutate_statement(source, position):
    """A call whose result is not used is left out; `position` is what ends the statement before."""
    begin = position + 1
    if source.tokens[position].text == ")":
        # A call that an if, for or while without braces stands before.
        opening = next((p for p in range(position, -1, -1) if closing_position(source.tokens, p) == position
                        and source.tokens[p].text == "("), None)
        if opening is None or source.before(opening) not in ("if", "for", "while"):
            return
    end = end_position(source.tokens, begin, {";", ","})
    if end < len(source.tokens) and source.tokens[end].text == ";":
        if source.tokens[begin].text not in _UNEVALUATED and _is_call(source.tokens[begin:end]):
            source.replace_range(begin, end, "", "removed call")


def _mutate_ternary(source, position):
    colon = position + 1
    nested = 1
    while nested and colon < len(source.tokens):
        colon = end_position(source.tokens, colon, {"?", ":"})
        if colon == len(source.tokens) or source.tokens[colon].text not in ("?", ":"):
            return
        nested += 1 if source.tokens[colon].text == "?" else -1
        colon += 1
    end = end_position(source.tokens, colon, {";", ","})
    first, second = source.between(position + 1, colon - 1), source.between(colon, end)
    source.replace_range(position + 1, end, f"({second}) : ({first})", "ternary")


def _mutate_token(source, position):
    token = source.tokens[position]
    if token.kind == "number":
        _mutate_number(source, position)
    elif token.kind in ("string", "character"):
        _mutate_literal(source, position)
    elif token.text in WORDS:
        source.replace(position, WORDS[token.text], "constant")
    elif token.text == "return":
        _mutate_return(source, position)
    elif token.text in ("if", "while"):
        _mutate_condition(source, position)
    elif token.text == "?":
        _mutate_ternary(source, position)
    elif token.kind == "sign":
        _mutate_operator(source, position)
    if token.text in _STATEMENT_ENDS or token.text in (")", "else"):
        _mutate_statement(source, position)


def _single_blanks(text):
    return " ".join(text.split())


def _as_mutant(file, text, change):
    start, end, replacement, kind = change
    first = text.rfind("\n", 0, start) + 1
    last = text.find("\n", end)
    last = len(text) if last < 0 else last
    return Mutant(
        file, start, end, replacement, kind,
        line=text.count("\n", 0, start) + 1,
        original=_single_blanks(text[first:last]),
        changed=_single_blanks(text[first:start] + replacement + text[end:last]),
    )


def mutants_of(file, text):
    """All mutants of a source, by position."""
    source = _Source(text)
    for position in range(len(source.tokens) - 1):
        if position not in source.skipped:
            _mutate_token(source, position)
    mutants = []
    seen = {}
    for change in sorted(set(source.changes)):
        mutant = _as_mutant(file, text, change)
        key = (mutant.original, mutant.changed)
        seen[key] = seen.get(key, -1) + 1
        mutants.append(Mutant(**{**mutant.__dict__, "occurrence": seen[key]}))
    return mutants
