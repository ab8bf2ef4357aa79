// SPDX-License-Identifier: MIT
#include "ParsingCases.h"
#include "VariantSamples.h"

#include <LoggedTest.h>

#include <QTest>

#include <cmath>
#include <limits>

using namespace ParsingCases;
using namespace VariantSamples;

// Texts into numbers.
class tst_variant_number_parsing : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void unsignedNumbers_data();
    void unsignedNumbers();
    void signedNumbers_data();
    void signedNumbers();
    void floats_data();
    void floats();
    void notANumber();
    void memberFormStoresTheZeroOfAFailedNumber();
    void parsingIgnoresTheLocale();

protected:
    void prepare() override { mFormerLocale = QLocale(); }
    void tidy() override { QLocale::setDefault(mFormerLocale); }

private:
    static void checkRow();

    QLocale mFormerLocale;
};

void tst_variant_number_parsing::checkRow()
{
    QFETCH(const QString, text);
    QFETCH(const int, type);
    QFETCH(const bool, ok);
    QFETCH(const QVariant, value);
    for (const bool before : {false, true}) {
        bool written = before;
        const CVariant parsed = CVariant::fromStr(text, typeOf(type), &written);
        QCOMPARE(written, ok);
        QCOMPARE(static_cast<int>(parsed.type()), type);
        QCOMPARE(heldBy(parsed).userType(), value.userType());
        QCOMPARE(streamed(heldBy(parsed)).toHex(), streamed(value).toHex());
    }
}

void tst_variant_number_parsing::unsignedNumbers_data()
{
    addColumns();
    number<uchar>("200", 1, true, 200);
    number<uchar>("300", 1, true, 44); // read in 32 bits and cut, not refused
    number<uchar>("abc", 1, false, 0);
    number<ushort>("0x1F", 3, true, 31);
    number<ushort>("010", 3, true, 8);
    number<ushort>("65536", 3, true, 0);
    number<uint>("4294967295", 5, true, 4294967295U);
    number<uint>("4294967296", 5, false, 0);
    number<uint>("0xFFFFFFFF", 5, true, 4294967295U);
    number<uint>("0Xff", 5, true, 255);
    number<uint>("0x", 5, false, 0);
    number<uint>("08", 5, false, 0);
    number<uint>("-1", 5, false, 0);
    number<uint>("+5", 5, true, 5);
    number<uint>(" \t12\n ", 5, true, 12);
    number<uint>("1 2", 5, false, 0);
    number<uint>("12x", 5, false, 0);
    number<uint>("1.5", 5, false, 0);
    number<uint>("", 5, false, 0);
    number<qulonglong>("18446744073709551615", 8, true, ULLONG_MAX);
    number<qulonglong>("18446744073709551616", 8, false, 0);
    number<qulonglong>("0xFFFFFFFFFFFFFFFF", 8, true, ULLONG_MAX);
    number<qulonglong>(" 0777 ", 8, true, 511);
    number<qulonglong>("-1", 8, false, 0);
    number<qulonglong>("", 8, false, 0);
}

void tst_variant_number_parsing::unsignedNumbers()
{
    checkRow();
}

void tst_variant_number_parsing::signedNumbers_data()
{
    addColumns();
    number<signed char>("-100", 2, true, -100);
    number<signed char>("200", 2, true, -56);
    number<signed char>("x", 2, false, 0);
    number<short>("-0x10", 4, true, -16);
    number<short>("-010", 4, true, -8);
    number<short>("40000", 4, true, -25536);
    number<int>("-2147483648", 6, true, INT_MIN);
    number<int>("2147483647", 6, true, INT_MAX);
    number<int>("2147483648", 6, false, 0);
    number<int>("0x80000000", 6, false, 0);
    number<int>(" -5 ", 6, true, -5);
    number<int>("", 6, false, 0);
    number<qlonglong>("-9223372036854775808", 9, true, LLONG_MIN);
    number<qlonglong>("9223372036854775808", 9, false, 0);
    number<qlonglong>("0x7FFFFFFFFFFFFFFF", 9, true, LLONG_MAX);
    number<qlonglong>("1e3", 9, false, 0);
}

void tst_variant_number_parsing::signedNumbers()
{
    checkRow();
}

void tst_variant_number_parsing::floats_data()
{
    addColumns();
    number<float>("1.5", 7, true, 1.5F);
    number<float>(" -2.5e3 ", 7, true, -2500.0F);
    number<float>("3.40282e+38", 7, true, 3.40282e+38F);
    number<float>("1e39", 7, false, 0.0F);
    number<float>("-1e39", 7, false, 0.0F);
    number<float>("1,5", 7, false, 0.0F);
    number<float>("", 7, false, 0.0F);
    number<float>("inf", 7, true, std::numeric_limits<float>::infinity());
    number<double>("1.5", 10, true, 1.5);
    number<double>("0.1", 10, true, 0.1);
    number<double>("-1e-300", 10, true, -1e-300);
    number<double>("1e309", 10, false, 0.0);
    number<double>("1,5", 10, false, 0.0);
    number<double>("1.5x", 10, false, 0.0);
    number<double>("0x10", 10, false, 0.0);
    number<double>("-inf", 10, true, -std::numeric_limits<double>::infinity());
}

void tst_variant_number_parsing::floats()
{
    checkRow();
}

void tst_variant_number_parsing::notANumber()
{
    bool ok = false;
    QVERIFY(std::isnan(CVariant::fromStr(QStringLiteral("nan"), NTypes::E_F32, &ok).toF32()));
    QVERIFY(ok);
    ok = false;
    QVERIFY(std::isnan(CVariant::fromStr(QStringLiteral("nan"), NTypes::E_F64, &ok).toF64()));
    QVERIFY(ok);
}

void tst_variant_number_parsing::memberFormStoresTheZeroOfAFailedNumber()
{
    CVariant value(static_cast<unsigned short>(7));
    bool ok = true;
    value.fromStr(QStringLiteral("seven"), &ok);
    QVERIFY(!ok);
    QCOMPARE(value.type(), NTypes::E_U16);
    QVERIFY(!value.isNull());
    QCOMPARE(value.toU16(&ok), static_cast<unsigned short>(0));
    QVERIFY(ok);
}

void tst_variant_number_parsing::parsingIgnoresTheLocale()
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    bool ok = false;
    QCOMPARE(CVariant::fromStr(QStringLiteral("1234.5"), NTypes::E_F64, &ok).toF64(), 1234.5);
    QVERIFY(ok);
    CVariant::fromStr(QStringLiteral("1.234,5"), NTypes::E_F64, &ok);
    QVERIFY(!ok);
    CVariant::fromStr(QStringLiteral("1.234"), NTypes::E_I32, &ok);
    QVERIFY(!ok);
}

QTEST_GUILESS_MAIN(tst_variant_number_parsing)
#include "tst_variant_number_parsing.moc"
