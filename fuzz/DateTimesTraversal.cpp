// SPDX-License-Identifier: MIT
// Any eight bytes as a packed date-time, in UTC and in local time, and any bytes as the stream of one.
#include "Traversals.h"

#include <CDateTime.h>

#include <Equality.h>
#include <InputReader.h>
#include <Properties.h>
#include <StreamForm.h>

#include <QDebug>
#include <QLocale>
#include <QTimeZone>
#include <QtEndian>

#include <array>
#include <functional>

namespace {

constexpr std::size_t packedLimit = 262144;

constexpr std::array<Qt::TimeSpec, 2> specs = {Qt::UTC, Qt::LocalTime};

// The eight fields of a record.
struct Fields
{
    explicit Fields(qint64 value) : packed(value) {}

    int byte(int index) const { return static_cast<qint8>(packed >> 8 * index); }
    QTime time() const { return QTime(byte(3), byte(2), byte(1), byte(0) * 10); }
    QDate date() const { return QDate(static_cast<qint16>(packed >> 48), byte(5), byte(4)); }

    qint64 packed;
};

NTypes::sDateTime_t recordOf(qint64 value)
{
    NTypes::sDateTime_t record{};
    CDateTime(value, Qt::UTC).toDateTime(record, Qt::UTC);
    return record;
}

// What the interface says about a value, whatever it is.
void checkTexts(const CDateTime &moment, Qt::TimeSpec spec)
{
    const QDateTime inQt = moment.toQDateTime(spec);
    const QString date = moment.toIsoDate(spec);
    require(date == inQt.date().toString(Qt::ISODate), "the date is Qt's", date);
    require(date.isEmpty() || QDate::fromString(date, Qt::ISODate) == inQt.date(),
            "a date is read as it was written", date);
    const QString text = moment.toIsoDateTime(spec);
    require(text == inQt.toString(Qt::ISODate), "the date-time is Qt's", text);
    require(moment.toString(QStringLiteral("yyyy HH:mm"))
                == QDateTime(moment).toString(QStringLiteral("yyyy HH:mm")),
            "a format is Qt's");
    moment.toString(QLocale::ShortFormat);
    moment.toString(Qt::RFC2822Date);
    QString debug;
    QDebug(&debug) << moment;
    require(debug.startsWith(QLatin1String("\"CDateTime(")), "the debug form is quoted", debug);
}

void checkPacking(const CDateTime &moment, Qt::TimeSpec spec)
{
    const long long packed = moment.toI64(spec);
    NTypes::sDateTime_t record{};
    require(moment.toDateTime(record, spec) == packed, "the record is the number");
    const QByteArray bytes = moment.toI64ByteArray(spec);
    require(bytes.size() == 8 && qFromLittleEndian<qint64>(bytes.constData()) == packed,
            "the bytes are the number, the lowest first");
    require(CDateTime(record, spec).toI64(spec) == CDateTime(packed, spec).toI64(spec)
                && CDateTime::fromI64ByteArray(bytes, spec).toI64(spec)
                       == CDateTime(packed, spec).toI64(spec),
            "number, record and bytes are unpacked alike");
    require(static_cast<long long>(moment.toTimeSpec(spec)) == packed, "the record is that of the time spec");
}

// Any milliseconds are packed as the hundredths that are over.
void checkMilliseconds(quint64 number)
{
    const QTime time = QTime::fromMSecsSinceStartOfDay(static_cast<int>(number % 86400000));
    const Fields fields(CDateTime(QDateTime(QDate(2024, 3, 1), time, Qt::UTC)).toI64(Qt::UTC));
    require(fields.byte(0) == time.msec() / 10 && fields.time().addMSecs(time.msec() % 10) == time,
            "milliseconds are cut to hundredths");
}

void checkUnpacking(qint64 value, Qt::TimeSpec spec)
{
    const Fields fields(value);
    const CDateTime moment(value, spec);
    require(moment.timeSpec() == spec, "the time spec is the one that was named");
    const QDateTime expected(fields.date(), fields.time(), spec);
    require(moment == expected && moment.isValid() == expected.isValid(),
            "a record is unpacked field by field");
    if (moment.isValid() && fields.time().isValid())
        require(moment.toI64(spec) == value, "what was unpacked is packed as it was");
    else
        require(spec == Qt::LocalTime || moment.isValid() == fields.date().isValid(),
                "without a time it is midnight, without a date invalid");
    CDateTime set(QDateTime(QDate(2024, 3, 1), QTime(12, 0), spec));
    set.setValue(value);
    // Of an hour that a local clock shows twice, either may be meant.
    require(set.isValid() == moment.isValid() && (!set.isValid() || set.toI64(spec) == moment.toI64(spec)),
            "a value is set as it is made");
    checkPacking(moment, Qt::UTC);
    checkPacking(moment, Qt::LocalTime);
    checkTexts(moment, spec);
}

// The instant of a record in another time spec.
void checkInstant(qint64 value, Qt::TimeSpec from, Qt::TimeSpec to)
{
    CDateTime moment(QDateTime(QDate(2024, 3, 1), QTime(12, 0), to));
    const CDateTime expected(value, from);
    moment.fromValue(value, from);
    require(moment.timeSpec() == to, "the own time spec is kept");
    require(!expected.isValid() || moment == expected, "the instant is that of the record");
    CDateTime same(QDateTime(QDate(2024, 3, 1), QTime(12, 0), to));
    require(same.fromValue(recordOf(value), from)
                == CDateTime(QDateTime(QDate(2024, 3, 1), QTime(12, 0), to)).fromValue(recordOf(value), from),
            "a record gives one instant");
}

void checkOrder(const CDateTime &a, const CDateTime &b)
{
    requireEquality(a, b);
    const std::less<> isLess;
    require((a > b) == isLess(b, a) && (a <= b) == !isLess(b, a) && (a >= b) == !isLess(a, b),
            "the orders agree");
    require((a == QDateTime(b)) == (a == b), "a QDateTime is compared as the value that holds it");
}

void checkBytes(const QByteArray &bytes, Qt::TimeSpec spec)
{
    const QByteArray record = bytes.left(8).leftJustified(8, '\0');
    const CDateTime moment = CDateTime::fromI64ByteArray(bytes, spec);
    const CDateTime expected(qFromLittleEndian<qint64>(record.constData()), spec);
    require(moment == expected && moment.isValid() == expected.isValid(), "bytes that are missing are 0");
    CDateTime inUtc;
    inUtc.setTimeSpec(Qt::UTC);
    require(inUtc.fromValue(bytes, spec).timeSpec() == Qt::UTC && (!expected.isValid() || inUtc == expected),
            "the instant of bytes is that of their record");
}

// Whether the stream holds a time spec that there is none of. Qt takes it, and reads foreign memory.
bool hasUnknownTimeSpec(const QByteArray &bytes, int version)
{
    constexpr int place = 12; // behind date and time
    const bool isNumber = version >= QDataStream::Qt_5_2 || version == QDataStream::Qt_5_0;
    return isNumber && bytes.size() > place
           && (bytes.at(place) < Qt::LocalTime || bytes.at(place) > Qt::TimeZone);
}

// The name of the zone that a stream of date, time and time spec holds behind these.
QString zoneNameIn(const QByteArray &bytes, int version)
{
    QDataStream stream(bytes);
    stream.setVersion(version);
    QDate date;
    QTime time;
    qint8 spec = Qt::LocalTime;
    QString name;
    stream >> date >> time >> spec;
    if (version < QDataStream::Qt_5_2 || spec != Qt::TimeZone)
        return {};
    stream >> name;
    if (name == QLatin1String("OffsetFromUtc"))
        stream >> name;
    return name;
}

// Whether Qt would look for the zone outside of the system's directory of zones, and open what it finds.
bool leadsElsewhere(const QString &zoneName)
{
    const QString path = QLatin1Char('/') + zoneName + QLatin1Char('/');
    const auto holds = [&path](const char *part) { return path.contains(QLatin1String(part)); };
    return !zoneName.isEmpty() && (holds("//") || holds("/./") || holds("/../"));
}

// What QDateTime cannot be given is refused.
void checkZoneElsewhere(const QByteArray &bytes, int version)
{
    CDateTime moment;
    readFrom(bytes, moment, QDataStream::BigEndian, version);
    const QDateTime inQt(moment);
    require(inQt.timeSpec() == Qt::TimeZone && !inQt.timeZone().isValid(),
            "the name of a file elsewhere is that of no zone");
}

// A QDateTime in a zone that does not exist cannot be written.
bool canBeWritten(const QDateTime &moment)
{
    return moment.timeSpec() != Qt::TimeZone || moment.timeZone().isValid();
}

// Whether the zone is at home in a country that there is none of, which Qt keeps.
bool isFromNowhere(const QDateTime &moment)
{
    const int country = moment.timeZone().country();
    return moment.timeSpec() == Qt::TimeZone && (country < 0 || country > QLocale::LastCountry);
}

void checkStream(const QByteArray &bytes, int version)
{
    if (leadsElsewhere(zoneNameIn(bytes, version)))
        return checkZoneElsewhere(bytes, version);
    CDateTime moment;
    QDateTime inQt;
    if (hasUnknownTimeSpec(bytes, version)) {
        require(readFrom(bytes, moment, QDataStream::BigEndian, version) == QDataStream::ReadCorruptData
                    && moment.isNull(),
                "an unknown time spec is corrupt data");
        return;
    }
    const QDataStream::Status status = readFrom(bytes, moment, QDataStream::BigEndian, version);
    require(status == readFrom(bytes, inQt, QDataStream::BigEndian, version),
            "a stream is read as Qt reads it");
    require(moment == inQt && moment.isNull() == inQt.isNull() && moment.timeSpec() == inQt.timeSpec(),
            "what was read is what Qt reads");
    const QByteArray written = streamed(moment, QDataStream::BigEndian, version);
    if (canBeWritten(inQt)) {
        require(isFromNowhere(inQt) || written == streamed(inQt, QDataStream::BigEndian, version),
                "what is written is what Qt writes");
    } else {
        // Without a zone Qt calls midnight of day 0 valid.
        CDateTime again;
        readFrom(written, again, QDataStream::BigEndian, version);
        require(again.isValid() == inQt.isValid() && QDateTime(again).date() == inQt.date(),
                "the date survives a missing zone", QString::number(inQt.date().toJulianDay()));
    }
    checkTexts(moment, Qt::UTC);
    checkPacking(moment, Qt::UTC);
    checkPacking(moment, Qt::LocalTime);
    const CDateTime march(0x07e8030100000000, Qt::UTC);
    checkOrder(moment, march);
    CDateTime moved(moment);
    moved.fromValue(march.toI64(Qt::UTC), Qt::UTC);
    require(moved.timeSpec() == moment.timeSpec() && (!canBeWritten(inQt) || moved == march),
            "the instant is that of the record in any zone");
}

} // namespace

void traverseDateTimes(const QByteArray &input)
{
    InputReader reader(input);
    const qint64 first = qFromLittleEndian(reader.take<qint64>());
    const qint64 second = qFromLittleEndian(reader.take<qint64>());
    bounded(packedLimit, "packed date-times cost the memory of their texts", [&] {
        for (const Qt::TimeSpec spec : specs) {
            for (const qint64 value : {first, second}) {
                checkUnpacking(value, spec);
                checkInstant(value, spec, Qt::UTC);
                checkInstant(value, spec, Qt::LocalTime);
            }
            checkOrder(CDateTime(first, spec), CDateTime(second, Qt::UTC));
            checkBytes(input, spec);
        }
        checkMilliseconds(static_cast<quint64>(first));
    });
    const int version = 1 + reader.takeChoice(QDataStream::Qt_5_15);
    const QByteArray bytes = reader.takeRest();
    // Qt makes room for a block of a time zone's name before it looks whether the stream holds it; there are
    // four readings.
    constexpr std::size_t textBlock = std::size_t{4} << 20;
    bounded(4 * textBlock + 64 * static_cast<std::size_t>(bytes.size()),
            "a stream costs memory in proportion to it", [&] { checkStream(bytes, version); });
}
