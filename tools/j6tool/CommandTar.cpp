// SPDX-License-Identifier: MIT
#include "Commands.h"
#include "InputFile.h"
#include "OutputFile.h"
#include "VisibleText.h"

#include <CTar.h>

#include <QFileInfo>

#include <vector>

namespace j6tool {

namespace {

QString typeName(int type)
{
    switch (type) {
    case CTarFileInfo::E_TYPE_FILE:
        return QStringLiteral("file");
    case CTarFileInfo::E_TYPE_LINK:
        return QStringLiteral("link");
    case CTarFileInfo::E_TYPE_DIRECTORY:
        return QStringLiteral("directory");
    default:
        return QStringLiteral("other");
    }
}

// The library takes names as Latin-1; most archives have them in UTF-8.
QString shownName(const QString &stored)
{
    const QByteArray bytes = stored.toLatin1();
    const QString text = QString::fromUtf8(bytes);
    return text.toUtf8() == bytes ? text : stored;
}

Error scanError(const CTar &archive, const QString &fileName)
{
    const QString what = archive.error().isEmpty() ? QStringLiteral("the size of a member is no octal number")
                                                   : archive.error();
    if (archive.count() == 0)
        return fileError(fileName, what);
    return fileError(fileName, QStringLiteral("after member %1, %2: %3")
                                   .arg(QString::number(archive.count()),
                                        quoted(shownName(archive.names().constLast())), what));
}

std::optional<Error> load(CTar &archive, const QString &fileName)
{
    // Asked first: to open a pipe waits for its writer.
    const QFileInfo info(fileName);
    if (info.exists() && !info.isFile() && !info.isDir())
        return fileError(fileName, QStringLiteral("is no regular file"));
    QFile file(fileName);
    if (std::optional<Error> error = openInput(file))
        return error;
    if (!archive.loadFile(fileName))
        return scanError(archive, fileName);
    return std::nullopt;
}

Result<ExitCode> writeList(const CTar &archive, TableFormat format, Output &output)
{
    const QList<CTarFileInfo> infos = archive.infos();
    const auto row = [&infos](int index) {
        const CTarFileInfo &info = infos.at(index);
        return QStringList{typeName(info.type), QString::number(info.size), shownName(info.name),
                           shownName(info.linkName)};
    };
    Table({{QStringLiteral("type")},
           {QStringLiteral("size"), true},
           {QStringLiteral("name")},
           {QStringLiteral("link")}},
          infos.size(), row)
        .write(output, format);
    return Done;
}

// The members that are shown with this name.
std::vector<int> membersNamed(const CTar &archive, const QString &name)
{
    std::vector<int> members;
    const QStringList names = archive.names();
    for (int i = 0; i < names.size(); ++i) {
        if (shownName(names.at(i)) == name)
            members.push_back(i);
    }
    return members;
}

Result<ExitCode> extract(CTar &archive, const Arguments &arguments, Output &output)
{
    const QString name = arguments.value(QStringLiteral("member"));
    const QString out = arguments.value(QStringLiteral("out"));
    const std::vector<int> members = membersNamed(archive, name);
    if (members.empty())
        return callError(QStringLiteral("member"),
                         QStringLiteral("there is no %1 in the archive").arg(quoted(name)));
    const int member = members.front();
    const CTarFileInfo info = archive.info(member);
    if (info.type != CTarFileInfo::E_TYPE_FILE) {
        return callError(
            QStringLiteral("member"),
            QStringLiteral("%1 is no file (its type: %2)").arg(quoted(name), typeName(info.type)));
    }
    QByteArray data;
    if (!archive.file(member, data)) {
        return fileError(arguments.value(QStringLiteral("file")),
                         QStringLiteral("%1: %2").arg(quoted(name), archive.error()));
    }
    QString line =
        QStringLiteral("%1: %2 bytes -> %3").arg(visible(name), QString::number(data.size()), visible(out));
    if (members.size() > 1)
        line += QStringLiteral(" (the first of %1 members of this name)").arg(members.size());
    // What cannot be told is not done, and what cannot be done is not told.
    const auto tell = [&output, &line] {
        output.writeLine(line);
        return output.flush();
    };
    if (const std::optional<Error> error = makeFile(out, data, tell))
        return *error;
    return Done;
}

} // namespace

Result<ExitCode> runTar(const Arguments &arguments, Output &output)
{
    const Result<TableFormat> format = formatOption(arguments);
    if (!format)
        return format.error();
    const bool hasMember = arguments.contains(QStringLiteral("member"));
    if (hasMember && arguments.value(QStringLiteral("out")).isEmpty())
        return callError(QStringLiteral("out"), QStringLiteral("is missing; member and out go together"));
    if (!hasMember && arguments.contains(QStringLiteral("out")))
        return callError(QStringLiteral("member"), QStringLiteral("is missing; member and out go together"));
    if (hasMember && arguments.contains(QStringLiteral("format")))
        return callError(QStringLiteral("format"), QStringLiteral("is for the list, not for a member"));
    CTar archive;
    if (const std::optional<Error> error = load(archive, arguments.value(QStringLiteral("file"))))
        return *error;
    return hasMember ? extract(archive, arguments, output) : writeList(archive, *format, output);
}

} // namespace j6tool
