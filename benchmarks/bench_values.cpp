// SPDX-License-Identifier: MIT
// Values from and to bytes, compared, copied, read as numbers and streamed, beside a QVariant and a tag.
#include "ValueSamples.h"

#include <tuple>

namespace {

void addFromByteArray(const std::string &name, const ValueSamples &samples, Bounds bounds,
                      std::optional<double> allocations)
{
    addItem(
        "fromByteArray " + name, samples,
        [](const ValueSample &sample) { return CVariant::fromByteArray(sample.bytes, sample.type); },
        [](const ValueSample &sample) { return QtPeer::fromBytes(sample.bytes, sample.type); }, bounds,
        allocations);
}

void addToByteArray(const std::string &name, const ValueSamples &samples, Bounds bounds)
{
    addItem(
        "toByteArray " + name, samples, [](const ValueSample &sample) { return sample.ours.toByteArray(); },
        [](const ValueSample &sample) { return sample.peer.toBytes(); }, bounds, 1);
}

void addCompareValue(const std::string &name, const ValueSamples &samples, Bounds bounds)
{
    addItem(
        "compareValue " + name, samples,
        [](const ValueSample &sample) { return sample.oursEdited.compareValue(sample.ours); },
        [](const ValueSample &sample) { return sample.peerEdited.equals(sample.peer); }, bounds);
}

void addCopy(const std::string &name, const ValueSamples &samples, Bounds bounds,
             std::optional<double> allocations)
{
    addItem(
        "copy " + name, samples, [](const ValueSample &sample) { return CVariant(sample.ours); },
        [](const ValueSample &sample) { return QtPeer(sample.peer); }, bounds, allocations);
}

using Numbers = std::tuple<qint32, quint64, double, bool>;

Numbers numbersOf(const CVariant &value)
{
    bool isI32 = false;
    bool isU64 = false;
    bool isF64 = false;
    const qint32 i32 = value.toI32(&isI32);
    const quint64 u64 = value.toU64(&isU64);
    const double f64 = value.toF64(&isF64);
    return {i32, u64, f64, isI32 && isU64 && isF64};
}

Numbers numbersOf(const QVariant &value)
{
    bool isI32 = false;
    bool isU64 = false;
    bool isF64 = false;
    const qint32 i32 = value.toInt(&isI32);
    const quint64 u64 = value.toULongLong(&isU64);
    const double f64 = value.toDouble(&isF64);
    return {i32, u64, f64, isI32 && isU64 && isF64};
}

// A QVariant rounds a fraction that ours cuts, wraps a negative floating-point number around and misses by
// one with a large float: the samples have none of these.
void addNumbersOut(const ValueSamples &samples)
{
    addItem(
        "toI32, toU64 and toF64", samples, [](const ValueSample &sample) { return numbersOf(sample.ours); },
        [](const ValueSample &sample) { return numbersOf(sample.peer.value); }, {0.40, 0.95});
}

// As a number, a text and a record: one bit for each that is possible.
template<typename Value>
int possibleTargets(const Value &value)
{
    return (value.canConvertTo(NTypes::E_F64) ? 1 : 0) | (value.canConvertTo(NTypes::E_CHARSTR64) ? 2 : 0)
           | (value.canConvertTo(NTypes::E_DATETIME) ? 4 : 0);
}

void addCanConvertTo(const ValueSamples &samples)
{
    addItem(
        "three canConvertTo", samples, [](const ValueSample &sample) { return possibleTargets(sample.ours); },
        [](const ValueSample &sample) { return possibleTargets(sample.peer); }, {0.42, 0.85});
}

template<typename Value>
QByteArray written(const ValueSamples &samples, Value ValueSample::*value)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    for (const ValueSample &sample : samples)
        stream << sample.*value;
    return bytes;
}

template<typename Value>
void readAll(const QByteArray &bytes)
{
    QDataStream stream(bytes);
    while (!stream.atEnd()) {
        Value value;
        stream >> value;
        benchmark::DoNotOptimize(value);
    }
}

bool streamsGiveTheValuesBack(const ValueSamples &samples, const QByteArray &bytes)
{
    QDataStream ourStream(bytes);
    QDataStream peerStream(bytes);
    return std::all_of(samples.begin(), samples.end(), [&](const ValueSample &sample) {
        CVariant ours;
        QtPeer peer;
        ourStream >> ours;
        peerStream >> peer;
        return isSame(ours, peer) && isSame(ours, sample.peer);
    });
}

// Both sides write the same bytes.
void addStreams(const ValueSamples &samples)
{
    static const QByteArray bytes = written(samples, &ValueSample::peer);
    const int count = static_cast<int>(samples.size());
    addComparison({"stream write",
                   count,
                   [&samples] { benchmark::DoNotOptimize(written(samples, &ValueSample::ours)); },
                   [&samples] { benchmark::DoNotOptimize(written(samples, &ValueSample::peer)); },
                   [&samples] { return written(samples, &ValueSample::ours) == bytes; },
                   {0.50, 1.10}});
    addComparison({"stream read",
                   count,
                   [] { readAll<CVariant>(bytes); },
                   [] { readAll<QtPeer>(bytes); },
                   [&samples] { return streamsGiveTheValuesBack(samples, bytes); },
                   {0.58, 1.15}});
}

} // namespace

int main(int argc, char **argv)
{
    const ValueSamples numbers = numberSamples();
    const ValueSamples mix = mixedSamples();
    const ValueSamples texts = samplesOf(NTypes::E_STRING32);
    const ValueSamples versions = samplesOf(NTypes::E_VERSION);
    const ValueSamples dateTimes = samplesOf(NTypes::E_DATETIME);
    const ValueSamples addresses = samplesOf(NTypes::E_IPV4ADDR);
    const ValueSamples wholeNumbers = wholeNumberSamples();

    addFromByteArray("numbers", numbers, {0.65, 1.25}, 0);
    addFromByteArray("mix", mix, {0.68, 1.40}, std::nullopt);
    addFromByteArray("STRING32", texts, {1.35, 2.6}, std::nullopt);
    addFromByteArray("VERSION", versions, {1.15, 7.5}, 0);
    addFromByteArray("DATETIME", dateTimes, {1.15, 7.5}, 0);
    addFromByteArray("IPV4", addresses, {}, 0);
    addToByteArray("numbers", numbers, {0.78, 1.30});
    addToByteArray("mix", mix, {0.78, 1.30});
    addToByteArray("STRING32", texts, {0.65, 0.95});
    addCompareValue("numbers", numbers, {0.52, 1.05});
    addCompareValue("mix", mix, {0.52, 1.05});
    addCopy("numbers", numbers, {1.28, 1.90}, 0);
    addCopy("STRING32", texts, {0.72, 0.85}, std::nullopt);
    addCopy("VERSION", versions, {}, 0);
    addCopy("DATETIME", dateTimes, {}, 0);
    addCopy("IPV4", addresses, {}, 0);
    addNumbersOut(wholeNumbers);
    addCanConvertTo(numbers);
    addStreams(numbers);
    return runComparisons(argc, argv);
}
