// SPDX-License-Identifier: MIT
#include <CDeviceList.h>

#include "devices/DeviceStream.h"
#include "devices/MapStream.h"

#include <QDataStream>
#include <QDebug>
#include <QDebugStateSaver>

#include <utility>

namespace {

using Devices = QMap<unsigned int, CDeviceItem>;

// The first place from which on the keys are not below `key`, when that of a smaller key is known. Where two
// lists are united it is mostly that place or the next one, and need not be looked up.
Devices::const_iterator placeOf(unsigned int key, const Devices &devices, Devices::const_iterator former)
{
    const auto isBefore = [&](Devices::const_iterator place) {
        return place != devices.constEnd() && place.key() < key;
    };
    if (isBefore(former))
        ++former;
    return isBefore(former) ? devices.lowerBound(key) : former;
}

} // namespace

CDeviceList::CDeviceList(QString name, CDeviceList::ESourceType type)
    : mListName(std::move(name)), mSourceType(type)
{}

QString CDeviceList::listName() const
{
    return mListName;
}

CDeviceList::ESourceType CDeviceList::sourceType() const
{
    return mSourceType;
}

QHostAddress CDeviceList::sourceAddress() const
{
    return mSourceAddress;
}

int CDeviceList::sourceValue1() const
{
    return mSourceValue1;
}

int CDeviceList::sourceValue2() const
{
    return mSourceValue2;
}

void CDeviceList::setSourceType(ESourceType type)
{
    mSourceType = type;
}

void CDeviceList::setSourceAddress(const QHostAddress &address)
{
    mSourceAddress = address;
}

void CDeviceList::setSourceValue1(int value)
{
    mSourceValue1 = value;
}

void CDeviceList::setSourceValue2(int value)
{
    mSourceValue2 = value;
}

bool CDeviceList::contains(unsigned int key) const
{
    return mDevices.contains(key);
}

CDeviceItem CDeviceList::device(unsigned int key) const
{
    return mDevices.value(key);
}

QList<unsigned int> CDeviceList::keys() const
{
    return mDevices.keys();
}

int CDeviceList::size() const
{
    return mDevices.size();
}

int CDeviceList::count() const
{
    return size();
}

void CDeviceList::addDevice(unsigned int key, const CDeviceItem &device)
{
    mDevices.insert(key, device)->mDeviceKey = static_cast<qint32>(key);
}

void CDeviceList::removeDevice(unsigned int key)
{
    mDevices.remove(key);
}

void CDeviceList::clear()
{
    mDevices.clear();
}

void CDeviceList::unite(const CDeviceList &other)
{
    auto place = mDevices.constBegin();
    for (auto theirs = other.mDevices.constBegin(); theirs != other.mDevices.constEnd(); ++theirs) {
        place = placeOf(theirs.key(), mDevices, place);
        if (place != mDevices.constEnd() && place.key() == theirs.key())
            continue;
        const auto added = mDevices.insert(place, theirs.key(), theirs.value());
        added->mDeviceKey = static_cast<qint32>(theirs.key());
        place = Devices::const_iterator(added); // inserting may have detached the map
    }
}

bool CDeviceList::operator==(const CDeviceList &other) const
{
    return mListName == other.mListName && mSourceType == other.mSourceType && mDevices == other.mDevices
           && mSourceAddress == other.mSourceAddress && mSourceValue1 == other.mSourceValue1
           && mSourceValue2 == other.mSourceValue2;
}

bool CDeviceList::operator!=(const CDeviceList &other) const
{
    return !(*this == other);
}

QDataStream &operator<<(QDataStream &stream, CDeviceList::ESourceType type)
{
    return stream << static_cast<qint32>(type);
}

QDataStream &operator>>(QDataStream &stream, CDeviceList::ESourceType &type)
{
    qint32 number = 0;
    stream >> number;
    type = static_cast<CDeviceList::ESourceType>(number);
    return stream;
}

QDataStream &operator<<(QDataStream &stream, const CDeviceList &list)
{
    InventoryStream::Writer writer(stream);
    writer << list.mListName << list.mSourceType;
    writeMap(writer, list.mDevices) << list.mSourceAddress << list.mSourceValue1 << list.mSourceValue2;
    return stream;
}

QDataStream &operator>>(QDataStream &stream, CDeviceList &list)
{
    InventoryStream::Reader reader(stream);
    reader >> list.mListName >> list.mSourceType;
    readMap(reader, list.mDevices) >> list.mSourceAddress >> list.mSourceValue1 >> list.mSourceValue2;
    return stream;
}

QDebug operator<<(QDebug debug, const CDeviceList &list)
{
    const QDebugStateSaver saver(debug);
    debug.nospace()
        << QStringLiteral("CDeviceList(%1, %2)").arg(list.listName(), QString::number(list.size()));
    return debug;
}
