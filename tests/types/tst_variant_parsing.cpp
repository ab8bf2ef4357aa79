// SPDX-License-Identifier: MIT
#include "ParsingCases.h"
#include "VariantSamples.h"

#include <LoggedTest.h>
#include <ScopedTimeZone.h>

#include <QTest>

#include <cmath>

using namespace ParsingCases;
using namespace VariantSamples;

namespace {

template<typename Record>
void record(const char *text, int type, const char *bytes, bool ok = true)
{
    newRow(text, type) << ok << QVariant::fromValue(recordOf<Record>(fromHex(bytes)));
}

// A random value of the type whose text parses back to the same text.
CVariant randomValue(int tag, QRandomGenerator &generator)
{
    const QByteArray bits = randomBytes(8, generator);
    switch (tag) {
    case NTypes::E_F32: {
        const auto value = recordOf<float>(bits);
        return CVariant(std::fpclassify(value) == FP_SUBNORMAL ? 0.0F : value); // has fewer than six digits
    }
    case NTypes::E_F64: {
        const auto value = recordOf<double>(bits);
        return CVariant(std::fpclassify(value) == FP_SUBNORMAL ? 0.0 : value);
    }
    case NTypes::E_STRING32:
        return CVariant(CString32(randomText(32, 0xD7FF, generator)));
    case NTypes::E_STRING64:
        return CVariant(CString64(randomText(64, 0xD7FF, generator)));
    case NTypes::E_STRING128:
        return CVariant(CString128(randomText(128, 0xD7FF, generator)));
    case NTypes::E_CHARSTR64:
    case NTypes::E_CHARSTR128:
    case NTypes::E_CHARSTR256:
        return CVariant::fromStr(randomText(300, 0xFF, generator), typeOf(tag));
    case NTypes::E_UTF16CHAR:
        return CVariant(QChar(static_cast<ushort>(generator.bounded(1, 0x10000))));
    case NTypes::E_CHAR:
        return CVariant(static_cast<char>(generator.bounded(1, 128)));
    case NTypes::E_DATETIME: {
        const QDateTime dateTime = QDateTime::fromSecsSinceEpoch(generator.bounded(1 << 30), Qt::UTC);
        return CVariant(dateTime.addYears(generator.bounded(5000)));
    }
    case NTypes::E_VERSION: {
        auto version = recordOf<NTypes::sVersion_t>(bits);
        version.build = static_cast<quint16>(version.build & 0x7FFF);
        return CVariant(version);
    }
    case NTypes::E_VERSION_4:
        return CVariant(
            recordOf<NTypes::sVersion4_t>(bytesOf(recordOf<quint64>(bits) & 0x7FFF7FFF7FFF7FFFU)));
    case NTypes::E_2DF32F32:
        return tagged(randomBytes(8 * generator.bounded(1, 4), generator), tag);
    case NTypes::E_BYTEARRAY:
        return bytesValue(randomBytes(generator.bounded(1, 40), generator));
    default: {
        const QByteArray bytes =
            randomBytes(static_cast<int>(CDataTypeParser::typeSize(typeOf(tag))), generator);
        return CVariant::fromRawData(bytes.constData(), static_cast<unsigned int>(bytes.size()), typeOf(tag));
    }
    }
}

} // namespace

// Texts into values.
class tst_variant_parsing : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void texts_data();
    void texts();
    void emptyTextIsNotNull_data();
    void emptyTextIsNotNull();
    void dateTimes_data();
    void dateTimes();
    void versions_data();
    void versions();
    void addressesAndCommands_data();
    void addressesAndCommands();
    void bytes_data();
    void bytes();
    void bytesThatGiveNoValue_data();
    void bytesThatGiveNoValue();
    void unknownTypeLeavesTheFlag();
    void unsupportedTypes_data();
    void unsupportedTypes();
    void flagMayBeNull_data();
    void flagMayBeNull();
    void memberFormUsesTheOwnType_data();
    void memberFormUsesTheOwnType();
    void memberFormFallsBackToTheDefault_data();
    void memberFormFallsBackToTheDefault();
    void memberFormOfAnUnknownType();
    void constructorsParse_data();
    void constructorsParse();
    void dateTimesIgnoreTheTimeZone();
    void textIsStable_data();
    void textIsStable();

private:
    static void checkRow();
};

void tst_variant_parsing::checkRow()
{
    QFETCH(const QString, text);
    QFETCH(const int, type);
    QFETCH(const bool, ok);
    QFETCH(const QVariant, value);
    for (const bool before : {false, true}) {
        bool written = before;
        const CVariant parsed = CVariant::fromStr(text, typeOf(type), &written);
        QCOMPARE(written, ok);
        const int tag = type == NTypes::E_COMMAND ? static_cast<int>(NTypes::E_U32) : type;
        QCOMPARE(static_cast<int>(parsed.type()), tag);
        QCOMPARE(heldBy(parsed).userType(), value.userType());
        QCOMPARE(streamed(heldBy(parsed)).toHex(), streamed(value).toHex());
    }
}

void tst_variant_parsing::texts_data()
{
    addColumns();
    const auto euro = QStringLiteral("50 \u20AC");
    newRow("50 \u20AC", 12) << true << QVariant::fromValue(CString32(euro));
    newRow("50 \u20AC", 17) << true << QVariant::fromValue(CString64(euro));
    newRow("50 \u20AC", 14) << true << QVariant::fromValue(CString128(euro));
    const QByteArray letters(300, 'x');
    newRow(letters.constData(), 12) << true << QVariant::fromValue(CString32(QString(32, u'x')));
    newRow(letters.constData(), 17) << true << QVariant::fromValue(CString64(QString(64, u'x')));
    newRow(letters.constData(), 14) << true << QVariant::fromValue(CString128(QString(128, u'x')));
    newRow("Axis", 13) << true << QVariant(QStringLiteral("Axis"));
    newRow(" Axis ", 18) << true << QVariant(QStringLiteral(" Axis "));
    newRow("Gr\u00FC\u00DFe", 15) << true << QVariant(QStringLiteral("Gr\u00FC\u00DFe"));
    newRow("50 \u20AC", 13, " is not Latin-1") << true << QVariant(QStringLiteral("50 ?"));
    newRow(letters.constData(), 13) << true << QVariant(QString(64, u'x'));
    newRow(letters.constData(), 18) << true << QVariant(QString(128, u'x'));
    newRow(letters.constData(), 15) << true << QVariant(QString(256, u'x'));
    QTest::newRow("E_CHARSTR64 up to the first zero")
        << QString::fromLatin1("ab\0cd", 5) << 13 << true << QVariant(QStringLiteral("ab"));
    newRow("\u20AC", 19) << true << QVariant(QChar(0x20AC));
    newRow("Axis", 19) << true << QVariant(QChar(u'A'));
    newRow("", 19) << true << QVariant(QChar(0));
    newRow("Axis", 20) << true << QVariant(QByteArray("A"));
    newRow("\u00FC", 20) << true << QVariant(QByteArray("\xFC"));
    newRow("\u20AC", 20) << true << QVariant(QByteArray("?"));
    newRow("", 20) << true << QVariant(QByteArray(1, '\0'));
}

void tst_variant_parsing::texts()
{
    checkRow();
}

void tst_variant_parsing::emptyTextIsNotNull_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("text");
    for (const int type : {13, 15, 18}) {
        QTest::addRow("empty, %d", type) << type << QString(QLatin1String(""));
        QTest::addRow("null, %d", type) << type << QString();
        QTest::addRow("cut at its first zero, %d", type) << type << QString(1, QChar(0));
    }
}

// An 8-bit string without characters is a value: it is not missing.
void tst_variant_parsing::emptyTextIsNotNull()
{
    QFETCH(const int, type);
    QFETCH(const QString, text);
    const CVariant parsed = CVariant::fromStr(text, typeOf(type));
    QVERIFY(!parsed.isNull());
    QVERIFY(parsed.toStr().isEmpty() && !parsed.toStr().isNull());
}

// A decimal integer is the record's 64-bit word, sign-extended from 32 bits; all else is an ISO date-time or
// all zero.
void tst_variant_parsing::dateTimes_data()
{
    addColumns();
    using Record = NTypes::sDateTime_t;
    record<Record>("0", 16, "0000000000000000");
    record<Record>("84281177", 16, "5907060500000000");
    record<Record>(" 7 ", 16, "0700000000000000");
    record<Record>("-1", 16, "FFFFFFFFFFFFFFFF");
    record<Record>("-2147483648", 16, "00000080FFFFFFFF");
    record<Record>("2147483647", 16, "FFFFFF7F00000000");
    record<Record>("2147483648", 16, "0000000000000000");
    record<Record>("0x10", 16, "0000000000000000");
    record<Record>("2021-03-04T05:06:07.899", 16, "590706050403E507");
    record<Record>("2021-03-04T05:06:07.009", 16, "000706050403E507");
    record<Record>("2021-03-04 05:06:07", 16, "000706050403E507");
    record<Record>("2021-03-04T05:06", 16, "000006050403E507");
    record<Record>("2021-03-04", 16, "000000000403E507");
    record<Record>("2021-03-04T05:06:07Z", 16, "000706050403E507");
    record<Record>("2021-03-04T05:06:07+02:00", 16, "000706050403E507");
    record<Record>("2021-03-04T24:00:00", 16, "000000000503E507");
    record<Record>("2024-02-29", 16, "000000001D02E807");
    record<Record>("2021-02-29", 16, "0000000000000000");
    record<Record>("2021-13-04T05:06:07", 16, "0000000000000000");
    record<Record>("2021-03-04T25:00:00", 16, "0000000000000000");
    record<Record>("0000-00-00 00:00:00", 16, "0000000000000000");
    record<Record>("04.03.2021", 16, "0000000000000000");
    record<Record>("yesterday", 16, "0000000000000000");
    record<Record>("", 16, "0000000000000000");
}

void tst_variant_parsing::dateTimes()
{
    checkRow();
}

// Each part is a signed 16-bit decimal number, cut to its field; what does not parse or is missing is 0.
void tst_variant_parsing::versions_data()
{
    addColumns();
    record<NTypes::sVersion_t>("1.2.300", 21, "2C010201");
    record<NTypes::sVersion_t>("2.5", 21, "00000502");
    record<NTypes::sVersion_t>("2", 21, "00000002");
    record<NTypes::sVersion_t>("", 21, "00000000");
    record<NTypes::sVersion_t>("1.2.3.4", 21, "03000201");
    record<NTypes::sVersion_t>("1..3", 21, "03000001");
    record<NTypes::sVersion_t>("-1.-2.-3", 21, "FDFFFEFF");
    record<NTypes::sVersion_t>("300.257.1", 21, "0100012C");
    record<NTypes::sVersion_t>("1.2.32767", 21, "FF7F0201");
    record<NTypes::sVersion_t>("1.2.32768", 21, "00000201");
    record<NTypes::sVersion_t>("1.2.65535", 21, "00000201");
    record<NTypes::sVersion_t>("0x1.2.3", 21, "03000200");
    record<NTypes::sVersion_t>(" 1 . 2 . 3 ", 21, "03000201");
    record<NTypes::sVersion_t>("a.b.c", 21, "00000000");
    record<NTypes::sVersion_t>("1,2,3", 21, "00000000");
    record<NTypes::sVersion_t>("010.2.3", 21, "0300020A");
    record<NTypes::sVersion4_t>("1.2.3.4", 32, "0400030002000100");
    record<NTypes::sVersion4_t>("1.2", 32, "0000000002000100");
    record<NTypes::sVersion4_t>("", 32, "0000000000000000");
    record<NTypes::sVersion4_t>("1.2.3.4.5", 32, "0400030002000100");
    record<NTypes::sVersion4_t>("-1.-2.-3.-4", 32, "FCFFFDFFFEFFFFFF");
    record<NTypes::sVersion4_t>("32767.32768.40000.65535", 32, "000000000000FF7F");
    record<NTypes::sVersion4_t>("a.2.c.4", 32, "0400000002000000");
}

void tst_variant_parsing::versions()
{
    checkRow();
}

// A command becomes an unsigned number.
void tst_variant_parsing::addressesAndCommands_data()
{
    addColumns();
    record<NTypes::uIPv4HAddr_t>("192.168.1.10", 22, "0A01A8C0");
    record<NTypes::uIPv4HAddr_t>("255.255.255.255", 22, "FFFFFFFF");
    record<NTypes::uIPv4HAddr_t>("::ffff:192.168.1.10", 22, "0A01A8C0");
    record<NTypes::uIPv4HAddr_t>("::1", 22, "00000000");
    record<NTypes::uIPv4HAddr_t>("256.1.1.1", 22, "00000000");
    record<NTypes::uIPv4HAddr_t>("spindle.example", 22, "00000000");
    record<NTypes::uIPv4HAddr_t>("", 22, "00000000");
    number<uint>("3735928559", 23, true, 0xDEADBEEFU);
    number<uint>("0xDEADBEEF", 23, true, 0xDEADBEEFU);
    number<uint>("-1", 23, false, 0);
    number<uint>("stop", 23, false, 0);
}

void tst_variant_parsing::addressesAndCommands()
{
    checkRow();
}

void tst_variant_parsing::bytes_data()
{
    addColumns();
    newRow("0102ff", 25) << true << QVariant(fromHex("0102FF"));
    newRow("01 02:FF", 25, " with separators") << true << QVariant(fromHex("0102FF"));
    newRow("1", 25) << true << QVariant(fromHex("01"));
    newRow("0000c03f000020c0", 24) << true << QVariant(sampleBytes(24));
    newRow("0000c03f000020c001", 24) << true << QVariant(sampleBytes(24) + '\1');
    record<NTypes::sDs402Record01_t>("02000020400300", 26, "02000020400300");
    record<NTypes::sDs402Array_t<short>>("0100feff0300", 27, "0100FEFF0300");
    record<NTypes::sDs402Array_t<short>>("0100feff030004", 27, "0100FEFF0300");
    record<NTypes::sDs402Array_t<int>>("01000000feffffff03000000", 28, "01000000FEFFFFFF03000000");
    record<NTypes::sDs402Array_t<unsigned int>>("0100000002000000ffffffff", 29, "0100000002000000FFFFFFFF");
    record<NTypes::sDs402Array_t<unsigned short>>("01000200ffff", 30, "01000200FFFF");
    record<NTypes::sDs402Array_t<unsigned int>>("0300000004000000feffffff", 31, "0300000004000000FEFFFFFF");
}

void tst_variant_parsing::bytes()
{
    checkRow();
}

void tst_variant_parsing::bytesThatGiveNoValue_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("type");
    newRow("", 25);
    newRow("xyz", 25);
    newRow("0000c03f000020", 24);
    newRow("020000204003", 26);
    newRow("0100feff03", 27);
    newRow("01000000feffffff030000", 28);
    newRow("0100000002000000ffffff", 29);
    newRow("01000200ff", 30);
    newRow("", 31);
}

void tst_variant_parsing::bytesThatGiveNoValue()
{
    QFETCH(const QString, text);
    QFETCH(const int, type);
    bool ok = true;
    const CVariant parsed = CVariant::fromStr(text, typeOf(type), &ok);
    QVERIFY(!ok);
    QVERIFY(parsed.isNull());
    QCOMPARE(static_cast<int>(parsed.type()), type);
}

void tst_variant_parsing::unknownTypeLeavesTheFlag()
{
    for (const bool before : {false, true}) {
        bool ok = before;
        const CVariant parsed = CVariant::fromStr(QStringLiteral("5"), NTypes::E_UNKNOWN, &ok);
        QCOMPARE(ok, before);
        QVERIFY(parsed.isNull());
        QCOMPARE(parsed.type(), NTypes::E_UNKNOWN);
    }
}

void tst_variant_parsing::unsupportedTypes_data()
{
    QTest::addColumn<int>("type");
    for (const int type : strayTags)
        QTest::newRow(tagName(type).constData()) << type;
}

void tst_variant_parsing::unsupportedTypes()
{
    QFETCH(const int, type);
    const QStringList warning = {
        QStringLiteral("CVariant::fromStr() : Data type '%1 (UNKNOWN)' is not supported.").arg(type)};
    bool ok = true;
    const CVariant parsed = CVariant::fromStr(QStringLiteral("5"), typeOf(type), &ok);
    QCOMPARE(takeLog(), warning);
    QVERIFY(!ok);
    QVERIFY(parsed.isNull());
    QCOMPARE(parsed.type(), NTypes::E_UNKNOWN);
    QCOMPARE(CVariant::fromStr(QString(), typeOf(type)).type(), NTypes::E_UNKNOWN);
    QCOMPARE(takeLog(), warning);
}

void tst_variant_parsing::flagMayBeNull_data()
{
    QTest::addColumn<int>("type");
    for (const int type : valueTags)
        QTest::newRow(tagName(type).constData()) << type;
}

void tst_variant_parsing::flagMayBeNull()
{
    QFETCH(const int, type);
    for (const char *const text : {"", "5", "0102030405060708090A0B0C", "x"}) {
        const QString content = QString::fromLatin1(text);
        QCOMPARE(CVariant::fromStr(content, typeOf(type), nullptr).toStr(),
                 CVariant::fromStr(content, typeOf(type)).toStr());
        CVariant value(typeOf(type));
        value.fromStr(content);
        value.fromStr(content, nullptr);
    }
}

void tst_variant_parsing::memberFormUsesTheOwnType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("text");
    QTest::newRow("E_U16") << 3 << QStringLiteral("300");
    QTest::newRow("E_F64") << 10 << QStringLiteral("-2.5");
    QTest::newRow("E_STRING64") << 17 << QStringLiteral("Axis 1");
    QTest::newRow("E_CHARSTR64") << 13 << QStringLiteral("Axis 1");
    QTest::newRow("E_DATETIME") << 16 << QStringLiteral("2021-03-04 05:06:07");
    QTest::newRow("E_VERSION") << 21 << QStringLiteral("1.2.300");
    QTest::newRow("E_IPV4ADDR") << 22 << QStringLiteral("10.0.0.1");
    QTest::newRow("E_BYTEARRAY") << 25 << QStringLiteral("0102");
    QTest::newRow("E_DS402_DIO_ARRAY") << 29 << QStringLiteral("0100000002000000ffffffff");
    QTest::newRow("E_VERSION_4") << 32 << QStringLiteral("1.2.3.4");
}

void tst_variant_parsing::memberFormUsesTheOwnType()
{
    QFETCH(const int, type);
    QFETCH(const QString, text);
    CVariant value(typeOf(type));
    bool ok = false;
    CVariant &returned = value.fromStr(text, &ok);
    QCOMPARE(&returned, &value);
    QVERIFY(ok);
    QCOMPARE(static_cast<int>(value.type()), type);
    QCOMPARE(value.toStr(), text);
}

void tst_variant_parsing::memberFormFallsBackToTheDefault_data()
{
    QTest::addColumn<int>("type");
    for (const int type : {26, 27, 28, 29, 30, 31})
        QTest::newRow(tagName(type).constData()) << type;
}

// The default of these types begins with a 2.
void tst_variant_parsing::memberFormFallsBackToTheDefault()
{
    QFETCH(const int, type);
    CVariant value = typedSample(type);
    bool ok = true;
    value.fromStr(QStringLiteral("0102"), &ok);
    QVERIFY(!ok);
    QCOMPARE(static_cast<int>(value.type()), type);
    QCOMPARE(value.toByteArray(), CVariant(typeOf(type)).toByteArray());
    QCOMPARE(static_cast<int>(value.toByteArray().at(0)), 2);
}

void tst_variant_parsing::memberFormOfAnUnknownType()
{
    CVariant empty;
    bool ok = true;
    empty.fromStr(QStringLiteral("5"), &ok);
    QVERIFY(ok);
    QVERIFY(empty.isNull());
    QCOMPARE(empty.type(), NTypes::E_UNKNOWN);
    CVariant stray = tagged(5, 11);
    stray.fromStr(QStringLiteral("5"), &ok);
    QVERIFY(!ok);
    QVERIFY(stray.isNull());
    QCOMPARE(takeLog(),
             QStringList{QStringLiteral("CVariant::fromStr() : Data type '11 (UNKNOWN)' is not supported.")});
}

// A text that gives no value makes the default of the type; a number that does not parse is 0.
void tst_variant_parsing::constructorsParse_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("newType");
    QTest::addColumn<QString>("expected");
    newRow("31", 3) << 3 << QStringLiteral("31");
    newRow("abc", 3) << 3 << QStringLiteral("0");
    newRow("0xDEADBEEF", 23) << 5 << QStringLiteral("3735928559");
    newRow("1.2.300", 21) << 21 << QStringLiteral("1.2.300");
    newRow("zz", 27) << 27 << QStringLiteral("020000000000");
    newRow("Axis", 13) << 13 << QStringLiteral("Axis");
    newRow("\u00FC", 12) << 12 << QStringLiteral("\u00FC");
}

void tst_variant_parsing::constructorsParse()
{
    QFETCH(const QString, text);
    QFETCH(const int, type);
    QFETCH(const int, newType);
    QFETCH(const QString, expected);
    const QByteArray utf8 = text.toUtf8();
    const QByteArray latin1 = text.toLatin1();
    const NTypes::eTypes_t tag = typeOf(type);
    for (const CVariant &value :
         {CVariant(text, tag), CVariant(utf8.constData(), tag), CVariant(QLatin1String(latin1), tag)}) {
        QCOMPARE(static_cast<int>(value.type()), newType);
        QCOMPARE(value.toStr(), expected);
    }
}

// The fields are taken as they stand, also those of a text that names another zone.
void tst_variant_parsing::dateTimesIgnoreTheTimeZone()
{
    const ScopedTimeZone india("IST-5:30");
    for (const char *const text :
         {"2021-03-04T05:06:07", "2021-03-04T05:06:07Z", "2021-03-04T05:06:07-08:00"}) {
        const CVariant parsed = CVariant::fromStr(QString::fromLatin1(text), NTypes::E_DATETIME);
        QCOMPARE(parsed.toByteArray().toHex(), QByteArray("000706050403e507"));
        QCOMPARE(parsed.toStr(), QStringLiteral("2021-03-04 05:06:07"));
    }
}

void tst_variant_parsing::textIsStable_data()
{
    QTest::addColumn<int>("tag");
    for (const int tag : valueTags)
        QTest::newRow(tagName(tag).constData()) << tag;
}

void tst_variant_parsing::textIsStable()
{
    QFETCH(const int, tag);
    QRandomGenerator generator(static_cast<quint32>(4711 + tag));
    for (int round = 0; round < 500; ++round) {
        const CVariant value = randomValue(tag, generator);
        QCOMPARE(static_cast<int>(value.type()), tag);
        const QString text = value.toStr();
        QVERIFY(!text.isEmpty() || tag == 12 || tag == 17 || tag == 14 || tag == 13 || tag == 15
                || tag == 18);
        bool ok = false;
        const CVariant parsed = CVariant::fromStr(text, typeOf(tag), &ok);
        QVERIFY2(ok, qPrintable(text));
        QCOMPARE(parsed.toStr(), text);
    }
}

QTEST_GUILESS_MAIN(tst_variant_parsing)
#include "tst_variant_parsing.moc"
