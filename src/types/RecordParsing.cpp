// SPDX-License-Identifier: MIT
// The plain form of a text, which the record's own text has, is read in place; Qt's parsers are asked for
// every other one. They cut the text into a list of texts first, which costs five to ten times as much.
#include "RecordParsing.h"

#include "PlainBytes.h"

#include <QDateTime>
#include <QHostAddress>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <optional>

namespace {

// The value of a digit; 10 or more for any other unit.
unsigned int digitOf(QChar unit)
{
    return unit.unicode() - static_cast<unsigned int>(u'0');
}

template<std::size_t N>
using Parts = std::array<unsigned int, N>;

// Whether the text is just N decimal numbers joined by points, none with a needless zero in front or above
// `limit`. Nothing in the loop ends at a point, whose place cannot be foretold: this takes 12 ns, a loop for
// each number 31 ns.
template<std::size_t N>
bool arePlainParts(const QString &text, unsigned int limit, Parts<N> &parts)
{
    std::size_t part = 0;
    unsigned int number = 0;
    unsigned int digits = 0; // of the number
    unsigned int flaws = 0;
    for (const QChar unit : text) {
        const unsigned int digit = digitOf(unit);
        const bool isPoint = unit == QLatin1Char('.');
        const auto noDigit = unsigned(digit > 9);
        const auto needlessZero = unsigned(digits != 0) & unsigned(number == 0);
        flaws |= isPoint ? unsigned(digits == 0) : noDigit | needlessZero;
        number = isPoint ? 0 : 10 * number + digit;
        flaws |= unsigned(number > limit);
        digits = isPoint ? 0 : digits + 1;
        part += std::size_t{isPoint};
        if (part == N)
            return false;
        parts[part] = number;
    }
    return flaws == 0 && digits != 0 && part == N - 1;
}

template<std::size_t N>
Parts<N> partsByQt(const QString &text)
{
    const QStringList texts = text.split(QLatin1Char('.'), Qt::KeepEmptyParts);
    Parts<N> parts{};
    for (int i = 0; i < int(N) && i < texts.size(); ++i)
        parts[static_cast<std::size_t>(i)] = static_cast<unsigned int>(texts.at(i).toShort(nullptr, 10));
    return parts;
}

template<std::size_t N>
Parts<N> versionParts(const QString &text)
{
    constexpr unsigned int limit = std::numeric_limits<short>::max();
    Parts<N> parts{};
    if (!arePlainParts(text, limit, parts))
        parts = partsByQt<N>(text);
    return parts;
}

// The number at a place of a text that has one digit after the other there; negative for any other unit.
int digitsAt(const QChar *units, int place, int count)
{
    int number = 0;
    for (const QChar *unit = units + place; unit != units + place + count; ++unit) {
        if (digitOf(*unit) > 9)
            return -1;
        number = 10 * number + static_cast<int>(digitOf(*unit));
    }
    return number;
}

bool hasSeparators(const QChar *units)
{
    return units[4] == QLatin1Char('-') && units[7] == QLatin1Char('-')
           && (units[10] == QLatin1Char(' ') || units[10] == QLatin1Char('T'))
           && units[13] == QLatin1Char(':') && units[16] == QLatin1Char(':');
}

struct DateTimeFields
{
    int year, month, day, hour, minute, second, msec;
};

NTypes::sDateTime_t recordOf(const DateTimeFields &fields)
{
    NTypes::sDateTime_t record{};
    record.date.day = static_cast<qint8>(fields.day);
    record.date.month = static_cast<qint8>(fields.month);
    record.date.year = static_cast<qint16>(fields.year);
    record.time.hour = static_cast<qint8>(fields.hour);
    record.time.minute = static_cast<qint8>(fields.minute);
    record.time.second = static_cast<qint8>(fields.second);
    record.time.hundredths = static_cast<qint8>(fields.msec / 10);
    return record;
}

// Just "yyyy-MM-dd HH:mm:ss", or with a T between, of a local time that exists. QDateTime tells whether it
// does; it is not asked for the fields again, each of which it would compute from a day number.
std::optional<NTypes::sDateTime_t> plainDateTime(const QString &text)
{
    constexpr int plainSize = 19;
    const QChar *const units = text.constData();
    if (text.size() != plainSize || !hasSeparators(units))
        return std::nullopt;
    const DateTimeFields fields{digitsAt(units, 0, 4),
                                digitsAt(units, 5, 2),
                                digitsAt(units, 8, 2),
                                digitsAt(units, 11, 2),
                                digitsAt(units, 14, 2),
                                digitsAt(units, 17, 2),
                                0};
    const QTime time(fields.hour, fields.minute, fields.second);
    if (fields.year < 0 || !time.isValid()
        || !QDateTime(QDate(fields.year, fields.month, fields.day), time).isValid())
        return std::nullopt;
    return recordOf(fields);
}

NTypes::sDateTime_t dateTimeByQt(const QString &text)
{
    bool isWord = false;
    const qint64 word = text.toInt(&isWord, 10);
    if (isWord)
        return bitsOf<NTypes::sDateTime_t>(word);
    const QDateTime dateTime = QDateTime::fromString(text, Qt::ISODate);
    if (!dateTime.isValid())
        return {};
    const QDate date = dateTime.date();
    const QTime time = dateTime.time();
    return recordOf(
        {date.year(), date.month(), date.day(), time.hour(), time.minute(), time.second(), time.msec()});
}

} // namespace

NTypes::sVersion_t parsedVersion(const QString &text)
{
    const auto parts = versionParts<3>(text);
    NTypes::sVersion_t version{};
    version.major = static_cast<quint8>(parts[0]);
    version.minor = static_cast<quint8>(parts[1]);
    version.build = static_cast<quint16>(parts[2]);
    return version;
}

NTypes::sVersion4_t parsedVersion4(const QString &text)
{
    const auto parts = versionParts<4>(text);
    NTypes::sVersion4_t version{};
    version.first = static_cast<quint16>(parts[0]);
    version.second = static_cast<quint16>(parts[1]);
    version.third = static_cast<quint16>(parts[2]);
    version.fourth = static_cast<quint16>(parts[3]);
    return version;
}

NTypes::uIPv4HAddr_t parsedAddress(const QString &text)
{
    Parts<4> octets{};
    if (!arePlainParts(text, 255, octets))
        return {QHostAddress(text).toIPv4Address()};
    return {octets[0] << 24 | octets[1] << 16 | octets[2] << 8 | octets[3]};
}

NTypes::sDateTime_t parsedDateTime(const QString &text)
{
    const std::optional<NTypes::sDateTime_t> plain = plainDateTime(text);
    return plain ? *plain : dateTimeByQt(text);
}
