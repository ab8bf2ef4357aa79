// SPDX-License-Identifier: MIT
#ifndef NUMBERTEXT_H
#define NUMBERTEXT_H

#include <QString>

// The very texts of QString::number(), which asks the C locale and builds each text several times; here the
// usual ones are written by hand, with one allocation.

// The decimal text of a qint32, quint32, qint64 or quint64.
template<typename Integer>
QString textOfInteger(Integer value);

// QString::number(value, 'g', significantDigits) for 1 to 15 digits; by hand for zero and from 0.0001 to where
// the exponent form begins.
QString textOfSignificant(double value, int significantDigits);

// QString::number(value, 'f', decimals); by hand below 2^53 when all its digits make a number of 64 bits.
QString textOfFixed(double value, int decimals);

#endif // NUMBERTEXT_H
