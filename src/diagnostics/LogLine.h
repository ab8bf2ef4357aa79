// SPDX-License-Identifier: MIT
#ifndef LOGLINE_H
#define LOGLINE_H

#include <QString>
#include <QtDebug>

// Logs a programming fault: one warning line, written as text whatever characters it holds. A format would
// cut it at a NUL, and the way through bytes would lose half a surrogate pair.
inline void logWarning(const QString &line)
{
    qWarning().noquote() << line;
}

#endif // LOGLINE_H
