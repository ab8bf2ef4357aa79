// SPDX-License-Identifier: MIT
#include <CTime.h>

#include <AllocationCounter.h>
#include <LoggedTest.h>
#include <StreamForm.h>

#include <QDebug>
#include <QTest>

#include <array>
#include <atomic>
#include <limits>
#include <thread>
#include <type_traits>
#include <vector>

Q_DECLARE_METATYPE(CTime)
Q_DECLARE_METATYPE(CTime::ETimeUnit)

static_assert(sizeof(CTime::ETimeUnit) == 4 && std::is_enum<CTime::ETimeUnit>::value, "32 bits");
static_assert(CTime::TU_PS == 0 && CTime::TU_NS == 1 && CTime::TU_US == 2 && CTime::TU_MS == 3
                  && CTime::TU_S == 4 && CTime::TU_MIN == 5 && CTime::TU_H == 6 && CTime::TU_INVALID == 7,
              "the numbers of the stream form");
static_assert(std::has_virtual_destructor<CTime>::value, "made to be derived from");
static_assert(sizeof(CTime) == 2 * sizeof(void *), "the shared block is the only member");
static_assert(std::is_same<decltype(CTime().value()), unsigned long long>::value, "unsigned 64-bit count");
static_assert(std::is_same<decltype(CTime().value(CTime::TU_S)), unsigned long long>::value, "likewise");

namespace {

constexpr auto largest = std::numeric_limits<quint64>::max();

constexpr CTime::ETimeUnit unitOf(qint32 number)
{
    return static_cast<CTime::ETimeUnit>(number);
}

const QString microSymbol = QChar(0x00B5) + QStringLiteral("s");

bool holds(const CTime &time, quint64 value, qint32 unit)
{
    return time.value() == value && time.unit() == unit;
}

// Looked up while the program's static objects are built.
const QString symbolAtStart = CTime::unitStr(CTime::TU_MIN);
const CTime::ETimeUnit unitAtStart = CTime::unit(QStringLiteral("h"));

} // namespace

class tst_durations : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void isZeroAndInvalidByDefault();
    void constructsFromCountAndUnit_data();
    void constructsFromCountAndUnit();
    void isValidFromNanosecondsToHours_data();
    void isValidFromNanosecondsToHours();
    void setters();
    void copiesAreIndependent();
    void copiesShareAndChangesDetach();
    void movedFromObjectKeepsItsValue();
    void copiesInSeveralThreads();
    void unitSymbols_data();
    void unitSymbols();
    void unitOfAText_data();
    void unitOfAText();
    void symbolsWorkInOtherStaticInitialisers();
    void unitHashHoldsTheSevenSymbols();
    void streamForm_data();
    void streamForm();
    void unknownUnitsSurviveTheStream_data();
    void unknownUnitsSurviveTheStream();
    void shortStreams_data();
    void shortStreams();
    void readingDetaches();
    void readsOneAfterTheOther();
    void debugForm_data();
    void debugForm();
    void debugStreamKeepsItsState();
    void exampleOfTheClassComment();
};

void tst_durations::isZeroAndInvalidByDefault()
{
    const CTime time;
    QVERIFY(holds(time, 0, 7));
    QCOMPARE(time.unit(), CTime::TU_INVALID);
    QVERIFY(!time.isValid());
}

void tst_durations::constructsFromCountAndUnit_data()
{
    QTest::addColumn<quint64>("value");
    QTest::addColumn<CTime::ETimeUnit>("unit");

    QTest::newRow("0 ps") << quint64(0) << CTime::TU_PS;
    QTest::newRow("1500 ms") << quint64(1500) << CTime::TU_MS;
    QTest::newRow("2^53 + 1 h") << (quint64(1) << 53) + 1 << CTime::TU_H;
    QTest::newRow("largest count") << largest << CTime::TU_S;
    QTest::newRow("no unit") << quint64(5) << CTime::TU_INVALID;
    QTest::newRow("unknown unit") << quint64(5) << unitOf(1000);
}

void tst_durations::constructsFromCountAndUnit()
{
    QFETCH(quint64, value);
    QFETCH(CTime::ETimeUnit, unit);

    const CTime time(value, unit);
    QCOMPARE(time.value(), value);
    QCOMPARE(time.unit(), unit);
    // Its own unit gives the count as it is, without a detour by a double.
    QCOMPARE(time.value(unit), value);
}

void tst_durations::isValidFromNanosecondsToHours_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<bool>("valid");

    QTest::newRow("-1") << -1 << false;
    QTest::newRow("0: picoseconds are invalid") << 0 << false;
    for (int unit = 1; unit <= 6; ++unit)
        QTest::addRow("%d", unit) << unit << true;
    QTest::newRow("7") << 7 << false;
    QTest::newRow("8") << 8 << false;
    QTest::newRow("2^31 - 1") << std::numeric_limits<int>::max() << false;
    QTest::newRow("-2^31") << std::numeric_limits<int>::min() << false;
}

void tst_durations::isValidFromNanosecondsToHours()
{
    QFETCH(int, unit);
    QFETCH(bool, valid);
    QCOMPARE(CTime(5, unitOf(unit)).isValid(), valid);
    QCOMPARE(CTime(0, unitOf(unit)).isValid(), valid);
}

void tst_durations::setters()
{
    CTime time;
    time.setValue(90);
    QVERIFY(holds(time, 90, CTime::TU_INVALID));
    time.setUnit(CTime::TU_MIN);
    QVERIFY(holds(time, 90, CTime::TU_MIN));
    time.setUnit(CTime::TU_S); // no conversion
    QVERIFY(holds(time, 90, CTime::TU_S));
    time.setValue(largest, CTime::TU_PS);
    QVERIFY(holds(time, largest, CTime::TU_PS));
    time.setUnit(unitOf(8));
    QVERIFY(holds(time, largest, 8));
}

void tst_durations::copiesAreIndependent()
{
    const CTime original(90, CTime::TU_MIN);

    CTime first(original);
    QVERIFY(holds(first, 90, CTime::TU_MIN));
    first.setValue(1);
    CTime second;
    second = original;
    second.setUnit(CTime::TU_H);
    CTime third = original;
    third.setValue(2, CTime::TU_NS);
    CTime fourth = original;
    fourth.fromValue(CTime(7, CTime::TU_MIN));

    QVERIFY(holds(original, 90, CTime::TU_MIN));
    QVERIFY(holds(first, 1, CTime::TU_MIN));
    QVERIFY(holds(second, 90, CTime::TU_H));
    QVERIFY(holds(third, 2, CTime::TU_NS));
    QVERIFY(holds(fourth, 7, CTime::TU_MIN));

    const CTime &alias = first;
    CTime &result = (first = alias);
    QCOMPARE(&result, &first);
    QVERIFY(holds(first, 1, CTime::TU_MIN));
    first.fromValue(alias);
    QVERIFY(holds(first, 1, CTime::TU_MIN));
}

void tst_durations::copiesShareAndChangesDetach()
{
    // Where allocations are not seen, at least the values are compared.
    const long oneBlock = AllocationCounter::isAvailable() ? 1 : 0;
    const CTime original(90, CTime::TU_MIN);
    const AllocationCounter copying;
    CTime copy(original);
    const long whileConstructing = copying.count();
    copy = original;
    const long whileAssigning = copying.count();
    copy.setValue(91); // the one block that the copy gets for itself
    const long firstChange = copying.count();
    copy.setUnit(CTime::TU_S);
    copy.setValue(92, CTime::TU_H);
    const long laterChanges = copying.count();

    QCOMPARE(whileConstructing, 0L);
    QCOMPARE(whileAssigning, 0L);
    QCOMPARE(firstChange, oneBlock);
    QCOMPARE(laterChanges, oneBlock);
    QVERIFY(holds(original, 90, CTime::TU_MIN));
    QVERIFY(holds(copy, 92, CTime::TU_H));
}

void tst_durations::movedFromObjectKeepsItsValue()
{
    CTime source(90, CTime::TU_MIN);
    // What std::move() does; the checkers know it by its name and take the object for lost.
    const CTime constructed(static_cast<CTime &&>(source));
    CTime assigned;
    assigned = static_cast<CTime &&>(source);
    QVERIFY(holds(constructed, 90, CTime::TU_MIN));
    QVERIFY(holds(assigned, 90, CTime::TU_MIN));
    QVERIFY(holds(source, 90, CTime::TU_MIN));
}

// The thread sanitizer sees a count that is not atomic, the address sanitizer a block that is freed early.
void tst_durations::copiesInSeveralThreads()
{
    const CTime shared(90, CTime::TU_MIN);
    std::atomic<int> faults{0};
    std::vector<std::thread> threads;
    for (quint64 i = 0; i < 4; ++i) {
        threads.emplace_back([&faults, mine = shared, i] {
            for (int round = 0; round < 5000; ++round) {
                CTime copy(mine);
                CTime other;
                other = copy;
                copy.setValue(i);
                if (!holds(copy, i, CTime::TU_MIN) || other != mine
                    || CTime::unit(CTime::unitStr(other.unit())) != CTime::TU_MIN)
                    ++faults;
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(faults.load(), 0);
    QVERIFY(holds(shared, 90, CTime::TU_MIN));
}

void tst_durations::unitSymbols_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<QString>("symbol");

    QTest::newRow("ps") << 0 << QStringLiteral("ps");
    QTest::newRow("ns") << 1 << QStringLiteral("ns");
    QTest::newRow("us") << 2 << microSymbol;
    QTest::newRow("ms") << 3 << QStringLiteral("ms");
    QTest::newRow("s") << 4 << QStringLiteral("s");
    QTest::newRow("min") << 5 << QStringLiteral("min");
    QTest::newRow("h") << 6 << QStringLiteral("h");
    QTest::newRow("invalid") << 7 << QStringLiteral("?");
    QTest::newRow("8") << 8 << QStringLiteral("?");
    QTest::newRow("2^31 - 1") << std::numeric_limits<int>::max() << QStringLiteral("?");
    QTest::newRow("-1") << -1 << QStringLiteral("?");
    QTest::newRow("-2^31") << std::numeric_limits<int>::min() << QStringLiteral("?");
}

void tst_durations::unitSymbols()
{
    QFETCH(int, unit);
    QFETCH(QString, symbol);

    QCOMPARE(CTime::unitStr(unitOf(unit)), symbol);
    if (symbol != QStringLiteral("?"))
        QCOMPARE(int(CTime::unit(symbol)), unit);
}

void tst_durations::unitOfAText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<CTime::ETimeUnit>("unit");

    const auto row = [](const char *name, const QString &text, CTime::ETimeUnit unit) {
        QTest::newRow(name) << text << unit;
    };
    row("PS", QStringLiteral("PS"), CTime::TU_PS);
    row("Ns", QStringLiteral("Ns"), CTime::TU_NS);
    row("micro sign, S", QChar(0x00B5) + QStringLiteral("S"), CTime::TU_US);
    row("MS", QStringLiteral("MS"), CTime::TU_MS);
    row("mS", QStringLiteral("mS"), CTime::TU_MS);
    row("S", QStringLiteral("S"), CTime::TU_S);
    row("MIN", QStringLiteral("MIN"), CTime::TU_MIN);
    row("Min", QStringLiteral("Min"), CTime::TU_MIN);
    row("H", QStringLiteral("H"), CTime::TU_H);
    row("sec", QStringLiteral("sec"), CTime::TU_INVALID);
    row("null", QString(), CTime::TU_INVALID);
    row("empty", QLatin1String(""), CTime::TU_INVALID);
    row("question mark", QStringLiteral("?"), CTime::TU_INVALID);
    row("u for micro", QStringLiteral("us"), CTime::TU_INVALID);
    row("Greek mu", QChar(0x03BC) + QStringLiteral("s"), CTime::TU_INVALID);
    row("Greek capital mu", QChar(0x039C) + QStringLiteral("s"), CTime::TU_INVALID);
    row("long s", QChar(0x017F), CTime::TU_INVALID);
    row("Turkish dotted I", QLatin1Char('M') + QString(QChar(0x0130)) + QLatin1Char('N'), CTime::TU_INVALID);
    row("blank before", QStringLiteral(" ms"), CTime::TU_INVALID);
    row("blank behind", QStringLiteral("ms "), CTime::TU_INVALID);
    row("plural", QStringLiteral("hs"), CTime::TU_INVALID);
    row("enumerator", QStringLiteral("TU_MS"), CTime::TU_INVALID);
    row("long text", QString(100000, QLatin1Char('s')), CTime::TU_INVALID);
}

void tst_durations::unitOfAText()
{
    QFETCH(QString, text);
    QFETCH(CTime::ETimeUnit, unit);
    QCOMPARE(CTime::unit(text), unit);
}

void tst_durations::symbolsWorkInOtherStaticInitialisers()
{
    QCOMPARE(symbolAtStart, QStringLiteral("min"));
    QCOMPARE(unitAtStart, CTime::TU_H);
}

void tst_durations::unitHashHoldsTheSevenSymbols()
{
    const QHash<QString, CTime::ETimeUnit> expected = {
        {QStringLiteral("ps"), CTime::TU_PS}, {QStringLiteral("ns"), CTime::TU_NS},
        {microSymbol, CTime::TU_US},          {QStringLiteral("ms"), CTime::TU_MS},
        {QStringLiteral("s"), CTime::TU_S},   {QStringLiteral("min"), CTime::TU_MIN},
        {QStringLiteral("h"), CTime::TU_H},
    };
    QCOMPARE(CTime::mUnitHash, expected);
    QCOMPARE(CTime::createUnitHash(), expected);
}

void tst_durations::streamForm_data()
{
    QTest::addColumn<CTime>("time");
    QTest::addColumn<QByteArray>("big");
    QTest::addColumn<QByteArray>("little");

    const auto row = [](const char *name, quint64 value, qint32 unit, const char *big, const char *little) {
        QTest::newRow(name) << CTime(value, unitOf(unit)) << QByteArray::fromHex(big)
                            << QByteArray::fromHex(little);
    };
    row("1 s", 1, 4, "0000000000000001 00000004", "0100000000000000 04000000");
    row("default", 0, 7, "0000000000000000 00000007", "0000000000000000 07000000");
    row("0 ps", 0, 0, "0000000000000000 00000000", "0000000000000000 00000000");
    row("every byte", 0x0123456789ABCDEF, 6, "0123456789ABCDEF 00000006", "EFCDAB8967452301 06000000");
    row("largest count", largest, 1, "FFFFFFFFFFFFFFFF 00000001", "FFFFFFFFFFFFFFFF 01000000");
    row("unit 2^31 - 1", 2, 0x7FFFFFFF, "0000000000000002 7FFFFFFF", "0200000000000000 FFFFFF7F");
    row("unit -2", 3, -2, "0000000000000003 FFFFFFFE", "0300000000000000 FEFFFFFF");
}

void tst_durations::streamForm()
{
    QFETCH(CTime, time);
    QFETCH(QByteArray, big);
    QFETCH(QByteArray, little);

    for (const int version : {int(QDataStream::Qt_4_0), int(QDataStream::Qt_4_6), int(QDataStream::Qt_5_0),
                              int(QDataStream::Qt_5_15)}) {
        for (const auto order : {QDataStream::BigEndian, QDataStream::LittleEndian}) {
            const QByteArray &golden = order == QDataStream::BigEndian ? big : little;
            QCOMPARE(golden.size(), 12);
            QCOMPARE(streamed(time, order, version), golden);
            CTime back(99, CTime::TU_H);
            QByteArray rest;
            QCOMPARE(readFrom(golden + "rest", back, order, version, &rest), QDataStream::Ok);
            QVERIFY(holds(back, time.value(), time.unit()));
            QCOMPARE(rest, QByteArray("rest"));
        }
    }
}

void tst_durations::unknownUnitsSurviveTheStream_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("unit");

    QTest::newRow("8") << QByteArray::fromHex("000000000000000500000008") << 8;
    QTest::newRow("2^31 - 1") << QByteArray::fromHex("00000000000000057FFFFFFF") << 0x7FFFFFFF;
    QTest::newRow("-2^31") << QByteArray::fromHex("000000000000000580000000")
                           << std::numeric_limits<int>::min();
    QTest::newRow("-1") << QByteArray::fromHex("0000000000000005FFFFFFFF") << -1;
}

// Whatever unit a stream brings, it acts as no unit and nothing hangs.
void tst_durations::unknownUnitsSurviveTheStream()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, unit);

    CTime time;
    QCOMPARE(readFrom(bytes, time), QDataStream::Ok);
    QVERIFY(holds(time, 5, unit));
    QCOMPARE(streamed(time), bytes);
    QVERIFY(!time.isValid());
    QCOMPARE(time.toS(), 5ULL);
    QCOMPARE(time.toMS(), 5000ULL);
    QCOMPARE(time.toHourString(), QStringLiteral("0:00:05"));
    QVERIFY(time == CTime(5, CTime::TU_INVALID));
    QVERIFY(time > CTime(4999, CTime::TU_MS));
    long long outValue = 77;
    CTime::ETimeUnit outUnit = CTime::TU_H;
    QVERIFY(!time.convertToPrevIntegerValue(outValue, outUnit));
    QCOMPARE(outValue, 77LL);
    QCOMPARE(outUnit, CTime::TU_H);
    QString text;
    QDebug(&text) << time;
    QCOMPARE(text.trimmed(), QStringLiteral("\"CTime(5 ?)\""));
}

void tst_durations::shortStreams_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<quint64>("value");

    const QByteArray whole = QByteArray::fromHex("0000000000000001 00000004");
    for (int size = 0; size < whole.size(); ++size)
        QTest::addRow("%d bytes", size) << whole.left(size) << quint64(size >= 8 ? 1 : 0);
}

void tst_durations::shortStreams()
{
    QFETCH(QByteArray, bytes);
    QFETCH(quint64, value);

    CTime time(99, CTime::TU_H);
    QCOMPARE(readFrom(bytes, time), QDataStream::ReadPastEnd);
    QVERIFY(holds(time, value, CTime::TU_PS));
}

void tst_durations::readingDetaches()
{
    const CTime original(90, CTime::TU_MIN);
    CTime copy(original);
    QCOMPARE(readFrom(QByteArray::fromHex("000000000000000100000004"), copy), QDataStream::Ok);
    QVERIFY(holds(copy, 1, CTime::TU_S));
    QVERIFY(holds(original, 90, CTime::TU_MIN));
}

void tst_durations::readsOneAfterTheOther()
{
    const QByteArray bytes = QByteArray::fromHex("000000000000000100000004"
                                                 "000000000000000200000006");
    QDataStream stream(bytes);
    CTime first;
    CTime second;
    stream >> first >> second;
    QCOMPARE(stream.status(), QDataStream::Ok);
    QVERIFY(stream.atEnd());
    QVERIFY(holds(first, 1, CTime::TU_S));
    QVERIFY(holds(second, 2, CTime::TU_H));

    QByteArray written;
    QDataStream output(&written, QIODevice::WriteOnly);
    output << first << second;
    QCOMPARE(written, bytes);
}

void tst_durations::debugForm_data()
{
    QTest::addColumn<CTime>("time");
    QTest::addColumn<QString>("text");

    const auto row = [](const char *name, quint64 value, qint32 unit, const QString &text) {
        QTest::newRow(name) << CTime(value, unitOf(unit)) << text;
    };
    row("default", 0, 7, QStringLiteral("CTime(0 ?)"));
    row("us", 1500, 2, QStringLiteral("CTime(1500 ") + microSymbol + QLatin1Char(')'));
    row("min", 90, 5, QStringLiteral("CTime(90 min)"));
    row("unknown unit", 5, 100, QStringLiteral("CTime(5 ?)"));
    row("all digits that matter", 123456789, 1, QStringLiteral("CTime(123456789 ns)"));
    row("exponent where it is shorter", 1500000000, 1, QStringLiteral("CTime(1.5e+09 ns)"));
    row("2^53 + 1 is no double", 9007199254740993, 0, QStringLiteral("CTime(9007199254740992 ps)"));
    // The count is rounded to three places, in plain binary arithmetic: 1000 times this one lies halfway
    // between two doubles.
    row("rounding shifts the last digit", 5000000000000064, 1, QStringLiteral("CTime(5000000000000063 ns)"));
    row("2^63 is unsigned", quint64(1) << 63, 4, QStringLiteral("CTime(9223372036854776000 s)"));
    row("largest count", largest, 4, QStringLiteral("CTime(18446744073709552000 s)"));
}

void tst_durations::debugForm()
{
    QFETCH(CTime, time);
    QFETCH(QString, text);

    QString quoted;
    QDebug(&quoted) << time;
    QCOMPARE(quoted.trimmed(), QLatin1Char('"') + text + QLatin1Char('"'));
    QString plain;
    QDebug(&plain).noquote() << time;
    QCOMPARE(plain.trimmed(), text);
}

void tst_durations::debugStreamKeepsItsState()
{
    const CTime time(5, CTime::TU_MS);
    QString spaced;
    QDebug(&spaced).space() << 1 << time << 2 << 3;
    QCOMPARE(spaced.trimmed(), QStringLiteral("1 \"CTime(5 ms)\" 2 3"));
    QString tight;
    QDebug(&tight).nospace() << 1 << time << 2 << 3;
    QCOMPARE(tight, QStringLiteral("1\"CTime(5 ms)\"23"));
    QString mixed;
    QDebug(&mixed).noquote().nospace() << Qt::hex << time << 255 << QStringLiteral("x");
    QCOMPARE(mixed, QStringLiteral("CTime(5 ms)ffx"));
}

void tst_durations::exampleOfTheClassComment()
{
    CTime cycle(1500, CTime::TU_US);
    QCOMPARE(cycle.value(CTime::TU_MS), 2ULL);
    QVERIFY(cycle < CTime(2, CTime::TU_MS));
    QCOMPARE(CTime::unitStr(cycle.unit()), microSymbol);
    QCOMPARE(CTime(3725, CTime::TU_S).toHourString(), QStringLiteral("1:02:05"));
}

QTEST_GUILESS_MAIN(tst_durations)
#include "tst_durations.moc"
