// SPDX-License-Identifier: MIT
#ifndef J6TOOL_OBJECTINDEX_H
#define J6TOOL_OBJECTINDEX_H

#include <QString>

#include <optional>

namespace j6tool {

// The address of a parameter in the object dictionary (CiA 301): a 16-bit index, "0x6081", or one sub-index
// of it, "0x6081:01". The bare index stands for the whole object and is another address than its sub-index
// 00.
class ObjectIndex
{
public:
    // From text, hexadecimal in either case; exactly four and two digits.
    static std::optional<ObjectIndex> fromText(const QString &text);

    QString text() const;

    // Different for different addresses.
    quint32 number() const { return mNumber; }

    bool operator==(ObjectIndex other) const { return mNumber == other.mNumber; }

private:
    explicit ObjectIndex(quint32 number) : mNumber(number) {}

    quint32 mNumber; // the index from bit 9 on, bit 8 set when there is a
                     // sub-index, which is in bits 0..7
};

} // namespace j6tool

#endif // J6TOOL_OBJECTINDEX_H
