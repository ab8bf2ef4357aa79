// SPDX-License-Identifier: MIT
#include <CBenchmarkTimer.h>

#include <CPublicWait.h>

#include "TickCounter.h"

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): the interface lets callers set it
double CBenchmarkTimer::mTicksPerUs = -1.0;

CBenchmarkTimer::CBenchmarkTimer() = default;

CBenchmarkTimer::CBenchmarkTimer(const CBenchmarkTimer &other) = default;

CBenchmarkTimer &CBenchmarkTimer::operator=(const CBenchmarkTimer &other) = default;

void CBenchmarkTimer::start()
{
    mStart = tickCounter();
}

double CBenchmarkTimer::elapsed() const
{
    return static_cast<double>(tickCounter() - mStart);
}

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): asked of a timer by the interface
const char *CBenchmarkTimer::unit() const
{
    return "CPU Ticks";
}

double CBenchmarkTimer::ticksPerUs()
{
    if (!(mTicksPerUs < 0.0))
        return mTicksPerUs;
    constexpr unsigned long milliseconds = 100;
    constexpr double microseconds = 100000.0;
    const quint64 before = tickCounter();
    CPublicWait::msleep(milliseconds);
    const quint64 ticks = tickCounter() - before;
    mTicksPerUs = static_cast<double>(ticks) / microseconds;
    return mTicksPerUs;
}
