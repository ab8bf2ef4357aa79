// SPDX-License-Identifier: MIT
#ifndef INVENTORYREADER_H
#define INVENTORYREADER_H

#include <NTypes.h>

#include <QDataStream>
#include <QHostAddress>
#include <QString>
#include <QtEndian>

#include <array>
#include <cstddef>
#include <type_traits>

namespace InventoryStream {

// Reads fields as the operators of a QDataStream do, but out of a block of what the stream holds next; what
// was read is taken from the stream when the block is used up and at the end of its life. To a stream each
// number is a call of its device and costs 20 to 25 ns.
//
// A field that is not in the block in its plain form is left to Qt's operator, and with it what becomes of
// the field and of the status: it is cut off, corrupt or longer than a block, the stream has failed before or
// is of the first two versions, or its device cannot look ahead.
class Reader
{
public:
    explicit Reader(QDataStream &stream);
    ~Reader();
    Reader(const Reader &) = delete;
    Reader &operator=(const Reader &) = delete;

    template<typename Number>
    std::enable_if_t<std::is_integral<Number>::value, Reader &> operator>>(Number &number)
    {
        if (!has(sizeof number))
            return readPlainly(number);
        number = numberAt<Number>(0);
        mPosition += sizeof number;
        return *this;
    }
    template<typename Enumeration>
    std::enable_if_t<std::is_enum<Enumeration>::value, Reader &> operator>>(Enumeration &value)
    {
        std::underlying_type_t<Enumeration> number{};
        *this >> number;
        value = static_cast<Enumeration>(number);
        return *this;
    }
    Reader &operator>>(bool &flag);
    Reader &operator>>(QString &text) { return readText(text, QString()); }
    Reader &operator>>(QHostAddress &address);
    Reader &operator>>(NTypes::sVersion_t &version);

    // Reads a text; where it is the usual one, the two share their units.
    Reader &readText(QString &text, const QString &usual);
    // Leaves 0 in place of bytes that are missing.
    Reader &readBytes(void *bytes, std::size_t count);

    QDataStream &stream() { return mStream; }

private:
    // Whether the block holds, if need be with what follows in the stream, that many bytes more.
    bool has(std::size_t count) { return count <= mEnd - mPosition || refill(count); }
    bool refill(std::size_t count);
    void giveBack();

    const char *next(std::size_t offset) const { return mBlock.data() + mPosition + offset; }
    template<typename Number>
    Number numberAt(std::size_t offset) const
    {
        return mIsBigEndian ? qFromBigEndian<Number>(next(offset)) : qFromLittleEndian<Number>(next(offset));
    }
    template<typename Field>
    Reader &readPlainly(Field &field)
    {
        giveBack();
        mStream >> field;
        return *this;
    }
    bool takeText(QString &text, const QString &usual);
    QString textAt(std::size_t offset, int length, const QString &usual) const;
    bool isTextAt(std::size_t offset, int length, const QString &text) const;
    bool takeAddress(QHostAddress &address);

    QDataStream &mStream;
    const bool mIsBigEndian;
    const bool mLooksAhead;
    std::size_t mNextSize = 512; // doubled with each block: a single record does not need a large one
    std::size_t mPosition = 0;
    std::size_t mEnd = 0;
    std::array<char, 8192> mBlock;
};

} // namespace InventoryStream

#endif // INVENTORYREADER_H
