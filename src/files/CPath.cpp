// SPDX-License-Identifier: MIT
#include <CPath.h>

#include "SharedDirectory.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegExp>
#include <QStandardPaths>

#include <algorithm>

namespace {

// The functions use these, never the public constants: those may not be built yet in a static initialiser.
constexpr QLatin1String binName("bin/", 4);
constexpr QLatin1String libName("lib/", 4);
constexpr QLatin1String etcName("etc/", 4);
constexpr QLatin1String textName("etc/txt/", 8);
constexpr QLatin1String imageName("etc/image/", 10);
constexpr QLatin1String documentName("etc/doc/", 8);
constexpr QLatin1String constConfigName("etc/conf/", 9);
constexpr QLatin1String constConfigOdictName("etc/conf/odict/", 15);
constexpr QLatin1String constDataName("etc/data/", 9);
constexpr QLatin1String configName("conf/", 5);
constexpr QLatin1String logName("log/", 4);
constexpr QLatin1String motorName("motor/", 6);
constexpr QLatin1String paramName("param/", 6);
constexpr QLatin1String dataName("data/", 5);
constexpr QLatin1String projectName("project/", 8);
constexpr QLatin1String pluginsName("plugins/", 8);
constexpr QLatin1String companyName("VANTORIS/", 9);
constexpr QLatin1String familyName("tessera/", 8);

constexpr QLatin1Char slash('/');

bool isSeparator(QChar character)
{
    return character == slash || character == QDir::separator();
}

bool startsWithSeparator(const QString &path)
{
    return !path.isEmpty() && isSeparator(path.front());
}

bool endsWithSeparator(const QString &path)
{
    return !path.isEmpty() && isSeparator(path.back());
}

QDir installDirectory()
{
    QDir directory(QCoreApplication::applicationDirPath());
    directory.cdUp();
    return directory;
}

// The location without "/name" at its end. The name is a regular expression as it stands.
QString withoutLast(QString location, const QString &name)
{
    return location.remove(QRegExp(QStringLiteral("/%1${1}").arg(name)));
}

// How compare() sees a path: its backslashes are separators before one is looked for at the end.
QString comparable(QString path)
{
    path = QDir::fromNativeSeparators(path);
    return CPath::ensurePathSeparatorAtEnd(path.replace(QLatin1Char('\\'), slash));
}

QString inInstallation(QLatin1String name, bool create)
{
    return CPath::createDirIfWanted(CPath::installPath() + name, create);
}

QString inAppdata(QLatin1String name, bool create)
{
    return CPath::createDirIfWanted(CPath::appdataPath() + name, create);
}

QString inUserdata(QLatin1String name, bool create)
{
    return CPath::createDirIfWanted(CPath::userdataPath() + name, create);
}

} // namespace

const QString CPath::CPATH_BIN = binName;
const QString CPath::CPATH_LIB = libName;
const QString CPath::CPATH_ETC = etcName;
const QString CPath::CPATH_TXT = textName;
const QString CPath::CPATH_IMG = imageName;
const QString CPath::CPATH_DOC = documentName;
const QString CPath::CPATH_CCONF = constConfigName;
const QString CPath::CPATH_CCONFODICT = constConfigOdictName;
const QString CPath::CPATH_CDATA = constDataName;
const QString CPath::CPATH_CONF = configName;
const QString CPath::CPATH_LOG = logName;
const QString CPath::CPATH_MOT = motorName;
const QString CPath::CPATH_PAR = paramName;
const QString CPath::CPATH_DAT = dataName;
const QString CPath::CPATH_PRJ = projectName;
const QString CPath::CPATH_PLUGINS = pluginsName;
const QString CPath::CPATH_COMPANY = companyName;
const QString CPath::CPATH_TESSERA = familyName;

QString CPath::installPath()
{
    return installDirectory().absolutePath() + slash;
}

QString CPath::productName()
{
    return installDirectory().dirName();
}

QString CPath::appdataPath()
{
    QString location = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    location = withoutLast(location, QCoreApplication::applicationName());
    location = withoutLast(location, QCoreApplication::organizationName());
    return location + slash + companyName + productName() + slash;
}

QString CPath::userdataPath()
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return documents + slash + companyName + productName() + slash;
}

QString CPath::programdataPath(bool create)
{
    const QString path = qEnvironmentVariable("PROGRAMDATA") + slash + companyName + familyName;
    return createDirIfWanted(QDir::fromNativeSeparators(path), create);
}

QString CPath::binPath(bool create)
{
    return inInstallation(binName, create);
}

QString CPath::libPath(bool create)
{
    return binPath(create);
}

QString CPath::etcPath(bool create)
{
    return inInstallation(etcName, create);
}

QString CPath::txtPath(bool create)
{
    return inInstallation(textName, create);
}

QString CPath::imagePath(bool create)
{
    return inInstallation(imageName, create);
}

QString CPath::docPath(bool create)
{
    return inInstallation(documentName, create);
}

QString CPath::constConfigPath(bool create)
{
    return inInstallation(constConfigName, create);
}

QString CPath::constConfigOdictPath(bool create)
{
    return inInstallation(constConfigOdictName, create);
}

QString CPath::constDataPath(bool create)
{
    return inInstallation(constDataName, create);
}

QString CPath::configPath(bool create)
{
    return inAppdata(configName, create);
}

QString CPath::logPath(bool create)
{
    return inAppdata(logName, create);
}

QString CPath::motorPath(bool create)
{
    return inUserdata(motorName, create);
}

QString CPath::paramPath(bool create)
{
    return inUserdata(paramName, create);
}

QString CPath::dataPath(bool create)
{
    return inUserdata(dataName, create);
}

QString CPath::projectPath(bool create)
{
    return inUserdata(projectName, create);
}

QString CPath::createDirIfWanted(QString path, bool create)
{
    // Only what was made gets the permissions: something else in the way keeps its own.
    if (create && !QDir(path).exists() && makeNewDirectory(path))
        QFile::setPermissions(path, sharedDirectory);
    return path;
}

bool CPath::doesFilenameContainPath(const QString &fileName)
{
    return std::any_of(fileName.begin(), fileName.end(), isSeparator);
}

QString CPath::prependPathIfNoPathIsGiven(const QString &fileName, const QString &referenceFile)
{
    if (fileName.isEmpty() || doesFilenameContainPath(fileName))
        return fileName;
    return QDir(QFileInfo(referenceFile).absolutePath()).absoluteFilePath(fileName);
}

QString CPath::trimPathIfPathIsEqual(const QString &filePath, const QString &dirPath)
{
    const QFileInfo file(filePath);
    if (filePath.isEmpty() || file.dir() != QDir(dirPath))
        return filePath;
    return file.fileName();
}

QString CPath::filePath(const QString &path)
{
    return path.isEmpty() ? QString() : QFileInfo(path).absolutePath();
}

QString CPath::ensurePathSeparatorAtEnd(QString path)
{
    if (!endsWithSeparator(path))
        path += slash;
    return path;
}

QString CPath::ensurePathSeparatorAtStart(const QString &path)
{
    return startsWithSeparator(path) ? path : slash + path;
}

QString CPath::removePathSeparatorAtStart(const QString &path)
{
    return startsWithSeparator(path) ? path.mid(1) : path;
}

QString CPath::removePathSeparatorAtEnd(const QString &path)
{
    return endsWithSeparator(path) ? path.chopped(1) : path;
}

QString CPath::addPathToPath(const QString &path, const QString &subPath)
{
    return ensurePathSeparatorAtEnd(ensurePathSeparatorAtEnd(path) + subPath);
}

QString CPath::addFileNameToPath(const QString &path, const QString &fileName)
{
    return ensurePathSeparatorAtEnd(path) + fileName;
}

QString CPath::cleanFileName(const QString &path)
{
    const QFileInfo file(path);
    const QString name = file.fileName().simplified().remove(QRegExp(QStringLiteral("[<>:!?|\"]")));
    return file.absolutePath() + slash + name;
}

bool CPath::compare(const QString &a, const QString &b)
{
    return QString::compare(comparable(a), comparable(b), Qt::CaseInsensitive) == 0;
}
