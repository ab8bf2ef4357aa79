// SPDX-License-Identifier: MIT
// The command as its users call it: what goes in, what comes out, how it ends.
#include "ToolCall.h"

#include <LoggedTest.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCodec>

#include <array>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

using ToolCall::call;
using ToolCall::callIn;
using ToolCall::contentsOf;
using ToolCall::expectedOutput;
using ToolCall::Outcome;
using ToolCall::timeout;
using ToolCall::words;
using ToolCall::write;

namespace {

// A list of parameters of several types, with all of a large drive's indices and more.
QByteArray largeList(int count)
{
    const QByteArrayList rows = {"UNIT_U32,73,%1", "UNIT_F32,20,%1", "UNIT_DATETIME,0,432d1e0c%1",
                                 "UNIT_CHARSTR64,0," + QByteArray(60 * 2, '4') + "%1"};
    QByteArray list = "index,name,type,unit,bytes\n";
    for (int i = 0; i < count; ++i) {
        const QByteArray digits = QByteArray::number(i, 16).rightJustified(6, '0');
        QByteArray row = rows[i % rows.size()];
        row.replace("%1", "0103" + digits.right(4));
        list += "0x" + digits.left(4) + ':' + digits.right(2) + ",Parameter " + QByteArray::number(i) + ','
                + row + '\n';
    }
    return list;
}

#ifdef Q_OS_UNIX
// Checkers of memory use take a multiple for themselves.
qint64 memoryFactor()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return 8;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
    return 8;
#endif
#endif
    return qgetenv("LD_PRELOAD").contains("vgpreload") ? 8 : 1;
}

// The most that any child has had in memory so far, in bytes.
qint64 peakMemoryOfChildren()
{
    rusage usage = {};
    getrusage(RUSAGE_CHILDREN, &usage);
#ifdef Q_OS_MACOS
    return usage.ru_maxrss;
#else
    return qint64(usage.ru_maxrss) * 1024;
#endif
}
#endif

} // namespace

class tst_j6tool : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void printsTheStoredOutput_data();
    void printsTheStoredOutput();
    void refusesWrongCallsAndBadInput_data();
    void refusesWrongCallsAndBadInput();
    void refusesBadLists_data();
    void refusesBadLists();
    void setsParameters();
    void setsParametersOfEveryType();
    void setsTheListItReads();
    void writesTheListWhenNothingChanges();
    void writesNothingWhenAnythingIsRefused_data();
    void writesNothingWhenAnythingIsRefused();
    void findsNoDifferencesInAList();
    void reportsEveryKindOfDifference();
    void givesTheChecksumsOfAFile();
    void printsValidJson_data();
    void printsValidJson();
    void doesNotDependOnTheEnvironment_data();
    void doesNotDependOnTheEnvironment();
    void printsNumbersOfALocaleOnRequest();
    void neverSendsControlCharacters();
    void showsALargeListInBoundedMemory();
#ifdef __linux__
    void reportsOutputThatCannotBeWritten_data();
    void reportsOutputThatCannotBeWritten();
#endif

private:
    QString pathOf(const char *name) const
    {
        return mDir.filePath(QLatin1String(name));
    }

    QTemporaryDir mDir;
};

// The arguments are handed to the program as UTF-8, whatever the locale of the test is.
void tst_j6tool::initTestCase()
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    QVERIFY(mDir.isValid());
}

void tst_j6tool::printsTheStoredOutput_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");

    const auto row = [](const char *name, const char *line, int exitCode = 0) {
        QTest::newRow(name) << words(line) << exitCode;
    };
    row("show", "show|file=servo-axis.csv");
    row("show-filter", "show|file=servo-axis.csv|filter=VELOCITY");
    row("show-filter-index", "show|filter=0x2300:0|file=servo-axis.csv|format=table");
    row("show-filter-type", "show|filter=string|file=servo-axis.csv");
    row("show-filter-unit", "show|filter=Kg|file=servo-axis.csv");
    row("show-filter-nothing", "show|filter=no such text|file=servo-axis.csv");
    row("show-csv", "show|file=servo-axis.csv|filter=0x220|format=csv");
    row("show-json", "show|file=servo-axis.csv|filter=0x200|format=json");
    row("diff", "diff|file=servo-axis.csv|with=servo-axis-tuned.csv", 1);
    row("diff-reverse", "diff|file=servo-axis-tuned.csv|with=servo-axis.csv", 1);
    row("value-f32", "value|type=UNIT_F32|bytes=0000C03F|unit=20");
    row("value-i16", "value|type=UNIT_I16|text=-2");
    row("value-u32", "value|type=UNIT_U32|text=0x0205012C");
    row("value-date-time", "value|type=UNIT_DATETIME|text=2024-03-01T12:30:45.67");
    row("value-charstr64", "value|type=UNIT_CHARSTR64|text=17");
    row("value-string32", "value|type=UNIT_STRING32|text=\u00B5");
    row("value-byte-array", "value|type=UNIT_BYTEARRAY|bytes=34120000");
    row("value-version4-json", "value|type=UNIT_VERSION_4|text=1.2.3.4|format=json");
    row("types", "types");
    row("types-json", "types|format=json");
    row("units", "units");
    row("units-json", "units|format=json");
    row("crc", "crc|file=servo-axis.csv");
    row("tar", "tar|file=drive-update.tar");
    row("tar-csv", "tar|file=drive-update.tar|format=csv");
    row("tar-json", "tar|file=drive-update.tar|format=json");
    row("help", "help");
    row("help-show", "help|show");
    row("help-set", "help|set");
    row("help-diff", "help|diff");
    row("help-value", "help|value");
    row("help-types", "help|types");
    row("help-units", "help|units");
    row("help-crc", "help|crc");
    row("help-devices", "help|devices");
    row("help-code", "help|code");
    row("help-paths", "help|paths");
    row("help-settings", "help|settings");
    row("help-tar", "help|tar");
    row("help-help", "help|help");
}

void tst_j6tool::printsTheStoredOutput()
{
    QFETCH(QStringList, arguments);
    const Outcome outcome = call(arguments);
    QCOMPARE(outcome.error, QByteArray());
    QCOMPARE(QString::fromUtf8(outcome.output),
             QString::fromUtf8(expectedOutput(QLatin1String(QTest::currentDataTag()))));
    QTEST(outcome.exitCode, "exitCode");
}

void tst_j6tool::refusesWrongCallsAndBadInput_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("error");

    const auto row = [](const char *name, const char *line, const char *error) {
        QTest::newRow(name) << words(line) << QString::fromUtf8(error);
    };
    QTest::newRow("no arguments") << QStringList()
                                  << "j6tool: no command is given ('j6tool help' lists them)";
    row("options only", "file=servo-axis.csv", "j6tool: no command is given ('j6tool help' lists them)");
    row("unknown command", "list|file=servo-axis.csv",
        "j6tool: 'list' is no command ('j6tool help' lists them)");
    row("command in upper case", "SHOW|file=servo-axis.csv",
        "j6tool: 'SHOW' is no command ('j6tool help' lists them)");
    row("help on nothing", "help|list", "j6tool: 'list' is no command ('j6tool help' lists them)");
    row("two words for help", "help|show|set", "j6tool: 'set' is one word too many for 'help'");
    row("bare word", "show|servo-axis.csv", "j6tool: 'servo-axis.csv' is one word too many for 'show'");
    row("dashes", "show|--all|file=servo-axis.csv", "j6tool: '--all' is one word too many for 'show'");
    row("no key", "show|=servo-axis.csv", "j6tool: '=servo-axis.csv' has no key");
    row("key twice", "show|file=servo-axis.csv|file=servo-axis.csv", "j6tool: file: is given twice");
    row("parameter twice", "set|file=servo-axis.csv|out=x|0x6081=1|0x6081=2",
        "j6tool: 0x6081: is given twice");
    row("unknown option", "show|file=servo-axis.csv|File=x",
        "j6tool: File: is no option of 'show' (these are: file, filter, format)");
    row("option for help", "help|format=json", "j6tool: format: is no option of 'help' (these are: none)");
    row("unknown format", "types|format=xml", "j6tool: format: 'xml' is none of table, csv, json");
    row("unknown format of paths", "paths|format=xml", "j6tool: format: 'xml' is none of table, csv, json");
    row("option to create", "paths|create=1", "j6tool: create: is no option of 'paths' (these are: format)");
    row("empty format", "types|format=", "j6tool: format: '' is none of table, csv, json");
    row("no file", "show",
        "j6tool: file: is missing (usage: j6tool show file=LIST [filter=TEXT] [format=table|csv|json])");
    row("empty file name",
        "crc|file=", "j6tool: file: is missing (usage: j6tool crc file=FILE [format=table|csv|json])");
    row("nothing to compare with", "diff|file=servo-axis.csv",
        "j6tool: with: is missing (usage: j6tool diff file=A with=B)");
    row("no out", "set|file=servo-axis.csv|0x6081=1",
        "j6tool: out: is missing (usage: j6tool set file=LIST out=FILE NAME=TEXT ...)");
    row("missing file", "show|file=no%1such.csv", "no%1such.csv: no such file");
    row("directory", "show|file=.", ".: is a directory");
    row("second file is a directory", "diff|file=servo-axis.csv|with=..", "..: is a directory");
    row("checksums of a directory", "crc|file=.", ".: is a directory");
    row("no list", "show|file=../../LICENSE",
        "../../LICENSE:1: header: 'MIT License' where 'index,name,type,unit,bytes' is expected");
#ifdef Q_OS_LINUX
    row("unreadable", "show|file=/proc/self/mem", "/proc/self/mem: cannot be read: Input/output error");
    row("checksums of the unreadable", "crc|file=/proc/self/mem",
        "/proc/self/mem: cannot be read: Input/output error");
    row("endless", "show|file=/dev/zero", "/dev/zero: is larger than 67108864 bytes");
#endif
    row("no type", "value|bytes=00",
        "j6tool: type: is missing (usage: j6tool value type=NAME bytes=HEX|text=TEXT [unit=CODE] [lang=CODE] "
        "[format=table|csv|json])");
    row("unknown type", "value|type=E_U8|bytes=00",
        "j6tool: type: 'E_U8' is no type with a value ('j6tool types' lists them)");
    row("type without a value", "value|type=UNKNOWN|bytes=00",
        "j6tool: type: 'UNKNOWN' is no type with a value ('j6tool types' lists them)");
    row("neither bytes nor text", "value|type=UNIT_U8", "j6tool: either bytes or text must be given");
    row("bytes and text", "value|type=UNIT_U8|bytes=00|text=0", "j6tool: either bytes or text must be given");
    row("odd bytes", "value|type=UNIT_U8|bytes=000",
        "j6tool: bytes: '000' has an odd number of hexadecimal digits");
    row("no hexadecimal bytes", "value|type=UNIT_U8|bytes=0x", "j6tool: bytes: '0x' is not hexadecimal");
    row("too many bytes", "value|type=UNIT_U8|bytes=0000",
        "j6tool: bytes: '0000' has 2 bytes where UNIT_U8 has 1");
    row("text of no value", "value|type=UNIT_U8|text=256",
        "j6tool: text: '256' is no UNIT_U8 (an integer from 0 to 255)");
    row("unit text", "value|type=UNIT_U8|text=1|unit=rpm",
        "j6tool: unit: 'rpm' is no unit code ('j6tool units' lists them)");
    row("replacement character", "show|file=a\uFFFD", "j6tool: 'file=a\uFFFD' is not UTF-8");
}

void tst_j6tool::refusesWrongCallsAndBadInput()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, error);
    const Outcome outcome = call(arguments);
    QCOMPARE(QString::fromUtf8(outcome.error), error + QLatin1Char('\n'));
    QCOMPARE(outcome.output, QByteArray());
    QCOMPARE(outcome.exitCode, 2);
}

void tst_j6tool::refusesBadLists_data()
{
    QTest::addColumn<QByteArray>("row");
    QTest::addColumn<QString>("error");

    QTest::newRow("not UTF-8") << QByteArray("0x1001,M\xFCller,UNIT_U8,0,00")
                               << "list.csv:3: name: 'M\uFFFDller' is not UTF-8";
    QTest::newRow("duplicate index") << QByteArray("0X1000,b,UNIT_U8,0,00")
                                     << "list.csv:3: index: '0X1000' is on line 2 already";
    QTest::newRow("odd number of digits") << QByteArray("0x1001,b,UNIT_U8,0,0")
                                          << "list.csv:3: bytes: '0' has an odd number of hexadecimal digits";
    QTest::newRow("unknown type") << QByteArray("0x1001,b,U8,0,00")
                                  << "list.csv:3: type: 'U8' is no type with a value";
    QTest::newRow("length") << QByteArray("0x1001,b,UNIT_U16,0,00")
                            << "list.csv:3: bytes: '00' has 1 bytes where UNIT_U16 has 2";
}

void tst_j6tool::refusesBadLists()
{
    QFETCH(QByteArray, row);
    QFETCH(QString, error);
    QVERIFY(write(pathOf("list.csv"), "index,name,type,unit,bytes\n0x1000,a,UNIT_U8,0,00\n" + row + '\n'));
    const QVector<QStringList> calls = {words("show|file=list.csv"),
                                        words("set|file=list.csv|out=out.csv|0x1000=1"),
                                        words("diff|file=list.csv|with=list.csv")};
    for (const QStringList &arguments : calls) {
        const Outcome outcome = callIn(mDir.path(), arguments, QProcessEnvironment::systemEnvironment());
        QCOMPARE(QString::fromUtf8(outcome.error), error + QLatin1Char('\n'));
        QCOMPARE(outcome.output, QByteArray());
        QCOMPARE(outcome.exitCode, 2);
    }
    QVERIFY(!QFile::exists(pathOf("out.csv")));
}

void tst_j6tool::setsParameters()
{
    const QString out = pathOf("out.csv");
    const Outcome outcome =
        call({QStringLiteral("set"), QStringLiteral("file=servo-axis.csv"), QStringLiteral("out=") + out,
              QStringLiteral("0x6081=39321600"), QStringLiteral("Max torque=0x7D0"),
              QStringLiteral("0x2201:02=0.0085"), QStringLiteral("0x6060=1")});
    QCOMPARE(outcome.error, QByteArray());
    QCOMPARE(QString::fromUtf8(outcome.output), QString::fromUtf8(expectedOutput(QStringLiteral("set"))));
    QCOMPARE(outcome.exitCode, 0);
    QByteArray expected = contentsOf(QStringLiteral(J6TOOL_EXAMPLES "/servo-axis.csv"));
    expected.replace("\n0x6081,Profile velocity,UNIT_U32,43,00009001\n",
                     "\n0x6081,Profile velocity,UNIT_U32,43,00005802\n");
    expected.replace("\n0x6072,Max torque,UNIT_U16,101,c409\n", "\n0x6072,Max torque,UNIT_U16,101,d007\n");
    expected.replace("\n0x2201:02,Speed controller reset time,UNIT_F32,11,cdcc4c3c\n",
                     "\n0x2201:02,Speed controller reset time,UNIT_F32,11,96430b3c\n");
    QCOMPARE(contentsOf(out), expected);
    QVERIFY(expected != contentsOf(QStringLiteral(J6TOOL_EXAMPLES "/servo-axis.csv")));
}

// Every parameter of the example list is set to the text that the tool prints for it.
void tst_j6tool::setsParametersOfEveryType()
{
    const Outcome shown = call(words("show|file=servo-axis.csv|format=json"));
    const QJsonArray parameters = QJsonDocument::fromJson(shown.output).array();
    QVERIFY(parameters.size() >= 150);
    QStringList arguments = words("set|file=servo-axis.csv");
    arguments.append(QStringLiteral("out=") + pathOf("out.csv"));
    for (const QJsonValue &parameter : parameters) {
        const QString type = parameter[QLatin1String("type")].toString();
        // The display digits of a unit are fewer than the number has.
        if (type != QLatin1String("UNIT_F32") && type != QLatin1String("UNIT_DATETIME")) {
            arguments.append(parameter[QLatin1String("index")].toString() + QLatin1Char('=')
                             + parameter[QLatin1String("text")].toString());
        }
    }
    const Outcome outcome = call(arguments);
    QCOMPARE(outcome.error, QByteArray());
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output.count('\n'), arguments.size() - 3);
    QCOMPARE(outcome.output.count(" (unchanged)\n"), arguments.size() - 3);
    QCOMPARE(contentsOf(pathOf("out.csv")), contentsOf(QStringLiteral(J6TOOL_EXAMPLES "/servo-axis.csv")));
}

void tst_j6tool::setsTheListItReads()
{
    QVERIFY(write(pathOf("list.csv"), "index,name,type,unit,bytes\r\n0x1000,\u00E4=,\"UNIT_U8\",0,00\r\n"));
    const Outcome outcome = callIn(mDir.path(), words("set|file=list.csv|out=list.csv|0X1000=1"),
                                   QProcessEnvironment::systemEnvironment());
    QCOMPARE(outcome.error, QByteArray());
    QCOMPARE(QString::fromUtf8(outcome.output), QStringLiteral("0x1000 \u00E4=: 0 -> 1\n"));
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(contentsOf(pathOf("list.csv")),
             QByteArray("index,name,type,unit,bytes\r\n0x1000,\u00E4=,\"UNIT_U8\",0,01\r\n"));
}

void tst_j6tool::writesTheListWhenNothingChanges()
{
    QVERIFY(write(pathOf("list.csv"), "index,name,type,unit,bytes\n0x1000,a b,UNIT_F32,20,0000803F\n"));
    const Outcome outcome = callIn(mDir.path(), words("set|file=list.csv|out=copy.csv|a b=1.00000001"),
                                   QProcessEnvironment::systemEnvironment());
    QCOMPARE(outcome.error, QByteArray());
    QCOMPARE(outcome.output, QByteArray("0x1000 a b: 1.00 A (unchanged)\n"));
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(contentsOf(pathOf("copy.csv")), contentsOf(pathOf("list.csv")));
}

void tst_j6tool::writesNothingWhenAnythingIsRefused_data()
{
    QTest::addColumn<QString>("parameters");
    QTest::addColumn<QString>("error");

    QTest::newRow("none given") << QString() << "j6tool: no parameter is given (NAME=TEXT)";
    QTest::newRow("out of range") << "0x1000=1|0x1001=256"
                                  << "j6tool: 0x1001: '256' is no UNIT_U8 (an integer from 0 to 255)";
    QTest::newRow("no number") << "0x1000=1|c=a"
                               << "j6tool: c: 'a' is no UNIT_U8 (an integer from 0 to 255)";
    QTest::newRow("empty text") << "0x1000="
                                << "j6tool: 0x1000: '' is no UNIT_U8 (an integer from 0 to 255)";
    QTest::newRow("unknown index") << "0x1000=1|0x1003=1"
                                   << "j6tool: 0x1003: there is no parameter with this index";
    QTest::newRow("sub-index of a whole object")
        << "0x1000:00=1"
        << "j6tool: 0x1000:00: there is no parameter with this index";
    QTest::newRow("unknown name") << "0x1000=1|C=1"
                                  << "j6tool: C: there is no parameter of this name or index";
    QTest::newRow("ambiguous name") << "0x1000=1|a=1"
                                    << "j6tool: a: more than one parameter has this name: 0x1000 and 0x1001";
    QTest::newRow("one parameter by name and index") << "c=1|0x1002=1"
                                                     << "j6tool: 0x1002: is the same parameter as 'c'";
    QTest::newRow("bare word") << "0x1000=1|0x1001"
                               << "j6tool: '0x1001' is one word too many for 'set'";
}

void tst_j6tool::writesNothingWhenAnythingIsRefused()
{
    QFETCH(QString, parameters);
    QFETCH(QString, error);
    const QByteArray list = "index,name,type,unit,bytes\n0x1000,a,UNIT_U8,0,00\n0x1001,a,UNIT_U8,0,00\n"
                            "0x1002,c,UNIT_U8,0,00\n";
    QVERIFY(write(pathOf("list.csv"), list));
    QVERIFY(write(pathOf("old.csv"), "old contents"));
    QFile::remove(pathOf("new.csv"));
    for (const char *out : {"out=list.csv", "out=old.csv", "out=new.csv"}) {
        QStringList arguments = {QStringLiteral("set"), QStringLiteral("file=list.csv"), QLatin1String(out)};
        if (!parameters.isEmpty())
            arguments += parameters.split(QLatin1Char('|'));
        const Outcome outcome = callIn(mDir.path(), arguments, QProcessEnvironment::systemEnvironment());
        QCOMPARE(QString::fromUtf8(outcome.error), error + QLatin1Char('\n'));
        QCOMPARE(outcome.output, QByteArray());
        QCOMPARE(outcome.exitCode, 2);
    }
    QCOMPARE(contentsOf(pathOf("list.csv")), list);
    QCOMPARE(contentsOf(pathOf("old.csv")), QByteArray("old contents"));
    QVERIFY(!QFile::exists(pathOf("new.csv")));
}

void tst_j6tool::findsNoDifferencesInAList()
{
    const Outcome outcome = call(words("diff|file=servo-axis.csv|with=servo-axis.csv"));
    QCOMPARE(outcome.error, QByteArray());
    QCOMPARE(outcome.output, QByteArray("no differences\n"));
    QCOMPARE(outcome.exitCode, 0);
}

void tst_j6tool::reportsEveryKindOfDifference()
{
    QVERIFY(write(pathOf("a.csv"), "index,name,type,unit,bytes\n"
                                   "0x1000,same,UNIT_VERSION_4,0,0400030002000100\n"
                                   "0x1001,value,UNIT_F32,30,0000803f\n"
                                   "0x1002,equal text,UNIT_F32,30,0000803f\n"
                                   "0x1003,type,UNIT_U8,40,01\n"
                                   "0x1004,unit,UNIT_U8,40,01\n"
                                   "0x1005,name,UNIT_U8,2,01\n"
                                   "0x1006,all,UNIT_CHAR,2,41\n"
                                   "0x1007,here,UNIT_U8,40,01\n"
                                   "0x1008,order,UNIT_U8,40,01\n"));
    QVERIFY(write(pathOf("b.csv"), "index,name,type,unit,bytes\r\n"
                                   "0x1008,order,UNIT_U8,40,01\r\n"
                                   "0x1009,there,UNIT_IPV4ADDR,0,0a01a8c0\r\n"
                                   "0x1000,same,UNIT_VERSION_4,0,0400030002000100\r\n"
                                   "0x1001,value,UNIT_F32,30,0000003f\r\n"
                                   "0x1002,equal text,UNIT_F32,30,0100803f\r\n"
                                   "0x1003,type,UNIT_I8,40,01\r\n"
                                   "0x1004,unit,UNIT_U8,2,01\r\n"
                                   "0x1005,Name,UNIT_U8,2,01\r\n"
                                   "0x1006,ALL,UNIT_UTF16CHAR,0,4100\r\n"));
    const Outcome outcome =
        callIn(mDir.path(), words("diff|file=a.csv|with=b.csv"), QProcessEnvironment::systemEnvironment());
    QCOMPARE(outcome.error, QByteArray());
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(QString::fromUtf8(outcome.output),
             QString::fromUtf8(expectedOutput(QStringLiteral("diff-kinds"))));
}

void tst_j6tool::givesTheChecksumsOfAFile()
{
    QVERIFY(write(pathOf("check"), "123456789"));
    QVERIFY(write(pathOf("empty"), QByteArray()));
    const Outcome outcome =
        callIn(mDir.path(), words("crc|file=check"), QProcessEnvironment::systemEnvironment());
    QCOMPARE(outcome.error, QByteArray());
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output, QByteArray("CHECKSUM       VALUE\n"
                                        "CRC-32         0xCBF43926\n"
                                        "CRC-16 Modbus  0x4B37\n"
                                        "CRC-16 CCITT   0x29B1\n"));
    const Outcome none =
        callIn(mDir.path(), words("crc|file=empty|format=csv"), QProcessEnvironment::systemEnvironment());
    QCOMPARE(none.exitCode, 0);
    QCOMPARE(none.output, QByteArray("checksum,value\r\nCRC-32,0x00000000\r\nCRC-16 Modbus,0xFFFF\r\n"
                                     "CRC-16 CCITT,0xFFFF\r\n"));
}

void tst_j6tool::printsValidJson_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("rows");
    QTest::addColumn<QStringList>("keys"); // sorted

    const auto row = [](const char *name, const char *line, int rows, const char *keys) {
        QTest::newRow(name) << (words(line) << QStringLiteral("format=json")) << rows << words(keys);
    };
    row("show", "show|file=servo-axis.csv", 207, "index|name|raw|text|type|unit");
    row("value", "value|type=UNIT_U8|text=7", 24, "form|value");
    row("types", "types", 32, "enumerator|max|min|name|number|size");
    row("units", "units", 72, "code|description|digits|linear|text");
    row("crc", "crc|file=servo-axis.csv", 3, "checksum|value");
    row("tar", "tar|file=drive-update.tar", 6, "link|name|size|type");
}

void tst_j6tool::printsValidJson()
{
    QFETCH(QStringList, arguments);
    QFETCH(QStringList, keys);
    QJsonParseError error = {};
    const QJsonArray rows = QJsonDocument::fromJson(call(arguments).output, &error).array();
    QCOMPARE(error.errorString(), QStringLiteral("no error occurred"));
    QTEST(rows.size(), "rows");
    for (const QJsonValue &row : rows)
        QCOMPARE(row.toObject().keys(), keys);
}

void tst_j6tool::doesNotDependOnTheEnvironment_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("value");

    QTest::newRow("C locale") << "LC_ALL"
                              << "C";
    QTest::newRow("German locale") << "LC_ALL"
                                   << "de_DE.UTF-8";
    QTest::newRow("Latin-1 locale") << "LC_ALL"
                                    << "de_DE.ISO-8859-1";
    QTest::newRow("locale that is not installed") << "LC_ALL"
                                                  << "xx_XX";
    QTest::newRow("time zone that skips the hour") << "TZ"
                                                   << "Europe/Berlin";
    QTest::newRow("no home") << "HOME"
                             << "";
}

void tst_j6tool::doesNotDependOnTheEnvironment()
{
    QFETCH(QString, name);
    QFETCH(QString, value);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("LANG"));
    environment.insert(name, value);
    const QStringList arguments = {QStringLiteral("set"),
                                   QStringLiteral("file=servo-axis.csv"),
                                   QStringLiteral("out=") + pathOf("\xC3\xBC.csv"),
                                   QStringLiteral("0x2002=\u00FCber 1,5"),
                                   QStringLiteral("0x2201:01=1234.5"),
                                   QStringLiteral("0x200C=2024-03-31 02:30:00")};
    const Outcome outcome = callIn(QStringLiteral(J6TOOL_EXAMPLES), arguments, environment);
    QCOMPARE(outcome.error, QByteArray());
    QCOMPARE(QString::fromUtf8(outcome.output),
             QString::fromUtf8(expectedOutput(QStringLiteral("set-environment"))));
    QCOMPARE(outcome.exitCode, 0);
    const Outcome missing = callIn(QStringLiteral(J6TOOL_EXAMPLES),
                                   words("set|file=servo-axis.csv|out=\u00FC/x|0x6060=1"), environment);
    QCOMPARE(QString::fromUtf8(missing.error),
             QStringLiteral("\u00FC/x: cannot be written: %1\n").arg(ToolCall::noDirectoryText()));
}

void tst_j6tool::printsNumbersOfALocaleOnRequest()
{
    const Outcome outcome = call(words("value|type=UNIT_F64|text=1234.5|lang=de|format=csv"));
    QCOMPARE(outcome.exitCode, 0);
    QVERIFY2(outcome.output.contains("\r\ntext,1234.5\r\n"), outcome.output.constData());
    QVERIFY2(outcome.output.contains("\r\nlocale text,\"1.234,5\"\r\n"), outcome.output.constData());
}

void tst_j6tool::neverSendsControlCharacters()
{
    // Delete, an 8-bit control character, a change of the writing direction and a byte-order mark.
    const std::array<QByteArray, 4> hiddenCharacters = {
        QByteArray::fromHex("7F"), QByteArray::fromHex("C29B"), QByteArray::fromHex("E280AE"),
        QByteArray::fromHex("EFBBBF")};
    QByteArray field;
    for (int i = 1; i < 0x20; ++i)
        field.append(char(i));
    for (const QByteArray &hidden : hiddenCharacters)
        field += hidden;
    const QByteArray list = "index,name,type,unit,bytes\n0x1000,\"a\x1B[31m\n\",UNIT_CHARSTR64,0,"
                            + field.leftJustified(64, '\0').toHex() + '\n';
    QVERIFY(write(pathOf("list.csv"), list));
    const QVector<QStringList> calls = {words("show|file=list.csv"),
                                        words("show|file=list.csv|format=csv"),
                                        words("show|file=list.csv|format=json"),
                                        words("set|file=list.csv|out=out.csv|0x1000=\x1B[0m"),
                                        words("diff|file=list.csv|with=out.csv"),
                                        words("show|file=\x1B[0m")};
    for (const QStringList &arguments : calls) {
        const Outcome outcome = callIn(mDir.path(), arguments, QProcessEnvironment::systemEnvironment());
        const QByteArray all = outcome.output + outcome.error;
        QVERIFY(!all.isEmpty());
        for (const char byte : all)
            QVERIFY2(uchar(byte) >= 0x20 || byte == '\n' || byte == '\r', all.constData());
        for (const QByteArray &hidden : hiddenCharacters)
            QVERIFY2(!all.contains(hidden), all.constData());
    }
}

void tst_j6tool::showsALargeListInBoundedMemory()
{
    constexpr int count = 100000;
    QVERIFY(write(pathOf("large.csv"), largeList(count)));
    const QStringList arguments = {QStringLiteral("show"), QStringLiteral("file=large.csv")};
    const Outcome outcome = callIn(mDir.path(), arguments, QProcessEnvironment::systemEnvironment());
    QCOMPARE(outcome.error, QByteArray());
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output.count('\n'), count + 1);
    QVERIFY(outcome.output.contains("\n0x0186:9F  Parameter 99999"));
#ifdef Q_OS_UNIX
    const qint64 limit = qint64(128) * 1024 * 1024 * memoryFactor();
    const qint64 peak = peakMemoryOfChildren();
    QVERIFY2(peak < limit, qPrintable(QStringLiteral("%1 bytes").arg(peak)));
#endif
}

#ifdef __linux__
void tst_j6tool::reportsOutputThatCannotBeWritten_data()
{
    QTest::addColumn<QString>("redirection");
    QTest::addColumn<QByteArray>("error");

    QTest::newRow("full disk") << ">/dev/full" << QByteArray("standard output: No space left on device\n");
    QTest::newRow("closed") << ">&-" << QByteArray("standard output: Bad file descriptor\n");
    QTest::newRow("closed pipe") << ">&8" << QByteArray("standard output: Broken pipe\n");
}

// What a shell does to the output, and that nothing is written that could not be told.
void tst_j6tool::reportsOutputThatCannotBeWritten()
{
    QFETCH(QString, redirection);
    QFETCH(QByteArray, error);
    QFile::remove(pathOf("out.csv"));
    QFile::remove(pathOf("pipe"));
    // Descriptor 8 is a pipe whose reader has opened it and is gone.
    const QString line =
        QStringLiteral("mkfifo \"$3\"; (exec <\"$3\") & exec 8>\"$3\"; wait; "
                       "(\"$0\" set file=servo-axis.csv out=\"$1\" 0x6081=1; echo $? >\"$2\") %1")
            .arg(redirection);
    QProcess shell;
    shell.setWorkingDirectory(QStringLiteral(J6TOOL_EXAMPLES));
    shell.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), line, QStringLiteral(J6TOOL_PROGRAM),
                                            pathOf("out.csv"), pathOf("status"), pathOf("pipe")});
    QVERIFY(shell.waitForFinished(timeout));
    QCOMPARE(shell.readAllStandardError(), error);
    QCOMPARE(contentsOf(pathOf("status")), QByteArray("2\n"));
    QVERIFY(!QFile::exists(pathOf("out.csv")));
}
#endif

QTEST_GUILESS_MAIN(tst_j6tool)
#include "tst_j6tool.moc"
