// SPDX-License-Identifier: MIT
#include "VariantSamples.h"

#include <LoggedTest.h>

#include <QTest>

using namespace VariantSamples;

namespace {

// What one form of a reader gave: the record's bytes, and its flag where the form tells one.
struct Reading
{
    const char *form;
    QByteArray bytes;
    bool tellsFlag;
    bool flag;
};
using Readings = QVector<Reading>;

// The reader that returns the record, with a flag that starts as its opposite, and without.
template<typename Record>
void readReturned(Readings &readings, const CVariant &value, Record (CVariant::*reader)(bool *) const)
{
    for (const bool before : {false, true}) {
        bool ok = before;
        const Record record = (value.*reader)(&ok);
        readings.append({"returned", bytesOf(record), true, ok});
    }
    const Record record = (value.*reader)(nullptr);
    readings.append({"returned without flag", bytesOf(record), false, false});
}

// The reader that fills an argument, which is not zero before.
template<typename Record>
void readReference(Readings &readings, const CVariant &value, bool (CVariant::*reader)(Record &) const)
{
    auto record = recordOf<Record>(QByteArray(static_cast<int>(sizeof(Record)), '\xA5'));
    const bool ok = (value.*reader)(record);
    readings.append({"reference", bytesOf(record), true, ok});
}

template<typename Record>
void readOperator(Readings &readings, const Record &record)
{
    readings.append({"operator", bytesOf(record), false, false});
}

Readings readVersion(const CVariant &value)
{
    Readings readings;
    readReturned<NTypes::sVersion_t>(readings, value, &CVariant::toVersion);
    readReference<NTypes::sVersion_t>(readings, value, &CVariant::toVersion);
    readReference<NTypes::uVersion_t>(readings, value, &CVariant::toVersion);
    readOperator(readings, value.operator NTypes::sVersion_t());
    readOperator(readings, value.operator NTypes::uVersion_t());
    return readings;
}

Readings readVersion4(const CVariant &value)
{
    Readings readings;
    readReturned<NTypes::sVersion4_t>(readings, value, &CVariant::toVersion4);
    readReference<NTypes::sVersion4_t>(readings, value, &CVariant::toVersion4);
    readReference<NTypes::uVersion4_t>(readings, value, &CVariant::toVersion4);
    readOperator(readings, value.operator NTypes::sVersion4_t());
    readOperator(readings, value.operator NTypes::uVersion4_t());
    return readings;
}

Readings readAddress(const CVariant &value)
{
    Readings readings;
    readReturned<NTypes::uIPv4HAddr_t>(readings, value, &CVariant::toIPv4Addr);
    readReference<NTypes::uIPv4HAddr_t>(readings, value, &CVariant::toIPv4Addr);
    readOperator(readings, value.operator NTypes::uIPv4HAddr_t());
    return readings;
}

Readings readCommand(const CVariant &value)
{
    Readings readings;
    readReturned<NTypes::sCommand_t>(readings, value, &CVariant::toCommand);
    readReference<NTypes::sCommand_t>(readings, value, &CVariant::toCommand);
    readReference<NTypes::uCommand_t>(readings, value, &CVariant::toCommand);
    readOperator(readings, value.operator NTypes::sCommand_t());
    readOperator(readings, value.operator NTypes::uCommand_t());
    return readings;
}

Readings readRecord01(const CVariant &value)
{
    Readings readings;
    readReturned<NTypes::sDs402Record01_t>(readings, value, &CVariant::toDS402Record01);
    readReference<NTypes::sDs402Record01_t>(readings, value, &CVariant::toDS402Record01);
    readOperator(readings, value.operator NTypes::sDs402Record01_t());
    return readings;
}

Readings readDateTime(const CVariant &value)
{
    Readings readings;
    readReference<NTypes::sDateTime_t>(readings, value, &CVariant::toDateTime);
    readReference<NTypes::uDateTimeVal_t>(readings, value, &CVariant::toDateTime);
    readOperator(readings, value.operator NTypes::sDateTime_t());
    readOperator(readings, value.operator NTypes::uDateTimeVal_t());
    return readings;
}

using Reader = Readings (*)(const CVariant &);

struct RecordType
{
    int tag;
    Reader reader;
    QVector<int> sources; // all tags that can be read
};

const RecordType &recordType(int tag)
{
    static const QVector<RecordType> types = {
        {16, readDateTime, {8, 9, 16, 25}}, {21, readVersion, {5, 6, 21, 25}},
        {22, readAddress, {5, 6, 22, 25}},  {23, readCommand, {5, 6, 23, 25}},
        {26, readRecord01, {25, 26}},       {32, readVersion4, {8, 9, 25, 32}},
    };
    return *std::find_if(types.begin(), types.end(),
                         [tag](const RecordType &type) { return type.tag == tag; });
}

void compareReadings(const Readings &readings, const QByteArray &bytes, bool flag)
{
    for (const Reading &reading : readings) {
        QVERIFY2(reading.bytes == bytes,
                 qPrintable(QStringLiteral("%1: %2 instead of %3")
                                .arg(QLatin1String(reading.form), QString::fromLatin1(reading.bytes.toHex()),
                                     QString::fromLatin1(bytes.toHex()))));
        QVERIFY2(!reading.tellsFlag || reading.flag == flag, reading.form);
    }
}

} // namespace

// The readers of records in all their forms.
class tst_variant_records : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void readableSources_data();
    void readableSources();
    void tooFewBytes_data();
    void tooFewBytes();
    void everyOtherSourceIsRefused_data();
    void everyOtherSourceIsRefused();
    void wordViewOfAVersion();
    void dateTimesTakeTheGivenTimeSpec_data();
    void dateTimesTakeTheGivenTimeSpec();
    void dateTimesAreLocalByDefault();
    void unreadableDateTimesAreInvalid_data();
    void unreadableDateTimesAreInvalid();
    void impossibleDateTimesAreWhatQtMakesOfThem_data();
    void impossibleDateTimesAreWhatQtMakesOfThem();
    void arrays_data();
    void arrays();
    void arraysAreReadFromAnyValueOfTheirByteLength();
    void failedArrayReadingLeavesTheArgument();
};

void tst_variant_records::readableSources_data()
{
    QTest::addColumn<int>("target");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("tag");
    QTest::addColumn<QByteArray>("bytes");
    const auto row = [](const char *name, int target, const CVariant &value, const char *bytes) {
        QTest::newRow(name) << target << heldBy(value) << static_cast<int>(value.type()) << fromHex(bytes);
    };
    row("version", 21, typedSample(21), "2C010502");
    row("version from E_U32", 21, CVariant(0x0205012CU), "2C010502");
    row("version from E_I32", 21, CVariant(-2), "FEFFFFFF");
    row("version from 4 bytes", 21, bytesValue(fromHex("01020304")), "01020304");
    row("version from more bytes", 21, bytesValue(fromHex("0102030405")), "01020304");
    row("address", 22, typedSample(22), "0A01A8C0");
    row("address from E_U32", 22, CVariant(0xC0A8010AU), "0A01A8C0");
    row("address from E_I32", 22, CVariant(-1), "FFFFFFFF");
    row("address from 4 bytes", 22, bytesValue(fromHex("01020304")), "01020304");
    row("address from more bytes", 22, bytesValue(fromHex("010203040506070809")), "01020304");
    row("command", 23, typedSample(23), "EFBEADDE");
    row("command from E_U32", 23, CVariant(0xDEADBEEFU), "EFBEADDE");
    row("command from E_I32", 23, CVariant(INT_MIN), "00000080");
    row("command from 4 bytes", 23, bytesValue(fromHex("01020304")), "01020304");
    row("command from more bytes", 23, bytesValue(fromHex("0102030405")), "01020304");
    row("four-part version", 32, typedSample(32), "0400030002000100");
    row("four-part version from E_U64", 32, CVariant(0x0001000200030004ULL), "0400030002000100");
    row("four-part version from E_I64", 32, CVariant(-2LL), "FEFFFFFFFFFFFFFF");
    row("four-part version from 8 bytes", 32, bytesValue(fromHex("0102030405060708")), "0102030405060708");
    row("four-part version from more bytes", 32, bytesValue(fromHex("010203040506070809")),
        "0102030405060708");
    row("date-time", 16, typedSample(16), "590706050403E507");
    row("date-time from E_U64", 16, CVariant(0x07E5030405060759ULL), "590706050403E507");
    row("date-time from E_I64", 16, CVariant(-1LL), "FFFFFFFFFFFFFFFF");
    row("date-time from 8 bytes", 16, bytesValue(fromHex("590706050403E507")), "590706050403E507");
    row("date-time from more bytes", 16, bytesValue(fromHex("590706050403E507FF")), "590706050403E507");
    row("acceleration record", 26, typedSample(26), "02000020400300");
    row("acceleration record from 7 bytes", 26, bytesValue(fromHex("01020304050607")), "01020304050607");
    row("acceleration record from more bytes", 26, bytesValue(fromHex("0102030405060708")), "01020304050607");
}

void tst_variant_records::readableSources()
{
    QFETCH(const int, target);
    QFETCH(const QVariant, value);
    QFETCH(const int, tag);
    QFETCH(const QByteArray, bytes);
    compareReadings(recordType(target).reader(tagged(value, tag)), bytes, true);
}

// A byte array is convertible whatever its length; the reader still needs all bytes of the record.
void tst_variant_records::tooFewBytes_data()
{
    QTest::addColumn<int>("target");
    QTest::addColumn<int>("size");
    QTest::newRow("version") << 21 << 4;
    QTest::newRow("address") << 22 << 4;
    QTest::newRow("command") << 23 << 4;
    QTest::newRow("four-part version") << 32 << 8;
    QTest::newRow("date-time") << 16 << 8;
    QTest::newRow("acceleration record") << 26 << 7;
}

void tst_variant_records::tooFewBytes()
{
    QFETCH(const int, target);
    QFETCH(const int, size);
    for (int length = 0; length < size; ++length) {
        const CVariant value = bytesValue(QByteArray(length, 'x'));
        QVERIFY(value.canConvertTo(typeOf(target)));
        compareReadings(recordType(target).reader(value), QByteArray(size, '\0'), false);
    }
}

void tst_variant_records::everyOtherSourceIsRefused_data()
{
    QTest::addColumn<int>("target");
    QTest::addColumn<int>("source");
    for (const int target : {16, 21, 22, 23, 26, 32}) {
        for (int source = 0; source <= 33; ++source) {
            if (recordType(target).sources.contains(source))
                continue;
            const QByteArray name = tagName(source) + " as " + tagName(target);
            QTest::newRow(name.constData()) << target << source;
        }
    }
}

void tst_variant_records::everyOtherSourceIsRefused()
{
    QFETCH(const int, target);
    QFETCH(const int, source);
    const CVariant sample = typedSample(source);
    const CVariant value = sample.type() == typeOf(source) ? sample : tagged(5U, source);
    const QByteArray zero(static_cast<int>(CDataTypeParser::typeSize(typeOf(target))), '\0');
    compareReadings(recordType(target).reader(value), zero, false);
}

void tst_variant_records::wordViewOfAVersion()
{
    bool ok = false;
    const NTypes::sVersion_t version = CVariant(0x0205012CU).toVersion(&ok);
    QVERIFY(ok);
    QCOMPARE(static_cast<int>(version.major), 2);
    QCOMPARE(static_cast<int>(version.minor), 5);
    QCOMPARE(static_cast<int>(version.build), 300);
}

void tst_variant_records::dateTimesTakeTheGivenTimeSpec_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("tag");
    QTest::newRow("own type") << heldBy(typedSample(16)) << 16;
    QTest::newRow("E_U64") << QVariant(0x07E5030405060759ULL) << 8;
    QTest::newRow("E_I64") << QVariant(0x07E5030405060759LL) << 9;
    QTest::newRow("bytes") << QVariant(fromHex("590706050403E507")) << 25;
}

void tst_variant_records::dateTimesTakeTheGivenTimeSpec()
{
    QFETCH(const QVariant, value);
    QFETCH(const int, tag);
    const CVariant variant = tagged(value, tag);
    const auto record = recordOf<NTypes::sDateTime_t>(fromHex("590706050403E507"));
    for (const Qt::TimeSpec spec : {Qt::LocalTime, Qt::UTC, Qt::OffsetFromUTC, Qt::TimeZone}) {
        bool ok = false;
        const CDateTime dateTime = variant.toDateTime(spec, &ok);
        QVERIFY(ok);
        QVERIFY(dateTime == CDateTime(record, spec));
        QCOMPARE(dateTime.timeSpec(), CDateTime(record, spec).timeSpec());
        QVERIFY(variant.toDateTime(spec) == dateTime);
    }
    const QDateTime utc = variant.toDateTime(Qt::UTC);
    QCOMPARE(utc, QDateTime(QDate(2021, 3, 4), QTime(5, 6, 7, 890), Qt::UTC));
    QCOMPARE(utc.timeSpec(), Qt::UTC);
}

void tst_variant_records::dateTimesAreLocalByDefault()
{
    const CVariant value = typedSample(16);
    const QDateTime expected(QDate(2021, 3, 4), QTime(5, 6, 7, 890), Qt::LocalTime);
    bool ok = false;
    CDateTime filled;
    QVERIFY(value.toDateTime(filled));
    for (const CDateTime &dateTime :
         {value.toDateTime(), value.toDateTime(&ok), value.operator CDateTime(), filled}) {
        QCOMPARE(QDateTime(dateTime), expected);
        QCOMPARE(dateTime.timeSpec(), Qt::LocalTime);
    }
    QVERIFY(ok);
}

void tst_variant_records::unreadableDateTimesAreInvalid_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("tag");
    QTest::newRow("number of 32 bits") << QVariant(5U) << 5;
    QTest::newRow("text") << heldBy(typedSample(12)) << 12;
    QTest::newRow("seven bytes") << QVariant(QByteArray(7, 'x')) << 25;
    QTest::newRow("empty") << QVariant() << 0;
}

void tst_variant_records::unreadableDateTimesAreInvalid()
{
    QFETCH(const QVariant, value);
    QFETCH(const int, tag);
    const CVariant variant = tagged(value, tag);
    bool ok = true;
    QVERIFY(!variant.toDateTime(&ok).isValid());
    QVERIFY(!ok);
    ok = true;
    QVERIFY(!variant.toDateTime(Qt::UTC, &ok).isValid());
    QVERIFY(!ok);
    QVERIFY(!variant.toDateTime(Qt::UTC).isValid());
    QVERIFY(!variant.operator CDateTime().isValid());
    CDateTime dateTime(QDateTime(QDate(2024, 3, 1), QTime(12, 0), Qt::UTC));
    QVERIFY(!variant.toDateTime(dateTime));
    QVERIFY(!dateTime.isValid());
}

void tst_variant_records::impossibleDateTimesAreWhatQtMakesOfThem_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<QDateTime>("expected");
    const QDateTime none;
    QTest::newRow("all zero") << fromHex("0000000000000000") << false << none;
    QTest::newRow("day 0") << fromHex("590706050003E507") << false << none;
    QTest::newRow("month 13") << fromHex("59070605040DE507") << false << none;
    QTest::newRow("29 February 2021") << fromHex("590706051D02E507") << false << none;
    QTest::newRow("year 0") << fromHex("5907060504030000") << false << none;
    const QDateTime midnight(QDate(2021, 3, 4), QTime(0, 0), Qt::UTC);
    QTest::newRow("hour 25 is midnight") << fromHex("000000190403E507") << true << midnight;
    QTest::newRow("hour -1 is midnight") << fromHex("590706FF0403E507") << true << midnight;
    QTest::newRow("minute 60 is midnight") << fromHex("59073C050403E507") << true << midnight;
    QTest::newRow("hundredths 100 are midnight") << fromHex("640706050403E507") << true << midnight;
}

void tst_variant_records::impossibleDateTimesAreWhatQtMakesOfThem()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const bool, valid);
    QFETCH(const QDateTime, expected);
    bool ok = false;
    const QDateTime dateTime = CVariant(recordOf<NTypes::sDateTime_t>(bytes)).toDateTime(Qt::UTC, &ok);
    QVERIFY(ok);
    QCOMPARE(dateTime.isValid(), valid);
    if (valid)
        QCOMPARE(dateTime, expected);
}

void tst_variant_records::arrays_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("tag");
    QTest::addColumn<QByteArray>("six");
    QTest::addColumn<QByteArray>("twelve");
    const auto row = [](const char *name, const CVariant &value, const char *six, const char *twelve) {
        QTest::newRow(name) << heldBy(value) << static_cast<int>(value.type()) << fromHex(six)
                            << fromHex(twelve);
    };
    row("E_DS402_I16_ARRAY", typedSample(27), "0100FEFF0300", "");
    row("E_DS402_I32_ARRAY", typedSample(28), "", "01000000FEFFFFFF03000000");
    row("E_DS402_DIO_ARRAY", typedSample(29), "", "0100000002000000FFFFFFFF");
    row("E_DS402_U16_ARRAY", typedSample(30), "01000200FFFF", "");
    row("E_DS402_U32_ARRAY", typedSample(31), "", "0300000004000000FEFFFFFF");
    row("6 bytes", bytesValue(fromHex("010203040506")), "010203040506", "");
    row("12 bytes", bytesValue(fromHex("0102030405060708090A0B0C")), "", "0102030405060708090A0B0C");
    for (const int length : {0, 1, 5, 7, 11, 13, 18, 24}) {
        const QByteArray name = QByteArray::number(length) + " bytes";
        row(name.constData(), bytesValue(QByteArray(length, 'x')), "", "");
    }
    for (const int tag :
         {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 26, 32})
        row(tagName(tag).constData(), typedSample(tag), "", "");
}

void tst_variant_records::arrays()
{
    QFETCH(const QVariant, value);
    QFETCH(const int, tag);
    QFETCH(const QByteArray, six);
    QFETCH(const QByteArray, twelve);
    const CVariant variant = tagged(value, tag);
    const QByteArray sixOrZero = six.isEmpty() ? QByteArray(6, '\0') : six;
    const QByteArray twelveOrZero = twelve.isEmpty() ? QByteArray(12, '\0') : twelve;
    Readings sixBytes;
    readReturned<NTypes::sDs402Array_t<short>>(sixBytes, variant, &CVariant::toDS402Array01);
    readOperator(sixBytes, variant.operator NTypes::sDs402Array_t<short>());
    readOperator(sixBytes, variant.operator NTypes::sDs402Array_t<unsigned short>());
    compareReadings(sixBytes, sixOrZero, !six.isEmpty());
    Readings twelveBytes;
    readReturned<NTypes::sDs402Array_t<int>>(twelveBytes, variant, &CVariant::toDS402Array02);
    readReturned<NTypes::sDs402Array_t<unsigned int>>(twelveBytes, variant, &CVariant::toDS402Array10);
    readOperator(twelveBytes, variant.operator NTypes::sDs402Array_t<int>());
    readOperator(twelveBytes, variant.operator NTypes::sDs402Array_t<unsigned int>());
    compareReadings(twelveBytes, twelveOrZero, !twelve.isEmpty());
}

// The length of the value's bytes decides alone: the text "hello" is six bytes with its terminating zero.
void tst_variant_records::arraysAreReadFromAnyValueOfTheirByteLength()
{
    const CVariant text = CVariant::fromStr(QStringLiteral("hello"), NTypes::E_CHARSTR64);
    bool ok = false;
    QCOMPARE(bytesOf(text.toDS402Array01(&ok)), QByteArray("hello\0", 6));
    QVERIFY(ok);
    const CVariant unsignedArray = typedSample(NTypes::E_DS402_U16_ARRAY);
    QCOMPARE(unsignedArray.toDS402Array01(&ok).entry[2], static_cast<short>(-1));
    QVERIFY(ok);
}

template<typename Record>
void checkArgumentStays(const CVariant &value, bool (CVariant::*reader)(Record &) const)
{
    const QByteArray before(static_cast<int>(sizeof(Record)), '\x5A');
    auto record = recordOf<Record>(before);
    QVERIFY(!(value.*reader)(record));
    QCOMPARE(bytesOf(record), before);
}

// The array readers leave the argument as it was; the readers of the other records zero it.
void tst_variant_records::failedArrayReadingLeavesTheArgument()
{
    for (const CVariant &value : {CVariant(), CVariant(5), bytesValue(QByteArray(7, 'x')), typedSample(26)}) {
        checkArgumentStays<NTypes::sDs402Array_t<short>>(value, &CVariant::toDS402Array01);
        checkArgumentStays<NTypes::sDs402Array_t<int>>(value, &CVariant::toDS402Array02);
        checkArgumentStays<NTypes::sDs402Array_t<unsigned int>>(value, &CVariant::toDS402Array10);
    }
    NTypes::sDs402Array_t<short> shorts = {};
    QVERIFY(typedSample(27).toDS402Array01(shorts));
    QCOMPARE(bytesOf(shorts), sampleBytes(27));
    NTypes::sDs402Array_t<int> ints = {};
    QVERIFY(typedSample(28).toDS402Array02(ints));
    QCOMPARE(bytesOf(ints), sampleBytes(28));
    NTypes::sDs402Array_t<unsigned int> unsignedInts = {};
    QVERIFY(typedSample(31).toDS402Array10(unsignedInts));
    QCOMPARE(bytesOf(unsignedInts), sampleBytes(31));
}

QTEST_GUILESS_MAIN(tst_variant_records)
#include "tst_variant_records.moc"
