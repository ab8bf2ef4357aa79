// SPDX-License-Identifier: MIT
#ifndef ALLOCATIONCOUNTER_H
#define ALLOCATIONCOUNTER_H

#include <cstddef>

// The heap allocations (malloc, calloc, realloc and thus operator new) that this thread made since
// construction, in any library of the process. A program that links this has the C library's allocator
// interposed.
class AllocationCounter
{
public:
    AllocationCounter();

    long count() const;

    // The bytes that these allocations asked for, whether or not they were given back since: never less than
    // what was held at any time.
    std::size_t bytes() const;

    // Whether allocations are seen at all: not under valgrind, which interposes its own allocator, and not
    // with another C library than glibc. Ask before trusting a count of 0.
    static bool isAvailable();

private:
    long mStart;
    std::size_t mStartBytes;
};

// How often the action allocates when all that is built on first use exists.
template<typename Action>
long allocationsOf(const Action &action)
{
    action();
    const AllocationCounter counter;
    action();
    return counter.count();
}

#endif // ALLOCATIONCOUNTER_H
