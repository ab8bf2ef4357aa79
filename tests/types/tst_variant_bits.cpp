// SPDX-License-Identifier: MIT
#include "VariantSamples.h"

#include <LoggedTest.h>

#include <QTest>

using namespace VariantSamples;

namespace {

// Bit 0 first.
QBitArray bitsOf(const QString &digits)
{
    QBitArray bits(digits.size());
    for (int i = 0; i < digits.size(); ++i)
        bits.setBit(i, digits.at(i) == QLatin1Char('1'));
    return bits;
}

QString textOf(const QBitArray &bits)
{
    QString digits;
    for (int i = 0; i < bits.size(); ++i)
        digits.append(QLatin1Char(bits.testBit(i) ? '1' : '0'));
    return digits;
}

// The low `width` bits of a number, bit 0 first.
QString lowBits(quint64 number, int width)
{
    QString digits;
    for (int i = 0; i < width; ++i)
        digits.append(QLatin1Char((number >> i) & 1U ? '1' : '0'));
    return digits;
}

constexpr std::array<int, 8> integerTags = {1, 2, 3, 4, 5, 6, 8, 9};

int widthOf(int tag)
{
    return 8 * static_cast<int>(CDataTypeParser::typeSize(typeOf(tag)));
}

QStringList notSupportedFrom(int type)
{
    return {QStringLiteral("CVariant::fromBitArray : Data type %1 (%2) is not supported in this method.")
                .arg(QString::number(type), CDataTypeParser::typeToStr(typeOf(type)))};
}

bool isEmpty(const CVariant &value)
{
    return value.type() == NTypes::E_UNKNOWN && !heldBy(value).isValid();
}

} // namespace

// Values as bit arrays and back.
class tst_variant_bits : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void integersToBits_data();
    void integersToBits();
    void heldTypesOtherThanTheTagSays_data();
    void heldTypesOtherThanTheTagSays();
    void byteArraysToBits_data();
    void byteArraysToBits();
    void emptyByteArray_data();
    void emptyByteArray();
    void typesWithoutBits_data();
    void typesWithoutBits();
    void bitsToIntegers_data();
    void bitsToIntegers();
    void bitCountsUpToBeyondTheWidth_data();
    void bitCountsUpToBeyondTheWidth();
    void bitsToOtherTypes_data();
    void bitsToOtherTypes();
    void memberFormsUseTheOwnType();
    void memberFormsUseE_U64WhenThereIsNone();
    void memberFormsOfATypeWithoutBits();
    void bitsAreStable_data();
    void bitsAreStable();
};

void tst_variant_bits::integersToBits_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("tag");
    QTest::addColumn<QString>("bits");
    const auto row = [](const char *name, const CVariant &value, const QString &bits) {
        QTest::newRow(name) << heldBy(value) << static_cast<int>(value.type()) << bits;
    };
    const auto highest = [](int width) { return QString(width - 1, QLatin1Char('0')) + QLatin1Char('1'); };
    row("E_U8 1", CVariant(static_cast<unsigned char>(1)), QStringLiteral("10000000"));
    row("E_U8 200", typedSample(1), QStringLiteral("00010011"));
    row("E_U8 200 widened", rawSample(1), QStringLiteral("00010011"));
    row("E_I8 -1", CVariant(static_cast<signed char>(-1)), QStringLiteral("11111111"));
    row("E_I8 -100 widened", rawSample(2), QStringLiteral("00111001"));
    row("E_U16 0x8001", CVariant(static_cast<unsigned short>(0x8001)), QStringLiteral("1000000000000001"));
    row("E_U16 widened", rawSample(3), lowBits(60000, 16));
    row("E_I16 smallest", CVariant(static_cast<short>(-32768)), highest(16));
    row("E_I16 widened", rawSample(4), lowBits(0x8AD0, 16));
    row("E_U32", CVariant(0x80000000U), highest(32));
    row("E_I32 -1", CVariant(-1), QString(32, QLatin1Char('1')));
    row("E_I32 2", CVariant(2), lowBits(2, 32));
    row("E_U64", CVariant(1ULL << 63), highest(64));
    row("E_I64 -1", CVariant(-1LL), QString(64, QLatin1Char('1')));
    row("E_I64", typedSample(9), lowBits(0xEEDDCCBBAA998878ULL, 64));
}

void tst_variant_bits::integersToBits()
{
    QFETCH(const QVariant, value);
    QFETCH(const int, tag);
    QFETCH(const QString, bits);
    QCOMPARE(textOf(tagged(value, tag).toBitArray()), bits);
}

// The value is converted by QVariant; what it cannot convert is 0. The width is always that of the type.
void tst_variant_bits::heldTypesOtherThanTheTagSays_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<quint64>("number");
    QTest::newRow("text of a number") << QVariant(QStringLiteral("5")) << quint64(5);
    QTest::newRow("text of no number") << QVariant(QStringLiteral("five")) << quint64(0);
    QTest::newRow("raw bytes") << QVariant(fromHex("010203")) << quint64(0);
    QTest::newRow("nothing") << QVariant() << quint64(0);
    QTest::newRow("record") << QVariant::fromValue(NTypes::sCommand_t{5}) << quint64(0);
    QTest::newRow("fixed string") << QVariant::fromValue(CString32(QStringLiteral("5"))) << quint64(0);
    QTest::newRow("list") << QVariant(QVariantList{5}) << quint64(0);
}

void tst_variant_bits::heldTypesOtherThanTheTagSays()
{
    QFETCH(const QVariant, value);
    QFETCH(const quint64, number);
    for (const int tag : integerTags)
        QCOMPARE(textOf(tagged(value, tag).toBitArray()), lowBits(number, widthOf(tag)));
}

void tst_variant_bits::byteArraysToBits_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("width");
    const std::array<int, 18> widths = {0, 8, 16, 16, 32, 32, 32, 32, 64, 64, 64, 64, 64, 64, 64, 64, 64, 64};
    for (int length = 1; length <= 17; ++length) {
        QTest::newRow((QByteArray::number(length) + " bytes").constData())
            << length << widths[static_cast<std::size_t>(length)];
    }
}

void tst_variant_bits::byteArraysToBits()
{
    QFETCH(const int, length);
    QFETCH(const int, width);
    const QByteArray bytes = fromHex("8142C3E4958677F8090A0B0C0D0E0F1011").left(length);
    const QString expected = lowBits(0xF8778695E4C34281ULL, 64).left(width);
    QCOMPARE(textOf(bytesValue(bytes).toBitArray()), expected);
    QCOMPARE(bytesValue(bytes).toBitArray(), QBitArray::fromBits(bytes.constData(), width));
}

void tst_variant_bits::emptyByteArray_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("null") << QVariant();
    QTest::newRow("null byte array") << QVariant(QByteArray());
    QTest::newRow("empty byte array") << QVariant(QByteArray(""));
    QTest::newRow("no byte array") << QVariant::fromValue(NTypes::sCommand_t{5});
}

void tst_variant_bits::emptyByteArray()
{
    QFETCH(const QVariant, value);
    QVERIFY(tagged(value, NTypes::E_BYTEARRAY).toBitArray().isEmpty());
    QCOMPARE(takeLog(), QStringList{QStringLiteral("CVariant::toBitArray() : Data is empty.")});
}

void tst_variant_bits::typesWithoutBits_data()
{
    QTest::addColumn<int>("tag");
    for (const int tag : {0,  7,  10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20,      21,     22,
                          23, 24, 26, 27, 28, 29, 30, 31, 32, 33, 40, -1, INT_MIN, INT_MAX})
        QTest::newRow(tagName(tag).constData()) << tag;
}

void tst_variant_bits::typesWithoutBits()
{
    QFETCH(const int, tag);
    const QStringList warning = {
        QStringLiteral("CVariant::toBitArray() : Data type '%1 (%2)' is not supported in this method.")
            .arg(QString::number(tag), CDataTypeParser::typeToStr(typeOf(tag)))};
    for (const QVariant &value :
         {heldBy(typedSample(tag)), QVariant(5), QVariant(), QVariant(QByteArray(8, 'a'))}) {
        QVERIFY(tagged(value, tag).toBitArray().isEmpty());
        QCOMPARE(takeLog(), warning);
    }
}

void tst_variant_bits::bitsToIntegers_data()
{
    QTest::addColumn<int>("tag");
    QTest::addColumn<QString>("bits");
    QTest::addColumn<QVariant>("value");
    const auto row = [](int tag, const char *note, const QString &bits, const QVariant &value) {
        QTest::newRow((tagName(tag) + " " + note).constData()) << tag << bits << value;
    };
    row(1, "one bit", QStringLiteral("1"), QVariant::fromValue<unsigned char>(1));
    row(1, "second bit", QStringLiteral("01"), QVariant::fromValue<unsigned char>(2));
    row(1, "all bits", QStringLiteral("00010011"), QVariant::fromValue<unsigned char>(200));
    row(1, "surplus bits", QStringLiteral("000100111111"), QVariant::fromValue<unsigned char>(200));
    row(2, "sign bit", QStringLiteral("11111111"), QVariant::fromValue<signed char>(-1));
    row(2, "no sign from a shorter array", QStringLiteral("1111111"), QVariant::fromValue<signed char>(127));
    row(3, "highest bit", lowBits(0x8000, 16), QVariant::fromValue<unsigned short>(0x8000));
    row(4, "highest bit", lowBits(0x8000, 16), QVariant::fromValue<short>(-32768));
    row(4, "no sign from 8 bits", QString(8, QLatin1Char('1')), QVariant::fromValue<short>(255));
    row(5, "all bits", QString(32, QLatin1Char('1')), QVariant(UINT_MAX));
    row(6, "all bits", QString(32, QLatin1Char('1')), QVariant(-1));
    row(6, "31 bits", QString(31, QLatin1Char('1')), QVariant(INT_MAX));
    row(8, "all bits", QString(64, QLatin1Char('1')), QVariant(ULLONG_MAX));
    row(8, "surplus bits", QString(100, QLatin1Char('1')), QVariant(ULLONG_MAX));
    row(9, "all bits", QString(64, QLatin1Char('1')), QVariant(-1LL));
    row(9, "63 bits", QString(63, QLatin1Char('1')), QVariant(LLONG_MAX));
    row(1, "no bits", QString(), QVariant::fromValue<unsigned char>(0));
    row(9, "no bits", QString(), QVariant(0LL));
}

void tst_variant_bits::bitsToIntegers()
{
    QFETCH(const int, tag);
    QFETCH(const QString, bits);
    QFETCH(const QVariant, value);
    for (const CVariant &made :
         {CVariant::fromBitArray(bitsOf(bits), typeOf(tag)), CVariant(bitsOf(bits), typeOf(tag))}) {
        QCOMPARE(static_cast<int>(made.type()), tag);
        QCOMPARE(heldBy(made).userType(), value.userType());
        QCOMPARE(streamed(heldBy(made)), streamed(value));
    }
}

void tst_variant_bits::bitCountsUpToBeyondTheWidth_data()
{
    QTest::addColumn<int>("tag");
    for (const int tag : integerTags)
        QTest::newRow(tagName(tag).constData()) << tag;
}

void tst_variant_bits::bitCountsUpToBeyondTheWidth()
{
    QFETCH(const int, tag);
    const QString pattern = lowBits(0xB5A9C3E1F0D28796ULL, 64) + lowBits(0xFFFFFFFF, 32);
    for (int count = 0; count <= pattern.size(); ++count) {
        const CVariant value = CVariant::fromBitArray(bitsOf(pattern.left(count)), typeOf(tag));
        const int width = widthOf(tag);
        const QString expected = (pattern.left(count) + QString(64, QLatin1Char('0'))).left(width);
        QCOMPARE(textOf(value.toBitArray()), expected);
    }
}

void tst_variant_bits::bitsToOtherTypes_data()
{
    QTest::addColumn<int>("type");
    for (const int type : {0,  7,  10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21,      22,
                           23, 24, 25, 26, 27, 28, 29, 30, 31, 32, 33, 40, -1, INT_MIN, INT_MAX})
        QTest::newRow(tagName(type).constData()) << type;
}

void tst_variant_bits::bitsToOtherTypes()
{
    QFETCH(const int, type);
    const QBitArray bits(32, true);
    QVERIFY(isEmpty(CVariant::fromBitArray(bits, typeOf(type))));
    QCOMPARE(takeLog(), notSupportedFrom(type));
    QVERIFY(isEmpty(CVariant(bits, typeOf(type))));
    QCOMPARE(takeLog(), notSupportedFrom(type));
}

void tst_variant_bits::memberFormsUseTheOwnType()
{
    const QBitArray bits = bitsOf(QStringLiteral("1111111111"));
    CVariant value(static_cast<signed char>(5));
    CVariant &returned = value.fromBitArray(bits);
    QCOMPARE(&returned, &value);
    QCOMPARE(value.type(), NTypes::E_I8);
    QCOMPARE(value.toI8(), static_cast<signed char>(-1));
    CVariant assigned(0U);
    CVariant &assignment = assigned = bits;
    QCOMPARE(&assignment, &assigned);
    QCOMPARE(assigned.type(), NTypes::E_U32);
    QCOMPARE(assigned.toU32(), 1023U);
}

void tst_variant_bits::memberFormsUseE_U64WhenThereIsNone()
{
    const QBitArray bits(64, true);
    CVariant value;
    value.fromBitArray(bits);
    QCOMPARE(value.type(), NTypes::E_U64);
    QCOMPARE(heldBy(value), QVariant(ULLONG_MAX));
    CVariant assigned;
    assigned = bits;
    QCOMPARE(assigned.type(), NTypes::E_U64);
    QCOMPARE(heldBy(assigned), QVariant(ULLONG_MAX));
}

void tst_variant_bits::memberFormsOfATypeWithoutBits()
{
    for (const int type : {7, 25, 11}) {
        CVariant value = tagged(5, type);
        value.fromBitArray(QBitArray(8, true));
        QCOMPARE(takeLog(), notSupportedFrom(type));
        QVERIFY(isEmpty(value));
        value = tagged(5, type);
        value = QBitArray(8, true);
        QCOMPARE(takeLog(), notSupportedFrom(type));
        QVERIFY(isEmpty(value));
    }
}

void tst_variant_bits::bitsAreStable_data()
{
    bitCountsUpToBeyondTheWidth_data();
}

void tst_variant_bits::bitsAreStable()
{
    QFETCH(const int, tag);
    QRandomGenerator generator(static_cast<quint32>(99 + tag));
    for (int round = 0; round < 500; ++round) {
        const QString bits = lowBits(generator.generate64(), widthOf(tag));
        const CVariant value = CVariant::fromBitArray(bitsOf(bits), typeOf(tag));
        QCOMPARE(textOf(value.toBitArray()), bits);
        QCOMPARE(value.toByteArray(), QByteArray(bitsOf(bits).bits(), widthOf(tag) / 8));
    }
}

QTEST_GUILESS_MAIN(tst_variant_bits)
#include "tst_variant_bits.moc"
