// SPDX-License-Identifier: MIT
#include <CDeviceItem.h>

#include "devices/DeviceStream.h"
#include "devices/MapStream.h"
#include "types/PlainBytes.h"

#include <QDataStream>
#include <QDebug>
#include <QDebugStateSaver>

#include <cstring>
#include <utility>

namespace {

// As in a URL: the colons of an IPv6 address are none before a port.
QString hostText(const QHostAddress &address)
{
    const QString text = address.toString();
    return address.protocol() == QAbstractSocket::IPv6Protocol ? QStringLiteral("[%1]").arg(text) : text;
}

} // namespace

bool operator==(const sUserRights_t &a, const sUserRights_t &b)
{
    return std::memcmp(a.bytes, b.bytes, sizeof a.bytes) == 0;
}

bool operator!=(const sUserRights_t &a, const sUserRights_t &b)
{
    return !(a == b);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): by value as its neighbours; it cannot be moved, though
CDeviceItem::CDeviceItem(QString name, CDeviceItem::EHostAddrType type, QHostAddress address,
                         unsigned short port, QString identifier)
    : mIdentifier(std::move(identifier)), mHostAddrType(type), mHostAddress(address), mPort(port),
      mName(std::move(name))
{}

bool CDeviceItem::isValid() const
{
    return !mHostAddress.isNull() && mPort != 0 && mHostAddrType != E_HOST_ADDR_NONE;
}

void CDeviceItem::setUserlevelData(const QByteArray &data)
{
    if (data.size() == int(sizeof mUserRights))
        mUserRights = loadAs<sUserRights_t>(data.constData());
}

QByteArray CDeviceItem::userlevelData() const
{
    return bytesOf(mUserRights);
}

sUserRights_t CDeviceItem::userRights() const
{
    return mUserRights;
}

void CDeviceItem::addSubDevice(const CSubDeviceItem &sub, unsigned char number)
{
    // A copy before anything else: `sub` may be one of mSubDevices, which may let go of it when they detach.
    CSubDeviceItem held = sub;
    held.setNumber(number);
    mSubDevices.insert(number, held);
}

bool CDeviceItem::setSubDevice(const CSubDeviceItem &sub)
{
    if (!sub.isValid())
        return false;
    addSubDevice(sub, sub.number());
    return true;
}

unsigned long long CDeviceItem::availableParamSets(unsigned char sub) const
{
    return mSubDevices.value(sub).availableParamSets();
}

QMap<unsigned short, QString> CDeviceItem::availableParamSetNames(unsigned char sub) const
{
    return mSubDevices.value(sub).availableParamSetNames();
}

int CDeviceItem::availableParamSetCount(unsigned char sub) const
{
    return mSubDevices.value(sub).availableParamSetCount();
}

NTypes::sVersion_t CDeviceItem::paramVersion(unsigned char sub) const
{
    return mSubDevices.value(sub).paramVersion();
}

short CDeviceItem::activeParamSet(unsigned char sub) const
{
    return mSubDevices.value(sub).activeParamSet();
}

void CDeviceItem::setAvailableParamSets(unsigned long long mask, unsigned char sub)
{
    const auto held = mSubDevices.find(sub);
    if (held != mSubDevices.end())
        held->setAvailableParamSets(mask);
}

void CDeviceItem::setAvailableParamSetNames(unsigned short *names, unsigned char sub)
{
    const auto held = mSubDevices.find(sub);
    if (held != mSubDevices.end())
        held->setAvailableParamSetNames(names);
}

bool CDeviceItem::setActiveParamSet(short set, unsigned char sub)
{
    const auto held = mSubDevices.find(sub);
    return held != mSubDevices.end() && held->setActiveParamSet(set);
}

bool CDeviceItem::operator==(const CDeviceItem &other) const
{
    return mIdentifier == other.mIdentifier && mHostAddrType == other.mHostAddrType
           && mHostAddress == other.mHostAddress && mPort == other.mPort && mFlag1 == other.mFlag1
           && mFlag2 == other.mFlag2 && mDeviceKey == other.mDeviceKey && mName == other.mName
           && mText1 == other.mText1 && mValue1 == other.mValue1 && mText2 == other.mText2
           && mValue2 == other.mValue2 && mUserRights == other.mUserRights
           && mSubDevices == other.mSubDevices;
}

bool CDeviceItem::operator!=(const CDeviceItem &other) const
{
    return !(*this == other);
}

QDataStream &operator<<(QDataStream &stream, CDeviceItem::EHostAddrType type)
{
    return stream << static_cast<qint32>(type);
}

QDataStream &operator>>(QDataStream &stream, CDeviceItem::EHostAddrType &type)
{
    qint32 number = 0;
    stream >> number;
    type = static_cast<CDeviceItem::EHostAddrType>(number);
    return stream;
}

InventoryStream::Writer &operator<<(InventoryStream::Writer &writer, const CDeviceItem &device)
{
    writer << device.mIdentifier << device.mHostAddrType << device.mHostAddress << device.mPort
           << device.mFlag1 << device.mFlag2 << device.mDeviceKey << device.mName << device.mText1
           << device.mValue1 << device.mText2 << device.mValue2;
    writer.writeBytes(device.mUserRights.bytes, sizeof device.mUserRights.bytes);
    return writeMap(writer, device.mSubDevices);
}

InventoryStream::Reader &operator>>(InventoryStream::Reader &reader, CDeviceItem &device)
{
    reader >> device.mIdentifier >> device.mHostAddrType >> device.mHostAddress >> device.mPort
        >> device.mFlag1 >> device.mFlag2 >> device.mDeviceKey >> device.mName >> device.mText1
        >> device.mValue1 >> device.mText2 >> device.mValue2;
    reader.readBytes(device.mUserRights.bytes, sizeof device.mUserRights.bytes);
    return readMap(reader, device.mSubDevices);
}

QDataStream &operator<<(QDataStream &stream, const CDeviceItem &device)
{
    InventoryStream::Writer writer(stream);
    writer << device;
    return stream;
}

QDataStream &operator>>(QDataStream &stream, CDeviceItem &device)
{
    InventoryStream::Reader reader(stream);
    reader >> device;
    return stream;
}

QDebug operator<<(QDebug debug, const CDeviceItem &device)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << QStringLiteral("CDeviceItem(%1, %2:%3)")
                           .arg(device.mName, hostText(device.mHostAddress), QString::number(device.mPort));
    return debug;
}
