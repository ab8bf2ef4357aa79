// SPDX-License-Identifier: MIT
#ifndef ENDEDPROGRAM_H
#define ENDEDPROGRAM_H

#include <QDir>
#include <QString>
#include <QThread>

// Removes a temporary directory in which a program has run and ended. Windows keeps the file of a program for
// a moment longer, and QTemporaryDir would warn of it.
inline void removeWithEndedProgram(const QString &directory)
{
#ifdef Q_OS_WIN
    constexpr unsigned long pause = 10; // milliseconds
    for (int attempts = 1000; attempts > 0 && !QDir(directory).removeRecursively(); --attempts)
        QThread::msleep(pause);
#else
    Q_UNUSED(directory)
#endif
}

#endif // ENDEDPROGRAM_H
