// SPDX-License-Identifier: MIT
// What is copied one by one. Trees: tst_directories_tree_copying.cpp.
#include <CDir.h>

#include <FileTree.h>
#include <LoggedTest.h>
#include <PrintedText.h>
#include <ScopedCurrentDirectory.h>
#ifndef Q_OS_WIN
#include <ScopedUmask.h>
#endif

#include <QTest>

#include <memory>
#include <type_traits>

static_assert(std::is_trivially_default_constructible<CDir>::value, "no state of its own");

namespace {

constexpr QFile::Permissions sharedDirectory = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner
                                               | QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup
                                               | QFile::ReadOther | QFile::ExeOther;
constexpr QFile::Permissions forOwner = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;

// Without what Qt adds for the user who asks.
QFile::Permissions permissionsOf(const QString &path)
{
    return QFile::permissions(path) & ~(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser);
}

QByteArray unableToCopy(const QString &target)
{
    return "\nCDir::copyFile unable to copy " + target.toLocal8Bit();
}

QByteArray unableToCreate(const QString &target)
{
    return "\nCDir::copyDirectory unable to create " + target.toLocal8Bit();
}

} // namespace

class tst_directories_copying : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void relativeSubPath_data();
    void relativeSubPath();
    void siblingWithTheSameBeginningIsReachedThroughTheParent();
    void emptyBaseIsTheCurrentDirectoryForAnAbsolutePath();
    void backslashIsASeparatorOnlyWhereThePlatformSaysSo();

    void fileIsCopied();
    void missingDirectoryOfAFileIsMade();
    void missingDirectoryOfARelativeTargetIsMade();
    void directoryThatCannotBeMadeEndsTheCopy();
    void newDirectoryHasItsPermissionsWhateverTheUmask_data();
    void newDirectoryHasItsPermissionsWhateverTheUmask();
    void existingDirectoryKeepsItsPermissions();
    void existingTargetIsNotOverwritten();
    void missingSourceNamesTheTarget();
    void fileInTheWayOfADirectoryGetsItsPermissions();
    void emptyTargetOfAFileFails();
    void pathIsNoFormat();
    void pathWithANulCharacterIsNotCopied();
    void diagnosesKeepTheirOrderAmongOtherOutput();

    void directoryIsMadeWithoutReadingTheSource();
    void existingDirectoryIsFine();
    void fileInTheWayOfACopiedDirectory();

protected:
    void prepare() override { mTree = std::make_unique<FileTree>(); }
    void tidy() override { mTree.reset(); }

private:
    std::unique_ptr<FileTree> mTree;
};

void tst_directories_copying::relativeSubPath_data()
{
    QTest::addColumn<QString>("base");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *base, const char *path, const char *expected) {
        QTest::newRow(name) << QString::fromUtf8(base) << QString::fromUtf8(path)
                            << QString::fromUtf8(expected);
    };
    row("the base itself", "/a", "/a", "");
    row("the base itself with a drive letter", "C:/a", "C:/a", "");
    row("drive letter", "C:/a", "C:/a/b/c.txt", "b/c.txt");
    row("another drive", "C:/a", "D:/x", "");
    row("root of a drive", "C:/", "C:/a/b", "a/b");
    row("absolute", "/a", "/a/b/c.txt", "b/c.txt");
    row("elsewhere", "/a", "/b/c", "");
    row("above the base", "/a/b", "/a", "");
    row("upper and lower case differ", "/a", "/A/b", "");
    row("upper and lower case of the drive differ", "c:/a", "C:/a/b", "");
    row("separator at the end of the base", "/a/", "/a/b", "b");
    row("two separators", "/a//", "/a//b/c", "b/c");
    row("root", "/", "/a/b", "a/b");
    row("the base with one more separator", "/a", "/a/", ".");
    row("relative", "src", "src/a/b", "a/b");
    row("relative with a separator at the end", "src/", "src/a/b", "a/b");
    row("relative elsewhere", "src", "other/a", "");
    row("relative to the current directory", ".", "./a/b", "a/b");
    row("relative to the parent", "../src", "../src/a/b", "a/b");
    row("relative with a way back", "src/sub/..", "src/sub/../a/b", "a/b");
    row("absolute in a relative base", "src", "/src/a", "");
    row("both empty", "", "", "");
    row("empty base", "", "a/b", "a/b");
    row("empty path", "/a", "", "");
    row("blanks and signs", "/a b%1", "/a b%1/\xC3\xA4 %2", "\xC3\xA4 %2");
    const QString zeros(2, QChar(QChar::Null));
    QTest::newRow("zeros behind the base")
        << QStringLiteral("a") << QString(QStringLiteral("a") + zeros + QLatin1Char(':'))
        << QString(QStringLiteral("../a") + zeros + QLatin1Char(':'));
    QTest::newRow("zeros below the base")
        << QStringLiteral("a") << QString(QStringLiteral("a/") + zeros + QLatin1Char('b'))
        << QString(zeros + QLatin1Char('b'));
    QTest::newRow("zeros in the base")
        << QString(QLatin1Char('a') + zeros) << QString(QLatin1Char('a') + zeros + QStringLiteral("/b"))
        << QStringLiteral("b");
}

void tst_directories_copying::relativeSubPath()
{
    QFETCH(QString, base);
    QFETCH(QString, path);
    QFETCH(QString, expected);
    QCOMPARE(CDir::getRelativeSubPath(base, path), expected);
}

void tst_directories_copying::siblingWithTheSameBeginningIsReachedThroughTheParent()
{
    QCOMPARE(CDir::getRelativeSubPath(QStringLiteral("/a"), QStringLiteral("/ab/c")),
             QStringLiteral("../ab/c"));
}

void tst_directories_copying::emptyBaseIsTheCurrentDirectoryForAnAbsolutePath()
{
    const ScopedCurrentDirectory current(mTree->directory("current"));
    QCOMPARE(CDir::getRelativeSubPath(QString(), mTree->path("current/a/b")), QStringLiteral("a/b"));
}

void tst_directories_copying::backslashIsASeparatorOnlyWhereThePlatformSaysSo()
{
    const QString base = QStringLiteral("C:/a");
#ifdef Q_OS_WIN
    QCOMPARE(CDir::getRelativeSubPath(base, QStringLiteral("C:\\a\\b\\c.txt")), QStringLiteral("b/c.txt"));
#else
    QCOMPARE(CDir::getRelativeSubPath(base, QStringLiteral("C:\\a\\b\\c.txt")), QString());
    QCOMPARE(CDir::getRelativeSubPath(base, QStringLiteral("C:/a/b\\c.txt")), QStringLiteral("b\\c.txt"));
#endif
}

void tst_directories_copying::fileIsCopied()
{
    const QString source = mTree->file("source.par", "\x01\x00\x02");
    bool copied = false;
    QCOMPARE(printedBy([&] { copied = CDir::copyFile(source, mTree->path("target.par")); }), QByteArray());
    QVERIFY(copied);
    QCOMPARE(mTree->content("target.par"), mTree->content("source.par"));
}

void tst_directories_copying::missingDirectoryOfAFileIsMade()
{
    const QString source = mTree->file("source.par");
    QVERIFY(CDir::copyFile(source, mTree->path("one/two/target.par")));
    QCOMPARE(mTree->names(), nameList("one one/two one/two/target.par source.par"));
}

void tst_directories_copying::missingDirectoryOfARelativeTargetIsMade()
{
    const QString source = mTree->file("source.par", "a");
    const ScopedCurrentDirectory current(mTree->directory("current"));
    QVERIFY(CDir::copyFile(QStringLiteral("../source.par"), QStringLiteral("one/two/a.par")));
    QVERIFY(CDir::copyFile(source, QStringLiteral("b.par")));
    QVERIFY(CDir::copyFile(source, QStringLiteral("../four/./c.par")));
    const QString target = QStringLiteral("five/"); // a directory, but no name for the file
    bool copied = true;
    QCOMPARE(printedBy([&] { copied = CDir::copyFile(source, target); }), unableToCopy(target));
    QVERIFY(!copied);
#ifdef Q_OS_WIN // Qt takes the separator at the end away when it makes a path absolute
    QCOMPARE(mTree->names("current"), nameList("b.par one one/two one/two/a.par"));
#else
    QCOMPARE(mTree->names("current"), nameList("b.par five one one/two one/two/a.par"));
#endif
    QCOMPARE(mTree->names("four"), nameList("c.par"));
    QCOMPARE(mTree->content("current/one/two/a.par"), QByteArray("a"));
}

void tst_directories_copying::directoryThatCannotBeMadeEndsTheCopy()
{
#ifdef Q_OS_WIN
    QSKIP("links are shortcut files here");
#endif
    // What cannot be made is "axis" beside the link; the copy would go to the one behind it.
    const QString source = mTree->file("source.par");
    mTree->file("axis", "in the way");
    mTree->directory("elsewhere/axis");
    mTree->link("link", mTree->directory("elsewhere/plant"));
    const QString target = mTree->path("link/../axis/a.par");
    bool copied = true;
    QCOMPARE(printedBy([&] { copied = CDir::copyFile(source, target); }), unableToCopy(target));
    QVERIFY(!copied);
    QCOMPARE(mTree->names("elsewhere"), nameList("axis plant"));
}

void tst_directories_copying::newDirectoryHasItsPermissionsWhateverTheUmask_data()
{
    QTest::addColumn<int>("mask");
    QTest::addColumn<bool>("ofAFile");
    QTest::newRow("file, nothing masked") << 0 << true;
    QTest::newRow("file, all others masked") << 077 << true;
    QTest::newRow("directory, nothing masked") << 0 << false;
    QTest::newRow("directory, all others masked") << 077 << false;
}

void tst_directories_copying::newDirectoryHasItsPermissionsWhateverTheUmask()
{
#ifdef Q_OS_WIN
    QSKIP("there is no umask here");
#else
    QFETCH(int, mask);
    QFETCH(bool, ofAFile);
    const QString source = mTree->file("source.par");
    {
        const ScopedUmask umask(static_cast<mode_t>(mask));
        QVERIFY(ofAFile ? CDir::copyFile(source, mTree->path("one/two/target.par"))
                        : CDir::copyDirectory(mTree->path(), mTree->path("one/two")));
    }
    QCOMPARE(permissionsOf(mTree->path("one/two")), sharedDirectory);
    const QFile::Permissions everything = sharedDirectory | QFile::WriteOther;
    QCOMPARE(permissionsOf(mTree->path("one")), mask == 0 ? everything : forOwner);
#endif
}

void tst_directories_copying::existingDirectoryKeepsItsPermissions()
{
#ifdef Q_OS_WIN
    QSKIP("files and directories have no such permissions here");
#endif
    const QString source = mTree->file("source.par");
    const QString directory = mTree->directory("target");
    QVERIFY(QFile::setPermissions(directory, forOwner));
    QVERIFY(CDir::copyFile(source, mTree->path("target/a.par")));
    QVERIFY(CDir::copyDirectory(mTree->path(), directory));
    QCOMPARE(permissionsOf(directory), forOwner);
}

void tst_directories_copying::existingTargetIsNotOverwritten()
{
    const QString source = mTree->file("source.par", "new");
    const QString target = mTree->file("target.par", "old");
    bool copied = true;
    QCOMPARE(printedBy([&] { copied = CDir::copyFile(source, target); }), unableToCopy(target));
    QVERIFY(!copied);
    QCOMPARE(mTree->content("target.par"), QByteArray("old"));
}

void tst_directories_copying::missingSourceNamesTheTarget()
{
    const QString target = mTree->path("one/target \xC3\xA4 \xE2\x82\xAC.par");
    bool copied = true;
    QCOMPARE(printedBy([&] { copied = CDir::copyFile(mTree->path("missing.par"), target); }),
             unableToCopy(target));
    QVERIFY(!copied);
    QCOMPARE(mTree->names(), nameList("one")); // the directory was made before
}

void tst_directories_copying::fileInTheWayOfADirectoryGetsItsPermissions()
{
#ifdef Q_OS_WIN
    QSKIP("files and directories have no such permissions here");
#endif
    const QString source = mTree->file("source.par");
    const QString inTheWay = mTree->file("one", "in the way");
    QVERIFY(QFile::setPermissions(inTheWay, QFile::ReadOwner | QFile::WriteOwner));
    const QString target = mTree->path("one/target.par");
    bool copied = true;
    QCOMPARE(printedBy([&] { copied = CDir::copyFile(source, target); }), unableToCopy(target));
    QVERIFY(!copied);
    QCOMPARE(permissionsOf(inTheWay), sharedDirectory);
    QCOMPARE(mTree->content("one"), QByteArray("in the way"));
}

void tst_directories_copying::emptyTargetOfAFileFails()
{
    const QString source = mTree->file("source.par");
    bool copied = true;
    QCOMPARE(printedBy([&] { copied = CDir::copyFile(source, QString()); }), unableToCopy(QString()));
    QVERIFY(!copied);
}

void tst_directories_copying::pathIsNoFormat()
{
    const QString file = mTree->file("%s%n%100000d %1 \xC3\xA4\xE2\x82\xAC.par");
    QCOMPARE(printedBy([&] { CDir::copyFile(file, file); }), unableToCopy(file));
    const QString target = file + QStringLiteral("/x%s");
    QCOMPARE(printedBy([&] { CDir::copyDirectory(mTree->path(), target); }), unableToCreate(target));
}

void tst_directories_copying::pathWithANulCharacterIsNotCopied()
{
    const QString source = mTree->file("source.par");
    const QString nulPath = QChar(QChar::Null) + QStringLiteral(".par");
    bool copied = true;
    QCOMPARE(printedBy([&] { copied = CDir::copyFile(source, mTree->path("one/target") + nulPath); }),
             unableToCopy(mTree->path("one/target?.par")));
    QVERIFY(!copied);
    copied = true;
    QCOMPARE(printedBy([&] { copied = CDir::copyFile(source + nulPath, mTree->path("target.par")); }),
             unableToCopy(mTree->path("target.par")));
    QVERIFY(!copied);
    QCOMPARE(mTree->names(), nameList("source.par"));
}

void tst_directories_copying::diagnosesKeepTheirOrderAmongOtherOutput()
{
    const QString target = mTree->file("target.par");
    const QByteArray printed = printedBy([&] {
        std::printf("before");
        CDir::copyFile(target, target);
        std::printf(" after");
        CDir::copyFile(target, target);
    });
    QCOMPARE(printed, "before" + unableToCopy(target) + " after" + unableToCopy(target));
}

void tst_directories_copying::directoryIsMadeWithoutReadingTheSource()
{
    bool made = false;
    const QByteArray printed =
        printedBy([&] { made = CDir::copyDirectory(mTree->path("missing"), mTree->path("one/two")); });
    QVERIFY(made);
    QCOMPARE(printed, QByteArray());
    mTree->file("source/a.par");
    QVERIFY(CDir::copyDirectory(mTree->path("source"), mTree->path("one/three")));
    QCOMPARE(mTree->names("one"), nameList("three two"));
}

void tst_directories_copying::existingDirectoryIsFine()
{
    mTree->file("target/a.par");
    bool made = false;
    QCOMPARE(printedBy([&] { made = CDir::copyDirectory(mTree->path("s"), mTree->path("target")); }),
             QByteArray());
    QVERIFY(made);
    QCOMPARE(mTree->names(), nameList("target target/a.par"));
}

void tst_directories_copying::fileInTheWayOfACopiedDirectory()
{
    const QString inTheWay = mTree->file("target");
    QVERIFY(QFile::setPermissions(inTheWay, QFile::ReadOwner));
    bool made = true;
    QCOMPARE(printedBy([&] { made = CDir::copyDirectory(mTree->path(), inTheWay); }),
             unableToCreate(inTheWay));
    QVERIFY(!made);
#ifndef Q_OS_WIN // which has no such permissions
    QCOMPARE(permissionsOf(inTheWay), sharedDirectory);
#endif
}

QTEST_GUILESS_MAIN(tst_directories_copying)
#include "tst_directories_copying.moc"
