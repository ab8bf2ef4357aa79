// SPDX-License-Identifier: MIT
#include "VariantCases.h"

#include <CDataTypeParser.h>
#include <LoggedTest.h>

#include <QRandomGenerator>
#include <QTest>

#include <array>
#include <cstring>
#include <limits>
#include <vector>

namespace {

template<typename Value>
QVariant held(const Value &value)
{
    return QVariant::fromValue(value);
}

CVariant fromRaw(const QByteArray &bytes, int number)
{
    return CVariant::fromRawData(bytes.constData(), static_cast<unsigned int>(bytes.size()), typeOf(number));
}

// The smallest number of bytes that give a value of the type.
const QVector<QPair<int, int>> &minimumSizes()
{
    static const QVector<QPair<int, int>> sizes = {
        {1, 1},    {2, 1},  {3, 2},   {4, 2},   {5, 4},    {6, 4},    {7, 4},  {8, 8},
        {9, 8},    {10, 8}, {12, 64}, {13, 64}, {14, 256}, {15, 256}, {16, 8}, {17, 128},
        {18, 128}, {19, 2}, {20, 1},  {21, 4},  {22, 4},   {23, 4},   {24, 8}, {25, 1},
        {26, 7},   {27, 6}, {28, 12}, {29, 12}, {30, 6},   {31, 12},  {32, 8},
    };
    return sizes;
}

QByteArray rowName(int number)
{
    return CDataTypeParser::typeToEnum(typeOf(number)).toLatin1();
}

void addUnsupportedNumbers()
{
    QTest::addColumn<int>("number");
    QTest::newRow("E_UNKNOWN") << 0;
    QTest::newRow("the gap 11") << 11;
    QTest::newRow("-1") << -1;
    QTest::newRow("smallest") << std::numeric_limits<int>::min();
    QTest::newRow("33") << 33;
    QTest::newRow("40") << 40;
    QTest::newRow("257, 1 in its low byte") << 257;
    QTest::newRow("largest") << std::numeric_limits<int>::max();
}

QString rawDataWarning(int number)
{
    return QStringLiteral("CVariant::setRawData() : NTypes::ETypes %1 is not supported in this method.")
        .arg(number);
}

void addRow(const char *name, int number, const QByteArray &bytes, const QVariant &value)
{
    QTest::newRow(name) << number << bytes << value;
}

void addNumberRows()
{
    addRow("E_U8 0", 1, fromHex("00"), held(int(0)));
    addRow("E_U8 255 is zero-extended", 1, fromHex("FF"), held(int(255)));
    addRow("E_I8 -1 is sign-extended", 2, fromHex("FF"), held(int(-1)));
    addRow("E_I8 -128", 2, fromHex("80"), held(int(-128)));
    addRow("E_I8 127", 2, fromHex("7F"), held(int(127)));
    addRow("E_U16 4660", 3, fromHex("3412"), held(int(4660)));
    addRow("E_U16 65535 is zero-extended", 3, fromHex("FFFF"), held(int(65535)));
    addRow("E_I16 -1 is sign-extended", 4, fromHex("FFFF"), held(int(-1)));
    addRow("E_I16 -32768", 4, fromHex("0080"), held(int(-32768)));
    addRow("E_U32", 5, fromHex("785634F2"), held(4063516280U));
    addRow("E_I32", 6, fromHex("FEFFFFFF"), held(int(-2)));
    addRow("E_F32", 7, fromHex("0000C03F"), held(1.5F));
    addRow("E_U64", 8, fromHex("08070605040302F1"), held(qulonglong(Q_UINT64_C(0xF102030405060708))));
    addRow("E_I64", 9, fromHex("FEFFFFFFFFFFFFFF"), held(qlonglong(-2)));
    addRow("E_F64", 10, fromHex("000000000000F8BF"), held(-1.5));
}

void addTextRows()
{
    for (const auto &[number, size] : {std::pair(13, 64), std::pair(18, 128), std::pair(15, 256)}) {
        QByteArray field(size, '\0');
        field.replace(0, 3, "abc");
        field[size - 1] = '\xFF';
        addRow(rowName(number).constData(), number, field, held(field));
    }
    QByteArray units(256, '\x11');
    units.replace(0, 8, fromHex("4100000042000000"));
    addRow("E_STRING32", 12, units.left(64), held(CString32(units)));
    addRow("E_STRING64", 17, units.left(128), held(CString64(units)));
    addRow("E_STRING128", 14, units, held(CString128(units)));
    addRow("E_STRING32 full, no terminator", 12, QByteArray(64, 'x'), held(CString32(QByteArray(64, 'x'))));
    addRow("E_UTF16CHAR", 19, fromHex("AC20"), held(QChar(0x20AC)));
    addRow("E_UTF16CHAR 0", 19, fromHex("0000"), held(QChar(0)));
}

void addRecordRows()
{
    addRow("E_DATETIME", 16, fromHex("590706050403E507"),
           held(NTypes::sDateTime_t{{89, 7, 6, 5}, {4, 3, 2021}}));
    addRow("E_VERSION", 21, fromHex("2C010502"), held(NTypes::sVersion_t{300, 5, 2}));
    addRow("E_IPV4ADDR", 22, fromHex("0100A8C0"), held(NTypes::uIPv4HAddr_t{0xC0A80001}));
    addRow("E_COMMAND", 23, fromHex("78563412"), held(NTypes::sCommand_t{0x12345678}));
    addRow("E_2DF32F32", 24, fromHex("0000803F000000C0"), held(fromHex("0000803F000000C0")));
    addRow("E_BYTEARRAY", 25, fromHex("00FF00"), held(fromHex("00FF00")));
    addRow("E_DS402_ACC_REC", 26, fromHex("020000C03F3412"), held(NTypes::sDs402Record01_t{2, 1.5F, 0x1234}));
    addRow("E_DS402_I16_ARRAY", 27, fromHex("0200FFFF0080"),
           held(NTypes::sDs402Array_t<short>{{2, -1, -32768}}));
    addRow("E_DS402_I32_ARRAY", 28, fromHex("02000000FFFFFFFF00000100"),
           held(NTypes::sDs402Array_t<int>{{2, -1, 65536}}));
    const auto words = held(NTypes::sDs402Array_t<unsigned int>{{2, 4294967295U, 65536}});
    addRow("E_DS402_DIO_ARRAY keeps its tag", 29, fromHex("02000000FFFFFFFF00000100"), words);
    addRow("E_DS402_U16_ARRAY", 30, fromHex("0200FFFF0080"),
           held(NTypes::sDs402Array_t<unsigned short>{{2, 65535, 32768}}));
    addRow("E_DS402_U32_ARRAY", 31, fromHex("02000000FFFFFFFF00000100"), words);
    addRow("E_VERSION_4", 32, fromHex("0400030002000100"), held(NTypes::sVersion4_t{4, 3, 2, 1}));
}

void addRawDataRows()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QVariant>("value");
    addNumberRows();
    addTextRows();
    addRecordRows();
}

// Types whose bytes beyond the minimum are kept.
bool takesAllBytes(int number)
{
    return number == 1 || number == 2 || number == 24 || number == 25;
}

} // namespace

class tst_variant_raw_data : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void exactSize_data() { addRawDataRows(); }
    void exactSize();
    void bytesBeyondTheTypeAreIgnored_data() { addRawDataRows(); }
    void bytesBeyondTheTypeAreIgnored();
    void sourceNeedsNoAlignment_data() { addRawDataRows(); }
    void sourceNeedsNoAlignment();
    void replacesWhateverWasThere_data() { addRawDataRows(); }
    void replacesWhateverWasThere();
    void sourceIsCopied();

    void tooFewBytes_data();
    void tooFewBytes();
    void minimumIsEnough_data();
    void minimumIsEnough();
    void nullPointerCountsAsNoBytes_data();
    void nullPointerCountsAsNoBytes();
    void sizeAboveIntMaxCountsAsNoBytes_data();
    void sizeAboveIntMaxCountsAsNoBytes();
    void unsupportedTypeIsLoggedAndEmpty_data() { addUnsupportedNumbers(); }
    void unsupportedTypeIsLoggedAndEmpty();

    void severalBytesAsAByteAreHeldAsBytes_data();
    void severalBytesAsAByteAreHeldAsBytes();
    void byteArraysTakeAllBytes_data();
    void byteArraysTakeAllBytes();
    void charBecomesAUtf16Char_data();
    void charBecomesAUtf16Char();
    void qVariantIsStoredUnchecked_data();
    void qVariantIsStoredUnchecked();
};

void tst_variant_raw_data::exactSize()
{
    QFETCH(int, number);
    QFETCH(QByteArray, bytes);
    QFETCH(QVariant, value);
    const CVariant variant = fromRaw(bytes, number);
    QCOMPARE(int(variant.type()), number);
    QCOMPARE(heldBy(variant).userType(), value.userType());
    QVERIFY(heldBy(variant) == value);
    QCOMPARE(variant.isNull(), value.isNull());
    QVERIFY(variant.isValid());
}

void tst_variant_raw_data::bytesBeyondTheTypeAreIgnored()
{
    QFETCH(int, number);
    QFETCH(QByteArray, bytes);
    QFETCH(QVariant, value);
    if (takesAllBytes(number))
        return; // see severalBytesAsAByteAreHeldAsBytes() and byteArraysTakeAllBytes()
    for (const int more : {1, 2, 7, 300}) {
        const CVariant variant = fromRaw(bytes + QByteArray(more, '\xA5'), number);
        QCOMPARE(int(variant.type()), number);
        QCOMPARE(heldBy(variant).userType(), value.userType());
        QVERIFY(heldBy(variant) == value);
    }
}

void tst_variant_raw_data::sourceNeedsNoAlignment()
{
    QFETCH(int, number);
    QFETCH(QByteArray, bytes);
    QFETCH(QVariant, value);
    for (std::size_t offset = 0; offset < 8; ++offset) {
        std::vector<char> buffer(offset + static_cast<std::size_t>(bytes.size())); // of the exact size
        std::memcpy(buffer.data() + offset, bytes.constData(), static_cast<std::size_t>(bytes.size()));
        CVariant variant;
        variant.setRawData(buffer.data() + offset, static_cast<unsigned int>(bytes.size()), typeOf(number));
        QVERIFY(heldBy(variant) == value);
    }
}

void tst_variant_raw_data::replacesWhateverWasThere()
{
    QFETCH(int, number);
    QFETCH(QByteArray, bytes);
    QFETCH(QVariant, value);
    for (const CVariant &before :
         {CVariant(5), CVariant(typeOf(number)), CVariant(CString64(QStringLiteral("text"))),
          CVariant(NTypes::sDs402Array_t<unsigned int>{{7, 8, 9}})}) {
        const QVariant heldBefore = heldBy(before);
        CVariant variant(before);
        CVariant &result =
            variant.setRawData(bytes.constData(), static_cast<unsigned int>(bytes.size()), typeOf(number));
        QCOMPARE(&result, &variant);
        QCOMPARE(int(variant.type()), number);
        QCOMPARE(heldBy(variant).userType(), value.userType());
        QVERIFY(heldBy(variant) == value);
        QVERIFY(heldBy(before) == heldBefore);
    }
}

void tst_variant_raw_data::sourceIsCopied()
{
    std::array<char, 64> buffer = {};
    buffer.fill('x');
    const auto size = static_cast<unsigned int>(buffer.size());
    const CVariant bytes = CVariant::fromRawData(buffer.data(), size, NTypes::E_BYTEARRAY);
    const CVariant field = CVariant::fromRawData(buffer.data(), size, NTypes::E_CHARSTR64);
    const CVariant pair = CVariant::fromRawData(buffer.data(), 8, NTypes::E_2DF32F32);
    const CVariant byte = CVariant::fromRawData(buffer.data(), 3, NTypes::E_U8);
    buffer.fill('y');
    QCOMPARE(heldBy(bytes).toByteArray(), QByteArray(64, 'x'));
    QCOMPARE(heldBy(field).toByteArray(), QByteArray(64, 'x'));
    QCOMPARE(heldBy(pair).toByteArray(), QByteArray(8, 'x'));
    QCOMPARE(heldBy(byte).toByteArray(), QByteArray(3, 'x'));
}

void tst_variant_raw_data::tooFewBytes_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("size");
    for (const auto &[number, minimum] : minimumSizes()) {
        QTest::newRow((rowName(number) + ", none").constData()) << number << 0;
        if (minimum > 1)
            QTest::newRow((rowName(number) + ", one too few").constData()) << number << minimum - 1;
        if (minimum > 2)
            QTest::newRow((rowName(number) + ", one").constData()) << number << 1;
    }
}

void tst_variant_raw_data::tooFewBytes()
{
    QFETCH(int, number);
    QFETCH(int, size);
    CVariant variant(5);
    variant.setRawData(QByteArray(size, 'x').constData(), static_cast<unsigned int>(size), typeOf(number));
    QCOMPARE(int(variant.type()), number); // silently: a null variant of the type
    QVERIFY(!heldBy(variant).isValid());
    QVERIFY(heldBy(variant).isNull());
    QVERIFY(variant.isNull());
}

void tst_variant_raw_data::minimumIsEnough_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("minimum");
    for (const auto &[number, minimum] : minimumSizes())
        QTest::newRow(rowName(number).constData()) << number << minimum;
}

void tst_variant_raw_data::minimumIsEnough()
{
    QFETCH(int, number);
    QFETCH(int, minimum);
    QVERIFY(!fromRaw(QByteArray(minimum, 'x'), number).isNull());
}

void tst_variant_raw_data::nullPointerCountsAsNoBytes_data()
{
    minimumIsEnough_data();
}

void tst_variant_raw_data::nullPointerCountsAsNoBytes()
{
    QFETCH(int, number);
    QFETCH(int, minimum);
    for (const unsigned int size :
         {0U, 1U, static_cast<unsigned int>(minimum), 1000U, 2147483648U, 4294967295U}) {
        CVariant variant(5);
        variant.setRawData(nullptr, size, typeOf(number));
        QCOMPARE(int(variant.type()), number);
        QVERIFY(!heldBy(variant).isValid());
        QVERIFY(CVariant::fromRawData(nullptr, size, typeOf(number)).isNull());
    }
}

void tst_variant_raw_data::sizeAboveIntMaxCountsAsNoBytes_data()
{
    minimumIsEnough_data();
}

void tst_variant_raw_data::sizeAboveIntMaxCountsAsNoBytes()
{
    QFETCH(int, number);
    const QByteArray bytes(300, 'x');
    for (const unsigned int size : {2147483648U, 2147483649U, 4294967295U}) {
        const CVariant variant = CVariant::fromRawData(bytes.constData(), size, typeOf(number));
        QCOMPARE(int(variant.type()), number);
        QVERIFY(!heldBy(variant).isValid());
    }
}

void tst_variant_raw_data::unsupportedTypeIsLoggedAndEmpty()
{
    QFETCH(int, number);
    CVariant variant(5);
    CVariant &result = variant.setRawData("01234567", 8, typeOf(number));
    QCOMPARE(takeLog(), QStringList{rawDataWarning(number)});
    QCOMPARE(&result, &variant);
    QCOMPARE(variant.type(), NTypes::E_UNKNOWN);
    QVERIFY(!heldBy(variant).isValid());
    QVERIFY(variant.isNull());
    variant = 5;
    variant.setRawData(nullptr, 0, typeOf(number)); // the type is looked at even without bytes
    QCOMPARE(takeLog(), QStringList{rawDataWarning(number)});
    QCOMPARE(variant.type(), NTypes::E_UNKNOWN);
    QVERIFY(!heldBy(variant).isValid());
}

void tst_variant_raw_data::severalBytesAsAByteAreHeldAsBytes_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QByteArray>("bytes");
    for (const int number : {1, 2}) {
        QTest::newRow((rowName(number) + ", two").constData()) << number << fromHex("0000");
        QTest::newRow((rowName(number) + ", three").constData()) << number << fromHex("01FF03");
        QTest::newRow((rowName(number) + ", 300").constData()) << number << QByteArray(300, 'x');
    }
}

void tst_variant_raw_data::severalBytesAsAByteAreHeldAsBytes()
{
    QFETCH(int, number);
    QFETCH(QByteArray, bytes);
    const CVariant variant = fromRaw(bytes, number);
    QCOMPARE(int(variant.type()), number);
    QCOMPARE(heldBy(variant).userType(), int(QMetaType::QByteArray));
    QCOMPARE(heldBy(variant).toByteArray(), bytes);
}

void tst_variant_raw_data::byteArraysTakeAllBytes_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("E_2DF32F32, one pair and a byte") << 24 << QByteArray(9, '\x01');
    QTest::newRow("E_2DF32F32, three pairs") << 24 << QByteArray(24, '\x01');
    QTest::newRow("E_BYTEARRAY, one byte") << 25 << QByteArray(1, '\0');
    QTest::newRow("E_BYTEARRAY, 100000 bytes") << 25 << QByteArray(100000, '\xFF');
}

void tst_variant_raw_data::byteArraysTakeAllBytes()
{
    QFETCH(int, number);
    QFETCH(QByteArray, bytes);
    const CVariant variant = fromRaw(bytes, number);
    QCOMPARE(int(variant.type()), number);
    QCOMPARE(heldBy(variant).userType(), int(QMetaType::QByteArray));
    QCOMPARE(heldBy(variant).toByteArray(), bytes);
}

void tst_variant_raw_data::charBecomesAUtf16Char_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("unit");
    QTest::newRow("A") << fromHex("41") << 0x41;
    QTest::newRow("0") << fromHex("00") << 0;
    QTest::newRow("E4 is zero-extended") << fromHex("E4") << 0xE4;
    QTest::newRow("FF is zero-extended") << fromHex("FF") << 0xFF;
    QTest::newRow("the first byte only") << fromHex("41FF") << 0x41;
}

void tst_variant_raw_data::charBecomesAUtf16Char()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, unit);
    const CVariant variant = fromRaw(bytes, NTypes::E_CHAR);
    QCOMPARE(variant.type(), NTypes::E_UTF16CHAR);
    QCOMPARE(heldBy(variant).userType(), int(QMetaType::QChar));
    QCOMPARE(int(heldBy(variant).toChar().unicode()), unit);
}

void tst_variant_raw_data::qVariantIsStoredUnchecked_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("number");
    QTest::newRow("number of its type") << QVariant(5) << 6;
    QTest::newRow("number of another type") << QVariant(5) << 14;
    QTest::newRow("text as a number") << QVariant(QStringLiteral("5")) << 5;
    QTest::newRow("list as a version") << QVariant(QVariantList{1, 2}) << 21;
    QTest::newRow("nothing") << QVariant() << 8;
    QTest::newRow("without a type") << QVariant(5) << 0;
    QTest::newRow("the gap 11") << QVariant(5) << 11;
    QTest::newRow("outside the catalogue") << QVariant(5) << 40;
    QTest::newRow("negative") << QVariant(5) << -7;
}

void tst_variant_raw_data::qVariantIsStoredUnchecked()
{
    QFETCH(QVariant, value);
    QFETCH(int, number);
    CVariant variant(CString32(QStringLiteral("before")));
    CVariant &result = variant.setRawData(value, typeOf(number));
    QCOMPARE(&result, &variant);
    QCOMPARE(int(variant.type()), number);
    QCOMPARE(heldBy(variant).userType(), value.userType());
    QVERIFY(heldBy(variant) == value);
}

QTEST_GUILESS_MAIN(tst_variant_raw_data)

#include "tst_variant_raw_data.moc"
