"""Runs the counted test programs and tells what of the product they reach. Called by scripts/coverage.sh."""

import argparse
import subprocess
import sys
from collections import defaultdict
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from counts import SourceCounts, read_counts
from uncovered import UncoveredBranches

FOLDERS = ["applet", "appletwrappers-baselib", "grabber_basis", "templates"]
LEAST_BRANCHES = 0.95


class Tally:
    """How many of how many."""

    def __init__(self, counts):
        self.all = len(counts)
        self.reached = sum(count > 0 for count in counts)

    def __add__(self, other):
        sum_of_both = Tally([])
        sum_of_both.all, sum_of_both.reached = self.all + other.all, self.reached + other.reached
        return sum_of_both

    @property
    def share(self) -> float:
        return self.reached / self.all if self.all else 1.0

    def __str__(self):
        return f"{self.reached}/{self.all} ({int(self.share * 10000) / 100:.2f} %)"


class Figures:
    """Lines, functions and branches of one source or several."""

    def __init__(self, lines=(), functions=(), branches=()):
        self.lines, self.functions, self.branches = Tally(lines), Tally(functions), Tally(branches)

    @classmethod
    def of(cls, source: SourceCounts):
        branches = [count for counts in source.branches().values() for count in counts]
        return cls(list(source.lines.values()), list(source.functions.values()), branches)

    def __add__(self, other):
        both = Figures()
        both.lines = self.lines + other.lines
        both.functions = self.functions + other.functions
        both.branches = self.branches + other.branches
        return both

    def __str__(self):
        return f"lines {self.lines}, functions {self.functions}, branches {self.branches}"

    def are_enough(self) -> bool:
        return self.lines.share == 1 and self.functions.share == 1 and self.branches.share >= LEAST_BRANCHES


def run(program: Path, logs: Path) -> bool:
    with open(logs / f"{program.name}.log", "w", encoding="utf-8") as log:
        done = subprocess.run([program], cwd=program.parent, stdout=log, stderr=subprocess.STDOUT, check=False)
    return done.returncode == 0


def run_all(programs: list[Path], logs: Path, jobs: int) -> list[str]:
    """Runs the programs and returns the names of those that failed."""
    logs.mkdir(parents=True, exist_ok=True)
    with ThreadPoolExecutor(jobs) as pool:
        outcomes = pool.map(lambda program: run(program, logs), programs)
        return [program.name for program, passed in zip(programs, outcomes) if not passed]


def details(name: str, source: SourceCounts, text: list[str]) -> list[str]:
    """What of a source is not reached, a line each."""
    missing = [f"{name}:{number}: line: {text[number - 1].strip()}" for number, count in sorted(source.lines.items())
               if count == 0]
    missing += [f"{name}:{number}: function: {function}" for (number, function), count
                in sorted(source.functions.items()) if count == 0]
    missing += [f"{name}:{number}: {counts.count(0)} of {len(counts)} branches: {text[number - 1].strip()}"
                for number, counts in source.branches().items() if 0 in counts]
    return missing


def uncovered_by_text(texts: dict[str, list[str]], sources: dict[str, SourceCounts]) -> dict:
    """(not taken, all) of the branches by source and text, for the texts with some that are not taken."""
    found = defaultdict(lambda: (0, 0))
    for name, source in sources.items():
        for number, counts in source.branches().items():
            place = name, texts[name][number - 1].strip()
            missing, whole = found[place]
            found[place] = missing + counts.count(0), whole + len(counts)
    return {place: figures for place, figures in found.items() if figures[0]}


def main() -> int:
    options = argparse.ArgumentParser()
    options.add_argument("--root", type=Path, required=True, help="the repository")
    options.add_argument("--build", type=Path, required=True, help="the build with the counted programs")
    options.add_argument("--report", type=Path, required=True, help="folder for the report")
    options.add_argument("--uncovered", type=Path, required=True, help="the list of branches that no test takes")
    options.add_argument("--gcov", default="gcov")
    options.add_argument("--jobs", type=int, default=1)
    chosen = options.parse_args()

    objects = sorted(chosen.build.glob("**/*_counted.dir/**/*.gcno"))
    for stale in chosen.build.glob("**/*_counted.dir/**/*.gcda"):
        stale.unlink()
    programs = (chosen.build / "CountedPrograms.txt").read_text(encoding="utf-8").split()
    failed = run_all([Path(program) for program in programs], chosen.report / "logs", chosen.jobs)

    sources = read_counts(chosen.gcov, objects, chosen.root, FOLDERS)
    texts = {name: (chosen.root / name).read_text(encoding="utf-8").splitlines() for name in sources}
    for name, source in sources.items():
        source.leave_out_closing_lines(texts[name])
    figures = {name: Figures.of(source) for name, source in sources.items()}
    whole = sum(figures.values(), Figures())
    complaints = UncoveredBranches(chosen.uncovered).complaints(uncovered_by_text(texts, sources))
    if not whole.are_enough():
        complaints.insert(0, f"Too little is reached: all lines and functions and {LEAST_BRANCHES:.0%} of the "
                             "branches have to be.")
    complaints += [f"{name} failed, see {chosen.report}/logs/{name}.log" for name in failed]

    report = [f"Reached: {whole}", "", *(f"{name}: {figure}" for name, figure in figures.items()), ""]
    report += [line for name, source in sources.items() for line in details(name, source, texts[name])]
    (chosen.report / "report.txt").write_text("\n".join(report + [""] + complaints) + "\n", encoding="utf-8")
    for complaint in complaints:
        print(complaint, file=sys.stderr)
    print(report[0])
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
