// SPDX-License-Identifier: MIT
#include "UstarBlock.h"

#include <algorithm>
#include <charconv>

namespace {

// Of ASCII alone: in the binary form of a size the first byte is beyond it, and none is a blank.
bool isSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

QLatin1String trimmed(QLatin1String text)
{
    const char *begin = std::find_if_not(text.begin(), text.end(), isSpace);
    const char *end = text.end();
    while (end != begin && isSpace(end[-1]))
        --end;
    return QLatin1String(begin, end);
}

} // namespace

bool UstarBlock::isZero() const
{
    return std::all_of(mBytes, mBytes + byteCount, [](char byte) { return byte == '\0'; });
}

std::optional<qint64> UstarBlock::size() const
{
    QLatin1String digits = trimmed(text(offsetof(UstarFields, size)));
    if (digits.startsWith(QLatin1Char('+')))
        digits = digits.mid(1);
    qint64 number = 0;
    const std::from_chars_result result = std::from_chars(digits.begin(), digits.end(), number, 8);
    const bool isNumber = result.ec == std::errc() && result.ptr == digits.end();
    return isNumber && number >= 0 ? std::make_optional(number) : std::nullopt;
}

QLatin1String UstarBlock::text(std::size_t offset) const
{
    const char *begin = mBytes + offset;
    const char *end = mBytes + byteCount;
    return QLatin1String(begin, std::find(begin, end, '\0'));
}
