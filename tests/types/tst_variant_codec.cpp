// SPDX-License-Identifier: MIT
#include "VariantSamples.h"

#include <LoggedTest.h>

#include <QCoreApplication>
#include <QTest>
#include <QTextCodec>

#include <memory>

using namespace VariantSamples;

namespace {

// Qt's own codec "UTF-16" never reports an invalid character. This one, found in its place, reports every
// surrogate without its partner and a half unit at the end.
class StrictUtf16Codec : public QTextCodec
{
public:
    QByteArray name() const override { return QByteArrayLiteral("UTF-16"); }
    int mibEnum() const override { return 1015; }

protected:
    QString convertToUnicode(const char *bytes, int size, ConverterState *state) const override
    {
        QString text(size / 2, Qt::Uninitialized);
        std::memcpy(text.data(), bytes, sizeof(QChar) * static_cast<std::size_t>(text.size()));
        if (state)
            state->invalidChars += strayUnits(text) + size % 2;
        return text;
    }

    QByteArray convertFromUnicode(const QChar *units, int count, ConverterState *) const override
    {
        QByteArray bytes(2 * count, '\0');
        std::memcpy(bytes.data(), units, static_cast<std::size_t>(bytes.size()));
        return bytes;
    }

private:
    static int strayUnits(const QString &text)
    {
        int strays = 0;
        for (int i = 0; i < text.size(); ++i) {
            const bool pair =
                text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
            if (pair)
                ++i;
            else if (text.at(i).isSurrogate())
                ++strays;
        }
        return strays;
    }
};

// A field of letters with one surrogate that has no partner.
QByteArray strayField(int size)
{
    return fromHex("00D8") + fromHex("4100").repeated(size / 2 - 1);
}

bool isEmpty(const CVariant &value)
{
    return value.type() == NTypes::E_UNKNOWN && !heldBy(value).isValid();
}

void addFieldRows()
{
    QTest::addColumn<int>("fixedString");
    QTest::addColumn<int>("eightBitString");
    QTest::addColumn<int>("size");
    QTest::newRow("64 bytes") << 12 << 13 << 64;
    QTest::newRow("128 bytes") << 17 << 18 << 128;
    QTest::newRow("256 bytes") << 14 << 15 << 256;
}

} // namespace

// Bytes that are not UTF-16.
class tst_variant_codec : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void utf16Bytes_data();
    void utf16Bytes();
    void fixedStringsKnowTheirValidity_data();
    void fixedStringsKnowTheirValidity();
    void ambiguousFields_data();
    void ambiguousFields();
    void unambiguousFields_data();
    void unambiguousFields();
    void fieldsFromBytes_data();
    void fieldsFromBytes();
    void fixedStringsFromBytes();
    void fieldsFromVariants_data();
    void fieldsFromVariants();
};

void tst_variant_codec::utf16Bytes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("valid");
    QTest::newRow("empty") << QByteArray() << true;
    QTest::newRow("letters") << fromHex("41004200") << true;
    QTest::newRow("surrogate pair") << fromHex("3DD800DE") << true;
    QTest::newRow("byte-order mark") << fromHex("FFFE4100") << true;
    QTest::newRow("unit FFFF") << fromHex("FFFF4100") << true;
    QTest::newRow("high surrogate at the end") << fromHex("41003DD8") << false;
    QTest::newRow("high surrogate before a letter") << fromHex("3DD84100") << false;
    QTest::newRow("low surrogate alone") << fromHex("00DE4100") << false;
    QTest::newRow("surrogates in the wrong order") << fromHex("00DE3DD8") << false;
    QTest::newRow("half unit at the end") << fromHex("410042") << false;
    QTest::newRow("one byte") << fromHex("41") << false;
}

void tst_variant_codec::utf16Bytes()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const bool, valid);
    QCOMPARE(CVariant().isUTF16(bytes), valid);
    QCOMPARE(CString32::isUTF16(bytes), valid);
    QCOMPARE(CString64::isUTF16(bytes), valid);
    QCOMPARE(CString128::isUTF16(bytes), valid);
}

void tst_variant_codec::fixedStringsKnowTheirValidity_data()
{
    addFieldRows();
}

void tst_variant_codec::fixedStringsKnowTheirValidity()
{
    QFETCH(const int, fixedString);
    QFETCH(const int, eightBitString);
    QFETCH(const int, size);
    const QByteArray stray = strayField(size);
    const CVariant invalid =
        CVariant::fromRawData(stray.constData(), static_cast<unsigned int>(size), typeOf(fixedString));
    QCOMPARE(static_cast<int>(invalid.type()), fixedString);
    QVERIFY(!invalid.isNull());
    QVERIFY(!invalid.isValid());
    const QByteArray letters = fromHex("4100").repeated(size / 2);
    QVERIFY(CVariant::fromRawData(letters.constData(), static_cast<unsigned int>(size), typeOf(fixedString))
                .isValid());
    QVERIFY(CVariant::fromRawData(stray.constData(), static_cast<unsigned int>(size), typeOf(eightBitString))
                .isValid());
    QVERIFY(!CString32(stray).isValid());
    QVERIFY(!CString64(stray).isValid());
    QVERIFY(!CString128(stray).isValid());
}

void tst_variant_codec::ambiguousFields_data()
{
    addFieldRows();
}

// The second enumerator of the warning is always the same.
void tst_variant_codec::ambiguousFields()
{
    QFETCH(const int, eightBitString);
    QFETCH(const int, size);
    const QByteArray bytes = strayField(size);
    const QString warning =
        QStringLiteral("CVariant::operator =(const QVariant&) : mType is ambiguous, it can be NTypes::%1 "
                       "or NTypes::E_CHARSTR64. Line N")
            .arg(CDataTypeParser::typeToEnum(typeOf(eightBitString)));
    CVariant assigned(5);
    assigned = QVariant(bytes);
    QCOMPARE(withoutLineNumbers(takeLog()), QStringList{warning});
    const CVariant constructed{QVariant(bytes)};
    QCOMPARE(withoutLineNumbers(takeLog()), QStringList{warning});
    const CVariant fromBytes(bytes);
    QCOMPARE(withoutLineNumbers(takeLog()), QStringList{warning});
    for (const CVariant &value : {assigned, constructed, fromBytes}) {
        QCOMPARE(static_cast<int>(value.type()), eightBitString);
        QCOMPARE(heldBy(value), QVariant(bytes));
    }
}

void tst_variant_codec::unambiguousFields_data()
{
    addFieldRows();
}

void tst_variant_codec::unambiguousFields()
{
    QFETCH(const int, fixedString);
    QFETCH(const int, size);
    const QByteArray pair = fromHex("3DD800DE") + fromHex("4100").repeated(size / 2 - 2);
    const CVariant value{QVariant(pair)};
    QCOMPARE(static_cast<int>(value.type()), fixedString);
    QCOMPARE(value.toByteArray(), pair);
    for (const int other : {size - 1, size + 1, size + 2}) {
        const CVariant bytes{QVariant(strayField(size + 4).left(other))};
        QCOMPARE(bytes.type(), NTypes::E_BYTEARRAY);
        QCOMPARE(bytes.toByteArray().size(), other);
    }
}

void tst_variant_codec::fieldsFromBytes_data()
{
    addFieldRows();
}

void tst_variant_codec::fieldsFromBytes()
{
    QFETCH(const int, fixedString);
    QFETCH(const int, size);
    const QString warning =
        QStringLiteral("CVariant::fromByteArray() : Conversion to data type '%1 (%2)' failed. Line N.")
            .arg(QString::number(fixedString), CDataTypeParser::typeToStr(typeOf(fixedString)));
    for (const QByteArray &bytes : {strayField(size), strayField(4), fromHex("410042")}) {
        QVERIFY(isEmpty(CVariant::fromByteArray(bytes, typeOf(fixedString))));
        QCOMPARE(withoutLineNumbers(takeLog()), QStringList{warning});
        const CVariant constructed(bytes, typeOf(fixedString));
        QCOMPARE(withoutLineNumbers(takeLog()), QStringList{warning});
        QCOMPARE(static_cast<int>(constructed.type()), fixedString);
        QVERIFY(constructed.toStr().isEmpty());
    }
}

// The smallest class keeps the raw bytes, the others none.
void tst_variant_codec::fixedStringsFromBytes()
{
    const QByteArray bytes = strayField(64);
    bool ok = true;
    QCOMPARE(CString32::fromByteArray(bytes, &ok).byteArray(), bytes);
    QVERIFY(!ok);
    ok = true;
    QCOMPARE(CString64::fromByteArray(bytes, &ok).byteArray(), QByteArray(128, '\0'));
    QVERIFY(!ok);
    ok = true;
    QCOMPARE(CString128::fromByteArray(bytes, &ok).byteArray(), QByteArray(256, '\0'));
    QVERIFY(!ok);
    QCOMPARE(CString32::fromByteArray(bytes, nullptr).byteArray(), bytes);
}

void tst_variant_codec::fieldsFromVariants_data()
{
    addFieldRows();
}

void tst_variant_codec::fieldsFromVariants()
{
    QFETCH(const int, fixedString);
    QFETCH(const int, size);
    const CVariant ignored = CVariant::fromVariant(strayField(size), typeOf(fixedString));
    QCOMPARE(static_cast<int>(ignored.type()), fixedString);
    QCOMPARE(ignored.toByteArray(), QByteArray(size, '\0'));
    const CVariant taken = CVariant::fromVariant(fromHex("3DD800DE"), typeOf(fixedString));
    QCOMPARE(taken.toStr(), QString::fromUtf8("\xF0\x9F\x98\x80"));
}

// The codec must be there before Qt looks for one of this name.
int main(int argc, char *argv[])
{
    const QTextCodec *const codec = std::make_unique<StrictUtf16Codec>().release(); // owned by Qt from now on
    Q_UNUSED(codec)
    const QCoreApplication application(argc, argv);
    tst_variant_codec test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_variant_codec.moc"
