// SPDX-License-Identifier: MIT
#include <CMath.h>

#include <LoggedTest.h>

#include <QTest>
#include <QtEndian>

#include <array>
#include <climits>
#include <cmath>
#include <limits>
#include <type_traits>

namespace {

constexpr double largestDouble = std::numeric_limits<double>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

// The table is usable at compile time, also as an argument of other constants.
static_assert(std::is_same<decltype(CMath::mPowTab), const double[5]>::value, "five doubles");
static_assert(CMath::mPowTab[0] == 1.0 && CMath::mPowTab[1] == 10.0 && CMath::mPowTab[2] == 100.0
                  && CMath::mPowTab[3] == 1000.0 && CMath::mPowTab[4] == 10000.0,
              "10^0 to 10^4");

// The signatures are those of the interface: another one would be no argument of the template.
template<typename Function, Function *>
constexpr bool hasSignature = true;

static_assert(hasSignature<double(int), CMath::exp10>, "exp10");
static_assert(hasSignature<double(double, unsigned int), CMath::round>, "round");
static_assert(hasSignature<double(double, unsigned int), CMath::roundOff>, "roundOff");
static_assert(hasSignature<double(double, unsigned int), CMath::roundUp>, "roundUp");
static_assert(hasSignature<unsigned int(float), CMath::countIntegerDigitsF32>, "countIntegerDigitsF32");
static_assert(hasSignature<bool(const void *), CMath::checkDouble>, "checkDouble");
static_assert(hasSignature<unsigned int(const void *, int), CMath::crc32>, "crc32");
static_assert(hasSignature<ushort(const QByteArray &, int, ushort), CMath::crc16_modbus>, "crc16_modbus");
static_assert(hasSignature<ushort(const uchar *, int, ushort), CMath::crc16_ccitt>, "of a buffer");
static_assert(hasSignature<ushort(const QByteArray &, ushort), CMath::crc16_ccitt>, "of a byte array");

// 70000 bytes without a short period.
QByteArray longData()
{
    QByteArray bytes(70000, Qt::Uninitialized);
    for (int i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>((i * 7 + (i >> 8)) & 0xFF);
    return bytes;
}

QByteArray countingBytes()
{
    QByteArray bytes(256, Qt::Uninitialized);
    for (int i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i);
    return bytes;
}

const unsigned char *bytesOf(const QByteArray &data)
{
    return reinterpret_cast<const unsigned char *>(data.constData());
}

// Exact, unlike QCOMPARE: the sign of zero counts, and a NaN is as good as another.
bool sameNumber(double a, double b)
{
    return (std::isnan(a) && std::isnan(b)) || (a == b && std::signbit(a) == std::signbit(b));
}

} // namespace

class tst_checksums_and_rounding : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void powersOfTen_data();
    void powersOfTen();
    void powersOfTenAreThoseOfTheCLibrary();
    void roundsHalvesAwayFromZero_data();
    void roundsHalvesAwayFromZero();
    void roundsTowardMinusInfinity_data();
    void roundsTowardMinusInfinity();
    void roundsTowardPlusInfinity_data();
    void roundsTowardPlusInfinity();
    void placesAboveIntMaxAreNegativePowers();
    void powerOfZeroGivesNoNumber();
    void infinitePowerGivesNoNumberButToRound();
    void countsIntegerDigits_data();
    void countsIntegerDigits();
    void magnitudeOf2To31AndMoreCountsAsOneDigit_data();
    void magnitudeOf2To31AndMoreCountsAsOneDigit();
    void plausibleDoubles_data();
    void plausibleDoubles();
    void boundsCompareOnlyExponentAndLowWord_data();
    void boundsCompareOnlyExponentAndLowWord();
    void largestAndSmallestNormalDoubleAreNotPlausible();
    void doubleAtAnyAlignment();
    void noDoubleIsNotPlausible();
    void checksums_data();
    void checksums();
    void crc32OfNothingIsZero();
    void crc32TableEntriesAreTheCrcsOfSingleBytes();
    void modbusCoversTheSmallerOfLengthAndSize();
    void modbusOfNothingIsTheInitialValue();
    void modbusEndsBeyond65535Bytes_data();
    void modbusEndsBeyond65535Bytes();
    void ccittOfNothingIsTheInitialValue();
    void ccittCoversOnlyTheGivenLength();
    void checksumOfPartsIsThatOfTheWhole();
    void exampleOfTheManual();
};

void tst_checksums_and_rounding::powersOfTen_data()
{
    QTest::addColumn<int>("exponent");
    QTest::addColumn<double>("power");

    QTest::newRow("0") << 0 << 1.0;
    QTest::newRow("1") << 1 << 10.0;
    QTest::newRow("2") << 2 << 100.0;
    QTest::newRow("3") << 3 << 1000.0;
    QTest::newRow("4, the last of the table") << 4 << 10000.0;
    QTest::newRow("5, computed") << 5 << 100000.0;
    QTest::newRow("15") << 15 << 1e15;
    QTest::newRow("-1, computed") << -1 << 0.1;
    QTest::newRow("-2") << -2 << 0.01;
    for (int exponent = -22; exponent <= 22; ++exponent)
        QTest::addRow("nearest to 1e%d", exponent)
            << exponent << QByteArray("1e" + QByteArray::number(exponent)).toDouble();
    QTest::newRow("beyond the largest double") << 309 << infinity;
    QTest::newRow("below the smallest double") << -400 << 0.0;
    QTest::newRow("largest exponent") << INT_MAX << infinity;
    QTest::newRow("smallest exponent") << INT_MIN << 0.0;
}

void tst_checksums_and_rounding::powersOfTen()
{
    QFETCH(int, exponent);
    QFETCH(double, power);
    QVERIFY(sameNumber(CMath::exp10(exponent), power));
}

void tst_checksums_and_rounding::powersOfTenAreThoseOfTheCLibrary()
{
#ifndef __GLIBC__
    QSKIP("this C library is not known to give the nearest power");
#endif
    for (volatile int exponent = -22; exponent <= 22; exponent = exponent + 1) {
        const int n = exponent; // not known to the compiler, which would not call the library
        QVERIFY2(sameNumber(CMath::exp10(n), std::pow(10.0, n)), QByteArray::number(n).constData());
    }
}

void tst_checksums_and_rounding::roundsHalvesAwayFromZero_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<unsigned int>("places");
    QTest::addColumn<double>("rounded");

    QTest::newRow("half above") << 2.5 << 0U << 3.0;
    QTest::newRow("half below") << -2.5 << 0U << -3.0;
    QTest::newRow("-1.5") << -1.5 << 0U << -2.0;
    QTest::newRow("0.5") << 0.5 << 0U << 1.0;
    QTest::newRow("-0.5") << -0.5 << 0U << -1.0;
    QTest::newRow("less than half") << 2.4375 << 0U << 2.0;
    QTest::newRow("more than half, negative") << -2.5625 << 0U << -3.0;
    QTest::newRow("zero") << 0.0 << 0U << 0.0;
    QTest::newRow("negative zero gives zero") << -0.0 << 0U << 0.0;
    QTest::newRow("a small negative value gives zero without a sign") << -0.25 << 0U << 0.0;
    QTest::newRow("two places") << 3.14159 << 2U << 3.14;
    QTest::newRow("four places") << -3.14159 << 4U << -3.1416;
    QTest::newRow("five places, computed power") << 3.14159265 << 5U << 3.14159;
    QTest::newRow("an exact half at three places") << 0.0625 << 3U << 0.063;
    QTest::newRow("1.005 is stored as less: no decimal correction") << 1.005 << 2U << 1.0;
    QTest::newRow("1.115 times 100 is a half: no decimal correction") << 1.115 << 2U << 1.12;
    QTest::newRow("the sum of 0.5 and the number below it is 1") << 0.49999999999999994 << 0U << 1.0;
    QTest::newRow("more places than digits") << 0.25 << 10U << 0.25;

    QTest::newRow("largest double below 2^63") << 9223372036854774784.0 << 0U << 9223372036854774784.0;
    QTest::newRow("-2^63") << -9223372036854775808.0 << 0U << -9223372036854775808.0;
    QTest::newRow("2^63 is beyond 64 bits") << 9223372036854775808.0 << 0U << 9223372036854775808.0;
    QTest::newRow("below -2^63 is beyond 64 bits") << -9223372036854777856.0 << 0U << -9223372036854777856.0;
    QTest::newRow("beyond 64 bits once scaled") << 1234567890123456.75 << 4U << 1234567890123456.75;
    QTest::newRow("scaled value infinite") << 1e300 << 10U << 1e300;
    QTest::newRow("largest double") << largestDouble << 0U << largestDouble;
    QTest::newRow("infinity") << infinity << 0U << infinity;
    QTest::newRow("minus infinity") << -infinity << 2U << -infinity;
    QTest::newRow("not a number") << notANumber << 0U << notANumber;
    QTest::newRow("zero with an infinite power") << 0.0 << 400U << 0.0;
    QTest::newRow("a value with an infinite power") << 1.5 << 400U << 1.5;
}

void tst_checksums_and_rounding::roundsHalvesAwayFromZero()
{
    QFETCH(double, value);
    QFETCH(unsigned int, places);
    QFETCH(double, rounded);
    QVERIFY2(sameNumber(CMath::round(value, places), rounded),
             qPrintable(QString::number(CMath::round(value, places), 'g', 17)));
}

void tst_checksums_and_rounding::roundsTowardMinusInfinity_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<unsigned int>("places");
    QTest::addColumn<double>("rounded");

    QTest::newRow("-1.5") << -1.5 << 0U << -2.0;
    QTest::newRow("1.5") << 1.5 << 0U << 1.0;
    QTest::newRow("an integer") << 3.0 << 0U << 3.0;
    QTest::newRow("zero") << 0.0 << 0U << 0.0;
    QTest::newRow("one place") << 2.375 << 1U << 2.3;
    QTest::newRow("one place, negative") << -2.375 << 1U << -2.4;
    QTest::newRow("four places") << 0.12345678 << 4U << 0.1234;
    QTest::newRow("beyond 64 bits") << 1e19 << 0U << 1e19;
    QTest::newRow("infinity") << infinity << 0U << infinity;
    QTest::newRow("not a number") << notANumber << 0U << notANumber;
}

void tst_checksums_and_rounding::roundsTowardMinusInfinity()
{
    QFETCH(double, value);
    QFETCH(unsigned int, places);
    QFETCH(double, rounded);
    QVERIFY(sameNumber(CMath::roundOff(value, places), rounded));
}

void tst_checksums_and_rounding::roundsTowardPlusInfinity_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<unsigned int>("places");
    QTest::addColumn<double>("rounded");

    QTest::newRow("-1.5") << -1.5 << 0U << -1.0;
    QTest::newRow("1.5") << 1.5 << 0U << 2.0;
    QTest::newRow("an integer") << -3.0 << 0U << -3.0;
    QTest::newRow("zero") << 0.0 << 0U << 0.0;
    QTest::newRow("one place") << 2.375 << 1U << 2.4;
    QTest::newRow("one place, negative") << -2.375 << 1U << -2.3;
    QTest::newRow("four places") << 0.12345678 << 4U << 0.1235;
    QTest::newRow("beyond 64 bits") << -1e19 << 0U << -1e19;
    QTest::newRow("minus infinity") << -infinity << 0U << -infinity;
    QTest::newRow("not a number") << notANumber << 0U << notANumber;
}

void tst_checksums_and_rounding::roundsTowardPlusInfinity()
{
    QFETCH(double, value);
    QFETCH(unsigned int, places);
    QFETCH(double, rounded);
    QVERIFY(sameNumber(CMath::roundUp(value, places), rounded));
}

void tst_checksums_and_rounding::placesAboveIntMaxAreNegativePowers()
{
    QVERIFY(sameNumber(CMath::round(15.0, UINT_MAX), 20.0));
    QVERIFY(sameNumber(CMath::roundOff(19.0, UINT_MAX), 10.0));
    QVERIFY(sameNumber(CMath::roundUp(11.0, UINT_MAX), 20.0));
    // 10^-323, the last power that is not 0.
    QVERIFY(sameNumber(CMath::round(1.5, UINT_MAX - 322U), 0.0));
}

// Scaled to 0, and 0 / 0 is not a number.
void tst_checksums_and_rounding::powerOfZeroGivesNoNumber()
{
    for (const unsigned int places : {UINT_MAX - 323U, UINT_MAX - 400U, unsigned(INT_MAX) + 1U}) {
        for (const double value : {1.5, -1.5, 0.0, largestDouble}) {
            QVERIFY(std::isnan(CMath::round(value, places)));
            QVERIFY(std::isnan(CMath::roundOff(value, places)));
            QVERIFY(std::isnan(CMath::roundUp(value, places)));
        }
    }
}

void tst_checksums_and_rounding::infinitePowerGivesNoNumberButToRound()
{
    for (const unsigned int places : {309U, 400U, unsigned(INT_MAX)}) {
        QVERIFY(sameNumber(CMath::round(-1.5, places), -1.5));
        QVERIFY(std::isnan(CMath::roundOff(-1.5, places)));
        QVERIFY(std::isnan(CMath::roundUp(-1.5, places)));
    }
}

void tst_checksums_and_rounding::countsIntegerDigits_data()
{
    QTest::addColumn<float>("value");
    QTest::addColumn<unsigned int>("digits");

    QTest::newRow("zero") << 0.0F << 1U;
    QTest::newRow("0.5") << 0.5F << 1U;
    QTest::newRow("smallest subnormal") << std::numeric_limits<float>::denorm_min() << 1U;
    QTest::newRow("1") << 1.0F << 1U;
    QTest::newRow("9.99") << 9.99F << 1U;
    QTest::newRow("10") << 10.0F << 2U;
    QTest::newRow("99.5") << 99.5F << 2U;
    QTest::newRow("100") << 100.0F << 3U;
    QTest::newRow("999.75") << 999.75F << 3U;
    QTest::newRow("1000") << 1000.0F << 4U;
    QTest::newRow("12345.678") << 12345.678F << 5U;
    QTest::newRow("99999.9") << 99999.9F << 5U;
    QTest::newRow("123456") << 123456.0F << 6U;
    QTest::newRow("minus 123456") << -123456.0F << 6U;
    QTest::newRow("-0.5") << -0.5F << 1U;
    QTest::newRow("1234567") << 1234567.0F << 7U;
    QTest::newRow("2^24") << 16777216.0F << 8U;
    QTest::newRow("123456792") << 123456792.0F << 9U;
    QTest::newRow("1e9") << 1e9F << 10U;
    QTest::newRow("largest float below 2^31") << 2147483520.0F << 10U;
    QTest::newRow("its negative") << -2147483520.0F << 10U;
}

void tst_checksums_and_rounding::countsIntegerDigits()
{
    QFETCH(float, value);
    QFETCH(unsigned int, digits);
    QCOMPARE(CMath::countIntegerDigitsF32(value), digits);
}

void tst_checksums_and_rounding::magnitudeOf2To31AndMoreCountsAsOneDigit_data()
{
    QTest::addColumn<float>("value");

    QTest::newRow("2^31") << 2147483648.0F;
    QTest::newRow("-2^31") << -2147483648.0F;
    QTest::newRow("3e9") << 3e9F;
    QTest::newRow("2^32 + 2^20, whose low 32 bits would be a number") << 4296015872.0F;
    QTest::newRow("largest float") << std::numeric_limits<float>::max();
    QTest::newRow("infinity") << std::numeric_limits<float>::infinity();
    QTest::newRow("minus infinity") << -std::numeric_limits<float>::infinity();
    QTest::newRow("not a number") << std::numeric_limits<float>::quiet_NaN();
}

void tst_checksums_and_rounding::magnitudeOf2To31AndMoreCountsAsOneDigit()
{
    QFETCH(float, value);
    QCOMPARE(CMath::countIntegerDigitsF32(value), 1U);
}

void tst_checksums_and_rounding::plausibleDoubles_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("plausible");

    QTest::newRow("0.0") << 0.0 << true;
    QTest::newRow("negative zero") << -0.0 << true;
    QTest::newRow("1.0") << 1.0 << true;
    QTest::newRow("-1.0") << -1.0 << true;
    QTest::newRow("0.1") << 0.1 << true;
    QTest::newRow("1e300") << 1e300 << true;
    QTest::newRow("1e-300") << 1e-300 << true;
    QTest::newRow("smallest subnormal") << std::numeric_limits<double>::denorm_min() << true;
    QTest::newRow("a negative subnormal") << -1e-310 << true;
    QTest::newRow("+infinity") << infinity << false;
    QTest::newRow("-infinity") << -infinity << false;
    QTest::newRow("quiet NaN") << notANumber << false;
    QTest::newRow("negative NaN") << -notANumber << false;
}

void tst_checksums_and_rounding::plausibleDoubles()
{
    QFETCH(double, value);
    QFETCH(bool, plausible);
    QCOMPARE(CMath::checkDouble(&value), plausible);
}

void tst_checksums_and_rounding::boundsCompareOnlyExponentAndLowWord_data()
{
    QTest::addColumn<quint64>("bits");
    QTest::addColumn<bool>("plausible");

    QTest::newRow("largest exponent, low word at its bound") << 0x7FE00000D7B9609AULL << true;
    QTest::newRow("largest exponent, low word above") << 0x7FE00000D7B9609BULL << false;
    QTest::newRow("largest exponent, low word 0") << 0x7FE0000000000000ULL << true;
    QTest::newRow("largest exponent, full upper mantissa, at the bound") << 0x7FEFFFFFD7B9609AULL << true;
    QTest::newRow("largest exponent, other upper mantissa, above") << 0x7FE12345D7B9609BULL << false;
    QTest::newRow("largest exponent, negative, at the bound") << 0xFFE00000D7B9609AULL << true;
    QTest::newRow("largest exponent, negative, above") << 0xFFE00000FFFFFFFFULL << false;
    QTest::newRow("second largest exponent, low word above") << 0x7FD00000FFFFFFFFULL << true;

    QTest::newRow("smallest exponent, low word at its bound") << 0x001000001111E1E4ULL << false;
    QTest::newRow("smallest exponent, low word above") << 0x001000001111E1E5ULL << true;
    QTest::newRow("smallest exponent, low word 0") << 0x0010000000000000ULL << false;
    QTest::newRow("smallest exponent, full upper mantissa, at the bound") << 0x001FFFFF1111E1E4ULL << false;
    QTest::newRow("smallest exponent, full upper mantissa, above") << 0x001FFFFF1111E1E5ULL << true;
    QTest::newRow("smallest exponent, negative, at the bound") << 0x801000001111E1E4ULL << false;
    QTest::newRow("smallest exponent, negative, above") << 0x80100000FFFFFFFFULL << true;
    QTest::newRow("second smallest exponent, low word 0") << 0x0020000000000000ULL << true;
    QTest::newRow("subnormal, low word below the bound") << 0x0000000000000001ULL << true;

    QTest::newRow("signalling NaN") << 0x7FF0000000000001ULL << false;
}

void tst_checksums_and_rounding::boundsCompareOnlyExponentAndLowWord()
{
    QFETCH(quint64, bits);
    QFETCH(bool, plausible);
    std::array<uchar, 8> bytes{};
    qToLittleEndian(bits, bytes.data());
    QCOMPARE(CMath::checkDouble(bytes.data()), plausible);
}

void tst_checksums_and_rounding::largestAndSmallestNormalDoubleAreNotPlausible()
{
    const double smallestNormal = std::numeric_limits<double>::min();
    QVERIFY(!CMath::checkDouble(&largestDouble));
    QVERIFY(!CMath::checkDouble(&smallestNormal));
}

void tst_checksums_and_rounding::doubleAtAnyAlignment()
{
    std::array<uchar, 16> bytes{};
    for (std::size_t offset = 0; offset < 8; ++offset) {
        qToLittleEndian<quint64>(0x3FF0000000000000ULL, bytes.data() + offset);
        QVERIFY(CMath::checkDouble(bytes.data() + offset));
        qToLittleEndian<quint64>(0x7FF0000000000000ULL, bytes.data() + offset);
        QVERIFY(!CMath::checkDouble(bytes.data() + offset));
    }
}

void tst_checksums_and_rounding::noDoubleIsNotPlausible()
{
    QVERIFY(!CMath::checkDouble(nullptr));
}

// The values were computed with the published definitions of the five algorithms, outside this library.
void tst_checksums_and_rounding::checksums_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<unsigned int>("crc32");
    QTest::addColumn<ushort>("modbus");
    QTest::addColumn<ushort>("modbusFrom0");
    QTest::addColumn<ushort>("ibm3740");
    QTest::addColumn<ushort>("xmodem");

    const auto row = [](const char *name, const QByteArray &data, unsigned int crc32, int modbus,
                        int modbusFrom0, int ibm3740, int xmodem) {
        QTest::newRow(name) << data << crc32 << ushort(modbus) << ushort(modbusFrom0) << ushort(ibm3740)
                            << ushort(xmodem);
    };
    row("check value", "123456789", 0xCBF43926U, 0x4B37, 0xBB3D, 0x29B1, 0x31C3);
    row("a zero byte", QByteArray(1, '\0'), 0xD202EF8DU, 0x40BF, 0x0000, 0xE1F0, 0x0000);
    row("one character", "a", 0xE8B7BE43U, 0xA87E, 0xE8C1, 0x9D77, 0x7C87);
    row("three characters", "abc", 0x352441C2U, 0x5749, 0x9738, 0x514A, 0x9DD6);
    row("pangram", "The quick brown fox jumps over the lazy dog", 0x414FA339U, 0xA89C, 0xFCDF, 0x8FDD,
        0xF0C8);
    row("every byte value", countingBytes(), 0x29058C73U, 0xDE6C, 0xBAD3, 0x3FBD, 0x7E55);
    row("32 bytes FF", QByteArray(32, '\xFF'), 0xFF6CAB0BU, 0x3000, 0xA401, 0x75F8, 0x84B4);
    row("32 bytes 00", QByteArray(32, '\0'), 0x190A55ADU, 0x9401, 0x0000, 0xF14C, 0x0000);
    row("70000 bytes", longData(), 0x59AFA61BU, 0x136A, 0xAE5A, 0x7483, 0x24F2);
}

void tst_checksums_and_rounding::checksums()
{
    QFETCH(QByteArray, data);
    QTEST(CMath::crc32(data.constData(), data.size()), "crc32");
    QTEST(CMath::crc16_modbus(data, data.size(), 0xFFFF), "modbus");
    QTEST(CMath::crc16_modbus(data, data.size(), 0), "modbusFrom0");
    QTEST(CMath::crc16_ccitt(data, 0xFFFF), "ibm3740");
    QTEST(CMath::crc16_ccitt(data, 0), "xmodem");
    QTEST(CMath::crc16_ccitt(bytesOf(data), data.size(), 0xFFFF), "ibm3740");
    QTEST(CMath::crc16_ccitt(bytesOf(data), data.size(), 0), "xmodem");
}

void tst_checksums_and_rounding::crc32OfNothingIsZero()
{
    const char byte = 'a';
    QCOMPARE(CMath::crc32(&byte, 0), 0U);
    QCOMPARE(CMath::crc32(&byte, -1), 0U);
    QCOMPARE(CMath::crc32(&byte, INT_MIN), 0U);
    QCOMPARE(CMath::crc32("", 0), 0U);
    QCOMPARE(CMath::crc32(nullptr, 0), 0U);
    QCOMPARE(CMath::crc32(nullptr, 9), 0U);
}

// A byte's checksum is its table entry, shifted through by the initial value: entry(0xFF ^ byte) ^ 0x00FFFFFF
// ^ ~0.
void tst_checksums_and_rounding::crc32TableEntriesAreTheCrcsOfSingleBytes()
{
    for (unsigned int index = 0; index < 256; ++index) {
        unsigned int entry = index;
        for (int bit = 0; bit < 8; ++bit)
            entry = (entry & 1U) != 0 ? (entry >> 1) ^ 0xEDB88320U : entry >> 1;
        const auto byte = static_cast<unsigned char>(index ^ 0xFFU);
        QCOMPARE(CMath::crc32(&byte, 1), entry ^ 0x00FFFFFFU ^ 0xFFFFFFFFU);
    }
}

void tst_checksums_and_rounding::modbusCoversTheSmallerOfLengthAndSize()
{
    const QByteArray data("123456789");
    QCOMPARE(CMath::crc16_modbus(data, 3, 0xFFFF), ushort(0x7A75)); // of "123" alone
    QCOMPARE(CMath::crc16_modbus(data, 3, 0xFFFF), CMath::crc16_modbus("123", 3, 0xFFFF));
    QCOMPARE(CMath::crc16_modbus(data, 9, 0xFFFF), ushort(0x4B37));
    QCOMPARE(CMath::crc16_modbus(data, 10, 0xFFFF), ushort(0x4B37));
    QCOMPARE(CMath::crc16_modbus(data, INT_MAX, 0xFFFF), ushort(0x4B37));
}

void tst_checksums_and_rounding::modbusOfNothingIsTheInitialValue()
{
    for (const ushort init : {ushort(0), ushort(0x1234), ushort(0xFFFF)}) {
        QCOMPARE(CMath::crc16_modbus(QByteArray(), 5, init), init);
        QCOMPARE(CMath::crc16_modbus("", 5, init), init);
        QCOMPARE(CMath::crc16_modbus("abc", 0, init), init);
        QCOMPARE(CMath::crc16_modbus("abc", -1, init), init);
        QCOMPARE(CMath::crc16_modbus("abc", INT_MIN, init), init);
    }
}

void tst_checksums_and_rounding::modbusEndsBeyond65535Bytes_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<ushort>("crc");

    QTest::newRow("65535, the most a 16-bit count can say") << 65535 << ushort(0x9B3F);
    QTest::newRow("65536") << 65536 << ushort(0x92DA);
    QTest::newRow("70000") << 70000 << ushort(0x136A);
    QTest::newRow("far more than there is") << INT_MAX << ushort(0x136A);
}

void tst_checksums_and_rounding::modbusEndsBeyond65535Bytes()
{
    QFETCH(int, length);
    QTEST(CMath::crc16_modbus(longData(), length, 0xFFFF), "crc");
}

void tst_checksums_and_rounding::ccittOfNothingIsTheInitialValue()
{
    const unsigned char byte = 'a';
    for (const ushort init : {ushort(0), ushort(0x1234), ushort(0xFFFF)}) {
        QCOMPARE(CMath::crc16_ccitt(&byte, 0, init), init);
        QCOMPARE(CMath::crc16_ccitt(&byte, -1, init), init);
        QCOMPARE(CMath::crc16_ccitt(&byte, INT_MIN, init), init);
        QCOMPARE(CMath::crc16_ccitt(nullptr, 0, init), init);
        QCOMPARE(CMath::crc16_ccitt(nullptr, 9, init), init);
        QCOMPARE(CMath::crc16_ccitt(QByteArray(), init), init);
        QCOMPARE(CMath::crc16_ccitt("", init), init);
    }
}

void tst_checksums_and_rounding::ccittCoversOnlyTheGivenLength()
{
    const QByteArray data("123456789");
    QCOMPARE(CMath::crc16_ccitt(bytesOf(data), 3, 0xFFFF), ushort(0x5BCE)); // of "123" alone
    QCOMPARE(CMath::crc16_ccitt(bytesOf(data), 3, 0xFFFF), CMath::crc16_ccitt("123", 0xFFFF));
}

void tst_checksums_and_rounding::checksumOfPartsIsThatOfTheWhole()
{
    const QByteArray data = countingBytes();
    for (const int cut : {1, 17, 128, 255}) {
        const QByteArray head = data.left(cut);
        const QByteArray tail = data.mid(cut);
        const ushort modbusOfHead = CMath::crc16_modbus(head, head.size(), 0xFFFF);
        const ushort modbusOfAll = CMath::crc16_modbus(data, data.size(), 0xFFFF);
        QCOMPARE(CMath::crc16_modbus(tail, tail.size(), modbusOfHead), modbusOfAll);
        const ushort ccittOfHead = CMath::crc16_ccitt(head, 0xFFFF);
        QCOMPARE(CMath::crc16_ccitt(tail, ccittOfHead), CMath::crc16_ccitt(data, 0xFFFF));
    }
}

void tst_checksums_and_rounding::exampleOfTheManual()
{
    QVERIFY(sameNumber(CMath::round(2.345, 2), 2.35));
    QCOMPARE(CMath::crc32("123456789", 9), 0xCBF43926U);
    QCOMPARE(CMath::crc16_modbus(QByteArrayLiteral("123456789"), 9, 0xFFFF), ushort(0x4B37));
    QCOMPARE(CMath::crc16_ccitt(QByteArrayLiteral("123456789"), 0xFFFF), ushort(0x29B1));
}

QTEST_GUILESS_MAIN(tst_checksums_and_rounding)

#include "tst_checksums_and_rounding.moc"
