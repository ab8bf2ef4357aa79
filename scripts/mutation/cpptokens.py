# SPDX-License-Identifier: MIT
"""The tokens of a C++ source, as far as the mutators need them.

The sources are laid out by clang-format; that a binary operator has a blank on both sides and a template's
bracket has none before it is relied upon here.
"""

import re
from dataclasses import dataclass

_TOKEN = re.compile(
    r"""
      (?P<blank>      \s+ )
    | (?P<comment>    //[^\n]* | /\*.*?\*/ )
    | (?P<directive>  (?:(?<=\n)|\A)[ \t]*\#(?:[^\n\\]|\\\n|\\.)* )
    | (?P<raw>        (?:u8|[uUL])?R"(?P<mark>[^()\s\\]{0,16})\(.*?\)(?P=mark)" )
    | (?P<string>     (?:u8|[uUL])?"(?:[^"\\\n]|\\.)*" )
    | (?P<character>  (?:u8|[uUL])?'(?:[^'\\\n]|\\.)*' )
    | (?P<number>     \.?[0-9](?:[eEpP][+-]|'[0-9A-Za-z]|[\w.])* )
    | (?P<name>       [A-Za-z_]\w* )
    | (?P<sign>       <<=|>>=|->\*|\.\.\.|->|\+\+|--|<<|>>|<=|>=|==|!=|&&|\|\||[-+*/%&|^]=|::|. )
    """,
    re.VERBOSE | re.DOTALL,
)

_OPENING = {"(": ")", "[": "]", "{": "}"}
_CLOSING = set(_OPENING.values())
_NO_OPERANDS = {"return", "case", "operator", "else", "throw"}


@dataclass(frozen=True)
class Token:
    """One token; `kind` is the name of its group in the grammar above."""

    kind: str
    text: str
    start: int
    end: int
    blank_before: bool
    blank_after: bool

    @property
    def is_between_blanks(self):
        return self.blank_before and self.blank_after


def tokens_of(text):
    """The tokens that are code: no blanks, comments or preprocessor lines."""
    found = []
    for match in _TOKEN.finditer(text):
        if match.lastgroup in ("blank", "comment", "directive"):
            continue
        kind = "raw" if match.group("raw") else match.lastgroup
        before = text[match.start() - 1 : match.start()]
        after = text[match.end() : match.end() + 1]
        is_last = not after
        found.append(Token(kind, match.group(), match.start(), match.end(), before.isspace(),
                           is_last or after.isspace()))
    return found


def is_operand_end(token):
    """Whether an operator behind this token is a binary one."""
    if token.kind == "sign":
        return token.text in (")", "]", "}")
    return token.text not in _NO_OPERANDS


def closing_position(tokens, opening):
    """The position of the bracket that closes the one at this position; len(tokens) if there is none."""
    depth = 0
    for position in range(opening, len(tokens)):
        if tokens[position].kind == "sign":
            if tokens[position].text in _OPENING:
                depth += 1
            elif tokens[position].text in _CLOSING:
                depth -= 1
                if depth == 0:
                    return position
    return len(tokens)


def end_position(tokens, begin, ends):
    """The first position from `begin` on with one of these signs, or a closing bracket, outside brackets."""
    position = begin
    while position < len(tokens):
        token = tokens[position]
        if token.kind == "sign":
            if token.text in ends or token.text in _CLOSING:
                return position
            if token.text in _OPENING:
                position = closing_position(tokens, position)
        position += 1
    return len(tokens)


def template_positions(tokens):
    """The positions of all tokens that stand in a template's argument list, its brackets among them."""
    found = set()
    depth = 0
    for position, token in enumerate(tokens):
        opens = token.text == "<" and not token.blank_before
        if opens and position > 0 and tokens[position - 1].text != "operator":
            depth += 1
        if depth > 0:
            found.add(position)
        if token.text in (">", ">>") and not token.blank_before:
            depth = max(0, depth - len(token.text))
    return found
