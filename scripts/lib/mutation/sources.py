"""Sources as the mutation sees them: which characters are code, and what a place is called."""

import re
from pathlib import Path

FOLDERS = ("applet", "appletwrappers-baselib", "grabber_basis", "templates")

_TOKEN = re.compile(
    r"""(?P<comment>//[^\n]*|/\*.*?\*/)
      | (?P<text>"(?:\\.|[^"\\\n])*"|'(?:\\.|[^'\\\n])*')
      | (?P<directive>^[ \t]*\#[ \t]*(?:include|pragma|if|ifdef|ifndef|else|endif|undef)[^\n]*)
      | (?P<assertion>\bstatic_assert\b[^;]*;)""",
    re.VERBOSE | re.DOTALL | re.MULTILINE,
)
_KEYWORDS = {"if", "for", "while", "switch", "return", "catch", "throw", "sizeof", "static_assert", "decltype"}
_DEFINE = re.compile(r"#define (\w+)")
_CALLABLE = re.compile(r"(~?\w+)\s*\(")
_CONSTANT = re.compile(r"\b(\w+)(?:\[\])?\s*(?:=|\{|\()")


class Source:
    def __init__(self, root: Path, name: str):
        self.name = name
        self.text = (root / name).read_text(encoding="utf-8")
        self.lines = self.text.split("\n")
        self._starts = [0]
        for line in self.lines:
            self._starts.append(self._starts[-1] + len(line) + 1)
        self._marks = [(match.start(), match.end(), match.lastgroup) for match in _TOKEN.finditer(self.text)]
        self._marked = bytearray(len(self.text))
        for start, end, _ in self._marks:
            self._marked[start:end] = b"\1" * (end - start)

    def is_code(self, start: int, end: int) -> bool:
        return not any(self._marked[start:end])

    def texts(self):
        """Where the string literals stand, quotes included."""
        for start, end, kind in self._marks:
            if kind == "text" and self.text[start] == '"':
                yield start, end

    def line_of(self, offset: int) -> int:
        low, high = 0, len(self.lines) - 1
        while low < high:
            middle = (low + high + 1) // 2
            low, high = (middle, high) if self._starts[middle] <= offset else (low, middle - 1)
        return low

    def start_of(self, line: int) -> int:
        return self._starts[line]

    def enclosing(self, line: int) -> str:
        """The function, constant or macro that a line belongs to."""
        first = line
        while first > 0 and self.lines[first - 1].rstrip().endswith("\\"):
            first -= 1
        if match := _DEFINE.match(self.lines[first]):
            return match[1]
        for number in range(line, -1, -1):
            if name := self._defined_in(self.lines[number]):
                return name
        return "-"

    def _defined_in(self, line: str) -> str:
        indentation = len(line) - len(line.lstrip())
        if re.match(r"\s*(//|#|\}|\)|namespace\b|using\b|template\b|static_assert\b|public:|private:)", line):
            return ""
        if indentation == 0 and line:
            for pattern in (_CALLABLE, _CONSTANT):
                match = pattern.search(line)
                if match and match[1] not in _KEYWORDS and "__attribute__" not in match[1]:
                    return match[1]
        is_header = self.name.endswith(".h")
        if indentation == 4 and line.rstrip().endswith(("{", "}")) and (is_header or "override" in line):
            match = _CALLABLE.search(line)
            if match and match[1] not in _KEYWORDS:
                return match[1]
        return ""


def read_all(root: Path) -> list[Source]:
    names = sorted(
        path.relative_to(root).as_posix()
        for folder in FOLDERS
        for pattern in ("*.cpp", "*.h")
        for path in (root / folder).rglob(pattern)
    )
    return [Source(root, name) for name in names]
