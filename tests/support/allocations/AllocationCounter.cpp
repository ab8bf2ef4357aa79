// SPDX-License-Identifier: MIT
#include "AllocationCounter.h"

#include <cstddef>
#include <cstdlib>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define J6_SANITIZER_ALLOCATES
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
#define J6_SANITIZER_ALLOCATES
#endif
#endif

namespace {

thread_local long allocations = 0;

} // namespace

#if defined(__GLIBC__) && !defined(J6_SANITIZER_ALLOCATES)

// NOLINTBEGIN(bugprone-reserved-identifier,readability-inconsistent-declaration-parameter-name): glibc's own
// names for the functions that are interposed here
extern "C" {

void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t count, std::size_t size);
void *__libc_realloc(void *block, std::size_t size);

void *malloc(std::size_t size)
{
    ++allocations;
    return __libc_malloc(size);
}

void *calloc(std::size_t count, std::size_t size)
{
    ++allocations;
    return __libc_calloc(count, size);
}

void *realloc(void *block, std::size_t size)
{
    ++allocations;
    return __libc_realloc(block, size);
}

} // extern "C"
// NOLINTEND(bugprone-reserved-identifier,readability-inconsistent-declaration-parameter-name)

#endif

AllocationCounter::AllocationCounter() : mStart(allocations) {}

long AllocationCounter::count() const
{
    return allocations - mStart;
}

bool AllocationCounter::isAvailable()
{
    const AllocationCounter counter;
    // NOLINTBEGIN(cppcoreguidelines-no-malloc): it is the subject
    void *volatile block = std::malloc(1);
    std::free(block);
    // NOLINTEND(cppcoreguidelines-no-malloc)
    return counter.count() == 1;
}
