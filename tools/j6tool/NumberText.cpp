// SPDX-License-Identifier: MIT
#include "NumberText.h"

#include "VisibleText.h"

#include <algorithm>

namespace j6tool {

namespace {

bool isDecimal(const QString &text)
{
    return std::all_of(text.begin(), text.end(),
                       [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); });
}

template<typename Number>
Error refusal(const QString &text, Number lowest, Number highest)
{
    return Error{QStringLiteral("%1 is no number from %2 to %3")
                     .arg(quoted(text), QString::number(lowest), QString::number(highest))};
}

} // namespace

Result<qint64> integerFromText(const QString &text, qint64 lowest, qint64 highest)
{
    bool ok = false;
    const qint64 number = text.toLongLong(&ok, 10);
    const int digits = text.startsWith(QLatin1Char('-')) ? 1 : 0;
    if (!ok || !isDecimal(text.mid(digits)) || number < lowest || number > highest)
        return refusal(text, lowest, highest);
    return number;
}

Result<quint64> cardinalFromText(const QString &text, quint64 highest)
{
    bool ok = false;
    const quint64 number = text.toULongLong(&ok, 10);
    if (!ok || !isDecimal(text) || number > highest)
        return refusal(text, quint64(0), highest);
    return number;
}

} // namespace j6tool
