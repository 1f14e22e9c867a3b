"""The list of survivors that are explained.

An entry is the place ("file: function", with "(2)" for the second of equal changes), the changed lines behind "-", what
they become behind "+", and one line that says why no test can tell the difference. Lines that begin with "#" and empty
lines are left out.
"""

import re
from pathlib import Path

from operators import Mutant

_PLACE = re.compile(r"^(\S+): (\S+)(?: \((\d+)\))?$")


class Explanations:
    def __init__(self, path: Path):
        self.reasons: dict[tuple, str] = {}
        place, before, after = None, [], []
        lines = path.read_text(encoding="utf-8").splitlines() if path.exists() else []
        for number, line in enumerate(lines, 1):
            text = line.strip()
            if not text or text.startswith("#"):
                continue
            if match := _PLACE.match(line):
                place, before, after = match, [], []
            elif text[:2] == "- ":
                before.append(text[2:])
            elif text[:1] == "+":
                after.append(text[2:])
            elif place and before and after:
                identity = (place[1], place[2], int(place[3] or 1), tuple(before), tuple(after))
                self.reasons[identity] = text
            else:
                raise SystemExit(f"{path}:{number}: not understood: {text}")

    def covers(self, mutant: Mutant) -> bool:
        return mutant.identity in self.reasons

    def without_a_place(self, mutants: list[Mutant]) -> list[str]:
        """The entries whose lines the sources no longer have."""
        known = {mutant.identity for mutant in mutants}
        return [f"{file}: {function}: {before[0]}" for file, function, _, before, _ in self.reasons.keys() - known]
