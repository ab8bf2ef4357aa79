// SPDX-License-Identifier: MIT
#ifndef J6TOOL_CSVREADER_H
#define J6TOOL_CSVREADER_H

#include <QByteArray>
#include <QString>

#include <vector>

namespace j6tool {

// One field of a record: its text without quotes, and where it stands in the input (quotes included).
struct CsvField
{
    QByteArray text;
    int line = 1;
    int offset = 0;
    int length = 0;
};
using CsvRecord = std::vector<CsvField>;

// Why the input is no CSV: the line, the number of the field in its record (from 0) and what is wrong.
struct CsvFault
{
    int line = 0;
    int field = 0;
    QString what;
};

// Reads CSV by RFC 4180, strictly: a quote opens a field or nothing, a closing quote ends it, quotes inside
// are doubled. Records end with CR LF or with LF alone; the last one may end without. Quoted fields may hold
// line breaks. A CR alone, a NUL and whatever exceeds the limits are faults. A byte-order mark at the start
// is skipped.
class CsvReader
{
public:
    enum class Outcome { Record, End, Fault };

    static constexpr int maxFieldLength = 1024 * 1024;

    // A record of more than maxFields fields is a fault.
    CsvReader(QByteArray contents, int maxFields);

    // Reads the next record. After a fault there is no next one.
    Outcome next(CsvRecord &record);
    const CsvFault &fault() const { return mFault; }

private:
    enum class State { FieldStart, Unquoted, Quoted, QuoteInQuoted, CarriageReturn };
    enum class Step { Continue, RecordEnd, Fault };

    Step step(CsvRecord &record, int byte);
    Step outsideQuotes(CsvRecord &record, int byte);
    Step insideQuotes(CsvRecord &record, int byte);
    Step startField(CsvRecord &record);
    Step append(CsvRecord &record, int byte);
    Step fail(const CsvRecord &record, int line, const QString &what);
    void endField(CsvRecord &record) const;

    QByteArray mContents;
    int mMaxFields;
    int mPosition = 0;
    int mLine = 1;
    State mState = State::FieldStart;
    CsvFault mFault;
};

} // namespace j6tool

#endif // J6TOOL_CSVREADER_H
