// SPDX-License-Identifier: MIT
#ifndef J6TOOL_NUMBERTEXT_H
#define J6TOOL_NUMBERTEXT_H

#include "Result.h"

#include <QString>

namespace j6tool {

// The number of a text that is nothing but decimal digits, for a negative one behind a minus sign. An error's
// text says which numbers there could be, without a place.
Result<qint64> integerFromText(const QString &text, qint64 lowest, qint64 highest);
Result<quint64> cardinalFromText(const QString &text, quint64 highest);

} // namespace j6tool

#endif // J6TOOL_NUMBERTEXT_H
