// SPDX-License-Identifier: MIT
#ifndef J6TOOL_INVENTORYFILE_H
#define J6TOOL_INVENTORYFILE_H

#include "Result.h"

#include <CDeviceList.h>

#include <QByteArray>
#include <QDataStream>
#include <QString>

#include <functional>
#include <optional>

namespace j6tool {

/*
 * A device inventory in its file form: the stream form of one CDeviceList and nothing else, in the form that
 * a QDataStream of Qt 5.15 has by itself, version Qt_5_15 and big-endian. It has no version field of its own,
 * so the tools that exchange inventories agree on this one; it is the last that Qt 5 has, and later ones of
 * Qt read it when they are told.
 */
constexpr QDataStream::Version inventoryVersion = QDataStream::Qt_5_15;
constexpr QDataStream::ByteOrder inventoryByteOrder = QDataStream::BigEndian;

constexpr int maxInventoryFileSize = 64 * 1024 * 1024;

// The list of a file that is one whole inventory: it has the stream form from its first byte to its last, and
// the list that was read would be written as exactly these bytes. An error begins with "file: ".
Result<CDeviceList> readInventory(const QString &fileName);
// The same for contents that are in memory; fileName is for errors only.
Result<CDeviceList> parseInventory(const QByteArray &contents, const QString &fileName);

QByteArray inventoryContents(const CDeviceList &list);

// As replaceFile() does. What readInventory() would refuse is not written: a list that is too large, or one
// with a sub-device that no setter would have made.
std::optional<Error> writeInventory(const CDeviceList &list, const QString &fileName,
                                    const std::function<std::optional<Error>()> &beforeReplacing);

} // namespace j6tool

#endif // J6TOOL_INVENTORYFILE_H
