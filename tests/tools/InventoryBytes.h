// SPDX-License-Identifier: MIT
#ifndef INVENTORYBYTES_H
#define INVENTORYBYTES_H

#include <QByteArray>

// The bytes of a small inventory, written by hand from the stream forms of the records, and of their parts:
// what a test takes apart to make inventories that are none.
namespace InventoryBytes {

inline QByteArray bytes(const char *hex)
{
    return QByteArray::fromHex(hex);
}

// 00 01 02 ... 1f
inline QByteArray rights()
{
    QByteArray block;
    for (char byte = 0; byte < 32; ++byte)
        block.append(byte);
    return block;
}

// Name "Plant", source type 3.
inline QByteArray head()
{
    return bytes("0000000a 0050 006c 0061 006e 0074  00000003");
}

// fe80::1 on "eth1", source values 17 and -2.
inline QByteArray tail()
{
    return bytes("01 fe800000000000000000000000000001  00000008 0065 0074 0068 0031  00000011  fffffffe");
}

// From the identifier to the user rights: "SN", kind 1, 192.168.100.1:5000, flags 1 and 0, key 4, name
// U+00C4, text 1 null, value 1 -1, text 2 empty, value 2 7.
inline QByteArray device4()
{
    return bytes("00000004 0053 004e  00000001  00 c0a86401  1388  01 00  00000004  00000002 00c4"
                 "ffffffff  ffffffff  00000000  00000007")
           + rights();
}

// Key and members but for the sets and what is behind them: number 3, name "X".
inline QByteArray subDevice3()
{
    return bytes("03  03  00000002 0058");
}

inline QByteArray set5()
{
    return bytes("0005 00000002 0042"); // "B"
}

inline QByteArray set0()
{
    return bytes("0000 00000002 0041"); // "A"
}

// Active set 5, version 3.2.119.
inline QByteArray subDeviceEnd()
{
    return bytes("0005  0077 02 03");
}

inline QByteArray count(int number)
{
    return QByteArray(3, '\0') + char(number);
}

inline QByteArray whole()
{
    return head() + count(1) + bytes("00000004") + device4() + count(1) + subDevice3() + count(2) + set5()
           + set0() + subDeviceEnd() + tail();
}

// The smallest device, all of whose members are defaults, with this key in front of it and in it.
inline QByteArray smallestDevice(quint32 key)
{
    const QByteArray number = bytes(QByteArray::number(key, 16).rightJustified(8, '0').constData());
    return number + bytes("ffffffff 00000000 ff 0000 00 00") + number
           + bytes("ffffffff ffffffff 00000000 ffffffff 00000000") + QByteArray(32, '\0') + count(0);
}

} // namespace InventoryBytes

#endif // INVENTORYBYTES_H
