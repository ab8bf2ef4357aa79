// SPDX-License-Identifier: MIT
#include "VariantSamples.h"

#include <LoggedTest.h>

#include <QTest>

using namespace VariantSamples;

namespace {

void addColumns()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("tag");
    QTest::addColumn<int>("target");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<QVariant>("converted");
    QTest::addColumn<int>("newTag");
}

// A row whose result carries the target's own tag.
void row(const char *name, const CVariant &value, int target, bool ok, const QVariant &converted)
{
    QTest::newRow(name) << heldBy(value) << static_cast<int>(value.type()) << target << ok << converted
                        << target;
}

template<typename T>
QVariant record(const char *bytes)
{
    return QVariant::fromValue(recordOf<T>(fromHex(bytes)));
}

CVariant parsed(const char *text, int tag)
{
    return CVariant::fromStr(QString::fromUtf8(text), typeOf(tag));
}

} // namespace

// Conversion in place and into a copy.
class tst_variant_convert : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void integers_data();
    void integers();
    void bytesToSmallIntegersStayBytes_data();
    void bytesToSmallIntegersStayBytes();
    void wideNumbers_data();
    void wideNumbers();
    void texts_data();
    void texts();
    void records_data();
    void records();
    void digitalIoArrayBecomesAnUnsignedArray_data();
    void digitalIoArrayBecomesAnUnsignedArray();
    void byteTargetsChangeTheTagOnly_data();
    void byteTargetsChangeTheTagOnly();
    void unsupportedTargets_data();
    void unsupportedTargets();
    void notConvertibleChangesNothing_data();
    void notConvertibleChangesNothing();
    void copyConvertsAsInPlace_data();
    void copyConvertsAsInPlace();

private:
    static void checkRow();
};

void tst_variant_convert::checkRow()
{
    QFETCH(const QVariant, value);
    QFETCH(const int, tag);
    QFETCH(const int, target);
    QFETCH(const bool, ok);
    QFETCH(const QVariant, converted);
    QFETCH(const int, newTag);
    for (const bool before : {false, true}) {
        CVariant variant = tagged(value, tag);
        QVERIFY(variant.canConvertTo(typeOf(target)));
        bool written = before;
        CVariant &returned = variant.convertTo(typeOf(target), &written);
        QCOMPARE(&returned, &variant);
        QCOMPARE(written, ok);
        QCOMPARE(static_cast<int>(variant.type()), newTag);
        QCOMPARE(heldBy(variant).userType(), converted.userType());
        QCOMPARE(streamed(heldBy(variant)).toHex(), streamed(converted).toHex());
    }
    CVariant withoutFlag = tagged(value, tag);
    withoutFlag.convertTo(typeOf(target));
    QCOMPARE(streamed(heldBy(withoutFlag)), streamed(converted));
    QCOMPARE(static_cast<int>(withoutFlag.type()), newTag);
}

// Targets 1 to 6 are read and held in the exact Qt type of the target.
void tst_variant_convert::integers_data()
{
    addColumns();
    const CVariant value(300);
    row("300 as E_U8", value, 1, true, QVariant::fromValue<unsigned char>(44));
    row("300 as E_I8", value, 2, true, QVariant::fromValue<signed char>(44));
    row("300 as E_U16", value, 3, true, QVariant::fromValue<unsigned short>(300));
    row("300 as E_I16", value, 4, true, QVariant::fromValue<short>(300));
    row("300 as E_U32", value, 5, true, QVariant(300U));
    row("300 as E_I32", value, 6, true, QVariant(300));
    row("widened E_U8 as E_U8", rawSample(1), 1, true, QVariant::fromValue<unsigned char>(200));
    row("widened E_I8 as E_I8", rawSample(2), 2, true, QVariant::fromValue<signed char>(-100));
    row("widened E_U16 as E_U16", rawSample(3), 3, true, QVariant::fromValue<unsigned short>(60000));
    row("widened E_I16 as E_I16", rawSample(4), 4, true, QVariant::fromValue<short>(-30000));
    row("-2.9 as E_I16", CVariant(-2.9), 4, true, QVariant::fromValue<short>(-2));
    row("1e10 as E_I32", CVariant(1e10), 6, true, QVariant(0));
    row("version as E_U32", typedSample(21), 5, true, QVariant(0x0205012CU));
    row("date-time as E_U16", typedSample(16), 3, true, QVariant::fromValue<unsigned short>(0x0759));
    row("character, which no reader takes", CVariant(QChar(u'5')), 6, false, QVariant(0));
    row("8-bit text, which no reader takes", charField<64>("12"), 1, false,
        QVariant::fromValue<unsigned char>(0));
}

void tst_variant_convert::integers()
{
    checkRow();
}

void tst_variant_convert::bytesToSmallIntegersStayBytes_data()
{
    addColumns();
    const QByteArray bytes = fromHex("0102030405");
    const auto bytesRow = [&bytes](const char *name, int target, int newTag) {
        QTest::newRow(name) << QVariant(bytes) << 25 << target << true << QVariant(bytes) << newTag;
    };
    bytesRow("E_U8", 1, 1);
    bytesRow("E_I8 becomes E_U8", 2, 1);
    bytesRow("E_U16", 3, 3);
    bytesRow("E_I16", 4, 4);
    bytesRow("E_U32", 5, 5);
    bytesRow("E_I32", 6, 6);
    QTest::newRow("one byte as E_I8")
        << QVariant(QByteArray("x")) << 25 << 2 << true << QVariant(QByteArray("x")) << 1;
}

void tst_variant_convert::bytesToSmallIntegersStayBytes()
{
    checkRow();
}

void tst_variant_convert::wideNumbers_data()
{
    addColumns();
    row("E_I32 as E_F32", CVariant(-3), 7, true, QVariant(-3.0F));
    row("E_I32 as E_U64", CVariant(-1), 8, true, QVariant(ULLONG_MAX));
    row("E_I32 as E_I64", CVariant(-1), 9, true, QVariant(-1LL));
    row("E_I32 as E_F64", CVariant(-3), 10, true, QVariant(-3.0));
    row("E_F64 as E_F32", CVariant(0.1), 7, true, QVariant(0.1F));
    row("date-time as E_U64", typedSample(16), 8, true, QVariant(0x07E5030405060759ULL));
    row("8 bytes as E_F32", bytesValue(fromHex("0000C03F00000840")), 7, true, QVariant(1.5F));
    row("8 bytes as E_U64", bytesValue(fromHex("0102030405060708")), 8, true,
        QVariant(0x0807060504030201ULL));
    row("9 bytes as E_I64", bytesValue(fromHex("FEFFFFFFFFFFFFFF00")), 9, true, QVariant(-2LL));
    row("8 bytes as E_F64", bytesValue(fromHex("000000000000F83F")), 10, true, QVariant(1.5));
    row("8-bit text as E_F64", charField<128>("1.5"), 10, false, QVariant(0.0));
}

void tst_variant_convert::wideNumbers()
{
    checkRow();
}

void tst_variant_convert::texts_data()
{
    addColumns();
    const auto string32 = [](const char *text) {
        return QVariant::fromValue(CString32(QString::fromUtf8(text)));
    };
    const auto string64 = [](const char *text) {
        return QVariant::fromValue(CString64(QString::fromUtf8(text)));
    };
    const auto string128 = [](const char *text) {
        return QVariant::fromValue(CString128(QString::fromUtf8(text)));
    };
    row("E_STRING64 as E_STRING32", typedSample(17), 12, true, string32("Drehmoment Achse X"));
    row("E_STRING32 as E_STRING64", typedSample(12), 17, true, string64("Spindle 1"));
    row("E_CHARSTR64 as E_STRING128", parsed("Axis 1", 13), 14, true, string128("Axis 1"));
    row("bytes as E_STRING32", bytesValue("A"), 12, true, string32("41"));
    row("character as E_STRING64", CVariant(QChar(u'A')), 17, true, string64("A"));
    row("own fixed string", typedSample(14), 14, true, heldBy(typedSample(14)));
    row("E_I32 as E_CHARSTR64", CVariant(-12), 13, true, QByteArray("-12") + QByteArray(61, '\0'));
    row("E_F64 as E_CHARSTR128", CVariant(2.5), 18, true, QByteArray("2.5") + QByteArray(125, '\0'));
    row("version as E_CHARSTR256", typedSample(21), 15, true, QByteArray("2.5.300") + QByteArray(249, '\0'));
    row("bytes as E_CHARSTR64", bytesValue("Axis"), 13, true, QByteArray("Axis") + QByteArray(60, '\0'));
    row("E_CHARSTR256 as E_CHARSTR64", charField<256>(QByteArray(256, 'x')), 13, true, QByteArray(64, 'x'));
    row("parsed text becomes the whole field", parsed("Axis", 18), 18, true,
        QByteArray("Axis") + QByteArray(124, '\0'));
    row("E_U8 as E_CHAR", CVariant(static_cast<unsigned char>(7)), 20, true, QByteArray("7"));
    row("8-bit text as E_CHAR", charField<64>("Axis"), 20, true, QByteArray("A"));
    row("E_STRING32 as E_UTF16CHAR", typedSample(12), 19, true, QVariant(QChar(u'S')));
    row("two bytes as E_UTF16CHAR", bytesValue(fromHex("AC20")), 19, true, QVariant(QChar(0x20AC)));
    row("one byte as E_UTF16CHAR", bytesValue("x"), 19, false, QVariant(QChar(0)));
}

void tst_variant_convert::texts()
{
    checkRow();
}

void tst_variant_convert::records_data()
{
    addColumns();
    using namespace NTypes;
    row("E_U64 as date-time", CVariant(0x07E5030405060759ULL), 16, true,
        record<sDateTime_t>("590706050403E507"));
    row("own date-time", typedSample(16), 16, true, record<sDateTime_t>("590706050403E507"));
    row("8 bytes as date-time", bytesValue(fromHex("590706050403E507")), 16, true,
        record<sDateTime_t>("590706050403E507"));
    row("7 bytes as date-time", bytesValue(QByteArray(7, 'x')), 16, false, record<sDateTime_t>(""));
    row("E_U32 as version", CVariant(0x0205012CU), 21, true, record<sVersion_t>("2C010502"));
    row("3 bytes as version", bytesValue(QByteArray(3, 'x')), 21, false, record<sVersion_t>(""));
    row("E_I32 as address", CVariant(-1), 22, true, record<uIPv4HAddr_t>("FFFFFFFF"));
    row("5 bytes as command", bytesValue(fromHex("0102030405")), 23, true, record<sCommand_t>("01020304"));
    row("E_I64 as four-part version", CVariant(0x0001000200030004LL), 32, true,
        record<sVersion4_t>("0400030002000100"));
    row("bytes as acceleration record", bytesValue(sampleBytes(26)), 26, true,
        record<sDs402Record01_t>("02000020400300"));
    row("bytes as array of short", bytesValue(sampleBytes(27)), 27, true,
        record<sDs402Array_t<short>>("0100FEFF0300"));
    row("bytes as array of int", bytesValue(sampleBytes(28)), 28, true,
        record<sDs402Array_t<int>>("01000000FEFFFFFF03000000"));
    row("bytes as array of unsigned short", bytesValue(sampleBytes(30)), 30, true,
        record<sDs402Array_t<unsigned short>>("01000200FFFF"));
    row("bytes as array of unsigned int", bytesValue(sampleBytes(31)), 31, true,
        record<sDs402Array_t<unsigned int>>("0300000004000000FEFFFFFF"));
    row("7 bytes as array of short", bytesValue(QByteArray(7, 'x')), 27, false,
        record<sDs402Array_t<short>>(""));
    row("7 bytes as array of unsigned short", bytesValue(QByteArray(7, 'x')), 30, false,
        record<sDs402Array_t<unsigned short>>(""));
    for (const int tag : {22, 23, 21, 26, 27, 28, 30, 31, 32}) {
        const QByteArray name = "own " + tagName(tag);
        row(name.constData(), typedSample(tag), tag, true, heldBy(typedSample(tag)));
    }
}

void tst_variant_convert::records()
{
    checkRow();
}

void tst_variant_convert::digitalIoArrayBecomesAnUnsignedArray_data()
{
    addColumns();
    const QVariant array = record<NTypes::sDs402Array_t<unsigned int>>("0100000002000000FFFFFFFF");
    QTest::newRow("bytes") << QVariant(sampleBytes(29)) << 25 << 29 << true << array << 31;
    QTest::newRow("own type") << heldBy(typedSample(29)) << 29 << 29 << true << array << 31;
    QTest::newRow("too few bytes") << QVariant(QByteArray(3, 'x')) << 25 << 29 << false
                                   << record<NTypes::sDs402Array_t<unsigned int>>("") << 31;
}

void tst_variant_convert::digitalIoArrayBecomesAnUnsignedArray()
{
    checkRow();
}

void tst_variant_convert::byteTargetsChangeTheTagOnly_data()
{
    addColumns();
    for (const int tag : {25, 26, 27, 28, 29, 30, 31})
        row(tagName(tag).constData(), typedSample(tag), 25, true, heldBy(typedSample(tag)));
    row("nine bytes as pair of floats", bytesValue(QByteArray(9, 'x')), 24, true, QByteArray(9, 'x'));
    row("own pair of floats", typedSample(24), 24, true, sampleBytes(24));
    row("null byte array", CVariant(NTypes::E_BYTEARRAY), 25, true, QVariant());
}

void tst_variant_convert::byteTargetsChangeTheTagOnly()
{
    checkRow();
}

void tst_variant_convert::unsupportedTargets_data()
{
    QTest::addColumn<int>("target");
    QTest::addColumn<QString>("warning");
    const auto text = QStringLiteral("CVariant::convertTo() : Data type '%1' is not supported.");
    QTest::newRow("E_UNKNOWN") << 0 << text.arg(0);
    QTest::newRow("11") << 11 << text.arg(11);
    QTest::newRow("33") << 33 << text.arg(33);
    QTest::newRow("-1") << -1 << text.arg(-1);
    QTest::newRow("smallest number") << INT_MIN << text.arg(INT_MIN);
    QTest::newRow("largest number") << INT_MAX << text.arg(INT_MAX);
}

// Only a value of the very type gets so far.
void tst_variant_convert::unsupportedTargets()
{
    QFETCH(const int, target);
    QFETCH(const QString, warning);
    CVariant value = tagged(5, target);
    bool ok = true;
    value.convertTo(typeOf(target), &ok);
    QVERIFY(!ok);
    QCOMPARE(takeLog(), QStringList{warning});
    QCOMPARE(static_cast<int>(value.type()), target);
    QCOMPARE(heldBy(value), QVariant(5));
    value.convertTo(typeOf(target));
    QCOMPARE(takeLog(), QStringList{warning});
}

void tst_variant_convert::notConvertibleChangesNothing_data()
{
    QTest::addColumn<int>("tag");
    QTest::newRow("E_UNKNOWN") << 0;
    for (const int tag : valueTags)
        QTest::newRow(tagName(tag).constData()) << tag;
}

void tst_variant_convert::notConvertibleChangesNothing()
{
    QFETCH(const int, tag);
    const CVariant original = typedSample(tag);
    int refused = 0;
    for (int target = -2; target <= 40; ++target) {
        if (original.canConvertTo(typeOf(target)))
            continue;
        ++refused;
        for (const bool before : {false, true}) {
            CVariant value = original;
            bool ok = before;
            value.convertTo(typeOf(target), &ok);
            QCOMPARE(ok, before); // deliberately not written
            QCOMPARE(static_cast<int>(value.type()), tag);
            QCOMPARE(streamed(heldBy(value)), streamed(heldBy(original)));
        }
    }
    QVERIFY(refused > 0);
}

void tst_variant_convert::copyConvertsAsInPlace_data()
{
    notConvertibleChangesNothing_data();
}

void tst_variant_convert::copyConvertsAsInPlace()
{
    QFETCH(const int, tag);
    const CVariant original = typedSample(tag);
    for (int target = 1; target <= 40; ++target) {
        for (const bool before : {false, true}) {
            CVariant inPlace = original;
            bool inPlaceOk = before;
            inPlace.convertTo(typeOf(target), &inPlaceOk);
            bool copyOk = before;
            const CVariant copy = original.convertTo(typeOf(target), &copyOk);
            QCOMPARE(copyOk, inPlaceOk);
            QCOMPARE(static_cast<int>(copy.type()), static_cast<int>(inPlace.type()));
            QCOMPARE(streamed(heldBy(copy)), streamed(heldBy(inPlace)));
            QCOMPARE(static_cast<int>(original.type()), tag);
            QCOMPARE(streamed(heldBy(original)), streamed(heldBy(typedSample(tag))));
        }
    }
}

QTEST_GUILESS_MAIN(tst_variant_convert)
#include "tst_variant_convert.moc"
