// SPDX-License-Identifier: MIT
#include <CDir.h>

#include <FileTree.h>
#include <LoggedTest.h>
#include <PrintedText.h>
#include <ScopedCurrentDirectory.h>
#include <ScopedVariable.h>

#include <QTest>

#include <memory>

namespace {

QByteArray unableToRemove(const QString &path)
{
    return "\n CDir::removeFileOrDirectory: unable to remove " + path.toLocal8Bit();
}

// What is printed for anything but a file: the listing shows what is in the way.
QByteArray unableToRemove(const QString &path, const QStringList &listing)
{
    return unableToRemove(path) + "\n " + listing.join(QLatin1Char('\n')).toLocal8Bit() + "\n--------------";
}

// A file that even the administrator cannot remove; empty where the system has none.
QString unremovableFile()
{
    const QString path = QStringLiteral("/proc/version");
    return QFileInfo(path).isFile() ? path : QString();
}

} // namespace

class tst_directories_removing : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void fileIsRemoved();
    void removeFileLeavesDirectories();
    void removeFileRemovesTheLinkItself();
    void emptyDirectoryIsRemoved();
    void removeDirectoryLeavesWhatIsNoEmptyDirectory();
    void relativeDirectoryIsInTheTemporaryDirectory();
    void emptyPathsRemoveNothing();

    void treeIsRemoved();
    void missingTreeIsRemovedSuccessfully();
    void emptyPathOfATreeRemovesNothing();
    void linksInATreeAreNotFollowed();
    void linkToATreeIsFollowed();

    void fileOrDirectoryIsRemoved();
    void missingPathIsRemovedWithADiagnosis();
    void directoryWithEntriesStaysAndIsListed();
    void hiddenEntriesInTheWayAreNotListed();
    void fileThatCannotBeRemovedIsNotListed();
    void linkToNowhereStaysAndDoesNotExist();
    void relativeDirectoryIsLookedForInTheTemporaryDirectory();
    void emptyPathIsRemovedWithADiagnosis();
    void pathWithANulCharacterIsNotRemoved();
    void linkToADirectoryStaysAndIsListed();
    void pathsAndNamesAreNoFormats();

    void pathListIsRemovedInOrder();
    void allPathsAreAttempted();
    void emptyPathListIsRemoved();

protected:
    void prepare() override { mTree = std::make_unique<FileTree>(); }
    void tidy() override { mTree.reset(); }

private:
    std::unique_ptr<FileTree> mTree;
};

void tst_directories_removing::fileIsRemoved()
{
    const QString path = mTree->file("a.par");
    QVERIFY(CDir::removeFile(path));
    QVERIFY(!mTree->has("a.par"));
    QVERIFY(!CDir::removeFile(path));
}

void tst_directories_removing::removeFileLeavesDirectories()
{
    QVERIFY(!CDir::removeFile(mTree->directory("axis")));
    QVERIFY(mTree->has("axis"));
}

void tst_directories_removing::removeFileRemovesTheLinkItself()
{
    mTree->file("a.par");
    QVERIFY(CDir::removeFile(mTree->link("link", mTree->path("a.par"))));
    QVERIFY(CDir::removeFile(mTree->link("nowhere", mTree->path("missing"))));
    QCOMPARE(mTree->names(), nameList("a.par"));
}

void tst_directories_removing::emptyDirectoryIsRemoved()
{
    const QString path = mTree->directory("axis");
    QVERIFY(CDir::removeDirectory(path));
    QVERIFY(!mTree->has("axis"));
    QVERIFY(!CDir::removeDirectory(path));
}

void tst_directories_removing::removeDirectoryLeavesWhatIsNoEmptyDirectory()
{
    mTree->file("axis/a.par");
    mTree->file("hidden/.a.par");
    for (const char *name : {"axis", "axis/a.par", "hidden"})
        QVERIFY2(!CDir::removeDirectory(mTree->path(name)), name);
    QCOMPARE(mTree->names(), nameList("axis axis/a.par hidden hidden/.a.par"));
}

void tst_directories_removing::relativeDirectoryIsInTheTemporaryDirectory()
{
    const ScopedVariable temporary(temporaryDirectoryVariable,
                                   QFile::encodeName(mTree->directory("temporary")));
    const ScopedCurrentDirectory current(mTree->directory("current"));
    QCOMPARE(QDir::tempPath(), mTree->path("temporary"));
    mTree->directory("temporary/axis");
    mTree->directory("current/axis");
    mTree->directory("current/only-here");
    QVERIFY(CDir::removeDirectory(QStringLiteral("axis")));
    QVERIFY(!CDir::removeDirectory(QStringLiteral("only-here")));
    QCOMPARE(mTree->names(), nameList("current current/axis current/only-here temporary"));
}

void tst_directories_removing::emptyPathsRemoveNothing()
{
    const ScopedVariable temporary(temporaryDirectoryVariable,
                                   QFile::encodeName(mTree->directory("temporary")));
    const ScopedCurrentDirectory current(mTree->directory("current"));
    QVERIFY(!CDir::removeFile(QString()));
    QVERIFY(!CDir::removeDirectory(QString()));
    QCOMPARE(takeLog(), (QStringList{QStringLiteral("QFile::remove: Empty or null file name"),
                                     QStringLiteral("QDir::rmdir: Empty or null file name")}));
    QCOMPARE(mTree->names(), nameList("current temporary"));
}

void tst_directories_removing::treeIsRemoved()
{
    mTree->file("axis/motor/a.par");
    mTree->file("axis/.hidden/.b.par");
    QVERIFY(CDir::removeDirectoryRecursive(mTree->path("axis")));
    QCOMPARE(mTree->names(), QStringList());
}

void tst_directories_removing::missingTreeIsRemovedSuccessfully()
{
    QVERIFY(CDir::removeDirectoryRecursive(mTree->path("missing")));
}

void tst_directories_removing::emptyPathOfATreeRemovesNothing()
{
    mTree->file("current/a.par");
    const ScopedCurrentDirectory current(mTree->path("current"));
    QVERIFY(!CDir::removeDirectoryRecursive(QString()));
    QVERIFY(!CDir::removeDirectoryRecursive(QLatin1String("")));
    QCOMPARE(mTree->names(), nameList("current current/a.par"));
}

void tst_directories_removing::linksInATreeAreNotFollowed()
{
    mTree->file("outside/a.par");
    mTree->directory("axis");
    mTree->link("axis/link", mTree->path("outside"));
    QVERIFY(CDir::removeDirectoryRecursive(mTree->path("axis")));
    QCOMPARE(mTree->names(), nameList("outside outside/a.par"));
}

void tst_directories_removing::linkToATreeIsFollowed()
{
#ifdef Q_OS_WIN
    QSKIP("links are shortcut files here");
#endif
    mTree->file("outside/a.par");
    QVERIFY(!CDir::removeDirectoryRecursive(mTree->link("link", mTree->path("outside"))));
    QCOMPARE(mTree->names(), nameList("link outside"));
}

void tst_directories_removing::fileOrDirectoryIsRemoved()
{
    const QString file = mTree->file("a.par");
    const QString directory = mTree->directory("axis");
    bool removed = false;
    QCOMPARE(printedBy([&] {
                 removed = CDir::removeFileOrDirectory(file) && CDir::removeFileOrDirectory(directory);
             }),
             QByteArray());
    QVERIFY(removed);
    QCOMPARE(mTree->names(), QStringList());
}

void tst_directories_removing::missingPathIsRemovedWithADiagnosis()
{
    const QString path = mTree->path("missing");
    bool removed = false;
    QCOMPARE(printedBy([&] { removed = CDir::removeFileOrDirectory(path); }), unableToRemove(path, {path}));
    QVERIFY(removed);
}

void tst_directories_removing::directoryWithEntriesStaysAndIsListed()
{
    mTree->file("axis/motor/a.par");
    mTree->file("axis/b \xC3\xA4.par");
    const QString path = mTree->path("axis");
    const QStringList listing = CDir::listFilesAndDirectories(path);
    QCOMPARE(listing.size(), 4);
    bool removed = true;
    QCOMPARE(printedBy([&] { removed = CDir::removeFileOrDirectory(path); }), unableToRemove(path, listing));
    QVERIFY(!removed);
    QCOMPARE(mTree->names("axis"), (QStringList{QString::fromUtf8("b \xC3\xA4.par"), QStringLiteral("motor"),
                                                QStringLiteral("motor/a.par")}));
}

void tst_directories_removing::hiddenEntriesInTheWayAreNotListed()
{
    mTree->file("axis/.a.par");
    const QString path = mTree->path("axis");
    bool removed = true;
    QCOMPARE(printedBy([&] { removed = CDir::removeFileOrDirectory(path); }), unableToRemove(path, {path}));
    QVERIFY(!removed);
    QVERIFY(mTree->has("axis/.a.par"));
}

void tst_directories_removing::fileThatCannotBeRemovedIsNotListed()
{
    const QString path = unremovableFile();
    if (path.isEmpty())
        QSKIP("there is no file that cannot be removed");
    bool removed = true;
    QCOMPARE(printedBy([&] { removed = CDir::removeFileOrDirectory(path); }), unableToRemove(path));
    QVERIFY(!removed);
}

void tst_directories_removing::linkToNowhereStaysAndDoesNotExist()
{
#ifdef Q_OS_WIN
    QSKIP("links are shortcut files here");
#endif
    const QString path = mTree->link("nowhere", mTree->path("missing"));
    bool removed = false;
    QCOMPARE(printedBy([&] { removed = CDir::removeFileOrDirectory(path); }), unableToRemove(path, {path}));
    QVERIFY(removed);
    QVERIFY(mTree->has("nowhere"));
}

void tst_directories_removing::relativeDirectoryIsLookedForInTheTemporaryDirectory()
{
    const ScopedVariable temporary(temporaryDirectoryVariable,
                                   QFile::encodeName(mTree->directory("temporary")));
    const ScopedCurrentDirectory current(mTree->directory("current"));
    QCOMPARE(QDir::tempPath(), mTree->path("temporary"));
    mTree->directory("temporary/axis");
    mTree->directory("current/axis");
    mTree->file("temporary/a.par");
    mTree->file("current/a.par");
    QVERIFY(CDir::removeFileOrDirectory(QStringLiteral("a.par")));
    bool removed = true;
    QCOMPARE(printedBy([&] { removed = CDir::removeFileOrDirectory(QStringLiteral("axis")); }), QByteArray());
    QVERIFY(!removed);
    QCOMPARE(mTree->names(), nameList("current current/axis temporary temporary/a.par"));
}

void tst_directories_removing::emptyPathIsRemovedWithADiagnosis()
{
    const ScopedVariable temporary(temporaryDirectoryVariable,
                                   QFile::encodeName(mTree->directory("temporary")));
    const ScopedCurrentDirectory current(mTree->directory("current"));
    bool removed = false;
    QCOMPARE(printedBy([&] { removed = CDir::removeFileOrDirectory(QString()); }),
             unableToRemove(QString(), {QString()}));
    QVERIFY(removed); // there is no such path
    QCOMPARE(takeLog(), QStringList{QStringLiteral("QDir::rmdir: Empty or null file name")});
    QCOMPARE(mTree->names(), nameList("current temporary"));
}

void tst_directories_removing::pathWithANulCharacterIsNotRemoved()
{
    mTree->file("a.par");
    mTree->directory("empty");
    mTree->file("axis/a.par");
    for (const char *name : {"a.par", "empty", "axis"}) {
        const QString path = mTree->path(name) + QChar(QChar::Null) + QLatin1Char('x');
        QVERIFY(!CDir::removeFile(path));
        QVERIFY(!CDir::removeDirectory(path));
        CDir::removeDirectoryRecursive(path); // a directory that does not exist
        const QString shown = mTree->path(name) + QStringLiteral("?x");
        QCOMPARE(printedBy([&] { CDir::removeFileOrDirectory(path); }), unableToRemove(shown, {shown}));
    }
    QVERIFY(!takeLog().isEmpty());
    QCOMPARE(mTree->names(), nameList("a.par axis axis/a.par empty"));
}

void tst_directories_removing::linkToADirectoryStaysAndIsListed()
{
#ifdef Q_OS_WIN
    QSKIP("links are shortcut files here");
#endif
    const QString target = mTree->directory("empty");
    const QString link = mTree->link("link", target);
    bool removed = true;
    QCOMPARE(printedBy([&] { removed = CDir::removeFileOrDirectory(link); }), unableToRemove(link, {link}));
    QVERIFY(!removed);
    QCOMPARE(mTree->names(), nameList("empty link"));
    QVERIFY(CDir::removeFileOrDirectory(mTree->link("file link", mTree->file("a.par"))));
    QCOMPARE(mTree->names(), nameList("a.par empty link"));
}

void tst_directories_removing::pathsAndNamesAreNoFormats()
{
    mTree->file("%s%n/%100000d%n.par");
    const QString path = mTree->path("%s%n");
    const QStringList listing = {path, mTree->path("%s%n/%100000d%n.par")};
    QCOMPARE(printedBy([&] { CDir::removeFileOrDirectory(path); }), unableToRemove(path, listing));
}

void tst_directories_removing::pathListIsRemovedInOrder()
{
    // The directory is empty only when its file has gone.
    const QStringList paths = {mTree->file("axis/a.par"), mTree->path("axis"), mTree->file("b.par")};
    bool removed = false;
    QCOMPARE(printedBy([&] { removed = CDir::removeFilesByPathList(paths); }), QByteArray());
    QVERIFY(removed);
    QCOMPARE(mTree->names(), QStringList());
}

void tst_directories_removing::allPathsAreAttempted()
{
    mTree->file("axis/a.par");
    mTree->file("motor/a.par");
    const QStringList paths = {mTree->path("axis"), mTree->file("b.par"), mTree->path("motor"),
                               mTree->file("c.par")};
    bool removed = true;
    const QByteArray printed = printedBy([&] { removed = CDir::removeFilesByPathList(paths); });
    QVERIFY(!removed);
    QCOMPARE(printed, unableToRemove(paths.at(0), {paths.at(0), mTree->path("axis/a.par")})
                          + unableToRemove(paths.at(2), {paths.at(2), mTree->path("motor/a.par")}));
    QCOMPARE(mTree->names(), nameList("axis axis/a.par motor motor/a.par"));
}

void tst_directories_removing::emptyPathListIsRemoved()
{
    QVERIFY(CDir::removeFilesByPathList(QStringList()));
}

QTEST_GUILESS_MAIN(tst_directories_removing)
#include "tst_directories_removing.moc"
