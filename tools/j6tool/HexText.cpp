// SPDX-License-Identifier: MIT
#include "HexText.h"

#include "VisibleText.h"

#include <algorithm>

namespace j6tool {

namespace {

bool isHexDigit(QChar c)
{
    const QChar lower = c.toLower();
    return (c >= QLatin1Char('0') && c <= QLatin1Char('9'))
           || (lower >= QLatin1Char('a') && lower <= QLatin1Char('f'));
}

} // namespace

Result<QByteArray> bytesFromHex(const QString &text)
{
    if (!std::all_of(text.begin(), text.end(), isHexDigit))
        return Error{QStringLiteral("%1 is not hexadecimal").arg(quoted(text))};
    if (text.size() % 2 != 0)
        return Error{QStringLiteral("%1 has an odd number of hexadecimal digits").arg(quoted(text))};
    return QByteArray::fromHex(text.toLatin1());
}

QString hexFromBytes(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toHex());
}

} // namespace j6tool
