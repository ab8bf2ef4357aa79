// SPDX-License-Identifier: MIT
#ifndef LIMITEDDEVICES_H
#define LIMITEDDEVICES_H

#include <QByteArray>
#include <QIODevice>

#include <algorithm>
#include <cstddef>
#include <cstring>

// A device that only hands out what comes next, in pieces.
class SequentialDevice : public QIODevice
{
public:
    SequentialDevice(const QByteArray &bytes, QObject *parent) : QIODevice(parent), mBytes(bytes)
    {
        open(QIODevice::ReadOnly);
    }

    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override { return mBytes.size() + QIODevice::bytesAvailable(); }
    qint64 pos() const override { return mTaken; }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        const int size = static_cast<int>(std::min<qint64>(maxSize, mBytes.size()));
        std::memcpy(data, mBytes.constData(), static_cast<std::size_t>(size));
        mBytes.remove(0, size);
        mTaken += size;
        return size;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    QByteArray mBytes;
    qint64 mTaken = 0;
};

// A device that is full after so many bytes.
class FullDevice : public QIODevice
{
public:
    explicit FullDevice(qint64 room) : mRoom(room) { open(QIODevice::WriteOnly | QIODevice::Unbuffered); }

    QByteArray bytes() const { return mBytes; }

protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(const char *data, qint64 size) override
    {
        const qint64 taken = std::min(size, mRoom - mBytes.size());
        mBytes.append(data, static_cast<int>(taken));
        return taken;
    }

private:
    qint64 mRoom;
    QByteArray mBytes;
};

#endif // LIMITEDDEVICES_H
