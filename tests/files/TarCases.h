// SPDX-License-Identifier: MIT
#ifndef TARCASES_H
#define TARCASES_H

#include "TarWriter.h"

#include <CTar.h>
#include <LoggedTest.h>

#include <QTemporaryDir>
#include <QTest>

#include <limits>

inline QString notATarArchive()
{
    return QStringLiteral(
        "ERROR : This is not a tar archive. Header.magic = \"512\" but \"ustar\" was expected !");
}

inline QString nothingOpen()
{
    return QStringLiteral("ERROR: You must open an archive first !");
}

inline QString noSuchName()
{
    return QStringLiteral("ERROR: File \"%1\" does not exist in the archive !");
}

inline QString tooShort(int count)
{
    return QStringLiteral("ERROR : The file ist too short. Only ") + QString::number(count)
           + QStringLiteral(" bytes read but 512 expected !");
}

inline CTarFileInfo record(int type, const char *name, const char *linkName, qint64 size, qint64 offset)
{
    CTarFileInfo info;
    info.type = type;
    info.name = QLatin1String(name);
    info.linkName = QLatin1String(linkName);
    info.size = size;
    info.offset = offset;
    return info;
}

// Three files, the second of which has the size that is asked for.
inline QList<tar::Member> threeFiles(int size = 513)
{
    return {{"first", "1st"}, {"second", QByteArray(size, 'x')}, {"third", "the third"}};
}

// A test with a directory of its own for the archives that it makes.
class TarTest : public LoggedTest
{
protected:
    QString path(const char *name) const { return mDir.filePath(QLatin1String(name)); }

    // The archive that a test works on.
    QString written(const QByteArray &bytes) const
    {
        const QString fileName = path("archive.tar");
        return tar::write(fileName, bytes) ? fileName : QString();
    }

    QTemporaryDir mDir;
};

#endif // TARCASES_H
