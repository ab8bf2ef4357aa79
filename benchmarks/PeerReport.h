// SPDX-License-Identifier: MIT
#ifndef PEERREPORT_H
#define PEERREPORT_H

#include <functional>
#include <string>

// One line of the report: our operation and the same work written by hand with Qt, over the same samples.
struct Comparison
{
    std::string item;
    int operations; // per call of either function
    std::function<void()> ours;
    std::function<void()> peer;
};

// Registers both sides; they run in one binary, interleaved.
void addComparison(const Comparison &comparison);

// Runs what was registered and prints, per item, the median processor times per operation, their ratio and
// the heap allocations per operation of both. Takes the options of Google Benchmark.
int runComparisons(int argc, char **argv);

#endif // PEERREPORT_H
