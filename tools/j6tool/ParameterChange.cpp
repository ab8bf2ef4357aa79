// SPDX-License-Identifier: MIT
#include "ParameterChange.h"

#include "HexText.h"
#include "ParameterValue.h"
#include "VisibleText.h"

#include <CUnitParser.h>

namespace j6tool {

namespace {

QString withBytes(const QString &text, const QByteArray &bytes)
{
    return QStringLiteral("%1 (%2)").arg(text, hexFromBytes(bytes));
}

} // namespace

QString describedValue(const Parameter &parameter)
{
    const CVariant value = valueFromBytes(parameter.bytes, parameter.type);
    const QString text = visible(displayText(value, parameter.unit));
    if (isTextType(parameter.type))
        return QLatin1Char('"') + text + QLatin1Char('"');
    const QString unit = CUnitParser::unitStr(parameter.unit);
    return unit.isEmpty() ? text : text + QLatin1Char(' ') + unit;
}

ParameterChange describedChange(const Parameter &before, const Parameter &after)
{
    ParameterChange change = {describedValue(before), describedValue(after)};
    if (change.before != change.after || before.bytes == after.bytes)
        return change;
    return {withBytes(change.before, before.bytes), withBytes(change.after, after.bytes)};
}

} // namespace j6tool
