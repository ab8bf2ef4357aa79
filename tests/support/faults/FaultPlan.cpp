// SPDX-License-Identifier: MIT
#include "FaultPlan.h"

#include "Interposition.h"

#include <QFile>

#include <algorithm>
#include <cstring>
#include <memory>

namespace faults {

namespace {

QString whatHappens(const Fault &fault)
{
    switch (fault.effect) {
    case Effect::Fail:
        return QString::fromLocal8Bit(std::strerror(fault.error)); // NOLINT(concurrency-mt-unsafe)
    case Effect::Halve:
        return QStringLiteral("half of it");
    case Effect::KillBefore:
        return QStringLiteral("killed before");
    case Effect::KillMidway:
        return QStringLiteral("killed midway");
    case Effect::KillAfter:
        return QStringLiteral("killed after");
    }
    return QString();
}

} // namespace

QString describe(const Fault &fault)
{
    return QStringLiteral("%1 %2, %3: %4")
        .arg(QLatin1String(operationNames[std::size_t(fault.operation)]), QString::number(fault.number),
             fault.persistently ? QStringLiteral("persistently") : QStringLiteral("once"),
             whatHappens(fault));
}

FaultPlan::FaultPlan(const QString &directory, const Fault &fault)
{
    const QByteArray path = QFile::encodeName(directory);
    uchar *memory = nullptr;
    if (mFile.open() && mFile.resize(sizeof(Plan)))
        memory = mFile.map(0, sizeof(Plan));
    if (memory == nullptr || path.size() >= PATH_MAX)
        qFatal("There is no memory for a plan of faults");
    mPlan = reinterpret_cast<Plan *>(memory);
    std::uninitialized_value_construct_n(mPlan, 1);
    std::copy(path.begin(), path.end(), mPlan->directory.begin());
    mPlan->fault = fault;
}

QProcessEnvironment FaultPlan::environment() const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QLatin1String(planVariable), mFile.fileName());
    return environment;
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
