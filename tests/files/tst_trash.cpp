// SPDX-License-Identifier: MIT
// The trash of freedesktop.org desktops, in homes of the test's own.
#include <CDir.h>

#include "TrashTest.h"

#include <ScopedCurrentDirectory.h>
#include <ScopedTimeZone.h>

#include <QDateTime>
#include <QTest>
#include <QVector>

#include <memory>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr QFile::Permissions forUserOnly = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner
                                           | QFile::ReadUser | QFile::WriteUser | QFile::ExeUser;

dev_t deviceOf(const QString &path)
{
    struct stat status = {};
    return stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_dev : dev_t();
}

// The paths of "0", "1", ... in a directory, each file with its own path as its content.
QStringList numberedFiles(const FileTree &tree, const QByteArray &directory, int count)
{
    QStringList paths;
    for (int i = 0; i < count; ++i) {
        const QByteArray name = directory + '/' + QByteArray::number(i);
        paths.append(tree.file(name.constData(), QFile::encodeName(tree.path(name.constData()))));
    }
    return paths;
}

} // namespace

class tst_trash : public TrashTest
{
    Q_OBJECT

private Q_SLOTS:
    void fileGoesToTheTrashOfTheHome();
    void trashIsForTheUserOnly();
    void dataHomeComesFirst();
    void missingDataHomeIsMade();
    void relativeDataHomeIsIgnored();
    void deletionDateIsLocalWithoutZone();
    void originIsPercentEncoded_data();
    void originIsPercentEncoded();
    void relativePathIsRecordedAbsolute();

    void directoryGoesWithItsContent();
    void separatorAtTheEndIsNoPartOfTheName();
    void linksGoThemselves();
    void linkToAnotherFileSystemGoesToTheTrashOfTheHome();
    void specialFileGoes();
    void equalNamesAreNumbered();
    void nothingInTheTrashIsOverwritten();
    void longNameIsCut();

    void fileOfAnotherFileSystem_data();
    void fileOfAnotherFileSystem();
    void processesWithEqualNamesLoseNothing();
    void processesWithTheSameFilesShareThem();
};

void tst_trash::fileGoesToTheTrashOfTheHome()
{
    QCOMPARE(CDir::moveToTrash(mTree->file("a.par", "a")), moved);
    QCOMPARE(mTree->names("home"), nameList(".local .local/share .local/share/Trash .local/share/Trash/files "
                                            ".local/share/Trash/files/a.par .local/share/Trash/info "
                                            ".local/share/Trash/info/a.par.trashinfo"));
    QVERIFY(!mTree->has("a.par"));
    QCOMPARE(mTree->content("home/.local/share/Trash/files/a.par"), QByteArray("a"));
    const QList<QByteArray> lines = info("a.par").split('\n');
    QCOMPARE(lines.size(), 4);
    QCOMPARE(lines.at(0), QByteArray("[Trash Info]"));
    QCOMPARE(lines.at(1), "Path=" + mTree->path("a.par").toUtf8());
    QVERIFY(lines.at(2).startsWith("DeletionDate="));
    QCOMPARE(lines.at(3), QByteArray());
}

void tst_trash::trashIsForTheUserOnly()
{
    QCOMPARE(CDir::moveToTrash(mTree->file("a.par")), moved);
    for (const char *name : {"home/.local", "home/.local/share", "home/.local/share/Trash",
                             "home/.local/share/Trash/files", "home/.local/share/Trash/info"})
        QCOMPARE(QFile::permissions(mTree->path(name)), forUserOnly);
}

void tst_trash::dataHomeComesFirst()
{
    const ScopedVariable dataHome("XDG_DATA_HOME", QFile::encodeName(mTree->directory("data")));
    QCOMPARE(CDir::moveToTrash(mTree->file("a.par")), moved);
    QCOMPARE(mTree->names("data/Trash"), nameList("files files/a.par info info/a.par.trashinfo"));
    QCOMPARE(mTree->names("home"), QStringList());
    const ScopedVariable noHome("HOME", QByteArray());
    QCOMPARE(CDir::moveToTrash(mTree->file("b.par")), moved);
    QCOMPARE(mTree->names("data/Trash/files"), nameList("a.par b.par"));
}

void tst_trash::missingDataHomeIsMade()
{
    const ScopedVariable dataHome("XDG_DATA_HOME", QFile::encodeName(mTree->path("some/data/")));
    QCOMPARE(CDir::moveToTrash(mTree->file("a.par")), moved);
    QCOMPARE(mTree->names("some/data/Trash/files"), nameList("a.par"));
    QCOMPARE(QFile::permissions(mTree->path("some")), forUserOnly);
}

void tst_trash::relativeDataHomeIsIgnored()
{
    const ScopedCurrentDirectory current(mTree->directory("current"));
    for (const char *value : {"", "data", "./data", "~/data"}) {
        const ScopedVariable dataHome("XDG_DATA_HOME", value);
        QCOMPARE(CDir::moveToTrash(mTree->file("a.par")), moved);
    }
    QCOMPARE(trashed().size(), 4);
    QCOMPARE(mTree->names("current"), QStringList());
}

void tst_trash::deletionDateIsLocalWithoutZone()
{
    const ScopedTimeZone zone("XYZ-5:30"); // no zone of today's test machines
    const QDateTime before = QDateTime::currentDateTimeUtc().addMSecs(-1000);
    QCOMPARE(CDir::moveToTrash(mTree->file("a.par")), moved);
    const QDateTime after = QDateTime::currentDateTimeUtc();
    const QString text = QString::fromLatin1(infoValue(info("a.par"), "DeletionDate"));
    QDateTime date = QDateTime::fromString(text, QStringLiteral("yyyy-MM-dd'T'HH:mm:ss"));
    QVERIFY2(date.isValid(), qPrintable(text));
    date.setOffsetFromUtc(5 * 3600 + 30 * 60);
    QVERIFY2(before <= date && date <= after, qPrintable(text));
}

void tst_trash::originIsPercentEncoded_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("encoded");
    const auto row = [](const char *title, const char *name, const char *encoded) {
        QTest::newRow(title) << QString::fromUtf8(name) << QByteArray(encoded);
    };
    row("unreserved", "aZ09-_.~", "aZ09-_.~");
    row("blank and percent", "a b%41.par", "a%20b%2541.par");
    row("line feed", "a\nPath=x", "a%0APath%3Dx");
    row("signs", "!\"#$&'()*+,:;<=>?@[\\]^`{|}",
        "%21%22%23%24%26%27%28%29%2A%2B%2C%3A%3B%3C%3D%3E%3F%40%5B%5C%5D%5E%60%7B%7C%7D");
    row("UTF-8", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80", "%C3%A4%E2%82%AC%F0%9F%98%80");
}

void tst_trash::originIsPercentEncoded()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, encoded);
    const QByteArray utf8 = name.toUtf8();
    QCOMPARE(CDir::moveToTrash(mTree->file(utf8.constData())), moved);
    QCOMPARE(infoValue(info(utf8.constData()), "Path"), mTree->path().toUtf8() + '/' + encoded);
    QCOMPARE(trashed(), QStringList{name});
}

void tst_trash::relativePathIsRecordedAbsolute()
{
    const ScopedCurrentDirectory current(mTree->directory("current"));
    mTree->file("current/a.par");
    mTree->file("current/b.par");
    mTree->file("c.par");
    QCOMPARE(CDir::moveToTrash(QStringLiteral("a.par")), moved);
    QCOMPARE(CDir::moveToTrash(QStringLiteral(".//./b.par")), moved);
    QCOMPARE(CDir::moveToTrash(QStringLiteral("../c.par")), moved);
    QCOMPARE(recordedPath("a.par"), mTree->path("current/a.par"));
    QCOMPARE(recordedPath("b.par"), mTree->path("current/b.par"));
    QCOMPARE(recordedPath("c.par"), mTree->path("c.par"));
}

void tst_trash::directoryGoesWithItsContent()
{
    mTree->file("axis.1/motor/a.par", "a");
    mTree->file("axis.1/.hidden");
    mTree->directory("empty");
    QCOMPARE(CDir::moveToTrash(mTree->path("axis.1")), moved);
    QCOMPARE(CDir::moveToTrash(mTree->path("empty")), moved);
    QCOMPARE(trashed(), nameList("axis.1 axis.1/.hidden axis.1/motor axis.1/motor/a.par empty"));
    QCOMPARE(infos(), nameList("axis.1.trashinfo empty.trashinfo"));
    QCOMPARE(mTree->content("home/.local/share/Trash/files/axis.1/motor/a.par"), QByteArray("a"));
}

void tst_trash::separatorAtTheEndIsNoPartOfTheName()
{
    QCOMPARE(CDir::moveToTrash(mTree->directory("axis") + QStringLiteral("//")), moved);
    QCOMPARE(recordedPath("axis"), mTree->path("axis"));
    mTree->file("outside/a.par");
    QCOMPARE(CDir::moveToTrash(mTree->link("link", mTree->path("outside")) + QLatin1Char('/')), moved);
    QCOMPARE(trashed(), nameList("axis link"));
    QCOMPARE(mTree->names("outside"), nameList("a.par"));
}

void tst_trash::linksGoThemselves()
{
    mTree->file("outside/a.par");
    QCOMPARE(CDir::moveToTrash(mTree->link("file", mTree->path("outside/a.par"))), moved);
    QCOMPARE(CDir::moveToTrash(mTree->link("directory", mTree->path("outside"))), moved);
    QCOMPARE(trashed(), nameList("directory file"));
    QVERIFY(QFileInfo(mTree->path("home/.local/share/Trash/files/file")).isSymLink());
    QVERIFY(QFileInfo(mTree->path("home/.local/share/Trash/files/directory")).isSymLink());
    QCOMPARE(mTree->names("outside"), nameList("a.par"));

    // The way may lead through links.
    mTree->link("way", mTree->path("outside"));
    QCOMPARE(CDir::moveToTrash(mTree->path("way/a.par")), moved);
    QCOMPARE(recordedPath("a.par"), mTree->path("way/a.par"));
    QCOMPARE(mTree->names("outside"), QStringList());
    QVERIFY(mTree->has("way"));
}

void tst_trash::linkToAnotherFileSystemGoesToTheTrashOfTheHome()
{
    const QString target = QStringLiteral("/proc/version");
    if (!QFileInfo::exists(target) || deviceOf(target) == deviceOf(mTree->path()))
        QSKIP("there is no other file system");
    QCOMPARE(CDir::moveToTrash(mTree->link("link", target)), moved);
    QCOMPARE(trashed(), nameList("link"));
    QVERIFY(!mTree->has("link"));
}

void tst_trash::specialFileGoes()
{
    QCOMPARE(mkfifo(QFile::encodeName(mTree->path("pipe")).constData(), 0600), 0);
    QCOMPARE(CDir::moveToTrash(mTree->path("pipe")), moved);
    QCOMPARE(trashed(), nameList("pipe"));
}

void tst_trash::equalNamesAreNumbered()
{
    for (const char *name : {"1/a.par", "2/a.par", "3/a.par", "1/.a", "2/.a", "1/a", "2/a"})
        QCOMPARE(CDir::moveToTrash(mTree->file(name, name)), moved);
    mTree->file("4/a.par/b");
    QCOMPARE(CDir::moveToTrash(mTree->path("4/a.par")), moved);
    QCOMPARE(trashed(), nameList(".a .a.2 a a.2 a.2.par a.3.par a.4.par a.4.par/b a.par"));
    QCOMPARE(infos(),
             nameList(".a.2.trashinfo .a.trashinfo a.2.par.trashinfo a.2.trashinfo a.3.par.trashinfo "
                      "a.4.par.trashinfo a.par.trashinfo a.trashinfo"));
    QCOMPARE(mTree->content("home/.local/share/Trash/files/a.2.par"), QByteArray("2/a.par"));
    QCOMPARE(recordedPath("a.2.par"), mTree->path("2/a.par"));
    QCOMPARE(recordedPath("a.3.par"), mTree->path("3/a.par"));
    QCOMPARE(recordedPath("a.4.par"), mTree->path("4/a.par"));
}

void tst_trash::nothingInTheTrashIsOverwritten()
{
    // What other programs have left: a file or directory without information, information without a file.
    mTree->file("home/.local/share/Trash/files/a.par", "kept");
    mTree->directory("home/.local/share/Trash/files/a.2.par");
    mTree->file("home/.local/share/Trash/info/a.3.par.trashinfo", "kept, too");
    mTree->directory("home/.local/share/Trash/info/a.4.par.trashinfo");
    mTree->link("home/.local/share/Trash/info/a.5.par.trashinfo", mTree->path("outside"));
    mTree->link("home/.local/share/Trash/files/a.6.par", mTree->path("outside"));
    const QStringList before = mTree->names("home");
    QCOMPARE(CDir::moveToTrash(mTree->file("a.par", "new")), moved);
    mTree->file("axis/a.par/b");
    QCOMPARE(CDir::moveToTrash(mTree->path("axis/a.par")), moved);

    QCOMPARE(mTree->content("home/.local/share/Trash/files/a.par"), QByteArray("kept"));
    QCOMPARE(info("a.3.par"), QByteArray("kept, too"));
    QVERIFY(!mTree->has("outside"));
    QStringList expected = before;
    expected += nameList(".local/share/Trash/files/a.7.par .local/share/Trash/info/a.7.par.trashinfo "
                         ".local/share/Trash/files/a.8.par .local/share/Trash/files/a.8.par/b "
                         ".local/share/Trash/info/a.8.par.trashinfo");
    expected.sort();
    QCOMPARE(mTree->names("home"), expected);
    QCOMPARE(mTree->content("home/.local/share/Trash/files/a.7.par"), QByteArray("new"));
}

void tst_trash::longNameIsCut()
{
    // In UTF-16 units the path is short enough; in bytes the name fills all that a file system takes.
    const QByteArray name = QByteArray("\xE2\x82\xAC").repeated(83) + "12.par"; // 255 bytes
    QCOMPARE(name.size(), 255);
    const QByteArray stem =
        QByteArray("\xE2\x82\xAC").repeated(80); // 240 of 245 less ".par": no half character
    for (const QByteArray &expected : {stem + ".par", stem.left(237) + ".2.par"}) {
        QCOMPARE(CDir::moveToTrash(mTree->file(name.constData())), moved);
        QVERIFY(mTree->has(("home/.local/share/Trash/files/" + expected).constData()));
        QCOMPARE(recordedPath(expected.constData()), mTree->path(name.constData()));
    }
}

void tst_trash::fileOfAnotherFileSystem_data()
{
    QTest::addColumn<bool>("throughALink");
    QTest::newRow("direct") << false;
    QTest::newRow("through a link on this file system") << true;
}

void tst_trash::fileOfAnotherFileSystem()
{
    QFETCH(bool, throughALink);
    const QString top = QStringLiteral("/dev/shm");
    QTemporaryDir directory(top + QStringLiteral("/j6core-XXXXXX"));
    if (!directory.isValid() || deviceOf(top) == deviceOf(mTree->path())
        || deviceOf(top) == deviceOf(QStringLiteral("/dev")))
        QSKIP("/dev/shm is no file system of its own");
    const QString shared = top + QStringLiteral("/.Trash");
    if (QFileInfo::exists(shared))
        QSKIP("/dev/shm/.Trash is somebody else's");
    const QString trash = top + QStringLiteral("/.Trash-") + QString::number(geteuid());
    const bool wasThere = QFileInfo::exists(trash);

    const QString name = QFileInfo(directory.path()).fileName() + QStringLiteral(" %.par");
    const QString way = throughALink ? mTree->link("way", directory.path()) : directory.path();
    const QString path = way + QLatin1Char('/') + name;
    QVERIFY(QFile::copy(mTree->file("a.par", "a"), path));
    const int result = CDir::moveToTrash(path);
    const QString file = trash + QStringLiteral("/files/") + name;
    const QString info = trash + QStringLiteral("/info/") + name + QStringLiteral(".trashinfo");
    const QByteArray content = FileTree::contentOf(file);
    const QByteArray text = FileTree::contentOf(info);
    const QFile::Permissions permissions = QFile::permissions(trash);
    QFile::remove(file);
    QFile::remove(info);
    if (!wasThere)
        QDir(trash).removeRecursively();

    QCOMPARE(result, moved);
    QVERIFY(!QFile::exists(path));
    QCOMPARE(content, QByteArray("a"));
    // Relative to where the file system begins, which may be somewhere else the next time.
    const QByteArray directoryName = QFileInfo(directory.path()).fileName().toUtf8();
    QCOMPARE(infoValue(text, "Path"), directoryName + '/' + directoryName + "%20%25.par");
    QCOMPARE(permissions, forUserOnly);
    QCOMPARE(mTree->names("home"), QStringList());
}

void tst_trash::processesWithEqualNamesLoseNothing()
{
    constexpr int fileCount = 100;
    QStringList paths;
    std::vector<std::unique_ptr<TrashMover>> movers;
    for (const char *directory : {"first", "second", "third"}) {
        const QStringList files = numberedFiles(*mTree, directory, fileCount);
        paths += files;
        movers.push_back(std::make_unique<TrashMover>(files));
    }
    for (const std::unique_ptr<TrashMover> &mover : movers)
        QCOMPARE(mover->results(), QVector<int>(fileCount, moved));

    // Each is there once, and what is known about it fits.
    QStringList contents;
    const QStringList names = trashed();
    for (const QString &name : names) {
        const QByteArray file = name.toUtf8();
        contents.append(
            QFile::decodeName(mTree->content(("home/.local/share/Trash/files/" + file).constData())));
        QCOMPARE(recordedPath(file.constData()), contents.last());
    }
    contents.sort();
    paths.sort();
    QCOMPARE(contents, paths);
    QCOMPARE(infos().size(), paths.size());
}

void tst_trash::processesWithTheSameFilesShareThem()
{
    constexpr int fileCount = 300;
    const QStringList paths = numberedFiles(*mTree, "from", fileCount);
    TrashMover first(paths);
    TrashMover second(paths);
    const QVector<int> ofFirst = first.results();
    const QVector<int> ofSecond = second.results();
    QCOMPARE(ofFirst.size(), fileCount);
    QCOMPARE(ofSecond.size(), fileCount);
    for (int i = 0; i < fileCount; ++i)
        QVERIFY((ofFirst.at(i) == moved) != (ofSecond.at(i) == moved));
    QCOMPARE(trashed().size(), fileCount);
    QCOMPARE(infos().size(), fileCount);
    QCOMPARE(mTree->names("from"), QStringList());
}

QTEST_GUILESS_MAIN(tst_trash)
#include "tst_trash.moc"
