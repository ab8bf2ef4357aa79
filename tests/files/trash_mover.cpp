// SPDX-License-Identifier: MIT
// trash_mover [uid=NUMBER] PATH...: moves the paths to the trash, as another user if one is given. Prints the
// results, a line for each.
#include <CDir.h>

#include <QFile>

#include <cstdio>

#include <unistd.h>

int main(int argc, char **argv)
{
    const QByteArray userOption = "uid=";
    for (int i = 1; i < argc; ++i) {
        const QByteArray argument = argv[i];
        if (!argument.startsWith(userOption))
            std::printf("%d\n", CDir::moveToTrash(QFile::decodeName(argument)));
        else if (setuid(argument.mid(userOption.size()).toUInt()) != 0)
            return 1;
    }
    return 0;
}
