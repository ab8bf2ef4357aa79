// SPDX-License-Identifier: MIT
#include "SharedDirectory.h"

#include <QDir>
#include <QFileInfo>

bool makeNewDirectory(const QString &path)
{
    QString name = path;
    while (name.size() > 1 && (name.endsWith(QLatin1Char('/')) || name.endsWith(QDir::separator())))
        name.chop(1);
    return QDir().mkpath(QFileInfo(name).path()) && QDir().mkdir(name);
}
