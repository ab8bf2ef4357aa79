// SPDX-License-Identifier: MIT
// The stream forms, byte for byte. The expected bytes are written out here by hand or by Qt's own operators
// for each field in its turn.
#include "DeviceCases.h"

#include <QHostAddress>

#include <limits>

Q_DECLARE_METATYPE(QDataStream::ByteOrder)

using Sets = QMap<unsigned short, QString>;

namespace {

constexpr auto big = QDataStream::BigEndian;
constexpr auto little = QDataStream::LittleEndian;

// Sub-device 3 "Ax" with the sets 0 "P%1" and 33 "é", set 2 active, version 1.2.300.
constexpr char goldenSubDevice[] = "03"
                                   "00000004 0041 0078"
                                   "00000002"
                                   "0021 00000002 00e9"
                                   "0000 00000006 0050 0025 0031"
                                   "0002"
                                   "012c 02 01";

constexpr char goldenSubDeviceLittle[] = "03"
                                         "04000000 4100 7800"
                                         "02000000"
                                         "2100 02000000 e900"
                                         "0000 06000000 5000 2500 3100"
                                         "0200"
                                         "2c01 02 01";

// Before version 2 a text is Latin-1.
constexpr char goldenSubDeviceLatin1[] = "03"
                                         "00000002 41 78"
                                         "00000002"
                                         "0021 00000001 e9"
                                         "0000 00000003 50 25 31"
                                         "0002"
                                         "012c 02 01";

// The default: number 255, null name, no sets, active set -1, version 0.0.0.
constexpr char goldenDefaultSubDevice[] = "ff ffffffff 00000000 ffff 0000 00 00";
// Before version 3 a null text is an empty one.
constexpr char goldenDefaultSubDeviceOld[] = "ff 00000000 00000000 ffff 0000 00 00";

CSubDeviceItem subDeviceOfTheBytes()
{
    CSubDeviceItem subDevice =
        subDeviceWithSets({{0, QStringLiteral("P%1")}, {33, QStringLiteral("\u00e9")}});
    subDevice.setNumber(3);
    subDevice.setName(QStringLiteral("Ax"));
    subDevice.setActiveParamSet(2);
    subDevice.setParamVersion(version(1, 2, 300));
    return subDevice;
}

// Device "D", "SN", address 192.168.100.1, port 5000, with two default sub-devices that were given numbers.
constexpr char goldenDevice[] = "00000004 0053 004e"
                                "fffffffe"
                                "00 c0a86401"
                                "1388"
                                "01 00"
                                "80000007"
                                "00000002 0044"
                                "00000000"
                                "fffffffd"
                                "ffffffff"
                                "01020304"
                                "00ff7f80 0405060708090a0b0c0d0e0f 101112131415161718191a1b1c1d1e1f"
                                "00000002"
                                "c8 c8 ffffffff 00000000 ffff 0000 00 00"
                                "01 01 ffffffff 00000000 ffff 0000 00 00";

constexpr char goldenDeviceLittle[] = "04000000 5300 4e00"
                                      "feffffff"
                                      "00 0164a8c0"
                                      "8813"
                                      "01 00"
                                      "07000080"
                                      "02000000 4400"
                                      "00000000"
                                      "fdffffff"
                                      "ffffffff"
                                      "04030201"
                                      "00ff7f80 0405060708090a0b0c0d0e0f 101112131415161718191a1b1c1d1e1f"
                                      "02000000"
                                      "c8 c8 ffffffff 00000000 ffff 0000 00 00"
                                      "01 01 ffffffff 00000000 ffff 0000 00 00";

constexpr char goldenDeviceLatin1[] = "00000002 53 4e"
                                      "fffffffe"
                                      "00 c0a86401"
                                      "1388"
                                      "01 00"
                                      "80000007"
                                      "00000001 44"
                                      "00000000"
                                      "fffffffd"
                                      "00000000"
                                      "01020304"
                                      "00ff7f80 0405060708090a0b0c0d0e0f 101112131415161718191a1b1c1d1e1f"
                                      "00000002"
                                      "c8 c8 00000000 00000000 ffff 0000 00 00"
                                      "01 01 00000000 00000000 ffff 0000 00 00";

// No text, no address, all zero.
constexpr char goldenDefaultDevice[] = "ffffffff"
                                       "00000000"
                                       "ff"
                                       "0000"
                                       "00 00"
                                       "00000000"
                                       "ffffffff"
                                       "ffffffff"
                                       "00000000"
                                       "ffffffff"
                                       "00000000"
                                       "0000000000000000000000000000000000000000000000000000000000000000"
                                       "00000000";

CDeviceItem deviceOfTheBytes()
{
    CDeviceItem device(QStringLiteral("D"), addressType(-2), QHostAddress(QStringLiteral("192.168.100.1")),
                       5000, QStringLiteral("SN"));
    device.mFlag1 = true;
    device.mDeviceKey = std::numeric_limits<qint32>::min() + 7;
    device.mText1 = QLatin1String("");
    device.mValue1 = -3;
    device.mValue2 = 0x01020304;
    device.setUserlevelData(QByteArray::fromHex("00ff7f800405060708090a0b0c0d0e0f"
                                                "101112131415161718191a1b1c1d1e1f"));
    device.addSubDevice(CSubDeviceItem(), 1);
    device.addSubDevice(CSubDeviceItem(), 200);
    return device;
}

// List "L" of source 258 with default devices under 4294967295 and 4; source fe80::1%e, values 5 and -1.
constexpr char goldenList[] = "00000002 004c"
                              "00000102"
                              "00000002"
                              "ffffffff"
                              "ffffffff 00000000 ff 0000 00 00 ffffffff"
                              "ffffffff ffffffff 00000000 ffffffff 00000000"
                              "0000000000000000000000000000000000000000000000000000000000000000"
                              "00000000"
                              "00000004"
                              "ffffffff 00000000 ff 0000 00 00 00000004"
                              "ffffffff ffffffff 00000000 ffffffff 00000000"
                              "0000000000000000000000000000000000000000000000000000000000000000"
                              "00000000"
                              "01 fe800000000000000000000000000001 00000002 0065"
                              "00000005"
                              "ffffffff";

constexpr char goldenListLittle[] = "02000000 4c00"
                                    "02010000"
                                    "02000000"
                                    "ffffffff"
                                    "ffffffff 00000000 ff 0000 00 00 ffffffff"
                                    "ffffffff ffffffff 00000000 ffffffff 00000000"
                                    "0000000000000000000000000000000000000000000000000000000000000000"
                                    "00000000"
                                    "04000000"
                                    "ffffffff 00000000 ff 0000 00 00 04000000"
                                    "ffffffff ffffffff 00000000 ffffffff 00000000"
                                    "0000000000000000000000000000000000000000000000000000000000000000"
                                    "00000000"
                                    "01 fe800000000000000000000000000001 02000000 6500"
                                    "05000000"
                                    "ffffffff";

// The default: no name, source 0, no devices, null address, -1 and 0.
constexpr char goldenDefaultList[] = "ffffffff 00000000 00000000 ff ffffffff 00000000";
constexpr char goldenDefaultListOld[] = "00000000 00000000 00000000 ff ffffffff 00000000";

CDeviceList listOfTheBytes()
{
    CDeviceList list(QStringLiteral("L"), sourceType(258));
    list.addDevice(4, CDeviceItem());
    list.addDevice(0xFFFFFFFF, CDeviceItem());
    list.setSourceAddress(QHostAddress(QStringLiteral("fe80::1%e")));
    list.setSourceValue1(5);
    list.setSourceValue2(-1);
    return list;
}

// Every version of the stream, both byte orders.
void addStreamColumnsAndRows()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<QDataStream::ByteOrder>("order");
    for (int version = QDataStream::Qt_1_0; version <= QDataStream::Qt_5_15; ++version) {
        QTest::addRow("%d big-endian", version) << version << big;
        QTest::addRow("%d little-endian", version) << version << little;
    }
}

// Writes fields one by one, as Qt writes each.
class FieldWriter
{
public:
    FieldWriter(int version, QDataStream::ByteOrder order) : mStream(&mBytes, QIODevice::WriteOnly)
    {
        mStream.setVersion(version);
        mStream.setByteOrder(order);
    }

    template<typename... Fields>
    FieldWriter &write(const Fields &...fields)
    {
        (void(mStream << fields), ...);
        return *this;
    }

    FieldWriter &writeSample(quint8 number)
    {
        return write(qint8(number), QStringLiteral("Axis %1").arg(number), qint32(2), qint16(2),
                     QStringLiteral("Param set 03"), qint16(0), QStringLiteral("Param set 01"), qint16(2),
                     qint16(300), qint8(2), qint8(1));
    }

    FieldWriter &writeSampleDevice(qint32 key)
    {
        write(QStringLiteral("SN 4711"), qint32(2), QHostAddress(QStringLiteral("192.168.100.1")),
              qint16(5000), true, false, key, QStringLiteral("Spindle drive"), QStringLiteral("Hall 3"),
              qint32(-2), QStringLiteral("100 %1"), qint32(0x01020304));
        for (qint8 right = 0; right < 32; ++right)
            write(right);
        write(qint32(2), qint8(5)).writeSample(5);
        return write(qint8(1)).writeSample(1);
    }

    QByteArray bytes() const { return mBytes; }

private:
    QByteArray mBytes;
    QDataStream mStream;
};

// Writes and reads the value, with a byte behind it that must be left alone.
template<typename T>
void compareStream(const T &value, const QByteArray &bytes, int version, QDataStream::ByteOrder order,
                   T back = T())
{
    QCOMPARE(streamed(value, version, order).toHex(' '), bytes.toHex(' '));

    QDataStream stream(bytes + '\x5a');
    stream.setVersion(version);
    stream.setByteOrder(order);
    QDataStream &result = stream >> back;
    QCOMPARE(&result, &stream);
    QCOMPARE(stream.status(), QDataStream::Ok);
    QVERIFY(areEqual(back, value));
    quint8 guard = 0;
    stream >> guard;
    QCOMPARE(guard, quint8(0x5a));
}

} // namespace

class tst_device_streams : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void goldenSubDevices_data();
    void goldenSubDevices();
    void goldenDevices_data();
    void goldenDevices();
    void goldenLists_data();
    void goldenLists();
    void goldenEnumerations_data();
    void goldenEnumerations();
    void subDeviceIsItsFieldsInTurn_data();
    void subDeviceIsItsFieldsInTurn();
    void deviceIsItsFieldsInTurn_data();
    void deviceIsItsFieldsInTurn();
    void listIsItsFieldsInTurn_data();
    void listIsItsFieldsInTurn();
    void writingReturnsTheStream();
    void readingReplacesWhatWasThere();
    void readsAnyNumber();
    void flagIsTrueForEveryByteButZero();
    void addressForms_data();
    void addressForms();
    void unknownAddressProtocolIsCorrupt();
    void repeatedParameterSetsAreKept();
    void repeatedDevicesAreKept();
    void formerFailureStaysInTheStatus();
};

void tst_device_streams::goldenSubDevices_data()
{
    QTest::addColumn<CSubDeviceItem>("subDevice");
    QTest::addColumn<int>("version");
    QTest::addColumn<QDataStream::ByteOrder>("order");
    QTest::addColumn<QByteArray>("bytes");

    const auto row = [](const char *name, const CSubDeviceItem &subDevice, int version,
                        QDataStream::ByteOrder order, const char *hex) {
        QTest::newRow(name) << subDevice << version << order << QByteArray::fromHex(hex);
    };
    row("5.15", subDeviceOfTheBytes(), QDataStream::Qt_5_15, big, goldenSubDevice);
    row("5.15 little-endian", subDeviceOfTheBytes(), QDataStream::Qt_5_15, little, goldenSubDeviceLittle);
    row("4.8", subDeviceOfTheBytes(), QDataStream::Qt_4_8, big, goldenSubDevice);
    row("4.0 little-endian", subDeviceOfTheBytes(), QDataStream::Qt_4_0, little, goldenSubDeviceLittle);
    row("2.1", subDeviceOfTheBytes(), QDataStream::Qt_2_1, big, goldenSubDevice);
    row("1.0", subDeviceOfTheBytes(), QDataStream::Qt_1_0, big, goldenSubDeviceLatin1);
    row("default", CSubDeviceItem(), QDataStream::Qt_5_15, big, goldenDefaultSubDevice);
    row("default little-endian", CSubDeviceItem(), QDataStream::Qt_5_15, little, goldenDefaultSubDevice);
    row("default 2.0", CSubDeviceItem(), QDataStream::Qt_2_0, big, goldenDefaultSubDeviceOld);
}

void tst_device_streams::goldenSubDevices()
{
    QFETCH(CSubDeviceItem, subDevice);
    QFETCH(int, version);
    QFETCH(QDataStream::ByteOrder, order);
    QFETCH(QByteArray, bytes);
    compareStream(subDevice, bytes, version, order);
}

void tst_device_streams::goldenDevices_data()
{
    QTest::addColumn<CDeviceItem>("device");
    QTest::addColumn<int>("version");
    QTest::addColumn<QDataStream::ByteOrder>("order");
    QTest::addColumn<QByteArray>("bytes");

    const auto row = [](const char *name, const CDeviceItem &device, int version,
                        QDataStream::ByteOrder order, const char *hex) {
        QTest::newRow(name) << device << version << order << QByteArray::fromHex(hex);
    };
    row("5.15", deviceOfTheBytes(), QDataStream::Qt_5_15, big, goldenDevice);
    row("5.15 little-endian", deviceOfTheBytes(), QDataStream::Qt_5_15, little, goldenDeviceLittle);
    row("5.0", deviceOfTheBytes(), QDataStream::Qt_5_0, big, goldenDevice);
    row("4.8 little-endian", deviceOfTheBytes(), QDataStream::Qt_4_8, little, goldenDeviceLittle);
    row("1.0", deviceOfTheBytes(), QDataStream::Qt_1_0, big, goldenDeviceLatin1);
    row("default", CDeviceItem(), QDataStream::Qt_5_15, big, goldenDefaultDevice);
    row("default little-endian", CDeviceItem(), QDataStream::Qt_5_15, little, goldenDefaultDevice);
}

void tst_device_streams::goldenDevices()
{
    QFETCH(CDeviceItem, device);
    QFETCH(int, version);
    QFETCH(QDataStream::ByteOrder, order);
    QFETCH(QByteArray, bytes);
    compareStream(device, bytes, version, order);
}

void tst_device_streams::goldenLists_data()
{
    QTest::addColumn<CDeviceList>("list");
    QTest::addColumn<int>("version");
    QTest::addColumn<QDataStream::ByteOrder>("order");
    QTest::addColumn<QByteArray>("bytes");

    const auto row = [](const char *name, const CDeviceList &list, int version, QDataStream::ByteOrder order,
                        const char *hex) {
        QTest::newRow(name) << list << version << order << QByteArray::fromHex(hex);
    };
    row("5.15", listOfTheBytes(), QDataStream::Qt_5_15, big, goldenList);
    row("5.15 little-endian", listOfTheBytes(), QDataStream::Qt_5_15, little, goldenListLittle);
    row("4.6", listOfTheBytes(), QDataStream::Qt_4_6, big, goldenList);
    row("4.6 little-endian", listOfTheBytes(), QDataStream::Qt_4_6, little, goldenListLittle);
    row("default", CDeviceList(), QDataStream::Qt_5_15, big, goldenDefaultList);
    row("default little-endian", CDeviceList(), QDataStream::Qt_5_15, little, goldenDefaultList);
    row("default 2.0", CDeviceList(), QDataStream::Qt_2_0, big, goldenDefaultListOld);
}

void tst_device_streams::goldenLists()
{
    QFETCH(CDeviceList, list);
    QFETCH(int, version);
    QFETCH(QDataStream::ByteOrder, order);
    QFETCH(QByteArray, bytes);
    compareStream(list, bytes, version, order);
}

void tst_device_streams::goldenEnumerations_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QByteArray>("bigBytes");
    QTest::addColumn<QByteArray>("littleBytes");

    const auto row = [](const char *name, int number, const char *bigHex, const char *littleHex) {
        QTest::newRow(name) << number << QByteArray::fromHex(bigHex) << QByteArray::fromHex(littleHex);
    };
    row("none", 0, "00000000", "00000000");
    row("1", 1, "00000001", "01000000");
    row("-1", -1, "ffffffff", "ffffffff");
    row("0x12345678", 0x12345678, "12345678", "78563412");
    row("the largest", std::numeric_limits<int>::max(), "7fffffff", "ffffff7f");
    row("the smallest", std::numeric_limits<int>::min(), "80000000", "00000080");
}

void tst_device_streams::goldenEnumerations()
{
    QFETCH(int, number);
    QFETCH(QByteArray, bigBytes);
    QFETCH(QByteArray, littleBytes);

    for (int version = QDataStream::Qt_1_0; version <= QDataStream::Qt_5_15; ++version) {
        compareStream(addressType(number), bigBytes, version, big, addressType(77));
        compareStream(addressType(number), littleBytes, version, little, addressType(77));
        compareStream(sourceType(number), bigBytes, version, big, sourceType(77));
        compareStream(sourceType(number), littleBytes, version, little, sourceType(77));
        if (QTest::currentTestFailed())
            return;
    }
}

void tst_device_streams::subDeviceIsItsFieldsInTurn_data()
{
    addStreamColumnsAndRows();
}

void tst_device_streams::subDeviceIsItsFieldsInTurn()
{
    QFETCH(int, version);
    QFETCH(QDataStream::ByteOrder, order);
    compareStream(sampleSubDevice(200), FieldWriter(version, order).writeSample(200).bytes(), version, order);
}

void tst_device_streams::deviceIsItsFieldsInTurn_data()
{
    addStreamColumnsAndRows();
}

void tst_device_streams::deviceIsItsFieldsInTurn()
{
    QFETCH(int, version);
    QFETCH(QDataStream::ByteOrder, order);
    compareStream(sampleDevice(), FieldWriter(version, order).writeSampleDevice(7).bytes(), version, order);
}

void tst_device_streams::listIsItsFieldsInTurn_data()
{
    addStreamColumnsAndRows();
}

void tst_device_streams::listIsItsFieldsInTurn()
{
    QFETCH(int, version);
    QFETCH(QDataStream::ByteOrder, order);

    CDeviceList list = sampleList();
    list.removeDevice(0xFFFFFFFF);
    list.addDevice(0x80000001, sampleDevice());
    FieldWriter writer(version, order);
    writer.write(QStringLiteral("Plant"), qint32(3), qint32(2), quint32(0x80000001))
        .writeSampleDevice(std::numeric_limits<qint32>::min() + 1)
        .write(quint32(4))
        .writeSampleDevice(4)
        .write(QHostAddress(QStringLiteral("169.254.0.0")), qint32(11), qint32(-12));
    compareStream(list, writer.bytes(), version, order);
}

void tst_device_streams::writingReturnsTheStream()
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    QCOMPARE(&(stream << CSubDeviceItem()), &stream);
    QCOMPARE(&(stream << CDeviceItem()), &stream);
    QCOMPARE(&(stream << CDeviceList()), &stream);
    QCOMPARE(&(stream << CDeviceItem::E_HOST_ADDR_NONE), &stream);
    QCOMPARE(&(stream << CDeviceList::E_SOURCE_NONE), &stream);
    QCOMPARE(stream.status(), QDataStream::Ok);
}

void tst_device_streams::readingReplacesWhatWasThere()
{
    constexpr int version = QDataStream::Qt_5_15;
    compareStream(CSubDeviceItem(), QByteArray::fromHex(goldenDefaultSubDevice), version, big,
                  sampleSubDevice(1));
    compareStream(CDeviceItem(), QByteArray::fromHex(goldenDefaultDevice), version, big, sampleDevice());
    compareStream(CDeviceList(), QByteArray::fromHex(goldenDefaultList), version, big, sampleList());
}

// What no setter accepts is read as it stands, and written again.
void tst_device_streams::readsAnyNumber()
{
    const QByteArray bytes = QByteArray::fromHex("ff 00000002 0041 00000001 ffff 00000000 8000 ffff ff ff");
    CSubDeviceItem subDevice;
    QCOMPARE(readInto(subDevice, bytes), QDataStream::Ok);
    QCOMPARE(int(subDevice.number()), 255);
    QCOMPARE(subDevice.name(), QStringLiteral("A"));
    QCOMPARE(subDevice.availableParamSetNames(), (Sets{{65535, QString()}}));
    QCOMPARE(int(subDevice.activeParamSet()), -32768);
    QVERIFY(subDevice.paramVersion() == version(255, 255, 65535));
    QCOMPARE(streamed(subDevice).toHex(' '), bytes.toHex(' '));
}

void tst_device_streams::flagIsTrueForEveryByteButZero()
{
    QByteArray bytes = QByteArray::fromHex(goldenDefaultDevice);
    constexpr int firstFlag = 4 + 4 + 1 + 2;
    for (int byte = 0; byte < 256; ++byte) {
        bytes[firstFlag] = static_cast<char>(byte);
        bytes[firstFlag + 1] = static_cast<char>(255 - byte);
        CDeviceItem device;
        QCOMPARE(readInto(device, bytes), QDataStream::Ok);
        QCOMPARE(device.mFlag1, byte != 0);
        QCOMPARE(device.mFlag2, byte != 255);
        CDeviceItem expected;
        expected.mFlag1 = byte != 0;
        expected.mFlag2 = byte != 255;
        QVERIFY(areEqual(device, expected));
        QCOMPARE(streamed(device).mid(firstFlag, 2).toHex(), streamed(expected).mid(firstFlag, 2).toHex());
    }
}

void tst_device_streams::addressForms_data()
{
    QTest::addColumn<QHostAddress>("address");
    QTest::addColumn<QByteArray>("bytes");

    const auto row = [](const char *name, const QHostAddress &address, const char *hex) {
        QTest::newRow(name) << address << QByteArray::fromHex(hex);
    };
    row("null", QHostAddress(), "ff");
    row("IPv4", QHostAddress(QStringLiteral("10.20.30.40")), "00 0a141e28");
    row("0.0.0.0", QHostAddress(QStringLiteral("0.0.0.0")), "00 00000000");
    row("broadcast", QHostAddress(QHostAddress::Broadcast), "00 ffffffff");
    row("IPv6", QHostAddress(QStringLiteral("2001:db8::1")), "01 20010db8000000000000000000000001 ffffffff");
    row("IPv6 with scope", QHostAddress(QStringLiteral("fe80::2%7")),
        "01 fe800000000000000000000000000002 00000002 0037");
    row("any", QHostAddress(QHostAddress::Any), "02");
}

void tst_device_streams::addressForms()
{
    QFETCH(QHostAddress, address);
    QFETCH(QByteArray, bytes);

    CDeviceItem device;
    device.mHostAddress = address;
    const QByteArray wholeDevice = QByteArray::fromHex(goldenDefaultDevice).replace(8, 1, bytes);
    compareStream(device, wholeDevice, QDataStream::Qt_5_15, big);
    CDeviceItem deviceBack;
    QCOMPARE(readInto(deviceBack, wholeDevice), QDataStream::Ok);
    QCOMPARE(deviceBack.mHostAddress.scopeId(), address.scopeId());

    CDeviceList list;
    list.setSourceAddress(address);
    const QByteArray wholeList = QByteArray::fromHex(goldenDefaultList).replace(12, 1, bytes);
    compareStream(list, wholeList, QDataStream::Qt_5_15, big);
    CDeviceList listBack;
    QCOMPARE(readInto(listBack, wholeList), QDataStream::Ok);
    QCOMPARE(listBack.sourceAddress().scopeId(), address.scopeId());
}

void tst_device_streams::unknownAddressProtocolIsCorrupt()
{
    for (int protocol = -128; protocol < 128; ++protocol) {
        if (protocol >= -1 && protocol <= 2)
            continue;
        QByteArray bytes = QByteArray::fromHex(goldenDefaultDevice);
        bytes[8] = static_cast<char>(protocol);
        CDeviceItem device;
        device.mHostAddress = cLinkLocalNetwork;
        QCOMPARE(readInto(device, bytes), QDataStream::ReadCorruptData);
        QVERIFY(areEqual(device, CDeviceItem()));
    }
}

void tst_device_streams::repeatedParameterSetsAreKept()
{
    // Set 5 "a", then set 5 "b": the later one comes first.
    const QByteArray bytes = QByteArray::fromHex("01 ffffffff 00000002 0005 00000002 0061 0005 00000002 0062"
                                                 "ffff 0000 00 00");
    CSubDeviceItem subDevice;
    QCOMPARE(readInto(subDevice, bytes), QDataStream::Ok);
    QCOMPARE(subDevice.paramSetCount(), 2);
    QCOMPARE(subDevice.availableParamSetNames().values(),
             (QStringList{QStringLiteral("b"), QStringLiteral("a")}));
    QCOMPARE(subDevice.availableParamSetNames().value(5), QStringLiteral("b"));
    QCOMPARE(streamed(subDevice).toHex(' '), bytes.toHex(' '));
}

void tst_device_streams::repeatedDevicesAreKept()
{
    CDeviceItem first;
    first.mName = QStringLiteral("first");
    CDeviceItem second;
    second.mName = QStringLiteral("second");
    const QByteArray bytes = FieldWriter(QDataStream::Qt_5_15, big)
                                 .write(QString(), qint32(0), qint32(2), qint32(9), first, qint32(9), second,
                                        QHostAddress(), qint32(-1), qint32(0))
                                 .bytes();
    CDeviceList list;
    QCOMPARE(readInto(list, bytes), QDataStream::Ok);
    QCOMPARE(list.size(), 2);
    QCOMPARE(list.keys(), (QList<unsigned int>{9, 9}));
    QCOMPARE(list.device(9).mName, QStringLiteral("second"));
    QCOMPARE(streamed(list).toHex(' '), bytes.toHex(' '));

    // Into another list goes the one that device() finds.
    CDeviceList other;
    other.unite(list);
    QCOMPARE(other.size(), 1);
    QCOMPARE(other.device(9).mName, QStringLiteral("second"));
    list.removeDevice(9);
    QCOMPARE(list.size(), 0);
}

// A failure before the devices is not forgotten while they are read.
void tst_device_streams::formerFailureStaysInTheStatus()
{
    QByteArray bytes = QByteArray::fromHex(goldenList);
    bytes[3] = 3; // the name's length, which must be even
    CDeviceList list;
    QCOMPARE(readInto(list, bytes), QDataStream::ReadCorruptData);
    QCOMPARE(list.listName(), QString());
}

QTEST_GUILESS_MAIN(tst_device_streams)
#include "tst_device_streams.moc"
