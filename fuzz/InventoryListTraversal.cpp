// SPDX-License-Identifier: MIT
// Any bytes as an inventory of devices: the CSV that people write, and the stream form in a file. What is
// read is written in the file's form and read as the same, and both shows of it are whole.
#include "Traversals.h"

#include <Equality.h>
#include <InventoryCsv.h>
#include <InventoryFile.h>
#include <InventoryForm.h>
#include <InventoryMerge.h>
#include <InventoryText.h>
#include <Properties.h>
#include <VisibleText.h>

#include <QBuffer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

using namespace j6tool;

template<typename Write>
QByteArray shown(const Write &write)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    Output output(buffer);
    write(output);
    require(!output.flush(), "a buffer takes all that is written");
    return buffer.data();
}

void checkTable(const CDeviceList &list, const ShownMerge *merge)
{
    const QByteArray table = shown([&](Output &output) { writeInventoryTable(output, list, merge); });
    const QStringList lines = QString::fromUtf8(table).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        QString escaped = visible(line);
        escaped.replace(QStringLiteral("\\\\"), QStringLiteral("\\"));
        require(escaped == line, "a line holds nothing that a terminal would obey", escaped);
    }
    require(lines.size() > list.count() + subDeviceCount(list), "every device and sub-device has a line");
}

void checkJson(const CDeviceList &list, const ShownMerge *merge)
{
    const QByteArray json = shown([&](Output &output) { writeInventoryJson(output, list, merge); });
    QJsonParseError error{};
    const QJsonObject document = QJsonDocument::fromJson(json, &error).object();
    require(error.error == QJsonParseError::NoError, "it is one JSON document", error.errorString());
    const QJsonArray devices = document[QStringLiteral("devices")].toArray();
    const QList<unsigned int> keys = list.keys();
    require(devices.size() == keys.size(), "every device is there");
    for (int i = 0; i < devices.size(); ++i) {
        const QJsonObject device = devices[i].toObject();
        require(device[QStringLiteral("key")].toDouble() == keys[i],
                "devices stand in the order of their keys");
        require(device[QStringLiteral("subDevices")].toArray().size()
                    == list.device(keys[i]).mSubDevices.size(),
                "every sub-device is there");
    }
}

// A list that a reader accepted is one that can be written.
void checkList(const CDeviceList &list)
{
    const QByteArray contents = inventoryContents(list);
    require(!inventoryMisfit(contents), "what was read can be written",
            inventoryMisfit(contents).value_or(QString()));
    const Result<CDeviceList> again = parseInventory(contents, QStringLiteral("again"));
    require(again && *again == list, "what was written is read as an equal list");
    requireEquality(list, *again);
    require(inventoryContents(*again) == contents, "what was read is written as the same bytes");

    CDeviceList united = list;
    const ShownMerge merge{mergeInventory(united, *again), QStringLiteral("again")};
    require(united == list && merge.merge.added.empty() && merge.merge.kept.empty()
                && merge.merge.equal.size() == static_cast<std::size_t>(list.count()),
            "an inventory that is united with itself stays as it was");
    checkTable(list, nullptr);
    checkTable(united, &merge);
    checkJson(list, nullptr);
    checkJson(united, &merge);
}

template<typename Parse>
void checkReader(const QByteArray &input, const Parse &parse)
{
    // Qt makes room for a block of a text before it looks whether the stream holds it.
    constexpr std::size_t textBlock = std::size_t{4} << 20;
    const auto size = static_cast<std::size_t>(input.size());
    const Result<CDeviceList> list =
        bounded(textBlock + 256 * size, "an inventory costs memory in proportion to its file",
                [&] { return parse(input, QStringLiteral("list")); });
    if (!list)
        return require(list.error().text.startsWith(QLatin1String("list:")), "an error names the file",
                       list.error().text);
    checkList(*list);
}

} // namespace

void traverseInventoryList(const QByteArray &input)
{
    checkReader(input, parseInventoryCsv);
    checkReader(input, parseInventory);
    const Result<CDeviceList> list = parseInventory(input, QString());
    require(!list || (!inventoryMisfit(input) && inventoryContents(*list) == input),
            "a whole inventory is written as the same bytes");
}
