// SPDX-License-Identifier: MIT
// The command "settings" when the disk fails on which its temporary copy lies, and no other: it either does
// all that it is to do, or ends with the exit code of a failure and one line, and the file is what it was.
#include "FaultyCall.h"

#include <LoggedTest.h>
#include <OwnMounts.h>
#include <ScopedVariable.h>

#include <QSet>
#include <QTest>
#include <QTextCodec>

#include <algorithm>
#include <array>

using faults::Fault;
using faults::FaultSweep;
using faults::Operation;
using faults::Trial;
using ToolCall::Outcome;

namespace {

constexpr qint64 diskSize = 262144; // 64 pages

// More than is read or written in one piece.
Files filesBefore()
{
    return {{QStringLiteral("tool.ini"), "[Drive]\naddress=0x0000002a\nlist=a, b\nnote="
                                             + QByteArray(20000, 'x') + "\n\n[Other]\nname=\"Z axis, 2\"\n"}};
}

constexpr std::array<FaultyCall, 3> calls = {{
    {"read a setting", "settings file=DIR/tool.ini section=Other key=name", ""},
    {"write a setting", "settings file=DIR/tool.ini section=Drive key=address value=43", "tool.ini"},
    {"write the first setting", "settings file=DIR/new.ini section=Drive key=address value=43", "new.ini"},
}};

const char *const noCopy = "no temporary copy of it: ";
const char *const notWritten = "its temporary copy cannot be written\n";

// What a fault of the copy may be called.
const std::array<const char *, 5> reasons = {{
    noCopy,
    notWritten,
    "is no settings file in INI form\n",
    "cannot be read to its end: ",
    "its temporary copy: ",
}};

// What cannot be found or removed stays.
bool mayLeave(Operation operation)
{
    return operation == Operation::Remove || operation == Operation::List || operation == Operation::LookUp;
}

// What Qt logs may stand before the message, or alone.
QByteArray withoutLog(const QByteArray &error)
{
    QByteArray rest;
    const QByteArrayList lines = error.split('\n');
    for (const QByteArray &line : lines) {
        if (!line.isEmpty() && !line.startsWith("QFile::at: Cannot set file position ")
            && !line.startsWith("Could not remove our own lock file ")
            && !line.startsWith("setNativeLocks failed: ")
            && !line.startsWith("QTemporaryDir: Unable to remove "))
            rest += line + '\n';
    }
    return rest;
}

} // namespace

class tst_settings_copy_faults : public LoggedTest
{
    Q_OBJECT

public:
    explicit tst_settings_copy_faults(bool mayMount) : mMayMount(mayMount) {}

private Q_SLOTS:
    void initTestCase();
    void everyFaultIsReported_data() { addCalls(); }
    void everyFaultIsReported();
    void everyDeathLeavesTheFile_data() { addCalls(); }
    void everyDeathLeavesTheFile();
    void fullDiskIsReported_data() { addCalls(); }
    void fullDiskIsReported();

private:
    static void addCalls();
    // Of the file to be read or written, which lies elsewhere.
    void call(const FaultyCall &call, const FileTree &copies);
    // Of that call, which has to stay; what a flaw is comes later.
    Trial trialOf(const FaultyCall &words);
    QString flaw();
    void takeAsExpected();
    // The reasons that there have to be: of a call that does not write, only the first.
    static QSet<QByteArray> someReasons(const FaultyCall &call);

    bool mMayMount;
    Files mExpectedFiles; // of the call that meets no fault
    Outcome mExpected;
    Files mFiles;
    Outcome mOutcome;
    QSet<QByteArray> mReasons; // that were told
};

void tst_settings_copy_faults::initTestCase()
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    if (qgetenv("LD_PRELOAD").contains("vgpreload"))
        QSKIP("hundreds of processes would take hours under valgrind");
}

void tst_settings_copy_faults::addCalls()
{
    QTest::addColumn<int>("index");
    for (std::size_t i = 0; i < calls.size(); ++i)
        QTest::newRow(calls[i].name) << int(i);
}

void tst_settings_copy_faults::call(const FaultyCall &call, const FileTree &copies)
{
    const FileTree home;
    home.file("tool.ini", filesBefore().value(QStringLiteral("tool.ini")));
    const ScopedVariable temporary("TMPDIR", QFile::encodeName(copies.path()));
    mOutcome = ToolCall::callIn(home.path(), wordsOf(call, home));
    mOutcome.error = withoutLog(mOutcome.error);
    mFiles = filesIn(home);
}

Trial tst_settings_copy_faults::trialOf(const FaultyCall &words)
{
    Trial trial;
    trial.isInChild = true;
    trial.prepare = [](const FileTree &) {};
    trial.act = [this, &words](const FileTree &tree) { call(words, tree); };
    return trial;
}

// Of the call, whether it has succeeded or failed.
QString tst_settings_copy_faults::flaw()
{
    if (mOutcome.exitCode == 0) {
        if (mOutcome.output != mExpected.output || !mOutcome.error.isEmpty())
            return QStringLiteral("another output: ") + QString::fromUtf8(mOutcome.output + mOutcome.error);
        return mFiles == mExpectedFiles ? QString() : QStringLiteral("not done");
    }
    if (mOutcome.exitCode != 2 || mOutcome.error.count('\n') != 1)
        return QStringLiteral("exit code %1: ").arg(mOutcome.exitCode) + QString::fromUtf8(mOutcome.error);
    if (!mOutcome.output.isEmpty() || mFiles != filesBefore())
        return QStringLiteral("not left alone");
    const auto reason = std::find_if(reasons.begin(), reasons.end(), [this](const char *known) {
        return mOutcome.error.contains(QByteArray(".ini: ") + known);
    });
    if (reason == reasons.end())
        return QStringLiteral("another error: ") + QString::fromUtf8(mOutcome.error);
    mReasons.insert(*reason);
    return QString();
}

void tst_settings_copy_faults::takeAsExpected()
{
    mExpected = mOutcome;
    mExpectedFiles = mFiles;
    mReasons.clear();
}

QSet<QByteArray> tst_settings_copy_faults::someReasons(const FaultyCall &call)
{
    QSet<QByteArray> some = {noCopy};
    if (*call.output != '\0')
        some.insert(notWritten);
    return some;
}

void tst_settings_copy_faults::everyFaultIsReported()
{
    QFETCH(int, index);
    const FaultyCall &words = calls[std::size_t(index)];
    Trial trial = trialOf(words);
    trial.flaw = [this](const FileTree &tree, const Fault &fault) {
        if (fault.number == 0)
            takeAsExpected();
        const QStringList left = tree.names();
        return left.isEmpty() || mayLeave(fault.operation)
                   ? flaw()
                   : QStringLiteral("left: ") + left.join(QLatin1Char(' '));
    };
    const FaultSweep sweep(trial);
    QVERIFY2(sweep.flaws().isEmpty(), qPrintable(sweep.report()));
    QCOMPARE(mExpected.exitCode, 0);
    QCOMPARE(mExpectedFiles != filesBefore(), *words.output != '\0');
    QVERIFY(mReasons.contains(someReasons(words)));
    QCOMPARE(sweep.unused({Operation::MakeDirectory, Operation::Open, Operation::Write, Operation::Read,
                           Operation::Remove}),
             QStringList());
}

void tst_settings_copy_faults::everyDeathLeavesTheFile()
{
    QFETCH(int, index);
    const FaultyCall &words = calls[std::size_t(index)];
    Trial trial = trialOf(words);
    trial.flaw = [this, &words](const FileTree &, const Fault &fault) {
        if (fault.number == 0)
            takeAsExpected();
        constexpr int killed = -1;
        if (mOutcome.exitCode != (fault.number == 0 ? 0 : killed))
            return QStringLiteral("exit code %1").arg(mOutcome.exitCode);
        mFiles.remove(QLatin1String(words.output) + QStringLiteral(".lock"));
        return mFiles == filesBefore() || mFiles == mExpectedFiles ? QString() : QStringLiteral("damaged");
    };
    const FaultSweep sweep(trial, FaultSweep::Deaths);
    QVERIFY2(sweep.flaws().isEmpty(), qPrintable(sweep.report()));
    QVERIFY(sweep.size() > 0);
}

void tst_settings_copy_faults::fullDiskIsReported()
{
    if (!mMayMount)
        QSKIP("the system does not allow the test a file system of its own");
    QFETCH(int, index);
    const FaultyCall &words = calls[std::size_t(index)];
    call(words, FileTree());
    takeAsExpected();
    constexpr int mostPages = 24;
    int done = 0;
    for (int pages = 0; pages <= mostPages; ++pages) {
        const FileTree copies;
        const faults::SmallDisk disk(copies.path(), diskSize);
        QVERIFY(disk.isMounted());
        QVERIFY(disk.leave(pages));
        call(words, copies);
        QCOMPARE(flaw(), QString());
        done += mOutcome.exitCode == 0 ? 1 : 0;
        QCOMPARE(copies.names(), nameList(".fill"));
    }
    QVERIFY(done > 0);
    QVERIFY(done <= mostPages);
    QVERIFY(mReasons.contains(someReasons(words)));
}

int main(int argc, char *argv[])
{
    tst_settings_copy_faults test(faults::enterOwnMounts());
    return QTest::qExec(&test, argc, argv);
}
#include "tst_settings_copy_faults.moc"
