// SPDX-License-Identifier: MIT
#include "Interposition.h"

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

namespace faults {

namespace {

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): the functions of the C library have no
// other place; both are there before any constructor runs
std::atomic<Plan *> followed = nullptr;
std::array<std::atomic<bool>, 4096> isInside = {}; // by the number of an open file
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

// The function of this name that the program would have called without us: the C library's, or the one with
// which a sanitizer has replaced it.
template<typename Function>
Function *original(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

bool isBelow(const Plan &plan, const char *path)
{
    const std::size_t length = std::strlen(plan.directory.data());
    return std::strncmp(path, plan.directory.data(), length) == 0
           && (path[length] == '/' || path[length] == '\0');
}

bool concerns(int file)
{
    return file >= 0 && std::size_t(file) < isInside.size() && isInside[std::size_t(file)];
}

bool concerns(int directory, const char *path)
{
    const Plan *plan = followed;
    if (plan == nullptr || path == nullptr)
        return false;
    if (path[0] == '/')
        return isBelow(*plan, path);
    std::array<char, PATH_MAX> current = {};
    return directory == AT_FDCWD
               ? getcwd(current.data(), current.size()) != nullptr && isBelow(*plan, current.data())
               : concerns(directory);
}

bool concerns(const char *path)
{
    return concerns(AT_FDCWD, path);
}

void remember(int file, bool inside)
{
    if (file >= 0 && std::size_t(file) < isInside.size())
        isInside[std::size_t(file)] = inside;
}

bool isHit(const Fault &fault, Operation operation, int number)
{
    return fault.number > 0 && fault.operation == operation
           && (number == fault.number || (fault.persistently && number > fault.number));
}

// Counts the operation. The fault, if one hits it.
const Fault *countedFault(Operation operation)
{
    Plan *plan = followed;
    if (plan == nullptr)
        return nullptr;
    const int number = ++plan->counts[std::size_t(operation)];
    if (isHit(plan->fault, operation, number)) {
        ++plan->hits;
        return &plan->fault;
    }
    return isHit(plan->limits.always, operation, number) ? &plan->limits.always : nullptr;
}

[[noreturn]] void die()
{
    kill(getpid(), SIGKILL);
    std::abort();
}

// As another program does it: a file that is read is seldom open for writing, too.
void halve(int file)
{
    static const auto look = original<int(int, struct stat *)>("fstat");
    std::array<char, 32> path = {};
    std::snprintf(path.data(), path.size(), "/proc/self/fd/%d", file);
    struct stat status = {};
    if (look(file, &status) != 0 || !S_ISREG(status.st_mode)
        || truncate(path.data(), status.st_size / 2) != 0)
        std::abort();
}

// Does the operation as the plan says; `call` is given the share of the bytes that are to be moved. `source`:
// the file that they come from, if there is one.
template<typename Result, typename Call>
Result done(Operation operation, Result failure, const Call &call, int source = -1)
{
    constexpr int all = 1;
    constexpr int half = 2;
    const Fault *fault = countedFault(operation);
    if (fault == nullptr)
        return call(all);
    switch (fault->effect) {
    case Effect::Fail:
        if (operation == Operation::Close)
            call(all);
        errno = fault->error;
        return failure;
    case Effect::Halve:
        return call(half);
    case Effect::Shrink:
        if (source >= 0)
            halve(source);
        return call(all);
    case Effect::KillMidway:
        call(half);
        break;
    case Effect::KillAfter:
        call(all);
        break;
    case Effect::KillBefore:
        break;
    }
    die();
}

template<typename Result, typename Function, typename... Arguments>
Result perform(Operation operation, bool concerned, Result failure, Function function, Arguments... arguments)
{
    if (!concerned)
        return function(arguments...);
    return done(operation, failure, [&](int) { return function(arguments...); });
}

template<typename Function, typename... Arguments>
int opened(bool concerned, Function function, Arguments... arguments)
{
    const int file = perform(Operation::Open, concerned, -1, function, arguments...);
    remember(file, concerned);
    return file;
}

// `behind`: what the function wants behind the number of bytes.
template<typename Function, typename Bytes, typename... Arguments>
ssize_t moved(Operation operation, int file, Function function, Bytes *bytes, std::size_t count,
              Arguments... behind)
{
    const auto call = [&](int share) {
        const std::size_t part = count / std::size_t(share);
        return function(file, bytes, part == 0 ? count : part, behind...);
    };
    return concerns(file) ? done<ssize_t>(operation, -1, call, file) : call(1);
}

template<typename Entry>
Entry *listed(Entry *entry, bool concerned)
{
    const Plan *plan = followed;
    if (entry != nullptr && concerned && plan != nullptr && plan->limits.hidesTypes)
        entry->d_type = DT_UNKNOWN;
    return entry;
}

// What a test writes need not survive a power failure: to wait for the disk would take most of its time.
int synced(int file, int (*function)(int))
{
    return concerns(file) ? done(Operation::Sync, -1, [](int) { return 0; }) : function(file);
}

// Where the third argument of open() stands, if there is one.
mode_t modeOf(int flags, va_list arguments)
{
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): the caller has begun it
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

// A program that was started with a plan follows it.
void followEnvironment()
{
    // NOLINTNEXTLINE(concurrency-mt-unsafe): before main() there is one thread
    const char *path = std::getenv(planVariable);
    const int file = path == nullptr ? -1 : open(path, O_RDWR | O_CLOEXEC);
    if (file < 0)
        return;
    void *memory = mmap(nullptr, sizeof(Plan), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    close(file);
    if (memory == MAP_FAILED) // NOLINT(performance-no-int-to-ptr,cppcoreguidelines-pro-type-cstyle-cast)
        std::abort();
    follow(static_cast<Plan *>(memory));
}

[[maybe_unused]] const bool isSetUp = (followEnvironment(), true);

} // namespace

void follow(Plan *plan)
{
    for (std::atomic<bool> &inside : isInside)
        inside = false;
    followed = plan;
}

} // namespace faults

using namespace faults; // NOLINT(google-build-using-namespace): for what follows, which cannot be in it

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name,cert-dcl50-cpp): declared by the C library
// Visible in spite of our hidden default: otherwise the shared libraries keep the C library's own.
#pragma GCC visibility push(default)
extern "C" {

int open(const char *path, int flags, ...)
{
    static const auto function = original<int(const char *, int, ...)>("open");
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return opened(concerns(path), function, path, flags, mode);
}

int open64(const char *path, int flags, ...)
{
    static const auto function = original<int(const char *, int, ...)>("open64");
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return opened(concerns(path), function, path, flags, mode);
}

int openat(int directory, const char *path, int flags, ...)
{
    static const auto function = original<int(int, const char *, int, ...)>("openat");
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return opened(concerns(directory, path), function, directory, path, flags, mode);
}

int close(int file)
{
    static const auto function = original<int(int)>("close");
    const bool concerned = concerns(file);
    remember(file, false);
    return perform(Operation::Close, concerned, -1, function, file);
}

ssize_t read(int file, void *bytes, size_t count)
{
    static const auto function = original<ssize_t(int, void *, size_t)>("read");
    return moved(Operation::Read, file, function, bytes, count);
}

ssize_t pread(int file, void *bytes, size_t count, off_t position)
{
    static const auto function = original<ssize_t(int, void *, size_t, off_t)>("pread");
    return moved(Operation::Read, file, function, bytes, count, position);
}

ssize_t pread64(int file, void *bytes, size_t count, off64_t position)
{
    static const auto function = original<ssize_t(int, void *, size_t, off64_t)>("pread64");
    return moved(Operation::Read, file, function, bytes, count, position);
}

ssize_t write(int file, const void *bytes, size_t count)
{
    static const auto function = original<ssize_t(int, const void *, size_t)>("write");
    return moved(Operation::Write, file, function, bytes, count);
}

ssize_t sendfile(int target, int source, off_t *position, size_t count) noexcept
{
    static const auto function = original<ssize_t(int, int, off_t *, size_t)>("sendfile");
    const auto call = [&](int share) {
        return function(target, source, position, count / std::size_t(share));
    };
    return concerns(target) || concerns(source) ? done<ssize_t>(Operation::CopyData, -1, call, source)
                                                : call(1);
}

int ioctl(int file, unsigned long request, ...) noexcept
{
    static const auto function = original<int(int, unsigned long, ...)>("ioctl");
    va_list arguments;
    va_start(arguments, request);
    void *argument = va_arg(arguments, void *);
    va_end(arguments);
    if (!concerns(file))
        return function(file, request, argument);
    // The one that shares the data of two files has the source as a number.
    const int source = request == FICLONE ? static_cast<int>(reinterpret_cast<std::intptr_t>(argument)) : -1;
    const auto call = [&](int) { return function(file, request, argument); };
    return done(Operation::CopyData, -1, call, source);
}

int fsync(int file)
{
    static const auto function = original<int(int)>("fsync");
    return synced(file, function);
}

int fdatasync(int file)
{
    static const auto function = original<int(int)>("fdatasync");
    return synced(file, function);
}

int ftruncate(int file, off_t size) noexcept
{
    static const auto function = original<int(int, off_t)>("ftruncate");
    return perform(Operation::Resize, concerns(file), -1, function, file, size);
}

int ftruncate64(int file, off64_t size) noexcept
{
    static const auto function = original<int(int, off64_t)>("ftruncate64");
    return perform(Operation::Resize, concerns(file), -1, function, file, size);
}

off_t lseek(int file, off_t position, int from) noexcept
{
    static const auto function = original<off_t(int, off_t, int)>("lseek");
    return perform(Operation::Seek, concerns(file), off_t(-1), function, file, position, from);
}

off64_t lseek64(int file, off64_t position, int from) noexcept
{
    static const auto function = original<off64_t(int, off64_t, int)>("lseek64");
    return perform(Operation::Seek, concerns(file), off64_t(-1), function, file, position, from);
}

int rename(const char *from, const char *to) noexcept
{
    static const auto function = original<int(const char *, const char *)>("rename");
    return perform(Operation::Rename, concerns(from) || concerns(to), -1, function, from, to);
}

int renameat(int fromDirectory, const char *from, int toDirectory, const char *to) noexcept
{
    static const auto function = original<int(int, const char *, int, const char *)>("renameat");
    return perform(Operation::Rename, concerns(fromDirectory, from) || concerns(toDirectory, to), -1,
                   function, fromDirectory, from, toDirectory, to);
}

int renameat2(int fromDirectory, const char *from, int toDirectory, const char *to, unsigned flags) noexcept
{
    static const auto function = original<int(int, const char *, int, const char *, unsigned)>("renameat2");
    return perform(Operation::Rename, concerns(fromDirectory, from) || concerns(toDirectory, to), -1,
                   function, fromDirectory, from, toDirectory, to, flags);
}

int link(const char *from, const char *to) noexcept
{
    static const auto function = original<int(const char *, const char *)>("link");
    return perform(Operation::Link, concerns(to), -1, function, from, to);
}

int linkat(int fromDirectory, const char *from, int toDirectory, const char *to, int flags) noexcept
{
    static const auto function = original<int(int, const char *, int, const char *, int)>("linkat");
    return perform(Operation::Link, concerns(toDirectory, to), -1, function, fromDirectory, from, toDirectory,
                   to, flags);
}

int unlink(const char *path) noexcept
{
    static const auto function = original<int(const char *)>("unlink");
    return perform(Operation::Remove, concerns(path), -1, function, path);
}

int unlinkat(int directory, const char *path, int flags) noexcept
{
    static const auto function = original<int(int, const char *, int)>("unlinkat");
    return perform(Operation::Remove, concerns(directory, path), -1, function, directory, path, flags);
}

int rmdir(const char *path) noexcept
{
    static const auto function = original<int(const char *)>("rmdir");
    return perform(Operation::Remove, concerns(path), -1, function, path);
}

int mkdir(const char *path, mode_t mode) noexcept
{
    static const auto function = original<int(const char *, mode_t)>("mkdir");
    return perform(Operation::MakeDirectory, concerns(path), -1, function, path, mode);
}

int mkdirat(int directory, const char *path, mode_t mode) noexcept
{
    static const auto function = original<int(int, const char *, mode_t)>("mkdirat");
    return perform(Operation::MakeDirectory, concerns(directory, path), -1, function, directory, path, mode);
}

int stat(const char *path, struct stat *status) noexcept
{
    static const auto function = original<int(const char *, struct stat *)>("stat");
    return perform(Operation::LookUp, concerns(path), -1, function, path, status);
}

int stat64(const char *path, struct stat64 *status) noexcept
{
    static const auto function = original<int(const char *, struct stat64 *)>("stat64");
    return perform(Operation::LookUp, concerns(path), -1, function, path, status);
}

int lstat(const char *path, struct stat *status) noexcept
{
    static const auto function = original<int(const char *, struct stat *)>("lstat");
    return perform(Operation::LookUp, concerns(path), -1, function, path, status);
}

int lstat64(const char *path, struct stat64 *status) noexcept
{
    static const auto function = original<int(const char *, struct stat64 *)>("lstat64");
    return perform(Operation::LookUp, concerns(path), -1, function, path, status);
}

int fstat(int file, struct stat *status) noexcept
{
    static const auto function = original<int(int, struct stat *)>("fstat");
    return perform(Operation::LookUp, concerns(file), -1, function, file, status);
}

int fstat64(int file, struct stat64 *status) noexcept
{
    static const auto function = original<int(int, struct stat64 *)>("fstat64");
    return perform(Operation::LookUp, concerns(file), -1, function, file, status);
}

int fstatat(int directory, const char *path, struct stat *status, int flags) noexcept
{
    static const auto function = original<int(int, const char *, struct stat *, int)>("fstatat");
    return perform(Operation::LookUp, concerns(directory, path), -1, function, directory, path, status,
                   flags);
}

int statx(int directory, const char *path, int flags, unsigned mask, struct statx *status) noexcept
{
    static const auto function = original<int(int, const char *, int, unsigned, struct statx *)>("statx");
    const bool concerned = *path == '\0' ? concerns(directory) : concerns(directory, path);
    return perform(Operation::LookUp, concerned, -1, function, directory, path, flags, mask, status);
}

int access(const char *path, int mode) noexcept
{
    static const auto function = original<int(const char *, int)>("access");
    return perform(Operation::LookUp, concerns(path), -1, function, path, mode);
}

ssize_t readlink(const char *path, char *target, size_t size) noexcept
{
    static const auto function = original<ssize_t(const char *, char *, size_t)>("readlink");
    return perform(Operation::LookUp, concerns(path), ssize_t(-1), function, path, target, size);
}

char *realpath(const char *path, char *resolved) noexcept
{
    static const auto function = original<char *(const char *, char *)>("realpath");
    return perform(Operation::LookUp, concerns(path), static_cast<char *>(nullptr), function, path, resolved);
}

int chmod(const char *path, mode_t mode) noexcept
{
    static const auto function = original<int(const char *, mode_t)>("chmod");
    return perform(Operation::SetMode, concerns(path), -1, function, path, mode);
}

int fchmod(int file, mode_t mode) noexcept
{
    static const auto function = original<int(int, mode_t)>("fchmod");
    return perform(Operation::SetMode, concerns(file), -1, function, file, mode);
}

int futimens(int file, const struct timespec *times) noexcept
{
    static const auto function = original<int(int, const struct timespec *)>("futimens");
    return perform(Operation::SetTimes, concerns(file), -1, function, file, times);
}

DIR *opendir(const char *path)
{
    static const auto function = original<DIR *(const char *)>("opendir");
    const bool concerned = concerns(path);
    DIR *list = perform(Operation::List, concerned, static_cast<DIR *>(nullptr), function, path);
    remember(list == nullptr ? -1 : dirfd(list), concerned);
    return list;
}

struct dirent *readdir(DIR *list)
{
    static const auto function = original<struct dirent *(DIR *)>("readdir");
    const bool concerned = concerns(dirfd(list));
    return listed(perform(Operation::List, concerned, static_cast<struct dirent *>(nullptr), function, list),
                  concerned);
}

struct dirent64 *readdir64(DIR *list)
{
    static const auto function = original<struct dirent64 *(DIR *)>("readdir64");
    const bool concerned = concerns(dirfd(list));
    return listed(
        perform(Operation::List, concerned, static_cast<struct dirent64 *>(nullptr), function, list),
        concerned);
}

int closedir(DIR *list)
{
    static const auto function = original<int(DIR *)>("closedir");
    const int file = dirfd(list);
    const bool concerned = concerns(file);
    remember(file, false);
    return perform(Operation::Close, concerned, -1, function, list);
}

int flock(int file, int operation) noexcept
{
    static const auto function = original<int(int, int)>("flock");
    return perform(Operation::Lock, concerns(file), -1, function, file, operation);
}

} // extern "C"
#pragma GCC visibility pop
// NOLINTEND(readability-inconsistent-declaration-parameter-name,cert-dcl50-cpp)
