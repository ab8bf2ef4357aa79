// SPDX-License-Identifier: MIT
#include "CsvReader.h"

#include <utility>

namespace j6tool {

namespace {

constexpr int endOfInput = -1;

} // namespace

CsvReader::CsvReader(QByteArray contents, int maxFields)
    : mContents(std::move(contents)), mMaxFields(maxFields)
{
    if (mContents.startsWith("\xEF\xBB\xBF"))
        mPosition = 3;
}

CsvReader::Outcome CsvReader::next(CsvRecord &record)
{
    record.clear();
    if (!mFault.what.isEmpty())
        return Outcome::Fault;
    if (mPosition == mContents.size())
        return Outcome::End;
    startField(record);
    while (true) {
        const int byte = mPosition < mContents.size() ? uchar(mContents.at(mPosition)) : endOfInput;
        const Step result = step(record, byte);
        if (result == Step::Fault)
            return Outcome::Fault;
        mLine += byte == '\n' ? 1 : 0;
        mPosition += byte == endOfInput ? 0 : 1;
        if (result == Step::RecordEnd)
            return Outcome::Record;
        if (mState == State::FieldStart)
            record.back().offset = mPosition;
    }
}

CsvReader::Step CsvReader::step(CsvRecord &record, int byte)
{
    if (byte == 0)
        return fail(record, mLine, QStringLiteral("contains a NUL character"));
    switch (mState) {
    case State::FieldStart:
        if (byte == '"') {
            mState = State::Quoted;
            return Step::Continue;
        }
        return outsideQuotes(record, byte);
    case State::Unquoted:
        if (byte == '"')
            return fail(record, mLine, QStringLiteral("a quote inside a field that is not quoted"));
        return outsideQuotes(record, byte);
    case State::Quoted:
        return insideQuotes(record, byte);
    case State::QuoteInQuoted:
        if (byte == '"') {
            mState = State::Quoted;
            return append(record, byte);
        }
        if (byte != ',' && byte != '\r' && byte != '\n' && byte != endOfInput)
            return fail(record, mLine, QStringLiteral("text behind the closing quote"));
        return outsideQuotes(record, byte);
    case State::CarriageReturn:
        if (byte != '\n')
            return fail(record, mLine, QStringLiteral("a carriage return without a line feed"));
        return Step::RecordEnd;
    }
    Q_UNREACHABLE();
    return Step::Fault;
}

CsvReader::Step CsvReader::outsideQuotes(CsvRecord &record, int byte)
{
    switch (byte) {
    case ',':
        endField(record);
        return startField(record);
    case '\r':
        endField(record);
        mState = State::CarriageReturn;
        return Step::Continue;
    case '\n':
    case endOfInput:
        endField(record);
        return Step::RecordEnd;
    default:
        mState = State::Unquoted;
        return append(record, byte);
    }
}

CsvReader::Step CsvReader::insideQuotes(CsvRecord &record, int byte)
{
    if (byte == endOfInput)
        return fail(record, record.back().line, QStringLiteral("the opening quote is never closed"));
    if (byte != '"')
        return append(record, byte);
    mState = State::QuoteInQuoted;
    return Step::Continue;
}

CsvReader::Step CsvReader::startField(CsvRecord &record)
{
    if (int(record.size()) == mMaxFields)
        return fail(record, mLine, QStringLiteral("more than %1 fields").arg(mMaxFields));
    mState = State::FieldStart;
    record.push_back(CsvField{{}, mLine, mPosition, 0});
    return Step::Continue;
}

CsvReader::Step CsvReader::append(CsvRecord &record, int byte)
{
    QByteArray &text = record.back().text;
    if (text.size() == maxFieldLength)
        return fail(record, record.back().line, QStringLiteral("longer than %1 bytes").arg(maxFieldLength));
    text.append(char(byte));
    return Step::Continue;
}

CsvReader::Step CsvReader::fail(const CsvRecord &record, int line, const QString &what)
{
    mFault = CsvFault{line, int(record.size()) - 1, what};
    return Step::Fault;
}

void CsvReader::endField(CsvRecord &record) const
{
    record.back().length = mPosition - record.back().offset;
}

} // namespace j6tool
