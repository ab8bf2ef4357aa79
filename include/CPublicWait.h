// SPDX-License-Identifier: MIT
#ifndef CPUBLICWAIT_H
#define CPUBLICWAIT_H

#include <j6Core_export.h>

#include <QThread>

/**
 * @brief Blocking waits of the calling thread.
 *
 * The class is a QThread by its base only and is never run as one: it offers the waits of QThread under its
 * own name to any code. A wait takes at least the time asked for and usually somewhat more, as the system
 * schedules it; on Windows it may end up to one clock tick early. No events are processed meanwhile. A wait
 * of 0 returns soon. The numbers have the width of `unsigned long`: 32 bits on Windows, where a wait of 2^32
 * and more cannot be asked for.
 *
 * Thread-safe.
 *
 * @code
 * startReset();
 * CPublicWait::msleep(250); // the drive answers nothing for a quarter of a second
 * @endcode
 */
class J6CORE_EXPORT CPublicWait : public QThread
{
public:
    /// @brief Waits `secs` seconds.
    static void sleep(unsigned long secs);
    /// @brief Waits `msecs` milliseconds.
    static void msleep(unsigned long msecs);
    /// @brief Waits `usecs` microseconds.
    static void usleep(unsigned long usecs);
};

#endif // CPUBLICWAIT_H
