// SPDX-License-Identifier: MIT
#include "Utf8Text.h"

#include <QTextCodec>

namespace j6tool {

std::optional<QString> textFromUtf8(const QByteArray &bytes)
{
    constexpr int utf8Mib = 106;
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    const QString text = QTextCodec::codecForMib(utf8Mib)->toUnicode(bytes.constData(), bytes.size(), &state);
    if (state.invalidChars > 0 || state.remainingChars > 0)
        return std::nullopt;
    return text;
}

} // namespace j6tool
