// SPDX-License-Identifier: MIT
#include "Commands.h"
#include "ParameterChange.h"
#include "ParameterListFile.h"
#include "ParameterValue.h"
#include "ValueParser.h"
#include "VisibleText.h"

#include <QHash>

namespace j6tool {

namespace {

// The position of the parameter that a key names: an index goes before a name.
Result<int> findParameter(const ParameterList &list, const QString &key)
{
    if (const std::optional<ObjectIndex> index = ObjectIndex::fromText(key)) {
        const int position = list.find(*index);
        if (position < 0)
            return callError(key, QStringLiteral("there is no parameter with this index"));
        return position;
    }
    const std::vector<int> positions = list.named(key);
    if (positions.empty())
        return callError(key, QStringLiteral("there is no parameter of this name or index"));
    if (positions.size() > 1) {
        return callError(key,
                         QStringLiteral("more than one parameter has this name: %1 and %2")
                             .arg(list.at(positions[0]).index.text(), list.at(positions[1]).index.text()));
    }
    return positions.front();
}

QString changeLine(const Parameter &parameter, const QByteArray &bytes)
{
    const QString head =
        parameter.index.text() + QLatin1Char(' ') + visible(parameter.name) + QLatin1String(": ");
    if (isSameValue(parameter.bytes, bytes, parameter.type))
        return head + describedValue(parameter) + QLatin1String(" (unchanged)");
    Parameter edited = parameter;
    edited.bytes = bytes;
    const ParameterChange change = describedChange(parameter, edited);
    return head + change.before + QLatin1String(" -> ") + change.after;
}

struct Edit
{
    int position;
    QByteArray bytes;
};

Result<std::vector<Edit>> parseEdits(const Arguments &arguments, const ParameterList &list)
{
    const Command *command = findCommand(QStringLiteral("set"));
    std::vector<Edit> edits;
    QHash<int, QString> keyOf;
    for (const QString &key : arguments.keys()) {
        if (hasOption(*command, key))
            continue;
        const Result<int> position = findParameter(list, key);
        if (!position)
            return position.error();
        if (keyOf.contains(*position))
            return callError(
                key, QStringLiteral("is the same parameter as %1").arg(quoted(keyOf.value(*position))));
        keyOf.insert(*position, key);
        const Result<QByteArray> bytes = bytesFromText(arguments.value(key), list.at(*position).type);
        if (!bytes)
            return callError(key, bytes.error().text);
        edits.push_back({*position, *bytes});
    }
    if (edits.empty())
        return callError(QStringLiteral("no parameter is given (NAME=TEXT)"));
    return edits;
}

} // namespace

Result<ExitCode> runSet(const Arguments &arguments, Output &output)
{
    Result<ParameterListFile> file = ParameterListFile::read(arguments.value(QStringLiteral("file")));
    if (!file)
        return file.error();
    const Result<std::vector<Edit>> edits = parseEdits(arguments, file->list());
    if (!edits)
        return edits.error();
    QString changes;
    for (const Edit &edit : *edits) {
        const Parameter &parameter = file->list().at(edit.position);
        changes += changeLine(parameter, edit.bytes) + QLatin1Char('\n');
        if (!isSameValue(parameter.bytes, edit.bytes, parameter.type))
            file->setBytes(edit.position, edit.bytes);
    }
    // What cannot be told is not done, and what cannot be done is not told.
    const auto tell = [&output, &changes] {
        output.write(changes);
        return output.flush();
    };
    if (const std::optional<Error> error = file->write(arguments.value(QStringLiteral("out")), tell))
        return *error;
    return Done;
}

} // namespace j6tool
