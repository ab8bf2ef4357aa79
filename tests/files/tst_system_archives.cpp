// SPDX-License-Identifier: MIT
// Archives as the system's own GNU tar writes them. Without it nothing is tested here, and that is said.
#include <CTar.h>
#include <LoggedTest.h>

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <filesystem>
#include <fstream>

namespace {

constexpr int timeout = 60000; // milliseconds

struct Entry
{
    int type;
    QByteArray name;
    QByteArray linkName = {};
    QByteArray data = {};
};

QByteArray contents(int size)
{
    QByteArray bytes;
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>(i * 7);
    return bytes;
}

QByteArray longDirectory()
{
    return QByteArray(90, 'd');
}

QByteArray longName()
{
    return QByteArray(70, 'n');
}

// More than the 100 bytes of a header's name.
QByteArray longPath()
{
    return longDirectory() + '/' + longName();
}

QByteArray hundredBytes()
{
    return QByteArray(100, 'h');
}

// What every format stores in the same way.
QList<Entry> plainEntries()
{
    return {{1, "small.txt", "", contents(10)},
            {1, "block.bin", "", contents(512)},
            {1, "large.bin", "", contents(5000)},
            {1, "empty"},
            {3, "dir/"},
            {1, "dir/a b", "", contents(513)},
            {2, "link", "small.txt"},
            {0, "same", "small.txt"}}; // a hard link
}

} // namespace

class tst_system_archives : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void readsPlainMembers_data();
    void readsPlainMembers();
    void ustarSplitsALongPath();
    void gnuPutsALongPathBeforeItsMember();
    void paxPutsALongPathBeforeItsMember();
    void nameOfAHundredBytesRunsOnIntoTheMode_data();
    void nameOfAHundredBytesRunsOnIntoTheMode();
    void namesAreTheirBytes();
    void seventhEditionIsNoUstar();

private:
    void makeFile(const QByteArray &name, const QByteArray &bytes);
    // The archive of these files of the tree; null when tar fails.
    QString packed(const char *format, const QByteArrayList &names);
    bool holds(const QString &fileName, const QList<Entry> &expected);

    QTemporaryDir mDir;
    std::filesystem::path mTree;
};

void tst_system_archives::initTestCase()
{
    QVERIFY(mDir.isValid());
    QProcess version;
    version.start(QStringLiteral("tar"), {QStringLiteral("--version")});
    version.waitForFinished(timeout);
    if (!version.readAllStandardOutput().contains("GNU tar"))
        QSKIP("NOT TESTED: there is no GNU tar here");
    mTree = std::filesystem::path(QFile::encodeName(mDir.filePath(QStringLiteral("tree"))).toStdString());
    std::filesystem::create_directories(mTree / "dir");
    std::filesystem::create_directories(mTree / longDirectory().toStdString());
    const QList<Entry> entries = plainEntries() << Entry{1, longPath(), "", contents(20)}
                                                << Entry{1, hundredBytes(), "", contents(30)}
                                                << Entry{1, "\xC3\xBC", "", contents(1)};
    for (const Entry &entry : entries) {
        if (entry.type == CTarFileInfo::E_TYPE_FILE)
            makeFile(entry.name, entry.data);
    }
    std::filesystem::create_symlink("small.txt", mTree / "link");
    std::filesystem::create_hard_link(mTree / "small.txt", mTree / "same");
}

void tst_system_archives::makeFile(const QByteArray &name, const QByteArray &bytes)
{
    std::ofstream file(mTree / name.toStdString(), std::ios::binary);
    file.write(bytes.constData(), bytes.size());
    QVERIFY(file.good());
}

QString tst_system_archives::packed(const char *format, const QByteArrayList &names)
{
    const QString fileName = mDir.filePath(QLatin1String(format) + QStringLiteral(".tar"));
    std::ofstream list(mTree / "names");
    list << names.join('\n').constData() << '\n';
    list.close();
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    QStringList arguments = {QStringLiteral("--create"),
                             QStringLiteral("--format=") + QLatin1String(format),
                             QStringLiteral("--file=") + fileName,
                             QStringLiteral("--mode=0644"),
                             QStringLiteral("--mtime=@1700000000"),
                             QStringLiteral("--no-recursion"),
                             QStringLiteral("--directory=") + mDir.filePath(QStringLiteral("tree")),
                             QStringLiteral("--files-from=") + mDir.filePath(QStringLiteral("tree/names"))};
    // These times would give every member an extended header.
    if (qstrcmp(format, "pax") == 0)
        arguments.append(QStringLiteral("--pax-option=delete=atime,delete=ctime"));
    process.start(QStringLiteral("tar"), arguments);
    const bool ok = process.waitForFinished(timeout) && process.exitCode() == 0;
    return ok ? fileName : QString();
}

bool tst_system_archives::holds(const QString &fileName, const QList<Entry> &expected)
{
    CTar archive;
    bool agrees = archive.loadFile(fileName) && archive.count() == expected.size();
    for (int i = 0; agrees && i < expected.size(); ++i) {
        const Entry &entry = expected[i];
        const CTarFileInfo info = archive.info(i);
        QByteArray data;
        agrees = archive.file(i, data) && data == entry.data && info.type == entry.type
                 && info.name == QString::fromLatin1(entry.name)
                 && info.linkName == QString::fromLatin1(entry.linkName);
        if (!agrees)
            qWarning() << info << "instead of" << entry.type << entry.name << entry.linkName;
    }
    return agrees;
}

void tst_system_archives::readsPlainMembers_data()
{
    QTest::addColumn<QByteArray>("format");
    for (const char *format : {"ustar", "gnu", "oldgnu", "pax"})
        QTest::newRow(format) << QByteArray(format);
}

void tst_system_archives::readsPlainMembers()
{
    QFETCH(QByteArray, format);
    QByteArrayList names;
    const QList<Entry> entries = plainEntries();
    for (const Entry &entry : entries)
        names.append(entry.name);
    QVERIFY(holds(packed(format.constData(), names), entries));
}

// The directories go into the field "prefix", which is not joined.
void tst_system_archives::ustarSplitsALongPath()
{
    QVERIFY(holds(packed("ustar", {longPath(), "small.txt"}),
                  {{1, longName(), "", contents(20)}, {1, "small.txt", "", contents(10)}}));
}

void tst_system_archives::gnuPutsALongPathBeforeItsMember()
{
    QVERIFY(holds(packed("gnu", {longPath(), "small.txt"}),
                  {{0, "././@LongLink", "", longPath() + '\0'},
                   {1, longPath().left(100) + "0000644", "", contents(20)},
                   {1, "small.txt", "", contents(10)}}));
}

void tst_system_archives::paxPutsALongPathBeforeItsMember()
{
    CTar archive;
    QVERIFY(archive.loadFile(packed("pax", {longPath(), "small.txt"})));
    QCOMPARE(archive.count(), 3);
    QCOMPARE(archive.info(0).type, int(CTarFileInfo::E_TYPE_OTHER));
    QByteArray data;
    QVERIFY(archive.file(0, data));
    QVERIFY2(data.contains(" path=" + longPath() + '\n'), data.constData());
    QVERIFY(archive.file(1, data));
    QCOMPARE(data, contents(20));
    QCOMPARE(archive.info(1).name, QString::fromLatin1(longPath().left(100) + "0000644"));
    QCOMPARE(archive.index(QStringLiteral("small.txt")), 2);
}

void tst_system_archives::nameOfAHundredBytesRunsOnIntoTheMode_data()
{
    QTest::addColumn<QByteArray>("format");
    for (const char *format : {"ustar", "gnu", "pax"})
        QTest::newRow(format) << QByteArray(format);
}

void tst_system_archives::nameOfAHundredBytesRunsOnIntoTheMode()
{
    QFETCH(QByteArray, format);
    QVERIFY(holds(packed(format.constData(), {hundredBytes()}),
                  {{1, hundredBytes() + "0000644", "", contents(30)}}));
}

void tst_system_archives::namesAreTheirBytes()
{
    CTar archive;
    QVERIFY(archive.loadFile(packed("ustar", {"\xC3\xBC"})));
    QCOMPARE(archive.names(), QStringList{QStringLiteral("\u00C3\u00BC")});
}

void tst_system_archives::seventhEditionIsNoUstar()
{
    CTar archive;
    QVERIFY(!archive.loadFile(packed("v7", {"small.txt"})));
    QCOMPARE(archive.error(), QStringLiteral("ERROR : This is not a tar archive. Header.magic = \"512\" but "
                                             "\"ustar\" was expected !"));
    QCOMPARE(archive.count(), 0);
}

QTEST_GUILESS_MAIN(tst_system_archives)
#include "tst_system_archives.moc"
