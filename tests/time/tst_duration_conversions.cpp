// SPDX-License-Identifier: MIT
// The expected doubles were computed beside the library, in another language with the same IEEE 754 doubles,
// by the documented multiplications and divisions; they are the shortest texts that read back as the result.
#include <CTime.h>

#include <LoggedTest.h>

#include <QTest>

#include <array>
#include <cstring>
#include <limits>

namespace {

using Limits = std::numeric_limits<double>;

constexpr auto largest = std::numeric_limits<quint64>::max();
constexpr quint64 twoTo63 = quint64(1) << 63;
constexpr int lowestInt = std::numeric_limits<int>::min();
constexpr int largestInt = std::numeric_limits<int>::max();

constexpr CTime::ETimeUnit unitOf(qint32 number)
{
    return static_cast<CTime::ETimeUnit>(number);
}

// To the last bit, and telling -0 from 0; QCOMPARE of doubles is lenient.
bool same(double a, double b)
{
    quint64 bitsOfA = 0;
    quint64 bitsOfB = 0;
    std::memcpy(&bitsOfA, &a, sizeof a);
    std::memcpy(&bitsOfB, &b, sizeof b);
    return bitsOfA == bitsOfB;
}

} // namespace

class tst_duration_conversions : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void secondsOfAUnit_data();
    void secondsOfAUnit();
    void convertsBetweenAllUnits_data();
    void convertsBetweenAllUnits();
    void convertsTheUnusual();
    void equalUnitsTakeNoShortCut();
    void valueInAnotherUnit_data();
    void valueInAnotherUnit();
    void countsFromTwoTo63AreReadAsSigned_data();
    void countsFromTwoTo63AreReadAsSigned();
    void valueInFixedUnits();
    void fromValue_data();
    void fromValue();
    void fromValueReadsTheOtherCountAsUnsigned();
    void hourText_data();
    void hourText();
    void previousInteger_data();
    void previousInteger();
    void wholeNumbersLeaveTheOutputsUntouched_data();
    void wholeNumbersLeaveTheOutputsUntouched();
    void threeNanosecondsAreFractionalInBinaryArithmetic();
    void unknownUnitsMakeNoLongLoop();
    void previousIntegerOfAStoredCount_data();
    void previousIntegerOfAStoredCount();
};

void tst_duration_conversions::secondsOfAUnit_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<double>("seconds"); // of 7 units

    QTest::newRow("ps") << 0 << 7e-12;
    QTest::newRow("ns, one bit above 7e-9") << 1 << 7.000000000000001e-09;
    QTest::newRow("us") << 2 << 7e-06;
    QTest::newRow("ms") << 3 << 0.007;
    QTest::newRow("s") << 4 << 7.0;
    QTest::newRow("min") << 5 << 420.0;
    QTest::newRow("h") << 6 << 25200.0;
    QTest::newRow("invalid is unchanged") << 7 << 7.0;
    QTest::newRow("8 is unchanged") << 8 << 7.0;
    QTest::newRow("2^31 - 1 is unchanged") << largestInt << 7.0;
    QTest::newRow("-1 is unchanged") << -1 << 7.0;
    QTest::newRow("-2^31 is unchanged") << lowestInt << 7.0;
}

void tst_duration_conversions::secondsOfAUnit()
{
    QFETCH(int, unit);
    QFETCH(double, seconds);
    QVERIFY(same(CTime::toS(7.0, unitOf(unit)), seconds));
    QVERIFY(same(CTime::toS(-7.0, unitOf(unit)), -seconds));
}

void tst_duration_conversions::convertsBetweenAllUnits_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<double>("expected"); // of 7 units

    const std::array<std::array<double, 8>, 8> table = {{
        {7.0, 0.007, 7e-06, 7e-09, 7e-12, 1.1666666666666666e-13, 1.9444444444444444e-15, 7e-12},
        {7000.000000000001, 7.000000000000001, 0.007000000000000001, 7.000000000000001e-06,
         7.000000000000001e-09, 1.1666666666666668e-10, 1.9444444444444445e-12, 7.000000000000001e-09},
        {7000000.0, 7000.0, 7.0, 0.007, 7e-06, 1.1666666666666667e-07, 1.9444444444444442e-09, 7e-06},
        {7000000000.0, 7000000.0, 7000.0, 7.0, 0.007, 0.00011666666666666667, 1.9444444444444444e-06, 0.007},
        {7000000000000.0, 7000000000.0, 7000000.0, 7000.0, 7.0, 0.11666666666666667, 0.0019444444444444444,
         7.0},
        {420000000000000.0, 420000000000.0, 420000000.0, 420000.0, 420.0, 7.0, 0.11666666666666667, 420.0},
        {2.52e+16, 25200000000000.0, 25200000000.0, 25200000.0, 25200.0, 420.0, 7.0, 25200.0},
        {7000000000000.0, 7000000000.0, 7000000.0, 7000.0, 7.0, 0.11666666666666667, 0.0019444444444444444,
         7.0},
    }};
    for (int from = 0; from < 8; ++from) {
        for (int to = 0; to < 8; ++to)
            QTest::addRow("%d to %d", from, to) << from << to << table.at(size_t(from)).at(size_t(to));
    }
    // Numbers without a unit are as 7.
    for (const int none : {8, 100, largestInt, -1, lowestInt}) {
        QTest::addRow("%d to ms", none) << none << 3 << 7000.0;
        QTest::addRow("min to %d", none) << 5 << none << 420.0;
        QTest::addRow("%d to %d", none, none) << none << none << 7.0;
    }
}

void tst_duration_conversions::convertsBetweenAllUnits()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(double, expected);
    QVERIFY(same(CTime::convertValue(7.0, unitOf(from), unitOf(to)), expected));
    QVERIFY(same(CTime::convertValue(-7.0, unitOf(from), unitOf(to)), -expected));
}

void tst_duration_conversions::convertsTheUnusual()
{
    QVERIFY(same(CTime::convertValue(0.0, CTime::TU_H, CTime::TU_PS), 0.0));
    QVERIFY(same(CTime::convertValue(-0.0, CTime::TU_H, CTime::TU_PS), -0.0));
    QVERIFY(same(CTime::convertValue(1e300, CTime::TU_H, CTime::TU_PS), Limits::infinity()));
    QVERIFY(same(CTime::convertValue(1e-320, CTime::TU_PS, CTime::TU_S), 0.0));
    QVERIFY(same(CTime::convertValue(-Limits::infinity(), CTime::TU_MS, CTime::TU_H), -Limits::infinity()));
    QVERIFY(qIsNaN(CTime::convertValue(Limits::quiet_NaN(), CTime::TU_MS, CTime::TU_H)));
}

void tst_duration_conversions::equalUnitsTakeNoShortCut()
{
    QVERIFY(same(CTime::convertValue(3.0, CTime::TU_NS, CTime::TU_NS), 3.0000000000000004));
    QVERIFY(same(CTime::convertValue(1e300, CTime::TU_H, CTime::TU_H), 1e300));
    QVERIFY(same(CTime::convertValue(1e308, CTime::TU_H, CTime::TU_H), Limits::infinity()));
    QVERIFY(same(CTime::convertValue(5e-324, CTime::TU_PS, CTime::TU_PS), 0.0));
}

void tst_duration_conversions::valueInAnotherUnit_data()
{
    QTest::addColumn<quint64>("count");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<quint64>("expected");

    const auto row = [](const char *name, quint64 count, int from, int to, quint64 expected) {
        QTest::newRow(name) << count << from << to << expected;
    };
    row("1500 ms are 2 s, half away from zero", 1500, 3, 4, 2);
    row("2500 ms are 3 s, not to even", 2500, 3, 4, 3);
    row("1499 ms are 1 s", 1499, 3, 4, 1);
    row("500 ms are 1 s", 500, 3, 4, 1);
    row("499 ms are 0 s", 499, 3, 4, 0);
    row("0 h are 0 ps", 0, 6, 0, 0);
    row("89 min are 1 h", 89, 5, 6, 1);
    row("90 min are 2 h", 90, 5, 6, 2);
    row("3 ns are 3000 ps", 3, 1, 0, 3000);
    row("1 h is 3.6e15 ps", 1, 6, 0, 3600000000000000);
    row("7 without unit are 7 s", 7, 7, 4, 7);
    row("150 without unit are 3 min", 150, 7, 5, 3);
    row("150 s are 150 without unit", 150, 4, 7, 150);
    row("2 min are 120 without unit", 2, 5, 7, 120);
    row("2 min in an unknown unit are 120", 2, 5, 1000, 120);
    // Rounding adds 0.5 in plain binary arithmetic. From 2^52 on that is a tie, and the even one is taken.
    row("2^52 + 1 without unit are 2^52 + 2 s", 4503599627370497, 7, 4, 4503599627370498);
    row("own unit keeps every digit", 9007199254740993, 3, 3, 9007199254740993);
    row("own unit keeps every bit", largest, 3, 3, largest);
    row("another unit has 53 bits", 9007199254740993, 3, 2, 9007199254740992000);
    row("below 2^63", 9223372036, 4, 1, 9223372036000000000);
    row("between 2^63 and 2^64", 10000000000, 4, 1, 10000000000000000000U);
    row("last second below 2^64 ns", 18446744073, 4, 1, 18446744072999999488U);
    row("2^64 and more saturate", 18446744074, 4, 1, largest);
    row("far beyond 2^64 saturates", quint64(1) << 62, 6, 0, largest);
}

void tst_duration_conversions::valueInAnotherUnit()
{
    QFETCH(quint64, count);
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(quint64, expected);
    const CTime time(count, unitOf(from));
    QCOMPARE(time.value(unitOf(to)), expected);
    QCOMPARE(time.value(), count);
}

void tst_duration_conversions::countsFromTwoTo63AreReadAsSigned_data()
{
    QTest::addColumn<quint64>("count");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<qint64>("expected"); // the bits of the result

    const auto row = [](const char *name, quint64 count, int from, int to, qint64 expected) {
        QTest::newRow(name) << count << from << to << expected;
    };
    row("-1 s is -1000 ms", largest, 4, 3, -1000);
    row("-1 ms is -1000000 ns", largest, 3, 1, -1000000);
    row("-1500 ms are -2 s", largest - 1499, 3, 4, -2);
    row("-1499 ms are -1 s", largest - 1498, 3, 4, -1);
    row("-499 ms are 0 s", largest - 498, 3, 4, 0);
    row("-2^63 us are the nearest seconds", twoTo63, 2, 4, -9223372036855);
    row("below -2^63 saturates", twoTo63, 4, 3, std::numeric_limits<qint64>::min());
}

void tst_duration_conversions::countsFromTwoTo63AreReadAsSigned()
{
    QFETCH(quint64, count);
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(qint64, expected);
    QCOMPARE(static_cast<qint64>(CTime(count, unitOf(from)).value(unitOf(to))), expected);
}

void tst_duration_conversions::valueInFixedUnits()
{
    const CTime time(1500, CTime::TU_MS);
    QCOMPARE(time.toNS(), 1500000000ULL);
    QCOMPARE(time.toMS(), 1500ULL);
    QCOMPARE(time.toS(), 2ULL);
    QCOMPARE(CTime(largest, CTime::TU_NS).toNS(), largest);
    QCOMPARE(CTime(largest, CTime::TU_MS).toMS(), largest);
    QCOMPARE(CTime(largest, CTime::TU_S).toS(), largest);
    QCOMPARE(CTime().toNS(), 0ULL);
    QCOMPARE(CTime(2, CTime::TU_INVALID).toMS(), 2000ULL);
}

void tst_duration_conversions::fromValue_data()
{
    QTest::addColumn<quint64>("count");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<quint64>("expected");

    const auto row = [](const char *name, quint64 count, int from, int to, quint64 expected) {
        QTest::newRow(name) << count << from << to << expected;
    };
    row("same unit", 1500, 3, 3, 1500);
    row("same unit, every digit", 9007199254740993, 3, 3, 9007199254740993);
    row("same unit, every bit", largest, 3, 3, largest);
    row("same unknown unit", largest, 99, 99, largest);
    row("1500 ms are 2 s", 1500, 3, 4, 2);
    row("1499 ms are 1 s", 1499, 3, 4, 1);
    row("2 h are 7200000 ms", 2, 6, 3, 7200000);
    row("2 min are 120 without unit", 2, 5, 7, 120);
    row("2 min in an unknown unit are 120", 2, 5, 1000, 120);
    row("3 of an unknown unit are 3 s", 3, 1000, 4, 3);
    row("2^52 + 1 without unit are 2^52 + 2 s", 4503599627370497, 7, 4, 4503599627370498);
    row("9 without unit are 9000 ms", 9, 7, 3, 9000);
    row("beyond 2^64 saturates", 18446744074, 4, 1, largest);
}

void tst_duration_conversions::fromValue()
{
    QFETCH(quint64, count);
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(quint64, expected);

    CTime time(99, unitOf(to));
    CTime &result = time.fromValue(CTime(count, unitOf(from)));
    QCOMPARE(&result, &time);
    QCOMPARE(time.value(), expected);
    QCOMPARE(time.unit(), unitOf(to));
}

void tst_duration_conversions::fromValueReadsTheOtherCountAsUnsigned()
{
    const CTime source(twoTo63 + 2048, CTime::TU_US); // a double, without loss
    CTime time(0, CTime::TU_S);
    time.fromValue(source);
    QCOMPARE(time.value(), 9223372036855ULL);
    // value() reads it as signed.
    QCOMPARE(static_cast<qint64>(source.value(CTime::TU_S)), -9223372036855LL);
}

void tst_duration_conversions::hourText_data()
{
    QTest::addColumn<quint64>("count");
    QTest::addColumn<int>("unit");
    QTest::addColumn<QString>("text");

    const auto row = [](const char *name, quint64 count, int unit, const char *text) {
        QTest::newRow(name) << count << unit << QString::fromLatin1(text);
    };
    row("3725 s", 3725, 4, "1:02:05");
    row("90000 s", 90000, 4, "25:00:00");
    row("0", 0, 4, "0:00:00");
    row("59 s", 59, 4, "0:00:59");
    row("60 s", 60, 4, "0:01:00");
    row("3599 s", 3599, 4, "0:59:59");
    row("3600 s", 3600, 4, "1:00:00");
    row("100 h have no limit", 100, 6, "100:00:00");
    row("1234567 h", 1234567, 6, "1234567:00:00");
    row("61 min", 61, 5, "1:01:00");
    row("59499 ms are 59 s", 59499, 3, "0:00:59");
    row("59500 ms are 1 min", 59500, 3, "0:01:00");
    row("1 ps", 1, 0, "0:00:00");
    row("default unit counts as seconds", 61, 7, "0:01:01");
    // 2^64 - 1 = 5124095576030431 * 3600 + 15
    row("largest count, unsigned", largest, 4, "5124095576030431:00:15");
    // -1500 ms are -2 s, as unsigned bits 2^64 - 2.
    row("counts from 2^63 are signed, the seconds are not", largest - 1499, 3, "5124095576030431:00:14");
}

void tst_duration_conversions::hourText()
{
    QFETCH(quint64, count);
    QFETCH(int, unit);
    QFETCH(QString, text);
    QCOMPARE(CTime(count, unitOf(unit)).toHourString(), text);
    QCOMPARE(CTime::toHourString(count, unitOf(unit)), text);
}

void tst_duration_conversions::previousInteger_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("unit");
    QTest::addColumn<bool>("found");
    QTest::addColumn<qint64>("outValue");
    QTest::addColumn<int>("outUnit");

    const auto row = [](const char *name, double value, int unit, bool found, qint64 outValue, int outUnit) {
        QTest::newRow(name) << value << unit << found << outValue << outUnit;
    };
    row("1.5 s is 1500 ms", 1.5, 4, true, 1, 4);
    row("-1.5 s keeps its sign", -1.5, 4, true, -1, 4);
    row("0.1 s is 100 ms", 0.1, 4, true, 0, 4);
    row("-0.75 min is -45 s", -0.75, 5, true, 0, 5);
    row("0.25 h is 15 min", 0.25, 6, true, 0, 6);
    row("1.5 h is 90 min", 1.5, 6, true, 1, 6);
    row("a third of an hour is 20 min", 1.0 / 3.0, 6, true, 0, 6);
    row("1.25 ms is 1250 us", 1.25, 3, true, 1, 3);
    row("1.5 us is 1500 ns", 1.5, 2, true, 1, 2);
    row("1.5 without unit passes h, min and s", 1.5, 7, true, 1, 4);
    row("1.5 in an unknown unit is as without", 1.5, 100, true, 1, 4);
    row("the largest unit number ends as soon", 0.5, largestInt, true, 0, 4);
    row("just below 2^52", 4503599627370495.5, 4, true, 4503599627370495, 4);
    // Whole in no unit: false, and the outputs hold the truncated picoseconds.
    row("1.5 ns is fractional in ps, too", 1.5, 1, false, 1500, 0);
    row("a third of a second", 1.0 / 3.0, 4, false, 333333333333, 0);
    row("minus a third of a second", -1.0 / 3.0, 4, false, -333333333333, 0);
    row("1.001 ms", 1.001, 3, false, 1000999999, 0);
    row("1e-5 ns", 1e-5, 1, false, 0, 0);
    row("smallest double", 5e-324, 4, false, 0, 0);
}

void tst_duration_conversions::previousInteger()
{
    QFETCH(double, value);
    QFETCH(int, unit);
    QFETCH(bool, found);
    QFETCH(qint64, outValue);
    QFETCH(int, outUnit);

    long long previousValue = 77;
    CTime::ETimeUnit previousUnit = unitOf(99);
    QCOMPARE(CTime::convertToPrevIntegerValue(value, unitOf(unit), previousValue, previousUnit), found);
    QCOMPARE(previousValue, outValue);
    QCOMPARE(int(previousUnit), outUnit);
}

void tst_duration_conversions::wholeNumbersLeaveTheOutputsUntouched_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("unit");

    QTest::newRow("2 s") << 2.0 << 4;
    QTest::newRow("-2 s") << -2.0 << 4;
    QTest::newRow("7 min") << 7.0 << 5;
    QTest::newRow("2 without unit, fractional in h only below it") << 2.0 << 7;
    QTest::newRow("0") << 0.0 << 4;
    QTest::newRow("-0") << -0.0 << 4;
    QTest::newRow("1.5 ps") << 1.5 << 0;
    QTest::newRow("1.5 of unit -1") << 1.5 << -1;
    QTest::newRow("1.5 of unit -2^31") << 1.5 << lowestInt;
    QTest::newRow("2^52") << 4503599627370496.0 << 4;
    QTest::newRow("2^63") << 9223372036854775808.0 << 4;
    QTest::newRow("1e300") << 1e300 << 4;
    QTest::newRow("-1e300") << -1e300 << 6;
    QTest::newRow("1e308 h, infinite in seconds") << 1e308 << 6;
    QTest::newRow("infinity") << Limits::infinity() << 4;
    QTest::newRow("minus infinity") << -Limits::infinity() << 4;
    QTest::newRow("NaN") << Limits::quiet_NaN() << 4;
}

void tst_duration_conversions::wholeNumbersLeaveTheOutputsUntouched()
{
    QFETCH(double, value);
    QFETCH(int, unit);

    long long previousValue = 77;
    CTime::ETimeUnit previousUnit = unitOf(99);
    QVERIFY(!CTime::convertToPrevIntegerValue(value, unitOf(unit), previousValue, previousUnit));
    QCOMPARE(previousValue, 77LL);
    QCOMPARE(int(previousUnit), 99);
}

void tst_duration_conversions::threeNanosecondsAreFractionalInBinaryArithmetic()
{
    // 3 * 1e-9 * 1e9 is above 3, and 3 * 1e-9 * 1e12 is above 3000: whole in no unit.
    long long previousValue = 77;
    CTime::ETimeUnit previousUnit = unitOf(99);
    QVERIFY(!CTime::convertToPrevIntegerValue(3.0, CTime::TU_NS, previousValue, previousUnit));
    QCOMPARE(previousValue, 3000LL);
    QCOMPARE(previousUnit, CTime::TU_PS);

    // 11 ns are 11000 ps without a remainder, yet not 11 ns.
    QVERIFY(CTime::convertToPrevIntegerValue(11.0, CTime::TU_NS, previousValue, previousUnit));
    QCOMPARE(previousValue, 11LL);
    QCOMPARE(previousUnit, CTime::TU_NS);
}

// One step for each number down from the largest would last longer than a test may.
void tst_duration_conversions::unknownUnitsMakeNoLongLoop()
{
    for (int round = 0; round < 10000; ++round) {
        long long previousValue = 77;
        CTime::ETimeUnit previousUnit = unitOf(99);
        QVERIFY(CTime::convertToPrevIntegerValue(1.5, unitOf(largestInt), previousValue, previousUnit));
        QCOMPARE(previousValue, 1LL);
        QCOMPARE(previousUnit, CTime::TU_S);
    }
}

void tst_duration_conversions::previousIntegerOfAStoredCount_data()
{
    QTest::addColumn<quint64>("count");
    QTest::addColumn<int>("unit");
    QTest::addColumn<bool>("found");
    QTest::addColumn<qint64>("outValue");
    QTest::addColumn<int>("outUnit");

    const auto row = [](const char *name, quint64 count, int unit, bool found, qint64 outValue, int outUnit) {
        QTest::newRow(name) << count << unit << found << outValue << outUnit;
    };
    row("counts are mostly whole", 1500, 3, false, 77, 99);
    row("0", 0, 3, false, 77, 99);
    row("no unit", 5, 7, false, 77, 99);
    row("11 ns", 11, 1, true, 11, 1);
    row("3 ns", 3, 1, false, 3000, 0);
    row("the count is signed: -11 ns", largest - 10, 1, true, -11, 1);
    row("the count is signed: -3 ns", largest - 2, 1, false, -3000, 0);
    row("largest count is -1", largest, 4, false, 77, 99);
    row("-2^63", twoTo63, 4, false, 77, 99);
}

void tst_duration_conversions::previousIntegerOfAStoredCount()
{
    QFETCH(quint64, count);
    QFETCH(int, unit);
    QFETCH(bool, found);
    QFETCH(qint64, outValue);
    QFETCH(int, outUnit);

    long long previousValue = 77;
    CTime::ETimeUnit previousUnit = unitOf(99);
    QCOMPARE(CTime(count, unitOf(unit)).convertToPrevIntegerValue(previousValue, previousUnit), found);
    QCOMPARE(previousValue, outValue);
    QCOMPARE(int(previousUnit), outUnit);
}

QTEST_GUILESS_MAIN(tst_duration_conversions)
#include "tst_duration_conversions.moc"
