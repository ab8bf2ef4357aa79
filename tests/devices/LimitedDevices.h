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

// Bytes anywhere of which can be read, but never more than a few at once.
class PiecewiseDevice : public QIODevice
{
public:
    PiecewiseDevice(const QByteArray &bytes, qint64 piece, QObject *parent)
        : QIODevice(parent), mBytes(bytes), mPiece(piece)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    qint64 size() const override { return mBytes.size(); }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        const qint64 size = std::min({maxSize, mPiece, mBytes.size() - pos()});
        std::memcpy(data, mBytes.constData() + pos(), static_cast<std::size_t>(size));
        return size;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    QByteArray mBytes;
    qint64 mPiece;
};

// Bytes of which only the first ones can be read; behind them each attempt fails.
class FailingDevice : public QIODevice
{
public:
    FailingDevice(const QByteArray &bytes, qint64 readable, QObject *parent)
        : QIODevice(parent), mBytes(bytes), mReadable(readable)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    qint64 size() const override { return mBytes.size(); }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        if (pos() >= mReadable)
            return -1;
        const qint64 size = std::min(maxSize, mReadable - pos());
        std::memcpy(data, mBytes.constData() + pos(), static_cast<std::size_t>(size));
        return size;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    QByteArray mBytes;
    qint64 mReadable;
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
