// SPDX-License-Identifier: MIT
// The trace on a disk that fails: the program goes on, nothing is told, and what is traced is whole lines.
#include <CNewDelTrace.h>

#include <FaultSweep.h>
#include <LoggedTest.h>
#include <ScopedCurrentDirectory.h>

#include <QTest>

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

// Whether all lines stand in the trace of a disk that does not fail, in the same order.
bool isPartOf(const QByteArray &lines, const QByteArray &whole)
{
    int from = 0;
    const QList<QByteArray> list = lines.split('\n');
    return (lines.isEmpty() || lines.endsWith('\n'))
           && std::all_of(list.begin(), list.end(), [&](const QByteArray &line) {
                  const int place = whole.indexOf(line + (line.isEmpty() ? "" : "\n"), from);
                  from = place + line.size();
                  return place >= 0;
              });
}

} // namespace

class tst_trace_faults : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void traceIsWholeLines();
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
        return isPartOf(lines, whole) ? QString() : QStringLiteral("traced: ") + QString::fromUtf8(lines);
    };
    const FaultSweep sweep(trial);
    QVERIFY2(sweep.flaws().isEmpty(), qPrintable(sweep.report()));
    QCOMPARE(whole.count('\n'), recordCount);
    QCOMPARE(sweep.unused({Operation::Open, Operation::Write, Operation::Close}), QStringList());
}

QTEST_APPLESS_MAIN(tst_trace_faults)
#include "tst_trace_faults.moc"
