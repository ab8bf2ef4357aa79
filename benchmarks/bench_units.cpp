// SPDX-License-Identifier: MIT
// What is looked up for every value that is shown: the translated text of its unit, its digits, and the unit's
// counterpart of linear motors, beside a QHash of the same rows.
#include "QtUnits.h"
#include "ValueSamples.h"

#include <CUnitParser.h>

#include <QCoreApplication>

int main(int argc, char **argv)
{
    // Translation passes through an application, as in every tool; this one shows its source language.
    const QCoreApplication application(argc, argv);
    const ValueSamples samples = numberSamples();

    const auto unitStr = [](const ValueSample &sample) { return CUnitParser::unitStr(sample.unit); };
    addItem("unitStr", samples, unitStr,
            [](const ValueSample &sample) { return QtUnits::unitText(sample.unit); }, {0.40, 0.65});
    // Information: here both sides are little more than the translation itself.
    addItem(
        "unitStr", samples, unitStr,
        [](const ValueSample &sample) { return QtUnits::unitTextOfLiteral(sample.unit); }, {}, std::nullopt,
        "qt literal");
    addItem(
        "digits", samples, [](const ValueSample &sample) { return CUnitParser::digits(sample.unit); },
        [](const ValueSample &sample) { return QtUnits::digits(sample.unit); }, {0.60, 1.25});
    addItem(
        "toLinear", samples, [](const ValueSample &sample) { return CUnitParser::toLinear(sample.unit); },
        [](const ValueSample &sample) { return QtUnits::toLinear(sample.unit); }, {0.85, 1.00});
    return runComparisons(argc, argv);
}
