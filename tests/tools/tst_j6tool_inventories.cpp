// SPDX-License-Identifier: MIT
// Inventories and one-time codes as the users of the command make, print, merge and check them.
#include "InventoryBytes.h"
#include "ToolCall.h"

#include <LoggedTest.h>

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCodec>

using ToolCall::callIn;
using ToolCall::contentsOf;
using ToolCall::expectedOutput;
using ToolCall::Outcome;
using ToolCall::words;
using ToolCall::write;

namespace {

const QByteArray oldContents = QByteArrayLiteral("old contents");

// Counter 0 until the year 2106: a call that needs no clock of its own to be the same at every moment.
constexpr const char *steadyCode = "code|keyfile=key|step=4294967295";

} // namespace

class tst_j6tool_inventories : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void makesInventories();
    void printsTheStoredOutput_data();
    void printsTheStoredOutput();
    void unitesIntoANewFile();
    void unitesIntoTheFileItReads();
    void refusesWrongCalls_data();
    void refusesWrongCalls();
    void refusesDamagedInventories_data();
    void refusesDamagedInventories();
    void makesNothingOfABadCsv();
    void writesOverNoOtherFileThanMeant_data();
    void writesOverNoOtherFileThanMeant();
    void doesNotDependOnTheEnvironment_data();
    void doesNotDependOnTheEnvironment();
    void printsAndChecksCodes();
    void showsNoWordOfACallForACode_data();
    void showsNoWordOfACallForACode();
#ifdef __linux__
    void writesNothingThatCannotBeTold_data();
    void writesNothingThatCannotBeTold();
#endif

private:
    Outcome run(const char *line) const
    {
        return callIn(mDir.path(), words(line));
    }
    QString pathOf(const char *name) const
    {
        return mDir.filePath(QLatin1String(name));
    }

    QTemporaryDir mDir;
};

// The arguments are handed to the program as UTF-8, whatever the locale of the test is.
void tst_j6tool_inventories::initTestCase()
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    QVERIFY(mDir.isValid());
    for (const char *name : {"plant", "plant-extension"}) {
        const QString csv = QLatin1String(name) + QLatin1String(".csv");
        QVERIFY(QFile::copy(QStringLiteral(J6TOOL_EXAMPLES "/") + csv, mDir.filePath(csv)));
    }
    QCOMPARE(run("devices|new=plant.inventory|from=plant.csv").exitCode, 0);
    QCOMPARE(run("devices|from=plant-extension.csv|new=extension.inventory").exitCode, 0);
    QVERIFY(write(pathOf("text"), "row,key\n"));
    QVERIFY(write(pathOf("key"), "3132333435363738393031323334353637383930\n"));
}

void tst_j6tool_inventories::makesInventories()
{
    QVERIFY(write(pathOf("made.inventory"), oldContents));
    const Outcome outcome = run("devices|new=made.inventory|from=plant.csv");
    QCOMPARE(outcome.error, QByteArray());
    QCOMPARE(outcome.output, QByteArray("made.inventory: 43 devices with 84 sub-devices\n"));
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(contentsOf(pathOf("made.inventory")), contentsOf(pathOf("plant.inventory")));

    // To the byte: a list without a name, device 4 with all defaults, and what follows the devices.
    QVERIFY(write(pathOf("small.csv"), "row,key\ndevice,4\n"));
    QCOMPARE(run("devices|new=small.inventory|from=small.csv").exitCode, 0);
    namespace Bytes = InventoryBytes;
    QCOMPARE(contentsOf(pathOf("small.inventory")), Bytes::bytes("ffffffff 00000000") + Bytes::count(1)
                                                        + Bytes::smallestDevice(4)
                                                        + Bytes::bytes("ff ffffffff 00000000"));
}

void tst_j6tool_inventories::printsTheStoredOutput_data()
{
    QTest::addColumn<QStringList>("arguments");

    const auto row = [](const char *name, const char *line) { QTest::newRow(name) << words(line); };
    row("devices-plant", "devices|file=plant.inventory");
    row("devices-extension", "devices|format=table|file=extension.inventory");
    row("devices-extension-json", "devices|file=extension.inventory|format=json");
    row("devices-united", "devices|file=extension.inventory|unite=plant.inventory|out=united.inventory");
}

void tst_j6tool_inventories::printsTheStoredOutput()
{
    QFETCH(QStringList, arguments);
    const Outcome outcome = callIn(mDir.path(), arguments);
    QCOMPARE(outcome.error, QByteArray());
    QCOMPARE(QString::fromUtf8(outcome.output),
             QString::fromUtf8(expectedOutput(QLatin1String(QTest::currentDataTag()))));
    QCOMPARE(outcome.exitCode, 0);
}

void tst_j6tool_inventories::unitesIntoANewFile()
{
    const QByteArray plant = contentsOf(pathOf("plant.inventory"));
    QFile::remove(pathOf("new.inventory"));
    const Outcome united =
        run("devices|file=plant.inventory|unite=extension.inventory|out=new.inventory|format=json");
    QCOMPARE(united.error, QByteArray());
    QCOMPARE(united.exitCode, 0);
    QJsonParseError error = {};
    const QJsonObject printed = QJsonDocument::fromJson(united.output, &error).object();
    QCOMPARE(error.errorString(), QStringLiteral("no error occurred"));
    QCOMPARE(printed[QLatin1String("devices")].toArray().size(), 45);
    QCOMPARE(printed[QLatin1String("united")].toObject(),
             (QJsonObject{{QStringLiteral("with"), QStringLiteral("extension.inventory")},
                          {QStringLiteral("added"), QJsonArray{214, 215}},
                          {QStringLiteral("equal"), QJsonArray{}},
                          {QStringLiteral("kept"), QJsonArray{207}}}));

    // What was printed is what is read again, and the lists that were read are as they were.
    const Outcome read = run("devices|file=new.inventory|format=json");
    QJsonObject expected = printed;
    expected.remove(QStringLiteral("united"));
    QCOMPARE(QJsonDocument::fromJson(read.output).object(), expected);
    QCOMPARE(contentsOf(pathOf("plant.inventory")), plant);
    const Outcome again = run("devices|file=new.inventory|unite=plant.inventory|out=again.inventory");
    QVERIFY2(again.output.endsWith("\n\nunited with plant.inventory: 0 added, 43 equal in both, 0 kept\n"),
             again.output.constData());
    QCOMPARE(contentsOf(pathOf("again.inventory")), contentsOf(pathOf("new.inventory")));
}

void tst_j6tool_inventories::unitesIntoTheFileItReads()
{
    QVERIFY(write(pathOf("here.inventory"), contentsOf(pathOf("extension.inventory"))));
    const Outcome outcome = run("devices|file=here.inventory|unite=plant.inventory|out=here.inventory");
    QCOMPARE(outcome.error, QByteArray());
    QCOMPARE(outcome.exitCode, 0);
    QVERIFY2(outcome.output.endsWith("\nunited with plant.inventory: 42 added, 0 equal in both, 1 kept\n"
                                     "kept device 207 \"Grinder 2-1 axes (retrofit)\", dropped the other's "
                                     "\"Grinder 2-1 axes\"\n"),
             outcome.output.constData());
    QVERIFY(run("devices|file=here.inventory").output.startsWith("list     Hall 2 extension\n"));
}

void tst_j6tool_inventories::refusesWrongCalls_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("error");

    const auto row = [](const char *line, const char *error) {
        QTest::newRow(line) << words(line) << QString::fromUtf8(error);
    };
    row("devices", "j6tool: either file or new must be given");
    row("devices|from=plant.csv", "j6tool: either file or new must be given");
    row("devices|file=plant.inventory|new=x|from=plant.csv", "j6tool: either file or new must be given");
    row("devices|file=", "j6tool: file: is empty");
    row("devices|new=x|from=", "j6tool: from: is empty");
    row("devices|file=plant.inventory|format=", "j6tool: format: is empty");
    row("devices|new=x", "j6tool: new: needs the option 'from'");
    row("devices|file=plant.inventory|from=plant.csv", "j6tool: from: needs the option 'new'");
    row("devices|file=plant.inventory|unite=extension.inventory", "j6tool: unite: needs the option 'out'");
    row("devices|file=plant.inventory|out=x", "j6tool: out: needs the option 'unite'");
    row("devices|new=x|from=plant.csv|format=json", "j6tool: format: needs the option 'file'");
    row("devices|new=x|from=plant.csv|unite=plant.inventory|out=x", "j6tool: unite: needs the option 'file'");
    row("devices|file=plant.inventory|format=csv", "j6tool: format: 'csv' is none of table, json");
    row("devices|file=plant.inventory|format=xml", "j6tool: format: 'xml' is none of table, json");
    row("devices|file=plant.inventory|key=1",
        "j6tool: key: is no option of 'devices' (these are: file, unite, out, format, new, from)");
    row("devices|plant.inventory", "j6tool: 'plant.inventory' is one word too many for 'devices'");
    row("devices|file=no%1such", "no%1such: no such file");
    row("devices|file=.", ".: is a directory");
    row("devices|file=plant.inventory|unite=none|out=x", "none: no such file");
    row("devices|new=x|from=none.csv", "none.csv: no such file");
    row("devices|new=.|from=plant.csv", ".: is a directory");
    row("devices|new=none/x|from=plant.csv",
        qUtf8Printable(QStringLiteral("none/x: cannot be written: ") + ToolCall::noDirectoryText()));
    row("devices|file=plant.inventory|unite=extension.inventory|out=.", ".: is a directory");
    row("devices|file=text",
        "text: is no whole inventory: at byte 0: a text of 1919907628 bytes where 4 are left");
    row("devices|new=x|from=plant.inventory", "plant.inventory:1: record: contains a NUL character");
    row("code", "j6tool: either key or keyfile must be given");
    row("code|keyfile=none", "none: no such file");
    row("code|keyfile=key|digits=10", "j6tool: digits: '10' is no number from 1 to 9");
    row("code|keyfile=key|steps=30", "j6tool: steps: is no option of 'code' (these are: key, keyfile, step, "
                                     "digits, t0, check, tolerance)");
    row("code|keyfile=key|check=12345", "j6tool: check: the code has 5 characters where 6 are agreed");
#ifdef Q_OS_LINUX
    row("devices|file=/dev/zero", "/dev/zero: is larger than 67108864 bytes");
    row("devices|file=/dev/null",
        "/dev/null: is no whole inventory: at byte 0: the file ends where 4 more bytes belong");
    row("devices|new=/dev/null|from=plant.csv", "/dev/null: is no regular file");
    row("devices|new=x|from=/dev/zero", "/dev/zero: is larger than 33554432 bytes");
    row("code|keyfile=/dev/zero", "/dev/zero: is larger than 65536 bytes");
#endif
}

void tst_j6tool_inventories::refusesWrongCalls()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, error);
    const Outcome outcome = callIn(mDir.path(), arguments);
    QCOMPARE(QString::fromUtf8(outcome.error), error + QLatin1Char('\n'));
    QCOMPARE(outcome.output, QByteArray());
    QCOMPARE(outcome.exitCode, 2);
    QVERIFY(!QFile::exists(pathOf("x")));
}

void tst_j6tool_inventories::refusesDamagedInventories_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QString>("error");

    namespace Bytes = InventoryBytes;
    const QByteArray whole = Bytes::whole();
    QTest::newRow("short") << whole.chopped(1) << "at byte 179: the file ends where 1 more bytes belong";
    QTest::newRow("trailing byte") << whole + '\0'
                                   << "at byte 180: the inventory ends, and 1 more bytes follow";
    QTest::newRow("repeated key") << Bytes::head() + Bytes::count(2) + Bytes::smallestDevice(4).repeated(2)
                                         + Bytes::tail()
                                  << "at byte 99: device 4 for the second time";
    QTest::newRow("huge length") << Bytes::bytes("fffffffe") + whole
                                 << "at byte 0: a text of 4294967294 bytes where 180 are left";
    QTest::newRow("other byte") << QByteArray(whole).replace(45, 1, Bytes::bytes("02"))
                                << "at byte 45: another byte than an inventory has there";
}

void tst_j6tool_inventories::refusesDamagedInventories()
{
    QFETCH(QByteArray, contents);
    QFETCH(QString, error);
    QVERIFY(write(pathOf("damaged"), contents));
    QVERIFY(write(pathOf("old.inventory"), oldContents));
    const QString expected = QStringLiteral("damaged: is no whole inventory: %1\n").arg(error);
    for (const char *line : {"devices|file=damaged", "devices|file=damaged|format=json",
                             "devices|file=damaged|unite=plant.inventory|out=old.inventory",
                             "devices|file=plant.inventory|unite=damaged|out=old.inventory",
                             "devices|file=plant.inventory|unite=damaged|out=new",
                             "devices|file=damaged|unite=plant.inventory|out=damaged"}) {
        const Outcome outcome = run(line);
        QCOMPARE(QString::fromUtf8(outcome.error), expected);
        QCOMPARE(outcome.output, QByteArray());
        QCOMPARE(outcome.exitCode, 2);
    }
    QCOMPARE(contentsOf(pathOf("damaged")), contents);
    QCOMPARE(contentsOf(pathOf("old.inventory")), oldContents);
    QVERIFY(!QFile::exists(pathOf("new")));
}

void tst_j6tool_inventories::makesNothingOfABadCsv()
{
    QVERIFY(write(pathOf("bad.csv"), "row,key,port\ndevice,1,5000\ndevice,2,70000\n"));
    QVERIFY(write(pathOf("old.inventory"), oldContents));
    for (const char *line : {"devices|new=old.inventory|from=bad.csv", "devices|new=x|from=bad.csv"}) {
        const Outcome outcome = run(line);
        QCOMPARE(outcome.error, QByteArray("bad.csv:3: port: '70000' is no number from 0 to 65535\n"));
        QCOMPARE(outcome.output, QByteArray());
        QCOMPARE(outcome.exitCode, 2);
    }
    QCOMPARE(contentsOf(pathOf("old.inventory")), oldContents);
    QVERIFY(!QFile::exists(pathOf("x")));
}

void tst_j6tool_inventories::writesOverNoOtherFileThanMeant_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("error");

    QTest::newRow("the CSV") << words("devices|new=plant.csv|from=plant.csv")
                             << QByteArray("j6tool: new: is the same file as 'from'\n");
    QTest::newRow("the CSV by another name") << words("devices|new=./plant.csv|from=plant.csv")
                                             << QByteArray("j6tool: new: is the same file as 'from'\n");
    QTest::newRow("the other inventory")
        << words("devices|file=plant.inventory|unite=extension.inventory|out=extension.inventory")
        << QByteArray("j6tool: out: is the same file as 'unite'\n");
}

void tst_j6tool_inventories::writesOverNoOtherFileThanMeant()
{
    QFETCH(QStringList, arguments);
    const QByteArray csv = contentsOf(pathOf("plant.csv"));
    const QByteArray extension = contentsOf(pathOf("extension.inventory"));
    const Outcome outcome = callIn(mDir.path(), arguments);
    QTEST(outcome.error, "error");
    QCOMPARE(outcome.output, QByteArray());
    QCOMPARE(outcome.exitCode, 2);
    QCOMPARE(contentsOf(pathOf("plant.csv")), csv);
    QCOMPARE(contentsOf(pathOf("extension.inventory")), extension);
}

void tst_j6tool_inventories::doesNotDependOnTheEnvironment_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("value");

    const auto row = [](const char *name, const char *value) {
        QTest::addRow("%s=%s", name, value) << QString::fromUtf8(name) << QString::fromUtf8(value);
    };
    row("LC_ALL", "C");
    row("LC_ALL", "de_DE.UTF-8");
    row("LC_ALL", "de_DE.ISO-8859-1");
    row("TZ", "Asia/Kolkata");
    row("HOME", "");
    row("QT_HASH_SEED", "7");
}

void tst_j6tool_inventories::doesNotDependOnTheEnvironment()
{
    QFETCH(QString, name);
    QFETCH(QString, value);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("LANG"));
    environment.insert(name, value);
    const auto runThere = [&](const char *line) { return callIn(mDir.path(), words(line), environment); };
    QCOMPARE(runThere("devices|new=\u00FC.inventory|from=plant.csv").output,
             QByteArray("\u00FC.inventory: 43 devices with 84 sub-devices\n"));
    QCOMPARE(contentsOf(mDir.filePath(QStringLiteral("\u00FC.inventory"))),
             contentsOf(pathOf("plant.inventory")));
    QCOMPARE(runThere("devices|file=\u00FC.inventory").output,
             expectedOutput(QStringLiteral("devices-plant")));
    QCOMPARE(runThere(steadyCode).output, QByteArray("719613\n"));
}

void tst_j6tool_inventories::printsAndChecksCodes()
{
    const Outcome code = run(steadyCode);
    QCOMPARE(code.error, QByteArray());
    QCOMPARE(code.output, QByteArray("719613\n"));
    QCOMPARE(code.exitCode, 0);
    const Outcome byKey = run("code|key=3132333435363738393031323334353637383930|step=4294967295|digits=9");
    QCOMPARE(byKey.output, QByteArray("673719613\n"));

    const QByteArray check = QByteArray(steadyCode) + "|check=";
    const Outcome accepted = run((check + "719613").constData());
    QCOMPARE(accepted.error, QByteArray());
    QCOMPARE(accepted.output, QByteArray("accepted\n"));
    QCOMPARE(accepted.exitCode, 0);
    const Outcome refused = run((check + "719614|tolerance=0").constData());
    QCOMPARE(refused.error, QByteArray());
    QCOMPARE(refused.output,
             QByteArray("refused: the code is not that of the present step of 4294967295 s\n"));
    QCOMPARE(refused.exitCode, 1);
}

void tst_j6tool_inventories::showsNoWordOfACallForACode_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("error");

    const auto row = [](const char *line, const char *error) {
        QTest::newRow(line) << words(line) << QByteArray(error);
    };
    row("code|5EC2E7", "j6tool: a word (not shown) is one word too many for 'code'\n");
    row("code|key=|5EC2E7", "j6tool: a word (not shown) is one word too many for 'code'\n");
    row("code|key|=5EC2E7", "j6tool: a word (not shown) has no key\n");
    row("code|key=5EC2E7\uFFFD", "j6tool: a word (not shown) is not UTF-8\n");
    row("code|key=5EC2E7|key=5EC2E7", "j6tool: key: is given twice\n");
    row("code|5EC2E7==", "j6tool: a word (not shown) is no option of 'code' (these are: key, keyfile, step, "
                         "digits, t0, check, tolerance)\n");
    row("5EC2E7|code", "j6tool: a word (not shown) is no command ('j6tool help' lists them)\n");
    row("code|key=5EC2E", "j6tool: key: is not an even number of hexadecimal digits\n");
}

// The word that is wrong may be the key.
void tst_j6tool_inventories::showsNoWordOfACallForACode()
{
    QFETCH(QStringList, arguments);
    const Outcome outcome = callIn(mDir.path(), arguments);
    QTEST(outcome.error, "error");
    QCOMPARE(outcome.output, QByteArray());
    QCOMPARE(outcome.exitCode, 2);
}

#ifdef __linux__
void tst_j6tool_inventories::writesNothingThatCannotBeTold_data()
{
    QTest::addColumn<QString>("arguments");

    QTest::newRow("making") << "new=untold from=plant.csv";
    QTest::newRow("uniting") << "file=plant.inventory unite=extension.inventory out=untold";
}

void tst_j6tool_inventories::writesNothingThatCannotBeTold()
{
    QFETCH(QString, arguments);
    QProcess shell;
    shell.setWorkingDirectory(mDir.path());
    shell.start(QStringLiteral("/bin/sh"),
                {QStringLiteral("-c"), QStringLiteral("\"$0\" devices %1 >/dev/full").arg(arguments),
                 QStringLiteral(J6TOOL_PROGRAM)});
    QVERIFY(shell.waitForFinished(ToolCall::timeout));
    QCOMPARE(shell.readAllStandardError(), QByteArray("standard output: No space left on device\n"));
    QCOMPARE(shell.exitCode(), 2);
    QVERIFY(!QFile::exists(pathOf("untold")));
}
#endif

QTEST_GUILESS_MAIN(tst_j6tool_inventories)
#include "tst_j6tool_inventories.moc"
