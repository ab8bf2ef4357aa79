// SPDX-License-Identifier: MIT
// What permissions forbid is not done, and that is told. The administrator may do everything: another user
// tries.
#include <CDir.h>
#include <CPath.h>
#include <CSettingsFile.h>
#include <CTar.h>
#include <CTemporaryDir.h>

#include <FileTree.h>
#include <LoggedTest.h>
#include <OtherUser.h>
#include <PrintedText.h>
#include <ScopedVariable.h>

#include <QTest>

#include <memory>

#include <sys/stat.h>

class tst_other_user : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void unreadableFileIsNotCopied();
    void nothingIsCopiedIntoAReadOnlyDirectory();
    void treeWithAnUnreadableDirectoryIsNotCopied();
    void treeWithADirectoryThatMayNotBeEnteredIsNotCopied();
    void nothingIsRemovedFromAReadOnlyDirectory();
    void whatMayNotBeLookedUpCountsAsRemoved();
    void fileStaysWhereItMayNotBeMoved();
    void directoryIsNotMadeInAReadOnlyOne();
    void unreadableArchiveIsRefused();
    void unreadableSettingsStay();
    void settingsInAReadOnlyDirectoryStay();

protected:
    void prepare() override
    {
        mTree = std::make_unique<FileTree>();
        setMode("", 0777);
    }
    void tidy() override
    {
        const QStringList names = mTree->names();
        for (const QString &name : names)
            setMode(name.toUtf8().constData(), 0777); // a tree that may not be entered is not removed
        mTree.reset();
    }

private:
    void setMode(const char *name, mode_t mode) const
    {
        chmod(QFile::encodeName(mTree->path(name)).constData(), mode);
    }

    std::unique_ptr<FileTree> mTree;
};

void tst_other_user::initTestCase()
{
    const FileTree tree;
    chmod(QFile::encodeName(tree.path()).constData(), 0777);
    const QString path = tree.file("a");
    chmod(QFile::encodeName(path).constData(), 0666);
    const int canRead = asOtherUser([&] { return FileTree::contentOf(path) == "content" ? 1 : 0; });
    if (canRead != 1)
        QSKIP("there is no other user here, or none with a way to the temporary directory");
}

void tst_other_user::unreadableFileIsNotCopied()
{
    mTree->file("source.par", "secret");
    setMode("source.par", 0000);
    int isCopied = -1;
    const QByteArray printed = printedBy([&] {
        isCopied =
            asOtherUser([&] { return int(CDir::copyFile(mTree->path("source.par"), mTree->path("a.par"))); });
    });
    QCOMPARE(isCopied, 0);
    QCOMPARE(mTree->names(), nameList("source.par"));
    QCOMPARE(printed, "\nCDir::copyFile unable to copy " + mTree->path("a.par").toLocal8Bit());
}

void tst_other_user::nothingIsCopiedIntoAReadOnlyDirectory()
{
    mTree->file("source/a.par");
    mTree->directory("target");
    setMode("target", 0555);
    int results = -1;
    printedBy([&] {
        results = asOtherUser([&] {
            return int(CDir::copyFile(mTree->path("source/a.par"), mTree->path("target/a.par")))
                   + int(CDir::copyDirectory(mTree->path("source"), mTree->path("target/new")))
                   + int(CDir::copyDirectoryRecursive(mTree->path("source"), mTree->path("target")));
        });
    });
    QCOMPARE(results, 0);
    QCOMPARE(mTree->names("target"), QStringList());
}

void tst_other_user::treeWithAnUnreadableDirectoryIsNotCopied()
{
    mTree->file("source/a.par");
    mTree->file("source/axis/b.par");
    setMode("source/axis", 0000);
    const int isCopied = asOtherUser(
        [&] { return int(CDir::copyDirectoryRecursive(mTree->path("source"), mTree->path("target"))); });
    QCOMPARE(isCopied, 0);
    QVERIFY(!mTree->has("target"));
    setMode("source", 0000);
    QCOMPARE(asOtherUser([&] {
                 return int(CDir::copyDirectoryRecursive(mTree->path("source"), mTree->path("target")));
             }),
             0);
    setMode("source", 0777);
}

void tst_other_user::treeWithADirectoryThatMayNotBeEnteredIsNotCopied()
{
    mTree->file("source/axis/b.par");
    setMode("source/axis", 0444);
    int isCopied = -1;
    printedBy([&] {
        isCopied = asOtherUser(
            [&] { return int(CDir::copyDirectoryRecursive(mTree->path("source"), mTree->path("target"))); });
    });
    QCOMPARE(isCopied, 0);
    QVERIFY(!mTree->has("target/axis/b.par"));
}

void tst_other_user::nothingIsRemovedFromAReadOnlyDirectory()
{
    mTree->file("old/a.par");
    mTree->directory("old/empty");
    setMode("old", 0555);
    int results = -1;
    printedBy([&] {
        results = asOtherUser([&] {
            return int(CDir::removeFile(mTree->path("old/a.par")))
                   + int(CDir::removeDirectory(mTree->path("old/empty")))
                   + int(CDir::removeFileOrDirectory(mTree->path("old/a.par")))
                   + int(CDir::removeFilesByPathList({mTree->path("old/a.par"), mTree->path("old/empty")}))
                   + int(CDir::removeDirectoryRecursive(mTree->path("old")));
        });
    });
    QCOMPARE(results, 0);
    QCOMPARE(mTree->names("old"), nameList("a.par empty"));
}

void tst_other_user::whatMayNotBeLookedUpCountsAsRemoved()
{
    mTree->file("old/a.par");
    setMode("old", 0000);
    int result = -1;
    const QByteArray printed = printedBy([&] {
        result = asOtherUser([&] { return int(CDir::removeFileOrDirectory(mTree->path("old/a.par"))); });
    });
    QCOMPARE(result, 1);
    QVERIFY(printed.startsWith("\n CDir::removeFileOrDirectory: unable to remove "));
    setMode("old", 0777);
    QCOMPARE(mTree->names("old"), nameList("a.par"));
}

void tst_other_user::fileStaysWhereItMayNotBeMoved()
{
    mTree->directory("home");
    mTree->file("old/a.par", "a");
    setMode("home", 0777);
    setMode("old", 0555);
    const ScopedVariable home("HOME", QFile::encodeName(mTree->path("home")));
    const ScopedVariable dataHome("XDG_DATA_HOME", QByteArray());
    QCOMPARE(asOtherUser([&] { return CDir::moveToTrash(mTree->path("old/a.par")); }), 1);
    QCOMPARE(mTree->content("old/a.par"), QByteArray("a"));
    QCOMPARE(mTree->names("home/.local/share/Trash/info"), QStringList());
    QCOMPARE(mTree->names("home/.local/share/Trash/files"), QStringList());
}

void tst_other_user::directoryIsNotMadeInAReadOnlyOne()
{
    mTree->directory("read-only");
    setMode("read-only", 0555);
    const ScopedVariable temporary("TMPDIR", QFile::encodeName(mTree->path("read-only")));
    const int result = asOtherUser([&] {
        const QString path = mTree->path("read-only/log/");
        const CTemporaryDir directory;
        return int(CPath::createDirIfWanted(path, true) == path) + int(directory.isValid())
               + int(!directory.path().isEmpty());
    });
    QCOMPARE(result, 1);
    QCOMPARE(mTree->names("read-only"), QStringList());
}

void tst_other_user::unreadableArchiveIsRefused()
{
    mTree->file("bundle.tar", QByteArray(1024, '\0'));
    setMode("bundle.tar", 0000);
    const int result = asOtherUser([&] {
        CTar bundle;
        const bool isLoaded = bundle.loadFile(mTree->path("bundle.tar"));
        return !isLoaded && bundle.error() == QLatin1String("Permission denied") ? 1 : 0;
    });
    QCOMPARE(result, 1);
}

void tst_other_user::unreadableSettingsStay()
{
    mTree->file("tool.ini", "[Drive]\naddress=0x0000002a\n");
    setMode("tool.ini", 0000);
    const int result = asOtherUser([&] {
        CSettingsFile settings(mTree->path("tool.ini"), QSettings::IniFormat, nullptr);
        const bool isDefault =
            settings.unsignedIntValue(QStringLiteral("Drive"), QStringLiteral("address"), 7) == 7;
        settings.setBoolean(QStringLiteral("Drive"), QStringLiteral("enabled"), true);
        settings.sync();
        return isDefault && settings.status() == QSettings::AccessError ? 1 : 0;
    });
    QCOMPARE(result, 1);
    QCOMPARE(mTree->names(), nameList("tool.ini"));
    setMode("tool.ini", 0644);
    QCOMPARE(mTree->content("tool.ini"), QByteArray("[Drive]\naddress=0x0000002a\n"));
}

void tst_other_user::settingsInAReadOnlyDirectoryStay()
{
    mTree->file("etc/tool.ini", "[Drive]\naddress=0x0000002a\n");
    setMode("etc", 0555);
    const int result = asOtherUser([&] {
        CSettingsFile settings(mTree->path("etc/tool.ini"), QSettings::IniFormat, nullptr);
        const bool isRead =
            settings.unsignedIntValue(QStringLiteral("Drive"), QStringLiteral("address"), 7) == 42;
        settings.setBoolean(QStringLiteral("Drive"), QStringLiteral("enabled"), true);
        settings.sync();
        return isRead && settings.status() == QSettings::AccessError ? 1 : 0;
    });
    QCOMPARE(result, 1);
    QCOMPARE(mTree->names("etc"), nameList("tool.ini"));
    QCOMPARE(mTree->content("etc/tool.ini"), QByteArray("[Drive]\naddress=0x0000002a\n"));
}

QTEST_GUILESS_MAIN(tst_other_user)
#include "tst_other_user.moc"
