// SPDX-License-Identifier: MIT
#ifndef ENDEDPROGRAM_H
#define ENDEDPROGRAM_H

#include <QFile>
#include <QString>
#include <QThread>

// Removes the file of a program that has ended. Windows keeps it for a moment longer, and a temporary directory
// could not go with it.
inline void removeEndedProgram(const QString &path)
{
#ifdef Q_OS_WIN
    constexpr unsigned long pause = 10; // milliseconds
    for (int attempts = 1000; attempts > 0 && QFile::exists(path) && !QFile::remove(path); --attempts)
        QThread::msleep(pause);
#else
    Q_UNUSED(path)
#endif
}

#endif // ENDEDPROGRAM_H
