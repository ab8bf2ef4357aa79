// SPDX-License-Identifier: MIT
#ifndef FAULTSWEEP_H
#define FAULTSWEEP_H

#include "FaultPlan.h"

#include <FileTree.h>

#include <QStringList>

#include <initializer_list>
#include <vector>

namespace faults {

// All faults of these operations: each of them once, and it with all that follow, with every error that the
// system may give there.
std::vector<Fault> faultsOf(const Counts &counts);

// A process that ends without notice before, within or after each of the operations that change something.
std::vector<Fault> deathsOf(const Counts &counts);

// What the operation under test promises, as a trial sees it.
class Trial
{
public:
    Trial() = default;
    virtual ~Trial() = default;
    Trial(const Trial &) = delete;
    Trial &operator=(const Trial &) = delete;

    // Builds the files that there are before.
    virtual void prepare(const FileTree &tree) = 0;
    // The operation, and nothing else. The files of the tree may fail.
    virtual void act(const FileTree &tree) = 0;
    // What is not as the interface says, afterwards and without faults: empty if all is well. `fault.number`
    // is 0 for the operation that meets none.
    virtual QString flaw(const FileTree &tree, const Fault &fault) = 0;
    // The lines that the operation may log, sorted; all others are flaws.
    virtual QStringList allowedLog() const { return QStringList(); }
};

// Runs a trial in a new tree without a fault, and then in new trees with each of its faults.
class FaultSweep
{
public:
    explicit FaultSweep(Trial &trial);

    // What was found, each behind its fault; empty if all promises are kept.
    QStringList flaws() const { return mFlaws; }
    // How many faults were met.
    int size() const { return mSize; }
    // The kinds of operations that were not met; to be compared with none.
    QStringList unused(std::initializer_list<Operation> operations) const;

private:
    void meet(const Fault &fault);

    Trial &mTrial;
    Counts mCounts = {};
    QStringList mFlaws;
    int mSize = 0;
};

} // namespace faults

#endif // FAULTSWEEP_H
