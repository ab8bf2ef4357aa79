// SPDX-License-Identifier: MIT
// CPath::createDirIfWanted(), and the one location that follows from the environment alone.
#include <CPath.h>

#include <LoggedTest.h>
#ifdef Q_OS_UNIX
#include <ScopedUmask.h>
#endif
#include <ScopedVariable.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <utility>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace {

// The current directory is a temporary one while this object lives.
class ScopedDirectory
{
public:
    ScopedDirectory() : mFormer(QDir::currentPath()) { QDir::setCurrent(mDirectory.path()); }
    ~ScopedDirectory() { QDir::setCurrent(mFormer); }
    ScopedDirectory(const ScopedDirectory &) = delete;
    ScopedDirectory &operator=(const ScopedDirectory &) = delete;

    QStringList entries() const
    {
        return QDir().entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }

private:
    QTemporaryDir mDirectory;
    QString mFormer;
};

} // namespace

class tst_path_creation : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void programdataPath_data();
    void programdataPath();
    void programdataPathIsCreatedOnRequest();

    void createDirIfWantedReturnsThePathUnchanged_data();
    void createDirIfWantedReturnsThePathUnchanged();
    void createDirIfWantedTakesOverTheStorage();
    void createDirIfWantedMakesMissingParents();
    void createDirIfWantedMakesARelativePathOnce();
    void createDirIfWantedLeavesWhatIsInTheWay();
#ifdef Q_OS_UNIX
    void aNewDirectoryHasItsPermissionsWhateverTheUmask_data();
    void aNewDirectoryHasItsPermissionsWhateverTheUmask();
    void onlyTheLastDirectoryGetsThePermissions_data();
    void onlyTheLastDirectoryGetsThePermissions();
    void theNameOfANewDirectoryMayStandBeforeDots_data();
    void theNameOfANewDirectoryMayStandBeforeDots();
    void anExistingDirectoryKeepsItsPermissions();
    void aFileInTheWayKeepsItsPermissions();
    void aLinkToNothingIsLeftInTheWay();
    void aLinkToADirectoryIsOne();
#endif
};

void tst_path_creation::programdataPath_data()
{
    QTest::addColumn<QByteArray>("variable");
    QTest::addColumn<QString>("expected");
    QTest::newRow("unset") << QByteArray() << QStringLiteral("/VANTORIS/tessera/");
    QTest::newRow("empty") << QByteArray("") << QStringLiteral("/VANTORIS/tessera/");
    QTest::newRow("directory") << QByteArray("/var/lib") << QStringLiteral("/var/lib/VANTORIS/tessera/");
    QTest::newRow("placeholder") << QByteArray("/var/%1%2") << QStringLiteral("/var/%1%2/VANTORIS/tessera/");
    QTest::newRow("separator at its end") << QByteArray("/var/") << QStringLiteral("/var//VANTORIS/tessera/");
    QTest::newRow("native separators") << QDir::toNativeSeparators(QStringLiteral("/var/lib")).toLocal8Bit()
                                       << QStringLiteral("/var/lib/VANTORIS/tessera/");
#ifdef Q_OS_UNIX
    QTest::newRow("a backslash is part of a name here")
        << QByteArray("/var\\lib") << QStringLiteral("/var\\lib/VANTORIS/tessera/");
#endif
}

void tst_path_creation::programdataPath()
{
    QFETCH(QByteArray, variable);
    const ScopedVariable programdata("PROGRAMDATA", variable);
    QTEST(CPath::programdataPath(false), "expected");
}

void tst_path_creation::programdataPathIsCreatedOnRequest()
{
    const QTemporaryDir scratch;
    const ScopedVariable programdata("PROGRAMDATA", scratch.path().toLocal8Bit());
    const QString expected = scratch.filePath(QStringLiteral("VANTORIS/tessera/"));
    QCOMPARE(CPath::programdataPath(false), expected);
    QVERIFY(!QDir(scratch.filePath(QStringLiteral("VANTORIS"))).exists());
    QCOMPARE(CPath::programdataPath(true), expected);
    QVERIFY(QDir(expected).exists());
}

void tst_path_creation::createDirIfWantedReturnsThePathUnchanged_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("null") << QString();
    QTest::newRow("empty") << QString(QLatin1String(""));
    QTest::newRow("without separator at the end") << QStringLiteral("a/b");
    QTest::newRow("with separator at the end") << QStringLiteral("a/b/");
    QTest::newRow("not cleaned") << QStringLiteral("a//b/../c/");
    QTest::newRow("cannot be made") << QStringLiteral("/dev/null/a/");
}

void tst_path_creation::createDirIfWantedReturnsThePathUnchanged()
{
    QFETCH(QString, path);
    const ScopedDirectory scratch;
    QCOMPARE(CPath::createDirIfWanted(path, false), path);
    QCOMPARE(scratch.entries(), QStringList());
    const QString result = CPath::createDirIfWanted(path, true);
    QCOMPARE(result, path);
    QCOMPARE(result.isNull(), path.isNull());
}

void tst_path_creation::createDirIfWantedTakesOverTheStorage()
{
    QString path = QStringLiteral("some/directory");
    path.detach();
    const QChar *const storage = path.constData();
    const QString result = CPath::createDirIfWanted(std::move(path), false);
    QCOMPARE(static_cast<const void *>(result.constData()), static_cast<const void *>(storage));
}

void tst_path_creation::createDirIfWantedMakesMissingParents()
{
    const ScopedDirectory scratch;
    const QString path = QDir::currentPath() + QStringLiteral("/a/b/c/");
    CPath::createDirIfWanted(path, true);
    QVERIFY(QFileInfo(path).isDir());
    QCOMPARE(scratch.entries(), QStringList{QStringLiteral("a")});
}

void tst_path_creation::createDirIfWantedMakesARelativePathOnce()
{
    const ScopedDirectory scratch;
    CPath::createDirIfWanted(QStringLiteral("a/b"), true);
    QVERIFY(QFileInfo(QStringLiteral("a/b")).isDir());
    QVERIFY2(QDir(QStringLiteral("a/b")).isEmpty(), "nothing is made below it");
}

void tst_path_creation::createDirIfWantedLeavesWhatIsInTheWay()
{
    const ScopedDirectory scratch;
    QFile file(QStringLiteral("a"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("x") == 1);
    file.close();
    QCOMPARE(CPath::createDirIfWanted(QStringLiteral("a"), true), QStringLiteral("a"));
    QCOMPARE(CPath::createDirIfWanted(QStringLiteral("a/b"), true), QStringLiteral("a/b"));
    QCOMPARE(scratch.entries(), QStringList{QStringLiteral("a")});
    QCOMPARE(QFileInfo(QStringLiteral("a")).size(), qint64(1));
}

#ifdef Q_OS_UNIX

namespace {

// The permission bits as they are written for chmod, for example "775".
QString modeOf(const char *path)
{
    struct stat status = {};
    if (stat(path, &status) != 0)
        return QStringLiteral("missing");
    return QString::number(status.st_mode & 07777U, 8);
}

} // namespace

void tst_path_creation::aNewDirectoryHasItsPermissionsWhateverTheUmask_data()
{
    QTest::addColumn<uint>("mask");
    for (const uint mask : {0U, 022U, 077U, 0777U})
        QTest::newRow(qPrintable(QString::number(mask, 8))) << mask;
}

void tst_path_creation::aNewDirectoryHasItsPermissionsWhateverTheUmask()
{
    QFETCH(uint, mask);
    const ScopedDirectory scratch;
    {
        const ScopedUmask masked(mask);
        CPath::createDirIfWanted(QStringLiteral("a/"), true);
    }
    QCOMPARE(modeOf("a"), QStringLiteral("775"));
}

void tst_path_creation::onlyTheLastDirectoryGetsThePermissions_data()
{
    QTest::addColumn<uint>("mask");
    QTest::addColumn<QString>("parents");
    QTest::newRow("027") << 027U << QStringLiteral("750");
    QTest::newRow("0") << 0U << QStringLiteral("777");
}

void tst_path_creation::onlyTheLastDirectoryGetsThePermissions()
{
    QFETCH(uint, mask);
    QFETCH(QString, parents);
    const ScopedDirectory scratch;
    const ScopedUmask masked(mask);
    CPath::createDirIfWanted(QStringLiteral("a/b/c/"), true);
    QCOMPARE(modeOf("a"), parents);
    QCOMPARE(modeOf("a/b"), parents);
    QCOMPARE(modeOf("a/b/c"), QStringLiteral("775"));
}

void tst_path_creation::theNameOfANewDirectoryMayStandBeforeDots_data()
{
    QTest::addColumn<QString>("path");
    for (const char *path : {"a/b", "a/b/", "a/b//", "a/b/.", "a/b/./", "a/b/./.", "a/b//././/", "./a/./b/."})
        QTest::newRow(path) << QString::fromLatin1(path);
}

void tst_path_creation::theNameOfANewDirectoryMayStandBeforeDots()
{
    QFETCH(QString, path);
    const ScopedDirectory scratch;
    const ScopedUmask masked(022);
    QCOMPARE(CPath::createDirIfWanted(path, true), path);
    QCOMPARE(modeOf("a"), QStringLiteral("755"));
    QCOMPARE(modeOf("a/b"), QStringLiteral("775"));
}

void tst_path_creation::anExistingDirectoryKeepsItsPermissions()
{
    const ScopedDirectory scratch;
    QCOMPARE(mkdir("a", 0700), 0);
    CPath::createDirIfWanted(QStringLiteral("a/"), true);
    QCOMPARE(modeOf("a"), QStringLiteral("700"));
}

void tst_path_creation::aFileInTheWayKeepsItsPermissions()
{
    const ScopedDirectory scratch;
    QFile file(QStringLiteral("a"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner));
    CPath::createDirIfWanted(QStringLiteral("a"), true);
    QCOMPARE(modeOf("a"), QStringLiteral("600"));
}

void tst_path_creation::aLinkToNothingIsLeftInTheWay()
{
    const ScopedDirectory scratch;
    QVERIFY(QFile::link(QStringLiteral("nothing"), QStringLiteral("a")));
    CPath::createDirIfWanted(QStringLiteral("a/"), true);
    CPath::createDirIfWanted(QStringLiteral("a/b/"), true);
    QVERIFY(QFileInfo(QStringLiteral("a")).isSymLink());
    QVERIFY2(!QFileInfo::exists(QStringLiteral("nothing")), "the directory is not made behind it");
}

void tst_path_creation::aLinkToADirectoryIsOne()
{
    const ScopedDirectory scratch;
    QCOMPARE(mkdir("real", 0700), 0);
    QVERIFY(QFile::link(QStringLiteral("real"), QStringLiteral("a")));
    CPath::createDirIfWanted(QStringLiteral("a/"), true);
    QCOMPARE(modeOf("real"), QStringLiteral("700"));
    CPath::createDirIfWanted(QStringLiteral("a/b/"), true);
    QCOMPARE(modeOf("real/b"), QStringLiteral("775"));
}

#endif

QTEST_GUILESS_MAIN(tst_path_creation)
#include "tst_path_creation.moc"
