// SPDX-License-Identifier: MIT
// The directories of CPath, asked for by a program in an installation of its own.
#include <LoggedTest.h>
#include <ScratchInstallation.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

namespace {

QString reporter()
{
    return QStringLiteral(J6CORE_PATH_REPORTER);
}

struct Directory
{
    const char *name;
    const char *base;
    const char *below;
};

// Base "root" is the installation, "data" the user's application data and "documents" the user's documents.
constexpr Directory directories[] = {
    {"binPath", "root", "bin/"},
    {"libPath", "root", "bin/"},
    {"etcPath", "root", "etc/"},
    {"txtPath", "root", "etc/txt/"},
    {"imagePath", "root", "etc/image/"},
    {"docPath", "root", "etc/doc/"},
    {"constConfigPath", "root", "etc/conf/"},
    {"constConfigOdictPath", "root", "etc/conf/odict/"},
    {"constDataPath", "root", "etc/data/"},
    {"configPath", "data", "conf/"},
    {"logPath", "data", "log/"},
    {"motorPath", "documents", "motor/"},
    {"paramPath", "documents", "param/"},
    {"dataPath", "documents", "data/"},
    {"projectPath", "documents", "project/"},
};

// Where the directory lies, counted from the installation and the home as ScratchInstallation names them.
QString place(const Directory &directory)
{
    QString base = QStringLiteral("root/");
    if (qstrcmp(directory.base, "data") == 0)
        base = QStringLiteral("home/share/VANTORIS/product/");
    else if (qstrcmp(directory.base, "documents") == 0)
        base = QStringLiteral("home/Documents/VANTORIS/product/");
    return base + QLatin1String(directory.below);
}

// Whether the variables that set the user's directories are known. Without, those are the user's own, and
// nothing is made there.
#ifdef Q_OS_WIN
constexpr bool followsVariables = false;
#else
constexpr bool followsVariables = true;
#endif

QString absolutePlace(const QString &place, const ScratchInstallation &installation)
{
    if (!followsVariables && place.startsWith(QLatin1String("home/share/")))
        return installation.dataHome() + place.mid(10);
    if (place.startsWith(QLatin1String("home/Documents/")))
        return installation.documents() + place.mid(14);
    if (place.startsWith(QLatin1String("home/")))
        return installation.home() + place.mid(5);
    return installation.root() + place.mid(5);
}

// The directory and its parents, without the installation and the home themselves.
QStringList withParents(const QString &place)
{
    QStringList names;
    for (int end = place.indexOf(QLatin1Char('/'), 5); end >= 0;
         end = place.indexOf(QLatin1Char('/'), end + 1))
        names += place.left(end + 1);
    return names;
}

QStringList lines(std::initializer_list<QString> texts)
{
    return QStringList(texts);
}

} // namespace

class tst_path_locations : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void theRootIsTheParentOfTheProgramsDirectory_data();
    void theRootIsTheParentOfTheProgramsDirectory();
    void theRootIsThatOfTheProgramItself();
    void aDirectoryIsComposedAndNotCreated_data();
    void aDirectoryIsComposedAndNotCreated();
    void aDirectoryIsCreatedOnRequest_data();
    void aDirectoryIsCreatedOnRequest();
    void librariesLieBesideThePrograms();
    void theProgramsDirectoryIsCreatedToo_data();
    void theProgramsDirectoryIsCreatedToo();
    void baseLocationsAreNeverCreated();

    void appdataPathStripsTheNames_data();
    void appdataPathStripsTheNames();
    void appdataPathFollowsTheHome();
    void userdataPathFollowsTheDocuments();
    void programdataPathHasTheFamilysName();

    void staticObjectsMayAsk();
    void withoutAnApplicationQtWarns();
};

void tst_path_locations::theRootIsTheParentOfTheProgramsDirectory_data()
{
    QTest::addColumn<QString>("root");
    QTest::addColumn<QString>("product");
    QTest::newRow("plain") << QStringLiteral("X") << QStringLiteral("X");
    QTest::newRow("with parents") << QStringLiteral("opt/tessera/1.2") << QStringLiteral("1.2");
    QTest::newRow("blanks") << QStringLiteral("My product") << QStringLiteral("My product");
    QTest::newRow("placeholders") << QStringLiteral("%1%2%3") << QStringLiteral("%1%2%3");
    QTest::newRow("beyond ASCII") << QStringLiteral(u"Antriebspr\u00FCfung")
                                  << QStringLiteral(u"Antriebspr\u00FCfung");
    QTest::newRow("bin") << QStringLiteral("bin") << QStringLiteral("bin");
}

void tst_path_locations::theRootIsTheParentOfTheProgramsDirectory()
{
    QFETCH(QString, root);
    QFETCH(QString, product);
    ScratchInstallation installation(reporter(), root);
    QVERIFY(installation.isComplete());
    installation.setVariable(QStringLiteral("XDG_DATA_HOME"), QStringLiteral("/share"));
    const QString data = followsVariables ? QStringLiteral("/share") : installation.dataHome();
    const QStringList questions = {QStringLiteral("installPath"), QStringLiteral("productName"),
                                   QStringLiteral("binPath"), QStringLiteral("appdataPath"),
                                   QStringLiteral("userdataPath")};
    QCOMPARE(installation.run(questions),
             lines({installation.root(), product, installation.root() + QStringLiteral("bin/"),
                    data + QStringLiteral("/VANTORIS/") + product + QLatin1Char('/'),
                    installation.documents() + QStringLiteral("/VANTORIS/") + product + QLatin1Char('/')}));
}

void tst_path_locations::theRootIsThatOfTheProgramItself()
{
#ifdef Q_OS_UNIX
    // A symbolic link, for example in a directory of PATH, leads to the installation.
    const ScratchInstallation installation(reporter());
    const ScratchInstallation other(QStringLiteral(J6CORE_PATH_REPORTER), QStringLiteral("other"));
    const QString program = QStringLiteral("bin/") + QFileInfo(reporter()).fileName();
    QVERIFY(QFile::remove(other.root() + program));
    QVERIFY(QFile::link(installation.root() + program, other.root() + program));
    QCOMPARE(other.run({QStringLiteral("installPath")}), lines({installation.root()}));
#else
    QSKIP("symbolic links are for unix systems");
#endif
}

void tst_path_locations::aDirectoryIsComposedAndNotCreated_data()
{
    QTest::addColumn<QString>("function");
    QTest::addColumn<QString>("place");
    for (const Directory &directory : directories)
        QTest::newRow(directory.name) << QString::fromLatin1(directory.name) << place(directory);
}

void tst_path_locations::aDirectoryIsComposedAndNotCreated()
{
    QFETCH(QString, function);
    QFETCH(QString, place);
    ScratchInstallation installation(reporter());
    installation.setVariable(QStringLiteral("XDG_DATA_HOME"), installation.home() + QStringLiteral("share"));
    QCOMPARE(installation.run({function}), lines({absolutePlace(place, installation)}));
    QCOMPARE(installation.contents(), lines({QStringLiteral("root/bin/")}));
}

void tst_path_locations::aDirectoryIsCreatedOnRequest_data()
{
    aDirectoryIsComposedAndNotCreated_data();
}

void tst_path_locations::aDirectoryIsCreatedOnRequest()
{
    QFETCH(QString, function);
    QFETCH(QString, place);
    if (!followsVariables && place.startsWith(QLatin1String("home/")))
        QSKIP("the user's own directories are left alone");
    ScratchInstallation installation(reporter());
    installation.setVariable(QStringLiteral("XDG_DATA_HOME"), installation.home() + QStringLiteral("share"));
    const QString path = absolutePlace(place, installation);
    QCOMPARE(installation.run({QStringLiteral("umask=077"), function + QLatin1Char('+')}), lines({path}));
    QStringList expected = withParents(place);
    expected.removeAll(QStringLiteral("root/bin/"));
    expected += QStringLiteral("root/bin/");
    expected.sort();
    QCOMPARE(installation.contents(), expected);
#ifdef Q_OS_UNIX
    const QFile::Permissions group = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup;
    const QFile::Permissions mask = group | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    if (place != QLatin1String("root/bin/"))
        QCOMPARE(QFile::permissions(path) & mask, group | QFile::ReadOther | QFile::ExeOther);
#endif
}

void tst_path_locations::librariesLieBesideThePrograms()
{
    const ScratchInstallation installation(reporter());
    const QStringList answers = installation.run({QStringLiteral("libPath+"), QStringLiteral("binPath+")});
    const QString programs = installation.root() + QStringLiteral("bin/");
    QCOMPARE(answers, lines({programs, programs}));
    QVERIFY(!QDir(installation.root() + QStringLiteral("lib")).exists());
}

void tst_path_locations::theProgramsDirectoryIsCreatedToo_data()
{
    QTest::addColumn<QString>("function");
    QTest::newRow("binPath") << QStringLiteral("binPath");
    QTest::newRow("libPath") << QStringLiteral("libPath");
}

void tst_path_locations::theProgramsDirectoryIsCreatedToo()
{
#ifdef Q_OS_UNIX
    QFETCH(QString, function);
    const ScratchInstallation installation(reporter());
    const QString programs = installation.root() + QStringLiteral("bin/");
    QCOMPARE(installation.run({QStringLiteral("vanish"), function}), lines({programs}));
    QCOMPARE(installation.contents(), QStringList());
    const ScratchInstallation other(reporter());
    QCOMPARE(other.run({QStringLiteral("vanish"), function + QLatin1Char('+')}),
             lines({other.root() + QStringLiteral("bin/")}));
    QCOMPARE(other.contents(), lines({QStringLiteral("root/bin/")}));
#else
    QSKIP("a running program can be removed on unix systems");
#endif
}

void tst_path_locations::baseLocationsAreNeverCreated()
{
    const ScratchInstallation installation(reporter());
    const QStringList answers =
        installation.run({QStringLiteral("appdataPath"), QStringLiteral("userdataPath")});
    QCOMPARE(answers, lines({installation.dataHome() + QStringLiteral("/VANTORIS/product/"),
                             installation.documents() + QStringLiteral("/VANTORIS/product/")}));
    QCOMPARE(installation.contents(), lines({QStringLiteral("root/bin/")}));
}

void tst_path_locations::appdataPathStripsTheNames_data()
{
    QTest::addColumn<QString>("data");
    QTest::addColumn<QString>("organization");
    QTest::addColumn<QString>("application");
    QTest::addColumn<QString>("expected");
    const auto names = [](const char *name, const char *data, const char *organization,
                          const char *application, const char *expected) {
        QTest::newRow(name) << QString::fromUtf8(data) << QString::fromUtf8(organization)
                            << QString::fromUtf8(application) << QString::fromUtf8(expected);
    };
    names("application", "/share", "", "Drive", "/share");
    names("organization, too", "/share", "Maker", "Drive", "/share");
    names("one name for both", "/share", "Drive", "Drive", "/share");
    names("only at the end", "/Drive/Maker/share", "Maker", "Drive", "/Drive/Maker/share");
    names("blanks", "/share", "The maker", "Drive tool", "/share");
    names("one of two equal ones", "/share/Maker", "Maker", "Drive", "/share/Maker");
    names("the location is taken as it is", "below/share", "", "Drive", "below/share");
    names("a separator before both names stays", "/share/", "Maker", "Drive", "/share/");
    names("no organization takes a separator", "/share/", "", "Drive", "/share");
    names("in the root directory", "/", "", "Drive", "");
    // The names are regular expressions.
    names("a dot stands for itself, too", "/share", "a.b", "c.d", "/share");
    names("a plus repeats what is before it", "/share", "", "Drive+", "/share/Drive+");
    names("an asterisk repeats the separator", "/share", "", "*", "/share/*");
    names("an opening bracket is no expression", "/share", "", "Drive (new", "/share/Drive (new");
    names("a closing bracket is no expression", "/share", "a)b", "Drive", "/share/a)b");
    names("an open set is no expression", "/share", "[", "Drive", "/share/[");
    names("anything", "/home/share", "", ".*", "");
    names("wherever it matches", "/a/b/a/share", "", "a|z", "/b/share|");
    names("case counts", "/home/share", "SHARE|x", "Drive", "/home/share|");
    // Nothing is filled in twice.
    names("placeholders in the names", "/share", "%2", "%1", "/share");
    names("placeholders in the location", "/%1%2%3", "", "Drive", "/%1%2%3");
}

void tst_path_locations::appdataPathStripsTheNames()
{
    QFETCH(QString, data);
    QFETCH(QString, organization);
    QFETCH(QString, application);
    QFETCH(QString, expected);
    ScratchInstallation installation(reporter());
    if (!followsVariables) {
        if (data != QLatin1String("/share") || expected != data)
            QSKIP("the location is the user's own");
        expected = installation.dataHome();
    }
    installation.setVariable(QStringLiteral("XDG_DATA_HOME"), data);
    const QStringList answers =
        installation.run({QStringLiteral("org=") + organization, QStringLiteral("app=") + application,
                          QStringLiteral("appdataPath")});
    QCOMPARE(answers, lines({expected + QStringLiteral("/VANTORIS/product/")}));
}

void tst_path_locations::appdataPathFollowsTheHome()
{
    const ScratchInstallation installation(reporter());
    // Without another name the application has that of its program.
    const QString data = installation.dataHome() + QStringLiteral("/VANTORIS/product/");
    QCOMPARE(installation.run({QStringLiteral("appdataPath"), QStringLiteral("logPath")}),
             lines({data, data + QStringLiteral("log/")}));
}

void tst_path_locations::userdataPathFollowsTheDocuments()
{
    if (!followsVariables)
        QSKIP("the location is the user's own");
    const ScratchInstallation installation(reporter());
    QVERIFY(QDir().mkpath(installation.home() + QStringLiteral(".config")));
    QFile places(installation.home() + QStringLiteral(".config/user-dirs.dirs"));
    QVERIFY(places.open(QIODevice::WriteOnly));
    places.write("XDG_DOCUMENTS_DIR=\"$HOME/Papers\"\n");
    places.close();
    QCOMPARE(installation.run({QStringLiteral("userdataPath")}),
             lines({installation.home() + QStringLiteral("Papers/VANTORIS/product/")}));
}

void tst_path_locations::programdataPathHasTheFamilysName()
{
    ScratchInstallation installation(reporter());
    installation.setVariable(QStringLiteral("PROGRAMDATA"), installation.home() + QStringLiteral("all"));
    const QString expected = installation.home() + QStringLiteral("all/VANTORIS/tessera/");
    QCOMPARE(installation.run({QStringLiteral("programdataPath")}), lines({expected}));
    QVERIFY(!QDir(expected).exists());
    QCOMPARE(installation.run({QStringLiteral("programdataPath+")}), lines({expected}));
    QVERIFY(QDir(expected).exists());
}

void tst_path_locations::staticObjectsMayAsk()
{
    ScratchInstallation installation(reporter());
    installation.setVariable(QStringLiteral("PROGRAMDATA"), QStringLiteral("/all"));
    QCOMPARE(installation.run({QStringLiteral("early")}),
             lines({QStringLiteral("/all/VANTORIS/tessera/early/")}));
}

void tst_path_locations::withoutAnApplicationQtWarns()
{
    const ScratchInstallation installation(reporter());
    // The home is the current directory there.
    const QByteArray expected =
        QDir(installation.home() + QStringLiteral("..")).canonicalPath().toUtf8()
        + "/\nQCoreApplication::applicationDirPath: Please instantiate the QApplication object first\n";
    QCOMPARE(installation.runForErrors({QStringLiteral("none")}), expected);
}

QTEST_GUILESS_MAIN(tst_path_locations)
#include "tst_path_locations.moc"
