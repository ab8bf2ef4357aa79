// SPDX-License-Identifier: MIT
// Any bytes as the streams of a device and of a sub-device, and what the setters make of records that no
// setter has made.
#include "Traversals.h"

#include <CDeviceItem.h>

#include <Equality.h>
#include <InputReader.h>
#include <Properties.h>
#include <StreamForm.h>

#include <QDebug>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace {

constexpr int setCount = CSubDeviceItem::maxParamSetCount;
constexpr int nameUnits = 32;

using SetNames = QMap<unsigned short, QString>;

// A map from a stream may have a key twice.
template<typename Map>
bool hasEachKeyOnce(const Map &map)
{
    const auto keys = map.keys();
    return std::adjacent_find(keys.begin(), keys.end()) == keys.end();
}

QString defaultName(int set)
{
    return QStringLiteral("Param set %1").arg(set + 1, 2, 10, QLatin1Char('0'));
}

SetNames setsAfterMask(SetNames names, quint64 mask)
{
    for (int set = 0; set < setCount; ++set) {
        const auto number = static_cast<unsigned short>(set);
        if ((mask >> set & 1) == 0)
            names.remove(number);
        else if (!names.contains(number))
            names.insert(number, defaultName(set));
    }
    return names;
}

// 64 names of 32 units, those of the text one behind the other, zeros behind them.
std::vector<ushort> nameTable(const QString &text)
{
    std::vector<ushort> table(std::size_t{setCount} * nameUnits);
    const int count = std::min(text.size(), setCount * nameUnits);
    std::transform(text.begin(), text.begin() + count, table.begin(), [](QChar c) { return c.unicode(); });
    return table;
}

SetNames setsAfterNames(SetNames names, const std::vector<ushort> &table)
{
    for (int set = 0; set < setCount; ++set) {
        const ushort *const first = &table[static_cast<std::size_t>(set) * nameUnits];
        const QString name =
            QString::fromUtf16(first, static_cast<int>(std::find(first, first + nameUnits, 0) - first));
        const auto number = static_cast<unsigned short>(set);
        if (names.contains(number))
            names[number] = name.isEmpty() ? defaultName(set) : name;
    }
    return names;
}

void checkSets(const CSubDeviceItem &subDevice)
{
    const SetNames names = subDevice.availableParamSetNames();
    quint64 mask = 0;
    for (auto set = names.begin(); set != names.end(); ++set)
        mask |= quint64(1) << set.key() % 32;
    require(subDevice.availableParamSets() == mask, "the mask folds the sets to 32 bits");
    require(subDevice.availableParamSetCount() == names.size() && subDevice.paramSetCount() == names.size(),
            "every set counts");
    for (auto set = names.begin(); set != names.end(); ++set)
        require(subDevice.containsParamSet(set.key()) && subDevice.containsParamSet(set.key() + 0x10000U),
                "the low 16 bits of a number name a set");
}

bool checkActiveSet(CSubDeviceItem subDevice, short set)
{
    const short before = subDevice.activeParamSet();
    const bool isSet = subDevice.setActiveParamSet(set);
    require(isSet == (set == before || (set >= 0 && set < setCount)), "a set from 0 to 63 can be active");
    require(subDevice.activeParamSet() == (isSet ? set : before), "what cannot be active changes nothing");
    return isSet;
}

void checkSubDevice(CSubDeviceItem subDevice, quint64 mask, const QString &text)
{
    const CSubDeviceItem former = subDevice;
    checkSets(subDevice);
    checkActiveSet(subDevice, static_cast<short>(mask));
    checkActiveSet(subDevice, subDevice.activeParamSet());
    const SetNames before = subDevice.availableParamSetNames();
    subDevice.setAvailableParamSets(mask);
    // Of a set that is there twice both go, and either may be the one that stays; the rest is exact.
    if (hasEachKeyOnce(before))
        require(subDevice.availableParamSetNames() == setsAfterMask(before, mask),
                "the mask adds and removes sets");
    checkSets(subDevice);

    std::vector<ushort> table = nameTable(text);
    const SetNames masked = subDevice.availableParamSetNames();
    subDevice.setAvailableParamSetNames(table.data());
    if (hasEachKeyOnce(masked))
        require(subDevice.availableParamSetNames() == setsAfterNames(masked, table),
                "sets that are there get names");
    subDevice.setAvailableParamSetNames(nullptr);
    require(subDevice.availableParamSetNames().size() == masked.size(), "names add no set");
    requireEquality(subDevice, former);

    subDevice.clear();
    require(subDevice.isNull() && !subDevice.isValid() && subDevice.paramSetCount() == masked.size(),
            "clearing keeps the sets");
}

// A sub-device by its number in the device is the one that the map has.
void checkByNumber(CDeviceItem device, quint8 number, quint64 mask, const QString &text)
{
    const bool isThere = device.mSubDevices.contains(number);
    const CSubDeviceItem subDevice = device.mSubDevices.value(number);
    const int count = device.mSubDevices.size();
    require(device.availableParamSets(number) == subDevice.availableParamSets()
                && device.availableParamSetNames(number) == subDevice.availableParamSetNames()
                && device.availableParamSetCount(number) == subDevice.paramSetCount()
                && device.paramVersion(number) == subDevice.paramVersion()
                && device.activeParamSet(number) == subDevice.activeParamSet(),
            "a number answers as its sub-device, or as a default one");
    require(device.setActiveParamSet(static_cast<short>(mask), number)
                == (isThere && checkActiveSet(subDevice, static_cast<short>(mask))),
            "without a sub-device no set is active");
    device.setAvailableParamSets(mask, number);
    std::vector<ushort> table = nameTable(text);
    device.setAvailableParamSetNames(table.data(), number);
    require(device.mSubDevices.size() == count, "setters add no sub-device");
    device.addSubDevice(subDevice, number);
    require(device.mSubDevices.value(number).number() == number, "an added sub-device has its number");
    require(device.setSubDevice(subDevice) == subDevice.isValid(),
            "a sub-device without a number is refused");
}

void checkRights(CDeviceItem device, const QByteArray &bytes)
{
    const QByteArray before = device.userlevelData();
    device.setUserlevelData(bytes);
    require(device.userlevelData() == (bytes.size() == 32 ? bytes : before),
            "exactly 32 bytes are user rights");
    const CDeviceItem former = device;
    device.setUserlevelData(bytes.left(32).leftJustified(32, '\0'));
    requireEquality(device, former);
    require((device == former) == (device.userRights() == former.userRights()),
            "equality looks at the rights");
}

template<typename Record>
Record checkStream(const QByteArray &bytes, QDataStream::ByteOrder order)
{
    constexpr std::size_t textBlock = std::size_t{4} << 20; // of which Qt makes room in advance
    const std::size_t limit = textBlock + 32 * static_cast<std::size_t>(bytes.size() + 64);
    Record record;
    bounded(limit, "a record costs memory in proportion to its stream",
            [&] { readFrom(bytes, record, order); });
    Record again;
    QByteArray rest;
    require(readFrom(streamed(record, order), again, order, QDataStream::Qt_5_15, &rest) == QDataStream::Ok
                && rest.isEmpty() && again == record,
            "what was written is read as an equal record");
    require(streamed(again, order) == streamed(record, order), "what was read is written as the same bytes");
    QString debug;
    QDebug(&debug) << record;
    require(!debug.isEmpty(), "there is a debug form");
    return record;
}

} // namespace

void traverseDeviceRecords(const QByteArray &input)
{
    InputReader reader(input);
    const auto order = reader.takeChoice(2) == 0 ? QDataStream::BigEndian : QDataStream::LittleEndian;
    const auto mask = reader.take<quint64>();
    const QByteArray bytes = reader.takeRest();
    const QString text = QString::fromUtf8(bytes.right(256));
    checkSubDevice(checkStream<CSubDeviceItem>(bytes, order), mask, text);
    const auto device = checkStream<CDeviceItem>(bytes, order);
    require(device.isValid()
                == (!device.mHostAddress.isNull() && device.mPort != 0
                    && device.mHostAddrType != CDeviceItem::E_HOST_ADDR_NONE),
            "a device with an address, a port and a kind of address is valid");
    checkRights(device, bytes.right(32));
    checkByNumber(device, static_cast<quint8>(mask), mask, text);
    const QList<unsigned char> numbers = device.mSubDevices.keys();
    const QList<unsigned char> firstNumbers = numbers.mid(0, 16);
    for (const unsigned char number : firstNumbers)
        checkByNumber(device, number, mask, text);
}
