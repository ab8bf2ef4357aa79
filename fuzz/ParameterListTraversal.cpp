// SPDX-License-Identifier: MIT
// Any bytes as a parameter list of the tool, as records of CSV, and as the text of a value of each type.
#include "Traversals.h"

#include <CsvReader.h>
#include <HexText.h>
#include <InputReader.h>
#include <ParameterListFile.h>
#include <ParameterValue.h>
#include <Properties.h>
#include <ValueParser.h>
#include <VisibleText.h>

#include <CDataTypeParser.h>

#include <algorithm>

namespace {

using namespace j6tool;

using Records = std::vector<std::vector<QByteArray>>;

constexpr int mostFields = 8;

// The records up to the end or to the first fault, of which the outcome tells.
CsvReader::Outcome read(const QByteArray &csv, Records &records)
{
    CsvReader reader(csv, mostFields);
    CsvRecord record;
    while (true) {
        const CsvReader::Outcome outcome = reader.next(record);
        if (outcome != CsvReader::Outcome::Record) {
            require(reader.next(record) == outcome, "behind the last record there is none");
            require((outcome == CsvReader::Outcome::Fault) == !reader.fault().what.isEmpty(),
                    "a fault has a reason");
            return outcome;
        }
        records.emplace_back();
        for (const CsvField &field : record) {
            require(field.offset >= 0 && field.length >= 0 && field.offset + field.length <= csv.size(),
                    "a field stands in the input");
            require(field.text.size() <= field.length, "a field has no more bytes than it takes");
            records.back().push_back(field.text);
        }
        require(!record.empty() && record.size() <= mostFields, "a record has fields, and not too many");
    }
}

QByteArray quotedField(QByteArray text)
{
    return '"' + text.replace("\"", "\"\"") + '"';
}

void checkCsv(const QByteArray &csv)
{
    Records records;
    read(csv, records);
    QByteArray rewritten;
    for (const std::vector<QByteArray> &record : records) {
        for (const QByteArray &field : record)
            rewritten += (&field == record.data() ? "" : ",") + quotedField(field);
        rewritten += '\n';
    }
    Records again;
    require(read(rewritten, again) == CsvReader::Outcome::End && again == records,
            "records are read as they were written");
}

// The bytes of a text that is a value, the text of these bytes, and its bytes.
void checkText(const QString &text, NTypes::eTypes_t type)
{
    const Result<QByteArray> bytes = bytesFromText(text, type);
    if (!bytes)
        return require(!bytes.error().text.isEmpty(), "a refusal has a reason", text);
    require(!lengthMisfit(*bytes, type), "bytes of a text fit the type", text);
    const QString exact = exactText(valueFromBytes(*bytes, type));
    const Result<QByteArray> again = bytesFromText(exact, type);
    require(bool(again), "the text of a value is accepted", exact);
    // The text of a date-time has no hundredths of a second, that of a number 6 or 15 digits.
    const bool isExact = type != NTypes::E_DATETIME && type != NTypes::E_F32 && type != NTypes::E_F64;
    require(!isExact || (isSameValue(*again, *bytes, type) && isSameValue(*bytes, *again, type)),
            "the text of a value is that value", exact);
    require(exactText(valueFromBytes(*again, type)) == exact, "the text of a value stays", exact);
}

void checkTexts(const QString &text)
{
    const QList<NTypes::eTypes_t> types = CDataTypeParser::mTypeDataMap.keys();
    for (const NTypes::eTypes_t type : types)
        checkText(text, type);
}

void checkParameter(const Parameter &parameter)
{
    require(!parameter.name.isEmpty() && !lengthMisfit(parameter.bytes, parameter.type),
            "a parameter has a name, and bytes that fit");
    require(ObjectIndex::fromText(parameter.index.text()) == parameter.index,
            "an index is read as it was written");
    const CVariant value = valueFromBytes(parameter.bytes, parameter.type);
    require(isSameValue(parameter.bytes, parameter.bytes, parameter.type),
            "bytes are the same value as themselves");
    const Result<QByteArray> hex = bytesFromHex(hexFromBytes(parameter.bytes));
    require(hex && *hex == parameter.bytes, "hexadecimal digits are read as they were written");
    const QString exact = exactText(value);
    visible(displayText(value, parameter.unit));
    checkText(exact, parameter.type);
}

bool isSameParameter(const Parameter &a, const Parameter &b)
{
    return a.index == b.index && a.name == b.name && a.type == b.type && a.unit == b.unit
           && a.bytes == b.bytes;
}

// Sets each value to what it was, or to its bytes in reverse: the file is read as that.
void checkEditing(ParameterListFile file)
{
    const int count = file.list().count();
    for (int i = 0; i < count; ++i) {
        QByteArray bytes = file.list().at(i).bytes;
        if (i % 2 == 1)
            std::reverse(bytes.begin(), bytes.end());
        file.setBytes(i, bytes);
    }
    const Result<ParameterListFile> again =
        ParameterListFile::parse(file.contents(), QStringLiteral("edited"));
    require(again && again->list().count() == count, "an edited list is read");
    for (int i = 0; i < count; ++i)
        require(isSameParameter(again->list().at(i), file.list().at(i)), "an edited list has what was set");
    require(again->contents() == file.contents(), "what is read is written as it was");
}

void checkList(const QByteArray &input)
{
    const auto size = static_cast<std::size_t>(input.size());
    const Result<ParameterListFile> file =
        bounded(65536 + 256 * size, "a list costs memory in proportion to its file",
                [&input] { return ParameterListFile::parse(input, QStringLiteral("list")); });
    if (!file)
        return require(file.error().text.startsWith(QLatin1String("list:")), "an error names the file",
                       file.error().text);
    require(file->contents() == input, "a list that was not edited is written as it was read");
    const ParameterList &list = file->list();
    for (int i = 0; i < list.count(); ++i) {
        checkParameter(list.at(i));
        require(list.find(list.at(i).index) == i, "an index is unique");
        const std::vector<int> named = list.named(list.at(i).name);
        require(std::find(named.begin(), named.end(), i) != named.end(), "a parameter is found by its name");
    }
    checkEditing(*file);
}

} // namespace

void traverseParameterList(const QByteArray &input)
{
    constexpr int longestText = 256;
    checkCsv(input);
    checkList(input);
    // A value is typed into one line; each of its types makes regular expressions.
    if (input.size() <= longestText && !input.contains('\n'))
        checkTexts(InputReader(input).takeText());
}
