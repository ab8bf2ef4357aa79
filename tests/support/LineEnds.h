// SPDX-License-Identifier: MIT
#ifndef LINEENDS_H
#define LINEENDS_H

#include <QByteArray>

// A text with the line ends that were written: on Windows, C's print functions and QSettings put two
// characters where a line ends.
inline QByteArray withPlainLineEnds(QByteArray text)
{
#ifdef Q_OS_WIN
    text.replace("\r\n", "\n");
#endif
    return text;
}

#endif // LINEENDS_H
