// SPDX-License-Identifier: MIT
// The readers of any value: numbers, records, strings and characters.
#include "ValueChecks.h"

#include <Properties.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

bool isZero(const QByteArray &bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte == '\0'; });
}

// The floating-point value without its fraction; 0 where the type has no such number.
template<typename Number>
Number cut(double value)
{
    const double whole = std::trunc(value);
    const double limit = std::ldexp(1.0, std::numeric_limits<Number>::digits);
    const double lowest = std::is_signed<Number>::value ? -limit : 0.0;
    return whole >= lowest && whole < limit ? static_cast<Number>(whole) : Number(0);
}

// An integer beside the widest number of the value; not every value can be read as that, too.
template<typename Number>
void checkInteger(const CVariant &value, Number number)
{
    bool ok = false;
    const quint64 wide = value.toU64(&ok);
    if (ok && !isFloatingPoint(value.type()))
        require(number == static_cast<Number>(wide), "a number is the low-order bits");
    const double real = value.toF64(&ok);
    if (ok && isFloatingPoint(value.type()))
        require(number == cut<Number>(real), "floating point is cut toward zero or gives 0");
}

template<typename Number>
void checkNumber(const CVariant &value, NTypes::eTypes_t target, Number (CVariant::*reader)(bool *) const)
{
    bool ok = false;
    const Number number = (value.*reader)(&ok);
    require(bytesOf((value.*reader)(nullptr)) == bytesOf(number), "the flag may be null");
    require(bytesOf(value.operator Number()) == bytesOf(number), "operator and reader give the same number");
    require(!ok || value.canConvertTo(target), "only what can be converted is read");
    require(ok || number == Number(0), "what cannot be read is 0");
    if constexpr (std::is_integral<Number>::value) {
        // cppcheck-suppress knownConditionTrueFalse ; the reader sets it
        if (ok)
            checkInteger(value, number);
    }
}

void checkNumbers(const CVariant &value)
{
    checkNumber(value, NTypes::E_U8, &CVariant::toU8);
    checkNumber(value, NTypes::E_I8, &CVariant::toI8);
    checkNumber(value, NTypes::E_U16, &CVariant::toU16);
    checkNumber(value, NTypes::E_I16, &CVariant::toI16);
    checkNumber(value, NTypes::E_U32, &CVariant::toU32);
    checkNumber(value, NTypes::E_I32, &CVariant::toI32);
    checkNumber(value, NTypes::E_F32, &CVariant::toF32);
    checkNumber(value, NTypes::E_U64, &CVariant::toU64);
    checkNumber(value, NTypes::E_I64, &CVariant::toI64);
    checkNumber(value, NTypes::E_F64, &CVariant::toF64);
}

// A reader that gives a record and tells with a flag, and its form that fills one.
template<typename Record>
void checkRecord(const CVariant &value, Record (CVariant::*reader)(bool *) const,
                 bool (CVariant::*fill)(Record &) const, NTypes::eTypes_t target)
{
    bool ok = false;
    const Record record = (value.*reader)(&ok);
    const QByteArray bytes = bytesOf(record);
    const bool isArray = target >= NTypes::E_DS402_I16_ARRAY && target <= NTypes::E_DS402_U32_ARRAY;
    const QByteArray former(int(sizeof(Record)), '\x55');
    auto filled = plainOf<Record>(former);
    require((value.*fill)(filled) == ok, "both forms of a reader succeed alike");
    // cppcheck-suppress knownConditionTrueFalse ; the reader sets it
    require(bytesOf(filled) == (ok || !isArray ? bytes : former),
            "both forms of a reader give the same record, or leave an array as it was");
    require(bytesOf(value.operator Record()) == bytes, "operator and reader give the same record");
    require(ok || isZero(bytes), "what cannot be read is all zero");
    require(!ok || isArray || value.canConvertTo(target), "only what can be converted is read");
    // cppcheck-suppress knownConditionTrueFalse ; the reader sets it
    if (ok && (isArray || value.type() == target))
        require(bytes == value.toByteArray(), "a record is read with all its bytes");
}

// The form that fills the union whose first bytes are the record.
template<typename Union, typename Record>
void checkUnion(const CVariant &value, bool (CVariant::*fill)(Union &) const,
                Record (CVariant::*reader)(bool *) const)
{
    bool ok = false;
    const QByteArray bytes = bytesOf((value.*reader)(&ok));
    Union filled{};
    require((value.*fill)(filled) == ok && bytesOf(filled) == bytes, "a union is read as its record");
    require(bytesOf(value.operator Union()) == bytes, "the union's operator gives the same record");
}

void checkRecords(const CVariant &value)
{
    using namespace NTypes;
    checkRecord<sVersion_t>(value, &CVariant::toVersion, &CVariant::toVersion, E_VERSION);
    checkRecord<sVersion4_t>(value, &CVariant::toVersion4, &CVariant::toVersion4, E_VERSION_4);
    checkRecord<uIPv4HAddr_t>(value, &CVariant::toIPv4Addr, &CVariant::toIPv4Addr, E_IPV4ADDR);
    checkRecord<sCommand_t>(value, &CVariant::toCommand, &CVariant::toCommand, E_COMMAND);
    checkRecord<sDs402Record01_t>(value, &CVariant::toDS402Record01, &CVariant::toDS402Record01,
                                  E_DS402_ACC_REC);
    checkRecord<sDs402Array_t<short>>(value, &CVariant::toDS402Array01, &CVariant::toDS402Array01,
                                      E_DS402_I16_ARRAY);
    checkRecord<sDs402Array_t<int>>(value, &CVariant::toDS402Array02, &CVariant::toDS402Array02,
                                    E_DS402_I32_ARRAY);
    checkRecord<sDs402Array_t<unsigned int>>(value, &CVariant::toDS402Array10, &CVariant::toDS402Array10,
                                             E_DS402_U32_ARRAY);
    checkUnion<uVersion_t, sVersion_t>(value, &CVariant::toVersion, &CVariant::toVersion);
    checkUnion<uVersion4_t, sVersion4_t>(value, &CVariant::toVersion4, &CVariant::toVersion4);
    checkUnion<uCommand_t, sCommand_t>(value, &CVariant::toCommand, &CVariant::toCommand);
}

void checkDateTime(const CVariant &value)
{
    bool ok = false;
    const CDateTime dateTime = value.toDateTime(Qt::UTC, &ok);
    NTypes::sDateTime_t record{};
    require(value.toDateTime(record) == ok, "both forms of a date-time's reader succeed alike");
    require(ok || record == NTypes::sDateTime_t{}, "what cannot be read is all zero");
    require(value.operator NTypes::sDateTime_t() == record, "operator and reader give the same date-time");
    NTypes::uDateTimeVal_t word{};
    require(value.toDateTime(word) == ok && word.dateTime == record, "a date-time's word is its record");
    require(value.operator NTypes::uDateTimeVal_t().value == word.value, "the operator gives the same word");
    require(dateTime == CDateTime(record, Qt::UTC), "the calendar date-time has the record's fields");
    CDateTime local;
    bool localOk = false;
    require(value.toDateTime(local) == ok && value.toDateTime(&localOk) == local && localOk == ok,
            "the local date-time is read alike");
    require(value.operator CDateTime() == local, "the operator gives the local date-time");
}

template<typename String>
void checkString(const CVariant &value, NTypes::eTypes_t target, String (CVariant::*reader)(bool *) const,
                 bool (CVariant::*fill)(String &) const, bool (CVariant::*copy)(unsigned short *) const)
{
    bool ok = false;
    const String string = (value.*reader)(&ok);
    require(ok == value.canConvertTo(target), "a string is read when the type can be converted");
    String filled(QStringLiteral("replaced"));
    require((value.*fill)(filled) == ok && filled == string, "both forms of a string's reader agree");
    require(value.operator String() == string, "operator and reader give the same string");
    require(ok || isZero(string.byteArray()), "what cannot be read is an empty string");
    unsigned short units[String::unitCount];
    require((value.*copy)(units) && String(units) == string, "the units are those of the whole field");
    require(!(value.*copy)(nullptr), "there is no field without a place for it");
}

template<std::size_t N>
void checkCharField(const CVariant &value, NTypes::eTypes_t target, bool (CVariant::*fill)(char (&)[N]) const)
{
    char text[N];
    const bool ok = (value.*fill)(text);
    require(ok == value.canConvertTo(target), "an 8-bit string is read when the type can be converted");
    require(ok || isZero(QByteArray(text, int(N))), "what cannot be read leaves the field all zero");
}

void checkCharacters(const CVariant &value)
{
    bool ok = false;
    const char character = value.toChar(&ok);
    char filled = 'x';
    require(value.toChar(filled) == ok && filled == character, "both forms of a character's reader agree");
    require(value.operator char() == character && (ok || character == '\0'), "no character is 0");
    require(!ok || value.canConvertTo(NTypes::E_CHAR), "only what can be converted is read");
    const QChar unit = value.toUtf16Char(&ok);
    QChar filledUnit(QLatin1Char('x'));
    require(value.toUtf16Char(filledUnit) == ok && filledUnit == unit, "both forms of a unit's reader agree");
    require(value.operator QChar() == unit && (ok || unit.isNull()), "no unit is 0");
    require(!ok || value.canConvertTo(NTypes::E_UTF16CHAR), "only what can be converted is read");
}

} // namespace

void checkReaders(const CVariant &value)
{
    checkNumbers(value);
    checkRecords(value);
    checkDateTime(value);
    checkString<CString32>(value, NTypes::E_STRING32, &CVariant::toString32, &CVariant::toString32,
                           &CVariant::toString32);
    checkString<CString64>(value, NTypes::E_STRING64, &CVariant::toString64, &CVariant::toString64,
                           &CVariant::toString64);
    checkString<CString128>(value, NTypes::E_STRING128, &CVariant::toString128, &CVariant::toString128,
                            &CVariant::toString128);
    checkCharField(value, NTypes::E_CHARSTR64, &CVariant::toCharStr64);
    checkCharField(value, NTypes::E_CHARSTR128, &CVariant::toCharStr128);
    checkCharField(value, NTypes::E_CHARSTR256, &CVariant::toCharStr256);
    checkCharacters(value);
}
