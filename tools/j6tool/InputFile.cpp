// SPDX-License-Identifier: MIT
#include "InputFile.h"

#include "VisibleText.h"

#include <QFileInfo>

#include <algorithm>

namespace j6tool {

namespace {

constexpr int readSize = 1024 * 1024;

} // namespace

Error fileError(const QString &fileName, const QString &what)
{
    return Error{QStringLiteral("%1: %2").arg(visible(fileName), what)};
}

std::optional<Error> openInput(QFile &file)
{
    const QFileInfo info(file.fileName());
    if (info.isDir())
        return fileError(file.fileName(), QStringLiteral("is a directory"));
    if (!info.exists())
        return fileError(file.fileName(), QStringLiteral("no such file"));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return fileError(file.fileName(), QStringLiteral("cannot be opened: %1").arg(file.errorString()));
    return std::nullopt;
}

Result<QByteArray> readBlock(QFile &file, int size)
{
    QByteArray block;
    while (block.size() < size) {
        // Memory grows with what has arrived, not with what is asked for.
        const int wanted = std::min(readSize, size - block.size());
        const int filled = block.size();
        block.resize(filled + wanted);
        const qint64 count = file.read(block.data() + filled, wanted);
        if (count < 0)
            return fileError(file.fileName(), QStringLiteral("cannot be read: %1").arg(file.errorString()));
        block.resize(filled + int(count));
        if (count == 0)
            break;
    }
    return block;
}

std::optional<Error> shrinkage(const QFile &file, qint64 sizeAtFirst)
{
    if (file.pos() >= sizeAtFirst)
        return std::nullopt;
    return fileError(file.fileName(), QStringLiteral("has become shorter while it was read"));
}

Result<QByteArray> readInput(const QString &fileName, int limit)
{
    QFile file(fileName);
    if (const std::optional<Error> error = openInput(file))
        return *error;
    const qint64 size = file.size();
    Result<QByteArray> contents = readBlock(file, limit + 1);
    if (!contents)
        return contents;
    if (contents->size() > limit)
        return fileError(fileName, QStringLiteral("is larger than %1 bytes").arg(limit));
    if (const std::optional<Error> error = shrinkage(file, size))
        return *error;
    return contents;
}

} // namespace j6tool
