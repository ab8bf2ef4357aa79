// SPDX-License-Identifier: MIT
#include <ParameterValue.h>
#include <ValueParser.h>

#include <CDataTypeParser.h>
#include <LoggedTest.h>

#include <QTest>

#include <ctime>

using j6tool::bytesFromText;
using j6tool::exactText;
using j6tool::Result;
using j6tool::valueFromBytes;

Q_DECLARE_METATYPE(NTypes::eTypes_t)

namespace {

QString typeName(NTypes::eTypes_t type)
{
    return CDataTypeParser::typeToStr(type);
}

// UTF-16 units in device order, the field filled up with zeros.
QByteArray fixedField(const QString &text, int units)
{
    QByteArray bytes;
    for (const QChar unit : text) {
        bytes.append(char(unit.unicode() & 0xFF));
        bytes.append(char(unit.unicode() >> 8));
    }
    return bytes.leftJustified(2 * units, '\0');
}

} // namespace

class tst_value_parser : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void makesDeviceBytes_data();
    void makesDeviceBytes();
    void refusesTexts_data();
    void refusesTexts();
    void namesTheRefusedText_data();
    void namesTheRefusedText();
    void refusesTextsThatWouldNotReadBack_data();
    void refusesTextsThatWouldNotReadBack();
    void readsEveryHundredth();
    void readsDateTimesInEveryTimeZone();
    void readsBackWhatItShows_data();
    void readsBackWhatItShows();

protected:
    void tidy() override
    {
        qputenv("TZ", mTimeZone);
        tzset();
    }

private:
    QByteArray mTimeZone = qgetenv("TZ");
};

void tst_value_parser::makesDeviceBytes_data()
{
    QTest::addColumn<NTypes::eTypes_t>("type");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");

    const auto row = [](NTypes::eTypes_t type, const QString &text, const QByteArray &bytes) {
        QTest::addRow("%s '%s'", qPrintable(typeName(type)), qPrintable(text.left(40)))
            << type << text << bytes;
    };
    const auto hex = [&row](NTypes::eTypes_t type, const char *text, const char *digits) {
        row(type, QString::fromUtf8(text), QByteArray::fromHex(digits));
    };
    hex(NTypes::E_U8, "0", "00");
    hex(NTypes::E_U8, "255", "FF");
    hex(NTypes::E_U8, "0xfF", "FF");
    hex(NTypes::E_U8, "0X0a", "0A");
    hex(NTypes::E_U8, "037", "1F");
    hex(NTypes::E_U8, "+7", "07");
    hex(NTypes::E_U8, "00", "00");
    hex(NTypes::E_I8, "-128", "80");
    hex(NTypes::E_I8, "127", "7F");
    hex(NTypes::E_I8, "-0x10", "F0");
    hex(NTypes::E_I8, "-0", "00");
    hex(NTypes::E_U16, "65535", "FFFF");
    hex(NTypes::E_U16, "4660", "3412");
    hex(NTypes::E_I16, "-32768", "0080");
    hex(NTypes::E_I16, "32767", "FF7F");
    hex(NTypes::E_U32, "4294967295", "FFFFFFFF");
    hex(NTypes::E_U32, "0x12345678", "78563412");
    hex(NTypes::E_I32, "-2147483648", "00000080");
    hex(NTypes::E_I32, "2147483647", "FFFFFF7F");
    hex(NTypes::E_U64, "18446744073709551615", "FFFFFFFFFFFFFFFF");
    hex(NTypes::E_I64, "-9223372036854775808", "0000000000000080");
    hex(NTypes::E_I64, "9223372036854775807", "FFFFFFFFFFFFFF7F");
    hex(NTypes::E_COMMAND, "4294967295", "FFFFFFFF");
    hex(NTypes::E_COMMAND, "0x10", "10000000");
    hex(NTypes::E_F32, "1", "0000803F");
    hex(NTypes::E_F32, "-0.25", "000080BE");
    hex(NTypes::E_F32, ".5", "0000003F");
    hex(NTypes::E_F32, "5.", "0000A040");
    hex(NTypes::E_F32, "1.5e3", "0080BB44");
    hex(NTypes::E_F32, "1.5E+3", "0080BB44");
    hex(NTypes::E_F32, "0", "00000000");
    hex(NTypes::E_F32, "-0.0", "00000080");
    hex(NTypes::E_F32, "0e5", "00000000");
    hex(NTypes::E_F32, "3.4028234e38", "FFFF7F7F");
    hex(NTypes::E_F32, "1e-45", "01000000");
    hex(NTypes::E_F64, "1", "000000000000F03F");
    hex(NTypes::E_F64, "-1e308", "A0C8EB85F3CCE1FF");
    hex(NTypes::E_F64, "1.7976931348623157e308", "FFFFFFFFFFFFEF7F");
    hex(NTypes::E_DATETIME, "2024-03-01 12:30:45", "002D1E0C0103E807");
    hex(NTypes::E_DATETIME, "2024-03-01T12:30:45.67", "432D1E0C0103E807");
    hex(NTypes::E_DATETIME, "2024-03-01 12:30:45.6", "3C2D1E0C0103E807");
    hex(NTypes::E_DATETIME, "2024-02-29 00:00:00", "000000001D02E807");
    hex(NTypes::E_DATETIME, "0001-01-01 00:00:00", "0000000001010100");
    hex(NTypes::E_DATETIME, "9999-12-31 23:59:59.99", "633B3B171F0C0F27");
    hex(NTypes::E_DATETIME, "0000-00-00 00:00:00", "0000000000000000");
    hex(NTypes::E_VERSION, "1.2.300", "2C010201");
    hex(NTypes::E_VERSION, "0.0.0", "00000000");
    hex(NTypes::E_VERSION, "255.255.65535", "FFFFFFFF");
    hex(NTypes::E_VERSION_4, "1.2.3.4", "0400030002000100");
    hex(NTypes::E_VERSION_4, "65535.32768.0.40000", "409C00000080FFFF");
    hex(NTypes::E_IPV4ADDR, "192.168.1.10", "0A01A8C0");
    hex(NTypes::E_IPV4ADDR, "0.0.0.0", "00000000");
    hex(NTypes::E_IPV4ADDR, "255.255.255.255", "FFFFFFFF");
    hex(NTypes::E_CHAR, "A", "41");
    hex(NTypes::E_CHAR, "", "00");
    hex(NTypes::E_CHAR, " ", "20");
    hex(NTypes::E_CHAR, "\x7F", "7F");
    hex(NTypes::E_UTF16CHAR, "A", "4100");
    hex(NTypes::E_UTF16CHAR, "", "0000");
    hex(NTypes::E_UTF16CHAR, "\u00E4", "E400");
    hex(NTypes::E_UTF16CHAR, "\u20AC", "AC20");
    hex(NTypes::E_2DF32F32, "0000803f000000C0", "0000803F000000C0");
    hex(NTypes::E_BYTEARRAY, "00", "00");
    hex(NTypes::E_BYTEARRAY, "0123456789abcdefABCDEF", "0123456789ABCDEFABCDEF");
    hex(NTypes::E_DS402_ACC_REC, "020000803f0100", "020000803F0100");
    hex(NTypes::E_DS402_I16_ARRAY, "0200ffff0100", "0200FFFF0100");
    hex(NTypes::E_DS402_U16_ARRAY, "0200ffff0100", "0200FFFF0100");
    hex(NTypes::E_DS402_I32_ARRAY, "020000000000008001000000", "020000000000008001000000");
    hex(NTypes::E_DS402_U32_ARRAY, "020000000000008001000000", "020000000000008001000000");
    hex(NTypes::E_DS402_DIO_ARRAY, "020000000000008001000000", "020000000000008001000000");

    const QString mixed = QStringLiteral("\u00E4\u20AC\U0001F600 x");
    const QString longest(QStringLiteral("y").repeated(256));
    row(NTypes::E_STRING32, QString(), fixedField(QString(), 32));
    row(NTypes::E_STRING32, mixed, fixedField(mixed, 32));
    row(NTypes::E_STRING32, longest.left(32), fixedField(longest.left(32), 32));
    row(NTypes::E_STRING64, mixed, fixedField(mixed, 64));
    row(NTypes::E_STRING64, longest.left(64), fixedField(longest.left(64), 64));
    row(NTypes::E_STRING128, mixed, fixedField(mixed, 128));
    row(NTypes::E_STRING128, longest.left(128), fixedField(longest.left(128), 128));
    row(NTypes::E_CHARSTR64, QString(), QByteArray(64, '\0'));
    row(NTypes::E_CHARSTR64, QStringLiteral("a b"), QByteArray("a b").leftJustified(64, '\0'));
    row(NTypes::E_CHARSTR64, longest.left(64), QByteArray(64, 'y'));
    row(NTypes::E_CHARSTR128, QStringLiteral("a"), QByteArray("a").leftJustified(128, '\0'));
    row(NTypes::E_CHARSTR128, longest.left(128), QByteArray(128, 'y'));
    row(NTypes::E_CHARSTR256, QStringLiteral("a"), QByteArray("a").leftJustified(256, '\0'));
    row(NTypes::E_CHARSTR256, longest, QByteArray(256, 'y'));
}

void tst_value_parser::makesDeviceBytes()
{
    QFETCH(NTypes::eTypes_t, type);
    QFETCH(QString, text);
    const Result<QByteArray> bytes = bytesFromText(text, type);
    QVERIFY2(bytes, bytes ? "" : qPrintable(bytes.error().text));
    QTEST(*bytes, "bytes");
}

void tst_value_parser::refusesTexts_data()
{
    QTest::addColumn<NTypes::eTypes_t>("type");
    QTest::addColumn<QString>("expected"); // what the error says would be a value
    QTest::addColumn<QStringList>("texts");

    const auto row = [](NTypes::eTypes_t type, const char *expected, const QStringList &texts) {
        QTest::newRow(qPrintable(typeName(type))) << type << QString::fromLatin1(expected) << texts;
    };
    // A number, but not written as one.
    const QStringList noIntegers = {QString(),
                                    QStringLiteral(" "),
                                    QStringLiteral(" 1"),
                                    QStringLiteral("1 "),
                                    QStringLiteral("1 2"),
                                    QStringLiteral("1.0"),
                                    QStringLiteral("1,0"),
                                    QStringLiteral("1e1"),
                                    QStringLiteral("0x"),
                                    QStringLiteral("0xG"),
                                    QStringLiteral("x1"),
                                    QStringLiteral("1F"),
                                    QStringLiteral("1Fh"),
                                    QStringLiteral("08"),
                                    QStringLiteral("0b1"),
                                    QStringLiteral("--1"),
                                    QStringLiteral("+-1"),
                                    QStringLiteral("+"),
                                    QStringLiteral("- 1"),
                                    QStringLiteral("1'000"),
                                    QStringLiteral("true"),
                                    QStringLiteral("\uFF11"),
                                    QStringLiteral("1\n"),
                                    QStringLiteral("99999999999999999999999")};
    const auto integers = [&](NTypes::eTypes_t type, const char *expected, const QStringList &outOfRange) {
        row(type, expected, noIntegers + outOfRange);
    };
    integers(NTypes::E_U8, "an integer from 0 to 255",
             {QStringLiteral("256"), QStringLiteral("-1"), QStringLiteral("0x100"), QStringLiteral("0400")});
    integers(NTypes::E_I8, "an integer from -128 to 127",
             {QStringLiteral("128"), QStringLiteral("-129"), QStringLiteral("0xFF")});
    integers(NTypes::E_U16, "an integer from 0 to 65535", {QStringLiteral("65536"), QStringLiteral("-1")});
    integers(NTypes::E_I16, "an integer from -32768 to 32767",
             {QStringLiteral("32768"), QStringLiteral("-32769"), QStringLiteral("0x8000")});
    integers(NTypes::E_U32, "an integer from 0 to 4294967295",
             {QStringLiteral("4294967296"), QStringLiteral("-1")});
    integers(NTypes::E_I32, "an integer from -2147483648 to 2147483647",
             {QStringLiteral("2147483648"), QStringLiteral("-2147483649"), QStringLiteral("0x80000000")});
    integers(NTypes::E_U64, "an integer from 0 to 18446744073709551615",
             {QStringLiteral("18446744073709551616"), QStringLiteral("-1")});
    integers(NTypes::E_I64, "an integer from -9223372036854775808 to 9223372036854775807",
             {QStringLiteral("9223372036854775808"), QStringLiteral("-9223372036854775809")});
    integers(NTypes::E_COMMAND, "an integer from 0 to 4294967295",
             {QStringLiteral("4294967296"), QStringLiteral("-1")});

    const char *number = "a finite decimal number in range, not so small that it becomes 0";
    const QStringList noNumbers = {QString(),
                                   QStringLiteral(" 1"),
                                   QStringLiteral("1 "),
                                   QStringLiteral("1,5"),
                                   QStringLiteral("1.2.3"),
                                   QStringLiteral("."),
                                   QStringLiteral("-"),
                                   QStringLiteral("e5"),
                                   QStringLiteral("1e"),
                                   QStringLiteral("1e+"),
                                   QStringLiteral("1e1.5"),
                                   QStringLiteral("0x10"),
                                   QStringLiteral("1f"),
                                   QStringLiteral("nan"),
                                   QStringLiteral("NaN"),
                                   QStringLiteral("inf"),
                                   QStringLiteral("-inf"),
                                   QStringLiteral("infinity"),
                                   QStringLiteral("\uFF11"),
                                   QStringLiteral("1\n"),
                                   QStringLiteral("1e999"),
                                   QStringLiteral("-1e999"),
                                   QStringLiteral("1e-999"),
                                   QStringLiteral("1e99999999999")};
    row(NTypes::E_F32, number,
        noNumbers
            + QStringList{QStringLiteral("3.41e38"), QStringLiteral("-1e39"), QStringLiteral("1e-46"),
                          QStringLiteral("0.00000000000000000000000000000000000000000000000001")});
    row(NTypes::E_F64, number, noNumbers + QStringList{QStringLiteral("1.8e308"), QStringLiteral("1e-324")});

    row(NTypes::E_DATETIME, "a date-time of the form 2024-03-01 12:30:45.67",
        {QString(),
         QStringLiteral("0"),
         QStringLiteral("20240301"),
         QStringLiteral("2024-03-01"),
         QStringLiteral("2024-03-01 12:30"),
         QStringLiteral("12:30:45"),
         QStringLiteral("2024-3-1 12:30:45"),
         QStringLiteral("01.03.2024 12:30:45"),
         QStringLiteral("2024-03-01  12:30:45"),
         QStringLiteral("2024-03-01t12:30:45"),
         QStringLiteral("2024-03-01 12:30:45 "),
         QStringLiteral("2024-03-01 12:30:45."),
         QStringLiteral("2024-03-01 12:30:45.678"),
         QStringLiteral("2024-03-01 12:30:45,67"),
         QStringLiteral("2024-03-01 24:00:00"),
         QStringLiteral("2024-03-01 12:60:00"),
         QStringLiteral("2024-03-01 12:30:60"),
         QStringLiteral("2024-02-30 12:30:45"),
         QStringLiteral("2023-02-29 12:30:45"),
         QStringLiteral("2024-13-01 12:30:45"),
         QStringLiteral("2024-00-01 12:30:45"),
         QStringLiteral("2024-03-00 12:30:45"),
         QStringLiteral("0000-01-01 00:00:00"),
         QStringLiteral("0000-00-00 00:00:01"),
         QStringLiteral("0000-00-00T00:00:00"),
         QStringLiteral("-2024-03-01 12:30:45"),
         QStringLiteral("12024-03-01 12:30:45"),
         QStringLiteral("2024-03-01T12:30:45Z"),
         QStringLiteral("2024-03-01T12:30:45+02:00")});

    const QStringList noVersions = {QString(),
                                    QStringLiteral("1"),
                                    QStringLiteral("1.2"),
                                    QStringLiteral("1.2.3.4.5"),
                                    QStringLiteral("1..3.4"),
                                    QStringLiteral("1..3"),
                                    QStringLiteral("1.2."),
                                    QStringLiteral(".1.2"),
                                    QStringLiteral("v1.2.3"),
                                    QStringLiteral("1.2.x"),
                                    QStringLiteral("1.2.-3"),
                                    QStringLiteral("1.2.+3"),
                                    QStringLiteral("1.2.3 "),
                                    QStringLiteral("1.02.3"),
                                    QStringLiteral("1.0x2.3"),
                                    QStringLiteral("1,2,3")};
    row(NTypes::E_VERSION, "three numbers such as 1.2.300, at most 255.255.65535",
        noVersions
            + QStringList{QStringLiteral("1.2.3.4"), QStringLiteral("256.0.0"), QStringLiteral("0.256.0"),
                          QStringLiteral("0.0.65536"), QStringLiteral("0.0.99999999999")});
    row(NTypes::E_VERSION_4, "four numbers such as 1.2.3.4, each at most 65535",
        noVersions
            + QStringList{QStringLiteral("1.2.3"), QStringLiteral("65536.0.0.0"),
                          QStringLiteral("0.0.0.65536")});
    row(NTypes::E_IPV4ADDR, "an address such as 192.168.1.10",
        {QString(), QStringLiteral("0"), QStringLiteral("10.1"), QStringLiteral("10.0.1"),
         QStringLiteral("10.0.0.0.1"), QStringLiteral("10.0.0.256"), QStringLiteral("10.0.0.01"),
         QStringLiteral("10.0.0.0x1"), QStringLiteral("10.0.0.-1"), QStringLiteral("10.0..1"),
         QStringLiteral("10.0.0.1 "), QStringLiteral("10.0.0.1:80"), QStringLiteral("localhost"),
         QStringLiteral("::1"), QStringLiteral("::ffff:10.0.0.1"), QStringLiteral("3232235786")});

    const QString longText = QStringLiteral("y").repeated(257);
    const QString pairs = QStringLiteral("\U0001F600").repeated(65);
    row(NTypes::E_STRING32, "a text of at most 32 UTF-16 units", {longText.left(33), pairs.left(34)});
    row(NTypes::E_STRING64, "a text of at most 64 UTF-16 units", {longText.left(65), pairs.left(66)});
    row(NTypes::E_STRING128, "a text of at most 128 UTF-16 units", {longText.left(129), pairs});
    row(NTypes::E_CHARSTR64, "a text of at most 64 ASCII characters",
        {longText.left(65), QStringLiteral("\u00E4"), QStringLiteral("\u0080"), QStringLiteral("a\u20AC")});
    row(NTypes::E_CHARSTR128, "a text of at most 128 ASCII characters",
        {longText.left(129), QStringLiteral("\u00E4")});
    row(NTypes::E_CHARSTR256, "a text of at most 256 ASCII characters", {longText, QStringLiteral("\u00E4")});
    row(NTypes::E_CHAR, "one ASCII character, or none for zero",
        {QStringLiteral("ab"), QStringLiteral("A "), QStringLiteral("\u00E4"), QStringLiteral("\u0080")});
    row(NTypes::E_UTF16CHAR, "one UTF-16 unit, or none for zero",
        {QStringLiteral("ab"), QStringLiteral("\U0001F600")});
}

void tst_value_parser::refusesTexts()
{
    QFETCH(NTypes::eTypes_t, type);
    QFETCH(QString, expected);
    QFETCH(QStringList, texts);
    for (const QString &text : qAsConst(texts)) {
        const Result<QByteArray> bytes = bytesFromText(text, type);
        QVERIFY2(!bytes, qPrintable(text));
        QVERIFY2(bytes.error().text.endsWith(QStringLiteral(" is no %1 (%2)").arg(typeName(type), expected)),
                 qPrintable(bytes.error().text));
    }
    QVERIFY(!texts.isEmpty());
}

void tst_value_parser::namesTheRefusedText_data()
{
    QTest::addColumn<NTypes::eTypes_t>("type");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("error");

    QTest::newRow("number") << NTypes::E_U8 << "256"
                            << "'256' is no UNIT_U8 (an integer from 0 to 255)";
    QTest::newRow("place-holder") << NTypes::E_U8 << "%1%2"
                                  << "'%1%2' is no UNIT_U8 (an integer from 0 to 255)";
    QTest::newRow("control characters")
        << NTypes::E_CHAR << "\x1B[0m"
        << "'\\x1b[0m' is no UNIT_CHAR (one ASCII character, or none for zero)";
    QTest::newRow("odd digits") << NTypes::E_BYTEARRAY << "123"
                                << "'123' has an odd number of hexadecimal digits";
    QTest::newRow("no digits") << NTypes::E_BYTEARRAY << "0x12"
                               << "'0x12' is not hexadecimal";
    QTest::newRow("no bytes") << NTypes::E_BYTEARRAY << ""
                              << "'' has 0 bytes where UNIT_BYTEARRAY has 1 or more";
    QTest::newRow("too few bytes") << NTypes::E_DS402_I16_ARRAY << "0200000000"
                                   << "'0200000000' has 5 bytes where UNIT_DS402_I16_ARRAY has 6";
    QTest::newRow("too many bytes") << NTypes::E_2DF32F32 << "000000000000000000"
                                    << "'000000000000000000' has 9 bytes where UNIT_2D_F32_F32 has 8";
}

void tst_value_parser::namesTheRefusedText()
{
    QFETCH(NTypes::eTypes_t, type);
    QFETCH(QString, text);
    const Result<QByteArray> bytes = bytesFromText(text, type);
    QVERIFY(!bytes);
    QTEST(bytes.error().text, "error");
}

// A field that holds the byte pair FF FF is read without it, so these texts would come back shorter.
void tst_value_parser::refusesTextsThatWouldNotReadBack_data()
{
    QTest::addColumn<NTypes::eTypes_t>("type");
    QTest::addColumn<QString>("text");

    const QString neighbours = QStringLiteral("a\uFF01\u00FF");
    QTest::newRow("UNIT_STRING32") << NTypes::E_STRING32 << neighbours;
    QTest::newRow("UNIT_STRING64") << NTypes::E_STRING64 << neighbours;
    QTest::newRow("non-character") << NTypes::E_STRING32 << QStringLiteral("a") + QChar(0xFFFF);
    QTest::newRow("terminator inside")
        << NTypes::E_STRING128 << QStringLiteral("a") + QChar(0) + QLatin1Char('b');
    QTest::newRow("terminator in 8 bits")
        << NTypes::E_CHARSTR64 << QStringLiteral("a") + QChar(0) + QLatin1Char('b');
}

void tst_value_parser::refusesTextsThatWouldNotReadBack()
{
    QFETCH(NTypes::eTypes_t, type);
    QFETCH(QString, text);
    const Result<QByteArray> bytes = bytesFromText(text, type);
    QVERIFY(!bytes);
    QVERIFY2(bytes.error().text.endsWith(QStringLiteral("(it would not read back as the same value)")),
             qPrintable(bytes.error().text));
}

void tst_value_parser::readsEveryHundredth()
{
    for (int hundredths = 0; hundredths < 100; ++hundredths) {
        const QString text =
            QStringLiteral("2024-03-01 12:30:45.%1").arg(hundredths, 2, 10, QLatin1Char('0'));
        const Result<QByteArray> bytes = bytesFromText(text, NTypes::E_DATETIME);
        QVERIFY2(bytes, qPrintable(text));
        QCOMPARE(int(bytes->at(0)), hundredths);
    }
}

// The tool runs in UTC; if it did not, a time that the zone's clock skips must not become another one.
void tst_value_parser::readsDateTimesInEveryTimeZone()
{
    for (const QByteArray &zone : {QByteArray("Asia/Kolkata"), QByteArray("UTC")}) {
        qputenv("TZ", zone);
        tzset();
        const Result<QByteArray> bytes =
            bytesFromText(QStringLiteral("2024-03-31 02:30:00"), NTypes::E_DATETIME);
        QVERIFY2(bytes, zone.constData());
        QCOMPARE(bytes->toHex(), QByteArray("00001e021f03e807"));
    }
    qputenv("TZ", "Europe/Berlin");
    tzset();
    const Result<QByteArray> bytes = bytesFromText(QStringLiteral("2024-03-31 02:30:00"), NTypes::E_DATETIME);
    QVERIFY(!bytes || bytes->toHex() == "00001e021f03e807");
}

// Every value prints, and the print is read again as the same bytes.
void tst_value_parser::readsBackWhatItShows_data()
{
    QTest::addColumn<NTypes::eTypes_t>("type");
    QTest::addColumn<QByteArray>("bytes");

    for (auto row = CDataTypeParser::mTypeDataMap.cbegin(); row != CDataTypeParser::mTypeDataMap.cend();
         ++row) {
        if (row.key() == NTypes::E_UNKNOWN)
            continue;
        const int size = int(CDataTypeParser::typeSize(row.key()));
        QTest::addRow("%s zeros", qPrintable(row.value())) << row.key() << QByteArray(size, '\0');
        QByteArray ascending;
        for (int i = 0; i < size; ++i)
            ascending.append(char(i % 12 + 1));
        const bool isWide =
            row.key() == NTypes::E_UTF16CHAR || row.value().startsWith(QStringLiteral("UNIT_STRING"));
        // The shown digits of a floating-point number are fewer than it has.
        if (row.key() != NTypes::E_F32 && row.key() != NTypes::E_F64)
            QTest::addRow("%s ascending%s", qPrintable(row.value()), isWide ? " units" : "")
                << row.key() << ascending;
    }
    QTest::newRow("positive number") << NTypes::E_F32 << QByteArray::fromHex("0000C03F");
    QTest::newRow("negative number") << NTypes::E_F64 << QByteArray::fromHex("000000000000F8BF");
}

void tst_value_parser::readsBackWhatItShows()
{
    QFETCH(NTypes::eTypes_t, type);
    QFETCH(QByteArray, bytes);
    const QString text = exactText(valueFromBytes(bytes, type));
    const Result<QByteArray> readBack = bytesFromText(text, type);
    QVERIFY2(readBack, readBack ? "" : qPrintable(readBack.error().text));
    if (type == NTypes::E_DATETIME) // the text has no hundredths
        bytes[0] = '\0';
    QCOMPARE(readBack->toHex(), bytes.toHex());
}

QTEST_GUILESS_MAIN(tst_value_parser)
#include "tst_value_parser.moc"
