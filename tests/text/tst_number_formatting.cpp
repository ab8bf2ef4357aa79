// SPDX-License-Identifier: MIT
#include <CStr.h>

#include <CDataTypeParser.h>
#include <LoggedTest.h>

#include <QLocale>
#include <QTest>

#include <climits>
#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr float largestBelow2To31 = 2147483520.0F;
const QChar point = QLatin1Char('.');

} // namespace

// Runs under a locale with decimal comma and group points, which only doubleToString() may notice.
class tst_number_formatting : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void floats_data();
    void floats();
    void doubles_data();
    void doubles();
    void doublesHaveNoLimitOfDecimals();
    void doublesInTheDefaultLocale_data();
    void doublesInTheDefaultLocale();
    void doubleToStringFollowsTheDefaultLocale();
    void doubleToStringKeepsTheNumbersDigits();
    void typeNames_data();
    void typeNames();
    void fixPointTexts_data();
    void fixPointTexts();
    void fractionIsTheRawBitField();
    void textsThatAreNoFixPoint_data();
    void textsThatAreNoFixPoint();
    void fixPointTextsWithLostBits_data();
    void fixPointTextsWithLostBits();
    void anyCharacterMayBeTheSeparator();
    void exampleOfTheManual();

private:
    void prepare() override
    {
        mEarlierLocale = QLocale();
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    }
    void tidy() override { QLocale::setDefault(mEarlierLocale); }

    QLocale mEarlierLocale;
};

void tst_number_formatting::floats_data()
{
    QTest::addColumn<float>("value");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("text");

    QTest::newRow("one third, budget of five") << 1.0F / 3.0F << 10 << QStringLiteral("0.33333");
    QTest::newRow("one third, fewer asked for") << 1.0F / 3.0F << 2 << QStringLiteral("0.33");
    QTest::newRow("one third, none asked for") << 1.0F / 3.0F << 0 << QStringLiteral("0");
    QTest::newRow("five integer digits leave one decimal") << 12345.678F << 3 << QStringLiteral("12345.7");
    QTest::newRow("four integer digits leave two") << 1234.5678F << 3 << QStringLiteral("1234.57");
    QTest::newRow("two integer digits leave four") << 12.5F << 4 << QStringLiteral("12.5000");
    QTest::newRow("two integer digits leave four, more asked for") << 12.5F << 5 << QStringLiteral("12.5000");
    QTest::newRow("99999.5 has room for one") << 99999.5F << 3 << QStringLiteral("99999.5");
    QTest::newRow("100000 has none") << 100000.0F << 3 << QStringLiteral("100000");
    QTest::newRow("seven digits have none") << 1234567.0F << 3 << QStringLiteral("1234567");
    QTest::newRow("largest float below 2^31") << largestBelow2To31 << 10 << QStringLiteral("2147483520");
    QTest::newRow("2^31 counts as one digit") << 2147483648.0F << 10 << QStringLiteral("2147483648.00000");
    QTest::newRow("3e9 counts as one digit") << 3e9F << 3 << QStringLiteral("3000000000.000");
    QTest::newRow("-2^31 counts as one digit") << -2147483648.0F << 9 << QStringLiteral("-2147483648.00000");
    QTest::newRow("negative") << -12345.678F << 3 << QStringLiteral("-12345.7");
    QTest::newRow("zero") << 0.0F << 2 << QStringLiteral("0.00");
    QTest::newRow("small") << 0.00001F << 10 << QStringLiteral("0.00001");
    QTest::newRow("too small to show") << 0.0000001F << 10 << QStringLiteral("0.00000");
    QTest::newRow("negative decimals count as none") << 2.75F << -3 << QStringLiteral("3");
    QTest::newRow("smallest number of decimals") << 2.75F << INT_MIN << QStringLiteral("3");
    QTest::newRow("largest number of decimals") << 2.75F << INT_MAX << QStringLiteral("2.75000");
    QTest::newRow("infinity") << std::numeric_limits<float>::infinity() << 3 << QStringLiteral("inf");
    QTest::newRow("minus infinity") << -std::numeric_limits<float>::infinity() << 3 << QStringLiteral("-inf");
    QTest::newRow("not a number") << std::numeric_limits<float>::quiet_NaN() << 3 << QStringLiteral("nan");
}

void tst_number_formatting::floats()
{
    QFETCH(float, value);
    QFETCH(int, decimals);
    QTEST(CStr::fromF32(value, decimals), "text");
}

void tst_number_formatting::doubles_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("text");

    QTest::newRow("one third, ten decimals") << 1.0 / 3.0 << 10 << QStringLiteral("0.3333333333");
    QTest::newRow("no limit of significant digits") << 12345.678 << 3 << QStringLiteral("12345.678");
    QTest::newRow("100000 keeps its decimals") << 100000.0 << 3 << QStringLiteral("100000.000");
    QTest::newRow("more digits than a double has")
        << 0.1 << 30 << QStringLiteral("0.100000000000000005551115123126");
    QTest::newRow("no decimals") << 2.75 << 0 << QStringLiteral("3");
    QTest::newRow("never an exponent") << 1e22 << 1 << QStringLiteral("10000000000000000000000.0");
    QTest::newRow("negative") << -1.25 << 2 << QStringLiteral("-1.25");
    QTest::newRow("zero") << 0.0 << 2 << QStringLiteral("0.00");
    QTest::newRow("negative decimals are six") << 1.5 << -1 << QStringLiteral("1.500000");
    QTest::newRow("shortest") << 0.1 << int(QLocale::FloatingPointShortest) << QStringLiteral("0.1");
    QTest::newRow("infinity") << infinity << 3 << QStringLiteral("inf");
    QTest::newRow("minus infinity") << -infinity << 3 << QStringLiteral("-inf");
    QTest::newRow("not a number") << notANumber << 3 << QStringLiteral("nan");
}

void tst_number_formatting::doubles()
{
    QFETCH(double, value);
    QFETCH(int, decimals);
    QTEST(CStr::fromF64(value, decimals), "text");
    QCOMPARE(CStr::fromF64(value, decimals), QString::number(value, 'f', decimals));
}

void tst_number_formatting::doublesHaveNoLimitOfDecimals()
{
    const QString text = CStr::fromF64(0.5, 2000);
    QCOMPARE(text, QStringLiteral("0.5") + QString(1999, QLatin1Char('0')));
}

void tst_number_formatting::doublesInTheDefaultLocale_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("precision");
    QTest::addColumn<char>("format");
    QTest::addColumn<QString>("text");

    const auto row = [](const char *name, const char *locale, double value, int precision, char format,
                        const char *text) {
        QTest::newRow(name) << QString::fromLatin1(locale) << value << precision << format
                            << QString::fromUtf8(text);
    };
    row("German: comma, no group points", "de_DE", 1234567.891, 2, 'f', "1234567,89");
    row("Swiss German: point, no group apostrophes", "de_CH", 1234567.891, 2, 'f', "1234567.89");
    row("Austrian: comma, no group blanks", "de_AT", 1234567.891, 2, 'f', "1234567,89");
    row("English: point, no group commas", "en_US", 1234567.891, 2, 'f', "1234567.89");
    row("French: comma, no narrow group blanks", "fr_FR", 1234567.891, 2, 'f', "1234567,89");
    row("C locale", "C", 1234567.891, 2, 'f', "1234567.89");
    row("Egyptian: digits and separator of the script", "ar_EG", 1234.5, 1, 'f', "١٢٣٤٫٥");
    row("negative", "de_DE", -1234567.891, 1, 'f', "-1234567,9");
    row("no decimals", "de_DE", 1234567.0, 0, 'f', "1234567");
    row("nothing to group", "de_DE", 1.5, 2, 'f', "1,50");
    row("exponent", "de_DE", 1234567.891, 3, 'e', "1,235e+06");
    row("capital exponent", "de_DE", 1234567.891, 3, 'E', "1,235E+06");
    row("general, short", "de_DE", 1234567.891, 3, 'g', "1,23e+06");
    row("general, long enough", "de_DE", 1234567.891, 8, 'g', "1234567,9");
    row("capital general", "en_US", 1234567.891, 3, 'G', "1.23E+06");
    row("infinity", "de_DE", infinity, 2, 'f', "inf");
    row("not a number", "de_DE", notANumber, 2, 'f', "nan");
}

void tst_number_formatting::doublesInTheDefaultLocale()
{
    QFETCH(QString, locale);
    QFETCH(double, value);
    QFETCH(int, precision);
    QFETCH(char, format);
    QLocale::setDefault(QLocale(locale));
    QTEST(CStr::doubleToString(value, precision, format), "text");
}

void tst_number_formatting::doubleToStringFollowsTheDefaultLocale()
{
    QCOMPARE(CStr::doubleToString(1234.5, 1, 'f'), QStringLiteral("1234,5"));
    QLocale::setDefault(QLocale::c());
    QCOMPARE(CStr::doubleToString(1234.5, 1, 'f'), QStringLiteral("1234.5"));
    QLocale german(QLocale::German, QLocale::Germany);
    german.setNumberOptions(QLocale::OmitGroupSeparator);
    QLocale::setDefault(german);
    QCOMPARE(CStr::doubleToString(1234.5, 1, 'f'), QStringLiteral("1234,5"));
}

void tst_number_formatting::doubleToStringKeepsTheNumbersDigits()
{
    const QLocale locale;
    for (const double value : {0.0, 1.5, -999.25, 1000.0, 123456789.125, 1e15}) {
        bool ok = false;
        const double back = locale.toDouble(CStr::doubleToString(value, 3, 'f'), &ok);
        QVERIFY(ok);
        QVERIFY(back == value);
    }
}

void tst_number_formatting::typeNames_data()
{
    QTest::addColumn<qint32>("number");
    QTest::addColumn<QString>("name");

    QTest::newRow("integer") << qint32(NTypes::E_U8) << QStringLiteral("UNIT_U8");
    QTest::newRow("float") << qint32(NTypes::E_F64) << QStringLiteral("UNIT_F64");
    QTest::newRow("unknown") << qint32(NTypes::E_UNKNOWN) << QStringLiteral("UNKNOWN");
    QTest::newRow("unassigned number") << 11 << QStringLiteral("UNKNOWN");
    QTest::newRow("negative number") << -1 << QStringLiteral("UNKNOWN");
    QTest::newRow("number above the last") << 33 << QStringLiteral("UNKNOWN");
    for (qint32 number = -2; number < 40; ++number) {
        const auto type = static_cast<NTypes::eTypes_t>(number);
        QTest::addRow("as the catalogue, %d", number) << number << CDataTypeParser::typeToStr(type);
    }
}

void tst_number_formatting::typeNames()
{
    QFETCH(qint32, number);
    QTEST(CStr::nTypeToStr(static_cast<NTypes::eTypes_t>(number)), "name");
}

void tst_number_formatting::fixPointTexts_data()
{
    QTest::addColumn<unsigned int>("value");
    QTest::addColumn<unsigned int>("fractionBits");
    QTest::addColumn<QString>("text");

    QTest::newRow("5 and 3/65536") << 0x00050003U << 16U << QStringLiteral("5.3");
    QTest::newRow("one and a half") << 0x00018000U << 16U << QStringLiteral("1.32768");
    QTest::newRow("zero") << 0U << 16U << QStringLiteral("0.0");
    QTest::newRow("all ones") << 0xFFFFFFFFU << 16U << QStringLiteral("65535.65535");
    QTest::newRow("8 fraction bits") << 0x00000180U << 8U << QStringLiteral("1.128");
    QTest::newRow("no fraction bits") << 5U << 0U << QStringLiteral("5.0");
    QTest::newRow("no fraction bits, all ones") << 0xFFFFFFFFU << 0U << QStringLiteral("4294967295.0");
    QTest::newRow("1 fraction bit") << 7U << 1U << QStringLiteral("3.1");
    QTest::newRow("31 fraction bits") << 0x80000001U << 31U << QStringLiteral("1.1");
    QTest::newRow("32 fraction bits: integer part 0") << 0x80000001U << 32U << QStringLiteral("0.2147483649");
    QTest::newRow("33 fraction bits") << 0xFFFFFFFFU << 33U << QStringLiteral("0.4294967295");
    QTest::newRow("64 fraction bits") << 3U << 64U << QStringLiteral("0.3");
    QTest::newRow("most fraction bits") << 3U << UINT_MAX << QStringLiteral("0.3");
}

void tst_number_formatting::fixPointTexts()
{
    QFETCH(unsigned int, value);
    QFETCH(unsigned int, fractionBits);
    QFETCH(QString, text);
    QCOMPARE(CStr::fixPointToStr(value, fractionBits, point), text);
    bool ok = false;
    QCOMPARE(CStr::strToFixPoint(text, &ok, fractionBits, point), value);
    QVERIFY(ok);
    QCOMPARE(CStr::strToFixPoint(text, nullptr, fractionBits, point), value);
}

void tst_number_formatting::fractionIsTheRawBitField()
{
    QCOMPARE(CStr::fixPointToStr(0x00010005U, 16, point), QStringLiteral("1.5"));
    QCOMPARE(CStr::strToFixPoint(QStringLiteral("1.5"), nullptr, 16, point), 0x00010005U);
    QCOMPARE(CStr::strToFixPoint(QStringLiteral("1.50"), nullptr, 16, point), 0x00010032U);
    QCOMPARE(CStr::strToFixPoint(QStringLiteral("1.05"), nullptr, 16, point), 0x00010005U);
}

void tst_number_formatting::textsThatAreNoFixPoint_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<unsigned int>("value");

    QTest::newRow("null") << QString() << 0U;
    QTest::newRow("empty") << QString(QLatin1String("")) << 0U;
    QTest::newRow("one part") << QStringLiteral("1") << 0U;
    QTest::newRow("three parts") << QStringLiteral("1.2.3") << 0U;
    QTest::newRow("three parts, the last empty") << QStringLiteral("1.2.") << 0U;
    QTest::newRow("three parts, the first empty") << QStringLiteral(".1.2") << 0U;
    QTest::newRow("two separators side by side") << QStringLiteral("1..2") << 0U;
    QTest::newRow("separator alone") << QStringLiteral(".") << 0U;
    QTest::newRow("another separator") << QStringLiteral("1,2") << 0U;
    QTest::newRow("no integer part") << QStringLiteral(".5") << 0U;
    QTest::newRow("integer part is a word") << QStringLiteral("x.5") << 0U;
    QTest::newRow("negative integer part") << QStringLiteral("-1.5") << 0U;
    QTest::newRow("hexadecimal integer part") << QStringLiteral("0x1.5") << 0U;
    QTest::newRow("integer part above 32 bits") << QStringLiteral("4294967296.5") << 0U;
    QTest::newRow("no fraction contributes 0") << QStringLiteral("1.") << 0x00010000U;
    QTest::newRow("a word as fraction contributes 0") << QStringLiteral("3.x") << 0x00030000U;
    QTest::newRow("a negative fraction contributes 0") << QStringLiteral("3.-5") << 0x00030000U;
    QTest::newRow("a fraction above 32 bits contributes 0") << QStringLiteral("3.4294967296") << 0x00030000U;
}

void tst_number_formatting::textsThatAreNoFixPoint()
{
    QFETCH(QString, text);
    QFETCH(unsigned int, value);
    bool ok = true;
    QCOMPARE(CStr::strToFixPoint(text, &ok, 16, point), value);
    QVERIFY(!ok);
    QCOMPARE(CStr::strToFixPoint(text, nullptr, 16, point), value);
}

void tst_number_formatting::fixPointTextsWithLostBits_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<unsigned int>("fractionBits");
    QTest::addColumn<unsigned int>("value");

    QTest::newRow("fraction one above its mask") << QStringLiteral("1.65536") << 16U << 0x00010000U;
    QTest::newRow("fraction masked to its low bits") << QStringLiteral("1.65539") << 16U << 0x00010003U;
    QTest::newRow("fraction of all ones") << QStringLiteral("1.4294967295") << 16U << 0x0001FFFFU;
    QTest::newRow("integer part beyond the top") << QStringLiteral("65537.3") << 16U << 0x00010003U;
    QTest::newRow("no fraction bits drop the fraction") << QStringLiteral("5.3") << 0U << 5U;
    QTest::newRow("32 fraction bits drop the integer part") << QStringLiteral("5.3") << 32U << 3U;
    QTest::newRow("most fraction bits drop the integer part") << QStringLiteral("5.3") << UINT_MAX << 3U;
    QTest::newRow("white space and plus signs") << QStringLiteral(" 1 . +5 ") << 16U << 0x00010005U;
    QTest::newRow("leading zeros are decimal") << QStringLiteral("010.010") << 16U << 0x000A000AU;
}

void tst_number_formatting::fixPointTextsWithLostBits()
{
    QFETCH(QString, text);
    QFETCH(unsigned int, fractionBits);
    bool ok = false;
    QTEST(CStr::strToFixPoint(text, &ok, fractionBits, point), "value");
    QVERIFY(ok);
}

void tst_number_formatting::anyCharacterMayBeTheSeparator()
{
    for (const ushort unit : {ushort(','), ushort(':'), ushort('%'), ushort('/'), ushort(0x066B)}) {
        const QChar separator(unit);
        const QString text = CStr::fixPointToStr(0x00050003U, 16, separator);
        QCOMPARE(text, QStringLiteral("5") + separator + QStringLiteral("3"));
        bool ok = false;
        QCOMPARE(CStr::strToFixPoint(text, &ok, 16, separator), 0x00050003U);
        QVERIFY(ok);
    }
}

void tst_number_formatting::exampleOfTheManual()
{
    QCOMPARE(CStr::fromF32(12345.678F, 3), QStringLiteral("12345.7"));
    QCOMPARE(CStr::fixPointToStr(0x00018000, 16, QLatin1Char('.')), QStringLiteral("1.32768"));
}

QTEST_GUILESS_MAIN(tst_number_formatting)

#include "tst_number_formatting.moc"
