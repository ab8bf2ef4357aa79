// SPDX-License-Identifier: MIT
#ifndef QTPEER_H
#define QTPEER_H

#include <NTypes.h>

#include <QByteArray>
#include <QString>
#include <QVariant>

// The road of a parameter value as a good Qt programmer writes it without this library: a QVariant and a tag,
// one switch per operation. Numbers, E_STRING32, E_VERSION, E_IPV4ADDR and E_DATETIME only.
struct QtPeer
{
    QVariant value;
    NTypes::eTypes_t type = NTypes::E_UNKNOWN;

    static QtPeer fromBytes(const QByteArray &bytes, NTypes::eTypes_t type);
    static QtPeer fromText(const QString &text, NTypes::eTypes_t type);
    QString toText() const;
    bool equals(const QtPeer &other) const;
    QByteArray toBytes() const;
};

#endif // QTPEER_H
