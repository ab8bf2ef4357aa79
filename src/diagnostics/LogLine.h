// SPDX-License-Identifier: MIT
#ifndef LOGLINE_H
#define LOGLINE_H

#include <QString>
#include <QtDebug>

// Logs a programming fault: one warning line, written as text whatever characters it holds.
inline void logWarning(const QString &line)
{
    qWarning("%s", qUtf8Printable(line));
}

#endif // LOGLINE_H
