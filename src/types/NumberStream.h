// SPDX-License-Identifier: MIT
#ifndef NUMBERSTREAM_H
#define NUMBERSTREAM_H

#include <NTypes.h>

#include <QDataStream>
#include <QVariant>

// Numbers in the stream form of a typed value, in one piece: Qt's operators call the device for each of its
// four fields. What is not done here (false) is left to them, with nothing written or read.

bool writeNumber(QDataStream &stream, const QVariant &value, NTypes::eTypes_t tag);
bool readNumber(QDataStream &stream, QVariant &empty, NTypes::eTypes_t &tag);

#endif // NUMBERSTREAM_H
