// SPDX-License-Identifier: MIT
#include <CStr.h>

#include <LoggedTest.h>

#include <QLocale>
#include <QTest>

#include <climits>
#include <cmath>
#include <limits>
#include <type_traits>

namespace {

// The three shapes of one parser as the interface states them. Initialising the pointers checks every
// signature.
template<typename T>
struct UnsignedShapes
{
    bool (*store)(const QString &, T &, int);
    T (*flagged)(const QString &, bool *, int);
    T (*fallback)(T, const QString &, int);
};

template<typename T>
struct SignedShapes
{
    bool (*store)(const QString &, T &, int);
    T (*flagged)(const QString &, bool *, int);
    T (*fallback)(T, const QString &);
};

template<typename T>
struct FloatShapes
{
    bool (*store)(const QString &, T &);
    T (*flagged)(const QString &, bool *);
    T (*fallback)(T, const QString &);
};

template<typename T>
using Shapes =
    std::conditional_t<std::is_floating_point<T>::value, FloatShapes<T>,
                       std::conditional_t<std::is_signed<T>::value, SignedShapes<T>, UnsignedShapes<T>>>;

template<typename T>
const Shapes<T> shapesOf = {};
template<>
const Shapes<quint8> shapesOf<quint8> = {CStr::strToU8, CStr::strToU8, CStr::strToU8};
template<>
const Shapes<quint16> shapesOf<quint16> = {CStr::strToU16, CStr::strToU16, CStr::strToU16};
template<>
const Shapes<quint32> shapesOf<quint32> = {CStr::strToU32, CStr::strToU32, CStr::strToU32};
template<>
const Shapes<quint64> shapesOf<quint64> = {CStr::strToU64, CStr::strToU64, CStr::strToU64};
template<>
const Shapes<qint8> shapesOf<qint8> = {CStr::strToI8, CStr::strToI8, CStr::strToI8};
template<>
const Shapes<qint16> shapesOf<qint16> = {CStr::strToI16, CStr::strToI16, CStr::strToI16};
template<>
const Shapes<qint32> shapesOf<qint32> = {CStr::strToI32, CStr::strToI32, CStr::strToI32};
template<>
const Shapes<qint64> shapesOf<qint64> = {CStr::strToI64, CStr::strToI64, CStr::strToI64};
template<>
const Shapes<float> shapesOf<float> = {CStr::strToF32, CStr::strToF32, CStr::strToF32};
template<>
const Shapes<double> shapesOf<double> = {CStr::strToF64, CStr::strToF64, CStr::strToF64};

// The base of the rows whose parser takes none and of the fallback shapes of the signed types.
constexpr int baseTen = 10;

template<typename T>
bool callStore(const QString &text, T &value, int base)
{
    if constexpr (std::is_floating_point<T>::value)
        return shapesOf<T>.store(text, value);
    else
        return shapesOf<T>.store(text, value, base);
}

template<typename T>
T callFlagged(const QString &text, bool *ok, int base)
{
    if constexpr (std::is_floating_point<T>::value)
        return shapesOf<T>.flagged(text, ok);
    else
        return shapesOf<T>.flagged(text, ok, base);
}

template<typename T>
T callFallback(T fallback, const QString &text, int base)
{
    if constexpr (std::is_unsigned<T>::value)
        return shapesOf<T>.fallback(fallback, text, base);
    else
        return shapesOf<T>.fallback(fallback, text);
}

// Exact, unlike QCOMPARE of floating-point numbers: the sign of zero counts, and a NaN is as good as another.
template<typename T>
bool same(T a, T b)
{
    if constexpr (std::is_floating_point<T>::value)
        return (std::isnan(a) && std::isnan(b)) || (a == b && std::signbit(a) == std::signbit(b));
    else
        return a == b;
}

template<typename T>
void numberColumns()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("base");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<T>("number");
}

// Runs the current row through every shape, with and without a flag, and with two different earlier values.
template<typename T>
void checkRowInEveryShape()
{
    QFETCH(QString, text);
    QFETCH(int, base);
    QFETCH(bool, ok);
    QFETCH(T, number);
    const bool fallbackTakesBase = std::is_unsigned<T>::value;

    for (const T earlier : {T(77), T(1)}) {
        T value = earlier;
        QCOMPARE(callStore<T>(text, value, base), ok);
        QVERIFY(same(value, ok ? number : earlier));
        if (fallbackTakesBase || base == baseTen)
            QVERIFY(same(callFallback<T>(earlier, text, base), ok ? number : earlier));
    }
    for (const bool earlier : {true, false}) {
        bool flag = earlier;
        QVERIFY(same(callFlagged<T>(text, &flag, base), ok ? number : T(0)));
        QCOMPARE(flag, ok);
    }
    QVERIFY(same(callFlagged<T>(text, nullptr, base), ok ? number : T(0)));
}

template<typename T>
void good(const char *name, const QString &text, T number, int base = baseTen)
{
    QTest::newRow(name) << text << base << true << number;
}

template<typename T>
void bad(const char *name, const QString &text, int base = baseTen)
{
    QTest::newRow(name) << text << base << false << T(0);
}

template<typename T>
void whiteSpaceRows(const QString &digits, T number)
{
    constexpr ushort spaces[] = {0x0020, 0x0009, 0x000A, 0x000B, 0x000C, 0x000D, 0x0085,
                                 0x00A0, 0x1680, 0x2003, 0x2028, 0x202F, 0x3000};
    for (const ushort unit : spaces) {
        const QString space(2, QChar(unit));
        const QByteArray code = QByteArray::number(unit, 16);
        good<T>(("leading white space " + code).constData(), space + digits, number);
        good<T>(("trailing white space " + code).constData(), digits + space, number);
        good<T>(("white space around " + code).constData(), space + digits + space, number);
        bad<T>(("white space alone " + code).constData(), space);
    }
    bad<T>("white space inside", QStringLiteral("1 2"));
    bad<T>("white space behind the sign", QStringLiteral("+ 1"));
    bad<T>("zero-width space", digits + QChar(0x200B));
    bad<T>("byte-order mark", QChar(QChar::ByteOrderMark) + digits);
}

template<typename T>
void noNumberRows()
{
    bad<T>("null text", QString());
    bad<T>("empty text", QString(QLatin1String("")));
    bad<T>("a word", QStringLiteral("abc"));
    bad<T>("a sign alone", QStringLiteral("-"));
    bad<T>("two signs", QStringLiteral("--1"));
    bad<T>("both signs", QStringLiteral("+-1"));
    bad<T>("a letter behind", QStringLiteral("12a"));
    bad<T>("a letter in front", QStringLiteral("a12"));
    bad<T>("group separator of the C locale", QStringLiteral("1,000"));
    bad<T>("digits of another script", QString(QChar(0x0663)));
    bad<T>("NUL behind", QStringLiteral("12") + QChar(0));
    bad<T>("text behind a NUL", QStringLiteral("12") + QChar(0) + QStringLiteral("34"));
}

// The rows of an integer type; its limits are written out, each with the number just outside.
template<typename T>
void integerRows(const char *lowest, const char *belowLowest, const char *largest, const char *aboveLargest)
{
    numberColumns<T>();
    good<T>("lowest", QLatin1String(lowest), std::numeric_limits<T>::min());
    good<T>("largest", QLatin1String(largest), std::numeric_limits<T>::max());
    bad<T>("one below the lowest", QLatin1String(belowLowest));
    bad<T>("one above the largest", QLatin1String(aboveLargest));
    bad<T>("far above 64 bits", QStringLiteral("99999999999999999999999999"));
    bad<T>("2^64 + 5, whose low bits would fit", QStringLiteral("18446744073709551621"));
    if constexpr (sizeof(T) == 8)
        good<T>("2^32 + 5", QStringLiteral("4294967301"), T(4294967301));
    else {
        bad<T>("2^32", QStringLiteral("4294967296"));
        bad<T>("2^32 + 5, whose low bits would fit", QStringLiteral("4294967301"));
    }
    if constexpr (std::is_signed<T>::value) {
        good<T>("minus one", QStringLiteral("-1"), T(-1));
        good<T>("minus zero", QStringLiteral("-0"), T(0));
        good<T>("minus before a hexadecimal prefix, base 0", QStringLiteral("-0x10"), T(-16), 0);
        good<T>("minus before a hexadecimal prefix, base 16", QStringLiteral("-0x10"), T(-16), 16);
        good<T>("minus before an octal prefix, base 0", QStringLiteral("-010"), T(-8), 0);
    } else {
        bad<T>("minus one", QStringLiteral("-1"));
        bad<T>("minus zero", QStringLiteral("-0"));
        bad<T>("minus far below", QStringLiteral("-4294967295"));
        bad<T>("minus before a hexadecimal prefix", QStringLiteral("-0x10"), 0);
    }
    good<T>("zero", QStringLiteral("0"), T(0));
    good<T>("plus sign", QStringLiteral("+5"), T(5));
    good<T>("leading zeros are decimal in base 10", QStringLiteral("0017"), T(17));
    good<T>("hexadecimal prefix, base 0", QStringLiteral("0x1F"), T(31), 0);
    good<T>("hexadecimal prefix with blanks, base 0", QStringLiteral(" 0x1F "), T(31), 0);
    bad<T>("hexadecimal prefix with blanks, base 10", QStringLiteral(" 0x1F "));
    good<T>("capital hexadecimal prefix, base 0", QStringLiteral("0X1f"), T(31), 0);
    good<T>("octal prefix, base 0", QStringLiteral("017"), T(15), 0);
    good<T>("no prefix, base 0", QStringLiteral("17"), T(17), 0);
    good<T>("base 11", QStringLiteral("1a"), T(21), 11);
    good<T>("digits of base 10, base 11", QStringLiteral("17"), T(18), 11);
    bad<T>("octal prefix with a decimal digit, base 0", QStringLiteral("08"), 0);
    bad<T>("binary prefix, base 0", QStringLiteral("0b101"), 0);
    bad<T>("hexadecimal prefix alone, base 0", QStringLiteral("0x"), 0);
    good<T>("hexadecimal prefix, base 16", QStringLiteral("0x1F"), T(31), 16);
    good<T>("no prefix, base 16", QStringLiteral("1f"), T(31), 16);
    bad<T>("hexadecimal prefix, base 10", QStringLiteral("0x10"));
    good<T>("base 8", QStringLiteral("17"), T(15), 8);
    good<T>("base 2", QStringLiteral("1010"), T(10), 2);
    good<T>("base 36", QStringLiteral("z"), T(35), 36);
    bad<T>("digit beyond the base", QStringLiteral("12"), 2);
    bad<T>("base 1", QStringLiteral("1"), 1);
    bad<T>("base 37", QStringLiteral("1"), 37);
    bad<T>("negative base", QStringLiteral("1"), -10);
    bad<T>("largest base", QStringLiteral("1"), INT_MAX);
    bad<T>("smallest base", QStringLiteral("1"), INT_MIN);
    bad<T>("decimals", QStringLiteral("1.0"));
    bad<T>("exponent", QStringLiteral("1e2"));
    whiteSpaceRows<T>(QStringLiteral("12"), T(12));
    noNumberRows<T>();
}

template<typename T>
void floatRows()
{
    constexpr T infinity = std::numeric_limits<T>::infinity();
    numberColumns<T>();
    good<T>("zero", QStringLiteral("0"), T(0));
    good<T>("negative zero", QStringLiteral("-0"), -T(0));
    good<T>("decimals", QStringLiteral("1.5"), T(1.5));
    good<T>("negative", QStringLiteral("-2.25"), T(-2.25));
    good<T>("plus sign", QStringLiteral("+2.25"), T(2.25));
    good<T>("an integer", QStringLiteral("12"), T(12));
    good<T>("a tenth", QStringLiteral("0.1"), T(0.1));
    good<T>("point in front", QStringLiteral(".5"), T(0.5));
    good<T>("point behind", QStringLiteral("5."), T(5));
    good<T>("exponent", QStringLiteral("1e3"), T(1000));
    good<T>("capital exponent with sign", QStringLiteral("25E-2"), T(0.25));
    good<T>("inf", QStringLiteral("inf"), infinity);
    good<T>("-inf", QStringLiteral("-inf"), -infinity);
    good<T>("+INF", QStringLiteral("+INF"), infinity);
    good<T>("nan", QStringLiteral("nan"), std::numeric_limits<T>::quiet_NaN());
    bad<T>("comma is no decimal separator", QStringLiteral("1,5"));
    bad<T>("decimal text of another locale", QStringLiteral("1.000,5"));
    bad<T>("group separator with decimals", QStringLiteral("1,000.5"));
    bad<T>("two points", QStringLiteral("1.2.3"));
    bad<T>("point alone", QStringLiteral("."));
    bad<T>("exponent without digits", QStringLiteral("1e"));
    bad<T>("hexadecimal", QStringLiteral("0x10"));
    bad<T>("infinity spelt out", QStringLiteral("infinity"));
    bad<T>("above the double range fails with 0, not infinity", QStringLiteral("1e400"));
    bad<T>("below the negative double range fails with 0", QStringLiteral("-1e400"));
    bad<T>("underflow of a double", QStringLiteral("1e-400"));
    whiteSpaceRows<T>(QStringLiteral("1.5"), T(1.5));
    noNumberRows<T>();
}

// What an ordinary call means is settled at compile time: which shape it is and that it is no other.
using Text = const QString &;

template<typename Result, typename... Arguments>
constexpr bool u8Gives = std::is_same<decltype(CStr::strToU8(std::declval<Arguments>()...)), Result>::value;

static_assert(u8Gives<quint8, Text>, "flag shape");
static_assert(u8Gives<quint8, Text, bool *> && u8Gives<quint8, Text, bool *, int>, "flag shape");
static_assert(u8Gives<quint8, Text, std::nullptr_t>, "flag shape");
static_assert(u8Gives<bool, Text, quint8 &> && u8Gives<bool, Text, quint8 &, int>, "out-parameter shape");
static_assert(u8Gives<quint8, quint8, Text> && u8Gives<quint8, quint8, Text, int>, "fallback shape");
static_assert(u8Gives<quint8, int, Text> && u8Gives<quint8, int, Text, int>, "fallback shape");

// Whether a call compiles at all.
template<typename, typename... Arguments>
constexpr bool u8Takes = false;
template<typename... Arguments>
constexpr bool u8Takes<std::void_t<decltype(CStr::strToU8(std::declval<Arguments>()...))>, Arguments...> =
    true;

static_assert(u8Takes<void, Text, quint8 &>, "the check itself");
static_assert(!u8Takes<void, Text, int &>, "an out-parameter is a variable of exactly the type");
static_assert(!u8Takes<void, Text, char &>, "an out-parameter is a variable of exactly the type");
static_assert(!u8Takes<void, Text, const quint8 &>, "an out-parameter can be written");
static_assert(!u8Takes<void, Text, Text>, "a fallback is a number");

template<typename, typename... Arguments>
constexpr bool i8Takes = false;
template<typename... Arguments>
constexpr bool i8Takes<std::void_t<decltype(CStr::strToI8(std::declval<Arguments>()...))>, Arguments...> =
    true;

static_assert(i8Takes<void, qint8, Text>, "the check itself");
static_assert(!i8Takes<void, qint8, Text, int>, "the signed fallback takes no base");

} // namespace

// The whole test runs under a locale with decimal comma and group points, which no parser may notice.
class tst_number_parsing : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void u8_data() { integerRows<quint8>("0", "-1", "255", "256"); }
    void u8() { checkRowInEveryShape<quint8>(); }
    void u16_data() { integerRows<quint16>("0", "-1", "65535", "65536"); }
    void u16() { checkRowInEveryShape<quint16>(); }
    void u32_data() { integerRows<quint32>("0", "-1", "4294967295", "4294967296"); }
    void u32() { checkRowInEveryShape<quint32>(); }
    void u64_data() { integerRows<quint64>("0", "-1", "18446744073709551615", "18446744073709551616"); }
    void u64() { checkRowInEveryShape<quint64>(); }
    void i8_data();
    void i8() { checkRowInEveryShape<qint8>(); }
    void i16_data();
    void i16() { checkRowInEveryShape<qint16>(); }
    void i32_data();
    void i32() { checkRowInEveryShape<qint32>(); }
    void i64_data();
    void i64() { checkRowInEveryShape<qint64>(); }
    void f32_data();
    void f32() { checkRowInEveryShape<float>(); }
    void f64_data();
    void f64() { checkRowInEveryShape<double>(); }
    void signedFallbackShapesParseInBaseTen();
    void unsignedFallbackShapesTakeABase();
    void baseIsTenUnlessGiven();
    void ordinaryCallsAreUnambiguous();
    void fallbackMayBeAnyNumberOfTheType();
    void helpersAreConstructible();
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

void tst_number_parsing::i8_data()
{
    integerRows<qint8>("-128", "-129", "127", "128");
    bad<qint8>("2^32 - 1, which is -1 in 32 bits", QStringLiteral("4294967295"));
    bad<qint8>("FF is no -1", QStringLiteral("0xFF"), 0);
}

void tst_number_parsing::i16_data()
{
    integerRows<qint16>("-32768", "-32769", "32767", "32768");
    bad<qint16>("2^32 - 1, which is -1 in 32 bits", QStringLiteral("4294967295"));
    bad<qint16>("FFFF is no -1", QStringLiteral("0xFFFF"), 0);
}

void tst_number_parsing::i32_data()
{
    integerRows<qint32>("-2147483648", "-2147483649", "2147483647", "2147483648");
    bad<qint32>("2^32 - 1, which is -1 in 32 bits", QStringLiteral("4294967295"));
    bad<qint32>("FFFFFFFF is no -1", QStringLiteral("0xFFFFFFFF"), 0);
}

void tst_number_parsing::i64_data()
{
    integerRows<qint64>("-9223372036854775808", "-9223372036854775809", "9223372036854775807",
                        "9223372036854775808");
    bad<qint64>("FFFFFFFFFFFFFFFF is no -1", QStringLiteral("0xFFFFFFFFFFFFFFFF"), 0);
}

void tst_number_parsing::f32_data()
{
    using Limits = std::numeric_limits<float>;
    floatRows<float>();
    good<float>("largest", QStringLiteral("3.4028234663852886e38"), Limits::max());
    good<float>("lowest", QStringLiteral("-3.4028234663852886e38"), Limits::lowest());
    good<float>("smallest normal", QStringLiteral("1.17549435e-38"), Limits::min());
    good<float>("smallest subnormal", QStringLiteral("1.401298464e-45"), Limits::denorm_min());
    bad<float>("just above the float range", QStringLiteral("3.4028235e38"));
    bad<float>("just below the negative float range", QStringLiteral("-3.4028235e38"));
    bad<float>("above the float range fails with 0, not infinity", QStringLiteral("1e39"));
    bad<float>("underflow of a float", QStringLiteral("1e-50"));
}

void tst_number_parsing::f64_data()
{
    using Limits = std::numeric_limits<double>;
    floatRows<double>();
    good<double>("largest", QStringLiteral("1.7976931348623157e308"), Limits::max());
    good<double>("lowest", QStringLiteral("-1.7976931348623157e308"), Limits::lowest());
    good<double>("smallest normal", QStringLiteral("2.2250738585072014e-308"), Limits::min());
    good<double>("smallest subnormal", QStringLiteral("4.9406564584124654e-324"), Limits::denorm_min());
    bad<double>("just above the double range", QStringLiteral("1.7976931348623159e308"));
    good<double>("above the float range", QStringLiteral("1e39"), 1e39);
    good<double>("below the float range", QStringLiteral("1e-50"), 1e-50);
}

void tst_number_parsing::signedFallbackShapesParseInBaseTen()
{
    const QString hexadecimal = QStringLiteral("0x10");
    QCOMPARE(CStr::strToI8(5, hexadecimal), qint8(5));
    QCOMPARE(CStr::strToI16(5, hexadecimal), qint16(5));
    QCOMPARE(CStr::strToI32(5, hexadecimal), 5);
    QCOMPARE(CStr::strToI64(5, hexadecimal), qint64(5));
    const QString leadingZero = QStringLiteral("010");
    QCOMPARE(CStr::strToI8(5, leadingZero), qint8(10));
    QCOMPARE(CStr::strToI16(5, leadingZero), qint16(10));
    QCOMPARE(CStr::strToI32(5, leadingZero), 10);
    QCOMPARE(CStr::strToI64(5, leadingZero), qint64(10));
    QCOMPARE(CStr::strToI32(5, QStringLiteral("abc")), 5);
}

void tst_number_parsing::unsignedFallbackShapesTakeABase()
{
    const QString hexadecimal = QStringLiteral("0x10");
    QCOMPARE(CStr::strToU8(5, hexadecimal, 0), quint8(16));
    QCOMPARE(CStr::strToU16(5, hexadecimal, 16), quint16(16));
    QCOMPARE(CStr::strToU32(5, hexadecimal, 0), 16U);
    QCOMPARE(CStr::strToU64(5, hexadecimal, 16), quint64(16));
    QCOMPARE(CStr::strToU32(5, hexadecimal, 10), 5U);
}

void tst_number_parsing::baseIsTenUnlessGiven()
{
    const QString text = QStringLiteral("010");
    quint8 u8 = 0;
    quint64 u64 = 0;
    qint16 i16 = 0;
    QVERIFY(CStr::strToU8(text, u8) && CStr::strToU64(text, u64) && CStr::strToI16(text, i16));
    QCOMPARE(u8, quint8(10));
    QCOMPARE(u64, quint64(10));
    QCOMPARE(i16, qint16(10));
    QCOMPARE(CStr::strToU16(text), quint16(10));
    QCOMPARE(CStr::strToU32(7, text), 10U);
    QCOMPARE(CStr::strToI8(text), qint8(10));
    QCOMPARE(CStr::strToI32(text), 10);
    QCOMPARE(CStr::strToI64(text), qint64(10));
}

void tst_number_parsing::ordinaryCallsAreUnambiguous()
{
    const QString text = QStringLiteral("10");
    bool ok = false;
    quint8 u8 = 0;
    QCOMPARE(CStr::strToU8(text, &ok), quint8(10));
    QVERIFY(ok);
    QCOMPARE(CStr::strToU8(text, &ok, 16), quint8(16));
    QCOMPARE(CStr::strToU8(text, nullptr), quint8(10));
    QCOMPARE(CStr::strToU8(text, nullptr, 2), quint8(2));
    QVERIFY(CStr::strToU8(text, u8));
    QCOMPARE(u8, quint8(10));
    QVERIFY(CStr::strToU8(text, u8, 16));
    QCOMPARE(u8, quint8(16));
    QCOMPARE(CStr::strToU8(5, text), quint8(10));
    QCOMPARE(CStr::strToU8(0, QStringLiteral("10")), quint8(10));
    QCOMPARE(CStr::strToU8(u8, text, 2), quint8(2));

    qint32 i32 = 0;
    QVERIFY(CStr::strToI32(text, i32));
    QCOMPARE(i32, 10);
    QCOMPARE(CStr::strToI32(text, &ok), 10);
    QCOMPARE(CStr::strToI32(-1, text), 10);
    QCOMPARE(CStr::strToI32(0, text), 10);

    double f64 = 0.0;
    QVERIFY(CStr::strToF64(text, f64));
    QVERIFY(same(f64, 10.0));
    QVERIFY(same(CStr::strToF64(text, &ok), 10.0));
    QVERIFY(same(CStr::strToF64(1, text), 10.0));
    QVERIFY(same(CStr::strToF32(0, text), 10.0F));
    QVERIFY(same(CStr::strToF32(text), 10.0F));
}

void tst_number_parsing::fallbackMayBeAnyNumberOfTheType()
{
    const QString word = QStringLiteral("abc");
    QCOMPARE(CStr::strToU8(255, word), quint8(255));
    QCOMPARE(CStr::strToU16(65535, word, 8), quint16(65535));
    QCOMPARE(CStr::strToU32(UINT_MAX, word), UINT_MAX);
    QCOMPARE(CStr::strToU64(ULLONG_MAX, word), ULLONG_MAX);
    QCOMPARE(CStr::strToI8(-128, word), qint8(-128));
    QCOMPARE(CStr::strToI16(-32768, word), qint16(-32768));
    QCOMPARE(CStr::strToI32(INT_MIN, word), INT_MIN);
    QCOMPARE(CStr::strToI64(LLONG_MIN, word), LLONG_MIN);
    QVERIFY(std::isinf(CStr::strToF32(std::numeric_limits<float>::infinity(), word)));
    QVERIFY(std::isnan(CStr::strToF64(std::numeric_limits<double>::quiet_NaN(), word)));
}

void tst_number_parsing::helpersAreConstructible()
{
    const CStr helpers;
    Q_UNUSED(helpers)
    QVERIFY(std::is_empty<CStr>::value);
    QVERIFY(std::is_default_constructible<CStr>::value);
}

void tst_number_parsing::exampleOfTheManual()
{
    quint16 port = 502;
    QVERIFY(!CStr::strToU16(QStringLiteral("70000"), port));
    QCOMPARE(port, quint16(502));
    for (const QString &text : {QStringLiteral("0x1F"), QStringLiteral("037"), QStringLiteral("31")}) {
        bool ok = false;
        QCOMPARE(CStr::strToU32(text, &ok, 0), 31U);
        QVERIFY(ok);
    }
    QCOMPARE(CStr::strToI32(0, QStringLiteral("none")), 0);
}

QTEST_GUILESS_MAIN(tst_number_parsing)

#include "tst_number_parsing.moc"
