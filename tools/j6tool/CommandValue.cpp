// SPDX-License-Identifier: MIT
#include "Commands.h"
#include "HexText.h"
#include "ParameterValue.h"
#include "ValueParser.h"
#include "VisibleText.h"

#include <CDataTypeParser.h>
#include <CUnitParser.h>

#include <QLocale>

#include <optional>
#include <vector>

namespace j6tool {

namespace {

using Rows = std::vector<QStringList>;

Result<NTypes::eTypes_t> typeOption(const Arguments &arguments)
{
    const QString key = QStringLiteral("type");
    const NTypes::eTypes_t type = CDataTypeParser::strToType(arguments.value(key));
    if (type == NTypes::E_UNKNOWN) {
        return callError(key, QStringLiteral("%1 is no type with a value ('j6tool types' lists them)")
                                  .arg(quoted(arguments.value(key))));
    }
    return type;
}

Result<QByteArray> bytesOption(const Arguments &arguments, NTypes::eTypes_t type)
{
    const QString key = QStringLiteral("bytes");
    Result<QByteArray> bytes = bytesFromHex(arguments.value(key));
    if (!bytes)
        return callError(key, bytes.error().text);
    if (const std::optional<Error> misfit = lengthMisfit(*bytes, type))
        return callError(key, misfit->text);
    return bytes;
}

Result<QByteArray> textOption(const Arguments &arguments, NTypes::eTypes_t type)
{
    const QString key = QStringLiteral("text");
    Result<QByteArray> bytes = bytesFromText(arguments.value(key), type);
    if (!bytes)
        return callError(key, bytes.error().text);
    return bytes;
}

Result<QByteArray> valueOption(const Arguments &arguments, NTypes::eTypes_t type)
{
    const bool hasBytes = arguments.contains(QStringLiteral("bytes"));
    if (hasBytes == arguments.contains(QStringLiteral("text")))
        return callError(QStringLiteral("either bytes or text must be given"));
    return hasBytes ? bytesOption(arguments, type) : textOption(arguments, type);
}

Result<std::optional<Nj6Units::eUnit_t>> unitOption(const Arguments &arguments)
{
    const QString key = QStringLiteral("unit");
    const QString code = arguments.value(key);
    const std::optional<Nj6Units::eUnit_t> unit = unitFromText(code);
    if (arguments.contains(key) && !unit)
        return callError(key,
                         QStringLiteral("%1 is no unit code ('j6tool units' lists them)").arg(quoted(code)));
    return unit;
}

// Texts, and date-times that no calendar has, are the same in every locale.
QString localeText(const CVariant &value)
{
    const bool isFloatingPoint = value.type() == NTypes::E_F32 || value.type() == NTypes::E_F64;
    return isFloatingPoint ? value.toLocaleStr() : exactText(value);
}

QString bits(const CVariant &value)
{
    switch (value.type()) {
    case NTypes::E_U8:
    case NTypes::E_I8:
    case NTypes::E_U16:
    case NTypes::E_I16:
    case NTypes::E_U32:
    case NTypes::E_I32:
    case NTypes::E_U64:
    case NTypes::E_I64:
    case NTypes::E_BYTEARRAY:
        break;
    default:
        return QStringLiteral("none");
    }
    const QBitArray array = value.toBitArray();
    QString digits;
    for (int bit = array.size() - 1; bit >= 0; --bit) {
        digits += array.testBit(bit) ? QLatin1Char('1') : QLatin1Char('0');
        if (bit % 8 == 0 && bit > 0)
            digits += QLatin1Char(' ');
    }
    return digits;
}

QString textInUnit(const CVariant &value, Nj6Units::eUnit_t unit)
{
    const QString unitText = CUnitParser::unitStr(unit);
    const QString text = displayText(value, unit);
    return unitText.isEmpty() ? text : text + QLatin1Char(' ') + unitText;
}

QString range(NTypes::eTypes_t type)
{
    const QString min = CDataTypeParser::minTypeValue(type);
    return min.isNull() ? QStringLiteral("none")
                        : QStringLiteral("%1 to %2").arg(min, CDataTypeParser::maxTypeValue(type));
}

QString defaultText(NTypes::eTypes_t type)
{
    const CVariant value(type);
    return value.isNull() && !isTextType(type) ? QStringLiteral("none") : exactText(value);
}

void addForms(Rows &rows, const CVariant &value)
{
    const NTypes::eTypes_t type = value.type();
    rows.push_back({QStringLiteral("locale text"), localeText(value)});
    rows.push_back({QStringLiteral("hex"), value.toHex(QStringLiteral("0x"))});
    rows.push_back({QStringLiteral("bits"), bits(value)});
    rows.push_back({QStringLiteral("size"), QString::number(value.size())});
    rows.push_back({QStringLiteral("type size"), QString::number(value.typeSize())});
    rows.push_back({QStringLiteral("default"), defaultText(type)});
    rows.push_back({QStringLiteral("range"), range(type)});
}

template<typename T>
std::optional<CVariant> readAs(const CVariant &value, T (CVariant::*reader)(bool *) const)
{
    bool ok = false;
    const T number = (value.*reader)(&ok);
    // cppcheck-suppress knownConditionTrueFalse ; the reader sets it
    return ok ? std::optional<CVariant>(number) : std::nullopt;
}

// The value read as another type. Where convertTo() would change the tag alone, the readers and the bytes
// are asked.
std::optional<CVariant> converted(const CVariant &value, NTypes::eTypes_t type)
{
    switch (type) {
    case NTypes::E_U8:
        return readAs(value, &CVariant::toU8);
    case NTypes::E_I8:
        return readAs(value, &CVariant::toI8);
    case NTypes::E_U16:
        return readAs(value, &CVariant::toU16);
    case NTypes::E_I16:
        return readAs(value, &CVariant::toI16);
    case NTypes::E_U32:
        return readAs(value, &CVariant::toU32);
    case NTypes::E_I32:
        return readAs(value, &CVariant::toI32);
    case NTypes::E_BYTEARRAY:
        return CVariant::fromByteArray(value.toByteArray(), type);
    default:
        break;
    }
    bool ok = false;
    const CVariant result = value.convertTo(type, &ok);
    return ok ? std::optional<CVariant>(result) : std::nullopt;
}

// What the value becomes as each type that it can be converted to and read as.
void addConversions(Rows &rows, const CVariant &value)
{
    for (auto row = CDataTypeParser::mTypeDataMap.cbegin(); row != CDataTypeParser::mTypeDataMap.cend();
         ++row) {
        const bool isPossible = value.canConvertTo(row.key());
        const std::optional<CVariant> result = isPossible ? converted(value, row.key()) : std::nullopt;
        if (result)
            rows.push_back({QStringLiteral("as ") + row.value(), exactText(*result)});
    }
}

} // namespace

Result<ExitCode> runValue(const Arguments &arguments, Output &output)
{
    const Result<TableFormat> format = formatOption(arguments);
    if (!format)
        return format.error();
    const Result<NTypes::eTypes_t> type = typeOption(arguments);
    if (!type)
        return type.error();
    const Result<QByteArray> bytes = valueOption(arguments, *type);
    if (!bytes)
        return bytes.error();
    const Result<std::optional<Nj6Units::eUnit_t>> unit = unitOption(arguments);
    if (!unit)
        return unit.error();
    QLocale::setDefault(arguments.language());
    const CVariant value = valueFromBytes(*bytes, *type);
    Rows rows;
    rows.push_back({QStringLiteral("type"),
                    QStringLiteral("%1 (%2, %3)")
                        .arg(CDataTypeParser::typeToStr(*type), CDataTypeParser::typeToEnum(*type))
                        .arg(*type)});
    rows.push_back({QStringLiteral("raw bytes"), hexFromBytes(*bytes)});
    rows.push_back({QStringLiteral("text"), exactText(value)});
    if (*unit)
        rows.push_back({QStringLiteral("text in unit"), textInUnit(value, **unit)});
    addForms(rows, value);
    addConversions(rows, value);
    Table({{QStringLiteral("form")}, {QStringLiteral("value")}}, rows).write(output, *format);
    return Done;
}

} // namespace j6tool
