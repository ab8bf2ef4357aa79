// SPDX-License-Identifier: MIT
#include "VariantCases.h"

#include <CDataTypeParser.h>
#include <LoggedTest.h>

#include <QTest>

#include <limits>

namespace {

template<typename Value>
QVariant held(const Value &value)
{
    return QVariant::fromValue(value);
}

void addTextRow(const char *name, const char *text, int type, int tag, const QVariant &value)
{
    QTest::newRow(name) << QString::fromUtf8(text) << type << tag << value;
}

void addTextRows()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("tag");
    QTest::addColumn<QVariant>("value");
    addTextRow("E_U8", "200", 1, 1, held<unsigned char>(200));
    addTextRow("E_I8", "-5", 2, 2, held<signed char>(-5));
    addTextRow("E_U16, hexadecimal", "0x1F", 3, 3, held<unsigned short>(31));
    addTextRow("E_I16", "-300", 4, 4, held<short>(-300));
    addTextRow("E_U32", "4294967295", 5, 5, held(4294967295U));
    addTextRow("E_I32", "-2147483648", 6, 6, held(std::numeric_limits<int>::min()));
    addTextRow("E_F32", "1.5", 7, 7, held(1.5F));
    addTextRow("E_U64", "18446744073709551615", 8, 8, held(qulonglong(~Q_UINT64_C(0))));
    addTextRow("E_I64", "-5", 9, 9, held(qlonglong(-5)));
    addTextRow("E_F64", "-0.25", 10, 10, held(-0.25));
    addTextRow("E_STRING32",
               "Gr\xC3\xB6\xC3\x9F"
               "e",
               12, 12,
               held(CString32(QString::fromUtf8("Gr\xC3\xB6\xC3\x9F"
                                                "e"))));
    addTextRow("E_STRING128", "abc", 14, 14, held(CString128(QStringLiteral("abc"))));
    addTextRow("E_STRING64, empty", "", 17, 17, held(CString64()));
    addTextRow("E_CHARSTR64 holds a text", "abc", 13, 13, held(QStringLiteral("abc")));
    addTextRow("E_CHARSTR256 holds a text", "abc", 15, 15, held(QStringLiteral("abc")));
    addTextRow("E_CHARSTR128 holds a text", "abc", 18, 18, held(QStringLiteral("abc")));
    const NTypes::sDateTime_t moment = {{0, 7, 6, 5}, {4, 3, 2021}};
    addTextRow("E_DATETIME", "2021-03-04T05:06:07", 16, 16, held(moment));
    addTextRow("E_UTF16CHAR", "\xE2\x82\xAC", 19, 19, held(QChar(0x20AC)));
    addTextRow("E_CHAR", "xy", 20, 20, held(QByteArray("x")));
    addTextRow("E_VERSION", "1.2.300", 21, 21, held(NTypes::sVersion_t{300, 2, 1}));
    addTextRow("E_IPV4ADDR", "192.168.0.1", 22, 22, held(NTypes::uIPv4HAddr_t{0xC0A80001}));
    addTextRow("E_COMMAND gives an E_U32", "7", 23, 5, held(7U));
    addTextRow("E_2DF32F32", "0000803F000000C0", 24, 24, held(fromHex("0000803F000000C0")));
    addTextRow("E_BYTEARRAY", "00ff", 25, 25, held(fromHex("00FF")));
    addTextRow("E_DS402_ACC_REC", "030000C03F3412", 26, 26, held(NTypes::sDs402Record01_t{3, 1.5F, 0x1234}));
    addTextRow("E_DS402_DIO_ARRAY", "030000000000000001000000", 29, 29,
               held(NTypes::sDs402Array_t<unsigned int>{{3, 0, 1}}));
    addTextRow("E_VERSION_4", "1.2.3.4", 32, 32, held(NTypes::sVersion4_t{4, 3, 2, 1}));
}

// Texts that give no value of the type, and the default that stands in.
void addUnreadableTextRows()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("type");
    const auto row = [](const char *text, int type) {
        const QString name =
            CDataTypeParser::typeToEnum(typeOf(type)) + QStringLiteral(" from '%1'").arg(QLatin1String(text));
        QTest::newRow(qPrintable(name)) << QString::fromLatin1(text) << type;
    };
    for (int number = NTypes::E_U8; number <= NTypes::E_F64; ++number) {
        row("abc", number);
        row("", number);
        row("1 2", number);
    }
    row("abc", NTypes::E_DATETIME);
    row("", NTypes::E_UTF16CHAR);
    row("", NTypes::E_CHAR);
    row("", NTypes::E_VERSION);
    row("no address", NTypes::E_IPV4ADDR);
    row("", NTypes::E_VERSION_4);
    for (int type = NTypes::E_2DF32F32; type <= NTypes::E_DS402_U32_ARRAY; ++type) {
        row("", type);
        row("xyz", type);
    }
    for (const int type : {26, 27, 28, 29, 30, 31})
        row("0102", type); // too few bytes
}

void addNumbersOutsideTheCatalogue()
{
    QTest::addColumn<int>("number");
    QTest::newRow("-1") << -1;
    QTest::newRow("smallest") << std::numeric_limits<int>::min();
    QTest::newRow("33") << 33;
    QTest::newRow("largest") << std::numeric_limits<int>::max();
}

void addBytesRow(const char *name, const char *hex, int type, const QVariant &value)
{
    QTest::newRow(name) << fromHex(hex) << type << value;
}

QString failed(const char *type)
{
    return QStringLiteral("CVariant::fromByteArray() : Conversion to data type '%1' failed. Line N.")
        .arg(QLatin1String(type));
}

QString failedWithoutData(const char *type)
{
    return QStringLiteral("CVariant::fromByteArray() : Conversion to data type '%1' failed, no data. Line N.")
        .arg(QLatin1String(type));
}

QString notSupported(const char *type)
{
    return QStringLiteral("CVariant::fromByteArray() : Data type %1 is not supported. Line N.")
        .arg(QLatin1String(type));
}

} // namespace

class tst_variant_text_constructors : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void text_data() { addTextRows(); }
    void text();
    void unreadableTextGivesTheDefault_data() { addUnreadableTextRows(); }
    void unreadableTextGivesTheDefault();
    void textThatDoesNotParseIsZeroOfItsType();
    void latin1TextIsLatin1();
    void charPointerIsUtf8UpToTheZero();
    void nullCharPointerIsAnEmptyText();
    void textWithoutATypeIsEmpty();
    void textOfTheGapIsLoggedAndHasNoValue();
    void textOfATypeOutsideIsEmptyAndSilent_data() { addNumbersOutsideTheCatalogue(); }
    void textOfATypeOutsideIsEmptyAndSilent();

    void bytes_data();
    void bytes();
    void wrongLengthIsLoggedAndGivesTheDefault_data();
    void wrongLengthIsLoggedAndGivesTheDefault();
    void noBytesAreLoggedAndGiveTheDefault_data();
    void noBytesAreLoggedAndGiveTheDefault();
    void severalPairs();
    void severalElementsOfAnotherTypeAreNotSupported();
    void bytesWithoutATypeAreEmpty();
    void bytesOfTheGapAreLoggedAndHaveNoValue();
    void bytesOfATypeOutsideAreEmptyAndSilent_data() { addNumbersOutsideTheCatalogue(); }
    void bytesOfATypeOutsideAreEmptyAndSilent();
};

void tst_variant_text_constructors::text()
{
    QFETCH(QString, text);
    QFETCH(int, type);
    QFETCH(int, tag);
    QFETCH(QVariant, value);
    for (const CVariant &variant :
         {CVariant(text, typeOf(type)), CVariant(text.toUtf8().constData(), typeOf(type))}) {
        QCOMPARE(int(variant.type()), tag);
        QCOMPARE(heldBy(variant).userType(), value.userType());
        QVERIFY(heldBy(variant) == value);
    }
}

void tst_variant_text_constructors::unreadableTextGivesTheDefault()
{
    QFETCH(QString, text);
    QFETCH(int, type);
    const CVariant variant(text, typeOf(type));
    QCOMPARE(int(variant.type()), type);
    QVERIFY(heldBy(variant) == CVariant().defaultValue(typeOf(type))); // never an empty variant
}

void tst_variant_text_constructors::textThatDoesNotParseIsZeroOfItsType()
{
    const CVariant variant(QString::fromLatin1("abc"), NTypes::E_U16);
    QCOMPARE(variant.type(), NTypes::E_U16);
    QCOMPARE(heldBy(variant).toUInt(), 0U);
    QVERIFY(!variant.isNull());
    QVERIFY(variant.isValid());
}

void tst_variant_text_constructors::latin1TextIsLatin1()
{
    const QByteArray umlaut("\xE4");
    QCOMPARE(heldBy(CVariant(QLatin1String(umlaut), NTypes::E_UTF16CHAR)).toChar(), QChar(0xE4));
    const QByteArray size("Gr\xF6\xDF\x65");
    const QString text = QStringLiteral("Gr") + QChar(0xF6) + QChar(0xDF) + QLatin1Char('e');
    QVERIFY(heldBy(CVariant(QLatin1String(size), NTypes::E_STRING64)) == held(CString64(text)));
    // It needs no terminating zero.
    QCOMPARE(heldBy(CVariant(QLatin1String("12345", 2), NTypes::E_U32)).toUInt(), 12U);
    QCOMPARE(heldBy(CVariant(QLatin1String(), NTypes::E_U32)).toUInt(), 0U);
}

void tst_variant_text_constructors::charPointerIsUtf8UpToTheZero()
{
    QCOMPARE(heldBy(CVariant("\xC3\xA4", NTypes::E_UTF16CHAR)).toChar(), QChar(0xE4));
    QCOMPARE(heldBy(CVariant("12\0"
                             "34",
                             NTypes::E_U32))
                 .toUInt(),
             12U);
}

void tst_variant_text_constructors::nullCharPointerIsAnEmptyText()
{
    const char *const none = nullptr;
    const CVariant number(none, NTypes::E_U32);
    QCOMPARE(number.type(), NTypes::E_U32);
    QCOMPARE(heldBy(number), QVariant(0U));
    const CVariant bytes(none, NTypes::E_BYTEARRAY);
    QCOMPARE(bytes.type(), NTypes::E_BYTEARRAY);
    QVERIFY(bytes.isNull());
}

void tst_variant_text_constructors::textWithoutATypeIsEmpty()
{
    const CVariant variant(QStringLiteral("5"), NTypes::E_UNKNOWN);
    QCOMPARE(variant.type(), NTypes::E_UNKNOWN);
    QVERIFY(!heldBy(variant).isValid());
}

void tst_variant_text_constructors::textOfTheGapIsLoggedAndHasNoValue()
{
    const CVariant variant(QStringLiteral("5"), typeOf(11));
    QCOMPARE(takeLog(),
             QStringList{QStringLiteral("CVariant::fromStr() : Data type '11 (UNKNOWN)' is not supported.")});
    QCOMPARE(int(variant.type()), 11); // the requested tag, with its default: none
    QVERIFY(!heldBy(variant).isValid());
    QVERIFY(variant.isNull());
}

void tst_variant_text_constructors::textOfATypeOutsideIsEmptyAndSilent()
{
    QFETCH(int, number);
    for (const CVariant &variant :
         {CVariant(QStringLiteral("5"), typeOf(number)), CVariant("5", typeOf(number)),
          CVariant(QLatin1String("5"), typeOf(number))}) {
        QCOMPARE(variant.type(), NTypes::E_UNKNOWN);
        QVERIFY(!heldBy(variant).isValid());
    }
}

void tst_variant_text_constructors::bytes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariant>("value");
    addBytesRow("E_U8, widened as raw data", "C8", 1, held(200));
    addBytesRow("E_I8, widened as raw data", "FE", 2, held(-2));
    addBytesRow("E_U16, widened as raw data", "3412", 3, held(4660));
    addBytesRow("E_I16, widened as raw data", "FFFF", 4, held(-1));
    addBytesRow("E_U32", "785634F2", 5, held(4063516280U));
    addBytesRow("E_I32", "FEFFFFFF", 6, held(-2));
    addBytesRow("E_F32", "0000C03F", 7, held(1.5F));
    addBytesRow("E_U64", "08070605040302F1", 8, held(qulonglong(Q_UINT64_C(0xF102030405060708))));
    addBytesRow("E_I64", "FEFFFFFFFFFFFFFF", 9, held(qlonglong(-2)));
    addBytesRow("E_F64", "000000000000F8BF", 10, held(-1.5));
    addBytesRow("E_DATETIME", "590706050403E507", 16, held(NTypes::sDateTime_t{{89, 7, 6, 5}, {4, 3, 2021}}));
    addBytesRow("E_UTF16CHAR", "AC20", 19, held(QChar(0x20AC)));
    addBytesRow("E_VERSION", "2C010502", 21, held(NTypes::sVersion_t{300, 5, 2}));
    addBytesRow("E_IPV4ADDR", "0100A8C0", 22, held(NTypes::uIPv4HAddr_t{0xC0A80001}));
    addBytesRow("E_COMMAND", "78563412", 23, held(NTypes::sCommand_t{0x12345678}));
    addBytesRow("E_2DF32F32, one pair", "0000803F000000C0", 24, held(fromHex("0000803F000000C0")));
    addBytesRow("E_BYTEARRAY", "00FF00", 25, held(fromHex("00FF00")));
    addBytesRow("E_DS402_ACC_REC", "020000C03F3412", 26, held(NTypes::sDs402Record01_t{2, 1.5F, 0x1234}));
    addBytesRow("E_DS402_I16_ARRAY", "0200FFFF0080", 27, held(NTypes::sDs402Array_t<short>{{2, -1, -32768}}));
    addBytesRow("E_DS402_DIO_ARRAY", "020000000100000000000000", 29,
                held(NTypes::sDs402Array_t<unsigned int>{{2, 1, 0}}));
    addBytesRow("E_VERSION_4", "0400030002000100", 32, held(NTypes::sVersion4_t{4, 3, 2, 1}));
    addBytesRow("E_STRING32", "410042000000", 12, held(CString32(fromHex("41004200"))));
}

void tst_variant_text_constructors::bytes()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, type);
    QFETCH(QVariant, value);
    for (const CVariant &variant : {CVariant(bytes, typeOf(type)), CVariant(bytes, typeOf(type), 1)}) {
        QCOMPARE(int(variant.type()), type);
        QCOMPARE(heldBy(variant).userType(), value.userType());
        QVERIFY(heldBy(variant) == value);
    }
}

void tst_variant_text_constructors::wrongLengthIsLoggedAndGivesTheDefault_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("warning");
    const auto row = [](int type, int size, const char *named) {
        const QByteArray name = QByteArray(named) + " from " + QByteArray::number(size);
        QTest::newRow(name.constData()) << QByteArray(size, 'x') << type << failed(named);
    };
    row(1, 2, "1 (UNIT_U8)");
    row(2, 2, "2 (UNIT_I8)");
    row(3, 1, "3 (UNIT_U16)");
    row(4, 3, "4 (UNIT_I16)");
    row(5, 3, "5 (UNIT_U32)");
    row(5, 5, "5 (UNIT_U32)");
    row(6, 8, "6 (UNIT_I32)");
    row(7, 8, "7 (UNIT_F32)");
    row(8, 4, "8 (UNIT_U64)");
    row(9, 9, "9 (UNIT_I64)");
    row(10, 4, "10 (UNIT_F64)");
    row(16, 7, "16 (UNIT_DATETIME)");
    row(19, 1, "19 (UNIT_UTF16CHAR)");
    row(21, 3, "21 (UNIT_VERSION)");
    row(22, 5, "22 (UNIT_IPV4ADDR)");
    row(23, 8, "23 (UNIT_COMMAND)");
    row(26, 8, "26 (UNIT_DS402_ACCERLERATION_REC)");
    row(27, 5, "27 (UNIT_DS402_I16_ARRAY)");
    row(31, 13, "31 (UNIT_DS402_U32_ARRAY)");
    row(32, 4, "32 (UNIT_VERSION_4)");
}

void tst_variant_text_constructors::wrongLengthIsLoggedAndGivesTheDefault()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, type);
    QFETCH(QString, warning);
    const CVariant variant(bytes, typeOf(type));
    QCOMPARE(withoutLineNumbers(takeLog()), QStringList{warning});
    QCOMPARE(int(variant.type()), type);
    const QVariant expected = variant.defaultValue(typeOf(type));
    QCOMPARE(heldBy(variant).userType(), expected.userType());
    QVERIFY(heldBy(variant) == expected);
}

void tst_variant_text_constructors::noBytesAreLoggedAndGiveTheDefault_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("warning");
    const auto row = [](int type, const char *named) {
        QTest::newRow(named) << type << failedWithoutData(named);
    };
    row(1, "1 (UNIT_U8)");
    row(5, "5 (UNIT_U32)");
    row(10, "10 (UNIT_F64)");
    row(16, "16 (UNIT_DATETIME)");
    row(19, "19 (UNIT_UTF16CHAR)");
    row(21, "21 (UNIT_VERSION)");
    row(24, "24 (UNIT_2D_F32_F32)");
    row(25, "25 (UNIT_BYTEARRAY)");
    row(26, "26 (UNIT_DS402_ACCERLERATION_REC)");
    row(32, "32 (UNIT_VERSION_4)");
}

void tst_variant_text_constructors::noBytesAreLoggedAndGiveTheDefault()
{
    QFETCH(int, type);
    QFETCH(QString, warning);
    const CVariant variant(QByteArray(), typeOf(type));
    QCOMPARE(withoutLineNumbers(takeLog()), QStringList{warning});
    QCOMPARE(int(variant.type()), type);
    QVERIFY(heldBy(variant) == variant.defaultValue(typeOf(type)));
}

void tst_variant_text_constructors::severalPairs()
{
    const QByteArray pairs = fromHex("0000803F000000C00000C03F00000000");
    const CVariant variant(pairs, NTypes::E_2DF32F32, 2);
    QCOMPARE(variant.type(), NTypes::E_2DF32F32);
    QCOMPARE(heldBy(variant), QVariant(pairs));
    const CVariant tooFew(pairs, NTypes::E_2DF32F32, 3);
    QCOMPARE(withoutLineNumbers(takeLog()), QStringList{failed("24 (UNIT_2D_F32_F32)")});
    QCOMPARE(tooFew.type(), NTypes::E_2DF32F32); // its default: none
    QVERIFY(tooFew.isNull());
}

void tst_variant_text_constructors::severalElementsOfAnotherTypeAreNotSupported()
{
    const CVariant variant(QByteArray(8, 'x'), NTypes::E_U32, 2);
    QCOMPARE(withoutLineNumbers(takeLog()), QStringList{notSupported("5 (UNIT_U32)")});
    QCOMPARE(variant.type(), NTypes::E_U32);
    QCOMPARE(heldBy(variant), QVariant(0U));
}

void tst_variant_text_constructors::bytesWithoutATypeAreEmpty()
{
    const CVariant variant(QByteArray("x"), NTypes::E_UNKNOWN);
    QCOMPARE(variant.type(), NTypes::E_UNKNOWN);
    QVERIFY(!heldBy(variant).isValid());
}

void tst_variant_text_constructors::bytesOfTheGapAreLoggedAndHaveNoValue()
{
    const CVariant variant(QByteArray("x"), typeOf(11));
    QCOMPARE(withoutLineNumbers(takeLog()), QStringList{notSupported("11 (UNKNOWN)")});
    QCOMPARE(int(variant.type()), 11);
    QVERIFY(!heldBy(variant).isValid());
}

void tst_variant_text_constructors::bytesOfATypeOutsideAreEmptyAndSilent()
{
    QFETCH(int, number);
    for (const unsigned int count : {0U, 1U, 2U}) {
        const CVariant variant(QByteArray("x"), typeOf(number), count);
        QCOMPARE(variant.type(), NTypes::E_UNKNOWN);
        QVERIFY(!heldBy(variant).isValid());
    }
}

QTEST_GUILESS_MAIN(tst_variant_text_constructors)

#include "tst_variant_text_constructors.moc"
