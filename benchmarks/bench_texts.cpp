// SPDX-License-Identifier: MIT
// Values to and from the texts that users read and edit, beside a QVariant and a tag.
#include "ValueSamples.h"

namespace {

void addToStr(const std::string &name, const ValueSamples &samples, Bounds bounds)
{
    addItem(
        "toStr " + name, samples, [](const ValueSample &sample) { return sample.ours.toStr(); },
        [](const ValueSample &sample) { return sample.peer.toText(); }, bounds, 1);
}

void addFromStr(const std::string &name, const ValueSamples &samples, Bounds bounds,
                std::optional<double> allocations)
{
    addItem(
        "fromStr " + name, samples,
        [](const ValueSample &sample) { return CVariant::fromStr(sample.editedText, sample.type); },
        [](const ValueSample &sample) { return QtPeer::fromText(sample.editedText, sample.type); }, bounds,
        allocations);
}

} // namespace

int main(int argc, char **argv)
{
    const ValueSamples numbers = numberSamples();
    const ValueSamples mix = mixedSamples();
    const ValueSamples floats = samplesOf(NTypes::E_F32);
    const ValueSamples doubles = samplesOf(NTypes::E_F64);
    const ValueSamples dateTimes = samplesOf(NTypes::E_DATETIME);
    const ValueSamples versions = samplesOf(NTypes::E_VERSION);
    const ValueSamples addresses = samplesOf(NTypes::E_IPV4ADDR);
    const ValueSamples byteArrays = samplesOf(NTypes::E_BYTEARRAY);
    const ValueSamples texts = samplesOf(NTypes::E_STRING32);

    addToStr("numbers", numbers, {0.57, 0.75});
    addToStr("mix", mix, {0.56, 0.75});
    addToStr("F32", floats, {0.42, 0.60});
    addToStr("F64", doubles, {0.32, 0.50});
    addToStr("DATETIME", dateTimes, {0.36, 0.70});
    addToStr("VERSION", versions, {0.18, 0.40});
    addToStr("IPV4", addresses, {0.33, 0.50});
    addToStr("BYTEARRAY", byteArrays, {0.66, 0.95});
    addToStr("STRING32", texts, {2.1, 2.7});
    addFromStr("numbers", numbers, {0.34, 0.55}, 0);
    addFromStr("mix", mix, {0.36, 0.60}, std::nullopt);
    addFromStr("F32", floats, {0.26, 0.50}, 0);
    addFromStr("F64", doubles, {0.23, 0.50}, 0);
    addFromStr("DATETIME", dateTimes, {0.40, 0.80}, 0);
    addFromStr("VERSION", versions, {0.12, 0.50}, 0);
    addFromStr("IPV4", addresses, {0.30, 0.70}, 0);
    addFromStr("STRING32", texts, {1.55, 3.2}, std::nullopt);
    return runComparisons(argc, argv);
}
