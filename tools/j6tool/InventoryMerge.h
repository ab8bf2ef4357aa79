// SPDX-License-Identifier: MIT
#ifndef J6TOOL_INVENTORYMERGE_H
#define J6TOOL_INVENTORYMERGE_H

#include <CDeviceList.h>

#include <vector>

namespace j6tool {

// A device that both lists have, in two different states: the first one's stays.
struct KeptDevice
{
    unsigned int key;
    QString name;
    QString droppedName;
};

// What became of the other list's devices, in the order of their keys.
struct InventoryMerge
{
    std::vector<unsigned int> added;
    std::vector<unsigned int> equal; // to the byte in both lists
    std::vector<KeptDevice> kept;
};

// Unites the list with the other one, as CDeviceList::unite() does.
InventoryMerge mergeInventory(CDeviceList &list, const CDeviceList &other);

} // namespace j6tool

#endif // J6TOOL_INVENTORYMERGE_H
