// SPDX-License-Identifier: MIT
// A fault that is injected does happen, where it is meant to and nowhere else.
#include "FaultPlan.h"
#include "FaultSweep.h"

#include <FileTree.h>
#include <LoggedTest.h>

#include <QTest>

#include <cerrno>
#include <csignal>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace faults;

namespace {

QByteArray native(const QString &path)
{
    return QFile::encodeName(path);
}

// A file of the tree that is open while this lives.
class OpenFile
{
public:
    explicit OpenFile(const FileTree &tree) : mNumber(open(native(tree.path("a")).constData(), O_RDWR)) {}
    ~OpenFile() { close(mNumber); }
    OpenFile(const OpenFile &) = delete;
    OpenFile &operator=(const OpenFile &) = delete;

    int number() const { return mNumber; }

private:
    int mNumber;
};

// Each function is one operation of its kind on the files of a tree. It gives 0 or the number of the error;
// -1 is success for none of them.
struct Sample
{
    const char *name;
    Operation operation;
    int (*act)(const FileTree &tree);
};

int errorOf(ssize_t result)
{
    return result == -1 ? errno : 0;
}

template<typename Action>
int withFile(const FileTree &tree, const Action &action)
{
    const OpenFile file(tree);
    return errorOf(action(file.number()));
}

constexpr std::array<Sample, 34> samples = {{
    {"open", Operation::Open,
     [](const FileTree &tree) {
         const int file = open(native(tree.path("a")).constData(), O_RDONLY);
         const int error = errorOf(file);
         close(file);
         return error;
     }},
    {"open64", Operation::Open,
     [](const FileTree &tree) {
         const int file = open64(native(tree.path("new")).constData(), O_RDWR | O_CREAT, 0600);
         const int error = errorOf(file);
         close(file);
         return error;
     }},
    {"openat", Operation::Open,
     [](const FileTree &tree) {
         const int file = openat(AT_FDCWD, native(tree.path("new")).constData(), O_RDWR | O_CREAT, 0600);
         const int error = errorOf(file);
         close(file);
         return error;
     }},
    {"close", Operation::Close,
     [](const FileTree &tree) { return errorOf(close(open(native(tree.path("a")).constData(), O_RDONLY))); }},
    {"read", Operation::Read,
     [](const FileTree &tree) {
         char byte = 0;
         return withFile(tree, [&byte](int file) { return read(file, &byte, 1); });
     }},
    {"pread", Operation::Read,
     [](const FileTree &tree) {
         char byte = 0;
         return withFile(tree, [&byte](int file) { return pread(file, &byte, 1, 1); });
     }},
    {"pread64", Operation::Read,
     [](const FileTree &tree) {
         char byte = 0;
         return withFile(tree, [&byte](int file) { return pread64(file, &byte, 1, 1); });
     }},
    {"write", Operation::Write,
     [](const FileTree &tree) { return withFile(tree, [](int file) { return write(file, "x", 1); }); }},
    {"fsync", Operation::Sync, [](const FileTree &tree) { return withFile(tree, fsync); }},
    {"fdatasync", Operation::Sync, [](const FileTree &tree) { return withFile(tree, fdatasync); }},
    {"rename", Operation::Rename,
     [](const FileTree &tree) {
         return errorOf(rename(native(tree.path("a")).constData(), native(tree.path("new")).constData()));
     }},
    {"renameat", Operation::Rename,
     [](const FileTree &tree) {
         return errorOf(renameat(AT_FDCWD, native(tree.path("a")).constData(), AT_FDCWD,
                                 native(tree.path("new")).constData()));
     }},
    {"renameat2", Operation::Rename,
     [](const FileTree &tree) {
         return errorOf(renameat2(AT_FDCWD, native(tree.path("a")).constData(), AT_FDCWD,
                                  native(tree.path("new")).constData(), 0));
     }},
    {"link", Operation::Link,
     [](const FileTree &tree) {
         return errorOf(link(native(tree.path("a")).constData(), native(tree.path("new")).constData()));
     }},
    {"linkat", Operation::Link,
     [](const FileTree &tree) {
         return errorOf(linkat(AT_FDCWD, native(tree.path("a")).constData(), AT_FDCWD,
                               native(tree.path("new")).constData(), 0));
     }},
    {"unlink", Operation::Remove,
     [](const FileTree &tree) { return errorOf(unlink(native(tree.path("a")).constData())); }},
    {"unlinkat", Operation::Remove,
     [](const FileTree &tree) {
         return errorOf(unlinkat(AT_FDCWD, native(tree.path("empty")).constData(), AT_REMOVEDIR));
     }},
    {"rmdir", Operation::Remove,
     [](const FileTree &tree) { return errorOf(rmdir(native(tree.path("empty")).constData())); }},
    {"mkdir", Operation::MakeDirectory,
     [](const FileTree &tree) { return errorOf(mkdir(native(tree.path("new")).constData(), 0700)); }},
    {"mkdirat", Operation::MakeDirectory,
     [](const FileTree &tree) {
         return errorOf(mkdirat(AT_FDCWD, native(tree.path("new")).constData(), 0700));
     }},
    {"ftruncate", Operation::Resize,
     [](const FileTree &tree) { return withFile(tree, [](int file) { return ftruncate(file, 1); }); }},
    {"ftruncate64", Operation::Resize,
     [](const FileTree &tree) { return withFile(tree, [](int file) { return ftruncate64(file, 1); }); }},
    {"stat", Operation::LookUp,
     [](const FileTree &tree) {
         struct stat status = {};
         return errorOf(stat(native(tree.path("a")).constData(), &status));
     }},
    {"lstat", Operation::LookUp,
     [](const FileTree &tree) {
         struct stat status = {};
         return errorOf(lstat(native(tree.path("a")).constData(), &status));
     }},
    {"fstat", Operation::LookUp,
     [](const FileTree &tree) {
         struct stat status = {};
         return withFile(tree, [&status](int file) { return fstat(file, &status); });
     }},
    {"fstatat", Operation::LookUp,
     [](const FileTree &tree) {
         struct stat status = {};
         return errorOf(fstatat(AT_FDCWD, native(tree.path("a")).constData(), &status, 0));
     }},
    {"access", Operation::LookUp,
     [](const FileTree &tree) { return errorOf(access(native(tree.path("a")).constData(), R_OK)); }},
    {"realpath", Operation::LookUp,
     [](const FileTree &tree) {
         std::array<char, PATH_MAX> path = {};
         return realpath(native(tree.path("a")).constData(), path.data()) == nullptr ? errno : 0;
     }},
    {"lseek", Operation::Seek,
     [](const FileTree &tree) { return withFile(tree, [](int file) { return lseek(file, 0, SEEK_SET); }); }},
    {"sendfile", Operation::CopyData,
     [](const FileTree &tree) {
         const OpenFile source(tree);
         const OpenFile target(tree);
         return errorOf(sendfile(target.number(), source.number(), nullptr, 2));
     }},
    {"ioctl", Operation::CopyData,
     [](const FileTree &tree) {
         int count = 0;
         return withFile(tree, [&count](int file) { return ioctl(file, FIONREAD, &count); });
     }},
    {"chmod", Operation::SetMode,
     [](const FileTree &tree) { return errorOf(chmod(native(tree.path("a")).constData(), 0600)); }},
    {"futimens", Operation::SetTimes,
     [](const FileTree &tree) { return withFile(tree, [](int file) { return futimens(file, nullptr); }); }},
    {"flock", Operation::Lock,
     [](const FileTree &tree) { return withFile(tree, [](int file) { return flock(file, LOCK_SH); }); }},
}};

const Sample &sampleNamed(const QByteArray &name)
{
    return *std::find_if(samples.begin(), samples.end(),
                         [&name](const Sample &sample) { return name == sample.name; });
}

} // namespace

class tst_fault_injection : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void everyFunctionIsCountedAndFails_data();
    void everyFunctionIsCountedAndFails();
    void faultHitsItsNumberOnly();
    void faultStays();
    void halfIsMoved();
    void fileShrinks();
    void filesElsewhereAreLeftAlone();
    void namesInTheCurrentDirectoryCount();
    void closingThatFailsCloses();
    void directoriesAreListed();
    void typesOfEntriesAreHidden();
    void otherLibrariesAreReached();
    void nothingHappensBehindTheScope();
    void processDies_data();
    void processDies();
    void sweepFindsWhatIsWrong();

protected:
    void prepare() override
    {
        mTree = std::make_unique<FileTree>();
        mTree->file("a", "content of a");
        mTree->directory("empty");
    }
    void tidy() override { mTree.reset(); }

private:
    std::unique_ptr<FileTree> mTree;
};

void tst_fault_injection::everyFunctionIsCountedAndFails_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const Sample &sample : samples)
        QTest::newRow(sample.name) << QByteArray(sample.name);
}

void tst_fault_injection::everyFunctionIsCountedAndFails()
{
    QFETCH(QByteArray, name);
    const Sample &sample = sampleNamed(name);
    const FaultPlan failing(mTree->path(), {sample.operation, 1, false, Effect::Fail, EDQUOT});
    int error = 0;
    {
        const ScopedFaults faults(failing);
        error = sample.act(*mTree);
    }
    QCOMPARE(error, EDQUOT);
    QCOMPARE(failing.count(sample.operation), 1);
    QCOMPARE(failing.hits(), 1);

    const FaultPlan counting(mTree->path());
    {
        const ScopedFaults faults(counting);
        error = sample.act(*mTree);
    }
    QVERIFY(error == 0 || error == ENOTTY);
    QCOMPARE(counting.count(sample.operation), 1);
    QCOMPARE(counting.hits(), 0);
}

void tst_fault_injection::faultHitsItsNumberOnly()
{
    const FaultPlan plan(mTree->path(), {Operation::LookUp, 2, false, Effect::Fail, EIO});
    QVector<int> errors;
    {
        const ScopedFaults faults(plan);
        for (int i = 0; i < 4; ++i)
            errors += sampleNamed("stat").act(*mTree);
    }
    QCOMPARE(errors, (QVector<int>{0, EIO, 0, 0}));
    QCOMPARE(plan.hits(), 1);
}

void tst_fault_injection::faultStays()
{
    const FaultPlan plan(mTree->path(), {Operation::LookUp, 2, true, Effect::Fail, EIO});
    QVector<int> errors;
    {
        const ScopedFaults faults(plan);
        for (int i = 0; i < 4; ++i)
            errors += sampleNamed("stat").act(*mTree);
    }
    QCOMPARE(errors, (QVector<int>{0, EIO, EIO, EIO}));
    QCOMPARE(plan.hits(), 3);
}

void tst_fault_injection::halfIsMoved()
{
    std::array<char, 6> bytes = {};
    const FaultPlan plan(mTree->path(), {Operation::Read, 1, false, Effect::Halve, 0});
    const ScopedFaults faults(plan);
    const OpenFile file(*mTree);
    QCOMPARE(read(file.number(), bytes.data(), bytes.size()), ssize_t(3));
    QCOMPARE(QByteArray(bytes.data(), 3), QByteArray("con"));
    QCOMPARE(read(file.number(), bytes.data(), bytes.size()), ssize_t(6));
}

void tst_fault_injection::fileShrinks()
{
    std::array<char, 64> bytes = {};
    const FaultPlan plan(mTree->path(), {Operation::Read, 2, true, Effect::Shrink, 0});
    QVector<ssize_t> counts;
    {
        const ScopedFaults faults(plan);
        const OpenFile file(*mTree);
        counts += read(file.number(), bytes.data(), 4);
        counts += read(file.number(), bytes.data(), bytes.size());
        counts += read(file.number(), bytes.data(), bytes.size());
    }
    QCOMPARE(counts, (QVector<ssize_t>{4, 2, 0}));
    QCOMPARE(mTree->content("a"), QByteArray("con")); // of 12 bytes
    QCOMPARE(plan.hits(), 2);
}

void tst_fault_injection::filesElsewhereAreLeftAlone()
{
    const FileTree other;
    other.file("a", "elsewhere");
    const FaultPlan plan(other.path(), {Operation::LookUp, 1, true, Effect::Fail, EIO});
    const ScopedFaults faults(plan);
    QCOMPARE(sampleNamed("stat").act(*mTree), 0);
    QCOMPARE(sampleNamed("fstat").act(*mTree), 0);
    QCOMPARE(sampleNamed("stat").act(other), EIO);
    // A directory whose name only begins like the one that is meant.
    const QByteArray neighbour = native(other.path()) + "x";
    struct stat status = {};
    QCOMPARE(stat(neighbour.constData(), &status), -1);
    QCOMPARE(errno, ENOENT);
}

void tst_fault_injection::namesInTheCurrentDirectoryCount()
{
    const QString former = QDir::currentPath();
    QVERIFY(QDir::setCurrent(mTree->path()));
    const FaultPlan plan(mTree->path());
    int found = -1;
    {
        const ScopedFaults faults(plan);
        found = access("a", R_OK);
        const int directory = open(native(mTree->path()).constData(), O_RDONLY | O_DIRECTORY);
        unlinkat(directory, "a", 0);
        close(directory);
    }
    QVERIFY(QDir::setCurrent(former));
    QCOMPARE(found, 0);
    QCOMPARE(plan.count(Operation::LookUp), 1);
    QCOMPARE(plan.count(Operation::Remove), 1);
    QVERIFY(!mTree->has("a"));
}

void tst_fault_injection::closingThatFailsCloses()
{
    const FaultPlan plan(mTree->path(), {Operation::Close, 1, true, Effect::Fail, EIO});
    const ScopedFaults faults(plan);
    const int file = open(native(mTree->path("a")).constData(), O_RDONLY);
    QCOMPARE(close(file), -1);
    QCOMPARE(fcntl(file, F_GETFD), -1);
}

void tst_fault_injection::directoriesAreListed()
{
    const QStringList all = QDir(mTree->path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries);
    QCOMPARE(all, nameList("a empty"));
    const FaultPlan plan(mTree->path());
    {
        const ScopedFaults faults(plan);
        QDir(mTree->path()).entryList();
    }
    // To open it; the two entries that are always there, the two others, the end.
    QCOMPARE(plan.count(Operation::List), 6);

    const FaultPlan failing(mTree->path(), {Operation::List, 2, true, Effect::Fail, EIO});
    const ScopedFaults faults(failing);
    QCOMPARE(QDir(mTree->path()).entryList(), QStringList());
}

void tst_fault_injection::typesOfEntriesAreHidden()
{
    Limits limits;
    limits.hidesTypes = true;
    const FaultPlan plan(mTree->path(), Fault(), limits);
    const ScopedFaults faults(plan);
    DIR *list = opendir(native(mTree->path()).constData());
    int count = 0;
    while (const dirent *entry = readdir(list)) {
        QCOMPARE(int(entry->d_type), int(DT_UNKNOWN));
        ++count;
    }
    closedir(list);
    QCOMPARE(count, 4);
}

void tst_fault_injection::otherLibrariesAreReached()
{
    const FaultPlan plan(mTree->path(), {Operation::Write, 1, false, Effect::Fail, ENOSPC});
    const ScopedFaults faults(plan);
    QFile file(mTree->path("a"));
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    QCOMPARE(file.write("x"), qint64(-1));
    QCOMPARE(file.error(), QFileDevice::ResourceError);
}

void tst_fault_injection::nothingHappensBehindTheScope()
{
    const FaultPlan plan(mTree->path(), {Operation::LookUp, 1, true, Effect::Fail, EIO});
    {
        const ScopedFaults faults(plan);
        QCOMPARE(sampleNamed("access").act(*mTree), EIO);
    }
    QCOMPARE(sampleNamed("access").act(*mTree), 0);
    QCOMPARE(plan.hits(), 1);
}

void tst_fault_injection::processDies_data()
{
    QTest::addColumn<int>("effect");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("before") << int(Effect::KillBefore) << QByteArray("content of a");
    QTest::newRow("midway") << int(Effect::KillMidway) << QByteArray("abntent of a");
    QTest::newRow("after") << int(Effect::KillAfter) << QByteArray("abcdent of a");
}

void tst_fault_injection::processDies()
{
    QFETCH(int, effect);
    QFETCH(QByteArray, content);
    const FaultPlan plan(mTree->path(), {Operation::Write, 1, false, Effect(effect), 0});
    const pid_t child = fork();
    if (child == 0) {
        const ScopedFaults faults(plan);
        const OpenFile file(*mTree);
        _exit(write(file.number(), "abcd", 4) == 4 ? 0 : 1);
    }
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    QVERIFY(WIFSIGNALED(status));
    QCOMPARE(WTERMSIG(status), SIGKILL);
    QCOMPARE(mTree->content("a"), content);
    QCOMPARE(plan.hits(), 1); // as the process that watches sees it
}

// Of an operation that keeps its file open when it could not write, says nothing of it or logs it.
void tst_fault_injection::sweepFindsWhatIsWrong()
{
    int leak = -1;
    Trial careless;
    careless.prepare = [](const FileTree &tree) { tree.file("a", "old"); };
    careless.act = [&leak](const FileTree &tree) {
        const int file = open(native(tree.path("a")).constData(), O_WRONLY | O_TRUNC);
        if (write(file, "new", 3) == 3)
            close(file);
        else if (file >= 0 && leak < 0)
            leak = file;
        else
            qWarning("not written");
    };
    careless.flaw = [](const FileTree &tree, const Fault &) {
        return tree.content("a") == "new" ? QString() : QStringLiteral("not new");
    };
    const FaultSweep sweep(careless);
    close(leak);
    const QStringList flaws = sweep.flaws();
    QVERIFY(flaws.contains(QStringLiteral("open 1, once: Permission denied: not new")));
    QVERIFY(flaws.contains(QStringLiteral("open 1, persistently: Too many open files: logged: not written")));
    QVERIFY(flaws.contains(QStringLiteral("write 1, once: No space left on device: not new")));
    QVERIFY(flaws.contains(QStringLiteral("write 1, once: No space left on device: a file is left open")));
    QVERIFY(flaws.contains(QStringLiteral("write 1, once: half of it: not new")));
    QCOMPARE(flaws.filter(QStringLiteral("close")), QStringList());
    QCOMPARE(sweep.size(), 2 * 4 + (2 * 3 + 1) + 2);
    QCOMPARE(sweep.unused({Operation::Open, Operation::Write, Operation::Close, Operation::Sync}),
             QStringList{QStringLiteral("sync")});
}

QTEST_GUILESS_MAIN(tst_fault_injection)
#include "tst_fault_injection.moc"
