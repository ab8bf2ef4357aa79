// SPDX-License-Identifier: MIT
// How a value is held: construction, assignment, queries and defaults.
#include <CVariant.h>

#include "CVariantHeld.h"
#include "TypeCatalogue.h"
#include "diagnostics/LogLine.h"
#include "text/Utf16Check.h"

#include <algorithm>
#include <utility>

static_assert(sizeof(void *) != 8 || sizeof(CVariant) == 32, "a virtual table, a QVariant and a tag");

namespace {

QByteArray fieldOf(const char *text, int size)
{
    return QByteArray(text, size);
}

QByteArray oneByte(char value)
{
    return QByteArray(1, value);
}

NTypes::sDateTime_t recordOf(const CDateTime &dateTime)
{
    NTypes::sDateTime_t record{};
    dateTime.toDateTime(record, dateTime.timeSpec());
    return record;
}

NTypes::uIPv4HAddr_t addressOf(const QHostAddress &address)
{
    return NTypes::uIPv4HAddr_t{address.toIPv4Address()};
}

// The default of a record is all zero but for the DS402 types, whose leading field is 2.
template<typename Record>
Record defaultRecord()
{
    return Record{};
}

template<>
NTypes::sDs402Record01_t defaultRecord()
{
    return {2, 0.0F, 0};
}

template<>
NTypes::sDs402Array_t<qint16> defaultRecord()
{
    return {{2, 0, 0}};
}

template<>
NTypes::sDs402Array_t<qint32> defaultRecord()
{
    return {{2, 0, 0}};
}

template<>
NTypes::sDs402Array_t<quint16> defaultRecord()
{
    return {{2, 0, 0}};
}

template<>
NTypes::sDs402Array_t<quint32> defaultRecord()
{
    return {{2, 0, 0}};
}

// Not inlined: numbers need none of it.
Q_NEVER_INLINE void forgetFixedString(QVariant &value, NTypes::eTypes_t type)
{
    visitFixedString(type, [&](auto held) { HeldShared::forget<typename decltype(held)::Type>(value); });
}

} // namespace

// Empties the QVariant of what others hold, too, and of what Qt would look up; the rest is left to Qt.
inline void CVariant::forgetHeld()
{
    if (!HeldShared::isShared(mValue))
        HeldInPlace::forget(mValue, mType);
    else if (!HeldShared::leave(mValue))
        forgetFixedString(mValue, mType);
}

CVariant::CVariant(const CVariant &other) : mType(other.mType)
{
    HeldInPlace::copy(other.mValue, mType, mValue);
}

CVariant::CVariant(CVariant &&other) noexcept
    : mValue(std::move(other.mValue)), mType(std::exchange(other.mType, NTypes::E_UNKNOWN))
{}

CVariant &CVariant::operator=(const CVariant &other)
{
    return *this = CVariant(other);
}

CVariant &CVariant::operator=(CVariant &&other) noexcept
{
    mValue.swap(other.mValue);
    std::swap(mType, other.mType);
    return *this;
}

CVariant::~CVariant()
{
    if (HeldInPlace::holds(mValue, HeldInPlace::formOf(mType)))
        return;
    forgetHeld();
    if (!HeldInPlace::isEmpty(mValue))
        mValue.~QVariant();
}

CVariant::CVariant(signed char value)
{
    assign(value, NTypes::E_I8);
}

CVariant::CVariant(unsigned char value)
{
    assign(value, NTypes::E_U8);
}

CVariant::CVariant(short value)
{
    assign(value, NTypes::E_I16);
}

CVariant::CVariant(unsigned short value)
{
    assign(value, NTypes::E_U16);
}

CVariant::CVariant(int value)
{
    assign(value, NTypes::E_I32);
}

CVariant::CVariant(unsigned int value)
{
    assign(value, NTypes::E_U32);
}

CVariant::CVariant(float value)
{
    assign(value, NTypes::E_F32);
}

CVariant::CVariant(long long value)
{
    assign(value, NTypes::E_I64);
}

CVariant::CVariant(unsigned long long value)
{
    assign(value, NTypes::E_U64);
}

CVariant::CVariant(double value)
{
    assign(value, NTypes::E_F64);
}

CVariant::CVariant(QChar value)
{
    assign(value, NTypes::E_UTF16CHAR);
}

CVariant::CVariant(char value)
{
    assign(oneByte(value), NTypes::E_CHAR);
}

CVariant::CVariant(const char (&text)[64])
{
    assign(fieldOf(text, 64), NTypes::E_CHARSTR64);
}

CVariant::CVariant(const char (&text)[128])
{
    assign(fieldOf(text, 128), NTypes::E_CHARSTR128);
}

CVariant::CVariant(const char (&text)[256])
{
    assign(fieldOf(text, 256), NTypes::E_CHARSTR256);
}

CVariant::CVariant(const unsigned short (&units)[32])
{
    assign(CString32(units), NTypes::E_STRING32);
}

CVariant::CVariant(const unsigned short (&units)[64])
{
    assign(CString64(units), NTypes::E_STRING64);
}

CVariant::CVariant(const unsigned short (&units)[128])
{
    assign(CString128(units), NTypes::E_STRING128);
}

CVariant::CVariant(const CString32 &value)
{
    assign(value, NTypes::E_STRING32);
}

CVariant::CVariant(const CString64 &value)
{
    assign(value, NTypes::E_STRING64);
}

CVariant::CVariant(const CString128 &value)
{
    assign(value, NTypes::E_STRING128);
}

CVariant::CVariant(const NTypes::sDateTime_t &value)
{
    assign(value, NTypes::E_DATETIME);
}

CVariant::CVariant(const NTypes::uDateTimeVal_t &value)
{
    assign(value.dateTime, NTypes::E_DATETIME);
}

CVariant::CVariant(const CDateTime &value)
{
    assign(recordOf(value), NTypes::E_DATETIME);
}

CVariant::CVariant(const QDateTime &value)
{
    assign(recordOf(CDateTime(value)), NTypes::E_DATETIME);
}

CVariant::CVariant(const NTypes::sVersion_t &value)
{
    assign(value, NTypes::E_VERSION);
}

CVariant::CVariant(const NTypes::uVersion_t &value)
{
    assign(value.version, NTypes::E_VERSION);
}

CVariant::CVariant(const NTypes::sVersion4_t &value)
{
    assign(value, NTypes::E_VERSION_4);
}

CVariant::CVariant(const NTypes::uVersion4_t &value)
{
    assign(value.version, NTypes::E_VERSION_4);
}

CVariant::CVariant(const NTypes::uIPv4HAddr_t &value)
{
    assign(value, NTypes::E_IPV4ADDR);
}

CVariant::CVariant(const QHostAddress &value)
{
    assign(addressOf(value), NTypes::E_IPV4ADDR);
}

CVariant::CVariant(const NTypes::sCommand_t &value)
{
    assign(value, NTypes::E_COMMAND);
}

CVariant::CVariant(const NTypes::uCommand_t &value)
{
    assign(value.command, NTypes::E_COMMAND);
}

CVariant::CVariant(const NTypes::sDs402Record01_t &value)
{
    assign(value, NTypes::E_DS402_ACC_REC);
}

CVariant::CVariant(const NTypes::sDs402Array_t<short> &value)
{
    assign(value, NTypes::E_DS402_I16_ARRAY);
}

CVariant::CVariant(const NTypes::sDs402Array_t<int> &value)
{
    assign(value, NTypes::E_DS402_I32_ARRAY);
}

CVariant::CVariant(const NTypes::sDs402Array_t<unsigned short> &value)
{
    assign(value, NTypes::E_DS402_U16_ARRAY);
}

CVariant::CVariant(const NTypes::sDs402Array_t<unsigned int> &value)
{
    assign(value, NTypes::E_DS402_U32_ARRAY);
}

CVariant::CVariant(NTypes::eTypes_t type)
{
    if (type >= NTypes::E_UNKNOWN && type <= NTypes::E_VERSION_4)
        setDefaultValue(type);
}

CVariant &CVariant::operator=(signed char value)
{
    return assign(value, NTypes::E_I8);
}

CVariant &CVariant::operator=(unsigned char value)
{
    return assign(value, NTypes::E_U8);
}

CVariant &CVariant::operator=(short value)
{
    return assign(value, NTypes::E_I16);
}

CVariant &CVariant::operator=(unsigned short value)
{
    return assign(value, NTypes::E_U16);
}

CVariant &CVariant::operator=(int value)
{
    return assign(value, NTypes::E_I32);
}

CVariant &CVariant::operator=(unsigned int value)
{
    return assign(value, NTypes::E_U32);
}

CVariant &CVariant::operator=(float value)
{
    return assign(value, NTypes::E_F32);
}

CVariant &CVariant::operator=(long long value)
{
    return assign(value, NTypes::E_I64);
}

CVariant &CVariant::operator=(unsigned long long value)
{
    return assign(value, NTypes::E_U64);
}

CVariant &CVariant::operator=(double value)
{
    return assign(value, NTypes::E_F64);
}

CVariant &CVariant::operator=(const QChar &value)
{
    return assign(value, NTypes::E_UTF16CHAR);
}

CVariant &CVariant::operator=(char value)
{
    return assign(oneByte(value), NTypes::E_CHAR);
}

CVariant &CVariant::operator=(const char (&text)[64])
{
    return assign(fieldOf(text, 64), NTypes::E_CHARSTR64);
}

CVariant &CVariant::operator=(const char (&text)[128])
{
    return assign(fieldOf(text, 128), NTypes::E_CHARSTR128);
}

CVariant &CVariant::operator=(const char (&text)[256])
{
    return assign(fieldOf(text, 256), NTypes::E_CHARSTR256);
}

CVariant &CVariant::operator=(const unsigned short (&units)[32])
{
    return assign(CString32(units), NTypes::E_STRING32);
}

CVariant &CVariant::operator=(const unsigned short (&units)[64])
{
    return assign(CString64(units), NTypes::E_STRING64);
}

CVariant &CVariant::operator=(const unsigned short (&units)[128])
{
    return assign(CString128(units), NTypes::E_STRING128);
}

CVariant &CVariant::operator=(const CString32 &value)
{
    return assign(value, NTypes::E_STRING32);
}

CVariant &CVariant::operator=(const CString64 &value)
{
    return assign(value, NTypes::E_STRING64);
}

CVariant &CVariant::operator=(const CString128 &value)
{
    return assign(value, NTypes::E_STRING128);
}

CVariant &CVariant::operator=(const NTypes::sDateTime_t &value)
{
    return assign(value, NTypes::E_DATETIME);
}

CVariant &CVariant::operator=(const CDateTime &value)
{
    return assign(recordOf(value), NTypes::E_DATETIME);
}

CVariant &CVariant::operator=(const QDateTime &value)
{
    return assign(recordOf(CDateTime(value)), NTypes::E_DATETIME);
}

CVariant &CVariant::operator=(const NTypes::sVersion_t &value)
{
    return assign(value, NTypes::E_VERSION);
}

CVariant &CVariant::operator=(const NTypes::uVersion_t &value)
{
    return assign(value.version, NTypes::E_VERSION);
}

CVariant &CVariant::operator=(const NTypes::sVersion4_t &value)
{
    return assign(value, NTypes::E_VERSION_4);
}

CVariant &CVariant::operator=(const NTypes::uVersion4_t &value)
{
    return assign(value.version, NTypes::E_VERSION_4);
}

CVariant &CVariant::operator=(const NTypes::uIPv4HAddr_t &value)
{
    return assign(value, NTypes::E_IPV4ADDR);
}

CVariant &CVariant::operator=(const NTypes::sCommand_t &value)
{
    return assign(value, NTypes::E_COMMAND);
}

CVariant &CVariant::operator=(const NTypes::uCommand_t &value)
{
    return assign(value.command, NTypes::E_COMMAND);
}

CVariant &CVariant::operator=(const NTypes::sDs402Record01_t &value)
{
    return assign(value, NTypes::E_DS402_ACC_REC);
}

CVariant &CVariant::operator=(const NTypes::sDs402Array_t<short> &value)
{
    return assign(value, NTypes::E_DS402_I16_ARRAY);
}

CVariant &CVariant::operator=(const NTypes::sDs402Array_t<int> &value)
{
    return assign(value, NTypes::E_DS402_I32_ARRAY);
}

CVariant &CVariant::operator=(const NTypes::sDs402Array_t<unsigned short> &value)
{
    return assign(value, NTypes::E_DS402_U16_ARRAY);
}

CVariant &CVariant::operator=(const NTypes::sDs402Array_t<unsigned int> &value)
{
    return assign(value, NTypes::E_DS402_U32_ARRAY);
}

unsigned short CVariant::typeSize() const
{
    return TypeCatalogue::sizeOf(mType);
}

unsigned int CVariant::size() const
{
    if (!TypeCatalogue::contains(mType)) {
        logWarning(QStringLiteral("CVariant::size() : Data type '%1' is not supported.").arg(mType));
        return 0;
    }
    switch (mType) {
    case NTypes::E_UNKNOWN:
        return 0;
    case NTypes::E_2DF32F32:
    case NTypes::E_BYTEARRAY:
        return static_cast<unsigned int>(mValue.toByteArray().size());
    default:
        break;
    }
    if (mType > NTypes::E_F64)
        return typeSize();
    // The decimal text of a number may be longer than the number; callers size text buffers with it.
    return std::max(static_cast<unsigned int>(mValue.toByteArray().size()),
                    static_cast<unsigned int>(typeSize()));
}

bool CVariant::isNull() const
{
    return mValue.isNull() || mType == NTypes::E_UNKNOWN;
}

bool CVariant::isValid() const
{
    if (mType == NTypes::E_UNKNOWN)
        return false;
    bool valid = mValue.isValid();
    visitFixedString(mType, [&](auto held) {
        using String = typename decltype(held)::Type;
        valid = valid && isUtf16(heldAs<String>(mValue).byteArray());
    });
    return valid;
}

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): called on values, as the other queries
bool CVariant::isUTF16(const QByteArray &bytes) const
{
    return isUtf16(bytes);
}

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): called on values, as the other queries
QVariant CVariant::defaultValue(NTypes::eTypes_t type) const
{
    QVariant value;
    const auto takeDefault = [&](auto held) {
        using Type = typename decltype(held)::Type;
        value = heldWidened(defaultRecord<Type>());
    };
    if (visitPlain(type, takeDefault))
        return value;
    if (visitFixedString(type, [&](auto held) { value.setValue(typename decltype(held)::Type()); }))
        return value;
    if (isCharField(type) || type == NTypes::E_CHAR)
        return QByteArray(TypeCatalogue::sizeOf(type), '\0');
    if (type == NTypes::E_UTF16CHAR)
        return QChar(0);
    return value;
}

CVariant &CVariant::setDefaultValue(NTypes::eTypes_t type)
{
    mType = type;
    // Not isNull(): the character U+0000 is a default although Qt calls it null.
    const QVariant value = defaultValue(type);
    if (value.isValid())
        mValue = value;
    return *this;
}

void CVariant::clear()
{
    forgetHeld();
    mValue.clear();
    mType = NTypes::E_UNKNOWN;
}
