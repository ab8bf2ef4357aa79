// SPDX-License-Identifier: MIT
// Waits are compared with what they last at least. That none waits in the wrong unit shows without an upper
// bound: a thousand times the wait would outlast the time that a test may take.
#include <CPublicWait.h>

#include <LoggedTest.h>

#include <QTest>

#include <chrono>
#include <functional>
#include <memory>
#include <type_traits>

static_assert(std::is_base_of<QThread, CPublicWait>::value, "the waits are those of a thread");
static_assert(sizeof(CPublicWait) == sizeof(QThread), "it adds no data");
static_assert(std::is_same<decltype(&CPublicWait::sleep), void (*)(unsigned long)>::value
                  && std::is_same<decltype(&CPublicWait::msleep), void (*)(unsigned long)>::value
                  && std::is_same<decltype(&CPublicWait::usleep), void (*)(unsigned long)>::value,
              "all static, all as wide as those of QThread");

namespace {

using Clock = std::chrono::steady_clock;

// A wait may end this much early.
#ifdef Q_OS_WIN
constexpr std::chrono::milliseconds clockTick(16);
#else
constexpr std::chrono::milliseconds clockTick(0);
#endif

Clock::duration durationOf(const std::function<void()> &work)
{
    const Clock::time_point before = Clock::now();
    work();
    return Clock::now() - before;
}

} // namespace

class tst_waits : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void waitsSeconds();
    void waitsMilliseconds();
    void waitsMicroseconds();
    void waitOfZeroReturns();
    void blocksItsOwnThread();
};

void tst_waits::waitsSeconds()
{
    QVERIFY(durationOf([] { CPublicWait::sleep(1); }) >= std::chrono::seconds(1) - clockTick);
}

void tst_waits::waitsMilliseconds()
{
    QVERIFY(durationOf([] { CPublicWait::msleep(400); }) >= std::chrono::milliseconds(400) - clockTick);
}

void tst_waits::waitsMicroseconds()
{
    QVERIFY(durationOf([] { CPublicWait::usleep(400000); }) >= std::chrono::milliseconds(400) - clockTick);
}

void tst_waits::waitOfZeroReturns()
{
    QVERIFY(durationOf([] {
                CPublicWait::sleep(0);
                CPublicWait::msleep(0);
                CPublicWait::usleep(0);
            })
            >= Clock::duration::zero());
}

// The wait is that of the caller, whichever thread it is.
void tst_waits::blocksItsOwnThread()
{
    Clock::duration waited = {};
    const auto wait = [&waited] { waited = durationOf([] { CPublicWait::msleep(20); }); };
    const std::unique_ptr<QThread> thread(QThread::create(wait));
    thread->start();
    QVERIFY(thread->wait());
    QVERIFY(waited >= std::chrono::milliseconds(20) - clockTick);
}

QTEST_GUILESS_MAIN(tst_waits)
#include "tst_waits.moc"
