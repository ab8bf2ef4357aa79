// SPDX-License-Identifier: MIT
#ifndef QTUNITS_H
#define QTUNITS_H

#include <Nj6Units.h>

#include <QString>

// The units as a good Qt programmer keeps them without this library: the rows in a QHash by code, their texts
// translated at every call.
namespace QtUnits {

QString unitText(Nj6Units::eUnit_t unit);
int digits(Nj6Units::eUnit_t unit);
Nj6Units::eUnit_t toLinear(Nj6Units::eUnit_t unit);

} // namespace QtUnits

#endif // QTUNITS_H
