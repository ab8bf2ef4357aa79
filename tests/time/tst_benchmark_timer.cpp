// SPDX-License-Identifier: MIT
// No test asserts how long something takes at most: a machine may stop at any moment.
#include <CBenchmarkTimer.h>
#include <CPublicWait.h>

#include <AllocationCounter.h>
#include <LoggedTest.h>

#include <QTest>

#include <chrono>
#include <cmath>
#include <limits>
#include <type_traits>

#if defined(__x86_64__) || defined(__i386__)
#include <x86intrin.h>
#define J6_TEST_HAS_RDTSC
#endif

static_assert(std::is_copy_constructible<CBenchmarkTimer>::value
                  && std::is_copy_assignable<CBenchmarkTimer>::value,
              "a timer is copied like the number that it holds");
static_assert(sizeof(CBenchmarkTimer) == 8 && !std::is_polymorphic<CBenchmarkTimer>::value,
              "a timer is its start alone");
static_assert(std::is_same<decltype(std::declval<const CBenchmarkTimer &>().elapsed()), double>::value
                  && std::is_same<decltype(CBenchmarkTimer::mTicksPerUs), double>::value,
              "ticks and their rate are floating-point numbers");

namespace {

constexpr double calibrationUs = 100000.0;
constexpr int alternations = 100;
constexpr int calibrations = 50;

// The counter itself, as the processor or the system gives it.
double counterNow()
{
#ifdef J6_TEST_HAS_RDTSC
    return static_cast<double>(__rdtsc());
#else
    const auto sinceEpoch = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<double>(std::chrono::nanoseconds(sinceEpoch).count());
#endif
}

double microsecondsBetween(std::chrono::steady_clock::time_point from,
                           std::chrono::steady_clock::time_point to)
{
    return std::chrono::duration<double, std::micro>(to - from).count();
}

// Between these lies the rate of the counter. Pauses of the machine only widen them.
struct RateBounds
{
    double low = 0.0;
    double high = 0.0;
};

RateBounds boundsOfRate()
{
    using Clock = std::chrono::steady_clock;
    const double counterOutside = counterNow();
    const Clock::time_point before = Clock::now();
    const double counterInside = counterNow();
    CPublicWait::msleep(100);
    const double counterInsideAfter = counterNow();
    const Clock::time_point after = Clock::now();
    const double counterOutsideAfter = counterNow();
    const double microseconds = microsecondsBetween(before, after);
    return {(counterInsideAfter - counterInside) / microseconds,
            (counterOutsideAfter - counterOutside) / microseconds};
}

} // namespace

class tst_benchmark_timer : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void isNotCalibratedAtTheStart();
    void firstCallCalibrates();
    void laterCallsGiveTheSameValue();
    void negativeRateIsMeasuredAnew_data();
    void negativeRateIsMeasuredAnew();
    void rateIsThatOfTheCounter();
    void rateThatIsNotNegativeIsTaken_data();
    void rateThatIsNotNegativeIsTaken();

    void timerThatWasNotStartedShowsTheCounter();
    void constructionDoesNotStart();
    void elapsedIsCounterMinusStart();
    void elapsedIsTicksWhateverTheCalibration();
    void startAgainBeginsAnew();
    void timerRunsOnWhenAsked();
    void copiesShareTheStart();
    void unitIsCpuTicksWhateverTheCalibration();
    void allocatesNothing();
    void exampleOfTheClassComment();
};

// The first three run in this order: the process calibrates once.
void tst_benchmark_timer::isNotCalibratedAtTheStart()
{
    QVERIFY(CBenchmarkTimer::mTicksPerUs == -1.0);
    CBenchmarkTimer timer;
    timer.start();
    QVERIFY(timer.elapsed() >= 0.0);
    // Measuring does not calibrate.
    QVERIFY(CBenchmarkTimer::mTicksPerUs == -1.0);
}

void tst_benchmark_timer::firstCallCalibrates()
{
    using Clock = std::chrono::steady_clock;
    const Clock::time_point before = Clock::now();
    CBenchmarkTimer timer;
    timer.start();
    const double rate = CBenchmarkTimer::ticksPerUs();
    const double ticks = timer.elapsed();
    const auto waited = Clock::now() - before;

    QVERIFY(rate > 0.0);
    QVERIFY(CBenchmarkTimer::mTicksPerUs == rate);
    QVERIFY2(waited >= std::chrono::milliseconds(80), "the wait of 100 ms");
    // The calibration's ticks lie between the two readings here.
    QVERIFY(rate * calibrationUs <= ticks);
}

void tst_benchmark_timer::laterCallsGiveTheSameValue()
{
    const double rate = CBenchmarkTimer::mTicksPerUs;
    QVERIFY(rate > 0.0);
    for (int i = 0; i < alternations; ++i)
        QVERIFY(CBenchmarkTimer::ticksPerUs() == rate);
    QVERIFY(CBenchmarkTimer::mTicksPerUs == rate);
}

void tst_benchmark_timer::negativeRateIsMeasuredAnew_data()
{
    QTest::addColumn<double>("set");

    QTest::newRow("as at the start") << -1.0;
    QTest::newRow("just below zero") << -std::numeric_limits<double>::denorm_min();
    QTest::newRow("minus infinity") << -std::numeric_limits<double>::infinity();
}

void tst_benchmark_timer::negativeRateIsMeasuredAnew()
{
    QFETCH(double, set);
    CBenchmarkTimer::mTicksPerUs = set;
    const double rate = CBenchmarkTimer::ticksPerUs();
    QVERIFY(rate > 0.0);
    QVERIFY(std::isfinite(rate));
    QVERIFY(CBenchmarkTimer::mTicksPerUs == rate);
    // A whole number of ticks was divided by 100000.
    const double ticks = rate * calibrationUs;
    QVERIFY(std::abs(ticks - std::round(ticks)) < 1e-3);
}

// The ticks of 100 ms and the microseconds of 100 ms belong together. A wait may end a clock tick early on
// some systems, and on a busy machine late, but not far too late every time.
void tst_benchmark_timer::rateIsThatOfTheCounter()
{
    constexpr double early = 0.8;
    constexpr double late = 1.5;
    const RateBounds bounds = boundsOfRate();
    bool isNear = false;
    for (int i = 0; i < calibrations && !isNear; ++i) {
        CBenchmarkTimer::mTicksPerUs = -1.0;
        const double rate = CBenchmarkTimer::ticksPerUs();
        QVERIFY2(rate >= bounds.low * early, qPrintable(QString::number(rate / bounds.low)));
        isNear = rate <= bounds.high * late;
    }
    QVERIFY2(isNear, "each wait took far more than 100 ms");
}

void tst_benchmark_timer::rateThatIsNotNegativeIsTaken_data()
{
    QTest::addColumn<double>("set");

    QTest::newRow("zero counts as calibrated") << 0.0;
    QTest::newRow("minus zero is not below zero") << -0.0;
    QTest::newRow("any number") << 42.5;
    QTest::newRow("infinity") << std::numeric_limits<double>::infinity();
}

void tst_benchmark_timer::rateThatIsNotNegativeIsTaken()
{
    QFETCH(double, set);
    CBenchmarkTimer::mTicksPerUs = set;
    QVERIFY(CBenchmarkTimer::ticksPerUs() == set);
    QVERIFY(CBenchmarkTimer::mTicksPerUs == set);
    CBenchmarkTimer::mTicksPerUs = std::numeric_limits<double>::quiet_NaN();
    QVERIFY(std::isnan(CBenchmarkTimer::ticksPerUs()));
}

void tst_benchmark_timer::timerThatWasNotStartedShowsTheCounter()
{
    const CBenchmarkTimer timer;
    for (int i = 0; i < alternations; ++i) {
        const double before = counterNow();
        const double shown = timer.elapsed();
        const double after = counterNow();
        QVERIFY(before <= shown);
        QVERIFY(shown <= after);
    }
}

void tst_benchmark_timer::constructionDoesNotStart()
{
    CBenchmarkTimer started;
    started.start();
    const CBenchmarkTimer timer;
    // Ticks since the counter began, not since the construction.
    QVERIFY(timer.elapsed() > started.elapsed());
}

void tst_benchmark_timer::elapsedIsCounterMinusStart()
{
    CBenchmarkTimer timer;
    const double beforeStart = counterNow();
    timer.start();
    const double afterStart = counterNow();
    CPublicWait::msleep(1);
    const double before = counterNow();
    const double elapsed = timer.elapsed();
    const double after = counterNow();
    QVERIFY(elapsed > 0.0);
    QVERIFY(before - afterStart <= elapsed);
    QVERIFY(elapsed <= after - beforeStart);
}

void tst_benchmark_timer::elapsedIsTicksWhateverTheCalibration()
{
    CBenchmarkTimer::mTicksPerUs = 1e9;
    const CBenchmarkTimer timer;
    const double before = counterNow();
    const double shown = timer.elapsed();
    QVERIFY(before <= shown);
    QVERIFY(shown <= counterNow());
    QCOMPARE(CBenchmarkTimer::mTicksPerUs, 1e9);
}

void tst_benchmark_timer::startAgainBeginsAnew()
{
    CBenchmarkTimer first;
    first.start();
    CPublicWait::msleep(1);
    CBenchmarkTimer again = first;
    again.start();
    // Read in this order the later start shows less, however long the machine pauses between.
    const double sinceAgain = again.elapsed();
    QVERIFY(sinceAgain < first.elapsed());
}

void tst_benchmark_timer::timerRunsOnWhenAsked()
{
    CBenchmarkTimer timer;
    timer.start();
    double last = timer.elapsed();
    for (int i = 0; i < alternations; ++i) {
        const double now = timer.elapsed();
        QVERIFY(now >= last);
        last = now;
    }
}

void tst_benchmark_timer::copiesShareTheStart()
{
    CBenchmarkTimer original;
    original.start();
    const CBenchmarkTimer copy(original);
    CBenchmarkTimer assigned;
    const CBenchmarkTimer &result = (assigned = original);
    QCOMPARE(&result, &assigned);
    for (const CBenchmarkTimer *timer : {&copy, &result}) {
        const double before = original.elapsed();
        const double shown = timer->elapsed();
        const double after = original.elapsed();
        QVERIFY(before <= shown);
        QVERIFY(shown <= after);
    }
}

void tst_benchmark_timer::unitIsCpuTicksWhateverTheCalibration()
{
    const CBenchmarkTimer timer;
    for (const double rate : {-1.0, 0.0, 2400.0}) {
        CBenchmarkTimer::mTicksPerUs = rate;
        QCOMPARE(QLatin1String(timer.unit()), QLatin1String("CPU Ticks"));
        QVERIFY(CBenchmarkTimer::mTicksPerUs == rate);
    }
}

void tst_benchmark_timer::allocatesNothing()
{
    if (!AllocationCounter::isAvailable())
        QSKIP("Allocations cannot be counted here.");
    const AllocationCounter counter;
    CBenchmarkTimer timer;
    timer.start();
    const double ticks = timer.elapsed();
    const long allocations = counter.count();
    QCOMPARE(allocations, 0L);
    QVERIFY(ticks >= 0.0);
}

void tst_benchmark_timer::exampleOfTheClassComment()
{
    CBenchmarkTimer::mTicksPerUs = -1.0;
    CBenchmarkTimer timer;
    timer.start();
    CPublicWait::usleep(1000);
    const double ticks = timer.elapsed();
    const double microseconds = ticks / CBenchmarkTimer::ticksPerUs();
    QVERIFY(microseconds > 0.0);
    QVERIFY(microseconds == ticks / CBenchmarkTimer::mTicksPerUs);
}

QTEST_GUILESS_MAIN(tst_benchmark_timer)
#include "tst_benchmark_timer.moc"
