// SPDX-License-Identifier: MIT
#ifndef HELDVALUE_H
#define HELDVALUE_H

#include "HeldInPlace.h"

#include <QMetaType>
#include <QVariant>

#include <type_traits>

// Whether the QVariant holds a value of this registered type or one that an application's converter makes
// into it. QVariant::canConvert() is no answer: some of Qt's own types claim to convert to every registered
// type and then write a number over the value.
template<typename T>
bool givesType(const QVariant &value)
{
    const int type = qMetaTypeId<T>();
    return value.userType() == type || QMetaType::hasRegisteredConverterFunction(value.userType(), type);
}

// Whether the value's memory begins with just this number or record. A widened integer has the low bytes of
// the small one.
template<typename T>
bool isHeldInPlace(const QVariant &value)
{
    constexpr bool mayBeWidened = std::is_integral<T>::value && sizeof(T) < sizeof(int);
    const quint32 type = HeldInPlace::typeIn(value);
    return type == static_cast<quint32>(qMetaTypeId<T>()) || (mayBeWidened && type == QMetaType::Int);
}

// The registered value that is held itself; null when there is none of just this type.
template<typename T>
const T *heldAt(const QVariant &value)
{
    const HeldInPlace::Memory &memory = value.data_ptr();
    if (memory.type != static_cast<uint>(qMetaTypeId<T>()) || memory.is_null != 0)
        return nullptr;
    const void *const held = memory.is_shared != 0 ? memory.data.shared->ptr : &memory.data;
    return static_cast<const T *>(held);
}

// The value as the type: Qt's conversions for its own types; for registered ones what is held or made by a
// converter, else the zero or empty value.
template<typename T>
T heldAs(const QVariant &value)
{
    if constexpr (HeldInPlace::fits<T>) {
        if (isHeldInPlace<T>(value))
            return HeldInPlace::valueIn<T>(value);
    }
    if constexpr (QMetaTypeId2<T>::IsBuiltIn)
        return value.value<T>();
    else
        return givesType<T>(value) ? value.value<T>() : T{};
}

#endif // HELDVALUE_H
