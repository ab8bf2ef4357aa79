// SPDX-License-Identifier: MIT
#include <CString128.h>
#include <CString32.h>
#include <CString64.h>
#include <LoggedTest.h>
#include <NTypes.h>

#include <QTest>
#include <QVariant>

#include <cstddef>
#include <cstring>
#include <limits>
#include <type_traits>

namespace {

// Every name of the library's value types that Qt knows at this moment.
QStringList registeredValueTypeNames()
{
    QStringList names;
    for (int id = QMetaType::User; QMetaType::isRegistered(id); ++id) {
        const QString name = QString::fromLatin1(QMetaType::typeName(id));
        if (name.startsWith(QLatin1String("NTypes::")) || name.startsWith(QLatin1String("CString")))
            names << name;
    }
    names.sort();
    return names;
}

QByteArray fromHex(const char *hex)
{
    return QByteArray::fromHex(QByteArray(hex));
}

template<typename Record>
Record recordOfBytes(const QByteArray &bytes)
{
    Record record = {};
    Q_ASSERT(bytes.size() == int(sizeof record));
    std::memcpy(&record, bytes.constData(), sizeof record);
    return record;
}

template<typename Record>
QByteArray bytesOf(const Record &record)
{
    return QByteArray(reinterpret_cast<const char *>(&record), int(sizeof record));
}

// The sign of the order in which QVariant sorts values of one type (its operators are deprecated), 9 for none.
int orderOf(const QVariant &a, const QVariant &b)
{
    int order = 9;
    return QMetaType::compare(a.constData(), b.constData(), a.userType(), &order) ? order : 9;
}

template<typename Record>
void addHeldInPlaceRow(const char *name)
{
    QTest::newRow(name) << QVariant::fromValue(Record{}) << int(sizeof(Record));
}

} // namespace

class tst_record_types : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    // First: nothing in this program may have made a value of these types before.
    void namesAreRegisteredWhenTheLibraryIsLoaded();
    void typesHaveTheirNames();
    void unionsAndPartsAreNoMetaTypes();
    void recordsArePlainValues();

    void sVersionLayout();
    void sVersionReadsAsOneWord();
    void sVersion4Layout();
    void sVersion4x8Layout();
    void ipv4AddressIsTheNumberInHostOrder();
    void commandIsOneWord();
    void sDateTimeLayout();
    void sDateTimeReadsAsOneWord();
    void sTimeAndSDateFieldsAreSigned();
    void ds402ArrayLayout();
    void ds402RecordLayoutIsPacked();

    void heldInPlace_data();
    void heldInPlace();
    void equality_data();
    void equality();
    void order_data();
    void order();
    void notANumberEqualsItsOwnBits();
};

void tst_record_types::namesAreRegisteredWhenTheLibraryIsLoaded()
{
    const QStringList expected = {
        QStringLiteral("CString128"),
        QStringLiteral("CString32"),
        QStringLiteral("CString64"),
        QStringLiteral("NTypes::sCommand_t"),
        QStringLiteral("NTypes::sDateTime_t"),
        QStringLiteral("NTypes::sDs402Array_t<int16_t>"),
        QStringLiteral("NTypes::sDs402Array_t<int32_t>"),
        QStringLiteral("NTypes::sDs402Array_t<uint16_t>"),
        QStringLiteral("NTypes::sDs402Array_t<uint32_t>"),
        QStringLiteral("NTypes::sDs402Record01_t"),
        QStringLiteral("NTypes::sVersion4_t"),
        QStringLiteral("NTypes::sVersion_t"),
        QStringLiteral("NTypes::uIPv4HAddr_t"),
    };
    QCOMPARE(registeredValueTypeNames(), expected);
    for (const QString &name : expected)
        QVERIFY2(QMetaType::type(name.toLatin1()) >= QMetaType::User, qPrintable(name));
}

void tst_record_types::typesHaveTheirNames()
{
    const auto nameOf = [](int id) { return QByteArray(QMetaType::typeName(id)); };
    QCOMPARE(nameOf(qMetaTypeId<NTypes::sVersion_t>()), QByteArray("NTypes::sVersion_t"));
    QCOMPARE(nameOf(qMetaTypeId<NTypes::sVersion4_t>()), QByteArray("NTypes::sVersion4_t"));
    QCOMPARE(nameOf(qMetaTypeId<NTypes::uIPv4HAddr_t>()), QByteArray("NTypes::uIPv4HAddr_t"));
    QCOMPARE(nameOf(qMetaTypeId<NTypes::sCommand_t>()), QByteArray("NTypes::sCommand_t"));
    QCOMPARE(nameOf(qMetaTypeId<NTypes::sDateTime_t>()), QByteArray("NTypes::sDateTime_t"));
    QCOMPARE(nameOf(qMetaTypeId<NTypes::sDs402Record01_t>()), QByteArray("NTypes::sDs402Record01_t"));
    QCOMPARE(nameOf(qMetaTypeId<NTypes::sDs402Array_t<short>>()),
             QByteArray("NTypes::sDs402Array_t<int16_t>"));
    QCOMPARE(nameOf(qMetaTypeId<NTypes::sDs402Array_t<int>>()), QByteArray("NTypes::sDs402Array_t<int32_t>"));
    QCOMPARE(nameOf(qMetaTypeId<NTypes::sDs402Array_t<unsigned short>>()),
             QByteArray("NTypes::sDs402Array_t<uint16_t>"));
    QCOMPARE(nameOf(qMetaTypeId<NTypes::sDs402Array_t<unsigned int>>()),
             QByteArray("NTypes::sDs402Array_t<uint32_t>"));
    QCOMPARE(nameOf(qMetaTypeId<CString32>()), QByteArray("CString32"));
    QCOMPARE(nameOf(qMetaTypeId<CString64>()), QByteArray("CString64"));
    QCOMPARE(nameOf(qMetaTypeId<CString128>()), QByteArray("CString128"));
    QCOMPARE(registeredValueTypeNames().size(), 13); // asking did not register any of them a second time
}

void tst_record_types::unionsAndPartsAreNoMetaTypes()
{
    QVERIFY(!QMetaTypeId2<NTypes::uVersion_t>::Defined);
    QVERIFY(!QMetaTypeId2<NTypes::uVersion4_t>::Defined);
    QVERIFY(!QMetaTypeId2<NTypes::uCommand_t>::Defined);
    QVERIFY(!QMetaTypeId2<NTypes::uDateTimeVal_t>::Defined);
    const QList<QByteArray> names = {"NTypes::uVersion_t",     "NTypes::uVersion4_t",   "NTypes::uCommand_t",
                                     "NTypes::uDateTimeVal_t", "NTypes::sVersion4x8_t", "NTypes::sTime_t",
                                     "NTypes::sDate_t"};
    for (const QByteArray &name : names)
        QVERIFY2(QMetaType::type(name) == QMetaType::UnknownType, name.constData());
}

void tst_record_types::recordsArePlainValues()
{
    const auto isPlain = [](auto record, std::size_t size) {
        using Record = decltype(record);
        return sizeof(Record) == size && std::is_trivially_copyable<Record>::value
               && std::is_trivially_default_constructible<Record>::value
               && std::is_standard_layout<Record>::value;
    };
    QVERIFY(isPlain(NTypes::sVersion_t(), 4));
    QVERIFY(isPlain(NTypes::uVersion_t(), 4));
    QVERIFY(isPlain(NTypes::sVersion4_t(), 8));
    QVERIFY(isPlain(NTypes::uVersion4_t(), 8));
    QVERIFY(isPlain(NTypes::sVersion4x8_t(), 4));
    QVERIFY(isPlain(NTypes::uIPv4HAddr_t(), 4));
    QVERIFY(isPlain(NTypes::sCommand_t(), 4));
    QVERIFY(isPlain(NTypes::uCommand_t(), 4));
    QVERIFY(isPlain(NTypes::sTime_t(), 4));
    QVERIFY(isPlain(NTypes::sDate_t(), 4));
    QVERIFY(isPlain(NTypes::sDateTime_t(), 8));
    QVERIFY(isPlain(NTypes::uDateTimeVal_t(), 8));
    QVERIFY(isPlain(NTypes::sDs402Array_t<short>(), 6));
    QVERIFY(isPlain(NTypes::sDs402Array_t<int>(), 12));
    QVERIFY(isPlain(NTypes::sDs402Array_t<unsigned short>(), 6));
    QVERIFY(isPlain(NTypes::sDs402Array_t<unsigned int>(), 12));
    QVERIFY(isPlain(NTypes::sDs402Record01_t(), 7));
}

void tst_record_types::sVersionLayout()
{
    QCOMPARE(offsetof(NTypes::sVersion_t, build), std::size_t(0));
    QCOMPARE(offsetof(NTypes::sVersion_t, minor), std::size_t(2));
    QCOMPARE(offsetof(NTypes::sVersion_t, major), std::size_t(3));
    const auto version = recordOfBytes<NTypes::sVersion_t>(fromHex("FEFF80F0"));
    QCOMPARE(int(version.build), 65534);
    QCOMPARE(int(version.minor), 128);
    QCOMPARE(int(version.major), 240);
}

void tst_record_types::sVersionReadsAsOneWord()
{
    NTypes::uVersion_t view = {};
    view.version.major = 2;
    view.version.minor = 5;
    view.version.build = 300;
    QCOMPARE(view.value, 0x0205012CU);
    QCOMPARE(view.value, 2U * (1U << 24) + 5U * (1U << 16) + 300U);
    QCOMPARE(bytesOf(view.version), fromHex("2C010502"));
}

void tst_record_types::sVersion4Layout()
{
    QCOMPARE(offsetof(NTypes::sVersion4_t, fourth), std::size_t(0));
    QCOMPARE(offsetof(NTypes::sVersion4_t, third), std::size_t(2));
    QCOMPARE(offsetof(NTypes::sVersion4_t, second), std::size_t(4));
    QCOMPARE(offsetof(NTypes::sVersion4_t, first), std::size_t(6));
    NTypes::uVersion4_t view = {};
    view.version.first = 0x0102;
    view.version.second = 0x0304;
    view.version.third = 0x0506;
    view.version.fourth = 0xFFFE;
    QCOMPARE(view.value, Q_UINT64_C(0x010203040506FFFE));
    QCOMPARE(bytesOf(view.version), fromHex("FEFF060504030201"));
}

void tst_record_types::sVersion4x8Layout()
{
    QCOMPARE(offsetof(NTypes::sVersion4x8_t, fourth), std::size_t(0));
    QCOMPARE(offsetof(NTypes::sVersion4x8_t, third), std::size_t(1));
    QCOMPARE(offsetof(NTypes::sVersion4x8_t, second), std::size_t(2));
    QCOMPARE(offsetof(NTypes::sVersion4x8_t, first), std::size_t(3));
    const auto version = recordOfBytes<NTypes::sVersion4x8_t>(fromHex("FF800201"));
    QCOMPARE(int(version.fourth), 255);
    QCOMPARE(int(version.third), 128);
    QCOMPARE(int(version.second), 2);
    QCOMPARE(int(version.first), 1);
}

void tst_record_types::ipv4AddressIsTheNumberInHostOrder()
{
    NTypes::uIPv4HAddr_t address = {};
    address.value = 0xC0A80001; // 192.168.0.1
    QCOMPARE(bytesOf(address), fromHex("0100A8C0"));
}

void tst_record_types::commandIsOneWord()
{
    NTypes::uCommand_t view = {};
    view.value = 0x12345678;
    QCOMPARE(view.command.value, 0x12345678U);
    QCOMPARE(bytesOf(view.command), fromHex("78563412"));
}

void tst_record_types::sDateTimeLayout()
{
    QCOMPARE(offsetof(NTypes::sTime_t, hundredths), std::size_t(0));
    QCOMPARE(offsetof(NTypes::sTime_t, second), std::size_t(1));
    QCOMPARE(offsetof(NTypes::sTime_t, minute), std::size_t(2));
    QCOMPARE(offsetof(NTypes::sTime_t, hour), std::size_t(3));
    QCOMPARE(offsetof(NTypes::sDate_t, day), std::size_t(0));
    QCOMPARE(offsetof(NTypes::sDate_t, month), std::size_t(1));
    QCOMPARE(offsetof(NTypes::sDate_t, year), std::size_t(2));
    QCOMPARE(offsetof(NTypes::sDateTime_t, time), std::size_t(0));
    QCOMPARE(offsetof(NTypes::sDateTime_t, date), std::size_t(4));
    const NTypes::sDateTime_t moment = {{67, 45, 30, 12}, {1, 3, 2024}}; // 2024-03-01 12:30:45.67
    QCOMPARE(bytesOf(moment), fromHex("432D1E0C0103E807"));
    QCOMPARE(bytesOf(moment).left(6), QByteArray("\x43\x2D\x1E\x0C\x01\x03", 6)); // 67, 45, 30, 12, 1, 3
}

void tst_record_types::sDateTimeReadsAsOneWord()
{
    NTypes::uDateTimeVal_t view = {};
    view.dateTime.time = {89, 7, 6, 5};
    view.dateTime.date = {4, 3, 2021};
    QCOMPARE(view.value, Q_UINT64_C(0x07E5030405060759)); // the date is the high half
    view.value = 0;
    QCOMPARE(bytesOf(view.dateTime), QByteArray(8, '\0'));
}

void tst_record_types::sTimeAndSDateFieldsAreSigned()
{
    const auto moment = recordOfBytes<NTypes::sDateTime_t>(QByteArray(8, '\xFF'));
    QCOMPARE(int(moment.time.hundredths), -1);
    QCOMPARE(int(moment.time.second), -1);
    QCOMPARE(int(moment.time.minute), -1);
    QCOMPARE(int(moment.time.hour), -1);
    QCOMPARE(int(moment.date.day), -1);
    QCOMPARE(int(moment.date.month), -1);
    QCOMPARE(int(moment.date.year), -1);
}

void tst_record_types::ds402ArrayLayout()
{
    const auto shorts = recordOfBytes<NTypes::sDs402Array_t<short>>(fromHex("0200FFFF0080"));
    QCOMPARE(int(shorts.entry[0]), 2);
    QCOMPARE(int(shorts.entry[1]), -1);
    QCOMPARE(int(shorts.entry[2]), -32768);
    const auto unsignedShorts = recordOfBytes<NTypes::sDs402Array_t<unsigned short>>(fromHex("0200FFFF0080"));
    QCOMPARE(int(unsignedShorts.entry[1]), 65535);
    QCOMPARE(int(unsignedShorts.entry[2]), 32768);
    const auto ints = recordOfBytes<NTypes::sDs402Array_t<int>>(fromHex("02000000FFFFFFFF00000080"));
    QCOMPARE(ints.entry[0], 2);
    QCOMPARE(ints.entry[1], -1);
    QCOMPARE(ints.entry[2], std::numeric_limits<int>::min());
    const auto words =
        recordOfBytes<NTypes::sDs402Array_t<unsigned int>>(fromHex("02000000FFFFFFFF00000080"));
    QCOMPARE(words.entry[1], 4294967295U);
    QCOMPARE(words.entry[2], 2147483648U);
    QCOMPARE(std::extent<decltype(words.entry)>::value, std::size_t(3));
}

void tst_record_types::ds402RecordLayoutIsPacked()
{
    QCOMPARE(offsetof(NTypes::sDs402Record01_t, head), std::size_t(0));
    QCOMPARE(offsetof(NTypes::sDs402Record01_t, value), std::size_t(1));
    QCOMPARE(offsetof(NTypes::sDs402Record01_t, tail), std::size_t(5));
    QCOMPARE(alignof(NTypes::sDs402Record01_t), std::size_t(1));
    const auto record = recordOfBytes<NTypes::sDs402Record01_t>(fromHex("020000803FFEFF"));
    QCOMPARE(int(record.head), 2);
    QCOMPARE(float(record.value), 1.0F); // the catalogue's range is that of a single-precision value
    QCOMPARE(int(record.tail), 65534);
}

void tst_record_types::heldInPlace_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("size");
    addHeldInPlaceRow<NTypes::sVersion_t>("sVersion_t");
    addHeldInPlaceRow<NTypes::sVersion4_t>("sVersion4_t");
    addHeldInPlaceRow<NTypes::uIPv4HAddr_t>("uIPv4HAddr_t");
    addHeldInPlaceRow<NTypes::sCommand_t>("sCommand_t");
    addHeldInPlaceRow<NTypes::sDateTime_t>("sDateTime_t");
    addHeldInPlaceRow<NTypes::sDs402Record01_t>("sDs402Record01_t");
    addHeldInPlaceRow<NTypes::sDs402Array_t<short>>("sDs402Array_t<short>");
    addHeldInPlaceRow<NTypes::sDs402Array_t<unsigned short>>("sDs402Array_t<unsigned short>");
}

void tst_record_types::heldInPlace()
{
    QFETCH(QVariant, value);
    QFETCH(int, size);
    const char *const begin = reinterpret_cast<const char *>(&value);
    const char *const data = static_cast<const char *>(value.constData());
    QVERIFY(data >= begin);
    QVERIFY(data + size <= begin + sizeof value);
    QVERIFY(!value.isNull()); // an all-zero record is a value
    QVERIFY(value.isValid());
}

void tst_record_types::equality_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariant>("same");
    QTest::addColumn<QVariant>("other");
    const auto row = [](const char *name, const auto &value, const auto &other) {
        const auto same = value;
        QTest::newRow(name) << QVariant::fromValue(value) << QVariant::fromValue(same)
                            << QVariant::fromValue(other);
    };
    row("version, build", NTypes::sVersion_t{300, 5, 2}, NTypes::sVersion_t{301, 5, 2});
    row("version, minor", NTypes::sVersion_t{300, 5, 2}, NTypes::sVersion_t{300, 6, 2});
    row("version, major", NTypes::sVersion_t{300, 5, 2}, NTypes::sVersion_t{300, 5, 3});
    row("version 4, first", NTypes::sVersion4_t{4, 3, 2, 1}, NTypes::sVersion4_t{4, 3, 2, 2});
    row("version 4, fourth", NTypes::sVersion4_t{4, 3, 2, 1}, NTypes::sVersion4_t{5, 3, 2, 1});
    row("address", NTypes::uIPv4HAddr_t{1}, NTypes::uIPv4HAddr_t{0x80000001});
    row("command", NTypes::sCommand_t{1}, NTypes::sCommand_t{0x80000001});
    row("date-time, hundredths", NTypes::sDateTime_t{{1, 2, 3, 4}, {5, 6, 7}},
        NTypes::sDateTime_t{{2, 2, 3, 4}, {5, 6, 7}});
    row("date-time, year", NTypes::sDateTime_t{{1, 2, 3, 4}, {5, 6, 7}},
        NTypes::sDateTime_t{{1, 2, 3, 4}, {5, 6, 8}});
    row("record, head", NTypes::sDs402Record01_t{2, 1.0F, 3}, NTypes::sDs402Record01_t{3, 1.0F, 3});
    row("record, value", NTypes::sDs402Record01_t{2, 1.0F, 3}, NTypes::sDs402Record01_t{2, 1.5F, 3});
    row("record, tail", NTypes::sDs402Record01_t{2, 1.0F, 3}, NTypes::sDs402Record01_t{2, 1.0F, 4});
    row("short array, first", NTypes::sDs402Array_t<short>{{2, 1, 0}},
        NTypes::sDs402Array_t<short>{{3, 1, 0}});
    row("int array, second", NTypes::sDs402Array_t<int>{{2, 1, 0}}, NTypes::sDs402Array_t<int>{{2, 2, 0}});
    row("ushort array, third", NTypes::sDs402Array_t<unsigned short>{{2, 1, 0}},
        NTypes::sDs402Array_t<unsigned short>{{2, 1, 1}});
    row("uint array, third", NTypes::sDs402Array_t<unsigned int>{{2, 1, 0}},
        NTypes::sDs402Array_t<unsigned int>{{2, 1, 1}});
}

void tst_record_types::equality()
{
    QFETCH(QVariant, value);
    QFETCH(QVariant, same);
    QFETCH(QVariant, other);
    QVERIFY(value == same);
    QVERIFY(!(value != same));
    QVERIFY(value != other);
    QVERIFY(!(value == other));
}

void tst_record_types::order_data()
{
    QTest::addColumn<QVariant>("lower");
    QTest::addColumn<QVariant>("higher");
    const auto row = [](const char *name, const auto &lower, const auto &higher) {
        QTest::newRow(name) << QVariant::fromValue(lower) << QVariant::fromValue(higher);
    };
    row("version: minor over build", NTypes::sVersion_t{300, 5, 2}, NTypes::sVersion_t{1, 6, 2});
    row("version: major over minor", NTypes::sVersion_t{300, 255, 2}, NTypes::sVersion_t{1, 0, 3});
    row("version: major is unsigned", NTypes::sVersion_t{0, 0, 127}, NTypes::sVersion_t{0, 0, 128});
    row("version 4: first over fourth", NTypes::sVersion4_t{9, 9, 9, 1}, NTypes::sVersion4_t{0, 0, 0, 2});
    row("version 4: third over fourth", NTypes::sVersion4_t{9, 1, 0, 0}, NTypes::sVersion4_t{0, 2, 0, 0});
    row("version 4: first is unsigned", NTypes::sVersion4_t{0, 0, 0, 32767},
        NTypes::sVersion4_t{0, 0, 0, 32768});
    row("address", NTypes::uIPv4HAddr_t{0x0A000001}, NTypes::uIPv4HAddr_t{0xC0A80001});
    row("command", NTypes::sCommand_t{0x7FFFFFFF}, NTypes::sCommand_t{0x80000000});
    row("date-time: day over time", NTypes::sDateTime_t{{99, 59, 59, 23}, {1, 3, 2024}},
        NTypes::sDateTime_t{{0, 0, 0, 0}, {2, 3, 2024}});
    row("date-time: year over month", NTypes::sDateTime_t{{0, 0, 0, 0}, {31, 12, 2023}},
        NTypes::sDateTime_t{{0, 0, 0, 0}, {1, 1, 2024}});
    row("date-time: hour over minute", NTypes::sDateTime_t{{0, 0, 59, 1}, {1, 1, 2024}},
        NTypes::sDateTime_t{{0, 0, 0, 2}, {1, 1, 2024}});
}

void tst_record_types::order()
{
    QFETCH(QVariant, lower);
    QFETCH(QVariant, higher);
    QCOMPARE(orderOf(lower, higher), -1);
    QCOMPARE(orderOf(higher, lower), 1);
    QCOMPARE(orderOf(lower, lower), 0);
}

void tst_record_types::notANumberEqualsItsOwnBits()
{
    const NTypes::sDs402Record01_t record = {2, std::numeric_limits<float>::quiet_NaN(), 0};
    const NTypes::sDs402Record01_t same = record;
    QVERIFY(record == same);
    QVERIFY(!(record != same));
    const NTypes::sDs402Record01_t minusZero = {2, -0.0F, 0};
    const NTypes::sDs402Record01_t zero = {2, 0.0F, 0};
    QVERIFY(minusZero != zero);
}

QTEST_GUILESS_MAIN(tst_record_types)

#include "tst_record_types.moc"
