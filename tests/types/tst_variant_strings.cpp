// SPDX-License-Identifier: MIT
#include "VariantSamples.h"

#include <LoggedTest.h>

#include <QTest>

using namespace VariantSamples;

namespace {

// All forms of one fixed-string reader, which must agree; that of the unit array tells no flag.
template<typename FixedString, std::size_t N>
void checkForms(const CVariant &value, FixedString (CVariant::*returned)(bool *) const,
                bool (CVariant::*reference)(FixedString &) const,
                bool (CVariant::*units)(unsigned short *) const, const QString &text, bool flag)
{
    for (const bool before : {false, true}) {
        bool ok = before;
        QCOMPARE((value.*returned)(&ok).str(), text);
        QCOMPARE(ok, flag);
    }
    QCOMPARE((value.*returned)(nullptr).str(), text);
    FixedString string(QStringLiteral("before"));
    QCOMPARE((value.*reference)(string), flag);
    QCOMPARE(string.str(), text);
    QVERIFY(string == (value.*returned)(nullptr));
    QVERIFY(value.operator FixedString() == string);
    unsigned short field[N];
    std::fill_n(field, N, static_cast<unsigned short>(0xA5A5));
    QVERIFY((value.*units)(field));
    QCOMPARE(bytesOf(field), string.byteArray());
    QVERIFY(!(value.*units)(nullptr));
}

void check32(const CVariant &value, const QString &text, bool flag)
{
    checkForms<CString32, 32>(value, &CVariant::toString32, &CVariant::toString32, &CVariant::toString32,
                              text, flag);
}

void check64(const CVariant &value, const QString &text, bool flag)
{
    checkForms<CString64, 64>(value, &CVariant::toString64, &CVariant::toString64, &CVariant::toString64,
                              text, flag);
}

void check128(const CVariant &value, const QString &text, bool flag)
{
    checkForms<CString128, 128>(value, &CVariant::toString128, &CVariant::toString128, &CVariant::toString128,
                                text, flag);
}

// The three 8-bit string readers: the same bytes, cut to the field or followed by zeros.
void checkFields(const CVariant &value, const QByteArray &bytes, bool flag)
{
    const QByteArray padded = bytes + QByteArray(256, '\0');
    char field64[64];
    char field128[128];
    char field256[256];
    std::fill_n(field64, 64, '\xA5');
    std::fill_n(field128, 128, '\xA5');
    std::fill_n(field256, 256, '\xA5');
    QCOMPARE(value.toCharStr64(field64), flag);
    QCOMPARE(bytesOf(field64), padded.left(64));
    QCOMPARE(value.toCharStr128(field128), flag);
    QCOMPARE(bytesOf(field128), padded.left(128));
    QCOMPARE(value.toCharStr256(field256), flag);
    QCOMPARE(bytesOf(field256), padded.left(256));
}

void checkChar(const CVariant &value, char expected, bool flag)
{
    for (const bool before : {false, true}) {
        bool ok = before;
        QCOMPARE(value.toChar(&ok), expected);
        QCOMPARE(ok, flag);
    }
    QCOMPARE(value.toChar(), expected);
    QCOMPARE(value.operator char(), expected);
    char character = '\xA5';
    QCOMPARE(value.toChar(character), flag);
    QCOMPARE(character, expected);
}

void checkUnit(const CVariant &value, QChar expected, bool flag)
{
    for (const bool before : {false, true}) {
        bool ok = before;
        QCOMPARE(value.toUtf16Char(&ok), expected);
        QCOMPARE(ok, flag);
    }
    QCOMPARE(value.toUtf16Char(), expected);
    QCOMPARE(value.operator QChar(), expected);
    QChar character(0xA5A5);
    QCOMPARE(value.toUtf16Char(character), flag);
    QCOMPARE(character, expected);
}

void addValueColumns()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("tag");
}

QTestData &newRow(const char *name, const CVariant &value)
{
    return QTest::newRow(name) << heldBy(value) << static_cast<int>(value.type());
}

const QVector<int> &utf16Sources()
{
    static const QVector<int> sources = {12, 13, 14, 15, 17, 18, 19, 20, 25};
    return sources;
}

const QVector<int> &eightBitSources()
{
    static const QVector<int> sources = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 13, 15, 16, 18, 20, 21, 25, 32};
    return sources;
}

} // namespace

// The readers of texts and characters in all their forms.
class tst_variant_strings : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void fixedStrings_data();
    void fixedStrings();
    void ownFixedStringKeepsWhatIsBehindItsText();
    void otherFixedStringGivesItsTextOnly();
    void fixedStringsFromOtherTypesAreEmpty_data();
    void fixedStringsFromOtherTypesAreEmpty();
    void unitArraySucceedsForAnyValue();
    void eightBitStrings_data();
    void eightBitStrings();
    void eightBitStringsFromOtherTypesAreZero_data();
    void eightBitStringsFromOtherTypesAreZero();
    void characters_data();
    void characters();
    void noBytesAreNoCharacter();
    void utf16Characters_data();
    void utf16Characters();
    void utf16CharactersFromOtherTypesAreZero_data();
    void utf16CharactersFromOtherTypesAreZero();
};

void tst_variant_strings::fixedStrings_data()
{
    addValueColumns();
    QTest::addColumn<QString>("text");
    const QString letters(200, QLatin1Char('x'));
    newRow("E_STRING32", CVariant(CString32(QStringLiteral("Spindle \u20AC"))))
        << QStringLiteral("Spindle \u20AC");
    newRow("E_STRING64", CVariant(CString64(QStringLiteral("Spindle")))) << QStringLiteral("Spindle");
    newRow("E_STRING128", CVariant(CString128(QStringLiteral("Spindle")))) << QStringLiteral("Spindle");
    newRow("full E_STRING32", CVariant(CString32(letters))) << letters.left(32);
    newRow("full E_STRING64", CVariant(CString64(letters))) << letters.left(64);
    newRow("full E_STRING128", CVariant(CString128(letters))) << letters.left(128);
    newRow("empty E_STRING32", CVariant(CString32())) << QString();
    newRow("E_CHARSTR64", charField<64>("Axis 1")) << QStringLiteral("Axis 1");
    newRow("E_CHARSTR128", charField<128>("Axis 1")) << QStringLiteral("Axis 1");
    newRow("E_CHARSTR256", charField<256>("Axis 1")) << QStringLiteral("Axis 1");
    newRow("full E_CHARSTR256", charField<256>(QByteArray(256, 'x'))) << letters.left(128);
    newRow("8-bit text is read as UTF-8", charField<64>("50 \xE2\x82\xAC")) << QStringLiteral("50 \u20AC");
    newRow("parsed 8-bit text", CVariant::fromStr(QStringLiteral("Axis"), NTypes::E_CHARSTR64))
        << QStringLiteral("Axis");
    newRow("E_UTF16CHAR", CVariant(QChar(0x20AC))) << QStringLiteral("\u20AC");
    newRow("E_CHAR", CVariant('x')) << QStringLiteral("x");
    newRow("E_BYTEARRAY gives its hexadecimal text", bytesValue("Axis")) << QStringLiteral("41786973");
    newRow("long E_BYTEARRAY", bytesValue(QByteArray(100, '\xAB'))) << QStringLiteral("ab").repeated(64);
    newRow("empty E_BYTEARRAY", bytesValue(QByteArray())) << QString();
}

void tst_variant_strings::fixedStrings()
{
    QFETCH(const QVariant, value);
    QFETCH(const int, tag);
    QFETCH(const QString, text);
    const CVariant variant = tagged(value, tag);
    check32(variant, text.left(32), true);
    check64(variant, text.left(64), true);
    check128(variant, text, true);
}

void tst_variant_strings::ownFixedStringKeepsWhatIsBehindItsText()
{
    CString32 string(QStringLiteral("abcdef"));
    string = QStringLiteral("abc");
    const CVariant value(string);
    QVERIFY(value.toString32() == string);
    QVERIFY(value.toString32() != CString32(QStringLiteral("abc")));
    check32(value, QStringLiteral("abc"), true);
}

void tst_variant_strings::otherFixedStringGivesItsTextOnly()
{
    CString32 string(QStringLiteral("abcdef"));
    string = QStringLiteral("abc");
    QVERIFY(CVariant(string).toString64() == CString64(QStringLiteral("abc")));
    QVERIFY(CVariant(string).toString128() == CString128(QStringLiteral("abc")));
}

void tst_variant_strings::fixedStringsFromOtherTypesAreEmpty_data()
{
    QTest::addColumn<int>("tag");
    for (int tag = 0; tag <= 33; ++tag) {
        if (!utf16Sources().contains(tag))
            QTest::newRow(tagName(tag).constData()) << tag;
    }
}

void tst_variant_strings::fixedStringsFromOtherTypesAreEmpty()
{
    QFETCH(const int, tag);
    const CVariant sample = typedSample(tag);
    const CVariant value = sample.type() == typeOf(tag) ? sample : tagged(QStringLiteral("text"), tag);
    check32(value, QString(), false);
    check64(value, QString(), false);
    check128(value, QString(), false);
}

// The result of the array form is that of the copy, not of the conversion.
void tst_variant_strings::unitArraySucceedsForAnyValue()
{
    unsigned short units[32];
    std::fill_n(units, 32, static_cast<unsigned short>('x'));
    QVERIFY(CVariant(5).toString32(units));
    QCOMPARE(bytesOf(units), QByteArray(64, '\0'));
    QVERIFY(!CVariant(CString32(QStringLiteral("abc"))).toString32(static_cast<unsigned short *>(nullptr)));
}

// Numbers, date-times and versions give their text; 8-bit strings and byte arrays their bytes.
void tst_variant_strings::eightBitStrings_data()
{
    addValueColumns();
    QTest::addColumn<QByteArray>("bytes");
    newRow("E_U8", typedSample(1)) << QByteArray("200");
    newRow("E_U8 widened", rawSample(1)) << QByteArray("200");
    newRow("E_I8", typedSample(2)) << QByteArray("-100");
    newRow("E_I8 widened", rawSample(2)) << QByteArray("-100");
    newRow("E_U16", typedSample(3)) << QByteArray("60000");
    newRow("E_I16", typedSample(4)) << QByteArray("-30000");
    newRow("E_U32", typedSample(5)) << QByteArray("4000000000");
    newRow("E_I32", typedSample(6)) << QByteArray("-2000000000");
    newRow("E_F32", typedSample(7)) << QByteArray("1.5");
    newRow("E_U64", typedSample(8)) << QByteArray("1234605616436508552");
    newRow("E_I64", typedSample(9)) << QByteArray("-1234605616436508552");
    newRow("E_F64", typedSample(10)) << QByteArray("-2.25");
    newRow("E_CHARSTR64", charField<64>("Axis 1")) << QByteArray("Axis 1");
    newRow("E_CHARSTR128", charField<128>("Axis 1")) << QByteArray("Axis 1");
    newRow("E_CHARSTR256", charField<256>("Axis 1")) << QByteArray("Axis 1");
    newRow("what is behind the text is kept", charField<64>(QByteArray("abc\0def", 7)))
        << QByteArray("abc\0def", 7);
    newRow("longer field is cut", charField<256>(QByteArray(256, 'x'))) << QByteArray(256, 'x');
    newRow("bytes above 127", charField<64>("50 \xE2\x82\xAC")) << QByteArray("50 \xE2\x82\xAC");
    newRow("parsed text", CVariant::fromStr(QStringLiteral("Axis 1"), NTypes::E_CHARSTR128))
        << QByteArray("Axis 1");
    newRow("E_DATETIME", typedSample(16)) << QByteArray("2021-03-04 05:06:07");
    newRow("E_CHAR", CVariant('x')) << QByteArray("x");
    newRow("E_VERSION", typedSample(21)) << QByteArray("2.5.300");
    newRow("E_BYTEARRAY", bytesValue(fromHex("410042FF"))) << fromHex("410042FF");
    newRow("long E_BYTEARRAY", bytesValue(QByteArray(300, 'y'))) << QByteArray(256, 'y');
    newRow("E_VERSION_4", typedSample(32)) << QByteArray("1.2.3.4");
}

void tst_variant_strings::eightBitStrings()
{
    QFETCH(const QVariant, value);
    QFETCH(const int, tag);
    QFETCH(const QByteArray, bytes);
    checkFields(tagged(value, tag), bytes, true);
    checkChar(tagged(value, tag), bytes.at(0), true);
}

void tst_variant_strings::eightBitStringsFromOtherTypesAreZero_data()
{
    QTest::addColumn<int>("tag");
    for (int tag = 0; tag <= 33; ++tag) {
        if (!eightBitSources().contains(tag))
            QTest::newRow(tagName(tag).constData()) << tag;
    }
}

void tst_variant_strings::eightBitStringsFromOtherTypesAreZero()
{
    QFETCH(const int, tag);
    const CVariant sample = typedSample(tag);
    const CVariant value = sample.type() == typeOf(tag) ? sample : tagged(QStringLiteral("text"), tag);
    checkFields(value, QByteArray(), false);
    checkChar(value, '\0', false);
}

void tst_variant_strings::characters_data()
{
    addValueColumns();
    QTest::addColumn<char>("character");
    newRow("own", CVariant('A')) << 'A';
    newRow("own zero", CVariant('\0')) << '\0';
    newRow("own above 127", CVariant('\xFC')) << '\xFC';
    newRow("empty text", charField<64>(QByteArray())) << '\0';
    newRow("parsed empty text", CVariant::fromStr(QString(), NTypes::E_CHARSTR64)) << '\0';
    newRow("text without bytes", tagged(QByteArray(), NTypes::E_CHARSTR64)) << '\0';
    newRow("one byte", bytesValue("z")) << 'z';
    newRow("byte above 127", bytesValue("\xFC")) << '\xFC';
    newRow("digit", CVariant(7)) << '7';
    newRow("sign", CVariant(-7)) << '-';
}

void tst_variant_strings::characters()
{
    QFETCH(const QVariant, value);
    QFETCH(const int, tag);
    QFETCH(const char, character);
    checkChar(tagged(value, tag), character, true);
}

// A character takes one byte, as a record takes all of its own.
void tst_variant_strings::noBytesAreNoCharacter()
{
    checkChar(bytesValue(QByteArray()), '\0', false);
}

void tst_variant_strings::utf16Characters_data()
{
    addValueColumns();
    QTest::addColumn<QChar>("character");
    newRow("own", CVariant(QChar(0x20AC))) << QChar(0x20AC);
    newRow("own zero", CVariant(QChar(0))) << QChar(0);
    newRow("E_STRING32", typedSample(12)) << QChar(u'S');
    newRow("E_STRING64", typedSample(17)) << QChar(u'D');
    newRow("E_STRING128", typedSample(14)) << QChar(u'V');
    newRow("empty text", CVariant(CString32())) << QChar(0);
    newRow("E_CHARSTR64", typedSample(13)) << QChar(u'A');
    newRow("E_CHARSTR128", typedSample(18)) << QChar(u'A');
    newRow("E_CHARSTR256", charField<256>("\xE2\x82\xAC")) << QChar(0x20AC);
    newRow("E_CHAR", CVariant('x')) << QChar(u'x');
    newRow("two bytes are one unit", bytesValue(fromHex("AC20"))) << QChar(0x20AC);
    newRow("first two of more bytes", bytesValue(fromHex("AC204100"))) << QChar(0x20AC);
}

void tst_variant_strings::utf16Characters()
{
    QFETCH(const QVariant, value);
    QFETCH(const int, tag);
    QFETCH(const QChar, character);
    checkUnit(tagged(value, tag), character, true);
}

void tst_variant_strings::utf16CharactersFromOtherTypesAreZero_data()
{
    addValueColumns();
    for (int tag = 0; tag <= 33; ++tag) {
        if (utf16Sources().contains(tag))
            continue;
        const CVariant sample = typedSample(tag);
        newRow(tagName(tag).constData(),
               sample.type() == typeOf(tag) ? sample : tagged(QStringLiteral("text"), tag));
    }
    newRow("one byte", bytesValue("z"));
    newRow("no bytes", bytesValue(QByteArray()));
}

void tst_variant_strings::utf16CharactersFromOtherTypesAreZero()
{
    QFETCH(const QVariant, value);
    QFETCH(const int, tag);
    checkUnit(tagged(value, tag), QChar(0), false);
}

QTEST_GUILESS_MAIN(tst_variant_strings)
#include "tst_variant_strings.moc"
