// SPDX-License-Identifier: MIT
#include "VariantSamples.h"

#include <LoggedTest.h>
#include <ScopedTimeZone.h>

#include <QTest>

#include <limits>

using namespace VariantSamples;

namespace {

void addColumns()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("tag");
    QTest::addColumn<QString>("text");
}

void row(const char *name, const CVariant &value, const QString &text)
{
    QTest::newRow(name) << heldBy(value) << static_cast<int>(value.type()) << text;
}

void row(const char *name, const CVariant &value, const char *text)
{
    row(name, value, QString::fromUtf8(text));
}

CVariant dateTime(const char *bytes)
{
    return valueOf<NTypes::sDateTime_t>(bytes);
}

QString debugText(const CVariant &value)
{
    QString text;
    QDebug(&text) << value;
    return text;
}

} // namespace

// The text forms of every type. Run twice: the second time in a system whose locale has digits of its own.
class tst_variant_text : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void canonicalNumbers_data();
    void canonicalNumbers();
    void canonicalTexts_data();
    void canonicalTexts();
    void canonicalRecords_data();
    void canonicalRecords();
    void nullValuesHaveANullText_data();
    void nullValuesHaveANullText();
    void emptyFixedStringsAsTheirClassSays();
    void emptyByteArrayHasANullText();
    void canonicalTextIgnoresTheLocale_data();
    void canonicalTextIgnoresTheLocale();
    void dateTimeTextNeedsALocalTimeThatExists();
    void dateTimeFormats_data();
    void dateTimeFormats();
    void dateTimeLocaleFormats_data();
    void dateTimeLocaleFormats();
    void formatsOfOtherTypesAreNull_data();
    void formatsOfOtherTypesAreNull();
    void localeText_data();
    void localeText();
    void hexadecimal_data();
    void hexadecimal();
    void hexadecimalOfOtherBytes_data();
    void hexadecimalOfOtherBytes();
    void hexadecimalPrefix();
    void separatedHexadecimal_data();
    void separatedHexadecimal();
    void debugForm_data();
    void debugForm();
    void debugFormKeepsTheStreamState();

protected:
    void prepare() override { mFormerLocale = QLocale(); }
    void tidy() override { QLocale::setDefault(mFormerLocale); }

private:
    static void checkRow();

    QLocale mFormerLocale;
};

// The second run would prove nothing in a system that does not follow the environment.
void tst_variant_text::initTestCase()
{
    const QString expected = qEnvironmentVariable("J6CORE_SYSTEM_LOCALE");
    if (expected.isEmpty())
        return;
#ifdef Q_OS_WIN
    if (QLocale::system().name() != expected)
        QSKIP("the locale of the system cannot be set by LC_ALL here");
#endif
    QCOMPARE(QLocale::system().name(), expected);
    QCOMPARE(QLocale::system().zeroDigit(), QChar(0x660));
}

void tst_variant_text::checkRow()
{
    QFETCH(const QVariant, value);
    QFETCH(const int, tag);
    QFETCH(const QString, text);
    const CVariant variant = tagged(value, tag);
    QCOMPARE(variant.toStr(), text);
    QCOMPARE(variant.toStr().isNull(), text.isNull());
    QCOMPARE(variant.operator QString(), text);
}

void tst_variant_text::canonicalNumbers_data()
{
    addColumns();
    for (const bool widened : {false, true}) {
        const QByteArray suffix = widened ? " widened" : "";
        row((QByteArray("E_U8") + suffix).constData(), widened ? rawSample(1) : typedSample(1), "200");
        row((QByteArray("E_I8") + suffix).constData(), widened ? rawSample(2) : typedSample(2), "-100");
        row((QByteArray("E_U16") + suffix).constData(), widened ? rawSample(3) : typedSample(3), "60000");
        row((QByteArray("E_I16") + suffix).constData(), widened ? rawSample(4) : typedSample(4), "-30000");
    }
    row("default E_U8", CVariant(NTypes::E_U8), "0");
    row("E_U32", typedSample(5), "4000000000");
    row("E_I32", typedSample(6), "-2000000000");
    row("E_U64 largest", CVariant(ULLONG_MAX), "18446744073709551615");
    row("E_I64 smallest", CVariant(LLONG_MIN), "-9223372036854775808");
    row("E_COMMAND", typedSample(23), "3735928559");
    row("E_F32", CVariant(1.5F), "1.5");
    row("E_F32 has six digits", CVariant(1.0F / 3.0F), "0.333333");
    row("E_F32 large", CVariant(1234567.0F), "1.23457e+06");
    row("E_F32 tiny", CVariant(1e-7F), "1e-07");
    row("E_F32 negative zero has no sign to QString::number", CVariant(-0.0F), "0");
    row("E_F64", CVariant(-2.25), "-2.25");
    row("E_F64 has fifteen digits", CVariant(1.0 / 3.0), "0.333333333333333");
    row("E_F64 0.1", CVariant(0.1), "0.1");
    row("E_F64 large", CVariant(1e15), "1e+15");
    row("E_F64 below the exponent form", CVariant(123456789012345.0), "123456789012345");
    row("E_F64 NaN", CVariant(std::numeric_limits<double>::quiet_NaN()), "nan");
    row("E_F64 infinity", CVariant(-std::numeric_limits<double>::infinity()), "-inf");
}

void tst_variant_text::canonicalNumbers()
{
    checkRow();
}

void tst_variant_text::canonicalTexts_data()
{
    addColumns();
    row("E_STRING32", typedSample(12), "Spindle 1");
    row("E_STRING64", typedSample(17), "Drehmoment Achse X");
    row("E_STRING128", typedSample(14), "Vorschub 50 \u20AC");
    CString32 withTail(QStringLiteral("abcdef"));
    withTail = QStringLiteral("abc");
    row("up to the terminator", CVariant(withTail), "abc");
    row("full field", CVariant(CString32(QString(40, QLatin1Char('x')))), QString(32, QLatin1Char('x')));
    row("E_CHARSTR64", typedSample(13), "Axis 1");
    row("E_CHARSTR128", typedSample(18), "Axis 1, motor");
    row("E_CHARSTR256", typedSample(15), "Axis 1, gear box");
    row("full E_CHARSTR64", charField<64>(QByteArray(64, 'x')), QString(64, QLatin1Char('x')));
    row("8-bit text is UTF-8", charField<64>("50 \xE2\x82\xAC"), "50 \u20AC");
    row("8-bit text that is no UTF-8", charField<64>("\xFC"), "\uFFFD");
    row("parsed 8-bit text", CVariant::fromStr(QStringLiteral("Gr\u00FC\u00DFe"), NTypes::E_CHARSTR64),
        "Gr\u00FC\u00DFe");
    row("E_UTF16CHAR", CVariant(QChar(0x20AC)), "\u20AC");
    row("E_CHAR", CVariant('x'), "x");
    row("untyped number", tagged(5, 0), "5");
    row("untyped text", tagged(QStringLiteral("text"), 0), "text");
    row("unassigned tag", tagged(true, 11), "true");
    row("unknown tag", tagged(5, 33), "5");
    row("negative tag", tagged(QByteArray("bytes"), -1), "bytes");
}

void tst_variant_text::canonicalTexts()
{
    checkRow();
}

void tst_variant_text::canonicalRecords_data()
{
    addColumns();
    row("all-zero date-time", CVariant(NTypes::sDateTime_t{}), "0000-00-00 00:00:00");
    row("date-time", typedSample(16), "2021-03-04 05:06:07");
    row("date-time with fields of one digit", dateTime("0000000001010100"), "0001-01-01 00:00:00");
    row("last date-time of four digits", dateTime("633B3B171F0C0F27"), "9999-12-31 23:59:59");
    row("hundredths alone make a time", dateTime("0100000001010A00"), "0010-01-01 00:00:00");
    row("month 13 is no date", dateTime("59070605040DE507"), QString());
    row("time without a date", dateTime("5907060500000000"), QString());
    row("hour 25 is midnight to Qt", dateTime("000000190403E507"), "2021-03-04 00:00:00");
    row("version", typedSample(21), "2.5.300");
    row("version without padding", valueOf<NTypes::sVersion_t>("2C010201"), "1.2.300");
    row("largest version", valueOf<NTypes::sVersion_t>("FFFFFFFF"), "255.255.65535");
    row("zero version", CVariant(NTypes::sVersion_t{}), "0.0.0");
    row("address", typedSample(22), "192.168.1.10");
    row("zero address", CVariant(NTypes::uIPv4HAddr_t{}), "0.0.0.0");
    row("broadcast address", valueOf<NTypes::uIPv4HAddr_t>("FFFFFFFF"), "255.255.255.255");
    row("pair of floats", typedSample(24), "0000c03f000020c0");
    row("byte array", bytesValue(fromHex("00ABCDEF")), "00abcdef");
    row("acceleration record", typedSample(26), "02000020400300");
    row("array of short", typedSample(27), "0100feff0300");
    row("array of int", typedSample(28), "01000000feffffff03000000");
    row("digital I/O array", typedSample(29), "0100000002000000ffffffff");
    row("array of unsigned short", typedSample(30), "01000200ffff");
    row("array of unsigned int", typedSample(31), "0300000004000000feffffff");
    row("four-part version", typedSample(32), "1.2.3.4");
    row("largest four-part version", valueOf<NTypes::sVersion4_t>("FFFFFFFFFFFFFFFF"),
        "65535.65535.65535.65535");
}

void tst_variant_text::canonicalRecords()
{
    checkRow();
}

void tst_variant_text::nullValuesHaveANullText_data()
{
    QTest::addColumn<int>("tag");
    for (int tag = 0; tag <= 33; ++tag)
        QTest::newRow(tagName(tag).constData()) << tag;
    QTest::newRow("negative") << -1;
}

void tst_variant_text::nullValuesHaveANullText()
{
    QFETCH(const int, tag);
    for (const QVariant &null : {QVariant(), QVariant(QString()), QVariant(QByteArray())}) {
        const CVariant value = tagged(null, tag);
        QVERIFY(value.toStr().isNull());
        QVERIFY(value.operator QString().isNull());
        QVERIFY(value.toLocaleStr().isNull());
    }
}

void tst_variant_text::emptyFixedStringsAsTheirClassSays()
{
    QVERIFY(CVariant(CString32()).toStr().isNull());
    QVERIFY(CVariant(CString64()).toStr().isNull());
    QVERIFY(!CVariant(CString128()).toStr().isNull());
    QVERIFY(CVariant(CString128()).toStr().isEmpty());
}

void tst_variant_text::emptyByteArrayHasANullText()
{
    for (const int tag : {24, 25}) {
        const CVariant value = tagged(QByteArray(""), tag);
        QVERIFY(!value.isNull());
        QVERIFY(value.toStr().isNull());
    }
}

void tst_variant_text::canonicalTextIgnoresTheLocale_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::newRow("German") << QLocale(QLocale::German, QLocale::Germany);
    QTest::newRow("English") << QLocale(QLocale::English, QLocale::UnitedStates);
    QTest::newRow("Hindi") << QLocale(QLocale::Hindi, QLocale::India);
    QTest::newRow("Arabic") << QLocale(QLocale::Arabic, QLocale::Egypt);
    QTest::newRow("C") << QLocale::c();
}

void tst_variant_text::canonicalTextIgnoresTheLocale()
{
    QFETCH(const QLocale, locale);
    QLocale::setDefault(locale);
    QCOMPARE(CVariant(1234.5).toStr(), QStringLiteral("1234.5"));
    QCOMPARE(CVariant(1234.5F).toStr(), QStringLiteral("1234.5"));
    QCOMPARE(CVariant(-1234567).toStr(), QStringLiteral("-1234567"));
    QCOMPARE(typedSample(16).toStr(), QStringLiteral("2021-03-04 05:06:07"));
    QCOMPARE(typedSample(21).toStr(), QStringLiteral("2.5.300"));
    QCOMPARE(typedSample(32).toStr(), QStringLiteral("1.2.3.4"));
}

// 02:30 of this night does not exist in this zone; the device's clock has it all the same.
void tst_variant_text::dateTimeTextNeedsALocalTimeThatExists()
{
    const ScopedTimeZone centralEurope("CET-1CEST,M3.5.0,M10.5.0/3");
    // Whether the local time exists is QDateTime's answer: it does twice in autumn and not at all in spring.
    QCOMPARE(dateTime("00001E021B0AE807").toStr(), QStringLiteral("2024-10-27 02:30:00"));
    if (!ScopedTimeZone::followsRules())
        QSKIP("time zones cannot be set by their rules here");
    QCOMPARE(dateTime("00001E021F03E807").toStr(), QString());
}

void tst_variant_text::dateTimeFormats_data()
{
    QTest::addColumn<int>("format");
    QTest::addColumn<QString>("text");
    QTest::newRow("ISODate") << static_cast<int>(Qt::ISODate) << QStringLiteral("2021-03-04T05:06:07");
    QTest::newRow("ISODateWithMs") << static_cast<int>(Qt::ISODateWithMs)
                                   << QStringLiteral("2021-03-04T05:06:07.890");
    const QDateTime expected(QDate(2021, 3, 4), QTime(5, 6, 7, 890));
    QTest::newRow("RFC2822Date") << static_cast<int>(Qt::RFC2822Date) << expected.toString(Qt::RFC2822Date);
    QTest::newRow("TextDate, in the system's language")
        << static_cast<int>(Qt::TextDate) << expected.toString(Qt::TextDate);
}

void tst_variant_text::dateTimeFormats()
{
    QFETCH(const int, format);
    QFETCH(const QString, text);
    QLocale::setDefault(QLocale::c());
    QCOMPARE(typedSample(16).toStr(static_cast<Qt::DateFormat>(format)), text);
    QCOMPARE(typedSample(16).toDateTime().toString(static_cast<Qt::DateFormat>(format)), text);
}

void tst_variant_text::dateTimeLocaleFormats_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("shortText");
    QTest::newRow("German") << QLocale(QLocale::German, QLocale::Germany) << QStringLiteral("04.03.21 05:06");
    QTest::newRow("English") << QLocale(QLocale::English, QLocale::UnitedStates)
                             << QStringLiteral("3/4/21 5:06 AM");
    QTest::newRow("C") << QLocale::c() << QStringLiteral("4 Mar 2021 05:06:07");
}

void tst_variant_text::dateTimeLocaleFormats()
{
    QFETCH(const QLocale, locale);
    QFETCH(const QString, shortText);
    QLocale::setDefault(locale);
    const QDateTime expected(QDate(2021, 3, 4), QTime(5, 6, 7, 890));
    QCOMPARE(typedSample(16).toStr(QLocale::ShortFormat), shortText);
    for (const QLocale::FormatType format :
         {QLocale::LongFormat, QLocale::ShortFormat, QLocale::NarrowFormat})
        QCOMPARE(typedSample(16).toStr(format), locale.toString(expected, format));
}

void tst_variant_text::formatsOfOtherTypesAreNull_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("tag");
    for (int tag = 0; tag <= 33; ++tag) {
        if (tag != NTypes::E_DATETIME)
            QTest::newRow(tagName(tag).constData()) << heldBy(typedSample(tag)) << tag;
    }
    QTest::newRow("date-time record under another tag") << heldBy(typedSample(16)) << 9;
}

void tst_variant_text::formatsOfOtherTypesAreNull()
{
    QFETCH(const QVariant, value);
    QFETCH(const int, tag);
    const CVariant variant = tagged(value, tag);
    QVERIFY(variant.toStr(Qt::ISODate).isNull());
    QVERIFY(variant.toStr(Qt::TextDate).isNull());
    QVERIFY(variant.toStr(QLocale::ShortFormat).isNull());
    QVERIFY(variant.toStr(QLocale::LongFormat).isNull());
}

// German, American and C.
void tst_variant_text::localeText_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("tag");
    QTest::addColumn<QStringList>("texts");
    const auto newRow = [](const char *name, const CVariant &value, const QStringList &texts) {
        QTest::newRow(name) << heldBy(value) << static_cast<int>(value.type()) << texts;
    };
    const auto same = [&newRow](const char *name, const CVariant &value, const char *text) {
        newRow(name, value,
               {QString::fromLatin1(text), QString::fromLatin1(text), QString::fromLatin1(text)});
    };
    newRow("double", CVariant(1234.5),
           {QStringLiteral("1.234,5"), QStringLiteral("1,234.5"), QStringLiteral("1234.5")});
    newRow("double has six digits", CVariant(1234567.5),
           {QStringLiteral("1,23457e+06"), QStringLiteral("1.23457e+06"), QStringLiteral("1.23457e+06")});
    newRow("negative double", CVariant(-0.125),
           {QStringLiteral("-0,125"), QStringLiteral("-0.125"), QStringLiteral("-0.125")});
    newRow("single", CVariant(0.1F), {QStringLiteral("0,1"), QStringLiteral("0.1"), QStringLiteral("0.1")});
    newRow("single with groups", CVariant(100000.0F),
           {QStringLiteral("100.000"), QStringLiteral("100,000"), QStringLiteral("100000")});
    same("integer has no groups", CVariant(1234567), "1234567");
    same("date-time", typedSample(16), "2021-03-04 05:06:07");
    same("text", typedSample(12), "Spindle 1");
    same("version", typedSample(21), "2.5.300");
    same("byte array", bytesValue(fromHex("0102")), "0102");
}

void tst_variant_text::localeText()
{
    QFETCH(const QVariant, value);
    QFETCH(const int, tag);
    QFETCH(const QStringList, texts);
    const CVariant variant = tagged(value, tag);
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    QCOMPARE(variant.toLocaleStr(), texts.at(0));
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    QCOMPARE(variant.toLocaleStr(), texts.at(1));
    QLocale::setDefault(QLocale::c());
    QCOMPARE(variant.toLocaleStr(), texts.at(2));
}

void tst_variant_text::hexadecimal_data()
{
    addColumns();
    row("E_U8", CVariant(static_cast<unsigned char>(0x0A)), "0a");
    row("E_I8 negative", CVariant(static_cast<signed char>(-1)), "ff");
    row("E_U8 widened beyond its size", tagged(0x12C, 1), "2c");
    row("E_I8 widened", rawSample(2), "9c");
    row("E_U16", CVariant(static_cast<unsigned short>(0x00AB)), "00ab");
    row("E_I16 negative", CVariant(static_cast<short>(-2)), "fffe");
    row("E_I16 widened", rawSample(4), "8ad0");
    row("E_U32", CVariant(0xABCU), "00000abc");
    row("E_I32 negative", CVariant(-1), "ffffffff");
    row("E_U64", CVariant(0xABCULL), "0000000000000abc");
    row("E_I64 negative", CVariant(-2LL), "fffffffffffffffe");
    row("E_UTF16CHAR", CVariant(QChar(0x20AC)), "20ac");
    row("E_UTF16CHAR of one byte", CVariant(QChar(u'A')), "0041");
    row("E_DATETIME is not padded", typedSample(16), "7e5030405060759");
    row("E_DATETIME zero", CVariant(NTypes::sDateTime_t{}), "0");
    row("E_F32 is the prefix alone", CVariant(1.5F), "");
    row("E_F64 is the prefix alone", CVariant(1.5), "");
    row("empty is the prefix alone", CVariant(), "");
    row("untyped is the prefix alone", tagged(5, 0), "");
    row("unassigned tag is the prefix alone", tagged(5, 11), "");
    row("E_STRING32", typedSample(12),
        QString::fromLatin1((QByteArray("5300700069006e0064006c00650020003100") + QByteArray(92, '0'))));
    row("E_VERSION in storage order", typedSample(21), "2c010502");
    row("E_IPV4ADDR in storage order", typedSample(22), "0a01a8c0");
    row("E_COMMAND in storage order", typedSample(23), "efbeadde");
    row("E_VERSION_4 in storage order", typedSample(32), "0400030002000100");
    row("E_BYTEARRAY", bytesValue(fromHex("00AB")), "00ab");
    row("empty E_BYTEARRAY", bytesValue(QByteArray()), "");
    for (const int tag : {24, 26, 27, 28, 29, 30, 31})
        row(tagName(tag).constData(), typedSample(tag), QString::fromLatin1(sampleBytes(tag).toHex()));
}

void tst_variant_text::hexadecimal()
{
    QFETCH(const QVariant, value);
    QFETCH(const int, tag);
    QFETCH(const QString, text);
    const CVariant variant = tagged(value, tag);
    QCOMPARE(variant.toHex(QString()), text);
    QCOMPARE(variant.toHex(QStringLiteral("0x")), QStringLiteral("0x") + text);
}

// Strings of 8 bits and the larger fixed strings: their raw bytes, two digits each.
void tst_variant_text::hexadecimalOfOtherBytes_data()
{
    QTest::addColumn<int>("tag");
    for (const int tag : {12, 13, 14, 15, 17, 18, 20})
        QTest::newRow(tagName(tag).constData()) << tag;
}

void tst_variant_text::hexadecimalOfOtherBytes()
{
    QFETCH(const int, tag);
    const CVariant value = typedSample(tag);
    QVERIFY(!value.toHex(QString()).isEmpty());
    QCOMPARE(value.toHex(QString()), QString::fromLatin1(value.toByteArray().toHex()));
}

void tst_variant_text::hexadecimalPrefix()
{
    const CVariant value(static_cast<unsigned short>(0x00AB));
    QCOMPARE(value.toHex(QStringLiteral("0x")), QStringLiteral("0x00ab"));
    QCOMPARE(value.toHex(QStringLiteral("long prefix ")), QStringLiteral("long prefix 00ab"));
    QCOMPARE(CVariant(1.5).toHex(QStringLiteral("0x")), QStringLiteral("0x"));
}

void tst_variant_text::separatedHexadecimal_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("tag");
    QTest::addColumn<int>("length");
    QTest::addColumn<QString>("separator");
    QTest::addColumn<QString>("text");
    const auto newRow = [](const char *name, const CVariant &value, int length, const char *separator,
                           const char *text) {
        QTest::newRow(name) << heldBy(value) << static_cast<int>(value.type()) << length
                            << QString::fromLatin1(separator) << QString::fromLatin1(text);
    };
    const CVariant word(static_cast<unsigned short>(0x00AB));
    newRow("whole", word, -1, ":", "00:ab");
    newRow("any negative length", word, INT_MIN, ":", "00:ab");
    newRow("nothing", word, 0, ":", "");
    newRow("odd length takes the whole pair", word, 1, ":", "00");
    newRow("one pair", word, 2, ":", "00");
    newRow("odd length takes the second pair", word, 3, ":", "00:ab");
    newRow("both pairs", word, 4, ":", "00:ab");
    newRow("longer than the text", word, 5, ":", "00:ab");
    newRow("largest length", word, INT_MAX, ":", "00:ab");
    newRow("no separator", word, -1, "", "00ab");
    newRow("long separator", word, -1, ", ", "00, ab");
    newRow("bytes", bytesValue(fromHex("0102030405")), 7, " ", "01 02 03 04");
    newRow("text of odd length ends with one digit", typedSample(16), -1, ":", "7e:50:30:40:50:60:75:9");
    newRow("text of odd length, its last pair cut off", typedSample(16), 14, ":", "7e:50:30:40:50:60:75");
    newRow("one digit", CVariant(NTypes::sDateTime_t{}), -1, ":", "0");
    newRow("no hexadecimal form", CVariant(1.5), -1, ":", "");
}

void tst_variant_text::separatedHexadecimal()
{
    QFETCH(const QVariant, value);
    QFETCH(const int, tag);
    QFETCH(const int, length);
    QFETCH(const QString, separator);
    QFETCH(const QString, text);
    QCOMPARE(tagged(value, tag).toHexSeperated(length, separator), text);
}

void tst_variant_text::debugForm_data()
{
    addColumns();
    row("E_U16", CVariant(static_cast<unsigned short>(5)), "CVariant(NTypes::E_U16, 5)");
    row("E_I32", CVariant(-12), "CVariant(NTypes::E_I32, -12)");
    row("text is not quoted", typedSample(12), "CVariant(NTypes::E_STRING32, Spindle 1)");
    row("text with a quote mark", CVariant(CString32(QStringLiteral("a\"b"))),
        "CVariant(NTypes::E_STRING32, a\"b)");
    row("text that looks like a placeholder", CVariant(CString32(QStringLiteral("%1 %2"))),
        "CVariant(NTypes::E_STRING32, %1 %2)");
    row("date-time", typedSample(16), "CVariant(NTypes::E_DATETIME, 2021-03-04 05:06:07)");
    row("misspelt names stay", typedSample(26), "CVariant(NTypes::E_DS402_ACC_REC, 02000020400300)");
    row("empty", CVariant(), "CVariant(NTypes::E_UNKNOWN, )");
    row("null", CVariant(NTypes::E_BYTEARRAY), "CVariant(NTypes::E_BYTEARRAY, )");
    row("unassigned tag", tagged(5, 11), "CVariant(NTypes::E_UNKNOWN, 5)");
}

void tst_variant_text::debugForm()
{
    QFETCH(const QVariant, value);
    QFETCH(const int, tag);
    QFETCH(const QString, text);
    const CVariant variant = tagged(value, tag);
    QCOMPARE(debugText(variant).trimmed(), text);
    QString tight;
    QDebug(&tight).nospace() << variant << 7;
    QCOMPARE(tight, text + QLatin1Char('7'));
    QString unquoted;
    QDebug(&unquoted).noquote().nospace() << variant;
    QCOMPARE(unquoted, text);
}

void tst_variant_text::debugFormKeepsTheStreamState()
{
    const CVariant value(static_cast<unsigned short>(255));
    QString spaced;
    QDebug(&spaced) << 1 << value << QStringLiteral("a") << 2;
    QCOMPARE(spaced.trimmed(), QStringLiteral("1 CVariant(NTypes::E_U16, 255) \"a\" 2"));
    QString configured;
    {
        QDebug debug(&configured);
        debug.nospace().noquote() << Qt::hex << value << QStringLiteral("a") << 255;
        QVERIFY(!debug.autoInsertSpaces());
    }
    QCOMPARE(configured, QStringLiteral("CVariant(NTypes::E_U16, 255)aff"));
}

QTEST_GUILESS_MAIN(tst_variant_text)
#include "tst_variant_text.moc"
