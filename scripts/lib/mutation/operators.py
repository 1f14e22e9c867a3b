"""The changes that are tried on a source, each of one kind at one place."""

import re
from dataclasses import dataclass
from pathlib import Path

from sources import Source


@dataclass(frozen=True)
class Mutant:
    file: str
    function: str
    kind: str
    before: tuple[str, ...]
    """The lines of the source that change, without indentation."""
    after: tuple[str, ...]
    occurrence: int
    """From 1: which of the equal changes of equal lines in this function."""
    start: int
    end: int
    replacement: str

    @property
    def identity(self) -> tuple:
        return (self.file, self.function, self.occurrence, self.before, self.after)

    def applied_to(self, text: str) -> str:
        return text[: self.start] + self.replacement + text[self.end :]

    def described(self) -> str:
        place = f"{self.file}: {self.function}" + (f" ({self.occurrence})" if self.occurrence > 1 else "")
        lines = [place, *(f"    - {line}" for line in self.before), *(f"    + {line}" for line in self.after)]
        return "\n".join(lines)


class Vocabulary:
    """The names that can stand for each other."""

    def __init__(self, root: Path, sources: list[Source]):
        everything = "\n".join(source.text for source in sources)
        ids = (root / "platform/ParameterIds.h").read_text(encoding="utf-8")
        codes = (root / "platform/ErrorCodes.h").read_text(encoding="utf-8")
        self.design = _in_order(re.findall(r"\bdesign::(\w+)", everything))
        self.parameters = _in_order(re.findall(r"\bFG_[A-Z0-9_]+\b", ids))
        self.codes = _in_order(re.findall(r"constexpr int (\w+) =", codes))

    @staticmethod
    def next_of(names: list[str], name: str) -> str:
        return names[(names.index(name) + 1) % len(names)] if name in names else ""


def _in_order(names) -> list[str]:
    return list(dict.fromkeys(names))


_SWAPPED = {
    "comparison": {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="},
    "logic": {"&&": "||", "||": "&&"},
    "arithmetic": {"+": "-", "-": "+", "*": "/", "/": "*", "%": "/", "&": "|", "|": "&", "+=": "-=", "*=": "+=",
                   "/=": "*=", "<<": ">>", ">>": "<<"},
}
_WORDS = {
    "constant": {"true": "false", "false": "true"},
    "bound": {"from": "to", "to": "from", "std::min": "std::max", "std::max": "std::min", "begin": "end"},
    "register": {"port0": "port1", "port1": "port0"},
}
_NUMBER = re.compile(r"(?<![\w.])(?<!\) = )(0x[0-9A-Fa-f]+|\d+\.\d*(?:e[+-]?\d+)?|\d+(?:e[+-]?\d+)|\d+)(?=[UL]*\b|[^\w.])")
_STATEMENT = re.compile(r"^( +)(?!return\b|static_assert\b|case\b|using\b|const\b|constexpr\b|static\b|auto\b|throw\b|else\b|default\b|[}:?&|])\S.*;$")
_DECLARATION = re.compile(r"^ +(?:[\w:]+(?:<.*>)?[*&]? (?:const )?&?\w+(?: = | ?\{|;|\()|\w+\(.*\) (?:const )?\{|.*= (?:default|delete|0);)")
_ROW = re.compile(r"^ +(?:(?:return \w+\(|port, )?\{|\w+\()(?!.*STEPS).*(?:design::|KEY|\")")


def operator_changes(source: Source):
    for kind, swapped in _SWAPPED.items():
        signs = "|".join(re.escape(sign) for sign in sorted(swapped, key=len, reverse=True))
        for match in re.finditer(rf"(?<=[ )])({signs})(?= )", source.text):
            if "mText <<" not in source.lines[source.line_of(match.start())] or match[1] != "<<":
                yield kind, match.start(), match.end(), swapped[match[1]]
    for match in re.finditer(r"(\+\+|--)(?=\w)|(?<=\w)(\+\+|--)", source.text):
        yield "arithmetic", match.start(), match.end(), "--" if match[0] == "++" else "++"


def word_changes(source: Source):
    for kind, words in _WORDS.items():
        for word, other in words.items():
            lead = r"(?<=\.)" if word in ("from", "to") else r"(?<![\w:])"
            for match in re.finditer(rf"{lead}{word}\b(?!\()", source.text):
                yield kind, match.start(), match.end(), other


def number_changes(source: Source):
    for match in re.finditer(r" [+-] 1(?![\w.])", source.text):
        yield "bound", match.start(), match.end(), ""
    for match in _NUMBER.finditer(source.text):
        literal = match[1]
        if literal.startswith("0x"):
            other = hex(int(literal, 16) + 1)
        elif literal.isdigit():
            other = str(int(literal) + 1)
        else:
            other = repr(float(literal) * 2 or 1.0)
        yield "constant", match.start(), match.end(), other


def text_changes(source: Source):
    for start, end in source.texts():
        line = source.lines[source.line_of(start)]
        if end - start > 2 and not re.search(r'^#include|extern "C"|visibility|__attribute__', line):
            yield "constant", end - 1, end, '~"'


def negations(source: Source):
    for match in re.finditer(r"\b(?:if|while) \(", source.text):
        end = _closing(source.text, match.end() - 1)
        start = match.end() + _last_top_level_semicolon(source.text[match.end() : end])
        yield "negation", start, end, f"!({source.text[start:end].strip()})"
    for match in re.finditer(r"(?<![\w!])!(?=[A-Za-z(])", source.text):
        yield "negation", match.start(), match.end(), ""


def _closing(text: str, opening: int) -> int:
    depth = 0
    for place in range(opening, len(text)):
        depth += {"(": 1, ")": -1}.get(text[place], 0)
        if depth == 0:
            return place
    return len(text)


def _last_top_level_semicolon(text: str) -> int:
    return text.rfind(";") + 2 if ";" in text else 0


def name_changes(source: Source, names: Vocabulary):
    for kind, pattern, known in (
        ("register", r"(?<=design::)\w+", names.design),
        ("register", r"(?:(?<=cache_)|(?<=write_)|(?<=\W))FG_[A-Z0-9_]+\b(?!##)", names.parameters),
        ("code", r"(?<=error::)\w+", names.codes),
    ):
        for match in re.finditer(pattern, source.text):
            if other := Vocabulary.next_of(known, match[0]):
                yield kind, match.start(), match.end(), other


def dropped_statements(source: Source):
    for number, line in enumerate(source.lines):
        is_whole = line.count("(") == line.count(")")
        is_jump = line.strip() in ("break;", "continue;")
        acts = "(" in line or " = " in line or "++" in line or "+= " in line
        if _STATEMENT.match(line) and _is_in_function(source, line) and is_whole and (is_jump or (acts and not _DECLARATION.match(line))):
            start = source.start_of(number) + len(line) - len(line.lstrip())
            yield "drop", start, source.start_of(number) + len(line), ";"


def swapped_writes(source: Source):
    for number in range(len(source.lines) - 1):
        one, two = source.lines[number], source.lines[number + 1]
        if _is_in_function(source, one) and _are_statements(one, two) or _are_rows(one, two):
            start = source.start_of(number)
            yield "order", start, source.start_of(number + 1) + len(two), f"{two}\n{one}"
    for match in re.finditer(r"[{(](\w+), (\w+)(?=[,})])|(?<=, )([A-Z]+\d?), ([A-Z]+\d?)(?=[,)])", source.text):
        one, two = (match[1], match[2]) if match[1] else (match[3], match[4])
        lead = match[0][0] if match[1] else ""
        if one != two and (lead != "(" or "STEPS(" in source.text[match.start() - 6 : match.end()]):
            yield "order", match.start(), match.end(), f"{lead}{two}, {one}"


def _is_in_function(source: Source, line: str) -> bool:
    """Classes stand in headers, and their members are no statements."""
    return not source.name.endswith(".h") or line.startswith(" " * 8)


def _are_statements(one: str, two: str) -> bool:
    first, second = _STATEMENT.match(one), _STATEMENT.match(two)
    return bool(
        first and second and first[1] == second[1] and "(" in one and "(" in two
        and one.count("(") == one.count(")")
        and two.count("(") == two.count(")") and not _DECLARATION.match(one) and not _DECLARATION.match(two)
    )


def _are_rows(one: str, two: str) -> bool:
    def shape(line):
        return len(line) - len(line.lstrip()), line.lstrip()[:5], line.rstrip(" \\")[-1:]

    return bool(_ROW.match(one) and _ROW.match(two) and shape(one) == shape(two)
                and shape(one)[2] in (",", ")") and one.count("(") == one.count(")")
                and two.count("(") == two.count(")") and one.count("{") == one.count("}")
                and two.count("{") == two.count("}") and one.strip() != two.strip())


def all_changes(source: Source, names: Vocabulary):
    whole_lines = {"drop", "order"}
    for changes in (operator_changes(source), word_changes(source), number_changes(source), negations(source),
                    name_changes(source, names), dropped_statements(source), swapped_writes(source)):
        for kind, start, end, replacement in changes:
            if kind in whole_lines or source.is_code(start, end):
                yield kind, start, end, replacement
    yield from text_changes(source)


def mutants_of(source: Source, names: Vocabulary) -> list[Mutant]:
    counts: dict[tuple, int] = {}
    mutants = {}
    for kind, start, end, replacement in sorted(all_changes(source, names), key=lambda change: change[1:]):
        first, last = source.line_of(start), source.line_of(max(start, end - 1))
        before = source.lines[first : last + 1]
        lead = source.text[source.start_of(first) : start]
        tail = source.text[end : source.start_of(last) + len(source.lines[last])]
        after = (lead + replacement + tail).split("\n")
        trimmed = [tuple(line.strip(" \\") for line in lines) for lines in (before, after)]
        if before[0].lstrip().startswith("//") or (first, last, tuple(after)) in mutants:
            continue
        function = source.enclosing(first)
        counted = (function, *trimmed)
        counts[counted] = counts.get(counted, 0) + 1
        mutants[(first, last, tuple(after))] = Mutant(
            source.name, function, kind, *trimmed, counts[counted], start, end, replacement)
    return list(mutants.values())
