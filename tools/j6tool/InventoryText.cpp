// SPDX-License-Identifier: MIT
#include "InventoryText.h"

#include "HexText.h"
#include "Table.h"
#include "VisibleText.h"

#include <QAbstractSocket>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <utility>
#include <vector>

namespace j6tool {

namespace {

constexpr int nameWidth = 40;
constexpr int identifierWidth = 24;
constexpr int addressWidth = 46;  // the longest IPv6 address and the ellipsis
constexpr int detailsWidth = 200; // the last column: room for 32 bytes of rights and some texts

// Empty for a null address.
QString addressText(const QHostAddress &address)
{
    const bool isAny = address.protocol() == QAbstractSocket::AnyIPProtocol;
    return isAny ? QStringLiteral("any") : address.toString();
}

QString versionText(const NTypes::sVersion_t &version)
{
    return QStringLiteral("%1.%2.%3").arg(version.major).arg(version.minor).arg(version.build);
}

QString inDoubleQuotes(const QString &text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

QString activeSetText(short set)
{
    return set < 0 ? QStringLiteral("none") : QString::number(set);
}

QString setsText(const CSubDeviceItem &subDevice)
{
    const QMap<unsigned short, QString> sets = subDevice.availableParamSetNames();
    QStringList texts;
    for (auto set = sets.constBegin(); set != sets.constEnd(); ++set)
        texts.append(QString::number(set.key()) + QLatin1Char(' ') + inDoubleQuotes(set.value()));
    return texts.isEmpty() ? QStringLiteral("no sets")
                           : QLatin1String("sets ") + texts.join(QLatin1String(", "));
}

bool hasUserRights(const CDeviceItem &device)
{
    return device.userRights() != sUserRights_t{};
}

// The members that most devices leave at their defaults; only those that are set.
QString furtherText(const CDeviceItem &device)
{
    QStringList texts;
    const auto add = [&texts](const char *name, bool isSet, const QString &text) {
        if (isSet)
            texts.append(QLatin1String(name) + text);
    };
    add("flag 1", device.mFlag1, QString());
    add("flag 2", device.mFlag2, QString());
    add("text 1 ", !device.mText1.isEmpty(), inDoubleQuotes(device.mText1));
    add("value 1 ", device.mValue1 != 0, QString::number(device.mValue1));
    add("text 2 ", !device.mText2.isEmpty(), inDoubleQuotes(device.mText2));
    add("value 2 ", device.mValue2 != 0, QString::number(device.mValue2));
    add("rights ", hasUserRights(device), hexFromBytes(device.userlevelData()));
    return texts.join(QLatin1String(", "));
}

// The place of a row of the table: a device's or one of its sub-devices'.
struct RowPlace
{
    unsigned int key;
    int subDevice; // -1: the device's
};

std::vector<RowPlace> rowPlaces(const CDeviceList &list)
{
    std::vector<RowPlace> places;
    const QList<unsigned int> keys = list.keys();
    for (const unsigned int key : keys) {
        places.push_back({key, -1});
        const QList<unsigned char> numbers = list.device(key).mSubDevices.keys();
        for (const unsigned char number : numbers)
            places.push_back({key, number});
    }
    return places;
}

QStringList deviceCells(unsigned int key, const CDeviceItem &device)
{
    return {QString::number(key),
            QString(),
            device.mName,
            device.mIdentifier,
            QString::number(device.mHostAddrType),
            addressText(device.mHostAddress),
            QString::number(device.mPort),
            QString(),
            QString(),
            furtherText(device)};
}

QStringList subDeviceCells(unsigned int key, int number, const CSubDeviceItem &subDevice)
{
    const QString own =
        subDevice.number() == number ? QString() : QStringLiteral(" (its own: %1)").arg(subDevice.number());
    return {QString::number(key),
            QString::number(number) + own,
            subDevice.name(),
            QString(),
            QString(),
            QString(),
            QString(),
            versionText(subDevice.paramVersion()),
            activeSetText(subDevice.activeParamSet()),
            setsText(subDevice)};
}

QStringList cells(const CDeviceList &list, RowPlace place)
{
    const CDeviceItem device = list.device(place.key);
    if (place.subDevice < 0)
        return deviceCells(place.key, device);
    return subDeviceCells(place.key, place.subDevice, device.mSubDevices.value(uchar(place.subDevice)));
}

void writeHead(Output &output, const CDeviceList &list)
{
    const QString address = addressText(list.sourceAddress());
    output.writeLine(QLatin1String("list     ") + visible(list.listName()));
    output.writeLine(QStringLiteral("source   type %1, %2, values %3 and %4")
                         .arg(QString::number(list.sourceType()),
                              address.isEmpty() ? QStringLiteral("no address") : visible(address),
                              QString::number(list.sourceValue1()), QString::number(list.sourceValue2())));
    output.writeLine(
        QStringLiteral("devices  %1, with %2 sub-devices\n").arg(list.size()).arg(subDeviceCount(list)));
}

QString shownName(const QString &name)
{
    return inDoubleQuotes(cutToWidth(visible(name), nameWidth));
}

void writeMerge(Output &output, const ShownMerge &shown)
{
    const InventoryMerge &merge = shown.merge;
    output.writeLine(QStringLiteral("\nunited with %1: %2 added, %3 equal in both, %4 kept")
                         .arg(visible(shown.fileName), QString::number(merge.added.size()),
                              QString::number(merge.equal.size()), QString::number(merge.kept.size())));
    for (const KeptDevice &kept : merge.kept) {
        output.writeLine(
            QStringLiteral("kept device %1 %2, dropped the other's %3")
                .arg(QString::number(kept.key), shownName(kept.name), shownName(kept.droppedName)));
    }
}

QJsonValue jsonAddress(const QHostAddress &address)
{
    return address.isNull() ? QJsonValue() : QJsonValue(addressText(address));
}

QJsonObject jsonHead(const CDeviceList &list)
{
    return {{QStringLiteral("name"), list.listName()},
            {QStringLiteral("sourceType"), list.sourceType()},
            {QStringLiteral("sourceAddress"), jsonAddress(list.sourceAddress())},
            {QStringLiteral("sourceValue1"), list.sourceValue1()},
            {QStringLiteral("sourceValue2"), list.sourceValue2()}};
}

QJsonArray jsonSets(const CSubDeviceItem &subDevice)
{
    const QMap<unsigned short, QString> sets = subDevice.availableParamSetNames();
    QJsonArray array;
    for (auto set = sets.constBegin(); set != sets.constEnd(); ++set)
        array.append(
            QJsonObject{{QStringLiteral("number"), set.key()}, {QStringLiteral("name"), set.value()}});
    return array;
}

QJsonArray jsonSubDevices(const CDeviceItem &device)
{
    QJsonArray array;
    for (auto held = device.mSubDevices.constBegin(); held != device.mSubDevices.constEnd(); ++held) {
        array.append(QJsonObject{{QStringLiteral("number"), held.key()},
                                 {QStringLiteral("ownNumber"), held->number()},
                                 {QStringLiteral("name"), held->name()},
                                 {QStringLiteral("activeSet"), held->activeParamSet()},
                                 {QStringLiteral("version"), versionText(held->paramVersion())},
                                 {QStringLiteral("parameterSets"), jsonSets(*held)}});
    }
    return array;
}

QJsonObject jsonDevice(unsigned int key, const CDeviceItem &device)
{
    return {{QStringLiteral("key"), qint64(key)},
            {QStringLiteral("name"), device.mName},
            {QStringLiteral("identifier"), device.mIdentifier},
            {QStringLiteral("addressKind"), device.mHostAddrType},
            {QStringLiteral("address"), jsonAddress(device.mHostAddress)},
            {QStringLiteral("port"), device.mPort},
            {QStringLiteral("flag1"), device.mFlag1},
            {QStringLiteral("flag2"), device.mFlag2},
            {QStringLiteral("text1"), device.mText1},
            {QStringLiteral("value1"), device.mValue1},
            {QStringLiteral("text2"), device.mText2},
            {QStringLiteral("value2"), device.mValue2},
            {QStringLiteral("userRights"), hexFromBytes(device.userlevelData())},
            {QStringLiteral("subDevices"), jsonSubDevices(device)}};
}

QJsonArray jsonKeys(const std::vector<unsigned int> &keys)
{
    QJsonArray array;
    for (const unsigned int key : keys)
        array.append(qint64(key));
    return array;
}

QJsonObject jsonMerge(const ShownMerge &shown)
{
    std::vector<unsigned int> kept;
    for (const KeptDevice &device : shown.merge.kept)
        kept.push_back(device.key);
    return {{QStringLiteral("with"), shown.fileName},
            {QStringLiteral("added"), jsonKeys(shown.merge.added)},
            {QStringLiteral("equal"), jsonKeys(shown.merge.equal)},
            {QStringLiteral("kept"), jsonKeys(kept)}};
}

QString jsonText(const QJsonObject &object)
{
    return visibleJson(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)));
}

} // namespace

int subDeviceCount(const CDeviceList &list)
{
    int count = 0;
    const QList<unsigned int> keys = list.keys();
    for (const unsigned int key : keys)
        count += list.device(key).mSubDevices.size();
    return count;
}

void writeInventoryTable(Output &output, const CDeviceList &list, const ShownMerge *merge)
{
    writeHead(output, list);
    const std::vector<RowPlace> places = rowPlaces(list);
    const Table table({{QStringLiteral("key"), true},
                       {QStringLiteral("sub"), true},
                       {QStringLiteral("name"), false, nameWidth},
                       {QStringLiteral("identifier"), false, identifierWidth},
                       {QStringLiteral("kind"), true},
                       {QStringLiteral("address"), false, addressWidth},
                       {QStringLiteral("port"), true},
                       {QStringLiteral("version")},
                       {QStringLiteral("active"), true},
                       {QStringLiteral("details"), false, detailsWidth}},
                      int(places.size()), [&](int row) { return cells(list, places[std::size_t(row)]); });
    table.write(output, TableFormat::Aligned);
    if (merge != nullptr)
        writeMerge(output, *merge);
}

// A document for each device: one for all of them would take many times the list's memory.
void writeInventoryJson(Output &output, const CDeviceList &list, const ShownMerge *merge)
{
    output.write(QStringLiteral("{\"list\":%1,\n\"devices\":[").arg(jsonText(jsonHead(list))));
    QString separator = QStringLiteral("\n");
    const QList<unsigned int> keys = list.keys();
    for (const unsigned int key : keys) {
        output.write(separator + jsonText(jsonDevice(key, list.device(key))));
        separator = QStringLiteral(",\n");
    }
    output.write(QStringLiteral("\n]"));
    if (merge != nullptr)
        output.write(QStringLiteral(",\n\"united\":%1").arg(jsonText(jsonMerge(*merge))));
    output.write(QStringLiteral("}\n"));
}

} // namespace j6tool
