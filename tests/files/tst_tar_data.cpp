// SPDX-License-Identifier: MIT
// Members found and read, and what is told when that fails.
#include "TarCases.h"

#include <QTranslator>

#ifdef Q_OS_LINUX
#include <QDir>
#include <QFileInfo>
#endif

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

// Texts of the context CTar in another language, with the numbers in the other order.
class Translator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }

    QString translate(const char *context, const char *text, const char *, int) const override
    {
        if (qstrcmp(context, "CTar") != 0)
            return QString();
        const QString source = QString::fromLatin1(text);
        return source.contains(QLatin1String("%2")) ? QStringLiteral("%2 <- %1: ") + source.left(12)
                                                    : QStringLiteral("[") + source + QLatin1Char(']');
    }
};

#ifdef Q_OS_LINUX
// Puts another open file in the place of the one that this process reads from; that one's descriptor then
// does what the other's does. Takes the other over.
bool replaceOpenFile(const QString &fileName, int other)
{
    bool ok = false;
    const QString target = QFileInfo(fileName).canonicalFilePath();
    const QFileInfoList descriptors =
        QDir(QStringLiteral("/proc/self/fd")).entryInfoList(QDir::Files | QDir::System);
    for (const QFileInfo &descriptor : descriptors) {
        const int number = descriptor.fileName().toInt();
        if (number != other && descriptor.symLinkTarget() == target)
            ok = other >= 0 && dup2(other, number) == number;
    }
    close(other);
    return ok;
}
#endif

} // namespace

class tst_tar_data : public TarTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void findsTheFirstOfAName();
    void findsEveryName();
    void findsNamesThatAStepAdded();
    void infoOutsideTheList();
    void givesTheData_data();
    void givesTheData();
    void dataOfTheFirstOfAName();
    void dataOfDirectoriesAndLinksIsWhatIsStored();
    void dataThatIsCutOff();
    void dataThatArrivesLater();
    void dataThatCannotBeRead();
    void dataThatCannotBeReached();
    void indexMessageGivesTheCountAsTheUpperLimit_data();
    void indexMessageGivesTheCountAsTheUpperLimit();
    void missingNameMessageKeepsItsPlaceMarker();
    void dataIsUntouchedUntilItIsRead();
    void errorStaysAfterASuccess();
    void loadsAnotherArchive();
    void failedOpeningForgetsTheArchive_data();
    void failedOpeningForgetsTheArchive();
    void failedScanKeepsTheArchiveOpen();
    void pipesAreRefused();
    void textsAreTranslatedAndThenFilled();
    void documentedExample();
};

void tst_tar_data::initTestCase()
{
    QVERIFY(mDir.isValid());
}

void tst_tar_data::findsTheFirstOfAName()
{
    CTar archive;
    QVERIFY(archive.loadFile(written(tar::archive({{"b"}, {"a"}, {"b"}, {"A"}, {"a"}, {"a"}, {"a "}}))));
    QCOMPARE(archive.count(), 7);
    QCOMPARE(archive.index(QStringLiteral("a")), 1);
    QCOMPARE(archive.index(QStringLiteral("b")), 0);
    QCOMPARE(archive.index(QStringLiteral("A")), 3);
    QCOMPARE(archive.index(QStringLiteral("a ")), 6);
    for (const char *name : {"B", "", "a  ", " a", "c", "*", "./a"})
        QCOMPARE(archive.index(QLatin1String(name)), -1);
    // Beyond ASCII: neither the other case nor the same letter in UTF-8 is this name.
    QVERIFY(
        archive.loadFile(written(tar::archive({{"\xFC"}, {"z"}, {"\x80"}, {"\xFF"}, {"\xFC"}, {"\x7F"}}))));
    QCOMPARE(archive.index(QString(QChar(0xFC))), 0);
    QCOMPARE(archive.index(QString(QChar(0x80))), 2);
    QCOMPARE(archive.index(QString(QChar(0xFF))), 3);
    QCOMPARE(archive.index(QString(QChar(0x7F))), 5);
    for (const QString &name :
         {QStringLiteral("\u00DC"), QStringLiteral("\u00C3\u00BC"), QStringLiteral("\u01FC")})
        QCOMPARE(archive.index(name), -1);
}

void tst_tar_data::findsEveryName()
{
    QList<tar::Member> members;
    for (int i = 0; i < 1000; ++i)
        members.append({QByteArray::number(i * 7919 % 500, 36)});
    CTar archive;
    QVERIFY(archive.loadFile(written(tar::archive(members))));
    const QStringList names = archive.names();
    for (const QString &name : names)
        QCOMPARE(archive.index(name), names.indexOf(name));
}

void tst_tar_data::findsNamesThatAStepAdded()
{
    CTar archive;
    QVERIFY(!archive.loadFile(written(tar::members({{"b"}, {"d"}}))));
    QCOMPARE(archive.index(QStringLiteral("d")), 1);
    QCOMPARE(archive.index(QStringLiteral("c")), -1);
    QVERIFY(tar::write(path("archive.tar"), tar::archive({{"b"}, {"d"}, {"c"}, {"d"}})));
    qint64 position = 1024;
    bool end = false;
    while (!end)
        QVERIFY(archive.readFileHeader(position, end));
    QCOMPARE(archive.index(QStringLiteral("b")), 0);
    QCOMPARE(archive.index(QStringLiteral("c")), 2);
    QCOMPARE(archive.index(QStringLiteral("d")), 1);
    // As many members as before, others.
    QVERIFY(archive.loadFile(written(tar::archive({{"d"}, {"c"}, {"b"}, {"a"}}))));
    QCOMPARE(archive.index(QStringLiteral("b")), 2);
    QCOMPARE(archive.index(QStringLiteral("d")), 0);
}

void tst_tar_data::infoOutsideTheList()
{
    CTar archive;
    QVERIFY(archive.loadFile(written(tar::archive(threeFiles()))));
    QVERIFY(!archive.info(-1).isValid());
    for (const int index : {-1, 3, 4, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
        QCOMPARE(archive.info(index), CTarFileInfo());
    QVERIFY(archive.info(2).isValid());
    QCOMPARE(archive.error(), QString());
}

void tst_tar_data::givesTheData_data()
{
    QTest::addColumn<int>("size");
    for (const int size : {0, 1, 511, 512, 513, 1024, 4095, 4096, 4097, 65536, 1000001})
        QTest::newRow(QByteArray::number(size).constData()) << size;
}

void tst_tar_data::givesTheData()
{
    QFETCH(int, size);
    QByteArray contents(size, '\0');
    for (int i = 0; i < size; ++i)
        contents[i] = static_cast<char>(i * 31 + i / 256);
    CTar archive;
    QVERIFY(archive.loadFile(written(tar::archive({{"a", "1st"}, {"b", contents}, {"c", "3rd"}}))));
    QByteArray data = "replaced";
    const QByteArray copy = data;
    QVERIFY(archive.file(1, data));
    QCOMPARE(data, contents);
    QCOMPARE(copy, QByteArray("replaced"));
    // In any order, as often as one likes.
    QVERIFY(archive.file(2, data));
    QCOMPARE(data, QByteArray("3rd"));
    QVERIFY(archive.file(0, data));
    QCOMPARE(data, QByteArray("1st"));
    QVERIFY(archive.file(QStringLiteral("b"), data));
    QCOMPARE(data, contents);
    QCOMPARE(archive.error(), QString());
}

void tst_tar_data::dataOfTheFirstOfAName()
{
    CTar archive;
    QVERIFY(archive.loadFile(written(tar::archive({{"x", "0"}, {"a", "first"}, {"a", "second"}}))));
    QByteArray data;
    QVERIFY(archive.file(QStringLiteral("a"), data));
    QCOMPARE(data, QByteArray("first"));
    QCOMPARE(archive.index(QStringLiteral("a")), 1);
    QVERIFY(archive.file(2, data));
    QCOMPARE(data, QByteArray("second"));
}

void tst_tar_data::dataOfDirectoriesAndLinksIsWhatIsStored()
{
    CTar archive;
    QVERIFY(archive.loadFile(written(tar::archive({{"dir/", "", '5'},
                                                   {"link", "", '2', "dir"},
                                                   {"dir2/", "stored", '5'},
                                                   {"link2", "too", '2'},
                                                   {"other", "as well", '7'}}))));
    const QByteArrayList stored = {"", "", "stored", "too", "as well"};
    for (int i = 0; i < stored.size(); ++i) {
        QByteArray data = "replaced";
        QVERIFY(archive.file(i, data));
        QCOMPARE(data, stored[i]);
    }
}

void tst_tar_data::dataThatIsCutOff()
{
    const QByteArray whole = tar::members({{"axis", "0123456789"}});
    for (int held = 0; held < 10; ++held) {
        CTar archive;
        QVERIFY(!archive.loadFile(written(whole.left(512 + held))));
        QCOMPARE(archive.count(), 1);
        QByteArray data = "replaced";
        QVERIFY(!archive.file(0, data));
        QCOMPARE(archive.error(), QStringLiteral("ERROR: %1 bytes read but 10 are expected !").arg(held));
        QCOMPARE(data, whole.mid(512, held));
        // The name is there: the text is that of its data.
        QVERIFY(!archive.loadFile(written(whole.left(512 + held))));
        QVERIFY(!archive.file(QStringLiteral("axis"), data));
        QCOMPARE(archive.error(), QStringLiteral("ERROR: %1 bytes read but 10 are expected !").arg(held));
        QCOMPARE(data, whole.mid(512, held));
    }
    // Cut off while it is open, before its data and before its header.
    CTar archive;
    QVERIFY(archive.loadFile(written(tar::archive({{"first"}, {"second", "data"}}))));
    for (const int size : {1024, 1023, 512, 0}) {
        QVERIFY(QFile::resize(path("archive.tar"), size));
        QByteArray data = "replaced";
        QVERIFY(!archive.file(1, data));
        QCOMPARE(archive.error(), QStringLiteral("ERROR: 0 bytes read but 4 are expected !"));
        QCOMPARE(data, QByteArray());
    }
}

void tst_tar_data::dataThatArrivesLater()
{
    const QByteArray whole = tar::archive({{"axis", QByteArray(5000, 'a')}});
    CTar archive;
    QVERIFY(!archive.loadFile(written(whole.left(512 + 4))));
    QByteArray data;
    QVERIFY(!archive.file(0, data));
    QCOMPARE(archive.error(), QStringLiteral("ERROR: 4 bytes read but 5000 are expected !"));
    QVERIFY(tar::write(path("archive.tar"), whole.left(512 + 5000)));
    QVERIFY(archive.file(0, data));
    QCOMPARE(data, QByteArray(5000, 'a'));
}

void tst_tar_data::dataThatCannotBeRead()
{
#ifdef Q_OS_LINUX
    const QString fileName = written(tar::archive({{"axis", "data"}}));
    CTar archive;
    QVERIFY(archive.loadFile(fileName));
    QVERIFY(replaceOpenFile(fileName, open(QFile::encodeName(fileName).constData(), O_WRONLY | O_CLOEXEC)));
    QByteArray data = "replaced";
    QVERIFY(!archive.file(0, data));
    QCOMPARE(archive.error(), QStringLiteral("ERROR: 0 bytes read but 4 are expected !"));
    QCOMPARE(data, QByteArray());
    qint64 position = 0;
    bool end = false;
    QVERIFY(!archive.readFileHeader(position, end));
    QCOMPARE(archive.error(), tooShort(0));
    QCOMPARE(archive.count(), 1);
#else
    QSKIP("NOT TESTED: an open file cannot be made unreadable on this system");
#endif
}

void tst_tar_data::dataThatCannotBeReached()
{
#ifdef Q_OS_LINUX
    const QString fileName = written(tar::archive({{"axis", "data"}}));
    CTar archive;
    QVERIFY(archive.loadFile(fileName));
    QByteArray data;
    QVERIFY(archive.file(0, data));
    int pipe[2] = {-1, -1};
    QCOMPARE(pipe2(pipe, O_CLOEXEC), 0);
    close(pipe[1]);
    QVERIFY(replaceOpenFile(fileName, pipe[0]));
    data = "untouched";
    QVERIFY(!archive.file(-1, data));
    QVERIFY(!archive.file(0, data));
    // The system's words for it, of which Qt makes the file's error string. Qt also logs it, by itself.
    QVERIFY2(!archive.error().isEmpty() && !archive.error().startsWith(QLatin1String("ERROR")),
             qPrintable(archive.error()));
    QCOMPARE(takeLog(), QStringList{QStringLiteral("QFile::at: Cannot set file position 512")});
    QCOMPARE(data, QByteArray("untouched"));
#else
    QSKIP("NOT TESTED: an open file cannot be made a pipe on this system");
#endif
}

void tst_tar_data::indexMessageGivesTheCountAsTheUpperLimit_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("error");

    const auto row = [](const char *name, int count, int index, const char *error) {
        QTest::newRow(name) << count << index << QString::fromLatin1(error);
    };
    row("far behind", 3, 5, "ERROR: Index 5 must be between the limits 0 and 3. !");
    row("the count", 3, 3, "ERROR: Index 3 must be between the limits 0 and 3. !");
    row("before", 3, -1, "ERROR: Index -1 must be between the limits 0 and 3. !");
    row("none there", 0, 0, "ERROR: Index 0 must be between the limits 0 and 0. !");
    row("largest", 2, std::numeric_limits<int>::max(),
        "ERROR: Index 2147483647 must be between the limits 0 and 2. !");
    row("smallest", 2, std::numeric_limits<int>::min(),
        "ERROR: Index -2147483648 must be between the limits 0 and 2. !");
}

void tst_tar_data::indexMessageGivesTheCountAsTheUpperLimit()
{
    QFETCH(int, count);
    QFETCH(int, index);
    CTar archive;
    QVERIFY(archive.loadFile(written(tar::archive(threeFiles().mid(0, count)))));
    QByteArray data = "untouched";
    QVERIFY(!archive.file(index, data));
    QTEST(archive.error(), "error");
    QCOMPARE(data, QByteArray("untouched"));
}

void tst_tar_data::missingNameMessageKeepsItsPlaceMarker()
{
    CTar archive;
    QVERIFY(archive.loadFile(written(tar::archive(threeFiles()))));
    for (const char *name : {"First", "", "%1", "second/"}) {
        QByteArray data = "untouched";
        QVERIFY(!archive.file(QLatin1String(name), data));
        QCOMPARE(archive.error(), QStringLiteral("ERROR: File \"%1\" does not exist in the archive !"));
        QCOMPARE(data, QByteArray("untouched"));
    }
}

void tst_tar_data::dataIsUntouchedUntilItIsRead()
{
    CTar archive;
    QByteArray data = "untouched";
    QVERIFY(!archive.file(0, data));
    QVERIFY(archive.loadFile(written(tar::archive(threeFiles()))));
    QVERIFY(!archive.file(-1, data));
    QVERIFY(!archive.file(3, data));
    QVERIFY(!archive.file(QStringLiteral("fourth"), data));
    QCOMPARE(data, QByteArray("untouched"));
}

void tst_tar_data::errorStaysAfterASuccess()
{
    CTar archive;
    QByteArray data;
    QVERIFY(!archive.loadFile(written(QByteArray())));
    QCOMPARE(archive.error(), tooShort(0));
    QVERIFY(archive.loadFile(written(tar::archive(threeFiles()))));
    QVERIFY(archive.file(0, data));
    QCOMPARE(archive.error(), tooShort(0));
    QVERIFY(!archive.file(3, data));
    QCOMPARE(archive.error(), QStringLiteral("ERROR: Index 3 must be between the limits 0 and 3. !"));
    QVERIFY(archive.file(QStringLiteral("third"), data));
    QCOMPARE(archive.error(), QStringLiteral("ERROR: Index 3 must be between the limits 0 and 3. !"));
}

void tst_tar_data::loadsAnotherArchive()
{
    CTar archive;
    QVERIFY(archive.loadFile(written(tar::archive(threeFiles()))));
    const QStringList formerNames = archive.names();
    QVERIFY(tar::write(path("other.tar"), tar::archive({{"other", "data"}})));
    QVERIFY(archive.loadFile(path("other.tar")));
    QCOMPARE(archive.names(), QStringList{QStringLiteral("other")});
    QCOMPARE(archive.infos().size(), 1);
    QCOMPARE(archive.index(QStringLiteral("first")), -1);
    QByteArray data;
    QVERIFY(archive.file(0, data));
    QCOMPARE(data, QByteArray("data"));
    // Lists that were handed out are copies.
    QCOMPARE(formerNames.size(), 3);
    QVERIFY(archive.loadFile(path("other.tar")));
    QCOMPARE(archive.count(), 1);
}

void tst_tar_data::failedOpeningForgetsTheArchive_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QString>("error");

    const auto row = [](const char *name, const QString &fileName) {
        QFile file(fileName);
        file.open(QIODevice::ReadOnly);
        QTest::newRow(name) << fileName << file.errorString();
    };
    row("missing", path("missing.tar"));
    row("directory", mDir.path());
    row("directory that is missing", path("missing/archive.tar"));
    QTest::newRow("no name") << QString() << "No file name specified";
    QTest::newRow("empty name") << QString::fromLatin1("") << "No file name specified";
}

void tst_tar_data::failedOpeningForgetsTheArchive()
{
    QFETCH(QString, fileName);
    CTar archive;
    QVERIFY(archive.loadFile(written(tar::archive(threeFiles()))));
    QVERIFY(!archive.loadFile(fileName));
    QTEST(archive.error(), "error");
    QCOMPARE(archive.count(), 0);
    QVERIFY(archive.names().isEmpty());
    QVERIFY(archive.infos().isEmpty());
    QCOMPARE(archive.index(QStringLiteral("first")), -1);
    QByteArray data;
    QVERIFY(!archive.file(0, data));
    QCOMPARE(archive.error(), nothingOpen());
}

void tst_tar_data::failedScanKeepsTheArchiveOpen()
{
    CTar archive;
    QVERIFY(!archive.loadFile(written(tar::members(threeFiles()) + QByteArray(512, 'x'))));
    QCOMPARE(archive.error(), notATarArchive());
    QCOMPARE(archive.count(), 3);
    QByteArray data;
    QVERIFY(archive.file(QStringLiteral("third"), data));
    QCOMPARE(data, QByteArray("the third"));
    QVERIFY(!archive.loadFile(written("no archive")));
    QVERIFY(!archive.file(0, data));
    QCOMPARE(archive.error(), QStringLiteral("ERROR: Index 0 must be between the limits 0 and 0. !"));
}

void tst_tar_data::pipesAreRefused()
{
#ifdef Q_OS_UNIX
    const QByteArray pipe = QFile::encodeName(path("pipe"));
    QCOMPARE(mkfifo(pipe.constData(), 0600), 0);
    const int end = open(pipe.constData(), O_RDWR);
    QVERIFY(end >= 0);
    CTar archive;
    QVERIFY(!archive.loadFile(path("pipe")));
    QCOMPARE(archive.error(), QFile().errorString());
    close(end);
#else
    QSKIP("this system has no named pipes in directories");
#endif
}

void tst_tar_data::textsAreTranslatedAndThenFilled()
{
    Translator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    CTar archive;
    QByteArray data;
    QStringList errors;
    const auto note = [&errors, &archive](bool ok) {
        errors.append(ok ? QStringLiteral("no error") : archive.error());
    };
    note(archive.file(0, data));
    note(archive.file(QStringLiteral("a"), data));
    note(archive.loadFile(written(QByteArray(3, 'x'))));
    note(archive.file(7, data));
    note(archive.loadFile(written(QByteArray(512, 'x'))));
    note(archive.loadFile(written(tar::members({{"a", "data"}}).left(514))));
    note(archive.file(0, data));
    QCoreApplication::removeTranslator(&translator);
    QCOMPARE(errors,
             (QStringList{QStringLiteral("[%1]").arg(nothingOpen()),
                          QLatin1Char('[') + noSuchName() + QLatin1Char(']'),
                          QStringLiteral("512 <- 3: ERROR : The "), QStringLiteral("0 <- 7: ERROR: Index"),
                          QStringLiteral("[%1]").arg(notATarArchive()),
                          QStringLiteral("512 <- 0: ERROR : The "), QStringLiteral("4 <- 2: ERROR: 2 by")}));
}

void tst_tar_data::documentedExample()
{
    QVERIFY(
        tar::write(path("update.tar"), tar::archive({{"notes.txt", "3.2.119"}, {"drive.bin", "\x01\x02"}})));
    CTar bundle;
    QByteArray firmware;
    QVERIFY(bundle.loadFile(path("update.tar")) && bundle.file(QStringLiteral("drive.bin"), firmware));
    QCOMPARE(firmware, QByteArray("\x01\x02"));
    QCOMPARE(bundle.error(), QString());
}

QTEST_GUILESS_MAIN(tst_tar_data)
#include "tst_tar_data.moc"
