// SPDX-License-Identifier: MIT
// Qt's libraries are not instrumented, so a thread sanitizer does not see what happens within QMutex::lock()
// and QMutex::unlock() and takes all that they protect for a race. These two stand before Qt's own: they do
// the same and tell the sanitizer that it was done.
#include <QMutex>

#include <dlfcn.h>

extern "C" {
// NOLINTNEXTLINE(clang-diagnostic-reserved-identifier): the sanitizer's names
void __tsan_acquire(void *address);
// NOLINTNEXTLINE(clang-diagnostic-reserved-identifier): likewise
void __tsan_release(void *address);
}

namespace {

using Function = void (*)(QMutex *);

Function qtFunction(const char *symbol)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, symbol));
}

} // namespace

void QMutex::lock() noexcept
{
    static const Function lockOfQt = qtFunction("_ZN6QMutex4lockEv");
    lockOfQt(this);
    __tsan_acquire(this);
}

void QMutex::unlock() noexcept
{
    static const Function unlockOfQt = qtFunction("_ZN6QMutex6unlockEv");
    __tsan_release(this);
    unlockOfQt(this);
}
