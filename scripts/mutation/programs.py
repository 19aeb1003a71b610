"""Builds test programs in which one file is another one than in the tree."""

import json
import re
import shlex
import shutil
import subprocess
from pathlib import Path

_ROOT = Path(__file__).resolve().parents[2]
SWITCH = _ROOT / "tests" / "mutants" / "switch.h"
# An array whose length is chosen at run time would be accepted otherwise.
_COMPILER_CACHE = ["ccache"] if shutil.which("ccache") else []
_FLAGS = ["-Werror=vla", "-fmax-errors=0", "-fno-diagnostics-show-caret"]


class BuildFault(Exception):
    """A build that has to succeed did not."""


class Build:
    """What a build folder knows of its programs. The tree's own objects are taken as they are."""

    def __init__(self, folder, root=_ROOT):
        self.folder = Path(folder).resolve()
        self.root = root
        self.commands = self._compile_commands()
        self.dependencies = self._dependencies()

    def _ninja(self, *arguments):
        done = subprocess.run(["ninja", "-C", self.folder, *arguments], capture_output=True, text=True)
        if done.returncode != 0:
            raise BuildFault(done.stdout + done.stderr)
        return done.stdout

    def _compile_commands(self):
        """The command of each object, by the object's name in the build folder."""
        entries = json.loads((self.folder / "compile_commands.json").read_text())
        commands = {}
        for entry in entries:
            words = shlex.split(entry["command"])
            commands[words[words.index("-o") + 1]] = words
        return commands

    def _dependencies(self):
        """The files of the tree that each object was compiled from, as absolute paths."""
        found, current = {}, None
        for line in self._ninja("-t", "deps").splitlines():
            if line.startswith("    "):
                if not line.startswith("    /usr/"):
                    current.add(str((self.folder / line.strip()).resolve()))
            elif ":" in line:
                current = found.setdefault(line.split(": #deps")[0], set())
        return found

    def link_command(self, program):
        """The words of the command that links a program, and where the program stands."""
        lines = self._ninja("-t", "commands", program).strip().splitlines()
        words = shlex.split(re.sub(r"^: && | && :$", "", lines[-1]))
        return words[: words.index("&&")] if "&&" in words else words

    def objects_of(self, program, file):
        """The objects of a program that were compiled from a file, directly or by including it."""
        path = str(file.resolve())
        return [each for each in self.link_command(program) if path in self.dependencies.get(each, ())]


class Variant:
    """Programs with another text of one file, in a folder of their own."""

    def __init__(self, build, file, folder):
        self.build = build
        self.file = file.resolve()
        self.folder = folder.resolve()
        self.relative = self.file.relative_to(build.root)
        self.sources = self.folder / "src"
        self._copy_neighbours()

    def _copy_neighbours(self):
        """A source finds the headers beside itself before all others, so they have to stand beside the changed one."""
        target = self.sources / self.relative.parent
        shutil.rmtree(self.sources, ignore_errors=True)
        target.mkdir(parents=True)
        for neighbour in self.file.parent.iterdir():
            if neighbour.suffix in (".h", ".cpp"):
                shutil.copy(neighbour, target)

    def compile(self, text, objects):
        """Compiles the objects anew; returns the compiler's errors, "" when there are none."""
        (self.sources / self.relative).write_text(text)
        errors = ""
        for name in objects:
            done = subprocess.run(self._compile_words(name), cwd=self.build.folder, capture_output=True, text=True)
            if done.returncode != 0:
                errors += done.stderr
        return errors

    def object_file(self, name):
        return self.folder / "objects" / name

    def _compile_words(self, name):
        words = [each for each in self.build.commands[name] if not each.startswith(("-W", "-O"))]
        output, source = words.index("-o") + 1, words.index("-c") + 1
        original = Path(words[source])
        self.object_file(name).parent.mkdir(parents=True, exist_ok=True)
        words[output] = str(self.object_file(name))
        if original.resolve().parent == self.file.parent:
            words[source] = str(self.sources / self.relative.parent / original.name)
        # What only includes the file is tests mostly, which need no speed.
        level = "-O1" if original.resolve() == self.file else "-O0"
        return _COMPILER_CACHE + words[:1] + self._include_words(words) + words[1:] + [level, "-include", str(SWITCH), *_FLAGS]

    def _include_words(self, words):
        """Where the changed file is found before the one in the tree."""
        for word in words:
            folder = Path(word[2:])
            if word.startswith("-I") and self.file.is_relative_to(folder):
                return [f"-I{self.sources / folder.resolve().relative_to(self.build.root)}"]
        return []

    def link(self, program, objects, more):
        """Links a program with the new objects; returns its file."""
        target = self.folder / "programs" / program
        target.parent.mkdir(parents=True, exist_ok=True)
        words = [str(self.object_file(each)) if each in objects else each for each in self.build.link_command(program)]
        words[words.index("-o") + 1] = str(target)
        done = subprocess.run(words + [str(each) for each in more], cwd=self.build.folder, capture_output=True, text=True)
        if done.returncode != 0:
            raise BuildFault(done.stderr)
        return target


def compile_switch(folder):
    """The object that chooses the mutant, for all programs."""
    folder.mkdir(parents=True, exist_ok=True)
    target = folder.resolve() / "switch.o"
    source = SWITCH.with_suffix(".cpp")
    done = subprocess.run(
        ["c++", "-std=c++20", "-O1", "-c", str(source), "-o", str(target)], capture_output=True, text=True
    )
    if done.returncode != 0:
        raise BuildFault(done.stderr)
    return target
