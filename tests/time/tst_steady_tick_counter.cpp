// SPDX-License-Identifier: MIT
#include "time/TickCounter.h"

#include <LoggedTest.h>

#include <QTest>

#include <chrono>

class tst_steady_tick_counter : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void countsNanosecondsOfTheSteadyClock();
    void neverRunsBackwards();
};

void tst_steady_tick_counter::countsNanosecondsOfTheSteadyClock()
{
    const auto nanoseconds = [] {
        const auto sinceEpoch = std::chrono::steady_clock::now().time_since_epoch();
        return static_cast<quint64>(std::chrono::nanoseconds(sinceEpoch).count());
    };
    const quint64 before = nanoseconds();
    const quint64 ticks = tickCounter();
    const quint64 after = nanoseconds();
    QVERIFY(before <= ticks);
    QVERIFY(ticks <= after);
}

void tst_steady_tick_counter::neverRunsBackwards()
{
    constexpr int looks = 1000;
    quint64 last = tickCounter();
    for (int i = 0; i < looks; ++i) {
        const quint64 now = tickCounter();
        QVERIFY(now >= last);
        last = now;
    }
}

QTEST_GUILESS_MAIN(tst_steady_tick_counter)
#include "tst_steady_tick_counter.moc"
