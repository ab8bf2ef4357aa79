// SPDX-License-Identifier: MIT
#ifndef FAULTPLAN_H
#define FAULTPLAN_H

#include "Fault.h"

#include <QProcessEnvironment>
#include <QString>
#include <QTemporaryFile>

#include <array>

namespace faults {

// "write 2, once: No space left on device"
QString describe(const Fault &fault);

// How many operations of each kind there were.
using Counts = std::array<int, operationCount>;

// A plan in a file of its own, through which it reaches another process as well.
class FaultPlan
{
public:
    // For what happens in this directory, the path of which is absolute and without links. No fault: it is
    // only counted.
    explicit FaultPlan(const QString &directory, const Fault &fault = Fault());

    // For a program that links the fault injection: it follows the plan from its start to its end.
    QProcessEnvironment environment() const;

    Counts counts() const;
    int count(Operation operation) const { return counts()[std::size_t(operation)]; }
    // How often the fault has hit.
    int hits() const { return mPlan->hits; }

private:
    friend class ScopedFaults;

    QTemporaryFile mFile;
    Plan *mPlan = nullptr;
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
