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
    // A line ends with the line feed that is written, as everywhere.
    for (FILE *stream : {stdin, stdout, stderr})
        _setmode(_fileno(stream), _O_BINARY);
}

} // namespace j6tool
