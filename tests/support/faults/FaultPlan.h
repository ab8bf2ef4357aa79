// SPDX-License-Identifier: MIT
#ifndef FAULTPLAN_H
#define FAULTPLAN_H

#include "Fault.h"

#include <QByteArray>
#include <QString>

#include <array>

namespace faults {

// "write 2, once: No space left on device"
QString describe(const Fault &fault);

// How many operations of each kind there were.
using Counts = std::array<int, operationCount>;

// A plan in memory that other processes can share.
class FaultPlan
{
public:
    // For what happens in this directory, the path of which is absolute and without links. No fault: it is
    // only counted. `limits`: what the file system does not do at all.
    explicit FaultPlan(const QString &directory, const Fault &fault = Fault(),
                       const Limits &limits = Limits());
    ~FaultPlan();
    FaultPlan(const FaultPlan &) = delete;
    FaultPlan &operator=(const FaultPlan &) = delete;

    // A program that links the fault injection follows the plan from its start to its end when the
    // environment variable faults::planVariable has this value. The plan is to live as long.
    QByteArray path() const;

    Counts counts() const;
    int count(Operation operation) const { return counts()[std::size_t(operation)]; }
    // How often the fault has hit.
    int hits() const { return mPlan->hits; }
    bool hasHit() const { return hits() > 0; }

private:
    friend class ScopedFaults;

    int mFile; // of memory only
    Plan *mPlan;
};

// While it lives, this process follows the plan.
class ScopedFaults
{
public:
    explicit ScopedFaults(const FaultPlan &plan);
    ~ScopedFaults();
    ScopedFaults(const ScopedFaults &) = delete;
    ScopedFaults &operator=(const ScopedFaults &) = delete;
};

} // namespace faults

#endif // FAULTPLAN_H
