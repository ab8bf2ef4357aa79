// SPDX-License-Identifier: MIT
#ifndef CTIME_H
#define CTIME_H

#include <j6Core_export.h>

#include <QHash>
#include <QSharedDataPointer>
#include <QString>

class QDataStream;
class QDebug;

/**
 * @brief A duration: an unsigned 64-bit count together with the unit in which it is counted.
 *
 * Every conversion goes through seconds in plain double arithmetic, so a count beyond 2^53 loses its low
 * digits. Where a count comes out of a double, these rules hold:
 *
 * | number                   | count                                                       |
 * |--------------------------|-------------------------------------------------------------|
 * | 0 to below 2^64          | its integer part                                            |
 * | 2^64 and above, infinity | 2^64 - 1                                                    |
 * | -2^63 to below 0         | its integer part as signed 64 bits: -2.5 is count 2^64 - 2  |
 * | below -2^63, -infinity   | 2^63, the bits of the lowest signed number                  |
 * | NaN                      | 0                                                           |
 *
 * Negative numbers come from a negative factor and from counts of 2^63 and more, which value(ETimeUnit) and
 * the member convertToPrevIntegerValue() read as signed numbers. Their results keep the bits of a signed
 * number, too, and so read back as one: -1 s, the count 2^64 - 1, gives -1000 ms, the count 2^64 - 1000. Only
 * what fits into 64 bits neither way saturates.
 *
 * A unit number outside of the table of ETimeUnit may arrive from a stream. It is kept as it is, and
 * everything treats it as TU_INVALID: conversions pass the number through, unitStr() gives "?". Only a sum of
 * two equal units and the lower bound of convertToPrevIntegerValue() look at the number itself; units are
 * equal when their numbers are.
 *
 * Objects are implicitly shared values: a copy costs one reference count, a change detaches. Copies may be
 * used and destroyed in different threads (the count is atomic); one object must not be changed by two
 * threads at once. Nothing here logs or fails loudly.
 *
 * @code
 * CTime cycle(1500, CTime::TU_US);
 * cycle.value(CTime::TU_MS);                         // 2: 1.5 rounded half away from zero
 * cycle < CTime(2, CTime::TU_MS);                    // true: 1500000 ns against 2000000 ns
 * CTime::unitStr(cycle.unit());                      // "µs"
 * CTime(3725, CTime::TU_S).toHourString();           // "1:02:05"
 * @endcode
 */
class J6CORE_EXPORT CTime
{
public:
    /// @brief The unit of a count; the numbers are part of the stream form. Symbol and seconds per unit:
    enum ETimeUnit : qint32 {
        TU_PS = 0,     ///< picosecond, "ps", 1e-12 s
        TU_NS = 1,     ///< nanosecond, "ns", 1e-9 s
        TU_US = 2,     ///< microsecond, "µs" with the micro sign U+00B5, 1e-6 s
        TU_MS = 3,     ///< millisecond, "ms", 1e-3 s
        TU_S = 4,      ///< second, "s"
        TU_MIN = 5,    ///< minute, "min", 60 s
        TU_H = 6,      ///< hour, "h", 3600 s
        TU_INVALID = 7 ///< no unit, "?"; its counts convert as if they were seconds
    };

    /// @brief The unit of each symbol, seven rows. Filled when the library is loaded, read-only afterwards.
    static const QHash<QString, ETimeUnit> mUnitHash;
    /// @brief Makes the content of mUnitHash.
    static QHash<QString, ETimeUnit> createUnitHash();

    /// @brief A count of 0 with TU_INVALID.
    CTime();
    CTime(unsigned long long value, ETimeUnit unit);
    CTime(const CTime &other);
    virtual ~CTime();

    CTime &operator=(const CTime &other);

    /// @brief The stored count.
    unsigned long long value() const;
    /// @brief The stored unit.
    ETimeUnit unit() const;
    /// @brief True for TU_NS to TU_H. A duration in picoseconds reports itself invalid.
    bool isValid() const;

    void setValue(unsigned long long value);
    /// @brief Changes the unit only; the count is not converted.
    void setUnit(ETimeUnit unit);
    void setValue(unsigned long long value, ETimeUnit unit);

    /// @brief Takes the duration of `other` and keeps the own unit: the count is copied if the units are
    /// equal, else converted and rounded half away from zero. Unlike value(ETimeUnit), it reads the count of
    /// `other` as an unsigned number. Returns this object.
    CTime &fromValue(const CTime &other);

    /// @brief The number of `unit` in seconds: value times the seconds per unit. A unit outside of TU_PS to
    /// TU_H returns `value` unchanged.
    static double toS(const double &value, ETimeUnit unit);
    /// @brief The number of `from` as a number of `to`: toS(), then times the units per second up to TU_MS,
    /// unchanged for TU_S, divided by 60 or 3600 above. A target outside of TU_PS to TU_H leaves the seconds.
    /// There is no short cut for equal units: 3 ns converted to ns are 3.0000000000000004.
    static double convertValue(const double &value, ETimeUnit from, ETimeUnit to);

    /// @brief The stored count if it is in `unit`. Otherwise it is read as a signed number, converted, and
    /// rounded half away from zero by CMath::round().
    unsigned long long value(ETimeUnit unit) const;
    /// @brief value(TU_NS).
    unsigned long long toNS() const;
    /// @brief value(TU_MS).
    unsigned long long toMS() const;
    /// @brief value(TU_S).
    unsigned long long toS() const;

    /**
     * @brief Looks for a finer unit in which a fractional number is whole, and gives the truncated count of
     * the unit just above that one.
     *
     * From `unit` down to TU_PS, as long as the number is fractional in a unit, its truncated count with the
     * sign of `value` and that unit are stored in the outputs. Whole is meant in binary arithmetic, by which
     * 3 ns and a third of a second are whole in no unit; 2^52 and more, infinity and NaN count as whole.
     *
     * @return true when the number is fractional in `unit` and whole in a finer one: 1.5 s gives 1 and TU_S,
     * being 1500 ms. False with untouched outputs when it is whole in `unit`, 0, or `unit` is below TU_NS.
     * False, too, when it is whole in no unit; the outputs then hold the truncated picoseconds.
     */
    static bool convertToPrevIntegerValue(const double &value, ETimeUnit unit, long long &outValue,
                                          ETimeUnit &outUnit);
    /// @brief The same for the stored count, read as a signed number, in the stored unit.
    bool convertToPrevIntegerValue(long long &outValue, ETimeUnit &outUnit) const;

    /// @brief The symbol of the unit, "?" if it has none. Inverse of unit(const QString &).
    static QString unitStr(ETimeUnit unit);
    /// @brief The unit of a symbol in upper or lower case ("MS", "Min"); TU_INVALID for any other text. The
    /// only mu is the micro sign U+00B5.
    static ETimeUnit unit(const QString &text);

    /// @brief The duration in whole seconds, value(TU_S), as hours, minutes and seconds: "1:02:05". Hours
    /// have no padding and no limit, minutes and seconds have two digits.
    QString toHourString() const;
    /// @brief toHourString() of the duration with this count and unit.
    static QString toHourString(unsigned long long value, ETimeUnit unit);

    /// @name Comparison by the nanoseconds: the stored count if it is in TU_NS, else value(TU_NS).
    /// @{
    bool operator==(const CTime &other) const;
    bool operator!=(const CTime &other) const;
    bool operator<(const CTime &other) const;
    bool operator>(const CTime &other) const;
    bool operator<=(const CTime &other) const;
    bool operator>=(const CTime &other) const;
    /// @}

    /// @brief Durations of different units: the sum of the nanoseconds (modulo 2^64), converted to the unit
    /// of `a` and truncated: 1 s + 500 ms is 1 s.
    /// @warning Durations of the same unit do not add their counts: the result is twice the unit's number in
    /// that unit. 5 s + 7 s is 8 s.
    friend J6CORE_EXPORT CTime operator+(const CTime &a, const CTime &b);
    /// @brief The count, as an unsigned number, times `factor`, rounded half away from zero; the unit stays.
    friend J6CORE_EXPORT CTime operator*(const CTime &time, double factor);
    /// @copydoc operator*(const CTime &, double)
    friend J6CORE_EXPORT CTime operator*(double factor, const CTime &time);

    /// @brief Writes the count as 64 bits, then the unit as 32 bits, in the stream's byte order: 12 bytes.
    friend J6CORE_EXPORT QDataStream &operator<<(QDataStream &stream, const CTime &time);
    /// @brief Reads what operator<<() wrote. A field that the stream does not hold is zero; its status tells.
    friend J6CORE_EXPORT QDataStream &operator>>(QDataStream &stream, CTime &time);

private:
    struct Block;

    unsigned long long nanoseconds() const;

    QSharedDataPointer<Block> mBlock;
};

Q_DECLARE_TYPEINFO(CTime, Q_MOVABLE_TYPE);

/// @brief Writes `"CTime(1500 µs)"`, quoted as a QString is. The count stands as a double of shortest
/// precision, so a large one is rounded and may have an exponent: 1500000000 is `1.5e+09`.
J6CORE_EXPORT QDebug operator<<(QDebug debug, const CTime &time);

#endif // CTIME_H
