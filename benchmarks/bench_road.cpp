// SPDX-License-Identifier: MIT
// The whole road of a parameter value: its bytes are read, shown with unit and digits, edited as a text, compared
// and written back, beside the same work written by hand with Qt. Its steps alone: bench_values, bench_texts and
// bench_units.
#include "QtUnits.h"
#include "ValueSamples.h"

#include <CUnitParser.h>

#include <QCoreApplication>

namespace {

// What a tool has at the end of the road.
struct Edit
{
    QString shown;
    QString unit;
    int digits;
    bool isAllowed;
    bool isChange;
    QByteArray bytes;

    bool operator==(const Edit &other) const
    {
        return shown == other.shown && unit == other.unit && digits == other.digits
               && isAllowed == other.isAllowed && isChange == other.isChange && bytes == other.bytes;
    }
};

Edit roadOfOurs(const ValueSample &sample)
{
    const CVariant value = CVariant::fromByteArray(sample.bytes, sample.type);
    const QString shown = value.toStr();
    const QString unit = CUnitParser::unitStr(sample.unit);
    const int digits = CUnitParser::digits(sample.unit);
    const CVariant edited = CVariant::fromStr(sample.editedText, sample.type);
    const bool isAllowed = edited.canConvertTo(value.type());
    const bool isChange = !edited.compareValue(value);
    return {shown, unit, digits, isAllowed, isChange, edited.toByteArray()};
}

Edit roadOfQt(const ValueSample &sample)
{
    const QtPeer value = QtPeer::fromBytes(sample.bytes, sample.type);
    const QString shown = value.toText();
    const QString unit = QtUnits::unitTextOfLiteral(sample.unit);
    const int digits = QtUnits::digits(sample.unit);
    const QtPeer edited = QtPeer::fromText(sample.editedText, sample.type);
    const bool isAllowed = edited.canConvertTo(value.type);
    const bool isChange = !edited.equals(value);
    return {shown, unit, digits, isAllowed, isChange, edited.toBytes()};
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const ValueSamples numbers = numberSamples();
    const ValueSamples mix = mixedSamples();
    addItem("whole road numbers", numbers, roadOfOurs, roadOfQt, {0.48, 0.62});
    addItem("whole road mix", mix, roadOfOurs, roadOfQt, {0.48, 0.62});
    return runComparisons(argc, argv);
}
