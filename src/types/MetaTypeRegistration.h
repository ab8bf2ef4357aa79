// SPDX-License-Identifier: MIT
#ifndef METATYPEREGISTRATION_H
#define METATYPEREGISTRATION_H

#include <QMetaType>

// The records and the fixed strings become known to Qt by name, with their stream operators and comparisons,
// when the library is loaded: a stream may hold one before the program has made one. Each source that defines
// them registers them itself, so that linking statically loses none of those that a program uses.

// A type that compares equal only with ==.
template<typename T>
void registerComparedType()
{
    const char *const name = QMetaType::typeName(qMetaTypeId<T>());
    qRegisterMetaTypeStreamOperators<T>(name);
    QMetaType::registerEqualsComparator<T>();
}

// A type that has an order as well.
template<typename T>
void registerOrderedType()
{
    const char *const name = QMetaType::typeName(qMetaTypeId<T>());
    qRegisterMetaTypeStreamOperators<T>(name);
    QMetaType::registerComparators<T>();
}

#endif // METATYPEREGISTRATION_H
