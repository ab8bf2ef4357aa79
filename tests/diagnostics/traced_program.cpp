// SPDX-License-Identifier: MIT
// traced_program WORD...: does to the trace of its process what the words say, one after the other. It prints
// its thread's number first.
#include <CNewDelTrace.h>

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTextCodec>
#include <QThread>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <optional>
#include <thread>
#include <vector>

namespace {

std::atomic<bool> areHooksOn{false};

constexpr int hookLine = 7;

// Traces its own life when the environment says so: before main() and after it.
class StaticUser
{
public:
    StaticUser()
    {
        if (qEnvironmentVariableIsSet("TRACE_STATIC_OBJECT"))
            GlobalNewDelFile.logNew(nullptr, "static.cpp", 1, "constructor", 1);
    }
    ~StaticUser()
    {
        if (qEnvironmentVariableIsSet("TRACE_STATIC_OBJECT"))
            GlobalNewDelFile.logDel(nullptr, "static.cpp", "destructor", 2);
    }
};

// Made before any other object of the program, and destroyed after them; in a static build, too, the trace is
// there earlier and later.
#if defined(__GNUC__) && !defined(__APPLE__)
[[gnu::init_priority(102)]]
#endif
// clazy:excludeall=non-pod-global-static -- the subject
StaticUser staticUser;

void *pointer(const char *hexDigits)
{
    // NOLINTNEXTLINE(performance-no-int-to-ptr): any address, to be written and nothing else
    return reinterpret_cast<void *>(QByteArray(hexDigits).toULongLong(nullptr, 16));
}

int number(const char *digits)
{
    return QByteArray(digits).toInt();
}

// A text in hexadecimal, "-" for the null pointer.
class Name
{
public:
    explicit Name(const char *word) : mIsNull(*word == '-'), mText(QByteArray::fromHex(word)) {}

    const char *characters() const { return mIsNull ? nullptr : mText.constData(); }

private:
    bool mIsNull;
    QByteArray mText;
};

void traceFromThread(int thread, int records)
{
    const QByteArray name = "thread" + QByteArray::number(thread);
    for (int i = 0; i < records; ++i) {
        GlobalNewDelFile.logNew(pointer("1000"), "threads.cpp", i, name.constData(), thread);
        GlobalNewDelFile.logDel(pointer("1000"), "threads.cpp", name.constData(), i);
    }
}

// All threads are alive until the last one has begun, so that no two have the same number.
void traceFromThreads(int count, int records)
{
    std::atomic<int> waiting{0};
    std::vector<std::thread> threads;
    threads.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        threads.emplace_back([&waiting, count, records, i] {
            ++waiting;
            while (waiting < count)
                std::this_thread::yield();
            traceFromThread(i, records);
        });
    }
    for (std::thread &thread : threads)
        thread.join();
}

// The operators are called as functions: of a new expression and the delete expression for it a compiler may
// leave out both.
void traceReplacedOperators()
{
    areHooksOn = true;
    void *const kept = operator new(sizeof(int));
    operator delete(operator new(sizeof(int)));
    areHooksOn = false;
    operator delete(kept);
}

int openFiles()
{
    return QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::Files | QDir::System).size();
}

void initRepeatedly(int count)
{
    GlobalNewDelFile._Init();
    const int before = openFiles();
    for (int i = 0; i < count; ++i)
        GlobalNewDelFile._Init();
    std::printf("%d more open files\n", openFiles() - before);
}

void traceWithAnObjectOfItsOwn()
{
    CNewDelTrace trace;
    trace.logNew(pointer("2a"), "local.cpp", 1, "local", 2);
}

void traceWithAnObjectOfItsOwnAndReplacedOperators()
{
    areHooksOn = true;
    traceWithAnObjectOfItsOwn();
    areHooksOn = false;
}

void waitForTheEndOfInput()
{
    std::printf("waiting\n");
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
}

// Does what the word says with those behind it, and returns how many these are.
int run(const QByteArray &word, char **arguments)
{
    if (word == "new") {
        GlobalNewDelFile.logNew(pointer(arguments[0]), Name(arguments[1]).characters(), number(arguments[2]),
                                Name(arguments[3]).characters(), number(arguments[4]));
        return 5;
    }
    if (word == "del") {
        GlobalNewDelFile.logDel(pointer(arguments[0]), Name(arguments[1]).characters(),
                                Name(arguments[2]).characters(), number(arguments[3]));
        return 4;
    }
    if (word == "threads") {
        traceFromThreads(number(arguments[0]), number(arguments[1]));
        return 2;
    }
    if (word == "init-repeatedly") {
        initRepeatedly(number(arguments[0]));
        return 1;
    }
    if (word == "remove-directory") {
        QDir().rmdir(QString::fromLocal8Bit(arguments[0]));
        return 1;
    }
    if (word == "replace-by-directory") {
        QFile::remove(QString::fromLocal8Bit(arguments[0]));
        QDir().mkdir(QString::fromLocal8Bit(arguments[0]));
        return 1;
    }
    if (word == "init")
        GlobalNewDelFile._Init();
    else if (word == "latin-1-locale")
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1"));
    else if (word == "operators")
        traceReplacedOperators();
    else if (word == "own-object")
        traceWithAnObjectOfItsOwn();
    else if (word == "operators-own-object")
        traceWithAnObjectOfItsOwnAndReplacedOperators();
    else if (word == "wait")
        waitForTheEndOfInput();
    else if (word == "end-at-once")
        std::_Exit(0);
    else if (word != "no-application")
        std::exit(2);
    return 0;
}

} // namespace

// NOLINTBEGIN(cppcoreguidelines-no-malloc): operators that are replaced stand on the C library's allocator
// Not inlined: where only one of a pair is, GCC takes them for two that do not belong together.
[[gnu::noinline]] void *operator new(std::size_t size)
{
    void *const block = std::malloc(size);
    if (block == nullptr)
        std::abort();
    if (areHooksOn)
        GlobalNewDelFile.logNew(block, "hook", hookLine, "operator new", static_cast<int>(size));
    return block;
}

[[gnu::noinline]] void operator delete(void *block) noexcept
{
    if (areHooksOn)
        GlobalNewDelFile.logDel(block, "hook", "operator delete", hookLine);
    std::free(block);
}

void operator delete(void *block, std::size_t) noexcept
{
    operator delete(block);
}
// NOLINTEND(cppcoreguidelines-no-malloc)

int main(int argc, char *argv[])
{
    std::optional<QCoreApplication> application;
    if (argc < 2 || qstrcmp(argv[1], "no-application") != 0)
        application.emplace(argc, argv);
    std::printf("%llx\n",
                static_cast<unsigned long long>(reinterpret_cast<quintptr>(QThread::currentThreadId())));
    for (int i = 1; i < argc; ++i) {
        const QByteArray word = argv[i];
        i += run(word, argv + i + 1);
    }
    return 0;
}
