// SPDX-License-Identifier: MIT
#ifndef QTUNITS_H
#define QTUNITS_H

#include <Nj6Units.h>

#include <QString>

// The units as a good Qt programmer keeps them without this library, their texts translated at every call. The
// texts are a map of QStrings like the one that CUnitParser hands out, or, as who only ever translates them
// keeps them, literals in the rows of a QHash, where the digits and the linear counterparts are.
namespace QtUnits {

QString unitText(Nj6Units::eUnit_t unit);
QString unitTextOfLiteral(Nj6Units::eUnit_t unit);
int digits(Nj6Units::eUnit_t unit);
Nj6Units::eUnit_t toLinear(Nj6Units::eUnit_t unit);

} // namespace QtUnits

#endif // QTUNITS_H
