// SPDX-License-Identifier: MIT
#include "VariantCases.h"

#include <LoggedTest.h>

#include <QDateTime>
#include <QTest>

#include <atomic>
#include <cstring>
#include <functional>
#include <limits>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

// A value that Qt shares, and how many of them there are.
class Counted
{
public:
    Counted() { ++alive; }
    Counted(const Counted &) { ++alive; }
    Counted &operator=(const Counted &) = default;
    ~Counted() { --alive; }

    static inline std::atomic<int> alive = 0;
};

} // namespace

Q_DECLARE_METATYPE(Counted)

namespace {

using Assign = std::function<void(CVariant &)>;

// A value, and the tag and the held value that constructing from it and assigning it must give.
template<typename Value>
void addRow(const char *name, const Value &value, NTypes::eTypes_t tag, const QVariant &held)
{
    const Make construct = [value] { return CVariant(value); };
    const Assign assign = [value](CVariant &variant) { variant = value; };
    QTest::newRow(name) << construct << assign << int(tag) << held;
}

template<typename Value>
QVariant held(const Value &value)
{
    return QVariant::fromValue(value);
}

void addNumberRows()
{
    addRow("signed char", static_cast<signed char>(-5), NTypes::E_I8, held<signed char>(-5));
    addRow("signed char, smallest", static_cast<signed char>(-128), NTypes::E_I8, held<signed char>(-128));
    addRow("unsigned char", static_cast<unsigned char>(200), NTypes::E_U8, held<unsigned char>(200));
    addRow("short", static_cast<short>(-32768), NTypes::E_I16, held<short>(-32768));
    addRow("unsigned short", static_cast<unsigned short>(65535), NTypes::E_U16, held<unsigned short>(65535));
    addRow("int", std::numeric_limits<int>::min(), NTypes::E_I32, held(std::numeric_limits<int>::min()));
    addRow("unsigned int", 4294967295U, NTypes::E_U32, held(4294967295U));
    addRow("float", 1.5F, NTypes::E_F32, held(1.5F));
    addRow("long long", Q_INT64_C(-9223372036854775807), NTypes::E_I64,
           held<qlonglong>(Q_INT64_C(-9223372036854775807)));
    addRow("unsigned long long", ~Q_UINT64_C(0), NTypes::E_U64, held<qulonglong>(~Q_UINT64_C(0)));
    addRow("double", -0.1, NTypes::E_F64, held(-0.1));
    addRow("zero unsigned char", static_cast<unsigned char>(0), NTypes::E_U8, held<unsigned char>(0));
    addRow("zero int", 0, NTypes::E_I32, held(0));
    addRow("zero double", 0.0, NTypes::E_F64, held(0.0));
}

void addCharacterRows()
{
    addRow("QChar", QChar(0x20AC), NTypes::E_UTF16CHAR, held(QChar(0x20AC)));
    addRow("QChar 0", QChar(0), NTypes::E_UTF16CHAR, held(QChar(0)));
    addRow("QChar, a surrogate", QChar(0xD800), NTypes::E_UTF16CHAR, held(QChar(0xD800)));
    addRow("char", 'x', NTypes::E_CHAR, held(QByteArray("x")));
    addRow("char 0", '\0', NTypes::E_CHAR, held(QByteArray(1, '\0')));
    addRow("char E4", '\xE4', NTypes::E_CHAR, held(QByteArray(1, '\xE4')));

    // All bytes are kept: those behind the zero as well.
    char text64[64] = "spindle";
    text64[9] = 'z';
    addRow("char[64]", text64, NTypes::E_CHARSTR64,
           held(QByteArray("spindle\0\0z", 10) + QByteArray(54, '\0')));
    char text128[128] = "axis";
    text128[127] = '\xFF';
    addRow("char[128]", text128, NTypes::E_CHARSTR128,
           held(QByteArray("axis") + QByteArray(123, '\0') + '\xFF'));
    char text256[256] = {};
    std::memset(text256, 'w', sizeof text256);
    addRow("char[256]", text256, NTypes::E_CHARSTR256, held(QByteArray(256, 'w')));
    const char zeros[64] = {};
    addRow("char[64], all zero", zeros, NTypes::E_CHARSTR64, held(QByteArray(64, '\0')));
}

void addFixedStringRows()
{
    unsigned short units32[32] = {0x53, 0x70, 0, 0x69};
    addRow("unsigned short[32]", units32, NTypes::E_STRING32, held(CString32(units32)));
    unsigned short units64[64] = {0x53, 0x70, 0, 0x69};
    addRow("unsigned short[64]", units64, NTypes::E_STRING64, held(CString64(units64)));
    unsigned short units128[128] = {0x53, 0x70, 0, 0x69};
    addRow("unsigned short[128]", units128, NTypes::E_STRING128, held(CString128(units128)));
    addRow("CString32", CString32(QStringLiteral("abc")), NTypes::E_STRING32,
           held(CString32(QStringLiteral("abc"))));
    addRow("CString64", CString64(QStringLiteral("abc")), NTypes::E_STRING64,
           held(CString64(QStringLiteral("abc"))));
    addRow("CString128", CString128(QStringLiteral("abc")), NTypes::E_STRING128,
           held(CString128(QStringLiteral("abc"))));
    addRow("empty CString32", CString32(), NTypes::E_STRING32, held(CString32()));
}

void addDateTimeRows()
{
    const NTypes::sDateTime_t record = {{89, 7, 6, 5}, {4, 3, 2021}};
    addRow("sDateTime_t", record, NTypes::E_DATETIME, held(record));
    addRow("sDateTime_t, all zero", NTypes::sDateTime_t(), NTypes::E_DATETIME, held(NTypes::sDateTime_t()));
    NTypes::uDateTimeVal_t view = {};
    view.dateTime = record;
    addRow("uDateTimeVal_t", view, NTypes::E_DATETIME, held(record)); // assigned by way of the constructor
    const QDateTime utc(QDate(2021, 3, 4), QTime(5, 6, 7, 899), Qt::UTC);
    addRow("QDateTime in UTC", utc, NTypes::E_DATETIME, held(record)); // hundredths are cut, not rounded
    addRow("CDateTime in UTC", CDateTime(utc), NTypes::E_DATETIME, held(record));
    const QDateTime local(QDate(2021, 3, 4), QTime(5, 6, 7, 890), Qt::LocalTime);
    addRow("QDateTime in local time", local, NTypes::E_DATETIME, held(record));
    addRow("CDateTime in local time", CDateTime(local), NTypes::E_DATETIME, held(record));
}

void addRecordRows()
{
    const NTypes::sVersion_t version = {300, 5, 2};
    addRow("sVersion_t", version, NTypes::E_VERSION, held(version));
    NTypes::uVersion_t versionView = {};
    versionView.version = version;
    addRow("uVersion_t", versionView, NTypes::E_VERSION, held(version));
    const NTypes::sVersion4_t version4 = {4, 3, 2, 1};
    addRow("sVersion4_t", version4, NTypes::E_VERSION_4, held(version4));
    NTypes::uVersion4_t version4View = {};
    version4View.version = version4;
    addRow("uVersion4_t", version4View, NTypes::E_VERSION_4, held(version4));
    addRow("uIPv4HAddr_t", NTypes::uIPv4HAddr_t{0xC0A80001}, NTypes::E_IPV4ADDR,
           held(NTypes::uIPv4HAddr_t{0xC0A80001}));
    addRow("sCommand_t", NTypes::sCommand_t{0x12345678}, NTypes::E_COMMAND,
           held(NTypes::sCommand_t{0x12345678}));
    NTypes::uCommand_t commandView = {};
    commandView.value = 0x12345678;
    addRow("uCommand_t", commandView, NTypes::E_COMMAND, held(NTypes::sCommand_t{0x12345678}));
    const NTypes::sDs402Record01_t record = {2, 1.5F, 0x1234};
    addRow("sDs402Record01_t", record, NTypes::E_DS402_ACC_REC, held(record));
    const NTypes::sDs402Array_t<short> shorts = {{2, -1, -32768}};
    addRow("sDs402Array_t<short>", shorts, NTypes::E_DS402_I16_ARRAY, held(shorts));
    const NTypes::sDs402Array_t<int> ints = {{2, -1, 65536}};
    addRow("sDs402Array_t<int>", ints, NTypes::E_DS402_I32_ARRAY, held(ints));
    const NTypes::sDs402Array_t<unsigned short> ushorts = {{2, 1, 65535}};
    addRow("sDs402Array_t<unsigned short>", ushorts, NTypes::E_DS402_U16_ARRAY, held(ushorts));
    const NTypes::sDs402Array_t<unsigned int> uints = {{2, 1, 4294967295U}};
    addRow("sDs402Array_t<unsigned int>", uints, NTypes::E_DS402_U32_ARRAY, held(uints));
}

void addHostAddressRows()
{
    const auto row = [](const char *name, const QHostAddress &address, quint32 number) {
        addRow(name, address, NTypes::E_IPV4ADDR,
               held(NTypes::uIPv4HAddr_t{number})); // assigned by way of the constructor
    };
    row("QHostAddress, IPv4", QHostAddress(QStringLiteral("192.168.0.1")), 0xC0A80001);
    row("QHostAddress, broadcast", QHostAddress(QHostAddress::Broadcast), 0xFFFFFFFF);
    row("QHostAddress, IPv6", QHostAddress(QStringLiteral("2001:db8::1")), 0);
    row("QHostAddress, none", QHostAddress(), 0);
}

// The bits of the held floating-point value, in memory order.
template<typename Float>
QByteArray bitsHeld(const CVariant &value)
{
    const auto number = heldBy(value).value<Float>();
    return QByteArray(reinterpret_cast<const char *>(&number), int(sizeof number)).toHex();
}

} // namespace

Q_DECLARE_METATYPE(Assign)

class tst_variant_storage : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void objectIsAVirtualTableAQVariantAndATag();
    void onlyTheDestructorIsVirtual();
    void emptyVariant();

    void constructFromValue_data() { addValueRows(); }
    void constructFromValue();
    void assignValue_data() { addValueRows(); }
    void assignValue();
    void constructedValueIsTyped_data() { addValueRows(); }
    void constructedValueIsTyped();
    void assignmentReplacesWhateverWasThere_data() { addValueRows(); }
    void assignmentReplacesWhateverWasThere();
    void dateTimeWithAnOffsetIsStoredAsQtConvertsIt();
    void notANumberKeepsItsBits();

    void largeValueIsOverwrittenInPlace();
    void sharedValueIsNotOverwritten();
    void copiesAreIndependent();
    void copiesInSeveralThreads();
    void lastCopyGoesInAnyThread();
    void copiesThatGoAtOnceLeaveNothing();
    void movingTakesTheValue();
    void assignmentToItself();

    void nullAndValid_data();
    void nullAndValid();
    void characterZeroIsNullButHeld();
    void unionsAreHeldAsTheirRecords();

private:
    static void addValueRows();
};

void tst_variant_storage::addValueRows()
{
    QTest::addColumn<Make>("construct");
    QTest::addColumn<Assign>("assign");
    QTest::addColumn<int>("tag");
    QTest::addColumn<QVariant>("held");
    addNumberRows();
    addCharacterRows();
    addFixedStringRows();
    addDateTimeRows();
    addRecordRows();
    addHostAddressRows();
}

void tst_variant_storage::objectIsAVirtualTableAQVariantAndATag()
{
    const bool is64Bit = sizeof(void *) == 8;
    QCOMPARE(sizeof(CVariant), is64Bit ? std::size_t(32) : sizeof(CVariant));
    QVERIFY(sizeof(CVariant) >= sizeof(void *) + sizeof(QVariant) + sizeof(NTypes::eTypes_t));
}

void tst_variant_storage::onlyTheDestructorIsVirtual()
{
    QVERIFY(std::has_virtual_destructor<CVariant>::value);
    // A class that replaces the destructor and adds nothing has the same size.
    class Derived : public CVariant
    {
    public:
        ~Derived() override = default;
    };
    QCOMPARE(sizeof(Derived), sizeof(CVariant));
    QVERIFY(std::is_copy_constructible<CVariant>::value);
    QVERIFY(std::is_copy_assignable<CVariant>::value);
    QVERIFY(std::is_nothrow_move_constructible<CVariant>::value);
    QVERIFY(std::is_nothrow_move_assignable<CVariant>::value);
}

void tst_variant_storage::emptyVariant()
{
    const CVariant empty;
    QCOMPARE(empty.type(), NTypes::E_UNKNOWN);
    QVERIFY(empty.isNull());
    QVERIFY(!empty.isValid());
    QCOMPARE(empty.size(), 0U);
    QCOMPARE(empty.count(), 0U);
    QVERIFY(!heldBy(empty).isValid());
    QVERIFY(heldBy(empty).isNull());
    QVERIFY(empty.toByteArray().isEmpty());
}

void tst_variant_storage::constructFromValue()
{
    QFETCH(Make, construct);
    QFETCH(int, tag);
    QFETCH(QVariant, held);
    const CVariant value = construct();
    QCOMPARE(int(value.type()), tag);
    QCOMPARE(heldBy(value).userType(), held.userType());
    QVERIFY(heldBy(value) == held);
}

void tst_variant_storage::assignValue()
{
    QFETCH(Assign, assign);
    QFETCH(int, tag);
    QFETCH(QVariant, held);
    CVariant value;
    assign(value);
    QCOMPARE(int(value.type()), tag);
    QCOMPARE(heldBy(value).userType(), held.userType());
    QVERIFY(heldBy(value) == held);
}

void tst_variant_storage::constructedValueIsTyped()
{
    // Whatever its value, an all-zero record included; but for U+0000, which is null to Qt.
    QFETCH(Make, construct);
    QFETCH(int, tag);
    QFETCH(QVariant, held);
    const CVariant value = construct();
    QCOMPARE(value.isNull(), tag == NTypes::E_UTF16CHAR && held.toChar().isNull());
    QVERIFY(value.isValid());
}

void tst_variant_storage::assignmentReplacesWhateverWasThere()
{
    QFETCH(Assign, assign);
    QFETCH(int, tag);
    QFETCH(QVariant, held);
    CVariant defaultOfTheType(typeOf(tag));
    CVariant noValueOfTheType;
    noValueOfTheType.setRawData(nullptr, 0, typeOf(tag));
    QVERIFY(noValueOfTheType.isNull());
    for (const CVariant &before :
         {defaultOfTheType, noValueOfTheType, CVariant(5), CVariant(QChar(0)),
          CVariant(CString64(QStringLiteral("text"))), CVariant(NTypes::E_BYTEARRAY)}) {
        const QVariant heldBefore = heldBy(before);
        CVariant value(before);
        assign(value); // over a shared value
        assign(value); // over its own
        QCOMPARE(int(value.type()), tag);
        QCOMPARE(heldBy(value).userType(), held.userType());
        QVERIFY(heldBy(value) == held);
        QCOMPARE(heldBy(value).isNull(), held.isNull());
        QVERIFY(heldBy(before) == heldBefore);
    }
}

void tst_variant_storage::dateTimeWithAnOffsetIsStoredAsQtConvertsIt()
{
    // As CDateTime::toDateTime() in the date-time's own time spec, Qt::OffsetFromUTC: Qt takes it as UTC.
    const QDateTime offset(QDate(2021, 3, 4), QTime(5, 6, 7, 890), Qt::OffsetFromUTC, 7200);
    NTypes::sDateTime_t expected = {};
    CDateTime(offset).toDateTime(expected, Qt::OffsetFromUTC);
    QCOMPARE(int(expected.time.hour), 3);
    QVERIFY(heldBy(CVariant(offset)) == held(expected));
    QVERIFY(heldBy(CVariant(CDateTime(offset))) == held(expected));
    CVariant assigned;
    assigned = offset;
    QVERIFY(heldBy(assigned) == held(expected));
}

void tst_variant_storage::notANumberKeepsItsBits()
{
    QCOMPARE(bitsHeld<float>(CVariant(std::numeric_limits<float>::quiet_NaN())), QByteArray("0000c07f"));
    QCOMPARE(bitsHeld<double>(CVariant(std::numeric_limits<double>::quiet_NaN())),
             QByteArray("000000000000f87f"));
    QCOMPARE(bitsHeld<float>(CVariant(-0.0F)), QByteArray("00000080"));
    QCOMPARE(bitsHeld<double>(CVariant(-std::numeric_limits<double>::infinity())),
             QByteArray("000000000000f0ff"));
}

void tst_variant_storage::largeValueIsOverwrittenInPlace()
{
    CVariant array(NTypes::sDs402Array_t<int>{{2, 1, 0}});
    const void *const placeOfArray = placeOfHeld(array);
    array = NTypes::sDs402Array_t<int>{{2, 8, 9}};
    QCOMPARE(placeOfHeld(array), placeOfArray);
    QVERIFY(heldBy(array) == held(NTypes::sDs402Array_t<int>{{2, 8, 9}}));

    CVariant text(CString128(QStringLiteral("before")));
    const void *const placeOfText = placeOfHeld(text);
    text = CString128(QStringLiteral("after"));
    QCOMPARE(placeOfHeld(text), placeOfText);
    QVERIFY(heldBy(text) == held(CString128(QStringLiteral("after"))));
}

void tst_variant_storage::sharedValueIsNotOverwritten()
{
    CVariant array(NTypes::sDs402Array_t<int>{{2, 1, 0}});
    const CVariant copy(array);
    const QVariant taken = heldBy(array);
    array = NTypes::sDs402Array_t<int>{{2, 8, 9}};
    QVERIFY(heldBy(array) == held(NTypes::sDs402Array_t<int>{{2, 8, 9}}));
    QVERIFY(heldBy(copy) == held(NTypes::sDs402Array_t<int>{{2, 1, 0}}));
    QVERIFY(taken == held(NTypes::sDs402Array_t<int>{{2, 1, 0}}));
}

void tst_variant_storage::copiesAreIndependent()
{
    CVariant original(5);
    CVariant constructed(original);
    CVariant assigned;
    assigned = original;
    original = QChar(u'x');
    QCOMPARE(constructed.type(), NTypes::E_I32);
    QCOMPARE(heldBy(constructed), QVariant(5));
    QCOMPARE(assigned.type(), NTypes::E_I32);
    QCOMPARE(heldBy(assigned), QVariant(5));
    assigned.setRawData("", 0, NTypes::E_U8);
    QCOMPARE(heldBy(constructed), QVariant(5));
}

void tst_variant_storage::copiesInSeveralThreads()
{
    const CVariant shared(CString128(QStringLiteral("spindle")));
    std::atomic<int> faults{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&faults, mine = shared, i] {
            for (int round = 0; round < 1000; ++round) {
                CVariant copy(mine);
                copy = CString128(QString::number(i));
                if (heldBy(copy) != held(CString128(QString::number(i))) || heldBy(mine) == heldBy(copy))
                    ++faults;
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(faults.load(), 0);
    QVERIFY(heldBy(shared) == held(CString128(QStringLiteral("spindle"))));
}

void tst_variant_storage::lastCopyGoesInAnyThread()
{
    const QString text = QStringLiteral("spindle");
    std::atomic<int> faults{0};
    for (int round = 0; round < 200; ++round) {
        CVariant shared = CVariant::fromStr(text, NTypes::E_STRING32);
        const auto use = [&faults, &text](const CVariant &mine) {
            CVariant copy(mine);
            faults += int(copy.toStr() != text);
        };
        std::thread first([&use, mine = shared] { use(mine); });
        std::thread second([&use, mine = shared] { use(mine); });
        use(shared);
        shared = CVariant();
        first.join();
        second.join();
    }
    QCOMPARE(faults.load(), 0);
}

// Two threads that let go of the last two copies at the same moment both find another holder.
void tst_variant_storage::copiesThatGoAtOnceLeaveNothing()
{
    constexpr std::size_t pairs = 50000;
    std::vector<CVariant> first(pairs);
    for (CVariant &value : first)
        value = CVariant().setRawData(held(Counted()), NTypes::E_UNKNOWN);
    std::vector<CVariant> second(first);
    QCOMPARE(Counted::alive.load(), int(pairs));
    std::vector<std::atomic<int>> arrived(pairs);
    const auto release = [&arrived](std::vector<CVariant> &values) {
        for (std::size_t i = 0; i < pairs; ++i) {
            ++arrived[i];
            for (int turn = 0; arrived[i] < 2; ++turn) {
                if (turn > 100) // the other one is not running
                    std::this_thread::yield();
            }
            values[i] = CVariant();
        }
    };
    std::thread other([&] { release(second); });
    release(first);
    other.join();
    QCOMPARE(Counted::alive.load(), 0);
}

void tst_variant_storage::movingTakesTheValue()
{
    CVariant source(CString128(QStringLiteral("spindle")));
    const CVariant constructed(std::move(source));
    QCOMPARE(constructed.type(), NTypes::E_STRING128);
    QVERIFY(heldBy(constructed) == held(CString128(QStringLiteral("spindle"))));
    CVariant other(NTypes::sVersion_t{300, 5, 2});
    CVariant assigned(5);
    assigned = std::move(other);
    QCOMPARE(assigned.type(), NTypes::E_VERSION);
    QVERIFY(heldBy(assigned) == held(NTypes::sVersion_t{300, 5, 2}));
    source = 7; // a moved-from variant takes a new value
    QCOMPARE(source.type(), NTypes::E_I32);
    QCOMPARE(heldBy(source), QVariant(7));
}

void tst_variant_storage::assignmentToItself()
{
    CVariant value(CString64(QStringLiteral("spindle")));
    const CVariant &alias = value;
    value = alias;
    QCOMPARE(value.type(), NTypes::E_STRING64);
    QVERIFY(heldBy(value) == held(CString64(QStringLiteral("spindle"))));
}

void tst_variant_storage::nullAndValid_data()
{
    QTest::addColumn<Make>("make");
    QTest::addColumn<bool>("null");
    QTest::addColumn<bool>("valid");
    const auto stored = [](const QVariant &value, int tag) -> Make {
        return [=] { return CVariant().setRawData(value, typeOf(tag)); };
    };
    QTest::newRow("empty") << Make([] { return CVariant(); }) << true << false;
    QTest::newRow("default number") << Make([] { return CVariant(NTypes::E_U8); }) << false << true;
    QTest::newRow("byte array without bytes")
        << Make([] { return CVariant(NTypes::E_BYTEARRAY); }) << true << false;
    QTest::newRow("type without a value") << stored(QVariant(), NTypes::E_U32) << true << false;
    QTest::newRow("value without a type") << stored(QVariant(5), NTypes::E_UNKNOWN) << true << false;
    QTest::newRow("null value of a type")
        << stored(QVariant(QVariant::String), NTypes::E_U32) << true << true;
    QTest::newRow("value of an unassigned tag") << stored(QVariant(5), 11) << false << true;
    QTest::newRow("value of a tag outside") << stored(QVariant(5), 40) << false << true;
    QTest::newRow("value of a negative tag") << stored(QVariant(5), -1) << false << true;
    QTest::newRow("number of another Qt type") << stored(QVariant(5), NTypes::E_F64) << false << true;
    QTest::newRow("too few raw bytes")
        << Make([] { return CVariant::fromRawData("abc", 3, NTypes::E_U32); }) << true << false;
    QTest::newRow("raw bytes") << Make([] { return CVariant::fromRawData("abcd", 4, NTypes::E_U32); })
                               << false << true;
}

void tst_variant_storage::nullAndValid()
{
    QFETCH(Make, make);
    QFETCH(bool, null);
    QFETCH(bool, valid);
    QCOMPARE(make().isNull(), null);
    QCOMPARE(make().isValid(), valid);
}

void tst_variant_storage::characterZeroIsNullButHeld()
{
    for (const CVariant &value : {CVariant(QChar(0)), CVariant(NTypes::E_UTF16CHAR),
                                  CVariant::fromRawData("\0", 2, NTypes::E_UTF16CHAR)}) {
        QCOMPARE(value.type(), NTypes::E_UTF16CHAR);
        QVERIFY(value.isNull());
        QVERIFY(value.isValid());
        QCOMPARE(heldBy(value).userType(), int(QMetaType::QChar));
        QCOMPARE(heldBy(value).toChar(), QChar(0));
    }
}

void tst_variant_storage::unionsAreHeldAsTheirRecords()
{
    QCOMPARE(heldBy(CVariant(NTypes::uVersion_t())).userType(), qMetaTypeId<NTypes::sVersion_t>());
    QCOMPARE(heldBy(CVariant(NTypes::uVersion4_t())).userType(), qMetaTypeId<NTypes::sVersion4_t>());
    QCOMPARE(heldBy(CVariant(NTypes::uCommand_t())).userType(), qMetaTypeId<NTypes::sCommand_t>());
    QCOMPARE(heldBy(CVariant(NTypes::uDateTimeVal_t())).userType(), qMetaTypeId<NTypes::sDateTime_t>());
    for (const char *name :
         {"NTypes::uVersion_t", "NTypes::uVersion4_t", "NTypes::uCommand_t", "NTypes::uDateTimeVal_t"})
        QCOMPARE(QMetaType::type(name), int(QMetaType::UnknownType));
}

QTEST_GUILESS_MAIN(tst_variant_storage)

#include "tst_variant_storage.moc"
