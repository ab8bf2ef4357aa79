// SPDX-License-Identifier: MIT
#ifndef DATETIMECASES_H
#define DATETIMECASES_H

#include <CDateTime.h>

#include <LoggedTest.h>
#include <ScopedTimeZone.h>

#include <QTest>
#include <QTimeZone>
#include <QVector>

#include <cstring>
#include <optional>
#include <utility>

// What the tests of the date-time share: zones, one sample moment in its packed shapes, and ways to make and
// compare values.

// Central European time: UTC+1, in summer UTC+2; clocks change at 02:00 and 03:00 on the last Sundays of
// March and October. Southern: UTC-3, in its summer UTC-2; the changes are at midnight.
constexpr char centralEurope[] = "CET-1CEST,M3.5.0,M10.5.0/3";
constexpr char southern[] = "<-03>3<-02>,M10.3.0/0,M2.3.0/0";
constexpr char india[] = "IST-5:30";

// 2021-03-04 05:06:07.89.
constexpr long long sampleWord = 0x07E5030405060759;
constexpr char sampleBytes[] = "590706050403e507";
inline const QDate sampleDate(2021, 3, 4);
inline const QTime sampleTime(5, 6, 7, 890);

// Local time is Central European time, for the rows of data, too: a QDateTime keeps what it once found out
// about its local time.
class DateTimeTest : public LoggedTest
{
protected:
    DateTimeTest() : mZone(std::in_place, centralEurope) {}

    void tidy() override { moveTo(centralEurope); }

    void moveTo(const char *posixZone)
    {
        mZone.reset();
        mZone.emplace(posixZone);
    }

private:
    std::optional<ScopedTimeZone> mZone;
};

inline NTypes::sDateTime_t recordOf(const QByteArray &bytes)
{
    NTypes::sDateTime_t record{};
    Q_ASSERT(bytes.size() == static_cast<int>(sizeof record));
    std::memcpy(&record, bytes.constData(), sizeof record);
    return record;
}

inline QByteArray bytesOf(const NTypes::sDateTime_t &record)
{
    QByteArray bytes(sizeof record, '\0');
    std::memcpy(bytes.data(), &record, sizeof record);
    return bytes;
}

// The 64-bit value by its definition: byte 0 is the lowest eight bits.
inline long long wordOf(const QByteArray &bytes)
{
    quint64 word = 0;
    for (int i = 7; i >= 0; --i)
        word = word << 8 | static_cast<quint8>(bytes[i]);
    return static_cast<long long>(word);
}

inline NTypes::uDateTimeVal_t unionOf(const NTypes::sDateTime_t &record)
{
    NTypes::uDateTimeVal_t value{};
    value.dateTime = record;
    return value;
}

inline QDateTime utc(int year, int month, int day, int hour, int minute, int second = 0, int ms = 0)
{
    return {QDate(year, month, day), QTime(hour, minute, second, ms), Qt::UTC};
}

inline QDateTime local(int year, int month, int day, int hour, int minute, int second = 0, int ms = 0)
{
    return {QDate(year, month, day), QTime(hour, minute, second, ms), Qt::LocalTime};
}

inline CDateTime startedIn(Qt::TimeSpec spec)
{
    CDateTime start;
    start.setTimeSpec(spec);
    return start;
}

// All that a QDateTime is made of; its own == compares the instant alone.
inline bool sameFields(const QDateTime &a, const QDateTime &b)
{
    return a.date() == b.date() && a.time() == b.time() && a.timeSpec() == b.timeSpec()
           && a.offsetFromUtc() == b.offsetFromUtc() && a.isValid() == b.isValid()
           && a.isNull() == b.isNull();
}

#endif // DATETIMECASES_H
