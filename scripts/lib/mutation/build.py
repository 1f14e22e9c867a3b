"""What the build of the unchanged tree knows: how an object is compiled, what a test program is linked from."""

import json
import re
import shlex
import shutil
import subprocess
from dataclasses import dataclass
from pathlib import Path

from sources import FOLDERS

ARCHIVES = {
    "grabber_basis/liborbelline_grabber_basis.a": "grabber_basis/CMakeFiles/orbelline_grabber_basis.dir/",
    "templates/liborbelline_templates.a": "templates/CMakeFiles/orbelline_templates.dir/",
}
_OTHERS_TESTS = ("tests/build/", "tests/genicam/", "tests/simulator/")
_SLOW_TESTS = "tests/trust/"
_PRODUCT_OBJECT = re.compile(rf"^(?:{'|'.join(FOLDERS)})/CMakeFiles/[^/]+\.dir/[^/]+\.cpp\.o$")


@dataclass(frozen=True)
class Program:
    name: str
    path: str
    link: tuple[str, ...]
    """The link command, relative to the build folder."""

    @property
    def objects(self) -> list[str]:
        return [word for word in self.link if word.endswith(".o")]

    def has_product_objects(self) -> bool:
        return any(_PRODUCT_OBJECT.match(word) for word in self.link)

    def uses(self, an_object: str) -> bool:
        return an_object in self.link or any(
            archive in self.link and an_object.startswith(folder) for archive, folder in ARCHIVES.items())


class Build:
    def __init__(self, tree: Path, folder: Path, with_slow_tests: bool):
        self.tree, self.folder = tree, folder
        self.programs = [program for program in self._find_programs()
                         if with_slow_tests or not program.path.startswith(_SLOW_TESTS)]
        self._run("ninja", "--quiet", *(program.path for program in self.programs))
        self._compilations = self._read_compilations()
        self._users = self._read_dependencies()

    def _run(self, *command: str) -> str:
        return subprocess.run(command, cwd=self.folder, check=True, text=True, stdout=subprocess.PIPE).stdout

    def _find_programs(self) -> list[Program]:
        programs = []
        for line in self._run("ninja", "-t", "commands").splitlines():
            if not line.startswith(": && "):
                continue
            link = tuple(shlex.split(line.removeprefix(": && ").split(" && ")[0]))
            path = link[link.index("-o") + 1] if "-o" in link else ""
            program = Program(Path(path).name, path, link)
            is_of_others = path.startswith(_OTHERS_TESTS)
            if re.match(r"tests/.*_tests$", path) and not is_of_others:
                programs.append(program)
        return programs

    def _read_compilations(self) -> dict[str, list[str]]:
        """The command of each object that a program may contain."""
        commands = {}
        for entry in json.loads((self.folder / "compile_commands.json").read_text(encoding="utf-8")):
            words = shlex.split(entry["command"])
            commands[words[words.index("-o") + 1]] = words
        return {name: words for name, words in commands.items()
                if any(program.uses(name) for program in self.programs)}

    def _read_dependencies(self) -> dict[str, list[str]]:
        """The objects that read a file of the tree, by the file's name."""
        users: dict[str, list[str]] = {}
        current = ""
        for line in self._run("ninja", "-t", "deps").splitlines():
            if not line.startswith(" "):
                current = line.split(":")[0]
            elif current in self._compilations:
                path = (self.folder / line.strip()).resolve()
                if path.is_relative_to(self.tree):
                    users.setdefault(path.relative_to(self.tree).as_posix(), []).append(current)
        return users

    def objects_of(self, file: str) -> list[str]:
        return sorted(set(self._users.get(file, [])))

    def compilation(self, an_object: str, own_include: Path, changed_source: Path | None, target: Path) -> list[str]:
        """The command that compiles one object from changed sources: quickly, and silent about warnings."""
        words = [word for word in self._compilations[an_object] if Path(word).name != "ccache"]
        words[words.index("-o") + 1] = str(target)
        if changed_source is not None:
            words[words.index("-c") + 1] = str(changed_source)
        kept = [word for word in words if word not in ("-flto", "-ffat-lto-objects", "-Werror")]
        return [kept[0], f"-I{own_include}", *kept[1:], "-O0", "-w"]

    def linking(self, program: Program, changed: dict[str, Path], target: Path) -> list[str]:
        """The command that links a program with changed objects in the place of its own."""
        words = [str(changed[word]) if word in changed else word for word in program.link]
        words[words.index("-o") + 1] = str(target)
        members = [str(path) for name, path in changed.items() if name not in program.link and program.uses(name)]
        first_object = next(place for place, word in enumerate(words) if word.endswith(".o"))
        quick_linker = ["-fuse-ld=lld"] if shutil.which("ld.lld") else []
        return words[:first_object] + quick_linker + members + words[first_object:]
