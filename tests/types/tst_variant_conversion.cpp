// SPDX-License-Identifier: MIT
#include "VariantSamples.h"

#include <LoggedTest.h>

#include <QTest>

using namespace VariantSamples;

namespace {

// Which of these targets the value can be read as: one '1' or '0' each.
template<typename Targets>
QString answers(const CVariant &value, const Targets &targets)
{
    QString text;
    for (const int target : targets)
        text.append(QLatin1Char(value.canConvertTo(typeOf(target)) ? '1' : '0'));
    return text;
}

constexpr std::array<int, 10> numericTargets = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
constexpr std::array<int, 21> otherTargets = {12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22,
                                              23, 24, 25, 26, 27, 28, 29, 30, 31, 32};

struct TextSource
{
    const char *name;
    CVariant value;
};

QVector<TextSource> textSources()
{
    return {{"CString32", typedSample(NTypes::E_STRING32)},
            {"byte array field", typedSample(NTypes::E_CHARSTR64)},
            {"parsed text", CVariant::fromStr(QStringLiteral("12"), NTypes::E_CHARSTR64)}};
}

} // namespace

// The conversion matrix, cell by cell.
class tst_variant_conversion : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void numericTargetsOfSamples_data();
    void numericTargetsOfSamples();
    void numericTargetsOfWidenedIntegers_data();
    void numericTargetsOfWidenedIntegers();
    void numericTargetsFollowTheHeldType_data();
    void numericTargetsFollowTheHeldType();
    void numericTargetsOfNullValues_data();
    void numericTargetsOfNullValues();
    void wordTypesAreNumbersWhateverTheyHold();
    void otherTargetsOfEveryTag_data();
    void otherTargetsOfEveryTag();
    void otherTargetsDoNotDependOnTheHeldType_data();
    void otherTargetsDoNotDependOnTheHeldType();
    void textSourcesAgreeWhateverTheyHold();
    void ownTypeIsAlwaysConvertible_data();
    void ownTypeIsAlwaysConvertible();
    void targetsWithoutARowAcceptNothingElse_data();
    void targetsWithoutARowAcceptNothingElse();
    void byteArraysOfEveryLength_data();
    void byteArraysOfEveryLength();
    void pairTargetRefusesMultiplesOfItsSize();
    void pairOfFloatsIsItsOwnTargetAtEveryLength();
    void singlePrecisionNeedsEightBytes();
    void singlePrecisionRuleOfTargetU32();
};

// Targets 1 to 10 in this order.
void tst_variant_conversion::numericTargetsOfSamples_data()
{
    QTest::addColumn<int>("tag");
    QTest::addColumn<QString>("expected");
    const auto all = QStringLiteral("1111111111");
    const auto none = QStringLiteral("0000000000");
    for (int tag = 1; tag <= 10; ++tag)
        QTest::newRow(tagName(tag).constData()) << tag << all;
    for (const int tag : {12, 14, 17})
        QTest::newRow(tagName(tag).constData()) << tag << none;
    // QVariant takes a byte array as the text of a number.
    for (const int tag : {13, 15, 18, 20, 24})
        QTest::newRow(tagName(tag).constData()) << tag << all;
    QTest::newRow("E_DATETIME") << 16 << all;
    // QVariant converts a character to integers but to no floating-point number, which E_U32 asks for, too.
    QTest::newRow("E_UTF16CHAR") << 19 << QStringLiteral("1111011110");
    for (const int tag : {21, 22, 23})
        QTest::newRow(tagName(tag).constData()) << tag << all;
    QTest::newRow("E_BYTEARRAY of 3 bytes") << 25 << QStringLiteral("1111000000");
    for (const int tag : {26, 27, 28, 29, 30, 31, 32})
        QTest::newRow(tagName(tag).constData()) << tag << none;
    QTest::newRow("E_UNKNOWN") << 0 << none;
}

void tst_variant_conversion::numericTargetsOfSamples()
{
    QFETCH(const int, tag);
    QFETCH(const QString, expected);
    const CVariant value = typedSample(tag);
    QCOMPARE(static_cast<int>(value.type()), tag);
    QCOMPARE(answers(value, numericTargets), expected);
}

void tst_variant_conversion::numericTargetsOfWidenedIntegers_data()
{
    QTest::addColumn<int>("tag");
    for (const int tag : {1, 2, 3, 4})
        QTest::newRow(tagName(tag).constData()) << tag;
}

void tst_variant_conversion::numericTargetsOfWidenedIntegers()
{
    QFETCH(const int, tag);
    const CVariant value = rawSample(tag);
    QCOMPARE(heldBy(value).userType(), static_cast<int>(QMetaType::Int));
    QCOMPARE(answers(value, numericTargets), QStringLiteral("1111111111"));
}

void tst_variant_conversion::numericTargetsFollowTheHeldType_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("tag");
    QTest::addColumn<QString>("expected");
    const auto all = QStringLiteral("1111111111");
    // These five are convertible to every number, whatever the tag.
    QTest::newRow("short") << QVariant::fromValue<short>(5) << 12 << all;
    QTest::newRow("unsigned short") << QVariant::fromValue<unsigned short>(5) << 12 << all;
    QTest::newRow("unsigned char, which Qt converts to some only")
        << QVariant::fromValue<unsigned char>(5) << 12 << all;
    QTest::newRow("float") << QVariant(5.0F) << 12 << all;
    QTest::newRow("signed char") << QVariant::fromValue<signed char>(5) << 12 << all;
    // Others as QVariant says.
    QTest::newRow("int") << QVariant(5) << 12 << all;
    QTest::newRow("bool") << QVariant(true) << 12 << all;
    QTest::newRow("text") << QVariant(QStringLiteral("no number")) << 12 << all;
    QTest::newRow("byte array") << QVariant(QByteArray("5")) << 12 << all;
    QTest::newRow("character") << QVariant(QChar(u'5')) << 12 << QStringLiteral("1111011110");
    QTest::newRow("date-time of Qt") << QVariant(QDateTime()) << 12 << QStringLiteral("0000000000");
    QTest::newRow("fixed string") << QVariant::fromValue(CString32()) << 11 << QStringLiteral("0000000000");
    QTest::newRow("record") << QVariant::fromValue(NTypes::sCommand_t()) << 12
                            << QStringLiteral("0000000000");
    QTest::newRow("nothing") << QVariant() << 12 << QStringLiteral("0000000000");
    // The tag plays no part but for the types with a rule of their own.
    for (const int tag : {0, 11, 32, 33, -1, INT_MIN, INT_MAX}) {
        const QByteArray name = "int, " + tagName(tag);
        QTest::newRow(name.constData()) << QVariant(5) << tag << all;
    }
    QTest::newRow("character, E_U32") << QVariant(QChar(u'5')) << 5 << QStringLiteral("1111111110");
}

void tst_variant_conversion::numericTargetsFollowTheHeldType()
{
    QFETCH(const QVariant, value);
    QFETCH(const int, tag);
    QFETCH(const QString, expected);
    QCOMPARE(answers(tagged(value, tag), numericTargets), expected);
}

void tst_variant_conversion::numericTargetsOfNullValues_data()
{
    QTest::addColumn<int>("tag");
    QTest::addColumn<QString>("expected");
    for (int tag = 1; tag <= 10; ++tag) {
        const QString own = QStringLiteral("0000000000").replace(tag - 1, 1, QLatin1Char('1'));
        QTest::newRow(tagName(tag).constData()) << tag << own;
    }
    for (const int tag : {12, 13, 14, 15, 17, 18, 19, 20, 24, 25, 26, 27, 28, 29, 30, 31, 32, 0, 11})
        QTest::newRow(tagName(tag).constData()) << tag << QStringLiteral("0000000000");
}

void tst_variant_conversion::numericTargetsOfNullValues()
{
    QFETCH(const int, tag);
    QFETCH(const QString, expected);
    QCOMPARE(answers(tagged(QVariant(), tag), numericTargets), expected);
}

void tst_variant_conversion::wordTypesAreNumbersWhateverTheyHold()
{
    for (const int tag : {16, 21, 22, 23}) {
        for (const QVariant &value : {QVariant(), QVariant(5), QVariant(QStringLiteral("text"))})
            QCOMPARE(answers(tagged(value, tag), numericTargets), QStringLiteral("1111111111"));
    }
}

void tst_variant_conversion::otherTargetsOfEveryTag_data()
{
    QTest::addColumn<int>("tag");
    QTest::addColumn<QString>("expected");
    //                                         target 1 1111111 2222222222333
    //                                                2 3456789 0123456789012
    QTest::newRow("E_UNKNOWN") << 0 << QStringLiteral("000000000000000000000");
    QTest::newRow("E_U8") << 1 << QStringLiteral("010100101000000000000");
    QTest::newRow("E_I8") << 2 << QStringLiteral("010100101000000000000");
    QTest::newRow("E_U16") << 3 << QStringLiteral("010100101000000000000");
    QTest::newRow("E_I16") << 4 << QStringLiteral("010100101000000000000");
    QTest::newRow("E_U32") << 5 << QStringLiteral("010100101111000000000");
    QTest::newRow("E_I32") << 6 << QStringLiteral("010100101111000000000");
    QTest::newRow("E_F32") << 7 << QStringLiteral("010100101000000000000");
    QTest::newRow("E_U64") << 8 << QStringLiteral("010110101000000000001");
    QTest::newRow("E_I64") << 9 << QStringLiteral("010110101000000000001");
    QTest::newRow("E_F64") << 10 << QStringLiteral("010100101000000000000");
    QTest::newRow("unassigned 11") << 11 << QStringLiteral("000000000000000000000");
    QTest::newRow("E_STRING32") << 12 << QStringLiteral("101001010000000000000");
    QTest::newRow("E_CHARSTR64") << 13 << QStringLiteral("111101111000000000000");
    QTest::newRow("E_STRING128") << 14 << QStringLiteral("101001010000000000000");
    QTest::newRow("E_CHARSTR256") << 15 << QStringLiteral("111101111000000000000");
    QTest::newRow("E_DATETIME") << 16 << QStringLiteral("010110101000000000000");
    QTest::newRow("E_STRING64") << 17 << QStringLiteral("101001010000000000000");
    QTest::newRow("E_CHARSTR128") << 18 << QStringLiteral("111101111000000000000");
    QTest::newRow("E_UTF16CHAR") << 19 << QStringLiteral("101001010000000000000");
    QTest::newRow("E_CHAR") << 20 << QStringLiteral("111101111000000000000");
    QTest::newRow("E_VERSION") << 21 << QStringLiteral("010100101100000000000");
    QTest::newRow("E_IPV4ADDR") << 22 << QStringLiteral("000000000010000000000");
    QTest::newRow("E_COMMAND") << 23 << QStringLiteral("000000000001000000000");
    QTest::newRow("E_2DF32F32") << 24 << QStringLiteral("000000000000100000000");
    QTest::newRow("E_BYTEARRAY of 3 bytes") << 25 << QStringLiteral("111111111111111111111");
    QTest::newRow("E_DS402_ACC_REC") << 26 << QStringLiteral("000000000000011000000");
    QTest::newRow("E_DS402_I16_ARRAY") << 27 << QStringLiteral("000000000000010100000");
    QTest::newRow("E_DS402_I32_ARRAY") << 28 << QStringLiteral("000000000000010010000");
    QTest::newRow("E_DS402_DIO_ARRAY") << 29 << QStringLiteral("000000000000010001000");
    QTest::newRow("E_DS402_U16_ARRAY") << 30 << QStringLiteral("000000000000010000100");
    QTest::newRow("E_DS402_U32_ARRAY") << 31 << QStringLiteral("000000000000010000010");
    QTest::newRow("E_VERSION_4") << 32 << QStringLiteral("010100101000000000001");
    for (const int tag : {33, 40, -1, INT_MIN, INT_MAX})
        QTest::newRow(tagName(tag).constData()) << tag << QStringLiteral("000000000000000000000");
}

void tst_variant_conversion::otherTargetsOfEveryTag()
{
    QFETCH(const int, tag);
    QFETCH(const QString, expected);
    const CVariant sample = typedSample(tag);
    const CVariant value = sample.type() == typeOf(tag) ? sample : tagged(5, tag);
    QCOMPARE(answers(value, otherTargets), expected);
}

void tst_variant_conversion::otherTargetsDoNotDependOnTheHeldType_data()
{
    otherTargetsOfEveryTag_data();
}

void tst_variant_conversion::otherTargetsDoNotDependOnTheHeldType()
{
    QFETCH(const int, tag);
    QFETCH(QString, expected);
    if (tag == NTypes::E_BYTEARRAY)
        expected.replace(24 - 12, 1,
                         QLatin1Char('0')); // what is no byte array has a length of 0, a multiple of 8
    for (const QVariant &value : {QVariant(), QVariant::fromValue(NTypes::sCommand_t())})
        QCOMPARE(answers(tagged(value, tag), otherTargets), expected);
}

void tst_variant_conversion::textSourcesAgreeWhateverTheyHold()
{
    const QVector<TextSource> sources = textSources();
    for (const TextSource &source : sources) {
        const CVariant value = tagged(heldBy(source.value), NTypes::E_CHARSTR64);
        QVERIFY2(answers(value, otherTargets) == QStringLiteral("111101111000000000000"), source.name);
    }
}

void tst_variant_conversion::ownTypeIsAlwaysConvertible_data()
{
    QTest::addColumn<int>("tag");
    for (int tag = 0; tag <= 33; ++tag)
        QTest::newRow(tagName(tag).constData()) << tag;
    QTest::newRow("smallest number") << INT_MIN;
    QTest::newRow("largest number") << INT_MAX;
}

void tst_variant_conversion::ownTypeIsAlwaysConvertible()
{
    QFETCH(const int, tag);
    const NTypes::eTypes_t own = typeOf(tag);
    QVERIFY(tagged(QVariant(), tag).canConvertTo(own));
    QVERIFY(tagged(5, tag).canConvertTo(own));
    QVERIFY(tagged(QByteArray(8, 'x'), tag).canConvertTo(own));
}

void tst_variant_conversion::targetsWithoutARowAcceptNothingElse_data()
{
    QTest::addColumn<int>("target");
    QTest::newRow("E_UNKNOWN") << 0;
    for (const int target : strayTags)
        QTest::newRow(tagName(target).constData()) << target;
}

void tst_variant_conversion::targetsWithoutARowAcceptNothingElse()
{
    QFETCH(const int, target);
    for (const int tag : valueTags)
        QVERIFY2(!typedSample(tag).canConvertTo(typeOf(target)), tagName(tag).constData());
}

void tst_variant_conversion::byteArraysOfEveryLength_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<QString>("numbers");
    QTest::addColumn<QString>("others");
    // All others, but the pair of floats (the 13th) only where the length is no multiple of 8.
    const auto all = QStringLiteral("111111111111111111111");
    const auto allButThePair = QStringLiteral("111111111111011111111");
    QTest::newRow("0 bytes") << 0 << QStringLiteral("0000000000") << allButThePair;
    QTest::newRow("1 byte") << 1 << QStringLiteral("1100000000") << all;
    QTest::newRow("2 bytes") << 2 << QStringLiteral("1111000000") << all;
    QTest::newRow("3 bytes") << 3 << QStringLiteral("1111000000") << all;
    QTest::newRow("4 bytes") << 4 << QStringLiteral("1111110000") << all;
    QTest::newRow("5 bytes") << 5 << QStringLiteral("1111110000") << all;
    QTest::newRow("6 bytes") << 6 << QStringLiteral("1111110000") << all;
    QTest::newRow("7 bytes") << 7 << QStringLiteral("1111110000") << all;
    QTest::newRow("8 bytes") << 8 << QStringLiteral("1111111111") << allButThePair;
    for (int length = 9; length <= 15; ++length)
        QTest::newRow(qPrintable(QStringLiteral("%1 bytes").arg(length)))
            << length << QStringLiteral("1111111111") << all;
    QTest::newRow("16 bytes") << 16 << QStringLiteral("1111111111") << allButThePair;
    QTest::newRow("17 bytes") << 17 << QStringLiteral("1111111111") << all;
}

void tst_variant_conversion::byteArraysOfEveryLength()
{
    QFETCH(const int, length);
    QFETCH(const QString, numbers);
    QFETCH(const QString, others);
    const CVariant value = bytesValue(QByteArray(length, 'x'));
    QCOMPARE(answers(value, numericTargets), numbers);
    QCOMPARE(answers(value, otherTargets), others);
    QVERIFY(!value.canConvertTo(NTypes::E_UNKNOWN));
    QVERIFY(!value.canConvertTo(typeOf(11)));
}

void tst_variant_conversion::pairTargetRefusesMultiplesOfItsSize()
{
    QVERIFY(!bytesValue(QByteArray(8, 'x')).canConvertTo(NTypes::E_2DF32F32));
    QVERIFY(bytesValue(QByteArray(9, 'x')).canConvertTo(NTypes::E_2DF32F32));
    QVERIFY(!bytesValue(QByteArray(16, 'x')).canConvertTo(NTypes::E_2DF32F32));
}

void tst_variant_conversion::pairOfFloatsIsItsOwnTargetAtEveryLength()
{
    for (const int length : {7, 8, 9, 16})
        QVERIFY(tagged(QByteArray(length, 'x'), NTypes::E_2DF32F32).canConvertTo(NTypes::E_2DF32F32));
}

void tst_variant_conversion::singlePrecisionNeedsEightBytes()
{
    const CVariant value = bytesValue(QByteArray(4, 'x'));
    QVERIFY(!value.canConvertTo(NTypes::E_F32));
    QVERIFY(value.canConvertTo(NTypes::E_U32));
}

// E_U32 asks QVariant for `float`: a character, which is an integer to Qt, is none.
void tst_variant_conversion::singlePrecisionRuleOfTargetU32()
{
    const CVariant character(QChar(u'5'));
    QVERIFY(!character.canConvertTo(NTypes::E_U32));
    QVERIFY(character.canConvertTo(NTypes::E_I32));
}

QTEST_GUILESS_MAIN(tst_variant_conversion)
#include "tst_variant_conversion.moc"
