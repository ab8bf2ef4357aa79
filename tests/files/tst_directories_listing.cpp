// SPDX-License-Identifier: MIT
#include <CDir.h>

#include <CPath.h>

#include <FileTree.h>
#include <LoggedTest.h>

#include <QTest>

#include <type_traits>

Q_DECLARE_METATYPE(QDir::Filters)

namespace {

constexpr auto noFilter = static_cast<Nj6Global::EDirFilter>(7);
constexpr QDir::Filters plainFiles = QDir::Files;

QStringList fileNames(const QFileInfoList &entries)
{
    QStringList names;
    for (const QFileInfo &entry : entries)
        names.append(entry.fileName());
    return names;
}

QStringList filePaths(const QFileInfoList &entries)
{
    QStringList paths;
    for (const QFileInfo &entry : entries)
        paths.append(entry.filePath());
    return paths;
}

QStringList sorted(QStringList names)
{
    names.sort();
    return names;
}

} // namespace

static_assert(Nj6Global::eDirFilterAll == 0 && Nj6Global::eDirFilterFiles == 1
                  && Nj6Global::eDirFilterDirs == 2,
              "the numbers are stored in settings");
static_assert(std::is_same<decltype(CDir::toDirFilter(noFilter)), QFlags<QDir::Filter>>::value,
              "Qt's own flags");

class tst_directories_listing : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void dirFilter_data();
    void dirFilter();
    void entriesOfAFilter_data();
    void entriesOfAFilter();
    void entriesAreSortedByName();
    void directoriesAndFilesAreSortedTogether();
    void namesAreFiltered();
    void namesAreExcluded_data();
    void namesAreExcluded();
    void missingDirectoryHasNoEntries();

    void pathWithANulCharacterHasNoEntries_data();
    void pathWithANulCharacterHasNoEntries();

    void treeEntriesOfAFilter_data();
    void treeEntriesOfAFilter();
    void treeNamesAreFiltered();
    void qtFlagsDecideAboutHiddenEntries();
    void treeEntriesAreInTheOrderOfTheIterator();
    void treeListingBeginsWithItsPath();
    void treeListingShowsNothingHidden();
    void treeListingsHaveOneOrder();
    void treeListingOfAMissingPathIsThePath();
    void treeListingDoesNotFollowLinks();

    void pathsAreJoined();

private:
    FileTree mTree;
};

void tst_directories_listing::initTestCase()
{
    for (const char *name : {"plant/b.par", "plant/A.par", "plant/a.csv", "plant/.hidden.par",
                             "plant/axis/c.par", "plant/axis/motor/d.csv", "plant/.directory/e.par"})
        mTree.file(name);
}

void tst_directories_listing::dirFilter_data()
{
    QTest::addColumn<quint32>("filter");
    QTest::addColumn<QDir::Filters>("expected");
    const QDir::Filters always = QDir::Hidden | QDir::NoDotAndDotDot;
    QTest::newRow("all") << 0U << (always | QDir::Dirs | QDir::Files);
    QTest::newRow("files") << 1U << (always | QDir::Files);
    QTest::newRow("directories") << 2U << (always | QDir::Dirs);
    for (const quint32 other : {3U, 7U, 0x80000000U, 0xFFFFFFFFU})
        QTest::addRow("%u", other) << other << always;
}

void tst_directories_listing::dirFilter()
{
    QFETCH(quint32, filter);
    QFETCH(QDir::Filters, expected);
    QCOMPARE(CDir::toDirFilter(static_cast<Nj6Global::EDirFilter>(filter)), expected);
}

void tst_directories_listing::entriesOfAFilter_data()
{
    QTest::addColumn<quint32>("filter");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("all") << 0U << nameList(".directory .hidden.par A.par a.csv axis b.par");
    QTest::newRow("files") << 1U << nameList(".hidden.par A.par a.csv b.par");
    QTest::newRow("directories") << 2U << nameList(".directory axis");
    QTest::newRow("7 lists nothing") << 7U << QStringList();
}

void tst_directories_listing::entriesOfAFilter()
{
    QFETCH(quint32, filter);
    QFETCH(QStringList, expected);
    const auto dirFilter = static_cast<Nj6Global::EDirFilter>(filter);
    const QString path = mTree.path("plant");
    QCOMPARE(sorted(fileNames(CDir::entryInfoList(path, QStringList(), dirFilter))), expected);
    QCOMPARE(sorted(fileNames(CDir::entryInfoList(path, dirFilter, QStringList()))), expected);
    QCOMPARE(sorted(fileNames(CDir::entryInfoList(path, QStringList(), CDir::toDirFilter(dirFilter)))),
             expected);
}

void tst_directories_listing::entriesAreSortedByName()
{
    const QFileInfoList entries = CDir::entryInfoList(mTree.path("plant"), QStringList(), plainFiles);
    QCOMPARE(fileNames(entries), nameList("A.par a.csv b.par"));
    QCOMPARE(entries.first().absoluteFilePath(), mTree.path("plant/A.par"));
    QCOMPARE(fileNames(CDir::entryInfoList(mTree.path("plant"), Nj6Global::eDirFilterFiles, QStringList())),
             nameList(".hidden.par A.par a.csv b.par"));
}

void tst_directories_listing::directoriesAndFilesAreSortedTogether()
{
    const QString path = mTree.path("plant");
    const QStringList expected = nameList(".directory .hidden.par A.par a.csv axis b.par");
    constexpr auto all = Nj6Global::eDirFilterAll;
    QCOMPARE(fileNames(CDir::entryInfoList(path, QStringList(), CDir::toDirFilter(all))), expected);
    QCOMPARE(fileNames(CDir::entryInfoList(path, QStringList(), all)), expected);
    QCOMPARE(fileNames(CDir::entryInfoList(path, all, QStringList())), expected);
}

void tst_directories_listing::namesAreFiltered()
{
    const QString path = mTree.path("plant");
    const QStringList parameters = {QStringLiteral("*.par")};
    QCOMPARE(fileNames(CDir::entryInfoList(path, parameters, Nj6Global::eDirFilterAll)),
             nameList(".hidden.par A.par b.par"));
    QCOMPARE(fileNames(CDir::entryInfoList(path, parameters, plainFiles)), nameList("A.par b.par"));
    const QStringList either = {QStringLiteral("b.*"), QStringLiteral("*.csv")};
    QCOMPARE(fileNames(CDir::entryInfoList(path, either, Nj6Global::eDirFilterFiles)),
             nameList("a.csv b.par"));
    QCOMPARE(CDir::entryInfoList(path, parameters, noFilter), QFileInfoList());
}

void tst_directories_listing::namesAreExcluded_data()
{
    QTest::addColumn<QStringList>("excluded");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("two") << nameList("A.par axis") << nameList(".directory .hidden.par a.csv b.par");
    QTest::newRow("other case") << nameList("a.par AXIS")
                                << nameList(".directory .hidden.par A.par a.csv axis b.par");
    QTest::newRow("no wildcards") << nameList("*.par *")
                                  << nameList(".directory .hidden.par A.par a.csv axis b.par");
    QTest::newRow("no parts") << nameList("par A a b.pa")
                              << nameList(".directory .hidden.par A.par a.csv axis b.par");
    QTest::newRow("hidden") << nameList(".hidden.par .directory") << nameList("A.par a.csv axis b.par");
}

void tst_directories_listing::namesAreExcluded()
{
    QFETCH(QStringList, excluded);
    QFETCH(QStringList, expected);
    QCOMPARE(sorted(fileNames(CDir::entryInfoList(mTree.path("plant"), Nj6Global::eDirFilterAll, excluded))),
             expected);
}

void tst_directories_listing::missingDirectoryHasNoEntries()
{
    const QString path = mTree.path("missing");
    QCOMPARE(CDir::entryInfoList(path, QStringList(), Nj6Global::eDirFilterAll), QFileInfoList());
    QCOMPARE(CDir::entryInfoList(path, Nj6Global::eDirFilterAll, QStringList()), QFileInfoList());
    QCOMPARE(CDir::entryInfoListRecursive(path, QStringList(), Nj6Global::eDirFilterAll), QFileInfoList());
    QCOMPARE(CDir::entryInfoListRecursive(QString(), QStringList(), Nj6Global::eDirFilterAll),
             QFileInfoList());
}

void tst_directories_listing::pathWithANulCharacterHasNoEntries_data()
{
    QTest::addColumn<QString>("path");
    const QChar nul = QChar::Null;
    QTest::newRow("at the end") << mTree.path("plant") + nul;
    QTest::newRow("before the end") << mTree.path("plant") + nul + QLatin1Char('x');
    QTest::newRow("empty directory") << mTree.directory("empty") + nul + QLatin1Char('x');
    QTest::newRow("nothing else") << QString(nul);
}

void tst_directories_listing::pathWithANulCharacterHasNoEntries()
{
    QFETCH(QString, path);
    constexpr auto all = Nj6Global::eDirFilterAll;
    QCOMPARE(CDir::entryInfoList(path, QStringList(), all), QFileInfoList());
    QCOMPARE(CDir::entryInfoList(path, all, QStringList()), QFileInfoList());
    QCOMPARE(CDir::entryInfoListRecursive(path, QStringList(), all), QFileInfoList());
    QCOMPARE(CDir::listFilesAndDirectories(path), QStringList{path});
    QCOMPARE(filePaths(CDir::listFileAndDirInfos(path)), QStringList{path});
    takeLog(); // Qt may name the path that is none
}

void tst_directories_listing::treeEntriesOfAFilter_data()
{
    QTest::addColumn<quint32>("filter");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("all") << 0U
                         << nameList(".directory .hidden.par A.par a.csv axis b.par c.par d.csv e.par motor");
    QTest::newRow("files") << 1U << nameList(".hidden.par A.par a.csv b.par c.par d.csv e.par");
    QTest::newRow("directories") << 2U << nameList(".directory axis motor");
    QTest::newRow("7 lists nothing") << 7U << QStringList();
}

void tst_directories_listing::treeEntriesOfAFilter()
{
    QFETCH(quint32, filter);
    QFETCH(QStringList, expected);
    const auto dirFilter = static_cast<Nj6Global::EDirFilter>(filter);
    const QString path = mTree.path("plant");
    const QFileInfoList entries = CDir::entryInfoListRecursive(path, QStringList(), dirFilter);
    QCOMPARE(sorted(fileNames(entries)), expected);
    QCOMPARE(CDir::entryInfoListRecursive(path, QStringList(), CDir::toDirFilter(dirFilter)), entries);
}

void tst_directories_listing::treeNamesAreFiltered()
{
    // The directories are searched although their names do not match.
    const QFileInfoList entries = CDir::entryInfoListRecursive(
        mTree.path("plant"), QStringList{QStringLiteral("*.csv")}, Nj6Global::eDirFilterFiles);
    QCOMPARE(sorted(filePaths(entries)),
             (QStringList{mTree.path("plant/a.csv"), mTree.path("plant/axis/motor/d.csv")}));
}

void tst_directories_listing::qtFlagsDecideAboutHiddenEntries()
{
    QCOMPARE(sorted(fileNames(CDir::entryInfoListRecursive(mTree.path("plant"), QStringList(), plainFiles))),
             nameList("A.par a.csv b.par c.par d.csv"));
}

void tst_directories_listing::treeListingBeginsWithItsPath()
{
    const QString path = mTree.path("plant") + QStringLiteral("/./");
    const QStringList paths = CDir::listFilesAndDirectories(path);
    const QFileInfoList infos = CDir::listFileAndDirInfos(path);
    QCOMPARE(paths.first(), path);
    QCOMPARE(infos.first().filePath(), path);
}

void tst_directories_listing::treeListingShowsNothingHidden()
{
    const QString path = mTree.path("plant");
    QStringList expected = {path};
    for (const char *name :
         {"A.par", "a.csv", "axis", "axis/c.par", "axis/motor", "axis/motor/d.csv", "b.par"})
        expected.append(path + QLatin1Char('/') + QLatin1String(name));
    QCOMPARE(sorted(CDir::listFilesAndDirectories(path)), expected);
    QCOMPARE(sorted(filePaths(CDir::listFileAndDirInfos(path))), expected);
}

void tst_directories_listing::treeEntriesAreInTheOrderOfTheIterator()
{
    // Some of them, so that no order is theirs by accident.
    const FileTree tree;
    for (int i = 0; i < 30; ++i)
        tree.file(("plant " + QByteArray::number(i * 17 % 30) + "/a.par").constData());
    const QStringList parameters = {QStringLiteral("*.par")};
    QStringList iterated;
    QDirIterator walk(tree.path(), parameters, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext())
        iterated.append(walk.next());
    QCOMPARE(iterated.size(), 30);
    QCOMPARE(filePaths(CDir::entryInfoListRecursive(tree.path(), parameters, plainFiles)), iterated);
    QCOMPARE(filePaths(CDir::entryInfoListRecursive(tree.path(), parameters, Nj6Global::eDirFilterFiles)),
             iterated);
}

void tst_directories_listing::treeListingsHaveOneOrder()
{
    const QString path = mTree.path("plant");
    QStringList iterated = {path};
    QDirIterator walk(path, QDir::AllEntries | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (walk.hasNext())
        iterated.append(walk.next());
    QCOMPARE(CDir::listFilesAndDirectories(path), iterated);
    QCOMPARE(filePaths(CDir::listFileAndDirInfos(path)), iterated);
}

void tst_directories_listing::treeListingOfAMissingPathIsThePath()
{
    const QString path = mTree.path("missing");
    QCOMPARE(CDir::listFilesAndDirectories(path), QStringList{path});
    QCOMPARE(CDir::listFileAndDirInfos(path), QFileInfoList{QFileInfo(path)});
    QCOMPARE(CDir::listFilesAndDirectories(QString()), QStringList{QString()});
}

void tst_directories_listing::treeListingDoesNotFollowLinks()
{
#ifdef Q_OS_WIN
    QSKIP("links are shortcut files here");
#endif
    const FileTree tree;
    tree.file("axis/a.par");
    tree.link("axis/loop", tree.path("axis"));
    tree.link("axis/nowhere", tree.path("missing"));
    QCOMPARE(sorted(CDir::listFilesAndDirectories(tree.path())),
             (QStringList{tree.path(), tree.path("axis"), tree.path("axis/a.par"), tree.path("axis/loop")}));
}

void tst_directories_listing::pathsAreJoined()
{
    for (const char *base : {"", "/", "/plant", "/plant/"}) {
        for (const char *name : {"", "axis", "axis/", "/axis"}) {
            const QString path = QLatin1String(base);
            const QString added = QLatin1String(name);
            QCOMPARE(CDir::addPathToPath(path, added), CPath::addPathToPath(path, added));
            QCOMPARE(CDir::addFileNameToPath(path, added), CPath::addFileNameToPath(path, added));
        }
    }
    QCOMPARE(CDir::addPathToPath(QStringLiteral("/plant"), QStringLiteral("axis")),
             QStringLiteral("/plant/axis/"));
    QCOMPARE(CDir::addFileNameToPath(QStringLiteral("/plant"), QStringLiteral("a.par")),
             QStringLiteral("/plant/a.par"));
}

QTEST_GUILESS_MAIN(tst_directories_listing)
#include "tst_directories_listing.moc"
