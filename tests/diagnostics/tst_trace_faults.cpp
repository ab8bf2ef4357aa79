// SPDX-License-Identifier: MIT
// The trace on a disk that fails: the program goes on, nothing is told, and what is traced is whole lines.
#include <CNewDelTrace.h>

#include <FaultSweep.h>
#include <LoggedTest.h>
#include <OtherUser.h>
#include <PrintedText.h>
#include <ScopedCurrentDirectory.h>

#include <QDir>
#include <QTest>

#include <algorithm>

#include <sys/stat.h>

using faults::Fault;
using faults::FaultSweep;
using faults::Operation;
using faults::Trial;

namespace {

// Without an application it goes there, in the current directory.
const char *const traceName = "_NewDelTrace.txt";

constexpr int recordCount = 4;

void trace()
{
    CNewDelTrace trace;
    for (int i = 0; i < recordCount; i += 2) {
        trace.logNew(nullptr, "axis.cpp", i, "load", 16);
        trace.logDel(nullptr, "axis.cpp", "unload", i);
    }
}

// What is to be traced: nothing if the file cannot be opened, what came before it if the disk fails for good;
// and all if it fails once, as the file's buffer then takes the record along with the next one.
QByteArray expectedTrace(const Fault &fault, const QByteArray &whole)
{
    const bool staysOut =
        fault.operation == Operation::Write && fault.effect == faults::Effect::Fail && fault.persistently;
    if (fault.number > 0 && fault.operation == Operation::Open)
        return QByteArray();
    if (!staysOut)
        return whole;
    const QList<QByteArray> lines = whole.split('\n');
    return lines.mid(0, fault.number - 1).join('\n') + (fault.number > 1 ? "\n" : "");
}

} // namespace

class tst_trace_faults : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void traceIsWholeLines();
    void nothingIsTracedWhereItMayNotBeWritten();
    void earlierTraceThatMayNotBeWrittenStays();

private:
    static constexpr int noWay = 2;

    static int traceAsOtherUser(const FileTree &tree);
};

void tst_trace_faults::traceIsWholeLines()
{
    QByteArray whole;
    Trial trial;
    trial.prepare = [](const FileTree &tree) { tree.file("mine.txt", "mine"); };
    trial.act = [](const FileTree &tree) {
        const ScopedCurrentDirectory current(tree.path());
        trace();
    };
    trial.flaw = [&whole](const FileTree &tree, const Fault &fault) {
        const QByteArray lines = tree.has(traceName) ? tree.content(traceName) : QByteArray();
        if (fault.number == 0)
            whole = lines;
        if (tree.content("mine.txt") != "mine")
            return QStringLiteral("damaged");
        return lines == expectedTrace(fault, whole) ? QString()
                                                    : QStringLiteral("traced: ") + QString::fromUtf8(lines);
    };
    const FaultSweep sweep(trial);
    QVERIFY2(sweep.flaws().isEmpty(), qPrintable(sweep.report()));
    QCOMPARE(whole.count('\n'), recordCount);
    QCOMPARE(sweep.unused({Operation::Open, Operation::Write, Operation::Close}), QStringList());
}

// Traces in the tree's directory as a user who may not write there; 1 if nothing is reported.
int tst_trace_faults::traceAsOtherUser(const FileTree &tree)
{
    int result = -1;
    const QByteArray printed = printedBy([&] {
        result = asOtherUser([&tree] {
            const ScopedCurrentDirectory current(tree.path());
            if (QDir::currentPath() != tree.path())
                return noWay;
            trace();
            return LoggedTest::takeLog().isEmpty() ? 1 : 0;
        });
    });
    return printed.isEmpty() ? result : 0;
}

// The program goes on, and nothing is told.
void tst_trace_faults::nothingIsTracedWhereItMayNotBeWritten()
{
    const FileTree tree;
    chmod(QFile::encodeName(tree.path()).constData(), 0555);
    const int result = traceAsOtherUser(tree);
    chmod(QFile::encodeName(tree.path()).constData(), 0755);
    if (result < 0 || result == noWay)
        QSKIP("there is no other user here, or none with a way to the temporary directory");
    QCOMPARE(result, 1);
    QCOMPARE(tree.names(), QStringList());
}

void tst_trace_faults::earlierTraceThatMayNotBeWrittenStays()
{
    const FileTree tree;
    const QString path = tree.file(traceName, "earlier");
    chmod(QFile::encodeName(path).constData(), 0444);
    chmod(QFile::encodeName(tree.path()).constData(), 0755);
    const int result = traceAsOtherUser(tree);
    if (result < 0 || result == noWay)
        QSKIP("there is no other user here, or none with a way to the temporary directory");
    QCOMPARE(result, 1);
    QCOMPARE(tree.names(), nameList(traceName));
    QCOMPARE(tree.content(traceName), QByteArray("earlier"));
}

QTEST_APPLESS_MAIN(tst_trace_faults)
#include "tst_trace_faults.moc"
