// SPDX-License-Identifier: MIT
// A trace lies beside its executable, so every test puts a program into a directory of its own and runs it.
#include <CNewDelTrace.h>

#include "diagnostics/TraceFileName.h"

#include <EndedProgram.h>
#include <LineEnds.h>
#include <LoggedTest.h>

#include <QDir>
#include <QFile>
#include <QMap>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

#include <type_traits>

static_assert(std::is_same<decltype(&CNewDelTrace::logNew),
                           void (CNewDelTrace::*)(void *, const char *, int, const char *, int)>::value
                  && std::is_same<decltype(&CNewDelTrace::logDel),
                                  void (CNewDelTrace::*)(void *, const char *, const char *, int)>::value
                  && std::is_same<decltype(&CNewDelTrace::_Init), void (CNewDelTrace::*)()>::value,
              "what the hooks call");
static_assert(std::is_same<decltype(GlobalNewDelFile), CNewDelTrace>::value, "the trace of the process");
static_assert(!std::is_copy_constructible<CNewDelTrace>::value
                  && !std::is_copy_assignable<CNewDelTrace>::value,
              "two traces would write over each other");

namespace {

constexpr int timeout = 600000; // milliseconds; a checker of memory use may run between

struct Outcome
{
    bool isNormal = false;
    QByteArray thread;
    QByteArray output; // behind the line of the thread
    QByteArray error;
};

// A copy of the traced program in a directory of its own.
class Program
{
public:
    explicit Program(const QString &name = QStringLiteral("tool"))
    {
        const QString path = mDirectory.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        mPath = QFile::copy(QStringLiteral(TRACED_PROGRAM), path) ? path : QString();
        QDir(mDirectory.path()).mkdir(QStringLiteral("work"));
    }

    ~Program() { removeWithEndedProgram(mDirectory.path()); }
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;

    QString file(const char *name) const { return mDirectory.filePath(QLatin1String(name)); }
    QString path() const { return mPath; }

    void start(QProcess &process, const QStringList &words) const
    {
        process.setWorkingDirectory(file("work"));
        process.start(mPath, words);
    }

    Outcome run(const QStringList &words, const char *variable = "UNUSED") const
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QLatin1String(variable), QStringLiteral("1"));
        process.setProcessEnvironment(environment);
        start(process, words);
        const bool hasEnded = process.waitForFinished(timeout);
        const QByteArray output = withPlainLineEnds(process.readAllStandardOutput());
        const int lineEnd = output.indexOf('\n');
        return {hasEnded && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0,
                output.left(lineEnd), output.mid(lineEnd + 1),
                withPlainLineEnds(process.readAllStandardError())};
    }

    // Every file below the directory but the program.
    QStringList files() const
    {
        QStringList names;
        const QDir top(mDirectory.path());
        for (const QString &directory : {QString(), QStringLiteral("work")}) {
            const QDir dir(top.filePath(directory));
            const QFileInfoList entries = dir.entryInfoList(QDir::Files | QDir::Hidden, QDir::Name);
            for (const QFileInfo &entry : entries) {
                if (entry.filePath() != mPath)
                    names += top.relativeFilePath(entry.filePath());
            }
        }
        return names;
    }

    QByteArray contents(const char *name) const
    {
        QFile trace(file(name));
        return trace.open(QIODevice::ReadOnly) ? trace.readAll() : QByteArray("(cannot be read)");
    }

private:
    QTemporaryDir mDirectory;
    QString mPath;
};

const char *const traceName = "tool_NewDelTrace.txt";

QString name(const QByteArray &text)
{
    return QString::fromLatin1(text.toHex());
}

QStringList newRecord(const char *address, const QByteArray &file, int line, const QByteArray &function,
                      int size)
{
    return {QStringLiteral("new"), QLatin1String(address), name(file),
            QString::number(line), name(function),         QString::number(size)};
}

QStringList delRecord(const char *address, const QByteArray &file, const QByteArray &function, int line)
{
    return {QStringLiteral("del"), QLatin1String(address), name(file), name(function), QString::number(line)};
}

QStringList words(const char *line)
{
    return QString::fromLatin1(line).split(QLatin1Char(' '));
}

} // namespace

class tst_allocation_trace : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void fileName_data();
    void fileName();
    void liesBesideTheProgram_data();
    void liesBesideTheProgram();

    void record_data();
    void record();
    void namesAreWrittenInUtf8WhateverTheLocale();
    void recordsFollowEachOther();
    void firstRecordMakesTheFile();
    void releaseMakesTheFile();
    void programThatTracesNothingLeavesNoFile();
    void earlierTraceIsDiscarded();
    void initAgainBeginsAnew();
    void initAgainClosesTheFileBefore();
    void initAgainThatFailsEndsTheTrace();
    void fileThatCannotBeOpenedIsNotTriedAgain();
    void everyRecordIsInTheFileAtOnce();
    void endOfTheProcessLosesNothing();
    void objectOfOnesOwnClosesItsFile();

    void linesOfThreadsAreNotMixed();
    void replacedOperatorsMayTrace();
    void openingAndClosingAreNotTraced();
    void staticObjectsMayTrace();
    void withoutAnApplicationTheTraceIsInTheCurrentDirectory();
};

void tst_allocation_trace::fileName_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("trace");

    const auto row = [](const char *title, const char *program, const char *trace) {
        QTest::newRow(title) << QString::fromLatin1(program) << QString::fromLatin1(trace);
    };
    row("extension", "/x/tool.exe", "/x/tool_NewDelTrace.txt");
    row("no extension", "/x/tool", "/x/tool_NewDelTrace.txt");
    row("two dots", "/x/tool-1.2.exe", "/x/tool-1.2_NewDelTrace.txt");
    row("dot at the end", "/x/tool.", "/x/tool_NewDelTrace.txt");
    row("dot in a directory's name only", "/x.d/tool", "/x_NewDelTrace.txt");
    row("dots in both", "/x.d/tool.exe", "/x.d/tool_NewDelTrace.txt");
    row("hidden program in a directory", "/x/.tool", "/x/_NewDelTrace.txt");
    row("nothing but a dot in front", ".tool", ".tool_NewDelTrace.txt");
    row("dot in front and another", ".tool.exe", ".tool_NewDelTrace.txt");
    row("second character", "x.exe", "x_NewDelTrace.txt");
    row("empty", "", "_NewDelTrace.txt");
    row("place marker", "/x/%1.exe", "/x/%1_NewDelTrace.txt");
}

void tst_allocation_trace::fileName()
{
    QFETCH(QString, program);
    QTEST(traceFileName(program), "trace");
}

void tst_allocation_trace::liesBesideTheProgram_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("trace");

    QTest::newRow("no extension") << "tool"
                                  << "tool_NewDelTrace.txt";
    QTest::newRow("extension") << "tool.exe"
                               << "tool_NewDelTrace.txt";
    QTest::newRow("dot in the directory's name cuts there") << "bin.d/tool"
                                                            << "bin_NewDelTrace.txt";
}

void tst_allocation_trace::liesBesideTheProgram()
{
    QFETCH(QString, program);
    QFETCH(QString, trace);
    const Program copy(program);
    QVERIFY(!copy.path().isEmpty());
    const Outcome outcome = copy.run(newRecord("2a", "axis.cpp", 12, "load", 16));
    QVERIFY2(outcome.isNormal, outcome.error.constData());
    QVERIFY2(copy.files().contains(trace), qPrintable(copy.files().join(QLatin1Char(' '))));
    QCOMPARE(copy.contents(trace.toLatin1().constData()),
             "+0000002a axis.cpp;12 load 16 Thread " + outcome.thread + '\n');
}

void tst_allocation_trace::record_data()
{
    QTest::addColumn<QStringList>("call");
    QTest::addColumn<QByteArray>("expected"); // without the thread's number

    const auto row = [](const char *title, const QStringList &call, const char *expected) {
        QTest::newRow(title) << call << QByteArray(expected);
    };
    row("allocation", newRecord("2a", "axis.cpp", 12, "load", 16), "+0000002a axis.cpp;12 load 16 Thread ");
    row("release", delRecord("2a", "axis.cpp", "unload", 34), "-0000002a axis.cpp;unload 34 Thread ");
    row("null pointer", newRecord("0", "axis.cpp", 12, "load", 16), "+00000000 axis.cpp;12 load 16 Thread ");
    row("release of a null pointer", delRecord("0", "axis.cpp", "unload", 34),
        "-00000000 axis.cpp;unload 34 Thread ");
    row("hexadecimal in lower case", newRecord("89ABCDEF", "f", 1, "g", 2), "+89abcdef f;1 g 2 Thread ");
    row("nine digits", newRecord("123456789", "f", 1, "g", 2), "+123456789 f;1 g 2 Thread ");
    row("all 64 bits", newRecord("fedcba9876543210", "f", 1, "g", 2), "+fedcba9876543210 f;1 g 2 Thread ");
    row("release of 64 bits", delRecord("fedcba9876543210", "f", "g", 1), "-fedcba9876543210 f;g 1 Thread ");
    row("null function", words("new 2a 66 1 - 2"), "+0000002a f;1  2 Thread ");
    row("null function of a release", words("del 2a 66 - 1"), "-0000002a f; 1 Thread ");
    row("null file", words("new 2a - 1 67 2"), "+0000002a ;1 g 2 Thread ");
    row("null file of a release", words("del 2a - 67 1"), "-0000002a ;g 1 Thread ");
    row("both null", words("new 2a - 1 - 2"), "+0000002a ;1  2 Thread ");
    row("both empty", newRecord("2a", "", 1, "", 2), "+0000002a ;1  2 Thread ");
    row("place markers stay", newRecord("2a", "%1 %2 %3", 1, "%4%5%6", 2),
        "+0000002a %1 %2 %3;1 %4%5%6 2 Thread ");
    row("place markers of a release stay", delRecord("2a", "%5%4", "%3%2%1", 1),
        "-0000002a %5%4;%3%2%1 1 Thread ");
    row("largest numbers", newRecord("2a", "f", 2147483647, "g", 2147483647),
        "+0000002a f;2147483647 g 2147483647 Thread ");
    row("negative numbers", newRecord("2a", "f", -1, "g", -2147483647 - 1),
        "+0000002a f;-1 g -2147483648 Thread ");
    row("release with a negative line", delRecord("2a", "f", "g", -1), "-0000002a f;g -1 Thread ");
    row("blanks and semicolons", newRecord("2a", "my file;1.cpp", 1, "void f(int)", 2),
        "+0000002a my file;1.cpp;1 void f(int) 2 Thread ");
    row("Latin-1 names, written in UTF-8",
        newRecord("2a", "\xFC.cpp", 1,
                  "gr\xF6\xDF"
                  "e",
                  2),
        "+0000002a \xC3\xBC.cpp;1 gr\xC3\xB6\xC3\x9F"
        "e 2 Thread ");
}

void tst_allocation_trace::record()
{
    QFETCH(QStringList, call);
    QFETCH(QByteArray, expected);
    const Program program;
    const Outcome outcome = program.run(call);
    QVERIFY2(outcome.isNormal, outcome.error.constData());
    QCOMPARE(outcome.error, QByteArray());
    QVERIFY(!outcome.thread.isEmpty());
    QCOMPARE(program.contents(traceName), expected + outcome.thread + '\n');
}

void tst_allocation_trace::namesAreWrittenInUtf8WhateverTheLocale()
{
    const Program program;
    const Outcome outcome = program.run(words("latin-1-locale") + delRecord("2a", "\xFC.cpp", "f", 1));
    QVERIFY2(outcome.isNormal, outcome.error.constData());
    QCOMPARE(program.contents(traceName), "-0000002a \xC3\xBC.cpp;f 1 Thread " + outcome.thread + '\n');
}

void tst_allocation_trace::recordsFollowEachOther()
{
    const Program program;
    const Outcome outcome =
        program.run(newRecord("10", "a.cpp", 1, "f", 8) + newRecord("20", "a.cpp", 2, "f", 16)
                    + delRecord("10", "b.cpp", "g", 3) + delRecord("20", "b.cpp", "g", 4));
    QVERIFY2(outcome.isNormal, outcome.error.constData());
    QByteArray expected = "+00000010 a.cpp;1 f 8 Thread T\n"
                          "+00000020 a.cpp;2 f 16 Thread T\n"
                          "-00000010 b.cpp;g 3 Thread T\n"
                          "-00000020 b.cpp;g 4 Thread T\n";
    expected.replace("Thread T", "Thread " + outcome.thread);
    QCOMPARE(program.contents(traceName), expected);
}

void tst_allocation_trace::firstRecordMakesTheFile()
{
    const Program program;
    QProcess process;
    program.start(process, words("wait new 2a 66 1 67 2"));
    QVERIFY(process.waitForReadyRead(timeout));
    while (!process.peek(1000).contains("waiting"))
        QVERIFY(process.waitForReadyRead(timeout));
    QCOMPARE(program.files(), QStringList());
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished(timeout));
    QCOMPARE(program.files(), QStringList{QLatin1String(traceName)});
}

void tst_allocation_trace::releaseMakesTheFile()
{
    const Program program;
    QVERIFY(program.run(delRecord("2a", "f", "g", 1)).isNormal);
    QCOMPARE(program.files(), QStringList{QLatin1String(traceName)});
}

void tst_allocation_trace::programThatTracesNothingLeavesNoFile()
{
    const Program program;
    const Outcome outcome = program.run({});
    QVERIFY2(outcome.isNormal, outcome.error.constData());
    QVERIFY(!outcome.thread.isEmpty());
    QCOMPARE(program.files(), QStringList());
}

void tst_allocation_trace::earlierTraceIsDiscarded()
{
    const Program program;
    QVERIFY(program.run(newRecord("1", "earlier.cpp", 1, "longer than the later one", 1)).isNormal);
    const Outcome outcome = program.run(newRecord("2", "f", 1, "g", 2));
    QVERIFY(outcome.isNormal);
    QCOMPARE(program.contents(traceName), "+00000002 f;1 g 2 Thread " + outcome.thread + '\n');
}

void tst_allocation_trace::initAgainBeginsAnew()
{
    const Program program;
    const Outcome outcome = program.run(newRecord("1", "before.cpp", 1, "f", 1) + words("init")
                                        + newRecord("2", "f", 1, "g", 2) + delRecord("2", "f", "g", 3));
    QVERIFY2(outcome.isNormal, outcome.error.constData());
    QCOMPARE(program.contents(traceName), "+00000002 f;1 g 2 Thread " + outcome.thread
                                              + "\n-00000002 f;g 3 Thread " + outcome.thread + '\n');
}

void tst_allocation_trace::initAgainClosesTheFileBefore()
{
#ifdef Q_OS_LINUX
    const Program program;
    const Outcome outcome = program.run(words("init-repeatedly 100 new 2a 66 1 67 2"));
    QVERIFY2(outcome.isNormal, outcome.error.constData());
    QCOMPARE(outcome.output, QByteArray("0 more open files\n"));
    QCOMPARE(program.contents(traceName), "+0000002a f;1 g 2 Thread " + outcome.thread + '\n');
#else
    QSKIP("Open files cannot be counted here.");
#endif
}

void tst_allocation_trace::initAgainThatFailsEndsTheTrace()
{
#ifdef Q_OS_WIN
    QSKIP("a file that is open cannot be removed here");
#endif
    const Program program;
    const QString traceFile = program.file(traceName);
    QStringList calls = newRecord("1", "f", 1, "g", 2);
    calls += {QStringLiteral("replace-by-directory"), traceFile, QStringLiteral("init")};
    const Outcome outcome = program.run(calls + newRecord("2", "f", 1, "g", 2) + delRecord("2", "f", "g", 3));
    QVERIFY2(outcome.isNormal, outcome.error.constData());
    QCOMPARE(outcome.error, QByteArray());
    QVERIFY(QFileInfo(traceFile).isDir());
    QCOMPARE(program.files(), QStringList());
}

void tst_allocation_trace::fileThatCannotBeOpenedIsNotTriedAgain()
{
    const Program program;
    const QString inTheWay = program.file(traceName);
    QStringList calls = newRecord("1", "f", 1, "g", 2);
    calls += {QStringLiteral("remove-directory"), inTheWay};
    QVERIFY(QDir().mkdir(inTheWay));
    const Outcome outcome = program.run(calls + newRecord("2", "f", 1, "g", 2) + delRecord("2", "f", "g", 3));
    QVERIFY(outcome.isNormal);
    QCOMPARE(outcome.output, QByteArray());
    QCOMPARE(outcome.error, QByteArray());
    QVERIFY(!QFileInfo::exists(inTheWay));
    QCOMPARE(program.files(), QStringList());
    // Only a call of _Init() tries once more.
    QVERIFY(QDir().mkdir(inTheWay));
    const Outcome again = program.run(calls + words("init") + newRecord("2", "f", 1, "g", 2));
    QVERIFY(again.isNormal);
    QCOMPARE(program.contents(traceName), "+00000002 f;1 g 2 Thread " + again.thread + '\n');
}

void tst_allocation_trace::everyRecordIsInTheFileAtOnce()
{
    const Program program;
    QProcess process;
    program.start(process, words("new 2a 66 1 67 2 wait"));
    QByteArray output;
    while (!output.contains("waiting")) {
        QVERIFY(process.waitForReadyRead(timeout));
        output += process.readAllStandardOutput();
    }
    const QByteArray contents = program.contents(traceName);
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished(timeout));
    QCOMPARE(contents, "+0000002a f;1 g 2 Thread " + output.left(output.indexOf('\n')).trimmed() + '\n');
}

void tst_allocation_trace::endOfTheProcessLosesNothing()
{
    const Program program;
    QVERIFY(program.run(newRecord("1", "f", 1, "g", 2) + delRecord("1", "f", "g", 3) + words("end-at-once"))
                .isNormal);
    QCOMPARE(program.contents(traceName).count('\n'), 2);
}

void tst_allocation_trace::objectOfOnesOwnClosesItsFile()
{
    const Program program;
    const Outcome outcome = program.run(words("own-object own-object"));
    QVERIFY2(outcome.isNormal, outcome.error.constData());
    // The second one discards what the first one wrote.
    QCOMPARE(program.contents(traceName), "+0000002a local.cpp;1 local 2 Thread " + outcome.thread + '\n');
}

void tst_allocation_trace::linesOfThreadsAreNotMixed()
{
    constexpr int threads = 8;
    constexpr int records = 200;
    const Program program;
    const Outcome outcome = program.run(words("threads 8 200"));
    QVERIFY2(outcome.isNormal, outcome.error.constData());

    const QList<QByteArray> lines = program.contents(traceName).split('\n');
    QCOMPARE(lines.size(), threads * records * 2 + 1);
    QCOMPARE(lines.count(QByteArray()), 1);
    const QRegularExpression form(
        QStringLiteral("\\A(?:\\+00001000 threads\\.cpp;(\\d+) thread(\\d) (\\d) Thread ([1-9a-f][0-9a-f]*)"
                       "|-00001000 threads\\.cpp;thread(\\d) (\\d+) Thread ([1-9a-f][0-9a-f]*))\\z"));
    QMap<QString, int> counts;
    QMap<QString, QString> numberOf;
    for (const QByteArray &line : lines) {
        if (line.isEmpty())
            continue;
        const QRegularExpressionMatch match = form.match(QString::fromLatin1(line));
        QVERIFY2(match.hasMatch(), line.constData());
        const bool isNew = line.startsWith('+');
        const QString thread = match.captured(isNew ? 2 : 5);
        // Each thread's own records are in their order: +0 -0 +1 -1 ...
        const int count = counts[thread]++;
        QCOMPARE(isNew, count % 2 == 0);
        QCOMPARE(match.captured(isNew ? 1 : 6).toInt(), count / 2);
        const QString number = match.captured(isNew ? 4 : 7);
        QCOMPARE(numberOf.value(thread, number), number);
        numberOf.insert(thread, number);
    }
    QCOMPARE(counts.size(), threads);
    const QStringList numbers = numberOf.values();
    QCOMPARE(QSet<QString>(numbers.begin(), numbers.end()).size(), threads);
}

// The operators trace every allocation, those of the trace itself as well: neither an endless descent nor a
// thread that waits for itself.
void tst_allocation_trace::replacedOperatorsMayTrace()
{
    if (qgetenv("LD_PRELOAD").contains("vgpreload"))
        QSKIP("valgrind puts its own operators in the place of the program's");
    const Program program;
    const Outcome outcome = program.run(words("operators"));
    QVERIFY2(outcome.isNormal, outcome.error.constData());
    const QList<QByteArray> lines = program.contents(traceName).split('\n');
    QCOMPARE(lines.size(), 3 + 1);
    const QByteArray ending = " Thread " + outcome.thread;
    QVERIFY2(lines[0].endsWith(" hook;7 operator new 4" + ending), lines[0].constData());
    QVERIFY2(lines[1].endsWith(" hook;7 operator new 4" + ending), lines[1].constData());
    QCOMPARE(lines[2], '-' + lines[1].mid(1, lines[1].indexOf(' ') - 1) + " hook;operator delete 7" + ending);
}

// A record that the process's own trace made of them would be in the same file.
void tst_allocation_trace::openingAndClosingAreNotTraced()
{
    const Program program;
    const Outcome outcome = program.run(words("operators-own-object"));
    QVERIFY2(outcome.isNormal, outcome.error.constData());
    QCOMPARE(program.contents(traceName), "+0000002a local.cpp;1 local 2 Thread " + outcome.thread + '\n');
}

void tst_allocation_trace::staticObjectsMayTrace()
{
    const Program program;
    const Outcome outcome = program.run(newRecord("2a", "f", 1, "g", 2), "TRACE_STATIC_OBJECT");
    QVERIFY2(outcome.isNormal, outcome.error.constData());
    QCOMPARE(outcome.error, QByteArray());
    // Before main() there is no application that knows the program's path; the trace stays where it began.
    QCOMPARE(program.files(), QStringList{QStringLiteral("work/_NewDelTrace.txt")});
    QByteArray expected = "+00000000 static.cpp;1 constructor 1 Thread T\n"
                          "+0000002a f;1 g 2 Thread T\n"
                          "-00000000 static.cpp;destructor 2 Thread T\n";
    expected.replace("Thread T", "Thread " + outcome.thread);
    QCOMPARE(program.contents("work/_NewDelTrace.txt"), expected);
}

void tst_allocation_trace::withoutAnApplicationTheTraceIsInTheCurrentDirectory()
{
    const Program program;
    const Outcome outcome = program.run(words("no-application new 2a 66 1 67 2"));
    QVERIFY2(outcome.isNormal, outcome.error.constData());
    // Nor does Qt say anything about it.
    QCOMPARE(outcome.error, QByteArray());
    QCOMPARE(program.files(), QStringList{QStringLiteral("work/_NewDelTrace.txt")});
    QCOMPARE(program.contents("work/_NewDelTrace.txt"), "+0000002a f;1 g 2 Thread " + outcome.thread + '\n');
}

QTEST_GUILESS_MAIN(tst_allocation_trace)
#include "tst_allocation_trace.moc"
