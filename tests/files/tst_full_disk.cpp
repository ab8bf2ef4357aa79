// SPDX-License-Identifier: MIT
// A disk that has room for less and less of what is to be written.
#include <CDir.h>
#include <CPath.h>
#include <CSettingsFile.h>
#include <CTemporaryDir.h>

#include <FileTree.h>
#include <LoggedTest.h>
#include <OwnMounts.h>
#include <PrintedText.h>
#include <ScopedVariable.h>

#include <QTest>

using faults::SmallDisk;

namespace {

constexpr int pageSize = 4096;
constexpr qint64 diskSize = 262144; // 64 pages

// Of ten pages, each different from the others.
QByteArray content()
{
    QByteArray bytes;
    for (int i = 0; bytes.size() < 10 * pageSize; ++i)
        bytes += QByteArray::number(i) + ';';
    return bytes.left(10 * pageSize);
}

} // namespace

class tst_full_disk : public LoggedTest
{
    Q_OBJECT

public:
    explicit tst_full_disk(bool mayMount) : mMayMount(mayMount) {}

private Q_SLOTS:
    void initTestCase();
    void fileIsCopiedWholeOrNot_data() { addRoom(); }
    void fileIsCopiedWholeOrNot();
    void treeIsCopiedWholeOrNot_data() { addRoom(); }
    void treeIsCopiedWholeOrNot();
    void filesGoToTheTrashOrStay_data() { addRoom(); }
    void filesGoToTheTrashOrStay();
    void directoriesAreMadeOrNot();
    void settingsThatCannotBeLockedStay();

private:
    static void addRoom()
    {
        QTest::addColumn<int>("pages");
        for (int pages = 0; pages <= 24; ++pages)
            QTest::newRow(QByteArray::number(pages).constData()) << pages;
    }

    bool mMayMount;
};

void tst_full_disk::initTestCase()
{
    if (!mMayMount)
        QSKIP("the system does not allow the test a file system of its own");
}

void tst_full_disk::fileIsCopiedWholeOrNot()
{
    QFETCH(int, pages);
    const FileTree tree;
    const QString source = tree.file("source.par", content());
    const SmallDisk disk(tree.directory("disk"), diskSize);
    QVERIFY(disk.isMounted());
    tree.file("disk/mine.par", "mine");
    QVERIFY(disk.leave(pages));
    bool isCopied = false;
    const QByteArray printed = printedBy([&] { isCopied = CDir::copyFile(source, tree.path("disk/a.par")); });
    QCOMPARE(isCopied, pages >= 10);
    QCOMPARE(tree.has("disk/a.par"), isCopied);
    QCOMPARE(tree.content("disk/a.par"), isCopied ? content() : QByteArray("<unreadable>"));
    QCOMPARE(printed.isEmpty(), isCopied);
    QCOMPARE(tree.content("disk/mine.par"), QByteArray("mine"));
    QCOMPARE(tree.names("disk").size(), isCopied ? 3 : 2);
}

void tst_full_disk::treeIsCopiedWholeOrNot()
{
    QFETCH(int, pages);
    const FileTree tree;
    tree.file("source/a.par", content());
    tree.file("source/axis/b.par", content());
    const SmallDisk disk(tree.directory("disk"), diskSize);
    QVERIFY(disk.isMounted());
    QVERIFY(disk.leave(pages));
    bool isCopied = false;
    printedBy(
        [&] { isCopied = CDir::copyDirectoryRecursive(tree.path("source"), tree.path("disk/target")); });
    QCOMPARE(isCopied, pages >= 20);
    for (const char *name : {"a.par", "axis/b.par"}) {
        const QByteArray target = QByteArray("disk/target/") + name;
        if (tree.has(target.constData()))
            QCOMPARE(tree.content(target.constData()), content());
    }
    if (isCopied)
        QCOMPARE(tree.names("disk/target"), nameList("a.par axis axis/b.par"));
}

// To move needs no room, but what is known about a file does.
void tst_full_disk::filesGoToTheTrashOrStay()
{
    QFETCH(int, pages);
    const FileTree tree;
    const SmallDisk disk(tree.directory("disk"), diskSize);
    QVERIFY(disk.isMounted());
    const ScopedVariable home("HOME", QFile::encodeName(tree.directory("disk/home")));
    const ScopedVariable dataHome("XDG_DATA_HOME", QByteArray());
    const QString path = tree.file("disk/a.par", content());
    QVERIFY(disk.leave(pages));
    const int result = CDir::moveToTrash(path);
    QCOMPARE(result, pages > 0 ? 0 : 1);
    const char *trashed = "disk/home/.local/share/Trash/files/a.par";
    QCOMPARE(tree.content(result == 0 ? trashed : "disk/a.par"), content());
    QVERIFY(!tree.has(result == 0 ? "disk/a.par" : trashed));
    QCOMPARE(tree.names("disk/home/.local/share/Trash/info").size(), result == 0 ? 1 : 0);
}

void tst_full_disk::directoriesAreMadeOrNot()
{
    const FileTree tree;
    const SmallDisk disk(tree.directory("disk"), diskSize);
    QVERIFY(disk.isMounted());
    // What is full first are the numbers of files.
    int count = 0;
    while (QDir(tree.path("disk")).mkdir(QString::number(count)))
        ++count;
    const QString path = tree.path("disk/new/log/");
    QCOMPARE(CPath::createDirIfWanted(path, true), path);
    QVERIFY(!QFileInfo::exists(path));
    const ScopedVariable temporary("TMPDIR", QFile::encodeName(tree.path("disk")));
    const CTemporaryDir directory;
    QVERIFY(!directory.isValid());
    QCOMPARE(directory.path(), QString());
    QCOMPARE(tree.names("disk").size(), count);
}

void tst_full_disk::settingsThatCannotBeLockedStay()
{
    const QByteArray before = "[Drive]\naddress=0x0000002a\n";
    const FileTree tree;
    const SmallDisk disk(tree.directory("disk"), diskSize);
    QVERIFY(disk.isMounted());
    const QString fileName = tree.file("disk/tool.ini", before);
    QVERIFY(disk.leave(0));
    {
        CSettingsFile settings(fileName, QSettings::IniFormat, nullptr);
        settings.setUnsignedIntValue(QStringLiteral("Drive"), QStringLiteral("address"), 43);
        settings.sync();
        QCOMPARE(settings.status(), QSettings::AccessError);
    }
    QCOMPARE(tree.content("disk/tool.ini"), before);
    QCOMPARE(tree.names("disk"), nameList(".fill tool.ini"));
}

int main(int argc, char *argv[])
{
    tst_full_disk test(faults::enterOwnMounts());
    return QTest::qExec(&test, argc, argv);
}
#include "tst_full_disk.moc"
