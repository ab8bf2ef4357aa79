// SPDX-License-Identifier: MIT
#include <NTypes.h>

#include "MetaTypeRegistration.h"
#include "PlainBytes.h"

namespace NTypes {

bool operator==(const sVersion_t &a, const sVersion_t &b)
{
    return wordOf(a) == wordOf(b);
}

bool operator==(const sVersion4_t &a, const sVersion4_t &b)
{
    return wordOf(a) == wordOf(b);
}

bool operator==(const sVersion4x8_t &a, const sVersion4x8_t &b)
{
    return wordOf(a) == wordOf(b);
}

bool operator==(const uIPv4HAddr_t &a, const uIPv4HAddr_t &b)
{
    return a.value == b.value;
}

bool operator==(const sCommand_t &a, const sCommand_t &b)
{
    return a.value == b.value;
}

bool operator==(const sTime_t &a, const sTime_t &b)
{
    return wordOf(a) == wordOf(b);
}

bool operator==(const sDate_t &a, const sDate_t &b)
{
    return wordOf(a) == wordOf(b);
}

bool operator==(const sDateTime_t &a, const sDateTime_t &b)
{
    return wordOf(a) == wordOf(b);
}

bool operator==(const sDs402Record01_t &a, const sDs402Record01_t &b)
{
    // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison): packed; the float is compared by its bits.
    return std::memcmp(&a, &b, sizeof a) == 0;
}

bool operator<(const sVersion_t &a, const sVersion_t &b)
{
    return wordOf(a) < wordOf(b);
}

bool operator<(const sVersion4_t &a, const sVersion4_t &b)
{
    return wordOf(a) < wordOf(b);
}

bool operator<(const uIPv4HAddr_t &a, const uIPv4HAddr_t &b)
{
    return a.value < b.value;
}

bool operator<(const sCommand_t &a, const sCommand_t &b)
{
    return a.value < b.value;
}

bool operator<(const sDateTime_t &a, const sDateTime_t &b)
{
    // The year, month, day, hour ... lie in descending weight; as a signed word the year keeps its sign.
    return static_cast<qint64>(wordOf(a)) < static_cast<qint64>(wordOf(b));
}

QDataStream &operator<<(QDataStream &stream, const sVersion_t &version)
{
    return stream << version.build << version.minor << version.major;
}

QDataStream &operator>>(QDataStream &stream, sVersion_t &version)
{
    return stream >> version.build >> version.minor >> version.major;
}

QDataStream &operator<<(QDataStream &stream, const sVersion4_t &version)
{
    return stream << version.fourth << version.third << version.second << version.first;
}

QDataStream &operator>>(QDataStream &stream, sVersion4_t &version)
{
    return stream >> version.fourth >> version.third >> version.second >> version.first;
}

QDataStream &operator<<(QDataStream &stream, const sVersion4x8_t &version)
{
    return stream << version.fourth << version.third << version.second << version.first;
}

QDataStream &operator>>(QDataStream &stream, sVersion4x8_t &version)
{
    return stream >> version.fourth >> version.third >> version.second >> version.first;
}

QDataStream &operator<<(QDataStream &stream, const uIPv4HAddr_t &address)
{
    return stream << address.value;
}

QDataStream &operator>>(QDataStream &stream, uIPv4HAddr_t &address)
{
    return stream >> address.value;
}

QDataStream &operator<<(QDataStream &stream, const sCommand_t &command)
{
    return stream << command.value;
}

QDataStream &operator>>(QDataStream &stream, sCommand_t &command)
{
    return stream >> command.value;
}

QDataStream &operator<<(QDataStream &stream, const sTime_t &time)
{
    return stream << time.hundredths << time.second << time.minute << time.hour;
}

QDataStream &operator>>(QDataStream &stream, sTime_t &time)
{
    return stream >> time.hundredths >> time.second >> time.minute >> time.hour;
}

QDataStream &operator<<(QDataStream &stream, const sDate_t &date)
{
    return stream << date.day << date.month << date.year;
}

QDataStream &operator>>(QDataStream &stream, sDate_t &date)
{
    return stream >> date.day >> date.month >> date.year;
}

QDataStream &operator<<(QDataStream &stream, const sDateTime_t &dateTime)
{
    return stream << dateTime.time << dateTime.date;
}

QDataStream &operator>>(QDataStream &stream, sDateTime_t &dateTime)
{
    return stream >> dateTime.time >> dateTime.date;
}

QDataStream &operator<<(QDataStream &stream, const sDs402Record01_t &record)
{
    const float value = record.value;
    return stream << record.head << bitsOf<quint32>(value) << quint16(record.tail);
}

QDataStream &operator>>(QDataStream &stream, sDs402Record01_t &record)
{
    // Through locals: the packed fields are not aligned.
    quint8 head = 0;
    quint32 valueBits = 0;
    quint16 tail = 0;
    stream >> head >> valueBits >> tail;
    record.head = head;
    record.value = bitsOf<float>(valueBits);
    record.tail = tail;
    return stream;
}

} // namespace NTypes

namespace {

bool registerRecordTypes()
{
    registerOrderedType<NTypes::sVersion_t>();
    registerOrderedType<NTypes::sVersion4_t>();
    registerOrderedType<NTypes::uIPv4HAddr_t>();
    registerOrderedType<NTypes::sCommand_t>();
    registerOrderedType<NTypes::sDateTime_t>();
    registerComparedType<NTypes::sDs402Record01_t>();
    registerComparedType<NTypes::sDs402Array_t<int16_t>>();
    registerComparedType<NTypes::sDs402Array_t<int32_t>>();
    registerComparedType<NTypes::sDs402Array_t<uint16_t>>();
    registerComparedType<NTypes::sDs402Array_t<uint32_t>>();
    return true;
}

const bool registeredAtLoad = registerRecordTypes();

} // namespace
