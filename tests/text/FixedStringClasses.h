// SPDX-License-Identifier: MIT
#ifndef FIXEDSTRINGCLASSES_H
#define FIXEDSTRINGCLASSES_H

#include <CString128.h>
#include <CString32.h>
#include <CString64.h>

#include <QTest>

#include <algorithm>
#include <array>

// The three classes are one design. A test class that calls addClassRows() in its initTestCase_data() runs
// every function once for each of them; the function hands a generic lambda to onClass(), which gets an empty
// string of the class.

inline void addClassRows()
{
    QTest::addColumn<int>("units");
    QTest::newRow("CString32") << 32;
    QTest::newRow("CString64") << 64;
    QTest::newRow("CString128") << 128;
}

template<typename Check>
void onClass(Check check)
{
    QFETCH_GLOBAL(int, units);
    switch (units) {
    case 32:
        return check(CString32());
    case 64:
        return check(CString64());
    case 128:
        return check(CString128());
    default:
        QFAIL("no such class");
    }
}

// The array reader under one name.
inline bool readUnits(const CString32 &string, unsigned short *units)
{
    return string.string32(units);
}

inline bool readUnits(const CString64 &string, unsigned short *units)
{
    return string.string64(units);
}

inline bool readUnits(const CString128 &string, unsigned short *units)
{
    return string.string128(units);
}

// A text of this many units, each another one: U+4E00, U+4E01 ...
inline QString textOfLength(int length)
{
    QString text;
    for (int i = 0; i < length; ++i)
        text.append(QChar(static_cast<ushort>(0x4E00 + i)));
    return text;
}

// The text's units as little-endian bytes.
inline QByteArray unitBytes(const QString &text)
{
    QByteArray bytes;
    for (const QChar unit : text)
        bytes.append(char(unit.cell())).append(char(unit.row()));
    return bytes;
}

// The bytes with zeros behind them up to the size.
inline QByteArray padded(const QByteArray &bytes, int size)
{
    return bytes + QByteArray(std::max(0, size - bytes.size()), '\0');
}

inline QByteArray fromHex(const char *hex)
{
    return QByteArray::fromHex(QByteArray(hex));
}

// A field whose every unit differs from every other.
template<typename String>
String countedString()
{
    unsigned short units[String::unitCount] = {};
    for (int i = 0; i < String::unitCount; ++i)
        units[i] = static_cast<unsigned short>(0x0141 + i);
    return String(units);
}

#endif // FIXEDSTRINGCLASSES_H
