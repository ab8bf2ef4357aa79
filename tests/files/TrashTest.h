// SPDX-License-Identifier: MIT
#ifndef TRASHTEST_H
#define TRASHTEST_H

#include <FileTree.h>
#include <LoggedTest.h>
#include <ScopedVariable.h>

#include <memory>

#include <sys/wait.h>
#include <unistd.h>

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

// Runs the function in another process. Its result, up to 127, is the process's.
template<typename Function>
pid_t startProcess(const Function &function)
{
    const pid_t process = fork();
    if (process == 0)
        _exit(function());
    return process;
}

inline int resultOf(pid_t process)
{
    int status = 0;
    return waitpid(process, &status, 0) == process && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

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
