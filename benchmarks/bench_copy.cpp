// SPDX-License-Identifier: MIT
// A tree of 10,000 small files copied by CDir::copyDirectoryRecursive, beside a
// plain loop of QFile::copy that knows the files and makes the directories first. The report is per file;
// every copy goes to a new directory. They are made in memory where there is room: on a disk both sides wait
// for it nearly all of the time.
#include "PeerReport.h"

#include <CDir.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>
#include <QStringList>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>

namespace {

constexpr int directoryCount = 100;
constexpr int filesPerDirectory = 100;
constexpr int fileCount = directoryCount * filesPerDirectory;
constexpr int fileSize = 200;

// Where the files are made.
QString workDirectoryTemplate()
{
    const QStorageInfo memory(QStringLiteral("/dev/shm"));
    constexpr qint64 enough = qint64(4) << 30; // a page for every file of some fifty copies, and more
    const bool fits =
        memory.isValid() && memory.fileSystemType() == "tmpfs" && memory.bytesAvailable() >= enough;
    return (fits ? memory.rootPath() : QDir::tempPath()) + QStringLiteral("/bench_copy-XXXXXX");
}

// The names of what is copied, relative to the source.
struct Names
{
    QStringList directories;
    QStringList files;

    Names()
    {
        for (int directory = 0; directory < directoryCount; ++directory) {
            directories.append(QStringLiteral("axis %1").arg(directory));
            for (int file = 0; file < filesPerDirectory; ++file)
                files.append(directories.last() + QStringLiteral("/set %1.par").arg(file));
        }
    }
};

bool makeSource(const QString &source, const Names &names)
{
    bool made = true;
    for (const QString &directory : names.directories)
        made &= QDir().mkpath(source + directory);
    for (const QString &name : names.files) {
        QFile file(source + name);
        made &= file.open(QIODevice::WriteOnly) && file.write(QByteArray(fileSize, 'x')) == fileSize;
    }
    return made;
}

bool copyPlainly(const QString &source, const QString &target, const Names &names)
{
    bool copied = true;
    for (const QString &directory : names.directories)
        copied &= QDir().mkpath(target + directory);
    for (const QString &name : names.files)
        copied &= QFile::copy(source + name, target + name);
    return copied;
}

// One side: how it copies the tree to a directory, and whether all its copies succeeded so far.
class Side
{
public:
    Side(const QString &prefix, std::function<bool(const QString &)> copy)
        : mPrefix(prefix), mCopy(std::move(copy))
    {}

    void copyOnce() { mSucceeded &= mCopy(lastTarget(++mCount)); }
    bool succeeded() const { return mSucceeded; }

    // Timing different work would prove nothing: the last copy has all the files with what is in them.
    bool isWhole(const Names &names) const
    {
        if (mCount == 0)
            return true; // filtered out
        const QString target = lastTarget(mCount);
        return std::all_of(names.files.begin(), names.files.end(),
                           [&](const QString &name) { return QFileInfo(target + name).size() == fileSize; });
    }

private:
    QString lastTarget(int count) const { return mPrefix + QString::number(count) + QLatin1Char('/'); }

    QString mPrefix;
    std::function<bool(const QString &)> mCopy;
    int mCount = 0;
    bool mSucceeded = true;
};

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir directory(workDirectoryTemplate());
    const QString source = directory.filePath(QStringLiteral("source/"));
    const Names names;
    if (!directory.isValid() || !makeSource(source, names)) {
        std::fprintf(stderr, "the files to copy cannot be made\n");
        return 1;
    }

    Side ours(directory.filePath(QStringLiteral("ours")),
              [&](const QString &target) { return CDir::copyDirectoryRecursive(source, target); });
    Side peer(directory.filePath(QStringLiteral("qt")),
              [&](const QString &target) { return copyPlainly(source, target, names); });
    const auto check = [&] {
        ours.copyOnce();
        peer.copyOnce();
        return ours.isWhole(names) && peer.isWhole(names);
    };
    addComparison({"copy " + std::to_string(fileCount), fileCount, [&] { ours.copyOnce(); },
                   [&] { peer.copyOnce(); }, check});
    const int result = runComparisons(argc, argv);
    for (const Side *side : {&ours, &peer}) {
        if (!side->succeeded() || !side->isWhole(names)) {
            std::fprintf(stderr, "a file was not copied\n");
            return 1;
        }
    }
    return result;
}
