// SPDX-License-Identifier: MIT
#ifndef NUMBERTEXT_H
#define NUMBERTEXT_H

#include <QString>

// The very texts of QString::number(), which goes by way of the C locale. By hand, and with one allocation,
// an integer costs half of that (most of it the allocation), a floating-point number a quarter, and half of
// it with an exponent.

QString textOfInteger(qint32 value);
QString textOfInteger(quint32 value);
QString textOfInteger(qint64 value);
QString textOfInteger(quint64 value);

// QString::number(value, 'g', significantDigits), for 1 to 15 digits.
QString textOfSignificant(double value, int significantDigits);

// QString::number(value, 'f', decimals). By hand below 2^53 as long as the digits make a number of 64 bits.
QString textOfFixed(double value, int decimals);

#endif // NUMBERTEXT_H
