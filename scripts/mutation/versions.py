"""Writes a source that holds all of its mutants, of which the program chooses one when it runs.

A statement with two mutants becomes

    { if (mutants::isChosen(1)) { ... } else if (mutants::isChosen(2)) { ... } else { the statement } }

and an expression the same with `?` and `:`. Every version stands below a line directive that names its mutant, so the
compiler's errors say which of them are none.
"""

_LITERALS = {"number", "character", "word"}


class VersionWriter:
    """`mutants` are those to take in; `name` is the file's name for messages."""

    def __init__(self, source, regions, mutants, name):
        self.source = source
        self.regions = regions
        self.name = name
        self.mutants_of = {}
        self.literals = {}
        for mutant in mutants:
            if mutant.region is not None:
                self.mutants_of.setdefault(id(mutant.region), []).append(mutant)
            else:
                self.literals.setdefault(mutant.place, []).append(mutant)

    @staticmethod
    def can_hold(mutant, source):
        """Outside of regions only a literal can have several versions."""
        return mutant.region is not None or source.tokens[mutant.place].kind in _LITERALS

    def write(self):
        return f'#line 1 "{self.name}"\n' + self._text(0, len(self.source.text), self.regions)

    def _text(self, begin, end, regions):
        """The text between two offsets, with the versions of what is in it."""
        edits = [(self._start(region), self._end(region), self._region(region)) for region in regions]
        for place, mutants in self.literals.items():
            token = self.source.tokens[place]
            if begin <= token.start < end and not any(edit[0] <= token.start < edit[1] for edit in edits):
                edits.append((token.start, token.end, self._expression(mutants, token.start, token.end, token.text, "({})")))
        pieces, position = [], begin
        for start, stop, text in sorted(edits):
            pieces += [self.source.text[position:start], text]
            position = stop
        return "".join(pieces) + self.source.text[position:end]

    def _start(self, region):
        return self.source.tokens[region.first].start

    def _end(self, region):
        return self.source.tokens[region.last].end

    def _region(self, region):
        begin, end = self._start(region), self._end(region)
        original = self._text(begin, end, region.inner)
        mutants = self.mutants_of.get(id(region), [])
        if not mutants:
            return original
        if region.kind in ("call", "statement"):
            return self._statement(region, mutants, begin, end, original)
        form = {"condition": "static_cast<bool>({})", "step": "void({})"}.get(region.kind, "({})")
        return self._expression(mutants, begin, end, original, form, region.in_constexpr)

    def _statement(self, region, mutants, begin, end, original):
        pieces = ["{ "]
        for mutant in mutants:
            changed = mutant.applied(self.source.text, begin, end)
            pieces.append(f"{_asked(mutant, region.in_constexpr)}{{ {changed}\n}} else ")
        return "".join(pieces) + f"{{{self._back(begin)}{original}\n}} }}{self._back(end)}"

    def _expression(self, mutants, begin, end, original, form, in_constexpr=False):
        pieces = ["("]
        for mutant in mutants:
            changed = form.format(mutant.applied(self.source.text, begin, end) + "\n")
            pieces.append(f"{_question(mutant, in_constexpr)}{changed} : ")
        return "".join(pieces) + form.format(self._back(begin) + original + "\n") + ")" + self._back(end)

    def _back(self, offset):
        """Lines count as in the file again."""
        return f'\n#line {self.source.line_number(offset)} "{self.name}"\n'


def _call(mutant, in_constexpr):
    return f"mutants::{'isChosenWhenRun' if in_constexpr else 'isChosen'}({mutant.number})"


def _asked(mutant, in_constexpr):
    return f'\n#line 1 "mutant-{mutant.number}"\nif ({_call(mutant, in_constexpr)}) '


def _question(mutant, in_constexpr):
    return f'\n#line 1 "mutant-{mutant.number}"\n{_call(mutant, in_constexpr)} ? '
