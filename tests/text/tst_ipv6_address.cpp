// SPDX-License-Identifier: MIT
#include <CIPv6Address.h>

#include <LoggedTest.h>
#include <StreamForm.h>

#include <QDebug>
#include <QTest>

#include <array>
#include <type_traits>

static_assert(std::has_virtual_destructor<CIPv6Address>::value, "made to be derived from");
static_assert(sizeof(CIPv6Address) == sizeof(void *) + 16, "held by value");

namespace {

QByteArray hex(const char *digits)
{
    return QByteArray::fromHex(digits);
}

const QByteArray zero = hex("00000000000000000000000000000000");
const QByteArray counted = hex("000102030405060708090A0B0C0D0E0F");
const QString countedText = QStringLiteral("100:302:504:706:908:b0a:d0c:f0e");

QString warningOf(const QString &text)
{
    return QStringLiteral("CIPv6Address::setAddress() : ") + text + QStringLiteral(" is not a IPv6-Address.");
}

} // namespace

class tst_ipv6_address : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void isZeroByDefault();
    void copiesAreIndependent();
    void takesBytes();
    void nullPointerChangesNothing();
    void ownBytesChangeNothing();
    void takesByteArrays_data();
    void takesByteArrays();
    void takesVariants_data();
    void takesVariants();
    void takesTexts_data();
    void takesTexts();
    void compressedAndShortTextsPassAndChangeNothing_data();
    void compressedAndShortTextsPassAndChangeNothing();
    void emptyGroupsKeepTheirBytes_data();
    void emptyGroupsKeepTheirBytes();
    void otherTextsClearAndWarn_data();
    void otherTextsClearAndWarn();
    void longTextsAreRefusedAtOnce();
    void textForm_data();
    void textForm();
    void convertsToTextBytesAndVariant();
    void subscript();
    void comparesAllBytes();
    void clears();
    void streamForm_data();
    void streamForm();
    void shortStreams();
    void debugForm();
    void exampleOfTheClassComment();
};

void tst_ipv6_address::isZeroByDefault()
{
    const CIPv6Address address;
    QCOMPARE(address.byteArray(), zero);
    QCOMPARE(address.str(), QStringLiteral("0:0:0:0:0:0:0:0"));
}

void tst_ipv6_address::copiesAreIndependent()
{
    const CIPv6Address original(counted);
    CIPv6Address constructed(original);
    CIPv6Address assigned;
    CIPv6Address &result = (assigned = original);
    QCOMPARE(&result, &assigned);
    QCOMPARE(constructed.byteArray(), counted);
    QCOMPARE(assigned.byteArray(), counted);
    const CIPv6Address &alias = assigned;
    assigned = alias;
    QCOMPARE(assigned.byteArray(), counted);

    constructed.clear();
    assigned[0] = 0xFF;
    QCOMPARE(original.byteArray(), counted);
}

void tst_ipv6_address::takesBytes()
{
    // Of just 16, so that a longer read is seen.
    std::array<unsigned char, 16> bytes{};
    std::copy(counted.cbegin(), counted.cend(), bytes.begin());
    CIPv6Address constructed(bytes.data());
    QCOMPARE(constructed.byteArray(), counted);
    CIPv6Address set;
    set.setAddress(bytes.data());
    QCOMPARE(set.byteArray(), counted);

    const std::array<unsigned char, 16> constant{0xFF, 0x01};
    set.setAddress(constant.data());
    QCOMPARE(set.byteArray(), hex("FF010000000000000000000000000000"));
    QCOMPARE(constructed.byteArray(), counted);
}

void tst_ipv6_address::nullPointerChangesNothing()
{
    unsigned char *const none = nullptr;
    QCOMPARE(CIPv6Address(none).byteArray(), zero);
    QCOMPARE(CIPv6Address(nullptr).byteArray(), zero);
    CIPv6Address address(counted);
    address.setAddress(none);
    QCOMPARE(address.byteArray(), counted);
}

void tst_ipv6_address::ownBytesChangeNothing()
{
    CIPv6Address address(counted);
    address.setAddress(&address[0]);
    QCOMPARE(address.byteArray(), counted);
}

void tst_ipv6_address::takesByteArrays_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("taken");

    QTest::newRow("16 bytes") << hex("80FE0000000000000000000000000100") << true;
    QTest::newRow("16 zero bytes") << zero << true;
    QTest::newRow("16 characters") << QByteArray("0:0:0:0:0:0:0:0:") << true;
    QTest::newRow("null") << QByteArray() << false;
    QTest::newRow("empty") << QByteArray("") << false;
    QTest::newRow("1 byte") << hex("80") << false;
    QTest::newRow("15 bytes") << hex("80FE00000000000000000000000001") << false;
    QTest::newRow("17 bytes") << hex("80FE000000000000000000000000010000") << false;
    QTest::newRow("16 bytes twice") << counted + counted << false;
}

void tst_ipv6_address::takesByteArrays()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, taken);

    // A wrong size starts from zero and leaves alone what is there.
    QCOMPARE(CIPv6Address(bytes).byteArray(), taken ? bytes : zero);
    QCOMPARE(CIPv6Address(QVariant(bytes)).byteArray(), taken ? bytes : zero);

    const QByteArray expected = taken ? bytes : counted;
    CIPv6Address address(counted);
    address.setAddress(bytes);
    QCOMPARE(address.byteArray(), expected);
    CIPv6Address fromVariant(counted);
    fromVariant.setAddress(QVariant(bytes));
    QCOMPARE(fromVariant.byteArray(), expected);
    CIPv6Address assigned(counted);
    CIPv6Address &result = (assigned = QVariant(bytes));
    QCOMPARE(&result, &assigned);
    QCOMPARE(assigned.byteArray(), expected);
}

void tst_ipv6_address::takesVariants_data()
{
    QTest::addColumn<QVariant>("variant");

    QTest::newRow("invalid") << QVariant();
    QTest::newRow("text of an address") << QVariant(QStringLiteral("1:2:3:4:5:6:7:8"));
    QTest::newRow("text of no address") << QVariant(QStringLiteral("1.2.3.4"));
    QTest::newRow("number") << QVariant(16);
    QTest::newRow("list") << QVariant(QVariantList{counted});
    QTest::newRow("null of type text") << QVariant(QVariant::String);
}

void tst_ipv6_address::takesVariants()
{
    QFETCH(QVariant, variant);

    QCOMPARE(CIPv6Address(variant).byteArray(), zero);
    CIPv6Address address(counted);
    address.setAddress(variant);
    QCOMPARE(address.byteArray(), zero);
    CIPv6Address assigned(counted);
    assigned = variant;
    QCOMPARE(assigned.byteArray(), zero);

    // A null byte array is an array of another size.
    assigned.setAddress(counted);
    assigned = QVariant(QVariant::ByteArray);
    QCOMPARE(assigned.byteArray(), counted);
}

void tst_ipv6_address::takesTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("back");

    const auto row = [](const char *name, const char *text, const char *bytes, const char *back) {
        QTest::newRow(name) << QString::fromLatin1(text) << hex(bytes) << QString::fromLatin1(back);
    };
    row("link-local", "fe80:0:0:0:0:0:0:1", "80FE0000000000000000000000000100", "fe80:0:0:0:0:0:0:1");
    row("upper case and zeros", "FE80:0000:0000:0000:0000:0000:0000:0001", "80FE0000000000000000000000000100",
        "fe80:0:0:0:0:0:0:1");
    row("zero", "0:0:0:0:0:0:0:0", "00000000000000000000000000000000", "0:0:0:0:0:0:0:0");
    row("all bits", "ffff:FFFF:fFfF:ffff:ffff:ffff:ffff:ffff", "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF",
        "ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff");
    row("groups in order", "1:2:3:4:5:6:7:8", "01000200030004000500060007000800", "1:2:3:4:5:6:7:8");
    row("every digit", "0123:4567:89ab:cdef:CDEF:89AB:10:1", "23016745AB89EFCDEFCDAB8910000100",
        "123:4567:89ab:cdef:cdef:89ab:10:1");
    row("low byte first", "1:20:300:4000:12:345:6789:abcd",
        "010020000003004012004503"
        "8967CDAB",
        "1:20:300:4000:12:345:6789:abcd");
}

void tst_ipv6_address::takesTexts()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, back);

    CIPv6Address address(counted);
    QVERIFY(address.setAddress(text));
    QCOMPARE(address.byteArray(), bytes);
    QCOMPARE(address.str(), back);
    QCOMPARE(CIPv6Address(text).byteArray(), bytes);
    CIPv6Address assigned(counted);
    CIPv6Address &result = (assigned = text);
    QCOMPARE(&result, &assigned);
    QCOMPARE(assigned.byteArray(), bytes);
}

void tst_ipv6_address::compressedAndShortTextsPassAndChangeNothing_data()
{
    QTest::addColumn<QString>("text");

    for (const char *text : {"::1", "::", ":", "0", "1", "ffff", "1:2", "fe80::1", "1:2:3:4:5:6:7", "1::8",
                             "::1:2:3:4:5:6:7", "::::::::", "::2:3:4:5:6:7:"})
        QTest::newRow(text) << QString::fromLatin1(text);
}

void tst_ipv6_address::compressedAndShortTextsPassAndChangeNothing()
{
    QFETCH(QString, text);

    CIPv6Address address(counted);
    QVERIFY(address.setAddress(text));
    QCOMPARE(address.byteArray(), counted);
    address = text;
    QCOMPARE(address.byteArray(), counted);
    QCOMPARE(CIPv6Address(text).byteArray(), zero);
}

void tst_ipv6_address::emptyGroupsKeepTheirBytes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes"); // over 00 01 ... 0F

    const auto row = [](const char *text, const char *bytes) {
        QTest::newRow(text) << QString::fromLatin1(text) << hex(bytes);
    };
    row("1::2:3:4:5:6:7", "01000203"
                          "020003000400050006000700");
    row("1:2:3:4:5:6:7:", "0100020003000400050006000700"
                          "0E0F");
    row("ffff:::::::", "FFFF02030405060708090A0B0C0D0E0F");
    row("::2:3:4:5:6:7", "00010203"
                         "020003000400050006000700");
    row(":::::::", "000102030405060708090A0B0C0D0E0F");
    row("1:::4:5::7:8", "0100"
                        "02030405"
                        "04000500"
                        "0A0B"
                        "07000800");
}

void tst_ipv6_address::emptyGroupsKeepTheirBytes()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, bytes);

    CIPv6Address address(counted);
    QVERIFY(address.setAddress(text));
    QCOMPARE(address.byteArray(), bytes);
}

void tst_ipv6_address::otherTextsClearAndWarn_data()
{
    QTest::addColumn<QString>("text");

    const auto row = [](const char *name, const QString &text) { QTest::newRow(name) << text; };
    for (const char *text : {"1.2.3.4",
                             "1:2:3:4:5:6:7:8:9",
                             "1:2:3:4:5:6:7::",
                             ":::::::::",
                             "12345:2:3:4:5:6:7:8",
                             "1:2:3:4:5:6:7:00008",
                             "g:2:3:4:5:6:7:8",
                             "1:2:3:4:5:6:7:g",
                             ":1",
                             ":1:2:3:4:5:6:7",
                             "0x1:2:3:4:5:6:7:8",
                             "-1:2:3:4:5:6:7:8",
                             "+1:2:3:4:5:6:7:8",
                             "fe80::1%eth0",
                             "::1/64",
                             "[::1]",
                             "::ffff:1.2.3.4",
                             "localhost",
                             " 1:2:3:4:5:6:7:8",
                             "1:2:3:4:5:6:7:8 ",
                             "1: 2:3:4:5:6:7:8"})
        row(text, QString::fromLatin1(text));
    row("null", QString());
    row("empty", QLatin1String(""));
    row("trailing line feed", QStringLiteral("1:2:3:4:5:6:7:8\n"));
    row("leading line feed", QStringLiteral("\n1:2:3:4:5:6:7:8"));
    row("second line", QStringLiteral("x\n1:2:3:4:5:6:7:8"));
    row("Arabic digit", QStringLiteral("1:2:3:4:5:6:7:") + QChar(0x0668));
    row("full-width digit", QStringLiteral("1:2:3:4:5:6:7:") + QChar(0xFF18));
    row("full-width colon", QStringLiteral("1:2:3:4:5:6:7") + QChar(0xFF1A) + QLatin1Char('8'));
    row("printf formats", QStringLiteral("%s%n%d%100000c%%"));
    row("place markers", QStringLiteral("%1 %2 %L1 %99"));
    row("NUL", QStringLiteral("1:2:3:4:5:6:7:8") + QChar(0) + QLatin1Char('x'));
    row("half of a surrogate pair", QStringLiteral("1:2:3:4:5:6:7:") + QChar(0xD83D));
    row("any plane", QStringLiteral("\u00E4 \u4E2D ") + QString::fromUtf8("\xF0\x9F\x98\x80"));
}

void tst_ipv6_address::otherTextsClearAndWarn()
{
    QFETCH(QString, text);
    const QStringList expected = {warningOf(text)};

    CIPv6Address address(counted);
    QVERIFY(!address.setAddress(text));
    QCOMPARE(takeLog(), expected);
    QCOMPARE(address.byteArray(), zero);

    CIPv6Address assigned(counted);
    assigned = text;
    QCOMPARE(takeLog(), expected);
    QCOMPARE(assigned.byteArray(), zero);

    QCOMPARE(CIPv6Address(text).byteArray(), zero);
    QCOMPARE(takeLog(), expected);
}

void tst_ipv6_address::longTextsAreRefusedAtOnce()
{
    for (const QString &text : {QString(1000000, QLatin1Char('f')), QString(1000000, QLatin1Char(':')),
                                QStringLiteral("1:").repeated(500000)}) {
        CIPv6Address address(counted);
        QVERIFY(!address.setAddress(text));
        QCOMPARE(address.byteArray(), zero);
        QCOMPARE(takeLog(), QStringList{warningOf(text)});
    }
}

void tst_ipv6_address::textForm_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");

    QTest::newRow("zero") << zero << QStringLiteral("0:0:0:0:0:0:0:0");
    QTest::newRow("low byte first") << counted << countedText;
    QTest::newRow("no leading zeros")
        << hex("01001000000100100F00F000000F00F0") << QStringLiteral("1:10:100:1000:f:f0:f00:f000");
    QTest::newRow("all bits") << QByteArray(16, '\xFF')
                              << QStringLiteral("ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff");
}

void tst_ipv6_address::textForm()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);

    const CIPv6Address address(bytes);
    QCOMPARE(address.str(), text);
    CIPv6Address back;
    QVERIFY(back.setAddress(address.str()));
    QCOMPARE(back.byteArray(), bytes);
}

void tst_ipv6_address::convertsToTextBytesAndVariant()
{
    const CIPv6Address address(counted);
    const QString text = address;
    QCOMPARE(text, countedText);
    const QVariant variant = address;
    QCOMPARE(variant.userType(), int(QMetaType::QByteArray));
    QCOMPARE(variant.toByteArray(), counted);
    QCOMPARE(CIPv6Address(variant).byteArray(), counted);
}

void tst_ipv6_address::subscript()
{
    CIPv6Address address(counted);
    const CIPv6Address &constant = address;
    for (int i = 0; i < 16; ++i) {
        QCOMPARE(int(constant[i]), i);
        address[i] = static_cast<unsigned char>(0xF0 + i);
    }
    QCOMPARE(address.byteArray(), hex("F0F1F2F3F4F5F6F7F8F9FAFBFCFDFEFF"));
}

void tst_ipv6_address::comparesAllBytes()
{
    const CIPv6Address address(counted);
    QVERIFY(address == CIPv6Address(counted));
    QVERIFY(!(address != CIPv6Address(counted)));
    for (int i = 0; i < 16; ++i) {
        CIPv6Address other(address);
        other[i] ^= 0x80;
        QVERIFY(!(address == other));
        QVERIFY(address != other);
    }
}

void tst_ipv6_address::clears()
{
    CIPv6Address address(counted);
    address.clear();
    QCOMPARE(address.byteArray(), zero);
    QVERIFY(address == CIPv6Address());
}

void tst_ipv6_address::streamForm_data()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<QDataStream::ByteOrder>("order");

    for (const int version : {int(QDataStream::Qt_1_0), int(QDataStream::Qt_4_0), int(QDataStream::Qt_4_6),
                              int(QDataStream::Qt_5_0), int(QDataStream::Qt_5_15)}) {
        QTest::addRow("version %d, big-endian", version) << version << QDataStream::BigEndian;
        QTest::addRow("version %d, little-endian", version) << version << QDataStream::LittleEndian;
    }
}

void tst_ipv6_address::streamForm()
{
    QFETCH(int, version);
    QFETCH(QDataStream::ByteOrder, order);

    CIPv6Address address;
    for (int i = 0; i < 16; ++i)
        address[i] = static_cast<unsigned char>(17 * i);
    const QByteArray golden = hex("00112233445566778899AABBCCDDEEFF");
    QCOMPARE(streamed(address, order, version), golden);

    CIPv6Address back(counted);
    QByteArray rest;
    QCOMPARE(readFrom(golden + "rest", back, order, version, &rest), QDataStream::Ok);
    QCOMPARE(back.byteArray(), golden);
    QCOMPARE(rest, QByteArray("rest"));
}

void tst_ipv6_address::shortStreams()
{
    const QByteArray golden = hex("00112233445566778899AABBCCDDEEFF");
    for (int size = 0; size < golden.size(); ++size) {
        CIPv6Address address(counted);
        QCOMPARE(readFrom(golden.left(size), address), QDataStream::ReadPastEnd);
        QCOMPARE(address.byteArray(), golden.left(size) + QByteArray(16 - size, '\0'));
    }
}

void tst_ipv6_address::debugForm()
{
    const CIPv6Address address(hex("80FE0000000000000000000000000100"));
    QString quoted;
    QDebug(&quoted) << address;
    QCOMPARE(quoted.trimmed(), QStringLiteral("\"CIPv6Address(fe80:0:0:0:0:0:0:1)\""));
    QString plain;
    QDebug(&plain).noquote() << CIPv6Address();
    QCOMPARE(plain.trimmed(), QStringLiteral("CIPv6Address(0:0:0:0:0:0:0:0)"));

    // The stream's own settings are back afterwards.
    QString spaced;
    QDebug(&spaced).space() << 1 << address << 2 << 3;
    QCOMPARE(spaced.trimmed(), QStringLiteral("1 \"CIPv6Address(fe80:0:0:0:0:0:0:1)\" 2 3"));
    QString tight;
    QDebug(&tight).noquote().nospace() << Qt::hex << 255 << address << 255;
    QCOMPARE(tight, QStringLiteral("ffCIPv6Address(fe80:0:0:0:0:0:0:1)ff"));
}

void tst_ipv6_address::exampleOfTheClassComment()
{
    const CIPv6Address address(QStringLiteral("FE80:0000:0:0:0:0:0:0001"));
    QCOMPARE(address.byteArray().toHex(), QByteArray("80fe0000000000000000000000000100"));
    QCOMPARE(address.str(), QStringLiteral("fe80:0:0:0:0:0:0:1"));
}

QTEST_GUILESS_MAIN(tst_ipv6_address)
#include "tst_ipv6_address.moc"
