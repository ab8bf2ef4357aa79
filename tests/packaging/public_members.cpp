// SPDX-License-Identifier: MIT
// Where the public data members of the classes lie, on x86-64: programs read and write them directly, so that
// none may move. (The records of NTypes are asserted where they are declared.)
#include "all_headers.h"

#include <cstddef>

static_assert(offsetof(CDeviceItem, mIdentifier) == 0, "public");
static_assert(offsetof(CDeviceItem, mHostAddrType) == 8, "public");
static_assert(offsetof(CDeviceItem, mHostAddress) == 16, "public");
static_assert(offsetof(CDeviceItem, mPort) == 24, "public");
static_assert(offsetof(CDeviceItem, mFlag1) == 26, "public");
static_assert(offsetof(CDeviceItem, mFlag2) == 27, "public");
static_assert(offsetof(CDeviceItem, mDeviceKey) == 28, "public");
static_assert(offsetof(CDeviceItem, mName) == 32, "public");
static_assert(offsetof(CDeviceItem, mText1) == 40, "public");
static_assert(offsetof(CDeviceItem, mValue1) == 48, "public");
static_assert(offsetof(CDeviceItem, mText2) == 56, "public");
static_assert(offsetof(CDeviceItem, mValue2) == 64, "public");
static_assert(offsetof(CDeviceItem, mUserRights) == 68, "public");
static_assert(offsetof(CDeviceItem, mSubDevices) == 104, "public");

static_assert(offsetof(CTarFileInfo, type) == 0, "public");
static_assert(offsetof(CTarFileInfo, name) == 8, "public");
static_assert(offsetof(CTarFileInfo, linkName) == 16, "public");
static_assert(offsetof(CTarFileInfo, size) == 24, "public");
static_assert(offsetof(CTarFileInfo, offset) == 32, "public");
