"""Tries mutants: compiles what a change touches, links the test programs anew one after the other, and runs them until
one fails."""

import json
import os
import re
import resource
import subprocess
import tempfile
import threading
from collections import Counter
from pathlib import Path

from build import Build, Program
from operators import Mutant

KILLED, SURVIVED, NOT_COMPILING = "killed", "survived", "not compiling"
_FAILED = re.compile(r"^\[  FAILED  \] ([\w/.]+)", re.MULTILINE)
_SLOW_SECONDS = 2.0
_LARGEST_FILE = 256 << 20


def _guard_the_machine():
    resource.setrlimit(resource.RLIMIT_FSIZE, (_LARGEST_FILE, _LARGEST_FILE))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def _succeeds(command: list[str], folder: Path, seconds: float = 900) -> bool:
    try:
        return subprocess.run(command, cwd=folder, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=seconds,
                              preexec_fn=_guard_the_machine, check=False).returncode == 0
    except subprocess.TimeoutExpired:
        return False


class NoProgram(Exception):
    """The changed objects do not link."""


class TestTimes:
    """How long each test of a program takes on the unchanged tree."""

    def __init__(self, build: Build, folder: Path):
        self.whole: dict[str, float] = {}
        self.slow: dict[str, list[str]] = {}
        for program in build.programs:
            report = folder / f"{program.name}.json"
            binary = build.folder / program.path
            if not report.exists() or report.stat().st_mtime < binary.stat().st_mtime:
                command = [str(binary), "--gtest_brief=1", f"--gtest_output=json:{report}"]
                if not _succeeds(command, binary.parent, 1800):
                    report.unlink(missing_ok=True)
                    raise SystemExit(f"{program.name} fails on the unchanged tree.")
            times = self._read(report)
            self.slow[program.name] = [name for name, seconds in times.items() if seconds > _SLOW_SECONDS]
            self.whole[program.name] = sum(times.values())

    @staticmethod
    def _read(report: Path) -> dict[str, float]:
        suites = json.loads(report.read_text(encoding="utf-8"))["testsuites"]
        return {f"{suite['name']}.{test['name']}": float(test["time"].rstrip("s"))
                for suite in suites for test in suite["testsuite"]}

    def quick(self, program: Program) -> float:
        return 0.1 + self.whole[program.name] / (5 if self.slow[program.name] else 1)


class Experience:
    """Which tests found the earlier mutants."""

    def __init__(self):
        self._lock = threading.Lock()
        self._programs: dict[str, Counter] = {}
        self._tests: dict[tuple[str, str], Counter] = {}

    def note(self, file: str, program: str, tests: list[str]):
        with self._lock:
            for place in (file, ""):
                self._programs.setdefault(place, Counter())[program] += 1
            self._tests.setdefault((file, program), Counter()).update(tests)

    def promise(self, file: str, program: Program) -> float:
        """How probably the program finds a mutant of the file; until more is known, by the names of its tests."""
        name = program.name
        subject = Path(file).stem.lower()
        is_namesake = any(subject in Path(an_object).name.lower() for an_object in program.objects
                          if an_object.startswith("tests/"))
        with self._lock:
            own, all_files = (self._programs.get(place, Counter()) for place in (file, ""))
            return (0.02 + 0.2 * is_namesake + own[name] / (own.total() + 1)
                    + 0.3 * all_files[name] / (all_files.total() + 1))

    def tests(self, file: str, program: str) -> list[str]:
        with self._lock:
            return [name for name, _ in self._tests.get((file, program), Counter()).most_common(15)]


class Trial:
    """One mutant in a folder of its own."""

    def __init__(self, build: Build, times: TestTimes, experience: Experience, is_thorough: bool, mutant: Mutant,
                 folder: Path):
        self._build, self._times, self._experience, self._is_thorough = build, times, experience, is_thorough
        self._mutant, self._folder = mutant, folder
        self._objects: dict[str, Path] = {}
        self.killer = ""

    def run(self) -> str:
        changed = self._folder / "include" / self._mutant.file
        changed.parent.mkdir(parents=True)
        original = (self._build.tree / self._mutant.file).read_text(encoding="utf-8")
        changed.write_text(self._mutant.applied_to(original), encoding="utf-8")

        touched = self._build.objects_of(self._mutant.file)
        is_header = self._mutant.file.endswith(".h")
        own = [name for name in touched if not is_header or not name.startswith("tests/")]
        if not self._compile(own, changed):
            return NOT_COMPILING
        programs = [program for program in self._build.programs if any(program.uses(name) for name in touched)]
        programs.sort(key=lambda program: self._times.quick(program)
                      / self._experience.promise(self._mutant.file, program))
        # A program that has the applet in it runs the changed inline functions of the applet's own objects. One without
        # it, and whatever the tests alone call, need the tests compiled anew: slower, so only after the rest.
        for is_last in (False, True):
            if is_last and not is_header:
                break
            for program in programs:
                tests = [name for name in program.objects if name in touched and name not in self._objects]
                is_complete = program.has_product_objects()
                if (is_last and not tests) or (is_last is False and tests and not is_complete):
                    continue
                if is_last and not self._compile(tests, changed):
                    return KILLED
                try:
                    if self._is_caught_by(program):
                        return KILLED
                except NoProgram:
                    return NOT_COMPILING
        return SURVIVED

    def _compile(self, names: list[str], changed: Path) -> bool:
        is_source = self._mutant.file.endswith(".cpp")
        for name in names:
            target = self._folder / "objects" / name
            target.parent.mkdir(parents=True, exist_ok=True)
            command = self._build.compilation(name, self._folder / "include", changed if is_source else None, target)
            if not _succeeds(command, self._build.folder):
                return False
            self._objects[name] = target
        return True

    def _is_caught_by(self, program: Program) -> bool:
        binary = self._folder / program.name
        if not _succeeds(self._build.linking(program, self._objects, binary), self._build.folder):
            raise NoProgram(program.name)
        known = self._experience.tests(self._mutant.file, program.name)
        slow = self._times.slow[program.name]
        quick = f"-{':'.join(slow)}" if slow else "*"
        filters = [":".join(known)] * bool(known) + [quick] + [":".join(slow)] * bool(slow and self._is_thorough)
        caught = any(self._fails(program, binary, tests) for tests in filters)
        binary.unlink()
        return caught

    def _fails(self, program: Program, binary: Path, tests: str) -> bool:
        command = [str(binary), "--gtest_brief=1", "--gtest_fail_fast", f"--gtest_filter={tests}"]
        place = (self._build.folder / program.path).parent
        try:
            with tempfile.TemporaryDirectory() as temporary:
                done = subprocess.run(command, cwd=place, env={**os.environ, "TMPDIR": temporary},
                                      stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False,
                                      timeout=15 + 6 * self._times.whole[program.name], preexec_fn=_guard_the_machine)
        except subprocess.TimeoutExpired:
            self.killer = f"{program.name} (endless)"
            self._experience.note(self._mutant.file, program.name, [])
            return True
        if done.returncode == 0:
            return False
        failed = _FAILED.findall(done.stdout.decode(errors="replace"))
        names = list(dict.fromkeys(name.rstrip(",") for name in failed if "." in name))
        self.killer = f"{program.name} {' '.join(names[:1])}"
        self._experience.note(self._mutant.file, program.name, names)
        return True
