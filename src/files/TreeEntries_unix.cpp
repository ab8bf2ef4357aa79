// SPDX-License-Identifier: MIT
#include "TreeEntries.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <memory>
#include <utility>

#include <dirent.h>
#include <sys/stat.h>

namespace {

struct CloseDirectory
{
    void operator()(DIR *list) const { closedir(list); }
};
using DirectoryList = std::unique_ptr<DIR, CloseDirectory>;

enum class Kind { File, Directory, LinkToDirectory, Other, Unknown };

Kind kindOf(const struct stat &status)
{
    if (S_ISDIR(status.st_mode))
        return Kind::Directory;
    return S_ISREG(status.st_mode) ? Kind::File : Kind::Other;
}

// A link is what it leads to. Where that is nothing it is passed over like a device.
Kind kindBehindLink(const QByteArray &path)
{
    struct stat status = {};
    if (stat(path.constData(), &status) != 0)
        return errno == ENOENT || errno == ENOTDIR || errno == ELOOP ? Kind::Other : Kind::Unknown;
    return S_ISDIR(status.st_mode) ? Kind::LinkToDirectory : kindOf(status);
}

Kind kindOf(const QByteArray &path)
{
    struct stat status = {};
    if (lstat(path.constData(), &status) != 0)
        return Kind::Unknown;
    return S_ISLNK(status.st_mode) ? kindBehindLink(path) : kindOf(status);
}

// Most file systems tell it with the name.
Kind kindOf(const QByteArray &path, unsigned char type)
{
    switch (type) {
    case DT_REG:
        return Kind::File;
    case DT_DIR:
        return Kind::Directory;
    case DT_LNK:
        return kindBehindLink(path);
    case DT_UNKNOWN:
        return kindOf(path);
    default:
        return Kind::Other;
    }
}

// Hidden are "." and "..", too. Qt passes over what has no name in the locale's encoding.
bool isShown(const QByteArray &name)
{
    return !name.startsWith('.') && QFile::encodeName(QFile::decodeName(name)) == name;
}

class TreeWalk
{
public:
    explicit TreeWalk(const QByteArray &root) : mRoot(root) {}

    // False if something stays unknown.
    bool walk()
    {
        bool isKnown = list(QByteArray());
        // One directory is open at a time, however deep they lie.
        while (isKnown && !mPending.empty()) {
            const QByteArray directory = std::move(mPending.back());
            mPending.pop_back();
            isKnown = list(directory);
        }
        return isKnown;
    }

    std::vector<TreeEntry> entries() { return std::move(mEntries); }

private:
    // Adds what lies in a directory below the root; its path has a separator at its end, that of the root is
    // empty.
    bool list(const QByteArray &directory)
    {
        const DirectoryList list(opendir((mRoot + '/' + directory).constData()));
        if (list == nullptr)
            return directory.isEmpty() && (errno == ENOENT || errno == ENOTDIR);
        while (true) {
            errno = 0;
            // NOLINTNEXTLINE(concurrency-mt-unsafe): the list belongs to this thread
            const dirent *entry = readdir(list.get());
            if (entry == nullptr)
                return errno == 0;
            const QByteArray name = entry->d_name;
            if (isShown(name) && !add(directory + name, entry->d_type))
                return false;
        }
    }

    bool add(const QByteArray &subPath, unsigned char type)
    {
        const Kind kind = kindOf(mRoot + '/' + subPath, type);
        if (kind == Kind::Directory)
            mPending.push_back(subPath + '/');
        if (kind != Kind::Other)
            mEntries.push_back({QFile::decodeName(subPath), kind != Kind::File});
        return kind != Kind::Unknown;
    }

    QByteArray mRoot;
    std::vector<QByteArray> mPending;
    std::vector<TreeEntry> mEntries;
};

} // namespace

std::optional<std::vector<TreeEntry>> treeEntries(const QString &directory)
{
    if (directory.isEmpty())
        return std::vector<TreeEntry>();
    if (!QFileInfo(directory).isNativePath()) // among the resources of the program, for example
        return treeEntriesByQt(directory);
    TreeWalk tree(QFile::encodeName(directory));
    return tree.walk() ? std::make_optional(tree.entries()) : std::nullopt;
}
