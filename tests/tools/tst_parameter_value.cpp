// SPDX-License-Identifier: MIT
#include <ParameterChange.h>
#include <ParameterValue.h>

#include <CDataTypeParser.h>
#include <LoggedTest.h>

#include <QTest>

#include <limits>

using j6tool::bytesFromValue;
using j6tool::describedChange;
using j6tool::displayText;
using j6tool::exactText;
using j6tool::isSameValue;
using j6tool::lengthMisfit;
using j6tool::ObjectIndex;
using j6tool::Parameter;
using j6tool::ParameterChange;
using j6tool::unitFromText;
using j6tool::valueFromBytes;

Q_DECLARE_METATYPE(CVariant)
Q_DECLARE_METATYPE(NTypes::eTypes_t)
Q_DECLARE_METATYPE(Nj6Units::eUnit_t)

class tst_parameter_value : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void keepsTheBytes_data();
    void keepsTheBytes();
    void showsTexts_data();
    void showsTexts();
    void showsNumbersWithTheDigitsOfTheirUnit_data();
    void showsNumbersWithTheDigitsOfTheirUnit();
    void comparesValues_data();
    void comparesValues();
    void describesChanges_data();
    void describesChanges();
    void readsUnitCodes_data();
    void readsUnitCodes();
};

void tst_parameter_value::keepsTheBytes_data()
{
    QTest::addColumn<NTypes::eTypes_t>("type");
    QTest::addColumn<QByteArray>("bytes");

    for (auto row = CDataTypeParser::mTypeDataMap.cbegin(); row != CDataTypeParser::mTypeDataMap.cend();
         ++row) {
        if (row.key() == NTypes::E_UNKNOWN)
            continue;
        QByteArray ascending;
        for (int i = 0; i < int(CDataTypeParser::typeSize(row.key())); ++i)
            ascending.append(char(i % 0x7F + 1));
        QTest::newRow(qPrintable(row.value())) << row.key() << ascending;
    }
}

void tst_parameter_value::keepsTheBytes()
{
    QFETCH(NTypes::eTypes_t, type);
    QFETCH(QByteArray, bytes);
    QVERIFY(!lengthMisfit(bytes, type));
    const CVariant value = valueFromBytes(bytes, type);
    QCOMPARE(value.type(), type);
    QCOMPARE(bytesFromValue(value).toHex(), bytes.toHex());
}

void tst_parameter_value::showsTexts_data()
{
    QTest::addColumn<NTypes::eTypes_t>("type");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");

    const auto row = [](const char *name, NTypes::eTypes_t type, const char *hex, const QString &text) {
        const int size = type == NTypes::E_BYTEARRAY ? 0 : int(CDataTypeParser::typeSize(type));
        QTest::newRow(name) << type << QByteArray::fromHex(hex).leftJustified(size, '\0') << text;
    };
    row("signed", NTypes::E_I8, "FF", QStringLiteral("-1"));
    row("unsigned", NTypes::E_U64, "FFFFFFFFFFFFFFFF", QStringLiteral("18446744073709551615"));
    row("command", NTypes::E_COMMAND, "FFFFFFFF", QStringLiteral("4294967295"));
    row("version", NTypes::E_VERSION, "2C010201", QStringLiteral("1.2.300"));
    row("four-part version", NTypes::E_VERSION_4, "0400030002000100", QStringLiteral("1.2.3.4"));
    row("address", NTypes::E_IPV4ADDR, "0A01A8C0", QStringLiteral("192.168.1.10"));
    row("byte array", NTypes::E_BYTEARRAY, "00FF", QStringLiteral("00ff"));
    row("pair of floats", NTypes::E_2DF32F32, "0000803F000000C0", QStringLiteral("0000803f000000c0"));
    row("UTF-16", NTypes::E_STRING32, "E400AC203DD800DE", QStringLiteral("\u00E4\u20AC\U0001F600"));
    row("UTF-16 behind the terminator", NTypes::E_STRING64, "410000004200", QStringLiteral("A"));
    row("8 bits behind the terminator", NTypes::E_CHARSTR64, "410042", QStringLiteral("A"));
    row("8 bits in UTF-8", NTypes::E_CHARSTR64, "C3A4", QStringLiteral("\u00E4"));
    row("8 bits not in UTF-8", NTypes::E_CHARSTR128, "41E4", QStringLiteral("A\uFFFD"));
    row("character", NTypes::E_CHAR, "41", QStringLiteral("A"));
    row("character zero", NTypes::E_CHAR, "00", QString());
    row("character that is not ASCII", NTypes::E_CHAR, "E4", QStringLiteral("\uFFFD"));
    row("UTF-16 character", NTypes::E_UTF16CHAR, "E400", QStringLiteral("\u00E4"));
    row("UTF-16 character zero", NTypes::E_UTF16CHAR, "0000", QString());
    row("half a surrogate pair", NTypes::E_UTF16CHAR, "00D8", QString(QChar(0xD800)));
    row("erased field", NTypes::E_STRING32, QByteArray(128, 'F').constData(), QString());
    row("date-time", NTypes::E_DATETIME, "432D1E0C0103E807", QStringLiteral("2024-03-01 12:30:45"));
    row("empty date-time", NTypes::E_DATETIME, "0000000000000000", QStringLiteral("0000-00-00 00:00:00"));
    const QString invalid = QStringLiteral("invalid date-time");
    row("hour 24", NTypes::E_DATETIME, "000000180103E807", invalid);
    row("negative minute", NTypes::E_DATETIME, "0000FF0C0103E807", invalid);
    row("100 hundredths", NTypes::E_DATETIME, "642D1E0C0103E807", invalid);
    row("February 30", NTypes::E_DATETIME, "002D1E0C1E02E807", invalid);
    row("month 13", NTypes::E_DATETIME, "002D1E0C010DE807", invalid);
    row("time without a date", NTypes::E_DATETIME, "002D1E0C00000000", invalid);
    row("erased date-time", NTypes::E_DATETIME, "FFFFFFFFFFFFFFFF", invalid);
}

void tst_parameter_value::showsTexts()
{
    QFETCH(NTypes::eTypes_t, type);
    QFETCH(QByteArray, bytes);
    QTEST(exactText(valueFromBytes(bytes, type)), "text");
    QTEST(displayText(valueFromBytes(bytes, type), Nj6Units::E_UNIT_SPEED_RPM), "text");
}

void tst_parameter_value::showsNumbersWithTheDigitsOfTheirUnit_data()
{
    QTest::addColumn<CVariant>("value");
    QTest::addColumn<Nj6Units::eUnit_t>("unit");
    QTest::addColumn<QString>("text");

    const Nj6Units::eUnit_t volts = Nj6Units::E_UNIT_VOLTAGE_V; // 1 digit
    const Nj6Units::eUnit_t newtons = Nj6Units::E_UNIT_FORCE_N; // 4 digits
    const Nj6Units::eUnit_t millis = Nj6Units::E_UNIT_TIME_MS;  // no digit
    const auto unknown = static_cast<Nj6Units::eUnit_t>(5);     // no digit either
    const auto single = [](const char *name, float value, Nj6Units::eUnit_t unit, const char *text) {
        QTest::newRow(name) << CVariant(value) << unit << QString::fromLatin1(text);
    };
    const auto twofold = [](const char *name, double value, Nj6Units::eUnit_t unit, const char *text) {
        QTest::newRow(name) << CVariant(value) << unit << QString::fromLatin1(text);
    };
    single("one digit", 12.34F, volts, "12.3");
    single("four digits", 12.34F, newtons, "12.3400");
    single("six significant digits", 12345.678F, newtons, "12345.7");
    single("no digit", 12.34F, millis, "12");
    single("no digit of an unknown unit", 12.34F, unknown, "12");
    single("zero", 0.0F, newtons, "0.0000");
    single("below the last digit", 0.004F, volts, "0.004");
    single("negative below the last digit", -0.04F, volts, "-0.04");
    single("rounds up to the last digit", 0.05F, volts, "0.1");
    single("far below the last digit", 1.5e-20F, newtons, "1.5e-20");
    single("largest that is counted", 2147483520.0F, volts, "2147483520");
    single("too large to be counted", 2147483648.0F, volts, "2.14748e+09");
    single("too large and negative", -3e38F, volts, "-3e+38");
    single("infinity", std::numeric_limits<float>::infinity(), volts, "inf");
    single("minus infinity", -std::numeric_limits<float>::infinity(), volts, "-inf");
    single("no number", std::numeric_limits<float>::quiet_NaN(), volts, "nan");
    twofold("double: one digit", 12.34, volts, "12.3");
    twofold("double: all significant digits", 123456789.12344, newtons, "123456789.1234");
    twofold("double: below the last digit", 0.00004, newtons, "4e-05");
    twofold("double: large", 999999999999999.0, volts, "999999999999999.0");
    twofold("double: too large", 1e15, volts, "1e+15");
    twofold("double: infinity", std::numeric_limits<double>::infinity(), volts, "inf");
    twofold("double: no number", std::numeric_limits<double>::quiet_NaN(), volts, "nan");
}

void tst_parameter_value::showsNumbersWithTheDigitsOfTheirUnit()
{
    QFETCH(CVariant, value);
    QFETCH(Nj6Units::eUnit_t, unit);
    QTEST(displayText(value, unit), "text");
}

void tst_parameter_value::comparesValues_data()
{
    QTest::addColumn<NTypes::eTypes_t>("type");
    QTest::addColumn<QByteArray>("a");
    QTest::addColumn<QByteArray>("b");
    QTest::addColumn<bool>("isSame");

    const auto row = [](const char *name, NTypes::eTypes_t type, const char *a, const char *b, bool isSame) {
        QTest::newRow(name) << type << QByteArray::fromHex(a) << QByteArray::fromHex(b) << isSame;
    };
    row("integers", NTypes::E_U16, "0100", "0001", false);
    row("equal versions", NTypes::E_VERSION_4, "0400030002000100", "0400030002000100", true);
    row("versions", NTypes::E_VERSION_4, "0400030002000100", "0500030002000100", false);
    row("infinity", NTypes::E_F32, "0000807F", "0000807F", true);
    row("infinities", NTypes::E_F32, "0000807F", "000080FF", false);
    row("two NaN", NTypes::E_F32, "0000C07F", "0100C07F", true);
    row("within the tolerance", NTypes::E_F32, "0000803F", "0100803F", true);
    row("zero and minus zero", NTypes::E_F32, "00000000", "00000080", true);
    row("small numbers within the tolerance", NTypes::E_F32, "77CC2B32", "95BFD633", false);
    row("doubles within the tolerance", NTypes::E_F64, "000000000000F03F", "010000000000F03F", true);
    row("doubles", NTypes::E_F64, "000000000000F03F", "000000000000F43F", false);
    row("byte arrays", NTypes::E_BYTEARRAY, "00", "0000", false);
    QTest::newRow("behind the terminator")
        << NTypes::E_STRING32 << QByteArray("A\0\0\0B\0", 6).leftJustified(64, '\0')
        << QByteArray("A").leftJustified(64, '\0') << true;
}

void tst_parameter_value::comparesValues()
{
    QFETCH(NTypes::eTypes_t, type);
    QFETCH(QByteArray, a);
    QFETCH(QByteArray, b);
    QTEST(isSameValue(a, b, type), "isSame");
    QTEST(isSameValue(b, a, type), "isSame");
}

void tst_parameter_value::describesChanges_data()
{
    QTest::addColumn<NTypes::eTypes_t>("type");
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::addColumn<QString>("beforeText");
    QTest::addColumn<QString>("afterText");

    QTest::newRow("numbers") << NTypes::E_U8 << QByteArray(1, '\1') << QByteArray(1, '\2') << "1 rpm"
                             << "2 rpm";
    QTest::newRow("texts") << NTypes::E_CHAR << QByteArray("\x1B") << QByteArray(1, '\0') << "\"\\x1b\""
                           << "\"\"";
    QTest::newRow("equal texts") << NTypes::E_F32 << QByteArray::fromHex("0000803F")
                                 << QByteArray::fromHex("1000803F") << "1.000 rpm (0000803f)"
                                 << "1.000 rpm (1000803f)";
    QTest::newRow("no change") << NTypes::E_U8 << QByteArray(1, '\1') << QByteArray(1, '\1') << "1 rpm"
                               << "1 rpm";
}

void tst_parameter_value::describesChanges()
{
    QFETCH(NTypes::eTypes_t, type);
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    const ObjectIndex index = *ObjectIndex::fromText(QStringLiteral("0x6081"));
    const Parameter old = {index, QStringLiteral("p"), type, Nj6Units::E_UNIT_SPEED_RPM, before, 2};
    Parameter edited = old;
    edited.bytes = after;
    const ParameterChange change = describedChange(old, edited);
    QTEST(change.before, "beforeText");
    QTEST(change.after, "afterText");
}

void tst_parameter_value::readsUnitCodes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("code"); // -1: none

    QTest::newRow("none") << "0" << 0;
    QTest::newRow("zeros in front") << "0040" << 40;
    QTest::newRow("outside the catalogue") << "5" << 5;
    QTest::newRow("largest") << "2147483647" << 2147483647;
    QTest::newRow("too large") << "2147483648" << -1;
    QTest::newRow("empty") << "" << -1;
    QTest::newRow("negative") << "-1" << -1;
    QTest::newRow("blank") << " 1" << -1;
    QTest::newRow("hexadecimal") << "0x1" << -1;
    QTest::newRow("text") << "rpm" << -1;
}

void tst_parameter_value::readsUnitCodes()
{
    QFETCH(QString, text);
    const std::optional<Nj6Units::eUnit_t> unit = unitFromText(text);
    QTEST(unit ? int(*unit) : -1, "code");
}

QTEST_GUILESS_MAIN(tst_parameter_value)
#include "tst_parameter_value.moc"
