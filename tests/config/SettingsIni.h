// SPDX-License-Identifier: MIT
#ifndef SETTINGSINI_H
#define SETTINGSINI_H

#include <CSettingsFile.h>

#include <LineEnds.h>

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

// INI files in a directory of their own.
class SettingsIni
{
public:
    QString path(const QString &name = QStringLiteral("settings.ini")) const
    {
        return mDirectory.filePath(name);
    }

    std::unique_ptr<CSettingsFile> open(const QString &name = QStringLiteral("settings.ini")) const
    {
        return std::make_unique<CSettingsFile>(path(name), QSettings::IniFormat, nullptr);
    }

    QByteArray contents(const QString &name = QStringLiteral("settings.ini")) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? withPlainLineEnds(file.readAll())
                                              : QByteArray("(cannot be read)");
    }

    // Settings read from a file with these contents. QSettings remembers the values of a file by its name,
    // with their types; under a new name it has to read the text.
    std::unique_ptr<CSettingsFile> read(const QByteArray &contents)
    {
        const QString name = QStringLiteral("read%1.ini").arg(++mCount);
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size())
            qFatal("%s cannot be written", qUtf8Printable(name));
        file.close();
        return open(name);
    }

    // What a program started later reads from the settings written so far.
    std::unique_ptr<CSettingsFile> reread(CSettingsFile &written)
    {
        written.sync();
        return read(contents());
    }

private:
    QTemporaryDir mDirectory;
    int mCount = 0;
};

#endif // SETTINGSINI_H
