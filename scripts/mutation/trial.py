# SPDX-License-Identifier: MIT
"""Tries mutants: compiles one, runs the tests that should notice it, and says what came of it."""

import os
import re
import shutil
import signal
import subprocess
import threading
import time
from collections import Counter
from dataclasses import dataclass
from pathlib import Path

from workshop import FAST, WorkshopError, optimised_flags

_SANDBOX = Path(__file__).resolve().parent / "sandbox"
# Seconds for a test whose normal time is not known yet.
MEASURING_LIMIT = 300
# The status that the sandbox ends with when the test has used up its processor time.
_TIME_IS_UP = (128 + signal.SIGXCPU, 128 + signal.SIGKILL, -signal.SIGKILL)
# A test that crashes shall not start a debugger.
_ENVIRONMENT = {"QTEST_DISABLE_STACK_DUMP": "1"}
# How Qt's tests tell that one of their functions has failed.
_FAILURE = re.compile(r"^(FAIL!|XPASS) ", re.MULTILINE)

KILLED, SURVIVED, EQUIVALENT, INVALID = "killed", "survived", "equivalent", "invalid"


@dataclass
class Verdict:
    """What came of a mutant: `by` is the test that killed it, with "(time)" behind it if that hung."""

    outcome: str
    by: str = ""


class _DoesNotCompile(Exception):
    pass


def _output_to_failure(process):
    """All output of a test; where it tells a failure, the test is ended: nobody needs the others."""
    output = []
    for line in process.stdout:
        output.append(line.decode(errors="replace"))
        if _FAILURE.match(output[-1]):
            process.kill()
    process.wait()
    return "".join(output)


def _words(name):
    """The words of a source's or a test's name: "CFixedString.cpp" and "tst_fixed_strings" share two."""
    name = re.sub(r"^(C(?=[A-Z])|tst_)|\..*$|_unix|_win", "", name)
    parts = re.findall(r"[A-Z]+(?![a-z])|[A-Z]?[a-z]+|[0-9]+", name)
    return {part.lower().rstrip("s") for part in parts}


class Killers:
    """Which tests have killed mutants of which file: they tell who is asked first about the next one."""

    def __init__(self):
        self._counts = {}
        self._lock = threading.Lock()

    def add(self, file, name):
        with self._lock:
            self._counts.setdefault(file, Counter())[name] += 1

    def in_order(self, file, tests):
        """The one first that is the most likely killer for the time that it takes."""
        with self._lock:
            counts = self._counts.get(file, Counter())
            own = _words(Path(file).name)

            def promise(test):
                likely = 0.1 + len(own & _words(test.name)) + counts[test.name]
                return likely / (0.1 + test.seconds)

            return sorted(tests, key=promise, reverse=True)


class Worker:
    """Tries one mutant at a time in a directory of its own."""

    def __init__(self, workshop, number, killers):
        self._workshop = workshop
        self._directory = workshop.directory / f"worker-{number}"
        self._source = self._directory / "source"
        self._scratch = self._directory / "scratch"
        self._killers = killers
        shutil.rmtree(self._directory, ignore_errors=True)
        self._scratch.mkdir(parents=True)
        shutil.copytree(workshop.source / "src", self._source / "src")

    # Building

    def _compile(self, unit, flags, output, header=None):
        original, own = str(self._workshop.source / "src"), str(self._source / "src")
        command = [word.replace(original, own) for word in unit.command]
        command[command.index("-o") + 1] = str(output)
        included = ["-include", str(header)] if header else []
        done = subprocess.run([*command, *flags, *included], cwd=self._workshop.build, check=False,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        if done.returncode != 0:
            raise _DoesNotCompile

    def _object(self, unit):
        return self._directory / (re.sub(r"\W", "_", unit.output) + ".o")

    def _link(self, target, units, output):
        command = self._workshop.link_command(target)
        objects = {unit.output: str(self._object(unit)) for unit in units}
        command = [objects.get(word, word) for word in command]
        command[command.index("-o") + 1] = str(output)
        done = subprocess.run([*command, *self._workshop.linker], cwd=self._workshop.build, check=False,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        if done.returncode != 0:
            raise _DoesNotCompile

    def _build_library(self, file):
        """The file -> replacement pairs of the mutated library; none if the library does not use the file."""
        units = self._workshop.units_of(file)
        for unit in units:
            is_own = unit.source == self._workshop.source / file
            header = self._workshop.header_of(unit) if is_own else None
            self._compile(unit, FAST, self._object(unit), header)
        if not units:
            return {}
        library = self._directory / "library"
        self._link(self._workshop.library.name, units, library)
        return {self._workshop.library: library}

    def _build_test(self, file, test):
        """The same of a test that compiles the file into itself."""
        units = self._workshop.units_of(file, test.executable.name)
        for unit in units:
            self._compile(unit, FAST, self._object(unit))
        if not units:
            return {}
        executable = self._directory / "executable"
        self._link(str(test.executable.relative_to(self._workshop.build)), units, executable)
        return {test.executable: executable}

    # Testing

    def failure(self, test, replacements):
        """Why the test does not pass: "fails", "time"; None if it does."""
        ready, write = os.pipe()
        pairs = [f"{replacement}={file}" for file, replacement in replacements.items()]
        command = [_SANDBOX, self._scratch, str(write), str(test.limit), test.directory, *pairs, "--",
                   *test.command]
        with subprocess.Popen(command, pass_fds=(write,), stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, env={**os.environ, **_ENVIRONMENT, **test.environment}) as process:
            os.close(write)
            is_ready = os.read(ready, 1) != b""
            os.close(ready)
            waited_too_long = threading.Timer(test.waiting_limit, process.kill)
            waited_too_long.start()
            output = _output_to_failure(process)
            waited_too_long.cancel()
        if not is_ready:
            raise WorkshopError(f"no sandbox: {output}")
        if process.returncode == 0:
            return None
        if _FAILURE.search(output):
            return "fails"
        return "time" if process.returncode in _TIME_IS_UP else "fails"

    def measure(self, test):
        """How long the test takes with the unmutated library, which it has to pass."""
        start = time.monotonic()
        test.seconds = MEASURING_LIMIT
        failure = self.failure(test, {})
        if failure:
            raise WorkshopError(f"{test.name} does not pass without a mutation: {failure}")
        test.seconds = time.monotonic() - start

    def prove_replacement(self, test):
        """That the tests use the library that is put in place: they cannot start with an empty one."""
        empty = self._directory / "empty"
        empty.write_bytes(b"")
        if not self.failure(test, {self._workshop.library: empty}):
            raise WorkshopError(f"{test.name} does not use {self._workshop.library}")

    def _killer(self, mutant):
        replacements = self._build_library(mutant.file)
        for test in self._killers.in_order(mutant.file, self._workshop.tests_for(mutant.subsystem)):
            own = self._build_test(mutant.file, test)
            if not replacements and not own:
                continue
            failure = self.failure(test, {**replacements, **own})
            if failure:
                self._killers.add(mutant.file, test.name)
                return test.name + (" (time)" if failure == "time" else "")
        return None

    # Equivalence

    def _is_same_program(self, file):
        """Whether the optimised code of all units that depend on the file is the same."""
        output = self._directory / "optimised.o"
        for unit in self._workshop.all_units_of(file):
            self._compile(unit, optimised_flags(self._source / "src"), output)
            if output.read_bytes() != self._workshop.optimised(unit):
                return False
        return True

    def attempt(self, mutant):
        """The verdict on one mutant."""
        path = self._source / mutant.file
        original = (self._workshop.source / mutant.file).read_text(encoding="utf-8")
        path.write_text(mutant.applied_to(original), encoding="utf-8")
        try:
            killer = self._killer(mutant)
            if killer:
                return Verdict(KILLED, killer)
            same = self._is_same_program(mutant.file)
            return Verdict(EQUIVALENT, "same object code") if same else Verdict(SURVIVED)
        except _DoesNotCompile:
            return Verdict(INVALID)
        finally:
            path.write_text(original, encoding="utf-8")
