// SPDX-License-Identifier: MIT
#include "VariantSamples.h"

#include <LoggedTest.h>

#include <QTest>

using namespace VariantSamples;

namespace {

QStringList noData(int type)
{
    return {QStringLiteral(
                "CVariant::fromByteArray() : Conversion to data type '%1 (%2)' failed, no data. Line N.")
                .arg(QString::number(type), CDataTypeParser::typeToStr(typeOf(type)))};
}

QStringList failed(int type)
{
    return {QStringLiteral("CVariant::fromByteArray() : Conversion to data type '%1 (%2)' failed. Line N.")
                .arg(QString::number(type), CDataTypeParser::typeToStr(typeOf(type)))};
}

QStringList notSupported(int type)
{
    return {QStringLiteral("CVariant::fromByteArray() : Data type %1 (%2) is not supported. Line N.")
                .arg(QString::number(type), CDataTypeParser::typeToStr(typeOf(type)))};
}

struct FixedSize
{
    int tag;
    int size;
};

// Every type whose bytes must have exactly its size.
const QVector<FixedSize> &fixedSizes()
{
    static const QVector<FixedSize> sizes = {{1, 1},   {2, 1},   {3, 2},  {4, 2},   {5, 4},  {6, 4},
                                             {7, 4},   {8, 8},   {9, 8},  {10, 8},  {16, 8}, {19, 2},
                                             {21, 4},  {22, 4},  {23, 4}, {24, 8},  {26, 7}, {27, 6},
                                             {28, 12}, {29, 12}, {30, 6}, {31, 12}, {32, 8}};
    return sizes;
}

void addFixedSizeRows()
{
    QTest::addColumn<int>("tag");
    QTest::addColumn<int>("size");
    for (const FixedSize &type : fixedSizes())
        QTest::newRow(tagName(type.tag).constData()) << type.tag << type.size;
}

bool isEmpty(const CVariant &value)
{
    return value.type() == NTypes::E_UNKNOWN && !heldBy(value).isValid();
}

} // namespace

// Values from their raw bytes and back.
class tst_variant_byte_arrays : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void documentedBytes();
    void sampleBytesGiveTheSample_data();
    void sampleBytesGiveTheSample();
    void exactLengthsAreTaken_data();
    void exactLengthsAreTaken();
    void otherLengthsFail_data();
    void otherLengthsFail();
    void noBytesFail_data();
    void noBytesFail();
    void byteArraysOfAnyLength();
    void fixedStringsOfAnyLength_data();
    void fixedStringsOfAnyLength();
    void fixedStringsStripPairsOfFf();
    void eightBitStrings_data();
    void eightBitStrings();
    void characters_data();
    void characters();
    void unknownTypeIsSilent();
    void unsupportedTypes_data();
    void unsupportedTypes();
    void severalPairsOfFloats();
    void severalPairsOfAnotherLengthFail();
    void severalElementsOfOtherTypes_data();
    void severalElementsOfOtherTypes();
    void elementCountIsMultipliedIn64Bits();
    void countZeroIsAsOne();
    void memberFormUsesTheOwnType();
    void constructorFallsBackToTheDefault();
    void bytesAreStable_data();
    void bytesAreStable();
    void fixedStringBytesAreStable();
    void textsReturnFromTheirBytes_data();
    void textsReturnFromTheirBytes();
    void utf16CharacterHasNoBytesToQt();
};

void tst_variant_byte_arrays::documentedBytes()
{
    QCOMPARE(CVariant(static_cast<quint16>(0x1234)).toByteArray(), fromHex("3412"));
    QCOMPARE(CVariant(1.0F).toByteArray(), fromHex("0000803F"));
}

void tst_variant_byte_arrays::sampleBytesGiveTheSample_data()
{
    QTest::addColumn<int>("tag");
    for (const int tag : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 16, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32})
        QTest::newRow(tagName(tag).constData()) << tag;
}

void tst_variant_byte_arrays::sampleBytesGiveTheSample()
{
    QFETCH(const int, tag);
    const QByteArray bytes = sampleBytes(tag);
    for (const CVariant &value :
         {CVariant::fromByteArray(bytes, typeOf(tag)), CVariant::fromByteArray(bytes, typeOf(tag), 1),
          CVariant(bytes, typeOf(tag)), CVariant(bytes, typeOf(tag), 1)}) {
        QCOMPARE(static_cast<int>(value.type()), tag);
        QCOMPARE(value.toStr(), typedSample(tag).toStr());
        QCOMPARE(streamed(heldBy(value)), streamed(heldBy(rawSample(tag))));
        QCOMPARE(value.toByteArray(), bytes);
    }
}

void tst_variant_byte_arrays::exactLengthsAreTaken_data()
{
    addFixedSizeRows();
}

void tst_variant_byte_arrays::exactLengthsAreTaken()
{
    QFETCH(const int, tag);
    QFETCH(const int, size);
    const QByteArray bytes(size, 'a');
    const CVariant value = CVariant::fromByteArray(bytes, typeOf(tag));
    QCOMPARE(static_cast<int>(value.type()), tag);
    QVERIFY(!value.isNull());
    const CVariant raw =
        CVariant::fromRawData(bytes.constData(), static_cast<unsigned int>(size), typeOf(tag));
    QCOMPARE(streamed(heldBy(value)), streamed(heldBy(raw)));
}

void tst_variant_byte_arrays::otherLengthsFail_data()
{
    addFixedSizeRows();
}

void tst_variant_byte_arrays::otherLengthsFail()
{
    QFETCH(const int, tag);
    QFETCH(const int, size);
    for (int length = 1; length <= 2 * size + 1; ++length) {
        if (length == size)
            continue;
        QVERIFY(isEmpty(CVariant::fromByteArray(QByteArray(length, 'a'), typeOf(tag))));
        QCOMPARE(withoutLineNumbers(takeLog()), failed(tag));
    }
}

void tst_variant_byte_arrays::noBytesFail_data()
{
    QTest::addColumn<int>("tag");
    for (const int tag : valueTags)
        QTest::newRow(tagName(tag).constData()) << tag;
}

void tst_variant_byte_arrays::noBytesFail()
{
    QFETCH(const int, tag);
    for (const QByteArray &none : {QByteArray(), QByteArray("")}) {
        QVERIFY(isEmpty(CVariant::fromByteArray(none, typeOf(tag))));
        QCOMPARE(withoutLineNumbers(takeLog()), noData(tag));
    }
}

void tst_variant_byte_arrays::byteArraysOfAnyLength()
{
    for (const int length : {1, 2, 7, 8, 64, 100000}) {
        const QByteArray bytes(length, '\xFE');
        const CVariant value = CVariant::fromByteArray(bytes, NTypes::E_BYTEARRAY);
        QCOMPARE(value.type(), NTypes::E_BYTEARRAY);
        QCOMPARE(value.toByteArray(), bytes);
    }
}

void tst_variant_byte_arrays::fixedStringsOfAnyLength_data()
{
    QTest::addColumn<int>("tag");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    for (const int tag : {12, 17, 14}) {
        const QByteArray name = tagName(tag);
        const int units = static_cast<int>(CDataTypeParser::typeSize(typeOf(tag))) / 2;
        QTest::newRow((name + " of one unit").constData())
            << tag << fromHex("AC20") << QStringLiteral("\u20AC");
        QTest::newRow((name + " up to the terminator").constData())
            << tag << fromHex("410000004200") << QStringLiteral("A");
        QTest::newRow((name + " exact").constData())
            << tag << fromHex("4100").repeated(units) << QString(units, QLatin1Char('A'));
        QTest::newRow((name + " cut").constData())
            << tag << fromHex("4100").repeated(units + 1) << QString(units, QLatin1Char('A'));
    }
}

void tst_variant_byte_arrays::fixedStringsOfAnyLength()
{
    QFETCH(const int, tag);
    QFETCH(const QByteArray, bytes);
    QFETCH(const QString, text);
    const CVariant value = CVariant::fromByteArray(bytes, typeOf(tag));
    QCOMPARE(static_cast<int>(value.type()), tag);
    QCOMPARE(value.toStr(), text);
    const int size = static_cast<int>(CDataTypeParser::typeSize(typeOf(tag)));
    QCOMPARE(value.toByteArray(), (bytes + QByteArray(256, '\0')).left(size));
}

void tst_variant_byte_arrays::fixedStringsStripPairsOfFf()
{
    const QByteArray bytes = fromHex("4100FFFF4200");
    QCOMPARE(CVariant::fromByteArray(bytes, NTypes::E_STRING32).toStr(), QStringLiteral("AB"));
    QCOMPARE(CVariant::fromByteArray(bytes, NTypes::E_STRING64).toStr(), QStringLiteral("AB"));
    QCOMPARE(CVariant::fromByteArray(bytes, NTypes::E_STRING128).toStr(),
             QStringLiteral("A\uFFFF") + QLatin1Char('B'));
    const CVariant cleared = CVariant::fromByteArray(QByteArray(64, '\xFF'), NTypes::E_STRING32);
    QCOMPARE(cleared.type(), NTypes::E_STRING32);
    QVERIFY(cleared.toStr().isEmpty());
}

void tst_variant_byte_arrays::eightBitStrings_data()
{
    QTest::addColumn<int>("tag");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    for (const int tag : {13, 18, 15}) {
        const QByteArray name = tagName(tag);
        const int size = static_cast<int>(CDataTypeParser::typeSize(typeOf(tag)));
        QTest::newRow((name + " short").constData()) << tag << QByteArray("Axis") << QStringLiteral("Axis");
        QTest::newRow((name + " with its terminator").constData())
            << tag << QByteArray("Axis", 5) << QStringLiteral("Axis");
        QTest::newRow((name + " exact").constData())
            << tag << QByteArray(size, 'x') << QString(size, QLatin1Char('x'));
        QTest::newRow((name + " exact and terminator").constData())
            << tag << QByteArray(size, 'x') + '\0' << QString(size, QLatin1Char('x'));
    }
}

void tst_variant_byte_arrays::eightBitStrings()
{
    QFETCH(const int, tag);
    QFETCH(const QByteArray, bytes);
    QFETCH(const QString, text);
    const CVariant value = CVariant::fromByteArray(bytes, typeOf(tag));
    QCOMPARE(static_cast<int>(value.type()), tag);
    QVERIFY(!value.isNull());
    QCOMPARE(value.toStr(), text);
    QVERIFY(heldBy(value).toByteArray().startsWith(text.toLatin1()));
}

// Text up to the first zero byte; its first character counts.
void tst_variant_byte_arrays::characters_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("character");
    QTest::newRow("one") << QByteArray("A") << QByteArray("A");
    QTest::newRow("with terminator") << QByteArray("A", 2) << QByteArray("A");
    QTest::newRow("several") << QByteArray("Axis") << QByteArray("A");
    QTest::newRow("terminator first") << QByteArray("\0A", 2) << QByteArray(1, '\0');
    QTest::newRow("zero") << QByteArray(1, '\0') << QByteArray(1, '\0');
    QTest::newRow("above 127") << QByteArray("\xFC") << QByteArray("\xFC");
}

void tst_variant_byte_arrays::characters()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QByteArray, character);
    const CVariant value = CVariant::fromByteArray(bytes, NTypes::E_CHAR);
    QCOMPARE(value.type(), NTypes::E_CHAR);
    QCOMPARE(heldBy(value), QVariant(character));
}

void tst_variant_byte_arrays::unknownTypeIsSilent()
{
    for (const QByteArray &bytes : {QByteArray(), QByteArray("a"), QByteArray(8, 'a')})
        QVERIFY(isEmpty(CVariant::fromByteArray(bytes, NTypes::E_UNKNOWN)));
    QCOMPARE(takeLog(), QStringList());
}

void tst_variant_byte_arrays::unsupportedTypes_data()
{
    QTest::addColumn<int>("type");
    for (const int type : strayTags)
        QTest::newRow(tagName(type).constData()) << type;
}

void tst_variant_byte_arrays::unsupportedTypes()
{
    QFETCH(const int, type);
    QVERIFY(isEmpty(CVariant::fromByteArray(QByteArray(8, 'a'), typeOf(type))));
    QCOMPARE(withoutLineNumbers(takeLog()), notSupported(type));
    QVERIFY(isEmpty(CVariant::fromByteArray(QByteArray(8, 'a'), typeOf(type), 1)));
    QCOMPARE(withoutLineNumbers(takeLog()), notSupported(type));
}

void tst_variant_byte_arrays::severalPairsOfFloats()
{
    for (const unsigned int count : {2U, 3U, 100U}) {
        const QByteArray bytes(static_cast<int>(count) * 8, '\x3F');
        const CVariant value = CVariant::fromByteArray(bytes, NTypes::E_2DF32F32, count);
        QCOMPARE(value.type(), NTypes::E_2DF32F32);
        QCOMPARE(value.toByteArray(), bytes);
        QCOMPARE(CVariant(bytes, NTypes::E_2DF32F32, count).toByteArray(), bytes);
    }
}

void tst_variant_byte_arrays::severalPairsOfAnotherLengthFail()
{
    for (const int length : {1, 8, 15, 17, 24}) {
        QVERIFY(isEmpty(CVariant::fromByteArray(QByteArray(length, 'a'), NTypes::E_2DF32F32, 2)));
        QCOMPARE(withoutLineNumbers(takeLog()), failed(24));
    }
    QVERIFY(isEmpty(CVariant::fromByteArray(QByteArray(), NTypes::E_2DF32F32, 2)));
    QCOMPARE(withoutLineNumbers(takeLog()), noData(24));
}

void tst_variant_byte_arrays::severalElementsOfOtherTypes_data()
{
    QTest::addColumn<int>("type");
    for (const int type : valueTags) {
        if (type != NTypes::E_2DF32F32)
            QTest::newRow(tagName(type).constData()) << type;
    }
}

void tst_variant_byte_arrays::severalElementsOfOtherTypes()
{
    QFETCH(const int, type);
    const QByteArray bytes(2 * static_cast<int>(CDataTypeParser::typeSize(typeOf(type))), 'a');
    QVERIFY(isEmpty(CVariant::fromByteArray(bytes, typeOf(type), 2)));
    QCOMPARE(withoutLineNumbers(takeLog()), notSupported(type));
    QVERIFY(isEmpty(CVariant::fromByteArray(bytes.left(bytes.size() / 2), typeOf(type), 2)));
    QCOMPARE(withoutLineNumbers(takeLog()), failed(type));
}

// 0x20000001 times 8 is 8 in 32 bits.
void tst_variant_byte_arrays::elementCountIsMultipliedIn64Bits()
{
    for (const unsigned int count : {0x20000001U, 0xE0000001U, UINT_MAX}) {
        QVERIFY(isEmpty(CVariant::fromByteArray(QByteArray(8, 'a'), NTypes::E_2DF32F32, count)));
        QCOMPARE(withoutLineNumbers(takeLog()), failed(24));
    }
    QVERIFY(isEmpty(CVariant::fromByteArray(QByteArray(16, 'a'), NTypes::E_2DF32F32, 0x20000002U)));
    QCOMPARE(withoutLineNumbers(takeLog()), failed(24));
}

void tst_variant_byte_arrays::countZeroIsAsOne()
{
    const CVariant value = CVariant::fromByteArray(fromHex("3412"), NTypes::E_U16, 0);
    QCOMPARE(value.type(), NTypes::E_U16);
    QCOMPARE(value.toU16(), static_cast<unsigned short>(0x1234));
}

void tst_variant_byte_arrays::memberFormUsesTheOwnType()
{
    CVariant value(static_cast<unsigned short>(5));
    CVariant &returned = value.fromByteArray(fromHex("3412"));
    QCOMPARE(&returned, &value);
    QCOMPARE(value.type(), NTypes::E_U16);
    QCOMPARE(value.toU16(), static_cast<unsigned short>(0x1234));
    value.fromByteArray(fromHex("34"));
    QCOMPARE(withoutLineNumbers(takeLog()), failed(3));
    QVERIFY(value.isNull());
    CVariant empty;
    empty.fromByteArray(fromHex("34"));
    QVERIFY(isEmpty(empty));
}

void tst_variant_byte_arrays::constructorFallsBackToTheDefault()
{
    const CVariant value(fromHex("34"), NTypes::E_U16);
    QCOMPARE(withoutLineNumbers(takeLog()), failed(3));
    QCOMPARE(value.type(), NTypes::E_U16);
    QCOMPARE(value.toU16(), static_cast<unsigned short>(0));
    const CVariant array(QByteArray(), NTypes::E_DS402_I16_ARRAY);
    QCOMPARE(withoutLineNumbers(takeLog()), noData(27));
    QCOMPARE(array.toByteArray(), fromHex("020000000000"));
    QVERIFY(isEmpty(CVariant(QByteArray(8, 'a'), typeOf(33))));
    QVERIFY(isEmpty(CVariant(QByteArray(8, 'a'), typeOf(-1))));
    QCOMPARE(takeLog(), QStringList());
}

void tst_variant_byte_arrays::bytesAreStable_data()
{
    QTest::addColumn<int>("tag");
    QTest::addColumn<int>("size");
    for (const FixedSize &type : fixedSizes()) {
        if (type.tag != NTypes::E_UTF16CHAR)
            QTest::newRow(tagName(type.tag).constData()) << type.tag << type.size;
    }
    QTest::newRow("E_BYTEARRAY") << 25 << 100;
}

// Any bits, those of every kind of NaN included.
void tst_variant_byte_arrays::bytesAreStable()
{
    QFETCH(const int, tag);
    QFETCH(const int, size);
    QRandomGenerator generator(static_cast<quint32>(815 + tag));
    for (int round = 0; round < 1000; ++round) {
        const QByteArray bytes =
            randomBytes(tag == NTypes::E_BYTEARRAY ? generator.bounded(1, size) : size, generator);
        const CVariant value = CVariant::fromByteArray(bytes, typeOf(tag));
        QCOMPARE(value.toByteArray().toHex(), bytes.toHex());
        const CVariant again = CVariant::fromByteArray(value.toByteArray(), typeOf(tag));
        QCOMPARE(streamed(heldBy(again)), streamed(heldBy(value)));
    }
    for (const char *const nan :
         {"0000807F", "010080FF", "0000A07F", "FFFFFFFF"}) // quiet and signalling ones
        QCOMPARE(CVariant::fromByteArray(fromHex(nan), NTypes::E_F32).toByteArray(), fromHex(nan));
}

void tst_variant_byte_arrays::fixedStringBytesAreStable()
{
    QRandomGenerator generator(20210304);
    for (int round = 0; round < 500; ++round) {
        for (const int tag : {12, 17, 14}) {
            QByteArray bytes =
                randomBytes(static_cast<int>(CDataTypeParser::typeSize(typeOf(tag))), generator);
            bytes.replace('\xFF', '\xFE'); // pairs of FF would be removed
            QCOMPARE(CVariant::fromByteArray(bytes, typeOf(tag)).toByteArray(), bytes);
        }
    }
}

void tst_variant_byte_arrays::textsReturnFromTheirBytes_data()
{
    QTest::addColumn<int>("tag");
    for (const int tag : {12, 13, 14, 15, 17, 18, 20})
        QTest::newRow(tagName(tag).constData()) << tag;
}

void tst_variant_byte_arrays::textsReturnFromTheirBytes()
{
    QFETCH(const int, tag);
    const CVariant value = typedSample(tag);
    const CVariant again = CVariant::fromByteArray(value.toByteArray(), typeOf(tag));
    QCOMPARE(static_cast<int>(again.type()), tag);
    QCOMPARE(again.toStr(), value.toStr());
    QVERIFY(again == value);
}

// QVariant has no byte array of a character: a character does not return through its bytes.
void tst_variant_byte_arrays::utf16CharacterHasNoBytesToQt()
{
    const CVariant value = CVariant::fromByteArray(fromHex("AC20"), NTypes::E_UTF16CHAR);
    QCOMPARE(heldBy(value), QVariant(QChar(0x20AC)));
    QCOMPARE(value.toByteArray(), QByteArray());
}

QTEST_GUILESS_MAIN(tst_variant_byte_arrays)
#include "tst_variant_byte_arrays.moc"
