// SPDX-License-Identifier: MIT
#ifndef INVENTORYFIELDS_H
#define INVENTORYFIELDS_H

#include <QDataStream>
#include <QHostAddress>
#include <QMap>
#include <QString>

// The fields of an inventory as records that go one by one, each byte of the rights too, through Qt's own
// stream operators: what the streams of an inventory must equal.

struct SubDeviceFields
{
    quint8 number = 255;
    QString name;
    QMap<quint16, QString> sets;
    qint16 activeSet = -1;
    quint16 build = 0;
    quint8 minor = 0;
    quint8 major = 0;
};

struct DeviceFields
{
    QString identifier;
    qint32 addressType = 0;
    QHostAddress address;
    quint16 port = 0;
    bool flag1 = false;
    bool flag2 = false;
    qint32 key = 0;
    QString name;
    QString text1;
    qint32 value1 = 0;
    QString text2;
    qint32 value2 = 0;
    quint8 rights[32] = {};
    QMap<quint8, SubDeviceFields> subDevices;
};

struct ListFields
{
    QString name;
    qint32 sourceType = 0;
    QMap<quint32, DeviceFields> devices;
    QHostAddress sourceAddress;
    qint32 sourceValue1 = -1;
    qint32 sourceValue2 = 0;
};

inline QDataStream &operator<<(QDataStream &stream, const SubDeviceFields &subDevice)
{
    return stream << subDevice.number << subDevice.name << subDevice.sets << subDevice.activeSet
                  << subDevice.build << subDevice.minor << subDevice.major;
}

inline QDataStream &operator>>(QDataStream &stream, SubDeviceFields &subDevice)
{
    return stream >> subDevice.number >> subDevice.name >> subDevice.sets >> subDevice.activeSet
           >> subDevice.build >> subDevice.minor >> subDevice.major;
}

inline QDataStream &operator<<(QDataStream &stream, const DeviceFields &device)
{
    stream << device.identifier << device.addressType << device.address << device.port << device.flag1
           << device.flag2 << device.key << device.name << device.text1 << device.value1 << device.text2
           << device.value2;
    for (const quint8 right : device.rights)
        stream << right;
    return stream << device.subDevices;
}

inline QDataStream &operator>>(QDataStream &stream, DeviceFields &device)
{
    stream >> device.identifier >> device.addressType >> device.address >> device.port >> device.flag1
        >> device.flag2 >> device.key >> device.name >> device.text1 >> device.value1 >> device.text2
        >> device.value2;
    for (quint8 &right : device.rights)
        stream >> right;
    return stream >> device.subDevices;
}

inline QDataStream &operator<<(QDataStream &stream, const ListFields &list)
{
    return stream << list.name << list.sourceType << list.devices << list.sourceAddress << list.sourceValue1
                  << list.sourceValue2;
}

inline QDataStream &operator>>(QDataStream &stream, ListFields &list)
{
    return stream >> list.name >> list.sourceType >> list.devices >> list.sourceAddress >> list.sourceValue1
           >> list.sourceValue2;
}

#endif // INVENTORYFIELDS_H
