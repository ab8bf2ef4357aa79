// SPDX-License-Identifier: MIT
#ifndef TRASHTEST_H
#define TRASHTEST_H

#include <FileTree.h>
#include <LoggedTest.h>
#include <ScopedVariable.h>

#include <QProcess>
#include <QVector>

#include <memory>

// The results of CDir::moveToTrash().
constexpr int moved = 0;
constexpr int failed = 1;
constexpr int missing = 10;

// The value behind "key=" in a trash information file.
inline QByteArray infoValue(const QByteArray &text, const QByteArray &key)
{
    const QList<QByteArray> lines = text.split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith(key + '='))
            return line.mid(key.size() + 1);
    }
    return QByteArrayLiteral("<missing>");
}

// Another process that moves files to the trash.
class TrashMover
{
public:
    explicit TrashMover(const QStringList &arguments)
    {
        mProcess.start(QStringLiteral(J6CORE_TRASH_MOVER), arguments, QIODevice::ReadOnly);
    }

    // What CDir::moveToTrash() has given there, in order; empty if the process did not end as it should.
    QVector<int> results()
    {
        constexpr int minute = 60000;
        if (!mProcess.waitForFinished(minute) || mProcess.exitStatus() != QProcess::NormalExit
            || mProcess.exitCode() != 0)
            return QVector<int>();
        QVector<int> results;
        while (mProcess.canReadLine())
            results.append(mProcess.readLine().trimmed().toInt());
        return results;
    }

private:
    QProcess mProcess;
};

// Base of the tests of the trash: every test function has a tree with a home of its own in it.
class TrashTest : public LoggedTest
{
protected:
    void prepare() override
    {
        mTree = std::make_unique<FileTree>();
        mHome = std::make_unique<ScopedVariable>("HOME", QFile::encodeName(mTree->directory("home")));
        mDataHome = std::make_unique<ScopedVariable>("XDG_DATA_HOME", QByteArray());
    }
    void tidy() override
    {
        mDataHome.reset();
        mHome.reset();
        mTree.reset();
    }

    // What the trash knows about an entry.
    QByteArray info(const char *name) const
    {
        return mTree->content(
            (QByteArray("home/.local/share/Trash/info/") + name + ".trashinfo").constData());
    }
    QString recordedPath(const char *name) const
    {
        return QString::fromUtf8(QByteArray::fromPercentEncoding(infoValue(info(name), "Path")));
    }
    QStringList trashed() const { return mTree->names("home/.local/share/Trash/files"); }
    QStringList infos() const { return mTree->names("home/.local/share/Trash/info"); }

    std::unique_ptr<FileTree> mTree;

private:
    std::unique_ptr<ScopedVariable> mHome;
    std::unique_ptr<ScopedVariable> mDataHome;
};

#endif // TRASHTEST_H
