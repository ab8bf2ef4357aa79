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
thread_local std::size_t allocatedBytes = 0;

} // namespace

#if defined(__GLIBC__) && !defined(J6_SANITIZER_ALLOCATES)

namespace {

void record(std::size_t size)
{
    ++allocations;
    allocatedBytes += size;
}

} // namespace

// NOLINTBEGIN(clang-diagnostic-reserved-identifier,readability-inconsistent-declaration-parameter-name): own
// names of glibc for the functions that are interposed here
// Visible in spite of our hidden default: otherwise the shared libraries keep the C library's own.
extern "C" {

void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t count, std::size_t size);
void *__libc_realloc(void *block, std::size_t size);

[[gnu::visibility("default")]] void *malloc(std::size_t size)
{
    record(size);
    return __libc_malloc(size);
}

[[gnu::visibility("default")]] void *calloc(std::size_t count, std::size_t size)
{
    record(count * size);
    return __libc_calloc(count, size);
}

[[gnu::visibility("default")]] void *realloc(void *block, std::size_t size)
{
    record(size);
    return __libc_realloc(block, size);
}

} // extern "C"
// NOLINTEND(clang-diagnostic-reserved-identifier,readability-inconsistent-declaration-parameter-name)

#elif defined(J6_SANITIZER_ALLOCATES)

// The sanitizers tell of each block of their own allocator. GCC has the function without a header for it.
// NOLINTNEXTLINE(clang-diagnostic-reserved-identifier,bugprone-reserved-identifier): a name of theirs
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*)(const volatile void *, std::size_t),
                                                         void (*)(const volatile void *));

namespace {

void record(const volatile void *, std::size_t size)
{
    ++allocations;
    allocatedBytes += size;
}

void ignore(const volatile void *) {}

const int isHooked = __sanitizer_install_malloc_and_free_hooks(record, ignore);

} // namespace

#endif

AllocationCounter::AllocationCounter() : mStart(allocations), mStartBytes(allocatedBytes) {}

long AllocationCounter::count() const
{
    return allocations - mStart;
}

std::size_t AllocationCounter::bytes() const
{
    return allocatedBytes - mStartBytes;
}

bool AllocationCounter::isAvailable()
{
    const AllocationCounter counter;
    // The call to malloc is made inside the C++ library: allocations of other libraries have to be seen.
    void *volatile block = ::operator new(1);
    ::operator delete(block);
    return counter.count() == 1;
}
