// SPDX-License-Identifier: MIT
// What does not go to the trash stays where it is.
#include <CDir.h>

#include "TrashTest.h"

#include <ScopedCurrentDirectory.h>

#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

class tst_trash_failures : public TrashTest
{
    Q_OBJECT

private Q_SLOTS:
    void missingPath_data();
    void missingPath();
    void missingPathComesBeforeItsLength();
    void lengthOfThePath_data();
    void lengthOfThePath();
    void relativePathIsMeasuredAbsolute();
    void nameThatTheFileSystemCannotHoldIsNoOther();
    void linkThatLeadsNowhereIsMissing();
    void homeThatCannotBeUsed_data();
    void homeThatCannotBeUsed();
    void homeThatIsNotWritable();
    void trashThatCannotBeUsed_data();
    void trashThatCannotBeUsed();
    void trashThatCannotBeUsedIsNotLeft_data();
    void trashThatCannotBeUsedIsNotLeft();
    void failedMoveLeavesNoTrace();
    void wayBackBehindALinkIsNotMistaken();
    void rootDirectoryStays();
    void fileOfTheSystemStays();
};

void tst_trash_failures::missingPath_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("file") << QStringLiteral("missing");
    QTest::newRow("in a missing directory") << QStringLiteral("missing/missing");
    QTest::newRow("below a file") << QStringLiteral("a.par/x");
    QTest::newRow("file as a directory") << QStringLiteral("a.par/");
}

void tst_trash_failures::missingPath()
{
    QFETCH(QString, name);
    mTree->file("a.par");
    QCOMPARE(CDir::moveToTrash(mTree->path() + QLatin1Char('/') + name), missing);
    QCOMPARE(CDir::moveToTrash(QString()), missing);
    QCOMPARE(mTree->names(), nameList("a.par home"));
}

void tst_trash_failures::missingPathComesBeforeItsLength()
{
    QCOMPARE(CDir::moveToTrash(mTree->path() + QString(300, QLatin1Char('/')) + QLatin1Char('x')), missing);
    QCOMPARE(CDir::moveToTrash(mTree->path() + QLatin1Char('/') + QString(5000, QLatin1Char('x'))), missing);
    const ScopedVariable noHome("HOME", QByteArray());
    QCOMPARE(CDir::moveToTrash(mTree->path("missing")), missing);
}

void tst_trash_failures::lengthOfThePath_data()
{
    QTest::addColumn<int>("units");
    QTest::addColumn<QString>("character");
    QTest::addColumn<int>("expected");
    const QString letter = QStringLiteral("x");
    const QString threeBytes = QString(QChar(0x20AC));
    QTest::newRow("longest") << 259 << letter << moved;
    QTest::newRow("longest, more than 259 bytes") << 259 << threeBytes << moved;
    QTest::newRow("too long by one") << 260 << letter << failed;
    QTest::newRow("too long by one, more than 260 bytes") << 260 << threeBytes << failed;
    QTest::newRow("much too long") << 1000 << letter << failed;
}

void tst_trash_failures::lengthOfThePath()
{
    QFETCH(int, units);
    QFETCH(QString, character);
    QFETCH(int, expected);
    constexpr int partLength = 80;
    QString path = mTree->path();
    while (units - path.size() > partLength + 2)
        path += QLatin1Char('/') + character.repeated(partLength);
    path += QLatin1Char('/') + character.repeated(units - path.size() - 1);
    QCOMPARE(path.size(), units);
    QCOMPARE(QFileInfo(mTree->file(path.mid(mTree->path().size() + 1).toUtf8().constData())).filePath(),
             path);
    QCOMPARE(CDir::moveToTrash(path), expected);
    QCOMPARE(QFile::exists(path), expected == failed);
    QCOMPARE(trashed().size(), expected == moved ? 1 : 0);
}

void tst_trash_failures::relativePathIsMeasuredAbsolute()
{
    const QByteArray directory = QByteArray(200, 'x') + '/' + QByteArray(60, 'x');
    mTree->file((directory + "/a.par").constData());
    const ScopedCurrentDirectory current(mTree->path(directory.constData()));
    QCOMPARE(CDir::moveToTrash(QStringLiteral("a.par")), failed);
    QVERIFY(QFile::exists(QStringLiteral("a.par")));
    mTree->file("b.par");
    QCOMPARE(CDir::moveToTrash(QStringLiteral("./").repeated(200) + QStringLiteral("../../b.par")), moved);
    QCOMPARE(trashed(), nameList("b.par"));
}

void tst_trash_failures::nameThatTheFileSystemCannotHoldIsNoOther()
{
    // Half a surrogate pair is encoded as a question mark, which is a file's name as well.
    mTree->file("?");
    QCOMPARE(CDir::moveToTrash(mTree->path() + QLatin1Char('/') + QChar(0xD800)), failed);
    QCOMPARE(CDir::moveToTrash(mTree->path("?") + QChar(QChar::Null)), missing);
    QCOMPARE(takeLog(), QStringList{QStringLiteral("Broken filename passed to function")});
    QCOMPARE(mTree->names(), nameList("? home"));
}

void tst_trash_failures::linkThatLeadsNowhereIsMissing()
{
    QCOMPARE(CDir::moveToTrash(mTree->link("nowhere", mTree->path("missing"))), missing);
    QCOMPARE(CDir::moveToTrash(mTree->link("loop", mTree->path("loop"))), missing);
    QCOMPARE(mTree->names(), nameList("home loop nowhere"));
}

void tst_trash_failures::homeThatCannotBeUsed_data()
{
    QTest::addColumn<QByteArray>("home");
    QTest::newRow("not set") << QByteArray();
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("relative") << QByteArray("home");
    QTest::newRow("missing") << QByteArray("/j6core-missing/home");
    QTest::newRow("not a directory") << QByteArray("/dev/null");
}

void tst_trash_failures::homeThatCannotBeUsed()
{
    QFETCH(QByteArray, home);
    const ScopedVariable homeVariable("HOME", home);
    const ScopedCurrentDirectory current(mTree->path());
    QCOMPARE(CDir::moveToTrash(mTree->file("a.par", "a")), failed);
    QCOMPARE(mTree->content("a.par"), QByteArray("a"));
    QCOMPARE(mTree->names(), nameList("a.par home"));
    QVERIFY(!QFileInfo::exists(QStringLiteral("/j6core-missing")));
}

// Nothing stops the administrator, so that another user tries.
void tst_trash_failures::homeThatIsNotWritable()
{
    const QString path = mTree->file("a.par", "a");
    const QByteArray home = QFile::encodeName(mTree->path("home"));
    QStringList arguments = {path};
    if (geteuid() == 0)
        arguments.prepend(QStringLiteral("uid=65534"));
    QCOMPARE(chmod(QFile::encodeName(mTree->path()).constData(), 0777), 0);
    QCOMPARE(chmod(home.constData(), 0555), 0);
    const QVector<int> results = TrashMover(arguments).results();
    if (results == QVector<int>{missing})
        QSKIP("another user has no way to the temporary directory");
    QCOMPARE(results, QVector<int>{failed});
    QCOMPARE(mTree->content("a.par"), QByteArray("a"));
    QCOMPARE(mTree->names(), nameList("a.par home"));

    QCOMPARE(chmod(home.constData(), 0777), 0);
    QCOMPARE(TrashMover(arguments).results(), QVector<int>{moved});
    QCOMPARE(trashed(), nameList("a.par"));
}

void tst_trash_failures::trashThatCannotBeUsed_data()
{
    QTest::addColumn<QString>("inTheWay");
    for (const char *name : {"home/.local", "home/.local/share", "home/.local/share/Trash",
                             "home/.local/share/Trash/files", "home/.local/share/Trash/info"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

// A file in the way stops the administrator, too.
void tst_trash_failures::trashThatCannotBeUsed()
{
    QFETCH(QString, inTheWay);
    mTree->file(inTheWay.toLatin1().constData(), "in the way");
    QCOMPARE(CDir::moveToTrash(mTree->file("a.par", "a")), failed);
    QCOMPARE(mTree->content("a.par"), QByteArray("a"));
    QCOMPARE(mTree->content(inTheWay.toLatin1().constData()), QByteArray("in the way"));
}

void tst_trash_failures::trashThatCannotBeUsedIsNotLeft_data()
{
    QTest::addColumn<QString>("link");
    QTest::newRow("files") << QStringLiteral("home/.local/share/Trash/files");
    QTest::newRow("info") << QStringLiteral("home/.local/share/Trash/info");
}

// A link within the trash would lead out of it.
void tst_trash_failures::trashThatCannotBeUsedIsNotLeft()
{
    QFETCH(QString, link);
    mTree->directory("home/.local/share/Trash");
    mTree->link(link.toLatin1().constData(), mTree->directory("outside"));
    QCOMPARE(CDir::moveToTrash(mTree->file("a.par", "a")), failed);
    QCOMPARE(mTree->content("a.par"), QByteArray("a"));
    QCOMPARE(mTree->names("outside"), QStringList());
}

void tst_trash_failures::failedMoveLeavesNoTrace()
{
    // A directory cannot be moved into itself; that shows only when it is moved.
    mTree->file("home/a.par", "a");
    QCOMPARE(CDir::moveToTrash(mTree->path("home")), failed);
    QCOMPARE(CDir::moveToTrash(mTree->path("home/.local")), failed);
    QCOMPARE(CDir::moveToTrash(mTree->path("home/.local/share/Trash")), failed);
    QCOMPARE(trashed(), QStringList());
    QCOMPARE(infos(), QStringList());
    QCOMPARE(mTree->content("home/a.par"), QByteArray("a"));
}

void tst_trash_failures::wayBackBehindALinkIsNotMistaken()
{
    // "link/../a.par" is elsewhere/a.par; without the link's name it would be another file.
    mTree->directory("elsewhere/axis");
    mTree->file("elsewhere/a.par", "meant");
    mTree->file("elsewhere/b.par", "meant");
    mTree->file("a.par", "not meant");
    mTree->link("link", mTree->path("elsewhere/axis"));
    for (const char *name : {"link/../a.par", "link/../b.par", "link/.."})
        QCOMPARE(CDir::moveToTrash(mTree->path(name)), failed);
    const ScopedCurrentDirectory current(mTree->path());
    QCOMPARE(CDir::moveToTrash(QStringLiteral("link/../a.par")), failed);
    QCOMPARE(mTree->names(),
             nameList("a.par elsewhere elsewhere/a.par elsewhere/axis elsewhere/b.par home link"));

    // Behind a directory it is the same file.
    QCOMPARE(CDir::moveToTrash(mTree->path("elsewhere/axis/../b.par")), moved);
    QCOMPARE(CDir::moveToTrash(QStringLiteral("link/.")), moved); // the link itself
    QCOMPARE(CDir::moveToTrash(QStringLiteral("elsewhere/axis/..")), moved);
    QCOMPARE(trashed(), nameList("b.par elsewhere elsewhere/a.par elsewhere/axis link"));
    QCOMPARE(mTree->content("a.par"), QByteArray("not meant"));
}

void tst_trash_failures::rootDirectoryStays()
{
    QCOMPARE(CDir::moveToTrash(QStringLiteral("/")), failed);
    QCOMPARE(CDir::moveToTrash(QStringLiteral("///")), failed);
    QCOMPARE(CDir::moveToTrash(QStringLiteral("/..")), failed);
    QCOMPARE(mTree->names(), nameList("home"));
}

void tst_trash_failures::fileOfTheSystemStays()
{
    const QString path = QStringLiteral("/proc/version");
    if (!QFileInfo(path).isFile())
        QSKIP("there is no file that cannot be moved");
    QCOMPARE(CDir::moveToTrash(path), failed);
    QVERIFY(QFileInfo(path).isFile());
    QCOMPARE(mTree->names(), nameList("home"));
}

QTEST_GUILESS_MAIN(tst_trash_failures)
#include "tst_trash_failures.moc"
