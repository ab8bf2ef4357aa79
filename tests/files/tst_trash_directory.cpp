// SPDX-License-Identifier: MIT
// The trash directories of file systems, in trees that stand for mounted ones.
#include "files/FileDescriptor_unix.h"
#include "files/TrashDirectory_unix.h"

#include <FileTree.h>
#include <LoggedTest.h>
#include <ScopedTimeZone.h>

#include <QTest>
#include <QVector>

#include <cerrno>
#include <climits>
#include <csignal>
#include <functional>
#include <memory>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const QDateTime &someTime()
{
    static const QDateTime time(QDate(2026, 2, 3), QTime(4, 5, 6, 789), Qt::UTC);
    return time;
}

// What is called in place of the system's fsync(); nothing: the system's.
std::function<int(int)> &fsyncCall()
{
    static std::function<int(int)> call;
    return call;
}

class ScopedFsync
{
public:
    explicit ScopedFsync(std::function<int(int)> call) { fsyncCall() = std::move(call); }
    ~ScopedFsync() { fsyncCall() = nullptr; }
    ScopedFsync(const ScopedFsync &) = delete;
    ScopedFsync &operator=(const ScopedFsync &) = delete;
};

// While this object lives, no file can grow beyond this size: a disk that is full.
class ScopedFileSize
{
public:
    explicit ScopedFileSize(rlim_t size)
        : mSignal(std::signal(SIGXFSZ, SIG_IGN)), mSet(getrlimit(RLIMIT_FSIZE, &mFormer) == 0)
    {
        rlimit limit = mFormer;
        limit.rlim_cur = size;
        mSet = mSet && setrlimit(RLIMIT_FSIZE, &limit) == 0;
    }
    ~ScopedFileSize()
    {
        if (mSet)
            setrlimit(RLIMIT_FSIZE, &mFormer);
        std::signal(SIGXFSZ, mSignal);
    }
    ScopedFileSize(const ScopedFileSize &) = delete;
    ScopedFileSize &operator=(const ScopedFileSize &) = delete;

    bool isSet() const { return mSet; }

private:
    void (*mSignal)(int);
    rlimit mFormer = {};
    bool mSet;
};

// A name in which "<uid>" stands for the user's number.
QByteArray ofUser(const char *name)
{
    return QByteArray(name).replace("<uid>", QByteArray::number(geteuid()));
}

QStringList namesOfUser(const char *names)
{
    return nameList(ofUser(names).constData());
}

} // namespace

// The linker takes this one for the trash directory that is compiled into the test.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the system's name is reserved
extern "C" int fsync(int file)
{
    return fsyncCall() ? fsyncCall()(file) : fdatasync(file);
}

class tst_trash_directory : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void infoText_data();
    void infoText();
    void namesOfAttempts_data();
    void namesOfAttempts();
    void longNamesAreCutBetweenCharacters_data();
    void longNamesAreCutBetweenCharacters();

    void stickyDirectoryOfTheAdministratorIsUsed();
    void otherDirectoriesOfThatNameAreNot_data();
    void otherDirectoriesOfThatNameAreNot();
    void linkToADirectoryIsNot();
    void stickyDirectoryThatCannotBeUsedIsPassedOver_data();
    void stickyDirectoryThatCannotBeUsedIsPassedOver();
    void directoryOfTheUserIsReused();
    void directoryOfTheUserThatCannotBeUsed_data();
    void directoryOfTheUserThatCannotBeUsed();
    void directoryOfSomebodyElseIsNotUsed();
    void missingFileSystem();

    void ownTrashMayBeALink();
    void originIsWrittenAsGiven();
    void textIsForTheUserOnly();
    void textIsOnTheDiskBeforeTheFileMoves();
    void textThatDoesNotReachTheDiskIsTakenBack();
    void whatTookThePlaceOfTheTextStays();
    void textThatDoesNotFitIsTakenBack_data();
    void textThatDoesNotFitIsTakenBack();
    void missingFileLeavesNoTrace();
    void fileOfAnotherFileSystemLeavesNoTrace();

    void theStandardInputsNumberIsThatOfAFile();

protected:
    void prepare() override { mTree = std::make_unique<FileTree>(); }
    void tidy() override { mTree.reset(); }

private:
    TrashDirectory trash() const { return TrashDirectory::ofFileSystem(QFile::encodeName(mTree->path())); }

    // Throws a file away; 0 or the number of the error.
    int take(const char *name = "a.par") const
    {
        const TrashDirectory directory = trash();
        if (!directory.isUsable())
            return -1;
        return directory.take(QFile::encodeName(mTree->file(name)), name, someTime());
    }

    void chmodTo(const char *name, mode_t mode) const
    {
        QCOMPARE(chmod(QFile::encodeName(mTree->path(name)).constData(), mode), 0);
    }

    std::unique_ptr<FileTree> mTree;
};

void tst_trash_directory::infoText_data()
{
    QTest::addColumn<QDateTime>("time");
    QTest::addColumn<QByteArray>("date");
    QTest::newRow("of another zone") << someTime() << QByteArray("2026-02-03T02:05:06");
    QTest::newRow("local") << QDateTime(QDate(2026, 12, 31), QTime(23, 59, 59))
                           << QByteArray("2026-12-31T23:59:59");
}

void tst_trash_directory::infoText()
{
    QFETCH(QDateTime, time);
    QFETCH(QByteArray, date);
    const ScopedTimeZone zone("XYZ2");
    QCOMPARE(trashInfoText("/data/a b%\xFF.par", time),
             "[Trash Info]\nPath=/data/a%20b%25%FF.par\nDeletionDate=" + date + '\n');
}

void tst_trash_directory::namesOfAttempts_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("attempt");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, int attempt, const char *expected) {
        QTest::addRow("%s %d", name, attempt) << QByteArray(name) << attempt << QByteArray(expected);
    };
    row("a.par", 1, "a.par");
    row("a.par", 2, "a.2.par");
    row("a.par", 1000000, "a.1000000.par");
    row("a", 2, "a.2");
    row(".profile", 2, ".profile.2");
    row("a.tar.gz", 2, "a.tar.2.gz");
    row("a.", 2, "a.2.");
    row("a.this is no kind of a file, it is prose", 2, "a.this is no kind of a file, it is prose.2");
}

void tst_trash_directory::namesOfAttempts()
{
    QFETCH(QByteArray, name);
    QFETCH(int, attempt);
    QFETCH(QByteArray, expected);
    QCOMPARE(trashName(name, attempt), expected);
}

void tst_trash_directory::longNamesAreCutBetweenCharacters_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("attempt");
    QTest::addColumn<QByteArray>("expected");
    const QByteArray euro = "\xE2\x82\xAC";
    const QByteArray smile = "\xF0\x9F\x98\x80";
    // 255 bytes less ".trashinfo" are 245.
    QTest::newRow("longest whole") << QByteArray(241, 'x') + ".par" << 1 << QByteArray(241, 'x') + ".par";
    QTest::newRow("too long") << QByteArray(242, 'x') + ".par" << 1 << QByteArray(241, 'x') + ".par";
    QTest::newRow("number") << QByteArray(241, 'x') + ".par" << 10 << QByteArray(238, 'x') + ".10.par";
    QTest::newRow("three bytes") << euro.repeated(85) << 1 << euro.repeated(81);
    QTest::newRow("four bytes") << smile.repeated(63) << 1 << smile.repeated(61);
    QTest::newRow("no UTF-8") << QByteArray(255, '\x80') << 1 << QByteArray(242, '\x80');
}

void tst_trash_directory::longNamesAreCutBetweenCharacters()
{
    QFETCH(QByteArray, name);
    QFETCH(int, attempt);
    QFETCH(QByteArray, expected);
    QCOMPARE(trashName(name, attempt), expected);
    QVERIFY(trashName(name, attempt).size() + int(qstrlen(".trashinfo")) <= NAME_MAX);
}

void tst_trash_directory::stickyDirectoryOfTheAdministratorIsUsed()
{
    mTree->directory(".Trash");
    chmodTo(".Trash", 01777);
    QCOMPARE(take(), 0);
    QCOMPARE(mTree->names(),
             namesOfUser(".Trash .Trash/<uid> .Trash/<uid>/files .Trash/<uid>/files/a.par .Trash/<uid>/info "
                         ".Trash/<uid>/info/a.par.trashinfo"));
    struct stat status = {};
    QCOMPARE(stat(QFile::encodeName(mTree->path(ofUser(".Trash/<uid>").constData())).constData(), &status),
             0);
    QCOMPARE(status.st_mode & 07777U, 0700U);
}

void tst_trash_directory::otherDirectoriesOfThatNameAreNot_data()
{
    QTest::addColumn<uint>("mode");
    QTest::newRow("for everybody") << 0777U;
    QTest::newRow("for the user") << 0700U;
    QTest::newRow("with the group's bit") << 02777U;
}

void tst_trash_directory::otherDirectoriesOfThatNameAreNot()
{
    QFETCH(uint, mode);
    mTree->directory(".Trash");
    chmodTo(".Trash", mode);
    QCOMPARE(take(), 0);
    QCOMPARE(mTree->names(),
             namesOfUser(".Trash .Trash-<uid> .Trash-<uid>/files .Trash-<uid>/files/a.par .Trash-<uid>/info "
                         ".Trash-<uid>/info/a.par.trashinfo"));
}

void tst_trash_directory::linkToADirectoryIsNot()
{
    mTree->directory("elsewhere");
    chmodTo("elsewhere", 01777);
    mTree->link(".Trash", mTree->path("elsewhere"));
    QCOMPARE(take(), 0);
    QCOMPARE(mTree->names("elsewhere"), QStringList());
    QVERIFY(mTree->has(ofUser(".Trash-<uid>/files/a.par").constData()));
}

void tst_trash_directory::stickyDirectoryThatCannotBeUsedIsPassedOver_data()
{
    QTest::addColumn<QByteArray>("inTheWay");
    QTest::newRow("file") << QByteArray(".Trash/<uid>");
    QTest::newRow("file in it") << QByteArray(".Trash/<uid>/files");
}

void tst_trash_directory::stickyDirectoryThatCannotBeUsedIsPassedOver()
{
    QFETCH(QByteArray, inTheWay);
    mTree->file(ofUser(inTheWay.constData()).constData());
    chmodTo(".Trash", 01777);
    QCOMPARE(take(), 0);
    QVERIFY(mTree->has(ofUser(".Trash-<uid>/files/a.par").constData()));
}

void tst_trash_directory::directoryOfTheUserIsReused()
{
    QCOMPARE(take(), 0);
    QCOMPARE(take(), 0);
    QCOMPARE(
        mTree->names(),
        namesOfUser(".Trash-<uid> .Trash-<uid>/files .Trash-<uid>/files/a.2.par .Trash-<uid>/files/a.par "
                    ".Trash-<uid>/info .Trash-<uid>/info/a.2.par.trashinfo "
                    ".Trash-<uid>/info/a.par.trashinfo"));
}

void tst_trash_directory::directoryOfTheUserThatCannotBeUsed_data()
{
    QTest::addColumn<QByteArray>("inTheWay");
    QTest::addColumn<bool>("isLink");
    QTest::newRow("file") << QByteArray(".Trash-<uid>") << false;
    QTest::newRow("file instead of files") << QByteArray(".Trash-<uid>/files") << false;
    QTest::newRow("file instead of info") << QByteArray(".Trash-<uid>/info") << false;
    QTest::newRow("link") << QByteArray(".Trash-<uid>") << true;
    QTest::newRow("link instead of files") << QByteArray(".Trash-<uid>/files") << true;
    QTest::newRow("link instead of info") << QByteArray(".Trash-<uid>/info") << true;
}

void tst_trash_directory::directoryOfTheUserThatCannotBeUsed()
{
    QFETCH(QByteArray, inTheWay);
    QFETCH(bool, isLink);
    const QByteArray name = ofUser(inTheWay.constData());
    mTree->directory("elsewhere");
    if (isLink) {
        mTree->directory(QFileInfo(QString::fromLatin1(name)).path().toLatin1().constData());
        mTree->link(name.constData(), mTree->path("elsewhere"));
    } else {
        mTree->file(name.constData());
    }
    QVERIFY(!trash().isUsable());
    QCOMPARE(mTree->names("elsewhere"), QStringList());
}

void tst_trash_directory::directoryOfSomebodyElseIsNotUsed()
{
    const QByteArray name = ofUser(".Trash-<uid>");
    const QString path = mTree->directory(name.constData());
    if (chown(QFile::encodeName(path).constData(), geteuid() + 1, getegid()) != 0)
        QSKIP("only the administrator can give a directory away");
    QVERIFY(!trash().isUsable());
    QCOMPARE(mTree->names(), QStringList{QString::fromLatin1(name)});

    mTree->directory(ofUser(".Trash/<uid>").constData());
    chmodTo(".Trash", 01777);
    QVERIFY(trash().isUsable());
    QCOMPARE(chown(QFile::encodeName(mTree->path(ofUser(".Trash/<uid>").constData())).constData(),
                   geteuid() + 1, getegid()),
             0);
    QVERIFY(!trash().isUsable());
}

void tst_trash_directory::missingFileSystem()
{
    QVERIFY(!TrashDirectory::ofFileSystem(QFile::encodeName(mTree->path("missing"))).isUsable());
    QVERIFY(!TrashDirectory::ofFileSystem(QFile::encodeName(mTree->file("a.par"))).isUsable());
    QVERIFY(!TrashDirectory::atPath(QFile::encodeName(mTree->path("a.par/Trash"))).isUsable());
    QCOMPARE(mTree->names(), nameList("a.par"));
}

void tst_trash_directory::ownTrashMayBeALink()
{
    mTree->directory("elsewhere");
    mTree->link("Trash", mTree->path("elsewhere"));
    const TrashDirectory directory = TrashDirectory::atPath(QFile::encodeName(mTree->path("Trash")));
    QVERIFY(directory.isUsable());
    QCOMPARE(directory.take(QFile::encodeName(mTree->file("a.par")), "a.par", someTime()), 0);
    QCOMPARE(mTree->names("elsewhere"), nameList("files files/a.par info info/a.par.trashinfo"));
}

void tst_trash_directory::originIsWrittenAsGiven()
{
    const ScopedTimeZone zone("UTC0");
    const TrashDirectory directory = TrashDirectory::atPath(QFile::encodeName(mTree->path("Trash")));
    QVERIFY(directory.isUsable());
    QCOMPARE(directory.take(QFile::encodeName(mTree->file("a.par")), "some/where", someTime()), 0);
    QCOMPARE(mTree->content("Trash/info/a.par.trashinfo"),
             QByteArray("[Trash Info]\nPath=some/where\nDeletionDate=2026-02-03T04:05:06\n"));
}

void tst_trash_directory::textIsForTheUserOnly()
{
    const mode_t former = umask(0);
    const int error = take();
    umask(former);
    QCOMPARE(error, 0);
    struct stat status = {};
    const QByteArray info = ofUser(".Trash-<uid>/info/a.par.trashinfo");
    QCOMPARE(stat(QFile::encodeName(mTree->path(info.constData())).constData(), &status), 0);
    QCOMPARE(status.st_mode & 07777U, 0600U);
}

void tst_trash_directory::textIsOnTheDiskBeforeTheFileMoves()
{
    const TrashDirectory directory = trash();
    const QByteArray path = QFile::encodeName(mTree->file("a.par"));
    QVector<off_t> sizes;
    bool moved = false;
    const ScopedFsync fsync([&](int file) {
        struct stat status = {};
        sizes.append(fstat(file, &status) == 0 ? status.st_size : -1);
        moved |= !mTree->has("a.par");
        return 0;
    });
    QCOMPARE(directory.take(path, "a.par", someTime()), 0);
    QVERIFY(!moved);
    QVERIFY(!mTree->has("a.par"));
    QCOMPARE(sizes, QVector<off_t>{trashInfoText("a.par", someTime()).size()});
}

void tst_trash_directory::textThatDoesNotReachTheDiskIsTakenBack()
{
    const TrashDirectory directory = trash();
    const QByteArray path = QFile::encodeName(mTree->file("a.par", "a"));
    {
        const ScopedFsync fsync([](int) {
            errno = EIO;
            return -1;
        });
        QCOMPARE(directory.take(path, "a.par", someTime()), EIO);
    }
    QCOMPARE(mTree->names(), namesOfUser(".Trash-<uid> .Trash-<uid>/files .Trash-<uid>/info a.par"));
    QCOMPARE(mTree->content("a.par"), QByteArray("a"));

    // Where nothing is kept, in memory for example, a system may refuse to wait for the disk.
    const ScopedFsync fsync([](int) {
        errno = EINVAL;
        return -1;
    });
    QCOMPARE(directory.take(path, "a.par", someTime()), 0);
}

void tst_trash_directory::whatTookThePlaceOfTheTextStays()
{
    const TrashDirectory directory = trash();
    const QByteArray path = QFile::encodeName(mTree->file("a.par", "a"));
    const QByteArray info = ofUser(".Trash-<uid>/info/a.par.trashinfo");
    const ScopedFsync fsync([&](int) {
        QFile::remove(mTree->path(info.constData()));
        mTree->file(info.constData(), "somebody else's");
        errno = EIO;
        return -1;
    });
    QCOMPARE(directory.take(path, "a.par", someTime()), EIO);
    QCOMPARE(mTree->content(info.constData()), QByteArray("somebody else's"));
    QCOMPARE(mTree->content("a.par"), QByteArray("a"));
}

void tst_trash_directory::textThatDoesNotFitIsTakenBack_data()
{
    QTest::addColumn<int>("room");
    QTest::newRow("nothing") << 0;
    QTest::newRow("a part") << 10;
    QTest::newRow("all but the last byte") << trashInfoText("a.par", someTime()).size() - 1;
}

void tst_trash_directory::textThatDoesNotFitIsTakenBack()
{
    QFETCH(int, room);
    const TrashDirectory directory = trash();
    const QByteArray path = QFile::encodeName(mTree->file("a.par", "a"));
    int error = 0;
    {
        const ScopedFileSize limit(static_cast<rlim_t>(room));
        if (!limit.isSet())
            QSKIP("the size of files cannot be limited");
        error = directory.take(path, "a.par", someTime());
    }
    QCOMPARE(error, ENOSPC);
    QCOMPARE(mTree->names(), namesOfUser(".Trash-<uid> .Trash-<uid>/files .Trash-<uid>/info a.par"));
    QCOMPARE(mTree->content("a.par"), QByteArray("a"));
    QCOMPARE(directory.take(path, "a.par", someTime()), 0);
}

void tst_trash_directory::missingFileLeavesNoTrace()
{
    const TrashDirectory directory = trash();
    QCOMPARE(directory.take(QFile::encodeName(mTree->path("missing")), "missing", someTime()), ENOENT);
    QCOMPARE(mTree->names(), namesOfUser(".Trash-<uid> .Trash-<uid>/files .Trash-<uid>/info"));
}

void tst_trash_directory::fileOfAnotherFileSystemLeavesNoTrace()
{
    struct stat ours = {};
    struct stat other = {};
    const char *path = "/proc/version";
    if (stat(path, &other) != 0 || stat(QFile::encodeName(mTree->path()).constData(), &ours) != 0
        || ours.st_dev == other.st_dev)
        QSKIP("there is no other file system");
    const TrashDirectory directory = trash();
    QCOMPARE(directory.take(path, path, someTime()), EXDEV);
    QCOMPARE(mTree->names(), namesOfUser(".Trash-<uid> .Trash-<uid>/files .Trash-<uid>/info"));
}

// What a program opens first whose standard input is closed.
void tst_trash_directory::theStandardInputsNumberIsThatOfAFile()
{
    FileDescriptor input(::dup(STDIN_FILENO));
    int ends[2] = {-1, -1};
    QCOMPARE(::pipe(ends), 0);
    FileDescriptor readEnd(ends[0]);
    FileDescriptor writeEnd(ends[1]);
    QCOMPARE(::dup2(readEnd.number(), STDIN_FILENO), STDIN_FILENO);
    FileDescriptor descriptor(STDIN_FILENO);
    QVERIFY(descriptor.isOpen());
    QVERIFY(descriptor.close());
    const bool isClosed = ::fcntl(STDIN_FILENO, F_GETFD) == -1;
    if (input.isOpen())
        ::dup2(input.number(), STDIN_FILENO);
    QVERIFY(isClosed);
}

QTEST_GUILESS_MAIN(tst_trash_directory)
#include "tst_trash_directory.moc"
