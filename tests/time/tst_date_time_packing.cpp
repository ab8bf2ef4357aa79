// SPDX-License-Identifier: MIT
#include "DateTimeCases.h"

#include <functional>
#include <random>

using NTypes::sDate_t;
using NTypes::sDateTime_t;
using NTypes::sTime_t;

namespace {

// Every way to make a date-time of a record whose fields are taken as they stand.
struct Maker
{
    const char *name;
    std::function<CDateTime(const QByteArray &, Qt::TimeSpec)> make;
};

template<typename Packed>
CDateTime madeBySetValue(const Packed &packed, Qt::TimeSpec spec)
{
    CDateTime made = startedIn(spec);
    made.setValue(packed);
    return made;
}

template<typename Packed>
CDateTime madeByFromValue(const Packed &packed, Qt::TimeSpec spec)
{
    return startedIn(spec).fromValue(packed, spec);
}

const QVector<Maker> &makers()
{
    static const QVector<Maker> all = {
        {"CDateTime(long long)", [](const QByteArray &b, Qt::TimeSpec s) { return CDateTime(wordOf(b), s); }},
        {"CDateTime(record)", [](const QByteArray &b, Qt::TimeSpec s) { return CDateTime(recordOf(b), s); }},
        {"CDateTime(union)",
         [](const QByteArray &b, Qt::TimeSpec s) { return CDateTime(unionOf(recordOf(b)), s); }},
        {"fromI64ByteArray", &CDateTime::fromI64ByteArray},
        {"setValue(long long)",
         [](const QByteArray &b, Qt::TimeSpec s) { return madeBySetValue(wordOf(b), s); }},
        {"setValue(record)",
         [](const QByteArray &b, Qt::TimeSpec s) { return madeBySetValue(recordOf(b), s); }},
        {"setValue(union)",
         [](const QByteArray &b, Qt::TimeSpec s) { return madeBySetValue(unionOf(recordOf(b)), s); }},
        {"fromValue(long long)",
         [](const QByteArray &b, Qt::TimeSpec s) { return madeByFromValue(wordOf(b), s); }},
        {"fromValue(record)",
         [](const QByteArray &b, Qt::TimeSpec s) { return madeByFromValue(recordOf(b), s); }},
        {"fromValue(union)",
         [](const QByteArray &b, Qt::TimeSpec s) { return madeByFromValue(unionOf(recordOf(b)), s); }},
        {"fromValue(QByteArray)", [](const QByteArray &b, Qt::TimeSpec s) { return madeByFromValue(b, s); }},
    };
    return all;
}

} // namespace

class tst_date_time_packing : public DateTimeTest
{
    Q_OBJECT

private Q_SLOTS:
    void unpacksEveryForm_data();
    void unpacksEveryForm();
    void impossibleTimeBesideADateIsMidnight_data();
    void impossibleTimeBesideADateIsMidnight();
    void byteArraysOfAnyLength_data();
    void byteArraysOfAnyLength();
    void setsDateAndTimeAlone();
    void packsEveryForm_data();
    void packsEveryForm();
    void nullPacksWhatQtGives();
    void recordsSurviveTheRoundTrip();
    void anyWordUnpacksAsQtDefines();
};

void tst_date_time_packing::unpacksEveryForm_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QTime>("time");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<bool>("null");

    const auto valid = [](const char *name, const char *hex, const QDate &date, const QTime &time) {
        QTest::newRow(name) << QByteArray::fromHex(hex) << date << time << true << false;
    };
    valid("sample", sampleBytes, sampleDate, sampleTime);
    valid("12:34:56.78 gives .780", "4e38220c0103e807", QDate(2024, 3, 1), QTime(12, 34, 56, 780));
    valid("first moment of a day", "000000000101b207", QDate(1970, 1, 1), QTime(0, 0));
    valid("last hundredth of a day", "633b3b171f0ce707", QDate(2023, 12, 31), QTime(23, 59, 59, 990));
    valid("leap day", "000000001d02d007", QDate(2000, 2, 29), QTime(0, 0));
    valid("year 1", "0000000001010100", QDate(1, 1, 1), QTime(0, 0));
    valid("year -1", "000000000101ffff", QDate(-1, 1, 1), QTime(0, 0));
    valid("last year", "000000001f0cff7f", QDate(32767, 12, 31), QTime(0, 0));
    valid("first year", "0000000001010080", QDate(-32768, 1, 1), QTime(0, 0));

    const auto noDate = [](const char *name, const char *hex, const QTime &time) {
        QTest::newRow(name) << QByteArray::fromHex(hex) << QDate() << time << false << false;
    };
    noDate("all zero has a time and no date", "0000000000000000", QTime(0, 0));
    noDate("month 13", "59070605040de507", sampleTime);
    noDate("month 0", "590706050400e507", sampleTime);
    noDate("month -1", "5907060504ffe507", sampleTime);
    noDate("day 0", "590706050003e507", sampleTime);
    noDate("day 32", "590706052003e507", sampleTime);
    noDate("day -1", "59070605ff03e507", sampleTime);
    noDate("day -128 is signed", "590706058003e507", sampleTime);
    noDate("February 29 of a common year", "590706051d02e507", sampleTime);
    noDate("year 0 does not exist", "5907060504030000", sampleTime);

    QTest::newRow("neither date nor time")
        << QByteArray::fromHex("00ffffff00000000") << QDate() << QTime() << false << true;
}

void tst_date_time_packing::unpacksEveryForm()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QDate, date);
    QFETCH(QTime, time);
    QFETCH(bool, valid);
    QFETCH(bool, null);

    for (const Qt::TimeSpec spec : {Qt::UTC, Qt::LocalTime}) {
        for (const Maker &maker : makers()) {
            const CDateTime made = maker.make(bytes, spec);
            const QDateTime value = made;
            QVERIFY2(value.date() == date, maker.name);
            QVERIFY2(value.time() == time, maker.name);
            QVERIFY2(made.isValid() == valid, maker.name);
            QVERIFY2(made.isNull() == null, maker.name);
            QVERIFY2(made.timeSpec() == spec, maker.name);
        }
    }
}

void tst_date_time_packing::impossibleTimeBesideADateIsMidnight_data()
{
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("hour 24") << QByteArray::fromHex("590706180403e507");
    QTest::newRow("hour -1") << QByteArray::fromHex("590706ff0403e507");
    QTest::newRow("minute 60") << QByteArray::fromHex("59073c050403e507");
    QTest::newRow("minute -1") << QByteArray::fromHex("5907ff050403e507");
    QTest::newRow("second 60") << QByteArray::fromHex("593c06050403e507");
    QTest::newRow("second -1") << QByteArray::fromHex("59ff06050403e507");
    QTest::newRow("hundredths 100") << QByteArray::fromHex("640706050403e507");
    QTest::newRow("hundredths 127") << QByteArray::fromHex("7f0706050403e507");
    QTest::newRow("hundredths -1") << QByteArray::fromHex("ff0706050403e507");
    QTest::newRow("hundredths -128") << QByteArray::fromHex("800706050403e507");
}

void tst_date_time_packing::impossibleTimeBesideADateIsMidnight()
{
    QFETCH(QByteArray, bytes);
    for (const Maker &maker : makers())
        QVERIFY2(sameFields(maker.make(bytes, Qt::UTC), utc(2021, 3, 4, 0, 0)), maker.name);
}

void tst_date_time_packing::byteArraysOfAnyLength_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("record");

    QTest::newRow("null") << QByteArray() << QByteArray::fromHex("0000000000000000");
    QTest::newRow("empty") << QByteArray("") << QByteArray::fromHex("0000000000000000");
    QTest::newRow("1 byte") << QByteArray::fromHex("59") << QByteArray::fromHex("5900000000000000");
    QTest::newRow("4 bytes, the time")
        << QByteArray::fromHex("59070605") << QByteArray::fromHex("5907060500000000");
    QTest::newRow("7 bytes, half the year")
        << QByteArray::fromHex("590706050403e5") << QByteArray::fromHex("590706050403e500");
    QTest::newRow("8 bytes") << QByteArray::fromHex(sampleBytes) << QByteArray::fromHex(sampleBytes);
    QTest::newRow("9 bytes") << QByteArray::fromHex("590706050403e507ff") << QByteArray::fromHex(sampleBytes);
    QTest::newRow("many bytes") << QByteArray::fromHex(sampleBytes) + QByteArray(100000, 'x')
                                << QByteArray::fromHex(sampleBytes);
}

void tst_date_time_packing::byteArraysOfAnyLength()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, record);

    const CDateTime expected(wordOf(record), Qt::UTC);
    QVERIFY(sameFields(CDateTime::fromI64ByteArray(bytes, Qt::UTC), expected));
    // What the object held before does not show through the missing bytes.
    CDateTime value(utc(1999, 12, 31, 23, 59, 59, 990));
    value.fromValue(bytes, Qt::UTC);
    QVERIFY(sameFields(value, expected));
}

void tst_date_time_packing::setsDateAndTimeAlone()
{
    CDateTime value(sampleWord, Qt::UTC);
    value.setDate(sDate_t{29, 2, 2000});
    QVERIFY(sameFields(value, utc(2000, 2, 29, 5, 6, 7, 890)));
    value.setTime(sTime_t{99, 59, 58, 23});
    QVERIFY(sameFields(value, utc(2000, 2, 29, 23, 58, 59, 990)));

    value.setDate(sDate_t{30, 2, 2000});
    QVERIFY(!value.isValid());
    QCOMPARE(QDateTime(value).time(), QTime(23, 58, 59, 990));
    value.setDate(sDate_t{1, 3, 2000});
    QVERIFY(sameFields(value, utc(2000, 3, 1, 23, 58, 59, 990)));

    CDateTime dateOnly;
    dateOnly.setDate(sDate_t{4, 3, 2021});
    QVERIFY(sameFields(dateOnly, local(2021, 3, 4, 0, 0)));
    CDateTime timeOnly;
    timeOnly.setTime(sTime_t{1, 2, 3, 4});
    QVERIFY(!timeOnly.isValid());
    QVERIFY(!timeOnly.isNull());
    QCOMPARE(QDateTime(timeOnly).time(), QTime(4, 3, 2, 10));
}

void tst_date_time_packing::packsEveryForm_data()
{
    QTest::addColumn<QDateTime>("value");
    QTest::addColumn<QByteArray>("bytes");

    const auto row = [](const char *name, const QDateTime &value, const char *hex) {
        QTest::newRow(name) << value << QByteArray::fromHex(hex);
    };
    row("sample", QDateTime(sampleDate, sampleTime, Qt::UTC), sampleBytes);
    row("789 ms are truncated to 78", utc(2024, 3, 1, 12, 34, 56, 789), "4e38220c0103e807");
    row("0 ms", utc(2024, 3, 1, 12, 34, 56, 0), "0038220c0103e807");
    row("1 ms", utc(2024, 3, 1, 12, 34, 56, 1), "0038220c0103e807");
    row("5 ms", utc(2024, 3, 1, 12, 34, 56, 5), "0038220c0103e807");
    row("9 ms", utc(2024, 3, 1, 12, 34, 56, 9), "0038220c0103e807");
    row("10 ms", utc(2024, 3, 1, 12, 34, 56, 10), "0138220c0103e807");
    row("995 ms are not rounded up", utc(2024, 3, 1, 12, 34, 56, 995), "6338220c0103e807");
    row("999 ms", utc(2024, 3, 1, 23, 59, 59, 999), "633b3b170103e807");
    row("midnight", utc(1970, 1, 1, 0, 0), "000000000101b207");
    row("year -1", utc(-1, 1, 1, 0, 0), "000000000101ffff");
    row("year 32767", utc(32767, 12, 31, 0, 0), "000000001f0cff7f");
    row("year -32768", utc(-32768, 1, 1, 0, 0), "0000000001010080");
    row("year 32768 is cut to -32768", utc(32768, 1, 1, 0, 0), "0000000001010080");
    row("year 65536 is cut to 0", utc(65536, 1, 1, 0, 0), "0000000001010000");
    row("year 67557 is cut to 2021", utc(67557, 3, 4, 5, 6, 7, 890), sampleBytes);
    row("year -32769 is cut to 32767", utc(-32769, 1, 1, 0, 0), "000000000101ff7f");
    row("time without a date", QDateTime(QDate(), sampleTime, Qt::UTC), "5907060500000000");
}

void tst_date_time_packing::packsEveryForm()
{
    QFETCH(QDateTime, value);
    QFETCH(QByteArray, bytes);

    const CDateTime dateTime(value);
    QCOMPARE(bytesOf(static_cast<sDateTime_t>(dateTime)), bytes);
    QCOMPARE(static_cast<long long>(dateTime), wordOf(bytes));
    QCOMPARE(dateTime.toI64(Qt::UTC), wordOf(bytes));
    sDateTime_t record{};
    QCOMPARE(dateTime.toDateTime(record, Qt::UTC), wordOf(bytes));
    QCOMPARE(bytesOf(record), bytes);
    QCOMPARE(dateTime.toI64ByteArray(Qt::UTC), bytes);
}

void tst_date_time_packing::nullPacksWhatQtGives()
{
    // QDate gives 0 for each part of a null date; QTime gives -1 for each part of a null time, and a negative
    // millisecond count packs as 0.
    const QByteArray bytes = QByteArray::fromHex("00ffffff00000000");
    const CDateTime null;
    QCOMPARE(static_cast<long long>(null), 0x00000000FFFFFF00LL);
    QCOMPARE(null.toI64(Qt::UTC), 0x00000000FFFFFF00LL);
    QCOMPARE(bytesOf(null), bytes);
    QCOMPARE(null.toI64ByteArray(Qt::LocalTime), bytes);
    QVERIFY(CDateTime::fromI64ByteArray(bytes, Qt::LocalTime).isNull());
}

void tst_date_time_packing::recordsSurviveTheRoundTrip()
{
    for (const int year : {-32768, -1, 1, 1582, 1899, 1970, 2000, 2038, 9999, 32767}) {
        for (const int month : {1, 2, 12}) {
            for (const int hundredths : {0, 1, 99}) {
                const sDateTime_t record{{qint8(hundredths), 59, 0, 23}, {28, qint8(month), qint16(year)}};
                const CDateTime value(record, Qt::UTC);
                QVERIFY(value.isValid());
                QCOMPARE(bytesOf(value), bytesOf(record));
                QCOMPARE(value.toI64ByteArray(Qt::UTC), bytesOf(record));
                const QByteArray bytes = value.toI64ByteArray(Qt::LocalTime);
                // Where the year needs 17 bits in local time, there is nothing to come back to.
                if (value.toQDateTime(Qt::LocalTime).date().year() <= 32767)
                    QCOMPARE(CDateTime::fromI64ByteArray(bytes, Qt::LocalTime), value);
            }
        }
    }
}

void tst_date_time_packing::anyWordUnpacksAsQtDefines()
{
    std::mt19937_64 random(20210304);
    for (int i = 0; i < 20000; ++i) {
        // Half of them have plausible high bits, so that valid dates occur.
        const quint64 mask = i % 2 == 0 ? ~quint64(0) : quint64(0x0FFF0F1F1F3F3F7F);
        const auto word = static_cast<long long>(random() & mask);
        const auto part = [word](int shift) { return static_cast<qint8>(word >> shift & 0xFF); };
        QDateTime expected;
        expected.setDate(QDate(static_cast<qint16>(word >> 48), part(40), part(32)));
        expected.setTime(QTime(part(24), part(16), part(8), part(0) * 10));
        expected.setTimeSpec(Qt::UTC);

        const CDateTime value(word, Qt::UTC);
        QVERIFY(sameFields(value, expected));
        if (expected.isValid() && QTime(part(24), part(16), part(8), part(0) * 10).isValid())
            QCOMPARE(static_cast<long long>(value), word);
        // Whatever the fields, no conversion may fault.
        static_cast<void>(CDateTime(word, Qt::LocalTime).toI64(Qt::UTC));
    }
}

QTEST_GUILESS_MAIN(tst_date_time_packing)
#include "tst_date_time_packing.moc"
