// SPDX-License-Identifier: MIT
#ifndef J6TOOL_PARAMETERVALUE_H
#define J6TOOL_PARAMETERVALUE_H

#include "Result.h"

#include <CUnitParser.h>
#include <CVariant.h>
#include <NTypes.h>

#include <QByteArray>
#include <QString>

#include <optional>

namespace j6tool {

// The road of a parameter value: device bytes -> CVariant -> text -> CVariant -> device bytes. Device bytes
// are exactly as many as the type has: 8-bit strings fill their field up with zeros, characters are their one
// or two bytes; only byte arrays are of any length above 0.

// The unit of a code that is nothing but decimal digits. Codes outside the catalogue are units, too: unknown
// ones.
std::optional<Nj6Units::eUnit_t> unitFromText(const QString &text);

// Why the bytes are no value of the type; nothing when their number fits.
std::optional<Error> lengthMisfit(const QByteArray &bytes, NTypes::eTypes_t type);

// The value of bytes whose number fits.
CVariant valueFromBytes(const QByteArray &bytes, NTypes::eTypes_t type);

// The device bytes of a value that holds something. Inverse of valueFromBytes(), except for 8-bit
// strings: of these only ASCII up to the terminating zero comes back.
QByteArray bytesFromValue(const CVariant &value);

// True for the strings and characters.
bool isTextType(NTypes::eTypes_t type);

// The exact text: CVariant::toStr(), strings and characters up to their terminating zero. A date-time that no
// calendar has, which QDateTime would move to another one or to none, gives "invalid date-time".
QString exactText(const CVariant &value);

/*
 * The text for display: numbers of type E_F32 and E_F64 with the display digits of their unit, all others
 * exactText().
 *
 * A number whose digits would mislead is shown by exactText(), too, with 6 or 15 significant digits: one that
 * is not zero and would read as zero, and one so large (2^31 for E_F32, 10^15 for E_F64) that fixed notation
 * would show digits the value does not have. NaN and the infinities read "nan", "inf" and "-inf".
 */
QString displayText(const CVariant &value, Nj6Units::eUnit_t unit);

/*
 * Whether two parameters' bytes are one value, as CVariant::compareValue() decides. Equal bytes always are,
 * which matters to infinity and E_VERSION_4: compareValue() finds them different from themselves. And its
 * tolerance is absolute, so that floating-point numbers near zero would all be one: those are the same only
 * if they also read alike.
 */
bool isSameValue(const QByteArray &a, const QByteArray &b, NTypes::eTypes_t type);

} // namespace j6tool

#endif // J6TOOL_PARAMETERVALUE_H
