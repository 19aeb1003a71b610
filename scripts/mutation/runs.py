"""Runs tests against a mutant: only those that reach it, the likeliest and quickest first."""

import os
import subprocess
from dataclasses import dataclass, field

_LARGEST_FILTER = 100_000  # the kernel takes no longer argument than 128 KB
_FIRST_MILLISECONDS = 300
_MEMORY = 8 << 30


@dataclass
class Program:
    """A test program. `is_whole`: its tests are one story, none is run without the others."""

    name: str
    file: object
    is_whole: bool
    milliseconds: dict = field(default_factory=dict)  # by test
    reached: dict = field(default_factory=dict)  # the numbers of the mutants, by test
    everywhere: set = field(default_factory=set)  # reached before the first test
    kills: dict = field(default_factory=dict)  # how often a test was the one that failed

    def tests_reaching(self, number):
        if self.is_whole:
            return ["*"] if number in self.everywhere or any(number in each for each in self.reached.values()) else []
        if number in self.everywhere:
            return list(self.milliseconds)
        return [test for test, numbers in self.reached.items() if number in numbers]

    def cost(self, tests):
        if tests == ["*"]:
            return sum(self.milliseconds.values())
        return sum(self.milliseconds[test] for test in tests)


class Runner:
    def __init__(self, folder):
        self.folder = folder
        (folder / "tmp").mkdir(parents=True, exist_ok=True)

    def record(self, program):
        """Runs all tests without a mutant and learns which of them reach which mutants. False when one fails."""
        file = self.folder / f"{program.name}.record"
        if not self._run(program, ["*"], 0, 1_000_000, {"MUTANTS_RECORD": str(file)}):
            return False
        suites = {}
        for line in file.read_text().splitlines():
            name, milliseconds, *numbers = line.split()
            numbers = {int(number) for number in numbers}
            if name == "*":
                program.everywhere |= numbers
            elif name.endswith(".*"):
                suites.setdefault(name[:-1], set()).update(numbers)
            else:
                program.milliseconds[name] = int(milliseconds) + 1
                program.reached[name] = numbers
        for test, numbers in program.reached.items():
            numbers |= suites.get(test[: test.index(".") + 1], set())
        return True

    def is_killed(self, program, number, tests):
        """Whether one of the tests fails on the mutant, crashes or does not end."""
        for batch in self._batches(program, tests):
            if not self._run(program, batch, number, program.cost(batch)):
                for test in batch:
                    program.kills[test] = program.kills.get(test, 0) + 1 / len(batch)
                return True
        return False

    def _batches(self, program, tests):
        """A few that are quick or have found much, then the rest."""
        if program.is_whole or len(tests) < 2:
            return [tests] if tests else []
        order = sorted(tests, key=lambda test: (-program.kills.get(test, 0), program.milliseconds[test]))
        first, spent = [], 0
        while order and (not first or spent + program.milliseconds[order[0]] <= _FIRST_MILLISECONDS):
            spent += program.milliseconds[order[0]]
            first.append(order.pop(0))
        # What takes long is not begun before what is quick has passed.
        order.sort(key=lambda test: program.milliseconds[test])
        batches, spent = [first], 0
        for test in order:
            if len(batches) == 1 or spent > 10 * _FIRST_MILLISECONDS:
                batches.append([])
                spent = 0
            batches[-1].append(test)
            spent += program.milliseconds[test]
        return batches

    def _run(self, program, tests, number, milliseconds, environment=None):
        # Processor time, which a busy machine does not change; the clock only against what waits for ever.
        seconds = 2 + 5 * milliseconds // 1000
        words = ["nice", "-n", "5", "prlimit", f"--cpu={seconds}", f"--as={_MEMORY}", "--core=0", "--", str(program.file)]
        tests_filter = ":".join(tests)
        if len(tests_filter) > _LARGEST_FILTER:
            tests_filter = "*"
        variables = dict(os.environ, TMPDIR=str((self.folder / "tmp").resolve()), MUTANT=str(number))
        variables |= {"GTEST_FILTER": tests_filter, "GTEST_FAIL_FAST": "1", "GTEST_BRIEF": "1"} | (environment or {})
        try:
            done = subprocess.run(
                words,
                cwd=self.folder,
                env=variables,
                stdin=subprocess.DEVNULL,
                stdout=subprocess.DEVNULL,
                stderr=subprocess.DEVNULL,
                timeout=30 + 20 * seconds,
            )
        except subprocess.TimeoutExpired:
            return False
        return done.returncode == 0
