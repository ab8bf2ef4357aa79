// SPDX-License-Identifier: MIT
#include "InventoryReader.h"

#include <QIODevice>

#include <algorithm>
#include <cstring>

namespace {

// Whether the stream gives the same bytes again after they were looked at, and has one form of text.
bool looksAhead(const QDataStream &stream)
{
    const QIODevice *const device = stream.device();
    return device && device->isReadable() && !device->isSequential() && !device->isTextModeEnabled()
           && stream.version() >= QDataStream::Qt_2_1;
}

} // namespace

namespace InventoryStream {

// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): zeroing the block would cost more than a record
Reader::Reader(QDataStream &stream)
    : mStream(stream), mIsBigEndian(stream.byteOrder() == QDataStream::BigEndian),
      mLooksAhead(looksAhead(stream))
{}

Reader::~Reader()
{
    giveBack();
}

// Afterwards the stream stands at the next field.
void Reader::giveBack()
{
    if (mPosition != 0)
        mStream.skipRawData(static_cast<int>(mPosition));
    mPosition = 0;
    mEnd = 0;
}

bool Reader::refill(std::size_t count)
{
    giveBack();
    if (!mLooksAhead || count > mBlock.size() || mStream.status() != QDataStream::Ok)
        return false;
    const std::size_t wanted = std::max(count, mNextSize);
    mNextSize = std::min(2 * mNextSize, mBlock.size());
    const qint64 size = mStream.device()->peek(mBlock.data(), static_cast<qint64>(wanted));
    mEnd = static_cast<std::size_t>(std::max<qint64>(size, 0));
    return count <= mEnd;
}

Reader &Reader::operator>>(bool &flag)
{
    quint8 byte = 0;
    *this >> byte;
    flag = byte != 0;
    return *this;
}

Reader &Reader::operator>>(QHostAddress &address)
{
    return takeAddress(address) ? *this : readPlainly(address);
}

bool Reader::takeAddress(QHostAddress &address)
{
    constexpr std::size_t ipv6Size = 16;
    const auto protocol = has(1) ? numberAt<qint8>(0) : qint8(QAbstractSocket::AnyIPProtocol);
    if (protocol == QAbstractSocket::UnknownNetworkLayerProtocol) {
        address.clear();
        ++mPosition;
        return true;
    }
    if (protocol == QAbstractSocket::IPv4Protocol && has(1 + sizeof(quint32))) {
        address.setAddress(numberAt<quint32>(1));
        mPosition += 1 + sizeof(quint32);
        return true;
    }
    if (protocol == QAbstractSocket::IPv6Protocol && has(1 + ipv6Size)) {
        address.setAddress(reinterpret_cast<const quint8 *>(next(1)));
        mPosition += 1 + ipv6Size;
        QString scope;
        *this >> scope;
        address.setScopeId(scope);
        return true;
    }
    return false;
}

Reader &Reader::operator>>(NTypes::sVersion_t &version)
{
    return *this >> version.build >> version.minor >> version.major;
}

Reader &Reader::readText(QString &text, const QString &usual)
{
    return takeText(text, usual) ? *this : readPlainly(text);
}

// A text is its size in bytes and its units.
bool Reader::takeText(QString &text, const QString &usual)
{
    constexpr quint32 null = 0xFFFFFFFF;
    if (!has(sizeof(quint32)))
        return false;
    const auto size = numberAt<quint32>(0);
    if (size == null) {
        text = QString();
        mPosition += sizeof size;
        return true;
    }
    if (size % sizeof(QChar) != 0 || size > mBlock.size() - sizeof size || !has(sizeof size + size))
        return false;
    text = textAt(sizeof size, static_cast<int>(size / sizeof(QChar)), usual);
    mPosition += sizeof size + size;
    return true;
}

QString Reader::textAt(std::size_t offset, int length, const QString &usual) const
{
    if (length != 0 && isTextAt(offset, length, usual))
        return usual;
    QString text(length, Qt::Uninitialized);
    if (length == 0)
        return text;
    if (mIsBigEndian)
        qFromBigEndian<quint16>(next(offset), length, text.data());
    else
        qFromLittleEndian<quint16>(next(offset), length, text.data());
    return text;
}

bool Reader::isTextAt(std::size_t offset, int length, const QString &text) const
{
    if (length != text.size())
        return false;
    for (int i = 0; i < length; ++i) {
        if (text.at(i).unicode() != numberAt<quint16>(offset + static_cast<std::size_t>(i) * sizeof(QChar)))
            return false;
    }
    return true;
}

Reader &Reader::readBytes(void *bytes, std::size_t count)
{
    if (has(count)) {
        std::memcpy(bytes, next(0), count);
        mPosition += count;
        return *this;
    }
    giveBack();
    std::memset(bytes, 0, count);
    mStream.readRawData(static_cast<char *>(bytes), static_cast<int>(count));
    return *this;
}

} // namespace InventoryStream
