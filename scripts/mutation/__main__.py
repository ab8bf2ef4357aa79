# SPDX-License-Identifier: MIT
"""What scripts/mutate runs; its head tells how it is used."""

import argparse
import json
import os
import sys
import threading
import time
from collections import Counter
from dataclasses import asdict
from pathlib import Path

from equivalents import Equivalents, ListError, parse
from mutators import Mutant, mutants_of
from sampling import in_order, quotas
from trial import EQUIVALENT, INVALID, KILLED, SURVIVED, Killers, Verdict, Worker
from workshop import Workshop, WorkshopError

LEAST_KILLED = 0.90
DEFAULT_COUNT = 600
_HERE = Path(__file__).resolve().parent


def say(text):
    print(text, flush=True)


def describe(mutant, verdict):
    """A survivor for the reader, who finds the place by file and line."""
    return (f"{mutant.file}:{mutant.line}: {verdict.outcome} ({mutant.kind})\n"
            f"  - {mutant.original}\n  + {mutant.changed}")


class Results:
    """The verdicts of a run, kept in a file so that the next run can take up its survivors."""

    def __init__(self, path):
        self._path = path
        self.verdicts = {}  # mutant -> verdict

    def clear(self):
        self.verdicts.clear()
        self._path.write_text("", encoding="utf-8")

    def add(self, mutant, verdict):
        self.verdicts[mutant] = verdict
        with self._path.open("a", encoding="utf-8") as file:
            file.write(json.dumps({"mutant": asdict(mutant), "verdict": asdict(verdict)}) + "\n")

    def earlier(self):
        """What is in the file, one mutant and its verdict after the other."""
        lines = self._path.read_text(encoding="utf-8").splitlines() if self._path.is_file() else []
        for record in map(json.loads, lines):
            yield Mutant(**record["mutant"]), Verdict(**record["verdict"])

    def load(self, mutants):
        """The verdicts of the last run on mutants that are still there; the last word on each counts."""
        present = {mutant.identity: mutant for mutant in mutants}
        for earlier, verdict in self.earlier():
            mutant = present.get(earlier.identity)
            if mutant:
                self.verdicts[mutant] = verdict
        if not self.verdicts:
            raise WorkshopError("there is no earlier run to take up")

    def with_outcome(self, outcome):
        return [mutant for mutant, verdict in self.verdicts.items() if verdict.outcome == outcome]

    def count(self, outcome, subsystem=None):
        return sum(subsystem in (None, mutant.subsystem) for mutant in self.with_outcome(outcome))


class Run:
    """One run of several workers over queues of mutants."""

    def __init__(self, workers, equivalents, results):
        self._workers = workers
        self._equivalents = equivalents
        self._results = results
        self._lock = threading.Condition()
        self._failure = None
        self._queues = {}
        self._wanted = {}
        self._open = {}  # subsystem -> how many verdicts that count are still wanted
        self._under_way = Counter()

    def _next(self):
        """The next mutant; None when there is none. Waits for those that may turn out not to count."""
        with self._lock:
            while not self._failure:
                # All subsystems advance alike, so that a run that is stopped has seen something of each.
                for name in sorted(self._queues, key=self._share_done):
                    if self._queues[name] and self._under_way[name] < self._open[name]:
                        self._under_way[name] += 1
                        return self._queues[name].pop(0)
                if not any(self._queues[name] and self._under_way[name] for name in self._queues):
                    return None
                self._lock.wait()
            return None

    def _share_done(self, name):
        return 1 - self._open[name] / max(1, self._wanted[name])

    def _finish(self, mutant, verdict):
        with self._lock:
            self._under_way[mutant.subsystem] -= 1
            if verdict.outcome in (KILLED, SURVIVED):
                self._open[mutant.subsystem] -= 1
            self._results.add(mutant, verdict)
            if verdict.outcome == SURVIVED:
                say(describe(mutant, verdict))
            elif len(self._results.verdicts) % 25 == 0:
                say(f"... {self._results.count(KILLED)} killed, {self._results.count(SURVIVED)} survived")
            self._lock.notify_all()

    def _attempt(self, worker, mutant):
        reason = self._equivalents.reason(mutant)
        return Verdict(EQUIVALENT, reason) if reason else worker.attempt(mutant)

    def _work(self, worker):
        try:
            while mutant := self._next():
                self._finish(mutant, self._attempt(worker, mutant))
        except Exception as failure:  # pylint: disable=broad-exception-caught; told by the main thread
            with self._lock:
                self._failure = failure
                self._lock.notify_all()

    def over(self, queues, wanted):
        """Tries the mutants of each queue until so many of them count; what has its verdict is not tried."""
        verdicts = self._results.verdicts
        self._queues = {name: [m for m in queue if m not in verdicts] for name, queue in queues.items()}
        self._wanted = wanted
        self._open = {name: number - self._results.count(KILLED, name) - self._results.count(SURVIVED, name)
                      for name, number in wanted.items()}
        threads = [threading.Thread(target=self._work, args=(worker,)) for worker in self._workers]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        if self._failure:
            raise self._failure


def in_parallel(workers, items, action):
    """Calls action(worker, item) for all items."""
    remaining = list(items)
    failures = []
    lock = threading.Lock()

    def work(worker):
        while True:
            with lock:
                if not remaining or failures:
                    return
                item = remaining.pop(0)
            try:
                action(worker, item)
            except WorkshopError as failure:
                failures.append(failure)

    threads = [threading.Thread(target=work, args=(worker,)) for worker in workers]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    if failures:
        raise failures[0]


def all_mutants(workshop):
    """Of every file below src/ that is compiled here: the sources of other systems are not."""
    files = sorted({path for unit in workshop.units for path in unit.dependencies if workshop.is_ours(path)})
    return [mutant for path in files
            for mutant in mutants_of(workshop.name_of(path), path.read_text(encoding="utf-8"))]


def chosen(mutants, only):
    """Those of a subsystem or of a file (its name or its path); all without a name."""
    if not only:
        return mutants
    found = [m for m in mutants if only in (m.subsystem, m.file, Path(m.file).name)]
    if not found:
        raise WorkshopError(f"no subsystem or file with code to mutate: {only}")
    return found


def by_subsystem(mutants):
    queues = {}
    for mutant in mutants:
        queues.setdefault(mutant.subsystem, []).append(mutant)
    return queues


def print_report(results, equivalents):
    """The figures by subsystem, and what was not killed."""
    names = sorted({mutant.subsystem for mutant in results.verdicts})
    say(f"\n{'subsystem':<12} {'killed':>7} {'survived':>9} {'killed %':>9} {'equivalent':>11} "
        f"{'invalid':>8}")
    for name in [*names, None]:
        killed, survived = results.count(KILLED, name), results.count(SURVIVED, name)
        share = 100 * killed / max(1, killed + survived)
        say(f"{name or 'total':<12} {killed:>7} {survived:>9} {share:>9.1f} "
            f"{results.count(EQUIVALENT, name):>11} {results.count(INVALID, name):>8}")
    listed = [mutant for mutant in results.with_outcome(EQUIVALENT) if equivalents.reason(mutant)]
    say(f"\nequivalent as listed ({len(listed)}; the others compile to the same code):")
    for mutant in listed:
        say(f"{mutant.file}:{mutant.line}: {mutant.changed}: {equivalents.reason(mutant)}")
    say("\nsurvived:")
    for mutant in sorted(results.with_outcome(SURVIVED), key=lambda m: (m.file, m.line)):
        say(describe(mutant, results.verdicts[mutant]))


def is_good(results):
    """Whether enough of the mutants were killed."""
    killed, survived = results.count(KILLED), results.count(SURVIVED)
    return killed + survived > 0 and killed >= LEAST_KILLED * (killed + survived)


class Passed:
    """How long the tests take that have passed without a mutation, kept from run to run."""

    def __init__(self, path, library):
        self._path = path
        self._library = library
        self._seconds = json.loads(path.read_text(encoding="utf-8")) if path.is_file() else {}

    def require(self, worker, test):
        """Runs the test unless the same programs have passed before."""
        key = f"{test.name} {test.digest(self._library)}"
        if key not in self._seconds:
            worker.measure(test)
            self._seconds[key] = test.seconds
        test.seconds = self._seconds[key]

    def save(self):
        self._path.write_text(json.dumps(self._seconds, indent=1), encoding="utf-8")


def prepare(workshop, jobs, subsystems, killers):
    """Workers, after everything has passed without a mutation."""
    workers = [Worker(workshop, number, killers) for number in range(jobs)]
    tests = [test for test in workshop.tests if test.subsystem in subsystems]
    passed = Passed(workshop.directory / "passed.json", workshop.library)
    in_parallel(workers, tests, passed.require)
    passed.save()
    workers[0].prove_replacement(tests[0])
    say(f"{len(tests)} tests pass without a mutation, in {sum(test.seconds for test in tests):.0f} s")
    return workers


def check_equivalents(workers, mutants, equivalents, results):
    """Tries what the list calls equivalent; whether no test tells any of it from the original."""
    listed = [mutant for mutant in mutants if equivalents.reason(mutant)]
    results.clear()
    Run(workers, Equivalents([]), results).over(by_subsystem(listed), Counter(m.subsystem for m in listed))
    wrong = results.with_outcome(KILLED) + results.with_outcome(INVALID)
    for mutant in wrong:
        verdict = results.verdicts[mutant]
        say(f"listed as equivalent: {describe(mutant, verdict)} {verdict.by}")
    say(f"{len(listed)} listed as equivalent, {len(wrong)} wrongly")
    return not wrong


def sample(workers, mutants, equivalents, results, options):
    """Tries a sample, or the survivors of the last one."""
    queues = by_subsystem(in_order(mutants, options.seed))
    wanted = quotas({name: len(queue) for name, queue in queues.items()}, options.count)
    if options.again or options.resume:
        results.load(mutants)
    else:
        results.clear()
    if options.again:
        survivors = results.with_outcome(SURVIVED)
        for mutant in survivors:
            del results.verdicts[mutant]
        queues = by_subsystem(survivors)
        wanted = {name: len(queue) + results.count(KILLED, name) for name, queue in queues.items()}
    Run(workers, equivalents, results).over(queues, wanted)
    print_report(results, equivalents)
    return is_good(results)


def parse_arguments():
    parser = argparse.ArgumentParser(prog="scripts/mutate")
    parser.add_argument("--seed", default="1")
    parser.add_argument("--count", type=int, default=DEFAULT_COUNT)
    parser.add_argument("--only", metavar="SUBSYSTEM|FILE")
    parser.add_argument("--again", action="store_true")
    parser.add_argument("--resume", action="store_true")
    parser.add_argument("--check-equivalents", action="store_true")
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    return parser.parse_args()


def main():
    options = parse_arguments()
    start = time.monotonic()
    root = Path.cwd()
    directory = root / "build" / "mutate"
    directory.mkdir(parents=True, exist_ok=True)
    workshop = Workshop(root, directory, options.jobs)
    mutants = all_mutants(workshop)
    equivalents = Equivalents(parse((_HERE / "equivalents.txt").read_text(encoding="utf-8")))
    stale = equivalents.stale(mutants)
    for entry in stale:
        say(f"equivalents.txt: matches no mutant any more: {entry.file}: {entry.original} -> {entry.changed}")
    mutants = chosen(mutants, options.only)
    results = Results(directory / "last.jsonl")
    killers = Killers()
    for mutant, verdict in results.earlier():
        if verdict.outcome == KILLED:
            killers.add(mutant.file, verdict.by.split()[0])
    workers = prepare(workshop, options.jobs, {mutant.subsystem for mutant in mutants}, killers)
    if options.check_equivalents:
        good = check_equivalents(workers, mutants, equivalents, Results(directory / "equivalents.jsonl"))
    else:
        good = sample(workers, mutants, equivalents, results, options)
    say(f"\n{time.monotonic() - start:.0f} s")
    return 0 if good and not stale else 1


if __name__ == "__main__":
    try:
        sys.exit(main())
    except (ListError, WorkshopError) as problem:
        sys.exit(f"mutate: {problem}")
