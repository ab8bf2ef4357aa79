// SPDX-License-Identifier: MIT
// How entries are read: every type of entry by every reader, missing ones, and files that are none.
#include <CSettingsFile.h>

#include "SettingsIni.h"

#include <LoggedTest.h>

#include <QPoint>
#include <QTest>

#include <cmath>
#include <limits>

namespace {

const QString section = QStringLiteral("S");
const QString key = QStringLiteral("k");

using uint64 = unsigned long long;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

bool isSame(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

// A variant of a type that Qt itself has not.
struct Foreign
{
};

QVariant text(const char *characters)
{
    return QString::fromUtf8(characters);
}

} // namespace

Q_DECLARE_METATYPE(Foreign)

class tst_settings_file_reading : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void stringOfOtherEntries_data();
    void stringOfOtherEntries();
    void integer_data();
    void integer();
    void integerThatIsMissing_data();
    void integerThatIsMissing();
    void unsignedInteger_data();
    void unsignedInteger();
    void unsignedLongInteger_data();
    void unsignedLongInteger();
    void doublePrecision_data();
    void doublePrecision();
    void boolean_data();
    void boolean();
    void missingEntriesGiveTheDefault();
    void valueIsReturnedAsItIs();
    void leadingZeroIsOctalOnlyForUnsigned();
    void locale_data();
    void locale();
    void missingLocaleIsTheDefaultWithoutGroupSeparators();
    void missingLocaleIsACopyOfTheDefault();
    void numberOptionsAreReplaced();
    void malformedFilesGiveWhatCanBeRead_data();
    void malformedFilesGiveWhatCanBeRead();
    void everyByteIsHarmless();
    void textsOfAFileWithAByteOrderMarkSurviveWriting();

private:
    SettingsIni mIni;
};

void tst_settings_file_reading::stringOfOtherEntries_data()
{
    QTest::addColumn<QVariant>("entry");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *name, const QVariant &entry, const char *expected) {
        QTest::newRow(name) << entry << QString::fromUtf8(expected);
    };
    row("int", -5, "-5");
    row("double", 2.5, "2.5");
    row("bool", true, "true");
    row("bytes", QByteArray("bytes"), "bytes");
    row("list of one", QStringList{QStringLiteral("a")}, "a");
    row("list of two", QStringList{QStringLiteral("a"), QStringLiteral("b")}, "");
    // An invalid variant that is stored is an entry, too: its text is empty and not the default.
    row("invalid", QVariant(), "");
    row("no text", QVariant::fromValue(Foreign()), "");
}

void tst_settings_file_reading::stringOfOtherEntries()
{
    QFETCH(QVariant, entry);
    const std::unique_ptr<CSettingsFile> held = mIni.open(QStringLiteral("held.ini"));
    held->setValue(section, key, entry);
    QTEST(held->string(section, key, QStringLiteral("default")), "expected");
    held->clear();
}

void tst_settings_file_reading::integer_data()
{
    QTest::addColumn<QVariant>("entry");
    QTest::addColumn<int>("expected"); // the default is 5

    const auto row = [](const char *name, const QVariant &entry, int expected) {
        QTest::newRow(name) << entry << expected;
    };
    row("int", 42, 42);
    row("double 2.9", 2.9, 2);
    row("double -2.9", -2.9, -2);
    row("double 0.9", 0.9, 0);
    row("double just below 2^31", 2147483647.75, 2147483647);
    row("double 2^31", 2147483648.0, 5);
    row("double just above -2^31 - 1", -2147483648.75, -2147483647 - 1);
    row("double -2^31 - 1", -2147483649.0, 5);
    row("double far outside", 1e300, 5);
    row("double infinity", infinity, 5);
    row("double minus infinity", -infinity, 5);
    row("double NaN", notANumber, 5);
    row("text", text("42"), 42);
    row("negative text", text("-42"), -42);
    row("text with a plus sign", text("+42"), 42);
    row("leading zero is decimal", text("017"), 17);
    row("text with letters behind", text("12abc"), 5);
    row("hexadecimal text", text("0x10"), 5);
    row("text of a fraction", text("2.0"), 5);
    row("text of a word", text("abc"), 5);
    row("empty text", text(""), 5);
    row("text with a group separator", text("1,000"), 5);
    row("largest text", text("2147483647"), 2147483647);
    row("text one too large", text("2147483648"), 5);
    row("smallest text", text("-2147483648"), -2147483647 - 1);
    row("text one too small", text("-2147483649"), 5);
    row("blanks around are passed over", text(" 42 "), 42);
    row("unsigned int is another type", 42U, 5);
    row("64-bit number is another type", qlonglong(42), 5);
    row("unsigned 64-bit number is another type", qulonglong(42), 5);
    row("bool is another type", true, 5);
    row("float is another type", 2.0F, 5);
    row("byte array is another type", QByteArray("42"), 5);
    row("list is another type", QStringList{QStringLiteral("42")}, 5);
    row("invalid", QVariant(), 5);
}

void tst_settings_file_reading::integer()
{
    QFETCH(QVariant, entry);
    const std::unique_ptr<CSettingsFile> settings = mIni.open(QStringLiteral("held.ini"));
    settings->setValue(section, key, entry);
    QTEST(settings->integerValue(section, key, 5), "expected");
    settings->clear();
}

void tst_settings_file_reading::integerThatIsMissing_data()
{
    QTest::addColumn<int>("defaultValue");

    QTest::newRow("0") << 0;
    QTest::newRow("smallest") << std::numeric_limits<int>::min();
    QTest::newRow("largest") << std::numeric_limits<int>::max();
}

void tst_settings_file_reading::integerThatIsMissing()
{
    QFETCH(int, defaultValue);
    const std::unique_ptr<CSettingsFile> settings = mIni.read("[S]\nother=1\nbad=12abc\n");
    QCOMPARE(settings->integerValue(section, key, defaultValue), defaultValue);
    QCOMPARE(settings->integerValue(section, QStringLiteral("bad"), defaultValue), defaultValue);
}

void tst_settings_file_reading::unsignedInteger_data()
{
    QTest::addColumn<QVariant>("entry");
    QTest::addColumn<unsigned int>("expected"); // the default is 7

    const auto row = [](const char *name, const QVariant &entry, unsigned int expected) {
        QTest::newRow(name) << entry << expected;
    };
    row("unsigned int", 42U, 42);
    row("largest unsigned int", 4294967295U, 4294967295U);
    row("hexadecimal text", text("0x0000002a"), 42);
    row("hexadecimal text in upper case", text("0X2A"), 42);
    row("leading zero is octal", text("017"), 15);
    row("leading zero and no octal digit", text("08"), 7);
    row("decimal text", text("42"), 42);
    row("zero", text("0"), 0);
    row("text with a plus sign", text("+42"), 42);
    row("largest text", text("4294967295"), 4294967295U);
    row("text one too large", text("4294967296"), 7);
    row("hexadecimal text one too large", text("0x100000000"), 7);
    row("negative text", text("-1"), 7);
    row("text with letters behind", text("12abc"), 7);
    row("mark without digits", text("0x"), 7);
    row("empty text", text(""), 7);
    row("int is another type", 42, 7);
    row("double is another type", 42.0, 7);
    row("64-bit number is another type", qulonglong(42), 7);
    row("bool is another type", true, 7);
    row("byte array is another type", QByteArray("42"), 7);
    row("invalid", QVariant(), 7);
}

void tst_settings_file_reading::unsignedInteger()
{
    QFETCH(QVariant, entry);
    const std::unique_ptr<CSettingsFile> settings = mIni.open(QStringLiteral("held.ini"));
    settings->setValue(section, key, entry);
    QTEST(settings->unsignedIntValue(section, key, 7), "expected");
    settings->clear();
}

void tst_settings_file_reading::unsignedLongInteger_data()
{
    QTest::addColumn<QVariant>("entry");
    QTest::addColumn<uint64>("expected"); // the default is 7

    const auto row = [](const char *name, const QVariant &entry, uint64 expected) {
        QTest::newRow(name) << entry << expected;
    };
    row("unsigned 64-bit number", qulonglong(42), 42);
    row("largest", std::numeric_limits<qulonglong>::max(), std::numeric_limits<uint64>::max());
    row("hexadecimal text", text("0x000000000000002a"), 42);
    row("leading zero is octal", text("017"), 15);
    row("decimal text", text("42"), 42);
    row("largest text", text("18446744073709551615"), std::numeric_limits<uint64>::max());
    row("text one too large", text("18446744073709551616"), 7);
    row("negative text", text("-1"), 7);
    row("text with letters behind", text("12abc"), 7);
    row("empty text", text(""), 7);
    row("signed 64-bit number is another type", qlonglong(42), 7);
    row("unsigned int is another type", 42U, 7);
    row("int is another type", 42, 7);
    row("double is another type", 42.0, 7);
    row("invalid", QVariant(), 7);
}

void tst_settings_file_reading::unsignedLongInteger()
{
    QFETCH(QVariant, entry);
    const std::unique_ptr<CSettingsFile> settings = mIni.open(QStringLiteral("held.ini"));
    settings->setValue(section, key, entry);
    QTEST(settings->unsignedLongIntValue(section, key, 7), "expected");
    settings->clear();
}

void tst_settings_file_reading::doublePrecision_data()
{
    QTest::addColumn<QVariant>("entry");
    QTest::addColumn<double>("expected"); // the default is 7.5

    const auto row = [](const char *name, const QVariant &entry, double expected) {
        QTest::newRow(name) << entry << expected;
    };
    row("double", -2.5, -2.5);
    row("NaN", notANumber, notANumber);
    row("int", 42, 42.0);
    row("smallest int", std::numeric_limits<int>::min(), -2147483648.0);
    row("text", text("2.5"), 2.5);
    row("text with an exponent", text("-1e3"), -1000.0);
    row("text of an integer", text("42"), 42.0);
    row("text of infinity", text("inf"), infinity);
    row("text of NaN", text("nan"), notANumber);
    row("text with a decimal comma", text("2,5"), 7.5);
    row("text with a group separator", text("1,000.5"), 7.5);
    row("text beyond the range", text("1e999"), 7.5);
    row("hexadecimal text", text("0x10"), 7.5);
    row("text with letters behind", text("2.5x"), 7.5);
    row("empty text", text(""), 7.5);
    row("unsigned int is another type", 42U, 7.5);
    row("64-bit number is another type", qlonglong(42), 7.5);
    row("float is another type", 2.5F, 7.5);
    row("bool is another type", true, 7.5);
    row("byte array is another type", QByteArray("2.5"), 7.5);
    row("invalid", QVariant(), 7.5);
}

void tst_settings_file_reading::doublePrecision()
{
    QFETCH(QVariant, entry);
    QFETCH(double, expected);
    const std::unique_ptr<CSettingsFile> settings = mIni.open(QStringLiteral("held.ini"));
    settings->setValue(section, key, entry);
    const double read = settings->doubleValue(section, key, 7.5);
    QVERIFY2(isSame(read, expected), qPrintable(QString::number(read)));
    settings->clear();
}

void tst_settings_file_reading::boolean_data()
{
    QTest::addColumn<QVariant>("entry");
    QTest::addColumn<bool>("expected");

    const auto row = [](const char *name, const QVariant &entry, bool expected) {
        QTest::newRow(name) << entry << expected;
    };
    row("true", true, true);
    row("false", false, false);
    row("text true", text("true"), true);
    row("text false", text("false"), false);
    row("text False", text("False"), false);
    row("text 0", text("0"), false);
    row("text 1", text("1"), true);
    row("empty text", text(""), false);
    row("any other text is true", text("no"), true);
    row("text 0.0 is true", text("0.0"), true);
    row("int 0", 0, false);
    row("int 2", 2, true);
    row("double 0", 0.0, false);
    row("double 0.5", 0.5, true);
    row("unsigned int 1", 1U, true);
    row("list of strings", QStringList{QStringLiteral("true")}, false);
    row("invalid", QVariant(), false);
}

void tst_settings_file_reading::boolean()
{
    QFETCH(QVariant, entry);
    const std::unique_ptr<CSettingsFile> settings = mIni.open(QStringLiteral("held.ini"));
    settings->setValue(section, key, entry);
    // There is an entry: the default does not matter, of whatever type it is.
    QTEST(settings->boolean(section, key, true), "expected");
    QTEST(settings->boolean(section, key, false), "expected");
    settings->clear();
}

void tst_settings_file_reading::missingEntriesGiveTheDefault()
{
    const std::unique_ptr<CSettingsFile> settings = mIni.open(QStringLiteral("missing.ini"));
    QCOMPARE(settings->string(section, key, QStringLiteral("default")), QStringLiteral("default"));
    QCOMPARE(settings->integerValue(section, key, -3), -3);
    QCOMPARE(settings->unsignedIntValue(section, key, 4294967295U), 4294967295U);
    QCOMPARE(settings->unsignedLongIntValue(section, key, std::numeric_limits<uint64>::max()),
             std::numeric_limits<uint64>::max());
    QVERIFY(settings->doubleValue(section, key, 0.1) == 0.1);
    QVERIFY(std::isnan(settings->doubleValue(section, key, notANumber)));
    QCOMPARE(settings->boolean(section, key, true), true);
    QCOMPARE(settings->boolean(section, key, false), false);
    QCOMPARE(settings->value(section, key, QPoint(1, 2)), QVariant(QPoint(1, 2)));
    QCOMPARE(settings->value(section, key, QVariant()), QVariant());
    QVERIFY(!settings->containsEntry(section, key));
    QVERIFY(!QFile::exists(mIni.path(QStringLiteral("missing.ini"))));
}

void tst_settings_file_reading::valueIsReturnedAsItIs()
{
    const std::unique_ptr<CSettingsFile> settings =
        mIni.read("[S]\nk=42\nlist=a, b\nquoted=\"a, b\"\nempty=\ninvalid=@Invalid()\n");
    QCOMPARE(settings->value(section, key, QVariant(7)), QVariant(QStringLiteral("42")));
    QCOMPARE(settings->value(section, QStringLiteral("list"), QVariant()),
             QVariant(QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    QCOMPARE(settings->value(section, QStringLiteral("quoted"), QVariant()),
             QVariant(QStringLiteral("a, b")));
    QCOMPARE(settings->value(section, QStringLiteral("empty"), QVariant(7)),
             QVariant(QString::fromLatin1("")));
    QCOMPARE(settings->value(section, QStringLiteral("invalid"), QVariant(7)), QVariant());
}

void tst_settings_file_reading::leadingZeroIsOctalOnlyForUnsigned()
{
    const std::unique_ptr<CSettingsFile> settings = mIni.read("[S]\nk=017\n");
    QCOMPARE(settings->unsignedIntValue(section, key, 7), 15U);
    QCOMPARE(settings->unsignedLongIntValue(section, key, 7), uint64(15));
    QCOMPARE(settings->integerValue(section, key, 7), 17);
    QVERIFY(settings->doubleValue(section, key, 7.0) == 17.0);
}

void tst_settings_file_reading::locale_data()
{
    QTest::addColumn<QVariant>("entry");
    QTest::addColumn<QString>("expected"); // the default is it_IT

    const auto row = [](const char *name, const QVariant &entry, const char *expected) {
        QTest::newRow(name) << entry << QString::fromLatin1(expected);
    };
    row("language and country", text("de_AT"), "de_AT");
    row("language alone", text("de"), "de_DE");
    row("empty text", text(""), "it_IT");
    row("no locale", text("no such locale"), "C");
    row("C", text("C"), "C");
    row("bytes", QByteArray("fr_FR"), "fr_FR");
    row("list of several", QStringList{QStringLiteral("de"), QStringLiteral("fr")}, "it_IT");
    row("invalid", QVariant(), "it_IT");
}

void tst_settings_file_reading::locale()
{
    QFETCH(QVariant, entry);
    const std::unique_ptr<CSettingsFile> settings = mIni.open(QStringLiteral("held.ini"));
    settings->setValue(section, key, entry);
    const QLocale read = settings->locale(section, key, QLocale(QStringLiteral("it_IT")));
    QTEST(read.name(), "expected");
    QCOMPARE(read.numberOptions(), QLocale::NumberOptions(QLocale::OmitGroupSeparator));
    settings->clear();
}

void tst_settings_file_reading::missingLocaleIsTheDefaultWithoutGroupSeparators()
{
    const std::unique_ptr<CSettingsFile> settings = mIni.open(QStringLiteral("missing.ini"));
    const QLocale german(QStringLiteral("de_DE"));
    QCOMPARE(german.toString(1234567), QStringLiteral("1.234.567"));
    for (const QLocale &read : {settings->locale(german), settings->locale(section, key, german)}) {
        QCOMPARE(read.name(), QStringLiteral("de_DE"));
        QCOMPARE(read.numberOptions(), QLocale::NumberOptions(QLocale::OmitGroupSeparator));
        QCOMPARE(read.toString(1234567), QStringLiteral("1234567"));
        QCOMPARE(read.toString(1.5), QStringLiteral("1,5"));
    }
    // The caller's own locale stays as it is.
    QCOMPARE(german.numberOptions(), QLocale::NumberOptions(QLocale::DefaultNumberOptions));
}

void tst_settings_file_reading::missingLocaleIsACopyOfTheDefault()
{
    // Made from its name "sr_RS" it would write in Cyrillic.
    const QLocale serbian(QLocale::Serbian, QLocale::LatinScript, QLocale::Serbia);
    QCOMPARE(QLocale(serbian.name()).script(), QLocale::CyrillicScript);
    const std::unique_ptr<CSettingsFile> settings = mIni.open(QStringLiteral("missing.ini"));
    QCOMPARE(settings->locale(serbian).script(), QLocale::LatinScript);
    QCOMPARE(settings->locale(section, key, serbian).script(), QLocale::LatinScript);
}

void tst_settings_file_reading::numberOptionsAreReplaced()
{
    const std::unique_ptr<CSettingsFile> settings = mIni.open(QStringLiteral("missing.ini"));
    QLocale defaultLocale(QStringLiteral("de_DE"));
    defaultLocale.setNumberOptions(QLocale::RejectGroupSeparator | QLocale::IncludeTrailingZeroesAfterDot);
    QCOMPARE(settings->locale(defaultLocale).numberOptions(),
             QLocale::NumberOptions(QLocale::OmitGroupSeparator));
}

void tst_settings_file_reading::malformedFilesGiveWhatCanBeRead_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QSettings::Status>("status");
    QTest::addColumn<int>("expected"); // the default is 5

    const auto row = [](const char *name, const QByteArray &contents, QSettings::Status status,
                        int expected) { QTest::newRow(name) << contents << status << expected; };
    row("empty file", "", QSettings::NoError, 5);
    row("nothing but line ends", "\n\r\n\r", QSettings::NoError, 5);
    row("comments", "; [S]\n[S]\n# k=1\n;k=2\nk=3\n", QSettings::NoError, 3);
    row("no key", "[S]\n=1\nk=3\n", QSettings::NoError, 3);
    row("no equals sign", "[S]\njust text\nk=3\n", QSettings::FormatError, 3);
    row("section without its end", "[S\nk=3\n", QSettings::FormatError, 3);
    row("text of another kind", "index,name\n0x1000,a\n", QSettings::FormatError, 5);
    row("the last of equal keys counts", "[S]\nk=1\nk=2\n[S]\nk=3\n", QSettings::NoError, 3);
    row("quote without its end", "[S]\nk=\"3\n", QSettings::NoError, 3);
    row("escape at the end", "[S]\nk=3\\", QSettings::NoError, 3);
    row("unknown markers", "[S]\nk=@Unknown(3)\n", QSettings::NoError, 5);
    row("marker without its end", "[S]\nk=@ByteArray(3\n", QSettings::NoError, 5);
    // QSettings reads on behind the mark and finds fault with the mark itself.
    row("UTF-8 mark", "\xEF\xBB\xBF[S]\nk=3\n", QSettings::FormatError, 3);
    row("UTF-16",
        QByteArray("\xFF\xFE[\0S\0]\0\n\0k\0=\0"
                   "3\0\n\0",
                   18),
        QSettings::FormatError, 5);
    row("zero bytes", QByteArray(1000, '\0'), QSettings::FormatError, 5);
    row("a very long line", "[S]\nlong=" + QByteArray(1000000, 'x') + "\nk=3\n", QSettings::NoError, 3);
}

void tst_settings_file_reading::malformedFilesGiveWhatCanBeRead()
{
    QFETCH(QByteArray, contents);
    const std::unique_ptr<CSettingsFile> settings = mIni.read(contents);
    QTEST(settings->integerValue(section, key, 5), "expected");
    // QSettings looks at a section when it is asked for, and only then finds fault with it.
    settings->allKeys();
    QTEST(settings->status(), "status");
}

void tst_settings_file_reading::everyByteIsHarmless()
{
    for (int byte = 0; byte < 0x100; ++byte) {
        const QByteArray odd(1, static_cast<char>(byte));
        const std::unique_ptr<CSettingsFile> settings =
            mIni.read("[T]\nk=3\n[S]\nk" + odd + "=1\nv=" + odd + "\nw=a" + odd + "b\n");
        QCOMPARE(settings->integerValue(QStringLiteral("T"), key, 5), 3);
        QCOMPARE(settings->unsignedIntValue(section, QStringLiteral("w"), 7), 7U);
        QCOMPARE(settings->byteArray(section, QStringLiteral("w"), QStringLiteral("1.0")), QByteArray());
    }
}

void tst_settings_file_reading::textsOfAFileWithAByteOrderMarkSurviveWriting()
{
    const QString text = QStringLiteral("Ä");
    const std::unique_ptr<CSettingsFile> settings =
        mIni.read("\xEF\xBB\xBF[S]\nk=\xC3\x84\n[T]\nk=\xC3\x84\n");
    QCOMPARE(settings->string(section, key, QString()), text);
    settings->setString(section, QStringLiteral("new"), text);
    settings->sync();

    QFile file(settings->fileName());
    QVERIFY(file.open(QIODevice::ReadOnly));
    const std::unique_ptr<CSettingsFile> again = mIni.read(file.readAll());
    QCOMPARE(again->string(section, key, QString()), text);
    QCOMPARE(again->string(QStringLiteral("T"), key, QString()), text);
    QCOMPARE(again->string(section, QStringLiteral("new"), QString()), text);
}

QTEST_GUILESS_MAIN(tst_settings_file_reading)
#include "tst_settings_file_reading.moc"
