// SPDX-License-Identifier: MIT
#include "Commands.h"

#include <CDataTypeParser.h>
#include <CUnitParser.h>

#include <vector>

namespace j6tool {

namespace {

// The limits of the largest numbers have hundreds of digits.
constexpr int limitWidth = 24;

QStringList typeRow(NTypes::eTypes_t type)
{
    return {QString::number(type),
            CDataTypeParser::typeToStr(type),
            CDataTypeParser::typeToEnum(type),
            QString::number(CDataTypeParser::typeSize(type)),
            CDataTypeParser::minTypeValue(type),
            CDataTypeParser::maxTypeValue(type)};
}

QStringList unitRow(Nj6Units::eUnit_t unit)
{
    return {QString::number(unit), CUnitParser::unitStr(unit), CUnitParser::unitDescription(unit),
            QString::number(CUnitParser::digits(unit)),
            CUnitParser::hasLinear(unit) ? QString::number(CUnitParser::toLinear(unit)) : QString()};
}

Result<ExitCode> writeCatalogue(const Arguments &arguments, Output &output,
                                const std::vector<Table::Column> &columns,
                                const std::vector<QStringList> &rows)
{
    const Result<TableFormat> format = formatOption(arguments);
    if (!format)
        return format.error();
    Table(columns, rows).write(output, *format);
    return Done;
}

} // namespace

Result<ExitCode> runTypes(const Arguments &arguments, Output &output)
{
    std::vector<QStringList> rows;
    for (auto row = CDataTypeParser::mTypeDataMap.cbegin(); row != CDataTypeParser::mTypeDataMap.cend();
         ++row)
        rows.push_back(typeRow(row.key()));
    return writeCatalogue(arguments, output,
                          {{QStringLiteral("number"), true},
                           {QStringLiteral("name")},
                           {QStringLiteral("enumerator")},
                           {QStringLiteral("size"), true},
                           {QStringLiteral("min"), false, limitWidth},
                           {QStringLiteral("max"), false, limitWidth}},
                          rows);
}

Result<ExitCode> runUnits(const Arguments &arguments, Output &output)
{
    std::vector<QStringList> rows;
    for (auto row = CUnitParser::mDigitsMap.cbegin(); row != CUnitParser::mDigitsMap.cend(); ++row)
        rows.push_back(unitRow(row.key()));
    return writeCatalogue(arguments, output,
                          {{QStringLiteral("code"), true},
                           {QStringLiteral("text")},
                           {QStringLiteral("description")},
                           {QStringLiteral("digits"), true},
                           {QStringLiteral("linear"), true}},
                          rows);
}

} // namespace j6tool
