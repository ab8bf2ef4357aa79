// SPDX-License-Identifier: MIT
#ifndef ALLOCATIONCOUNTER_H
#define ALLOCATIONCOUNTER_H

// The heap allocations (malloc, calloc, realloc and thus operator new) that this thread made since
// construction, in any library of the process. A program that links this has the C library's allocator
// interposed.
class AllocationCounter
{
public:
    AllocationCounter();

    long count() const;

    // Whether allocations are seen at all: not under a sanitizer or valgrind, which interpose their own
    // allocator, and not with another C library than glibc. Ask before trusting a count of 0.
    static bool isAvailable();

private:
    long mStart;
};

#endif // ALLOCATIONCOUNTER_H
