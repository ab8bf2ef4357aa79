// SPDX-License-Identifier: MIT
#ifndef RECORDTEXT_H
#define RECORDTEXT_H

#include <NTypes.h>

#include <QByteArray>
#include <QString>

// The canonical texts of the records, each in one allocation.

// "yyyy-MM-dd HH:mm:ss"; null when there is no such date or no such local time.
QString textOf(const NTypes::sDateTime_t &value);
QString textOf(const NTypes::sVersion_t &value);
QString textOf(const NTypes::sVersion4_t &value);
QString textOf(const NTypes::uIPv4HAddr_t &value);

// Two lower-case digits per byte; null for no bytes.
QString hexOf(const char *bytes, int size);
QString hexOf(const QByteArray &bytes);

#endif // RECORDTEXT_H
