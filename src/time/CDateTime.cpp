// SPDX-License-Identifier: MIT
#include <CDateTime.h>
#include <j6Constants.h>

#include "text/Calendars.h"
#include "types/PlainBytes.h"

#include <QDataStream>
#include <QDebug>
#include <QLocale>
#include <QTimeZone>
#include <QVector>
#include <QtEndian>

#include <algorithm>

namespace {

// Missing bytes are zero.
NTypes::sDateTime_t recordFromBytes(const QByteArray &bytes)
{
    NTypes::sDateTime_t record{};
    std::memcpy(&record, bytes.constData(), std::min(static_cast<std::size_t>(bytes.size()), sizeof record));
    return record;
}

NTypes::sDateTime_t pack(const QDateTime &dateTime)
{
    int year = 0;
    int month = 0;
    int day = 0;
    dateTime.date().getDate(&year, &month, &day);
    const QTime time = dateTime.time();

    NTypes::sDateTime_t record{};
    record.time.hundredths = static_cast<qint8>(time.msec() >= 1 ? time.msec() / 10 : 0);
    record.time.second = static_cast<qint8>(time.second());
    record.time.minute = static_cast<qint8>(time.minute());
    record.time.hour = static_cast<qint8>(time.hour());
    record.date.day = static_cast<qint8>(day);
    record.date.month = static_cast<qint8>(month);
    record.date.year = static_cast<qint16>(year);
    return record;
}

// The same instant in the time spec of `like`. QDateTime::toTimeSpec() knows neither its offset nor its
// zone.
QDateTime inSpecificationOf(const QDateTime &like, const QDateTime &instant)
{
    switch (like.timeSpec()) {
    case Qt::OffsetFromUTC:
        return instant.toOffsetFromUtc(like.offsetFromUtc());
    case Qt::TimeZone:
        return instant.toTimeZone(like.timeZone());
    case Qt::LocalTime:
    case Qt::UTC:
        break;
    }
    return instant.toTimeSpec(like.timeSpec());
}

// Whether a stream of this version holds the number of a Qt::TimeSpec; others have numbers of their own, or
// none.
bool hasTimeSpec(const QDataStream &stream)
{
    return stream.version() >= QDataStream::Qt_5_2 || stream.version() == QDataStream::Qt_5_0;
}

QDateTime readInOffset(QDataStream &stream, const QDate &date, const QTime &time)
{
    qint32 offset = 0;
    stream >> offset;
    return QDateTime(date, time, Qt::OffsetFromUTC, offset);
}

// Qt takes a zone's rules from the file of its name below the system's directory of zones. Names in a stream
// may be anybody's: none leads out of there, to a device or a pipe that never ends.
bool isZoneName(const QString &name)
{
    const QVector<QStringRef> parts = name.splitRef(QLatin1Char('/'));
    return name.isEmpty() || std::none_of(parts.begin(), parts.end(), [](const QStringRef &part) {
               return part.isEmpty() || part == QLatin1String(".") || part == QLatin1String("..");
           });
}

// A zone that the program which wrote it had made itself; one that the system has goes before it.
QTimeZone readOwnZone(QDataStream &stream)
{
    QString id;
    qint32 offset = 0;
    QString name;
    QString abbreviation;
    qint32 country = QLocale::AnyCountry;
    QString comment;
    stream >> id >> offset >> name >> abbreviation >> country >> comment;
    if (!isZoneName(id))
        return {};
    const QTimeZone zone(id.toUtf8());
    if (zone.isValid())
        return zone;
    const bool isCountry = country >= QLocale::AnyCountry && country <= QLocale::LastCountry;
    return QTimeZone(id.toUtf8(), offset, name, abbreviation,
                     isCountry ? static_cast<QLocale::Country>(country) : QLocale::AnyCountry, comment);
}

// As Qt reads a QTimeZone, but for names that are none.
QTimeZone readZone(QDataStream &stream)
{
    QString id;
    stream >> id;
    if (id == QLatin1String("OffsetFromUtc"))
        return readOwnZone(stream);
    return isZoneName(id) ? QTimeZone(id.toUtf8()) : QTimeZone();
}

// Reads such a stream as Qt does, but for its time spec and its zone: Qt takes any number for one, and a
// value with a number that is none reads foreign memory sooner or later.
QDateTime readByTimeSpec(QDataStream &stream)
{
    QDate date;
    QTime time;
    qint8 spec = Qt::LocalTime;
    stream >> date >> time >> spec;
    if (spec < Qt::LocalTime || spec > Qt::TimeZone) {
        stream.setStatus(QDataStream::ReadCorruptData);
        return {};
    }
    if (stream.version() == QDataStream::Qt_5_0)
        return QDateTime(date, time, Qt::UTC).toTimeSpec(static_cast<Qt::TimeSpec>(spec));
    switch (spec) {
    case Qt::OffsetFromUTC:
        return readInOffset(stream, date, time);
    case Qt::TimeZone:
        return QDateTime(date, time, readZone(stream));
    default:
        return QDateTime(date, time, static_cast<Qt::TimeSpec>(spec));
    }
}

// In a time zone that does not exist, or not on this machine; such a value is invalid, but for midnight of
// day 0, which Qt 5.15 calls valid there.
bool isZoneMissing(const QDateTime &dateTime)
{
    return dateTime.timeSpec() == Qt::TimeZone && !dateTime.timeZone().isValid();
}

// As Qt writes a value in a zone, where Qt 5.15 would use the zone that there is none of. The name is the one
// that later versions write and understand; an empty one would be read as the system's zone.
QDataStream &writeWithoutZone(QDataStream &stream, const QDateTime &dateTime)
{
    return stream << dateTime.date() << dateTime.time() << static_cast<qint8>(Qt::TimeZone)
                  << QStringLiteral("-No Time Zone Specified!");
}

} // namespace

CDateTime::CDateTime(const QDateTime &dateTime) : mDateTime(dateTime) {}

CDateTime::CDateTime(long long value, Qt::TimeSpec spec) : CDateTime(bitsOf<NTypes::sDateTime_t>(value), spec)
{}

CDateTime::CDateTime(const NTypes::sDateTime_t &record, Qt::TimeSpec spec)
{
    setValue(record);
    setTimeSpec(spec);
}

CDateTime::CDateTime(const NTypes::uDateTimeVal_t &record, Qt::TimeSpec spec)
    : CDateTime(bitsOf<NTypes::sDateTime_t>(record), spec)
{}

CDateTime &CDateTime::operator=(const QDateTime &dateTime)
{
    mDateTime = dateTime;
    return *this;
}

CDateTime CDateTime::fromI64ByteArray(const QByteArray &bytes, Qt::TimeSpec spec)
{
    return CDateTime(recordFromBytes(bytes), spec);
}

bool CDateTime::isNull() const
{
    return mDateTime.isNull();
}

bool CDateTime::isValid() const
{
    return mDateTime.isValid();
}

Qt::TimeSpec CDateTime::timeSpec() const
{
    return mDateTime.timeSpec();
}

void CDateTime::setDate(const NTypes::sDate_t &date)
{
    mDateTime.setDate(QDate(date.year, date.month, date.day));
}

void CDateTime::setTime(const NTypes::sTime_t &time)
{
    mDateTime.setTime(QTime(time.hour, time.minute, time.second, time.hundredths * 10));
}

void CDateTime::setValue(const NTypes::sDateTime_t &record)
{
    setDate(record.date);
    setTime(record.time);
}

void CDateTime::setValue(const NTypes::uDateTimeVal_t &record)
{
    setValue(bitsOf<NTypes::sDateTime_t>(record));
}

void CDateTime::setValue(long long value)
{
    setValue(bitsOf<NTypes::sDateTime_t>(value));
}

void CDateTime::setTimeSpec(Qt::TimeSpec spec)
{
    mDateTime.setTimeSpec(spec);
}

CDateTime &CDateTime::fromValue(const NTypes::sDateTime_t &record, Qt::TimeSpec spec)
{
    mDateTime = inSpecificationOf(mDateTime, CDateTime(record, spec));
    return *this;
}

CDateTime &CDateTime::fromValue(const NTypes::uDateTimeVal_t &record, Qt::TimeSpec spec)
{
    return fromValue(bitsOf<NTypes::sDateTime_t>(record), spec);
}

CDateTime &CDateTime::fromValue(long long value, Qt::TimeSpec spec)
{
    return fromValue(bitsOf<NTypes::sDateTime_t>(value), spec);
}

CDateTime &CDateTime::fromValue(const QByteArray &bytes, Qt::TimeSpec spec)
{
    return fromValue(recordFromBytes(bytes), spec);
}

CDateTime::operator QDateTime() const
{
    return mDateTime;
}

CDateTime::operator NTypes::sDateTime_t() const
{
    return pack(mDateTime);
}

CDateTime::operator long long() const
{
    return bitsOf<long long>(pack(mDateTime));
}

QDateTime CDateTime::toQDateTime(Qt::TimeSpec spec) const
{
    return mDateTime.toTimeSpec(spec);
}

CDateTime CDateTime::toTimeSpec(Qt::TimeSpec spec) const
{
    return spec == timeSpec() ? *this : CDateTime(toQDateTime(spec));
}

long long CDateTime::toI64(Qt::TimeSpec spec) const
{
    return bitsOf<long long>(pack(toQDateTime(spec)));
}

long long CDateTime::toDateTime(NTypes::sDateTime_t &record, Qt::TimeSpec spec) const
{
    record = pack(toQDateTime(spec));
    return bitsOf<long long>(record);
}

QByteArray CDateTime::toI64ByteArray(Qt::TimeSpec spec) const
{
    QByteArray bytes(static_cast<int>(sizeof(long long)), Qt::Uninitialized);
    qToLittleEndian(toI64(spec), bytes.data());
    return bytes;
}

QString CDateTime::toIsoDate(Qt::TimeSpec spec) const
{
    return toQDateTime(spec).date().toString(Qt::ISODate);
}

QString CDateTime::toIsoDateTime(Qt::TimeSpec spec) const
{
    return toQDateTime(spec).toString(Qt::ISODate);
}

QString CDateTime::toString(Qt::DateFormat format) const
{
    return mDateTime.toString(format);
}

QString CDateTime::toString(const QString &format) const
{
    return mDateTime.toString(format);
}

QString CDateTime::toString(QLocale::FormatType format) const
{
    return QLocale().toString(mDateTime, format);
}

bool CDateTime::operator==(const CDateTime &other) const
{
    return mDateTime == other.mDateTime;
}

bool CDateTime::operator==(const QDateTime &other) const
{
    return mDateTime == other;
}

bool CDateTime::operator!=(const CDateTime &other) const
{
    return mDateTime != other.mDateTime;
}

bool CDateTime::operator!=(const QDateTime &other) const
{
    return mDateTime != other;
}

bool CDateTime::operator<(const CDateTime &other) const
{
    return mDateTime < other.mDateTime;
}

bool CDateTime::operator>(const CDateTime &other) const
{
    return other < *this;
}

bool CDateTime::operator<=(const CDateTime &other) const
{
    return !(other < *this);
}

bool CDateTime::operator>=(const CDateTime &other) const
{
    return !(*this < other);
}

QDataStream &operator<<(QDataStream &stream, const CDateTime &dateTime)
{
    if (isZoneMissing(dateTime.mDateTime) && stream.version() >= QDataStream::Qt_5_2)
        return writeWithoutZone(stream, dateTime.mDateTime);
    return stream << dateTime.mDateTime;
}

QDataStream &operator>>(QDataStream &stream, CDateTime &dateTime)
{
    if (hasTimeSpec(stream))
        dateTime.mDateTime = readByTimeSpec(stream);
    else
        stream >> dateTime.mDateTime;
    return stream;
}

QDebug operator<<(QDebug debug, const CDateTime &dateTime)
{
    const QDebugStateSaver saver(debug);
    debug.nospace()
        << QStringLiteral("CDateTime(%1)").arg(QLocale::c().toString(dateTime.mDateTime, DATE_TIME_FORMAT));
    return debug;
}
