// SPDX-License-Identifier: MIT
// CDir, CPath and CTemporaryDir on a disk that fails: each file operation that they make fails once and for
// good. Nothing that was there before is damaged, and success is what it says.
#include <CDir.h>
#include <CPath.h>
#include <CTemporaryDir.h>

#include "DirectoryTrial.h"

#include <LoggedTest.h>
#include <ScopedVariable.h>

#include <QTest>

#include <memory>

#include <sys/stat.h>

using faults::Effect;
using faults::Operation;

namespace {

mode_t modeOf(const QString &path)
{
    struct stat status = {};
    return stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 07777U : 0;
}

} // namespace

class tst_directory_faults : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void fileIsCopied_data();
    void fileIsCopied();
    void fileThatShrinksIsNotCopied_data();
    void fileThatShrinksIsNotCopied();
    void treeWithAFileThatShrinksIsNotCopied();
    void fileIsNotCopiedOver();
    void directoryIsMade();
    void treeIsCopied_data();
    void treeIsCopied();
    void fileIsRemoved();
    void directoryIsRemoved();
    void treeIsRemoved();
    void pathsAreRemoved();
    void pathIsCreated();
    void existingPathKeepsItsPermissions();
    void temporaryDirectoryIsMade();
    void temporaryDirectoryIsRemoved();
};

void tst_directory_faults::fileIsCopied_data()
{
    QTest::addColumn<bool>("bySystem");
    QTest::newRow("within the system") << true;
    QTest::newRow("by reading and writing") << false;
}

void tst_directory_faults::fileIsCopied()
{
    QFETCH(bool, bySystem);
    const auto build = [](const FileTree &tree) { tree.file("source.par", longContent()); };
    const auto call = [](const FileTree &tree) {
        return CDir::copyFile(tree.path("source.par"), tree.path("new/target/a.par"));
    };
    const auto judge = [](const Outcome &outcome) {
        const FileTree &tree = outcome.tree;
        if (tree.content("source.par") != longContent())
            return QStringLiteral("the source is damaged");
        if (outcome.result != 0)
            return flawUnless(tree.content("new/target/a.par") == longContent(),
                              QStringLiteral("not the whole file"));
        const QByteArray message =
            "\nCDir::copyFile unable to copy " + QFile::encodeName(tree.path("new/target/a.par"));
        if (outcome.printed != message)
            return QStringLiteral("another message");
        // What cannot be removed stays.
        return flawUnless(tree.names("new/target").isEmpty() || outcome.fault.operation == Operation::Remove,
                          QStringLiteral("left: ") + listed(tree.names("new/target")));
    };
    faults::Limits limits;
    if (!bySystem)
        limits.always = {Operation::CopyData, 1, true, Effect::Fail, EINVAL};
    const QString flaws =
        flawsOf(build, call, true, judge,
                {Operation::Open, bySystem ? Operation::CopyData : Operation::Write, Operation::Sync,
                 Operation::Close, Operation::MakeDirectory, Operation::LookUp, Operation::SetMode},
                limits);
    QVERIFY2(flaws.isEmpty(), qPrintable(flaws));
}

void tst_directory_faults::fileThatShrinksIsNotCopied_data()
{
    fileIsCopied_data();
}

// A copy that is true has no byte less than the source had at first, and one that is not leaves nothing.
void tst_directory_faults::fileThatShrinksIsNotCopied()
{
    QFETCH(bool, bySystem);
    const auto build = [](const FileTree &tree) { tree.file("source.par", longContent()); };
    const auto call = [](const FileTree &tree) {
        return CDir::copyFile(tree.path("source.par"), tree.path("new/target/a.par"));
    };
    const auto judge = [](const Outcome &outcome) {
        const FileTree &tree = outcome.tree;
        if (outcome.result != 0)
            return flawUnless(tree.content("new/target/a.par") == longContent(),
                              QStringLiteral("not the whole file"));
        if (!outcome.printed.startsWith("\nCDir::copyFile unable to copy "))
            return QStringLiteral("another message");
        return flawUnless(tree.names("new/target").isEmpty(), listed(tree.names("new/target")));
    };
    faults::Limits limits;
    if (!bySystem)
        limits.always = {Operation::CopyData, 1, true, Effect::Fail, EINVAL};
    const QString flaws = flawsOf(build, call, true, judge,
                                  {bySystem ? Operation::CopyData : Operation::Read, Operation::Close},
                                  limits, faults::FaultSweep::Shrinkings);
    QVERIFY2(flaws.isEmpty(), qPrintable(flaws));
}

void tst_directory_faults::treeWithAFileThatShrinksIsNotCopied()
{
    const auto build = [](const FileTree &tree) {
        tree.file("source/a.par", "a");
        tree.file("source/axis/b.par", longContent());
    };
    const auto call = [](const FileTree &tree) {
        return CDir::copyDirectoryRecursive(tree.path("source"), tree.path("target"));
    };
    const auto judge = [](const Outcome &outcome) {
        const QStringList expected = {QStringLiteral("a.par=a"), QStringLiteral("axis"),
                                      QStringLiteral("axis/b.par=") + QString::fromLatin1(longContent())};
        QStringList actual = picture(outcome.tree, "target");
        if (outcome.result != 0)
            return flawUnless(actual == expected, QStringLiteral("not the whole tree: ") + listed(actual));
        for (const QString &entry : expected)
            actual.removeAll(entry);
        return flawUnless(actual.isEmpty(), QStringLiteral("left: ") + listed(actual));
    };
    const QString flaws =
        flawsOf(build, call, true, judge, {Operation::CopyData}, {}, faults::FaultSweep::Shrinkings);
    QVERIFY2(flaws.isEmpty(), qPrintable(flaws));
}

void tst_directory_faults::fileIsNotCopiedOver()
{
    const auto build = [](const FileTree &tree) {
        tree.file("source.par", "new");
        tree.file("target.par", "old");
    };
    const auto call = [](const FileTree &tree) {
        return CDir::copyFile(tree.path("source.par"), tree.path("target.par"));
    };
    const auto judge = [](const Outcome &outcome) {
        const bool isWhole =
            outcome.tree.content("source.par") == "new" && outcome.tree.content("target.par") == "old";
        if (!isWhole)
            return QStringLiteral("damaged");
        return flawUnless(outcome.result == 0 && !outcome.printed.isEmpty(), QStringLiteral("not told"));
    };
    const QString flaws = flawsOf(build, call, false, judge, {Operation::LookUp});
    QVERIFY2(flaws.isEmpty(), qPrintable(flaws));
}

void tst_directory_faults::directoryIsMade()
{
    const auto call = [](const FileTree &tree) {
        return CDir::copyDirectory(tree.path("mine"), tree.path("new/target"));
    };
    const auto judge = [](const Outcome &outcome) {
        const QString target = outcome.tree.path("new/target");
        if (outcome.result == 0) {
            return flawUnless(outcome.printed == "\nCDir::copyDirectory unable to create " + target.toUtf8(),
                              QStringLiteral("another message"));
        }
        return flawUnless(QFileInfo(target).isDir() && outcome.printed.isEmpty(), QStringLiteral("not made"));
    };
    const QString flaws = flawsOf([](const FileTree &) {}, call, true, judge,
                                  {Operation::MakeDirectory, Operation::LookUp, Operation::SetMode});
    QVERIFY2(flaws.isEmpty(), qPrintable(flaws));
}

void tst_directory_faults::treeIsCopied_data()
{
    QTest::addColumn<bool>("hidesTypes");
    QTest::newRow("entries of known types") << false;
    QTest::newRow("entries to be looked at") << true;
}

void tst_directory_faults::treeIsCopied()
{
    QFETCH(bool, hidesTypes);
    faults::Limits limits;
    limits.hidesTypes = hidesTypes;
    const auto build = [](const FileTree &tree) {
        tree.file("source/a.par", "a");
        tree.file("source/axis/b.par", longContent());
        tree.file("source/axis/x/c.par", "c");
        tree.link("source/link", tree.file("d.par", "d"));
        tree.directory("source/empty");
        tree.directory("target");
    };
    const auto call = [](const FileTree &tree) {
        return CDir::copyDirectoryRecursive(tree.path("source"), tree.path("target"));
    };
    const auto judge = [](const Outcome &outcome) {
        const QStringList expected = {QStringLiteral("a.par=a"),
                                      QStringLiteral("axis"),
                                      QStringLiteral("axis/b.par=") + QString::fromLatin1(longContent()),
                                      QStringLiteral("axis/x"),
                                      QStringLiteral("axis/x/c.par=c"),
                                      QStringLiteral("empty"),
                                      QStringLiteral("link=d")};
        if (picture(outcome.tree, "source") != expected)
            return QStringLiteral("the source is damaged");
        QStringList actual = picture(outcome.tree, "target");
        if (outcome.result != 0)
            return flawUnless(actual == expected, QStringLiteral("not the whole tree: ") + listed(actual));
        // What is there is whole; a part of a file that cannot be removed stays.
        for (const QString &entry : expected)
            actual.removeAll(entry);
        return flawUnless(actual.isEmpty() || outcome.fault.operation == Operation::Remove,
                          QStringLiteral("left: ") + listed(actual));
    };
    const QString flaws =
        flawsOf(build, call, true, judge,
                {Operation::Open, Operation::Sync, Operation::Close, Operation::MakeDirectory,
                 Operation::LookUp, Operation::CopyData, Operation::SetMode, Operation::List},
                limits);
    QVERIFY2(flaws.isEmpty(), qPrintable(flaws));
}

void tst_directory_faults::fileIsRemoved()
{
    const auto build = [](const FileTree &tree) { tree.file("old.par"); };
    const auto call = [](const FileTree &tree) { return CDir::removeFile(tree.path("old.par")); };
    const auto judge = [](const Outcome &outcome) {
        return flawUnless((outcome.result != 0) != outcome.tree.has("old.par"), QStringLiteral("not told"));
    };
    const QString flaws = flawsOf(build, call, true, judge, {Operation::Remove});
    QVERIFY2(flaws.isEmpty(), qPrintable(flaws));
}

void tst_directory_faults::directoryIsRemoved()
{
    const auto build = [](const FileTree &tree) { tree.directory("old"); };
    const auto call = [](const FileTree &tree) { return CDir::removeDirectory(tree.path("old")); };
    const auto judge = [](const Outcome &outcome) {
        return flawUnless((outcome.result != 0) != outcome.tree.has("old"), QStringLiteral("not told"));
    };
    const QString flaws = flawsOf(build, call, true, judge, {Operation::Remove});
    QVERIFY2(flaws.isEmpty(), qPrintable(flaws));
}

void tst_directory_faults::treeIsRemoved()
{
    const auto build = [](const FileTree &tree) {
        tree.file("old/a.par");
        tree.file("old/axis/b.par");
        tree.link("old/axis/mine", tree.path("mine"));
    };
    const auto call = [](const FileTree &tree) { return CDir::removeDirectoryRecursive(tree.path("old")); };
    const auto judge = [](const Outcome &outcome) {
        // A directory that cannot be looked up does not exist: that is true.
        const bool isTold = (outcome.result != 0) != outcome.tree.has("old");
        return flawUnless(isTold || outcome.fault.operation == Operation::LookUp, QStringLiteral("not told"));
    };
    const QString flaws =
        flawsOf(build, call, true, judge, {Operation::Remove, Operation::List, Operation::LookUp});
    QVERIFY2(flaws.isEmpty(), qPrintable(flaws));
}

void tst_directory_faults::pathsAreRemoved()
{
    const auto build = [](const FileTree &tree) {
        tree.file("old/a.par");
        tree.file("b.par");
        tree.directory("c");
    };
    const auto call = [](const FileTree &tree) {
        return CDir::removeFilesByPathList(
            {tree.path("old/a.par"), tree.path("old"), tree.path("b.par"), tree.path("c")});
    };
    const auto judge = [](const Outcome &outcome) {
        const bool isLeft = outcome.tree.names() != nameList("mine mine/kept.par");
        if (isLeft && !outcome.printed.startsWith("\n CDir::removeFileOrDirectory: unable to remove "))
            return QStringLiteral("another message");
        // What cannot be looked up does not exist, but the message is there.
        return flawUnless((outcome.result != 0) != isLeft || outcome.fault.operation == Operation::LookUp,
                          QStringLiteral("not told"));
    };
    const QString flaws = flawsOf(build, call, true, judge, {Operation::Remove, Operation::LookUp});
    QVERIFY2(flaws.isEmpty(), qPrintable(flaws));
}

void tst_directory_faults::pathIsCreated()
{
    const auto build = [](const FileTree &tree) {
        chmod(QFile::encodeName(tree.path("mine")).constData(), 0700);
    };
    const auto call = [](const FileTree &tree) {
        return CPath::createDirIfWanted(tree.path("mine/../new/log/"), true) == tree.path("mine/../new/log/");
    };
    const auto judge = [](const Outcome &outcome) {
        if (outcome.result == 0 || modeOf(outcome.tree.path("mine")) != 0700)
            return QStringLiteral("another path, or others may enter");
        const bool isExpected = outcome.fault.number != 0 || modeOf(outcome.tree.path("new/log")) == 0775;
        return flawUnless(isExpected && outcome.printed.isEmpty(), QStringLiteral("not made"));
    };
    const QString flaws =
        flawsOf(build, call, true, judge, {Operation::MakeDirectory, Operation::LookUp, Operation::SetMode});
    QVERIFY2(flaws.isEmpty(), qPrintable(flaws));
}

void tst_directory_faults::existingPathKeepsItsPermissions()
{
    const auto build = [](const FileTree &tree) {
        chmod(QFile::encodeName(tree.path("mine")).constData(), 0700);
    };
    const auto call = [](const FileTree &tree) {
        return CPath::createDirIfWanted(tree.path("mine/"), true) == tree.path("mine/");
    };
    const auto judge = [](const Outcome &outcome) {
        return flawUnless(modeOf(outcome.tree.path("mine")) == 0700, QStringLiteral("others may enter"));
    };
    const QString flaws = flawsOf(build, call, true, judge, {Operation::LookUp});
    QVERIFY2(flaws.isEmpty(), qPrintable(flaws));
}

void tst_directory_faults::temporaryDirectoryIsMade()
{
    QString path;
    const auto call = [&path](const FileTree &tree) {
        const ScopedVariable temporary("TMPDIR", QFile::encodeName(tree.path()));
        CTemporaryDir directory;
        directory.setAutoRemove(false);
        path = directory.path();
        return directory.isValid();
    };
    const auto judge = [&path](const Outcome &outcome) {
        const int count = QDir(outcome.tree.path()).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
        if (outcome.result == 0)
            return flawUnless(path.isEmpty(), QStringLiteral("invalid, but has a path"));
        return flawUnless(count == 2 && modeOf(path) == 0700, QStringLiteral("not made for the owner alone"));
    };
    const QString flaws = flawsOf([](const FileTree &) {}, call, true, judge, {Operation::MakeDirectory});
    QVERIFY2(flaws.isEmpty(), qPrintable(flaws));
}

void tst_directory_faults::temporaryDirectoryIsRemoved()
{
    std::unique_ptr<CTemporaryDir> directory;
    const auto build = [&directory](const FileTree &tree) {
        const ScopedVariable temporary("TMPDIR", QFile::encodeName(tree.path()));
        directory = std::make_unique<CTemporaryDir>();
        directory->setAutoRemove(false);
        QDir(directory->path()).mkpath(QStringLiteral("axis/x"));
        QFile::copy(tree.path("mine/kept.par"), directory->path() + QStringLiteral("/axis/a.par"));
    };
    const auto call = [&directory](const FileTree &) { return directory->remove(); };
    const auto judge = [&directory](const Outcome &outcome) {
        const bool isLeft = QFileInfo::exists(directory->path());
        return flawUnless((outcome.result != 0) != isLeft || outcome.fault.operation == Operation::LookUp,
                          QStringLiteral("not told"));
    };
    const QString flaws =
        flawsOf(build, call, true, judge, {Operation::Remove, Operation::List, Operation::LookUp});
    QVERIFY2(flaws.isEmpty(), qPrintable(flaws));
}

QTEST_GUILESS_MAIN(tst_directory_faults)
#include "tst_directory_faults.moc"
