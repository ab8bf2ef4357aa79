// SPDX-License-Identifier: MIT
#ifndef TRACEFILENAME_H
#define TRACEFILENAME_H

#include <QString>

// Where the program of this path leaves its allocation trace.
inline QString traceFileName(const QString &programPath)
{
    const int lastDot = programPath.lastIndexOf(QLatin1Char('.'));
    return (lastDot > 0 ? programPath.left(lastDot) : programPath) + QLatin1String("_NewDelTrace.txt");
}

#endif // TRACEFILENAME_H
