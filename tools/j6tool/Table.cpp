// SPDX-License-Identifier: MIT
#include "Table.h"

#include "VisibleText.h"

#include <algorithm>
#include <utility>

namespace j6tool {

namespace {

QString padded(const QString &cell, int width, bool toTheRight)
{
    const QString blanks(std::max(0, width - displayWidth(cell)), QLatin1Char(' '));
    return toTheRight ? blanks + cell : cell + blanks;
}

QString withoutTrailingBlanks(QString line)
{
    while (line.endsWith(QLatin1Char(' ')))
        line.chop(1);
    return line;
}

// RFC 4180 ends a record with CR LF.
QString csvRecord(const QStringList &cells)
{
    QStringList fields;
    for (const QString &cell : cells)
        fields.append(csvField(visible(cell)));
    return fields.join(QLatin1Char(',')) + QLatin1String("\r\n");
}

} // namespace

Table::Table(std::vector<Column> columns, int rowCount, RowMaker rowMaker)
    : mColumns(std::move(columns)), mRowCount(rowCount), mRowMaker(std::move(rowMaker))
{}

Table::Table(std::vector<Column> columns, const std::vector<QStringList> &rows)
    : Table(std::move(columns), int(rows.size()), [rows](int row) { return rows[std::size_t(row)]; })
{}

void Table::write(Output &output, TableFormat format) const
{
    switch (format) {
    case TableFormat::Aligned:
        return writeAligned(output);
    case TableFormat::Csv:
        return writeCsv(output);
    case TableFormat::Json:
        return writeJson(output);
    }
}

QStringList Table::shownCells(int row) const
{
    QStringList cells = mRowMaker(row);
    for (int i = 0; i < cells.size(); ++i) {
        const int cutWidth = mColumns[std::size_t(i)].cutWidth;
        cells[i] = visible(cells[i]);
        if (cutWidth > 0)
            cells[i] = cutToWidth(cells[i], cutWidth);
    }
    return cells;
}

QString Table::alignedLine(const QStringList &cells, const std::vector<int> &widths) const
{
    QStringList columns;
    for (int i = 0; i < cells.size(); ++i)
        columns.append(padded(cells[i], widths[std::size_t(i)], mColumns[std::size_t(i)].isNumber));
    return withoutTrailingBlanks(columns.join(QLatin1String("  ")));
}

void Table::writeAligned(Output &output) const
{
    QStringList headings;
    std::vector<int> widths;
    for (const Column &column : mColumns) {
        headings.append(column.name.toUpper());
        widths.push_back(displayWidth(headings.last()));
    }
    for (int row = 0; row < mRowCount; ++row) {
        const QStringList cells = shownCells(row);
        for (std::size_t i = 0; i < widths.size(); ++i)
            widths[i] = std::max(widths[i], displayWidth(cells[int(i)]));
    }
    output.writeLine(alignedLine(headings, widths));
    for (int row = 0; row < mRowCount && output.isGood(); ++row)
        output.writeLine(alignedLine(shownCells(row), widths));
}

void Table::writeCsv(Output &output) const
{
    QStringList names;
    for (const Column &column : mColumns)
        names.append(column.name);
    output.write(csvRecord(names));
    for (int row = 0; row < mRowCount && output.isGood(); ++row)
        output.write(csvRecord(mRowMaker(row)));
}

QString Table::jsonObject(int row) const
{
    const QStringList cells = mRowMaker(row);
    QStringList members;
    for (int i = 0; i < cells.size(); ++i) {
        const Column &column = mColumns[std::size_t(i)];
        const QString number = cells[i].isEmpty() ? QStringLiteral("null") : cells[i];
        members.append(jsonString(column.name) + QLatin1String(": ")
                       + (column.isNumber ? number : jsonString(cells[i])));
    }
    return QLatin1Char('{') + members.join(QLatin1String(", ")) + QLatin1Char('}');
}

void Table::writeJson(Output &output) const
{
    output.write(QStringLiteral("["));
    for (int row = 0; row < mRowCount && output.isGood(); ++row) {
        output.write(row == 0 ? QStringLiteral("\n  ") : QStringLiteral(",\n  "));
        output.write(jsonObject(row));
    }
    output.write(mRowCount == 0 ? QStringLiteral("]\n") : QStringLiteral("\n]\n"));
}

} // namespace j6tool
