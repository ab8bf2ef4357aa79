// SPDX-License-Identifier: MIT
#ifndef CDATETIME_H
#define CDATETIME_H

#include <NTypes.h>
#include <j6Core_export.h>

#include <QByteArray>
#include <QDateTime>
#include <QLocale>
#include <QString>

class QDataStream;
class QDebug;

/**
 * @brief A date-time value: a QDateTime that converts to and from the devices' packed 8-byte record.
 *
 * Null, valid, time spec and order are those of the QDateTime it holds. The packed record comes in
 * three shapes of the same eight bytes:
 *
 * | byte | bits of the 64-bit value | field                    | read as                 |
 * |------|--------------------------|--------------------------|-------------------------|
 * | 0    | 0-7                      | hundredths of a second   | signed 8-bit            |
 * | 1    | 8-15                     | second                   | signed 8-bit            |
 * | 2    | 16-23                    | minute                   | signed 8-bit            |
 * | 3    | 24-31                    | hour                     | signed 8-bit            |
 * | 4    | 32-39                    | day of month             | signed 8-bit            |
 * | 5    | 40-47                    | month                    | signed 8-bit            |
 * | 6-7  | 48-63                    | year                     | signed 16-bit           |
 *
 * as NTypes::sDateTime_t (or its union NTypes::uDateTimeVal_t), as one `long long`, which is no count of time
 * units since an epoch, and as a little-endian byte array.
 *
 * Packing keeps hundredths: the milliseconds are divided by 10 and truncated. A year that needs more than 16
 * bits is cut to its low 16 bits. A null value packs what Qt gives for it: date 0-0-0, hour, minute and
 * second -1, hundredths 0; unpacked, this is null again.
 *
 * Unpacking hands the fields to QDate and QTime, and Qt decides: an impossible date gives an invalid value;
 * an impossible time beside a possible date gives midnight of that date, which is valid. The all-zero record
 * has a time but no date: it is invalid and not null. Nothing is logged.
 *
 * A record carries no time spec; every conversion names one, the computer's local time unless told
 * otherwise. Where a conversion starts from an invalid value, Qt keeps its fields and changes the
 * time spec only. This is so for a local time that the clock skipped at a daylight-saving change, too: it
 * is invalid as local time, and converted to UTC it is the same fields in UTC.
 *
 * Reentrant; a value is used by one thread at a time, copies may be shared between threads.
 *
 * @code
 * CDateTime moment(0x07E5030405060759, Qt::UTC);         // 2021-03-04 05:06:07.890 UTC
 * moment.toI64ByteArray(Qt::UTC).toHex();                // "590706050403e507"
 * moment.toIsoDateTime(Qt::UTC);                         // "2021-03-04T05:06:07Z"
 * moment.fromValue(0x07E5030405060759, Qt::LocalTime);   // the instant of that local time, still held in UTC
 * @endcode
 */
class J6CORE_EXPORT CDateTime
{
public:
    /// @brief A null date-time in local time.
    CDateTime() = default;
    /// @brief A copy of the value with its time spec. Inverse of operator QDateTime().
    CDateTime(const QDateTime &dateTime);
    /// @brief The fields of the packed record, taken as they stand in `spec` (no conversion).
    /// Qt::OffsetFromUTC becomes UTC and Qt::TimeZone local time, as with QDateTime::setTimeSpec().
    /// @note Explicit, so that comparing with a record or number compares packed forms instead of being
    /// ambiguous.
    explicit CDateTime(long long value, Qt::TimeSpec spec = Qt::LocalTime);
    /// @copydoc CDateTime(long long, Qt::TimeSpec)
    explicit CDateTime(const NTypes::sDateTime_t &record, Qt::TimeSpec spec = Qt::LocalTime);
    /// @copydoc CDateTime(long long, Qt::TimeSpec)
    explicit CDateTime(const NTypes::uDateTimeVal_t &record, Qt::TimeSpec spec = Qt::LocalTime);

    /// @brief Takes the value with its time spec.
    CDateTime &operator=(const QDateTime &dateTime);

    /// @brief The value made from the packed record at the start of `bytes`; inverse of toI64ByteArray().
    /// Bytes that are missing count as 0, those beyond the eighth are ignored.
    static CDateTime fromI64ByteArray(const QByteArray &bytes, Qt::TimeSpec spec = Qt::LocalTime);

    /// @brief Whether neither a date nor a time was ever set.
    bool isNull() const;
    /// @brief Whether date and time are valid and, in local time or a zone, not skipped by a daylight-saving
    /// change.
    bool isValid() const;
    /// @brief The time spec of the value.
    Qt::TimeSpec timeSpec() const;

    /// @brief Replaces the date and keeps time and time spec. An impossible date makes the value invalid.
    void setDate(const NTypes::sDate_t &date);
    /// @brief Replaces the time and keeps date and time spec. An impossible time becomes midnight if the
    /// date is valid.
    void setTime(const NTypes::sTime_t &time);
    /// @brief setDate() and setTime() of the record; the time spec stays, no conversion.
    void setValue(const NTypes::sDateTime_t &record);
    /// @copydoc setValue(const NTypes::sDateTime_t &)
    void setValue(const NTypes::uDateTimeVal_t &record);
    /// @copydoc setValue(const NTypes::sDateTime_t &)
    void setValue(long long value);
    /// @brief Declares the fields to be in `spec` without converting them, as QDateTime::setTimeSpec().
    void setTimeSpec(Qt::TimeSpec spec);

    /// @brief Takes the instant that the record names in `spec`, and keeps the own time spec (with
    /// its offset or zone): the record is converted from `spec` to it. Returns this object.
    CDateTime &fromValue(const NTypes::sDateTime_t &record, Qt::TimeSpec spec = Qt::LocalTime);
    /// @copydoc fromValue(const NTypes::sDateTime_t &, Qt::TimeSpec)
    CDateTime &fromValue(const NTypes::uDateTimeVal_t &record, Qt::TimeSpec spec = Qt::LocalTime);
    /// @copydoc fromValue(const NTypes::sDateTime_t &, Qt::TimeSpec)
    CDateTime &fromValue(long long value, Qt::TimeSpec spec = Qt::LocalTime);
    /// @brief As the other forms, with the packed record at the start of `bytes`.
    /// Bytes that are missing count as 0, those beyond the eighth are ignored.
    CDateTime &fromValue(const QByteArray &bytes, Qt::TimeSpec spec = Qt::LocalTime);

    /// @brief The value as it is held.
    operator QDateTime() const;
    /// @brief The packed record of the value in its own time spec; inverse of setValue().
    operator NTypes::sDateTime_t() const;
    /// @brief The packed record as one 64-bit value, in the value's own time spec; inverse of
    /// setValue().
    operator long long() const;

    /// @brief The value converted to `spec` by QDateTime::toTimeSpec(): Qt::OffsetFromUTC gives UTC and
    /// Qt::TimeZone local time, whatever offset or zone the value has.
    QDateTime toQDateTime(Qt::TimeSpec spec = Qt::LocalTime) const;
    /// @brief A copy, converted as toQDateTime() only if `spec` is not the present one: an offset or zone
    /// that the value already has is kept.
    CDateTime toTimeSpec(Qt::TimeSpec spec) const;
    /// @brief The value converted to `spec` and packed, as one 64-bit value.
    /// Inverse: `CDateTime(long long, Qt::TimeSpec)`.
    long long toI64(Qt::TimeSpec spec = Qt::LocalTime) const;
    /// @brief Writes the record of toI64() into `record` and returns it as one 64-bit value, too.
    long long toDateTime(NTypes::sDateTime_t &record, Qt::TimeSpec spec = Qt::LocalTime) const;
    /// @brief The record of toI64() as its 8 bytes, the hundredths first. Inverse of fromI64ByteArray().
    QByteArray toI64ByteArray(Qt::TimeSpec spec = Qt::LocalTime) const;

    /// @brief The date in `spec` as ISO 8601 text "yyyy-MM-dd"; empty for an invalid date or a year outside
    /// 1..9999.
    QString toIsoDate(Qt::TimeSpec spec = Qt::LocalTime) const;
    /// @brief The value in `spec` as ISO 8601 text "yyyy-MM-ddTHH:mm:ss" (with "Z" in UTC); empty if it is
    /// invalid.
    QString toIsoDateTime(Qt::TimeSpec spec = Qt::LocalTime) const;
    /// @brief The text that QDateTime gives in this format, in the value's own time spec.
    QString toString(Qt::DateFormat format) const;
    /// @brief The text in a format such as "yyyy-MM-dd HH:mm:ss" (see QDateTime); empty for an invalid value.
    QString toString(const QString &format) const;
    /// @brief The text in the default locale (`QLocale()`), for people to read.
    QString toString(QLocale::FormatType format) const;

    /// @name Comparison, as QDateTime: by the instant, whatever the time specs.
    /// @{
    bool operator==(const CDateTime &other) const;
    bool operator==(const QDateTime &other) const;
    bool operator!=(const CDateTime &other) const;
    bool operator!=(const QDateTime &other) const;
    bool operator<(const CDateTime &other) const;
    bool operator>(const CDateTime &other) const;
    bool operator<=(const CDateTime &other) const;
    bool operator>=(const CDateTime &other) const;
    /// @}

    /// @brief Writes exactly what the QDateTime writes, in the stream's version and byte order. A time zone
    /// that does not exist, where a QDateTime would end the program, is "-No Time Zone Specified!".
    friend J6CORE_EXPORT QDataStream &operator<<(QDataStream &stream, const CDateTime &dateTime);
    /// @brief Reads what operator<<() or a QDateTime wrote; a failure shows in the stream's status. A time
    /// spec that there is none of is corrupt data and gives a null value. The name of a zone with an empty
    /// part, "." or ".." between its slashes is that of none: Qt would look for its file elsewhere.
    friend J6CORE_EXPORT QDataStream &operator>>(QDataStream &stream, CDateTime &dateTime);
    /// @brief Writes `"CDateTime(2021-03-04 05:06:07)"`: the fields in the value's own time spec,
    /// quoted as a QString is.
    friend J6CORE_EXPORT QDebug operator<<(QDebug debug, const CDateTime &dateTime);

private:
    QDateTime mDateTime;
};

Q_DECLARE_TYPEINFO(CDateTime, Q_MOVABLE_TYPE);

#endif // CDATETIME_H
