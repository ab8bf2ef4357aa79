// SPDX-License-Identifier: MIT
#include "PeerReport.h"

#include <AllocationCounter.h>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <map>
#include <set>
#include <vector>

namespace {

std::vector<Comparison> &comparisons()
{
    static std::vector<Comparison> registered;
    return registered;
}

std::vector<Growth> &growths()
{
    static std::vector<Growth> registered;
    return registered;
}

using Times = std::map<std::string, double>;

// Median processor times in nanoseconds per call, by the benchmark's name.
class MedianReporter : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context &) override { return true; }

    void ReportRuns(const std::vector<Run> &runs) override
    {
        for (const Run &run : runs) {
            mRan.insert(run.run_name.function_name);
            if (run.aggregate_name == "median")
                medians[run.run_name.function_name] = run.GetAdjustedCPUTime();
        }
    }

    // Options can take the median away, and with it every verdict.
    bool isComplete() const { return medians.size() == mRan.size(); }

    Times medians;

private:
    std::set<std::string> mRan;
};

std::string sideName(const std::string &item, const std::string &side)
{
    return item + "/" + side;
}

bool agrees(const Comparison &comparison)
{
    const char *const item = comparison.item.c_str();
    const char *const peer = comparison.peerName.c_str();
    if (!comparison.check)
        std::fprintf(stderr, "%s: NO CHECK that ours and %s do the same\n", item, peer);
    else if (comparison.check())
        return true;
    else
        std::fprintf(stderr, "%s: CHECK FAILED, ours and %s differ\n", item, peer);
    return false;
}

// All of them, so that each one that fails is named.
bool runChecks()
{
    const auto differs = [](const Comparison &comparison) { return !agrees(comparison); };
    const auto failed = std::count_if(comparisons().begin(), comparisons().end(), differs);
    std::printf("%zu comparisons, %td failed checks\n", comparisons().size(), failed);
    return failed == 0;
}

void registerSide(const std::string &name, const std::function<void()> &call)
{
    static std::set<std::string> registered;
    if (!registered.insert(name).second)
        return;
    benchmark::RegisterBenchmark(name.c_str(), [call](benchmark::State &state) {
        for (auto unused : state) {
            static_cast<void>(unused);
            call();
        }
    });
}

// The medians per call of everything that the options do not filter out; nothing when one is missing.
std::optional<Times> measure()
{
    for (const Comparison &comparison : comparisons()) {
        registerSide(sideName(comparison.item, "ours"), comparison.ours);
        registerSide(sideName(comparison.item, comparison.peerName), comparison.peer);
    }
    MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    if (reporter.isComplete())
        return reporter.medians;
    std::fprintf(stderr, "there are no medians: judged is nothing\n");
    return std::nullopt;
}

// Nothing where allocations cannot be counted, under a sanitizer for example.
std::optional<double> allocationsPerOperation(const std::function<void()> &call, int operations)
{
    if (!AllocationCounter::isAvailable())
        return std::nullopt;
    call(); // what is made once is made now
    const AllocationCounter counter;
    call();
    return static_cast<double>(counter.count()) / operations;
}

std::string cell(std::optional<double> value)
{
    char text[32] = "-";
    if (value)
        std::snprintf(text, sizeof text, "%.2f", *value);
    return text;
}

// How the time and the allocations of an item stand to what is allowed.
struct Verdict
{
    bool failed = false;
    std::string text;

    void judgeRatio(double ratio, const Bounds &bounds)
    {
        if (bounds.floor && ratio > *bounds.floor)
            fail("ABOVE FLOOR");
        else if (bounds.goal && ratio <= *bounds.goal)
            text = "goal";
        else if (bounds.floor)
            text = "floor";
    }

    void judgeAllocations(std::optional<double> made, std::optional<double> allowed)
    {
        if (made && allowed && *made > *allowed)
            fail("TOO MANY ALLOCATIONS");
    }

private:
    void fail(const char *reason)
    {
        failed = true;
        text += (text.empty() ? "" : ", ") + std::string(reason);
    }
};

void printHeading()
{
    std::printf("%-34s %-10s %9s %9s %6s %6s %6s %6s %7s %6s  %s\n", "per operation", "peer", "ours ns",
                "peer ns", "ratio", "goal", "floor", "heap", "allowed", "peer's", "verdict");
}

// Prints the line of a comparison that was measured; false when it fails.
bool printComparison(const Comparison &comparison, const Times &medians)
{
    const auto ours = medians.find(sideName(comparison.item, "ours"));
    const auto peer = medians.find(sideName(comparison.item, comparison.peerName));
    if (ours == medians.end() || peer == medians.end())
        return true; // filtered out
    const double ratio = ours->second / peer->second;
    const std::optional<double> made = allocationsPerOperation(comparison.ours, comparison.operations);
    const std::optional<double> peers = allocationsPerOperation(comparison.peer, comparison.operations);
    Verdict verdict;
    verdict.judgeRatio(ratio, comparison.bounds);
    verdict.judgeAllocations(made, comparison.allocations);
    std::printf("%-34s %-10s %9.1f %9.1f %6.2f %6s %6s %6s %7s %6s  %s\n", comparison.item.c_str(),
                comparison.peerName.c_str(), ours->second / comparison.operations,
                peer->second / comparison.operations, ratio, cell(comparison.bounds.goal).c_str(),
                cell(comparison.bounds.floor).c_str(), cell(made).c_str(),
                cell(comparison.allocations).c_str(), cell(peers).c_str(), verdict.text.c_str());
    return !verdict.failed;
}

// The time of one operation of an item's side; nothing when it was filtered out.
std::optional<double> timePerOperation(const std::string &item, const std::string &side, const Times &medians)
{
    const auto median = medians.find(sideName(item, side));
    const auto comparison = std::find_if(comparisons().begin(), comparisons().end(),
                                         [&](const Comparison &each) { return each.item == item; });
    if (median == medians.end() || comparison == comparisons().end())
        return std::nullopt;
    return median->second / comparison->operations;
}

std::optional<double> growthOf(const Growth &growth, const std::string &side, const Times &medians)
{
    const std::optional<double> small = timePerOperation(growth.small, side, medians);
    const std::optional<double> large = timePerOperation(growth.large, side, medians);
    return small && large ? std::optional(*large / *small) : std::nullopt;
}

// Prints the line of a growth whose items were measured; false when it fails.
bool printGrowth(const Growth &growth, const Times &medians)
{
    const std::optional<double> ours = growthOf(growth, "ours", medians);
    const std::optional<double> peer = growthOf(growth, growth.peerName, medians);
    if (!ours || !peer)
        return true;
    const bool kept = *ours <= growth.limit * *peer;
    std::printf("growth \"%s\" to \"%s\": ours x %.2f, %s x %.2f, ratio %.2f, limit %.2f: %s\n",
                growth.small.c_str(), growth.large.c_str(), *ours, growth.peerName.c_str(), *peer,
                *ours / *peer, growth.limit, kept ? "linear" : "GROWS TOO FAST");
    return kept;
}

bool printReport(const Times &medians)
{
    bool kept = true;
    printHeading();
    for (const Comparison &comparison : comparisons())
        kept &= printComparison(comparison, medians);
    for (const Growth &growth : growths())
        kept &= printGrowth(growth, medians);
    return kept;
}

// Takes the option out of the arguments.
bool takeOption(std::vector<char *> &arguments, const char *option)
{
    const auto isOption = [option](const char *argument) { return std::strcmp(argument, option) == 0; };
    const auto found = std::find_if(arguments.begin() + 1, arguments.end(), isOption);
    if (found == arguments.end())
        return false;
    arguments.erase(found);
    return true;
}

} // namespace

void addComparison(const Comparison &comparison)
{
    comparisons().push_back(comparison);
}

void addGrowth(const Growth &growth)
{
    growths().push_back(growth);
}

int runComparisons(int argc, char **argv)
{
    std::vector<char *> arguments(argv, argv + argc);
    const bool onlyCheck = takeOption(arguments, "--check");
    char interleaving[] = "--benchmark_enable_random_interleaving=true";
    char repetitions[] = "--benchmark_repetitions=9";
    arguments.insert(arguments.begin() + 1, {interleaving, repetitions});
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 2;
    if (!runChecks())
        return 1;
    if (onlyCheck)
        return 0;
    const std::optional<Times> medians = measure();
    return medians && printReport(*medians) ? 0 : 1;
}
