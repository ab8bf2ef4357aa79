// SPDX-License-Identifier: MIT
// Numbers as texts: always those of QString::number(), whichever way they come about. The environment
// variable J6CORE_NUMBER_SAMPLES raises the number of samples of each row from 100000.
#include "NumberSamples.h"

#include <AllocationCounter.h>
#include <CMath.h>
#include <CStr.h>
#include <CVariant.h>
#include <LoggedTest.h>

#include <QTest>

#include <algorithm>
#include <cmath>

using namespace NumberSamples;

Q_DECLARE_METATYPE(Source<float>)
Q_DECLARE_METATYPE(Source<double>)

namespace {

template<typename T>
void sourceRows()
{
    QTest::addColumn<Source<T>>("source");
    QTest::newRow("any bits") << Source<T>(anyBits<T>);
    QTest::newRow("decimal") << Source<T>(decimal<T>);
    QTest::newRow("near a tie") << Source<T>(nearTie<T>);
    QTest::newRow("moderate") << Source<T>(moderate<T>);
    QTest::newRow("near a whole tie") << Source<T>(nearWholeTie<T>);
    QTest::newRow("near 0.0001") << Source<T>(nearTenThousandth<T>);
}

template<typename T, typename Check>
bool forSamples(const Source<T> &source, Check check)
{
    std::mt19937_64 random(20260704);
    for (int left = sampleCount(); left > 0; --left) {
        if (!check(source(random)))
            return false;
    }
    return true;
}

// Compares without the cost of QCOMPARE, which builds its message beforehand.
bool same(const QString &text, const QString &expected)
{
    if (text != expected)
        qWarning("is %s, should be %s", qUtf8Printable(text), qUtf8Printable(expected));
    return text == expected;
}

bool isWrittenAsQtDoes(float value)
{
    return same(CVariant(value).toStr(), QString::number(static_cast<double>(value), 'g', 6));
}

bool isWrittenAsQtDoes(double value)
{
    return same(CVariant(value).toStr(), QString::number(value, 'g', 15));
}

template<typename Integer>
bool isWrittenAsQtDoes(Integer value)
{
    return same(CVariant(value).toStr(), QString::number(value));
}

bool hasDecimalsOfQt(double value, int decimals)
{
    return same(CStr::fromF64(value, decimals), QString::number(value, 'f', decimals));
}

bool hasDecimalsOfQt(float value, int decimals)
{
    const int room = 6 - static_cast<int>(CMath::countIntegerDigitsF32(value));
    const int shown = std::max(0, std::min(decimals, room));
    return same(CStr::fromF32(value, decimals), QString::number(static_cast<double>(value), 'f', shown));
}

template<typename T>
bool isHuge(T value)
{
    return std::fabs(value) > T(1e25);
}

template<typename T>
bool isEndOfRange(T value)
{
    return !(std::fabs(value) < std::numeric_limits<T>::max());
}

template<typename T>
bool isTiny(T value)
{
    return std::fabs(value) < T(1e-25);
}

// The samples take each number of decimals in turn. Qt needs long for the hundreds of digits of huge numbers,
// which are none of ours: the small reciprocal is looked at instead.
template<typename T>
bool haveDecimalsOfQt(const Source<T> &source)
{
    int decimals = 0;
    return forSamples(source, [&decimals](T value) {
        decimals = (decimals + 1) % 21;
        const T written = isHuge(value) ? 1 / value : value;
        return hasDecimalsOfQt(written, decimals) && hasDecimalsOfQt(written, 3);
    });
}

// Below zero Qt has a default.
template<typename T>
void checkEdgesWithDecimals()
{
    for (const T value : floatEdges<T>()) {
        if (isHuge(value) && !isEndOfRange(value))
            continue;
        const int last = isTiny(value) ? 3 : 22;
        for (int decimals = -1; decimals <= last; ++decimals)
            QVERIFY(hasDecimalsOfQt(value, decimals));
    }
}

template<typename Value>
void checkAll(const QVector<Value> &values)
{
    for (const Value value : values)
        QVERIFY(isWrittenAsQtDoes(value));
}

template<typename Integer>
void checkIntegers()
{
    checkAll(integerEdges<Integer>());
    QVERIFY(forSamples<Integer>(anyBits<Integer>, [](Integer value) { return isWrittenAsQtDoes(value); }));
}

template<typename MakeText>
long allocationsOfText(const MakeText &makeText)
{
    const AllocationCounter counter;
    const QString text = makeText();
    return text.isEmpty() ? 0 : counter.count();
}

} // namespace

class tst_number_texts : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void integers();
    void floats_data();
    void floats();
    void doubles_data();
    void doubles();
    void floatEdgesAsQtWritesThem();
    void doubleEdgesAsQtWritesThem();
    void floatsWithDecimals_data();
    void floatsWithDecimals();
    void doublesWithDecimals_data();
    void doublesWithDecimals();
    void edgesWithDecimals();
    void exactTiesAreRoundedAwayFromZero();
    void roundingLeadsToTheExponentForm();
    void negativeZeroAndNumbersNearIt();
    void eachTextIsOneAllocation();
};

void tst_number_texts::integers()
{
    checkIntegers<qint8>();
    checkIntegers<quint8>();
    checkIntegers<qint16>();
    checkIntegers<quint16>();
    checkIntegers<qint32>();
    checkIntegers<quint32>();
    checkIntegers<qint64>();
    checkIntegers<quint64>();
}

void tst_number_texts::floats_data()
{
    sourceRows<float>();
}

void tst_number_texts::floats()
{
    QFETCH(const Source<float>, source);
    QVERIFY(forSamples(source, [](float value) { return isWrittenAsQtDoes(value); }));
}

void tst_number_texts::doubles_data()
{
    sourceRows<double>();
}

void tst_number_texts::doubles()
{
    QFETCH(const Source<double>, source);
    QVERIFY(forSamples(source, [](double value) { return isWrittenAsQtDoes(value); }));
}

void tst_number_texts::floatEdgesAsQtWritesThem()
{
    checkAll(floatEdges<float>());
}

void tst_number_texts::doubleEdgesAsQtWritesThem()
{
    checkAll(floatEdges<double>());
}

void tst_number_texts::floatsWithDecimals_data()
{
    sourceRows<float>();
}

void tst_number_texts::floatsWithDecimals()
{
    QFETCH(const Source<float>, source);
    QVERIFY(haveDecimalsOfQt(source));
}

void tst_number_texts::doublesWithDecimals_data()
{
    sourceRows<double>();
}

void tst_number_texts::doublesWithDecimals()
{
    QFETCH(const Source<double>, source);
    QVERIFY(haveDecimalsOfQt(source));
}

void tst_number_texts::edgesWithDecimals()
{
    checkEdgesWithDecimals<float>();
    checkEdgesWithDecimals<double>();
}

void tst_number_texts::exactTiesAreRoundedAwayFromZero()
{
    QCOMPARE(CVariant(67927.25F).toStr(), QStringLiteral("67927.3"));
    QCOMPARE(CVariant(-67926.75F).toStr(), QStringLiteral("-67926.8"));
    QCOMPARE(CVariant(1000000000000.125).toStr(), QStringLiteral("1000000000000.13"));
    QCOMPARE(CVariant(100000000000000.5).toStr(), QStringLiteral("100000000000001"));
    QCOMPARE(CVariant(1234565.0F).toStr(), QStringLiteral("1.23457e+06"));
    QCOMPARE(CVariant(-12345650.0F).toStr(), QStringLiteral("-1.23457e+07"));
    QCOMPARE(CVariant(1000000000000005.0).toStr(), QStringLiteral("1.00000000000001e+15"));
    QCOMPARE(CStr::fromF64(0.0625, 3), QStringLiteral("0.063"));
    QCOMPARE(CStr::fromF64(-2.5, 0), QStringLiteral("-3"));
    QCOMPARE(CStr::fromF32(12345.25F, 3), QStringLiteral("12345.3"));
}

void tst_number_texts::roundingLeadsToTheExponentForm()
{
    QCOMPARE(CVariant(999999.4F).toStr(), QStringLiteral("999999"));
    QCOMPARE(CVariant(999999.5F).toStr(), QStringLiteral("1e+06"));
    QCOMPARE(CVariant(999999999999999.0).toStr(), QStringLiteral("999999999999999"));
    QCOMPARE(CVariant(999999999999999.5).toStr(), QStringLiteral("1e+15"));
    QCOMPARE(CVariant(9999994.0F).toStr(), QStringLiteral("9.99999e+06"));
    QCOMPARE(CVariant(9999995.0F).toStr(), QStringLiteral("1e+07"));
    QCOMPARE(CVariant(-9999995.0F).toStr(), QStringLiteral("-1e+07"));
    QCOMPARE(CVariant(9999999999999995.0).toStr(), QStringLiteral("1e+16"));
    QCOMPARE(CVariant(0.0001F).toStr(), QStringLiteral("0.0001"));
    QCOMPARE(CVariant(-0.00009999999F).toStr(), QStringLiteral("-0.0001"));
    QCOMPARE(CVariant(0.0000999999999999999).toStr(), QStringLiteral("9.99999999999999e-05"));
    QCOMPARE(CVariant(0.00009999999999999999).toStr(), QStringLiteral("0.0001"));
    QCOMPARE(CVariant(0.00009999999F).toStr(), QStringLiteral("0.0001"));
    QCOMPARE(CVariant(0.00009999994F).toStr(), QStringLiteral("9.99999e-05"));
}

void tst_number_texts::negativeZeroAndNumbersNearIt()
{
    QCOMPARE(CVariant(-0.0).toStr(), QStringLiteral("0"));
    QCOMPARE(CVariant(-0.0F).toStr(), QStringLiteral("0"));
    QCOMPARE(CStr::fromF64(-0.0, 3), QStringLiteral("0.000"));
    QCOMPARE(CStr::fromF64(-0.0004, 3), QStringLiteral("-0.000"));
    QCOMPARE(CStr::fromF64(-1e-300, 3), QStringLiteral("-0.000"));
}

void tst_number_texts::eachTextIsOneAllocation()
{
    if (!AllocationCounter::isAvailable())
        QSKIP("Another allocator is interposed.");
    for (const double value : {0.5, -123.456, 123456789.25, 1.0e-9, -6.02214076e23, 2.5e-200}) {
        QCOMPARE(allocationsOfText([variant = CVariant(value)] { return variant.toStr(); }), 1L);
        QCOMPARE(allocationsOfText([value] { return CStr::fromF64(std::fmod(value, 1e9), 3); }), 1L);
        QCOMPARE(allocationsOfText([value] { return CStr::fromF32(std::fmod(float(value), 1e9F), 3); }), 1L);
    }
    QCOMPARE(allocationsOfText([variant = CVariant(-1.5e-9F)] { return variant.toStr(); }), 1L);
    QCOMPARE(allocationsOfText([variant = CVariant(qint8(-128))] { return variant.toStr(); }), 1L);
    QCOMPARE(allocationsOfText([variant = CVariant(~0U)] { return variant.toStr(); }), 1L);
    QCOMPARE(allocationsOfText([variant = CVariant(~0ULL)] { return variant.toStr(); }), 1L);
}

QTEST_GUILESS_MAIN(tst_number_texts)
#include "tst_number_texts.moc"
