// SPDX-License-Identifier: MIT
// CDir and CPath on a disk that fails: each file operation that they make fails once and for good.
#include <CDir.h>
#include <CPath.h>
#include <CTemporaryDir.h>

#include <FaultSweep.h>
#include <LoggedTest.h>
#include <PrintedText.h>
#include <ScopedVariable.h>

#include <QTest>

#include <functional>

using faults::Fault;
using faults::FaultSweep;
using faults::Operation;
using faults::Trial;

namespace {

// What a file of the size of several buffers holds: no two pages are equal.
QByteArray longContent()
{
    QByteArray content;
    for (int i = 0; content.size() < 40000; ++i)
        content += QByteArray::number(i) + ';';
    return content;
}

// All that lies in a directory: the names with the contents of the files.
QStringList picture(const FileTree &tree, const char *directory)
{
    QStringList entries = tree.names(directory);
    for (QString &name : entries) {
        const QString path = tree.path(directory) + QLatin1Char('/') + name;
        if (QFileInfo(path).isFile())
            name += QLatin1Char('=') + QString::fromLatin1(FileTree::contentOf(path));
    }
    return entries;
}

// What a trial of CDir has in common: files that stay what they are, a result and what is printed.
class DirectoryTrial : public Trial
{
public:
    void prepare(const FileTree &tree) override
    {
        build(tree);
        mBefore = picture(tree, "source");
    }
    void act(const FileTree &tree) override
    {
        mPrinted = printedBy([&] { mResult = call(tree); });
    }
    QString flaw(const FileTree &tree, const Fault &fault) override
    {
        if (picture(tree, "source") != mBefore)
            return QStringLiteral("the source is damaged");
        if (!mResult && fault.number == 0)
            return QStringLiteral("fails without a fault");
        if (mPrinted.isEmpty() != mResult)
            return QStringLiteral("%1, but printed: '%2'")
                .arg(QLatin1String(mResult ? "true" : "false"), QString::fromLocal8Bit(mPrinted));
        return mResult ? flawOfSuccess(tree, fault) : flawOfFailure(tree, fault);
    }

protected:
    virtual void build(const FileTree &tree) = 0;
    virtual bool call(const FileTree &tree) = 0;
    virtual QString flawOfSuccess(const FileTree &tree, const Fault &fault) = 0;
    virtual QString flawOfFailure(const FileTree &tree, const Fault &fault) = 0;

    QByteArray printed() const { return mPrinted; }
    const QStringList &before() const { return mBefore; }

private:
    QStringList mBefore;
    QByteArray mPrinted;
    bool mResult = false;
};

class CopyFileTrial : public DirectoryTrial
{
protected:
    void build(const FileTree &tree) override { tree.file("source/a.par", longContent()); }
    bool call(const FileTree &tree) override
    {
        return CDir::copyFile(tree.path("source/a.par"), tree.path("new/target/a.par"));
    }
    QString flawOfSuccess(const FileTree &tree, const Fault &fault) override
    {
        Q_UNUSED(fault)
        return picture(tree, "new/target") == before() ? QString() : QStringLiteral("not the whole file");
    }
    QString flawOfFailure(const FileTree &tree, const Fault &fault) override
    {
        if (printed() != "\nCDir::copyFile unable to copy " + QFile::encodeName(tree.path("new/target/a.par")))
            return QStringLiteral("another message: ") + QString::fromLocal8Bit(printed());
        // What cannot be removed stays.
        const bool isClean = tree.names("new/target").isEmpty() || fault.operation == Operation::Remove;
        return isClean ? QString() : QStringLiteral("left: ") + tree.names("new/target").join(QLatin1Char(' '));
    }
};

class CopyFileOverTrial : public CopyFileTrial
{
};

class CopyTreeTrial : public DirectoryTrial
{
protected:
    void build(const FileTree &tree) override
    {
        tree.file("source/a.par", "a");
        tree.file("source/axis/b.par", longContent());
        tree.file("source/axis/x/c.par", "c");
        tree.directory("source/empty");
        tree.file("target/mine.par", "mine");
    }
    bool call(const FileTree &tree) override
    {
        return CDir::copyDirectoryRecursive(tree.path("source"), tree.path("target"));
    }
    QString flawOfSuccess(const FileTree &tree, const Fault &fault) override
    {
        Q_UNUSED(fault)
        QStringList expected = before() + QStringList{QStringLiteral("mine.par=mine")};
        expected.sort();
        QStringList actual = picture(tree, "target");
        actual.sort();
        return actual == expected ? QString()
                                  : QStringLiteral("not the whole tree: ")
                       + tree.names("target").join(QLatin1Char(' '));
    }
    // Whole files only, and the one that was there.
    QString flawOfFailure(const FileTree &tree, const Fault &fault) override
    {
        const QStringList actual = picture(tree, "target");
        for (const QString &entry : actual) {
            if (entry != QLatin1String("mine.par=mine") && !before().contains(entry)
                && fault.operation != Operation::Remove)
                return QStringLiteral("left: ") + entry.left(40);
        }
        return actual.contains(QStringLiteral("mine.par=mine")) ? QString()
                                                                : QStringLiteral("what was there is lost");
    }
};

class RemoveTrial : public DirectoryTrial
{
protected:
    void build(const FileTree &tree) override
    {
        tree.file("source/stays.par", "stays");
        tree.file("old/a.par", "a");
        tree.file("old/axis/b.par", "b");
    }
    QString flawOfSuccess(const FileTree &tree, const Fault &fault) override
    {
        Q_UNUSED(fault)
        return tree.has("old") ? QStringLiteral("not removed") : QString();
    }
    QString flawOfFailure(const FileTree &tree, const Fault &fault) override
    {
        Q_UNUSED(fault)
        return tree.has("old") ? QString() : QStringLiteral("removed, but false");
    }
};

} // namespace

class TestDirectoryFaults : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void copyFile();
    void copyTree();
};

void TestDirectoryFaults::copyFile()
{
    CopyFileTrial trial;
    const FaultSweep sweep(trial);
    QCOMPARE(sweep.flaws().join("\n"), QString());
    qInfo("%d", sweep.size());
}

void TestDirectoryFaults::copyTree()
{
    CopyTreeTrial trial;
    const FaultSweep sweep(trial);
    QCOMPARE(sweep.flaws().join("\n"), QString());
    qInfo("%d", sweep.size());
}

QTEST_GUILESS_MAIN(TestDirectoryFaults)
#include "tst_directory_faults.moc"
