// SPDX-License-Identifier: MIT
#ifndef FILETREE_H
#define FILETREE_H

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <QTemporaryDir>

// A temporary directory in which a test builds the files that it needs. Its path is the real one, without
// links. Names are relative to it and in UTF-8.
class FileTree
{
public:
    FileTree() : mPath(QFileInfo(mDirectory.path()).canonicalFilePath()) {}

    QString path() const { return mPath; }
    QString path(const char *name) const { return mPath + QLatin1Char('/') + QString::fromUtf8(name); }

    QString directory(const char *name) const
    {
        QDir().mkpath(path(name));
        return path(name);
    }

    // Makes the directories on the way, too.
    QString file(const char *name, const QByteArray &content = QByteArrayLiteral("content")) const
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("%s cannot be written", name);
        return path(name);
    }

    // A link with this text as its target.
    QString link(const char *name, const QString &target) const
    {
        if (!QFile::link(target, path(name)))
            qFatal("%s cannot be linked", name);
        return path(name);
    }

    QByteArray content(const char *name) const { return contentOf(path(name)); }

    static QByteArray contentOf(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("<unreadable>");
    }

    // Whether the name is taken, by a link that leads nowhere for example.
    bool has(const char *name) const
    {
        const QFileInfo entry(path(name));
        return entry.exists() || entry.isSymLink();
    }

    // Everything below a directory, hidden and special entries included, relative to it and sorted.
    QStringList names(const char *directory = "") const
    {
        QStringList all;
        const QDir base(path(directory));
        QDirIterator walk(base.path(), QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                          QDirIterator::Subdirectories);
        while (walk.hasNext())
            all.append(base.relativeFilePath(walk.next()));
        all.sort();
        return all;
    }

private:
    QTemporaryDir mDirectory;
    QString mPath;
};

// The names in a list, separated by blanks.
inline QStringList nameList(const char *names)
{
    return QString::fromUtf8(names).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

#endif // FILETREE_H
