// SPDX-License-Identifier: MIT
#include "PlainDevices.h"

#include <cstring>

bool PlainSubDevice::operator==(const PlainSubDevice &other) const
{
    return number == other.number && name == other.name && sets == other.sets && activeSet == other.activeSet
           && build == other.build && minor == other.minor && major == other.major;
}

bool PlainDevice::operator==(const PlainDevice &other) const
{
    return identifier == other.identifier && addressType == other.addressType && address == other.address
           && port == other.port && flag1 == other.flag1 && flag2 == other.flag2 && key == other.key
           && name == other.name && text1 == other.text1 && value1 == other.value1 && text2 == other.text2
           && value2 == other.value2 && std::memcmp(rights, other.rights, sizeof rights) == 0
           && subDevices == other.subDevices;
}

bool PlainList::operator==(const PlainList &other) const
{
    return name == other.name && sourceType == other.sourceType && devices == other.devices
           && sourceAddress == other.sourceAddress && sourceValue1 == other.sourceValue1
           && sourceValue2 == other.sourceValue2;
}

void PlainList::unite(const PlainList &other)
{
    for (auto theirs = other.devices.begin(); theirs != other.devices.end(); ++theirs) {
        if (!devices.contains(theirs.key()))
            devices.insert(theirs.key(), theirs.value())->key = static_cast<qint32>(theirs.key());
    }
}

QDataStream &operator<<(QDataStream &stream, const PlainSubDevice &subDevice)
{
    return stream << subDevice.number << subDevice.name << subDevice.sets << subDevice.activeSet
                  << subDevice.build << subDevice.minor << subDevice.major;
}

QDataStream &operator>>(QDataStream &stream, PlainSubDevice &subDevice)
{
    return stream >> subDevice.number >> subDevice.name >> subDevice.sets >> subDevice.activeSet
           >> subDevice.build >> subDevice.minor >> subDevice.major;
}

QDataStream &operator<<(QDataStream &stream, const PlainDevice &device)
{
    stream << device.identifier << device.addressType << device.address << device.port << device.flag1
           << device.flag2 << device.key << device.name << device.text1 << device.value1 << device.text2
           << device.value2;
    stream.writeRawData(device.rights, sizeof device.rights);
    return stream << device.subDevices;
}

QDataStream &operator>>(QDataStream &stream, PlainDevice &device)
{
    stream >> device.identifier >> device.addressType >> device.address >> device.port >> device.flag1
        >> device.flag2 >> device.key >> device.name >> device.text1 >> device.value1 >> device.text2
        >> device.value2;
    stream.readRawData(device.rights, sizeof device.rights);
    return stream >> device.subDevices;
}

QDataStream &operator<<(QDataStream &stream, const PlainList &list)
{
    return stream << list.name << list.sourceType << list.devices << list.sourceAddress << list.sourceValue1
                  << list.sourceValue2;
}

QDataStream &operator>>(QDataStream &stream, PlainList &list)
{
    return stream >> list.name >> list.sourceType >> list.devices >> list.sourceAddress >> list.sourceValue1
           >> list.sourceValue2;
}
