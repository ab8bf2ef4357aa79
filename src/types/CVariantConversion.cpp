// SPDX-License-Identifier: MIT
// Which type can be read as which, reading as a number, and conversion in place.
#include <CVariant.h>

#include "CVariantHeld.h"
#include "HeldInPlace.h"
#include "PlainBytes.h"
#include "TypeCatalogue.h"
#include "diagnostics/LogLine.h"

#include <array>
#include <cmath>
#include <initializer_list>
#include <limits>

namespace {

// A set of catalogue tags, one bit each.
using TagSet = quint64;

constexpr TagSet setOf(std::initializer_list<int> tags)
{
    TagSet set = 0;
    for (const int tag : tags)
        set |= TagSet(1) << tag;
    return set;
}

constexpr TagSet rangeOf(int first, int last)
{
    TagSet set = 0;
    for (int tag = first; tag <= last; ++tag)
        set |= TagSet(1) << tag;
    return set;
}

constexpr bool isNumber(qint32 tag)
{
    return tag >= NTypes::E_U8 && tag <= NTypes::E_F64;
}

constexpr TagSet numbers = rangeOf(NTypes::E_U8, NTypes::E_F64);
constexpr TagSet wordRecords =
    setOf({NTypes::E_DATETIME, NTypes::E_VERSION, NTypes::E_IPV4ADDR, NTypes::E_COMMAND});
constexpr TagSet utf16TextSources = rangeOf(NTypes::E_STRING32, NTypes::E_CHARSTR256)
                                    | rangeOf(NTypes::E_STRING64, NTypes::E_CHAR)
                                    | setOf({NTypes::E_BYTEARRAY});
constexpr TagSet eightBitTextSources =
    numbers
    | setOf({NTypes::E_CHARSTR64, NTypes::E_CHARSTR256, NTypes::E_DATETIME, NTypes::E_CHARSTR128,
             NTypes::E_CHAR, NTypes::E_VERSION, NTypes::E_BYTEARRAY, NTypes::E_VERSION_4});

// The sources that a target accepts whatever is held, beside its own type; numbers only as their tags say.
constexpr TagSet sourcesOf(qint32 target)
{
    if (isNumber(target))
        return numbers | wordRecords;
    switch (target) {
    case NTypes::E_STRING32:
    case NTypes::E_STRING64:
    case NTypes::E_STRING128:
    case NTypes::E_UTF16CHAR:
        return utf16TextSources;
    case NTypes::E_CHARSTR64:
    case NTypes::E_CHARSTR128:
    case NTypes::E_CHARSTR256:
    case NTypes::E_CHAR:
        return eightBitTextSources;
    case NTypes::E_DATETIME:
    case NTypes::E_VERSION_4:
        return setOf({NTypes::E_U64, NTypes::E_I64, NTypes::E_BYTEARRAY});
    case NTypes::E_VERSION:
    case NTypes::E_IPV4ADDR:
    case NTypes::E_COMMAND:
        return setOf({NTypes::E_U32, NTypes::E_I32, NTypes::E_BYTEARRAY});
    case NTypes::E_BYTEARRAY:
        return rangeOf(NTypes::E_BYTEARRAY, NTypes::E_DS402_U32_ARRAY);
    case NTypes::E_DS402_ACC_REC:
    case NTypes::E_DS402_I16_ARRAY:
    case NTypes::E_DS402_I32_ARRAY:
    case NTypes::E_DS402_DIO_ARRAY:
    case NTypes::E_DS402_U16_ARRAY:
    case NTypes::E_DS402_U32_ARRAY:
        return setOf({NTypes::E_BYTEARRAY});
    default:
        return 0;
    }
}

constexpr auto makeSourceTable()
{
    std::array<TagSet, TypeCatalogue::lastTag + 1> table{};
    for (std::size_t target = 0; target < table.size(); ++target)
        table[target] = sourcesOf(static_cast<qint32>(target)) | TagSet(1) << target;
    return table;
}

// By target, its own type included.
constexpr auto sourceTable = makeSourceTable();

inline bool isNumberInPlace(const QVariant &value, NTypes::eTypes_t type)
{
    return isNumber(type) && HeldInPlace::holds(value, HeldInPlace::formOf(type));
}

// What a number needs of a byte array: its width, but E_F32 shares the eight bytes of E_F64.
int bytesNeeded(NTypes::eTypes_t number)
{
    return number == NTypes::E_F32 ? 8 : TypeCatalogue::sizeOf(number);
}

// The Qt type that stands for a number when Qt is asked what it can convert. E_U32 asks for float.
int qtTypeAskedFor(NTypes::eTypes_t number)
{
    constexpr int asked[] = {QMetaType::UnknownType, QMetaType::UChar,    QMetaType::SChar,
                             QMetaType::UShort,      QMetaType::Short,    QMetaType::Float,
                             QMetaType::Int,         QMetaType::LongLong, QMetaType::ULongLong,
                             QMetaType::LongLong,    QMetaType::Double};
    return asked[number];
}

bool holdsSmallNumber(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::UChar:
    case QMetaType::Float:
    case QMetaType::SChar:
        return true;
    default:
        return false;
    }
}

// Whether bytes, or a value that is not held as its tag says, can be read as the number. Not inlined: it
// would cost the short way its registers.
Q_NEVER_INLINE bool canBecomeNumber(NTypes::eTypes_t number, NTypes::eTypes_t source, const QVariant &value)
{
    if (source == NTypes::E_BYTEARRAY)
        return value.toByteArray().size() >= bytesNeeded(number);
    return holdsSmallNumber(value) || value.canConvert(qtTypeAskedFor(number));
}

// Low-order bits; floating point is cut toward zero, and gives 0 where the target has no such value.
template<typename Target, typename Source>
Target narrowed(Source source)
{
    if constexpr (std::is_integral<Target>::value && std::is_floating_point<Source>::value) {
        const Source whole = std::trunc(source);
        const Source limit = std::ldexp(Source(1), std::numeric_limits<Target>::digits);
        const Source lowest = std::is_signed<Target>::value ? -limit : Source(0);
        return whole >= lowest && whole < limit ? static_cast<Target>(whole) : Target(0);
    } else {
        return static_cast<Target>(source);
    }
}

// A number that is held as its tag says; what Qt's toUInt(), toInt() ... give.
template<typename Target>
inline Target numberInPlace(const QVariant &value, NTypes::eTypes_t type)
{
    const quint64 bits = HeldInPlace::bitsIn(value, HeldInPlace::formOf(type));
    switch (type) {
    case NTypes::E_U8:
    case NTypes::E_U16:
    case NTypes::E_U32:
        return narrowed<Target>(static_cast<quint32>(bits));
    case NTypes::E_F32:
        return narrowed<Target>(HeldInPlace::valueIn<float>(value));
    case NTypes::E_U64:
        return narrowed<Target>(bits);
    case NTypes::E_F64:
        return narrowed<Target>(HeldInPlace::valueIn<double>(value));
    default:
        return narrowed<Target>(static_cast<qint64>(bits));
    }
}

template<typename Target>
Target leadingBytes(const QByteArray &bytes)
{
    return bytes.size() >= int(sizeof(Target)) ? loadAs<Target>(bytes.constData()) : Target(0);
}

} // namespace

bool CVariant::canConvertTo(NTypes::eTypes_t type) const
{
    const auto target = static_cast<quint32>(type);
    const auto source = static_cast<quint32>(mType);
    if (target >= sourceTable.size() || source >= sourceTable.size())
        return mType == type || (isNumber(type) && canBecomeNumber(type, mType, mValue));
    const bool isListed = ((sourceTable[target] >> source) & 1) != 0;
    if (isNumber(type))
        return isNumberInPlace(mValue, mType) || (isListed && !isNumber(mType)) || mType == type
               || canBecomeNumber(type, mType, mValue);
    // Inverted on purpose: whole pairs are refused.
    if (type == NTypes::E_2DF32F32 && mType == NTypes::E_BYTEARRAY)
        return mValue.toByteArray().size() % 8 != 0;
    return isListed;
}

template<typename T>
Q_ALWAYS_INLINE T CVariant::toNumber(NTypes::eTypes_t target, bool *ok) const
{
    bool read = false;
    T number = 0;
    if (isNumberInPlace(mValue, mType)) {
        number = numberInPlace<T>(mValue, mType);
        read = true;
    } else if (mType < NTypes::E_DS402_ACC_REC && canConvertTo(target)) {
        switch (mType) {
        case NTypes::E_U8:
        case NTypes::E_U16:
        case NTypes::E_U32:
            number = narrowed<T>(mValue.toUInt(&read));
            break;
        case NTypes::E_I8:
        case NTypes::E_I16:
        case NTypes::E_I32:
            number = narrowed<T>(mValue.toInt(&read));
            break;
        case NTypes::E_U64:
            number = narrowed<T>(mValue.toULongLong(&read));
            break;
        case NTypes::E_I64:
            number = narrowed<T>(mValue.toLongLong(&read));
            break;
        case NTypes::E_F32:
            number = narrowed<T>(mValue.toReal(&read));
            break;
        case NTypes::E_F64:
            number = narrowed<T>(mValue.toDouble(&read));
            break;
        case NTypes::E_DATETIME:
            number = narrowed<T>(wordOf(heldAs<NTypes::sDateTime_t>(mValue)));
            read = true;
            break;
        case NTypes::E_VERSION:
            number = narrowed<T>(wordOf(heldAs<NTypes::sVersion_t>(mValue)));
            read = true;
            break;
        case NTypes::E_IPV4ADDR:
            number = narrowed<T>(heldAs<NTypes::uIPv4HAddr_t>(mValue).value);
            read = true;
            break;
        case NTypes::E_COMMAND:
            number = narrowed<T>(heldAs<NTypes::sCommand_t>(mValue).value);
            read = true;
            break;
        case NTypes::E_BYTEARRAY:
            number = leadingBytes<T>(mValue.toByteArray());
            read = true;
            break;
        default:
            break;
        }
    }
    if (ok != nullptr)
        *ok = read;
    return number;
}

unsigned char CVariant::toU8(bool *ok) const
{
    return toNumber<unsigned char>(NTypes::E_U8, ok);
}

signed char CVariant::toI8(bool *ok) const
{
    return toNumber<signed char>(NTypes::E_I8, ok);
}

unsigned short CVariant::toU16(bool *ok) const
{
    return toNumber<unsigned short>(NTypes::E_U16, ok);
}

short CVariant::toI16(bool *ok) const
{
    return toNumber<short>(NTypes::E_I16, ok);
}

unsigned int CVariant::toU32(bool *ok) const
{
    return toNumber<unsigned int>(NTypes::E_U32, ok);
}

int CVariant::toI32(bool *ok) const
{
    return toNumber<int>(NTypes::E_I32, ok);
}

float CVariant::toF32(bool *ok) const
{
    return toNumber<float>(NTypes::E_F32, ok);
}

unsigned long long CVariant::toU64(bool *ok) const
{
    return toNumber<unsigned long long>(NTypes::E_U64, ok);
}

long long CVariant::toI64(bool *ok) const
{
    return toNumber<long long>(NTypes::E_I64, ok);
}

double CVariant::toF64(bool *ok) const
{
    return toNumber<double>(NTypes::E_F64, ok);
}
