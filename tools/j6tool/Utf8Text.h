// SPDX-License-Identifier: MIT
#ifndef J6TOOL_UTF8TEXT_H
#define J6TOOL_UTF8TEXT_H

#include <QByteArray>
#include <QString>

#include <optional>

namespace j6tool {

// The text, if the bytes are valid UTF-8.
std::optional<QString> textFromUtf8(const QByteArray &bytes);

} // namespace j6tool

#endif // J6TOOL_UTF8TEXT_H
