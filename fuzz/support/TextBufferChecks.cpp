// SPDX-License-Identifier: MIT
#include "TextBufferChecks.h"

#include <CStr.h>

#include <InputReader.h>
#include <Properties.h>
#include <ValueChecks.h>

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

QString upToZero(const QString &text)
{
    const int end = text.indexOf(QChar(u'\0'));
    return text.left(end < 0 ? text.size() : end);
}

// In memory of just that size, so that nothing behind it can be read unseen; aligned for units.
std::vector<unsigned short> bufferOf(const QByteArray &bytes)
{
    std::vector<unsigned short> buffer((static_cast<std::size_t>(bytes.size()) + 1) / 2);
    if (!buffer.empty())
        std::memcpy(buffer.data(), bytes.constData(), static_cast<std::size_t>(bytes.size()));
    return buffer;
}

void checkLatin1(const QByteArray &bytes)
{
    const std::vector<char> buffer(bytes.begin(), bytes.end());
    const QString text = CStr::fromLatin1(buffer.data(), bytes.size());
    require(text == upToZero(QString::fromLatin1(bytes)), "a Latin-1 text ends before the first zero");
    require(text.isNull() == bytes.isEmpty(), "only no buffer has a null text");
    require(CStr::fromLatin1(nullptr, 5).isNull() && CStr::fromLatin1(bytes.constData(), -1).isNull(),
            "no data have a null text");
}

void checkUtf16(const QByteArray &bytes)
{
    const QString expected = upToZero(textOfUnits(bytes));
    const std::vector<unsigned short> buffer = bufferOf(bytes.left(bytes.size() & ~1));
    const QString text = CStr::fromUtf16(buffer.data(), bytes.size());
    require(text == expected, "a UTF-16 text ends before the first zero unit");
    require(text.isNull() == (bytes.size() < 2), "only no buffer has a null text");
    require(CStr::fromUtf16(bytes) == expected, "a byte array of units is the same text");
    require(!CStr::fromUtf16(bytes).isNull(), "a byte array has a text");
    const QByteArray unaligned = QByteArray("x" + bytes).mid(1);
    require(CStr::fromUtf16(unaligned) == expected, "any alignment will do");
}

// A text into a buffer of so many bytes, with one unit behind it that has to stay.
void checkToUtf16(const QString &text, int size)
{
    const QByteArray units(reinterpret_cast<const char *>(text.utf16()), 2 * text.size());
    QByteArray buffer(std::max(size, 0) + 2, '\x55');
    std::vector<unsigned short> target = bufferOf(buffer);
    CStr::toUtf16(text, target.data(), size);
    if (size >= 2)
        buffer = units.left(size - 2).leftJustified(size, '\0') + QByteArray(2, '\x55');
    require(std::memcmp(target.data(), buffer.constData(), static_cast<std::size_t>(buffer.size())) == 0,
            "a buffer has the units that fit, zeros, and nothing behind it");
    if (size >= 2 && size % 2 == 0)
        require(CStr::fromUtf16(target.data(), size) == upToZero(text.left(size / 2 - 1)),
                "a text comes back from its buffer");
    CStr::toUtf16(text, nullptr, size);
}

void checkMemory(const QByteArray &bytes)
{
    std::vector<unsigned short> buffer = bufferOf(bytes);
    const QString text(bytes.size() / 2, QLatin1Char('x'));
    bounded(allowance(bytes.size()), "the texts of a buffer take its size", [&] {
        CStr::fromLatin1(bytes.constData(), bytes.size());
        CStr::fromUtf16(buffer.data(), bytes.size());
        CStr::fromUtf16(bytes);
    });
    bounded(0, "a buffer takes a text without more memory",
            [&] { CStr::toUtf16(text, buffer.data(), bytes.size()); });
}

} // namespace

void checkTextBuffers(const QByteArray &bytes, int size)
{
    checkMemory(bytes);
    checkLatin1(bytes);
    checkLatin1(bytes.left(std::max(size, 0)));
    checkUtf16(bytes);
    checkUtf16(bytes.left(std::max(size, 0)));
    checkToUtf16(textOfUnits(bytes), size);
    checkToUtf16(textOfUnits(bytes), 2 * (bytes.size() / 2) + 2);
}
