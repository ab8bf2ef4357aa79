// SPDX-License-Identifier: MIT
#ifndef DEVICECASES_H
#define DEVICECASES_H

#include <CDeviceItem.h>
#include <CDeviceList.h>

#include <LoggedTest.h>

#include <QDataStream>
#include <QHostAddress>
#include <QTest>
#include <QVector>

#include <algorithm>
#include <cstddef>
#include <vector>

Q_DECLARE_METATYPE(QHostAddress)

// What the tests of the device inventory share: samples in which every member has a value of its own, and the
// stream in both directions.

template<typename T>
QByteArray streamed(const T &value, int version = QDataStream::Qt_5_15,
                    QDataStream::ByteOrder order = QDataStream::BigEndian)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(version);
    stream.setByteOrder(order);
    stream << value;
    return bytes;
}

template<typename T>
QDataStream::Status readInto(T &value, const QByteArray &bytes, int version = QDataStream::Qt_5_15,
                             QDataStream::ByteOrder order = QDataStream::BigEndian)
{
    QDataStream stream(bytes);
    stream.setVersion(version);
    stream.setByteOrder(order);
    stream >> value;
    return stream.status();
}

// 64 entries of 32 units; what is not set is zero.
class NameTable
{
public:
    void set(int entry, const std::vector<unsigned short> &units)
    {
        std::copy(units.begin(), units.end(), mUnits.begin() + 32 * std::ptrdiff_t(entry));
    }
    void set(int entry, const QString &text)
    {
        set(entry, std::vector<unsigned short>(text.utf16(), text.utf16() + text.size()));
    }
    unsigned short *data() { return mUnits.data(); }

private:
    std::vector<unsigned short> mUnits = std::vector<unsigned short>(std::size_t{64} * 32);
};

// The answers of both operators in both directions.
template<typename T>
QVector<bool> comparison(const T &a, const T &b)
{
    return {a == b, b == a, a != b, b != a};
}

template<typename T>
bool areEqual(const T &a, const T &b)
{
    return comparison(a, b) == QVector<bool>{true, true, false, false};
}

template<typename T>
bool areDifferent(const T &a, const T &b)
{
    return comparison(a, b) == QVector<bool>{false, false, true, true};
}

inline NTypes::sVersion_t version(quint8 major, quint8 minor, quint16 build)
{
    NTypes::sVersion_t result{};
    result.build = build;
    result.minor = minor;
    result.major = major;
    return result;
}

// 32 bytes: first, first + 1 ...
inline QByteArray rightsBytes(char first)
{
    QByteArray bytes;
    for (int i = 0; i < 32; ++i)
        bytes.append(static_cast<char>(first + i));
    return bytes;
}

inline CDeviceItem::EHostAddrType addressType(qint32 number)
{
    return static_cast<CDeviceItem::EHostAddrType>(number);
}

inline CDeviceList::ESourceType sourceType(qint32 number)
{
    return static_cast<CDeviceList::ESourceType>(number);
}

// A sub-device that holds these sets under these names, as a stream can bring them: any number, any name.
inline CSubDeviceItem subDeviceWithSets(const QMap<unsigned short, QString> &sets, qint16 active = -1)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << quint8(1) << QStringLiteral("Axis") << sets << active << NTypes::sVersion_t{};
    CSubDeviceItem result;
    readInto(result, bytes, stream.version());
    return result;
}

inline CSubDeviceItem sampleSubDevice(quint8 number)
{
    CSubDeviceItem result(number, QStringLiteral("Axis %1").arg(number));
    result.setAvailableParamSets(0x5);
    result.setActiveParamSet(2);
    result.setParamVersion(version(1, 2, 300));
    return result;
}

inline CDeviceItem sampleDevice()
{
    CDeviceItem result(QStringLiteral("Spindle drive"), addressType(2), cDefaultDeviceAddress, 5000,
                       QStringLiteral("SN 4711"));
    result.mFlag1 = true;
    result.mDeviceKey = 7;
    result.mText1 = QStringLiteral("Hall 3");
    result.mValue1 = -2;
    result.mText2 = QStringLiteral("100 %1");
    result.mValue2 = 0x01020304;
    result.setUserlevelData(rightsBytes(0));
    result.setSubDevice(sampleSubDevice(1));
    result.setSubDevice(sampleSubDevice(5));
    return result;
}

inline CDeviceList sampleList()
{
    CDeviceList result(QStringLiteral("Plant"), sourceType(3));
    result.addDevice(4, sampleDevice());
    result.addDevice(0xFFFFFFFF, CDeviceItem());
    result.setSourceAddress(cLinkLocalNetwork);
    result.setSourceValue1(11);
    result.setSourceValue2(-12);
    return result;
}

#endif // DEVICECASES_H
