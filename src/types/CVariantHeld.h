// SPDX-License-Identifier: MIT
#ifndef CVARIANTHELD_H
#define CVARIANTHELD_H

#include <CVariant.h>

#include "HeldShared.h"
#include "HeldValue.h"

#include <QVariant>

#include <type_traits>

// Which C++ type stands behind a tag, told once. The visitors call `visit` with a HeldType of it and return
// true, or return false for a tag of another class; what differs between classes is the visitor's overload or
// `if constexpr`.

template<typename T>
struct HeldType
{
    using Type = T;
};

template<typename Visit>
bool visitNumber(NTypes::eTypes_t tag, Visit &&visit)
{
    switch (tag) {
    case NTypes::E_U8:
        visit(HeldType<quint8>());
        return true;
    case NTypes::E_I8:
        visit(HeldType<qint8>());
        return true;
    case NTypes::E_U16:
        visit(HeldType<quint16>());
        return true;
    case NTypes::E_I16:
        visit(HeldType<qint16>());
        return true;
    case NTypes::E_U32:
        visit(HeldType<quint32>());
        return true;
    case NTypes::E_I32:
        visit(HeldType<qint32>());
        return true;
    case NTypes::E_F32:
        visit(HeldType<float>());
        return true;
    case NTypes::E_U64:
        visit(HeldType<qulonglong>());
        return true;
    case NTypes::E_I64:
        visit(HeldType<qlonglong>());
        return true;
    case NTypes::E_F64:
        visit(HeldType<double>());
        return true;
    default:
        return false;
    }
}

template<typename Visit>
bool visitRecord(NTypes::eTypes_t tag, Visit &&visit)
{
    switch (tag) {
    case NTypes::E_DATETIME:
        visit(HeldType<NTypes::sDateTime_t>());
        return true;
    case NTypes::E_VERSION:
        visit(HeldType<NTypes::sVersion_t>());
        return true;
    case NTypes::E_IPV4ADDR:
        visit(HeldType<NTypes::uIPv4HAddr_t>());
        return true;
    case NTypes::E_COMMAND:
        visit(HeldType<NTypes::sCommand_t>());
        return true;
    case NTypes::E_DS402_ACC_REC:
        visit(HeldType<NTypes::sDs402Record01_t>());
        return true;
    case NTypes::E_DS402_I16_ARRAY:
        visit(HeldType<NTypes::sDs402Array_t<qint16>>());
        return true;
    case NTypes::E_DS402_I32_ARRAY:
        visit(HeldType<NTypes::sDs402Array_t<qint32>>());
        return true;
    case NTypes::E_DS402_U16_ARRAY:
        visit(HeldType<NTypes::sDs402Array_t<quint16>>());
        return true;
    case NTypes::E_DS402_DIO_ARRAY:
    case NTypes::E_DS402_U32_ARRAY:
        visit(HeldType<NTypes::sDs402Array_t<quint32>>());
        return true;
    case NTypes::E_VERSION_4:
        visit(HeldType<NTypes::sVersion4_t>());
        return true;
    default:
        return false;
    }
}

// Numbers and records: the types whose memory is the parameter's raw form.
template<typename Visit>
bool visitPlain(NTypes::eTypes_t tag, Visit &&visit)
{
    return visitNumber(tag, visit) || visitRecord(tag, visit);
}

template<typename Visit>
bool visitFixedString(NTypes::eTypes_t tag, Visit &&visit)
{
    switch (tag) {
    case NTypes::E_STRING32:
        visit(HeldType<CString32>());
        return true;
    case NTypes::E_STRING64:
        visit(HeldType<CString64>());
        return true;
    case NTypes::E_STRING128:
        visit(HeldType<CString128>());
        return true;
    default:
        return false;
    }
}

// The fixed 8-bit character strings; their length in bytes is the catalogue size.
constexpr bool isCharField(NTypes::eTypes_t tag)
{
    return tag == NTypes::E_CHARSTR64 || tag == NTypes::E_CHARSTR128 || tag == NTypes::E_CHARSTR256;
}

// A value as the raw data and default paths hold it: integers of 8 and 16 bits are widened to int.
template<typename T>
QVariant heldWidened(const T &value)
{
    if constexpr (std::is_integral<T>::value && sizeof(T) < sizeof(int))
        return QVariant(static_cast<int>(value));
    else
        return QVariant::fromValue(value);
}

template<typename T>
constexpr bool isFixedString = std::is_same<T, CString32>::value || std::is_same<T, CString64>::value
                               || std::is_same<T, CString128>::value;

// Fills an empty variant with the fixed string that is made.
template<typename String, typename Make>
void CVariant::emplace(Make make, NTypes::eTypes_t type)
{
    HeldShared::put<String>(mValue, make);
    mType = type;
}

// Replaces value and tag together. The type is the one that the tag stands for. An unshared value on the heap
// is overwritten by one of the same type.
template<typename T>
Q_ALWAYS_INLINE CVariant &CVariant::assign(const T &value, NTypes::eTypes_t type)
{
    const bool isEmpty = HeldInPlace::isEmpty(mValue);
    if constexpr (HeldInPlace::fits<T>) {
        if (!isEmpty)
            clear();
        HeldInPlace::put(mValue, type, value);
    } else if constexpr (isFixedString<T>) {
        if (isEmpty)
            HeldShared::put<T>(mValue, [&] { return value; });
        else
            mValue.setValue(value);
    } else {
        mValue.setValue(value);
    }
    mType = type;
    return *this;
}

#endif // CVARIANTHELD_H
