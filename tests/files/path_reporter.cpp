// SPDX-License-Identifier: MIT
// Tells what CPath answers in a program that lies where it was copied to. The arguments are carried out in
// their order: "app=NAME" and "org=NAME" name the application and the organization, "umask=OCTAL" sets the
// umask, and every other argument is a function of CPath, whose result is printed; a "+" behind its name
// asks it to create the directory. The only argument "early" prints what a static object of this program was
// given, "none" asks without an application.
#include <CPath.h>

#include <QCoreApplication>
#include <QVector>

#include <cstdio>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace {

struct Location
{
    const char *name;
    QString (*path)();
};

struct Directory
{
    const char *name;
    QString (*path)(bool create);
};

constexpr Location locations[] = {
    {"installPath", CPath::installPath},
    {"productName", CPath::productName},
    {"appdataPath", CPath::appdataPath},
    {"userdataPath", CPath::userdataPath},
};

constexpr Directory directories[] = {
    {"programdataPath", CPath::programdataPath},
    {"binPath", CPath::binPath},
    {"libPath", CPath::libPath},
    {"etcPath", CPath::etcPath},
    {"txtPath", CPath::txtPath},
    {"imagePath", CPath::imagePath},
    {"docPath", CPath::docPath},
    {"constConfigPath", CPath::constConfigPath},
    {"constConfigOdictPath", CPath::constConfigOdictPath},
    {"constDataPath", CPath::constDataPath},
    {"configPath", CPath::configPath},
    {"logPath", CPath::logPath},
    {"motorPath", CPath::motorPath},
    {"paramPath", CPath::paramPath},
    {"dataPath", CPath::dataPath},
    {"projectPath", CPath::projectPath},
};

// Asked for while static objects are built, before main().
const QString early = CPath::addPathToPath(CPath::programdataPath(false), QStringLiteral("early"));

void print(const QString &line)
{
    std::printf("%s\n", line.toUtf8().constData());
}

bool report(QString name)
{
    const bool create = name.endsWith(QLatin1Char('+'));
    if (create)
        name.chop(1);
    for (const Location &location : locations) {
        if (name == QLatin1String(location.name)) {
            print(location.path());
            return !create;
        }
    }
    for (const Directory &directory : directories) {
        if (name == QLatin1String(directory.name)) {
            print(directory.path(create));
            return true;
        }
    }
    return false;
}

void setUmask(const QString &octal)
{
#ifdef Q_OS_UNIX
    umask(static_cast<mode_t>(octal.toUInt(nullptr, 8)));
#else
    Q_UNUSED(octal)
#endif
}

bool carryOut(const QString &argument)
{
    const QString value = argument.section(QLatin1Char('='), 1);
    if (argument.startsWith(QLatin1String("app=")))
        QCoreApplication::setApplicationName(value);
    else if (argument.startsWith(QLatin1String("org=")))
        QCoreApplication::setOrganizationName(value);
    else if (argument.startsWith(QLatin1String("umask=")))
        setUmask(value);
    else
        return report(argument);
    return true;
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc == 2 && qstrcmp(argv[1], "early") == 0) {
        print(early);
        return 0;
    }
    if (argc == 2 && qstrcmp(argv[1], "none") == 0)
        return report(QStringLiteral("installPath")) ? 0 : 1;
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    for (const QString &argument : arguments) {
        if (!carryOut(argument))
            return 1;
    }
    return 0;
}
