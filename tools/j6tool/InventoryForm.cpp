// SPDX-License-Identifier: MIT
#include "InventoryForm.h"

#include <CSubDeviceItem.h>

#include <QAbstractSocket>
#include <QtEndian>

#include <limits>

namespace j6tool {

namespace {

class InventoryWalk
{
public:
    explicit InventoryWalk(const QByteArray &bytes) : mBytes(bytes) {}

    std::optional<QString> misfit()
    {
        // The source type and the two source values are numbers of any value.
        if (text() && skip(4) && map(devices) && address() && skip(4 + 4))
            expectEnd();
        return mMisfit;
    }

private:
    using Entry = bool (InventoryWalk::*)(quint32 key);

    struct Map
    {
        const char *entryName;
        int keySize;
        quint32 highestKey;
        quint32 maxCount;
        int smallestEntry; // with its key
        Entry entry;
    };

    static const Map devices;
    static const Map subDevices;
    static const Map parameterSets;

    int left() const { return mBytes.size() - mPosition; }

    bool fail(int position, const QString &what)
    {
        mMisfit = QStringLiteral("at byte %1: %2").arg(position).arg(what);
        return false;
    }

    bool skip(int count);
    template<typename Number>
    bool take(Number &number);
    bool takeKey(quint32 &key, int size);
    bool text();
    bool address();
    bool map(const Map &map);
    bool entries(const Map &map, quint32 count);
    bool isInOrder(const Map &map, int position, quint32 key, std::optional<quint32> former);
    bool device(quint32 key);
    bool ownKey(quint32 key);
    bool subDevice(quint32 number);
    bool activeSet();
    bool parameterSet(quint32 number);
    void expectEnd();

    const QByteArray &mBytes;
    int mPosition = 0;
    std::optional<QString> mMisfit;
};

constexpr InventoryWalk::Map InventoryWalk::devices = {
    "device", 4, std::numeric_limits<quint32>::max(), maxInventoryDevices, 77, &InventoryWalk::device};
constexpr InventoryWalk::Map InventoryWalk::subDevices = {
    "sub-device", 1, std::numeric_limits<quint8>::max(), 256, 16, &InventoryWalk::subDevice};
constexpr InventoryWalk::Map InventoryWalk::parameterSets = {"parameter set",
                                                             2,
                                                             CSubDeviceItem::maxParamSetCount - 1,
                                                             CSubDeviceItem::maxParamSetCount,
                                                             6,
                                                             &InventoryWalk::parameterSet};

bool InventoryWalk::skip(int count)
{
    if (left() < count)
        return fail(mBytes.size(),
                    QStringLiteral("the file ends where %1 more bytes belong").arg(count - left()));
    mPosition += count;
    return true;
}

template<typename Number>
bool InventoryWalk::take(Number &number)
{
    const int position = mPosition;
    if (!skip(int(sizeof number)))
        return false;
    number = qFromBigEndian<Number>(mBytes.constData() + position);
    return true;
}

bool InventoryWalk::takeKey(quint32 &key, int size)
{
    const int position = mPosition;
    if (!skip(size))
        return false;
    key = 0;
    for (int i = position; i < mPosition; ++i)
        key = key << 8U | uchar(mBytes.at(i));
    return true;
}

bool InventoryWalk::text()
{
    constexpr quint32 nullText = std::numeric_limits<quint32>::max();
    const int position = mPosition;
    quint32 size = 0;
    if (!take(size))
        return false;
    if (size == nullText)
        return true;
    if (size % sizeof(QChar) != 0)
        return fail(position, QStringLiteral("a text of %1 bytes, which is odd").arg(size));
    if (size > quint32(left()))
        return fail(position, QStringLiteral("a text of %1 bytes where %2 are left").arg(size).arg(left()));
    return skip(int(size));
}

bool InventoryWalk::address()
{
    constexpr int ipv4Size = 4;
    constexpr int ipv6Size = 16;
    const int position = mPosition;
    qint8 protocol = 0;
    if (!take(protocol))
        return false;
    switch (protocol) {
    case QAbstractSocket::IPv4Protocol:
        return skip(ipv4Size);
    case QAbstractSocket::IPv6Protocol:
        return skip(ipv6Size) && text(); // and its scope
    case QAbstractSocket::AnyIPProtocol:
    case QAbstractSocket::UnknownNetworkLayerProtocol:
        return true;
    default:
        return fail(position, QStringLiteral("an address of the unknown protocol %1").arg(protocol));
    }
}

bool InventoryWalk::map(const Map &map)
{
    const int position = mPosition;
    quint32 count = 0;
    if (!take(count))
        return false;
    const QString name = QLatin1String(map.entryName);
    if (count > quint32(left() / map.smallestEntry))
        return fail(
            position,
            QStringLiteral("a count of %1 (%2) where %3 bytes are left").arg(count).arg(name).arg(left()));
    if (count > map.maxCount)
        return fail(position,
                    QStringLiteral("a count of %1 (%2), above %3").arg(count).arg(name).arg(map.maxCount));
    return entries(map, count);
}

bool InventoryWalk::entries(const Map &map, quint32 count)
{
    std::optional<quint32> former;
    for (; count > 0; --count) {
        const int position = mPosition;
        quint32 key = 0;
        if (!takeKey(key, map.keySize) || !isInOrder(map, position, key, former) || !(this->*map.entry)(key))
            return false;
        former = key;
    }
    return true;
}

bool InventoryWalk::isInOrder(const Map &map, int position, quint32 key, std::optional<quint32> former)
{
    const QString entry = QStringLiteral("%1 %2").arg(QLatin1String(map.entryName)).arg(key);
    if (key > map.highestKey)
        return fail(position, QStringLiteral("%1, above %2").arg(entry).arg(map.highestKey));
    if (former && key == *former)
        return fail(position, QStringLiteral("%1 for the second time").arg(entry));
    if (former && key > *former)
        return fail(position, QStringLiteral("%1 behind %2: keys descend").arg(entry).arg(*former));
    return true;
}

bool InventoryWalk::device(quint32 key)
{
    constexpr int kindSize = 4;
    constexpr int portSize = 2;
    constexpr int flagsSize = 2;
    constexpr int valueSize = 4;
    constexpr int rightsSize = 32;
    return text() && skip(kindSize) && address() && skip(portSize) && skip(flagsSize) && ownKey(key) && text()
           && text() && skip(valueSize) && text() && skip(valueSize) && skip(rightsSize) && map(subDevices);
}

bool InventoryWalk::ownKey(quint32 key)
{
    const int position = mPosition;
    quint32 own = 0;
    if (!take(own))
        return false;
    return own == key || fail(position, QStringLiteral("device %1 gives its key as %2").arg(key).arg(own));
}

bool InventoryWalk::subDevice(quint32)
{
    constexpr int numberSize = 1;
    constexpr int versionSize = 4;
    return skip(numberSize) && text() && map(parameterSets) && activeSet() && skip(versionSize);
}

bool InventoryWalk::activeSet()
{
    const int position = mPosition;
    qint16 set = 0;
    if (!take(set))
        return false;
    return (set >= -1 && set < CSubDeviceItem::maxParamSetCount)
           || fail(position, QStringLiteral("the active parameter set %1, outside -1 to 63").arg(set));
}

bool InventoryWalk::parameterSet(quint32)
{
    return text();
}

void InventoryWalk::expectEnd()
{
    if (left() > 0)
        fail(mPosition, QStringLiteral("the inventory ends, and %1 more bytes follow").arg(left()));
}

} // namespace

std::optional<QString> inventoryMisfit(const QByteArray &bytes)
{
    return InventoryWalk(bytes).misfit();
}

} // namespace j6tool
