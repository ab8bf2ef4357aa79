// SPDX-License-Identifier: MIT
// The command "settings" as its users call it.
#include "ToolCall.h"

#include <LineEnds.h>
#include <LoggedTest.h>

#include <QDir>
#include <QFile>
#include <QMap>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCodec>

namespace {

using ToolCall::asText;
using ToolCall::callIn;
using Outcome = ToolCall::TextOutcome;

const char *const sample = "[General]\n"
                           "top=1\n"
                           "\n"
                           "[Common]\n"
                           "applanguage=de_DE\n"
                           "\n"
                           "[Drive]\n"
                           "address=0x0000002a\n"
                           "enabled=true\n"
                           "list=a, b\n"
                           "name=\"Z axis, \\x17c\\x1b\"\n"
                           "octal=017\n"
                           "serial=0xffffffffffffffff\n"
                           "speed=-2.5\n"
                           "\n"
                           "[%General]\n"
                           "top=2\n"
                           "\n"
                           "[Scope]\n"
                           "layout=@ByteArray(\\0\\x1\\xff)\n"
                           "layout_version=1.1\n"
                           "old=@ByteArray(abc)\n";

QMap<QString, QVariant> entriesOf(const QString &fileName)
{
    const QSettings settings(fileName, QSettings::IniFormat);
    QMap<QString, QVariant> entries;
    const QStringList keys = settings.allKeys();
    for (const QString &key : keys)
        entries.insert(key, settings.value(key));
    return entries;
}

} // namespace

class tst_settings_command : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void readsAnEntry_data();
    void readsAnEntry();
    void readsValuesAtTheEdge_data();
    void readsValuesAtTheEdge();
    void refusesAndLeavesTheFile_data();
    void refusesAndLeavesTheFile();
    void writesAnEntry_data();
    void writesAnEntry();
    void keepsEverythingElse();
    void readsAndWritesWhatIsMarkedAsUtf8_data();
    void readsAndWritesWhatIsMarkedAsUtf8();
    void changesAFileThatEndsWithin_data();
    void changesAFileThatEndsWithin();
    void makesTheFile();
    void refusesFilesThatAreNone_data();
    void refusesFilesThatAreNone();
#ifdef Q_OS_LINUX
    void cannotWrite();
    void cannotTell();
#endif

protected:
    void prepare() override;

private:
    QString pathOf(const char *name) const
    {
        return mDir.filePath(QLatin1String(name));
    }
    QByteArray contents(const char *name = "tool.ini") const
    {
        return ToolCall::contentsOf(pathOf(name));
    }
    bool write(const char *name, const QByteArray &bytes) const
    {
        return ToolCall::write(pathOf(name), bytes);
    }
    // The words are separated by "|"; file=tool.ini stands before them.
    Outcome call(const QString &words, const char *file = "tool.ini") const
    {
        const QStringList toFile = {QStringLiteral("settings"),
                                    QStringLiteral("file=") + QLatin1String(file)};
        return asText(callIn(mDir.path(), toFile + words.split(QLatin1Char('|'))));
    }

    QTemporaryDir mDir;
};

// The arguments are handed to the program as UTF-8, whatever the locale of the test is.
void tst_settings_command::initTestCase()
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    QVERIFY(mDir.isValid());
}

void tst_settings_command::prepare()
{
    QVERIFY(write("tool.ini", sample));
}

void tst_settings_command::readsAnEntry_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *name, const char *words, const char *expected) {
        QTest::newRow(name) << QString::fromUtf8(words) << QString::fromUtf8(expected);
    };
    row("string", "section=Common|key=applanguage", "de_DE");
    row("string by name", "section=Common|key=applanguage|type=string", "de_DE");
    row("stored text of a number", "section=Drive|key=address", "0x0000002a");
    row("unprintable characters are escaped", "section=Drive|key=name", "Z axis, \u017C\\x1b");
    row("without a section", "key=top", "1");
    row("empty section", "section=|key=top", "1");
    row("section named General", "section=General|key=top", "2");
    row("int", "section=Drive|key=octal|type=int", "17");
    row("uint", "section=Drive|key=octal|type=uint", "15");
    row("hexadecimal uint", "section=Drive|key=address|type=uint", "42");
    row("ulong", "section=Drive|key=serial|type=ulong", "18446744073709551615");
    row("double", "section=Drive|key=speed|type=double", "-2.5");
    row("double of an integer", "section=Drive|key=octal|type=double", "17");
    row("bool", "section=Drive|key=enabled|type=bool", "true");
    row("bool of any text", "section=Common|key=applanguage|type=bool", "true");
    row("locale", "section=Common|key=applanguage|type=locale", "de_DE");
    row("bytes", "section=Scope|key=layout|type=bytes|version=1.1", "0001ff");
    row("bytes without version", "section=Scope|key=old|type=bytes", "616263");
    row("bytes of version 0.0", "section=Scope|key=old|type=bytes|version=0.0", "616263");
}

void tst_settings_command::readsAnEntry()
{
    QFETCH(QString, words);
    QFETCH(QString, expected);
    const Outcome outcome = call(words);
    QCOMPARE(outcome.error, QString());
    QCOMPARE(outcome.output, expected + QLatin1Char('\n'));
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(contents(), QByteArray(sample));
}

// Also those that equal a default, or nothing at all.
void tst_settings_command::readsValuesAtTheEdge_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *name, const char *stored, const char *type, const char *expected) {
        QTest::newRow(name) << QByteArray(stored) << QString::fromLatin1(type)
                            << QString::fromLatin1(expected);
    };
    row("int 0", "0", "int", "0");
    row("int 1", "1", "int", "1");
    row("smallest int", "-2147483648", "int", "-2147483648");
    row("largest int", "2147483647", "int", "2147483647");
    row("uint 0", "0x00000000", "uint", "0");
    row("uint 1", "0x00000001", "uint", "1");
    row("largest uint", "0xffffffff", "uint", "4294967295");
    row("ulong 0", "0x0000000000000000", "ulong", "0");
    row("ulong 1", "0x0000000000000001", "ulong", "1");
    row("double 0", "0", "double", "0");
    row("double 1", "1", "double", "1");
    row("NaN", "nan", "double", "nan");
    row("infinity", "-inf", "double", "-inf");
    row("all digits of a double", "0.30000000000000004", "double", "0.30000000000000004");
    row("locale C", "C", "locale", "C");
    row("empty text is false", "", "bool", "false");
}

void tst_settings_command::readsValuesAtTheEdge()
{
    QFETCH(QByteArray, stored);
    QFETCH(QString, type);
    QFETCH(QString, expected);
    QVERIFY(write("tool.ini", "k=" + stored + '\n'));
    const Outcome outcome = call(QStringLiteral("key=k|type=") + type);
    QCOMPARE(outcome.error, QString());
    QCOMPARE(outcome.output, expected + QLatin1Char('\n'));
    QCOMPARE(outcome.exitCode, 0);
}

void tst_settings_command::refusesAndLeavesTheFile_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("error");

    const auto row = [](const char *name, const char *words, const char *error) {
        QTest::newRow(name) << QString::fromUtf8(words) << QString::fromUtf8(error);
    };
    row("no key", "section=Drive",
        "j6tool: key: is missing (usage: j6tool settings file=INI [section=S] key=K [type=TYPE] "
        "[value=TEXT] [version=V])");
    row("unknown type", "key=top|type=float",
        "j6tool: type: 'float' is none of string, int, uint, ulong, double, bool, locale, bytes");
    row("empty type",
        "key=top|type=", "j6tool: type: '' is none of string, int, uint, ulong, double, bool, locale, bytes");
    row("version of a number", "key=top|type=int|version=1.0", "j6tool: version: is for type=bytes only");
#ifndef Q_OS_WIN // where the case of a key does not matter
    row("key in another case", "section=Drive|key=Address",
        "tool.ini: Drive/Address: there is no such entry");
#endif
    row("missing entry", "section=Drive|key=addresses", "tool.ini: Drive/addresses: there is no such entry");
    row("missing section", "section=drives|key=address", "tool.ini: drives/address: there is no such entry");
    row("entry of another section", "key=address", "tool.ini: address: there is no such entry");
    row("no string", "section=Drive|key=list", "tool.ini: Drive/list: '' is not one text");
    row("no int", "section=Drive|key=address|type=int",
        "tool.ini: Drive/address: '0x0000002a' is not a decimal integer from -2147483648 to 2147483647");
    row("no uint", "section=Drive|key=serial|type=uint",
        "tool.ini: Drive/serial: '0xffffffffffffffff' is not an integer from 0 to 4294967295");
    row("no ulong", "section=Drive|key=speed|type=ulong",
        "tool.ini: Drive/speed: '-2.5' is not an integer from 0 to 18446744073709551615");
    row("no double", "section=Drive|key=address|type=double",
        "tool.ini: Drive/address: '0x0000002a' is not a number such as 1500 or -2.5e-3");
    row("no locale", "section=Drive|key=name|type=locale",
        "tool.ini: Drive/name: 'Z axis, \u017C\\x1b' is not a language and country such as de_DE");
    row("bytes of a version", "section=Scope|key=layout|type=bytes",
        "tool.ini: Scope/layout: has the version '1.1', not '0.0'");
    row("bytes of another version", "section=Scope|key=layout|type=bytes|version=1.0",
        "tool.ini: Scope/layout: has the version '1.1', not '1.0'");
    row("int too large to write", "key=top|type=int|value=2147483648",
        "j6tool: value: '2147483648' is not a decimal integer from -2147483648 to 2147483647");
    row("no int to write", "key=top|type=int|value=0x10",
        "j6tool: value: '0x10' is not a decimal integer from -2147483648 to 2147483647");
    row("no uint to write", "key=top|type=uint|value=-1",
        "j6tool: value: '-1' is not an integer from 0 to 4294967295");
    row("no ulong to write", "key=top|type=ulong|value=x",
        "j6tool: value: 'x' is not an integer from 0 to 18446744073709551615");
    row("no double to write", "key=top|type=double|value=1,5",
        "j6tool: value: '1,5' is not a number such as 1500 or -2.5e-3");
    row("infinity to write", "key=top|type=double|value=inf",
        "j6tool: value: 'inf' is not a number such as 1500 or -2.5e-3");
    row("NaN to write", "key=top|type=double|value=nan",
        "j6tool: value: 'nan' is not a number such as 1500 or -2.5e-3");
    row("no bool to write", "key=top|type=bool|value=yes", "j6tool: value: 'yes' is not true or false");
    row("no locale to write", "key=top|type=locale|value=klingon",
        "j6tool: value: 'klingon' is not a language and country such as de_DE");
    row("no bytes to write", "key=top|type=bytes|value=123",
        "j6tool: value: '123' is not an even number of hexadecimal digits");
}

void tst_settings_command::refusesAndLeavesTheFile()
{
    QFETCH(QString, words);
    QFETCH(QString, error);
    const Outcome outcome = call(words);
    QCOMPARE(outcome.error, error + QLatin1Char('\n'));
    QCOMPARE(outcome.output, QString());
    QCOMPARE(outcome.exitCode, 2);
    QCOMPARE(contents(), QByteArray(sample));
}

void tst_settings_command::writesAnEntry_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("told");
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");

    const auto row = [](const char *name, const char *words, const char *told, const char *before,
                        const char *after) {
        QTest::newRow(name) << QString::fromUtf8(words) << QString::fromUtf8(told) << QByteArray(before)
                            << QByteArray(after);
    };
    row("string", "section=Drive|key=name|value=a, \"b\"", "Drive/name: 'Z axis, \u017C\\x1b' -> 'a, \"b\"'",
        "name=\"Z axis, \\x17c\\x1b\"\n", "name=\"a, \\\"b\\\"\"\n");
    row("empty string", "section=Common|key=applanguage|value=", "Common/applanguage: 'de_DE' -> ''",
        "applanguage=de_DE\n", "applanguage=\n");
    row("uint", "section=Drive|key=address|type=uint|value=0x1F", "Drive/address: '42' -> '31'",
        "address=0x0000002a\n", "address=0x0000001f\n");
    row("decimal uint", "section=Drive|key=address|type=uint|value=31", "Drive/address: '42' -> '31'",
        "address=0x0000002a\n", "address=0x0000001f\n");
    row("octal uint", "section=Drive|key=address|type=uint|value=037", "Drive/address: '42' -> '31'",
        "address=0x0000002a\n", "address=0x0000001f\n");
    row("int with a leading zero is decimal", "section=Drive|key=octal|type=int|value=037",
        "Drive/octal: '17' -> '37'", "octal=017\n", "octal=37\n");
    row("int over text of another form", "section=Drive|key=address|type=int|value=-1",
        "Drive/address: '0x0000002a' -> '-1'", "address=0x0000002a\n", "address=-1\n");
    row("ulong", "section=Drive|key=serial|type=ulong|value=1", "Drive/serial: '18446744073709551615' -> '1'",
        "serial=0xffffffffffffffff\n", "serial=0x0000000000000001\n");
    row("hexadecimal ulong", "section=Drive|key=serial|type=ulong|value=0x1F",
        "Drive/serial: '18446744073709551615' -> '31'", "serial=0xffffffffffffffff\n",
        "serial=0x000000000000001f\n");
    row("octal ulong", "section=Drive|key=serial|type=ulong|value=037",
        "Drive/serial: '18446744073709551615' -> '31'", "serial=0xffffffffffffffff\n",
        "serial=0x000000000000001f\n");
    row("decimal ulong", "section=Drive|key=serial|type=ulong|value=18446744073709551614",
        "Drive/serial: '18446744073709551615' -> '18446744073709551614'", "serial=0xffffffffffffffff\n",
        "serial=0xfffffffffffffffe\n");
    row("double", "section=Drive|key=speed|type=double|value=1e-1", "Drive/speed: '-2.5' -> '0.1'",
        "speed=-2.5\n", "speed=0.1\n");
    row("bool", "section=Drive|key=enabled|type=bool|value=false", "Drive/enabled: 'true' -> 'false'",
        "enabled=true\n", "enabled=false\n");
    row("locale", "section=Common|key=applanguage|type=locale|value=fr",
        "Common/applanguage: 'de_DE' -> 'fr_FR'", "applanguage=de_DE\n", "applanguage=fr_FR\n");
    row("locale C", "section=Common|key=applanguage|type=locale|value=C",
        "Common/applanguage: 'de_DE' -> 'C'", "applanguage=de_DE\n", "applanguage=C\n");
    row("bytes", "section=Scope|key=layout|type=bytes|version=2.0|value=00FF", "Scope/layout: '' -> '00ff'",
        "layout=@ByteArray(\\0\\x1\\xff)\nlayout_version=1.1\n",
        "layout=@ByteArray(\\0\\xff)\nlayout_version=2.0\n");
    row("bytes without a version", "section=Scope|key=old|type=bytes|value=", "Scope/old: '616263' -> ''",
        "old=@ByteArray(abc)\n", "old=@ByteArray()\nold_version=0.0\n");
    row("new entry", "section=Drive|key=torque|type=int|value=5", "Drive/torque: (none) -> '5'",
        "speed=-2.5\n", "speed=-2.5\ntorque=5\n");
    row("new entry of no section", "key=torque|value=x", "torque: (none) -> 'x'", "top=1\n",
        "top=1\ntorque=x\n");
    row("the same once more", "section=Drive|key=speed|type=double|value=-2.5",
        "Drive/speed: '-2.5' -> '-2.5'", "", "");
}

void tst_settings_command::writesAnEntry()
{
    QFETCH(QString, words);
    QFETCH(QString, told);
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    const Outcome outcome = call(words);
    QCOMPARE(outcome.error, QString());
    QCOMPARE(outcome.output, told + QLatin1Char('\n'));
    QCOMPARE(outcome.exitCode, 0);
    QByteArray expected = sample;
    if (!before.isEmpty())
        expected.replace(expected.indexOf(before), before.size(), after);
    QCOMPARE(QString::fromUtf8(withPlainLineEnds(contents())), QString::fromUtf8(expected));
    // Neither a lock nor a half-written file is left.
    QCOMPARE(QDir(mDir.path()).entryList(QDir::Files | QDir::Hidden),
             QStringList{QStringLiteral("tool.ini")});
}

// Values of every form that a settings file has; comments are no entries.
void tst_settings_command::keepsEverythingElse()
{
    QVERIFY(write("tool.ini",
                  "; comment\n[S]\nk=1\npoint=@Point(1 -2)\nsize=@Size(3 4)\nrect=@Rect(1 2 3 4)\n"
                  "invalid=@Invalid()\nat=@@at\ntext=\"a\\\\b\\n\\\"c\\\"\"\nempty=\nlist=a, b, \n"
                  "bytes=@ByteArray(\\0\\n\\xff)\nbeyond=\\x20ac\nraw=\xE9\nnested\\key=1\nblank%20key=2\n"));
    QVERIFY(QFile::copy(pathOf("tool.ini"), pathOf("before.ini")));
    const Outcome outcome = call(QStringLiteral("section=T|key=k|value=new"));
    QCOMPARE(outcome.error, QString());
    QCOMPARE(outcome.exitCode, 0);
    QVERIFY(!contents().contains("comment"));

    QMap<QString, QVariant> expected = entriesOf(pathOf("before.ini"));
    QCOMPARE(expected.size(), 14);
    expected.insert(QStringLiteral("T/k"), QStringLiteral("new"));
    QCOMPARE(entriesOf(pathOf("tool.ini")), expected);
    QVERIFY(QFile::remove(pathOf("before.ini")));
}

void tst_settings_command::readsAndWritesWhatIsMarkedAsUtf8_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::newRow("a section") << QByteArray("[Drive]\nname=\xC3\xA4\nspeed=1\n");
    QTest::newRow("a comment") << QByteArray("; z\xC3\xA4h\n[Drive]\nname=\xC3\xA4\nspeed=1\n");
    QTest::newRow("an entry") << QByteArray("first=\xC3\xA4\n[Drive]\nname=\xC3\xA4\nspeed=1\n");
}

void tst_settings_command::readsAndWritesWhatIsMarkedAsUtf8()
{
    QFETCH(QByteArray, before);
    QVERIFY(write("tool.ini", "\xEF\xBB\xBF" + before));
    const QString letter = QString::fromUtf8("\u00E4");
    QCOMPARE(call(QStringLiteral("section=Drive|key=name")).output, letter + QLatin1Char('\n'));
    const bool hasFirst = before.startsWith("first");
    if (hasFirst)
        QCOMPARE(call(QStringLiteral("key=first")).output, letter + QLatin1Char('\n'));
    const Outcome written = call(QStringLiteral("section=Drive|key=speed|type=int|value=2"));
    QCOMPARE(written.exitCode, 0);
    QCOMPARE(withPlainLineEnds(contents()),
             (hasFirst ? QByteArray("[General]\nfirst=\\xe4\n\n") : QByteArray())
                 + "[Drive]\nname=\\xe4\nspeed=2\n");
}

void tst_settings_command::changesAFileThatEndsWithin_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::newRow("an entry") << QByteArray("[S]\nk=1\nl=2") << QByteArray("[S]\nk=3\nl=2\n");
    QTest::newRow("a line that goes on") << QByteArray("[S]\nk=1\nl=2\\") << QByteArray("[S]\nk=3\nl=2\n");
    QTest::newRow("a comment") << QByteArray("[S]\nk=1\n; \"") << QByteArray("[S]\nk=3\n");
    QTest::newRow("the name of a section") << QByteArray("[S]\nk=1\n[T]") << QByteArray("[S]\nk=3\n");
}

void tst_settings_command::changesAFileThatEndsWithin()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    QVERIFY(write("tool.ini", before));
    const Outcome outcome = call(QStringLiteral("section=S|key=k|value=3"));
    QCOMPARE(outcome.error, QString());
    QCOMPARE(outcome.output, QStringLiteral("S/k: '1' -> '3'\n"));
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(withPlainLineEnds(contents()), after);
}

void tst_settings_command::makesTheFile()
{
    QVERIFY(QFile::remove(pathOf("tool.ini")));
    const Outcome outcome = call(QStringLiteral("section=Drive|key=address|type=uint|value=42"));
    QCOMPARE(outcome.error, QString());
    QCOMPARE(outcome.output, QStringLiteral("Drive/address: (none) -> '42'\n"));
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(withPlainLineEnds(contents()), QByteArray("[Drive]\naddress=0x0000002a\n"));
}

void tst_settings_command::refusesFilesThatAreNone_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QString>("error");

    QTest::newRow("table") << QByteArray("index,name\n0x1000,a\n") << "is no settings file in INI form";
    QTest::newRow("section without its end") << QByteArray("[S\nk=1\n") << "is no settings file in INI form";
    QTest::newRow("bytes") << QByteArray(100, '\0') << "is no settings file in INI form";
    QTest::newRow("quotation mark without its partner")
        << QByteArray("[S]\nk=\"1\nl=2\n")
        << "cannot be read to its end: a quotation mark is missing there, or its temporary copy cannot be "
           "read";
    const QString serialized = QStringLiteral("holds serialised values (@Variant or @DateTime), which are "
                                              "neither safe to read nor sure to be kept");
    QTest::newRow("list of 2^28 values")
        << QByteArray("[S]\nk=1\nv=@Variant(\\0\\0\\0\\x9\\xf\\xff\\xff\\xff)\n") << serialized;
    QTest::newRow("color") << QByteArray("[S]\nk=1\nv=@Variant(\\0\\0\\0\\x43\\x1\\xff\\xff\\0\\0)\n")
                           << serialized;
}

void tst_settings_command::refusesFilesThatAreNone()
{
    QFETCH(QByteArray, contents);
    QFETCH(QString, error);
    QVERIFY(write("tool.ini", contents));
    for (const char *words : {"section=S|key=k", "section=S|key=k|value=2"}) {
        const Outcome outcome = call(QLatin1String(words));
        QCOMPARE(outcome.error, QStringLiteral("tool.ini: %1\n").arg(error));
        QCOMPARE(outcome.output, QString());
        QCOMPARE(outcome.exitCode, 2);
        QCOMPARE(this->contents(), contents);
    }
    QCOMPARE(call(QStringLiteral("key=k"), "missing.ini").error,
             QStringLiteral("missing.ini: no such file\n"));
    QCOMPARE(call(QStringLiteral("key=k"), ".").error, QStringLiteral(".: is a directory\n"));
    QCOMPARE(call(QStringLiteral("key=k|value=1"), ".").error, QStringLiteral(".: is a directory\n"));
    QCOMPARE(call(QStringLiteral("key=k|value=1"), "missing/tool.ini").error,
             QStringLiteral("missing/tool.ini: there is no such directory\n"));
    QVERIFY(!QFile::exists(pathOf("missing")));
#ifdef Q_OS_UNIX
    QCOMPARE(call(QStringLiteral("key=k"), "/dev/zero").error,
             QStringLiteral("/dev/zero: is no regular file\n"));
#endif
}

#ifdef Q_OS_LINUX
void tst_settings_command::cannotWrite()
{
    const Outcome outcome = call(QStringLiteral("section=S|key=k|value=1"), "/proc/tool.ini");
    QCOMPARE(outcome.error, QStringLiteral("/proc/tool.ini: cannot be written\n"));
    QCOMPARE(outcome.output, QString());
    QCOMPARE(outcome.exitCode, 2);
}

// A change that nobody learns of is not made.
void tst_settings_command::cannotTell()
{
    QProcess process;
    process.setWorkingDirectory(mDir.path());
    process.setStandardOutputFile(QStringLiteral("/dev/full"));
    process.start(QStringLiteral(J6TOOL_PROGRAM),
                  {QStringLiteral("settings"), QStringLiteral("file=tool.ini"), QStringLiteral("key=top"),
                   QStringLiteral("value=9")});
    QVERIFY(process.waitForFinished(ToolCall::timeout));
    QCOMPARE(process.readAllStandardError(), QByteArray("standard output: No space left on device\n"));
    QCOMPARE(process.exitCode(), 2);
    QCOMPARE(contents(), QByteArray(sample));
}
#endif

QTEST_GUILESS_MAIN(tst_settings_command)
#include "tst_settings_command.moc"
