// SPDX-License-Identifier: MIT
#ifndef QTCODES_H
#define QTCODES_H

#include <QByteArray>
#include <QString>

// The one-time codes as one writes them by hand with Qt, by the rules of CHmac; for its plain arguments only (1
// to 9 digits, a step above 0, a tolerance that is a small number).
namespace QtCodes {

QByteArray hmacSha1(const QByteArray &message, const QByteArray &key);
QString code(const QByteArray &key, quint64 t0, quint32 step, int digits);
int validate(const QString &code, const QByteArray &key, quint64 t0, quint32 step, int digits, int tolerance);

} // namespace QtCodes

#endif // QTCODES_H
