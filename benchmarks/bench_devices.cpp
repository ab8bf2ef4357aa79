// SPDX-License-Identifier: MIT
// Inventories of 10, 1,000 and 100,000 devices written, read, compared and united, beside plain structs in a
// QMap that are streamed with Qt's own operators. The report is per device: the same figure at every size is
// linear growth. Ten devices are information only: what a list costs before it holds much.
#include "PeerReport.h"
#include "PlainDevices.h"

#include <CDeviceList.h>

#include <benchmark/benchmark.h>

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

bool sidesReadTheSame(const Inventory &inventory)
{
    return inventory.ours.list.count() == inventory.count
           && written(inventory.peer.list) == written(inventory.ours.list);
}

bool sidesWriteTheSame(const Inventory &inventory)
{
    return written(inventory.ours.list) == inventory.bytes && written(inventory.peer.list) == inventory.bytes;
}

bool sidesCompareTheSame(const Inventory &inventory)
{
    return inventory.ours.list == inventory.ours.equal && inventory.peer.list == inventory.peer.equal
           && inventory.ours.list != inventory.ours.other && !(inventory.peer.list == inventory.peer.other);
}

bool sidesUniteTheSame(const Inventory &inventory)
{
    const QByteArray unitedBytes = written(united(inventory.ours.list, inventory.ours.other));
    return unitedBytes == written(united(inventory.peer.list, inventory.peer.other))
           && read<CDeviceList>(unitedBytes).count() == inventory.count + inventory.count / 2;
}

template<typename Side, typename Work>
std::function<void()> over(const Side &side, Work work)
{
    return [&side, work] { benchmark::DoNotOptimize(work(side)); };
}

struct OperationBounds
{
    Bounds write;
    Bounds read;
    Bounds compare;
    Bounds unite;
};

std::string itemName(const char *operation, int count)
{
    return operation + (" " + std::to_string(count));
}

void addInventory(const Inventory &inventory, const OperationBounds &bounds)
{
    const auto add = [&](const char *operation, std::function<void()> ours, std::function<void()> peer,
                         bool (*check)(const Inventory &), Bounds boundsOfIt) {
        addComparison({itemName(operation, inventory.count), inventory.count, std::move(ours),
                       std::move(peer), [&inventory, check] { return check(inventory); }, boundsOfIt});
    };
    const auto addForBoth = [&](const char *operation, auto work, bool (*check)(const Inventory &),
                                Bounds boundsOfIt) {
        add(operation, over(inventory.ours, work), over(inventory.peer, work), check, boundsOfIt);
    };
    addForBoth(
        "write", [](const auto &side) { return written(side.list); }, sidesWriteTheSame, bounds.write);
    add("read", over(inventory.bytes, read<CDeviceList>), over(inventory.bytes, read<PlainList>),
        sidesReadTheSame, bounds.read);
    addForBoth(
        "compare", [](const auto &side) { return side.list == side.equal; }, sidesCompareTheSame,
        bounds.compare);
    addForBoth(
        "unite", [](const auto &side) { return united(side.list, side.other); }, sidesUniteTheSame,
        bounds.unite);
}

} // namespace

int main(int argc, char **argv)
{
    const Inventory few(10);
    const Inventory thousand(1000);
    const Inventory hundredThousand(100000);
    addInventory(few, {});
    addInventory(thousand, {{0.43, 1.5}, {0.58, 1.4}, {0.92, 1.2}, {0.92, 2.0}});
    addInventory(hundredThousand, {{0.43, 1.5}, {0.88, 1.4}, {0.97, 1.2}, {1.10, 2.0}});
    for (const char *operation : {"write", "read", "compare", "unite"})
        addGrowth({itemName(operation, thousand.count), itemName(operation, hundredThousand.count), 2.5});
    return runComparisons(argc, argv);
}
