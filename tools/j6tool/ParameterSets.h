// SPDX-License-Identifier: MIT
#ifndef J6TOOL_PARAMETERSETS_H
#define J6TOOL_PARAMETERSETS_H

#include "Result.h"

#include <CSubDeviceItem.h>

#include <QString>

#include <optional>

namespace j6tool {

// Gives the sub-device, which has none, the parameter sets of a text such as "0=Rough;1=Fine;7": numbers 0 to
// 63 with or without a name of at most 32 UTF-16 units, in which ";;" stands for a semicolon. An error's text
// says what is wrong, without a place; the sub-device may then have some of the sets.
std::optional<Error> setParameterSets(CSubDeviceItem &subDevice, const QString &text);

} // namespace j6tool

#endif // J6TOOL_PARAMETERSETS_H
