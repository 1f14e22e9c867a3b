"""Changes the product's sources one place at a time and sees whether a test falls. Called by scripts/mutate.sh."""

import argparse
import hashlib
import json
import os
import sys
import time
from collections import Counter, deque
from concurrent.futures import ThreadPoolExecutor
from fnmatch import fnmatch
from math import sqrt
from pathlib import Path
from tempfile import TemporaryDirectory

from build import Build
from explanations import Explanations
from operators import Mutant, Vocabulary, mutants_of
from sources import read_all
from trial import KILLED, NOT_COMPILING, SURVIVED, Experience, TestTimes, Trial


def rank(seed: int, mutant: Mutant) -> str:
    return hashlib.sha256(repr((seed, mutant.identity)).encode()).hexdigest()


def by_turns(seed: int, mutants: list[Mutant]):
    """One of each kind in turn; what comes first does not depend on the rest of the file."""
    kinds: dict[str, deque] = {}
    for mutant in sorted(mutants, key=lambda mutant: rank(seed, mutant)):
        kinds.setdefault(mutant.kind, deque()).append(mutant)
    while kinds:
        for kind in list(kinds):
            yield kinds[kind].popleft()
            if not kinds[kind]:
                del kinds[kind]


def choose(seed: int, count: int, files: dict[str, list[Mutant]]) -> list[Mutant]:
    """Every file gets a share that grows with the root of its size, and one at least."""
    weights = {name: sqrt(len(mutants)) for name, mutants in files.items()}
    whole = sum(weights.values())
    chosen = []
    for name, mutants in files.items():
        share = max(1, round(count * weights[name] / whole))
        chosen += [mutant for mutant, _ in zip(by_turns(seed, mutants), range(share))]
    return sorted(chosen, key=lambda mutant: rank(seed, mutant))


class Journal:
    """The outcomes of the last run, so that its survivors can be tried again."""

    def __init__(self, path: Path, forget: bool):
        self._path = path
        self.outcomes = {}
        if path.exists() and not forget:
            self.outcomes = {name: outcome for name, outcome in json.loads(path.read_text(encoding="utf-8"))}

    def note(self, mutant: Mutant, outcome: str):
        self.outcomes[repr(mutant.identity)] = outcome
        self._path.write_text(json.dumps(list(self.outcomes.items())), encoding="utf-8")

    def outcome(self, mutant: Mutant) -> str:
        return self.outcomes.get(repr(mutant.identity), "")


def run(arguments, mutants: list[Mutant], journal: Journal):
    folder = arguments.work
    build = Build(arguments.tree, folder / "build", arguments.thorough)
    (folder / "times").mkdir(exist_ok=True)
    times = TestTimes(build, folder / "times")
    experience = Experience()
    done = Counter()

    def try_one(mutant):
        start = time.monotonic()
        with TemporaryDirectory(prefix="mutant-", dir=folder) as own_folder:
            trial = Trial(build, times, experience, arguments.thorough, mutant, Path(own_folder))
            outcome = trial.run()
        return mutant, outcome, trial.killer, time.monotonic() - start

    with ThreadPoolExecutor(arguments.jobs) as workers:
        for mutant, outcome, killer, seconds in workers.map(try_one, mutants):
            journal.note(mutant, outcome)
            done[outcome] += 1
            print(f"[{done.total()}/{len(mutants)}] {outcome} in {seconds:.0f} s by {killer or '-'}: {mutant.kind}\n"
                  f"{mutant.described()}", file=sys.stderr, flush=True)


def report(mutants: list[Mutant], explained: list[Mutant], journal: Journal, stale: list[str]) -> int:
    outcomes = Counter(journal.outcome(mutant) for mutant in mutants)
    survivors = [mutant for mutant in mutants if journal.outcome(mutant) == SURVIVED]
    for mutant in survivors:
        print(f"{mutant.described()}\n")
    for entry in stale:
        print(f"Explained, but no longer in the sources: {entry}")
    print(f"{len(mutants) + len(explained)} mutants: {outcomes[KILLED]} killed, {outcomes[NOT_COMPILING]} not compiling, "
          f"{len(explained)} survive and are explained, {len(survivors)} survive without an explanation.")
    return 1 if survivors or stale else 0


def main() -> int:
    parser = argparse.ArgumentParser()
    parser.add_argument("--tree", type=Path, required=True)
    parser.add_argument("--work", type=Path, required=True)
    parser.add_argument("--explained", type=Path, required=True)
    parser.add_argument("--count", type=int, default=250)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=os.cpu_count() or 1)
    parser.add_argument("--files", default="*")
    parser.add_argument("--again", action="store_true")
    parser.add_argument("--thorough", action="store_true")
    arguments = parser.parse_args()

    sources = read_all(arguments.tree)
    names = Vocabulary(arguments.tree, sources)
    files = {source.name: mutants for source in sources if (mutants := mutants_of(source, names))}
    every = [mutant for mutants in files.values() for mutant in mutants]
    chosen = [mutant for mutant in choose(arguments.seed, arguments.count, files)
              if fnmatch(mutant.file, arguments.files)]
    explanations = Explanations(arguments.explained)
    explained = [mutant for mutant in chosen if explanations.covers(mutant)]
    mutants = [mutant for mutant in chosen if not explanations.covers(mutant)]
    journal = Journal(arguments.work / "outcomes.json", forget=not arguments.again)
    left = [mutant for mutant in mutants if journal.outcome(mutant) not in (KILLED, NOT_COMPILING)]
    run(arguments, sorted(left, key=lambda mutant: journal.outcome(mutant) == SURVIVED), journal)
    return report(mutants, explained, journal, explanations.without_a_place(every))


if __name__ == "__main__":
    sys.exit(main())
