// SPDX-License-Identifier: MIT
#include "Trash.h"

#include <QDir>
#include <QFileInfo>

#include <array>

#include <qt_windows.h>

#include <shellapi.h>

namespace trash {

bool moveToTrash(const QString &path)
{
    // The shell would remove all that is on a drive, for good.
    if (path.size() > maxPathLength || QFileInfo(path).isRoot())
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
