// SPDX-License-Identifier: MIT
#include "VariantCases.h"

#include <CDataTypeParser.h>
#include <LoggedTest.h>

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <iterator>
#include <limits>

namespace {

Make stored(const QVariant &value, int tag)
{
    return [=] { return CVariant().setRawData(value, typeOf(tag)); };
}

template<typename Value>
void addRow(const char *name, const Value &value, const QByteArray &bytes)
{
    QTest::newRow(name) << Make([value] { return CVariant(value); }) << bytes;
}

void addMakeRow(const char *name, const Make &make, const QByteArray &bytes)
{
    QTest::newRow(name) << make << bytes;
}

void addNumberRows()
{
    addRow("unsigned char", static_cast<unsigned char>(200), fromHex("C8"));
    addRow("signed char", static_cast<signed char>(-2), fromHex("FE"));
    addRow("unsigned short 1234", static_cast<unsigned short>(0x1234), fromHex("3412"));
    addRow("short", static_cast<short>(-2), fromHex("FEFF"));
    addRow("unsigned int", 0xF2345678U, fromHex("785634F2"));
    addRow("int", -2, fromHex("FEFFFFFF"));
    addRow("float 1.0", 1.0F, fromHex("0000803F"));
    addRow("float -0.0", -0.0F, fromHex("00000080"));
    addRow("float infinity", std::numeric_limits<float>::infinity(), fromHex("0000807F"));
    addRow("unsigned long long", Q_UINT64_C(0xF102030405060708), fromHex("08070605040302F1"));
    addRow("long long", Q_INT64_C(-2), fromHex("FEFFFFFFFFFFFFFF"));
    addRow("double 1.0", 1.0, fromHex("000000000000F03F"));
    addRow("double -0.1", -0.1, fromHex("9A9999999999B9BF"));
    addMakeRow("widened E_U8", stored(QVariant(200), NTypes::E_U8), fromHex("C8"));
    addMakeRow("widened E_I8", stored(QVariant(-2), NTypes::E_I8), fromHex("FE"));
    addMakeRow("widened E_U16", stored(QVariant(65534), NTypes::E_U16), fromHex("FEFF"));
    addMakeRow("widened E_I16", stored(QVariant(-2), NTypes::E_I16), fromHex("FEFF"));
}

void addRecordRows()
{
    addRow("sDateTime_t", NTypes::sDateTime_t{{89, 7, 6, 5}, {4, 3, 2021}}, fromHex("590706050403E507"));
    addRow("sDateTime_t, all zero", NTypes::sDateTime_t(), QByteArray(8, '\0'));
    addRow("sVersion_t", NTypes::sVersion_t{300, 5, 2}, fromHex("2C010502"));
    addRow("uIPv4HAddr_t", NTypes::uIPv4HAddr_t{0xC0A80001}, fromHex("0100A8C0"));
    addRow("sCommand_t", NTypes::sCommand_t{0x12345678}, fromHex("78563412"));
    addRow("sVersion4_t", NTypes::sVersion4_t{4, 3, 2, 1}, fromHex("0400030002000100"));
    addRow("sDs402Record01_t", NTypes::sDs402Record01_t{2, 1.5F, 0x1234}, fromHex("020000C03F3412"));
    addRow("sDs402Array_t<short>", NTypes::sDs402Array_t<short>{{2, -1, 256}}, fromHex("0200FFFF0001"));
    addRow("sDs402Array_t<int>", NTypes::sDs402Array_t<int>{{2, -1, 65536}},
           fromHex("02000000FFFFFFFF00000100"));
    addRow("sDs402Array_t<unsigned short>", NTypes::sDs402Array_t<unsigned short>{{2, 65535, 256}},
           fromHex("0200FFFF0001"));
    const NTypes::sDs402Array_t<unsigned int> words = {{2, 4294967295U, 65536}};
    addRow("sDs402Array_t<unsigned int>", words, fromHex("02000000FFFFFFFF00000100"));
    addMakeRow("E_DS402_DIO_ARRAY", stored(QVariant::fromValue(words), NTypes::E_DS402_DIO_ARRAY),
               fromHex("02000000FFFFFFFF00000100"));
}

void addFixedStringRows()
{
    CString32 string32(QStringLiteral("abcdef"));
    string32 = QStringLiteral("abc");
    const QByteArray units = fromHex("610062006300000065006600"); // with the tail behind the terminator
    addRow("CString32", string32, units + QByteArray(64 - 12, '\0'));
    addRow("CString64", CString64(units), units + QByteArray(128 - 12, '\0'));
    addRow("CString128", CString128(units), units + QByteArray(256 - 12, '\0'));
    addRow("empty CString128", CString128(), QByteArray(256, '\0'));
}

// The Latin-1 bytes of the held value's text and one zero byte. The text of held bytes is that of
// QVariant::toString(): read as UTF-8 up to the first zero byte.
void addEightBitRows()
{
    char field[64] = "abc";
    field[10] = 'z';
    addRow("char[64]: the text and a zero, not the field", field, fromHex("61626300"));
    const char umlaut[64] = "\xC3\xA4";
    addRow("char[64]: two bytes of UTF-8 become one of Latin-1", umlaut, fromHex("E400"));
    const char euro[128] = "\xE2\x82\xAC";
    addRow("char[128]: a character beyond Latin-1 becomes ?", euro, fromHex("3F00"));
    const char latin[256] = "\xE4";
    addRow("char[256]: a byte that is not UTF-8 becomes ?", latin, fromHex("3F00"));
    const char zeros[256] = {};
    addRow("char[256]: an empty text is one zero", zeros, fromHex("00"));
    char full[64] = {};
    std::fill(std::begin(full), std::end(full), 'x');
    addRow("char[64]: a full field gains a byte", full, QByteArray(64, 'x') + '\0');
    const auto text = [](const char *utf8) { return QVariant(QString::fromUtf8(utf8)); };
    addMakeRow("E_CHARSTR64 held as text", stored(text("abc"), NTypes::E_CHARSTR64), fromHex("61626300"));
    addMakeRow("E_CHARSTR128 held as text", stored(text("\xC3\xA4"), NTypes::E_CHARSTR128), fromHex("E400"));
    addMakeRow("E_CHARSTR256 held as empty text", stored(text(""), NTypes::E_CHARSTR256), fromHex("00"));
    addMakeRow("E_CHARSTR64 without a value", stored(QVariant(), NTypes::E_CHARSTR64), fromHex("00"));
    addRow("char x", 'x', fromHex("7800"));
    addRow("char 0", '\0', fromHex("00"));
    addRow("char E4 is not UTF-8", '\xE4', fromHex("3F00"));
}

void addOtherRows()
{
    addMakeRow("E_2DF32F32", stored(fromHex("0000803F000000C0"), NTypes::E_2DF32F32),
               fromHex("0000803F000000C0"));
    addMakeRow("E_2DF32F32, three bytes", stored(fromHex("010203"), NTypes::E_2DF32F32), fromHex("010203"));
    addMakeRow("E_BYTEARRAY", stored(fromHex("00FF00"), NTypes::E_BYTEARRAY), fromHex("00FF00"));
    addMakeRow("E_BYTEARRAY without a value", stored(QVariant(), NTypes::E_BYTEARRAY), QByteArray());
    // QVariant has no bytes for a QChar.
    addRow("QChar gives none, as QVariant::toByteArray()", QChar(u'A'), QVariant(QChar(u'A')).toByteArray());
    addMakeRow("E_UTF16CHAR held as bytes", stored(fromHex("4100"), NTypes::E_UTF16CHAR), fromHex("4100"));
    addMakeRow("bytes without a type", stored(fromHex("4100"), NTypes::E_UNKNOWN), fromHex("4100"));
    addMakeRow("text without a type", stored(QVariant(QStringLiteral("\u00E4")), NTypes::E_UNKNOWN),
               fromHex("C3A4"));
    addMakeRow("number of the gap 11", stored(QVariant(-12), 11), QByteArray("-12"));
    addMakeRow("number outside the catalogue", stored(QVariant(123), 40), QByteArray("123"));
    addMakeRow("number of a negative tag", stored(QVariant(123), -1), QByteArray("123"));
}

const QList<int> &typesRestoredFromTheirBytes()
{
    static const QList<int> types = {1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 16,
                                     21, 22, 23, 26, 27, 28, 29, 30, 31, 32};
    return types;
}

QByteArray randomBytes(QRandomGenerator &random, int size)
{
    QByteArray bytes(size, '\0');
    for (char &byte : bytes)
        byte = char(random.bounded(256));
    return bytes;
}

CVariant restored(const QByteArray &bytes, NTypes::eTypes_t type)
{
    return CVariant().setRawData(bytes.constData(), static_cast<unsigned int>(bytes.size()), type);
}

} // namespace

class tst_variant_to_bytes : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void toByteArray_data();
    void toByteArray();
    void qCharGivesNoBytes();
    void fixedSizeTypesHaveTheirSizeWhateverIsHeld_data();
    void fixedSizeTypesHaveTheirSizeWhateverIsHeld();
    void randomBytesAreRestored_data();
    void randomBytesAreRestored();
    void extremeBytesAreRestored_data();
    void extremeBytesAreRestored();
    void constructedValuesAreRestored_data();
    void constructedValuesAreRestored();
    void defaultsAreRestored_data();
    void defaultsAreRestored();
    void fixedStringsAreRestored();
};

void tst_variant_to_bytes::toByteArray_data()
{
    QTest::addColumn<Make>("make");
    QTest::addColumn<QByteArray>("bytes");
    addNumberRows();
    addRecordRows();
    addFixedStringRows();
    addEightBitRows();
    addOtherRows();
}

void tst_variant_to_bytes::toByteArray()
{
    QFETCH(Make, make);
    QFETCH(QByteArray, bytes);
    const CVariant value = make();
    QCOMPARE(value.toByteArray().toHex(), bytes.toHex());
    QCOMPARE(value.operator QByteArray().toHex(), bytes.toHex());
}

void tst_variant_to_bytes::qCharGivesNoBytes()
{
    // What QVariant::toByteArray() of a QChar is in Qt 5.
    QVERIFY(CVariant(QChar(u'A')).toByteArray().isEmpty());
}

void tst_variant_to_bytes::fixedSizeTypesHaveTheirSizeWhateverIsHeld_data()
{
    QTest::addColumn<int>("number");
    for (const int number : typesRestoredFromTheirBytes())
        QTest::newRow(qPrintable(CDataTypeParser::typeToEnum(typeOf(number)))) << number;
}

void tst_variant_to_bytes::fixedSizeTypesHaveTheirSizeWhateverIsHeld()
{
    QFETCH(int, number);
    const QByteArray zeros(int(CDataTypeParser::typeSize(typeOf(number))), '\0');
    QCOMPARE(stored(QVariant(), number)().toByteArray(), zeros);
    QCOMPARE(stored(QVariant(QVariantList{1, 2}), number)().toByteArray(), zeros);
    QCOMPARE(stored(QVariant(QStringLiteral("no number")), number)().toByteArray(), zeros);
    QCOMPARE(stored(QVariant(QByteArray(20, '\0')), number)().toByteArray().size(), zeros.size());
}

void tst_variant_to_bytes::randomBytesAreRestored_data()
{
    fixedSizeTypesHaveTheirSizeWhateverIsHeld_data();
}

void tst_variant_to_bytes::randomBytesAreRestored()
{
    QFETCH(int, number);
    QRandomGenerator random(20210304);
    for (int round = 0; round < 2000; ++round) {
        const QByteArray bytes = randomBytes(random, int(CDataTypeParser::typeSize(typeOf(number))));
        const CVariant value = restored(bytes, typeOf(number));
        QCOMPARE(value.toByteArray().toHex(), bytes.toHex());
        const CVariant again = restored(value.toByteArray(), value.type());
        QCOMPARE(again.type(), value.type());
        QCOMPARE(heldBy(again).userType(), heldBy(value).userType());
        QCOMPARE(again.toByteArray().toHex(), bytes.toHex());
    }
}

void tst_variant_to_bytes::extremeBytesAreRestored_data()
{
    fixedSizeTypesHaveTheirSizeWhateverIsHeld_data();
}

void tst_variant_to_bytes::extremeBytesAreRestored()
{
    QFETCH(int, number);
    const int size = int(CDataTypeParser::typeSize(typeOf(number)));
    for (const char fill : {'\x00', '\xFF', '\x80', '\x7F', '\x01'}) {
        const QByteArray bytes(size, fill);
        QCOMPARE(restored(bytes, typeOf(number)).toByteArray().toHex(), bytes.toHex());
    }
    for (int position = 0; position < size; ++position) {
        QByteArray bytes(size, '\0');
        bytes[position] = '\x80';
        QCOMPARE(restored(bytes, typeOf(number)).toByteArray().toHex(), bytes.toHex());
    }
}

void tst_variant_to_bytes::constructedValuesAreRestored_data()
{
    QTest::addColumn<Make>("make");
    QTest::addColumn<QByteArray>("bytes");
    addNumberRows();
    addRecordRows();
}

void tst_variant_to_bytes::constructedValuesAreRestored()
{
    QFETCH(Make, make);
    QFETCH(QByteArray, bytes);
    const CVariant value = make();
    CVariant again(CString128(QStringLiteral("before")));
    again.setRawData(value.toByteArray().constData(), static_cast<unsigned int>(bytes.size()), value.type());
    QCOMPARE(again.type(), value.type());
    QVERIFY(heldBy(again) == heldBy(value)); // numbers of 8 and 16 bits are held widened, and compare equal
    QCOMPARE(again.toByteArray().toHex(), bytes.toHex());
}

void tst_variant_to_bytes::defaultsAreRestored_data()
{
    fixedSizeTypesHaveTheirSizeWhateverIsHeld_data();
}

void tst_variant_to_bytes::defaultsAreRestored()
{
    QFETCH(int, number);
    const CVariant value(typeOf(number));
    const CVariant again = restored(value.toByteArray(), value.type());
    QCOMPARE(again.type(), value.type());
    QCOMPARE(heldBy(again).userType(), heldBy(value).userType());
    QVERIFY(heldBy(again) == heldBy(value));
}

void tst_variant_to_bytes::fixedStringsAreRestored()
{
    for (const CVariant &value :
         {CVariant(CString32(QByteArray(64, 'x'))), CVariant(CString64(fromHex("41000000420000000100"))),
          CVariant(CString128(QStringLiteral("spindle"))), CVariant(CString128())}) {
        const CVariant again = restored(value.toByteArray(), value.type());
        QCOMPARE(again.type(), value.type());
        QVERIFY(heldBy(again) == heldBy(value));
    }
}

QTEST_GUILESS_MAIN(tst_variant_to_bytes)

#include "tst_variant_to_bytes.moc"
