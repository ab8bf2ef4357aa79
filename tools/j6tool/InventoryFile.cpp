// SPDX-License-Identifier: MIT
#include "InventoryFile.h"

#include "InputFile.h"
#include "InventoryForm.h"
#include "OutputFile.h"

#include <algorithm>
#include <iterator>

namespace j6tool {

namespace {

void setForm(QDataStream &stream)
{
    stream.setVersion(inventoryVersion);
    stream.setByteOrder(inventoryByteOrder);
}

// Where two arrays of one length begin to differ.
int firstDifference(const QByteArray &a, const QByteArray &b)
{
    return int(std::distance(a.begin(), std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first));
}

} // namespace

Result<CDeviceList> readInventory(const QString &fileName)
{
    const Result<QByteArray> contents = readInput(fileName, maxInventoryFileSize);
    if (!contents)
        return contents.error();
    return parseInventory(*contents, fileName);
}

Result<CDeviceList> parseInventory(const QByteArray &contents, const QString &fileName)
{
    const auto refusal = [&fileName](const QString &what) {
        return fileError(fileName, QStringLiteral("is no whole inventory: %1").arg(what));
    };
    if (const std::optional<QString> misfit = inventoryMisfit(contents))
        return refusal(*misfit);
    CDeviceList list;
    QDataStream stream(contents);
    setForm(stream);
    stream >> list;
    // The status is that of the last operation that failed; a byte that stands for the same as another one,
    // such as a flag of 2, shows only in what would be written.
    const QByteArray rewritten = inventoryContents(list);
    if (stream.status() != QDataStream::Ok || rewritten != contents) {
        return refusal(QStringLiteral("at byte %1: another byte than an inventory has there")
                           .arg(firstDifference(contents, rewritten)));
    }
    return list;
}

QByteArray inventoryContents(const CDeviceList &list)
{
    QByteArray contents;
    QDataStream stream(&contents, QIODevice::WriteOnly);
    setForm(stream);
    stream << list;
    return contents;
}

std::optional<Error> writeInventory(const CDeviceList &list, const QString &fileName,
                                    const std::function<std::optional<Error>()> &beforeReplacing)
{
    const QByteArray contents = inventoryContents(list);
    if (contents.size() > maxInventoryFileSize)
        return fileError(fileName, QStringLiteral("would be larger than %1 bytes").arg(maxInventoryFileSize));
    if (const std::optional<QString> misfit = inventoryMisfit(contents))
        return fileError(fileName, QStringLiteral("would be no whole inventory: %1").arg(*misfit));
    return replaceFile(fileName, contents, beforeReplacing);
}

} // namespace j6tool
