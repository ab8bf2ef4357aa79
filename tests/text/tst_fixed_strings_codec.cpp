// SPDX-License-Identifier: MIT
// Qt's own codec "UTF-16" never counts an invalid character. A program may bring a stricter codec of that
// name; this test does, and with it every branch for bytes that are not UTF-16 is reached.
#include "FixedStringClasses.h"

#include <CVariant.h>
#include <LoggedTest.h>

#include <QTest>
#include <QTextCodec>
#include <QVariant>

#include <memory>

namespace {

// Counts as invalid: half a unit at the end, a surrogate without its partner, a byte-order mark, unit FFFF.
class StrictUtf16Codec : public QTextCodec
{
public:
    ~StrictUtf16Codec() override = default;

    QByteArray name() const override { return QByteArrayLiteral("UTF-16"); }
    int mibEnum() const override { return 1015; }

protected:
    QString convertToUnicode(const char *bytes, int size, ConverterState *state) const override
    {
        QString text;
        for (int i = 0; i + 1 < size; i += 2)
            text.append(QChar(static_cast<uchar>(bytes[i]), static_cast<uchar>(bytes[i + 1])));
        if (state != nullptr)
            state->invalidChars += size % 2 + invalidUnits(text);
        return text;
    }

    QByteArray convertFromUnicode(const QChar *text, int length, ConverterState *) const override
    {
        return unitBytes(QString(text, length));
    }

private:
    static int invalidUnits(const QString &text)
    {
        int count = 0;
        for (int i = 0; i < text.size(); ++i) {
            const QChar unit = text.at(i);
            if (unit.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate())
                ++i;
            else if (unit.isSurrogate() || unit == QChar(0xFEFF) || unit == QChar(0xFFFE)
                     || unit == QChar(0xFFFF))
                ++count;
        }
        return count;
    }
};

void addInvalidRows()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("one byte") << fromHex("41");
    QTest::newRow("odd count") << fromHex("410042");
    QTest::newRow("high surrogate alone") << fromHex("3DD8");
    QTest::newRow("high surrogate before another unit") << fromHex("41003DD84200");
    QTest::newRow("low surrogate alone") << fromHex("410000DE");
    QTest::newRow("surrogates in the wrong order") << fromHex("00DE3DD8");
    QTest::newRow("high surrogate at the end") << QByteArray(62, 'x') + fromHex("3DD8");
    QTest::newRow("byte-order mark") << fromHex("FFFE4100");
    QTest::newRow("swapped byte-order mark") << fromHex("FEFF0041");
    QTest::newRow("unit FFFF") << fromHex("4100FFFF");
    QTest::newRow("invalid behind a zero unit") << fromHex("4100000000DC");
    QTest::newRow("invalid after the first field") << QByteArray(300, 'x') + fromHex("00DC");
}

void addValidRows()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("none") << QByteArray();
    QTest::newRow("text") << fromHex("41004200");
    QTest::newRow("all zero") << QByteArray(64, '\0');
    QTest::newRow("surrogate pair") << fromHex("41003DD800DE");
    QTest::newRow("unit D7FF, below the surrogates") << fromHex("FFD7");
    QTest::newRow("unit E000, above the surrogates") << fromHex("00E0");
    QTest::newRow("unit FFFD") << fromHex("FDFF");
    QTest::newRow("unit 00FF twice") << fromHex("FF00FF00");
    QTest::newRow("units FF00, 00FF: bytes FF FF across two units, not D8 to DF") << fromHex("00FFFF00");
}

template<typename String>
CVariant variantOfField(const QByteArray &bytes)
{
    return CVariant(String(bytes));
}

} // namespace

class tst_fixed_strings_codec : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase_data() { addClassRows(); }
    void initTestCase();

    void invalidBytes_data() { addInvalidRows(); }
    void invalidBytes();
    void validBytes_data() { addValidRows(); }
    void validBytes();
    void fieldWithInvalidUnitsIsNotValid_data() { addInvalidRows(); }
    void fieldWithInvalidUnitsIsNotValid();
    void tailBehindTheTerminatorCountsForValidity();
    void fromByteArrayKeepsInvalidBytesIn32Only_data() { addInvalidRows(); }
    void fromByteArrayKeepsInvalidBytesIn32Only();
    void invalidBytesKeepTheirPairsIn32();
    void pairsAreRemovedFromValidBytesOnly();
    void fromByteArrayTakesValidBytes_data() { addValidRows(); }
    void fromByteArrayTakesValidBytes();
    void variantOfInvalidBytesChangesNothing_data() { addInvalidRows(); }
    void variantOfInvalidBytesChangesNothing();
    void variantOfValidBytesIsTaken();
    void typedValueOfInvalidUnitsIsNotValid_data() { addInvalidRows(); }
    void typedValueOfInvalidUnitsIsNotValid();
    void typedValueAsksTheSameCodec_data() { addInvalidRows(); }
    void typedValueAsksTheSameCodec();

private:
    std::unique_ptr<StrictUtf16Codec> mCodec;
};

void tst_fixed_strings_codec::initTestCase()
{
    // Newly made codecs are found first, as long as nobody has asked for the name before.
    if (!mCodec)
        mCodec = std::make_unique<StrictUtf16Codec>();
    QCOMPARE(QTextCodec::codecForName("UTF-16"), static_cast<QTextCodec *>(mCodec.get()));
}

void tst_fixed_strings_codec::invalidBytes()
{
    QFETCH(QByteArray, bytes);
    onClass([=](auto empty) { QVERIFY(!decltype(empty)::isUTF16(bytes)); });
}

void tst_fixed_strings_codec::validBytes()
{
    QFETCH(QByteArray, bytes);
    onClass([=](auto empty) { QVERIFY(decltype(empty)::isUTF16(bytes)); });
}

void tst_fixed_strings_codec::fieldWithInvalidUnitsIsNotValid()
{
    QFETCH(QByteArray, bytes);
    onClass([=](auto empty) {
        using String = decltype(empty);
        const String string(bytes);
        // An odd count is completed by the field's zeros, and what is cut off does not count.
        QCOMPARE(string.isValid(), String::isUTF16(string.byteArray()));
        const bool cutOrCompleted = bytes.size() % 2 == 1 || bytes.size() > String::byteCount;
        QCOMPARE(string.isValid(), cutOrCompleted);
    });
}

void tst_fixed_strings_codec::tailBehindTheTerminatorCountsForValidity()
{
    onClass([](auto string) {
        string = QStringLiteral("a") + QChar(0xD800) + QChar(0xD800);
        string = QStringLiteral("a");
        QCOMPARE(string.str(), QStringLiteral("a"));
        QVERIFY(!string.isValid());
    });
}

void tst_fixed_strings_codec::fromByteArrayKeepsInvalidBytesIn32Only()
{
    QFETCH(QByteArray, bytes);
    onClass([=](auto empty) {
        using String = decltype(empty);
        bool ok = true;
        const String string = String::fromByteArray(bytes, &ok);
        QVERIFY(!ok);
        const QByteArray kept = String::unitCount == 32 ? bytes.left(String::byteCount) : QByteArray();
        QCOMPARE(string.byteArray(), padded(kept, String::byteCount));
        QVERIFY(String::fromByteArray(bytes) == string); // no flag is needed
    });
}

void tst_fixed_strings_codec::invalidBytesKeepTheirPairsIn32()
{
    bool ok = true;
    const QByteArray bytes = fromHex("4100FFFF00DCFFFF");
    QCOMPARE(CString32::fromByteArray(bytes, &ok).byteArray(), padded(bytes, 64));
    QVERIFY(!ok);
}

void tst_fixed_strings_codec::pairsAreRemovedFromValidBytesOnly()
{
    // The bytes FF FF across two units, with none of the units invalid: 41 FF | FF 00.
    const QByteArray bytes = fromHex("41FFFF00");
    bool ok = false;
    QCOMPARE(CString32::fromByteArray(bytes, &ok).byteArray(), padded(fromHex("4100"), 64));
    QVERIFY(ok);
    ok = false;
    QCOMPARE(CString64::fromByteArray(bytes, &ok).byteArray(), padded(fromHex("4100"), 128));
    QVERIFY(ok);
    ok = false;
    QCOMPARE(CString128::fromByteArray(bytes, &ok).byteArray(), padded(bytes, 256));
    QVERIFY(ok);
}

void tst_fixed_strings_codec::fromByteArrayTakesValidBytes()
{
    QFETCH(QByteArray, bytes);
    onClass([=](auto empty) {
        using String = decltype(empty);
        QByteArray expected = bytes;
        if (String::unitCount != 128)
            expected.replace(fromHex("FFFF"), QByteArray());
        bool ok = false;
        QCOMPARE(String::fromByteArray(bytes, &ok).byteArray(), padded(expected, String::byteCount));
        QVERIFY(ok);
    });
}

void tst_fixed_strings_codec::variantOfInvalidBytesChangesNothing()
{
    QFETCH(QByteArray, bytes);
    onClass([=](auto string) {
        using String = decltype(string);
        string = countedString<String>();
        string = QVariant(bytes);
        QVERIFY(string == countedString<String>());
        QVERIFY(String(QVariant(bytes)) == String());
    });
}

void tst_fixed_strings_codec::variantOfValidBytesIsTaken()
{
    onClass([](auto string) {
        string = QStringLiteral("abc");
        string = QVariant(fromHex("3DD800DE"));
        QCOMPARE(string.byteArray(), padded(fromHex("3DD800DE6300"), decltype(string)::byteCount));
    });
}

void tst_fixed_strings_codec::typedValueOfInvalidUnitsIsNotValid()
{
    QFETCH(QByteArray, bytes);
    onClass([=](auto empty) {
        using String = decltype(empty);
        const CVariant value = variantOfField<String>(bytes);
        QCOMPARE(value.isValid(), String(bytes).isValid());
        QVERIFY(!value.isNull());
        QVERIFY(variantOfField<String>(fromHex("4100")).isValid());
        QVERIFY(!variantOfField<String>(fromHex("00DC")).isValid());
    });
}

void tst_fixed_strings_codec::typedValueAsksTheSameCodec()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(!CVariant().isUTF16(bytes));
    QVERIFY(CVariant().isUTF16(fromHex("41003DD800DE")));
}

QTEST_GUILESS_MAIN(tst_fixed_strings_codec)

#include "tst_fixed_strings_codec.moc"
