// SPDX-License-Identifier: MIT
#include "Commands.h"
#include "ParameterChange.h"
#include "ParameterListFile.h"

#include <CDataTypeParser.h>

#include <vector>

namespace j6tool {

namespace {

using Rows = std::vector<QStringList>;

void addRow(Rows &rows, const char *difference, const Parameter &parameter, const QString &before,
            const QString &after)
{
    rows.push_back({QLatin1String(difference), parameter.index.text(), parameter.name, before, after});
}

QString typedValue(const Parameter &parameter)
{
    return CDataTypeParser::typeToStr(parameter.type) + QLatin1Char(' ') + describedValue(parameter);
}

QString unitCode(const Parameter &parameter)
{
    const QString text = CUnitParser::unitStr(parameter.unit);
    const QString code = QString::number(parameter.unit);
    return text.isEmpty() ? code : QStringLiteral("%1 %2").arg(code, text);
}

// A number in another unit is another value even if its bytes are the same.
void compare(Rows &rows, const Parameter &before, const Parameter &after)
{
    if (before.type != after.type) {
        addRow(rows, "other type", before, typedValue(before), typedValue(after));
    } else if (before.bytes != after.bytes) {
        const ParameterChange change = describedChange(before, after);
        addRow(rows, "changed", before, change.before, change.after);
    }
    if (before.unit != after.unit)
        addRow(rows, "other unit", before, unitCode(before), unitCode(after));
    if (before.name != after.name)
        addRow(rows, "other name", before, before.name, after.name);
}

Rows differences(const ParameterList &before, const ParameterList &after)
{
    Rows rows;
    for (int i = 0; i < before.count(); ++i) {
        const int other = after.find(before.at(i).index);
        if (other < 0)
            addRow(rows, "missing", before.at(i), describedValue(before.at(i)), QString());
        else
            compare(rows, before.at(i), after.at(other));
    }
    for (int i = 0; i < after.count(); ++i) {
        if (before.find(after.at(i).index) < 0)
            addRow(rows, "additional", after.at(i), QString(), describedValue(after.at(i)));
    }
    return rows;
}

} // namespace

Result<ExitCode> runDiff(const Arguments &arguments, Output &output)
{
    const Result<ParameterListFile> before = ParameterListFile::read(arguments.value(QStringLiteral("file")));
    if (!before)
        return before.error();
    const Result<ParameterListFile> after = ParameterListFile::read(arguments.value(QStringLiteral("with")));
    if (!after)
        return after.error();
    const Rows rows = differences(before->list(), after->list());
    if (rows.empty()) {
        output.writeLine(QStringLiteral("no differences"));
        return Done;
    }
    const Table table({{QStringLiteral("difference")},
                       {QStringLiteral("index")},
                       {QStringLiteral("name")},
                       {QStringLiteral("old")},
                       {QStringLiteral("new")}},
                      rows);
    table.write(output, TableFormat::Aligned);
    return Differences;
}

} // namespace j6tool
