// SPDX-License-Identifier: MIT
#ifndef INPUTREADER_H
#define INPUTREADER_H

#include <QByteArray>
#include <QString>

#include <cstring>

// The text of these units as they lie in memory, unpaired surrogates and all; half a unit at the end is none.
inline QString textOfUnits(const QByteArray &bytes)
{
    QString text(bytes.size() / 2, Qt::Uninitialized);
    std::memcpy(text.data(), bytes.constData(), 2 * static_cast<std::size_t>(text.size()));
    return text;
}

// Takes an input apart from its front. At the end of the input everything that is taken is 0 or empty.
class InputReader
{
public:
    explicit InputReader(const QByteArray &input) : mRest(input) {}

    bool atEnd() const { return mRest.isEmpty(); }

    // A number as it lies in this machine's memory; bytes that the input lacks are 0.
    template<typename Number>
    Number take()
    {
        const QByteArray bytes = takeBytes(static_cast<int>(sizeof(Number)));
        Number number{};
        std::memcpy(&number, bytes.constData(), static_cast<std::size_t>(bytes.size()));
        return number;
    }

    // A number from 0 to count - 1; count is at most 256.
    int takeChoice(int count) { return take<quint8>() % count; }

    // So many bytes, or as many as there are.
    QByteArray takeBytes(int count)
    {
        QByteArray bytes = mRest.left(count);
        mRest.remove(0, bytes.size());
        return bytes;
    }

    // Up to 255 bytes behind a byte that holds their number.
    QByteArray takeBlock() { return takeBytes(take<quint8>()); }

    QByteArray takeRest() { return takeBytes(mRest.size()); }

    // The rest as a text. A first byte 0xff announces UTF-16 as it lies in memory; anything else is UTF-8
    // from its first byte on, so that seeds are plain text.
    QString takeText()
    {
        if (mRest.isEmpty() || mRest.at(0) != utf16Mark)
            return QString::fromUtf8(takeRest());
        takeBytes(1);
        return textOfUnits(takeRest());
    }

private:
    // A byte that no UTF-8 text begins with.
    static constexpr char utf16Mark = '\xff';

    QByteArray mRest;
};

#endif // INPUTREADER_H
