"""The parts of a source that can be held in several versions, of which one is chosen when the program runs.

A region is a whole statement, a condition or an initial value, so that a copy with one token changed can stand beside the
original: no expression has to be taken apart. Only the structure of statements is read; what is not understood is no
region.
"""

from dataclasses import dataclass, field

_SCOPES = {"class", "struct", "union", "namespace"}
_NO_STATEMENTS = {"using", "typedef", "static_assert", "enum", "friend", "template"}
_JUMPS = {"break", "continue", "goto", "throw", "return"}


@dataclass
class Region:
    """The tokens from `first` to `last`, both included. `kind` is

    "call"       a statement that can also be left out: a call, an assignment, a break
    "statement"  any other statement, a return
    "condition"  an expression whose value is true or false
    "value"      an initial value, what a switch looks at
    "step"       the last part of a for
    """

    kind: str
    first: int
    last: int
    in_constexpr: bool = False
    inner: list = field(default_factory=list)


class RegionFinder:
    def __init__(self, source):
        self.source = source
        self.tokens = source.tokens
        self.partner = source.partner
        self.regions = []
        self.in_constexpr = False

    def find(self):
        """The regions of the file in their order; those inside of a lambda are `inner` ones of the statement around."""
        self._scope(0, len(self.tokens))
        return self.regions

    def _text(self, place):
        return self.tokens[place].text if place < len(self.tokens) else ""

    def _add(self, kind, first, last):
        if first <= last:
            region = Region(kind, first, last, self.in_constexpr)
            region.inner = self._lambdas(first, last)
            self.regions.append(region)

    def _lambdas(self, first, last):
        """The regions of the bodies of lambdas within an expression."""
        outside, self.regions = self.regions, []
        place = first
        while place <= last:
            if self._text(place) == "{" and self._opens_lambda(place):
                self._block(place)
                place = self.partner[place]
            place += 1
        found, self.regions = self.regions, outside
        return found

    def _opens_lambda(self, place):
        before = place - 1
        while before > 0 and self._text(before) not in (";", "{", "}", ",", "(", ")", "]", "->", "="):
            before -= 1
        if self._text(before) == "->" or self._text(before) == "]":
            return True
        return self._text(before) == ")" and self._text(self.partner[before] - 1) == "]"

    # Outside of functions.

    def _scope(self, place, end):
        """What stands in a namespace or a class."""
        while place < end:
            place = self._declaration(place, end)

    def _declaration(self, place, end):
        """One declaration; returns the place behind it."""
        head = place
        while place < end:
            text = self._text(place)
            if text == ";":
                self._initial_value(head, place - 1, in_function=False)
                return place + 1
            if text == "{":
                after = self._braces(head, place)
                if after is not None:
                    return after
            if text == ":" and place == head + 1:
                return place + 1  # behind public, protected, private
            place = self.partner[place] + 1 if text in "([{" else place + 1
        return end

    def _braces(self, head, place):
        """Braces within a declaration: the place behind the declaration, or None where it goes on behind them."""
        words = {token.text for token in self.tokens[head:place]}
        close = self.partner[place]
        if "enum" in words:
            return close + 1
        if words & _SCOPES and not self._parameters(head, place):
            self._scope(place + 1, close)
            return close + 1
        if self._text(place - 1) in ("=", "return") or not self._parameters(head, place) or self._in_member_list(place):
            return None
        outside, self.in_constexpr = self.in_constexpr, bool(words & {"constexpr", "consteval"})
        self._block(place)
        self.in_constexpr = outside
        return close + 1

    def _parameters(self, head, place):
        return any(self._text(each) == "(" and self._text(each - 1) != "alignas" for each in range(head, place))

    def _in_member_list(self, place):
        """Whether the brace holds the value of a member in a constructor's list."""
        before = place - 1
        if self.tokens[before].kind != "word" or self._text(before) in ("const", "noexcept", "override", "final"):
            return False
        return self._text(before - 1) in (":", ",")

    def _initial_value(self, first, last, in_function=True):
        """The value behind the name of a declaration. What is a constant of the compiler has to stay one."""
        words = {token.text for token in self.tokens[first : last + 1]}
        if words & {"constexpr", "constinit", "using", "operator", "template"}:
            return
        place = first
        while place <= last:
            text = self._text(place)
            if text == "=" and self._text(place + 1) not in ("{", "default", "delete", "0"):
                self._add("value", place + 1, last)
                return
            if text == "=" and self._text(place + 1) == "0" and self._text(place - 1) not in (")", "const", "noexcept"):
                self._add("value", place + 1, last)
                return
            place = self.partner[place] + 1 if text in "([{" else place + 1
        if in_function and self._text(last) in (")", "}"):
            self._arguments(self.partner[last], last)
        else:
            self.regions += self._lambdas(first, last)

    def _arguments(self, opening, closing):
        """What stands between the commas of an initial value in brackets."""
        begin, place = opening + 1, opening + 1
        while place <= closing:
            if place == closing or self._text(place) == ",":
                self._add("value", begin, place - 1)
                begin = place + 1
            place = self.partner[place] + 1 if self._text(place) in "([{" else place + 1

    # Inside of functions.

    def _block(self, place):
        close = self.partner[place]
        place += 1
        while place < close:
            place = self._statement(place)

    def _statement(self, place):
        """One statement; returns the place behind it."""
        text = self._text(place)
        if text == "{":
            self._block(place)
            return self.partner[place] + 1
        if text == "[" and self._text(place + 1) == "[":
            return self._statement(self.partner[place] + 1)
        if text in ("if", "while", "for", "switch", "catch"):
            return self._headed(place)
        if text in ("else", "do", "try"):
            return self._statement(place + 1)
        if text in ("case", "default"):
            return self._behind_label(place)
        return self._plain(place)

    def _behind_label(self, place):
        while self._text(place) != ":":
            place += 1
        return place + 1

    def _headed(self, place):
        """A statement that begins with a word and something in parentheses."""
        word = self._text(place)
        is_constant = self._text(place + 1) == "constexpr"
        opening = place + 2 if is_constant else place + 1
        close = self.partner[opening]
        if not is_constant and word != "catch":
            self._head(word, opening + 1, close - 1)
        after = close + 1
        if self._text(after) == ";":
            return after + 1  # the end of do ... while
        return self._statement(after)

    def _head(self, word, first, last):
        parts = self._parts(first, last)
        if word == "for":
            if len(parts) == 3:
                self._first_part(*parts[0])
                self._condition(*parts[1])
                self._add("step", *parts[2])
            else:
                self.regions += self._lambdas(first, last)
            return
        for part in parts[:-1]:
            self._first_part(*part)
        if word == "switch":
            self._add("value", *parts[-1])
        else:
            self._condition(*parts[-1])

    def _parts(self, first, last):
        """What the semicolons of a head part, as pairs of first and last."""
        parts, begin, place = [], first, first
        while place <= last:
            text = self._text(place)
            if text == ";":
                parts.append((begin, place - 1))
                begin = place + 1
            place = self.partner[place] + 1 if text in "([{" else place + 1
        return parts + [(begin, last)]

    def _first_part(self, first, last):
        if first <= last:
            self._initial_value(first, last)

    def _condition(self, first, last):
        if first > last:
            return
        if self._is_declaration(first, last):
            self._initial_value(first, last)
        else:
            self._add("condition", first, last)

    def _plain(self, place):
        """A statement up to its semicolon."""
        first = place
        while self._text(place) != ";":
            place = self.partner[place] + 1 if self._text(place) in "([{" else place + 1
            if self._text(first) in _SCOPES and self._text(place - 1) == "}" and self._text(place) == ";":
                return self._local_class(first, place)
        text = self._text(first)
        if text in _NO_STATEMENTS or first == place:
            return place + 1
        if text in ("break", "continue"):
            self._add("call", first, place)
        elif text in _JUMPS:
            self._add("statement", first, place)
        elif self._is_declaration(first, place - 1):
            self._initial_value(first, place - 1)
        else:
            self._add("call", first, place)
        return place + 1

    def _local_class(self, first, last):
        opening = next(each for each in range(first, last) if self._text(each) == "{")
        self._scope(opening + 1, self.partner[opening])
        return last + 1

    def _is_declaration(self, first, last):
        """Whether a type and a name stand at the beginning: two words with nothing but type's signs between them."""
        if self._text(first) in ("const", "constexpr", "static", "auto"):
            return True
        if self._text(first) in ("return", "throw", "delete", "new", "co_return", "goto", "else"):
            return False
        depth = 0
        for place in range(first, last + 1):
            token = self.tokens[place]
            if token.kind == "word" and depth == 0 and place > first and self._ends_type(place - 1):
                return True
            if token.text == "<" and not self.source.has_blanks_around(place):
                depth += 1
            elif token.text in (">", ">>") and depth > 0:
                depth -= len(token.text)
            elif depth == 0 and token.kind != "word" and token.text not in ("::", "*", "&", "&&"):
                return False
        return False

    def _ends_type(self, place):
        token = self.tokens[place]
        if token.kind == "word":
            return True
        return token.text in (">", ">>", "*", "&", "&&") and not self.source.has_blanks_around(place)
