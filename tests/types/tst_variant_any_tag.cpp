// SPDX-License-Identifier: MIT
#include "VariantSamples.h"

#include <LoggedTest.h>

#include <QDate>
#include <QTest>
#include <QUrl>

#include <limits>

using namespace VariantSamples;

namespace {

const QVector<int> &everyTag()
{
    static const QVector<int> all = [] {
        QVector<int> tags = {INT_MIN, INT_MAX};
        for (int tag = -2; tag <= 40; ++tag)
            tags.append(tag);
        return tags;
    }();
    return all;
}

void readNumbers(const CVariant &value)
{
    bool ok = false;
    value.toU8(&ok);
    value.toI8(&ok);
    value.toU16(&ok);
    value.toI16(&ok);
    value.toU32(&ok);
    value.toI32(&ok);
    value.toF32(&ok);
    value.toU64(&ok);
    value.toI64(&ok);
    value.toF64(&ok);
}

void readRecords(const CVariant &value)
{
    bool ok = false;
    value.toVersion(&ok);
    value.toVersion4(&ok);
    value.toIPv4Addr(&ok);
    value.toCommand(&ok);
    value.toDS402Record01(&ok);
    value.toDS402Array01(&ok);
    value.toDS402Array02(&ok);
    value.toDS402Array10(&ok);
    value.operator NTypes::sDs402Array_t<unsigned short>();
    value.toDateTime(&ok);
    value.toDateTime(Qt::UTC, &ok);
    NTypes::uVersion_t version = {};
    value.toVersion(version);
    NTypes::uVersion4_t version4 = {};
    value.toVersion4(version4);
    NTypes::uCommand_t command = {};
    value.toCommand(command);
    NTypes::uDateTimeVal_t dateTime = {};
    value.toDateTime(dateTime);
}

void readTexts(const CVariant &value)
{
    bool ok = false;
    value.toString32(&ok);
    value.toString64(&ok);
    value.toString128(&ok);
    unsigned short units[128] = {};
    value.toString32(units);
    value.toString64(units);
    value.toString128(units);
    char text64[64] = {};
    value.toCharStr64(text64);
    char text128[128] = {};
    value.toCharStr128(text128);
    char text256[256] = {};
    value.toCharStr256(text256);
    value.toChar(&ok);
    value.toUtf16Char(&ok);
    value.toStr();
    value.toStr(Qt::ISODate);
    value.toStr(QLocale::ShortFormat);
    value.toLocaleStr();
    value.toHex(QStringLiteral("0x"));
    value.toHexSeperated(-1, QStringLiteral(":"));
    QString debugText;
    QDebug(&debugText) << value;
}

void readStorage(const CVariant &value)
{
    value.typeSize();
    value.size();
    value.count();
    value.isNull();
    value.isValid();
    value.toByteArray();
    value.toBitArray();
    const QVariant carried = value;
    CVariant::fromVariant(carried, value.type());
    const CVariant deduced(carried);
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << value;
    QDataStream back(bytes);
    CVariant read;
    back >> read;
}

void compare(const CVariant &a, const CVariant &b)
{
    a.compareValue(b);
    a.compareValueFd(b, 2);
    // The operators agree with each other, whatever they compare.
    QCOMPARE(a != b, !(a == b));
    QCOMPARE(a >= b, !(a < b));
    QCOMPARE(a <= b, !(a > b));
}

} // namespace

// Any tag number may arrive with any value: every member survives it.
class tst_variant_any_tag : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void readersSurvive_data();
    void readersSurvive();
    void conversionsSurvive_data();
    void conversionsSurvive();
    void comparisonsSurvive_data();
    void comparisonsSurvive();
    void replacingMembersSurvive_data();
    void replacingMembersSurvive();
    void failedReadingsAreZero_data();
    void failedReadingsAreZero();
    void recordsThatAreNotHeldAreZero_data();
    void recordsThatAreNotHeldAreZero();

private:
    static void addHeldValues();
};

// Every type that a QVariant can hold, and values of the library's own types.
void tst_variant_any_tag::addHeldValues()
{
    QTest::addColumn<QVariant>("value");
    for (int type = QMetaType::FirstCoreType; type <= QMetaType::LastCoreType; ++type) {
        if (type != QMetaType::Void && QMetaType::isRegistered(type))
            QTest::newRow((QByteArray("null ") + QMetaType::typeName(type)).constData())
                << QVariant(type, nullptr);
    }
    QTest::newRow("nothing") << QVariant();
    QTest::newRow("negative") << QVariant(-1);
    QTest::newRow("largest word") << QVariant(ULLONG_MAX);
    QTest::newRow("smallest number") << QVariant(LLONG_MIN);
    QTest::newRow("large double") << QVariant(1e300);
    QTest::newRow("NaN") << QVariant(std::numeric_limits<double>::quiet_NaN());
    QTest::newRow("single infinity") << QVariant(std::numeric_limits<float>::infinity());
    QTest::newRow("text") << QVariant(QStringLiteral("text \u20AC"));
    QTest::newRow("text of a number") << QVariant(QStringLiteral("12"));
    QTest::newRow("long text") << QVariant(QString(1000, QLatin1Char('x')));
    for (const int length : {1, 3, 6, 7, 8, 12, 64, 65, 128, 256, 1000})
        QTest::newRow((QByteArray::number(length) + " bytes").constData())
            << QVariant(QByteArray(length, '\xFF'));
    QTest::newRow("list") << QVariant(QVariantList{5, QVariantList{6}});
    QTest::newRow("map") << QVariant(QVariantMap{{QStringLiteral("key"), 5}});
    QTest::newRow("date-time of Qt") << QVariant(QDateTime(QDate(2021, 3, 4), QTime(5, 6, 7)));
    QTest::newRow("locator") << QVariant(QUrl(QStringLiteral("opc.tcp://axis")));
    for (const int tag : valueTags)
        QTest::newRow((tagName(tag) + " sample").constData()) << heldBy(typedSample(tag));
    QTest::newRow("impossible date-time") << heldBy(valueOf<NTypes::sDateTime_t>("FFFFFFFFFFFFFFFF"));
}

void tst_variant_any_tag::readersSurvive_data()
{
    addHeldValues();
}

void tst_variant_any_tag::readersSurvive()
{
    QFETCH(const QVariant, value);
    for (const int tag : everyTag()) {
        const CVariant variant = tagged(value, tag);
        readNumbers(variant);
        readRecords(variant);
        readTexts(variant);
        readStorage(variant);
        QCOMPARE(static_cast<int>(variant.type()), tag);
        QCOMPARE(heldBy(variant).userType(), value.userType());
    }
    takeLog();
}

void tst_variant_any_tag::conversionsSurvive_data()
{
    addHeldValues();
}

void tst_variant_any_tag::conversionsSurvive()
{
    QFETCH(const QVariant, value);
    for (const int tag : everyTag()) {
        const CVariant variant = tagged(value, tag);
        for (const int target : everyTag()) {
            const bool possible = variant.canConvertTo(typeOf(target));
            bool ok = true;
            CVariant converted = variant;
            converted.convertTo(typeOf(target), &ok);
            if (!possible)
                QVERIFY(ok && converted.type() == variant.type());
            converted.toStr();
            converted.toByteArray();
        }
    }
    takeLog();
}

void tst_variant_any_tag::comparisonsSurvive_data()
{
    addHeldValues();
}

void tst_variant_any_tag::comparisonsSurvive()
{
    QFETCH(const QVariant, value);
    QVector<CVariant> others = {CVariant(), CVariant(5), CVariant(2.5F), bytesValue(QByteArray(8, 'x'))};
    for (const int tag : valueTags)
        others << typedSample(tag) << tagged(QVariant(), tag);
    for (const int tag : everyTag()) {
        const CVariant variant = tagged(value, tag);
        for (const CVariant &other : qAsConst(others)) {
            compare(variant, other);
            compare(other, variant);
        }
    }
    takeLog();
}

void tst_variant_any_tag::replacingMembersSurvive_data()
{
    addHeldValues();
}

void tst_variant_any_tag::replacingMembersSurvive()
{
    QFETCH(const QVariant, value);
    for (const int tag : everyTag()) {
        for (const char *const content : {"", "5", "text"}) {
            CVariant variant = tagged(value, tag);
            variant.fromStr(QString::fromLatin1(content));
            variant = tagged(value, tag);
            variant.fromByteArray(content);
            variant = tagged(value, tag);
            variant.fromVariant(QVariant(QString::fromLatin1(content)));
        }
        CVariant variant = tagged(value, tag);
        variant.fromVariant(value);
        variant = tagged(value, tag);
        variant.fromBitArray(QBitArray(9, true));
        variant = tagged(value, tag);
        variant.setDefaultValue(typeOf(tag));
        QCOMPARE(static_cast<int>(variant.type()), tag);
    }
    takeLog();
}

void tst_variant_any_tag::failedReadingsAreZero_data()
{
    addHeldValues();
}

void tst_variant_any_tag::failedReadingsAreZero()
{
    QFETCH(const QVariant, value);
    for (const int tag : everyTag()) {
        const CVariant variant = tagged(value, tag);
        bool ok = true;
        const quint64 word = variant.toU64(&ok);
        QVERIFY(ok || word == 0);
        const double number = variant.toF64(&ok);
        QVERIFY(ok || number == 0.0);
        const auto version = variant.toVersion4(&ok);
        QVERIFY(ok || bytesOf(version) == QByteArray(8, '\0'));
        const auto record = variant.toDS402Record01(&ok);
        QVERIFY(ok || bytesOf(record) == QByteArray(7, '\0'));
        const CString128 string = variant.toString128(&ok);
        QVERIFY(ok || string.isNull());
        char text[64];
        std::fill_n(text, 64, 'x');
        QVERIFY(variant.toCharStr64(text) || bytesOf(text) == QByteArray(64, '\0'));
    }
    takeLog();
}

void tst_variant_any_tag::recordsThatAreNotHeldAreZero_data()
{
    addHeldValues();
}

// No bytes but those of the record itself may get out: neither another value's nor those of the stack.
void tst_variant_any_tag::recordsThatAreNotHeldAreZero()
{
    QFETCH(const QVariant, value);
    for (const int tag : {16, 21, 22, 23, 26, 27, 28, 29, 30, 31, 32}) {
        if (heldBy(typedSample(tag)).userType() == value.userType())
            continue;
        const QByteArray bytes = tagged(value, tag).toByteArray();
        QVERIFY2(bytes.count('\0') == bytes.size(), (tagName(tag) + ": " + bytes.toHex()).constData());
    }
    takeLog();
}

QTEST_GUILESS_MAIN(tst_variant_any_tag)
#include "tst_variant_any_tag.moc"
