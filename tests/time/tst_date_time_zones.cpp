// SPDX-License-Identifier: MIT
#include "DateTimeCases.h"

using NTypes::sDateTime_t;

class tst_date_time_zones : public DateTimeTest
{
    Q_OBJECT

private Q_SLOTS:
    void fieldsStandAsTheyAreInTheSpecification_data();
    void fieldsStandAsTheyAreInTheSpecification();
    void setValueLeavesTheSpecification_data();
    void setValueLeavesTheSpecification();
    void setTimeSpecForwards_data();
    void setTimeSpecForwards();
    void fromValueKeepsSpecificationAndInstant_data();
    void fromValueKeepsSpecificationAndInstant();
    void fromValueOfAnImpossibleDateKeepsTheSpecification();
    void packsInTheSpecificationAskedFor_data();
    void packsInTheSpecificationAskedFor();
    void yearIsCutTo16BitsAfterConversion();
    void toQDateTimeLosesOffsetAndZone();
    void toTimeSpecOfTheSameSpecificationIsACopy();
    void skippedLocalTime_data();
    void skippedLocalTime();
    void repeatedLocalTime_data();
    void repeatedLocalTime();
};

void tst_date_time_zones::fieldsStandAsTheyAreInTheSpecification_data()
{
    QTest::addColumn<Qt::TimeSpec>("spec");
    QTest::addColumn<Qt::TimeSpec>("resultingSpec");
    QTest::addColumn<QDateTime>("instant");

    QTest::newRow("UTC") << Qt::UTC << Qt::UTC << utc(2021, 3, 4, 5, 6, 7, 890);
    QTest::newRow("local time") << Qt::LocalTime << Qt::LocalTime << utc(2021, 3, 4, 4, 6, 7, 890);
    QTest::newRow("an offset without a number is UTC")
        << Qt::OffsetFromUTC << Qt::UTC << utc(2021, 3, 4, 5, 6, 7, 890);
    QTest::newRow("a zone without a name is local")
        << Qt::TimeZone << Qt::LocalTime << utc(2021, 3, 4, 4, 6, 7, 890);
}

void tst_date_time_zones::fieldsStandAsTheyAreInTheSpecification()
{
    QFETCH(Qt::TimeSpec, spec);
    QFETCH(Qt::TimeSpec, resultingSpec);
    QFETCH(QDateTime, instant);

    const sDateTime_t record = recordOf(QByteArray::fromHex(sampleBytes));
    for (const CDateTime &made :
         {CDateTime(sampleWord, spec), CDateTime(record, spec), CDateTime(unionOf(record), spec),
          CDateTime::fromI64ByteArray(QByteArray::fromHex(sampleBytes), spec)}) {
        QCOMPARE(made.timeSpec(), resultingSpec);
        QCOMPARE(QDateTime(made).date(), sampleDate);
        QCOMPARE(QDateTime(made).time(), sampleTime);
        QCOMPARE(made.toQDateTime(Qt::UTC), instant);
    }
}

void tst_date_time_zones::setValueLeavesTheSpecification_data()
{
    QTest::addColumn<QDateTime>("before");
    QTest::addColumn<QDateTime>("after");

    QTest::newRow("UTC") << utc(2000, 1, 1, 0, 0) << QDateTime(sampleDate, sampleTime, Qt::UTC);
    QTest::newRow("local time") << local(2000, 1, 1, 0, 0)
                                << QDateTime(sampleDate, sampleTime, Qt::LocalTime);
    QTest::newRow("offset") << QDateTime(QDate(2000, 1, 1), QTime(0, 0), Qt::OffsetFromUTC, 7200)
                            << QDateTime(sampleDate, sampleTime, Qt::OffsetFromUTC, 7200);
    QTest::newRow("zone") << QDateTime(QDate(2000, 1, 1), QTime(0, 0), QTimeZone(-10800))
                          << QDateTime(sampleDate, sampleTime, QTimeZone(-10800));
}

void tst_date_time_zones::setValueLeavesTheSpecification()
{
    QFETCH(QDateTime, before);
    QFETCH(QDateTime, after);

    const sDateTime_t record = recordOf(QByteArray::fromHex(sampleBytes));
    CDateTime fromRecord(before);
    fromRecord.setValue(record);
    QVERIFY(sameFields(fromRecord, after));
    CDateTime fromUnion(before);
    fromUnion.setValue(unionOf(record));
    QVERIFY(sameFields(fromUnion, after));
    CDateTime fromWord(before);
    fromWord.setValue(sampleWord);
    QVERIFY(sameFields(fromWord, after));
}

void tst_date_time_zones::setTimeSpecForwards_data()
{
    QTest::addColumn<Qt::TimeSpec>("spec");
    QTest::addColumn<Qt::TimeSpec>("resultingSpec");

    QTest::newRow("local time") << Qt::LocalTime << Qt::LocalTime;
    QTest::newRow("UTC") << Qt::UTC << Qt::UTC;
    QTest::newRow("offset") << Qt::OffsetFromUTC << Qt::UTC;
    QTest::newRow("zone") << Qt::TimeZone << Qt::LocalTime;
}

void tst_date_time_zones::setTimeSpecForwards()
{
    QFETCH(Qt::TimeSpec, spec);
    QFETCH(Qt::TimeSpec, resultingSpec);

    CDateTime value(QDateTime(sampleDate, sampleTime, Qt::OffsetFromUTC, 3600));
    QCOMPARE(value.timeSpec(), Qt::OffsetFromUTC);
    value.setTimeSpec(spec);
    QVERIFY(sameFields(value, QDateTime(sampleDate, sampleTime, resultingSpec)));
}

void tst_date_time_zones::fromValueKeepsSpecificationAndInstant_data()
{
    QTest::addColumn<QDateTime>("before");
    QTest::addColumn<Qt::TimeSpec>("spec");
    QTest::addColumn<QDateTime>("after");

    const QDateTime nullUtc(QDate(), QTime(), Qt::UTC);
    const QDateTime offset(QDate(2000, 1, 1), QTime(0, 0), Qt::OffsetFromUTC, 7200);
    const QDateTime zoned(QDate(2000, 1, 1), QTime(0, 0), QTimeZone(-10800));
    QTest::newRow("UTC object, local record")
        << utc(2000, 1, 1, 0, 0) << Qt::LocalTime << utc(2021, 3, 4, 4, 6, 7, 890);
    QTest::newRow("UTC object, UTC record")
        << utc(2000, 1, 1, 0, 0) << Qt::UTC << utc(2021, 3, 4, 5, 6, 7, 890);
    QTest::newRow("null UTC object, local record")
        << nullUtc << Qt::LocalTime << utc(2021, 3, 4, 4, 6, 7, 890);
    QTest::newRow("null local object, UTC record")
        << QDateTime() << Qt::UTC << local(2021, 3, 4, 6, 6, 7, 890);
    QTest::newRow("local object, UTC record")
        << local(2000, 1, 1, 0, 0) << Qt::UTC << local(2021, 3, 4, 6, 6, 7, 890);
    QTest::newRow("local object, local record")
        << local(2000, 1, 1, 0, 0) << Qt::LocalTime << local(2021, 3, 4, 5, 6, 7, 890);
    QTest::newRow("offset object, UTC record")
        << offset << Qt::UTC << QDateTime(sampleDate, QTime(7, 6, 7, 890), Qt::OffsetFromUTC, 7200);
    QTest::newRow("offset object, local record")
        << offset << Qt::LocalTime << QDateTime(sampleDate, QTime(6, 6, 7, 890), Qt::OffsetFromUTC, 7200);
    QTest::newRow("zone object, UTC record")
        << zoned << Qt::UTC << QDateTime(sampleDate, QTime(2, 6, 7, 890), QTimeZone(-10800));
    QTest::newRow("zone object, local record")
        << zoned << Qt::LocalTime << QDateTime(sampleDate, QTime(1, 6, 7, 890), QTimeZone(-10800));
    QTest::newRow("UTC object, offset record is UTC")
        << utc(2000, 1, 1, 0, 0) << Qt::OffsetFromUTC << utc(2021, 3, 4, 5, 6, 7, 890);
    QTest::newRow("UTC object, zone record is local")
        << utc(2000, 1, 1, 0, 0) << Qt::TimeZone << utc(2021, 3, 4, 4, 6, 7, 890);
}

void tst_date_time_zones::fromValueKeepsSpecificationAndInstant()
{
    QFETCH(QDateTime, before);
    QFETCH(Qt::TimeSpec, spec);
    QFETCH(QDateTime, after);

    const QByteArray bytes = QByteArray::fromHex(sampleBytes);
    const sDateTime_t record = recordOf(bytes);
    CDateTime fromRecord(before);
    CDateTime fromUnion(before);
    CDateTime fromWord(before);
    CDateTime fromBytes(before);
    QCOMPARE(&fromRecord.fromValue(record, spec), &fromRecord);
    QCOMPARE(&fromUnion.fromValue(unionOf(record), spec), &fromUnion);
    QCOMPARE(&fromWord.fromValue(sampleWord, spec), &fromWord);
    QCOMPARE(&fromBytes.fromValue(bytes, spec), &fromBytes);
    for (const CDateTime &made : {fromRecord, fromUnion, fromWord, fromBytes}) {
        QVERIFY(sameFields(made, after));
        QCOMPARE(QDateTime(made).timeZone(), after.timeZone());
    }
}

void tst_date_time_zones::fromValueOfAnImpossibleDateKeepsTheSpecification()
{
    const QByteArray month13 = QByteArray::fromHex("59070605040de507");
    for (const QDateTime &before : {utc(2000, 1, 1, 0, 0), local(2000, 1, 1, 0, 0),
                                    QDateTime(sampleDate, sampleTime, Qt::OffsetFromUTC, 7200),
                                    QDateTime(sampleDate, sampleTime, QTimeZone(-10800))}) {
        CDateTime value(before);
        value.fromValue(month13, Qt::UTC);
        QVERIFY(!value.isValid());
        QCOMPARE(value.timeSpec(), before.timeSpec());
        // The time spec is still whole: the next good record is at the offset or in the zone of before.
        value.fromValue(sampleWord, Qt::UTC);
        QCOMPARE(value, CDateTime(sampleWord, Qt::UTC));
        QCOMPARE(QDateTime(value).offsetFromUtc(), before.offsetFromUtc());
    }
}

void tst_date_time_zones::packsInTheSpecificationAskedFor_data()
{
    QTest::addColumn<QDateTime>("value");
    QTest::addColumn<QByteArray>("own");
    QTest::addColumn<QByteArray>("asUtc");
    QTest::addColumn<QByteArray>("asLocal");

    const auto row = [](const char *name, const QDateTime &value, const char *own, const char *asUtc,
                        const char *asLocal) {
        QTest::newRow(name) << value << QByteArray::fromHex(own) << QByteArray::fromHex(asUtc)
                            << QByteArray::fromHex(asLocal);
    };
    row("UTC in winter", utc(2021, 3, 4, 5, 6, 7, 890), "590706050403e507", "590706050403e507",
        "590706060403e507");
    row("UTC in summer", utc(2021, 7, 4, 5, 6, 7, 890), "590706050407e507", "590706050407e507",
        "590706070407e507");
    row("local in winter", local(2021, 3, 4, 5, 6, 7, 890), "590706050403e507", "590706040403e507",
        "590706050403e507");
    row("local over the new year", local(2021, 1, 1, 0, 30), "00001e000101e507", "00001e171f0ce407",
        "00001e000101e507");
    row("offset +02:00", QDateTime(sampleDate, sampleTime, Qt::OffsetFromUTC, 7200), "590706050403e507",
        "590706030403e507", "590706040403e507");
    row("zone -03:00", QDateTime(sampleDate, sampleTime, QTimeZone(-10800)), "590706050403e507",
        "590706080403e507", "590706090403e507");
}

void tst_date_time_zones::packsInTheSpecificationAskedFor()
{
    QFETCH(QDateTime, value);
    QFETCH(QByteArray, own);
    QFETCH(QByteArray, asUtc);
    QFETCH(QByteArray, asLocal);
    if (!ScopedTimeZone::followsRules() && qstrcmp(QTest::currentDataTag(), "UTC in summer") == 0)
        QSKIP("summer time is another one here");

    const CDateTime dateTime(value);
    QCOMPARE(bytesOf(dateTime), own);
    QCOMPARE(static_cast<long long>(dateTime), wordOf(own));
    // An offset is converted to UTC and a zone to local time, as QDateTime::toTimeSpec() does.
    const QVector<QPair<Qt::TimeSpec, QByteArray>> expected = {
        {Qt::UTC, asUtc}, {Qt::LocalTime, asLocal}, {Qt::OffsetFromUTC, asUtc}, {Qt::TimeZone, asLocal}};
    for (const auto &[spec, bytes] : expected) {
        QCOMPARE(dateTime.toI64(spec), wordOf(bytes));
        QCOMPARE(dateTime.toI64ByteArray(spec), bytes);
        sDateTime_t record{};
        QCOMPARE(dateTime.toDateTime(record, spec), wordOf(bytes));
        QCOMPARE(bytesOf(record), bytes);
    }
}

void tst_date_time_zones::yearIsCutTo16BitsAfterConversion()
{
    const CDateTime lastEvening(utc(32767, 12, 31, 23, 30));
    QCOMPARE(lastEvening.toI64ByteArray(Qt::UTC), QByteArray::fromHex("00001e171f0cff7f"));
    QCOMPARE(lastEvening.toI64ByteArray(Qt::LocalTime), QByteArray::fromHex("00001e0001010080"));
    const CDateTime firstNight(local(-32768, 1, 1, 0, 30));
    QCOMPARE(firstNight.toI64ByteArray(Qt::LocalTime), QByteArray::fromHex("00001e0001010080"));
    QCOMPARE(firstNight.toI64ByteArray(Qt::UTC), QByteArray::fromHex("00001e171f0cff7f"));
}

void tst_date_time_zones::toQDateTimeLosesOffsetAndZone()
{
    const QDateTime offset(sampleDate, sampleTime, Qt::OffsetFromUTC, 7200);
    const CDateTime value(offset);
    QVERIFY(sameFields(value.toQDateTime(Qt::UTC), utc(2021, 3, 4, 3, 6, 7, 890)));
    QVERIFY(sameFields(value.toQDateTime(Qt::LocalTime), local(2021, 3, 4, 4, 6, 7, 890)));
    QVERIFY(sameFields(value.toQDateTime(Qt::OffsetFromUTC), utc(2021, 3, 4, 3, 6, 7, 890)));
    QVERIFY(sameFields(value.toQDateTime(Qt::TimeZone), local(2021, 3, 4, 4, 6, 7, 890)));
}

void tst_date_time_zones::toTimeSpecOfTheSameSpecificationIsACopy()
{
    const QDateTime offset(sampleDate, sampleTime, Qt::OffsetFromUTC, 7200);
    QVERIFY(sameFields(CDateTime(offset).toTimeSpec(Qt::OffsetFromUTC), offset));
    const QDateTime zoned(sampleDate, sampleTime, QTimeZone(-10800));
    const CDateTime zonedCopy = CDateTime(zoned).toTimeSpec(Qt::TimeZone);
    QVERIFY(sameFields(zonedCopy, zoned));
    QCOMPARE(QDateTime(zonedCopy).timeZone(), zoned.timeZone());
    const QDateTime inUtc = utc(2021, 3, 4, 5, 6, 7, 890);
    QVERIFY(sameFields(CDateTime(inUtc).toTimeSpec(Qt::UTC), inUtc));

    // Another time spec converts.
    QVERIFY(sameFields(CDateTime(offset).toTimeSpec(Qt::UTC), utc(2021, 3, 4, 3, 6, 7, 890)));
    QVERIFY(sameFields(CDateTime(inUtc).toTimeSpec(Qt::LocalTime), local(2021, 3, 4, 6, 6, 7, 890)));
    QVERIFY(sameFields(CDateTime(inUtc).toTimeSpec(Qt::OffsetFromUTC), inUtc));
}

void tst_date_time_zones::skippedLocalTime_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QTime>("before");
    QTest::addColumn<QTime>("skipped");
    QTest::addColumn<QTime>("after");

    QTest::newRow("Central Europe") << QByteArray(centralEurope) << QDate(2021, 3, 28) << QTime(1, 59, 59)
                                    << QTime(2, 30) << QTime(3, 0);
    QTest::newRow("Southern, at midnight")
        << QByteArray(southern) << QDate(2021, 10, 17) << QTime() << QTime(0, 30) << QTime(1, 0);
}

void tst_date_time_zones::skippedLocalTime()
{
    if (!ScopedTimeZone::followsRules())
        QSKIP("time zones cannot be set by their rules here");
    QFETCH(QByteArray, zone);
    QFETCH(QDate, date);
    QFETCH(QTime, before);
    QFETCH(QTime, skipped);
    QFETCH(QTime, after);

    moveTo(zone.constData());
    const auto wordAt = [&date](const QTime &time) {
        return static_cast<long long>(CDateTime(QDateTime(date, time, Qt::UTC)));
    };
    if (before.isValid())
        QVERIFY(CDateTime(wordAt(before), Qt::LocalTime).isValid());
    QVERIFY(CDateTime(wordAt(after), Qt::LocalTime).isValid());

    const CDateTime inGap(wordAt(skipped), Qt::LocalTime);
    QVERIFY(!inGap.isValid());
    QVERIFY(!inGap.isNull());
    QCOMPARE(static_cast<long long>(inGap), wordAt(skipped));
    // An invalid value is not converted: its fields are kept.
    QVERIFY(sameFields(inGap.toQDateTime(Qt::UTC), QDateTime(date, skipped, Qt::UTC)));
    QCOMPARE(inGap.toI64(Qt::UTC), wordAt(skipped));
    CDateTime inUtc = startedIn(Qt::UTC);
    inUtc.fromValue(wordAt(skipped), Qt::LocalTime);
    QVERIFY(sameFields(inUtc, QDateTime(date, skipped, Qt::UTC)));
    // In UTC the same fields never pass through local time, whatever the zone.
    QVERIFY(sameFields(CDateTime(wordAt(skipped), Qt::UTC), QDateTime(date, skipped, Qt::UTC)));
}

void tst_date_time_zones::repeatedLocalTime_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<QDateTime>("summer");
    QTest::addColumn<QDateTime>("winter");
    QTest::addColumn<QByteArray>("localBytes");

    QTest::newRow("Central Europe, 02:30 twice")
        << QByteArray(centralEurope) << utc(2021, 10, 31, 0, 30) << utc(2021, 10, 31, 1, 30)
        << QByteArray::fromHex("00001e021f0ae507");
    QTest::newRow("Southern, 23:30 twice")
        << QByteArray(southern) << utc(2021, 2, 21, 1, 30) << utc(2021, 2, 21, 2, 30)
        << QByteArray::fromHex("00001e171402e507");
}

void tst_date_time_zones::repeatedLocalTime()
{
    if (!ScopedTimeZone::followsRules())
        QSKIP("time zones cannot be set by their rules here");
    QFETCH(QByteArray, zone);
    QFETCH(QDateTime, summer);
    QFETCH(QDateTime, winter);
    QFETCH(QByteArray, localBytes);

    moveTo(zone.constData());
    for (const QDateTime &instant : {summer, winter}) {
        const CDateTime value(instant);
        QCOMPARE(value.toI64ByteArray(Qt::LocalTime), localBytes);
        // The converted value still knows which of the two it is; only the packed form has lost it.
        QCOMPARE(value.toTimeSpec(Qt::LocalTime).toQDateTime(Qt::UTC), instant);
        CDateTime inLocalTime;
        inLocalTime.fromValue(static_cast<long long>(value), Qt::UTC);
        QCOMPARE(bytesOf(inLocalTime), localBytes);
        QCOMPARE(inLocalTime.toI64(Qt::UTC), static_cast<long long>(value));
    }
    const CDateTime unpacked = CDateTime::fromI64ByteArray(localBytes, Qt::LocalTime);
    QVERIFY(unpacked.isValid());
    QVERIFY(unpacked == summer || unpacked == winter);
    QCOMPARE(bytesOf(unpacked), localBytes);
}

QTEST_GUILESS_MAIN(tst_date_time_zones)
#include "tst_date_time_zones.moc"
