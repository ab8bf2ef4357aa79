// SPDX-License-Identifier: MIT
#ifndef J6TOOL_TABLE_H
#define J6TOOL_TABLE_H

#include "Output.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace j6tool {

enum class TableFormat {
    Aligned, // for people: columns aligned by display width, long cells cut,
             // unprintable characters escaped
    Csv,     // for programs: RFC 4180, unprintable characters escaped
    Json     // for programs: an array of one object per row, exact texts
};

// Named columns and rows that are made when they are needed, so that a long table takes no memory of its own.
class Table
{
public:
    struct Column
    {
        QString name;
        bool isNumber = false; // right-aligned; in JSON a number, or null when empty
        int cutWidth = 0;      // the aligned form cuts longer cells; 0: never
    };
    using RowMaker = std::function<QStringList(int row)>;

    // rowMaker is called for rows 0 to rowCount - 1, in order, up to twice for each; it gives one cell per
    // column.
    Table(std::vector<Column> columns, int rowCount, RowMaker rowMaker);
    Table(std::vector<Column> columns, const std::vector<QStringList> &rows);

    void write(Output &output, TableFormat format) const;

private:
    QString alignedLine(const QStringList &cells, const std::vector<int> &widths) const;
    QStringList shownCells(int row) const;
    void writeAligned(Output &output) const;
    void writeCsv(Output &output) const;
    void writeJson(Output &output) const;
    QString jsonObject(int row) const;

    std::vector<Column> mColumns;
    int mRowCount;
    RowMaker mRowMaker;
};

} // namespace j6tool

#endif // J6TOOL_TABLE_H
