// SPDX-License-Identifier: MIT
#ifndef METATYPEREGISTRATION_H
#define METATYPEREGISTRATION_H

#include <QMetaType>

// The records and the fixed strings become known to Qt by name, with their stream operators and comparisons,
// when the library is loaded: a stream may hold one before the program has made one. Registering again is
// harmless.
void registerRecordTypes();
void registerFixedStringTypes();

// Both, once. Called at load; also called where a value is read from a stream, so that a program that links
// the library statically cannot lose the registration.
void ensureMetaTypes();

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
