// SPDX-License-Identifier: MIT
// What the shell of Windows moves to the recycle bin.
#include <CDir.h>

#include <FileTree.h>
#include <LoggedTest.h>
#include <ScopedCurrentDirectory.h>

#include <QTest>

#include <memory>

#include <qt_windows.h>

#include <shellapi.h>

namespace {

constexpr int moved = 0;
constexpr int failed = 1;
constexpr int missing = 10;

// How many items lie in the recycle bins of all drives; -1 when the shell does not tell.
qint64 itemsInBin()
{
    SHQUERYRBINFO info{};
    info.cbSize = sizeof info;
    return SHQueryRecycleBinW(nullptr, &info) == S_OK ? info.i64NumItems : -1;
}

// Moves it; true when it has gone and lies in a recycle bin, rather than being removed for good.
bool arrives(const QString &path)
{
    const qint64 before = itemsInBin();
    const bool hasGone = CDir::moveToTrash(path) == moved && !QFileInfo::exists(path);
    return hasGone && before >= 0 && itemsInBin() == before + 1;
}

} // namespace

class TestRecycleBin : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void fileGoes_data();
    void fileGoes();
    void readOnlyFileGoes();
    void directoryGoesWithItsContent();
    void separatorsAreThoseOfQtAndOfTheShell();
    void relativePathCountsFromTheCurrentDirectory();
    void missingPathIsTold();
    void onlyTheNamedFileGoes();
    void longestPathGoes();
    void longerPathStays();
    void driveStays();

protected:
    void prepare() override { mTree = std::make_unique<FileTree>(); }
    void tidy() override { mTree.reset(); }

    // A path of so many UTF-16 units, the last of which are those of a file.
    QString fileOfLength(int length) const
    {
        QString path = mTree->path();
        constexpr int longest = 100;
        while (path.size() + 1 < length) {
            const int room = length - path.size() - 1;
            const bool isLast = room <= longest;
            path += QLatin1Char('/') + QString(isLast ? room : qMin(longest, room - 2), QLatin1Char('n'));
        }
        const QString name = path.mid(mTree->path().size() + 1);
        return mTree->file(name.toUtf8().constData());
    }

private:
    std::unique_ptr<FileTree> mTree;
};

void TestRecycleBin::fileGoes_data()
{
    QTest::addColumn<QString>("name");
    const auto row = [](const char *title, const char *name) {
        QTest::newRow(title) << QString::fromUtf8(name);
    };
    row("plain", "axis.par");
    row("blanks", "axis 1 .par");
    row("no suffix", "axis");
    row("hidden elsewhere", ".axis");
    row("code page", "\xC3\x84xis.par");
    row("Greek", "\xCE\xAC\xCE\xBE\xCE\xBF\xCE\xBD\xCE\xB1\xCF\x82.par");
    row("Cyrillic", "\xD0\xBE\xD1\x81\xD1\x8C.par");
    row("Chinese", "\xE8\xBD\xB4.par");
    row("beyond the first plane", "\xF0\x9F\x94\xA7.par");
}

void TestRecycleBin::fileGoes()
{
    QFETCH(QString, name);
    const QString path = mTree->file(name.toUtf8().constData());
    mTree->file("other.par");
    QVERIFY(arrives(path));
    QCOMPARE(CDir::moveToTrash(path), missing);
    QCOMPARE(mTree->names(), nameList("other.par"));
}

void TestRecycleBin::readOnlyFileGoes()
{
    const QString path = mTree->file("axis.par");
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadUser));
    QVERIFY(!QFileInfo(path).isWritable());
    QVERIFY(arrives(path));
}

void TestRecycleBin::directoryGoesWithItsContent()
{
    mTree->file("plant/axis/a.par");
    mTree->directory("empty");
    QVERIFY(arrives(mTree->path("plant")));
    QVERIFY(arrives(mTree->path("empty")));
    QCOMPARE(mTree->names(), QStringList());
}

void TestRecycleBin::separatorsAreThoseOfQtAndOfTheShell()
{
    mTree->file("plant/axis/a.par");
    mTree->file("plant/axis/b.par");
    QVERIFY(arrives(QDir::toNativeSeparators(mTree->path("plant/axis/a.par"))));
    QCOMPARE(mTree->names(), nameList("plant plant/axis plant/axis/b.par"));
    QVERIFY(arrives(mTree->path("plant//axis/")));
    QCOMPARE(mTree->names(), nameList("plant"));
    QVERIFY(arrives(mTree->path("plant") + QLatin1Char('\\')));
    QCOMPARE(mTree->names(), QStringList());
}

void TestRecycleBin::relativePathCountsFromTheCurrentDirectory()
{
    const ScopedCurrentDirectory current(mTree->directory("current"));
    mTree->file("current/a.par");
    mTree->file("a.par");
    QVERIFY(arrives(QStringLiteral("a.par")));
    QCOMPARE(mTree->names(), nameList("a.par current"));
    QVERIFY(arrives(QStringLiteral("..\\a.par")));
    QCOMPARE(mTree->names(), nameList("current"));
}

void TestRecycleBin::missingPathIsTold()
{
    QCOMPARE(CDir::moveToTrash(mTree->path("missing")), missing);
    QCOMPARE(CDir::moveToTrash(mTree->path("missing/a.par")), missing);
    QCOMPARE(CDir::moveToTrash(QString()), missing);
}

// The shell knows patterns, and takes several paths.
void TestRecycleBin::onlyTheNamedFileGoes()
{
    mTree->file("a.par");
    mTree->file("b.par");
    QCOMPARE(CDir::moveToTrash(mTree->path("*.par")), missing);
    QCOMPARE(CDir::moveToTrash(mTree->path("?.par")), missing);
    const QString path = mTree->path("a.par");
    QCOMPARE(CDir::moveToTrash(path + QChar(QChar::Null) + mTree->path("b.par")), missing);
    QCOMPARE(takeLog(), QStringList{QStringLiteral("Broken filename passed to function")});
    QCOMPARE(mTree->names(), nameList("a.par b.par"));
}

void TestRecycleBin::longestPathGoes()
{
    const QString path = fileOfLength(259);
    QCOMPARE(path.size(), 259);
    QVERIFY(QFile::exists(path));
    QVERIFY(arrives(path));
}

void TestRecycleBin::longerPathStays()
{
    const QString path = fileOfLength(260);
    QCOMPARE(path.size(), 260);
    QCOMPARE(CDir::moveToTrash(path), failed);
    QVERIFY(QFile::exists(path));
}

// On a drive that may be lost: should it not stay, all that is on it goes.
void TestRecycleBin::driveStays()
{
    const QString drive = qEnvironmentVariable("J6CORE_SPARE_DRIVE");
    if (drive.isEmpty())
        QSKIP("J6CORE_SPARE_DRIVE names no drive that may be lost");
    const QString path = drive + QStringLiteral("/a.par");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    for (const char *end : {"/", "\\", "//", "/.", "/missing/.."})
        QCOMPARE(CDir::moveToTrash(drive + QLatin1String(end)), failed);
    for (const char *start : {"\\\\.\\", "//./", "\\\\?\\"}) {
        for (const char *end : {"\\", "/"})
            QCOMPARE(CDir::moveToTrash(QLatin1String(start) + drive + QLatin1String(end)), failed);
    }
    QVERIFY(QFile::exists(path));
    QVERIFY(arrives(path));
}

QTEST_GUILESS_MAIN(TestRecycleBin)
#include "tst_recycle_bin.moc"
