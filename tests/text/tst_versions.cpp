// SPDX-License-Identifier: MIT
#include <CStr.h>

#include <CVariant.h>
#include <LoggedTest.h>
#include <ScopedLocale.h>

#include <QTest>

#include <climits>
#include <cstring>

namespace {

constexpr quint32 untouched = 0xA1B2C3D4U;

NTypes::uVersion_t versionOf(quint32 value)
{
    NTypes::uVersion_t version{};
    version.value = value;
    return version;
}

// What each parser of three parts makes of a text; `untouched` where it writes nothing.
struct Parsed
{
    bool record;
    bool word;
    quint32 recordValue;
    quint32 wordValue;
};

Parsed parsed(const QString &text)
{
    NTypes::uVersion_t record = versionOf(untouched);
    NTypes::uVersion_t word = versionOf(untouched);
    const bool isRecord = CStr::stringToVersion(text, record.version);
    const bool isWord = CStr::stringToVersion(text, word);
    return {isRecord, isWord, record.value, word.value};
}

} // namespace

// Runs under a locale with other digits and separators, which no version may notice.
class tst_versions : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void paddedTexts_data();
    void paddedTexts();
    void widthMayBeLarge();
    void plainTexts_data();
    void plainTexts();
    void plainTextIsThatOfTheTypedValue();
    void fourPartTexts_data();
    void fourPartTexts();

    void threeParts_data();
    void threeParts();
    void fourParts_data();
    void fourParts();
    void twoOrThreePartsWithFlag_data();
    void twoOrThreePartsWithFlag();
    void flagMayBeNull();
    void everyTextReadsBack_data();
    void everyTextReadsBack();

    void hexCodes_data();
    void hexCodes();
    void textsThatAreNoHexCode_data();
    void textsThatAreNoHexCode();
    void otherFormsOfHexCodes_data();
    void otherFormsOfHexCodes();

private:
    ScopedLocale mLocale{QLocale(QLocale::Arabic, QLocale::Egypt)};
};

void tst_versions::paddedTexts_data()
{
    QTest::addColumn<quint32>("value");
    QTest::addColumn<int>("majorWidth");
    QTest::addColumn<int>("minorWidth");
    QTest::addColumn<int>("buildWidth");
    QTest::addColumn<QString>("text");

    QTest::newRow("2, 2, 4") << 0x01020003U << 2 << 2 << 4 << QStringLiteral("01.02.0003");
    QTest::newRow("0, 0, 0") << 0x01020003U << 0 << 0 << 0 << QStringLiteral("1.2.3");
    QTest::newRow("1, 1, 1") << 0x01020003U << 1 << 1 << 1 << QStringLiteral("1.2.3");
    QTest::newRow("each part has its own width") << 0x01020003U << 1 << 2 << 3 << QStringLiteral("1.02.003");
    QTest::newRow("3, 0, 0") << 0x01020003U << 3 << 0 << 0 << QStringLiteral("001.2.3");
    QTest::newRow("0, 3, 0") << 0x01020003U << 0 << 3 << 0 << QStringLiteral("1.002.3");
    QTest::newRow("zero") << 0U << 2 << 2 << 4 << QStringLiteral("00.00.0000");
    QTest::newRow("zero without width") << 0U << 0 << 0 << 0 << QStringLiteral("0.0.0");
    QTest::newRow("largest, widths reached") << 0xFFFFFFFFU << 3 << 3 << 5 << QStringLiteral("255.255.65535");
    QTest::newRow("wider than the widths") << 0xFFFFFFFFU << 2 << 1 << 4 << QStringLiteral("255.255.65535");
    QTest::newRow("wide") << 0x01020003U << 8 << 6 << 10 << QStringLiteral("00000001.000002.0000000003");
    // Zeros behind a number would make it another one.
    QTest::newRow("negative widths are none") << 0x01020003U << -2 << -3 << -4 << QStringLiteral("1.2.3");
    QTest::newRow("most negative width") << 0x01020003U << INT_MIN << 2 << 2 << QStringLiteral("1.02.03");
}

void tst_versions::paddedTexts()
{
    QFETCH(quint32, value);
    QFETCH(int, majorWidth);
    QFETCH(int, minorWidth);
    QFETCH(int, buildWidth);
    QTEST(CStr::versionToStr(value, majorWidth, minorWidth, buildWidth), "text");
}

void tst_versions::widthMayBeLarge()
{
    const QString text = CStr::versionToStr(0x01020003U, 100000, 0, 0);
    QCOMPARE(text, QString(99999, QLatin1Char('0')) + QStringLiteral("1.2.3"));
}

void tst_versions::plainTexts_data()
{
    QTest::addColumn<quint32>("value");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shortText");

    QTest::newRow("1.2.3") << 0x01020003U << QStringLiteral("1.2.3") << QStringLiteral("1.2");
    QTest::newRow("0.0.0") << 0U << QStringLiteral("0.0.0") << QStringLiteral("0.0");
    QTest::newRow("build only") << 0x0000FFFFU << QStringLiteral("0.0.65535") << QStringLiteral("0.0");
    QTest::newRow("minor only") << 0x00FF0000U << QStringLiteral("0.255.0") << QStringLiteral("0.255");
    QTest::newRow("major only") << 0xFF000000U << QStringLiteral("255.0.0") << QStringLiteral("255.0");
    QTest::newRow("largest") << 0xFFFFFFFFU << QStringLiteral("255.255.65535") << QStringLiteral("255.255");
    QTest::newRow("build above a byte") << 0x0102012CU << QStringLiteral("1.2.300") << QStringLiteral("1.2");
}

void tst_versions::plainTexts()
{
    QFETCH(quint32, value);
    QFETCH(QString, text);
    QFETCH(QString, shortText);
    QCOMPARE(CStr::versionToStr(value), text);
    QCOMPARE(CStr::versionToStr(versionOf(value)), text);
    QCOMPARE(CStr::versionToShortStr(value), shortText);
    QCOMPARE(CStr::versionToShortStr(versionOf(value)), shortText);
}

void tst_versions::plainTextIsThatOfTheTypedValue()
{
    for (const quint32 value : {0U, 0x01020003U, 0xFFFFFFFFU})
        QCOMPARE(CStr::versionToStr(value), CVariant(versionOf(value)).toStr());
}

void tst_versions::fourPartTexts_data()
{
    QTest::addColumn<QByteArray>("bytes"); // byte 0 first
    QTest::addColumn<QString>("text");

    QTest::newRow("byte 3 first") << QByteArray("\x04\x03\x02\x01", 4) << QStringLiteral("1.2.3.4");
    QTest::newRow("zero") << QByteArray(4, '\0') << QStringLiteral("0.0.0.0");
    QTest::newRow("largest") << QByteArray(4, '\xFF') << QStringLiteral("255.255.255.255");
    QTest::newRow("no padding") << QByteArray("\x0A\x00\x64\x07", 4) << QStringLiteral("7.100.0.10");
}

void tst_versions::fourPartTexts()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    NTypes::sVersion4x8_t version{};
    std::memcpy(&version, bytes.constData(), sizeof version);
    QCOMPARE(CStr::versionToStr(version), text);
    NTypes::sVersion4x8_t readBack{};
    QVERIFY(CStr::stringToVersion(text, readBack));
    QVERIFY(readBack == version);
}

void tst_versions::threeParts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<quint32>("value");

    const auto fails = [](const char *name, const char *text) {
        QTest::newRow(name) << QString::fromUtf8(text) << false << untouched;
    };
    QTest::newRow("1.2.3") << QStringLiteral("1.2.3") << true << 0x01020003U;
    QTest::newRow("zero") << QStringLiteral("0.0.0") << true << 0U;
    QTest::newRow("largest") << QStringLiteral("255.255.65535") << true << 0xFFFFFFFFU;
    QTest::newRow("leading zeros are decimal") << QStringLiteral("010.011.0012") << true << 0x0A0B000CU;
    QTest::newRow("blanks around the numbers") << QStringLiteral(" 1 . 2 .\t3\n") << true << 0x01020003U;
    QTest::newRow("plus") << QStringLiteral("+1.+2.+3") << true << 0x01020003U;
    fails("major too large", "256.1.1");
    fails("minor too large", "1.256.1");
    fails("build too large", "1.1.65536");
    fails("beyond 32 bits", "1.1.4294967297");
    fails("negative", "-1.1.1");
    fails("major is no number", "x.1.1");
    fails("minor is no number", "1.x.1");
    fails("build is no number", "1.1.x");
    fails("hexadecimal", "0x1.1.1");
    fails("empty major", ".1.1");
    fails("empty minor", "1..1");
    fails("empty build", "1.1.");
    fails("one part", "1");
    fails("two parts", "1.2");
    fails("four parts", "1.2.3.4");
    fails("four parts, the last empty", "1.2.3.");
    fails("four parts, an inner one empty", "1..2.3");
    fails("empty", "");
    fails("points only", "..");
    fails("comma", "1,2,3");
    fails("V in front", "V1.2.3");
    fails("digits of another script", "\u0661.\u0662.\u0663");
}

void tst_versions::threeParts()
{
    QFETCH(QString, text);
    QFETCH(bool, ok);
    QFETCH(quint32, value);
    const Parsed result = parsed(text);
    QCOMPARE(result.record, ok);
    QCOMPARE(result.word, ok);
    QCOMPARE(result.recordValue, value);
    QCOMPARE(result.wordValue, value);
}

void tst_versions::fourParts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<quint32>("value"); // first part in the highest byte

    const auto fails = [](const char *name, const char *text) {
        QTest::newRow(name) << QString::fromUtf8(text) << false << untouched;
    };
    QTest::newRow("1.2.3.4") << QStringLiteral("1.2.3.4") << true << 0x01020304U;
    QTest::newRow("largest") << QStringLiteral("255.255.255.255") << true << 0xFFFFFFFFU;
    QTest::newRow("zero") << QStringLiteral("0.0.0.0") << true << 0U;
    QTest::newRow("leading zeros are decimal") << QStringLiteral("010.011.012.0013") << true << 0x0A0B0C0DU;
    fails("hexadecimal", "1.1.1.0x1");
    fails("first too large", "256.1.1.1");
    fails("second too large", "1.256.1.1");
    fails("third too large", "1.1.256.1");
    fails("fourth too large", "1.1.1.256");
    fails("empty part", "1.1..1");
    fails("no number", "1.1.1.x");
    fails("negative", "1.1.1.-1");
    fails("three parts", "1.2.3");
    fails("five parts", "1.2.3.4.5");
    fails("five parts, the last empty", "1.2.3.4.");
    fails("five parts, an inner one empty", "1.2..3.4");
    fails("empty", "");
}

void tst_versions::fourParts()
{
    QFETCH(QString, text);
    NTypes::sVersion4x8_t version{};
    const quint32 before = untouched;
    std::memcpy(&version, &before, sizeof version);
    QTEST(CStr::stringToVersion(text, version), "ok");
    quint32 after = 0;
    std::memcpy(&after, &version, sizeof after);
    QTEST(after, "value");
}

void tst_versions::twoOrThreePartsWithFlag_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<quint32>("value");

    QTest::newRow("two parts") << QStringLiteral("1.2") << true << 0x01020000U;
    QTest::newRow("three parts") << QStringLiteral("1.2.3") << true << 0x01020003U;
    QTest::newRow("largest two") << QStringLiteral("255.255") << true << 0xFFFF0000U;
    QTest::newRow("largest three") << QStringLiteral("255.255.65535") << true << 0xFFFFFFFFU;
    QTest::newRow("leading zeros are decimal") << QStringLiteral("010.011.0012") << true << 0x0A0B000CU;
    QTest::newRow("four parts") << QStringLiteral("1.2.3.4") << false << 0U;
    QTest::newRow("four parts, the last empty") << QStringLiteral("1.2.3.") << false << 0U;
    QTest::newRow("one part") << QStringLiteral("1") << false << 0U;
    QTest::newRow("empty") << QString() << false << 0U;
    QTest::newRow("major too large") << QStringLiteral("256.1.1") << false << 0U;
    QTest::newRow("stops at major") << QStringLiteral("x.2.3") << false << 0U;
    QTest::newRow("stops at major of two") << QStringLiteral("x.2") << false << 0U;
    QTest::newRow("hexadecimal") << QStringLiteral("1.0x2.3") << false << 0x01000000U;
    QTest::newRow("stops at minor") << QStringLiteral("1.256.3") << false << 0x01000000U;
    QTest::newRow("stops at minor of two") << QStringLiteral("1.x") << false << 0x01000000U;
    QTest::newRow("stops at build") << QStringLiteral("1.2.65536") << false << 0x01020000U;
    QTest::newRow("empty build") << QStringLiteral("1.2.") << false << 0x01020000U;
    QTest::newRow("empty minor") << QStringLiteral("1.") << false << 0x01000000U;
}

void tst_versions::twoOrThreePartsWithFlag()
{
    QFETCH(QString, text);
    QFETCH(bool, ok);
    bool flag = !ok;
    QTEST(CStr::stringToVersion(text, &flag).value, "value");
    QCOMPARE(flag, ok);
}

void tst_versions::flagMayBeNull()
{
    QCOMPARE(CStr::stringToVersion(QStringLiteral("1.2"), nullptr).value, 0x01020000U);
    QCOMPARE(CStr::stringToVersion(QStringLiteral("1"), nullptr).value, 0U);
    QCOMPARE(CStr::stringToVersion(QStringLiteral("1.2.3")).value, 0x01020003U);
}

void tst_versions::everyTextReadsBack_data()
{
    plainTexts_data();
}

void tst_versions::everyTextReadsBack()
{
    QFETCH(quint32, value);
    QFETCH(QString, text);
    bool ok = false;
    QCOMPARE(CStr::stringToVersion(text, &ok).value, value);
    QVERIFY(ok);
    QCOMPARE(parsed(CStr::versionToStr(value, 3, 3, 5)).wordValue, value);
    QCOMPARE(CStr::stringToVersion(CStr::versionToShortStr(value), &ok).value, value & 0xFFFF0000U);
    QVERIFY(ok);
}

void tst_versions::hexCodes_data()
{
    QTest::addColumn<quint32>("value");
    QTest::addColumn<QString>("text");

    QTest::newRow("upper case") << 0x00ab12cdU << QStringLiteral("0x00AB12CD");
    QTest::newRow("zero") << 0U << QStringLiteral("0x00000000");
    QTest::newRow("one") << 1U << QStringLiteral("0x00000001");
    QTest::newRow("largest") << 0xFFFFFFFFU << QStringLiteral("0xFFFFFFFF");
    QTest::newRow("every letter") << 0xABCDEF10U << QStringLiteral("0xABCDEF10");
}

void tst_versions::hexCodes()
{
    QFETCH(quint32, value);
    QFETCH(QString, text);
    QCOMPARE(CStr::identCodeToHexCode(versionOf(value)), text);
    QCOMPARE(CStr::hexCodeToIdentCode(text).value, value);
}

void tst_versions::textsThatAreNoHexCode_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("empty") << QString();
    QTest::newRow("prefix only") << QStringLiteral("0x");
    QTest::newRow("no digit") << QStringLiteral("0x12G4");
    QTest::newRow("nine digits") << QStringLiteral("0x100000000");
    QTest::newRow("negative") << QStringLiteral("-1");
    QTest::newRow("two numbers") << QStringLiteral("12 34");
    QTest::newRow("hash") << QStringLiteral("#12");
}

void tst_versions::textsThatAreNoHexCode()
{
    QFETCH(QString, text);
    QCOMPARE(CStr::hexCodeToIdentCode(text).value, 0U);
}

void tst_versions::otherFormsOfHexCodes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<quint32>("value");

    QTest::newRow("without prefix") << QStringLiteral("AB12CD") << 0x00AB12CDU;
    QTest::newRow("lower case") << QStringLiteral("0xab12cd") << 0x00AB12CDU;
    QTest::newRow("prefix in upper case") << QStringLiteral("0XAB12CD") << 0x00AB12CDU;
    QTest::newRow("digits only are hexadecimal") << QStringLiteral("10") << 16U;
    QTest::newRow("blanks around") << QStringLiteral(" 0x1F ") << 31U;
}

void tst_versions::otherFormsOfHexCodes()
{
    QFETCH(QString, text);
    QTEST(CStr::hexCodeToIdentCode(text).value, "value");
}

QTEST_GUILESS_MAIN(tst_versions)
#include "tst_versions.moc"
