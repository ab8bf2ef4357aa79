// SPDX-License-Identifier: MIT
#ifndef RECORDPARSING_H
#define RECORDPARSING_H

#include <NTypes.h>

#include <QString>

// Records from their texts. Nothing fails: what is missing or wrong is 0.

// Numbers joined by points; missing ones, and those that are no signed 16-bit number, are 0.
NTypes::sVersion_t parsedVersion(const QString &text);
NTypes::sVersion4_t parsedVersion4(const QString &text);

// The IPv4 number of any text that QHostAddress takes.
NTypes::uIPv4HAddr_t parsedAddress(const QString &text);

// A whole decimal integer is the record's word; else an ISO date-time; else the empty date-time.
NTypes::sDateTime_t parsedDateTime(const QString &text);

#endif // RECORDPARSING_H
