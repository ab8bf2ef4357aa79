// SPDX-License-Identifier: MIT
#ifndef PLAINPARSING_H
#define PLAINPARSING_H

#include <CVariant.h>

// What CVariant::fromStr() has to give, by the plainest way there is: Qt's own parsers and no short cuts.
namespace PlainParsing {

// A number, or a command, which is one; `ok` tells whether the text is a number.
CVariant number(const QString &text, NTypes::eTypes_t type, bool &ok);

// Any other type of the catalogue.
CVariant value(const QString &text, NTypes::eTypes_t type);

} // namespace PlainParsing

#endif // PLAINPARSING_H
