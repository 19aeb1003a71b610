"""The survivors that no test can tell from the original, each with its reason.

Blocks of lines, between them empty ones:

    file    webi18n/sharedtexts.h
    line    m_aEnds.ensureCapacity(m_nTexts * 2);
    change  2 -> 3
    reason  How much room is asked for ahead changes nothing that is kept.

`change` and `line` may stand several times in a block; each change is that of the nearest line above. "#" begins a
comment.
"""

from dataclasses import dataclass


@dataclass(frozen=True)
class Explained:
    file: str
    line: str
    change: str
    place: str  # in the list, for messages


class ExplainedList:
    def __init__(self, path):
        self.entries = {}
        self.faults = []
        if path is not None and path.exists():
            self._read(path)

    def _read(self, path):
        file, line, reason_seen, open_entries = None, None, True, []
        for number, text in enumerate(path.read_text().splitlines() + [""], 1):
            place = f"{path.name}:{number}"
            word, _, rest = text.partition(" ")
            rest = rest.strip()
            if text.startswith("#"):
                continue
            if not word:
                self._close(open_entries, reason_seen, place)
                file, line, reason_seen, open_entries = None, None, False, []
            elif word == "file":
                file = rest
            elif word == "line":
                line = rest
            elif word == "change" and file and line:
                open_entries.append(Explained(file, line, rest, place))
            elif word == "reason" and rest and open_entries:
                reason_seen = True
            else:
                self.faults.append(f"{place}: not understood: {text}")

    def _close(self, entries, reason_seen, place):
        if entries and not reason_seen:
            self.faults.append(f"{place}: a block without a reason")
        for entry in entries:
            self.entries[(entry.file, entry.line, entry.change)] = entry

    def holds(self, file, mutant):
        return (file, mutant.line, mutant.change) in self.entries

    def stale(self, file, survivors):
        """What is listed for a file and does not survive, or is no longer there."""
        alive = {(file, mutant.line, mutant.change) for mutant in survivors}
        return [entry for key, entry in self.entries.items() if entry.file == file and key not in alive]
