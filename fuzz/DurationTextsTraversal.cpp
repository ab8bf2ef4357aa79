// SPDX-License-Identifier: MIT
// Two durations of any counts and units, a factor and a text for a unit: conversions, sums, products,
// comparisons and texts beside the rules as the class states them, whatever overflows.
#include "Traversals.h"

#include <CMath.h>
#include <CTime.h>

#include <Equality.h>
#include <InputReader.h>
#include <Properties.h>
#include <StreamForm.h>

#include <QDebug>
#include <QRegularExpression>

#include <array>
#include <cmath>
#include <limits>

namespace {

using Unit = CTime::ETimeUnit;

constexpr std::array<Unit, 9> units = {CTime::TU_PS, CTime::TU_NS,      CTime::TU_US,
                                       CTime::TU_MS, CTime::TU_S,       CTime::TU_MIN,
                                       CTime::TU_H,  CTime::TU_INVALID, Unit(-5)};

bool isUnit(Unit unit)
{
    return unit >= CTime::TU_PS && unit <= CTime::TU_H;
}

// The count that comes out of a double: the table of the class.
quint64 countOf(double number)
{
    constexpr double twoTo63 = 9223372036854775808.0;
    if (std::isnan(number))
        return 0;
    if (number >= 2 * twoTo63)
        return std::numeric_limits<quint64>::max();
    if (number >= 0)
        return static_cast<quint64>(number);
    return static_cast<quint64>(number < -twoTo63 ? std::numeric_limits<qint64>::min()
                                                  : static_cast<qint64>(number));
}

quint64 converted(double count, Unit from, Unit to)
{
    return countOf(CMath::round(CTime::convertValue(count, from, to), 0));
}

quint64 nanoseconds(const CTime &time)
{
    return time.unit() == CTime::TU_NS
               ? time.value()
               : converted(static_cast<double>(static_cast<qint64>(time.value())), time.unit(), CTime::TU_NS);
}

bool isSame(const CTime &a, const CTime &b)
{
    return a.value() == b.value() && a.unit() == b.unit();
}

void checkConversions(const CTime &time)
{
    for (const Unit unit : units) {
        const auto count = static_cast<double>(static_cast<qint64>(time.value()));
        require(time.value(unit)
                    == (unit == time.unit() ? time.value() : converted(count, time.unit(), unit)),
                "a conversion is rounded and fits");
        CTime own(1, unit);
        own.fromValue(time);
        require(own.unit() == unit, "the own unit is kept");
        require(own.value()
                    == (unit == time.unit()
                            ? time.value()
                            : converted(static_cast<double>(time.value()), time.unit(), unit)),
                "the count of another duration is taken without a sign");
    }
    require(time.toNS() == time.value(CTime::TU_NS) && time.toMS() == time.value(CTime::TU_MS)
                && time.toS() == time.value(CTime::TU_S),
            "the short forms are conversions");
    require(time.isValid() == (isUnit(time.unit()) && time.unit() != CTime::TU_PS),
            "valid are the units from ns to h");
}

void checkOrder(const CTime &a, const CTime &b)
{
    const quint64 left = nanoseconds(a);
    const quint64 right = nanoseconds(b);
    require((a == b) == (left == right), "equal are durations of equal nanoseconds");
    require((a != b) == (left != right) && (a < b) == (left < right) && (a > b) == (left > right)
                && (a <= b) == (left <= right) && (a >= b) == (left >= right),
            "durations are ordered by their nanoseconds");
    requireEquality(a, b);
}

void checkSum(const CTime &a, const CTime &b)
{
    const CTime sum = a + b;
    require(sum.unit() == a.unit(), "a sum has the unit of its first duration");
    if (a.unit() == b.unit()) {
        require(sum.value() == static_cast<quint64>(2 * static_cast<qint64>(a.unit())),
                "the sum of equal units is twice the number of the unit");
        return;
    }
    const auto total = static_cast<double>(nanoseconds(a) + nanoseconds(b));
    require(sum.value() == countOf(CTime::convertValue(total, CTime::TU_NS, a.unit())),
            "a sum is that of the nanoseconds, truncated to the unit");
}

void checkProduct(const CTime &time, double factor)
{
    const CTime product = time * factor;
    require(isSame(product, factor * time), "a product does not depend on the order");
    require(product.unit() == time.unit()
                && product.value() == countOf(CMath::round(static_cast<double>(time.value()) * factor, 0)),
            "a product is rounded and keeps the unit");
}

void checkFinerUnit(double value, Unit unit)
{
    constexpr long long untouchedCount = -77;
    long long count = untouchedCount;
    Unit finer = Unit(99);
    const bool isFound = CTime::convertToPrevIntegerValue(value, unit, count, finer);
    const auto isWholeIn = [value, unit](Unit to) {
        const double number = std::fabs(CTime::convertValue(value, unit, to));
        return !(number > std::trunc(number));
    };
    const bool isTouched = finer != Unit(99) || count != untouchedCount;
    require(isTouched == (unit >= CTime::TU_NS && value != 0.0 && !isWholeIn(unit)),
            "outputs are given for a fraction only");
    if (!isTouched)
        return require(!isFound, "without outputs there is no success");
    require(finer >= CTime::TU_PS && finer <= unit && !isWholeIn(finer),
            "the number is a fraction in that unit");
    require(isFound ? isWholeIn(Unit(finer - 1)) : finer == CTime::TU_PS,
            "it is whole in the next finer unit");
    require(count == static_cast<long long>(CTime::convertValue(value, unit, finer)),
            "the count is the truncated one");
}

void checkHours(const CTime &time)
{
    static const QRegularExpression form(QStringLiteral("^([0-9]+):([0-5][0-9]):([0-5][0-9])$"));
    const QString text = time.toHourString();
    const QRegularExpressionMatch match = form.match(text);
    require(match.hasMatch(), "hours, minutes and seconds", text);
    const quint64 seconds = match.captured(1).toULongLong() * 3600 + match.captured(2).toULongLong() * 60
                            + match.captured(3).toULongLong();
    require(seconds == time.toS(), "the text has all seconds", text);
    require(text == CTime::toHourString(time.value(), time.unit()), "both shapes give one text", text);
}

void checkStream(const CTime &time, QDataStream::ByteOrder order)
{
    const QByteArray bytes = streamed(time, order);
    CTime again;
    require(bytes.size() == 12 && readFrom(bytes, again, order) == QDataStream::Ok && isSame(again, time),
            "what is written is read");
    CTime copy = time;
    copy.setValue(~time.value(), CTime::TU_S);
    require(isSame(again, time), "a change of a copy changes nothing else");
    QString debug;
    QDebug(&debug) << time;
    require(debug.contains(CTime::unitStr(time.unit())), "the debug form has the unit");
}

// ASCII letters have two cases; the micro sign has no upper-case form that is read.
void checkUnitText(const QString &text)
{
    QString lower = text;
    for (QChar &c : lower) {
        if (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))
            c = QChar(c.unicode() + 0x20);
    }
    const auto size = static_cast<std::size_t>(text.size()) * sizeof(QChar);
    const Unit unit = bounded(1024 + 8 * size, "a text costs memory in proportion to it",
                              [&text] { return CTime::unit(text); });
    require(unit == CTime::TU_INVALID || isUnit(unit), "a text gives a unit of the table");
    const QString symbol = CTime::unitStr(unit);
    require(unit == CTime::TU_INVALID ? symbol == QLatin1String("?") : symbol == lower,
            "only a symbol names its unit", text);
    require(CTime::unit(symbol) == unit, "the symbol of a unit is read as that unit", symbol);
    for (const Unit other : units)
        require(isUnit(other) == (CTime::unitStr(other) != QLatin1String("?"))
                    && (other == unit || !isUnit(other) || CTime::unitStr(other) != lower),
                "no other unit has that symbol");
}

void checkDuration(const CTime &time, QDataStream::ByteOrder order)
{
    checkConversions(time);
    checkHours(time);
    checkStream(time, order);
    long long count = 0;
    Unit unit = CTime::TU_INVALID;
    long long sameCount = 0;
    Unit sameUnit = CTime::TU_INVALID;
    require(
        time.convertToPrevIntegerValue(count, unit)
                == CTime::convertToPrevIntegerValue(static_cast<double>(static_cast<qint64>(time.value())),
                                                    time.unit(), sameCount, sameUnit)
            && count == sameCount && unit == sameUnit,
        "the stored count is looked at with its sign");
}

} // namespace

void traverseDurationTexts(const QByteArray &input)
{
    InputReader reader(input);
    const auto order = reader.takeChoice(2) == 0 ? QDataStream::BigEndian : QDataStream::LittleEndian;
    CTime a;
    CTime b;
    readFrom(reader.takeBytes(12), a, order);
    readFrom(reader.takeBytes(12), b, order);
    const auto factor = reader.take<double>();
    const QString text = reader.takeText();
    for (const CTime &time :
         {a, b, CTime(a.value(), units.at(static_cast<std::size_t>(text.size()) % units.size()))}) {
        checkDuration(time, order);
        checkOrder(a, time);
        checkOrder(time, a);
        checkSum(a, time);
        checkSum(time, b);
        checkProduct(time, factor);
        checkFinerUnit(factor, time.unit());
    }
    checkUnitText(text);
}
