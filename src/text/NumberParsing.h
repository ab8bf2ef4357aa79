// SPDX-License-Identifier: MIT
#ifndef NUMBERPARSING_H
#define NUMBERPARSING_H

#include <QString>

// What QString's own parsers make of a text. They look for blanks of any kind, prefixes, group separators and
// the digits of the locale; a plain number has none of these and is read by hand, everything else is theirs.

// QString::toInt(), toUInt(), toLongLong() or toULongLong(), as Integer tells; base 0, 2 to 36. By hand in base 0
// and 10: an optional '-' of the signed ones and up to 9 or 18 digits, no zero in front of others.
template<typename Integer>
Integer parsedInteger(const QString &text, bool *ok, int base);

// QString::toFloat() or toDouble(). By hand: an optional '-', digits, and perhaps a point and digits, 19 in all
// and 2^53 at most without the point.
template<typename Float>
Float parsedFloat(const QString &text, bool *ok);

#endif // NUMBERPARSING_H
