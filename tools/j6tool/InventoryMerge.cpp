// SPDX-License-Identifier: MIT
#include "InventoryMerge.h"

#include "InventoryFile.h"

#include <QDataStream>

namespace j6tool {

namespace {

// CDeviceItem's equality would not tell an IPv6 address from the same one of another network, its scope.
QByteArray bytesOf(const CDeviceItem &device)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(inventoryVersion);
    stream << device;
    return bytes;
}

} // namespace

InventoryMerge mergeInventory(CDeviceList &list, const CDeviceList &other)
{
    InventoryMerge merge;
    const QList<unsigned int> keys = other.keys();
    for (const unsigned int key : keys) {
        const CDeviceItem ours = list.device(key);
        const CDeviceItem theirs = other.device(key);
        if (!list.contains(key))
            merge.added.push_back(key);
        else if (bytesOf(ours) == bytesOf(theirs))
            merge.equal.push_back(key);
        else
            merge.kept.push_back({key, ours.mName, theirs.mName});
    }
    list.unite(other);
    return merge;
}

} // namespace j6tool
