// SPDX-License-Identifier: MIT
// Each line a file, or with "/" at its end a directory, of a small tree: listed, copied and removed again.
// Every path lies below a temporary directory, whatever the lines say.
#include "Traversals.h"

#include <CDir.h>
#include <CPath.h>

#include <InputReader.h>
#include <Properties.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>

namespace {

constexpr QLatin1Char slash('/');
constexpr QLatin1Char backslash('\\');

// The names in a line that a file below the directory can have, in every locale. A backslash separates names
// elsewhere, and at their ends CPath takes it for that here, too.
QString namesOf(const QString &line)
{
    constexpr int longestName = 32;
    constexpr int deepest = 4;
    QStringList names;
    const QStringList parts = line.split(slash, Qt::SkipEmptyParts);
    for (const QString &part : parts) {
        const QString name = part.left(longestName);
        const bool isName = !name.contains(QChar(0)) && name != QLatin1String(".")
                            && name != QLatin1String("..") && !name.startsWith(backslash)
                            && !name.endsWith(backslash)
                            && QFile::decodeName(QFile::encodeName(name)) == name;
        if (isName && names.size() < deepest)
            names.append(name);
    }
    return names.join(slash);
}

// A tree below a directory as a plain program makes it: the relative paths of all that is in it.
class Tree
{
public:
    Tree(const QString &root, const QStringList &lines) : mRoot(root)
    {
        constexpr int mostEntries = 10;
        QDir().mkpath(root);
        const QStringList firstLines = lines.mid(0, mostEntries);
        for (const QString &line : firstLines)
            add(namesOf(line), line.endsWith(slash));
    }

    // All entries, or those that no hidden name leads to.
    QStringList entries(bool withHidden) const
    {
        QStringList entries;
        for (const QString &entry : mEntries) {
            const bool isHidden = entry.startsWith(QLatin1Char('.')) || entry.contains(QLatin1String("/."));
            if (withHidden || !isHidden)
                entries.append(entry);
        }
        entries.sort();
        return entries;
    }

private:
    // NOLINTNEXTLINE(misc-no-recursion): a few names deep
    void add(const QString &path, bool isDirectory)
    {
        if (path.isEmpty() || mEntries.contains(path))
            return;
        const int last = path.lastIndexOf(slash);
        if (last > 0)
            add(path.left(last), true);
        // The whole path: a name that begins with ":" alone is one of Qt's resources.
        QFile file(mRoot + slash + path);
        const bool isMade = isDirectory ? QDir().mkdir(file.fileName()) : file.open(QIODevice::WriteOnly);
        if (isMade && !isDirectory)
            file.write(path.toUtf8());
        if (isMade)
            mEntries.append(path);
    }

    QString mRoot;
    QStringList mEntries;
};

QString contents(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// The paths of a listing relative to the directory, which stands first in it.
QStringList relativePaths(const QStringList &listing, const QString &root)
{
    require(!listing.isEmpty() && listing.first() == root, "the directory itself stands first", root);
    QStringList paths;
    const QStringList below = listing.mid(1);
    for (const QString &path : below)
        paths.append(CDir::getRelativeSubPath(root, path));
    paths.sort();
    return paths;
}

QStringList paths(const QFileInfoList &infos)
{
    QStringList paths;
    for (const QFileInfo &info : infos)
        paths.append(info.filePath());
    return paths;
}

void checkListings(const QString &root, const Tree &tree, const QString &pattern)
{
    const QStringList listing = CDir::listFilesAndDirectories(root);
    const QStringList listed = relativePaths(listing, root);
    require(listed == tree.entries(false), "all but hidden entries are listed",
            listed.join(QLatin1Char('|')) + QStringLiteral(" instead of ")
                + tree.entries(false).join(QLatin1Char('|')));
    require(paths(CDir::listFileAndDirInfos(root)) == listing, "texts and records are the same entries");
    const QFileInfoList all = CDir::entryInfoListRecursive(root, QStringList(), Nj6Global::eDirFilterAll);
    require(relativePaths(QStringList(root) + paths(all), root) == tree.entries(true),
            "a filter shows hidden entries, too");
    const QFileInfoList files = CDir::entryInfoListRecursive(root, QStringList(), Nj6Global::eDirFilterFiles);
    require(std::all_of(files.begin(), files.end(), [](const QFileInfo &info) { return info.isFile(); }),
            "a filter for files shows files");

    const QFileInfoList top = CDir::entryInfoList(root, QStringList(), Nj6Global::eDirFilterAll);
    QStringList matching;
    QStringList others;
    for (const QFileInfo &info : top)
        (QDir::match(QStringList(pattern), info.fileName()) ? matching : others).append(info.filePath());
    if (!pattern.trimmed().isEmpty())
        require(paths(CDir::entryInfoList(root, {pattern}, Nj6Global::eDirFilterAll)) == matching,
                "a name filter shows the names that match", pattern);
    const QStringList excluded = top.isEmpty() ? QStringList() : QStringList(top.first().fileName());
    require(CDir::entryInfoList(root, Nj6Global::eDirFilterAll, excluded) == top.mid(excluded.size()),
            "a name that is excluded is not shown");
}

void checkNames(const QString &root, const QStringList &entries)
{
    for (const QString &entry : entries) {
        const QString path = root + slash + entry;
        const QString name = entry.mid(entry.lastIndexOf(slash) + 1);
        const QString directory = CPath::filePath(path);
        require(CPath::trimPathIfPathIsEqual(path, directory) == name,
                "of a file in the directory the name is left", path);
        require(name.startsWith(QLatin1Char(':')) || CPath::prependPathIfNoPathIsGiven(name, path) == path,
                "a name is put back beside its file", path);
        require(CPath::trimPathIfPathIsEqual(path, directory + QStringLiteral("/..")) == path,
                "of a file in another directory the path stays", path);
    }
}

void checkCopy(const QString &root, const QString &copy, const Tree &tree)
{
    require(CDir::copyDirectoryRecursive(root, copy), "a tree is copied");
    const QStringList entries = tree.entries(false);
    require(QDir(copy).exists() == !entries.isEmpty(), "of nothing there is no copy");
    if (entries.isEmpty())
        return;
    require(relativePaths(CDir::listFilesAndDirectories(copy), copy) == entries,
            "the copy has all but hidden entries");
    for (const QString &entry : entries)
        require(contents(copy + slash + entry) == contents(root + slash + entry),
                "a copy has the contents of the file", entry);
}

// What was copied is removed entry by entry, what is in a directory before it.
void checkRemoval(const QString &root, QStringList entries)
{
    std::reverse(entries.begin(), entries.end());
    QStringList deepestFirst = entries;
    std::stable_sort(deepestFirst.begin(), deepestFirst.end(),
                     [](const QString &a, const QString &b) { return a.count(slash) > b.count(slash); });
    QStringList paths;
    for (const QString &entry : qAsConst(deepestFirst))
        paths.append(root + slash + entry);
    require(CDir::removeFilesByPathList(paths), "files and empty directories are removed");
    require(CDir::listFilesAndDirectories(root).size() == 1, "nothing is left of them");
}

// Each open file has buffers of 16 KiB; and Qt makes a pattern of names, the first line, into an automaton
// with several states per character, of which every name that is compared needs a table.
constexpr std::size_t memoryLimit(std::size_t entries, std::size_t patternSize)
{
    return 524288 * (entries + 1) + (16384 + 1024 * entries) * patternSize;
}

} // namespace

void traverseDirectoryTrees(const QByteArray &input)
{
    // In memory where the system has such a place: many thousands are made.
    static const QTemporaryDir scratch(
        QDir(QStringLiteral("/dev/shm")).exists() ? QStringLiteral("/dev/shm/fuzz_trees-XXXXXX") : QString());
    require(scratch.isValid(), "there is a temporary directory");
    const QStringList lines = InputReader(input).takeText().split(QLatin1Char('\n'));
    const QString root = scratch.filePath(QStringLiteral("tree"));
    const QString copy = scratch.filePath(QStringLiteral("a/copy"));
    require(CDir::removeDirectoryRecursive(root)
                && CDir::removeDirectoryRecursive(scratch.filePath(QStringLiteral("a"))),
            "a whole tree is removed");
    const Tree tree(root, lines);
    bounded(memoryLimit(static_cast<std::size_t>(tree.entries(true).size()),
                        static_cast<std::size_t>(lines.first().size())),
            "a tree costs memory in proportion to its entries", [&] {
                checkListings(root, tree, lines.first());
                checkNames(root, tree.entries(true));
                checkCopy(root, copy, tree);
                if (QDir(copy).exists())
                    checkRemoval(copy, tree.entries(false));
            });
}
