"""The list of branches that no test takes.

An entry is the source, the line as it stands there, and how many of its branches are not taken with the reason:

    applet/Foo.cpp
        if (isOpen(file)) {
        1 of 2: why

A source holds for all entries that follow. Lines that begin with "#" and empty lines are left out.
"""

import re
from pathlib import Path

_SOURCE = re.compile(r"^\S+$")
_REASON = re.compile(r"^(\d+) of (\d+): \S")


class UncoveredBranches:
    def __init__(self, path: Path):
        self.listed: dict[tuple[str, str], tuple[int, int]] = {}
        source = text = ""
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            if not line.strip() or line.startswith("#"):
                continue
            if _SOURCE.match(line):
                source, text = line, ""
            elif text and (reason := _REASON.match(line.strip())):
                self.listed[source, text] = int(reason[1]), int(reason[2])
                text = ""
            elif source and not text:
                text = line.strip()
            else:
                raise SystemExit(f"{path}:{number}: not understood: {line}")

    def complaints(self, found: dict[tuple[str, str], tuple[int, int]]) -> list[str]:
        """What differs between the list and the branches found, as (not taken, all) by source and text."""
        return [
            f"{source}: {text}\n    {self._figures(found, source, text)} not taken, "
            f"{self._figures(self.listed, source, text)} listed"
            for source, text in sorted(found.keys() | self.listed.keys())
            if found.get((source, text)) != self.listed.get((source, text))
        ]

    @staticmethod
    def _figures(places: dict, source: str, text: str) -> str:
        return "{} of {}".format(*places[source, text]) if (source, text) in places else "none"
