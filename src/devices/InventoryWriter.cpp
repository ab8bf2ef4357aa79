// SPDX-License-Identifier: MIT
#include "InventoryWriter.h"

#include <cstring>

namespace InventoryStream {

// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): zeroing the block would cost more than a record
Writer::Writer(QDataStream &stream)
    : mStream(stream), mIsBigEndian(stream.byteOrder() == QDataStream::BigEndian)
{}

Writer::~Writer()
{
    handOver();
}

void Writer::handOver()
{
    if (mUsed != 0)
        mStream.writeRawData(mBlock.data(), static_cast<int>(mUsed));
    mUsed = 0;
}

// Where `count` bytes more, at most a block, are to go.
char *Writer::room(std::size_t count)
{
    if (count > mBlock.size() - mUsed)
        handOver();
    char *const begin = mBlock.data() + mUsed;
    mUsed += count;
    return begin;
}

// The length in bytes and the units. The first two versions of the stream have another form, and the operator
// also writes what is longer than a block and what is null.
Writer &Writer::operator<<(const QString &text)
{
    const std::size_t size = static_cast<std::size_t>(text.size()) * sizeof(QChar);
    if (text.isNull() && mStream.version() >= QDataStream::Qt_2_1)
        return *this << quint32(0xFFFFFFFF);
    if (mStream.version() < QDataStream::Qt_2_1 || size > mBlock.size()) {
        handOver();
        mStream << text;
        return *this;
    }
    *this << static_cast<quint32>(size);
    if (mIsBigEndian)
        qToBigEndian<quint16>(text.utf16(), text.size(), room(size));
    else
        qToLittleEndian<quint16>(text.utf16(), text.size(), room(size));
    return *this;
}

Writer &Writer::operator<<(const QHostAddress &address)
{
    const QAbstractSocket::NetworkLayerProtocol protocol = address.protocol();
    *this << static_cast<qint8>(protocol);
    if (protocol == QAbstractSocket::IPv4Protocol)
        return *this << address.toIPv4Address();
    if (protocol != QAbstractSocket::IPv6Protocol)
        return *this;
    const Q_IPV6ADDR bytes = address.toIPv6Address();
    return writeBytes(bytes.c, sizeof bytes.c) << address.scopeId();
}

Writer &Writer::operator<<(const NTypes::sVersion_t &version)
{
    return *this << version.build << version.minor << version.major;
}

Writer &Writer::writeBytes(const void *bytes, std::size_t count)
{
    std::memcpy(room(count), bytes, count);
    return *this;
}

} // namespace InventoryStream
