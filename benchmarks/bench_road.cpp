// SPDX-License-Identifier: MIT
// The whole road of a parameter value: its bytes are read, shown with unit and digits, edited as a text,
// compared and written back, beside the same work written by hand with Qt. Its steps alone: bench_values,
// bench_texts and bench_units.
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
    int digits = 0;
    bool isAllowed = false;
    bool isChange = false;
    QByteArray bytes;

    bool operator==(const Edit &other) const
    {
        return shown == other.shown && unit == other.unit && digits == other.digits
               && isAllowed == other.isAllowed && isChange == other.isChange && bytes == other.bytes;
    }
};

Edit roadOfOurs(const ValueSample &sample)
{
    Edit edit;
    const CVariant value = CVariant::fromByteArray(sample.bytes, sample.type);
    edit.shown = value.toStr();
    edit.unit = CUnitParser::unitStr(sample.unit);
    edit.digits = CUnitParser::digits(sample.unit);
    const CVariant edited = CVariant::fromStr(sample.editedText, sample.type);
    edit.isAllowed = edited.canConvertTo(value.type());
    edit.isChange = !edited.compareValue(value);
    edit.bytes = edited.toByteArray();
    return edit;
}

template<QString (*unitText)(Nj6Units::eUnit_t)>
Edit roadOfQt(const ValueSample &sample)
{
    Edit edit;
    const QtPeer value = QtPeer::fromBytes(sample.bytes, sample.type);
    edit.shown = value.toText();
    edit.unit = unitText(sample.unit);
    edit.digits = QtUnits::digits(sample.unit);
    const QtPeer edited = QtPeer::fromText(sample.editedText, sample.type);
    edit.isAllowed = edited.canConvertTo(value.type);
    edit.isChange = !edited.equals(value);
    edit.bytes = edited.toBytes();
    return edit;
}

// Beside the judged peer one whose unit texts are literals in a hash, the fastest that a Qt programmer has.
void addRoad(const std::string &name, const ValueSamples &samples)
{
    addItem("whole road " + name, samples, roadOfOurs, roadOfQt<QtUnits::unitText>, {0.48, 0.62});
    addItem("whole road " + name, samples, roadOfOurs, roadOfQt<QtUnits::unitTextOfLiteral>, {}, std::nullopt,
            "qt literal");
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const ValueSamples numbers = numberSamples();
    const ValueSamples mix = mixedSamples();
    addRoad("numbers", numbers);
    addRoad("mix", mix);
    return runComparisons(argc, argv);
}
