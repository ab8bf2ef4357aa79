// SPDX-License-Identifier: MIT
#include <CTime.h>

#include <LoggedTest.h>

#include <QTest>

#include <limits>

Q_DECLARE_METATYPE(CTime)

namespace {

using Limits = std::numeric_limits<double>;

constexpr auto largest = std::numeric_limits<quint64>::max();
constexpr quint64 twoTo63 = quint64(1) << 63;

constexpr CTime::ETimeUnit unitOf(qint32 number)
{
    return static_cast<CTime::ETimeUnit>(number);
}

} // namespace

class tst_duration_arithmetic : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void compares_data();
    void compares();
    void sumOfDifferentUnits_data();
    void sumOfDifferentUnits();
    void sameUnitSumIsTwiceTheUnitNumber_data();
    void sameUnitSumIsTwiceTheUnitNumber();
    void product_data();
    void product();
    void negativeProductsAreSignedBits_data();
    void negativeProductsAreSignedBits();
    void resultsShareNothingWithTheOperands();
};

void tst_duration_arithmetic::compares_data()
{
    QTest::addColumn<CTime>("a");
    QTest::addColumn<CTime>("b");
    QTest::addColumn<int>("order"); // of a against b

    const auto row = [](const char *name, const CTime &a, const CTime &b, int order) {
        QTest::newRow(name) << a << b << order;
    };
    const CTime hour(1, CTime::TU_H);
    row("1 s is 1000 ms", CTime(1, CTime::TU_S), CTime(1000, CTime::TU_MS), 0);
    row("1 h is above 59 min", hour, CTime(59, CTime::TU_MIN), 1);
    row("1 h is 60 min", hour, CTime(60, CTime::TU_MIN), 0);
    row("1 h is below 61 min", hour, CTime(61, CTime::TU_MIN), -1);
    row("copy", hour, hour, 0);
    row("equal content in two blocks", hour, CTime(1, CTime::TU_H), 0);
    row("1 us is 1000 ns", CTime(1, CTime::TU_US), CTime(1000, CTime::TU_NS), 0);
    row("1499 ps are rounded to 1 ns", CTime(1499, CTime::TU_PS), CTime(1, CTime::TU_NS), 0);
    row("1500 ps are rounded to 2 ns", CTime(1500, CTime::TU_PS), CTime(2, CTime::TU_NS), 0);
    row("499 ps are 0", CTime(499, CTime::TU_PS), CTime(), 0);
    row("unit does not matter for 0", CTime(0, CTime::TU_H), CTime(0, CTime::TU_PS), 0);
    row("without unit as seconds", CTime(60, CTime::TU_INVALID), CTime(1, CTime::TU_MIN), 0);
    row("unknown unit as seconds", CTime(60, unitOf(1000)), CTime(1, CTime::TU_MIN), 0);
    row("stored nanoseconds keep every digit", CTime(9007199254740993, CTime::TU_NS),
        CTime(9007199254740992, CTime::TU_NS), 1);
    row("stored nanoseconds have 64 bits", CTime(largest, CTime::TU_NS), CTime(largest - 1, CTime::TU_NS), 1);
    row("nanoseconds are unsigned", CTime(twoTo63, CTime::TU_NS), CTime(1, CTime::TU_H), 1);
    row("above 2^64 ns all are equal", CTime(18446744074, CTime::TU_S), CTime(18446744075, CTime::TU_S), 0);
    row("saturated is the largest", CTime(quint64(1) << 40, CTime::TU_S), CTime(largest, CTime::TU_NS), 0);
    // -1 ms is 2^64 - 1000000 ns, as unsigned bits.
    row("counts from 2^63 are signed, the ns are not", CTime(largest, CTime::TU_MS), hour, 1);
    row("and so is their bit pattern", CTime(largest, CTime::TU_MS), CTime(largest - 999999, CTime::TU_NS),
        0);
}

void tst_duration_arithmetic::compares()
{
    QFETCH(CTime, a);
    QFETCH(CTime, b);
    QFETCH(int, order);

    QCOMPARE(a == b, order == 0);
    QCOMPARE(a != b, order != 0);
    QCOMPARE(a < b, order < 0);
    QCOMPARE(a > b, order > 0);
    QCOMPARE(a <= b, order <= 0);
    QCOMPARE(a >= b, order >= 0);
    QCOMPARE(b == a, order == 0);
    QCOMPARE(b != a, order != 0);
    QCOMPARE(b<a, order> 0);
    QCOMPARE(b > a, order < 0);
    QCOMPARE(b <= a, order >= 0);
    QCOMPARE(b >= a, order <= 0);
}

void tst_duration_arithmetic::sumOfDifferentUnits_data()
{
    QTest::addColumn<CTime>("a");
    QTest::addColumn<CTime>("b");
    QTest::addColumn<quint64>("count"); // in the unit of a

    const auto row = [](const char *name, const CTime &a, const CTime &b, quint64 count) {
        QTest::newRow(name) << a << b << count;
    };
    const CTime second(1, CTime::TU_S);
    row("1 s + 500 ms is truncated to 1 s", second, CTime(500, CTime::TU_MS), 1);
    row("500 ms + 1 s", CTime(500, CTime::TU_MS), second, 1500);
    row("1 s + 999 ms is truncated", second, CTime(999, CTime::TU_MS), 1);
    row("1 s + 1000 ms", second, CTime(1000, CTime::TU_MS), 2);
    row("59 min + 1 h", CTime(59, CTime::TU_MIN), CTime(1, CTime::TU_H), 119);
    row("1 h + 59 min is truncated", CTime(1, CTime::TU_H), CTime(59, CTime::TU_MIN), 1);
    row("1 h + 60 min", CTime(1, CTime::TU_H), CTime(60, CTime::TU_MIN), 2);
    row("5000 ps + 1 ns", CTime(5000, CTime::TU_PS), CTime(1, CTime::TU_NS), 6000);
    row("1 ns + 5499 ps, rounded to 5 ns", CTime(1, CTime::TU_NS), CTime(5499, CTime::TU_PS), 6);
    row("1 ns + 5500 ps, rounded to 6 ns", CTime(1, CTime::TU_NS), CTime(5500, CTime::TU_PS), 7);
    row("no unit counts as seconds", CTime(1, CTime::TU_INVALID), second, 2);
    row("second operand without unit", second, CTime(1, CTime::TU_INVALID), 2);
    row("an unknown unit differs from none", CTime(1, unitOf(9)), CTime(1, CTime::TU_INVALID), 2);
    // 2^64 - 1 + 1000 = 999 modulo 2^64.
    row("nanoseconds wrap", CTime(largest, CTime::TU_NS), CTime(1, CTime::TU_US), 999);
    row("nanoseconds wrap, then are truncated", CTime(1, CTime::TU_US), CTime(largest, CTime::TU_NS), 0);
    // The sum of 2^63 ns is no negative number.
    row("sum is read as unsigned", CTime(twoTo63, CTime::TU_NS), CTime(0, CTime::TU_US), twoTo63);
    row("sum is read as unsigned in us", CTime(0, CTime::TU_US), CTime(twoTo63, CTime::TU_NS),
        9223372036854776);
    row("largest sum comes back saturated", CTime(largest, CTime::TU_NS), CTime(1, CTime::TU_PS), largest);
    // -1 ms + 2 s are 1999000000 ns.
    row("a negative operand", CTime(largest, CTime::TU_MS), CTime(2, CTime::TU_S), 1999);
}

void tst_duration_arithmetic::sumOfDifferentUnits()
{
    QFETCH(CTime, a);
    QFETCH(CTime, b);
    QFETCH(quint64, count);

    const CTime sum = a + b;
    QCOMPARE(sum.value(), count);
    QCOMPARE(sum.unit(), a.unit());
}

void tst_duration_arithmetic::sameUnitSumIsTwiceTheUnitNumber_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<quint64>("count");

    QTest::newRow("ps") << 0 << quint64(0);
    QTest::newRow("ns") << 1 << quint64(2);
    QTest::newRow("us") << 2 << quint64(4);
    QTest::newRow("ms") << 3 << quint64(6);
    QTest::newRow("s") << 4 << quint64(8);
    QTest::newRow("min") << 5 << quint64(10);
    QTest::newRow("h") << 6 << quint64(12);
    QTest::newRow("no unit") << 7 << quint64(14);
    QTest::newRow("unknown unit 9") << 9 << quint64(18);
    QTest::newRow("largest unit number") << std::numeric_limits<int>::max() << quint64(4294967294);
    QTest::newRow("unit -1 wraps") << -1 << largest - 1;
}

void tst_duration_arithmetic::sameUnitSumIsTwiceTheUnitNumber()
{
    QFETCH(int, unit);
    QFETCH(quint64, count);

    const CTime five(5, unitOf(unit));
    for (const CTime &sum :
         {five + CTime(7, unitOf(unit)), five + five, CTime(largest, unitOf(unit)) + five}) {
        QCOMPARE(sum.value(), count);
        QCOMPARE(int(sum.unit()), unit);
    }
}

void tst_duration_arithmetic::product_data()
{
    QTest::addColumn<quint64>("count");
    QTest::addColumn<double>("factor");
    QTest::addColumn<quint64>("expected");

    const auto row = [](const char *name, quint64 count, double factor, quint64 expected) {
        QTest::newRow(name) << count << factor << expected;
    };
    row("10 * 0.25 is 3, half away from zero", 10, 0.25, 3);
    row("10 * 0.24", 10, 0.24, 2);
    row("10 * 0.45 is 5, not to even", 10, 0.45, 5);
    row("5 * 0.1", 5, 0.1, 1);
    row("5 * 0.09", 5, 0.09, 0);
    row("times 0", 10, 0.0, 0);
    row("times 1", 123456789, 1.0, 123456789);
    // Rounding adds 0.5 in plain binary arithmetic. From 2^52 on that is a tie, and the even one is taken.
    row("2^52 + 1 times 1 is 2^52 + 2", 4503599627370497, 1.0, 4503599627370498);
    row("the double below a half is rounded up, too", 1, 0.49999999999999994, 1);
    row("doubles have 53 bits", 9007199254740993, 1.0, 9007199254740992);
    row("2^63 is unsigned", twoTo63, 1.0, twoTo63);
    row("2^63 * 1.5", twoTo63, 1.5, 13835058055282163712U);
    row("2^63 * 2 saturates", twoTo63, 2.0, largest);
    row("largest count, as a double 2^64", largest, 1.0, largest);
    row("2^63 * 0.5", twoTo63, 0.5, quint64(1) << 62);
    row("infinity saturates", 10, Limits::infinity(), largest);
    row("1e308 saturates", 10, 1e308, largest);
    row("NaN gives 0", 10, Limits::quiet_NaN(), 0);
    row("0 times infinity gives 0", 0, Limits::infinity(), 0);
    row("-0.4 gives 0", 1, -0.4, 0);
}

void tst_duration_arithmetic::product()
{
    QFETCH(quint64, count);
    QFETCH(double, factor);
    QFETCH(quint64, expected);

    for (const qint32 unit : {0, 3, 6, 7, 1000}) {
        const CTime time(count, unitOf(unit));
        for (const CTime &result : {time * factor, factor * time}) {
            QCOMPARE(result.value(), expected);
            QCOMPARE(int(result.unit()), unit);
        }
        QCOMPARE(time.value(), count);
    }
}

void tst_duration_arithmetic::negativeProductsAreSignedBits_data()
{
    QTest::addColumn<quint64>("count");
    QTest::addColumn<double>("factor");
    QTest::addColumn<qint64>("expected"); // the bits of the count

    const auto row = [](const char *name, quint64 count, double factor, qint64 expected) {
        QTest::newRow(name) << count << factor << expected;
    };
    row("-1", 1, -1.0, -1);
    row("10 * -0.25 is -3", 10, -0.25, -3);
    row("-2^62", quint64(1) << 62, -1.0, -(qint64(1) << 62));
    row("-2^63", twoTo63, -1.0, std::numeric_limits<qint64>::min());
    row("below -2^63 saturates", twoTo63, -2.0, std::numeric_limits<qint64>::min());
    row("minus infinity saturates", 10, -Limits::infinity(), std::numeric_limits<qint64>::min());
}

void tst_duration_arithmetic::negativeProductsAreSignedBits()
{
    QFETCH(quint64, count);
    QFETCH(double, factor);
    QFETCH(qint64, expected);

    const CTime time(count, CTime::TU_MS);
    QCOMPARE(static_cast<qint64>((time * factor).value()), expected);
    QCOMPARE(static_cast<qint64>((factor * time).value()), expected);
}

void tst_duration_arithmetic::resultsShareNothingWithTheOperands()
{
    const CTime time(10, CTime::TU_MS);
    CTime product = time * 1.0;
    product.setValue(11);
    CTime sum = time + CTime(0, CTime::TU_S);
    sum.setValue(12);
    QCOMPARE(time.value(), 10ULL);
    QCOMPARE(product.value(), 11ULL);
    QCOMPARE(sum.value(), 12ULL);
}

QTEST_GUILESS_MAIN(tst_duration_arithmetic)
#include "tst_duration_arithmetic.moc"
