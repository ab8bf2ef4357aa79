// SPDX-License-Identifier: MIT
#include "ParameterListFile.h"

#include "CsvReader.h"
#include "HexText.h"
#include "InputFile.h"
#include "OutputFile.h"
#include "ParameterValue.h"
#include "Utf8Text.h"
#include "VisibleText.h"

#include <CDataTypeParser.h>

#include <QStringList>

#include <algorithm>
#include <array>
#include <utility>

namespace j6tool {

namespace {

enum Field { IndexField, NameField, TypeField, UnitField, BytesField, fieldCount };

constexpr std::array<const char *, fieldCount> fieldNames = {"index", "name", "type", "unit", "bytes"};

} // namespace

// Turns the records of one file into its parameters.
class ParameterListParser
{
public:
    ParameterListParser(const QByteArray &contents, const QString &fileName)
        : mReader(contents, fieldCount), mFileName(fileName)
    {
        mFile.mContents = contents;
    }

    Result<ParameterListFile> parse()
    {
        std::optional<Error> error = readHeader();
        while (!error) {
            const CsvReader::Outcome outcome = mReader.next(mRecord);
            if (outcome == CsvReader::Outcome::End)
                return std::move(mFile);
            error = outcome == CsvReader::Outcome::Record ? readParameter() : csvError();
        }
        return *error;
    }

private:
    std::optional<Error> readHeader();
    std::optional<Error> readParameter();
    std::optional<Error> decodeTexts();
    Result<ObjectIndex> index() const;
    Result<NTypes::eTypes_t> type() const;
    Result<Nj6Units::eUnit_t> unit() const;
    Result<QByteArray> bytes(NTypes::eTypes_t type) const;

    Error error(Field field, const QString &what) const
    {
        return errorAt(mRecord[field].line, QLatin1String(fieldNames[field]), what);
    }
    Error csvError() const
    {
        const CsvFault &fault = mReader.fault();
        return errorAt(fault.line, QLatin1String(fieldNames[std::size_t(fault.field)]), fault.what);
    }
    Error errorAt(int line, const QString &field, const QString &what) const
    {
        return Error{
            QStringLiteral("%1:%2: %3: %4").arg(visible(mFileName), QString::number(line), field, what)};
    }

    CsvReader mReader;
    QString mFileName;
    CsvRecord mRecord;
    std::array<QString, fieldCount> mTexts;
    ParameterListFile mFile;
};

std::optional<Error> ParameterListParser::readHeader()
{
    if (mReader.next(mRecord) == CsvReader::Outcome::Fault)
        return csvError();
    const auto hasName = [](const CsvField &field, const char *name) { return field.text == name; };
    if (std::equal(mRecord.begin(), mRecord.end(), fieldNames.begin(), fieldNames.end(), hasName))
        return std::nullopt;
    QStringList found;
    for (const CsvField &field : mRecord)
        found.append(QString::fromUtf8(field.text));
    QStringList expected;
    for (const char *name : fieldNames)
        expected.append(QLatin1String(name));
    return errorAt(1, QStringLiteral("header"),
                   QStringLiteral("%1 where '%2' is expected")
                       .arg(quoted(found.join(QLatin1Char(','))), expected.join(QLatin1Char(','))));
}

std::optional<Error> ParameterListParser::readParameter()
{
    if (mRecord.size() != fieldCount) {
        return errorAt(mRecord.front().line, QStringLiteral("record"),
                       QStringLiteral("%1 of %2 fields").arg(mRecord.size()).arg(int(fieldCount)));
    }
    if (std::optional<Error> error = decodeTexts())
        return error;
    const Result<ObjectIndex> index = this->index();
    if (!index)
        return index.error();
    if (mTexts[NameField].isEmpty())
        return error(NameField, QStringLiteral("is empty"));
    const Result<NTypes::eTypes_t> type = this->type();
    if (!type)
        return type.error();
    const Result<Nj6Units::eUnit_t> unit = this->unit();
    if (!unit)
        return unit.error();
    const Result<QByteArray> bytes = this->bytes(*type);
    if (!bytes)
        return bytes.error();
    if (mFile.mList.count() == ParameterList::maxCount)
        return error(IndexField, QStringLiteral("more than %1 parameters").arg(ParameterList::maxCount));
    mFile.mList.append(Parameter{*index, mTexts[NameField], *type, *unit, *bytes, mRecord.front().line});
    mFile.mBytesFields.push_back({mRecord[BytesField].offset, mRecord[BytesField].length});
    return std::nullopt;
}

std::optional<Error> ParameterListParser::decodeTexts()
{
    for (const Field field : {IndexField, NameField, TypeField, UnitField, BytesField}) {
        const std::optional<QString> text = textFromUtf8(mRecord[field].text);
        if (!text) {
            return error(
                field, QStringLiteral("%1 is not UTF-8").arg(quoted(QString::fromUtf8(mRecord[field].text))));
        }
        mTexts[field] = *text;
    }
    return std::nullopt;
}

Result<ObjectIndex> ParameterListParser::index() const
{
    const std::optional<ObjectIndex> index = ObjectIndex::fromText(mTexts[IndexField]);
    if (!index) {
        return error(
            IndexField,
            QStringLiteral("%1 is no index of the form 0x6081 or 0x6081:01").arg(quoted(mTexts[IndexField])));
    }
    const int position = mFile.mList.find(*index);
    if (position >= 0) {
        return error(IndexField, QStringLiteral("'%1' is on line %2 already")
                                     .arg(mTexts[IndexField])
                                     .arg(mFile.mList.at(position).line));
    }
    return *index;
}

Result<NTypes::eTypes_t> ParameterListParser::type() const
{
    const NTypes::eTypes_t type = CDataTypeParser::strToType(mTexts[TypeField]);
    if (type == NTypes::E_UNKNOWN)
        return error(TypeField, QStringLiteral("%1 is no type with a value").arg(quoted(mTexts[TypeField])));
    return type;
}

Result<Nj6Units::eUnit_t> ParameterListParser::unit() const
{
    const std::optional<Nj6Units::eUnit_t> unit = unitFromText(mTexts[UnitField]);
    if (!unit)
        return error(UnitField, QStringLiteral("%1 is no unit code").arg(quoted(mTexts[UnitField])));
    return *unit;
}

Result<QByteArray> ParameterListParser::bytes(NTypes::eTypes_t type) const
{
    Result<QByteArray> bytes = bytesFromHex(mTexts[BytesField]);
    if (!bytes)
        return error(BytesField, bytes.error().text);
    if (const std::optional<Error> misfit = lengthMisfit(*bytes, type))
        return error(BytesField, misfit->text);
    return bytes;
}

Result<ParameterListFile> ParameterListFile::read(const QString &fileName)
{
    const Result<QByteArray> contents = readInput(fileName, maxFileSize);
    if (!contents)
        return contents.error();
    return parse(*contents, fileName);
}

Result<ParameterListFile> ParameterListFile::parse(const QByteArray &contents, const QString &fileName)
{
    return ParameterListParser(contents, fileName).parse();
}

void ParameterListFile::setBytes(int position, const QByteArray &bytes)
{
    mList.setBytes(position, bytes);
    mEdits[position] = bytes;
}

QByteArray ParameterListFile::contents() const
{
    QByteArray edited;
    int copied = 0;
    for (const auto &[position, bytes] : mEdits) {
        const Slice field = mBytesFields[std::size_t(position)];
        edited += mContents.mid(copied, field.offset - copied);
        edited += bytes.toHex();
        copied = field.offset + field.length;
    }
    return edited + mContents.mid(copied);
}

std::optional<Error>
ParameterListFile::write(const QString &fileName,
                         const std::function<std::optional<Error>()> &beforeReplacing) const
{
    return replaceFile(fileName, contents(), beforeReplacing);
}

} // namespace j6tool
