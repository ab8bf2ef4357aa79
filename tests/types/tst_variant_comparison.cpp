// SPDX-License-Identifier: MIT
#include "VariantSamples.h"

#include <LoggedTest.h>

#include <QTest>

#include <cfloat>
#include <cmath>
#include <limits>

using namespace VariantSamples;

namespace {

constexpr double doubleNan = std::numeric_limits<double>::quiet_NaN();
constexpr double doubleInfinity = std::numeric_limits<double>::infinity();
constexpr float singleNan = std::numeric_limits<float>::quiet_NaN();
constexpr float singleInfinity = std::numeric_limits<float>::infinity();

void addColumns()
{
    QTest::addColumn<QVariant>("left");
    QTest::addColumn<int>("leftTag");
    QTest::addColumn<QVariant>("right");
    QTest::addColumn<int>("rightTag");
}

QTestData &newRow(const char *name, const CVariant &left, const CVariant &right)
{
    return QTest::newRow(name) << heldBy(left) << static_cast<int>(left.type()) << heldBy(right)
                               << static_cast<int>(right.type());
}

// A row of the equality table: left.compareValue(right), and the other way round.
void equality(const char *name, const CVariant &left, const CVariant &right, bool forth, bool back)
{
    newRow(name, left, right) << forth << back;
}

void equality(const char *name, const CVariant &left, const CVariant &right, bool both)
{
    equality(name, left, right, both, both);
}

CVariant version4(quint64 word)
{
    return CVariant(recordOf<NTypes::sVersion4_t>(bytesOf(word)));
}

CVariant text(const char *content)
{
    return CVariant(CString32(QString::fromUtf8(content)));
}

} // namespace

// Equality with tolerance, and order.
class tst_variant_comparison : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void equalityOfIntegers_data();
    void equalityOfIntegers();
    void equalityOfFloats_data();
    void equalityOfFloats();
    void equalityOfTexts_data();
    void equalityOfTexts();
    void equalityOfRecordsAndBytes_data();
    void equalityOfRecordsAndBytes();
    void equalityWithoutAClassIsThatOfQVariant_data();
    void equalityWithoutAClassIsThatOfQVariant();
    void everyOtherSampleEqualsItself_data();
    void everyOtherSampleEqualsItself();
    void fourPartVersionsAreNeverEqual();
    void infinityIsNotEqualToItself();
    void decimalTolerance_data();
    void decimalTolerance();
    void decimalToleranceOfOtherTypesIsCompareValue_data();
    void decimalToleranceOfOtherTypesIsCompareValue();
    void operatorsSeeTheTag_data();
    void operatorsSeeTheTag();
    void order_data();
    void order();
    void orderWithoutAClassIsAlwaysFalse_data();
    void orderWithoutAClassIsAlwaysFalse();
    void emptyIsNotLessButGreaterOrEqual();

private:
    static void checkEquality();
};

void tst_variant_comparison::checkEquality()
{
    QFETCH(const QVariant, left);
    QFETCH(const int, leftTag);
    QFETCH(const QVariant, right);
    QFETCH(const int, rightTag);
    QFETCH(const bool, forth);
    QFETCH(const bool, back);
    const CVariant a = tagged(left, leftTag);
    const CVariant b = tagged(right, rightTag);
    QCOMPARE(a.compareValue(b), forth);
    QCOMPARE(b.compareValue(a), back);
    QCOMPARE(a == b, leftTag == rightTag && forth);
    QCOMPARE(a != b, leftTag != rightTag || !forth);
    QCOMPARE(b == a, leftTag == rightTag && back);
    QCOMPARE(b != a, leftTag != rightTag || !back);
    for (const int digits : {-1, INT_MIN}) {
        QCOMPARE(a.compareValueFd(b, digits), forth);
        QCOMPARE(b.compareValueFd(a, digits), back);
    }
}

void tst_variant_comparison::equalityOfIntegers_data()
{
    addColumns();
    QTest::addColumn<bool>("forth");
    QTest::addColumn<bool>("back");
    equality("same", CVariant(5), CVariant(5), true);
    equality("different", CVariant(5), CVariant(6), false);
    equality("typed and widened E_U8", typedSample(1), rawSample(1), true);
    equality("typed and widened E_I8", typedSample(2), rawSample(2), true);
    equality("typed and widened E_U16", typedSample(3), rawSample(3), true);
    equality("typed and widened E_I16", typedSample(4), rawSample(4), true);
    equality("E_U8 and E_I64", CVariant(static_cast<unsigned char>(7)), CVariant(7LL), true);
    equality("E_U8 255 and E_I8 -1", CVariant(static_cast<unsigned char>(255)),
             CVariant(static_cast<signed char>(-1)), false);
    equality("largest E_U64 and E_I64 -1", CVariant(ULLONG_MAX), CVariant(-1LL), true);
    equality("E_U32 and E_I32 of the same bits", CVariant(UINT_MAX), CVariant(-1), false);
    equality("no limit of 32 bits", CVariant(1ULL << 32), CVariant(0), false);
    equality("2 and 2.9: as an integer equal, as a float not", CVariant(2), CVariant(2.9F), true, false);
    equality("2 and 2.0", CVariant(2), CVariant(2.0), true);
    equality("integer and text", CVariant(12), text("12"), false, true);
    equality("E_U32 and version", CVariant(0x0205012CU), typedSample(21), true);
    equality("E_I32 and address", CVariant(-1062731510), typedSample(22), false, true);
    equality("E_U64 and date-time", CVariant(0x07E5030405060759ULL), typedSample(16), true);
    equality("E_I64 and date-time", CVariant(0x07E5030405060759LL), typedSample(16), true);
    equality("E_I32 and other date-time", CVariant(5), typedSample(16), false);
    equality("E_U64 and 8 bytes", CVariant(0x0807060504030201ULL), bytesValue(fromHex("0102030405060708")),
             true);
    equality("E_U16 and its bytes, too few for 64 bits", CVariant(static_cast<unsigned short>(0x0201)),
             bytesValue(fromHex("0102")), false, true);
    equality("E_U64 0 and four-part version, which reads as 0", CVariant(0ULL), version4(5), false, true);
    equality("E_U64 and four-part version of the same word", CVariant(5ULL), version4(5), false);
    equality("E_I32 and empty", CVariant(0), CVariant(), false);
    equality("E_U32 and a null value of its type", CVariant(0U), CVariant::fromRawData("", 0, NTypes::E_U32),
             false, true);
}

void tst_variant_comparison::equalityOfIntegers()
{
    checkEquality();
}

// The tolerance is the bare epsilon, absolute: of no use above 1, generous below.
void tst_variant_comparison::equalityOfFloats_data()
{
    addColumns();
    QTest::addColumn<bool>("forth");
    QTest::addColumn<bool>("back");
    const float beyondSingle = std::nextafterf(FLT_EPSILON, 1.0F);
    const double beyondDouble = std::nextafter(DBL_EPSILON, 1.0);
    equality("single same", CVariant(1.5F), CVariant(1.5F), true);
    equality("single 1 and 1.0000001", CVariant(1.0F), CVariant(1.0000001F), true);
    equality("single at the epsilon", CVariant(1.0F), CVariant(1.0F + FLT_EPSILON), true);
    equality("single beyond the epsilon", CVariant(1.0F), CVariant(1.0F + 2 * FLT_EPSILON), false);
    equality("single at the epsilon from 0", CVariant(0.0F), CVariant(FLT_EPSILON), true);
    equality("single beyond the epsilon from 0", CVariant(0.0F), CVariant(beyondSingle), false);
    equality("single beyond the epsilon below 0", CVariant(0.0F), CVariant(-beyondSingle), false);
    equality("single neighbours of a large number", CVariant(1e9F), CVariant(std::nextafterf(1e9F, 2e9F)),
             false);
    equality("single tiny numbers", CVariant(1e-20F), CVariant(-1e-20F), true);
    equality("single signed zeros", CVariant(0.0F), CVariant(-0.0F), true);
    equality("single NaN", CVariant(singleNan), CVariant(singleNan), true);
    equality("single NaN and number", CVariant(singleNan), CVariant(0.0F), false);
    equality("single infinity", CVariant(singleInfinity), CVariant(singleInfinity), false);
    equality("single infinity and number", CVariant(singleInfinity), CVariant(FLT_MAX), false);
    equality("double same", CVariant(1.5), CVariant(1.5), true);
    equality("double at the epsilon", CVariant(1.0), CVariant(1.0 + DBL_EPSILON), true);
    equality("double beyond the epsilon", CVariant(1.0), CVariant(1.0 + 2 * DBL_EPSILON), false);
    equality("double at the epsilon from 0", CVariant(0.0), CVariant(DBL_EPSILON), true);
    equality("double beyond the epsilon from 0", CVariant(0.0), CVariant(beyondDouble), false);
    equality("double neighbours of a large number", CVariant(1e17), CVariant(std::nextafter(1e17, 2e17)),
             false);
    equality("double NaN", CVariant(doubleNan), CVariant(-doubleNan), true);
    equality("double NaN and number", CVariant(doubleNan), CVariant(0.0), false);
    equality("double infinity", CVariant(doubleInfinity), CVariant(doubleInfinity), false);
    equality("double opposite infinities", CVariant(doubleInfinity), CVariant(-doubleInfinity), false);
    equality("single and double 1", CVariant(1.0F), CVariant(1.0), true);
    equality("single and double 0.1: in single precision equal", CVariant(0.1F), CVariant(0.1), true, false);
    equality("single and double NaN", CVariant(singleNan), CVariant(doubleNan), true);
    equality("double and NaN of an integer", CVariant(doubleNan), CVariant(0), false, true);
    equality("single and integer", CVariant(3.0F), CVariant(3), true);
    equality("double and E_U64 above 53 bits", CVariant(9007199254740992.0), CVariant(9007199254740993ULL),
             true, false);
    equality("single and text", CVariant(1.5F), text("1.5"), false, true);
    equality("single and 8 bytes", CVariant(1.5F), bytesValue(fromHex("0000C03F00000000")), true, false);
    equality("single and 4 bytes, too few", CVariant(1.5F), bytesValue(fromHex("0000C03F")), false, true);
    equality("double and version", CVariant(33882412.0), typedSample(21), true);
    equality("double and date-time", CVariant(0.0), CVariant(NTypes::sDateTime_t{}), true);
    equality("double and character, no number", CVariant(5.0), CVariant(QChar(u'5')), false, true);
}

void tst_variant_comparison::equalityOfFloats()
{
    checkEquality();
}

void tst_variant_comparison::equalityOfTexts_data()
{
    addColumns();
    QTest::addColumn<bool>("forth");
    QTest::addColumn<bool>("back");
    equality("same", text("Spindle"), text("Spindle"), true);
    equality("case", text("Spindle"), text("spindle"), false);
    equality("fixed strings of two sizes", text("Spindle"), CVariant(CString128(QStringLiteral("Spindle"))),
             true);
    CString32 withTail(QStringLiteral("abcdef"));
    withTail = QStringLiteral("abc");
    equality("what is behind the terminator does not count", CVariant(withTail), text("abc"), true);
    equality("an 8-bit field is its text up to the first zero", text("abc"), charField<64>("abc"), true);
    equality("what is behind the zero does not count", charField<64>(QByteArray("abc\0x", 5)),
             charField<64>("abc"), true);
    equality("parsed 8-bit text", text("abc"), CVariant::fromStr(QStringLiteral("abc"), NTypes::E_CHARSTR64),
             true);
    equality("8-bit fields of two sizes", charField<64>("abc"), charField<128>("abc"), true);
    equality("8-bit field and itself", charField<256>("abc"), charField<256>("abc"), true);
    equality("characters", CVariant(QChar(u'x')), CVariant('x'), true);
    equality("different characters", CVariant(QChar(u'x')), CVariant(QChar(u'y')), false);
    equality("character and text", CVariant('x'), text("x"), true);
    equality("text and version", text("2.5.300"), typedSample(21), true, false);
    equality("text and number of this text", text("1.5"), CVariant(1.5), true, false);
    equality("text and four-part version", text("1.2.3.4"), typedSample(32), true, false);
    equality("empty text and empty value", text(""), CVariant(), true, false);
    equality("text and bytes by their hexadecimal form", text("0102"), bytesValue(fromHex("0102")), true,
             false);
}

void tst_variant_comparison::equalityOfTexts()
{
    checkEquality();
}

void tst_variant_comparison::equalityOfRecordsAndBytes_data()
{
    addColumns();
    QTest::addColumn<bool>("forth");
    QTest::addColumn<bool>("back");
    const CVariant version = typedSample(21);
    equality("versions", version, typedSample(21), true);
    equality("different versions", version, valueOf<NTypes::sVersion_t>("2D010502"), false);
    equality("version and address of the same word", version, valueOf<NTypes::uIPv4HAddr_t>("2C010502"),
             true);
    equality("version and command of the same word", version, valueOf<NTypes::sCommand_t>("2C010502"), true);
    equality("command and E_I32 of the same word", typedSample(23), CVariant(static_cast<int>(0xDEADBEEF)),
             true, false);
    equality("version and 4 bytes", version, bytesValue(fromHex("2C010502")), true);
    equality("version and 3 bytes", version, bytesValue(fromHex("2C0105")), false);
    equality("version and text", version, text("2.5.300"), false, true);
    equality("zero version and text, which is no number", CVariant(NTypes::sVersion_t{}), text("0"), false);
    equality("zero version and empty value", CVariant(NTypes::sVersion_t{}), CVariant(), false);
    equality("address and four-part version", typedSample(22), typedSample(32), false);
    equality("date-times", typedSample(16), typedSample(16), true);
    equality("date-times of other hundredths", typedSample(16),
             valueOf<NTypes::sDateTime_t>("580706050403E507"), false);
    equality("bytes", bytesValue(fromHex("0102")), bytesValue(fromHex("0102")), true);
    equality("different bytes", bytesValue(fromHex("0102")), bytesValue(fromHex("0103")), false);
    equality("bytes of another length", bytesValue(fromHex("0102")), bytesValue(fromHex("010200")), false);
    equality("empty bytes and null", bytesValue(QByteArray("")), CVariant(NTypes::E_BYTEARRAY), true);
    equality("bytes and E_U16 of these bytes", bytesValue(fromHex("0102")),
             CVariant(static_cast<unsigned short>(0x0201)), true, false);
    equality("pair of floats and its bytes", typedSample(24), bytesValue(sampleBytes(24)), true);
    equality("arrays", typedSample(27), typedSample(27), true);
    equality("arrays of the same bytes", typedSample(27),
             valueOf<NTypes::sDs402Array_t<unsigned short>>("0100FEFF0300"), true);
    equality("different arrays", typedSample(28), typedSample(31), false);
    equality("record and its bytes", typedSample(26), bytesValue(sampleBytes(26)), true);
    equality("bytes and four-part version", bytesValue(sampleBytes(32)), typedSample(32), true, false);
}

void tst_variant_comparison::equalityOfRecordsAndBytes()
{
    checkEquality();
}

void tst_variant_comparison::equalityWithoutAClassIsThatOfQVariant_data()
{
    addColumns();
    QTest::addColumn<bool>("forth");
    QTest::addColumn<bool>("back");
    equality("empty", CVariant(), CVariant(), true);
    equality("empty and number", CVariant(), CVariant(5), false);
    equality("untyped numbers", tagged(5, 0), tagged(5, 0), true);
    equality("untyped number and text", tagged(5, 0), tagged(QStringLiteral("5"), 0),
             QVariant(5) == QStringLiteral("5"), QVariant(QStringLiteral("5")) == QVariant(5));
    equality("unassigned tag", tagged(5, 11), tagged(5, 11), true);
    equality("unassigned tag, different", tagged(5, 11), tagged(6, 11), false);
    equality("unassigned tag and E_I32, which reads it as 0", tagged(5, 11), CVariant(5), true, false);
    equality("unknown tags", tagged(QByteArray("ab"), 33), tagged(QByteArray("ab"), -1), true);
}

void tst_variant_comparison::equalityWithoutAClassIsThatOfQVariant()
{
    checkEquality();
}

void tst_variant_comparison::everyOtherSampleEqualsItself_data()
{
    QTest::addColumn<int>("tag");
    for (const int tag : valueTags) {
        if (tag != NTypes::E_VERSION_4)
            QTest::newRow(tagName(tag).constData()) << tag;
    }
}

void tst_variant_comparison::everyOtherSampleEqualsItself()
{
    QFETCH(const int, tag);
    const CVariant value = typedSample(tag);
    const CVariant copy = value;
    QVERIFY(value.compareValue(copy));
    QVERIFY(value == copy);
    QVERIFY(!(value != copy));
    QVERIFY(value.compareValueFd(copy, 3));
    QVERIFY(!(value < copy));
    QVERIFY(!(value > copy));
    QVERIFY(value <= copy);
    QVERIFY(value >= copy);
}

// They are compared as 64-bit words, which they cannot be converted to.
void tst_variant_comparison::fourPartVersionsAreNeverEqual()
{
    const CVariant version = typedSample(NTypes::E_VERSION_4);
    const CVariant &same = version;
    QVERIFY(!version.compareValue(same));
    QVERIFY(!version.compareValueFd(same, 2));
    QVERIFY(!(version == same));
    QVERIFY(version != same);
    QVERIFY(!(version < same));
    QVERIFY(!(version > same));
    QVERIFY(version <= same);
    QVERIFY(version >= same);
}

// The difference of two infinities is not a number, so it is within no tolerance.
void tst_variant_comparison::infinityIsNotEqualToItself()
{
    for (const CVariant &value : {CVariant(singleInfinity), CVariant(-doubleInfinity)}) {
        QVERIFY(!value.compareValue(value));
        QVERIFY(!(value == CVariant(value)));
        QVERIFY(value != CVariant(value));
        QVERIFY(!value.compareValueFd(value, 0));
    }
}

void tst_variant_comparison::decimalTolerance_data()
{
    addColumns();
    QTest::addColumn<int>("digits");
    QTest::addColumn<bool>("equal");
    const auto row = [](const char *name, const CVariant &a, const CVariant &b, int digits, bool equal) {
        newRow(name, a, b) << digits << equal;
    };
    row("1.004 and 1, 2 digits", CVariant(1.004), CVariant(1.0), 2, true);
    row("1.004 and 1, 3 digits", CVariant(1.004), CVariant(1.0), 3, false);
    row("double at 0.01", CVariant(0.0), CVariant(0.01), 2, true);
    row("double beyond 0.01", CVariant(0.0), CVariant(std::nextafter(0.01, 1.0)), 2, false);
    row("double at 1, no digits", CVariant(2.0), CVariant(1.0), 0, true);
    row("double beyond 1, no digits", CVariant(2.0 + 2 * DBL_EPSILON), CVariant(1.0), 0, false);
    row("double exact, many digits", CVariant(1.5), CVariant(1.5), 400, true);
    row("double beyond exact, many digits", CVariant(0.0), CVariant(std::nextafter(0.0, 1.0)), INT_MAX,
        false);
    row("double, digits finer than the epsilon", CVariant(1.0), CVariant(1.0 + DBL_EPSILON), 17, false);
    row("double, negative digits are the epsilon", CVariant(1.0), CVariant(1.0 + DBL_EPSILON), -1, true);
    row("double, negative digits are no tolerance", CVariant(1.0), CVariant(2.0), -1, false);
    row("double NaN", CVariant(doubleNan), CVariant(doubleNan), 2, true);
    row("double NaN and number", CVariant(doubleNan), CVariant(1.0), 0, false);
    row("double infinity", CVariant(doubleInfinity), CVariant(doubleInfinity), 0, false);
    row("double and text, not convertible", CVariant(0.0), text("0"), 0, false);
    row("double and integer", CVariant(1.004), CVariant(1), 2, true);
    row("single at 0.01", CVariant(0.0F), CVariant(0.01F), 2, true);
    row("single beyond 0.01", CVariant(0.0F), CVariant(std::nextafterf(0.01F, 1.0F)), 2, false);
    row("single at 1, no digits", CVariant(2.0F), CVariant(1.0F), 0, true);
    row("single beyond 1, no digits", CVariant(2.5F), CVariant(1.0F), 0, false);
    row("single and text, not convertible", CVariant(0.0F), text("0"), 0, false);
    row("single 1.004 and 1, 2 digits", CVariant(1.004F), CVariant(1.0F), 2, true);
    row("single 1.004 and 1, 3 digits", CVariant(1.004F), CVariant(1.0F), 3, false);
    row("single and double compared in single precision", CVariant(0.0F), CVariant(std::nextafter(0.01, 1.0)),
        2, true);
    row("single, digits finer than the epsilon", CVariant(1.0F), CVariant(1.0F + FLT_EPSILON), 7, false);
    row("single, many digits", CVariant(1.5F), CVariant(1.5F), 60, true);
    row("single NaN", CVariant(singleNan), CVariant(singleNan), 3, true);
    row("single NaN and number", CVariant(1.0F), CVariant(singleNan), 0, false);
    row("single infinity", CVariant(singleInfinity), CVariant(singleInfinity), 0, false);
}

void tst_variant_comparison::decimalTolerance()
{
    QFETCH(const QVariant, left);
    QFETCH(const int, leftTag);
    QFETCH(const QVariant, right);
    QFETCH(const int, rightTag);
    QFETCH(const int, digits);
    QFETCH(const bool, equal);
    QCOMPARE(tagged(left, leftTag).compareValueFd(tagged(right, rightTag), digits), equal);
}

void tst_variant_comparison::decimalToleranceOfOtherTypesIsCompareValue_data()
{
    QTest::addColumn<int>("tag");
    for (int tag = 0; tag <= 33; ++tag) {
        if (tag != 7 && tag != 10)
            QTest::newRow(tagName(tag).constData()) << tag;
    }
}

void tst_variant_comparison::decimalToleranceOfOtherTypesIsCompareValue()
{
    QFETCH(const int, tag);
    const CVariant sample = typedSample(tag);
    const CVariant value = sample.type() == typeOf(tag) ? sample : tagged(5, tag);
    QVector<CVariant> others = {CVariant(), CVariant(5), CVariant(6.0), text("x")};
    for (const int other : valueTags)
        others.append(typedSample(other));
    for (const CVariant &other : qAsConst(others)) {
        for (const int digits : {-1, 0, 2, 9})
            QCOMPARE(value.compareValueFd(other, digits), value.compareValue(other));
    }
}

void tst_variant_comparison::operatorsSeeTheTag_data()
{
    addColumns();
    newRow("single and double 1", CVariant(1.0F), CVariant(1.0));
    newRow("E_U8 and E_U16", CVariant(static_cast<unsigned char>(7)),
           CVariant(static_cast<unsigned short>(7)));
    newRow("fixed strings", text("abc"), CVariant(CString64(QStringLiteral("abc"))));
    newRow("version and command", typedSample(21), valueOf<NTypes::sCommand_t>("2C010502"));
    newRow("arrays of unsigned int", typedSample(29), tagged(heldBy(typedSample(29)), 31));
    newRow("unassigned tag and E_I32", tagged(5, 11), CVariant(5));
}

void tst_variant_comparison::operatorsSeeTheTag()
{
    QFETCH(const QVariant, left);
    QFETCH(const int, leftTag);
    QFETCH(const QVariant, right);
    QFETCH(const int, rightTag);
    const CVariant a = tagged(left, leftTag);
    const CVariant b = tagged(right, rightTag);
    QVERIFY(a.compareValue(b));
    QVERIFY(!(a == b));
    QVERIFY(a != b);
}

// left < right and left > right; the other two operators are their negations.
void tst_variant_comparison::order_data()
{
    addColumns();
    QTest::addColumn<bool>("less");
    QTest::addColumn<bool>("greater");
    const auto row = [](const char *name, const CVariant &a, const CVariant &b, bool less, bool greater) {
        newRow(name, a, b) << less << greater;
    };
    row("E_U8", CVariant(static_cast<unsigned char>(3)), CVariant(static_cast<unsigned char>(200)), true,
        false);
    row("E_I8", CVariant(static_cast<signed char>(3)), CVariant(static_cast<signed char>(-3)), false, true);
    row("E_U16 widened", rawSample(3), CVariant(static_cast<unsigned short>(60000)), false, false);
    row("E_I32", CVariant(-1), CVariant(1), true, false);
    row("E_I32 and E_U32", CVariant(-1), CVariant(1U), true, false);
    row("E_U32 and E_I32, read unsigned", CVariant(1U), CVariant(-1), true, false);
    row("E_U64", CVariant(ULLONG_MAX), CVariant(1ULL), false, true);
    row("E_I64", CVariant(LLONG_MIN), CVariant(LLONG_MAX), true, false);
    row("E_I32 and float, cut", CVariant(2), CVariant(2.9), false, false);
    row("float and E_I32", CVariant(2.9), CVariant(2), false, true);
    row("E_F32", CVariant(1.5F), CVariant(2.5F), true, false);
    row("E_F32 within the tolerance", CVariant(1.0F), CVariant(1.0000001F), true, false);
    row("E_F64", CVariant(-1.0), CVariant(-2.0), false, true);
    row("E_F64 NaN", CVariant(doubleNan), CVariant(1.0), false, false);
    row("E_F64 infinity", CVariant(1.0), CVariant(doubleInfinity), true, false);
    row("date-times", typedSample(16), valueOf<NTypes::sDateTime_t>("5A0706050403E507"), true, false);
    row("date-times of two years", valueOf<NTypes::sDateTime_t>("0000000001010300"), typedSample(16), true,
        false);
    row("date-time and E_I64", typedSample(16), CVariant(-1LL), false, true);
    row("texts", text("abc"), text("abd"), true, false);
    row("texts of digits", text("10"), text("9"), true, false);
    row("text and number by its text", text("10"), CVariant(9), true, false);
    row("8-bit strings", charField<64>("b"), charField<64>("a"), false, true);
    row("characters", CVariant(QChar(u'a')), CVariant('b'), true, false);
    row("versions", valueOf<NTypes::sVersion_t>("FFFFFF01"), typedSample(21), true, false);
    row("addresses", valueOf<NTypes::uIPv4HAddr_t>("FFFFFFFF"), typedSample(22), false, true);
    row("commands", typedSample(23), CVariant(0xDEADBEF0U), true, false);
    row("four-part version and number: reads as 0", typedSample(32), CVariant(5ULL), true, false);
    row("number and four-part version: reads as 0", CVariant(5ULL), typedSample(32), false, true);
}

void tst_variant_comparison::order()
{
    QFETCH(const QVariant, left);
    QFETCH(const int, leftTag);
    QFETCH(const QVariant, right);
    QFETCH(const int, rightTag);
    QFETCH(const bool, less);
    QFETCH(const bool, greater);
    const CVariant a = tagged(left, leftTag);
    const CVariant b = tagged(right, rightTag);
    QCOMPARE(a < b, less);
    QCOMPARE(a > b, greater);
    QCOMPARE(a >= b, !less);
    QCOMPARE(a <= b, !greater);
}

void tst_variant_comparison::orderWithoutAClassIsAlwaysFalse_data()
{
    addColumns();
    const auto row = [](int tag, const QVariant &low, const QVariant &high) {
        newRow(tagName(tag).constData(), tagged(low, tag), tagged(high, tag));
    };
    for (const int tag : {0, 11, 33, 40, -1})
        row(tag, 5, 6);
    row(24, fromHex("00000000"), fromHex("11111111"));
    row(25, fromHex("01"), fromHex("02"));
    for (const int tag : {26, 27, 28, 29, 30, 31})
        row(tag, heldBy(CVariant(typeOf(tag))), heldBy(typedSample(tag)));
}

void tst_variant_comparison::orderWithoutAClassIsAlwaysFalse()
{
    QFETCH(const QVariant, left);
    QFETCH(const int, leftTag);
    QFETCH(const QVariant, right);
    QFETCH(const int, rightTag);
    const CVariant a = tagged(left, leftTag);
    const CVariant b = tagged(right, rightTag);
    for (const CVariant &other : {b, CVariant(5), CVariant(), a}) {
        QVERIFY(!(a < other));
        QVERIFY(!(a > other));
        QVERIFY(a <= other);
        QVERIFY(a >= other);
    }
}

void tst_variant_comparison::emptyIsNotLessButGreaterOrEqual()
{
    QVERIFY(!(CVariant() < CVariant()));
    QVERIFY(CVariant() >= CVariant());
}

QTEST_GUILESS_MAIN(tst_variant_comparison)
#include "tst_variant_comparison.moc"
