// SPDX-License-Identifier: MIT
#ifndef PEERREPORT_H
#define PEERREPORT_H

#include <functional>
#include <optional>
#include <string>

// How long ours may take, as a multiple of the peer's time. The goal is what the code was built to reach;
// above the floor the run fails. Without a floor the comparison is information only.
struct Bounds
{
    std::optional<double> goal = std::nullopt;
    std::optional<double> floor = std::nullopt;
};

// One line of the report: our operation and the same work done by a peer, over the same samples. An item
// with several peers is one comparison each; ours is then measured once.
struct Comparison
{
    std::string item;
    int operations; // per call of either function
    std::function<void()> ours;
    std::function<void()> peer;
    // Whether both sides give the same results on every sample: timing different work would prove nothing.
    std::function<bool()> check;
    Bounds bounds = {};
    std::optional<double> allocations = std::nullopt; // that one operation of ours may make
    std::string peerName = "qt";
};

// Two items that are the same work at two sizes. The cost of one operation of ours may grow from the small
// to the large one by at most `limit` times what the peer's grows by.
struct Growth
{
    std::string small;
    std::string large;
    double limit;
    std::string peerName = "qt";
};

// Registers both sides; they run in one binary, interleaved.
void addComparison(const Comparison &comparison);
void addGrowth(const Growth &growth);

// Runs all checks and names those that fail; with the option "--check" that is all. Otherwise times what was
// registered and prints, per item, the median processor times per operation, their ratio, the bounds, the
// heap allocations per operation and the verdict. Takes the options of Google Benchmark as well. Returns the
// exit status: not 0 when a check fails, there is no median, or an item is above its floor, allocates or
// grows more than stated.
int runComparisons(int argc, char **argv);

#endif // PEERREPORT_H
