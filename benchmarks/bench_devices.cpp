// SPDX-License-Identifier: MIT
// Inventories of 10, 1,000 and 100,000 devices written, read, compared and united, beside plain structs in a
// QMap that are streamed with Qt's own operators. The report is per device: the same figure at every size is
// linear growth.
#include "PeerReport.h"
#include "PlainDevices.h"

#include <CDeviceList.h>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <deque>
#include <functional>
#include <random>
#include <string>

namespace {

template<typename List>
QByteArray written(const List &list)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << list;
    return bytes;
}

template<typename List>
List read(const QByteArray &bytes)
{
    QDataStream stream(bytes);
    List list;
    stream >> list;
    return list;
}

template<typename List>
List united(const List &list, const List &other)
{
    List result = list;
    result.unite(other);
    return result;
}

// One side's lists. None shares with another, as none does that were read at different times.
template<typename List>
struct Lists
{
    List list;
    List equal;
    List other; // half of its keys are in the list

    Lists(const QByteArray &bytes, const QByteArray &otherBytes)
        : list(read<List>(bytes)), equal(read<List>(bytes)), other(read<List>(otherBytes))
    {}
};

CSubDeviceItem makeSubDevice(quint8 number, std::mt19937 &random)
{
    CSubDeviceItem subDevice(number, QStringLiteral("Axis %1").arg(number));
    subDevice.setAvailableParamSets(random() % 16); // two sets on average
    subDevice.setActiveParamSet(0);
    NTypes::sVersion_t version{};
    version.major = 2;
    version.build = static_cast<quint16>(random());
    subDevice.setParamVersion(version);
    return subDevice;
}

// Devices as a plant has them: one or two axes, of which each has a few parameter sets.
CDeviceItem makeDevice(quint32 key, std::mt19937 &random)
{
    CDeviceItem device(QStringLiteral("Drive %1").arg(key), static_cast<CDeviceItem::EHostAddrType>(1),
                       QHostAddress(cDefaultDeviceAddress.toIPv4Address() + key), 5000,
                       QStringLiteral("SN %1").arg(random() % 1000000));
    device.mFlag1 = random() % 2 == 0;
    device.mText1 = QStringLiteral("Hall %1").arg(random() % 20);
    device.mValue1 = static_cast<qint32>(random());
    device.setSubDevice(makeSubDevice(0, random));
    if (random() % 2 == 0)
        device.setSubDevice(makeSubDevice(1, random));
    return device;
}

QByteArray makeInventory(quint32 firstKey, quint32 count)
{
    std::mt19937 random(firstKey + 1);
    CDeviceList list(QStringLiteral("Plant"), static_cast<CDeviceList::ESourceType>(1));
    for (quint32 key = firstKey; key < firstKey + count; ++key)
        list.addDevice(key, makeDevice(key, random));
    return written(list);
}

struct Inventory
{
    int count;
    QByteArray bytes;
    QByteArray otherBytes;
    Lists<CDeviceList> ours;
    Lists<PlainList> peer;

    explicit Inventory(quint32 devices)
        : count(static_cast<int>(devices)), bytes(makeInventory(0, devices)),
          otherBytes(makeInventory(devices / 2, devices)), ours(bytes, otherBytes), peer(bytes, otherBytes)
    {}
};

// Timing different work would prove nothing: both sides read, write, find equal and unite the same.
bool sidesAgree(const Inventory &inventory)
{
    const QByteArray unitedBytes = written(united(inventory.ours.list, inventory.ours.other));
    const bool agree =
        inventory.ours.list.count() == inventory.count && written(inventory.ours.list) == inventory.bytes
        && written(inventory.peer.list) == inventory.bytes && inventory.ours.list == inventory.ours.equal
        && inventory.peer.list == inventory.peer.equal && inventory.ours.list != inventory.ours.other
        && !(inventory.peer.list == inventory.peer.other)
        && unitedBytes == written(united(inventory.peer.list, inventory.peer.other))
        && read<CDeviceList>(unitedBytes).count() == inventory.count + inventory.count / 2;
    if (!agree)
        std::fprintf(stderr, "the sides differ with %d devices\n", inventory.count);
    return agree;
}

template<typename Side, typename Work>
std::function<void()> over(const Side &side, Work work)
{
    return [&side, work] { benchmark::DoNotOptimize(work(side)); };
}

void addInventory(const Inventory &inventory)
{
    const auto add = [&](const char *operation, auto work) {
        addComparison({operation + (" " + std::to_string(inventory.count)), inventory.count,
                       over(inventory.ours, work), over(inventory.peer, work)});
    };
    addComparison({"read " + std::to_string(inventory.count), inventory.count,
                   over(inventory.bytes, read<CDeviceList>), over(inventory.bytes, read<PlainList>)});
    add("write", [](const auto &side) { return written(side.list); });
    add("compare", [](const auto &side) { return side.list == side.equal; });
    add("unite", [](const auto &side) { return united(side.list, side.other); });
}

} // namespace

int main(int argc, char **argv)
{
    static std::deque<Inventory> inventories;
    for (const quint32 devices : {10U, 1000U, 100000U}) {
        inventories.emplace_back(devices);
        if (!sidesAgree(inventories.back()))
            return 1;
        addInventory(inventories.back());
    }
    return runComparisons(argc, argv);
}
