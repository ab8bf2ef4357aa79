// SPDX-License-Identifier: MIT
// Reading a value as a record, a fixed string or a character.
#include <CVariant.h>

#include "CVariantHeld.h"
#include "PlainBytes.h"
#include "TypeCatalogue.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

// The reading form with a flag, from the form that fills an argument.
template<typename Value, typename Read>
Value readOrDefault(bool *ok, Read read)
{
    Value value{};
    const bool success = read(value);
    if (ok != nullptr)
        *ok = success;
    return value;
}

// A union is read as its record.
template<typename Union, typename Record>
bool readUnion(const CVariant &variant, bool (CVariant::*read)(Record &) const, Union &value,
               Record Union::*view)
{
    Record record{};
    const bool success = (variant.*read)(record);
    value.*view = record;
    return success;
}

// The CiA 402 arrays are told by their size alone.
template<typename Array>
bool readArray(const CVariant &variant, Array &array)
{
    const QByteArray bytes = variant.toByteArray();
    if (bytes.size() != int(sizeof(Array)))
        return false;
    array = loadAs<Array>(bytes.constData());
    return true;
}

template<typename Record>
bool fromWord(quint64 word, bool read, Record &record)
{
    using Word = decltype(wordOf(record));
    if (read)
        record = bitsOf<Record>(static_cast<Word>(word));
    return read;
}

} // namespace

template<typename Record>
bool CVariant::readRecord(Record &record, NTypes::eTypes_t target) const
{
    record = Record{};
    if (!canConvertTo(target))
        return false;
    if (mType == target) {
        // Another value than the tag says may be held, or none.
        const bool held = givesType<Record>(mValue);
        if (held)
            record = heldAs<Record>(mValue);
        return held;
    }
    if (mType == NTypes::E_BYTEARRAY) {
        const QByteArray bytes = mValue.toByteArray();
        const bool enough = bytes.size() >= int(sizeof(Record));
        if (enough)
            record = loadAs<Record>(bytes.constData());
        return enough;
    }
    if constexpr (sizeof(Record) == 4 || sizeof(Record) == 8) {
        // The integers of the record's size are all that the matrix lets through.
        bool read = false;
        const quint64 word = toU64(&read);
        return fromWord(word, read, record);
    }
    return false;
}

bool CVariant::toVersion(NTypes::sVersion_t &value) const
{
    return readRecord(value, NTypes::E_VERSION);
}

bool CVariant::toVersion(NTypes::uVersion_t &value) const
{
    return readUnion(*this, &CVariant::toVersion, value, &NTypes::uVersion_t::version);
}

NTypes::sVersion_t CVariant::toVersion(bool *ok) const
{
    return readOrDefault<NTypes::sVersion_t>(ok, [this](auto &value) { return toVersion(value); });
}

bool CVariant::toVersion4(NTypes::sVersion4_t &value) const
{
    return readRecord(value, NTypes::E_VERSION_4);
}

bool CVariant::toVersion4(NTypes::uVersion4_t &value) const
{
    return readUnion(*this, &CVariant::toVersion4, value, &NTypes::uVersion4_t::version);
}

NTypes::sVersion4_t CVariant::toVersion4(bool *ok) const
{
    return readOrDefault<NTypes::sVersion4_t>(ok, [this](auto &value) { return toVersion4(value); });
}

bool CVariant::toIPv4Addr(NTypes::uIPv4HAddr_t &value) const
{
    return readRecord(value, NTypes::E_IPV4ADDR);
}

NTypes::uIPv4HAddr_t CVariant::toIPv4Addr(bool *ok) const
{
    return readOrDefault<NTypes::uIPv4HAddr_t>(ok, [this](auto &value) { return toIPv4Addr(value); });
}

bool CVariant::toCommand(NTypes::sCommand_t &value) const
{
    return readRecord(value, NTypes::E_COMMAND);
}

bool CVariant::toCommand(NTypes::uCommand_t &value) const
{
    return readUnion(*this, &CVariant::toCommand, value, &NTypes::uCommand_t::command);
}

NTypes::sCommand_t CVariant::toCommand(bool *ok) const
{
    return readOrDefault<NTypes::sCommand_t>(ok, [this](auto &value) { return toCommand(value); });
}

bool CVariant::toDS402Record01(NTypes::sDs402Record01_t &value) const
{
    return readRecord(value, NTypes::E_DS402_ACC_REC);
}

NTypes::sDs402Record01_t CVariant::toDS402Record01(bool *ok) const
{
    return readOrDefault<NTypes::sDs402Record01_t>(ok,
                                                   [this](auto &value) { return toDS402Record01(value); });
}

bool CVariant::toDS402Array01(NTypes::sDs402Array_t<short> &value) const
{
    return readArray(*this, value);
}

NTypes::sDs402Array_t<short> CVariant::toDS402Array01(bool *ok) const
{
    return readOrDefault<NTypes::sDs402Array_t<short>>(ok,
                                                       [this](auto &value) { return toDS402Array01(value); });
}

bool CVariant::toDS402Array02(NTypes::sDs402Array_t<int> &value) const
{
    return readArray(*this, value);
}

NTypes::sDs402Array_t<int> CVariant::toDS402Array02(bool *ok) const
{
    return readOrDefault<NTypes::sDs402Array_t<int>>(ok,
                                                     [this](auto &value) { return toDS402Array02(value); });
}

bool CVariant::toDS402Array10(NTypes::sDs402Array_t<unsigned int> &value) const
{
    return readArray(*this, value);
}

NTypes::sDs402Array_t<unsigned int> CVariant::toDS402Array10(bool *ok) const
{
    return readOrDefault<NTypes::sDs402Array_t<unsigned int>>(
        ok, [this](auto &value) { return toDS402Array10(value); });
}

bool CVariant::toDateTime(NTypes::sDateTime_t &value) const
{
    return readRecord(value, NTypes::E_DATETIME);
}

bool CVariant::toDateTime(NTypes::uDateTimeVal_t &value) const
{
    return readUnion(*this, &CVariant::toDateTime, value, &NTypes::uDateTimeVal_t::dateTime);
}

bool CVariant::toDateTime(CDateTime &value) const
{
    bool ok = false;
    value = toDateTime(&ok);
    return ok;
}

CDateTime CVariant::toDateTime(bool *ok) const
{
    return toDateTime(Qt::LocalTime, ok);
}

CDateTime CVariant::toDateTime(Qt::TimeSpec spec, bool *ok) const
{
    const auto record =
        readOrDefault<NTypes::sDateTime_t>(ok, [this](auto &value) { return toDateTime(value); });
    return CDateTime(record, spec);
}

CVariant::operator NTypes::uVersion_t() const
{
    return readOrDefault<NTypes::uVersion_t>(nullptr, [this](auto &value) { return toVersion(value); });
}

CVariant::operator NTypes::uVersion4_t() const
{
    return readOrDefault<NTypes::uVersion4_t>(nullptr, [this](auto &value) { return toVersion4(value); });
}

CVariant::operator NTypes::uCommand_t() const
{
    return readOrDefault<NTypes::uCommand_t>(nullptr, [this](auto &value) { return toCommand(value); });
}

CVariant::operator NTypes::sDs402Array_t<unsigned short>() const
{
    return readOrDefault<NTypes::sDs402Array_t<unsigned short>>(
        nullptr, [this](auto &value) { return readArray(*this, value); });
}

CVariant::operator NTypes::sDateTime_t() const
{
    return readOrDefault<NTypes::sDateTime_t>(nullptr, [this](auto &value) { return toDateTime(value); });
}

CVariant::operator NTypes::uDateTimeVal_t() const
{
    return readOrDefault<NTypes::uDateTimeVal_t>(nullptr, [this](auto &value) { return toDateTime(value); });
}

template<typename FixedString>
bool CVariant::readFixedString(FixedString &string, NTypes::eTypes_t target) const
{
    string = FixedString();
    if (!canConvertTo(target))
        return false;
    if (mType == target && mValue.userType() == qMetaTypeId<FixedString>())
        string = heldAs<FixedString>(mValue);
    else
        string = toStr();
    return true;
}

bool CVariant::toString32(CString32 &value) const
{
    return readFixedString(value, NTypes::E_STRING32);
}

bool CVariant::toString64(CString64 &value) const
{
    return readFixedString(value, NTypes::E_STRING64);
}

bool CVariant::toString128(CString128 &value) const
{
    return readFixedString(value, NTypes::E_STRING128);
}

CString32 CVariant::toString32(bool *ok) const
{
    return readOrDefault<CString32>(ok, [this](auto &value) { return toString32(value); });
}

CString64 CVariant::toString64(bool *ok) const
{
    return readOrDefault<CString64>(ok, [this](auto &value) { return toString64(value); });
}

CString128 CVariant::toString128(bool *ok) const
{
    return readOrDefault<CString128>(ok, [this](auto &value) { return toString128(value); });
}

bool CVariant::toString32(unsigned short *units) const
{
    return toString32().string32(units);
}

bool CVariant::toString64(unsigned short *units) const
{
    return toString64().string64(units);
}

bool CVariant::toString128(unsigned short *units) const
{
    return toString128().string128(units);
}

// The 8-bit text of every source that the matrix accepts: held bytes as they are, all else as its Latin-1
// text.
bool CVariant::readEightBitText(QByteArray &text, NTypes::eTypes_t target) const
{
    text.clear();
    if (!canConvertTo(target))
        return false;
    const bool isBytes = mValue.userType() == QMetaType::QByteArray;
    text = isBytes ? mValue.toByteArray() : toStr().toLatin1();
    return true;
}

template<std::size_t N>
bool CVariant::readCharField(char (&text)[N], NTypes::eTypes_t target) const
{
    QByteArray bytes;
    const bool read = readEightBitText(bytes, target);
    std::fill(std::begin(text), std::end(text), '\0');
    std::copy_n(bytes.constData(), std::min(bytes.size(), int(N)), text);
    return read;
}

bool CVariant::toCharStr64(char (&text)[64]) const
{
    return readCharField(text, NTypes::E_CHARSTR64);
}

bool CVariant::toCharStr128(char (&text)[128]) const
{
    return readCharField(text, NTypes::E_CHARSTR128);
}

bool CVariant::toCharStr256(char (&text)[256]) const
{
    return readCharField(text, NTypes::E_CHARSTR256);
}

bool CVariant::toChar(char &value) const
{
    QByteArray text;
    const bool read =
        readEightBitText(text, NTypes::E_CHAR) && !(mType == NTypes::E_BYTEARRAY && text.isEmpty());
    value = text.isEmpty() ? '\0' : text.at(0);
    return read;
}

char CVariant::toChar(bool *ok) const
{
    return readOrDefault<char>(ok, [this](auto &value) { return toChar(value); });
}

bool CVariant::toUtf16Char(QChar &value) const
{
    value = QChar();
    if (!canConvertTo(NTypes::E_UTF16CHAR))
        return false;
    if (mType == NTypes::E_BYTEARRAY) {
        const QByteArray bytes = mValue.toByteArray();
        const bool enough = bytes.size() >= 2;
        if (enough)
            value = QChar(loadAs<quint16>(bytes.constData()));
        return enough;
    }
    if (mType == NTypes::E_UTF16CHAR) {
        value = mValue.toChar();
    } else {
        const QString text = toStr();
        value = text.isEmpty() ? QChar() : text.at(0);
    }
    return true;
}

QChar CVariant::toUtf16Char(bool *ok) const
{
    return readOrDefault<QChar>(ok, [this](auto &value) { return toUtf16Char(value); });
}
