// SPDX-License-Identifier: MIT
#ifndef CBENCHMARKTIMER_H
#define CBENCHMARKTIMER_H

#include <j6Core_export.h>

#include <QtGlobal>

/**
 * @brief Measures short run times in raw ticks of the processor's time-stamp counter.
 *
 * start() and elapsed() are one counter read each and allocate nothing, so that they can bracket very short
 * code. The timer never converts: ticks become microseconds by dividing them by ticksPerUs(), which measures
 * the rate once per process and costs its first caller about 100 ms.
 *
 * The counter is read with the instruction rdtsc on x86, without waiting for the instructions before it. On
 * other processors the ticks are the nanoseconds of the system's steady clock. A difference means something
 * only where the counter runs evenly and alike on all cores, as it does on the x86 processors of the last
 * fifteen years.
 *
 * A timer is used by one thread at a time. The calibration is not guarded: of threads that call ticksPerUs()
 * for the first time at once each measures, and the last result stays. mTicksPerUs is a plain `double`, so a
 * program that wants no such race calls ticksPerUs() once before it starts its threads.
 *
 * @code
 * CBenchmarkTimer timer;
 * timer.start();
 * doWork();
 * const double ticks = timer.elapsed();
 * const double microseconds = ticks / CBenchmarkTimer::ticksPerUs();
 * @endcode
 */
class J6CORE_EXPORT CBenchmarkTimer
{
public:
    /// @brief A timer that was not started: elapsed() is the counter's value itself.
    CBenchmarkTimer();
    /// @brief A timer that was started when the other one was.
    CBenchmarkTimer(const CBenchmarkTimer &other);
    CBenchmarkTimer &operator=(const CBenchmarkTimer &other);
    ~CBenchmarkTimer() = default;

    /// @brief Takes the counter's present value as the start.
    void start();

    /// @brief The ticks since start(): the difference of the two counter values modulo 2^64. The timer runs
    /// on.
    double elapsed() const;

    /// @brief "CPU Ticks", the unit of elapsed(), on every processor and whatever the calibration.
    const char *unit() const;

    /// @brief The ticks of one microsecond. The first call waits 100 ms, divides the ticks of that wait by
    /// 100000.0 and keeps the quotient in mTicksPerUs; further calls return that at once.
    static double ticksPerUs();

    /// @brief The calibrated ticks per microsecond; -1.0 until then. It may be set, to a negative number to
    /// have ticksPerUs() measure anew. Whatever is not below 0.0 counts as calibrated: 0.0 does, and so does
    /// a NaN.
    // NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): the interface lets callers set it
    static double mTicksPerUs;

private:
    quint64 mStart = 0;
};

#endif // CBENCHMARKTIMER_H
