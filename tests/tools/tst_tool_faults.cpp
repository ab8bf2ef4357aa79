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
    void filesThatShrinkAreReported_data();
    void filesThatShrinkAreReported();
    void fileThatShrinksToWholeLinesIsReported();

private:
    static void addCalls();
    Trial trialOf(const FaultyCall &call);
    QString flawOfShrinking(const FileTree &tree) const;
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

void tst_tool_faults::addCalls()
{
    QTest::addColumn<int>("index");
    for (std::size_t i = 0; i < faultyCalls.size(); ++i)
        QTest::newRow(faultyCalls[i].name) << int(i);
}

// What the call does, without what is to be found in it.
Trial tst_tool_faults::trialOf(const FaultyCall &call)
{
    mOutputName = QString::fromLatin1(call.output);
    mSync = QByteArray(call.words).startsWith("settings") ? 2 : 1;
    Trial trial;
    trial.isInChild = true;
    trial.prepare = [this](const FileTree &tree) { mInput.writeTo(tree); };
    trial.act = [this, call](const FileTree &tree) {
        mOutcome = ToolCall::callIn(tree.path(), wordsOf(call, tree));
        // The paths differ from tree to tree.
        mOutcome.output.replace(QFile::encodeName(tree.path()), "DIR");
        mOutcome.error = withoutLog(mOutcome.error);
    };
    return trial;
}

void tst_tool_faults::everyFaultIsReported_data()
{
    addCalls();
}

void tst_tool_faults::everyFaultIsReported()
{
    QFETCH(int, index);
    Trial trial = trialOf(faultyCalls[std::size_t(index)]);
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

void tst_tool_faults::filesThatShrinkAreReported_data()
{
    addCalls();
}

// What was told or written is the whole, or it is the error.
void tst_tool_faults::filesThatShrinkAreReported()
{
    QFETCH(int, index);
    Trial trial = trialOf(faultyCalls[std::size_t(index)]);
    trial.flaw = [this](const FileTree &tree, const Fault &fault) {
        if (fault.number == 0) {
            mExpected = mOutcome;
            mExpectedFiles = filesIn(tree);
        }
        return flawOfShrinking(tree);
    };
    const FaultSweep sweep(trial, FaultSweep::Shrinkings);
    QVERIFY2(sweep.flaws().isEmpty(), qPrintable(sweep.report()));
    QCOMPARE(mExpected.error, QByteArray());
    QVERIFY(sweep.size() > 0 || mOutputName == QLatin1String("new.ini"));
}

// What is left has nothing wrong in it, and would be written as all there is.
void tst_tool_faults::fileThatShrinksToWholeLinesIsReported()
{
    const QByteArray half = "[A]\nkey=1\n";
    const QByteArray whole = half + "[B]\nkey=2\n";
    Trial trial = trialOf({"", "settings file=DIR/halves.ini section=A key=key value=3", "halves.ini"});
    trial.prepare = [&whole](const FileTree &tree) { tree.file("halves.ini", whole); };
    trial.flaw = [&](const FileTree &tree, const Fault &fault) {
        const QByteArray expected = QByteArray(whole).replace("key=1", "key=3");
        const QByteArray content = tree.content("halves.ini").replace("\n\n", "\n");
        const bool isDone = mOutcome.exitCode == 0 && content == expected;
        const bool isRefused = fault.number != 0 && mOutcome.exitCode == 2 && mOutcome.error.count('\n') == 1
                               && whole.startsWith(content);
        return isDone || isRefused ? QString() : QStringLiteral("left: ") + QString::fromUtf8(content);
    };
    const FaultSweep sweep(trial, FaultSweep::Shrinkings);
    QVERIFY2(sweep.flaws().isEmpty(), qPrintable(sweep.report()));
    QVERIFY(sweep.size() > 0);
}

QString tst_tool_faults::flawOfShrinking(const FileTree &tree) const
{
    constexpr int failed = 2;
    Files files = filesIn(tree);
    if (mOutcome.exitCode == mExpected.exitCode) {
        if (mOutcome.output != mExpected.output || !mOutcome.error.isEmpty())
            return QStringLiteral("another output: ") + QString::fromUtf8(mOutcome.output + mOutcome.error);
        const bool isDone = files.value(mOutputName) == mExpectedFiles.value(mOutputName);
        return isDone ? QString() : QStringLiteral("not done");
    }
    if (mOutcome.exitCode != failed)
        return QStringLiteral("exit code %1: %2")
            .arg(mOutcome.exitCode)
            .arg(QString::fromUtf8(mOutcome.error));
    if (!mOutcome.output.isEmpty() || mOutcome.error.count('\n') != 1)
        return QStringLiteral("not told in one line: ") + QString::fromUtf8(mOutcome.output + mOutcome.error);
    // Nothing but the other program has changed a file: they are there, and the beginnings of what they were.
    for (auto file = mInput.files().begin(); file != mInput.files().end(); ++file) {
        if (!files.contains(file.key()) || !file.value().startsWith(files.take(file.key())))
            return QStringLiteral("damaged: ") + file.key();
    }
    return files.isEmpty() ? QString() : QStringLiteral("left: ") + files.firstKey();
}

QTEST_GUILESS_MAIN(tst_tool_faults)
#include "tst_tool_faults.moc"
