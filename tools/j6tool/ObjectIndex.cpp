// SPDX-License-Identifier: MIT
#include "ObjectIndex.h"

namespace j6tool {

namespace {

constexpr int indexLength = 6;        // 0x6081
constexpr int withSubIndexLength = 9; // 0x6081:01
constexpr quint32 subIndexFlag = 0x100;
constexpr int indexShift = 9;

std::optional<quint32> hexNumber(const QString &text, int begin, int length)
{
    quint32 number = 0;
    for (int i = begin; i < begin + length; ++i) {
        const ushort digit = text.at(i).toLower().unicode();
        if (digit >= '0' && digit <= '9')
            number = number * 16 + digit - '0';
        else if (digit >= 'a' && digit <= 'f')
            number = number * 16 + digit - 'a' + 10;
        else
            return std::nullopt;
    }
    return number;
}

QString hexText(quint32 number, int digits)
{
    return QStringLiteral("%1").arg(number, digits, 16, QLatin1Char('0')).toUpper();
}

} // namespace

std::optional<ObjectIndex> ObjectIndex::fromText(const QString &text)
{
    const bool hasSubIndex = text.size() == withSubIndexLength && text.at(indexLength) == QLatin1Char(':');
    if (!text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive)
        || (text.size() != indexLength && !hasSubIndex))
        return std::nullopt;
    const std::optional<quint32> index = hexNumber(text, 2, 4);
    const std::optional<quint32> subIndex = hasSubIndex ? hexNumber(text, indexLength + 1, 2) : 0;
    if (!index || !subIndex)
        return std::nullopt;
    return ObjectIndex(*index << indexShift | (hasSubIndex ? subIndexFlag : 0) | *subIndex);
}

QString ObjectIndex::text() const
{
    const QString index = QLatin1String("0x") + hexText(mNumber >> indexShift, 4);
    return (mNumber & subIndexFlag) == 0 ? index : index + QLatin1Char(':') + hexText(mNumber & 0xFF, 2);
}

} // namespace j6tool
