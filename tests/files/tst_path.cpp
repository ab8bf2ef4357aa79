// SPDX-License-Identifier: MIT
// The helpers of CPath: names of directories, separators and file names.
#include <CPath.h>

#include <LoggedTest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <type_traits>

static_assert(std::is_trivially_default_constructible<CPath>::value && std::is_empty<CPath>::value,
              "no state of its own");

namespace {

// The current directory is a temporary one while this object lives.
class ScopedDirectory
{
public:
    ScopedDirectory() : mFormer(QDir::currentPath()) { QDir::setCurrent(mDirectory.path()); }
    ~ScopedDirectory() { QDir::setCurrent(mFormer); }
    ScopedDirectory(const ScopedDirectory &) = delete;
    ScopedDirectory &operator=(const ScopedDirectory &) = delete;

private:
    QTemporaryDir mDirectory;
    QString mFormer;
};

void unaryColumns()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("expected");
}

void row(const char *name, const char *path, const char *expected)
{
    QTest::newRow(name) << QString::fromUtf8(path) << QString::fromUtf8(expected);
}

// An absolute path as it is where there are drives.
QString onThisDrive(const QString &path)
{
#ifdef Q_OS_WIN
    if (path.startsWith(QLatin1Char('/')))
        return QDir::currentPath().left(2) + path;
#endif
    return path;
}

} // namespace

class tst_path : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void constants_data();
    void constants();

    void ensurePathSeparatorAtEnd_data();
    void ensurePathSeparatorAtEnd();
    void ensurePathSeparatorAtStart_data();
    void ensurePathSeparatorAtStart();
    void removePathSeparatorAtStart_data();
    void removePathSeparatorAtStart();
    void removePathSeparatorAtEnd_data();
    void removePathSeparatorAtEnd();
    void addPathToPath_data();
    void addPathToPath();
    void addFileNameToPath_data();
    void addFileNameToPath();
    void doesFilenameContainPath_data();
    void doesFilenameContainPath();

    void prependPathIfNoPathIsGiven_data();
    void prependPathIfNoPathIsGiven();
    void trimPathIfPathIsEqual_data();
    void trimPathIfPathIsEqual();
    void trimUndoesPrepend();
    void filePath_data();
    void filePath();
    void relativePathsCountFromTheCurrentDirectory();

    void compare_data();
    void compare();

    void cleanFileName_data();
    void cleanFileName();
    void cleanFileNameMakesARelativePathAbsolute();

#ifdef Q_OS_UNIX
    void trimSeesThroughALinkToTheDirectory();
    void aBackslashIsNoSeparatorHere();
#endif
    void theDocumentedExamplesHold();
};

void tst_path::constants_data()
{
    QTest::addColumn<QString>("constant");
    QTest::addColumn<QString>("expected");
    QTest::newRow("bin") << CPath::CPATH_BIN << QStringLiteral("bin/");
    QTest::newRow("lib") << CPath::CPATH_LIB << QStringLiteral("lib/");
    QTest::newRow("etc") << CPath::CPATH_ETC << QStringLiteral("etc/");
    QTest::newRow("txt") << CPath::CPATH_TXT << QStringLiteral("etc/txt/");
    QTest::newRow("img") << CPath::CPATH_IMG << QStringLiteral("etc/image/");
    QTest::newRow("doc") << CPath::CPATH_DOC << QStringLiteral("etc/doc/");
    QTest::newRow("cconf") << CPath::CPATH_CCONF << QStringLiteral("etc/conf/");
    QTest::newRow("cconfodict") << CPath::CPATH_CCONFODICT << QStringLiteral("etc/conf/odict/");
    QTest::newRow("cdata") << CPath::CPATH_CDATA << QStringLiteral("etc/data/");
    QTest::newRow("conf") << CPath::CPATH_CONF << QStringLiteral("conf/");
    QTest::newRow("log") << CPath::CPATH_LOG << QStringLiteral("log/");
    QTest::newRow("mot") << CPath::CPATH_MOT << QStringLiteral("motor/");
    QTest::newRow("par") << CPath::CPATH_PAR << QStringLiteral("param/");
    QTest::newRow("dat") << CPath::CPATH_DAT << QStringLiteral("data/");
    QTest::newRow("prj") << CPath::CPATH_PRJ << QStringLiteral("project/");
    QTest::newRow("plugins") << CPath::CPATH_PLUGINS << QStringLiteral("plugins/");
    QTest::newRow("company") << CPath::CPATH_COMPANY << QStringLiteral("VANTORIS/");
    QTest::newRow("tessera") << CPath::CPATH_TESSERA << QStringLiteral("tessera/");
}

void tst_path::constants()
{
    QFETCH(QString, constant);
    QTEST(constant, "expected");
    QVERIFY(constant.endsWith(QLatin1Char('/')));
    QVERIFY(!constant.startsWith(QLatin1Char('/')));
}

void tst_path::ensurePathSeparatorAtEnd_data()
{
    unaryColumns();
    row("empty becomes the separator", "", "/");
    row("separator", "/", "/");
    row("appended", "a/b", "a/b/");
    row("there already", "a/b/", "a/b/");
    row("two stay two", "a//", "a//");
}

void tst_path::ensurePathSeparatorAtEnd()
{
    QFETCH(QString, path);
    QTEST(CPath::ensurePathSeparatorAtEnd(path), "expected");
    QTEST(CPath::ensurePathSeparatorAtEnd(CPath::ensurePathSeparatorAtEnd(path)), "expected");
}

void tst_path::ensurePathSeparatorAtStart_data()
{
    unaryColumns();
    row("empty becomes the separator", "", "/");
    row("separator", "/", "/");
    row("inserted", "a/b", "/a/b");
    row("there already", "/a/b", "/a/b");
    row("two stay two", "//a", "//a");
}

void tst_path::ensurePathSeparatorAtStart()
{
    QFETCH(QString, path);
    QTEST(CPath::ensurePathSeparatorAtStart(path), "expected");
}

void tst_path::removePathSeparatorAtStart_data()
{
    unaryColumns();
    row("empty", "", "");
    row("separator", "/", "");
    row("removed", "/a/b/", "a/b/");
    row("none there", "a/b", "a/b");
    row("only one", "//a", "/a");
}

void tst_path::removePathSeparatorAtStart()
{
    QFETCH(QString, path);
    QTEST(CPath::removePathSeparatorAtStart(path), "expected");
}

void tst_path::removePathSeparatorAtEnd_data()
{
    unaryColumns();
    row("empty", "", "");
    row("separator", "/", "");
    row("removed", "/a/b/", "/a/b");
    row("none there", "/a/b", "/a/b");
    row("only one", "a//", "a/");
}

void tst_path::removePathSeparatorAtEnd()
{
    QFETCH(QString, path);
    QTEST(CPath::removePathSeparatorAtEnd(path), "expected");
}

void tst_path::addPathToPath_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("subPath");
    QTest::addColumn<QString>("expected");
    const auto pair = [](const char *name, const char *path, const char *subPath, const char *expected) {
        QTest::newRow(name) << QString::fromUtf8(path) << QString::fromUtf8(subPath)
                            << QString::fromUtf8(expected);
    };
    pair("both bare", "a", "b", "a/b/");
    pair("both with separators", "a/", "b/", "a/b/");
    pair("a separator at the start stays", "a", "/b", "a//b/");
    pair("empty path", "", "b", "/b/");
    pair("empty sub-path", "a", "", "a/");
    pair("both empty", "", "", "/");
}

void tst_path::addPathToPath()
{
    QFETCH(QString, path);
    QFETCH(QString, subPath);
    QTEST(CPath::addPathToPath(path, subPath), "expected");
}

void tst_path::addFileNameToPath_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QString>("expected");
    const auto pair = [](const char *name, const char *path, const char *fileName, const char *expected) {
        QTest::newRow(name) << QString::fromUtf8(path) << QString::fromUtf8(fileName)
                            << QString::fromUtf8(expected);
    };
    pair("bare path", "a", "b.txt", "a/b.txt");
    pair("path with separator", "a/", "b.txt", "a/b.txt");
    pair("nothing is added at the end", "a", "b/", "a/b/");
    pair("empty path", "", "b.txt", "/b.txt");
    pair("empty name", "a", "", "a/");
}

void tst_path::addFileNameToPath()
{
    QFETCH(QString, path);
    QFETCH(QString, fileName);
    QTEST(CPath::addFileNameToPath(path, fileName), "expected");
}

void tst_path::doesFilenameContainPath_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("expected");
    QTest::newRow("empty") << QString() << false;
    QTest::newRow("bare") << QStringLiteral("a.txt") << false;
    QTest::newRow("at the start") << QStringLiteral("/a.txt") << true;
    QTest::newRow("within") << QStringLiteral("a/b.txt") << true;
    QTest::newRow("at the end") << QStringLiteral("a/") << true;
    QTest::newRow("the platform's own")
        << QStringLiteral("a") + QDir::separator() + QStringLiteral("b") << true;
}

void tst_path::doesFilenameContainPath()
{
    QFETCH(QString, name);
    QTEST(CPath::doesFilenameContainPath(name), "expected");
}

void tst_path::prependPathIfNoPathIsGiven_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QString>("referenceFile");
    QTest::addColumn<QString>("expected");
    const QString reference = QDir::rootPath() + QStringLiteral("data/axis.xml");
    QTest::newRow("bare name") << QStringLiteral("b.txt") << reference
                               << QDir::rootPath() + QStringLiteral("data/b.txt");
    QTest::newRow("empty name") << QString() << reference << QString();
    QTest::newRow("relative path") << QStringLiteral("x/b.txt") << reference << QStringLiteral("x/b.txt");
    QTest::newRow("absolute path") << QStringLiteral("/b.txt") << reference << QStringLiteral("/b.txt");
    QTest::newRow("path of itself") << QStringLiteral("./b.txt") << reference << QStringLiteral("./b.txt");
    QTest::newRow("empty reference counts from the current directory")
        << QStringLiteral("b.txt") << QString() << QDir::current().absoluteFilePath(QStringLiteral("b.txt"));
    QTest::newRow("reference is a directory")
        << QStringLiteral("b.txt") << QDir::rootPath() + QStringLiteral("data/")
        << QDir::rootPath() + QStringLiteral("data/b.txt");
}

void tst_path::prependPathIfNoPathIsGiven()
{
    QFETCH(QString, fileName);
    QFETCH(QString, referenceFile);
    QTEST(CPath::prependPathIfNoPathIsGiven(fileName, referenceFile), "expected");
}

void tst_path::trimPathIfPathIsEqual_data()
{
    QTest::addColumn<QString>("filePath");
    QTest::addColumn<QString>("dirPath");
    QTest::addColumn<QString>("expected");
    const auto pair = [](const char *name, const char *filePath, const char *dirPath, const char *expected) {
        QTest::newRow(name) << QString::fromUtf8(filePath) << QString::fromUtf8(dirPath)
                            << QString::fromUtf8(expected);
    };
    // Of directories that exist the file system is asked, so here are none.
    pair("equal", "/no such/axis.xml", "/no such", "axis.xml");
    pair("equal with separator", "/no such/axis.xml", "/no such/", "axis.xml");
    pair("other directory", "/no such/axis.xml", "/no suc", "/no such/axis.xml");
    pair("below the directory", "/no such/x/axis.xml", "/no such", "/no such/x/axis.xml");
    pair("above the directory", "/no such/axis.xml", "/no such/x", "/no such/axis.xml");
    pair("empty file", "", "/no such", "");
    pair("both relative", "no such/axis.xml", "no such", "axis.xml");
    pair("bare name", "axis.xml", ".", "axis.xml");
    pair("the empty directory is the current one", "axis.xml", "", "axis.xml");
    pair("bare name elsewhere", "axis.xml", "/no such", "axis.xml");
    pair("relative and elsewhere", "x/axis.xml", "/no such", "x/axis.xml");
#ifndef Q_OS_WIN // whose Qt compares the paths of directories that do not exist as they stand
    pair("a detour is none", "/no such/x/../axis.xml", "/no such", "axis.xml");
#endif
}

void tst_path::trimPathIfPathIsEqual()
{
    QFETCH(QString, filePath);
    QFETCH(QString, dirPath);
    QTEST(CPath::trimPathIfPathIsEqual(filePath, dirPath), "expected");
}

void tst_path::trimUndoesPrepend()
{
    const QString name = QStringLiteral("b.txt");
    const QString directory = QDir::rootPath() + QStringLiteral("data/x");
    const QString full = CPath::prependPathIfNoPathIsGiven(name, directory + QStringLiteral("/axis.xml"));
    QCOMPARE(full, directory + QStringLiteral("/b.txt"));
    QCOMPARE(CPath::trimPathIfPathIsEqual(full, directory), name);
}

void tst_path::filePath_data()
{
    unaryColumns();
    row("empty", "", "");
    row("file", "/data/axis.xml", "/data");
    row("file in the root directory", "/axis.xml", "/");
    row("directory", "/data/x/", "/data/x");
}

void tst_path::filePath()
{
    QFETCH(QString, path);
    QFETCH(QString, expected);
    QCOMPARE(CPath::filePath(path), onThisDrive(expected));
}

void tst_path::relativePathsCountFromTheCurrentDirectory()
{
    const ScopedDirectory scratch;
    const QString current = QDir::currentPath();
    QCOMPARE(CPath::filePath(QStringLiteral("axis.xml")), current);
    QCOMPARE(CPath::filePath(QStringLiteral("x/axis.xml")), current + QStringLiteral("/x"));
    QCOMPARE(CPath::prependPathIfNoPathIsGiven(QStringLiteral("b"), QStringLiteral("x/axis.xml")),
             current + QStringLiteral("/x/b"));
    QCOMPARE(CPath::trimPathIfPathIsEqual(current + QStringLiteral("/b"), QStringLiteral(".")),
             QStringLiteral("b"));
}

void tst_path::compare_data()
{
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::addColumn<bool>("equal");
    const auto pair = [](const char *name, const char *a, const char *b, bool equal) {
        QTest::newRow(name) << QString::fromUtf8(a) << QString::fromUtf8(b) << equal;
    };
    pair("same", "a/b", "a/b", true);
    pair("case, backslashes and end", "C:\\Data", "c:/data/", true);
    pair("backslash within", "A\\b", "a/B/", true);
    pair("backslash at the end", "a\\b\\", "A/B", true);
    pair("beyond ASCII", "/\xC3\x84xis", "/\xC3\xA4xis", true);
    pair("other name", "a/b", "a/c", false);
    pair("one is above the other", "a", "a/b", false);
    pair("two separators at the end", "a//", "a/", false);
    pair("relative and absolute", "a", "/a", false);
    pair("dots are not resolved", "a/./b", "a/b", false);
    pair("both empty", "", "", true);
    pair("empty is the separator", "", "/", true);
}

void tst_path::compare()
{
    QFETCH(QString, a);
    QFETCH(QString, b);
    QTEST(CPath::compare(a, b), "equal");
    QTEST(CPath::compare(b, a), "equal");
}

void tst_path::cleanFileName_data()
{
    unaryColumns();
    row("nothing to clean", "/data/axis.txt", "/data/axis.txt");
    row("the seven characters", "/data/a<b>c:d!e?f|g\"h", "/data/abcdefgh");
    row("asterisk stays", "/data/a*b", "/data/a*b");
#ifndef Q_OS_WIN // where it is a separator
    row("asterisk and backslash stay", "/data/a*b\\c", "/data/a*b\\c");
#endif
    row("others stay", "/data/a;b,c'd%e&f[g]h(i)", "/data/a;b,c'd%e&f[g]h(i)");
    row("white space is simplified", "/data/ a \t\n b ", "/data/a b");
    row("white space is simplified before characters go", "/data/a : b", "/data/a  b");
    row("the directory is left alone", "/da<t>a/a:b", "/da<t>a/ab");
    row("nothing remains", "/data/<>", "/data/");
    row("no name", "/data/", "/data/");
    row("empty has no directory", "", "/");
    row("two separators behind the root directory", "/a:b", "//ab");
    row("beyond ASCII", "/data/\xC3\x84?\xF0\x9F\x94\xA7", "/data/\xC3\x84\xF0\x9F\x94\xA7");
}

void tst_path::cleanFileName()
{
    QFETCH(QString, path);
    QFETCH(QString, expected);
    QCOMPARE(CPath::cleanFileName(path), path.isEmpty() ? expected : onThisDrive(expected));
}

void tst_path::cleanFileNameMakesARelativePathAbsolute()
{
    const ScopedDirectory scratch;
    QCOMPARE(CPath::cleanFileName(QStringLiteral("dir/a<b>:c?.txt")),
             QDir::currentPath() + QStringLiteral("/dir/abc.txt"));
    QCOMPARE(CPath::cleanFileName(QStringLiteral("a?")), QDir::currentPath() + QStringLiteral("/a"));
}

#ifdef Q_OS_UNIX
void tst_path::trimSeesThroughALinkToTheDirectory()
{
    const ScopedDirectory scratch;
    QVERIFY(QDir().mkdir(QStringLiteral("real")) && QDir().mkdir(QStringLiteral("other")));
    QVERIFY(QFile::link(QStringLiteral("real"), QStringLiteral("link")));
    const QString file = QDir::currentPath() + QStringLiteral("/real/axis.xml");
    QCOMPARE(CPath::trimPathIfPathIsEqual(file, QStringLiteral("link")), QStringLiteral("axis.xml"));
    QCOMPARE(CPath::trimPathIfPathIsEqual(file, QStringLiteral("other")), file);
}

void tst_path::aBackslashIsNoSeparatorHere()
{
    QCOMPARE(CPath::ensurePathSeparatorAtEnd(QStringLiteral("a\\")), QStringLiteral("a\\/"));
    QCOMPARE(CPath::ensurePathSeparatorAtStart(QStringLiteral("\\a")), QStringLiteral("/\\a"));
    QCOMPARE(CPath::removePathSeparatorAtEnd(QStringLiteral("a\\")), QStringLiteral("a\\"));
    QCOMPARE(CPath::removePathSeparatorAtStart(QStringLiteral("\\a")), QStringLiteral("\\a"));
    QVERIFY(!CPath::doesFilenameContainPath(QStringLiteral("a\\b")));
}
#endif

void tst_path::theDocumentedExamplesHold()
{
    QCOMPARE(CPath::addPathToPath(QStringLiteral("/data"), QStringLiteral("axis")),
             QStringLiteral("/data/axis/"));
    QCOMPARE(CPath::cleanFileName(QStringLiteral("/data/axis: X?.txt")),
             onThisDrive(QStringLiteral("/data/axis X.txt")));
}

QTEST_GUILESS_MAIN(tst_path)
#include "tst_path.moc"
