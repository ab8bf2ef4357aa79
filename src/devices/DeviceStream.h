// SPDX-License-Identifier: MIT
#ifndef DEVICESTREAM_H
#define DEVICESTREAM_H

#include <CDeviceItem.h>

#include "devices/InventoryReader.h"
#include "devices/InventoryWriter.h"

// The stream form of a device among other fields of an inventory.
InventoryStream::Writer &operator<<(InventoryStream::Writer &writer, const CDeviceItem &device);
InventoryStream::Reader &operator>>(InventoryStream::Reader &reader, CDeviceItem &device);

#endif // DEVICESTREAM_H
