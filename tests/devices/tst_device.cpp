// SPDX-License-Identifier: MIT
#include "DeviceCases.h"

#include <QDebug>
#include <QVariant>

#include <algorithm>
#include <functional>
#include <type_traits>
#include <utility>

using Sets = QMap<unsigned short, QString>;

static_assert(!std::is_polymorphic<CDeviceItem>::value, "no virtual operation");
static_assert(std::is_copy_constructible<CDeviceItem>::value && std::is_copy_assignable<CDeviceItem>::value,
              "a value");
static_assert(std::is_same<std::underlying_type_t<CDeviceItem::EHostAddrType>, qint32>::value
                  && CDeviceItem::E_HOST_ADDR_NONE == 0,
              "signed 32-bit, 0 is no usable address");
static_assert(std::is_trivial<sUserRights_t>::value && std::is_standard_layout<sUserRights_t>::value
                  && sizeof(sUserRights_t) == 32,
              "a plain block");
static_assert(
    std::is_same<decltype(CDeviceItem::mIdentifier), QString>::value
        && std::is_same<decltype(CDeviceItem::mHostAddrType), CDeviceItem::EHostAddrType>::value
        && std::is_same<decltype(CDeviceItem::mHostAddress), QHostAddress>::value
        && std::is_same<decltype(CDeviceItem::mPort), unsigned short>::value
        && std::is_same<decltype(CDeviceItem::mFlag1), bool>::value
        && std::is_same<decltype(CDeviceItem::mFlag2), bool>::value
        && std::is_same<decltype(CDeviceItem::mDeviceKey), int>::value
        && std::is_same<decltype(CDeviceItem::mName), QString>::value
        && std::is_same<decltype(CDeviceItem::mText1), QString>::value
        && std::is_same<decltype(CDeviceItem::mValue1), int>::value
        && std::is_same<decltype(CDeviceItem::mText2), QString>::value
        && std::is_same<decltype(CDeviceItem::mValue2), int>::value
        && std::is_same<decltype(CDeviceItem::mUserRights), sUserRights_t>::value
        && std::is_same<decltype(CDeviceItem::mSubDevices), QMap<unsigned char, CSubDeviceItem>>::value,
    "public members of the types of the interface");

// The member functions as clients call them.
template<typename Function, typename Member>
constexpr bool isOf(Member)
{
    return std::is_same<Function, Member>::value;
}
using Device = CDeviceItem;
using Byte = unsigned char;
static_assert(isOf<bool (Device::*)() const>(&Device::isValid)
                  && isOf<void (Device::*)(const QByteArray &)>(&Device::setUserlevelData)
                  && isOf<QByteArray (Device::*)() const>(&Device::userlevelData)
                  && isOf<sUserRights_t (Device::*)() const>(&Device::userRights)
                  && isOf<void (Device::*)(const CSubDeviceItem &, Byte)>(&Device::addSubDevice)
                  && isOf<bool (Device::*)(const CSubDeviceItem &)>(&Device::setSubDevice)
                  && isOf<unsigned long long (Device::*)(Byte) const>(&Device::availableParamSets)
                  && isOf<Sets (Device::*)(Byte) const>(&Device::availableParamSetNames)
                  && isOf<int (Device::*)(Byte) const>(&Device::availableParamSetCount)
                  && isOf<NTypes::sVersion_t (Device::*)(Byte) const>(&Device::paramVersion)
                  && isOf<short (Device::*)(Byte) const>(&Device::activeParamSet)
                  && isOf<void (Device::*)(unsigned long long, Byte)>(&Device::setAvailableParamSets)
                  && isOf<void (Device::*)(unsigned short *, Byte)>(&Device::setAvailableParamSetNames)
                  && isOf<bool (Device::*)(short, Byte)>(&Device::setActiveParamSet),
              "the types of the interface");

namespace {

// clazy:excludeall=non-pod-global-static -- the subject: addresses that static objects are made of
const QHostAddress linkLocalWhileLoading = cLinkLocalNetwork;
const CDeviceItem deviceMadeWhileLoading(QStringLiteral("early"), addressType(1), cDefaultDeviceAddress, 1,
                                         QString());

sUserRights_t rights(char first)
{
    CDeviceItem device;
    device.setUserlevelData(rightsBytes(first));
    return device.mUserRights;
}

// "Name 0" to "Name 63".
NameTable numberedNames()
{
    NameTable table;
    for (int set = 0; set < 64; ++set)
        table.set(set, QStringLiteral("Name %1").arg(set));
    return table;
}

} // namespace

class tst_device : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void constantAddresses();
    void constantAddressesAreThereWhileStaticObjectsAreMade();
    void membersStandInTheirOrder();
    void defaults();
    void constructedWithTextsAndAddress();
    void copiesAreIndependent();
    void movedFromCanBeUsedAgain();
    void valid_data();
    void valid();
    void userRightsFrom32Bytes();
    void userRightsFromOtherSizesChangeNothing_data();
    void userRightsFromOtherSizesChangeNothing();
    void userRightsCompareAsAWhole();
    void addedSubDeviceGetsTheNumber();
    void addedSubDeviceReplaces();
    void addedSubDeviceMayBeOneOfItsOwn();
    void addedSubDeviceMayBeOneOfSharedOnes();
    void addedSubDeviceMayHaveNumber255();
    void setSubDeviceGoesByItsNumber();
    void setSubDeviceTakesOneOfItsOwn();
    void setSubDeviceRefusesAnInvalidOne();
    void gettersBySubDevice();
    void gettersOfAllParamSets();
    void gettersWithoutTheSubDevice();
    void settersBySubDevice();
    void settersWithoutTheSubDeviceCreateNothing();
    void subDevicesAreFoundByKeyNotByNumber();
    void settersLeaveCopiesAlone();
    void nullNameTableIsIgnored();
    void textsHoldPlaceholders();
    void equality_data();
    void equality();
    void nullAndEmptyTextsAreEqual();
    void ipv6ScopesAreEqual();
    void debugForm_data();
    void debugForm();
    void debugFormRestoresTheStream();
    void isAMetaType();
    void exampleOfTheClassComment();
};

void tst_device::constantAddresses()
{
    QCOMPARE(cLinkLocalNetwork.toString(), QStringLiteral("169.254.0.0"));
    QCOMPARE(cDefaultDeviceAddress.toString(), QStringLiteral("192.168.100.1"));
    QCOMPARE(cLinkLocalNetwork.protocol(), QAbstractSocket::IPv4Protocol);
    QCOMPARE(cDefaultDeviceAddress.protocol(), QAbstractSocket::IPv4Protocol);
    QVERIFY(QHostAddress(QStringLiteral("169.254.255.255")).isInSubnet(cLinkLocalNetwork, 16));
    static_assert(std::is_same<decltype(cLinkLocalNetwork), const QHostAddress>::value
                      && std::is_same<decltype(cDefaultDeviceAddress), const QHostAddress>::value,
                  "constants");
}

void tst_device::constantAddressesAreThereWhileStaticObjectsAreMade()
{
    QCOMPARE(linkLocalWhileLoading, cLinkLocalNetwork);
    QCOMPARE(deviceMadeWhileLoading.mHostAddress, cDefaultDeviceAddress);
    QVERIFY(deviceMadeWhileLoading.isValid());
}

void tst_device::membersStandInTheirOrder()
{
    const CDeviceItem device;
    const QVector<const void *> addresses = {
        &device.mIdentifier, &device.mHostAddrType, &device.mHostAddress, &device.mPort,      &device.mFlag1,
        &device.mFlag2,      &device.mDeviceKey,    &device.mName,        &device.mText1,     &device.mValue1,
        &device.mText2,      &device.mValue2,       &device.mUserRights,  &device.mSubDevices};
    QVERIFY(std::is_sorted(addresses.begin(), addresses.end(), std::less<>()));
}

void tst_device::defaults()
{
    const CDeviceItem device;
    QCOMPARE(device.mIdentifier, QString());
    QCOMPARE(device.mHostAddrType, CDeviceItem::E_HOST_ADDR_NONE);
    QVERIFY(device.mHostAddress.isNull());
    QCOMPARE(device.mPort, quint16(0));
    QCOMPARE(device.mFlag1, false);
    QCOMPARE(device.mFlag2, false);
    QCOMPARE(device.mDeviceKey, 0);
    QCOMPARE(device.mName, QString());
    QCOMPARE(device.mText1, QString());
    QCOMPARE(device.mValue1, 0);
    QCOMPARE(device.mText2, QString());
    QCOMPARE(device.mValue2, 0);
    QCOMPARE(device.userlevelData(), QByteArray(32, '\0'));
    QVERIFY(device.mSubDevices.isEmpty());
    QVERIFY(!device.isValid());
}

void tst_device::constructedWithTextsAndAddress()
{
    const CDeviceItem device(QStringLiteral("name"), addressType(-3), cLinkLocalNetwork, 65535,
                             QStringLiteral("identifier"));
    CDeviceItem expected;
    expected.mName = QStringLiteral("name");
    expected.mHostAddrType = addressType(-3);
    expected.mHostAddress = QHostAddress(QStringLiteral("169.254.0.0"));
    expected.mPort = 65535;
    expected.mIdentifier = QStringLiteral("identifier");
    QVERIFY(areEqual(device, expected));
    QCOMPARE(device.mName, QStringLiteral("name"));
    QCOMPARE(device.mIdentifier, QStringLiteral("identifier"));
}

void tst_device::copiesAreIndependent()
{
    const CDeviceItem original = sampleDevice();
    CDeviceItem copy(original);
    QVERIFY(areEqual(copy, original));
    copy.mSubDevices.clear();
    copy.mUserRights.bytes[31] = 0xFF;
    copy.mText2.clear();
    QVERIFY(areEqual(original, sampleDevice()));
    QVERIFY(areDifferent(copy, original));

    CDeviceItem assigned;
    CDeviceItem &result = (assigned = original);
    QCOMPARE(&result, &assigned);
    QVERIFY(areEqual(assigned, original));
    const CDeviceItem &alias = assigned;
    assigned = alias;
    QVERIFY(areEqual(assigned, original));
}

void tst_device::movedFromCanBeUsedAgain()
{
    CDeviceItem source = sampleDevice();
    CDeviceItem constructed(std::move(source));
    QVERIFY(areEqual(constructed, sampleDevice()));
    source = CDeviceItem();
    QVERIFY(areEqual(source, CDeviceItem()));

    CDeviceItem assigned(QStringLiteral("former"), addressType(1), cLinkLocalNetwork, 1, QString());
    assigned = std::move(constructed);
    QVERIFY(areEqual(assigned, sampleDevice()));
    constructed = assigned;
    constructed.addSubDevice(sampleSubDevice(6), 6);
    QCOMPARE(constructed.mSubDevices.size(), 3);
    QVERIFY(areEqual(assigned, sampleDevice()));

    CDeviceItem &alias = assigned;
    assigned = std::move(alias);
    QVERIFY(areEqual(assigned, sampleDevice()));
}

void tst_device::valid_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QHostAddress>("address");
    QTest::addColumn<int>("port");
    QTest::addColumn<bool>("valid");

    const QHostAddress address(QStringLiteral("10.0.0.1"));
    QTest::newRow("address, port and type") << 1 << address << 5000 << true;
    QTest::newRow("type 0") << 0 << address << 5000 << false;
    QTest::newRow("port 0") << 1 << address << 0 << false;
    QTest::newRow("null address") << 1 << QHostAddress() << 5000 << false;
    QTest::newRow("only the address") << 0 << address << 0 << false;
    QTest::newRow("only the port") << 0 << QHostAddress() << 5000 << false;
    QTest::newRow("only the type") << 1 << QHostAddress() << 0 << false;
    QTest::newRow("nothing") << 0 << QHostAddress() << 0 << false;
    QTest::newRow("negative type") << -1 << address << 1 << true;
    QTest::newRow("the address 0.0.0.0 is not null") << 1 << QHostAddress(quint32(0)) << 65535 << true;
    QTest::newRow("IPv6") << 7 << QHostAddress(QHostAddress::LocalHostIPv6) << 5000 << true;
}

void tst_device::valid()
{
    QFETCH(int, type);
    QFETCH(QHostAddress, address);
    QFETCH(int, port);
    QFETCH(bool, valid);

    const CDeviceItem device(QString(), addressType(type), address, static_cast<unsigned short>(port),
                             QString());
    QCOMPARE(device.isValid(), valid);
}

void tst_device::userRightsFrom32Bytes()
{
    const QByteArray bytes = QByteArray::fromHex("00ff7f80"
                                                 "0102030405060708090a0b0c0d0e0f10"
                                                 "1112131415161718191a1b00");
    CDeviceItem device;
    device.setUserlevelData(bytes);
    QCOMPARE(device.userlevelData(), bytes);
    const sUserRights_t held = device.userRights();
    QCOMPARE(QByteArray(reinterpret_cast<const char *>(&held), sizeof held), bytes);
    QVERIFY(held == device.mUserRights);

    // The array does not share with the record.
    QByteArray read = device.userlevelData();
    read[0] = 'x';
    QVERIFY(device.userlevelData() != read);
    QCOMPARE(device.userlevelData(), bytes);
    const QByteArray kept = device.userlevelData();
    device.setUserlevelData(rightsBytes(3));
    QCOMPARE(kept, bytes);
}

void tst_device::userRightsFromOtherSizesChangeNothing_data()
{
    QTest::addColumn<QByteArray>("data");

    QTest::newRow("null") << QByteArray();
    QTest::newRow("1 byte") << QByteArray(1, 'x');
    QTest::newRow("31 bytes") << QByteArray(31, 'x');
    QTest::newRow("33 bytes") << QByteArray(33, 'x');
    QTest::newRow("64 bytes") << QByteArray(64, 'x');
}

void tst_device::userRightsFromOtherSizesChangeNothing()
{
    QFETCH(QByteArray, data);

    CDeviceItem device;
    device.setUserlevelData(rightsBytes(3));
    device.setUserlevelData(data);
    QCOMPARE(device.userlevelData(), rightsBytes(3));
}

void tst_device::userRightsCompareAsAWhole()
{
    QVERIFY(areEqual(rights(1), rights(1)));
    for (int i = 0; i < 32; ++i) {
        sUserRights_t other = rights(1);
        other.bytes[i] ^= 0x80;
        QVERIFY(areDifferent(rights(1), other));
    }
}

void tst_device::addedSubDeviceGetsTheNumber()
{
    const CSubDeviceItem sub(7, QStringLiteral("Axis"));
    CDeviceItem device;
    device.addSubDevice(sub, 3);
    QCOMPARE(device.mSubDevices.keys(), QList<unsigned char>{3});
    QCOMPARE(int(device.mSubDevices.value(3).number()), 3);
    QCOMPARE(device.mSubDevices.value(3).name(), QStringLiteral("Axis"));
    QCOMPARE(int(sub.number()), 7);
}

void tst_device::addedSubDeviceReplaces()
{
    CDeviceItem device;
    device.addSubDevice(sampleSubDevice(1), 3);
    device.addSubDevice(CSubDeviceItem(9, QStringLiteral("new")), 3);
    QCOMPARE(device.mSubDevices.size(), 1);
    QVERIFY(areEqual(device.mSubDevices.value(3), CSubDeviceItem(3, QStringLiteral("new"))));
}

void tst_device::addedSubDeviceMayBeOneOfItsOwn()
{
    CDeviceItem device;
    device.setSubDevice(sampleSubDevice(1));
    device.addSubDevice(*device.mSubDevices.constFind(1), 1);
    device.addSubDevice(*device.mSubDevices.constFind(1), 2);
    QVERIFY(areEqual(device.mSubDevices.value(1), sampleSubDevice(1)));
    CSubDeviceItem second = sampleSubDevice(1);
    second.setNumber(2);
    QVERIFY(areEqual(device.mSubDevices.value(2), second));
}

void tst_device::addedSubDeviceMayBeOneOfSharedOnes()
{
    CDeviceItem device;
    device.setSubDevice(sampleSubDevice(1));
    const CDeviceItem copy = device;
    device.addSubDevice(*device.mSubDevices.constFind(1), 2);
    QCOMPARE(device.mSubDevices.keys(), (QList<unsigned char>{1, 2}));
    QVERIFY(areEqual(device.mSubDevices.value(1), sampleSubDevice(1)));
    CSubDeviceItem second = sampleSubDevice(1);
    second.setNumber(2);
    QVERIFY(areEqual(device.mSubDevices.value(2), second));
    QCOMPARE(copy.mSubDevices.keys(), QList<unsigned char>{1});
    QVERIFY(areEqual(copy.mSubDevices.value(1), sampleSubDevice(1)));
}

void tst_device::addedSubDeviceMayHaveNumber255()
{
    CDeviceItem device;
    device.addSubDevice(sampleSubDevice(1), 255);
    QCOMPARE(device.mSubDevices.keys(), QList<unsigned char>{255});
    QVERIFY(!device.mSubDevices.value(255).isValid());
    QCOMPARE(device.activeParamSet(255), short(2));
}

void tst_device::setSubDeviceGoesByItsNumber()
{
    CDeviceItem device;
    QVERIFY(device.setSubDevice(CSubDeviceItem(254, QStringLiteral("a"))));
    QVERIFY(device.setSubDevice(CSubDeviceItem(0, QString())));
    QVERIFY(device.setSubDevice(CSubDeviceItem(254, QStringLiteral("b"))));
    QCOMPARE(device.mSubDevices.keys(), (QList<unsigned char>{0, 254}));
    QVERIFY(areEqual(device.mSubDevices.value(254), CSubDeviceItem(254, QStringLiteral("b"))));
    QVERIFY(areEqual(device.mSubDevices.value(0), CSubDeviceItem(0, QString())));
}

void tst_device::setSubDeviceTakesOneOfItsOwn()
{
    CDeviceItem device;
    device.setSubDevice(sampleSubDevice(1));
    CSubDeviceItem &held = device.mSubDevices[1];
    held.setNumber(4);
    QVERIFY(device.setSubDevice(held));
    QVERIFY(device.setSubDevice(device.mSubDevices[4]));
    QCOMPARE(device.mSubDevices.keys(), (QList<unsigned char>{1, 4}));
    QVERIFY(areEqual(device.mSubDevices.value(4), device.mSubDevices.value(1)));
    QCOMPARE(int(device.mSubDevices.value(4).number()), 4);
}

void tst_device::setSubDeviceRefusesAnInvalidOne()
{
    CDeviceItem device = sampleDevice();
    QVERIFY(!device.setSubDevice(CSubDeviceItem()));
    QVERIFY(!device.setSubDevice(CSubDeviceItem(255, QStringLiteral("named"))));
    QVERIFY(areEqual(device, sampleDevice()));
}

void tst_device::gettersBySubDevice()
{
    CDeviceItem device;
    device.setSubDevice(sampleSubDevice(1));
    CSubDeviceItem other(2, QString());
    other.setAvailableParamSets(0x2'0000'0002);
    device.setSubDevice(other);

    QCOMPARE(device.availableParamSets(1), 0x5ULL);
    QCOMPARE(device.availableParamSetNames(1),
             (Sets{{0, QStringLiteral("Param set 01")}, {2, QStringLiteral("Param set 03")}}));
    QCOMPARE(device.availableParamSetCount(1), 2);
    QVERIFY(device.paramVersion(1) == version(1, 2, 300));
    QCOMPARE(device.activeParamSet(1), short(2));

    QCOMPARE(device.availableParamSets(2), 0x2ULL);
    QCOMPARE(device.availableParamSetNames(2).keys(), (QList<unsigned short>{1, 33}));
    QCOMPARE(device.availableParamSetCount(2), 2);
    QVERIFY(device.paramVersion(2) == version(0, 0, 0));
    QCOMPARE(device.activeParamSet(2), short(-1));
}

void tst_device::gettersOfAllParamSets()
{
    CDeviceItem device;
    device.setSubDevice(CSubDeviceItem(0, QString()));
    device.setAvailableParamSets(~0ULL, 0);
    QCOMPARE(device.availableParamSetCount(0), 64);
    QCOMPARE(device.availableParamSetNames(0).size(), 64);
    QCOMPARE(device.availableParamSetNames(0).lastKey(), static_cast<unsigned short>(63));
    QCOMPARE(device.availableParamSets(0), 0xFFFFFFFFULL);
}

void tst_device::gettersWithoutTheSubDevice()
{
    for (const CDeviceItem &device : {CDeviceItem(), sampleDevice()}) {
        QCOMPARE(device.availableParamSets(9), 0ULL);
        QCOMPARE(device.availableParamSetNames(9), Sets());
        QCOMPARE(device.availableParamSetCount(9), 0);
        QVERIFY(device.paramVersion(9) == version(0, 0, 0));
        QCOMPARE(device.activeParamSet(9), short(-1));
    }
}

void tst_device::settersBySubDevice()
{
    CDeviceItem device = sampleDevice();
    device.setAvailableParamSets(0x6, 5);
    QCOMPARE(device.availableParamSetNames(5),
             (Sets{{1, QStringLiteral("Param set 02")}, {2, QStringLiteral("Param set 03")}}));
    NameTable names = numberedNames();
    device.setAvailableParamSetNames(names.data(), 5);
    QCOMPARE(device.availableParamSetNames(5),
             (Sets{{1, QStringLiteral("Name 1")}, {2, QStringLiteral("Name 2")}}));
    QVERIFY(device.setActiveParamSet(63, 5));
    QCOMPARE(device.activeParamSet(5), short(63));
    QVERIFY(!device.setActiveParamSet(64, 5));
    QVERIFY(!device.setActiveParamSet(-1, 5));
    QCOMPARE(device.activeParamSet(5), short(63));
    QVERIFY(device.setActiveParamSet(63, 5));

    // The other one is as it was.
    QVERIFY(areEqual(device.mSubDevices.value(1), sampleSubDevice(1)));
    QCOMPARE(device.mSubDevices.size(), 2);
}

void tst_device::settersWithoutTheSubDeviceCreateNothing()
{
    for (const CDeviceItem &original : {CDeviceItem(), sampleDevice()}) {
        CDeviceItem device = original;
        device.setAvailableParamSets(0x6, 9);
        NameTable names = numberedNames();
        device.setAvailableParamSetNames(names.data(), 9);
        QVERIFY(!device.setActiveParamSet(3, 9));
        QVERIFY(!device.setActiveParamSet(-1, 9));
        QVERIFY(areEqual(device, original));
    }
}

// The map is public and may come from a stream: a sub-device can stand under another number than its own.
void tst_device::subDevicesAreFoundByKeyNotByNumber()
{
    CDeviceItem device;
    device.mSubDevices.insert(9, sampleSubDevice(3));
    device.mSubDevices.insert(10, CSubDeviceItem());
    QCOMPARE(device.availableParamSetCount(9), 2);
    QCOMPARE(device.availableParamSetCount(3), 0);
    QCOMPARE(device.activeParamSet(3), short(-1));
    QVERIFY(!device.setActiveParamSet(1, 3));
    QVERIFY(device.setActiveParamSet(1, 9));
    QVERIFY(device.setActiveParamSet(2, 10));
    device.setAvailableParamSets(0x8, 9);
    device.setAvailableParamSets(0x8, 10);
    NameTable names = numberedNames();
    device.setAvailableParamSetNames(names.data(), 9);

    QCOMPARE(device.mSubDevices.keys(), (QList<unsigned char>{9, 10}));
    QCOMPARE(int(device.mSubDevices.value(9).number()), 3);
    QCOMPARE(device.activeParamSet(9), short(1));
    QCOMPARE(device.availableParamSetNames(9), (Sets{{3, QStringLiteral("Name 3")}}));
    QVERIFY(!device.mSubDevices.value(10).isValid());
    QCOMPARE(device.activeParamSet(10), short(2));
    QCOMPARE(device.availableParamSetNames(10), (Sets{{3, QStringLiteral("Param set 04")}}));
}

void tst_device::settersLeaveCopiesAlone()
{
    CDeviceItem device = sampleDevice();
    const CDeviceItem copy = device;
    const CSubDeviceItem held = device.mSubDevices.value(1);
    device.setAvailableParamSets(0, 1);
    NameTable names = numberedNames();
    device.setAvailableParamSetNames(names.data(), 5);
    QVERIFY(device.setActiveParamSet(7, 1));
    QVERIFY(areEqual(copy, sampleDevice()));
    QVERIFY(areEqual(held, sampleSubDevice(1)));
    QVERIFY(areDifferent(device, copy));
}

void tst_device::nullNameTableIsIgnored()
{
    CDeviceItem device = sampleDevice();
    device.setAvailableParamSetNames(nullptr, 1);
    device.setAvailableParamSetNames(nullptr, 9);
    QVERIFY(areEqual(device, sampleDevice()));
}

void tst_device::textsHoldPlaceholders()
{
    const QString text = QStringLiteral("%1 %2 %L3 %%");
    CDeviceItem device(text, addressType(1), cDefaultDeviceAddress, 1, text);
    device.mText1 = text;
    device.mText2 = text;
    device.setSubDevice(CSubDeviceItem(1, text));
    CDeviceItem back;
    QCOMPARE(readInto(back, streamed(device)), QDataStream::Ok);
    QVERIFY(areEqual(back, device));
    for (const QString &read :
         {back.mName, back.mIdentifier, back.mText1, back.mText2, back.mSubDevices.value(1).name()})
        QCOMPARE(read, text);
}

void tst_device::equality_data()
{
    QTest::addColumn<CDeviceItem>("other");
    QTest::addColumn<bool>("equal");

    const auto row = [](const char *name, bool equal, const std::function<void(CDeviceItem &)> &change) {
        CDeviceItem other = sampleDevice();
        change(other);
        QTest::newRow(name) << other << equal;
    };
    const auto differs = [&](const char *name, const std::function<void(CDeviceItem &)> &change) {
        row(name, false, change);
    };
    row("same", true, [](CDeviceItem &) {});
    row("same sub-device, set again", true,
        [](CDeviceItem &other) { other.setSubDevice(sampleSubDevice(1)); });
    differs("mIdentifier", [](CDeviceItem &other) { other.mIdentifier.clear(); });
    differs("mHostAddrType", [](CDeviceItem &other) { other.mHostAddrType = addressType(3); });
    differs("mHostAddress", [](CDeviceItem &other) { other.mHostAddress = cLinkLocalNetwork; });
    differs("mHostAddress, null", [](CDeviceItem &other) { other.mHostAddress.clear(); });
    differs("mHostAddress, the same mapped to IPv6", [](CDeviceItem &other) {
        other.mHostAddress = QHostAddress(QStringLiteral("::ffff:192.168.100.1"));
    });
    differs("mPort", [](CDeviceItem &other) { other.mPort = 5001; });
    differs("mFlag1", [](CDeviceItem &other) { other.mFlag1 = false; });
    differs("mFlag2", [](CDeviceItem &other) { other.mFlag2 = true; });
    differs("flags swapped", [](CDeviceItem &other) { std::swap(other.mFlag1, other.mFlag2); });
    differs("mDeviceKey", [](CDeviceItem &other) { other.mDeviceKey = 8; });
    differs("mName", [](CDeviceItem &other) { other.mName += QLatin1Char(' '); });
    differs("mText1", [](CDeviceItem &other) { other.mText1.clear(); });
    differs("mValue1", [](CDeviceItem &other) { other.mValue1 = 2; });
    differs("mText2", [](CDeviceItem &other) { other.mText2.clear(); });
    differs("mValue2", [](CDeviceItem &other) { other.mValue2 = 0; });
    differs("mUserRights, first byte", [](CDeviceItem &other) { other.mUserRights.bytes[0] = 1; });
    differs("mUserRights, last byte", [](CDeviceItem &other) { other.mUserRights.bytes[31] = 0; });
    differs("mSubDevices, one less", [](CDeviceItem &other) { other.mSubDevices.remove(5); });
    differs("mSubDevices, one more", [](CDeviceItem &other) { other.setSubDevice(sampleSubDevice(6)); });
    differs("mSubDevices, another key",
            [](CDeviceItem &other) { other.mSubDevices.insert(6, other.mSubDevices.take(5)); });
    differs("mSubDevices, another value", [](CDeviceItem &other) { other.setActiveParamSet(1, 5); });
}

void tst_device::equality()
{
    QFETCH(CDeviceItem, other);
    QFETCH(bool, equal);

    QVERIFY(equal ? areEqual(sampleDevice(), other) : areDifferent(sampleDevice(), other));
}

void tst_device::nullAndEmptyTextsAreEqual()
{
    CDeviceItem device;
    QVERIFY(device.mIdentifier.isNull());
    device.mIdentifier = QLatin1String("");
    QVERIFY(!device.mIdentifier.isNull());
    QVERIFY(areEqual(device, CDeviceItem()));
}

void tst_device::ipv6ScopesAreEqual()
{
    CDeviceItem device;
    device.mHostAddress = QHostAddress(QStringLiteral("fe80::1%eth0"));
    CDeviceItem other;
    other.mHostAddress = QHostAddress(QStringLiteral("fe80::1%eth1"));
    QVERIFY(areEqual(device, other));
}

void tst_device::debugForm_data()
{
    QTest::addColumn<CDeviceItem>("device");
    QTest::addColumn<QString>("text");

    QTest::newRow("IPv4") << sampleDevice()
                          << QStringLiteral("CDeviceItem(Spindle drive, 192.168.100.1:5000)");
    QTest::newRow("IPv6") << CDeviceItem(QStringLiteral("Drive"), addressType(1),
                                         QHostAddress(QStringLiteral("fe80::1%eth0")), 80, QString())
                          << QStringLiteral("CDeviceItem(Drive, [fe80::1%eth0]:80)");
    QTest::newRow("placeholders") << CDeviceItem(QStringLiteral("%3 %2"), addressType(1), cLinkLocalNetwork,
                                                 65535, QString())
                                  << QStringLiteral("CDeviceItem(%3 %2, 169.254.0.0:65535)");
    QTest::newRow("default") << CDeviceItem() << QStringLiteral("CDeviceItem(, :0)");
    QTest::newRow("any address") << CDeviceItem(QString(), addressType(1), QHostAddress(QHostAddress::Any), 1,
                                                QString())
                                 << QStringLiteral("CDeviceItem(, 0.0.0.0:1)");
}

void tst_device::debugForm()
{
    QFETCH(CDeviceItem, device);
    QFETCH(QString, text);

    QString quoted;
    QDebug(&quoted) << device;
    QCOMPARE(quoted.trimmed(), QStringLiteral("\"") + text + QStringLiteral("\""));
    QString plain;
    QDebug(&plain).noquote() << device;
    QCOMPARE(plain.trimmed(), text);
}

void tst_device::debugFormRestoresTheStream()
{
    QString mixed;
    QDebug(&mixed).space() << 1 << CDeviceItem() << 2 << 3;
    QCOMPARE(mixed.trimmed(), QStringLiteral("1 \"CDeviceItem(, :0)\" 2 3"));
    QString tight;
    QDebug(&tight).nospace() << 1 << CDeviceItem() << 2 << 3;
    QCOMPARE(tight, QStringLiteral("1\"CDeviceItem(, :0)\"23"));
}

void tst_device::isAMetaType()
{
    const QVariant variant = QVariant::fromValue(sampleDevice());
    QVERIFY(areEqual(variant.value<CDeviceItem>(), sampleDevice()));
}

void tst_device::exampleOfTheClassComment()
{
    const auto wired = static_cast<CDeviceItem::EHostAddrType>(1);
    CDeviceItem drive(QStringLiteral("Spindle drive"), wired, cDefaultDeviceAddress, 5000,
                      QStringLiteral("SN 4711"));
    QVERIFY(drive.isValid());
    drive.addSubDevice(CSubDeviceItem(0, QStringLiteral("Axis X")), 3);
    drive.setAvailableParamSets(0x5, 3);
    QCOMPARE(drive.availableParamSetNames(3).keys(), (QList<unsigned short>{0, 2}));
    QCOMPARE(drive.availableParamSetCount(3), 2);
    QCOMPARE(drive.activeParamSet(9), short(-1));
}

QTEST_GUILESS_MAIN(tst_device)
#include "tst_device.moc"
