// SPDX-License-Identifier: MIT
#ifndef PLAINDEVICES_H
#define PLAINDEVICES_H

#include <QDataStream>
#include <QHostAddress>
#include <QMap>
#include <QString>

// An inventory as a good Qt programmer writes it without this library: plain structs in maps, streamed with
// Qt's own operators in the same form as a CDeviceList.
struct PlainSubDevice
{
    quint8 number = 255;
    QString name;
    QMap<quint16, QString> sets;
    qint16 activeSet = -1;
    quint16 build = 0;
    quint8 minor = 0;
    quint8 major = 0;

    bool operator==(const PlainSubDevice &other) const;
};

struct PlainDevice
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
    char rights[32] = {};
    QMap<quint8, PlainSubDevice> subDevices;

    bool operator==(const PlainDevice &other) const;
};

struct PlainList
{
    QString name;
    qint32 sourceType = 0;
    QMap<quint32, PlainDevice> devices;
    QHostAddress sourceAddress;
    qint32 sourceValue1 = -1;
    qint32 sourceValue2 = 0;

    void unite(const PlainList &other);
    bool operator==(const PlainList &other) const;
};

QDataStream &operator<<(QDataStream &stream, const PlainSubDevice &subDevice);
QDataStream &operator>>(QDataStream &stream, PlainSubDevice &subDevice);
QDataStream &operator<<(QDataStream &stream, const PlainDevice &device);
QDataStream &operator>>(QDataStream &stream, PlainDevice &device);
QDataStream &operator<<(QDataStream &stream, const PlainList &list);
QDataStream &operator>>(QDataStream &stream, PlainList &list);

#endif // PLAINDEVICES_H
