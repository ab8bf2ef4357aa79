// SPDX-License-Identifier: MIT
// One inventory in which every field has a value of its own, byte for byte in each form that the versions of
// the stream have: texts were Latin-1 before version 2, and there was no null text before version 3.
#include "DeviceCases.h"

#include <limits>

Q_DECLARE_METATYPE(QDataStream::ByteOrder)

using Sets = QMap<unsigned short, QString>;

namespace {

// List "Pl" of source -1 from 10.20.30.40 with device "D" under 80000001, at [2001:db8::a]:65535; its
// sub-device 2 "A" has the sets 0 "b" and 63 "é", of which 63 is active, and version 3.2.1.
constexpr char goldenInventory[] = "00000004 0050 006c"
                                   "ffffffff"
                                   "00000001"
                                   "80000001"
                                   "00000002 0053"
                                   "00000102"
                                   "01 20010db800000000000000000000000a ffffffff"
                                   "ffff"
                                   "00 01"
                                   "80000001"
                                   "00000002 0044"
                                   "00000002 00e9"
                                   "80000000"
                                   "ffffffff"
                                   "7fffffff"
                                   "808182838485868788898a8b8c8d8e8f 909192939495969798999a9b9c9d9e9f"
                                   "00000001"
                                   "02"
                                   "02 00000002 0041"
                                   "00000002"
                                   "003f 00000002 00e9"
                                   "0000 00000002 0062"
                                   "003f"
                                   "0001 02 03"
                                   "00 0a141e28"
                                   "fffffffe"
                                   "01020304";

constexpr char goldenInventoryLittle[] = "04000000 5000 6c00"
                                         "ffffffff"
                                         "01000000"
                                         "01000080"
                                         "02000000 5300"
                                         "02010000"
                                         "01 20010db800000000000000000000000a ffffffff"
                                         "ffff"
                                         "00 01"
                                         "01000080"
                                         "02000000 4400"
                                         "02000000 e900"
                                         "00000080"
                                         "ffffffff"
                                         "ffffff7f"
                                         "808182838485868788898a8b8c8d8e8f 909192939495969798999a9b9c9d9e9f"
                                         "01000000"
                                         "02"
                                         "02 02000000 4100"
                                         "02000000"
                                         "3f00 02000000 e900"
                                         "0000 02000000 6200"
                                         "3f00"
                                         "0100 02 03"
                                         "00 281e140a"
                                         "feffffff"
                                         "04030201";

constexpr char goldenInventoryWithoutNull[] =
    "00000004 0050 006c"
    "ffffffff"
    "00000001"
    "80000001"
    "00000002 0053"
    "00000102"
    "01 20010db800000000000000000000000a 00000000"
    "ffff"
    "00 01"
    "80000001"
    "00000002 0044"
    "00000002 00e9"
    "80000000"
    "00000000"
    "7fffffff"
    "808182838485868788898a8b8c8d8e8f 909192939495969798999a9b9c9d9e9f"
    "00000001"
    "02"
    "02 00000002 0041"
    "00000002"
    "003f 00000002 00e9"
    "0000 00000002 0062"
    "003f"
    "0001 02 03"
    "00 0a141e28"
    "fffffffe"
    "01020304";

constexpr char goldenInventoryLatin1[] = "00000002 50 6c"
                                         "ffffffff"
                                         "00000001"
                                         "80000001"
                                         "00000001 53"
                                         "00000102"
                                         "01 20010db800000000000000000000000a 00000000"
                                         "ffff"
                                         "00 01"
                                         "80000001"
                                         "00000001 44"
                                         "00000001 e9"
                                         "80000000"
                                         "00000000"
                                         "7fffffff"
                                         "808182838485868788898a8b8c8d8e8f 909192939495969798999a9b9c9d9e9f"
                                         "00000001"
                                         "02"
                                         "02 00000001 41"
                                         "00000002"
                                         "003f 00000001 e9"
                                         "0000 00000001 62"
                                         "003f"
                                         "0001 02 03"
                                         "00 0a141e28"
                                         "fffffffe"
                                         "01020304";

constexpr char goldenInventoryLatin1Little[] =
    "02000000 50 6c"
    "ffffffff"
    "01000000"
    "01000080"
    "01000000 53"
    "02010000"
    "01 20010db800000000000000000000000a 00000000"
    "ffff"
    "00 01"
    "01000080"
    "01000000 44"
    "01000000 e9"
    "00000080"
    "00000000"
    "ffffff7f"
    "808182838485868788898a8b8c8d8e8f 909192939495969798999a9b9c9d9e9f"
    "01000000"
    "02"
    "02 01000000 41"
    "02000000"
    "3f00 01000000 e9"
    "0000 01000000 62"
    "3f00"
    "0100 02 03"
    "00 281e140a"
    "feffffff"
    "04030201";

CDeviceItem deviceOfTheBytes()
{
    CSubDeviceItem axis(2, QStringLiteral("A"));
    axis.setAvailableParamSets(0x8000'0000'0000'0001);
    NameTable names;
    names.set(0, QStringLiteral("b"));
    names.set(63, QStringLiteral("\u00e9"));
    axis.setAvailableParamSetNames(names.data());
    axis.setActiveParamSet(63);
    axis.setParamVersion(version(3, 2, 1));

    CDeviceItem device(QStringLiteral("D"), addressType(258), QHostAddress(QStringLiteral("2001:db8::a")),
                       65535, QStringLiteral("S"));
    device.mFlag2 = true;
    device.mText1 = QStringLiteral("\u00e9");
    device.mValue1 = std::numeric_limits<qint32>::min();
    device.mValue2 = std::numeric_limits<qint32>::max();
    device.setUserlevelData(rightsBytes('\x80'));
    device.setSubDevice(axis);
    return device;
}

CDeviceList listOfTheBytes()
{
    CDeviceList list(QStringLiteral("Pl"), sourceType(-1));
    list.addDevice(0x80000001, deviceOfTheBytes());
    list.setSourceAddress(QHostAddress(QStringLiteral("10.20.30.40")));
    list.setSourceValue1(-2);
    list.setSourceValue2(0x01020304);
    return list;
}

} // namespace

class tst_inventory_streams : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void isWritten_data();
    void isWritten();
    void isReadFieldByField_data();
    void isReadFieldByField();
    void orderOfTheEntriesIsFree();
};

void tst_inventory_streams::isWritten_data()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<QDataStream::ByteOrder>("order");
    QTest::addColumn<QByteArray>("bytes");

    const auto row = [](const char *name, int version, QDataStream::ByteOrder order, const char *hex) {
        QTest::newRow(name) << version << order << QByteArray::fromHex(hex);
    };
    constexpr auto big = QDataStream::BigEndian;
    constexpr auto little = QDataStream::LittleEndian;
    row("5.15", QDataStream::Qt_5_15, big, goldenInventory);
    row("5.15 little-endian", QDataStream::Qt_5_15, little, goldenInventoryLittle);
    row("5.6", QDataStream::Qt_5_6, big, goldenInventory);
    row("4.0", QDataStream::Qt_4_0, big, goldenInventory);
    row("4.0 little-endian", QDataStream::Qt_4_0, little, goldenInventoryLittle);
    row("3.3", QDataStream::Qt_3_3, big, goldenInventory);
    row("2.1, the first with null texts", QDataStream::Qt_2_1, big, goldenInventory);
    row("2.0, without null texts", QDataStream::Qt_2_0, big, goldenInventoryWithoutNull);
    row("1.0, Latin-1", QDataStream::Qt_1_0, big, goldenInventoryLatin1);
    row("1.0, Latin-1, little-endian", QDataStream::Qt_1_0, little, goldenInventoryLatin1Little);
}

void tst_inventory_streams::isWritten()
{
    QFETCH(int, version);
    QFETCH(QDataStream::ByteOrder, order);
    QFETCH(QByteArray, bytes);

    QCOMPARE(streamed(listOfTheBytes(), version, order).toHex(' '), bytes.toHex(' '));
}

void tst_inventory_streams::isReadFieldByField_data()
{
    isWritten_data();
}

// Each field by itself, since equality could leave out what reading leaves out.
void tst_inventory_streams::isReadFieldByField()
{
    QFETCH(int, version);
    QFETCH(QDataStream::ByteOrder, order);
    QFETCH(QByteArray, bytes);

    CDeviceList list = sampleList();
    QCOMPARE(readInto(list, bytes, version, order), QDataStream::Ok);
    QVERIFY(areEqual(list, listOfTheBytes()));
    QCOMPARE(list.listName(), QStringLiteral("Pl"));
    QCOMPARE(qint32(list.sourceType()), -1);
    QCOMPARE(list.keys(), QList<unsigned int>{0x80000001});
    QCOMPARE(list.sourceAddress().toString(), QStringLiteral("10.20.30.40"));
    QCOMPARE(list.sourceValue1(), -2);
    QCOMPARE(list.sourceValue2(), 16909060);

    const CDeviceItem device = list.device(0x80000001);
    QCOMPARE(device.mIdentifier, QStringLiteral("S"));
    QCOMPARE(qint32(device.mHostAddrType), 258);
    QCOMPARE(device.mHostAddress.toString(), QStringLiteral("2001:db8::a"));
    QCOMPARE(device.mPort, quint16(65535));
    QCOMPARE(device.mFlag1, false);
    QCOMPARE(device.mFlag2, true);
    QCOMPARE(device.mDeviceKey, -2147483647);
    QCOMPARE(device.mName, QStringLiteral("D"));
    QCOMPARE(device.mText1, QStringLiteral("\u00e9"));
    QCOMPARE(device.mValue1, std::numeric_limits<qint32>::min());
    QCOMPARE(device.mText2, QString());
    QCOMPARE(device.mValue2, 2147483647);
    QCOMPARE(device.userlevelData(), QByteArray::fromHex("808182838485868788898a8b8c8d8e8f"
                                                         "909192939495969798999a9b9c9d9e9f"));

    QCOMPARE(device.mSubDevices.keys(), QList<unsigned char>{2});
    const CSubDeviceItem axis = device.mSubDevices.value(2);
    QCOMPARE(int(axis.number()), 2);
    QCOMPARE(axis.name(), QStringLiteral("A"));
    QCOMPARE(axis.availableParamSetNames(), (Sets{{0, QStringLiteral("b")}, {63, QStringLiteral("\u00e9")}}));
    QCOMPARE(axis.activeParamSet(), short(63));
    QCOMPARE(int(axis.paramVersion().build), 1);
    QCOMPARE(int(axis.paramVersion().minor), 2);
    QCOMPARE(int(axis.paramVersion().major), 3);
}

// Written by another hand the entries may come in any order. They are written again from the highest down.
void tst_inventory_streams::orderOfTheEntriesIsFree()
{
    const QByteArray before = QByteArray::fromHex("01 ffffffff 00000003");
    const QByteArray behind = QByteArray::fromHex("ffff 0000 00 00");
    const QByteArray mixed = QByteArray::fromHex("0007 00000002 0062 0001 00000002 0061 ffff 00000002 0063");
    const QByteArray downwards =
        QByteArray::fromHex("ffff 00000002 0063 0007 00000002 0062 0001 00000002 0061");
    CSubDeviceItem axis;
    QCOMPARE(readInto(axis, before + mixed + behind), QDataStream::Ok);
    QCOMPARE(axis.availableParamSetNames(),
             (Sets{{1, QStringLiteral("a")}, {7, QStringLiteral("b")}, {65535, QStringLiteral("c")}}));
    QCOMPARE(streamed(axis).toHex(' '), (before + downwards + behind).toHex(' '));
}

QTEST_GUILESS_MAIN(tst_inventory_streams)
#include "tst_inventory_streams.moc"
