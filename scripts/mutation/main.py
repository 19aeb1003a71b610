"""Tries one-token changes of sources against their tests; see `scripts/mutants --help`."""

import argparse
import json
import sys
from concurrent.futures import ThreadPoolExecutor
from fnmatch import fnmatch
from pathlib import Path

from changes import ChangeFinder
from explained import ExplainedList
from programs import Build, BuildFault, Variant, compile_switch
from regions import RegionFinder
from runs import Program, Runner
from tokens import Source
from versions import VersionWriter

_ROOT = Path(__file__).resolve().parents[2]
_LISTS = _ROOT / "tests" / "mutants"
_DESCRIPTION = """Changes one token at a time in the files named, runs the tests of each file's family, and lists the
changes that no test notices. Each of these is to be killed by a test or explained in tests/mutants/explained.txt. The
exit status is 1 when one is neither, or when an explained one is killed or no longer there."""


class FileRun:
    """The mutants of one file."""

    def __init__(self, build, path, program_names, folder, jobs):
        self.build = build
        self.path = path
        self.jobs = jobs
        self.variant = Variant(build, path, folder)
        self.runner = Runner(folder)
        self.switch = folder / ".." / "switch.o"
        self.programs = [Program(name.removeprefix("whole:"), None, name.startswith("whole:")) for name in program_names]
        self.source = Source(path.read_text())
        self.regions = RegionFinder(self.source).find()
        self.mutants = ChangeFinder(self.source, self.regions).find()
        self.status = {}  # by the mutant's number: killed, survived, unreached, invalid

    def run(self, known):
        """Finds the status of every mutant; those whose keys are in `known` are taken to be killed as before."""
        todo = [mutant for mutant in self.mutants if list(mutant.key) not in known]
        self.status = {mutant.number: "killed" for mutant in self.mutants if list(mutant.key) in known}
        self.programs = [each for each in self.programs if self._objects(each)]
        if not self.programs:
            raise BuildFault(f"{self.path}: none of its test programs is compiled from it")
        together, alone = self._compile_together(todo)
        self._run_together(together)
        for mutant in alone + [each for each in together if self._is_doubtful(each)]:
            self._run_alone(mutant)

    def _objects(self, program):
        return self.build.objects_of(program.name, self.path)

    def _all_objects(self):
        return sorted({each for program in self.programs for each in self._objects(program)})

    def _compile_together(self, todo):
        """One build that holds as many mutants as can be; returns these and those that need a build each."""
        together = [each for each in todo if VersionWriter.can_hold(each, self.source)]
        alone = [each for each in todo if not VersionWriter.can_hold(each, self.source)]
        while True:
            text = VersionWriter(self.source, self.regions, together, str(self.path)).write()
            errors = self.variant.compile(text, self._all_objects())
            if not errors:
                break
            named, guilty = _mutants_of_errors(errors)
            # An error of the declaration around a literal names the file's line: a constant is needed there.
            named = named or {each.number for each in together if each.region is None}
            refused = [each for each in together if each.number in named]
            if not refused:
                raise BuildFault(errors)
            for mutant in refused:
                # A copy of a statement or a condition is refused for what it says, not for where it stands.
                if mutant.number in guilty and mutant.region and mutant.region.kind != "value":
                    self.status[mutant.number] = "invalid"
                else:
                    alone.append(mutant)
            together = [each for each in together if each.number not in named]
        for program in self.programs:
            program.file = self.variant.link(program.name, self._objects(program), [self.switch])
        return together, alone

    def _run_together(self, mutants):
        for program in self.programs:
            if not self.runner.record(program):
                raise BuildFault(f"{program.name} fails without a mutant")
        with ThreadPoolExecutor(self.jobs) as pool:
            for mutant, status in zip(mutants, pool.map(self._status_together, mutants)):
                self.status[mutant.number] = status

    def _status_together(self, mutant):
        status = "unreached"
        for program in self.programs:
            tests = program.tests_reaching(mutant.number)
            if tests:
                status = "survived"
                if self.runner.is_killed(program, mutant.number, tests):
                    return "killed"
        return status

    def _is_doubtful(self, mutant):
        """What the compiler computed was not changed."""
        return mutant.region is not None and mutant.region.in_constexpr and self.status[mutant.number] != "killed"

    def _run_alone(self, mutant):
        """A build for one mutant, with all tests."""
        self.status[mutant.number] = "survived"
        if self.variant.compile(mutant.applied(self.source.text), self._all_objects()):
            self.status[mutant.number] = "invalid"
            return
        for program in self.programs:
            program.file = self.variant.link(program.name, self._objects(program), [self.switch])
            tests = ["*"] if program.is_whole else list(program.milliseconds)
            if self.runner.is_killed(program, 0, tests):
                self.status[mutant.number] = "killed"
                return

    def survivors(self):
        return [each for each in self.mutants if self.status[each.number] in ("survived", "unreached")]


def _mutants_of_errors(errors):
    """The numbers of all mutants that the compiler names, and of those that it names as the place of an error."""
    named, guilty = set(), set()
    for line in errors.splitlines():
        for piece in line.split("mutant-")[1:]:
            digits = piece[: len(piece) - len(piece.lstrip("0123456789"))]
            if digits:
                named.add(int(digits))
                if line.startswith("mutant-") and " error: " in line:
                    guilty.add(int(digits))
    return named, guilty


class Report:
    def __init__(self, explained):
        self.explained = explained
        self.faults = len(explained.faults)
        self.counts = {}
        for fault in explained.faults:
            print(fault)

    def add(self, file, run):
        """Prints what became of a file's mutants."""
        survivors = run.survivors()
        open_ones = [each for each in survivors if not self.explained.holds(file, each)]
        states = list(run.status.values())
        counts = {
            "mutants": len(states) - states.count("invalid"),
            "killed": states.count("killed"),
            "explained": len(survivors) - len(open_ones),
            "survive": len(open_ones),
        }
        print(f"{file}: {_in_words(counts)}")
        for mutant in open_ones:
            unreached = ", reached by no test" if run.status[mutant.number] == "unreached" else ""
            print(f"  {file}:{mutant.line_number}{unreached}\n    line    {mutant.line}\n    change  {mutant.change}")
        stale = self.explained.stale(file, survivors)
        for entry in stale:
            print(f"  {entry.place}: does not survive: {entry.line}: {entry.change}")
        sys.stdout.flush()
        self.faults += len(open_ones) + len(stale)
        self.counts = {name: self.counts.get(name, 0) + count for name, count in counts.items()}

    def fail(self, file, fault):
        print(f"{file}: cannot be tried\n{fault}")
        self.faults += 1

    def close(self, files):
        if files > 1:
            print(f"{files} files: {_in_words(self.counts)}")


def _in_words(counts):
    return ", ".join(f"{count} {name}" for name, count in counts.items())


def _files(paths):
    """The sources among the files and in the folders named."""
    found = []
    for path in paths:
        if path.is_dir():
            found += sorted(each for each in path.iterdir() if each.suffix in (".cpp", ".h"))
        else:
            found.append(path)
    return [each.resolve() for each in found]


def _families(path):
    """Pairs of a file's pattern and the test programs for it, the first that fits counting."""
    lines = [line.split() for line in path.read_text().splitlines() if line and not line.startswith("#")]
    return [(words[0], words[1:]) for words in lines]


def _programs_for(families, file):
    return next((programs for pattern, programs in families if fnmatch(file, pattern)), [])


def _known(path, survivors_only):
    """The keys of the mutants that the last run killed or found to be none."""
    if not survivors_only or not path.exists():
        return []
    return json.loads(path.read_text())


def _arguments():
    parser = argparse.ArgumentParser(prog="scripts/mutants", description=_DESCRIPTION)
    parser.add_argument("paths", nargs="+", type=Path, metavar="FILE|FOLDER")
    parser.add_argument("--survivors", action="store_true", help="only those that survived the last run")
    parser.add_argument("--jobs", type=int, default=2, help="programs that run at once (2)")
    parser.add_argument("--build", type=Path, default=_ROOT / "build" / "release", help="a build folder that is up to date")
    parser.add_argument("--families", type=Path, default=_LISTS / "families.txt", help="which tests are run for a file")
    parser.add_argument("--explained", type=Path, default=_LISTS / "explained.txt", help="the survivors that have a reason")
    return parser.parse_args()


def main():
    arguments = _arguments()
    families = _families(arguments.families)
    report = Report(ExplainedList(arguments.explained))
    work = arguments.build.resolve() / "mutants"
    compile_switch(work)
    build = Build(arguments.build)
    files = 0
    for path in _files(arguments.paths):
        file = str(path.relative_to(_ROOT))
        run = FileRun(build, path, _programs_for(families, file), work / path.name, arguments.jobs)
        if not run.mutants:
            continue
        memory = work / f"{path.name}.killed.json"
        try:
            run.run(_known(memory, arguments.survivors))
        except BuildFault as fault:
            report.fail(file, fault)
            continue
        alive = [list(each.key) for each in run.survivors()]
        memory.write_text(json.dumps([list(each.key) for each in run.mutants if list(each.key) not in alive]))
        report.add(file, run)
        files += 1
    report.close(files)
    return 1 if report.faults else 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except BuildFault as fault:
        print(fault, file=sys.stderr)
        sys.exit(2)
