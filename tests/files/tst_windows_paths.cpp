// SPDX-License-Identifier: MIT
// Paths with drives and backslashes, and names that are the same in another case.
#include <CDir.h>
#include <CPath.h>

#include <FileTree.h>
#include <LoggedTest.h>
#include <PrintedText.h>
#include <ScopedVariable.h>

#include <QTest>

#include <qt_windows.h>

namespace {

// The bytes of a text in the code page of the system, by the system's own conversion.
QByteArray inCodePage(const QString &text)
{
    QByteArray bytes(4 * text.size() + 1, '\0');
    const int size = WideCharToMultiByte(CP_ACP, 0, reinterpret_cast<const wchar_t *>(text.utf16()),
                                         text.size(), bytes.data(), bytes.size(), nullptr, nullptr);
    bytes.truncate(size);
    return bytes;
}

} // namespace

class TestWindowsPaths : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void separatorAtTheEnd();
    void separatorAtTheStart();
    void pathsAreJoined();
    void fileNameContainsAPath_data();
    void fileNameContainsAPath();
    void referenceFileGivesTheDirectory();
    void equalDirectoryIsTrimmed_data();
    void equalDirectoryIsTrimmed();
    void directoryOfAFile();
    void fileNameIsCleaned();
    void pathsAreCompared_data();
    void pathsAreCompared();
    void programdataPath_data();
    void programdataPath();
    void relativeSubPathOfDrives();

    void nameInAnotherCaseIsTheSameFile();
    void copyingIntoNamesOfAnotherCaseFails();
    void excludedNamesAreExact();
    void diagnosesAreInTheCodePage_data();
    void diagnosesAreInTheCodePage();
};

void TestWindowsPaths::separatorAtTheEnd()
{
    const QString drive = QStringLiteral("C:\\");
    QCOMPARE(CPath::ensurePathSeparatorAtEnd(drive), drive);
    QCOMPARE(CPath::ensurePathSeparatorAtEnd(QStringLiteral("C:\\Data")), QStringLiteral("C:\\Data/"));
    QCOMPARE(CPath::removePathSeparatorAtEnd(QStringLiteral("C:\\Data\\")), QStringLiteral("C:\\Data"));
    QCOMPARE(CPath::removePathSeparatorAtEnd(QStringLiteral("a\\\\")), QStringLiteral("a\\"));
    QCOMPARE(CPath::removePathSeparatorAtEnd(QStringLiteral("a\\/")), QStringLiteral("a\\"));
    QCOMPARE(CPath::removePathSeparatorAtEnd(QStringLiteral("a/\\")), QStringLiteral("a/"));
}

void TestWindowsPaths::separatorAtTheStart()
{
    QCOMPARE(CPath::ensurePathSeparatorAtStart(QStringLiteral("\\a")), QStringLiteral("\\a"));
    QCOMPARE(CPath::ensurePathSeparatorAtStart(QStringLiteral("C:\\a")), QStringLiteral("/C:\\a"));
    QCOMPARE(CPath::removePathSeparatorAtStart(QStringLiteral("\\a")), QStringLiteral("a"));
    QCOMPARE(CPath::removePathSeparatorAtStart(QStringLiteral("\\\\server\\share")),
             QStringLiteral("\\server\\share"));
}

void TestWindowsPaths::pathsAreJoined()
{
    QCOMPARE(CPath::addPathToPath(QStringLiteral("C:\\Data\\"), QStringLiteral("axis\\")),
             QStringLiteral("C:\\Data\\axis\\"));
    QCOMPARE(CPath::addPathToPath(QStringLiteral("C:"), QStringLiteral("axis")), QStringLiteral("C:/axis/"));
    QCOMPARE(CPath::addFileNameToPath(QStringLiteral("C:\\Data\\"), QStringLiteral("a.par")),
             QStringLiteral("C:\\Data\\a.par"));
}

void TestWindowsPaths::fileNameContainsAPath_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("expected");
    QTest::newRow("backslash") << QStringLiteral("a\\b.par") << true;
    QTest::newRow("slash") << QStringLiteral("a/b.par") << true;
    QTest::newRow("drive") << QStringLiteral("C:\\b.par") << true;
    QTest::newRow("drive without a separator") << QStringLiteral("C:b.par") << false;
}

void TestWindowsPaths::fileNameContainsAPath()
{
    QFETCH(QString, name);
    QTEST(CPath::doesFilenameContainPath(name), "expected");
}

void TestWindowsPaths::referenceFileGivesTheDirectory()
{
    const QString reference = QStringLiteral("C:\\plant\\reference.xml");
    QCOMPARE(CPath::prependPathIfNoPathIsGiven(QStringLiteral("a.par"), reference),
             QStringLiteral("C:/plant/a.par"));
    for (const char *name : {"axis\\a.par", "D:\\a.par", "\\a.par"})
        QCOMPARE(CPath::prependPathIfNoPathIsGiven(QLatin1String(name), reference), QLatin1String(name));
}

void TestWindowsPaths::equalDirectoryIsTrimmed_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("directory");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *file, const char *directory, const char *expected) {
        QTest::newRow(name) << QString::fromLatin1(file) << QString::fromLatin1(directory)
                            << QString::fromLatin1(expected);
    };
    row("backslashes", "C:\\Data\\a.par", "C:/Data", "a.par");
    row("separator at the end", "C:/Data/a.par", "C:\\Data\\", "a.par");
    row("case", "C:\\Data\\a.par", "c:/data", "a.par");
    row("another drive", "C:\\Data\\a.par", "D:\\Data", "C:\\Data\\a.par");
    row("in the drive itself", "C:\\a.par", "C:/", "a.par");
}

void TestWindowsPaths::equalDirectoryIsTrimmed()
{
    QFETCH(QString, file);
    QFETCH(QString, directory);
    QTEST(CPath::trimPathIfPathIsEqual(file, directory), "expected");
}

void TestWindowsPaths::directoryOfAFile()
{
    QCOMPARE(CPath::filePath(QStringLiteral("C:\\Data\\a.par")), QStringLiteral("C:/Data"));
    QCOMPARE(CPath::filePath(QStringLiteral("C:\\a.par")), QStringLiteral("C:/"));
    QCOMPARE(CPath::filePath(QStringLiteral("\\\\server\\share\\a.par")), QStringLiteral("//server/share"));
}

void TestWindowsPaths::fileNameIsCleaned()
{
    QCOMPARE(CPath::cleanFileName(QStringLiteral("C:\\dir\\a<b>:c?.txt")), QStringLiteral("C:/dir/abc.txt"));
    QCOMPARE(CPath::cleanFileName(QStringLiteral("C:\\dir\\ a*  b|\".txt")),
             QStringLiteral("C:/dir/a* b.txt"));
}

void TestWindowsPaths::pathsAreCompared_data()
{
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::addColumn<bool>("equal");
    const auto row = [](const char *name, const char *a, const char *b, bool equal) {
        QTest::newRow(name) << QString::fromLatin1(a) << QString::fromLatin1(b) << equal;
    };
    row("case, backslashes and end", "C:\\Data", "c:/data/", true);
    row("drive", "C:\\", "c:/", true);
    row("drive without its separator", "C:", "c:\\", true);
    row("another drive", "C:\\Data", "D:\\Data", false);
    row("server", "\\\\server\\share", "//SERVER/share/", true);
}

void TestWindowsPaths::pathsAreCompared()
{
    QFETCH(QString, a);
    QFETCH(QString, b);
    QTEST(CPath::compare(a, b), "equal");
    QTEST(CPath::compare(b, a), "equal");
}

void TestWindowsPaths::programdataPath_data()
{
    QTest::addColumn<QByteArray>("variable");
    QTest::addColumn<QString>("expected");
    QTest::newRow("unset") << QByteArray() << QStringLiteral("/VANTORIS/tessera/");
    QTest::newRow("set") << QByteArray("C:\\ProgramData")
                         << QStringLiteral("C:/ProgramData/VANTORIS/tessera/");
    QTest::newRow("separator at its end")
        << QByteArray("C:\\ProgramData\\") << QStringLiteral("C:/ProgramData//VANTORIS/tessera/");
    QTest::newRow("server") << QByteArray("\\\\server\\all")
                            << QStringLiteral("//server/all/VANTORIS/tessera/");
}

void TestWindowsPaths::programdataPath()
{
    QFETCH(QByteArray, variable);
    const ScopedVariable programdata("PROGRAMDATA", variable);
    QTEST(CPath::programdataPath(false), "expected");
}

void TestWindowsPaths::relativeSubPathOfDrives()
{
    const QString base = QStringLiteral("C:\\a");
    QCOMPARE(CDir::getRelativeSubPath(base, QStringLiteral("C:/a")), QString());
    QCOMPARE(CDir::getRelativeSubPath(base, QStringLiteral("C:/a\\b/c.txt")), QStringLiteral("b/c.txt"));
    QCOMPARE(CDir::getRelativeSubPath(base, QStringLiteral("D:\\x")), QString());
    // Only here are letters that differ by their case different ones.
    QCOMPARE(CDir::getRelativeSubPath(base, QStringLiteral("c:\\a\\b")), QString());
}

void TestWindowsPaths::nameInAnotherCaseIsTheSameFile()
{
    const FileTree tree;
    tree.file("Axis/a.par", "a");
    QCOMPARE(tree.content("aXIS/A.PAR"), QByteArray("a"));
    QVERIFY(CDir::removeFileOrDirectory(tree.path("AXIS/A.par")));
    QCOMPARE(tree.names(), nameList("Axis"));
    QVERIFY(CDir::copyDirectory(QString(), tree.path("axis")));
    QCOMPARE(tree.names(), nameList("Axis"));
}

void TestWindowsPaths::copyingIntoNamesOfAnotherCaseFails()
{
    const FileTree tree;
    const QString source = tree.file("source/a.par", "new");
    const QString target = tree.path("target/a.par");
    tree.file("target/A.PAR", "old");
    bool copied = true;
    QCOMPARE(printedBy([&] { copied = CDir::copyFile(source, target); }),
             "\nCDir::copyFile unable to copy " + target.toLocal8Bit());
    QVERIFY(!copied);
    QCOMPARE(
        printedBy([&] { copied = CDir::copyDirectoryRecursive(tree.path("source"), tree.path("TARGET")); }),
        "\nCDir::copyFile unable to copy " + tree.path("TARGET/a.par").toLocal8Bit());
    QVERIFY(!copied);
    QCOMPARE(tree.content("target/A.PAR"), QByteArray("old"));
}

void TestWindowsPaths::excludedNamesAreExact()
{
    const FileTree tree;
    tree.file("a.par");
    QCOMPARE(CDir::entryInfoList(tree.path(), Nj6Global::eDirFilterAll, nameList("A.PAR")).size(), 1);
    QCOMPARE(CDir::entryInfoList(tree.path(), Nj6Global::eDirFilterAll, nameList("a.par")).size(), 0);
}

void TestWindowsPaths::diagnosesAreInTheCodePage_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("ASCII") << QStringLiteral("axis");
    QTest::newRow("western") << QStringLiteral(u"\u00C4ndern");
    QTest::newRow("Cyrillic") << QStringLiteral(u"\u043E\u0441\u044C");
    QTest::newRow("beyond the first plane") << QString::fromUtf8("\xF0\x9F\x94\xA7");
}

void TestWindowsPaths::diagnosesAreInTheCodePage()
{
    QFETCH(QString, name);
    const FileTree tree;
    const QString missing = tree.path() + QLatin1Char('/') + name;
    const QString target = tree.path("target/") + name;
    bool copied = true;
    QCOMPARE(printedBy([&] { copied = CDir::copyFile(missing, target); }),
             "\nCDir::copyFile unable to copy " + inCodePage(target));
    QVERIFY(!copied);
    const QString file = tree.file(name.toUtf8().constData());
    QCOMPARE(printedBy([&] { copied = CDir::copyDirectory(QString(), file); }),
             "\nCDir::copyDirectory unable to create " + inCodePage(file));
    QVERIFY(!copied);
}

QTEST_GUILESS_MAIN(TestWindowsPaths)
#include "tst_windows_paths.moc"
