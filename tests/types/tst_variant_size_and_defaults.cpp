// SPDX-License-Identifier: MIT
#include "VariantCases.h"

#include <CDataTypeParser.h>
#include <LoggedTest.h>

#include <QTest>

#include <algorithm>
#include <limits>

namespace {

template<typename Value>
QVariant held(const Value &value)
{
    return QVariant::fromValue(value);
}

Make stored(const QVariant &value, int tag)
{
    return [=] { return CVariant().setRawData(value, typeOf(tag)); };
}

QString sizeWarning(int tag)
{
    return QStringLiteral("CVariant::size() : Data type '%1' is not supported.").arg(tag);
}

void addNumbersOutsideTheCatalogue()
{
    QTest::addColumn<int>("number");
    QTest::newRow("-1") << -1;
    QTest::newRow("smallest") << std::numeric_limits<int>::min();
    QTest::newRow("33") << 33;
    QTest::newRow("40") << 40;
    QTest::newRow("256, 0 in its low byte") << 256;
    QTest::newRow("261, 5 in its low byte") << 261;
    QTest::newRow("largest") << std::numeric_limits<int>::max();
}

void addDefaultRows()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QVariant>("value");
    const auto row = [](int number, const QVariant &value) {
        QTest::newRow(qPrintable(CDataTypeParser::typeToEnum(typeOf(number)))) << number << value;
    };
    row(1, held(int(0)));
    row(2, held(int(0)));
    row(3, held(int(0)));
    row(4, held(int(0)));
    row(5, held(0U));
    row(6, held(int(0)));
    row(7, held(0.0F));
    row(8, held(qulonglong(0)));
    row(9, held(qlonglong(0)));
    row(10, held(0.0));
    row(12, held(CString32()));
    row(13, held(QByteArray(64, '\0')));
    row(14, held(CString128()));
    row(15, held(QByteArray(256, '\0')));
    row(16, held(NTypes::sDateTime_t()));
    row(17, held(CString64()));
    row(18, held(QByteArray(128, '\0')));
    row(19, held(QChar(0)));
    row(20, held(QByteArray(1, '\0')));
    row(21, held(NTypes::sVersion_t()));
    row(22, held(NTypes::uIPv4HAddr_t()));
    row(23, held(NTypes::sCommand_t()));
    row(26, held(NTypes::sDs402Record01_t{2, 0.0F, 0}));
    row(27, held(NTypes::sDs402Array_t<short>{{2, 0, 0}}));
    row(28, held(NTypes::sDs402Array_t<int>{{2, 0, 0}}));
    row(29, held(NTypes::sDs402Array_t<unsigned int>{{2, 0, 0}}));
    row(30, held(NTypes::sDs402Array_t<unsigned short>{{2, 0, 0}}));
    row(31, held(NTypes::sDs402Array_t<unsigned int>{{2, 0, 0}}));
    row(32, held(NTypes::sVersion4_t()));
}

void addTypesWithoutADefault()
{
    QTest::addColumn<int>("number");
    QTest::newRow("E_UNKNOWN") << 0;
    QTest::newRow("the gap 11") << 11;
    QTest::newRow("E_2DF32F32") << 24;
    QTest::newRow("E_BYTEARRAY") << 25;
}

} // namespace

class tst_variant_size_and_defaults : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void sizeOfNumbers_data();
    void sizeOfNumbers();
    void sizeOfANumberIsTheLengthOfItsDecimalTextIfThatIsLonger();
    void sizeOfOneByteConstructedFromAByteIsOneByte();
    void sizeOfFixedTypes_data();
    void sizeOfFixedTypes();
    void sizeOfByteArrays_data();
    void sizeOfByteArrays();
    void sizeOfAnUnsupportedTypeIsLogged_data();
    void sizeOfAnUnsupportedTypeIsLogged();
    void sizeOfAValueWithoutATypeIsZero();
    void countIsTheSize();
    void typeSize_data();
    void typeSize();
    void typeSizeOfAnyNumber();

    void defaultValue_data() { addDefaultRows(); }
    void defaultValue();
    void leadingTwoOfTheDs402Defaults_data();
    void leadingTwoOfTheDs402Defaults();
    void typesWithoutADefault_data() { addTypesWithoutADefault(); }
    void typesWithoutADefault();
    void numbersOutsideHaveNoDefault_data() { addNumbersOutsideTheCatalogue(); }
    void numbersOutsideHaveNoDefault();

    void setDefaultValue_data() { addDefaultRows(); }
    void setDefaultValue();
    void setDefaultValueKeepsTheValueOfTypesWithoutADefault_data() { addTypesWithoutADefault(); }
    void setDefaultValueKeepsTheValueOfTypesWithoutADefault();
    void setDefaultValueOutsideTheCatalogueSetsTheTag_data() { addNumbersOutsideTheCatalogue(); }
    void setDefaultValueOutsideTheCatalogueSetsTheTag();
    void constructFromType_data() { addDefaultRows(); }
    void constructFromType();
    void constructFromTypeWithoutADefault_data() { addTypesWithoutADefault(); }
    void constructFromTypeWithoutADefault();
    void constructFromANumberOutsideIsEmpty_data() { addNumbersOutsideTheCatalogue(); }
    void constructFromANumberOutsideIsEmpty();

    void utf16IsWhatQtDecodes();
};

void tst_variant_size_and_defaults::sizeOfNumbers_data()
{
    QTest::addColumn<Make>("make");
    QTest::addColumn<unsigned int>("size");
    const auto row = [](const char *name, const auto &value, unsigned int size) {
        QTest::newRow(name) << Make([value] { return CVariant(value); }) << size;
    };
    row("int 12", 12, 4);
    row("int 1234", 1234, 4);
    row("int 12345", 12345, 5);
    row("int 123456", 123456, 6);
    row("int -123", -123, 4);
    row("int -1234", -1234, 5);
    row("int, smallest: 11 characters", std::numeric_limits<int>::min(), 11);
    row("unsigned int, largest: 10 characters", 4294967295U, 10);
    row("unsigned short 12", static_cast<unsigned short>(12), 2);
    row("unsigned short 65535", static_cast<unsigned short>(65535), 5);
    row("short 7", static_cast<short>(7), 2);
    row("short -32768", static_cast<short>(-32768), 6);
    row("long long 12345678", Q_INT64_C(12345678), 8);
    row("long long 123456789", Q_INT64_C(123456789), 9);
    row("unsigned long long, largest: 20 characters", ~Q_UINT64_C(0), 20);
    row("float 1.5", 1.5F, 4);
    row("float 12.25", 12.25F, 5);
    row("float 0.1: 0.10000000149011612", 0.1F, 19);
    row("double 0.1", 0.1, 8);
    row("double 1/3: 0.3333333333333333", 1.0 / 3.0, 18);
    row("double 1e+300", 1e300, 8);
    for (int tag = 1; tag <= 10; ++tag) {
        const QByteArray name = "no value of " + CDataTypeParser::typeToEnum(typeOf(tag)).toLatin1();
        QTest::newRow(name.constData()) << stored(QVariant(), tag) << CDataTypeParser::typeSize(typeOf(tag));
    }
    QTest::newRow("widened byte 200")
        << Make([] { return CVariant::fromRawData("\xC8", 1, NTypes::E_U8); }) << 3U;
    QTest::newRow("widened byte 5") << Make([] { return CVariant::fromRawData("\x05", 1, NTypes::E_U8); })
                                    << 1U;
    QTest::newRow("widened byte -128")
        << Make([] { return CVariant::fromRawData("\x80", 1, NTypes::E_I8); }) << 4U;
    QTest::newRow("three bytes as a byte")
        << Make([] { return CVariant::fromRawData("\1\2\3", 3, NTypes::E_U8); }) << 3U;
}

void tst_variant_size_and_defaults::sizeOfNumbers()
{
    QFETCH(Make, make);
    QFETCH(unsigned int, size);
    const CVariant value = make();
    QCOMPARE(value.size(), size);
    const auto textLength = static_cast<unsigned int>(heldBy(value).toByteArray().size());
    QCOMPARE(size, std::max<unsigned int>(textLength, CDataTypeParser::typeSize(value.type())));
}

void tst_variant_size_and_defaults::sizeOfANumberIsTheLengthOfItsDecimalTextIfThatIsLonger()
{
    QCOMPARE(CVariant(int(123456)).size(), 6U);
    QCOMPARE(CVariant(int(12)).size(), 4U);
}

void tst_variant_size_and_defaults::sizeOfOneByteConstructedFromAByteIsOneByte()
{
    // QVariant gives a char type as its one byte, not as decimal text.
    QCOMPARE(CVariant(static_cast<unsigned char>(200)).size(), 1U);
    QCOMPARE(CVariant(static_cast<signed char>(-128)).size(), 1U);
}

void tst_variant_size_and_defaults::sizeOfFixedTypes_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<unsigned int>("size");
    const auto row = [](int number, unsigned int size) {
        QTest::newRow(qPrintable(CDataTypeParser::typeToEnum(typeOf(number)))) << number << size;
    };
    row(12, 64);
    row(13, 64);
    row(14, 256);
    row(15, 256);
    row(16, 8);
    row(17, 128);
    row(18, 128);
    row(19, 2);
    row(20, 1);
    row(21, 4);
    row(22, 4);
    row(23, 4);
    row(26, 7);
    row(27, 6);
    row(28, 12);
    row(29, 12);
    row(30, 6);
    row(31, 12);
    row(32, 8);
}

void tst_variant_size_and_defaults::sizeOfFixedTypes()
{
    QFETCH(int, number);
    QFETCH(unsigned int, size);
    QCOMPARE(CVariant(typeOf(number)).size(), size);
    // The type alone counts, not what is held.
    QCOMPARE(stored(QVariant(), number)().size(), size);
    QCOMPARE(stored(QVariant(QByteArray(1000, 'x')), number)().size(), size);
}

void tst_variant_size_and_defaults::sizeOfByteArrays_data()
{
    QTest::addColumn<Make>("make");
    QTest::addColumn<unsigned int>("size");
    for (const int tag : {24, 25}) {
        const QByteArray name = CDataTypeParser::typeToEnum(typeOf(tag)).toLatin1();
        QTest::newRow((name + ", no value").constData()) << stored(QVariant(), tag) << 0U;
        QTest::newRow((name + ", 1 byte").constData()) << stored(QByteArray("x"), tag) << 1U;
        QTest::newRow((name + ", 16 bytes").constData()) << stored(QByteArray(16, '\0'), tag) << 16U;
        QTest::newRow((name + ", 1000 bytes").constData()) << stored(QByteArray(1000, 'x'), tag) << 1000U;
    }
}

void tst_variant_size_and_defaults::sizeOfByteArrays()
{
    QFETCH(Make, make);
    QFETCH(unsigned int, size);
    QCOMPARE(make().size(), size);
}

void tst_variant_size_and_defaults::sizeOfAnUnsupportedTypeIsLogged_data()
{
    addNumbersOutsideTheCatalogue();
    QTest::newRow("the gap 11") << 11;
}

void tst_variant_size_and_defaults::sizeOfAnUnsupportedTypeIsLogged()
{
    QFETCH(int, number);
    const CVariant value = stored(QVariant(123456), number)();
    QCOMPARE(value.size(), 0U);
    QCOMPARE(takeLog(), QStringList{sizeWarning(number)});
    QCOMPARE(value.count(), 0U);
    QCOMPARE(takeLog(), QStringList{sizeWarning(number)});
}

void tst_variant_size_and_defaults::sizeOfAValueWithoutATypeIsZero()
{
    QCOMPARE(stored(QVariant(123456), 0)().size(), 0U); // silently: 0 is no error
}

void tst_variant_size_and_defaults::countIsTheSize()
{
    QCOMPARE(CVariant(123456).count(), 6U);
    QCOMPARE(CVariant(NTypes::E_STRING64).count(), 128U);
    QCOMPARE(stored(QByteArray("abc"), 25)().count(), 3U);
}

void tst_variant_size_and_defaults::typeSize_data()
{
    QTest::addColumn<int>("number");
    const QList<int> tags = catalogueTags();
    for (const int tag : tags)
        QTest::newRow(qPrintable(CDataTypeParser::typeToEnum(typeOf(tag)))) << tag;
}

void tst_variant_size_and_defaults::typeSize()
{
    QFETCH(int, number);
    const CVariant value = stored(QVariant(), number)();
    QCOMPARE(int(value.typeSize()), int(CDataTypeParser::typeSize(typeOf(number))));
}

void tst_variant_size_and_defaults::typeSizeOfAnyNumber()
{
    for (const int number : {-1, 11, 33, 40})
        QCOMPARE(int(stored(QVariant(5), number)().typeSize()), 1);
    QCOMPARE(int(CVariant(NTypes::E_DS402_ACC_REC).typeSize()), 7);
    QCOMPARE(int(stored(QByteArray(9, 'x'), 25)().typeSize()), 1); // of one element
}

void tst_variant_size_and_defaults::defaultValue()
{
    QFETCH(int, number);
    QFETCH(QVariant, value);
    for (const CVariant &asked : {CVariant(), CVariant(5), CVariant(NTypes::E_DS402_I32_ARRAY)}) {
        const QVariant given = asked.defaultValue(typeOf(number));
        QCOMPARE(given.userType(), value.userType());
        QVERIFY(given == value);
    }
}

void tst_variant_size_and_defaults::leadingTwoOfTheDs402Defaults_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("E_DS402_ACC_REC") << 26 << fromHex("02000000000000");
    QTest::newRow("E_DS402_I16_ARRAY") << 27 << fromHex("020000000000");
    QTest::newRow("E_DS402_I32_ARRAY") << 28 << fromHex("020000000000000000000000");
    QTest::newRow("E_DS402_DIO_ARRAY") << 29 << fromHex("020000000000000000000000");
    QTest::newRow("E_DS402_U16_ARRAY") << 30 << fromHex("020000000000");
    QTest::newRow("E_DS402_U32_ARRAY") << 31 << fromHex("020000000000000000000000");
}

void tst_variant_size_and_defaults::leadingTwoOfTheDs402Defaults()
{
    QFETCH(int, number);
    QFETCH(QByteArray, bytes);
    QCOMPARE(CVariant(typeOf(number)).toByteArray(), bytes);
}

void tst_variant_size_and_defaults::typesWithoutADefault()
{
    QFETCH(int, number);
    QVERIFY(!CVariant(5).defaultValue(typeOf(number)).isValid());
    QVERIFY(CVariant(5).defaultValue(typeOf(number)).isNull());
}

void tst_variant_size_and_defaults::numbersOutsideHaveNoDefault()
{
    QFETCH(int, number);
    QVERIFY(!CVariant(5).defaultValue(typeOf(number)).isValid());
}

void tst_variant_size_and_defaults::setDefaultValue()
{
    QFETCH(int, number);
    QFETCH(QVariant, value);
    for (const CVariant &before : {CVariant(), CVariant(5), CVariant(CString64(QStringLiteral("text")))}) {
        CVariant variant(before);
        CVariant &result = variant.setDefaultValue(typeOf(number));
        QCOMPARE(&result, &variant);
        QCOMPARE(int(variant.type()), number);
        QCOMPARE(heldBy(variant).userType(), value.userType());
        QVERIFY(heldBy(variant) == value);
    }
}

void tst_variant_size_and_defaults::setDefaultValueKeepsTheValueOfTypesWithoutADefault()
{
    QFETCH(int, number);
    CVariant variant(5);
    CVariant &result = variant.setDefaultValue(typeOf(number));
    QCOMPARE(&result, &variant);
    QCOMPARE(int(variant.type()), number);
    QCOMPARE(heldBy(variant).userType(), int(QMetaType::Int));
    QCOMPARE(heldBy(variant), QVariant(5));
}

void tst_variant_size_and_defaults::setDefaultValueOutsideTheCatalogueSetsTheTag()
{
    QFETCH(int, number);
    CVariant variant(5);
    variant.setDefaultValue(typeOf(number));
    QCOMPARE(int(variant.type()), number);
    QCOMPARE(heldBy(variant), QVariant(5));
}

void tst_variant_size_and_defaults::constructFromType()
{
    QFETCH(int, number);
    QFETCH(QVariant, value);
    const CVariant variant(typeOf(number));
    QCOMPARE(int(variant.type()), number);
    QCOMPARE(heldBy(variant).userType(), value.userType());
    QVERIFY(heldBy(variant) == value);
    QVERIFY(variant.isValid());
    QCOMPARE(variant.isNull(), number == NTypes::E_UTF16CHAR); // U+0000 is null to Qt, and held
}

void tst_variant_size_and_defaults::constructFromTypeWithoutADefault()
{
    QFETCH(int, number);
    const CVariant variant(typeOf(number));
    QCOMPARE(int(variant.type()), number);
    QVERIFY(!heldBy(variant).isValid());
    QVERIFY(variant.isNull());
    QVERIFY(!variant.isValid());
}

void tst_variant_size_and_defaults::constructFromANumberOutsideIsEmpty()
{
    QFETCH(int, number);
    const CVariant variant(typeOf(number));
    QCOMPARE(variant.type(), NTypes::E_UNKNOWN);
    QVERIFY(!heldBy(variant).isValid());
    QVERIFY(variant.isNull());
}

void tst_variant_size_and_defaults::utf16IsWhatQtDecodes()
{
    // Qt's codec counts nothing as invalid.
    for (const QByteArray &bytes :
         {QByteArray(), fromHex("4100"), fromHex("41"), fromHex("00D84100"), fromHex("FFFF")})
        QVERIFY(CVariant().isUTF16(bytes));
}

QTEST_GUILESS_MAIN(tst_variant_size_and_defaults)

#include "tst_variant_size_and_defaults.moc"
