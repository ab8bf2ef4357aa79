// SPDX-License-Identifier: MIT
#include "TickCounter.h"

#ifdef _MSC_VER
#include <intrin.h>
#else
#include <x86intrin.h>
#endif

quint64 tickCounter()
{
    return __rdtsc();
}
