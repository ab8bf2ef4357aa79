// SPDX-License-Identifier: MIT
#ifndef SCRATCHINSTALLATION_H
#define SCRATCHINSTALLATION_H

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

// An installation of one program in a temporary directory: the program is copied to bin/ below root() and
// runs there with a home of its own. XDG_* and PROGRAMDATA are unset until a test sets them.
class ScratchInstallation
{
public:
    // `root` is the name of the installation's directory, which may have parents.
    explicit ScratchInstallation(const QString &program, const QString &root = QStringLiteral("product"));

    ~ScratchInstallation();
    ScratchInstallation(const ScratchInstallation &) = delete;
    ScratchInstallation &operator=(const ScratchInstallation &) = delete;

    // Whether the program could be copied; without it every run fails.
    bool isComplete() const { return mComplete; }

    // These end with "/".
    QString root() const { return mRoot; }
    QString home() const { return mHome; }

    // Where programs keep the user's application data and documents unless a variable says otherwise, without
    // "/" at the end. On Windows, where no variable does, these are not in the home.
    QString dataHome() const;
    QString documents() const;

    void setVariable(const QString &name, const QString &value);
    bool writeFile(const QString &pathBelowRoot, const QByteArray &contents) const;

    // The lines that the program writes to its standard output, in UTF-8. Where it fails or writes to its
    // standard error there is one line that tells this.
    QStringList run(const QStringList &arguments) const;
    // Both outputs of a run that may fail, one behind the other.
    QByteArray runForErrors(const QStringList &arguments) const;

    // Everything below the installation and the home, sorted: directories with a "/" at their end, "root/"
    // and "home/" in front. The program itself is left out.
    QStringList contents() const;

private:
    QTemporaryDir mDirectory;
    QString mRoot;
    QString mHome;
    QString mProgram;
    QProcessEnvironment mEnvironment;
    bool mComplete;
};

#endif // SCRATCHINSTALLATION_H
