// SPDX-License-Identifier: MIT
#include "VariantSamples.h"

#include <LoggedTest.h>

#include <QTest>

#include <limits>

using namespace VariantSamples;

namespace {

QString textOf(float value)
{
    return QString::number(static_cast<double>(value), 'g', 9);
}

QString textOf(double value)
{
    return QString::number(value, 'g', 17);
}

template<typename Integer>
QString textOf(Integer value)
{
    return QString::number(value);
}

// The numbers that a value gives to the ten readers in the order of their tags, and their flags.
struct Readings
{
    QString numbers;
    QString flags;

    template<typename Number>
    void add(Number number, bool ok)
    {
        numbers += (numbers.isEmpty() ? QString() : QStringLiteral(" ")) + textOf(number);
        flags += QLatin1Char(ok ? '1' : '0');
    }
};

// One reader in its form with a flag, which starts as `before`.
template<typename Number>
void readOne(Readings &readings, const CVariant &value, Number (CVariant::*reader)(bool *) const, bool before)
{
    bool ok = before;
    const Number number = (value.*reader)(&ok);
    readings.add(number, ok);
}

Readings readAll(const CVariant &value, bool before)
{
    Readings readings;
    readOne(readings, value, &CVariant::toU8, before);
    readOne(readings, value, &CVariant::toI8, before);
    readOne(readings, value, &CVariant::toU16, before);
    readOne(readings, value, &CVariant::toI16, before);
    readOne(readings, value, &CVariant::toU32, before);
    readOne(readings, value, &CVariant::toI32, before);
    readOne(readings, value, &CVariant::toF32, before);
    readOne(readings, value, &CVariant::toU64, before);
    readOne(readings, value, &CVariant::toI64, before);
    readOne(readings, value, &CVariant::toF64, before);
    return readings;
}

QString readWithoutFlag(const CVariant &value)
{
    Readings readings;
    readings.add(value.toU8(), true);
    readings.add(value.toI8(nullptr), true);
    readings.add(value.toU16(), true);
    readings.add(value.toI16(nullptr), true);
    readings.add(value.toU32(), true);
    readings.add(value.toI32(nullptr), true);
    readings.add(value.toF32(), true);
    readings.add(value.toU64(nullptr), true);
    readings.add(value.toI64(), true);
    readings.add(value.toF64(nullptr), true);
    return readings.numbers;
}

QString readByOperators(const CVariant &value)
{
    Readings readings;
    readings.add(value.operator unsigned char(), true);
    readings.add(value.operator signed char(), true);
    readings.add(value.operator unsigned short(), true);
    readings.add(value.operator short(), true);
    readings.add(value.operator unsigned int(), true);
    readings.add(value.operator int(), true);
    readings.add(value.operator float(), true);
    readings.add(value.operator unsigned long long(), true);
    readings.add(value.operator long long(), true);
    readings.add(value.operator double(), true);
    return readings.numbers;
}

QString allTrue()
{
    return QStringLiteral("1111111111");
}

QString allFalse()
{
    return QStringLiteral("0000000000");
}

QString zeros()
{
    return QStringLiteral("0 0 0 0 0 0 0 0 0 0");
}

void addColumns()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("tag");
    QTest::addColumn<QString>("numbers");
    QTest::addColumn<QString>("flags");
}

} // namespace

// The ten numeric readers from every source. The expected texts are the readings as U8, I8, U16, I16, U32,
// I32, F32, U64, I64 and F64.
class tst_variant_numbers : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void integers_data();
    void integers();
    void floats_data();
    void floats();
    void words_data();
    void words();
    void byteArrays_data();
    void byteArrays();
    void heldTypesOtherThanTheTagSays_data();
    void heldTypesOtherThanTheTagSays();
    void sourcesWithoutANumber_data();
    void sourcesWithoutANumber();
    void nullValues_data();
    void nullValues();
    void operatorsReadAsTheFunctions_data();
    void operatorsReadAsTheFunctions();
    void documentedExamples();
    void everyIntegerKeepsItsLowOrderBits();

private:
    static void checkRow();
};

void tst_variant_numbers::checkRow()
{
    QFETCH(const QVariant, value);
    QFETCH(const int, tag);
    QFETCH(const QString, numbers);
    QFETCH(const QString, flags);
    const CVariant variant = tagged(value, tag);
    for (const bool before : {false, true}) {
        const Readings readings = readAll(variant, before);
        QCOMPARE(readings.numbers, numbers);
        QCOMPARE(readings.flags, flags);
    }
    QCOMPARE(readWithoutFlag(variant), numbers);
    QCOMPARE(readByOperators(variant), numbers);
}

void tst_variant_numbers::integers_data()
{
    addColumns();
    const auto row = [](const char *name, const CVariant &value, const char *numbers) {
        QTest::newRow(name) << heldBy(value) << static_cast<int>(value.type()) << QString::fromLatin1(numbers)
                            << allTrue();
    };
    row("E_U8 200", typedSample(1), "200 -56 200 200 200 200 200 200 200 200");
    row("E_U8 200 widened", rawSample(1), "200 -56 200 200 200 200 200 200 200 200");
    row("E_I8 -100", typedSample(2),
        "156 -100 65436 -100 4294967196 -100 -100 18446744073709551516 -100 -100");
    row("E_I8 -100 widened", rawSample(2),
        "156 -100 65436 -100 4294967196 -100 -100 18446744073709551516 -100 -100");
    row("E_U16 60000", typedSample(3), "96 96 60000 -5536 60000 60000 60000 60000 60000 60000");
    row("E_U16 60000 widened", rawSample(3), "96 96 60000 -5536 60000 60000 60000 60000 60000 60000");
    row("E_I16 -30000", typedSample(4),
        "208 -48 35536 -30000 4294937296 -30000 -30000 18446744073709521616 -30000 -30000");
    row("E_I16 -30000 widened", rawSample(4),
        "208 -48 35536 -30000 4294937296 -30000 -30000 18446744073709521616 -30000 -30000");
    row("E_U32 4000000000", typedSample(5),
        "0 0 10240 10240 4000000000 -294967296 4e+09 4000000000 4000000000 4000000000");
    row("E_U32 largest", CVariant(UINT_MAX),
        "255 -1 65535 -1 4294967295 -1 4.2949673e+09 4294967295 4294967295 4294967295");
    row("E_I32 -2000000000", typedSample(6),
        "0 0 27648 27648 2294967296 -2000000000 -2e+09 18446744071709551616 -2000000000 -2000000000");
    row("E_I32 300", CVariant(300), "44 44 300 300 300 300 300 300 300 300");
    row("E_I32 -1", CVariant(-1), "255 -1 65535 -1 4294967295 -1 -1 18446744073709551615 -1 -1");
    row("E_I32 0", CVariant(0), "0 0 0 0 0 0 0 0 0 0");
    row("E_U64", typedSample(8),
        "136 -120 30600 30600 1432778632 1432778632 1.2346056e+18 1234605616436508552 1234605616436508552 "
        "1.2346056164365087e+18");
    row("E_U64 largest", CVariant(ULLONG_MAX),
        "255 -1 65535 -1 4294967295 -1 1.84467441e+19 18446744073709551615 -1 1.8446744073709552e+19");
    row("E_I64", typedSample(9),
        "120 120 34936 -30600 2862188664 -1432778632 -1.2346056e+18 17212138457273043064 "
        "-1234605616436508552 "
        "-1.2346056164365087e+18");
    row("E_I64 smallest", CVariant(LLONG_MIN),
        "0 0 0 0 0 0 -9.22337204e+18 9223372036854775808 -9223372036854775808 -9.2233720368547758e+18");
}

void tst_variant_numbers::integers()
{
    checkRow();
}

// Cut toward zero; what lies outside the integer, and NaN, is 0. The flag is Qt's: a number was read.
void tst_variant_numbers::floats_data()
{
    addColumns();
    const auto row = [](const char *name, double value, const char *numbers) {
        QTest::newRow(name) << QVariant(value) << 10 << QString::fromLatin1(numbers) << allTrue();
    };
    QTest::newRow("single 2.9") << QVariant(2.9F) << 7
                                << QStringLiteral("2 2 2 2 2 2 2.9000001 2 2 2.9000000953674316")
                                << allTrue();
    QTest::newRow("single NaN") << QVariant(std::numeric_limits<float>::quiet_NaN()) << 7
                                << QStringLiteral("0 0 0 0 0 0 nan 0 0 nan") << allTrue();
    QTest::newRow("single -inf") << QVariant(-std::numeric_limits<float>::infinity()) << 7
                                 << QStringLiteral("0 0 0 0 0 0 -inf 0 0 -inf") << allTrue();
    QTest::newRow("single 2^31")
        << QVariant(2147483648.0F) << 7
        << QStringLiteral("0 0 0 0 2147483648 0 2.14748365e+09 2147483648 2147483648 2147483648")
        << allTrue();
    row("2.9", 2.9, "2 2 2 2 2 2 2.9000001 2 2 2.8999999999999999");
    row("-2.9", -2.9, "0 -2 0 -2 0 -2 -2.9000001 0 -2 -2.8999999999999999");
    row("-0.9 is cut to 0", -0.9, "0 0 0 0 0 0 -0.899999976 0 0 -0.90000000000000002");
    row("127.99", 127.99, "127 127 127 127 127 127 127.989998 127 127 127.98999999999999");
    row("128", 128.0, "128 0 128 128 128 128 128 128 128 128");
    row("-128.99", -128.99, "0 -128 0 -128 0 -128 -128.990005 0 -128 -128.99000000000001");
    row("-129", -129.0, "0 0 0 -129 0 -129 -129 0 -129 -129");
    row("255.9", 255.9, "255 0 255 255 255 255 255.899994 255 255 255.90000000000001");
    row("256", 256.0, "0 0 256 256 256 256 256 256 256 256");
    row("-32768.9", -32768.9, "0 0 0 -32768 0 -32768 -32768.8984 0 -32768 -32768.900000000001");
    row("65535.9", 65535.9, "0 0 65535 0 65535 65535 65535.8984 65535 65535 65535.900000000001");
    row("65536", 65536.0, "0 0 0 0 65536 65536 65536 65536 65536 65536");
    row("2147483647.9", 2147483647.9,
        "0 0 0 0 2147483647 2147483647 2.14748365e+09 2147483647 2147483647 2147483647.9000001");
    row("2147483648", 2147483648.0, "0 0 0 0 2147483648 0 2.14748365e+09 2147483648 2147483648 2147483648");
    row("-2147483648.5", -2147483648.5, "0 0 0 0 0 -2147483648 -2.14748365e+09 0 -2147483648 -2147483648.5");
    row("4294967295.9", 4294967295.9,
        "0 0 0 0 4294967295 0 4.2949673e+09 4294967295 4294967295 4294967295.9000001");
    row("4294967296", 4294967296.0, "0 0 0 0 0 0 4.2949673e+09 4294967296 4294967296 4294967296");
    row("2^63", 9223372036854775808.0,
        "0 0 0 0 0 0 9.22337204e+18 9223372036854775808 0 9.2233720368547758e+18");
    row("-2^63", -9223372036854775808.0,
        "0 0 0 0 0 0 -9.22337204e+18 0 -9223372036854775808 -9.2233720368547758e+18");
    row("largest below 2^64", 18446744073709549568.0,
        "0 0 0 0 0 0 1.84467441e+19 18446744073709549568 0 1.844674407370955e+19");
    row("2^64", 18446744073709551616.0, "0 0 0 0 0 0 1.84467441e+19 0 0 1.8446744073709552e+19");
    row("1e300, infinity in single precision", 1e300, "0 0 0 0 0 0 inf 0 0 1.0000000000000001e+300");
    row("NaN", std::numeric_limits<double>::quiet_NaN(), "0 0 0 0 0 0 nan 0 0 nan");
    row("infinity", std::numeric_limits<double>::infinity(), "0 0 0 0 0 0 inf 0 0 inf");
}

void tst_variant_numbers::floats()
{
    checkRow();
}

void tst_variant_numbers::words_data()
{
    addColumns();
    const auto row = [](const char *name, const CVariant &value, const char *numbers) {
        QTest::newRow(name) << heldBy(value) << static_cast<int>(value.type()) << QString::fromLatin1(numbers)
                            << allTrue();
    };
    row("E_DATETIME", typedSample(16),
        "89 89 1881 1881 84281177 84281177 5.68864261e+17 568864243731269465 568864243731269465 "
        "5.6886424373126944e+17");
    row("E_DATETIME of a negative year is a large unsigned word",
        valueOf<NTypes::sDateTime_t>("590706050403FFFF"),
        "89 89 1881 1881 84281177 84281177 1.84464659e+19 18446465914531874649 -278159177676967 "
        "1.8446465914531875e+19");
    row("E_VERSION", typedSample(21), "44 44 300 300 33882412 33882412 33882412 33882412 33882412 33882412");
    row("E_IPV4ADDR", typedSample(22),
        "10 10 266 266 3232235786 -1062731510 3.23223578e+09 3232235786 3232235786 3232235786");
    row("E_COMMAND", typedSample(23),
        "239 -17 48879 -16657 3735928559 -559038737 3.73592858e+09 3735928559 3735928559 3735928559");
}

void tst_variant_numbers::words()
{
    checkRow();
}

// The first bytes, little-endian; floating point from 8 bytes on: the IEEE 754 bits of the first 4 or 8.
void tst_variant_numbers::byteArrays_data()
{
    addColumns();
    const auto row = [](const char *name, const char *bytes, const char *numbers, const char *flags) {
        QTest::newRow(name) << QVariant(fromHex(bytes)) << 25 << QString::fromLatin1(numbers)
                            << QString::fromLatin1(flags);
    };
    row("0 bytes", "", "0 0 0 0 0 0 0 0 0 0", "0000000000");
    row("1 byte", "F1", "241 -15 0 0 0 0 0 0 0 0", "1100000000");
    row("2 bytes", "F1F2", "241 -15 62193 -3343 0 0 0 0 0 0", "1111000000");
    row("3 bytes", "F1F2F3", "241 -15 62193 -3343 0 0 0 0 0 0", "1111000000");
    row("4 bytes", "F1F2F3F4", "241 -15 62193 -3343 4109628145 -185339151 0 0 0 0", "1111110000");
    row("5 bytes", "F1F2F3F4F5", "241 -15 62193 -3343 4109628145 -185339151 0 0 0 0", "1111110000");
    row("6 bytes", "F1F2F3F4F5F6", "241 -15 62193 -3343 4109628145 -185339151 0 0 0 0", "1111110000");
    row("7 bytes", "F1F2F3F4F5F6F7", "241 -15 62193 -3343 4109628145 -185339151 0 0 0 0", "1111110000");
    row("8 bytes", "F1F2F3F4F5F6F7F8",
        "241 -15 62193 -3343 4109628145 -185339151 -1.54621042e+32 17940079176890708721 -506664896818842895 "
        "-5.1857059567363663e+274",
        "1111111111");
    for (int length = 9; length <= 17; ++length) {
        const QByteArray name = QByteArray::number(length) + " bytes";
        const QByteArray bytes = "F1F2F3F4F5F6F7F8" + QByteArray(2 * (length - 8), '9');
        row(name.constData(), bytes.constData(),
            "241 -15 62193 -3343 4109628145 -185339151 -1.54621042e+32 17940079176890708721 "
            "-506664896818842895 "
            "-5.1857059567363663e+274",
            "1111111111");
    }
    row("single 1.5 in the first four bytes", "0000C03F00000840",
        "0 0 0 0 1069547520 1069547520 1.5 4613937819310620672 4613937819310620672 3.0000004749745131",
        "1111111111");
    row("double 1.5", "000000000000F83F", "0 0 0 0 0 0 0 4609434218613702656 4609434218613702656 1.5",
        "1111111111");
}

void tst_variant_numbers::byteArrays()
{
    checkRow();
}

// The reader asks the held QVariant: what it makes of the value, and its flag, is the result.
void tst_variant_numbers::heldTypesOtherThanTheTagSays_data()
{
    addColumns();
    const auto twelve = QStringLiteral("12 12 12 12 12 12 12 12 12 12");
    for (int tag = 1; tag <= 10; ++tag) {
        const QByteArray name = "text of a number, " + tagName(tag);
        QTest::newRow(name.constData()) << QVariant(QStringLiteral("12")) << tag << twelve << allTrue();
    }
    for (int tag = 1; tag <= 10; ++tag) {
        const QByteArray name = "text of no number, " + tagName(tag);
        QTest::newRow(name.constData()) << QVariant(QStringLiteral("abc")) << tag << zeros() << allFalse();
    }
    QTest::newRow("several raw bytes as E_U8")
        << heldBy(CVariant::fromRawData("\1\2\3", 3, NTypes::E_U8)) << 1 << zeros() << allFalse();
    QTest::newRow("several raw bytes as E_I8")
        << heldBy(CVariant::fromRawData("\1\2\3", 3, NTypes::E_I8)) << 2 << zeros() << allFalse();
    QTest::newRow("digits among the raw bytes of E_U8")
        << heldBy(CVariant::fromRawData("12", 2, NTypes::E_U8)) << 1 << twelve << allTrue();
    QTest::newRow("negative int as E_U8")
        << QVariant(-1) << 1
        << QStringLiteral("255 -1 65535 -1 4294967295 -1 4.2949673e+09 4294967295 4294967295 4294967295")
        << allTrue();
    QTest::newRow("double as E_I32 is rounded by QVariant")
        << QVariant(2.9) << 6 << QStringLiteral("3 3 3 3 3 3 3 3 3 3") << allTrue();
    // Every number of a tag without a rule is refused although the held type can be converted.
    for (const int tag :
         {0, 11, 12, 13, 14, 15, 17, 18, 19, 20, 24, 26, 27, 28, 29, 30, 31, 32, 33, 40, -1}) {
        const QByteArray name = "int, " + tagName(tag);
        QTest::newRow(name.constData()) << QVariant(5) << tag << zeros() << allFalse();
    }
}

void tst_variant_numbers::heldTypesOtherThanTheTagSays()
{
    checkRow();
}

void tst_variant_numbers::sourcesWithoutANumber_data()
{
    QTest::addColumn<int>("tag");
    for (const int tag : {0, 12, 13, 14, 15, 17, 18, 19, 20, 24, 26, 27, 28, 29, 30, 31, 32})
        QTest::newRow(tagName(tag).constData()) << tag;
}

void tst_variant_numbers::sourcesWithoutANumber()
{
    QFETCH(const int, tag);
    const CVariant value = typedSample(tag);
    QCOMPARE(static_cast<int>(value.type()), tag);
    const Readings readings = readAll(value, true);
    QCOMPARE(readings.numbers, zeros());
    QCOMPARE(readings.flags, allFalse());
    QCOMPARE(readByOperators(value), zeros());
}

void tst_variant_numbers::nullValues_data()
{
    QTest::addColumn<int>("tag");
    for (const int tag : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 25})
        QTest::newRow(tagName(tag).constData()) << tag;
}

void tst_variant_numbers::nullValues()
{
    QFETCH(const int, tag);
    const CVariant value = CVariant::fromRawData("", 0, typeOf(tag));
    QVERIFY(value.isNull());
    const Readings readings = readAll(value, true);
    QCOMPARE(readings.numbers, zeros());
    QCOMPARE(readings.flags, allFalse());
}

void tst_variant_numbers::operatorsReadAsTheFunctions_data()
{
    QTest::addColumn<int>("tag");
    for (const int tag : valueTags)
        QTest::newRow(tagName(tag).constData()) << tag;
}

void tst_variant_numbers::operatorsReadAsTheFunctions()
{
    QFETCH(const int, tag);
    const CVariant value = typedSample(tag);
    const QString expected = readAll(value, false).numbers;
    QCOMPARE(readByOperators(value), expected);
    QCOMPARE(readWithoutFlag(value), expected);
}

void tst_variant_numbers::documentedExamples()
{
    bool ok = false;
    QCOMPARE(CVariant(300).toU8(&ok), static_cast<unsigned char>(44));
    QVERIFY(ok);
    ok = false;
    QCOMPARE(CVariant(-1).toU32(&ok), 4294967295U);
    QVERIFY(ok);
    QCOMPARE(CVariant(2.9F).toI32(), 2);
    QCOMPARE(CVariant(-2.9).toI32(), -2);
    const CVariant fourBytes = bytesValue(fromHex("01020304"));
    QCOMPARE(fourBytes.toF32(&ok), 0.0F);
    QVERIFY(!ok);
    QCOMPARE(fourBytes.toU32(&ok), 0x04030201U);
    QVERIFY(ok);
}

void tst_variant_numbers::everyIntegerKeepsItsLowOrderBits()
{
    QRandomGenerator generator(20210304);
    for (int round = 0; round < 2000; ++round) {
        const quint64 bits = generator.generate64();
        for (const CVariant &value : {CVariant(static_cast<unsigned long long>(bits)),
                                      CVariant(static_cast<long long>(bits)), bytesValue(bytesOf(bits))}) {
            QCOMPARE(value.toU64(), bits);
            QCOMPARE(value.toI64(), static_cast<qint64>(bits));
            QCOMPARE(value.toU32(), static_cast<quint32>(bits));
            QCOMPARE(value.toI32(), static_cast<qint32>(static_cast<quint32>(bits)));
            QCOMPARE(value.toU16(), static_cast<quint16>(bits));
            QCOMPARE(value.toI16(), static_cast<qint16>(static_cast<quint16>(bits)));
            QCOMPARE(value.toU8(), static_cast<quint8>(bits));
            QCOMPARE(value.toI8(), static_cast<qint8>(static_cast<quint8>(bits)));
        }
    }
}

QTEST_GUILESS_MAIN(tst_variant_numbers)
#include "tst_variant_numbers.moc"
