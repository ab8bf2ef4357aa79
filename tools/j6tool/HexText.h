// SPDX-License-Identifier: MIT
#ifndef J6TOOL_HEXTEXT_H
#define J6TOOL_HEXTEXT_H

#include "Result.h"

#include <QByteArray>
#include <QString>

namespace j6tool {

// The bytes of a text that is nothing but hexadecimal digits in either case, two for each byte. An error's
// text names what is wrong, without a place.
Result<QByteArray> bytesFromHex(const QString &text);

// Two lower-case digits for each byte.
QString hexFromBytes(const QByteArray &bytes);

} // namespace j6tool

#endif // J6TOOL_HEXTEXT_H
