// SPDX-License-Identifier: MIT
#include <CDir.h>

#include <FileTree.h>
#include <LoggedTest.h>
#include <PrintedText.h>
#include <ScopedCurrentDirectory.h>

#include <QTest>

#include <memory>

#ifndef Q_OS_WIN
#include <sys/stat.h>
#endif

namespace {

QByteArray unableToCopy(const QString &target)
{
    return "\nCDir::copyFile unable to copy " + target.toLocal8Bit();
}

QByteArray unableToCreate(const QString &target)
{
    return "\nCDir::copyDirectory unable to create " + target.toLocal8Bit();
}

} // namespace

class tst_directories_tree_copying : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void treeIsCopied();
    void hiddenEntriesAreNotCopied();
    void copyStopsAtTheFirstFailure();
    void existingFileInTheTargetFails();
    void fileInTheWayOfADirectoryOfTheTreeFails();
    void targetInsideTheSourceEnds();
    void emptyTargetIsRefused();
    void sourceIsRelative_data();
    void sourceIsRelative();
    void sourceIsSpelledOddly_data();
    void sourceIsSpelledOddly();
    void sourceBeginsLikeTheTarget();
    void sourceInASearchPathIsCopied();
    void sourceInTheResourcesIsCopied_data();
    void sourceInTheResourcesIsCopied();
    void sourceWithANulCharacterIsRefused();
    void directoryNamedLikeADriveIsCopied();
    void targetIsRelative();
    void sourceWithoutEntriesCopiesNothing_data();
    void sourceWithoutEntriesCopiesNothing();
    void linksAreCopiedAsWhatTheyLeadTo();
    void specialEntriesArePassedOver();

protected:
    void prepare() override { mTree = std::make_unique<FileTree>(); }
    void tidy() override { mTree.reset(); }

private:
    std::unique_ptr<FileTree> mTree;
};

void tst_directories_tree_copying::treeIsCopied()
{
    mTree->file("source/a.par", "a");
    mTree->file("source/axis/b.par", "b");
    mTree->file("source/axis/motor/c \xC3\xA4.par", "c");
    mTree->directory("source/empty");
    bool copied = false;
    const QByteArray printed = printedBy(
        [&] { copied = CDir::copyDirectoryRecursive(mTree->path("source"), mTree->path("target")); });
    QVERIFY(copied);
    QCOMPARE(printed, QByteArray());
    QCOMPARE(mTree->names("target"), mTree->names("source"));
    QCOMPARE(mTree->content("target/a.par"), QByteArray("a"));
    QCOMPARE(mTree->content("target/axis/b.par"), QByteArray("b"));
    QCOMPARE(mTree->content("target/axis/motor/c \xC3\xA4.par"), QByteArray("c"));
}

void tst_directories_tree_copying::hiddenEntriesAreNotCopied()
{
    mTree->file("source/a.par");
    mTree->file("source/.hidden.par");
    mTree->file("source/.directory/b.par");
    mTree->file("source/axis/.hidden.par");
    QVERIFY(CDir::copyDirectoryRecursive(mTree->path("source"), mTree->path("target")));
    QCOMPARE(mTree->names("target"), nameList("a.par axis"));
}

void tst_directories_tree_copying::copyStopsAtTheFirstFailure()
{
    for (const char *name : {"source/a.par", "source/b.par", "target/a.par", "target/b.par"})
        mTree->file(name, name);
    bool copied = true;
    const QByteArray printed = printedBy(
        [&] { copied = CDir::copyDirectoryRecursive(mTree->path("source"), mTree->path("target")); });
    QVERIFY(!copied);
    QVERIFY2(printed == unableToCopy(mTree->path("target/a.par"))
                 || printed == unableToCopy(mTree->path("target/b.par")),
             printed.constData());
}

void tst_directories_tree_copying::existingFileInTheTargetFails()
{
    mTree->file("source/axis/a.par", "new");
    mTree->file("target/axis/a.par", "old");
    bool copied = true;
    const QByteArray printed = printedBy(
        [&] { copied = CDir::copyDirectoryRecursive(mTree->path("source"), mTree->path("target")); });
    QVERIFY(!copied);
    QCOMPARE(printed, unableToCopy(mTree->path("target/axis/a.par")));
    QCOMPARE(mTree->content("target/axis/a.par"), QByteArray("old"));
}

void tst_directories_tree_copying::fileInTheWayOfADirectoryOfTheTreeFails()
{
    mTree->directory("source/axis");
    mTree->file("target/axis");
    bool copied = true;
    const QByteArray printed = printedBy(
        [&] { copied = CDir::copyDirectoryRecursive(mTree->path("source"), mTree->path("target")); });
    QVERIFY(!copied);
    QCOMPARE(printed, unableToCreate(mTree->path("target/axis")));
}

void tst_directories_tree_copying::targetInsideTheSourceEnds()
{
    mTree->file("source/a.par");
    mTree->file("source/axis/b.par");
    QVERIFY(CDir::copyDirectoryRecursive(mTree->path("source"), mTree->path("source/axis/copy")));
    QCOMPARE(mTree->names("source"),
             nameList("a.par axis axis/b.par axis/copy axis/copy/a.par axis/copy/axis axis/copy/axis/b.par"));
}

void tst_directories_tree_copying::emptyTargetIsRefused()
{
    // A name that no root directory has, should it be copied there.
    mTree->file("source/j6core-copied-into-the-root.par");
    bool copied = true;
    const ScopedCurrentDirectory current(mTree->directory("current"));
    QCOMPARE(printedBy([&] { copied = CDir::copyDirectoryRecursive(mTree->path("source"), QString()); }),
             QByteArray());
    QVERIFY(!copied);
    QVERIFY(!QFile::exists(QStringLiteral("/j6core-copied-into-the-root.par")));
    QCOMPARE(mTree->names("current"), QStringList());
}

void tst_directories_tree_copying::sourceIsRelative_data()
{
    QTest::addColumn<QString>("current");
    QTest::addColumn<QString>("source");
    const auto row = [](const char *name, const char *current, const char *source) {
        QTest::newRow(name) << QString::fromUtf8(current) << QString::fromUtf8(source);
    };
    row("name", "", "source");
    row("separator at the end", "", "source/");
    row("two separators at the end", "", "source//");
    row("dot", "", "./source");
    row("the current directory", "source", ".");
    row("the parent", "source/axis", "..");
    row("beside the current directory", "target", "../source");
    row("there and back", "", "source/axis/..");
}

void tst_directories_tree_copying::sourceIsRelative()
{
    QFETCH(QString, current);
    QFETCH(QString, source);
    mTree->file("source/a.par");
    mTree->file("source/axis/b.par");
    mTree->directory("target");
    const ScopedCurrentDirectory directory(mTree->path() + QLatin1Char('/') + current);
    QVERIFY(CDir::copyDirectoryRecursive(source, mTree->path("target")));
    QCOMPARE(mTree->names("target"), nameList("a.par axis axis/b.par"));
}

void tst_directories_tree_copying::sourceIsSpelledOddly_data()
{
    QTest::addColumn<QString>("current");
    QTest::addColumn<QString>("source");
    const auto row = [](const char *current, const char *source) {
        QTest::addRow("%s in /%s", source, current)
            << QString::fromUtf8(current) << QString::fromUtf8(source);
    };
    // "<tree>" stands for the tree's path, which begins with a separator.
    for (const char *source : {"<tree>/source",
                               "<tree>/source/",
                               "<tree>/source///",
                               "<tree>//source",
                               "<tree>/./source",
                               "<tree>/source/.",
                               "<tree>/source/./",
                               "<tree>/target/../source",
                               "<tree>/source/axis/..",
                               "<tree>/source/axis/../",
                               "<tree>/source/axis/../../source",
                               "<tree>/link",
                               "<tree>/link/",
                               "<tree>/link/.",
                               "<tree>/link/axis/..",
                               "/<tree>/source",
                               "/..<tree>/source",
                               "/.<tree>/source",
                               "source/.",
                               "source/./",
                               ".//source",
                               "source//.//",
                               "./target/../source",
                               "target/..//source",
                               "link",
                               "link//",
                               "./link/axis/.."})
        row("", source);
    for (const char *source : {".", "./", ".//", "./.", "axis/..", "../source", "../source/", "..//./source"})
        row("source", source);
    for (const char *source : {"..", "../", "..//", "../.", ".././", "../axis/..", "../../source"})
        row("source/axis", source);
}

// Where the entries arrive is what getRelativeSubPath() says of each.
void tst_directories_tree_copying::sourceIsSpelledOddly()
{
#ifdef Q_OS_WIN
    QSKIP("links are shortcut files here, and paths begin with a drive");
#endif
    QFETCH(QString, current);
    QFETCH(QString, source);
    mTree->file("source/a.par", "a");
    mTree->file("source/axis/source/b.par", "b");
    mTree->file("source/.../c", "hidden");
    mTree->directory("target");
    mTree->link("link", mTree->path("source"));
    source.replace(QStringLiteral("<tree>"), mTree->path());
    const ScopedCurrentDirectory directory(mTree->path() + QLatin1Char('/') + current);
    QStringList subPaths;
    const QFileInfoList entries = CDir::listFileAndDirInfos(source).mid(1);
    for (const QFileInfo &entry : entries)
        subPaths.append(CDir::getRelativeSubPath(source, entry.filePath()));
    subPaths.sort();
    QCOMPARE(subPaths, nameList("a.par axis axis/source axis/source/b.par"));

    QVERIFY(CDir::copyDirectoryRecursive(source, mTree->path("target")));
    QCOMPARE(mTree->names("target"), subPaths);
    QCOMPARE(mTree->content("target/a.par"), QByteArray("a"));
    QCOMPARE(mTree->content("target/axis/source/b.par"), QByteArray("b"));
    QCOMPARE(mTree->names(), nameList("link source source/... source/.../c source/a.par source/axis "
                                      "source/axis/source source/axis/source/b.par target target/a.par "
                                      "target/axis target/axis/source target/axis/source/b.par"));
}

void tst_directories_tree_copying::sourceBeginsLikeTheTarget()
{
    mTree->file("source/source/a.par");
    QVERIFY(CDir::copyDirectoryRecursive(mTree->path("source"), mTree->path("source2")));
    QVERIFY(CDir::copyDirectoryRecursive(mTree->path("source2"), mTree->path("sou")));
    QCOMPARE(mTree->names(), nameList("sou sou/source sou/source/a.par source source/source "
                                      "source/source/a.par source2 source2/source source2/source/a.par"));
}

void tst_directories_tree_copying::sourceInASearchPathIsCopied()
{
    mTree->file("plant/axis/motor/a.par", "a");
    const QString prefix = QStringLiteral("plant");
    QDir::setSearchPaths(prefix, {mTree->path("missing"), mTree->path("plant")});
    const bool copied = CDir::copyDirectoryRecursive(QStringLiteral("plant:axis"), mTree->path("one"))
                        && CDir::copyDirectoryRecursive(QStringLiteral("plant:axis/"), mTree->path("two"));
    QDir::setSearchPaths(prefix, QStringList());
    QVERIFY(copied);
    for (const char *target : {"one", "two"})
        QCOMPARE(mTree->names(target), nameList("motor motor/a.par"));
}

void tst_directories_tree_copying::sourceInTheResourcesIsCopied_data()
{
    QTest::addColumn<QString>("source");
    for (const char *source : {":/j6Core", ":/j6Core/", ":/j6Core//", ":/./j6Core", ":/j6Core/data/.."})
        QTest::newRow(source) << QString::fromLatin1(source);
}

void tst_directories_tree_copying::sourceInTheResourcesIsCopied()
{
    QFETCH(QString, source);
    QVERIFY(CDir::copyDirectoryRecursive(source, mTree->path("target")));
    QVERIFY(mTree->names("target").contains(QStringLiteral("data/Setup.Ini")));
    QCOMPARE(mTree->content("target/data/Setup.Ini"),
             FileTree::contentOf(QStringLiteral(":/j6Core/data/Setup.Ini")));
}

void tst_directories_tree_copying::sourceWithANulCharacterIsRefused()
{
    mTree->file("source/axis/a.par");
    mTree->directory("source/empty");
    const QString source = mTree->path("source") + QChar(QChar::Null) + QLatin1Char('x');
    bool copied = true;
    QCOMPARE(printedBy([&] { copied = CDir::copyDirectoryRecursive(source, mTree->path("target")); }),
             QByteArray());
    QVERIFY(!copied);
    QCOMPARE(mTree->names(), nameList("source source/axis source/axis/a.par source/empty"));
}

void tst_directories_tree_copying::directoryNamedLikeADriveIsCopied()
{
#ifdef Q_OS_WIN
    QSKIP("it is a drive here");
#endif
    mTree->file("C:/source/axis/b.par");
    const ScopedCurrentDirectory directory(mTree->path());
    QVERIFY(CDir::copyDirectoryRecursive(QStringLiteral("C:/source"), QStringLiteral("D:/target")));
    QCOMPARE(mTree->names("D:/target"), nameList("axis axis/b.par"));
}

void tst_directories_tree_copying::targetIsRelative()
{
    mTree->file("source/axis/b.par");
    const ScopedCurrentDirectory directory(mTree->path());
    QVERIFY(CDir::copyDirectoryRecursive(mTree->path("source"), QStringLiteral("target")));
    QVERIFY(CDir::copyDirectoryRecursive(mTree->path("source"), QStringLiteral("target/again/")));
    QCOMPARE(mTree->names("target"), nameList("again again/axis again/axis/b.par axis axis/b.par"));
}

void tst_directories_tree_copying::sourceWithoutEntriesCopiesNothing_data()
{
    QTest::addColumn<QString>("source");
    QTest::newRow("empty path") << QString();
    QTest::newRow("missing") << QStringLiteral("missing");
    QTest::newRow("file") << QStringLiteral("a.par");
    QTest::newRow("empty directory") << QStringLiteral("empty");
}

void tst_directories_tree_copying::sourceWithoutEntriesCopiesNothing()
{
    QFETCH(QString, source);
    mTree->file("a.par");
    mTree->directory("empty");
    const ScopedCurrentDirectory directory(mTree->path());
    bool copied = false;
    QCOMPARE(printedBy([&] { copied = CDir::copyDirectoryRecursive(source, mTree->path("target")); }),
             QByteArray());
    QVERIFY(copied);
    QCOMPARE(mTree->names(), nameList("a.par empty"));
}

void tst_directories_tree_copying::linksAreCopiedAsWhatTheyLeadTo()
{
#ifdef Q_OS_WIN
    QSKIP("links are shortcut files here");
#endif
    mTree->file("outside/a.par", "outside");
    mTree->directory("source");
    mTree->link("source/file", mTree->path("outside/a.par"));
    mTree->link("source/directory", mTree->path("outside"));
    mTree->link("source/loop", mTree->path("source"));
    mTree->link("source/nowhere", mTree->path("missing"));
    QVERIFY(CDir::copyDirectoryRecursive(mTree->path("source"), mTree->path("target")));
    QCOMPARE(mTree->names("target"), nameList("directory file loop"));
    for (const char *name : {"target/directory", "target/loop"}) {
        QVERIFY(QFileInfo(mTree->path(name)).isDir());
        QVERIFY(!QFileInfo(mTree->path(name)).isSymLink());
    }
    QVERIFY(!QFileInfo(mTree->path("target/file")).isSymLink());
    QCOMPARE(mTree->content("target/file"), QByteArray("outside"));
}

void tst_directories_tree_copying::specialEntriesArePassedOver()
{
#ifdef Q_OS_WIN
    QSKIP("there are no named pipes in directories here");
#else
    mTree->file("source/back\\slash.par", "kept");
    QCOMPARE(mkfifo(QFile::encodeName(mTree->path("source/pipe")).constData(), 0600), 0);
    QVERIFY(CDir::copyDirectoryRecursive(mTree->path("source"), mTree->path("target")));
    QCOMPARE(mTree->names("target"), QStringList{QStringLiteral("back\\slash.par")});
#endif
}

QTEST_GUILESS_MAIN(tst_directories_tree_copying)
#include "tst_directories_tree_copying.moc"
