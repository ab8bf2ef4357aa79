// SPDX-License-Identifier: MIT
#include "PeerReport.h"

#include <AllocationCounter.h>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <vector>

namespace {

std::vector<Comparison> &comparisons()
{
    static std::vector<Comparison> registered;
    return registered;
}

// Median times in nanoseconds per call, by the benchmark's name.
class MedianReporter : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context &) override { return true; }

    void ReportRuns(const std::vector<Run> &runs) override
    {
        for (const Run &run : runs) {
            if (run.aggregate_name == "median")
                medians[run.run_name.function_name] = run.GetAdjustedCPUTime();
        }
    }

    std::map<std::string, double> medians;
};

double allocationsPerOperation(const std::function<void()> &call, int operations)
{
    call(); // what is made once is made now
    const AllocationCounter counter;
    call();
    return static_cast<double>(counter.count()) / operations;
}

void registerSide(const std::string &name, const std::function<void()> &call)
{
    benchmark::RegisterBenchmark(name.c_str(), [call](benchmark::State &state) {
        for (auto unused : state) {
            static_cast<void>(unused);
            call();
        }
    });
}

void printLine(const Comparison &comparison, const std::map<std::string, double> &medians)
{
    const auto ours = medians.find(comparison.item + "/ours");
    const auto peer = medians.find(comparison.item + "/qt");
    if (ours == medians.end() || peer == medians.end())
        return; // filtered out
    std::printf("%-28s %9.1f %9.1f %7.2f %9.2f %9.2f\n", comparison.item.c_str(),
                ours->second / comparison.operations, peer->second / comparison.operations,
                ours->second / peer->second, allocationsPerOperation(comparison.ours, comparison.operations),
                allocationsPerOperation(comparison.peer, comparison.operations));
}

} // namespace

void addComparison(const Comparison &comparison)
{
    comparisons().push_back(comparison);
}

int runComparisons(int argc, char **argv)
{
    std::vector<char *> arguments(argv, argv + argc);
    char interleaving[] = "--benchmark_enable_random_interleaving=true";
    char repetitions[] = "--benchmark_repetitions=9";
    arguments.insert(arguments.begin() + 1, {interleaving, repetitions});
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 2;

    for (const Comparison &comparison : comparisons()) {
        registerSide(comparison.item + "/ours", comparison.ours);
        registerSide(comparison.item + "/qt", comparison.peer);
    }
    MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);

    std::printf("%-28s %9s %9s %7s %9s %9s\n", "per operation", "ours ns", "qt ns", "ratio", "ours heap",
                "qt heap");
    for (const Comparison &comparison : comparisons())
        printLine(comparison, reporter.medians);
    return 0;
}
