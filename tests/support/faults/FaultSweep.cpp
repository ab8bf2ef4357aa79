// SPDX-License-Identifier: MIT
#include "FaultSweep.h"

#include "Interposition.h"

#include <LoggedTest.h>
#include <ScopedVariable.h>

#include <QDir>

#include <algorithm>
#include <cerrno>

namespace faults {

namespace {

struct Possibility
{
    Operation operation;
    Effect effect;
    int error;
    bool isLasting; // a process that is interrupted for ever makes no progress
};

// Sorted by the kind of operation.
constexpr std::array<Possibility, 37> possibilities = {{
    {Operation::Open, Effect::Fail, EACCES, true},
    {Operation::Open, Effect::Fail, EMFILE, true},
    {Operation::Open, Effect::Fail, ENOSPC, true},
    {Operation::Open, Effect::Fail, EOPNOTSUPP, true},
    {Operation::Read, Effect::Fail, EIO, true},
    {Operation::Read, Effect::Fail, EINTR, false},
    {Operation::Read, Effect::Halve, 0, true},
    {Operation::Write, Effect::Fail, ENOSPC, true},
    {Operation::Write, Effect::Fail, EIO, true},
    {Operation::Write, Effect::Fail, EINTR, false},
    {Operation::Write, Effect::Halve, 0, true},
    {Operation::Sync, Effect::Fail, EIO, true},
    {Operation::Sync, Effect::Fail, ENOSPC, true},
    {Operation::Close, Effect::Fail, EIO, true},
    {Operation::Rename, Effect::Fail, EACCES, true},
    {Operation::Rename, Effect::Fail, ENOSPC, true},
    {Operation::Rename, Effect::Fail, EXDEV, true},
    {Operation::Link, Effect::Fail, EACCES, true},
    {Operation::Link, Effect::Fail, EPERM, true},
    {Operation::Remove, Effect::Fail, EACCES, true},
    {Operation::Remove, Effect::Fail, EIO, true},
    {Operation::MakeDirectory, Effect::Fail, EACCES, true},
    {Operation::MakeDirectory, Effect::Fail, ENOSPC, true},
    {Operation::Resize, Effect::Fail, ENOSPC, true},
    {Operation::LookUp, Effect::Fail, EACCES, true},
    {Operation::LookUp, Effect::Fail, EIO, true},
    {Operation::Seek, Effect::Fail, EIO, true},
    {Operation::CopyData, Effect::Fail, EIO, true},
    {Operation::CopyData, Effect::Fail, ENOSPC, true},
    {Operation::CopyData, Effect::Fail, EINVAL, true},
    {Operation::CopyData, Effect::Halve, 0, true},
    {Operation::SetMode, Effect::Fail, EPERM, true},
    {Operation::SetMode, Effect::Fail, EIO, true},
    {Operation::SetTimes, Effect::Fail, EPERM, true},
    {Operation::List, Effect::Fail, EACCES, true},
    {Operation::List, Effect::Fail, EIO, true},
    {Operation::Lock, Effect::Fail, ENOLCK, true},
}};

bool changesSomething(Operation operation)
{
    switch (operation) {
    case Operation::Read:
    case Operation::LookUp:
    case Operation::Seek:
    case Operation::List:
        return false;
    default:
        return true;
    }
}

template<typename Append>
void forEach(const Counts &counts, const Append &append)
{
    for (std::size_t kind = 0; kind < operationCount; ++kind) {
        for (int number = 1; number <= counts[kind]; ++number)
            append(Operation(kind), number);
    }
}

bool isAllowed(const QString &line, const QStringList &allowed)
{
    return std::any_of(allowed.begin(), allowed.end(), [&line](const QString &known) {
        return known.endsWith(QLatin1Char('*')) ? line.startsWith(known.chopped(1)) : line == known;
    });
}

std::vector<Fault> faultsOfKind(FaultSweep::Faults kind, const Counts &counts)
{
    switch (kind) {
    case FaultSweep::Deaths:
        return deathsOf(counts);
    case FaultSweep::Shrinkings:
        return shrinkingsOf(counts);
    case FaultSweep::Failures:
        break;
    }
    return faultsOf(counts);
}

// The numbers of the files that are open.
QStringList openFiles()
{
    return QDir(QStringLiteral("/proc/self/fd"))
        .entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System);
}

} // namespace

std::vector<Fault> faultsOf(const Counts &counts)
{
    std::vector<Fault> faults;
    forEach(counts, [&faults](Operation operation, int number) {
        for (const Possibility &possibility : possibilities) {
            if (possibility.operation != operation)
                continue;
            faults.push_back({operation, number, false, possibility.effect, possibility.error});
            if (possibility.isLasting)
                faults.push_back({operation, number, true, possibility.effect, possibility.error});
        }
    });
    return faults;
}

std::vector<Fault> deathsOf(const Counts &counts)
{
    std::vector<Fault> deaths;
    forEach(counts, [&deaths](Operation operation, int number) {
        if (!changesSomething(operation))
            return;
        deaths.push_back({operation, number, false, Effect::KillBefore, 0});
        if (operation == Operation::Write)
            deaths.push_back({operation, number, false, Effect::KillMidway, 0});
        deaths.push_back({operation, number, false, Effect::KillAfter, 0});
    });
    return deaths;
}

std::vector<Fault> shrinkingsOf(const Counts &counts)
{
    std::vector<Fault> shrinkings;
    forEach(counts, [&shrinkings](Operation operation, int number) {
        if (operation != Operation::Read && operation != Operation::CopyData)
            return;
        for (const bool persistently : {false, true})
            shrinkings.push_back({operation, number, persistently, Effect::Shrink, 0});
    });
    return shrinkings;
}

QString sweepDirectory()
{
    const QString memory = QStringLiteral("/dev/shm");
    return QFileInfo(memory).isWritable() ? memory : QDir::tempPath();
}

FaultSweep::FaultSweep(const Trial &trial, Faults kind) : mTrial(trial)
{
    const ScopedVariable temporary("TMPDIR", QFile::encodeName(sweepDirectory()));
    meet(Fault());
    for (const Fault &fault : faultsOfKind(kind, mCounts)) {
        if (fault.operation != trial.limits.always.operation || trial.limits.always.number == 0)
            meet(fault);
    }
}

void FaultSweep::meet(const Fault &fault)
{
    const FileTree tree;
    mTrial.prepare(tree);
    LoggedTest::takeLog();
    const FaultPlan plan(tree.path(), fault, mTrial.limits);
    const QStringList open = openFiles();
    if (mTrial.isInChild) {
        const ScopedVariable variable(planVariable, plan.path());
        mTrial.act(tree);
    } else {
        const ScopedFaults faults(plan);
        mTrial.act(tree);
    }
    QStringList flaws = {mTrial.flaw(tree, fault)};
    if (openFiles() != open)
        flaws += QStringLiteral("a file is left open");
    const QStringList log = LoggedTest::takeLog();
    for (const QString &line : log) {
        if (fault.number == 0 || !isAllowed(line, mTrial.allowedLog))
            flaws += QStringLiteral("logged: ") + line;
    }
    if (fault.number == 0)
        mCounts = plan.counts();
    else if (!plan.hasHit())
        flaws += QStringLiteral("the fault has hit nothing");
    flaws.removeAll(QString());
    for (const QString &flaw : qAsConst(flaws))
        mFlaws += describe(fault) + QStringLiteral(": ") + flaw;
    mSize += fault.number == 0 ? 0 : 1;
}

QStringList FaultSweep::unused(std::initializer_list<Operation> operations) const
{
    QStringList names;
    for (const Operation operation : operations) {
        if (mCounts[std::size_t(operation)] == 0)
            names += QLatin1String(operationNames[std::size_t(operation)]);
    }
    return names;
}

} // namespace faults
