// SPDX-License-Identifier: MIT
#ifndef J6TOOL_INVENTORYCSV_H
#define J6TOOL_INVENTORYCSV_H

#include "Result.h"

#include <CDeviceList.h>

#include <QByteArray>
#include <QString>

namespace j6tool {

constexpr int maxInventoryCsvSize = 32 * 1024 * 1024;

/*
 * A device inventory as people write it: CSV by RFC 4180 in UTF-8. The header row names the columns, in any
 * order; of the following only "row" and "key" must be there, and a column that is missing is as one whose
 * fields are all empty. An empty field is the record's default.
 *
 *   row         list (the first row only, or none), device or sub-device
 *   key         d s   the device's key, 0 to 4294967295; a sub-device's row gives its device's, which stands
 *                     above
 *   name        l d s any text
 *   kind        l d   the list's source type or the kind of the device's address, a signed 32-bit number
 *   address     l d   the source address or the device's: IPv4, or IPv6 with or without a scope
 *   value1      l d   source values 1 (-1 when empty) and 2, or the device's numbers, signed 32-bit
 *   value2      l d
 *   identifier    d   any text
 *   port          d   0 to 65535
 *   flag1         d   0 or 1
 *   flag2         d
 *   text1         d   any text
 *   text2         d
 *   rights        d   the user rights, 64 hexadecimal digits
 *   number          s the sub-device's number, 0 to 254, unique in its device
 *   sets            s the parameter sets, joined by semicolons: "0=Rough;1=Fine;7", a number 0 to 63 with or
 *                     without a name of at most 32 UTF-16 units, in which ";;" stands for a semicolon
 *   active          s the active set, -1 to 63; -1 when empty
 *   version         s the version of the parameter layout, such as 1.2.300
 *
 * An error begins with "file:line: column: ", or "file: " when the file itself cannot be read.
 */
Result<CDeviceList> readInventoryCsv(const QString &fileName);
// The same for contents that are in memory; fileName is for errors only.
Result<CDeviceList> parseInventoryCsv(const QByteArray &contents, const QString &fileName);

} // namespace j6tool

#endif // J6TOOL_INVENTORYCSV_H
