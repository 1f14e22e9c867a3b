"""What gcov counted, merged: a line, a function or a branch is reached when any copy of it was.

A header's code is in many objects and a template's in many instances; each is one place in the source. A branch that a
call takes when it throws is left out together with its other half, which is no decision either. So is a line of closing
brackets: nothing was written there, and what the compiler puts there ends lives, mostly those that an exception ends.
"""

import json
import re
import subprocess
from collections import defaultdict
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

_CLOSING = re.compile(r"^[\s})\];,(]+$")


def _without_brackets(text: str, opening: str, closing: str) -> str:
    kept, depth = [], 0
    for character in text:
        depth += character == opening
        if depth == 0:
            kept.append(character)
        depth -= character == closing and depth > 0
    return "".join(kept)


def plain_name(demangled: str) -> str:
    """A function without its template arguments, parameters and result."""
    text = demangled.replace("(anonymous namespace)::", "").replace("operator()", "operator call")
    text = re.sub(r"operator(<=>|<<=?|>>=?|<=?|>=?|->\*?)", "operator \\1", text).replace("{lambda(", "{lambda (")
    text = _without_brackets(text, "<", ">")
    text = re.sub(r"\s*\[.*?\]|\bconst\b", "", _without_brackets(text, "(", ")"))
    words = text.split()
    return words[-1] if words else demangled


def decisions(branches: list[dict]) -> list[int]:
    """How often each way of each decision was taken. gcov tells the throwing half right after the other."""
    counts = []
    for branch in branches:
        if branch["throw"]:
            counts.pop()
        else:
            counts.append(branch["count"])
    return counts


class SourceCounts:
    """The counts of one source."""

    def __init__(self):
        self.lines: dict[int, int] = defaultdict(int)
        self.functions: dict[tuple[int, str], int] = defaultdict(int)
        self._branches: dict[tuple[int, str, int], list[int]] = {}

    def add(self, counted: dict):
        names = {}
        for function in counted["functions"]:
            names[function["name"]] = name = plain_name(function["demangled_name"])
            self.functions[function["start_line"], name] += function["execution_count"]
        for line in counted["lines"]:
            number = line["line_number"]
            self.lines[number] += line["count"]
            counts = decisions(line["branches"])
            place = number, names.get(line.get("function_name"), ""), len(counts)
            known = self._branches.setdefault(place, [0] * len(counts))
            self._branches[place] = [old + new for old, new in zip(known, counts)]

    def leave_out_closing_lines(self, text: list[str]):
        """Forgets the lines and branches where the source has nothing but closing brackets."""
        for number in [number for number in self.lines if _CLOSING.match(text[number - 1])]:
            del self.lines[number]
        for place in [place for place in self._branches if _CLOSING.match(text[place[0] - 1])]:
            del self._branches[place]

    def branches(self) -> dict[int, list[int]]:
        """The counts of each line that decides something."""
        lines = defaultdict(list)
        for (number, _, _), counts in sorted(self._branches.items()):
            lines[number] += counts
        return {number: counts for number, counts in lines.items() if counts}


def _gcov(tool: str, notes: Path) -> list[dict]:
    command = [tool, "--json-format", "--stdout", "--branch-probabilities", str(notes)]
    output = subprocess.run(command, check=True, capture_output=True, text=True, cwd=notes.parent).stdout
    return [file for text in output.splitlines() for file in json.loads(text)["files"]]


def read_counts(tool: str, objects: list[Path], root: Path, folders: list[str]) -> dict[str, SourceCounts]:
    """The counts of the sources in these folders of the root, by their paths below it."""
    sources: dict[str, SourceCounts] = defaultdict(SourceCounts)
    with ThreadPoolExecutor() as pool:
        for files in pool.map(lambda notes: _gcov(tool, notes), objects):
            for counted in files:
                path = Path(counted["file"])
                if path.is_relative_to(root) and path.relative_to(root).parts[0] in folders:
                    sources[str(path.relative_to(root))].add(counted)
    return dict(sorted(sources.items()))
