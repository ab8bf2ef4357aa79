// SPDX-License-Identifier: MIT
#ifndef MAPSTREAM_H
#define MAPSTREAM_H

#include <QDataStream>
#include <QMap>

// Writes a map as a Qt 5 program does: the count, and then the pairs from the highest key to the lowest. Qt's
// own operator goes upwards where QT_DISABLE_DEPRECATED_BEFORE takes in 5.15, and in a program that is linked
// statically its one instance may be the program's; the bytes of an inventory must not hang on either.
template<typename Key, typename Value>
QDataStream &writeMap(QDataStream &stream, const QMap<Key, Value> &map)
{
    stream << static_cast<qint32>(map.size());
    for (auto entry = map.constEnd(); entry != map.constBegin();) {
        --entry;
        stream << entry.key() << entry.value();
    }
    return stream;
}

#endif // MAPSTREAM_H
