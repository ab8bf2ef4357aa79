// SPDX-License-Identifier: MIT
#include "TickCounter.h"

#include <chrono>

quint64 tickCounter()
{
    const auto sinceEpoch = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<quint64>(std::chrono::nanoseconds(sinceEpoch).count());
}
