// SPDX-License-Identifier: MIT
// A number or a record of up to 8 bytes lives inside its variant; a copy of a fixed string shares its block.
#include "VariantCases.h"

#include <AllocationCounter.h>
#include <CDataTypeParser.h>
#include <LoggedTest.h>

#include <QTest>

#include <new>
#include <utility>

namespace {

template<typename Value>
void addValueRow(const char *name, const Value &value)
{
    QTest::newRow(name) << Make([value] { return CVariant(value); });
}

void addConstructorRows()
{
    addValueRow("signed char", static_cast<signed char>(-5));
    addValueRow("unsigned char", static_cast<unsigned char>(5));
    addValueRow("short", static_cast<short>(-5));
    addValueRow("unsigned short", static_cast<unsigned short>(5));
    addValueRow("int", -5);
    addValueRow("unsigned int", 5U);
    addValueRow("float", 1.5F);
    addValueRow("long long", Q_INT64_C(-5));
    addValueRow("unsigned long long", Q_UINT64_C(5));
    addValueRow("double", 1.5);
    addValueRow("QChar", QChar(u'x'));
    addValueRow("sDateTime_t", NTypes::sDateTime_t{{89, 7, 6, 5}, {4, 3, 2021}});
    addValueRow("uDateTimeVal_t", NTypes::uDateTimeVal_t());
    addValueRow("sVersion_t", NTypes::sVersion_t{300, 5, 2});
    addValueRow("uVersion_t", NTypes::uVersion_t());
    addValueRow("sVersion4_t", NTypes::sVersion4_t{4, 3, 2, 1});
    addValueRow("uVersion4_t", NTypes::uVersion4_t());
    addValueRow("uIPv4HAddr_t", NTypes::uIPv4HAddr_t{0xC0A80001});
    addValueRow("sCommand_t", NTypes::sCommand_t{5});
    addValueRow("uCommand_t", NTypes::uCommand_t());
    addValueRow("sDs402Record01_t", NTypes::sDs402Record01_t{2, 1.5F, 3});
    addValueRow("sDs402Array_t<short>", NTypes::sDs402Array_t<short>{{2, 1, 0}});
    addValueRow("sDs402Array_t<unsigned short>", NTypes::sDs402Array_t<unsigned short>{{2, 1, 0}});
}

// The types of up to 8 bytes that are no text and no byte array.
const QList<int> &smallTypes()
{
    static const QList<int> types = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 16, 19, 21, 22, 23, 26, 27, 30, 32};
    return types;
}

void addRawRows()
{
    for (const int type : smallTypes()) {
        const auto size = CDataTypeParser::typeSize(typeOf(type));
        const QByteArray bytes(int(size), '\x12');
        const QByteArray name = CDataTypeParser::typeToEnum(typeOf(type)).toLatin1();
        QTest::newRow((name + ", default").constData()) << Make([=] { return CVariant(typeOf(type)); });
        QTest::newRow((name + ", fromRawData").constData())
            << Make([=] { return CVariant::fromRawData(bytes.constData(), size, typeOf(type)); });
        QTest::newRow((name + ", fromByteArray").constData())
            << Make([=] { return CVariant::fromByteArray(bytes, typeOf(type)); });
        QTest::newRow((name + ", from bytes").constData())
            << Make([=] { return CVariant(bytes, typeOf(type)); });
        QTest::newRow((name + ", no raw data").constData())
            << Make([=] { return CVariant::fromRawData(nullptr, 0, typeOf(type)); });
    }
}

void copyAndMove(const CVariant &value)
{
    CVariant copy(value);
    CVariant assigned;
    assigned = value;
    const CVariant moved(std::move(copy));
    assigned = moved;
    copy = std::move(assigned);
}

} // namespace

class tst_allocations : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void everyAllocationIsCounted();
    void smallValuesAreMadeAndCopiedInPlace_data();
    void smallValuesAreMadeAndCopiedInPlace();
    void smallValuesAreReplacedInPlace();
    void largeValueIsOverwrittenInPlace();
    void copiesOfFixedStringsShareTheBlock();
    void copiesOfFixedStringValuesShareTheBlock();
};

void tst_allocations::initTestCase()
{
    if (!AllocationCounter::isAvailable())
        QTest::qSkip("allocations are not counted: this needs glibc, and no valgrind", __FILE__, __LINE__);
}

void tst_allocations::everyAllocationIsCounted()
{
    // A count of 0 means something only where these are seen.
    void *volatile block = nullptr; // so that the compiler cannot leave the allocation out
    const auto newAndDelete = [&block] {
        block = ::operator new(10);
        ::operator delete(block);
    };
    QCOMPARE(allocationsOf([] {}), 0L);
    QCOMPARE(allocationsOf(newAndDelete), 1L);
    QCOMPARE(allocationsOf([] { return QByteArray(100, 'x').size(); }), 1L); // inside Qt
    QVERIFY(allocationsOf([] { return CString32(QStringLiteral("text")).isNull(); })
            > 0); // inside the library
    QVERIFY(allocationsOf([] { return CVariant(NTypes::sDs402Array_t<int>()).isNull(); }) > 0); // 12 bytes
}

void tst_allocations::smallValuesAreMadeAndCopiedInPlace_data()
{
    QTest::addColumn<Make>("make");
    addConstructorRows();
    addRawRows();
}

void tst_allocations::smallValuesAreMadeAndCopiedInPlace()
{
    QFETCH(Make, make);
    QCOMPARE(allocationsOf([&make] { copyAndMove(make()); }), 0L);
}

void tst_allocations::smallValuesAreReplacedInPlace()
{
    CVariant variant;
    const QByteArray bytes(8, 'x');
    QCOMPARE(allocationsOf([&variant, &bytes] {
                 variant = 5;
                 variant = 6;
                 variant = 1.5F;
                 variant = NTypes::sVersion_t{300, 5, 2};
                 variant = NTypes::sDateTime_t();
                 variant = NTypes::sDs402Record01_t{2, 1.5F, 3};
                 variant.setRawData(bytes.constData(), 8, NTypes::E_U64);
                 variant.setRawData(bytes.constData(), 8, NTypes::E_F64);
                 variant.setDefaultValue(NTypes::E_VERSION_4);
                 variant.fromByteArray(bytes);
             }),
             0L);
}

void tst_allocations::largeValueIsOverwrittenInPlace()
{
    CVariant array(NTypes::sDs402Array_t<int>{{2, 1, 0}});
    QCOMPARE(allocationsOf([&array] { array = NTypes::sDs402Array_t<int>{{2, 8, 9}}; }), 0L);
    const CString128 other(QStringLiteral("other"));
    CVariant text(CString128(QStringLiteral("text")));
    QCOMPARE(allocationsOf([&text, &other] { text = other; }), 0L);
}

void tst_allocations::copiesOfFixedStringsShareTheBlock()
{
    const auto copiesOf = [](const auto &string) {
        return allocationsOf([&string] {
            auto copy(string);
            const auto again = copy;
            copy = again;
        });
    };
    QCOMPARE(copiesOf(CString32(QStringLiteral("text"))), 0L);
    QCOMPARE(copiesOf(CString64(QStringLiteral("text"))), 0L);
    QCOMPARE(copiesOf(CString128(QStringLiteral("text"))), 0L);
}

void tst_allocations::copiesOfFixedStringValuesShareTheBlock()
{
    for (const CVariant &value :
         {CVariant(CString32(QStringLiteral("text"))), CVariant(CString64(QStringLiteral("text"))),
          CVariant(CString128(QStringLiteral("text"))), CVariant(NTypes::E_STRING32)})
        QCOMPARE(allocationsOf([&value] { copyAndMove(value); }), 0L);
}

QTEST_GUILESS_MAIN(tst_allocations)

#include "tst_allocations.moc"
