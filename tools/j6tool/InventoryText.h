// SPDX-License-Identifier: MIT
#ifndef J6TOOL_INVENTORYTEXT_H
#define J6TOOL_INVENTORYTEXT_H

#include "InventoryMerge.h"
#include "Output.h"

#include <CDeviceList.h>

#include <QString>

namespace j6tool {

// The merge that made a list what it is, and the name of the file that was merged into it.
struct ShownMerge
{
    InventoryMerge merge;
    QString fileName;
};

int subDeviceCount(const CDeviceList &list);

// For people: the list's name and source, a table with a row for each device and behind it one for each of
// its sub-devices, and what the merge, if there was one, did. Long texts are cut, unprintable characters
// escaped.
void writeInventoryTable(Output &output, const CDeviceList &list, const ShownMerge *merge);

/*
 * For programs: one JSON object, exact, with each device on a line of its own.
 *
 *   list      name, sourceType, sourceAddress, sourceValue1, sourceValue2
 *   devices   an array by key: key, name, identifier, addressKind, address, port, flag1, flag2, text1,
 *             value1, text2, value2, userRights (hexadecimal), subDevices: an array by number: number,
 *             ownNumber (what the sub-device itself says), name, activeSet (-1: none), version,
 *             parameterSets: an array of number and name
 *   united    with a merge only: with (the file), added, equal and kept (arrays of keys)
 *
 * An address is null when there is none, and "any" for QHostAddress::Any.
 */
void writeInventoryJson(Output &output, const CDeviceList &list, const ShownMerge *merge);

} // namespace j6tool

#endif // J6TOOL_INVENTORYTEXT_H
