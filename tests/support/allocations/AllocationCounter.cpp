// SPDX-License-Identifier: MIT
#include "AllocationCounter.h"

#include <cstddef>
#include <new>

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

// The names are glibc's own, of the functions that are interposed here.
// NOLINTBEGIN(clang-diagnostic-reserved-identifier,readability-inconsistent-declaration-parameter-name)
extern "C" {

void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t count, std::size_t size);
void *__libc_realloc(void *block, std::size_t size);

[[gnu::visibility("default")]] void *malloc(std::size_t size)
{
    ++allocations;
    return __libc_malloc(size);
}

[[gnu::visibility("default")]] void *calloc(std::size_t count, std::size_t size)
{
    ++allocations;
    return __libc_calloc(count, size);
}

[[gnu::visibility("default")]] void *realloc(void *block, std::size_t size)
{
    ++allocations;
    return __libc_realloc(block, size);
}

} // extern "C"
// NOLINTEND(clang-diagnostic-reserved-identifier,readability-inconsistent-declaration-parameter-name)

#endif

AllocationCounter::AllocationCounter() : mStart(allocations) {}

long AllocationCounter::count() const
{
    return allocations - mStart;
}

bool AllocationCounter::isAvailable()
{
    const AllocationCounter counter;
    // The standard library's: what counts is that allocations of libraries are seen.
    void *const block = ::operator new(1);
    ::operator delete(block);
    return counter.count() == 1;
}
