// SPDX-License-Identifier: MIT
// The command "tar" as its users call it, on archives that are made for each case.
#include "ToolCall.h"

#include <LoggedTest.h>
#include <TarWriter.h>

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCodec>

#ifdef Q_OS_LINUX
#include <sys/stat.h>
#endif

namespace {

using ToolCall::asText;
using ToolCall::callIn;
using ToolCall::words;
using Outcome = ToolCall::TextOutcome;

// A file, a directory, a link, a hard link, a second file of the first one's name, and names that are not
// plain.
QByteArray sampleArchive()
{
    return tar::archive({{"axis.csv", "first"},
                         {"dir/", "", '5'},
                         {"dir/current", "", '2', "../axis.csv"},
                         {"same", "", '1', "axis.csv"},
                         {"axis.csv", "second, and longer"},
                         {"../outside", "outside"},
                         {"/absolute", "absolute"},
                         {"\xC3\xBC", "in UTF-8"},
                         {"\xFC\xFC", "in Latin-1"},
                         {"%1 %2", "place markers"},
                         {"a\x1B[31mb", "escape"},
                         {"empty", ""},
                         {"dir", "a link to what?", '2', "\xC3\xA4"}});
}

} // namespace

class tst_tar_command : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void listsTheMembers();
    void extractsAFile_data();
    void extractsAFile();
    void showsNoEscapesInTheNameOfTheNewFile();
    void extractsEveryByte();
    void membersOfManyGigabytes();
    void overwritesNothing();
    void refusesWrongCalls_data();
    void refusesWrongCalls();
    void refusesWhatIsNoWholeArchive_data();
    void refusesWhatIsNoWholeArchive();
    void refusesPipes();
#ifdef __linux__
    void keepsNoFileOfAFailedWrite();
    void keepsNoFileThatCannotBeTold();
#endif

private:
    Outcome call(const char *line);
    QString path(const char *name) const
    {
        return mDir.filePath(QLatin1String(name));
    }
    QByteArray contentsOf(const char *name) const;
    QStringList files() const
    {
        return QDir(mDir.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }

    QTemporaryDir mDir;
};

void tst_tar_command::initTestCase()
{
    // The arguments are handed to the program as UTF-8, whatever the locale of the test is.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    QVERIFY(mDir.isValid());
    QVERIFY(tar::write(path("sample.tar"), sampleArchive()));
}

// The words of the call are separated by "|".
Outcome tst_tar_command::call(const char *line)
{
    return asText(callIn(mDir.path(), words(line)));
}

QByteArray tst_tar_command::contentsOf(const char *name) const
{
    return ToolCall::contentsOf(path(name));
}

void tst_tar_command::listsTheMembers()
{
    const Outcome outcome = call("tar|file=sample.tar");
    QCOMPARE(outcome.error, QString());
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output, QStringLiteral("TYPE       SIZE  NAME         LINK\n"
                                            "file          5  axis.csv\n"
                                            "directory     0  dir/\n"
                                            "link          0  dir/current  ../axis.csv\n"
                                            "other         0  same         axis.csv\n"
                                            "file         18  axis.csv\n"
                                            "file          7  ../outside\n"
                                            "file          8  /absolute\n"
                                            "file          8  \u00FC\n"
                                            "file         10  \u00FC\u00FC\n"
                                            "file         13  %1 %2\n"
                                            "file          6  a\\x1b[31mb\n"
                                            "file          0  empty\n"
                                            "link         15  dir          \u00E4\n"));
    QVERIFY(tar::write(path("empty.tar"), tar::zeroBlocks()));
    QCOMPARE(call("tar|file=empty.tar").output, QStringLiteral("TYPE  SIZE  NAME  LINK\n"));
    QCOMPARE(call("tar|file=empty.tar|format=json").output, QStringLiteral("[]\n"));
}

void tst_tar_command::extractsAFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QString>("line");

    const auto row = [](const char *name, const char *data, const char *line) {
        QTest::newRow(name) << QString::fromUtf8(name) << QByteArray(data) << QString::fromUtf8(line);
    };
    row("../outside", "outside", "../outside: 7 bytes -> out.bin\n");
    row("/absolute", "absolute", "/absolute: 8 bytes -> out.bin\n");
    row("empty", "", "empty: 0 bytes -> out.bin\n");
    row("\xC3\xBC", "in UTF-8", "\xC3\xBC: 8 bytes -> out.bin\n");
    row("\xC3\xBC\xC3\xBC", "in Latin-1", "\xC3\xBC\xC3\xBC: 10 bytes -> out.bin\n");
    row("%1 %2", "place markers", "%1 %2: 13 bytes -> out.bin\n");
    row("a\x1B[31mb", "escape", "a\\x1b[31mb: 6 bytes -> out.bin\n");
    QTest::newRow("first of two") << "axis.csv" << QByteArray("first")
                                  << "axis.csv: 5 bytes -> out.bin (the first of 2 members of this name)\n";
}

void tst_tar_command::extractsAFile()
{
    QFETCH(QString, name);
    QFile::remove(path("out.bin"));
    const QStringList before = files();
    const Outcome outcome = call(("tar|file=sample.tar|out=out.bin|member=" + name.toUtf8()).constData());
    QCOMPARE(outcome.error, QString());
    QTEST(outcome.output, "line");
    QCOMPARE(outcome.exitCode, 0);
    QTEST(contentsOf("out.bin"), "data");
    // It is the one file that is new.
    QVERIFY(QFile::remove(path("out.bin")));
    QCOMPARE(files(), before);
    QVERIFY(!QFile::exists(mDir.path() + QStringLiteral("/../outside")));
    QVERIFY(!QFile::exists(QStringLiteral("/absolute")));
}

void tst_tar_command::showsNoEscapesInTheNameOfTheNewFile()
{
#ifdef Q_OS_UNIX
    QCOMPARE(call("tar|file=sample.tar|member=empty|out=a\x1B[31mb").output,
             QStringLiteral("empty: 0 bytes -> a\\x1b[31mb\n"));
    QVERIFY(QFile::remove(path("a\x1B[31mb")));
#else
    QSKIP("this system has no file names with escapes");
#endif
}

void tst_tar_command::extractsEveryByte()
{
    QByteArray data;
    for (int i = 0; i < 300001; ++i)
        data += static_cast<char>(i * 31 + i / 251);
    QVERIFY(tar::write(path("large.tar"), tar::archive({{"a", "x"}, {"large", data}, {"z", "x"}})));
    QCOMPARE(call("tar|file=large.tar|member=large|out=large.bin").output,
             QStringLiteral("large: 300001 bytes -> large.bin\n"));
    QCOMPARE(contentsOf("large.bin"), data);
}

void tst_tar_command::membersOfManyGigabytes()
{
    // All but the header is a hole in the file, the blocks at the end included.
    const qint64 size = (qint64(4) << 30) + 512;
    QVERIFY(tar::write(path("huge.tar"), tar::header({"huge"}, size)));
    if (!QFile::resize(path("huge.tar"), 512 + size + 1024))
        QSKIP("NOT TESTED: the file system of the temporary directory has no files of 4 GiB with holes");
    QCOMPARE(call("tar|file=huge.tar|format=csv").output,
             QStringLiteral("type,size,name,link\r\nfile,4294967808,huge,\r\n"));
    const Outcome outcome = call("tar|file=huge.tar|member=huge|out=huge.bin");
    QCOMPARE(outcome.error,
             QStringLiteral("huge.tar: 'huge': ERROR: 0 bytes read but 4294967808 are expected !\n"));
    QCOMPARE(outcome.output, QString());
    QCOMPARE(outcome.exitCode, 2);
    QVERIFY(!QFile::exists(path("huge.bin")));
    QVERIFY(QFile::remove(path("huge.tar")));
}

void tst_tar_command::overwritesNothing()
{
    QVERIFY(tar::write(path("old.bin"), "old"));
    for (const char *out : {"old.bin", "sample.tar", "."}) {
        const QByteArray line = QByteArray("tar|file=sample.tar|member=axis.csv|out=") + out;
        const Outcome outcome = call(line.constData());
        QCOMPARE(outcome.error,
                 QLatin1String(out) + QStringLiteral(": exists already; nothing is overwritten\n"));
        QCOMPARE(outcome.output, QString());
        QCOMPARE(outcome.exitCode, 2);
    }
    QCOMPARE(contentsOf("old.bin"), QByteArray("old"));
    QCOMPARE(contentsOf("sample.tar"), sampleArchive());
#ifdef Q_OS_UNIX
    // Neither through a link, wherever that leads to.
    QVERIFY(QFile::link(QStringLiteral("nowhere"), path("dangling")));
    QCOMPARE(call("tar|file=sample.tar|member=axis.csv|out=dangling").exitCode, 2);
    QVERIFY(!QFile::exists(path("nowhere")));
#endif
}

void tst_tar_command::refusesWrongCalls_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("error");

    const auto row = [](const char *name, const char *line, const char *error) {
        QTest::newRow(name) << QString::fromUtf8(line) << QString::fromUtf8(error);
    };
    row("no file", "",
        "j6tool: file: is missing (usage: j6tool tar file=BUNDLE [member=NAME out=FILE] "
        "[format=table|csv|json])");
    row("no out", "|file=sample.tar|member=axis.csv", "j6tool: out: is missing; member and out go together");
    row("empty out",
        "|file=sample.tar|member=axis.csv|out=", "j6tool: out: is missing; member and out go together");
    row("no member", "|file=sample.tar|out=x", "j6tool: member: is missing; member and out go together");
    row("empty out alone", "|file=sample.tar|out=", "j6tool: member: is missing; member and out go together");
    row("format of a member", "|file=sample.tar|member=axis.csv|out=x|format=json",
        "j6tool: format: is for the list, not for a member");
    row("unknown format", "|file=sample.tar|format=xml", "j6tool: format: 'xml' is none of table, csv, json");
    row("unknown name", "|file=sample.tar|member=Axis.csv|out=x",
        "j6tool: member: there is no 'Axis.csv' in the archive");
    row("empty name", "|file=sample.tar|member=|out=x", "j6tool: member: there is no '' in the archive");
    row("directory", "|file=sample.tar|member=dir/|out=x",
        "j6tool: member: 'dir/' is no file (its type: directory)");
    row("link", "|file=sample.tar|member=dir/current|out=x",
        "j6tool: member: 'dir/current' is no file (its type: link)");
    row("link with data", "|file=sample.tar|member=dir|out=x",
        "j6tool: member: 'dir' is no file (its type: link)");
    row("hard link", "|file=sample.tar|member=same|out=x",
        "j6tool: member: 'same' is no file (its type: other)");
    row("missing archive", "|file=no%1such.tar", "no%1such.tar: no such file");
    row("directory as archive", "|file=.", ".: is a directory");
    row("directory that is missing", "|file=sample.tar|member=axis.csv|out=no/x",
        qUtf8Printable(QStringLiteral("no/x: cannot be written: ") + ToolCall::noDirectoryText()));
}

void tst_tar_command::refusesWrongCalls()
{
    QFETCH(QString, line);
    QFETCH(QString, error);
    const QStringList before = files();
    const Outcome outcome = call(("tar" + line.toUtf8()).constData());
    QCOMPARE(outcome.error, error + QLatin1Char('\n'));
    QCOMPARE(outcome.output, QString());
    QCOMPARE(outcome.exitCode, 2);
    QCOMPARE(files(), before);
}

void tst_tar_command::refusesWhatIsNoWholeArchive_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("error");

    const QByteArray members = tar::members({{"first", "1"}, {"\xC3\xBC", "2"}});
    QByteArray badSize = tar::header({"bad"});
    tar::put(badSize, tar::field::size, "00000000010 14600000000 ");
    QTest::newRow("empty") << QByteArray()
                           << "bad.tar: ERROR : The file ist too short. Only 0 bytes read but 512 expected !";
    QTest::newRow("no archive")
        << QByteArray(600, 'x')
        << "bad.tar: ERROR : This is not a tar archive. Header.magic = \"512\" but \"ustar\" was expected !";
    QTest::newRow("no end") << members
                            << "bad.tar: after member 2, '\u00FC': ERROR : The file ist too short. "
                               "Only 0 bytes read but 512 expected !";
    QTest::newRow("escape in the last name")
        << tar::members({{"a\x1B[31mb"}})
        << "bad.tar: after member 1, 'a\\x1b[31mb': ERROR : The file ist too short. "
           "Only 0 bytes read but 512 expected !";
    QTest::newRow("data cut off") << members.left(512 + 1)
                                  << "bad.tar: after member 1, 'first': ERROR : The file ist too short. "
                                     "Only 0 bytes read but 512 expected !";
    QTest::newRow("bad size") << badSize + tar::zeroBlocks()
                              << "bad.tar: the size of a member is no octal number";
    QTest::newRow("bad size later")
        << members + badSize + tar::zeroBlocks()
        << "bad.tar: after member 2, '\u00FC': the size of a member is no octal number";
}

void tst_tar_command::refusesWhatIsNoWholeArchive()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, error);
    QVERIFY(tar::write(path("bad.tar"), bytes));
    for (const char *line : {"tar|file=bad.tar", "tar|file=bad.tar|member=first|out=x"}) {
        const Outcome outcome = call(line);
        QCOMPARE(outcome.error, error + QLatin1Char('\n'));
        QCOMPARE(outcome.output, QString());
        QCOMPARE(outcome.exitCode, 2);
    }
    QVERIFY(!QFile::exists(path("x")));
}

void tst_tar_command::refusesPipes()
{
#ifdef Q_OS_LINUX
    QCOMPARE(call("tar|file=/dev/zero").error, QStringLiteral("/dev/zero: is no regular file\n"));
    // To open a pipe that nobody writes to would take forever.
    QCOMPARE(mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0);
    const Outcome outcome = call("tar|file=pipe");
    QCOMPARE(outcome.error, QStringLiteral("pipe: is no regular file\n"));
    QCOMPARE(outcome.exitCode, 2);
    QVERIFY(QFile::remove(path("pipe")));
#else
    QSKIP("NOT TESTED: there is no /dev/zero on this system");
#endif
}

#ifdef __linux__
void tst_tar_command::keepsNoFileOfAFailedWrite()
{
    // Files of this shell's children end at 512 bytes; the signal that tells so is ignored.
    QVERIFY(tar::write(path("limit.tar"), tar::archive({{"large", QByteArray(5000, 'x')}})));
    QProcess shell;
    shell.setWorkingDirectory(mDir.path());
    shell.setReadChannel(QProcess::StandardError);
    shell.start(
        QStringLiteral("/bin/sh"),
        {QStringLiteral("-c"),
         QStringLiteral("trap '' XFSZ; ulimit -f 1; \"$0\" tar file=limit.tar member=large out=cut.bin"),
         QStringLiteral(J6TOOL_PROGRAM)});
    QVERIFY(shell.waitForFinished(ToolCall::timeout));
    // The tool's own line; what counts coverage meets the same limit and complains behind it.
    QCOMPARE(QString::fromUtf8(shell.readLine()),
             QStringLiteral("cut.bin: cannot be written: File too large\n"));
    QCOMPARE(shell.exitCode(), 2);
    QVERIFY(!QFile::exists(path("cut.bin")));
}

void tst_tar_command::keepsNoFileThatCannotBeTold()
{
    QProcess shell;
    shell.setWorkingDirectory(mDir.path());
    shell.start(QStringLiteral("/bin/sh"),
                {QStringLiteral("-c"),
                 QStringLiteral("\"$0\" tar file=sample.tar member=axis.csv out=untold.bin >/dev/full"),
                 QStringLiteral(J6TOOL_PROGRAM)});
    QVERIFY(shell.waitForFinished(ToolCall::timeout));
    QCOMPARE(QString::fromUtf8(shell.readAllStandardError()),
             QStringLiteral("standard output: No space left on device\n"));
    QCOMPARE(shell.exitCode(), 2);
    QVERIFY(!QFile::exists(path("untold.bin")));
}
#endif

QTEST_GUILESS_MAIN(tst_tar_command)
#include "tst_tar_command.moc"
