// SPDX-License-Identifier: MIT
#include "SettingsCopy.h"

#include "InputFile.h"
#include "OutputFile.h"

#include <QFile>
#include <QTextCodec>
#include <QUuid>

#include <algorithm>
#include <limits>

namespace j6tool {

namespace {

constexpr char byteOrderMark[] = "\xEF\xBB\xBF";

// QSettings writes a line for each entry, a line for each section and empty ones, and ends them all.
int entryCount(const QByteArray &contents)
{
    const QList<QByteArray> lines = contents.split('\n');
    return int(std::count_if(lines.begin(), lines.end(), [](const QByteArray &line) {
        return !line.trimmed().isEmpty() && !line.startsWith('[');
    }));
}

// What QSettings cannot read is the end for it, and no error. Behind all entries of the copy there is
// therefore one more, which it has to find. An unfinished line is ended first, also where a backslash
// continues it.
QByteArray endMark(const QString &name)
{
    return "\n\n[" + name.toLatin1() + "]\nend=1\n";
}

QString endKey(const QString &name)
{
    return name + QLatin1String("/end");
}

} // namespace

// A byte-order mark says that the file is UTF-8. QSettings itself takes it for a part of the first line.
std::optional<Error> SettingsCopy::open(const QByteArray &contents)
{
    const bool isMarked = contents.startsWith(byteOrderMark);
    const QByteArray text = isMarked ? contents.mid(int(sizeof byteOrderMark) - 1) : contents;
    const QString fileName = mDirectory.filePath(QStringLiteral("settings.ini"));
    if (!mDirectory.isValid())
        return Error{QStringLiteral("no temporary copy of it: %1").arg(mDirectory.errorString())};
    mEnd = QUuid::createUuid().toString(QUuid::WithoutBraces);
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || !writeAll(file, text) || !writeAll(file, endMark(mEnd)))
        return Error{QStringLiteral("no temporary copy of it: %1").arg(file.errorString())};
    file.close();
    mSettings = std::make_unique<CSettingsFile>(fileName, QSettings::IniFormat, nullptr);
    // It passes over lines that it does not understand, and loses them when it writes.
    mSettings->setIniCodec(isMarked ? QTextCodec::codecForName("UTF-8") : nullptr);
    const bool isRead = mSettings->allKeys().contains(endKey(mEnd));
    mSettings->setIniCodec(static_cast<QTextCodec *>(nullptr));
    if (mSettings->status() != QSettings::NoError)
        return Error{QStringLiteral("is no settings file in INI form")};
    if (!isRead) {
        return Error{QStringLiteral("cannot be read to its end: a quotation mark is missing there, or its "
                                    "temporary copy cannot be read")};
    }
    return std::nullopt;
}

Result<QByteArray> SettingsCopy::contents() const
{
    mSettings->remove(endKey(mEnd));
    const int count = mSettings->allKeys().size();
    mSettings->sync();
    Result<QByteArray> contents = readInput(mSettings->fileName(), std::numeric_limits<int>::max() - 1);
    if (!contents)
        return Error{QStringLiteral("its temporary copy: %1").arg(contents.error().text)};
    const bool isWhole = mSettings->status() == QSettings::NoError && contents->endsWith('\n')
                         && entryCount(*contents) == count;
    if (!isWhole)
        return Error{QStringLiteral("its temporary copy cannot be written")};
    return contents;
}

} // namespace j6tool
