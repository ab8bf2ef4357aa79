// SPDX-License-Identifier: MIT
#include "FaultPlan.h"

#include "Interposition.h"

#include <QFile>

#include <algorithm>
#include <cstring>
#include <memory>

#include <sys/mman.h>
#include <unistd.h>

namespace faults {

namespace {

QString whatHappens(const Fault &fault)
{
    switch (fault.effect) {
    case Effect::Fail:
        return QString::fromLatin1(strerrordesc_np(fault.error)); // in no locale's language
    case Effect::Halve:
        return QStringLiteral("half of it");
    case Effect::Shrink:
        return QStringLiteral("half of the file");
    case Effect::KillBefore:
        return QStringLiteral("killed before");
    case Effect::KillMidway:
        return QStringLiteral("killed midway");
    case Effect::KillAfter:
        return QStringLiteral("killed after");
    }
    return QString();
}

Plan *sharedPlan(int file)
{
    if (file < 0 || ftruncate(file, sizeof(Plan)) != 0)
        return nullptr;
    void *memory = mmap(nullptr, sizeof(Plan), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    // NOLINTNEXTLINE(performance-no-int-to-ptr,cppcoreguidelines-pro-type-cstyle-cast): a macro of the system
    return memory == MAP_FAILED ? nullptr : static_cast<Plan *>(memory);
}

} // namespace

QString describe(const Fault &fault)
{
    return QStringLiteral("%1 %2, %3: %4")
        .arg(QLatin1String(operationNames[std::size_t(fault.operation)]), QString::number(fault.number),
             fault.persistently ? QStringLiteral("persistently") : QStringLiteral("once"),
             whatHappens(fault));
}

FaultPlan::FaultPlan(const QString &directory, const Fault &fault, const Limits &limits)
    : mFile(memfd_create("faults", MFD_CLOEXEC)), mPlan(sharedPlan(mFile))
{
    const QByteArray path = QFile::encodeName(directory);
    if (mPlan == nullptr || path.size() >= PATH_MAX)
        qFatal("There is no memory for a plan of faults");
    std::uninitialized_value_construct_n(mPlan, 1);
    std::copy(path.begin(), path.end(), mPlan->directory.begin());
    mPlan->fault = fault;
    mPlan->limits = limits;
}

FaultPlan::~FaultPlan()
{
    munmap(mPlan, sizeof(Plan));
    close(mFile);
}

QByteArray FaultPlan::path() const
{
    return "/proc/" + QByteArray::number(getpid()) + "/fd/" + QByteArray::number(mFile);
}

Counts FaultPlan::counts() const
{
    Counts counts = {};
    std::copy(mPlan->counts.begin(), mPlan->counts.end(), counts.begin());
    return counts;
}

ScopedFaults::ScopedFaults(const FaultPlan &plan)
{
    follow(plan.mPlan);
}

ScopedFaults::~ScopedFaults()
{
    follow(nullptr);
}

} // namespace faults
