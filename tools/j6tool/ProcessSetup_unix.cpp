// SPDX-License-Identifier: MIT
#include "ProcessSetup.h"

#include <QByteArray>
#include <QtGlobal>

#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace j6tool {

void prepareProcess()
{
    qputenv("TZ", QByteArrayLiteral("UTC"));
    std::signal(SIGPIPE, SIG_IGN);
    // A closed stream is put on a file that cannot be used in its direction, so that its use stays an error.
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(stream, F_GETFD) == -1)
            open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

} // namespace j6tool
