// SPDX-License-Identifier: MIT
#ifndef STREAMS_H
#define STREAMS_H

#include <InputReader.h>
#include <SmallDevice.h>

#include <QBuffer>
#include <QByteArray>
#include <QDataStream>
#include <QIODevice>

// How a QDataStream is set up.
struct StreamForm
{
    int version = QDataStream::Qt_5_15;
    QDataStream::ByteOrder order = QDataStream::BigEndian;
    QDataStream::FloatingPointPrecision precision = QDataStream::DoublePrecision;

    // Every version there is, the newest for a 0, and a byte for the rest.
    static StreamForm from(InputReader &reader)
    {
        const int version = reader.takeChoice(QDataStream::Qt_5_15 + 1);
        const int flags = reader.take<quint8>();
        return {version == 0 ? int(QDataStream::Qt_5_15) : version,
                (flags & 1) != 0 ? QDataStream::LittleEndian : QDataStream::BigEndian,
                (flags & 2) != 0 ? QDataStream::SinglePrecision : QDataStream::DoublePrecision};
    }

    void applyTo(QDataStream &stream) const
    {
        stream.setVersion(version);
        stream.setByteOrder(order);
        stream.setFloatingPointPrecision(precision);
    }
};

template<typename Value>
struct Reading
{
    Value value;
    QDataStream::Status status = QDataStream::Ok;
    QByteArray rest; // what the reading left over
};

template<typename Value>
Reading<Value> readFrom(QIODevice &device, const StreamForm &form, const Value &initial)
{
    QDataStream stream(&device);
    form.applyTo(stream);
    Value value(initial);
    stream >> value;
    return {value, stream.status(), device.readAll()};
}

// Reads into a value that is not empty before.
template<typename Value>
Reading<Value> readFrom(const QByteArray &bytes, const StreamForm &form, const Value &initial)
{
    QBuffer device;
    device.setData(bytes);
    device.open(QIODevice::ReadOnly);
    return readFrom(device, form, initial);
}

// Reads from bytes that come one after the other, as from a socket. Nothing can go through such a stream in
// blocks, so what is read from it is read field by field.
template<typename Value>
Reading<Value> readSequentially(const QByteArray &bytes, const StreamForm &form, const Value &initial)
{
    constexpr int atOnce = 1 << 16;
    QByteArray source(bytes);
    SmallDevice device(&source, 0, true, atOnce);
    device.open(QIODevice::ReadOnly);
    return readFrom(device, form, initial);
}

template<typename Value>
QByteArray written(const Value &value, const StreamForm &form)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    form.applyTo(stream);
    stream << value;
    return bytes;
}

#endif // STREAMS_H
