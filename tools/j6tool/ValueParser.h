// SPDX-License-Identifier: MIT
#ifndef J6TOOL_VALUEPARSER_H
#define J6TOOL_VALUEPARSER_H

#include "Result.h"

#include <NTypes.h>

#include <QByteArray>
#include <QString>

namespace j6tool {

/*
 * The device bytes of an edited text, or what is wrong with the text. Nothing is corrected, cut or filled in:
 * a text that is not exactly a value of the type is refused, and so is one that the bytes would not give
 * back.
 *
 *   integers, command   decimal, "0x" hexadecimal or leading-zero octal, with a sign, in the type's range
 *   floating point      decimal, with an exponent or without; finite, in range and not rounded to zero
 *   date-time           "2024-03-01 12:30:45" or with a T, up to two decimals of the second, no time zone;
 *                       "0000-00-00 00:00:00" is the empty one
 *   version             three or four decimal numbers joined by points, each in the range of its field
 *   IPv4 address        four decimal numbers 0 to 255 joined by points
 *   UTF-16 strings      as many UTF-16 units as the field has
 *   8-bit strings       ASCII, as many characters as the field has
 *   characters          one, or none for zero; E_CHAR: ASCII
 *   all others          hexadecimal digits of exactly the bytes of the type
 */
Result<QByteArray> bytesFromText(const QString &text, NTypes::eTypes_t type);

} // namespace j6tool

#endif // J6TOOL_VALUEPARSER_H
