# SPDX-License-Identifier: MIT
"""The copy of the tree that is mutated, its build and its tests.

Below the directory of the workshop: `source` is the copy, `build` what CMake makes of it, both never mutated.
Each worker has a directory of its own with a copy of src/, in which it changes a file and compiles what
depends on it; the rest is taken from `build`.
"""

import hashlib
import json
import math
import os
import re
import shlex
import shutil
import subprocess
import threading
from collections import Counter
from dataclasses import dataclass, field
from pathlib import Path

LIBRARY = "libj6Core.so"
# A test hangs that takes more than ten times its normal processor time, but at least so many seconds of it;
# one that waits, more than so many seconds altogether. However busy the machine is, no other test is stopped.
LEAST_TIME_LIMIT = 10
_TIMES_NORMAL = 10
LEAST_WAITING_LIMIT = 60
# Not worth more: most mutants are compiled once, and the tests take longer than that gains.
FAST = ["-O0", "-g0", "-w"]
_OPTIMISED = ["-O2", "-g0", "-w"]


class WorkshopError(Exception):
    """Something is wrong with the unmutated tree or the machine."""


def run(command, **options):
    """Runs a command that has to succeed; its output."""
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False,
                          **options)
    if done.returncode != 0:
        raise WorkshopError(f"{shlex.join(map(str, command))} failed:\n{done.stdout}")
    return done.stdout


@dataclass
class Unit:
    """A translation unit, of the library or of a test's executable."""

    source: Path
    output: str
    command: list
    test: str = None
    dependencies: set = field(default_factory=set)


@dataclass
class Test:
    """A test as ctest runs it."""

    name: str
    command: list
    directory: str
    environment: dict
    subsystem: str
    seconds: float = 0.0

    @property
    def executable(self):
        return Path(self.command[0])

    @property
    def limit(self):
        """Seconds of processor time after which the test hangs."""
        return max(LEAST_TIME_LIMIT, math.ceil(_TIMES_NORMAL * self.seconds))

    @property
    def waiting_limit(self):
        """Seconds after which it hangs though it uses no processor time."""
        return max(LEAST_WAITING_LIMIT, _TIMES_NORMAL * self.seconds)

    def digest(self, library):
        """Of the programs that run: a test need not be run again where this is the same."""
        return hashlib.sha256(self.executable.read_bytes() + library.read_bytes()).hexdigest()


def _copy_changed(root, target):
    """Makes target hold what git knows of root; what is the same keeps its time, so little is built again."""
    listed = run(["git", "-C", root, "ls-files", "-z", "--cached", "--others", "--exclude-standard"])
    names = {name for name in listed.split("\0") if name and (root / name).is_file()}
    for name in names:
        copy = target / name
        content = (root / name).read_bytes()
        if not copy.is_file() or copy.read_bytes() != content:
            copy.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy2(root / name, copy)
            os.utime(copy)
    for path in list(target.rglob("*")):
        if path.is_file() and str(path.relative_to(target)) not in names:
            path.unlink()


def _is_newer(made, sources):
    return made.is_file() and all(path.stat().st_mtime < made.stat().st_mtime for path in sources)


def optimised_flags(sources):
    """For the objects whose comparison proves that a mutant is the same program, wherever its sources are."""
    return [*_OPTIMISED, f"-fmacro-prefix-map={sources}=src"]


class Workshop:
    """Builds the unmutated copy and knows how each part of it is built."""

    def __init__(self, root, directory, jobs):
        self.source = directory / "source"
        self.build = directory / "build"
        self.directory = directory
        self.jobs = jobs
        _copy_changed(root, self.source)
        self._build_all()
        self.units = self._read_units()
        self.tests = self._read_tests()
        self.library = (self.build / LIBRARY).resolve()
        self._link_commands = {}
        self.linker = ["-fuse-ld=lld"] if shutil.which("ld.lld") else []
        self._locks = {}
        self._header_uses = Counter()

    # The build

    def _build_all(self):
        environment = {**os.environ, "CCACHE_BASEDIR": str(self.directory), "CCACHE_NOHASHDIR": "1"}
        run(["cmake", "-S", self.source, "-B", self.build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
             "-DCMAKE_CXX_FLAGS_DEBUG=-O0"], env=environment)
        targets = run(["ninja", "-C", self.build, "-t", "targets", "all"])
        tests = sorted(set(re.findall(r"^(tst_\w+): phony$", targets, re.MULTILINE)))
        run(["ninja", "-C", self.build, "-j", str(self.jobs), LIBRARY, *tests], env=environment)

    def _read_dependencies(self):
        """Object -> the files that it is compiled from."""
        dependencies = {}
        for line in run(["ninja", "-C", self.build, "-t", "deps"]).splitlines():
            if line and not line[0].isspace():
                current = dependencies.setdefault(line.split(":")[0], set())
            elif line.strip():
                # ccache writes paths relative to the build.
                current.add(Path(os.path.normpath(self.build / line.strip())))
        return dependencies

    def _read_units(self):
        dependencies = self._read_dependencies()
        units = []
        for entry in json.loads((self.build / "compile_commands.json").read_text(encoding="utf-8")):
            command = shlex.split(entry["command"])
            output = command[command.index("-o") + 1]
            target = re.search(r"(?:^|/)CMakeFiles/([^/]+)\.dir/", output).group(1)
            if target != "j6Core" and not target.startswith("tst_"):
                continue
            command = command[1:] if command[0].endswith("ccache") else command
            units.append(Unit(Path(entry["file"]), output, command, None if target == "j6Core" else target,
                              dependencies.get(output, set()) | {Path(entry["file"])}))
        return units

    def _read_tests(self):
        listed = json.loads(run(["ctest", "--test-dir", self.build, "--show-only=json-v1"]))
        tests = []
        for entry in listed["tests"]:
            properties = {item["name"]: item["value"] for item in entry["properties"]}
            command = entry.get("command", [""])
            directory = properties["WORKING_DIRECTORY"]
            if not os.path.basename(command[0]).startswith("tst_"):
                continue
            environment = dict(item.split("=", 1) for item in properties.get("ENVIRONMENT", []))
            tests.append(Test(entry["name"], command, directory, environment, os.path.basename(directory)))
        return tests

    def link_command(self, target):
        """How the library or an executable is linked, from the build directory."""
        if target not in self._link_commands:
            # ": && link && what comes after"
            words = shlex.split(run(["ninja", "-C", self.build, "-t", "commands", "-s", target]))
            words = words[words.index("&&") + 1 :]
            self._link_commands[target] = words[: words.index("&&")]
        return list(self._link_commands[target])

    def tests_for(self, subsystem):
        return [test for test in self.tests if test.subsystem == subsystem]

    def units_of(self, file, test=None):
        """The units of the library, or of a test's executable, that depend on this file of the tree."""
        path = self.source / file
        return [unit for unit in self.units
                if unit.test == test and path in unit.dependencies]

    def all_units_of(self, file):
        """The units of src/ that depend on this file, as the library and as tests compile them."""
        path = self.source / file
        return [unit for unit in self.units
                if self.is_ours(unit.source) and path in unit.dependencies]

    def optimised(self, unit):
        """The optimised object of the unmutated unit."""
        name = re.sub(r"\W", "_", unit.output)
        with self._locks.setdefault(f"optimised {name}", threading.Lock()):
            path = self.directory / "optimised" / name
            if not _is_newer(path, unit.dependencies):
                path.parent.mkdir(exist_ok=True)
                command = list(unit.command)
                command[command.index("-o") + 1] = str(path)
                run([*command, *optimised_flags(self.source / "src")], cwd=self.build)
            return path.read_bytes()

    # What makes compiling fast

    def header_of(self, unit):
        """All that the unit's source includes, precompiled when it is wanted for the second time."""
        name = re.sub(r"\W", "_", unit.output)
        with self._locks.setdefault(f"header {name}", threading.Lock()):
            header = self.directory / "headers" / name / "included.h"
            self._header_uses[unit.output] += 1
            if not _is_newer(Path(f"{header}.gch"), unit.dependencies):
                if self._header_uses[unit.output] == 1:
                    return None
                self._precompile(unit, header)
            return header

    def _precompile(self, unit, header):
        included = re.findall(r"^#include .*", unit.source.read_text(encoding="utf-8"), re.MULTILINE)
        shutil.rmtree(header.parent, ignore_errors=True)
        header.parent.mkdir(parents=True)
        header.write_text("\n".join(included) + "\n", encoding="utf-8")
        command = [word for word in unit.command if word not in ("-c", str(unit.source))]
        command[command.index("-o") + 1] = str(header) + ".gch"
        run([*command, *FAST, f"-I{unit.source.parent}", "-x", "c++-header", str(header)], cwd=self.build)

    def is_ours(self, path):
        """Whether the file may be mutated."""
        return (self.source / "src") in path.parents

    def name_of(self, path):
        """The file's path within the tree."""
        return str(path.relative_to(self.source))
