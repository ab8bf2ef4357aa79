// SPDX-License-Identifier: MIT
#ifndef VARIANTS_H
#define VARIANTS_H

#include <InputReader.h>

#include <QVariant>

// A QVariant of any type that programs put into one: Qt's values, the records and strings of this library,
// null values of a type, and lists, maps and variants of these. The byte in front chooses (Variants.cpp).
QVariant takeVariant(InputReader &reader);

#endif // VARIANTS_H
