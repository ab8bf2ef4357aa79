// SPDX-License-Identifier: MIT
// The way to the trash on a disk that fails: each file operation fails once and for good, and what was to be
// moved is in one place as a whole.
#include <CDir.h>

#include "DirectoryTrial.h"

#include <LoggedTest.h>
#include <OwnMounts.h>
#include <ScopedVariable.h>

#include <QTest>

#include <unistd.h>

using faults::Operation;

namespace {

// What is in the trash of the file system itself, where everything goes that seems to be on another one than
// the home. Empties it.
QString otherTrash(const FileTree &tree)
{
    QDir trash(QFileInfo(tree.path()).path() + QStringLiteral("/.Trash-") + QString::number(geteuid()));
    const QStringList names =
        QDir(trash.filePath(QStringLiteral("files"))).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    trash.removeRecursively();
    return names.join(QLatin1Char(' '));
}

// The thing lies in one place as a whole: where it was, or in the trash with what is known about it.
QString flawsOfTrash(const char *name, const Build &build, const QStringList &whole)
{
    const auto buildWithHome = [&build](const FileTree &tree) {
        tree.directory("home");
        build(tree);
    };
    const auto call = [name](const FileTree &tree) {
        const ScopedVariable home("HOME", QFile::encodeName(tree.path("home")));
        const ScopedVariable dataHome("XDG_DATA_HOME", QByteArray());
        return CDir::moveToTrash(tree.path(name));
    };
    const auto judge = [name, whole](const Outcome &outcome) {
        const QByteArray trash = "home/.local/share/Trash/";
        const QStringList files = picture(outcome.tree, (trash + "files").constData());
        const QStringList infos = outcome.tree.names((trash + "info").constData());
        const QString infoName = QLatin1String(name) + QLatin1String(".trashinfo");
        const QString elsewhere = otherTrash(outcome.tree);
        if (outcome.result == 0 && !elsewhere.isEmpty())
            return flawUnless(!outcome.tree.has(name) && elsewhere == QLatin1String(name),
                              QStringLiteral("elsewhere: ") + elsewhere);
        if (outcome.result == 0) {
            return flawUnless(!outcome.tree.has(name) && files == whole && infos == QStringList{infoName},
                              QStringLiteral("not in the trash"));
        }
        QStringList entries = picture(outcome.tree, "");
        for (const QString &entry : whole) {
            if (entries.removeAll(entry) == 0)
                return QStringLiteral("lost: ") + entry;
        }
        // Without a look at it a name of our own is not taken back: it might be somebody else's by now.
        const Operation failing = outcome.fault.operation;
        const bool isClean = (files.isEmpty() && infos.isEmpty()) || failing == Operation::Remove
                             || failing == Operation::LookUp;
        return flawUnless(isClean, QStringLiteral("left: ") + listed(files + infos));
    };
    return flawsOf(buildWithHome, call, 0, judge,
                   {Operation::Open, Operation::Write, Operation::Sync, Operation::Close, Operation::Rename,
                    Operation::MakeDirectory, Operation::LookUp});
}

} // namespace

class tst_trash_faults : public LoggedTest
{
    Q_OBJECT

public:
    explicit tst_trash_faults(bool hasOwnMemory) : mHasOwnMemory(hasOwnMemory) {}

private Q_SLOTS:
    void initTestCase();
    void fileIsMovedToTheTrash();
    void directoryIsMovedToTheTrash();

private:
    bool mHasOwnMemory;
};

// What goes to the trash beside the trees would else stay there.
void tst_trash_faults::initTestCase()
{
    if (!mHasOwnMemory)
        QSKIP("the system does not allow the test a file system of its own");
}

void tst_trash_faults::fileIsMovedToTheTrash()
{
    const QString flaws = flawsOfTrash("a.par", [](const FileTree &tree) { tree.file("a.par", "a"); },
                                       {QStringLiteral("a.par=a")});
    QVERIFY2(flaws.isEmpty(), qPrintable(flaws));
}

void tst_trash_faults::directoryIsMovedToTheTrash()
{
    const QString flaws = flawsOfTrash("axis", [](const FileTree &tree) { tree.file("axis/a.par", "a"); },
                                       {QStringLiteral("axis"), QStringLiteral("axis/a.par=a")});
    QVERIFY2(flaws.isEmpty(), qPrintable(flaws));
}

int main(int argc, char *argv[])
{
    tst_trash_faults test(faults::mountOwnMemory());
    return QTest::qExec(&test, argc, argv);
}
#include "tst_trash_faults.moc"
