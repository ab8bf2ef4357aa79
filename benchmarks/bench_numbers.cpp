// SPDX-License-Identifier: MIT
// Numbers to and from text without a value around them, beside QString's own functions.
#include "ValueSamples.h"

#include <CStr.h>

#include <cstdlib>

namespace {

constexpr int decimals = 3;

// A float has six digits to show; what its integer part takes is not there for decimals.
QString plainFromF32(float value)
{
    int integerDigits = 1;
    for (int rest = std::abs(static_cast<int>(value)) / 10; rest != 0; rest /= 10)
        ++integerDigits;
    return QString::number(static_cast<double>(value), 'f',
                           std::max(0, std::min(decimals, 6 - integerDigits)));
}

struct Parsed
{
    double number;
    bool ok;

    bool operator==(const Parsed &other) const { return number == other.number && ok == other.ok; }
};

template<typename Parse>
auto parsedBy(Parse parse)
{
    return [parse](const QString &text) {
        bool ok = false;
        const auto number = parse(text, &ok);
        return Parsed{static_cast<double>(number), ok};
    };
}

template<typename Result>
std::vector<Result> fromSamples(NTypes::eTypes_t type, Result (*resultOf)(const ValueSample &sample))
{
    std::vector<Result> results;
    for (const ValueSample &sample : samplesOf(type))
        results.push_back(resultOf(sample));
    return results;
}

double doubleOf(const ValueSample &sample)
{
    return sample.ours.toF64();
}

float floatOf(const ValueSample &sample)
{
    return sample.ours.toF32();
}

QString textOf(const ValueSample &sample)
{
    return sample.text;
}

} // namespace

int main(int argc, char **argv)
{
    const std::vector<double> doubles = fromSamples(NTypes::E_F64, doubleOf);
    const std::vector<float> floats = fromSamples(NTypes::E_F32, floatOf);
    const std::vector<QString> doubleTexts = fromSamples(NTypes::E_F64, textOf);
    const std::vector<QString> u16Texts = fromSamples(NTypes::E_U16, textOf);
    const std::vector<QString> i32Texts = fromSamples(NTypes::E_I32, textOf);

    addItem(
        "fromF64 3 decimals", doubles, [](double value) { return CStr::fromF64(value, decimals); },
        [](double value) { return QString::number(value, 'f', decimals); }, {0.70, 1.08});
    addItem("fromF32 3 decimals", floats, [](float value) { return CStr::fromF32(value, decimals); },
            plainFromF32, {0.60, 1.08});
    addItem("strToU16", u16Texts,
            parsedBy([](const QString &text, bool *ok) { return CStr::strToU16(text, ok); }),
            parsedBy([](const QString &text, bool *ok) { return text.toUShort(ok); }), {0.28, 0.60});
    addItem("strToI32", i32Texts,
            parsedBy([](const QString &text, bool *ok) { return CStr::strToI32(text, ok); }),
            parsedBy([](const QString &text, bool *ok) { return text.toInt(ok); }), {0.27, 0.50});
    addItem("strToF64", doubleTexts,
            parsedBy([](const QString &text, bool *ok) { return CStr::strToF64(text, ok); }),
            parsedBy([](const QString &text, bool *ok) { return text.toDouble(ok); }), {0.20, 0.60});
    return runComparisons(argc, argv);
}
