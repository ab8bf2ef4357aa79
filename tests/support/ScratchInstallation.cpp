// SPDX-License-Identifier: MIT
#include "ScratchInstallation.h"

#include "EndedProgram.h"
#include "LineEnds.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace {

constexpr int timeout = 600000; // milliseconds; a checker of memory use may run between

struct Outcome
{
    QByteArray output;
    QByteArray error;
    bool succeeded = false;
};

// The system's environment without what leads to the user's own directories.
QProcessEnvironment ownEnvironment(const QString &home)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QStringList names = environment.keys();
    for (const QString &name : names) {
        if (name.startsWith(QLatin1String("XDG_")))
            environment.remove(name);
    }
    environment.remove(QStringLiteral("PROGRAMDATA"));
    environment.insert(QStringLiteral("HOME"), home.chopped(1));
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    return environment;
}

Outcome outcomeOf(const QString &program, const QStringList &arguments, const QString &workingDirectory,
                  const QProcessEnvironment &environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(workingDirectory);
    process.start(program, arguments);
    const bool ended = process.waitForFinished(timeout);
    const bool succeeded = ended && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    return {withPlainLineEnds(process.readAllStandardOutput()),
            withPlainLineEnds(process.readAllStandardError()), succeeded};
}

QStringList contentsOf(const QString &directory, const QString &shownAs)
{
    QStringList names;
    QDirIterator entries(directory, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString path = entries.next();
        names += shownAs + path.mid(directory.size())
                 + (entries.fileInfo().isDir() ? QStringLiteral("/") : QString());
    }
    return names;
}

} // namespace

ScratchInstallation::ScratchInstallation(const QString &program, const QString &root)
{
    // Programs see their own path without symbolic links.
    const QString base = QFileInfo(mDirectory.path()).canonicalFilePath() + QLatin1Char('/');
    mRoot = base + root + QLatin1Char('/');
    mHome = base + QStringLiteral("home/");
    mProgram = mRoot + QStringLiteral("bin/") + QFileInfo(program).fileName();
    mEnvironment = ownEnvironment(mHome);
    mComplete = mDirectory.isValid() && QDir().mkpath(mRoot + QStringLiteral("bin")) && QDir().mkpath(mHome)
                && QFile::copy(program, mProgram);
}

ScratchInstallation::~ScratchInstallation()
{
    removeWithEndedProgram(mDirectory.path());
}

QString ScratchInstallation::dataHome() const
{
#ifdef Q_OS_WIN
    // The location is one for this program, the only one that is named for it.
    const QString own = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    return own.left(own.lastIndexOf(QLatin1Char('/')));
#else
    return mHome + QStringLiteral(".local/share");
#endif
}

QString ScratchInstallation::documents() const
{
#ifdef Q_OS_WIN
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
#else
    return mHome + QStringLiteral("Documents");
#endif
}

void ScratchInstallation::setVariable(const QString &name, const QString &value)
{
    mEnvironment.insert(name, value);
}

bool ScratchInstallation::writeFile(const QString &pathBelowRoot, const QByteArray &contents) const
{
    QFile file(mRoot + pathBelowRoot);
    return QDir().mkpath(QFileInfo(file).absolutePath()) && file.open(QIODevice::WriteOnly)
           && file.write(contents) == contents.size();
}

QStringList ScratchInstallation::run(const QStringList &arguments) const
{
    const Outcome outcome = outcomeOf(mProgram, arguments, mHome, mEnvironment);
    if (!outcome.succeeded || !outcome.error.isEmpty())
        return {QStringLiteral("failed: ") + QString::fromUtf8(outcome.output + outcome.error)};
    QStringList lines = QString::fromUtf8(outcome.output).split(QLatin1Char('\n'));
    lines.removeLast(); // behind the last line feed
    return lines;
}

QByteArray ScratchInstallation::runForErrors(const QStringList &arguments) const
{
    const Outcome outcome = outcomeOf(mProgram, arguments, mHome, mEnvironment);
    return outcome.output + outcome.error;
}

QStringList ScratchInstallation::contents() const
{
    QStringList names =
        contentsOf(mRoot, QStringLiteral("root/")) + contentsOf(mHome, QStringLiteral("home/"));
    names.removeAll(QStringLiteral("root/") + mProgram.mid(mRoot.size()));
    names.sort();
    return names;
}
