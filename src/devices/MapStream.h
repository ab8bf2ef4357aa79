// SPDX-License-Identifier: MIT
#ifndef MAPSTREAM_H
#define MAPSTREAM_H

#include <QDataStream>
#include <QIODevice>
#include <QMap>

#include <utility>

// Writes a map as a Qt 5 program does: the count, and then the pairs from the highest key to the lowest. Qt's
// own operator goes upwards where QT_DISABLE_DEPRECATED_BEFORE takes in 5.15, and in a program that is linked
// statically its one instance may be the program's; the bytes of an inventory must not hang on either.
// The stream may be a QDataStream or an InventoryStream::Writer.
template<typename Stream, typename Key, typename Value>
Stream &writeMap(Stream &stream, const QMap<Key, Value> &map)
{
    stream << static_cast<qint32>(map.size());
    for (auto entry = map.constEnd(); entry != map.constBegin();) {
        --entry;
        stream << entry.key() << entry.value();
    }
    return stream;
}

// What Qt does around the reading of a map: a failure before it does not keep the map from being read, and is
// the status again afterwards.
class FormerStatus
{
public:
    explicit FormerStatus(QDataStream &stream) : mStream(stream), mStatus(stream.status())
    {
        if (!stream.device() || !stream.device()->isTransactionStarted())
            stream.resetStatus();
    }
    ~FormerStatus()
    {
        if (mStatus == QDataStream::Ok)
            return;
        mStream.resetStatus();
        mStream.setStatus(mStatus);
    }
    FormerStatus(const FormerStatus &) = delete;
    FormerStatus &operator=(const FormerStatus &) = delete;

private:
    QDataStream &mStream;
    const QDataStream::Status mStatus;
};

// Reads a map as Qt does: a key that comes twice is there twice, and after a fault there is nothing. The
// highest key comes first, so each entry is put before the first one, without a search, and read where it
// stands.
template<typename Reader, typename Key, typename Value, typename ReadValue>
Reader &readMap(Reader &reader, QMap<Key, Value> &map, ReadValue readValue)
{
    const FormerStatus former(reader.stream());
    map.clear();
    QMultiMap<Key, Value> entries;
    const Value blank{};
    quint32 count = 0;
    reader >> count;
    for (quint32 i = 0; i < count; ++i) {
        Key key{};
        reader >> key;
        readValue(key, *entries.insert(entries.constBegin(), key, blank));
        if (reader.stream().status() != QDataStream::Ok)
            return reader;
    }
    map = std::move(entries);
    return reader;
}

template<typename Reader, typename Key, typename Value>
Reader &readMap(Reader &reader, QMap<Key, Value> &map)
{
    return readMap(reader, map, [&reader](Key, Value &value) { reader >> value; });
}

#endif // MAPSTREAM_H
