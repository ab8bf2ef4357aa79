// SPDX-License-Identifier: MIT
#ifndef J6TOOL_INVENTORYFORM_H
#define J6TOOL_INVENTORYFORM_H

#include <QByteArray>
#include <QString>

#include <optional>

namespace j6tool {

constexpr int maxInventoryDevices = 250000;

/*
 * Where and why bytes do not have the stream form of a CDeviceList; nothing when they have.
 *
 * The bytes are only walked over. A length or a count is believed when the bytes behind it can hold it, and
 * keys come as QMap writes them, from the highest to the lowest, each once. What passes is therefore read by
 * the stream operators in a few times its own size of memory, and as that many devices. The walk also sees
 * what no setter of the records would have accepted: a device that names another key than its own, a set
 * above 63 and such an active one.
 */
std::optional<QString> inventoryMisfit(const QByteArray &bytes);

} // namespace j6tool

#endif // J6TOOL_INVENTORYFORM_H
