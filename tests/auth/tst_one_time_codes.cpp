// SPDX-License-Identifier: MIT
// The golden codes were computed beside the library with other HMAC and Base64 functions (Python's hmac and
// base64 modules): the counter's 8 bytes, little-endian; their HMAC-SHA1 under the key; the first 4
// characters of its Base64 text as a little-endian number; that number shifted right by one bit, modulo
// 10^digits. For counter 0 under the key below: "zJPP..." is 7A 4A 50 50, as a number 0x50504A7A, shifted
// 673719613.
#include <CHmac.h>

#include "auth/OneTimeCode.h"

#include <LoggedTest.h>
#include <ScopedTimeZone.h>

#include <QDateTime>
#include <QTest>

#include <array>
#include <limits>

namespace {

constexpr quint64 largest = std::numeric_limits<quint64>::max();
constexpr qint64 lowestCounter = std::numeric_limits<qint64>::min();
constexpr quint32 largestTolerance = 2147483647; // 2^31 - 1

const QByteArray key = QByteArrayLiteral("12345678901234567890");

// The step of 30 s that is number 37037036 since 1970, and its code.
constexpr qint64 moment = 1111111109000;
const QString codeOfMoment = QStringLiteral("497641");

// What the tests' clock shows, and how often it was looked at.
qint64 shownTime = 0;
qint64 timePerLook = 0;
int looks = 0;

qint64 testClock()
{
    const qint64 now = shownTime + looks * timePerLook;
    ++looks;
    return now;
}

int validateAt(qint64 milliseconds, const QString &code, quint32 tolerance, quint64 t0 = 0, quint32 step = 30,
               int digits = 6)
{
    shownTime = milliseconds;
    timePerLook = 0;
    looks = 0;
    return OneTimeCode::validate(code, {key, t0, step, digits}, tolerance, testClock);
}

quint64 secondsNow()
{
    return static_cast<quint64>(QDateTime::currentSecsSinceEpoch());
}

} // namespace

class tst_one_time_codes : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void codeOfAMac_data();
    void codeOfAMac();
    void divisorOfEveryNumberOfDigits_data();
    void divisorOfEveryNumberOfDigits();
    void macsBelowFourBytesGiveZero();
    void digitsWithoutADivisorGiveZero();
    void counterOfATime_data();
    void counterOfATime();
    void codeOfACounter_data();
    void codeOfACounter();
    void otherKeys_data();
    void otherKeys();
    void textOfACode_data();
    void textOfACode();
    void shiftedStart_data();
    void shiftedStart();
    void wrongLengthIsTwoWithoutAnyMac_data();
    void wrongLengthIsTwoWithoutAnyMac();
    void acceptsStepsOfThePast_data();
    void acceptsStepsOfThePast();
    void futureStepsAreRefused();
    void negativeStepsLandFarInThePast_data();
    void negativeStepsLandFarInThePast();
    void triesFromTheOldestStepOn();
    void looksAtTheClockForEveryStep();
    void toleranceFromTwoTo31AcceptsNothing_data();
    void toleranceFromTwoTo31AcceptsNothing();
    void largestToleranceStartsAtItsOldestStep();
    void comparesTheWholeText_data();
    void comparesTheWholeText();
    void noDigitsAcceptTheEmptyText();
    void digitsWithoutADivisorAcceptNothing();
    void stepZeroAcceptsTheSameCodeAlways();
    void codesOfTheSystemClock_data();
    void codesOfTheSystemClock();
    void validatesByTheSystemClock();
    void timeZoneDoesNotMatter();
};

void tst_one_time_codes::codeOfAMac_data()
{
    QTest::addColumn<QByteArray>("mac");
    QTest::addColumn<int>("digits");
    QTest::addColumn<quint32>("code");

    const auto row = [](const char *name, const QByteArray &mac, int digits, quint32 code) {
        QTest::newRow(name) << mac << digits << code;
    };
    // 0x41414141 >> 1 is 0x20A0A0A0 = 547397792.
    row("AAAA, 6 digits", "AAAA", 6, 397792);
    row("AAAA, 0 digits", "AAAA", 0, 0);
    row("AAAA, 1 digit", "AAAA", 1, 2);
    row("AAAA, 9 digits", "AAAA", 9, 547397792);
    // 10^10 modulo 2^32 is 1410065408 and more than the number, 10^14 modulo 2^32 is 276447232.
    row("AAAA, 10 digits", "AAAA", 10, 547397792);
    row("AAAA, 14 digits", "AAAA", 14, 270950560);
    row("AAAA, 18 digits", "AAAA", 18, 547397792);
    row("what follows does not matter", "AAAABBBB", 6, 397792);
    row("little-endian", QByteArray::fromHex("02000000"), 9, 1);
    row("little-endian, last byte", QByteArray::fromHex("00000002"), 9, 16777216);
    row("lowest bit is shifted out", QByteArray::fromHex("01000000"), 9, 0);
    row("largest positive", QByteArray::fromHex("FFFFFF7F"), 10, 1073741823);
    // The sign is kept: 0x80000000 gives 0xC0000000 = 3221225472.
    row("lowest number", QByteArray::fromHex("00000080"), 6, 225472);
    row("lowest number, 12 digits", QByteArray::fromHex("00000080"), 12, 3221225472U);
    // 0xFFFFFFFF = 4294967295 stays; 10^12 modulo 2^32 is 3567587328, 10^18 modulo 2^32 is 2808348672.
    row("all bits", QByteArray::fromHex("FFFFFFFF"), 6, 967295);
    row("all bits, 10 digits", QByteArray::fromHex("FFFFFFFF"), 10, 64771071);
    row("all bits, 12 digits", QByteArray::fromHex("FFFFFFFF"), 12, 727379967);
    row("all bits, 18 digits", QByteArray::fromHex("FFFFFFFF"), 18, 1486618623);
}

void tst_one_time_codes::codeOfAMac()
{
    QFETCH(QByteArray, mac);
    QFETCH(int, digits);
    QFETCH(quint32, code);
    QCOMPARE(CHmac::hotp(mac, digits), code);
    QCOMPARE(OneTimeCode::codeOfMac(mac, digits), code);
}

void tst_one_time_codes::divisorOfEveryNumberOfDigits_data()
{
    QTest::addColumn<int>("digits");
    QTest::addColumn<quint32>("divisor");

    // The low 32 bits of 10^digits.
    const std::array<quint32, 19> divisors = {1U,          10U,         100U,        1000U,       10000U,
                                              100000U,     1000000U,    10000000U,   100000000U,  1000000000U,
                                              1410065408U, 1215752192U, 3567587328U, 1316134912U, 276447232U,
                                              2764472320U, 1874919424U, 1569325056U, 2808348672U};
    for (int digits = -1; digits <= 20; ++digits) {
        const bool hasDivisor = digits >= 0 && digits <= 18;
        QTest::addRow("%d", digits) << digits << (hasDivisor ? divisors.at(size_t(digits)) : 0U);
    }
}

void tst_one_time_codes::divisorOfEveryNumberOfDigits()
{
    QFETCH(int, digits);
    QFETCH(quint32, divisor);
    // All bits stay all bits when they are shifted with their sign, and every divisor is below that number.
    constexpr quint32 number = 0xFFFFFFFF;
    const quint32 code = divisor == 0 ? 0 : number % divisor;
    QCOMPARE(CHmac::hotp(QByteArray(4, '\xFF'), digits), code);
    // Where there is no divisor, there is no text.
    QCOMPARE(CHmac::totpStr(key, 0, 30, digits).size(), divisor == 0 ? 0 : digits);
}

void tst_one_time_codes::macsBelowFourBytesGiveZero()
{
    for (const QByteArray &mac : {QByteArray(), QByteArray(""), QByteArray("A"), QByteArray("AAA"),
                                  QByteArray::fromRawData("AAAA", 3)})
        QCOMPARE(CHmac::hotp(mac, 6), 0U);
}

void tst_one_time_codes::digitsWithoutADivisorGiveZero()
{
    for (const int digits :
         {-1, std::numeric_limits<int>::min(), 19, 20, 32, 400, std::numeric_limits<int>::max()}) {
        QCOMPARE(CHmac::hotp("AAAA", digits), 0U);
        QCOMPARE(CHmac::totp(key, 0, 30, digits), 0U);
        QCOMPARE(CHmac::totpStr(key, 0, 30, digits), QString());
    }
}

void tst_one_time_codes::counterOfATime_data()
{
    QTest::addColumn<qint64>("milliseconds");
    QTest::addColumn<quint64>("t0");
    QTest::addColumn<quint32>("step");
    QTest::addColumn<qint64>("counter");

    const auto row = [](const char *name, qint64 milliseconds, quint64 t0, quint32 step, qint64 counter) {
        QTest::newRow(name) << milliseconds << t0 << step << counter;
    };
    row("start", 0, 0, 30, 0);
    row("last millisecond of the first step", 29999, 0, 30, 0);
    row("first of the second", 30000, 0, 30, 1);
    row("last of the second", 59999, 0, 30, 1);
    row("a moment", moment, 0, 30, 37037036);
    row("milliseconds below a second do not count", 1700000000999, 0, 1, 1700000000);
    row("at t0", moment, 1111111109, 30, 0);
    row("1 ms before t0", moment - 1, 1111111109, 30, -1);
    row("before 1970", -1, 0, 30, -1);
    row("one step before 1970", -30000, 0, 30, -1);
    row("and 1 ms more", -30001, 0, 30, -2);
    row("largest step", 4294967295000, 0, 4294967295U, 1);
    row("largest step, 1 ms before", 4294967294999, 0, 4294967295U, 0);
    row("1 s before t0, largest step", 0, 1, 4294967295U, -1);
    row("end of year 9999", 253402300799999, 0, 30, 8446743359);
    row("t0 is a double, too", 0, 9007199254740993, 1, -9007199254740992);
    row("t0 is unsigned", 0, largest, 3, -6148914691236516864);
    // Beyond 64 bits, or none: -2^63.
    row("2^63 steps before t0", 0, quint64(1) << 63, 1, lowestCounter);
    row("2^64 steps before t0", 0, largest, 1, lowestCounter);
    row("no step, after t0", moment, 0, 0, lowestCounter);
    row("no step, before t0", 0, 5, 0, lowestCounter);
    row("no step, at t0", 0, 0, 0, lowestCounter);
    row("latest time", std::numeric_limits<qint64>::max(), 0, 1, 9223372036854776);
    row("earliest time", lowestCounter, 0, 1, -9223372036854776);
    row("earliest time, latest t0", lowestCounter, largest, 1, lowestCounter);
}

void tst_one_time_codes::counterOfATime()
{
    QFETCH(qint64, milliseconds);
    QFETCH(quint64, t0);
    QFETCH(quint32, step);
    QFETCH(qint64, counter);
    QCOMPARE(OneTimeCode::counterAt(milliseconds, t0, step), counter);
}

void tst_one_time_codes::codeOfACounter_data()
{
    QTest::addColumn<qint64>("seconds"); // of steps of 1 s: the counter
    QTest::addColumn<QByteArray>("mac"); // Base64
    QTest::addColumn<quint32>("code");   // of 9 digits

    const auto row = [](qint64 seconds, const char *mac, quint32 code) {
        QTest::addRow("%lld", seconds) << seconds << QByteArray(mac) << code;
    };
    row(0, "zJPPGFCNlJNMZLZdi6dmf7fN5LA=", 673719613);
    row(1, "ZQ8eO1QvXsyxuk3gFlXRMOsBw94=", 849094829);
    row(2, "GdBIje0/aXCUBrwl+DTD4xmfZSo=", 614543907);
    row(59, "/UPhGUVycEQpLG/M/rtUwq/twv4=", 875047575);
    row(255, "+mFGleP5qmMya0/KDc8UwNzKTqo=", 597898901);
    row(256, "5awV3o6Wobm1KmZ53X8ORvNTaQA=", 725332122);
    row(37037036, "SHcwMv6Q/iOCTHBTJ7JmZ/zqVAs=", 1497641);
    row(2147483648, "TcXincco1kVqP+PjDEr0ZFF7sW8=", 883700138);
    row(4294967296, "9peQBOiX3CKBc96Yq9je5Z4OPiY=", 682801180);
    row(-1, "9hb9ZrfwYpBoa2MgzrNNZbH+k+o=", 481375260);
    row(-2, "GYfxlqzj9lUxWUThUa2Ux8yfp48=", 9986723);
}

void tst_one_time_codes::codeOfACounter()
{
    QFETCH(qint64, seconds);
    QFETCH(QByteArray, mac);
    QFETCH(quint32, code);

    QCOMPARE(CHmac::hotp(mac, 9), code);
    QCOMPARE(OneTimeCode::codeAt(seconds * 1000, {key, 0, 1, 9}), code);
    // The same counter of steps of 30 s from another start.
    QCOMPARE(OneTimeCode::codeAt(seconds * 30000 + 1000, {key, 1, 30, 9}), code);
    QCOMPARE(OneTimeCode::codeAt(seconds * 1000, {key, 0, 1, 6}), code % 1000000);
    QCOMPARE(OneTimeCode::codeAt(seconds * 1000, {key, 0, 1, 0}), 0U);
    QCOMPARE(OneTimeCode::codeAt(seconds * 1000, {key, 0, 1, -1}), 0U);
}

void tst_one_time_codes::otherKeys_data()
{
    QTest::addColumn<QByteArray>("otherKey");
    QTest::addColumn<quint32>("code"); // of counter 0, 6 digits

    QTest::newRow("null") << QByteArray() << 888089U;
    QTest::newRow("empty") << QByteArray("") << 888089U;
    QTest::newRow("a zero byte, as the empty one") << QByteArray(1, '\0') << 888089U;
    QTest::newRow("k") << QByteArray("k") << 996320U;
    QByteArray everyByte;
    for (int i = 0; i < 256; ++i)
        everyByte += static_cast<char>(i);
    QTest::newRow("longer than a block") << everyByte << 594905U;
}

void tst_one_time_codes::otherKeys()
{
    QFETCH(QByteArray, otherKey);
    QFETCH(quint32, code);
    QCOMPARE(OneTimeCode::codeAt(0, {otherKey, 0, 30, 6}), code);
}

void tst_one_time_codes::textOfACode_data()
{
    QTest::addColumn<quint32>("code");
    QTest::addColumn<int>("digits");
    QTest::addColumn<QString>("text");

    const auto row = [](const char *name, quint32 code, int digits, const char *text) {
        QTest::newRow(name) << code << digits << QString::fromLatin1(text);
    };
    row("123 keeps its leading zeros", 123, 6, "000123");
    row("0", 0, 6, "000000");
    row("full length", 397792, 6, "397792");
    row("longer: the last digits", 397792, 4, "7792");
    row("longer: leading zeros among them", 100023, 4, "0023");
    row("1 digit", 7, 1, "7");
    row("10 digits", 1009986723, 10, "1009986723");
    row("18 digits", 4294967295U, 18, "000000004294967295");
    row("0 digits", 0, 0, "");
    row("-1 digits", 5, -1, "");
    row("19 digits", 0, 19, "");
    row("fewest digits", 0, std::numeric_limits<int>::min(), "");
    row("most digits", 0, std::numeric_limits<int>::max(), "");
}

void tst_one_time_codes::textOfACode()
{
    QFETCH(quint32, code);
    QFETCH(int, digits);
    QFETCH(QString, text);
    QCOMPARE(OneTimeCode::textOfCode(code, digits), text);
}

void tst_one_time_codes::shiftedStart_data()
{
    QTest::addColumn<quint64>("t0");
    QTest::addColumn<quint32>("step");
    QTest::addColumn<qint64>("stepsBack");
    QTest::addColumn<quint64>("start");

    const auto row = [](const char *name, quint64 t0, quint32 step, qint64 stepsBack, quint64 start) {
        QTest::newRow(name) << t0 << step << stepsBack << start;
    };
    row("none", 1000, 30, 0, 1000);
    row("one back", 1000, 30, 1, 1030);
    row("one ahead is 2^32 - 30 forward", 1000, 30, -1, 1000 + 4294967266);
    row("product is 32-bit", 0, 65536, 65536, 0);
    row("product above 2^31 is unsigned", 0, 65536, 32768, 2147483648);
    row("product wraps", 0, 4294967295U, 2, 4294967294);
    row("largest step ahead", 0, 4294967295U, -1, 1);
    row("most steps back", 7, 1, 2147483647, 2147483654);
    row("most steps ahead", 7, 1, -2147483647, 7 + quint64(2147483649));
    row("most steps of 30 s back", 0, 30, 2147483647, 4294967266);
    row("most steps of 30 s ahead", 0, 30, -2147483647, 30);
    row("t0 has 64 bits", quint64(1) << 40, 30, 1, (quint64(1) << 40) + 30);
    row("t0 wraps", largest, 30, 1, 29);
    row("step 0", 1000, 0, -5, 1000);
}

void tst_one_time_codes::shiftedStart()
{
    QFETCH(quint64, t0);
    QFETCH(quint32, step);
    QFETCH(qint64, stepsBack);
    QFETCH(quint64, start);
    QCOMPARE(OneTimeCode::shiftedStart(t0, step, stepsBack), start);
}

void tst_one_time_codes::wrongLengthIsTwoWithoutAnyMac_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("digits");

    QTest::newRow("5 characters for 6") << codeOfMoment.left(5) << 6;
    QTest::newRow("7 characters for 6") << codeOfMoment + QLatin1Char('0') << 6;
    QTest::newRow("null for 6") << QString() << 6;
    QTest::newRow("6 characters for 0") << codeOfMoment << 0;
    QTest::newRow("6 characters for -6") << codeOfMoment << -6;
    QTest::newRow("null for -1") << QString() << -1;
    QTest::newRow("6 characters for 2^31 - 1") << codeOfMoment << std::numeric_limits<int>::max();
}

void tst_one_time_codes::wrongLengthIsTwoWithoutAnyMac()
{
    QFETCH(QString, code);
    QFETCH(int, digits);
    // Without a look at the clock there is no counter to compute a MAC of. The length comes before the
    // tolerance, too.
    for (const quint32 tolerance : {0U, 1U, largestTolerance, largestTolerance + 1}) {
        QCOMPARE(validateAt(moment, code, tolerance, 0, 30, digits), 2);
        QCOMPARE(looks, 0);
        QCOMPARE(CHmac::validateTotp(code, key, 0, 30, digits, tolerance), 2);
    }
}

void tst_one_time_codes::acceptsStepsOfThePast_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("age"); // in steps

    QTest::newRow("present") << codeOfMoment << 0;
    QTest::newRow("1 step ago") << QStringLiteral("270809") << 1;
    QTest::newRow("2 steps ago") << QStringLiteral("336435") << 2;
    QTest::newRow("3 steps ago") << QStringLiteral("755112") << 3;
}

void tst_one_time_codes::acceptsStepsOfThePast()
{
    QFETCH(QString, code);
    QFETCH(int, age);
    // The moment is 29 s into its step.
    for (const qint64 inStep : {-29000, -28999, 0, 999}) {
        for (int tolerance = 0; tolerance < 5; ++tolerance)
            QCOMPARE(validateAt(moment + inStep, code, quint32(tolerance)), tolerance >= age ? 0 : 1);
    }
    // In the next step it is one step older.
    for (int tolerance = 0; tolerance < 5; ++tolerance)
        QCOMPARE(validateAt(moment + 1000, code, quint32(tolerance)), tolerance >= age + 1 ? 0 : 1);
}

void tst_one_time_codes::futureStepsAreRefused()
{
    // The codes of the three steps after the moment.
    for (const char *code : {"425377", "494197", "607538"}) {
        for (const quint32 tolerance : {0U, 1U, 2U, 3U, 10U})
            QCOMPARE(validateAt(moment, QString::fromLatin1(code), tolerance), 1);
    }
    QCOMPARE(validateAt(moment + 30000, QStringLiteral("425377"), 0), 0);
}

void tst_one_time_codes::negativeStepsLandFarInThePast_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("ahead");

    // 1111111109 s - (2^32 - 30 n) s, in steps of 30 s: counters -106128539, -106128538, -106128537.
    QTest::newRow("1") << QStringLiteral("885020") << 1;
    QTest::newRow("2") << QStringLiteral("572524") << 2;
    QTest::newRow("3") << QStringLiteral("835289") << 3;
}

void tst_one_time_codes::negativeStepsLandFarInThePast()
{
    QFETCH(QString, code);
    QFETCH(int, ahead);
    for (int tolerance = 0; tolerance < 5; ++tolerance)
        QCOMPARE(validateAt(moment, code, quint32(tolerance)), tolerance >= ahead ? 0 : 1);
}

void tst_one_time_codes::triesFromTheOldestStepOn()
{
    // One look for each step that is tried, until one fits.
    QCOMPARE(validateAt(moment, QStringLiteral("755112"), 3), 0);
    QCOMPARE(looks, 1);
    QCOMPARE(validateAt(moment, QStringLiteral("270809"), 3), 0);
    QCOMPARE(looks, 3);
    QCOMPARE(validateAt(moment, codeOfMoment, 3), 0);
    QCOMPARE(looks, 4);
    QCOMPARE(validateAt(moment, QStringLiteral("835289"), 3), 0);
    QCOMPARE(looks, 7);
    QCOMPARE(validateAt(moment, QStringLiteral("000000"), 3), 1);
    QCOMPARE(looks, 7);
    QCOMPARE(validateAt(moment, codeOfMoment, 0), 0);
    QCOMPARE(looks, 1);
}

void tst_one_time_codes::looksAtTheClockForEveryStep()
{
    // While one step back, none and one ahead are tried, the clock moves on by one step each: the codes of
    // the steps -1, 1 and, far in the past, 2 are the ones that are accepted.
    const auto validateOnARunningClock = [](const char *code) {
        shownTime = moment;
        timePerLook = 30000;
        looks = 0;
        return int(OneTimeCode::validate(QString::fromLatin1(code), {key, 0, 30, 6}, 1, testClock));
    };
    QCOMPARE(validateOnARunningClock("270809"), 0);
    QCOMPARE(looks, 1);
    QCOMPARE(validateOnARunningClock("425377"), 0);
    QCOMPARE(looks, 2);
    QCOMPARE(validateOnARunningClock("497641"), 1);
    QCOMPARE(looks, 3);
    // Counter -106128539 + 2.
    QCOMPARE(validateOnARunningClock("835289"), 0);
    QCOMPARE(looks, 3);
}

void tst_one_time_codes::toleranceFromTwoTo31AcceptsNothing_data()
{
    QTest::addColumn<quint32>("tolerance");

    QTest::newRow("2^31") << 2147483648U;
    QTest::newRow("2^31 + 1") << 2147483649U;
    QTest::newRow("2^32 - 1") << 4294967295U;
}

void tst_one_time_codes::toleranceFromTwoTo31AcceptsNothing()
{
    QFETCH(quint32, tolerance);
    QCOMPARE(validateAt(moment, codeOfMoment, tolerance), 1);
    QCOMPARE(looks, 0);
    QCOMPARE(CHmac::validateTotp(codeOfMoment, key, 0, 30, 6, tolerance), 1);
}

void tst_one_time_codes::largestToleranceStartsAtItsOldestStep()
{
    // Of steps of 1 s, the oldest is 2^31 - 1 s ago. At 2^31 - 1 s it is counter 0.
    QCOMPARE(validateAt(2147483647000, QStringLiteral("719613"), largestTolerance, 0, 1), 0);
    QCOMPARE(looks, 1);
    // Of 30 s, the product is 2^32 - 30: at 2^32 s it is counter 1.
    QCOMPARE(validateAt(4294967296000, QStringLiteral("094829"), largestTolerance), 0);
    QCOMPARE(looks, 1);
}

void tst_one_time_codes::comparesTheWholeText_data()
{
    QTest::addColumn<QString>("code");

    QTest::newRow("first digit") << QStringLiteral("597641");
    QTest::newRow("middle digit") << QStringLiteral("497741");
    QTest::newRow("last digit") << QStringLiteral("497642");
    // What differs in two digits is the same bit, so that it must not cancel itself out.
    QTest::newRow("same bit of two digits") << QStringLiteral("587641");
    QTest::newRow("two digits exchanged") << QStringLiteral("947641");
    QTest::newRow("blank in front") << QStringLiteral(" 49764");
    QTest::newRow("sign") << QStringLiteral("+49764");
    QTest::newRow("full-width digit") << QStringLiteral("49764") + QChar(0xFF11);
    QTest::newRow("low bits alone are a digit") << QStringLiteral("49764") + QChar(0x0131);
    QTest::newRow("NUL") << QStringLiteral("49764") + QChar(0);
    QTest::newRow("letters") << QStringLiteral("abcdef");
}

void tst_one_time_codes::comparesTheWholeText()
{
    QFETCH(QString, code);
    QCOMPARE(code.size(), 6);
    QCOMPARE(validateAt(moment, code, 0), 1);
    QCOMPARE(looks, 1);
}

void tst_one_time_codes::noDigitsAcceptTheEmptyText()
{
    QCOMPARE(validateAt(moment, QString(), 0, 0, 30, 0), 0);
    QCOMPARE(validateAt(moment, QLatin1String(""), 0, 0, 30, 0), 0);
    QCOMPARE(CHmac::validateTotp(QString(), key, 0, 30, 0, 0), 0);
}

void tst_one_time_codes::digitsWithoutADivisorAcceptNothing()
{
    QCOMPARE(validateAt(moment, QString(19, QLatin1Char('0')), 2, 0, 30, 19), 1);
    QCOMPARE(validateAt(moment, QString(1000, QLatin1Char('0')), 2, 0, 30, 1000), 1);
    // 18 digits still have one.
    QCOMPARE(validateAt(moment, QStringLiteral("000000001001497641"), 0, 0, 30, 18), 0);
}

void tst_one_time_codes::stepZeroAcceptsTheSameCodeAlways()
{
    // Counter -2^63: "fYt0..." is 0x30745966, shifted 406465715.
    for (const qint64 milliseconds : {qint64(0), moment, -moment}) {
        QCOMPARE(validateAt(milliseconds, QStringLiteral("465715"), 1, 0, 0), 0);
        QCOMPARE(validateAt(milliseconds, QStringLiteral("719613"), 1, 0, 0), 1);
    }
    QCOMPARE(CHmac::totp(key, 0, 0, 9), 406465715U);
    QCOMPARE(CHmac::totpStr(key, 1000, 0, 6), QStringLiteral("465715"));
    QCOMPARE(CHmac::validateTotp(QStringLiteral("465715"), key, 0, 0, 6, 0), 0);
    // So far before t0 that 64 bits do not hold the counter.
    QCOMPARE(CHmac::totp(key, largest, 1, 9), 406465715U);
}

void tst_one_time_codes::codesOfTheSystemClock_data()
{
    QTest::addColumn<int>("counter");
    QTest::addColumn<quint32>("code"); // of 9 digits

    QTest::newRow("0") << 0 << 673719613U;
    QTest::newRow("1") << 1 << 849094829U;
    QTest::newRow("2") << 2 << 614543907U;
    QTest::newRow("59") << 59 << 875047575U;
    QTest::newRow("-1") << -1 << 481375260U;
    QTest::newRow("-2") << -2 << 9986723U;
}

void tst_one_time_codes::codesOfTheSystemClock()
{
    QFETCH(int, counter);
    QFETCH(quint32, code);
    // Now is the middle of the step of this number: half an hour on either side.
    constexpr quint32 step = 3600;
    const quint64 t0 = secondsNow() - quint64(qint64(step) * counter) - step / 2;

    QCOMPARE(CHmac::totp(key, t0, step, 9), code);
    QCOMPARE(CHmac::totp(key, t0, step, 6), code % 1000000);
    const QString text = QString::number(code).rightJustified(9, QLatin1Char('0'));
    QCOMPARE(CHmac::totpStr(key, t0, step, 9), text);
    QCOMPARE(CHmac::totpStr(key, t0, step, 6), text.right(6));
    QCOMPARE(CHmac::totpStr(key, t0, step, 1), text.right(1));
    QCOMPARE(CHmac::totpStr(key, t0, step, 0), QString());
}

void tst_one_time_codes::validatesByTheSystemClock()
{
    constexpr quint32 step = 3600;
    const quint64 t0 = secondsNow() - step - step / 2; // the step of counter 1
    const auto validate = [t0](const char *code, quint32 tolerance) {
        return CHmac::validateTotp(QString::fromLatin1(code), key, t0, step, 6, tolerance);
    };
    QCOMPARE(validate("094829", 0), 0); // 1
    QCOMPARE(validate("719613", 0), 1); // 0
    QCOMPARE(validate("719613", 1), 0);
    QCOMPARE(validate("375260", 1), 1); // -1
    QCOMPARE(validate("375260", 2), 0);
    QCOMPARE(validate("543907", 5), 1); // 2, in the future
    QCOMPARE(validate("94829", 0), 2);
    QCOMPARE(validate("0094829", 0), 2);
}

void tst_one_time_codes::timeZoneDoesNotMatter()
{
    constexpr quint32 step = 3600;
    const quint64 t0 = secondsNow() - step / 2;
    for (const char *zone : {"UTC0", "IST-5:30", "<-12>12"}) {
        const ScopedTimeZone scope(zone);
        QCOMPARE(CHmac::totp(key, t0, step, 9), 673719613U);
        QCOMPARE(CHmac::validateTotp(QStringLiteral("719613"), key, t0, step, 6, 0), 0);
    }
}

QTEST_GUILESS_MAIN(tst_one_time_codes)
#include "tst_one_time_codes.moc"
