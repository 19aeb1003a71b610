"""C++ source text as tokens: as much of the language as finding operators, literals and statements needs."""

import re
from dataclasses import dataclass

# Longest first. A prefix of strings and characters belongs to the literal.
_PATTERN = re.compile(
    r"""
      (?P<blank>\s+|//[^\n]*|/\*.*?\*/)
    | (?P<directive>\#(?:\\\n|[^\n])*)
    | (?P<string>(?:u8|[uUL])?R"(?P<mark>[^(\s]*)\(.*?\)(?P=mark)"|(?:u8|[uUL])?"(?:\\.|[^"\\])*")
    | (?P<character>(?:u8|[uUL])?'(?:\\.|[^'\\])+')
    | (?P<number>\.?[0-9](?:'?[0-9A-Za-z_.])*)
    | (?P<word>[A-Za-z_]\w*)
    | (?P<sign><=>|<<=|>>=|\.\.\.|->\*|::|->|\+\+|--|<<|<=|>=|==|!=|&&|\|\||[-+*/%&|^]=|.)
    """,
    re.VERBOSE | re.DOTALL,
)

_CLOSING = {"(": ")", "[": "]", "{": "}"}


@dataclass(frozen=True)
class Token:
    """`kind` is a name of a group of the pattern: "string", "character", "number", "word" or "sign"."""

    kind: str
    text: str
    start: int
    end: int


class Source:
    """A file's text, its tokens (neither comments nor directives), and for each bracket its partner.

    `>>` is one token also where it closes two template lists: nothing here needs to know.
    """

    def __init__(self, text):
        self.text = text
        self.tokens = [
            Token(match.lastgroup if match.lastgroup != "mark" else "string", match.group(), match.start(), match.end())
            for match in _PATTERN.finditer(text)
            if match.lastgroup not in ("blank", "directive")
        ]
        self.partner = self._partners()

    def _partners(self):
        partner, open_places = {}, []
        for place, token in enumerate(self.tokens):
            if token.kind != "sign":
                continue
            if token.text in _CLOSING:
                open_places.append(place)
            elif token.text in _CLOSING.values():
                opened = open_places.pop()
                partner[opened], partner[place] = place, opened
        return partner

    def slice(self, first, last):
        """The text from the first to the last of these tokens."""
        return self.text[self.tokens[first].start : self.tokens[last].end]

    def line_number(self, offset):
        return self.text.count("\n", 0, offset) + 1

    def line_text(self, offset):
        """The line of an offset without the blanks around it."""
        begin = self.text.rfind("\n", 0, offset) + 1
        end = self.text.find("\n", offset)
        return self.text[begin : end if end >= 0 else len(self.text)].strip()

    def has_blanks_around(self, place):
        """The layout tells a binary operator from a sign, a pointer, a reference and a template's bracket."""
        token = self.tokens[place]
        return self.text[token.start - 1].isspace() and self.text[token.end].isspace()
