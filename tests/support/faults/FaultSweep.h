// SPDX-License-Identifier: MIT
#ifndef FAULTSWEEP_H
#define FAULTSWEEP_H

#include "FaultPlan.h"

#include <FileTree.h>

#include <QStringList>

#include <functional>
#include <initializer_list>
#include <vector>

namespace faults {

// All faults of these operations: each of them once, and it with all that follow, with every error that the
// system may give there.
std::vector<Fault> faultsOf(const Counts &counts);

// A process that ends without notice before, within or after each of the operations that change something.
std::vector<Fault> deathsOf(const Counts &counts);

// A file that shrinks before each of the operations that read from it.
std::vector<Fault> shrinkingsOf(const Counts &counts);

// An operation and what it promises.
struct Trial
{
    // Builds the files that there are before.
    std::function<void(const FileTree &tree)> prepare;
    // The operation, and nothing else. The files of the tree may fail.
    std::function<void(const FileTree &tree)> act;
    // What is not as the interface says, afterwards and without faults: empty if all is well. `fault.number`
    // is 0 for the operation that meets none.
    std::function<QString(const FileTree &tree, const Fault &fault)> flaw;
    // The lines that the operation may log when it meets a fault; a "*" at the end stands for anything. All
    // others are flaws.
    QStringList allowedLog = {};
    Limits limits = {};
    // Whether `act` starts another process, which meets the faults in place of this one: it finds the plan in
    // its environment.
    bool isInChild = false;
};

// Where the trees of the sweeps are: in memory if the system has a place there. It makes and removes
// thousands of directories in a tenth of the time.
QString sweepDirectory();

// Runs a trial in a new tree without a fault, and then in new trees with each of its faults.
class FaultSweep
{
public:
    enum Faults { Failures, Deaths, Shrinkings };

    explicit FaultSweep(const Trial &trial, Faults kind = Failures);

    // What was found, each behind its fault; empty if all promises are kept.
    QStringList flaws() const { return mFlaws; }
    // The same as a message.
    QString report() const { return mFlaws.join(QLatin1Char('\n')); }
    // How many faults were met.
    int size() const { return mSize; }
    // The kinds of operations that were not met; to be compared with none.
    QStringList unused(std::initializer_list<Operation> operations) const;

private:
    void meet(const Fault &fault);

    const Trial &mTrial;
    Counts mCounts = {};
    QStringList mFlaws;
    int mSize = 0;
};

} // namespace faults

#endif // FAULTSWEEP_H
