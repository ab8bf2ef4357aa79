// SPDX-License-Identifier: MIT
#ifndef VALUESAMPLES_H
#define VALUESAMPLES_H

#include "PeerReport.h"
#include "QtPeer.h"

#include <CVariant.h>
#include <Nj6Units.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <optional>
#include <string>
#include <vector>

// One parameter of a drive: what is read from it, what is shown, and what the user makes of the text.
struct ValueSample
{
    NTypes::eTypes_t type;
    Nj6Units::eUnit_t unit;
    QByteArray bytes;
    QString text;
    // The user looks at one value and leaves it, and writes another into the next: every second edited text is
    // that of another value of the type, all others are the text shown.
    QString editedText;
    CVariant ours;
    CVariant oursEdited;
    QtPeer peer;
    QtPeer peerEdited;
};

using ValueSamples = std::vector<ValueSample>;

// 1000 samples each, the same in every run. Values are as a drive has them: integers of one to seven digits (as
// far as the type has room), floating-point values whole, with one to four decimals, and measured ones in full
// precision, 3 : 5 : 2.
ValueSamples numberSamples(); // of all ten number types alike
ValueSamples mixedSamples();  // with 6 % texts, versions, addresses and date-times
ValueSamples samplesOf(NTypes::eTypes_t type);
// As numberSamples(), but the floating-point values are whole and positive, of up to six digits.
ValueSamples wholeNumberSamples();

// Whether both sides came to the same.
template<typename Result>
bool isSame(const Result &ours, const Result &peers)
{
    return ours == peers;
}

inline bool isSame(const CVariant &ours, const QtPeer &peers)
{
    return ours.type() == peers.type && ours.toStr() == peers.toText()
           && ours.toByteArray() == peers.toBytes();
}

template<typename Sample, typename Work>
std::function<void()> overAll(const std::vector<Sample> &samples, Work work)
{
    return [&samples, work] {
        for (const Sample &sample : samples)
            benchmark::DoNotOptimize(work(sample));
    };
}

// An item of the report: what `ours` and `peers` make of each sample. The samples must live until the run ends.
template<typename Sample, typename Ours, typename Peers>
void addItem(const std::string &item, const std::vector<Sample> &samples, Ours ours, Peers peers,
             Bounds bounds, std::optional<double> allocations = std::nullopt,
             const std::string &peerName = "qt")
{
    const auto check = [item, &samples, ours, peers] {
        const auto isTheSame = [&](const Sample &sample) { return isSame(ours(sample), peers(sample)); };
        const auto different = std::find_if_not(samples.begin(), samples.end(), isTheSame);
        if (different != samples.end())
            std::fprintf(stderr, "%s: different at sample %td\n", item.c_str(), different - samples.begin());
        return different == samples.end();
    };
    addComparison({item, static_cast<int>(samples.size()), overAll(samples, ours), overAll(samples, peers),
                   check, bounds, allocations, peerName});
}

#endif // VALUESAMPLES_H
