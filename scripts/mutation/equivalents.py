# SPDX-License-Identifier: MIT
"""The list of mutants that behave as the original does, each with the reason: equivalents.txt beside this.

An entry is a block of lines, apart from the next by an empty line: the file, "- " and the original line,
"+ " and the changed one (both with single blanks), then the reason. It applies to all places of the file
where that line is changed so, and to no line number.
"""

from dataclasses import dataclass


class ListError(Exception):
    """The list cannot be read."""


@dataclass(frozen=True)
class Entry:
    file: str
    original: str
    changed: str
    reason: str

    @property
    def key(self):
        return (self.file, self.original, self.changed)


def _entry(block):
    if len(block) < 4 or not block[1].startswith("- ") or not block[2].startswith("+"):
        raise ListError("equivalents: not file, original, change and reason: " + " / ".join(block))
    return Entry(block[0], block[1][2:], block[2][1:].strip(), " ".join(line.strip() for line in block[3:]))


def parse(text):
    """The entries of the list; lines with "#" at the beginning are comments."""
    blocks = [[]]
    for line in text.splitlines():
        if line.startswith("#"):
            continue
        if line.strip():
            blocks[-1].append(line)
        elif blocks[-1]:
            blocks.append([])
    entries = [_entry(block) for block in blocks if block]
    if len({entry.key for entry in entries}) != len(entries):
        raise ListError("equivalents: an entry stands there twice")
    return entries


class Equivalents:
    """The entries, looked up by mutant."""

    def __init__(self, entries):
        self._entries = {entry.key: entry for entry in entries}

    @staticmethod
    def _key(mutant):
        return (mutant.file, mutant.original, mutant.changed)

    def reason(self, mutant):
        """Why the mutant is equivalent; None if it is not listed."""
        entry = self._entries.get(self._key(mutant))
        return entry.reason if entry else None

    def stale(self, mutants):
        """The entries that none of all mutants matches any more."""
        present = {self._key(mutant) for mutant in mutants}
        return [entry for key, entry in sorted(self._entries.items()) if key not in present]
