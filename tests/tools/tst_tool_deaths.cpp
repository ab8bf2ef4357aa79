// SPDX-License-Identifier: MIT
// The command is killed, before, within or after each file operation that changes something: the file that it
// was to write is wholly the old one or wholly the new one, and the next call works.
#include "FaultyCall.h"

#include <LoggedTest.h>
#include <ScopedVariable.h>

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCodec>

using faults::Fault;
using faults::FaultSweep;
using faults::Operation;
using faults::Trial;

namespace {

void makeOlder(const QString &fileName)
{
    QFile file(fileName);
    const bool isOlder =
        file.open(QIODevice::ReadWrite)
        && file.setFileTime(QDateTime::currentDateTime().addSecs(-3600), QFileDevice::FileModificationTime);
    QVERIFY(isOlder);
}

} // namespace

class tst_tool_deaths : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void everyDeathLeavesWholeFiles_data();
    void everyDeathLeavesWholeFiles();

private:
    QString flaw(const FileTree &tree, const FaultyCall &call) const;

    InputFiles mInput;
    Files mExpectedFiles; // of the call that is not killed
    int mExitCode = 0;
};

void tst_tool_deaths::initTestCase()
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    if (qgetenv("LD_PRELOAD").contains("vgpreload"))
        QSKIP("a killed process cannot be checked by valgrind");
}

void tst_tool_deaths::everyDeathLeavesWholeFiles_data()
{
    QTest::addColumn<int>("index");
    for (std::size_t i = 0; i < faultyCalls.size(); ++i) {
        if (*faultyCalls[i].output != '\0')
            QTest::newRow(faultyCalls[i].name) << int(i);
    }
}

void tst_tool_deaths::everyDeathLeavesWholeFiles()
{
    QFETCH(int, index);
    const FaultyCall &call = faultyCalls[std::size_t(index)];
    Trial trial;
    trial.isInChild = true;
    trial.prepare = [this](const FileTree &tree) { mInput.writeTo(tree); };
    trial.act = [this, &call](const FileTree &tree) {
        // A copy of settings that a killed process leaves there.
        const QTemporaryDir scratch;
        const ScopedVariable temporary("TMPDIR", QFile::encodeName(scratch.path()));
        mExitCode = ToolCall::callIn(tree.path(), wordsOf(call, tree)).exitCode;
    };
    trial.flaw = [this, &call](const FileTree &tree, const Fault &fault) {
        constexpr int killed = -1;
        if (mExitCode != (fault.number == 0 ? 0 : killed))
            return QStringLiteral("exit code %1").arg(mExitCode);
        if (fault.number == 0)
            mExpectedFiles = filesIn(tree);
        return fault.number == 0 ? QString() : flaw(tree, call);
    };
    const FaultSweep sweep(trial, FaultSweep::Deaths);
    QVERIFY2(sweep.flaws().isEmpty(), qPrintable(sweep.report()));
    QVERIFY(sweep.size() > 0);
    QCOMPARE(sweep.unused({Operation::Open, Operation::Write, Operation::Sync}), QStringList());
}

QString tst_tool_deaths::flaw(const FileTree &tree, const FaultyCall &call) const
{
    const QString output = QString::fromLatin1(call.output);
    Files files = filesIn(tree);
    const QByteArray written = files.take(output);
    const bool isOld = written == mInput.files().value(output);
    if (!isOld && written != mExpectedFiles.value(output))
        return QStringLiteral("half a file");
    for (auto file = mInput.files().begin(); file != mInput.files().end(); ++file) {
        if (file.key() != output && files.take(file.key()) != file.value())
            return QStringLiteral("damaged: ") + file.key();
    }
    // A lock of a process that is gone is taken over; one that does not tell the process after half a minute.
    const QString lock = output + QStringLiteral(".lock");
    if (files.remove(lock) > 0)
        makeOlder(tree.path() + QLatin1Char('/') + lock);
    // Of the moment before it is renamed.
    const QStringList left = files.keys();
    if (left.size() > 1 || (!left.isEmpty() && !left.first().startsWith(output + QLatin1Char('.'))))
        return QStringLiteral("left: ") + left.join(QLatin1Char(' '));
    const ToolCall::Outcome again = ToolCall::callIn(tree.path(), wordsOf(call, tree));
    const bool isThere = !isOld && again.error.endsWith("exists already; nothing is overwritten\n");
    if (again.exitCode != 0 && !isThere)
        return QStringLiteral("the next call fails: ") + QString::fromUtf8(again.error);
    if (FileTree::contentOf(tree.path(call.output)) != mExpectedFiles.value(output))
        return QStringLiteral("the next call does not do it");
    return QString();
}

QTEST_GUILESS_MAIN(tst_tool_deaths)
#include "tst_tool_deaths.moc"
