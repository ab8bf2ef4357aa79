// SPDX-License-Identifier: MIT
#include "ProcessSetup.h"

#include <QByteArray>
#include <QtGlobal>

#include <cstdio>

#include <fcntl.h>
#include <io.h>

namespace j6tool {

void prepareProcess()
{
    qputenv("TZ", QByteArrayLiteral("UTC"));
    // Without a console, Qt would tell a debugger alone what it warns of.
    qputenv("QT_FORCE_STDERR_LOGGING", QByteArrayLiteral("1"));
    // A line ends with the line feed that is written, as everywhere.
    for (FILE *stream : {stdin, stdout, stderr})
        _setmode(_fileno(stream), _O_BINARY);
}

} // namespace j6tool
