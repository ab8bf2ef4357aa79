// SPDX-License-Identifier: MIT
#ifndef SMALLDEVICE_H
#define SMALLDEVICE_H

#include <QByteArray>
#include <QIODevice>

#include <algorithm>

// A device with room for so many bytes, which gives and takes no more than so many at a time.
class SmallDevice : public QIODevice
{
public:
    SmallDevice(QByteArray *bytes, int room, bool sequential, int atOnce)
        : mBytes(bytes), mRoom(room), mSequential(sequential), mAtOnce(atOnce)
    {}
    ~SmallDevice() override = default;

    bool isSequential() const override { return mSequential; }
    qint64 size() const override { return mBytes->size(); }
    qint64 bytesAvailable() const override
    {
        return mSequential ? mBytes->size() - mRead + QIODevice::bytesAvailable()
                           : QIODevice::bytesAvailable();
    }
    bool seek(qint64 position) override
    {
        mRead = static_cast<int>(position);
        return QIODevice::seek(position);
    }

protected:
    qint64 readData(char *data, qint64 size) override
    {
        const QByteArray read = mBytes->mid(mRead, partOf(size));
        std::copy(read.begin(), read.end(), data);
        mRead += read.size();
        return read.size();
    }

    qint64 writeData(const char *data, qint64 size) override
    {
        const int taken = std::min(partOf(size), mRoom - mBytes->size());
        mBytes->append(data, taken);
        return taken;
    }

private:
    int partOf(qint64 size) const { return static_cast<int>(std::min<qint64>(size, mAtOnce)); }

    QByteArray *mBytes;
    int mRoom;
    bool mSequential;
    int mAtOnce;
    int mRead = 0;
};

#endif // SMALLDEVICE_H
