// SPDX-License-Identifier: MIT
#include "UstarBlock.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace {

// Of ASCII alone: in the binary form of a size the first byte is beyond it, and none is a blank.
bool isSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

} // namespace

bool UstarBlock::isZero() const
{
    return std::all_of(mBytes, mBytes + byteCount, [](char byte) { return byte == '\0'; });
}

bool UstarBlock::isUstar() const
{
    constexpr std::string_view expected = "ustar";
    return std::memcmp(mBytes + offsetof(UstarFields, magic), expected.data(), expected.size()) == 0;
}

std::optional<qint64> UstarBlock::size() const
{
    std::string_view digits = trimmed(text(offsetof(UstarFields, size)));
    if (!digits.empty() && digits.front() == '+')
        digits.remove_prefix(1);
    qint64 number = 0;
    const char *end = digits.data() + digits.size();
    const std::from_chars_result result = std::from_chars(digits.data(), end, number, 8);
    const bool isNumber = result.ec == std::errc() && result.ptr == end;
    return isNumber && number >= 0 ? std::make_optional(number) : std::nullopt;
}

std::string_view UstarBlock::text(std::size_t offset) const
{
    const char *begin = mBytes + offset;
    const std::size_t rest = byteCount - offset;
    const void *end = std::memchr(begin, '\0', rest);
    return {begin, end == nullptr ? rest : std::size_t(static_cast<const char *>(end) - begin)};
}
