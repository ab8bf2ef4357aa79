// SPDX-License-Identifier: MIT
// Qt's ways to these texts - QLocale::toString(), arg() upon arg(), QHostAddress, toHex() - cost two to ten
// times as much.
#include "RecordText.h"

#include "text/BackwardText.h"

#include <QDate>
#include <QDateTime>
#include <QTime>

namespace {

// At least four digits, as in "yyyy".
void prependYear(BackwardText &text, int year)
{
    const auto magnitude = static_cast<unsigned int>(year < 0 ? -year : year);
    text.prependPair(magnitude % 100);
    if (magnitude < 10000)
        text.prependPair(magnitude / 100);
    else
        text.prependInteger(magnitude / 100);
    if (year < 0)
        text.prepend(u'-');
}

// A number of two digits and what stands before it.
void prependField(BackwardText &text, char16_t separator, int number)
{
    text.prependPair(static_cast<unsigned int>(number));
    text.prepend(separator);
}

QString dateTimeText(const NTypes::sDate_t &date, const NTypes::sTime_t &time)
{
    BackwardText text;
    prependField(text, u':', time.second);
    prependField(text, u':', time.minute);
    prependField(text, u' ', time.hour);
    prependField(text, u'-', date.day);
    prependField(text, u'-', date.month);
    prependYear(text, date.year);
    return text.text();
}

// Numbers joined by points, the last one first.
template<typename... Numbers>
QString dottedText(unsigned int last, Numbers... others)
{
    BackwardText text;
    text.prependInteger(last);
    ((static_cast<void>(text.prepend(u'.')), text.prependInteger(static_cast<unsigned int>(others))), ...);
    return text.text();
}

} // namespace

QString textOf(const NTypes::sDateTime_t &value)
{
    if (value == NTypes::sDateTime_t{})
        return QStringLiteral("0000-00-00 00:00:00");
    const NTypes::sDate_t &date = value.date;
    const NTypes::sTime_t &fields = value.time;
    const QTime time(fields.hour, fields.minute, fields.second, fields.hundredths * 10);
    // Whether that local time exists is QDateTime's answer, which is nearly all of the cost. It takes a time
    // that is none for midnight; its own fields would each be computed from a day number.
    if (!QDateTime(QDate(date.year, date.month, date.day), time).isValid())
        return {};
    return dateTimeText(date, time.isValid() ? fields : NTypes::sTime_t{});
}

QString textOf(const NTypes::sVersion_t &value)
{
    return dottedText(value.build, value.minor, value.major);
}

QString textOf(const NTypes::sVersion4_t &value)
{
    return dottedText(value.fourth, value.third, value.second, value.first);
}

QString textOf(const NTypes::uIPv4HAddr_t &value)
{
    const quint32 address = value.value;
    return dottedText(address & 0xFF, (address >> 8) & 0xFF, (address >> 16) & 0xFF, address >> 24);
}

QString hexOf(const char *bytes, int size)
{
    constexpr char16_t digits[] = u"0123456789abcdef";
    if (size <= 0)
        return {};
    QString hex(2 * size, Qt::Uninitialized);
    QChar *unit = hex.data();
    for (const char *byte = bytes; byte != bytes + size; ++byte) {
        const auto value = static_cast<unsigned char>(*byte);
        *unit++ = QChar(digits[value >> 4]);
        *unit++ = QChar(digits[value & 0xF]);
    }
    return hex;
}

QString hexOf(const QByteArray &bytes)
{
    return hexOf(bytes.constData(), bytes.size());
}
