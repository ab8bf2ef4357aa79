// SPDX-License-Identifier: MIT
#ifndef QTUNITS_H
#define QTUNITS_H

#include <Nj6Units.h>

#include <QString>

// The units as a good Qt programmer keeps them without this library: rows in a QHash by code, their texts
// translated at every call. A row's text is a QString, which the translation takes as UTF-8, or a literal, as
// who only ever translates keeps it.
namespace QtUnits {

QString unitText(Nj6Units::eUnit_t unit);
QString unitTextOfLiteral(Nj6Units::eUnit_t unit);
int digits(Nj6Units::eUnit_t unit);
Nj6Units::eUnit_t toLinear(Nj6Units::eUnit_t unit);

} // namespace QtUnits

#endif // QTUNITS_H
