# SPDX-License-Identifier: MIT
"""The whole procedure on a small project of which every mutant's fate is known."""

import shutil
import subprocess
import unittest
from pathlib import Path
from unittest import mock

import trial
import workshop
from mutators import mutants_of

FILES = {
    "CMakeLists.txt": """
cmake_minimum_required(VERSION 3.20)
project(Sums LANGUAGES CXX)
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
enable_testing()
add_library(j6Core SHARED src/sums/Sums.cpp)
target_include_directories(j6Core PUBLIC src)
set_target_properties(j6Core PROPERTIES VERSION 1.0.0 SOVERSION 1)
add_subdirectory(tests/sums)
""",
    "tests/sums/CMakeLists.txt": """
foreach(test IN ITEMS tst_sums tst_steps)
    add_executable(${test} ${test}.cpp)
    target_link_libraries(${test} PRIVATE j6Core)
    add_test(NAME ${test} COMMAND ${test})
endforeach()
target_sources(tst_steps PRIVATE ../../src/sums/Steps.cpp)
""",
    "src/sums/Sums.h": """
#ifndef SUMS_H
#define SUMS_H
int sum(int a, int b);
bool isLess(int a, int b);
int same(int a);
unsigned long counted(unsigned long n);
constexpr int size = 4;
static_assert(size == 4, "a mutant of it does not compile");
inline int doubled(int a)
{
    return a + a;
}
#endif
""",
    "src/sums/Sums.cpp": """
#include <cstdlib>

#include "Sums.h"

// Where the sources are makes no other program.
extern const char *const name;
const char *const name = __FILE__;

int sum(int a, int b)
{
    return doubled(a) / 2 + b;
}

bool isLess(int a, int b)
{
    return a < b;
}

int same(int a)
{
    return a * 1;
}

unsigned long counted(unsigned long n)
{
    unsigned long count = 0;
    while (n != 0) {
        --n;
        ++count;
    }
    return count;
}
""",
    "src/sums/Steps.cpp": "int next(int a)\n{\n    return a + 1;\n}\n",
    "tests/sums/tst_sums.cpp": """
#include <sums/Sums.h>
#include <cstdio>
int main()
{
    std::fclose(std::fopen("left behind", "w"));
    return sum(2, 3) == 5 && isLess(1, 2) && !isLess(2, 1) && same(7) == 7 && counted(3) == 3 ? 0 : 1;
}
""",
    "tests/sums/tst_steps.cpp": "int next(int a);\nint main() { return next(3) == 4 ? 0 : 1; }\n",
}

# What the tests let pass, what is the same program, what does not compile; all others are killed.
SURVIVORS = {"return a <= b;"}
EQUIVALENT = {"return a / 1;"}
INVALID = {"constexpr int size = 5;", "constexpr int size = 0;"}
HANGING = {"++n;"}


class Procedure(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.root = Path("build/mutate/self-test").resolve()
        shutil.rmtree(cls.root, ignore_errors=True)
        for name, text in FILES.items():
            path = cls.root / "tree" / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
        subprocess.run(["git", "init", "--quiet", cls.root / "tree"], check=True)
        (cls.root / "work").mkdir()
        cls.workshop = workshop.Workshop(cls.root / "tree", cls.root / "work", 2)
        cls.worker = trial.Worker(cls.workshop, 0, trial.Killers())

    def test_tests_use_what_is_put_in_place(self):
        test = self.workshop.tests_for("sums")[0]
        self.worker.measure(test)
        self.worker.prove_replacement(test)

    def test_nothing_that_a_test_does_stays(self):
        for test in self.workshop.tests_for("sums"):
            self.worker.measure(test)
        self.assertEqual(list(self.root.rglob("left behind")), [])

    def test_a_failing_test_without_a_mutation_stops_everything(self):
        test = self.workshop.tests_for("sums")[0]
        broken = workshop.Test(test.name, ["/bin/false"], test.directory, {}, "sums")
        with self.assertRaises(workshop.WorkshopError):
            self.worker.measure(broken)

    def test_every_mutant_has_the_verdict_that_is_known(self):
        verdicts = {}
        with mock.patch.object(workshop, "LEAST_TIME_LIMIT", 1):
            for test in self.workshop.tests_for("sums"):
                test.seconds = 0.01
            for name in ("Sums.cpp", "Sums.h", "Steps.cpp"):
                file = f"src/sums/{name}"
                for mutant in mutants_of(file, FILES[file]):
                    verdicts[mutant.changed] = self.worker.attempt(mutant)
        outcomes = {outcome: {changed for changed, verdict in verdicts.items() if verdict.outcome == outcome}
                    for outcome in (trial.KILLED, trial.SURVIVED, trial.EQUIVALENT, trial.INVALID)}
        self.assertEqual(outcomes[trial.SURVIVED], SURVIVORS)
        self.assertEqual(outcomes[trial.EQUIVALENT], EQUIVALENT)
        self.assertEqual(outcomes[trial.INVALID], INVALID)
        self.assertEqual(len(verdicts), len(set().union(*outcomes.values())))
        hanging = {changed for changed, verdict in verdicts.items() if verdict.by.endswith("(time)")}
        self.assertEqual(hanging, HANGING)
        self.assertEqual(verdicts["return a - 1;"].by, "tst_steps")
        self.assertEqual(verdicts["return a - a;"].by, "tst_sums")

    def test_the_sources_are_as_before(self):
        self.worker.attempt(mutants_of("src/sums/Sums.cpp", FILES["src/sums/Sums.cpp"])[0])
        for tree in (self.workshop.source, self.root / "work" / "worker-0" / "source"):
            text = (tree / "src/sums/Sums.cpp").read_text(encoding="utf-8")
            self.assertEqual(text, FILES["src/sums/Sums.cpp"])


if __name__ == "__main__":
    unittest.main()
