"""The changes of one token each that are tried on a source."""

import re
from dataclasses import dataclass

# Operators between two operands, which the layout puts between blanks.
_BETWEEN = {
    "<": ("<=", ">="),
    "<=": ("<", ">"),
    ">": (">=", "<="),
    ">=": (">", "<"),
    "==": ("!=",),
    "!=": ("==",),
    "&&": ("||",),
    "||": ("&&",),
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
    "+=": ("-=",),
    "-=": ("+=",),
    "*=": ("/=",),
    "/=": ("*=",),
    "|=": ("&=",),
    "&=": ("|=",),
    "^=": ("|=",),
}
_BEFORE = {"!", "-", "~"}
_STEPS = {"++": "--", "--": "++"}
_WORDS = {"true": "false", "false": "true"}
_COMPARISONS = {"<", "<=", ">", ">=", "==", "!="}
# Larger numbers are bits and primes, of which a neighbour is seldom a likely slip.
_LARGEST_NUMBER = 0x20000
_NUMBER = re.compile(r"(0[xX][0-9A-Fa-f]+|[0-9]+)([uUlLzZ]*)$")
_ESCAPES = {"n": 10, "t": 9, "r": 13, "0": 0, "a": 7, "b": 8, "f": 12, "v": 11, "\\": 92, "'": 39, '"': 34}


@dataclass
class Mutant:
    """The text from `start` to `end` becomes `replacement`. `line` and `change` name it for people, also after lines
    were added or taken away elsewhere in the file."""

    start: int
    end: int
    replacement: str
    change: str
    line: str
    line_number: int
    place: int  # the token
    number: int = 0  # at run time, from 1
    region: object = None

    @property
    def key(self):
        return (self.line, self.change)

    def applied(self, text, begin=0, end=None):
        """A part of the source's text with the change made."""
        end = len(text) if end is None else end
        return text[begin : self.start] + self.replacement + text[self.end : end]


class ChangeFinder:
    """Collects what can be changed in a source whose regions are known."""

    def __init__(self, source, regions):
        self.source = source
        self.regions = regions
        self.mutants = []

    def find(self):
        """The mutants in the order of the text, numbered from 1."""
        for place in range(len(self.source.tokens)):
            if not self._is_fixed(place):
                self._of_token(place)
        self._of_regions(self.regions)
        self.mutants.sort(key=lambda mutant: (mutant.start, mutant.end))
        for number, mutant in enumerate(self.mutants, 1):
            mutant.number = number
            mutant.region = _innermost(self.regions, mutant, self.source)
        return self.mutants

    def _is_fixed(self, place):
        """The name of an operator function, and the number in a type: how much room a buffer has of its own."""
        around = [self.source.tokens[each].text for each in (place - 1, place + 1) if 0 <= each < len(self.source.tokens)]
        is_in_type = around[0] in ("<", ",") and around[-1] in (">", ">>") and not self.source.has_blanks_around(place + 1)
        return around[0] == "operator" or (self.source.tokens[place].kind == "number" and is_in_type)

    def _of_token(self, place):
        token = self.source.tokens[place]
        if token.kind == "sign":
            self._of_sign(place, token)
        elif token.kind == "word" and token.text in _WORDS:
            self._replace(place, _WORDS[token.text])
        elif token.kind == "number":
            self._of_number(place, token)
        elif token.kind == "character":
            self._replace(place, _next_character(token.text))

    def _of_sign(self, place, token):
        if token.text in _BETWEEN and self.source.has_blanks_around(place):
            for other in _BETWEEN[token.text]:
                self._replace(place, other)
        elif token.text in _STEPS:
            self._replace(place, _STEPS[token.text])
        elif token.text in _BEFORE and self._is_prefix(place):
            self._replace(place, "")
        elif token.text == "?":
            self._negate(self._condition_before(place), place - 1)

    def _is_prefix(self, place):
        """Before an operand; the sign of a destructor's name is none."""
        tokens = self.source.tokens
        is_name = tokens[place].text == "~" and tokens[place - 1].text not in ("(", "=", "&", "|", ",", "return", "&=")
        return not is_name and not self.source.text[tokens[place].end].isspace()

    def _of_number(self, place, token):
        match = _NUMBER.match(token.text.replace("'", ""))
        if match is None:
            return
        digits, suffix = match.groups()
        is_hexadecimal = digits[:2] in ("0x", "0X")
        value = int(digits, 16 if is_hexadecimal else 8 if digits[0] == "0" else 10)
        for other in (value + 1, value - 1):
            if 0 <= other < _LARGEST_NUMBER:
                self._replace(place, (f"0x{other:X}" if is_hexadecimal else str(other)) + suffix)

    def _condition_before(self, place):
        """Where the condition of a "?" begins."""
        tokens, partner = self.source.tokens, self.source.partner
        before = place - 1
        while before >= 0:
            text = tokens[before].text
            if text in ")]}":
                before = partner[before]
            elif text in ("(", "[", "{", ",", ";", "=", "?", ":", "return", "+=", "-="):
                break
            before -= 1
        return before + 1

    def _of_regions(self, regions):
        for region in regions:
            if region.kind == "condition":
                self._negate(region.first, region.last)
            elif region.kind == "call":
                self._leave_out(region)
            self._of_regions(region.inner)

    def _leave_out(self, region):
        self._add(region.first, region.last, ";", "left out")

    def _negate(self, first, last):
        """The other value of a condition, where no single operator of it gives that."""
        signs = [token.text for token in self.source.tokens[first : last + 1] if token.kind == "sign"]
        is_joined = "&&" in signs or "||" in signs
        if not is_joined and (_COMPARISONS & set(signs) or signs[:1] == ["!"]):
            return
        self._add(first, last, f"!({self.source.slice(first, last)})", "negated")

    def _replace(self, place, other):
        token = self.source.tokens[place]
        change = f"{token.text} -> {other}" if other else f"{token.text} left out"
        self._add(place, place, other, change)

    def _add(self, first, last, replacement, change):
        start, end = self.source.tokens[first].start, self.source.tokens[last].end
        line_number = self.source.line_number(start)
        line = self.source.line_text(start)
        earlier = sum(1 for each in self.mutants if each.line_number == line_number and _plain(each.change) == change)
        if earlier:
            change += f" ({earlier + 1})"
        self.mutants.append(Mutant(start, end, replacement, change, line, line_number, first))


def _plain(change):
    """Without the number that tells equal changes of one line apart."""
    return re.sub(r" \(\d+\)$", "", change)


def _next_character(literal):
    """The literal of the character behind: 'a' -> 'b'."""
    prefix, body = literal.split("'", 1)
    body = body[:-1]
    if body[0] != "\\":
        value = ord(body)
    elif body[1] in "xuU":
        value = int(body[2:], 16)
    else:
        value = _ESCAPES[body[1]]
    value += 1
    is_plain = 0x20 <= value < 0x7F and chr(value) not in "'\\"
    return f"{prefix}'{chr(value)}'" if is_plain else f"{prefix}'\\x{value:X}'"


def _innermost(regions, mutant, source):
    for region in regions:
        begin, end = source.tokens[region.first].start, source.tokens[region.last].end
        if begin <= mutant.start and mutant.end <= end:
            return _innermost(region.inner, mutant, source) or region
    return None
