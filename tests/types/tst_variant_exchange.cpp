// SPDX-License-Identifier: MIT
#include "VariantSamples.h"

#include <LoggedTest.h>

#include <QCborValue>
#include <QDate>
#include <QTest>
#include <QUrl>

using namespace VariantSamples;

namespace {

bool isEmpty(const CVariant &value)
{
    return value.type() == NTypes::E_UNKNOWN && !heldBy(value).isValid();
}

// The three ways from a QVariant to a value whose type is deduced.
QVector<CVariant> deduced(const QVariant &value)
{
    CVariant assigned(5);
    assigned = value;
    CVariant fromEmpty;
    fromEmpty = value;
    return {CVariant(value), assigned, fromEmpty};
}

QStringList threeTimes(const QString &line)
{
    return {line, line, line};
}

template<typename Record>
QVariant record(const char *bytes)
{
    return QVariant::fromValue(recordOf<Record>(fromHex(bytes)));
}

QVariant textOf(const char *text)
{
    return QString::fromUtf8(text);
}

void addColumns()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("target");
    QTest::addColumn<int>("tag");
    QTest::addColumn<QVariant>("expected");
}

// A row whose result has the target's own tag, and one that has another.
void row(const char *name, const QVariant &value, int target, const QVariant &expected)
{
    QTest::newRow((tagName(target) + " of " + name).constData()) << value << target << target << expected;
}

void row(const char *name, const QVariant &value, int target, int tag, const QVariant &expected)
{
    QTest::newRow((tagName(target) + " of " + name).constData()) << value << target << tag << expected;
}

} // namespace

// Exchange with QVariant.
class tst_variant_exchange : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void deducedTypes_data();
    void deducedTypes();
    void deducedTypesOfTexts_data();
    void deducedTypesOfTexts();
    void deducedTypesOfBytes_data();
    void deducedTypesOfBytes();
    void typesWithoutATag_data();
    void typesWithoutATag();
    void everySampleReturnsFromItsQVariant_data();
    void everySampleReturnsFromItsQVariant();
    void fixedStringsAsQVariants();
    void numbers_data();
    void numbers();
    void texts_data();
    void texts();
    void records_data();
    void records();
    void bytes_data();
    void bytes();
    void deliberatelyOtherTypes_data();
    void deliberatelyOtherTypes();
    void bytesOfAWrongLength_data();
    void bytesOfAWrongLength();
    void unknownTypeIsSilent();
    void unsupportedTypes_data();
    void unsupportedTypes();
    void memberFormUsesTheOwnType();
    void uncheckedStorage();

private:
    static void checkRow();
};

void tst_variant_exchange::deducedTypes_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("tag");
    QTest::addColumn<QVariant>("expected");
    const auto same = [](const char *name, const QVariant &value, int tag) {
        QTest::newRow(name) << value << tag << value;
    };
    same("int", QVariant(-5), 6);
    same("unsigned int", QVariant(UINT_MAX), 5);
    same("qlonglong", QVariant(LLONG_MIN), 9);
    same("qulonglong", QVariant(ULLONG_MAX), 8);
    same("double", QVariant(-2.5), 10);
    same("float", QVariant(2.5F), 7);
    same("unsigned char", QVariant::fromValue<unsigned char>(200), 1);
    same("signed char", QVariant::fromValue<signed char>(-5), 2);
    same("unsigned short", QVariant::fromValue<unsigned short>(60000), 3);
    same("short", QVariant::fromValue<short>(-5), 4);
    same("QChar", QVariant(QChar(0x20AC)), 19);
    QTest::newRow("long") << QVariant::fromValue<long>(-5) << 6 << QVariant(-5);
    QTest::newRow("unsigned long") << QVariant::fromValue<unsigned long>(4294967295UL) << 5
                                   << QVariant(UINT_MAX);
    QTest::newRow("char") << QVariant::fromValue<char>('x') << 20 << QVariant(QByteArray("x"));
    if constexpr (sizeof(long) == 8) {
        const qint64 word = 0x100000005;
        QTest::newRow("long of 64 bits is cut")
            << QVariant::fromValue(static_cast<long>(word)) << 6 << QVariant(5);
        QTest::newRow("unsigned long of 64 bits is cut")
            << QVariant::fromValue(static_cast<unsigned long>(word)) << 5 << QVariant(5U);
    }
    same("fixed string of 32", heldBy(typedSample(12)), 12);
    same("fixed string of 64", heldBy(typedSample(17)), 17);
    same("fixed string of 128", heldBy(typedSample(14)), 14);
    same("date-time record", heldBy(typedSample(16)), 16);
    same("version", heldBy(typedSample(21)), 21);
    same("address", heldBy(typedSample(22)), 22);
    same("command", heldBy(typedSample(23)), 23);
    same("acceleration record", heldBy(typedSample(26)), 26);
    same("array of short", heldBy(typedSample(27)), 27);
    same("array of int", heldBy(typedSample(28)), 28);
    same("array of unsigned short", heldBy(typedSample(30)), 30);
    same("array of unsigned int, also of digital I/O", heldBy(typedSample(29)), 31);
    same("four-part version", heldBy(typedSample(32)), 32);
}

void tst_variant_exchange::deducedTypes()
{
    QFETCH(const QVariant, value);
    QFETCH(const int, tag);
    QFETCH(const QVariant, expected);
    const QVector<CVariant> made = deduced(value);
    for (const CVariant &variant : made) {
        QCOMPARE(static_cast<int>(variant.type()), tag);
        QCOMPARE(heldBy(variant).userType(), expected.userType());
        QCOMPARE(streamed(heldBy(variant)).toHex(), streamed(expected).toHex());
    }
}

// The length chooses the type; a text of 33 to 63 characters is nevertheless cut to the field of 32.
void tst_variant_exchange::deducedTypesOfTexts_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("tag");
    QTest::addColumn<int>("kept");
    QTest::newRow("empty") << 0 << 12 << 0;
    QTest::newRow("one") << 1 << 12 << 1;
    QTest::newRow("full field of 32") << 32 << 12 << 32;
    QTest::newRow("33 are cut") << 33 << 12 << 32;
    QTest::newRow("63 are cut") << 63 << 12 << 32;
    QTest::newRow("64") << 64 << 17 << 64;
    QTest::newRow("65 are cut") << 65 << 17 << 64;
    QTest::newRow("127 are cut") << 127 << 17 << 64;
    QTest::newRow("128") << 128 << 14 << 128;
    QTest::newRow("1000 are cut") << 1000 << 14 << 128;
}

void tst_variant_exchange::deducedTypesOfTexts()
{
    QFETCH(const int, length);
    QFETCH(const int, tag);
    QFETCH(const int, kept);
    const QString text(length, QLatin1Char('x'));
    QVector<CVariant> made = deduced(QVariant(text));
    made.append(CVariant(text));
    CVariant assigned;
    assigned = text;
    made.append(assigned);
    for (const CVariant &variant : qAsConst(made)) {
        QCOMPARE(static_cast<int>(variant.type()), tag);
        QCOMPARE(variant.toStr(), text.left(kept));
    }
}

void tst_variant_exchange::deducedTypesOfBytes_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("tag");
    for (const int length : {0, 1, 63, 65, 127, 129, 255, 257, 1000})
        QTest::newRow((QByteArray::number(length) + " bytes").constData()) << length << 25;
    QTest::newRow("64 bytes of UTF-16") << 64 << 12;
    QTest::newRow("128 bytes of UTF-16") << 128 << 17;
    QTest::newRow("256 bytes of UTF-16") << 256 << 14;
}

void tst_variant_exchange::deducedTypesOfBytes()
{
    QFETCH(const int, length);
    QFETCH(const int, tag);
    const QByteArray bytes = fromHex("41004200").repeated(length / 4 + 1).left(length);
    QVector<CVariant> made = deduced(QVariant(bytes));
    made.append(CVariant(bytes));
    CVariant assigned;
    assigned = bytes;
    made.append(assigned);
    for (const CVariant &variant : qAsConst(made)) {
        QCOMPARE(static_cast<int>(variant.type()), tag);
        QCOMPARE(variant.toByteArray(), bytes);
        if (tag == NTypes::E_BYTEARRAY)
            QCOMPARE(heldBy(variant).userType(), static_cast<int>(QMetaType::QByteArray));
        else
            QCOMPARE(variant.toStr(), QStringLiteral("AB").repeated(length / 4));
    }
}

void tst_variant_exchange::typesWithoutATag_data()
{
    QTest::addColumn<QVariant>("value");
    const QVector<int> tagged = {
        QMetaType::Int,   QMetaType::UInt,    QMetaType::LongLong,   QMetaType::ULongLong, QMetaType::Double,
        QMetaType::QChar, QMetaType::QString, QMetaType::QByteArray, QMetaType::Long,      QMetaType::Short,
        QMetaType::Char,  QMetaType::ULong,   QMetaType::UShort,     QMetaType::UChar,     QMetaType::Float,
        QMetaType::SChar, QMetaType::Void,    QMetaType::UnknownType};
    for (int type = QMetaType::FirstCoreType; type <= QMetaType::LastCoreType; ++type) {
        if (!tagged.contains(type) && QMetaType::isRegistered(type))
            QTest::newRow(QMetaType::typeName(type)) << QVariant(type, nullptr);
    }
    QTest::newRow("nothing") << QVariant();
    QTest::newRow("true") << QVariant(true);
    QTest::newRow("list with a number") << QVariant(QVariantList{5});
    QTest::newRow("date-time of Qt") << QVariant(QDateTime(QDate(2021, 3, 4), QTime(5, 6, 7)));
    QTest::newRow("locator") << QVariant(QUrl(QStringLiteral("opc.tcp://axis")));
}

void tst_variant_exchange::typesWithoutATag()
{
    QFETCH(const QVariant, value);
    const QVector<CVariant> made = deduced(value);
    QCOMPARE(withoutLineNumbers(takeLog()),
             threeTimes(QStringLiteral(
                            "CVariant::operator =(const QVariant&) : userType() %1 is not supported in this "
                            "method. Line N")
                            .arg(value.userType())));
    for (const CVariant &variant : made)
        QVERIFY(isEmpty(variant));
}

void tst_variant_exchange::everySampleReturnsFromItsQVariant_data()
{
    QTest::addColumn<int>("tag");
    for (const int tag : valueTags)
        QTest::newRow(tagName(tag).constData()) << tag;
}

void tst_variant_exchange::everySampleReturnsFromItsQVariant()
{
    QFETCH(const int, tag);
    const CVariant value = typedSample(tag);
    const QVariant carried = value;
    const CVariant returned(carried, typeOf(tag));
    QCOMPARE(static_cast<int>(returned.type()), tag == NTypes::E_DS402_DIO_ARRAY ? 31 : tag);
    QCOMPARE(returned.toStr(), value.toStr());
}

void tst_variant_exchange::fixedStringsAsQVariants()
{
    CString32 string32(QStringLiteral("abcdef"));
    string32 = QStringLiteral("abc");
    const QVariant variant32 = string32;
    QCOMPARE(variant32.userType(), qMetaTypeId<CString32>());
    QVERIFY(variant32.value<CString32>() == string32);
    const QVariant variant64 = CString64(QStringLiteral("abc"));
    QVERIFY(variant64.value<CString64>() == CString64(QStringLiteral("abc")));
    const QVariant variant128 = CString128(QStringLiteral("abc"));
    QVERIFY(variant128.value<CString128>() == CString128(QStringLiteral("abc")));
}

void tst_variant_exchange::checkRow()
{
    QFETCH(const QVariant, value);
    QFETCH(const int, target);
    QFETCH(const int, tag);
    QFETCH(const QVariant, expected);
    for (const CVariant &made :
         {CVariant::fromVariant(value, typeOf(target)), CVariant(value, typeOf(target))}) {
        QCOMPARE(static_cast<int>(made.type()), tag);
        QCOMPARE(heldBy(made).userType(), expected.userType());
        QCOMPARE(streamed(heldBy(made)).toHex(), streamed(expected).toHex());
    }
}

void tst_variant_exchange::numbers_data()
{
    addColumns();
    row("300", 300, 1, QVariant::fromValue<unsigned char>(44));
    row("300", 300, 2, QVariant::fromValue<signed char>(44));
    row("-1", -1, 3, QVariant::fromValue<unsigned short>(65535));
    row("70000", 70000, 4, QVariant::fromValue<short>(4464));
    row("-1", -1, 5, QVariant(UINT_MAX));
    row("E_U32 word", QVariant(0xDEADBEEFU), 6, QVariant(static_cast<int>(0xDEADBEEFU)));
    row("text", textOf("12"), 3, QVariant::fromValue<unsigned short>(12));
    row("text of no number", textOf("twelve"), 3, QVariant::fromValue<unsigned short>(0));
    row("byte array of digits", QByteArray("12"), 6, QVariant(12));
    row("2.9, which QVariant rounds", 2.9, 6, QVariant(3));
    row("nothing", QVariant(), 1, QVariant::fromValue<unsigned char>(0));
    row("record", record<NTypes::sCommand_t>("01000000"), 5, QVariant(0U));
    row("double", 0.1, 7, QVariant(0.1F));
    row("int", -3, 7, QVariant(-3.0F));
    row("int", -1, 8, QVariant(ULLONG_MAX));
    row("text", textOf("-5"), 9, QVariant(-5LL));
    row("qulonglong", ULLONG_MAX, 9, QVariant(-1LL));
    row("float", 0.5F, 10, QVariant(0.5));
    row("text", textOf("2.5"), 10, QVariant(2.5));
    row("text of no number", textOf("two"), 10, QVariant(0.0));
}

void tst_variant_exchange::numbers()
{
    checkRow();
}

void tst_variant_exchange::texts_data()
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
    row("text", textOf("50 \u20AC"), 12, string32("50 \u20AC"));
    row("text", textOf("50 \u20AC"), 17, string64("50 \u20AC"));
    row("text", textOf("50 \u20AC"), 14, string128("50 \u20AC"));
    row("bytes of UTF-16", fromHex("41004200"), 12, string32("AB"));
    row("too many bytes", QByteArray(66, 'a'), 12, string32(""));
    row("too many bytes", QByteArray(130, 'a'), 17, string64(""));
    row("too many bytes", QByteArray(258, 'a'), 14, string128(""));
    row("its own string", string32("abc"), 12, string32("abc"));
    row("shorter string", string32("abc"), 17, string64("abc"));
    row("shorter string", string32("abc"), 14, string128("abc"));
    row("middle string", string64("abc"), 14, string128("abc"));
    row("longer string", string64("abc"), 12, string32(""));
    row("longer string", string128("abc"), 17, string64(""));
    row("int", 5, 12, string32(""));
    row("text", textOf("Axis 1"), 13, textOf("Axis 1"));
    row("long text", QString(300, u'x'), 13, QString(64, u'x'));
    row("long text", QString(300, u'x'), 18, QString(128, u'x'));
    row("long text", QString(300, u'x'), 15, QString(256, u'x'));
    row("int", -5, 18, textOf("-5"));
    row("byte array", QByteArray("Axis"), 15, textOf("Axis"));
    row("text", textOf("Axis"), 20, QByteArray("A"));
    row("int", 75, 20, QByteArray("7"));
    row("character", QChar(0x20AC), 19, QChar(0x20AC));
    row("int, as QVariant makes it a character", 0x20AC, 19, QChar(0x20AC));
    row("record", record<NTypes::sCommand_t>("41000000"), 19, QChar(0));
}

void tst_variant_exchange::texts()
{
    checkRow();
}

void tst_variant_exchange::records_data()
{
    addColumns();
    using namespace NTypes;
    row("text", textOf("2021-03-04T05:06:07.890"), 16, heldBy(typedSample(16)));
    row("bytes", sampleBytes(16), 16, heldBy(typedSample(16)));
    row("record", heldBy(typedSample(16)), 16, heldBy(typedSample(16)));
    row("date-time of Qt", QDateTime(QDate(2021, 3, 4), QTime(5, 6, 7, 890)), 16, heldBy(typedSample(16)));
    row("int", 5, 16, record<sDateTime_t>(""));
    row("nothing", QVariant(), 16, record<sDateTime_t>(""));
    row("text", textOf("2.5.300"), 21, heldBy(typedSample(21)));
    row("bytes", sampleBytes(21), 21, heldBy(typedSample(21)));
    row("record", heldBy(typedSample(21)), 21, heldBy(typedSample(21)));
    row("unsigned int, no number of a version", 0x0205012CU, 21, record<sVersion_t>(""));
    row("other record", heldBy(typedSample(22)), 21, record<sVersion_t>(""));
    row("text", textOf("192.168.1.10"), 22, heldBy(typedSample(22)));
    row("bytes", sampleBytes(22), 22, heldBy(typedSample(22)));
    row("record", heldBy(typedSample(22)), 22, heldBy(typedSample(22)));
    row("int", 5, 22, record<uIPv4HAddr_t>(""));
    row("record", heldBy(typedSample(23)), 23, heldBy(typedSample(23)));
    row("text, which is not parsed", textOf("5"), 23, record<sCommand_t>(""));
    row("bytes, which are not read", sampleBytes(23), 23, record<sCommand_t>(""));
    row("qlonglong", 5LL, 23, record<sCommand_t>(""));
    row("text", textOf("1.2.3.4"), 32, heldBy(typedSample(32)));
    row("bytes", sampleBytes(32), 32, heldBy(typedSample(32)));
    row("record", heldBy(typedSample(32)), 32, heldBy(typedSample(32)));
    row("int", 5, 32, record<sVersion4_t>(""));
    for (const int tag : {26, 27, 28, 30, 31}) {
        row("bytes", sampleBytes(tag), tag, heldBy(typedSample(tag)));
        row("more bytes", QByteArray(sampleBytes(tag) + "ab"), tag, heldBy(typedSample(tag)));
        row("too few bytes", sampleBytes(tag).chopped(1), tag, QVariant());
        row("record", heldBy(typedSample(tag)), tag, heldBy(typedSample(tag)));
        const QByteArray zero(static_cast<int>(CDataTypeParser::typeSize(typeOf(tag))), '\0');
        row("int", 5, tag,
            heldBy(CVariant::fromRawData(zero.constData(), static_cast<unsigned>(zero.size()), typeOf(tag))));
    }
    // Qt claims to convert these to anything, and writes nothing.
    const QVariant simple = QVariant::fromValue(QCborSimpleType::True);
    for (const int tag : {16, 21, 22, 23, 26, 27, 28, 30, 31, 32}) {
        const QByteArray zero(static_cast<int>(CDataTypeParser::typeSize(typeOf(tag))), '\0');
        row("simple CBOR value", simple, tag,
            heldBy(CVariant::fromRawData(zero.constData(), static_cast<unsigned>(zero.size()), typeOf(tag))));
    }
    row("other array", heldBy(typedSample(30)), 27, record<sDs402Array_t<short>>(""));
    row("bytes", sampleBytes(29), 29, heldBy(typedSample(29)));
}

void tst_variant_exchange::records()
{
    checkRow();
}

void tst_variant_exchange::bytes_data()
{
    addColumns();
    for (const int target : {24, 25}) {
        row("bytes of any length", fromHex("010203"), target, fromHex("010203"));
        row("text", textOf("50 \u20AC"), target, QByteArray("50 \xE2\x82\xAC"));
        row("int", -5, target, QByteArray("-5"));
        row("record, which has none", heldBy(typedSample(26)), target, QByteArray());
    }
}

void tst_variant_exchange::bytes()
{
    checkRow();
}

void tst_variant_exchange::deliberatelyOtherTypes_data()
{
    addColumns();
    row("long", QVariant::fromValue<long>(-1), 16, 5, QVariant(UINT_MAX));
    row("unsigned long", QVariant::fromValue<unsigned long>(7), 16, 5, QVariant(7U));
    if constexpr (sizeof(long) == 8) {
        const qulonglong word = 0x100000005ULL;
        row("unsigned long of 64 bits", QVariant::fromValue(static_cast<unsigned long>(word)), 16, 5,
            QVariant(5U));
        row("long of 64 bits", QVariant::fromValue(static_cast<long>(word)), 16, 5, QVariant(5U));
    }
    row("int", -1, 23, 5, QVariant(UINT_MAX));
    row("unsigned int", 7U, 23, 5, QVariant(7U));
    row("array of unsigned int", heldBy(typedSample(31)), 29, 31, heldBy(typedSample(31)));
    row("int", 5, 29, 31, record<NTypes::sDs402Array_t<unsigned int>>(""));
    row("qlonglong", 5LL, 32, 8, QVariant(5ULL));
    row("negative qlonglong", -1LL, 32, 8, QVariant(4294967295ULL));
    row("qulonglong, cut to 32 bits", 0x100000005ULL, 32, 8, QVariant(5ULL));
}

void tst_variant_exchange::deliberatelyOtherTypes()
{
    checkRow();
}

void tst_variant_exchange::bytesOfAWrongLength_data()
{
    QTest::addColumn<int>("target");
    QTest::addColumn<int>("size");
    QTest::newRow("E_DATETIME") << 16 << 8;
    QTest::newRow("E_VERSION") << 21 << 4;
    QTest::newRow("E_IPV4ADDR") << 22 << 4;
    QTest::newRow("E_VERSION_4") << 32 << 8;
}

void tst_variant_exchange::bytesOfAWrongLength()
{
    QFETCH(const int, target);
    QFETCH(const int, size);
    const QString start =
        QStringLiteral("CVariant::fromByteArray() : Conversion to data type '%1 (%2)' failed")
            .arg(QString::number(target), CDataTypeParser::typeToStr(typeOf(target)));
    for (const int length : {size - 1, size + 1}) {
        QVERIFY(isEmpty(CVariant::fromVariant(QByteArray(length, 'a'), typeOf(target))));
        QCOMPARE(withoutLineNumbers(takeLog()), QStringList{start + QStringLiteral(". Line N.")});
    }
    QVERIFY(isEmpty(CVariant::fromVariant(QByteArray(""), typeOf(target))));
    QCOMPARE(withoutLineNumbers(takeLog()), QStringList{start + QStringLiteral(", no data. Line N.")});
}

void tst_variant_exchange::unknownTypeIsSilent()
{
    QVERIFY(isEmpty(CVariant::fromVariant(5, NTypes::E_UNKNOWN)));
    QVERIFY(isEmpty(CVariant(QVariant(5), NTypes::E_UNKNOWN)));
    QCOMPARE(takeLog(), QStringList());
}

void tst_variant_exchange::unsupportedTypes_data()
{
    QTest::addColumn<int>("type");
    for (const int type : strayTags)
        QTest::newRow(tagName(type).constData()) << type;
}

void tst_variant_exchange::unsupportedTypes()
{
    QFETCH(const int, type);
    const QStringList warning = {
        QStringLiteral("CVariant::fromVariant : Data type %1 (UNKNOWN) is not supported in this method.")
            .arg(type)};
    QVERIFY(isEmpty(CVariant::fromVariant(5, typeOf(type))));
    QCOMPARE(takeLog(), warning);
    QVERIFY(isEmpty(CVariant(QVariant(5), typeOf(type))));
    QCOMPARE(takeLog(), warning);
    CVariant member = tagged(5, type);
    member.fromVariant(QVariant(5));
    QCOMPARE(takeLog(), warning);
    QVERIFY(isEmpty(member));
}

void tst_variant_exchange::memberFormUsesTheOwnType()
{
    CVariant value(static_cast<unsigned char>(5));
    CVariant &returned = value.fromVariant(QVariant(300));
    QCOMPARE(&returned, &value);
    QCOMPARE(value.type(), NTypes::E_U8);
    QCOMPARE(value.toU8(), static_cast<unsigned char>(44));
    CVariant command(NTypes::E_COMMAND);
    command.fromVariant(QVariant(7));
    QCOMPARE(command.type(), NTypes::E_U32);
    QCOMPARE(command.toU32(), 7U);
    CVariant empty;
    empty.fromVariant(QVariant(7));
    QVERIFY(isEmpty(empty));
}

void tst_variant_exchange::uncheckedStorage()
{
    CVariant value(5);
    CVariant &returned = value.setRawData(QVariant(QStringLiteral("text")), NTypes::E_F32);
    QCOMPARE(&returned, &value);
    QCOMPARE(value.type(), NTypes::E_F32);
    QCOMPARE(heldBy(value), QVariant(QStringLiteral("text")));
    value.setRawData(QVariant(7), typeOf(INT_MIN));
    QCOMPARE(static_cast<int>(value.type()), INT_MIN);
    QCOMPARE(heldBy(value), QVariant(7));
}

QTEST_GUILESS_MAIN(tst_variant_exchange)
#include "tst_variant_exchange.moc"
