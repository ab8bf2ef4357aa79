// SPDX-License-Identifier: MIT
#include "SharedDirectory.h"

#include <QDir>
#include <QFileInfo>

namespace {

// At an end that is a separator, or "." behind one, the name of the directory stands further before.
bool endsWithoutName(const QString &path)
{
    const auto isSeparator = [&path](int at) {
        return path.at(at) == QLatin1Char('/') || path.at(at) == QDir::separator();
    };
    const int last = path.size() - 1;
    return last > 0 && (isSeparator(last) || (path.at(last) == QLatin1Char('.') && isSeparator(last - 1)));
}

} // namespace

bool makeNewDirectory(const QString &path)
{
    QString name = path;
    while (endsWithoutName(name))
        name.chop(1);
    return QDir().mkpath(QFileInfo(name).path()) && QDir().mkdir(name);
}
