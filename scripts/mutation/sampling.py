# SPDX-License-Identifier: MIT
"""Which mutants are tried, in which order. A change to one place leaves the choice elsewhere as it is."""

import hashlib

# However small a subsystem is, so many of its mutants are tried (if it has them).
LEAST_PER_SUBSYSTEM = 25


def _rank(seed, mutant):
    return hashlib.sha256(f"{seed}\n{mutant.identity}".encode()).hexdigest()


def in_order(mutants, seed):
    """Shuffled by the seed; the first mutant of each line comes before the second of any."""
    shuffled = sorted(mutants, key=lambda mutant: _rank(seed, mutant))
    taken_of_line = {}
    rounds = {}
    for mutant in shuffled:
        line = (mutant.file, mutant.original)
        rounds[mutant] = taken_of_line.get(line, 0)
        taken_of_line[line] = rounds[mutant] + 1
    return sorted(shuffled, key=lambda mutant: rounds[mutant])


def quotas(available, count):
    """How many of `count` each subsystem gets: the least each, the rest by the number of its mutants."""
    least = min(LEAST_PER_SUBSYSTEM, count // len(available))
    result = {name: min(least, number) for name, number in available.items()}
    rest = count - sum(result.values())
    weight = sum(available.values())
    for name, number in sorted(available.items()):
        result[name] = min(number, result[name] + max(0, rest) * number // weight)
    # What rounding has left goes to those with the most mutants.
    by_size = sorted(available, key=lambda name: (-available[name], name))
    for name in by_size * count:
        if sum(result.values()) >= count or result == available:
            break
        if result[name] < available[name]:
            result[name] += 1
    return result
