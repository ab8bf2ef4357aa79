// SPDX-License-Identifier: MIT
// The trace on a disk that is full, or becomes so: the program goes on, and what has room is traced.
#include <CNewDelTrace.h>

#include <FileTree.h>
#include <LoggedTest.h>
#include <OwnMounts.h>
#include <ScopedCurrentDirectory.h>

#include <QTest>

using faults::SmallDisk;

namespace {

// Without an application it goes there, in the current directory.
const char *const traceName = "_NewDelTrace.txt";

constexpr int pageSize = 4096;
constexpr qint64 diskSize = 262144; // 64 pages

void addRecords(CNewDelTrace &trace, int count)
{
    for (int i = 0; i < count; ++i)
        trace.logNew(nullptr, "axis.cpp", i, "load", 16);
}

// What is traced where there is room.
QByteArray wholeTrace(int recordCount)
{
    const FileTree tree;
    const ScopedCurrentDirectory current(tree.path());
    {
        CNewDelTrace trace;
        addRecords(trace, recordCount);
    }
    return tree.content(traceName);
}

} // namespace

class tst_trace_full_disk : public LoggedTest
{
    Q_OBJECT

public:
    explicit tst_trace_full_disk(bool mayMount) : mMayMount(mayMount) {}

private Q_SLOTS:
    void initTestCase();
    void whatHasRoomIsTraced_data();
    void whatHasRoomIsTraced();
    void laterRoomTakesTheRest();
    void recordsAreNotKeptWithoutEnd();

private:
    bool mMayMount;
};

void tst_trace_full_disk::initTestCase()
{
    if (!mMayMount)
        QSKIP("the system does not allow the test a file system of its own");
}

void tst_trace_full_disk::whatHasRoomIsTraced_data()
{
    QTest::addColumn<int>("pages");
    for (int pages = 0; pages <= 3; ++pages)
        QTest::newRow(QByteArray::number(pages).constData()) << pages;
}

// The last line may be the beginning of one.
void tst_trace_full_disk::whatHasRoomIsTraced()
{
    QFETCH(int, pages);
    constexpr int recordCount = 1000;
    const FileTree tree;
    const SmallDisk disk(tree.path(), diskSize);
    QVERIFY(disk.isMounted());
    QVERIFY(disk.leave(pages));
    {
        const ScopedCurrentDirectory current(tree.path());
        CNewDelTrace trace;
        addRecords(trace, recordCount);
    }
    const QByteArray whole = wholeTrace(recordCount);
    QCOMPARE(whole.count('\n'), recordCount);
    QCOMPARE(tree.content(traceName), whole.left(pages * pageSize));
    QCOMPARE(tree.names(), (QStringList{QStringLiteral(".fill"), QLatin1String(traceName)}));
}

void tst_trace_full_disk::laterRoomTakesTheRest()
{
    constexpr int recordCount = 100; // which are kept until then, as they fit into a file's buffer
    const FileTree tree;
    const SmallDisk disk(tree.path(), diskSize);
    QVERIFY(disk.isMounted());
    QVERIFY(disk.leave(0));
    const ScopedCurrentDirectory current(tree.path());
    CNewDelTrace trace;
    addRecords(trace, recordCount);
    QCOMPARE(tree.content(traceName), QByteArray());
    QVERIFY(QFile::remove(tree.path(".fill")));
    addRecords(trace, 1);
    QCOMPARE(tree.content(traceName), wholeTrace(recordCount) + wholeTrace(1));
}

// A program that runs for days traces millions: those for which the file's buffer has no room are lost.
void tst_trace_full_disk::recordsAreNotKeptWithoutEnd()
{
    constexpr int bufferSize = 16384;
    constexpr int recordCount = 10000;
    const FileTree tree;
    const SmallDisk disk(tree.path(), diskSize);
    QVERIFY(disk.isMounted());
    QVERIFY(disk.leave(0));
    const ScopedCurrentDirectory current(tree.path());
    CNewDelTrace trace;
    addRecords(trace, recordCount);
    QVERIFY(QFile::remove(tree.path(".fill")));
    addRecords(trace, 1);
    const QByteArray traced = tree.content(traceName);
    const QByteArray last = wholeTrace(1);
    QVERIFY(traced.endsWith('\n' + last));
    QVERIFY(traced.size() <= bufferSize + last.size());
    QVERIFY(wholeTrace(recordCount).startsWith(traced.chopped(last.size())));
}

int main(int argc, char *argv[])
{
    tst_trace_full_disk test(faults::enterOwnMounts());
    return QTest::qExec(&test, argc, argv);
}
#include "tst_trace_full_disk.moc"
