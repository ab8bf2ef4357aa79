// SPDX-License-Identifier: MIT
// The command on a disk that fails: each file operation fails once and for good. It either does all that it
// is to do, or ends with the exit code of a failure and one line, and all files are what they were.
#include "FaultyCall.h"

#include <LoggedTest.h>

#include <QTest>
#include <QTextCodec>

using faults::Fault;
using faults::FaultSweep;
using faults::Operation;
using faults::Trial;
using ToolCall::Outcome;

namespace {

// What Qt logs may stand before the message, or alone.
QByteArray withoutLog(const QByteArray &error)
{
    QByteArray rest;
    const QList<QByteArray> lines = error.split('\n');
    for (const QByteArray &line : lines) {
        if (!line.isEmpty() && line != "QFile::at: Cannot set file position 0"
            && !line.startsWith("Could not remove our own lock file ")
            && line != "setNativeLocks failed: \"No locks available\"")
            rest += line + '\n';
    }
    return rest;
}

} // namespace

class tst_tool_faults : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void everyFaultIsReported_data();
    void everyFaultIsReported();

private:
    QString flaw(const FileTree &tree, const Fault &fault) const;
    QString flawOfSuccess(const FileTree &tree, const Fault &fault) const;
    QString flawOfFailure(const FileTree &tree, const Fault &fault) const;

    InputFiles mInput;
    QString mOutputName;
    int mSync = 0;     // the number of the operation that makes sure of the output
    Outcome mExpected; // of the call that meets no fault
    Files mExpectedFiles;
    Outcome mOutcome;
};

void tst_tool_faults::initTestCase()
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    if (qgetenv("LD_PRELOAD").contains("vgpreload"))
        QSKIP("thousands of processes would take hours under valgrind");
}

void tst_tool_faults::everyFaultIsReported_data()
{
    QTest::addColumn<int>("index");
    for (std::size_t i = 0; i < faultyCalls.size(); ++i)
        QTest::newRow(faultyCalls[i].name) << int(i);
}

void tst_tool_faults::everyFaultIsReported()
{
    QFETCH(int, index);
    const FaultyCall &call = faultyCalls[std::size_t(index)];
    mOutputName = QString::fromLatin1(call.output);
    mSync = QByteArray(call.words).startsWith("settings") ? 2 : 1;
    Trial trial;
    trial.isInChild = true;
    trial.prepare = [this](const FileTree &tree) { mInput.writeTo(tree); };
    trial.act = [this, &call](const FileTree &tree) {
        mOutcome = ToolCall::callIn(tree.path(), wordsOf(call, tree));
        // The paths differ from tree to tree.
        mOutcome.output.replace(QFile::encodeName(tree.path()), "DIR");
        mOutcome.error = withoutLog(mOutcome.error);
    };
    trial.flaw = [this](const FileTree &tree, const Fault &fault) {
        if (fault.number == 0) {
            mExpected = mOutcome;
            mExpectedFiles = filesIn(tree);
        }
        return flaw(tree, fault);
    };
    const FaultSweep sweep(trial);
    QVERIFY2(sweep.flaws().isEmpty(), qPrintable(sweep.report()));
    QCOMPARE(mExpected.error, QByteArray());
    QCOMPARE(mExpectedFiles != mInput.files(), !mOutputName.isEmpty());
    QCOMPARE(sweep.unused({Operation::Open, Operation::LookUp, Operation::Close}), QStringList());
    if (mOutputName != QLatin1String("new.ini"))
        QCOMPARE(sweep.unused({Operation::Read}), QStringList());
    if (!mOutputName.isEmpty())
        QCOMPARE(sweep.unused({Operation::Write, Operation::Sync}), QStringList());
}

QString tst_tool_faults::flaw(const FileTree &tree, const Fault &fault) const
{
    constexpr int failed = 2;
    if (mOutcome.exitCode == mExpected.exitCode)
        return flawOfSuccess(tree, fault);
    if (mOutcome.exitCode == failed)
        return flawOfFailure(tree, fault);
    return QStringLiteral("exit code %1: %2").arg(mOutcome.exitCode).arg(QString::fromUtf8(mOutcome.error));
}

QString tst_tool_faults::flawOfSuccess(const FileTree &tree, const Fault &fault) const
{
    if (mOutcome.output != mExpected.output || !mOutcome.error.isEmpty())
        return QStringLiteral("another output: ") + QString::fromUtf8(mOutcome.output + mOutcome.error);
    Files files = filesIn(tree);
    if (fault.operation == Operation::Remove)
        files.remove(mOutputName + QStringLiteral(".lock")); // it stays
    if (files != mExpectedFiles)
        return QStringLiteral("not done");
    // A lock is on the disk before the file, and Qt asks once more for the file and does not listen.
    const bool isLost = fault.operation == Operation::Sync
                        && (fault.number == mSync || (fault.persistently && fault.number < mSync));
    return isLost ? QStringLiteral("not on the disk") : QString();
}

QString tst_tool_faults::flawOfFailure(const FileTree &tree, const Fault &fault) const
{
    if (mOutcome.error.count('\n') != 1 || !mOutcome.error.endsWith('\n'))
        return QStringLiteral("not told in one line: ") + QString::fromUtf8(mOutcome.error);
    // A change may be told and then fail in its last step.
    if (!mOutcome.output.isEmpty() && mOutcome.output != mExpected.output)
        return QStringLiteral("a part of the output: ") + QString::fromUtf8(mOutcome.output);
    Files files = filesIn(tree);
    for (auto file = mInput.files().begin(); file != mInput.files().end(); ++file) {
        if (files.take(file.key()) != file.value())
            return QStringLiteral("damaged: ") + file.key();
    }
    // What cannot be removed stays.
    const QStringList left = files.keys();
    if (!left.isEmpty() && fault.operation != Operation::Remove)
        return QStringLiteral("left: ") + left.join(QLatin1Char(' '));
    return QString();
}

QTEST_GUILESS_MAIN(tst_tool_faults)
#include "tst_tool_faults.moc"
