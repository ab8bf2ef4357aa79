// SPDX-License-Identifier: MIT
#ifndef NUMBERPARSING_H
#define NUMBERPARSING_H

#include <QString>

#include <optional>

// What QString's own parsers make of a text. They look for blanks of any kind, signs, prefixes and the digits
// of other scripts; a plain number has none of these and is read by hand, in a fifth of the time. Everything
// else is theirs.

// QString::toInt(), toUInt(), toLongLong() or toULongLong(), as Integer tells: qint32, quint32, qint64 or
// quint64. By hand in base 0 and 10: a '-' if the type has a sign, and up to 9 or 18 digits, where a
// zero stands first only if it is alone.
template<typename Integer>
Integer parsedInteger(const QString &text, bool *ok, int base);

// The plain integer of at most 18 digits that the text is, in base 0 or 10; nothing for any other text.
std::optional<qint64> plainInteger(const QString &text, bool isSigned, int maxDigits);

// As many digits as can never exceed an integer of so many bytes.
constexpr int safeDigits(int size)
{
    return size < 8 ? 9 : 18;
}

// QString::toFloat() or toDouble(). By hand: a '-' or none, digits, and perhaps a point and more digits; up
// to 19 in all, which make 2^53 at most when the point is left out; and perhaps an exponent of two digits.
template<typename Float>
Float parsedFloat(const QString &text, bool *ok);

#endif // NUMBERPARSING_H
