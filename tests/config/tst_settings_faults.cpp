// SPDX-License-Identifier: MIT
// The settings on a disk that fails: each file operation fails once and for good.
#include <CSettingsFile.h>

#include <FaultSweep.h>
#include <LoggedTest.h>

#include <QSet>
#include <QTest>

#include <algorithm>

using faults::Fault;
using faults::FaultSweep;
using faults::Operation;
using faults::Trial;

namespace {

const char *const before = "[Common]\napplanguage=de_DE\n\n[Drive]\naddress=0x0000002a\nname=Z axis\n";
const char *const after = "[Common]\napplanguage=de_DE\n\n[Drive]\naddress=0x0000002b\nname=Z axis\n";

// Which kinds of failures damage the file, and which are not told.
struct Limits
{
    QSet<int> damaging;
    QSet<int> untold;
};

// "Drive/address=0x0000002a"
QSet<QByteArray> entriesOf(const QByteArray &ini)
{
    QSet<QByteArray> entries;
    QByteArray section;
    const QList<QByteArray> lines = ini.split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith('['))
            section = line.mid(1).chopped(1) + '/';
        else if (!line.isEmpty())
            entries.insert(section + line);
    }
    return entries;
}

// Whether a disk that cannot be written leaves this of the file, or one that cannot be read: a beginning of
// the new one, or only entries that were there or were set.
bool isDamageOf(Operation operation, const QByteArray &content)
{
    if (QByteArray(after).startsWith(content))
        return true;
    const bool isUnread = operation == Operation::Read || operation == Operation::LookUp;
    return isUnread && (entriesOf(before) + entriesOf(after)).contains(entriesOf(content));
}

QSet<int> kinds(std::initializer_list<Operation> operations)
{
    QSet<int> kinds;
    for (const Operation operation : operations)
        kinds.insert(int(operation));
    return kinds;
}

} // namespace

class tst_settings_faults : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void damageIsTold_data();
    void damageIsTold();
    void onlyWhatIsNotReadAndFullDisksDoDamage();
    void entriesAreReadOrMissing();
    void fileThatShrinksIsReadAsFarAsItGoes();
};

void tst_settings_faults::damageIsTold_data()
{
    QTest::addColumn<int>("operation");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("isAllowed");

    const auto row = [](const char *name, Operation operation, const QByteArray &content, bool isAllowed) {
        QTest::newRow(name) << int(operation) << content << isAllowed;
    };
    const QByteArray lost = "[Drive]\naddress=0x0000002b\n";
    row("nothing", Operation::Write, "", true);
    row("half of the new file", Operation::Write, QByteArray(after).left(60), true);
    row("half of the old file", Operation::Write, QByteArray(before).left(60), false);
    row("the new file and more", Operation::Write, QByteArray(after) + '\0', false);
    row("what was set, written", Operation::Write, lost, false);
    row("what was set, not read", Operation::Read, lost, true);
    row("what was set, not looked up", Operation::LookUp, lost, true);
    row("another number", Operation::Read, "[Drive]\naddress=0x00000000\n", false);
    row("another section", Operation::Read, "[Common]\nname=Z axis\n", false);
    row("half a name", Operation::Read, "[Drive]\nname=Z\n", false);
    row("no settings", Operation::Read, "\1\2\3", false);
}

void tst_settings_faults::damageIsTold()
{
    QFETCH(int, operation);
    QFETCH(QByteArray, content);
    QFETCH(bool, isAllowed);
    QCOMPARE(isDamageOf(Operation(operation), content), isAllowed);
}

// The limits of QSettings, as the header tells them: a Qt that does better is welcome.
void tst_settings_faults::onlyWhatIsNotReadAndFullDisksDoDamage()
{
    QSettings::Status status = QSettings::NoError;
    Limits limits;
    Trial trial;
    trial.prepare = [](const FileTree &tree) { tree.file("tool.ini", before); };
    trial.act = [&status](const FileTree &tree) {
        CSettingsFile settings(tree.path("tool.ini"), QSettings::IniFormat, nullptr);
        settings.setUnsignedIntValue(QStringLiteral("Drive"), QStringLiteral("address"), 43);
        settings.sync();
        status = settings.status();
    };
    trial.flaw = [&](const FileTree &tree, const Fault &fault) {
        const QByteArray content = tree.content("tool.ini");
        const bool isDamaged = content != before && content != after;
        if (isDamaged && !isDamageOf(fault.operation, content))
            return QStringLiteral("left: ") + QString::fromLatin1(content);
        if (isDamaged)
            limits.damaging.insert(int(fault.operation));
        else if (status == QSettings::NoError && content != after)
            limits.untold.insert(int(fault.operation));
        const QStringList left = tree.names();
        const bool isClean =
            left == QStringList{QStringLiteral("tool.ini")} || fault.operation == Operation::Remove;
        return isClean ? QString() : QStringLiteral("left beside it: ") + left.join(QLatin1Char(' '));
    };
    trial.allowedLog = QStringList{QStringLiteral("Could not remove our own lock file *"),
                                   QStringLiteral("setNativeLocks failed: *"),
                                   QStringLiteral("QFile::at: Cannot set file position *")};
    const FaultSweep sweep(trial);
    QVERIFY2(sweep.flaws().isEmpty(), qPrintable(sweep.report()));
    QVERIFY((limits.damaging - kinds({Operation::Read, Operation::Write, Operation::LookUp})).isEmpty());
    QCOMPARE(limits.untold, QSet<int>());
    QCOMPARE(sweep.unused({Operation::Open, Operation::Read, Operation::Write, Operation::Sync,
                           Operation::Close, Operation::Link, Operation::Rename, Operation::Remove,
                           Operation::LookUp, Operation::Lock}),
             QStringList());
}

// Nothing that is read is half of what was stored, and reading changes nothing.
void tst_settings_faults::entriesAreReadOrMissing()
{
    QString name;
    unsigned int address = 0;
    Trial trial;
    trial.prepare = [](const FileTree &tree) { tree.file("tool.ini", before); };
    trial.act = [&](const FileTree &tree) {
        const CSettingsFile settings(tree.path("tool.ini"), QSettings::IniFormat, nullptr);
        name = settings.string(QStringLiteral("Drive"), QStringLiteral("name"), QStringLiteral("default"));
        address = settings.unsignedIntValue(QStringLiteral("Drive"), QStringLiteral("address"), 7);
    };
    trial.flaw = [&](const FileTree &tree, const Fault &fault) {
        const bool isRead = name == QLatin1String("Z axis") && address == 42;
        const bool isMissing = name == QLatin1String("default") && address == 7;
        if (!isRead && (!isMissing || fault.number == 0))
            return QStringLiteral("read: ") + name + QString::number(address);
        return tree.content("tool.ini") == before ? QString() : QStringLiteral("damaged");
    };
    const FaultSweep sweep(trial);
    QVERIFY2(sweep.flaws().isEmpty(), qPrintable(sweep.report()));
    QCOMPARE(sweep.unused({Operation::Open, Operation::Read, Operation::LookUp}), QStringList());
}

// A limit of QSettings, as the header tells it: what is left of the file is read as if that were all.
void tst_settings_faults::fileThatShrinksIsReadAsFarAsItGoes()
{
    const QByteArray whole = "[Drive]\naddress=0x0000002a\nname=Z axis of the machine in hall 2\n";
    QSet<QByteArray> read;
    Trial trial;
    trial.prepare = [&whole](const FileTree &tree) { tree.file("tool.ini", whole); };
    trial.act = [&](const FileTree &tree) {
        const CSettingsFile settings(tree.path("tool.ini"), QSettings::IniFormat, nullptr);
        read.clear();
        const QStringList keys = settings.allKeys();
        for (const QString &key : keys)
            read.insert((key + QLatin1Char('=') + settings.QSettings::value(key).toString()).toUtf8());
    };
    const QSet<QByteArray> stored = entriesOf(whole);
    int halves = 0;
    trial.flaw = [&](const FileTree &, const Fault &fault) {
        const QList<QByteArray> unknown = (read - stored).values();
        if (unknown.isEmpty())
            return read == stored || fault.number != 0 ? QString() : QStringLiteral("not read");
        ++halves;
        const bool isBeginning = std::any_of(stored.begin(), stored.end(), [&](const QByteArray &entry) {
            return entry.startsWith(unknown.first());
        });
        return unknown.size() == 1 && isBeginning ? QString() : QStringLiteral("another entry");
    };
    const FaultSweep sweep(trial, FaultSweep::Shrinkings);
    QVERIFY2(sweep.flaws().isEmpty(), qPrintable(sweep.report()));
    QVERIFY(halves > 0);
}

QTEST_GUILESS_MAIN(tst_settings_faults)
#include "tst_settings_faults.moc"
