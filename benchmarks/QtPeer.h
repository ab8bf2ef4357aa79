// SPDX-License-Identifier: MIT
#ifndef QTPEER_H
#define QTPEER_H

#include <NTypes.h>

#include <QByteArray>
#include <QDataStream>
#include <QString>
#include <QVariant>

// A parameter value as a good Qt programmer writes it without this library: a QVariant and a tag, one switch per
// operation. Numbers are held in the Qt type that QVariant's own constructors give them: an int for all that fit
// into one, which is the type that is read without a conversion. Records are held as their word (E_DATETIME as
// quint64, E_VERSION and E_IPV4ADDR as quint32), E_STRING32 as a QString, E_BYTEARRAY as a QByteArray; no other
// types. The samples are well formed, and of malformed input it knows no more than Qt does.
struct QtPeer
{
    QVariant value;
    NTypes::eTypes_t type = NTypes::E_UNKNOWN;

    static QtPeer fromBytes(const QByteArray &bytes, NTypes::eTypes_t type);
    static QtPeer fromText(const QString &text, NTypes::eTypes_t type);
    QString toText() const;
    bool equals(const QtPeer &other) const;
    bool canConvertTo(NTypes::eTypes_t target) const;
    QByteArray toBytes() const;
};

QDataStream &operator<<(QDataStream &stream, const QtPeer &peer);
QDataStream &operator>>(QDataStream &stream, QtPeer &peer);

#endif // QTPEER_H
