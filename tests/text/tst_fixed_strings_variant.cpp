// SPDX-License-Identifier: MIT
#include "FixedStringClasses.h"

#include <LoggedTest.h>

#include <QDateTime>
#include <QTest>
#include <QVariant>

namespace {

// A program's own type that Qt can convert to each class, or that tries to and fails.
struct Label
{
    QString text;
    bool readable = true;

    template<typename String>
    String to(bool *ok) const
    {
        *ok = readable;
        return String(text);
    }
};

// A type that nothing converts.
struct Unrelated
{
    int number = 0;
};

} // namespace

Q_DECLARE_METATYPE(Label)
Q_DECLARE_METATYPE(Unrelated)

class tst_fixed_strings_variant : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase_data() { addClassRows(); }
    void initTestCase();

    void metaTypeHasTheClassName();
    void valuesTravelInAVariant();
    void takesAText_data();
    void takesAText();
    void takesANullText();
    void takesUtf16Bytes_data();
    void takesUtf16Bytes();
    void ignoresTooManyBytes();
    void takesItsOwnType();
    void takesWhatConvertsToItsType();
    void failedConversionEmptiesTheField();
    void ignoresOtherTypes_data();
    void ignoresOtherTypes();
    void constructorStartsFromAnEmptyField();
    void becomesAVariantOfItsType();

    void fromByteArray_data();
    void fromByteArray();
    void fromByteArrayNeedsNoFlag();
    void qtCodecAcceptsAllBytes_data();
    void qtCodecAcceptsAllBytes();

    // Last: these register converters that stay.
    void textWinsOverAConverter();
    void bytesWinOverAConverter();
};

void tst_fixed_strings_variant::initTestCase()
{
    QVERIFY(QMetaType::registerConverter(&Label::to<CString32>));
    QVERIFY(QMetaType::registerConverter(&Label::to<CString64>));
    QVERIFY(QMetaType::registerConverter(&Label::to<CString128>));
}

void tst_fixed_strings_variant::metaTypeHasTheClassName()
{
    QFETCH_GLOBAL(int, units);
    onClass([units](auto empty) {
        using String = decltype(empty);
        const QByteArray expected = "CString" + QByteArray::number(units);
        QCOMPARE(QByteArray(QMetaType::typeName(qMetaTypeId<String>())), expected);
        QCOMPARE(QMetaType::type(expected.constData()), qMetaTypeId<String>());
    });
}

void tst_fixed_strings_variant::valuesTravelInAVariant()
{
    onClass([](auto empty) {
        using String = decltype(empty);
        const auto string = countedString<String>();
        const QVariant held = QVariant::fromValue(string);
        const QVariant copy = held;
        QVERIFY(!held.isNull());
        QVERIFY(copy.template value<String>() == string);
        QVERIFY(copy == held);
        QVERIFY(QVariant::fromValue(empty) != held);
        QVERIFY(!QVariant::fromValue(empty).isNull()); // an empty string is a value
    });
}

void tst_fixed_strings_variant::takesAText_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<bool>("moreThanField");
    QTest::newRow("one unit") << 1 << false;
    QTest::newRow("one below the field") << -1 << true;
    QTest::newRow("the field") << 0 << true;
    QTest::newRow("one above the field") << 1 << true;
}

void tst_fixed_strings_variant::takesAText()
{
    QFETCH(int, length);
    QFETCH(bool, moreThanField);
    onClass([=](auto string) {
        using String = decltype(string);
        const QString text = textOfLength(length + (moreThanField ? String::unitCount : 0));
        auto assignedAsText = countedString<String>();
        assignedAsText = text;
        string = countedString<String>();
        String &result = (string = QVariant(text));
        QCOMPARE(&result, &string);
        QCOMPARE(string.str(), text.left(String::unitCount));
        QVERIFY(string == assignedAsText); // the tail is kept as by the text itself
    });
}

void tst_fixed_strings_variant::takesANullText()
{
    onClass([](auto string) {
        string = QStringLiteral("abc");
        string = QVariant(QVariant::String);
        QVERIFY(string.isNull());
        QCOMPARE(string.byteArray(), padded(fromHex("000062006300"), decltype(string)::byteCount));
    });
}

void tst_fixed_strings_variant::takesUtf16Bytes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("field"); // over abc
    QTest::newRow("none") << QByteArray() << fromHex("610062006300");
    QTest::newRow("one unit") << fromHex("5800") << fromHex("580062006300");
    QTest::newRow("zero unit") << fromHex("0000") << fromHex("000062006300");
    QTest::newRow("odd count") << fromHex("58005A") << fromHex("58005A006300");
    QTest::newRow("pair FF FF stays") << fromHex("5800FFFF") << fromHex("5800FFFF6300");
}

void tst_fixed_strings_variant::takesUtf16Bytes()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, field);
    onClass([=](auto string) {
        string = QStringLiteral("abc");
        string = QVariant(bytes);
        QCOMPARE(string.byteArray(), padded(field, decltype(string)::byteCount)); // no terminator
    });
}

void tst_fixed_strings_variant::ignoresTooManyBytes()
{
    onClass([](auto string) {
        using String = decltype(string);
        const QByteArray exact(String::byteCount, 'x');
        string = QVariant(exact);
        QCOMPARE(string.byteArray(), exact);
        string = countedString<String>();
        string = QVariant(exact + 'y');
        QVERIFY(string == countedString<String>());
        string = QVariant(exact + exact);
        QVERIFY(string == countedString<String>());
        string = exact + 'y'; // as bytes themselves they are cut
        QCOMPARE(string.byteArray(), exact);
    });
}

void tst_fixed_strings_variant::takesItsOwnType()
{
    onClass([](auto string) {
        using String = decltype(string);
        string = QStringLiteral("a longer text");
        string = QVariant::fromValue(String(QStringLiteral("abc")));
        QVERIFY(string == String(QStringLiteral("abc"))); // the whole block, tail included
        QVERIFY(String(QVariant::fromValue(countedString<String>())) == countedString<String>());
    });
}

void tst_fixed_strings_variant::takesWhatConvertsToItsType()
{
    onClass([](auto string) {
        using String = decltype(string);
        string = QStringLiteral("a longer text");
        string = QVariant::fromValue(Label{QStringLiteral("spindle"), true});
        QVERIFY(string == String(QStringLiteral("spindle")));
    });
}

void tst_fixed_strings_variant::failedConversionEmptiesTheField()
{
    onClass([](auto string) {
        using String = decltype(string);
        string = countedString<String>();
        string = QVariant::fromValue(Label{QStringLiteral("spindle"), false});
        QVERIFY(string == String());
    });
}

void tst_fixed_strings_variant::ignoresOtherTypes_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("no type") << QVariant();
    QTest::newRow("int") << QVariant(5);
    QTest::newRow("double") << QVariant(1.5);
    QTest::newRow("bool") << QVariant(true);
    QTest::newRow("QChar") << QVariant(QChar(u'x'));
    QTest::newRow("list of texts") << QVariant(QStringList{QStringLiteral("x")});
    QTest::newRow("date") << QVariant(QDate(2021, 3, 4));
    QTest::newRow("type of the program") << QVariant::fromValue(Unrelated{7});
}

void tst_fixed_strings_variant::ignoresOtherTypes()
{
    QFETCH(QVariant, value);
    onClass([=](auto string) {
        using String = decltype(string);
        string = countedString<String>();
        String &result = (string = value);
        QCOMPARE(&result, &string);
        QVERIFY(string == countedString<String>());
        QVERIFY(String(value) == String());
    });
}

void tst_fixed_strings_variant::constructorStartsFromAnEmptyField()
{
    onClass([](auto empty) {
        using String = decltype(empty);
        QVERIFY(String(QVariant(QStringLiteral("abc"))) == String(QStringLiteral("abc")));
        QVERIFY(String(QVariant(fromHex("6100"))) == String(QStringLiteral("a")));
        QVERIFY(String(QVariant(QByteArray(String::byteCount + 1, 'x'))) == String());
    });
}

void tst_fixed_strings_variant::becomesAVariantOfItsType()
{
    onClass([](auto string) {
        using String = decltype(string);
        string = countedString<String>();
        string = QStringLiteral("abc");
        const QVariant held = string.operator QVariant();
        QCOMPARE(held.userType(), qMetaTypeId<String>());
        QVERIFY(held.template value<String>() == string); // the tail is part of it
        QVERIFY(!String().operator QVariant().isNull());
    });
}

void tst_fixed_strings_variant::fromByteArray_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("moreThanField");
    QTest::newRow("none") << 0 << false;
    QTest::newRow("one byte") << 1 << false;
    QTest::newRow("one unit") << 2 << false;
    QTest::newRow("one unit below the field") << -2 << true;
    QTest::newRow("the field") << 0 << true;
    QTest::newRow("one byte above the field") << 1 << true;
    QTest::newRow("twenty bytes above the field") << 20 << true;
}

void tst_fixed_strings_variant::fromByteArray()
{
    QFETCH(int, size);
    QFETCH(bool, moreThanField);
    onClass([=](auto empty) {
        using String = decltype(empty);
        QByteArray bytes;
        for (int i = 0; i < size + (moreThanField ? String::byteCount : 0); ++i)
            bytes.append(char(i % 2 == 0 ? 0x41 + i % 64 : 0));
        bool ok = false;
        const String string = String::fromByteArray(bytes, &ok);
        QVERIFY(ok);
        QCOMPARE(string.byteArray(), padded(bytes.left(String::byteCount), String::byteCount));
    });
}

void tst_fixed_strings_variant::fromByteArrayNeedsNoFlag()
{
    onClass([](auto empty) {
        using String = decltype(empty);
        QVERIFY(String::fromByteArray(fromHex("41004200"), nullptr) == String(QStringLiteral("AB")));
        QVERIFY(String::fromByteArray(fromHex("41004200")) == String(QStringLiteral("AB")));
    });
}

void tst_fixed_strings_variant::qtCodecAcceptsAllBytes_data()
{
    // Qt's codec "UTF-16" replaces what it cannot decode and counts none of it as invalid.
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("none") << QByteArray();
    QTest::newRow("text") << fromHex("41004200");
    QTest::newRow("odd count") << fromHex("410042");
    QTest::newRow("high surrogate alone") << fromHex("00D84100");
    QTest::newRow("low surrogate alone") << fromHex("00DC");
    QTest::newRow("surrogates in the wrong order") << fromHex("00DC00D8");
    QTest::newRow("byte-order mark") << fromHex("FFFE4100");
    QTest::newRow("swapped byte-order mark") << fromHex("FEFF0041");
    QTest::newRow("unit FFFF") << fromHex("FFFFFFFF");
}

void tst_fixed_strings_variant::qtCodecAcceptsAllBytes()
{
    QFETCH(QByteArray, bytes);
    onClass([=](auto empty) {
        using String = decltype(empty);
        QVERIFY(String::isUTF16(bytes));
        QVERIFY(String(bytes).isValid());
        bool ok = false;
        String::fromByteArray(bytes, &ok);
        QVERIFY(ok);
    });
}

void tst_fixed_strings_variant::textWinsOverAConverter()
{
    onClass([](auto string) {
        using String = decltype(string);
        QVERIFY((QMetaType::registerConverter<QString, String>(
            [](const QString &) { return String(QStringLiteral("converted")); })));
        string = QVariant(QStringLiteral("text"));
        QCOMPARE(string.str(), QStringLiteral("text"));
    });
}

void tst_fixed_strings_variant::bytesWinOverAConverter()
{
    onClass([](auto string) {
        using String = decltype(string);
        QVERIFY((QMetaType::registerConverter<QByteArray, String>(
            [](const QByteArray &) { return String(QStringLiteral("converted")); })));
        string = QVariant(fromHex("41000000"));
        QCOMPARE(string.str(), QStringLiteral("A"));
        string = QVariant(QByteArray(String::byteCount + 1, 'x'));
        QCOMPARE(string.str(), QStringLiteral("A")); // refused as bytes, no other rule is tried
    });
}

QTEST_GUILESS_MAIN(tst_fixed_strings_variant)

#include "tst_fixed_strings_variant.moc"
