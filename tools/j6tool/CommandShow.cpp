// SPDX-License-Identifier: MIT
#include "Commands.h"
#include "HexText.h"
#include "ParameterListFile.h"
#include "ParameterValue.h"

#include <CDataTypeParser.h>
#include <CUnitParser.h>

#include <vector>

namespace j6tool {

namespace {

constexpr int rawBytesWidth = 33; // 16 bytes and the ellipsis
constexpr int textWidth = 40;

bool matches(const Parameter &parameter, const QString &filter)
{
    const auto contains = [&filter](const QString &text) {
        return text.contains(filter, Qt::CaseInsensitive);
    };
    return contains(parameter.index.text()) || contains(parameter.name)
           || contains(CDataTypeParser::typeToStr(parameter.type))
           || contains(CUnitParser::unitStr(parameter.unit));
}

std::vector<int> matchingPositions(const ParameterList &list, const QString &filter)
{
    std::vector<int> positions;
    for (int i = 0; i < list.count(); ++i) {
        if (matches(list.at(i), filter))
            positions.push_back(i);
    }
    return positions;
}

QStringList cells(const Parameter &parameter)
{
    return {parameter.index.text(),
            parameter.name,
            CDataTypeParser::typeToStr(parameter.type),
            hexFromBytes(parameter.bytes),
            displayText(valueFromBytes(parameter.bytes, parameter.type), parameter.unit),
            CUnitParser::unitStr(parameter.unit)};
}

} // namespace

Result<ExitCode> runShow(const Arguments &arguments, Output &output)
{
    const Result<TableFormat> format = formatOption(arguments);
    if (!format)
        return format.error();
    const Result<ParameterListFile> file = ParameterListFile::read(arguments.value(QStringLiteral("file")));
    if (!file)
        return file.error();
    const ParameterList &list = file->list();
    const std::vector<int> positions = matchingPositions(list, arguments.value(QStringLiteral("filter")));
    const auto row = [&](int number) { return cells(list.at(positions[std::size_t(number)])); };
    const Table table({{QStringLiteral("index")},
                       {QStringLiteral("name")},
                       {QStringLiteral("type")},
                       {QStringLiteral("raw"), false, rawBytesWidth},
                       {QStringLiteral("text"), false, textWidth},
                       {QStringLiteral("unit")}},
                      int(positions.size()), row);
    table.write(output, *format);
    return Done;
}

} // namespace j6tool
