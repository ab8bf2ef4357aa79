// SPDX-License-Identifier: MIT
#include "Trash.h"

#include <QDir>
#include <QFileInfo>

#include <array>

#include <qt_windows.h>

#include <shellapi.h>

namespace {

// Whether the path names a whole drive or share: "C:/", "//server/share", "//./C:/", "//?/UNC/server/share".
bool isVolume(const QString &path)
{
    if (!path.startsWith(QLatin1String("//")))
        return QFileInfo(path).isRoot();
    const QStringList names = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    const bool isLongShare = names.size() > 1
                             && names.at(1).compare(QLatin1String("UNC"), Qt::CaseInsensitive) == 0
                             && (names.at(0) == QLatin1String("?") || names.at(0) == QLatin1String("."));
    return names.size() <= (isLongShare ? 4 : 2);
}

} // namespace

namespace trash {

bool moveToTrash(const QString &path)
{
    // The shell would remove all that is there, for good.
    if (path.size() > maxPathLength || isVolume(path))
        return false;
    QString nativePath = QDir::toNativeSeparators(path);
    // The shell wants a directory's name, without the separator.
    while (nativePath.endsWith(QLatin1Char('\\')))
        nativePath.chop(1);
    // It takes a list of paths that ends with an empty one: two zeros stand behind the longest path, too.
    std::array<wchar_t, maxPathLength + 2> paths{};
    nativePath.toWCharArray(paths.data());

    SHFILEOPSTRUCTW operation{};
    operation.wFunc = FO_DELETE;
    operation.pFrom = paths.data();
    operation.fFlags =
        static_cast<FILEOP_FLAGS>(FOF_ALLOWUNDO | FOF_NOCONFIRMATION | FOF_NOERRORUI | FOF_SILENT);
    return SHFileOperationW(&operation) == 0 && operation.fAnyOperationsAborted == FALSE;
}

} // namespace trash
