// SPDX-License-Identifier: MIT
#include <CTime.h>

#include <CMath.h>

#include <QDataStream>
#include <QDebug>
#include <QLocale>
#include <QSharedData>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

struct CTime::Block : public QSharedData
{
    Block(unsigned long long count, ETimeUnit countedIn) : value(count), unit(countedIn) {}

    unsigned long long value;
    ETimeUnit unit;
};

namespace {

struct Row
{
    CTime::ETimeUnit unit;
    const char *symbol; // Latin-1, lower case
    double secondsPerUnit;
    double unitsPerSecond; // of the units up to the second
};

constexpr std::array<Row, 7> rows = {{
    {CTime::TU_PS, "ps", 1e-12, 1e12},
    {CTime::TU_NS, "ns", 1e-9, 1e9},
    {CTime::TU_US, "\xB5s", 1e-6, 1e6},
    {CTime::TU_MS, "ms", 0.001, 1000.0},
    {CTime::TU_S, "s", 1.0, 1.0},
    {CTime::TU_MIN, "min", 60.0, 0.0},
    {CTime::TU_H, "h", 3600.0, 0.0},
}};

constexpr bool everyRowStandsAtItsUnit()
{
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (static_cast<std::size_t>(rows[i].unit) != i)
            return false;
    }
    return true;
}
static_assert(everyRowStandsAtItsUnit(), "the rows are sorted, unique and complete");

constexpr bool hasRow(CTime::ETimeUnit unit)
{
    return unit >= CTime::TU_PS && unit <= CTime::TU_H;
}

constexpr std::size_t rowOf(CTime::ETimeUnit unit)
{
    return static_cast<std::size_t>(unit);
}

constexpr double twoTo63 = 9223372036854775808.0;

// The count that a double stands for; the class comment has the rules. Below 2^63 the way leads through a
// signed number, so that negative ones keep their bits. What does not fit is never converted.
unsigned long long toCount(double number)
{
    constexpr quint64 topBit = Q_UINT64_C(1) << 63;
    if (std::isnan(number))
        return 0;
    if (number >= 2 * twoTo63)
        return std::numeric_limits<quint64>::max();
    if (number >= twoTo63)
        return static_cast<quint64>(number - twoTo63) | topBit;
    return static_cast<quint64>(static_cast<qint64>(std::max(number, -twoTo63)));
}

double asSigned(unsigned long long count)
{
    return static_cast<double>(static_cast<qint64>(count));
}

double asUnsigned(unsigned long long count)
{
    return static_cast<double>(count);
}

unsigned long long convertedCount(double value, CTime::ETimeUnit from, CTime::ETimeUnit to)
{
    return toCount(CMath::round(CTime::convertValue(value, from, to), 0));
}

// So are NaN, infinity and every double from 2^52 on: what is not whole fits into 64 bits.
bool isWhole(double magnitude)
{
    return !(magnitude > std::trunc(magnitude));
}

// Built on first use, so that lookups work in other static initialisers too, whatever their order.
const QHash<QString, CTime::ETimeUnit> &unitHash()
{
    static const QHash<QString, CTime::ETimeUnit> built = CTime::createUnitHash();
    return built;
}

} // namespace

// clazy:excludeall=non-pod-global-static -- the hash is part of the interface and is complete when the
// library is loaded.
const QHash<QString, CTime::ETimeUnit> CTime::mUnitHash = unitHash();

QHash<QString, CTime::ETimeUnit> CTime::createUnitHash()
{
    QHash<QString, ETimeUnit> hash;
    for (const Row &row : rows)
        hash.insert(QString::fromLatin1(row.symbol), row.unit);
    return hash;
}

CTime::CTime() : CTime(0, TU_INVALID) {}

CTime::CTime(unsigned long long value, ETimeUnit unit)
    : mBlock(new Block(value, unit)) // owned by the pointer
{}

CTime::CTime(const CTime &other) = default;

CTime::~CTime() = default;

CTime &CTime::operator=(const CTime &other) = default;

unsigned long long CTime::value() const
{
    return mBlock->value;
}

CTime::ETimeUnit CTime::unit() const
{
    return mBlock->unit;
}

bool CTime::isValid() const
{
    return unit() >= TU_NS && unit() <= TU_H;
}

void CTime::setValue(unsigned long long value)
{
    mBlock->value = value;
}

void CTime::setUnit(ETimeUnit unit)
{
    mBlock->unit = unit;
}

void CTime::setValue(unsigned long long value, ETimeUnit unit)
{
    setValue(value);
    setUnit(unit);
}

CTime &CTime::fromValue(const CTime &other)
{
    setValue(other.unit() == unit() ? other.value()
                                    : convertedCount(asUnsigned(other.value()), other.unit(), unit()));
    return *this;
}

double CTime::toS(const double &value, ETimeUnit unit)
{
    return hasRow(unit) ? value * rows[rowOf(unit)].secondsPerUnit : value;
}

// From seconds by whole numbers only, which doubles hold exactly: divided by 0.001 the result would differ.
double CTime::convertValue(const double &value, ETimeUnit from, ETimeUnit to)
{
    const double seconds = toS(value, from);
    if (!hasRow(to))
        return seconds;
    return to <= TU_S ? seconds * rows[rowOf(to)].unitsPerSecond : seconds / rows[rowOf(to)].secondsPerUnit;
}

unsigned long long CTime::value(ETimeUnit unit) const
{
    return unit == mBlock->unit ? mBlock->value : convertedCount(asSigned(mBlock->value), mBlock->unit, unit);
}

unsigned long long CTime::toNS() const
{
    return value(TU_NS);
}

unsigned long long CTime::toMS() const
{
    return value(TU_MS);
}

unsigned long long CTime::toS() const
{
    return value(TU_S);
}

bool CTime::convertToPrevIntegerValue(const double &value, ETimeUnit unit, long long &outValue,
                                      ETimeUnit &outUnit)
{
    if (value == 0.0 || unit < TU_NS)
        return false;
    bool wasFractional = false;
    // Units above TU_INVALID convert like it, so their steps would only repeat its own.
    for (qint32 u = std::min(unit, TU_INVALID); u >= TU_PS; --u) {
        const auto step = static_cast<ETimeUnit>(u);
        const double magnitude = std::fabs(convertValue(value, unit, step));
        if (isWhole(magnitude))
            return wasFractional;
        const auto truncated = static_cast<long long>(magnitude);
        outValue = value < 0.0 ? -truncated : truncated;
        outUnit = step;
        wasFractional = true;
    }
    return false;
}

bool CTime::convertToPrevIntegerValue(long long &outValue, ETimeUnit &outUnit) const
{
    return convertToPrevIntegerValue(asSigned(value()), unit(), outValue, outUnit);
}

QString CTime::unitStr(ETimeUnit unit)
{
    return unitHash().key(unit, QStringLiteral("?"));
}

CTime::ETimeUnit CTime::unit(const QString &text)
{
    return unitHash().value(text.toLower(), TU_INVALID);
}

QString CTime::toHourString() const
{
    const unsigned long long seconds = toS();
    constexpr QLatin1Char zero('0');
    return QStringLiteral("%1:%2:%3")
        .arg(seconds / 3600)
        .arg(seconds % 3600 / 60, 2, 10, zero)
        .arg(seconds % 60, 2, 10, zero);
}

QString CTime::toHourString(unsigned long long value, ETimeUnit unit)
{
    return CTime(value, unit).toHourString();
}

unsigned long long CTime::nanoseconds() const
{
    return value(TU_NS);
}

bool CTime::operator==(const CTime &other) const
{
    return mBlock == other.mBlock || nanoseconds() == other.nanoseconds();
}

bool CTime::operator!=(const CTime &other) const
{
    return !(*this == other);
}

bool CTime::operator<(const CTime &other) const
{
    return nanoseconds() < other.nanoseconds();
}

bool CTime::operator>(const CTime &other) const
{
    return nanoseconds() > other.nanoseconds();
}

bool CTime::operator<=(const CTime &other) const
{
    return nanoseconds() <= other.nanoseconds();
}

bool CTime::operator>=(const CTime &other) const
{
    return nanoseconds() >= other.nanoseconds();
}

CTime operator+(const CTime &a, const CTime &b)
{
    const CTime::ETimeUnit unit = a.unit();
    if (unit == b.unit())
        return CTime(2 * static_cast<unsigned long long>(unit), unit);
    const unsigned long long sum = a.nanoseconds() + b.nanoseconds();
    return CTime(toCount(CTime::convertValue(asUnsigned(sum), CTime::TU_NS, unit)), unit);
}

CTime operator*(const CTime &time, double factor)
{
    return CTime(toCount(CMath::round(asUnsigned(time.value()) * factor, 0)), time.unit());
}

CTime operator*(double factor, const CTime &time)
{
    return time * factor;
}

QDataStream &operator<<(QDataStream &stream, const CTime &time)
{
    return stream << quint64(time.value()) << qint32(time.unit());
}

QDataStream &operator>>(QDataStream &stream, CTime &time)
{
    quint64 value = 0;
    qint32 unit = 0;
    stream >> value >> unit;
    time.setValue(value, static_cast<CTime::ETimeUnit>(unit));
    return stream;
}

QDebug operator<<(QDebug debug, const CTime &time)
{
    const QDebugStateSaver saver(debug);
    const double count = CMath::round(asUnsigned(time.value()), 3);
    debug.nospace() << QStringLiteral("CTime(%1 %2)")
                           .arg(count, 0, 'g', QLocale::FloatingPointShortest)
                           .arg(CTime::unitStr(time.unit()));
    return debug;
}
