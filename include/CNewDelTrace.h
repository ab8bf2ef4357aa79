// SPDX-License-Identifier: MIT
#ifndef CNEWDELTRACE_H
#define CNEWDELTRACE_H

#include <j6Core_export.h>

#include <QFile>
#include <QMutex>
#include <QTextStream>

#include <memory>

/**
 * @brief Writes a line for every traced allocation and release to a text file beside the executable.
 *
 * Leaks and double releases are found afterwards by pairing the lines by their address. The hooks that a tool
 * puts into its allocations and releases call logNew() and logDel() of the one trace of the process,
 * GlobalNewDelFile.
 *
 * The file is made by the first record, not at the start: a program that traces nothing leaves none. Its
 * path is that of the executable, cut at the last "." anywhere in it (also in the name of a directory)
 * unless that is its first character, with "_NewDelTrace.txt" appended; /x/tool.exe traces to
 * /x/tool_NewDelTrace.txt. An earlier trace is discarded. A file that cannot be opened is not tried again,
 * and nothing is traced and nothing reported; a line that a full disk does not take comes with a later one
 * or never. As long as there is no application object Qt knows no path: a trace that begins then, before
 * `main()` for example, goes to _NewDelTrace.txt in the current directory, and stays there.
 *
 * | line                                                | written by |
 * |-----------------------------------------------------|------------|
 * | `+ADDRESS FILE;LINE FUNCTION SIZE Thread THREAD`    | logNew()   |
 * | `-ADDRESS FILE;FUNCTION LINE Thread THREAD`         | logDel()   |
 *
 * ADDRESS is in lower-case hexadecimal, with leading zeros to at least 8 digits; THREAD is
 * QThread::currentThreadId() in lower-case hexadecimal; LINE and SIZE are decimal. The line number stands in
 * different places, which programs that read traces rely on. FILE and FUNCTION are taken as Latin-1 and are
 * written as they are; a null pointer is an empty text. The file is UTF-8 with "\n" line ends, and each line
 * is in it when the call returns.
 *
 * logNew() and logDel() may be called by any thread at any time from the loading of the library to its
 * unloading, by the constructors and destructors of static objects, too (in a static build by compilers other
 * than GCC and Clang, what is destroyed after the trace must not call them). Lines of different threads are
 * never mixed. What a trace itself allocates or releases is not traced: a call from within one of its own
 * functions on the same thread, by the hook of a replaced `operator new`, returns at once.
 *
 * @code
 * void *block = std::malloc(16);
 * GlobalNewDelFile.logNew(block, "axis.cpp", 12, "load", 16); // +5581e04c2eb0 axis.cpp;12 load 16 Thread 7f
 * GlobalNewDelFile.logDel(block, "axis.cpp", "unload", 34);   // -5581e04c2eb0 axis.cpp;unload 34 Thread 7f
 * std::free(block);
 * @endcode
 */
class J6CORE_EXPORT CNewDelTrace
{
public:
    /// @brief A closed trace; no file is touched. It needs no run time, so that the global one can be used by
    /// whatever runs before it.
    constexpr CNewDelTrace() = default;
    /// @brief Closes the file, if any. No call may follow.
    ~CNewDelTrace();
    CNewDelTrace(const CNewDelTrace &) = delete;
    CNewDelTrace &operator=(const CNewDelTrace &) = delete;

    /// @brief Opens the trace file anew, after closing the one that is open. The first record does this by
    /// itself. Not to be called while another thread may be writing a record.
    // NOLINTNEXTLINE(clang-diagnostic-reserved-identifier): the name that the hooks know
    void _Init();

    /// @brief Writes the record of an allocation of `size` bytes at `ptr`.
    void logNew(void *ptr, const char *file, int line, const char *function, int size);
    /// @brief Writes the record of the release of `ptr`.
    void logDel(void *ptr, const char *file, const char *function, int line);

private:
    bool isOpen();

    std::unique_ptr<QFile> mFile;
    std::unique_ptr<QTextStream> mStream;
    QMutex mMutex;
    bool mInitialized = false;
};

/// @brief The trace of the process. It exists from the loading of the library to its unloading.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): what the hooks write to
extern J6CORE_EXPORT CNewDelTrace GlobalNewDelFile;

#endif // CNEWDELTRACE_H
