// SPDX-License-Identifier: MIT
// The texts of records, addresses and bytes beside Qt's own formatting and parsing of them, over many inputs.
#include "VariantSamples.h"

#include <AllocationCounter.h>
#include <LoggedTest.h>
#include <ScopedTimeZone.h>

#include <QDateTime>
#include <QHostAddress>
#include <QLocale>
#include <QTest>

using namespace VariantSamples;

namespace {

template<typename Record>
Record randomRecord(QRandomGenerator &generator)
{
    Record record{};
    generator.fillRange(reinterpret_cast<quint32 *>(&record), int(sizeof record / sizeof(quint32)));
    return record;
}

QString textByQt(const NTypes::sDateTime_t &record)
{
    if (record == NTypes::sDateTime_t{})
        return QStringLiteral("0000-00-00 00:00:00");
    const QDateTime dateTime(
        QDate(record.date.year, record.date.month, record.date.day),
        QTime(record.time.hour, record.time.minute, record.time.second, record.time.hundredths * 10));
    return QLocale::c().toString(dateTime, QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

QString textByQt(const NTypes::sVersion_t &record)
{
    return QStringLiteral("%1.%2.%3").arg(record.major).arg(record.minor).arg(record.build);
}

QString textByQt(const NTypes::sVersion4_t &record)
{
    return QStringLiteral("%1.%2.%3.%4")
        .arg(record.first)
        .arg(record.second)
        .arg(record.third)
        .arg(record.fourth);
}

QString textByQt(const NTypes::uIPv4HAddr_t &record)
{
    return QHostAddress(record.value).toString();
}

quint16 partByQt(const QString &text, int index)
{
    const QStringList parts = text.split(QLatin1Char('.'), Qt::KeepEmptyParts);
    return static_cast<quint16>(parts.value(index).toShort(nullptr, 10));
}

void parseByQt(const QString &text, NTypes::sVersion_t &record)
{
    record.major = static_cast<quint8>(partByQt(text, 0));
    record.minor = static_cast<quint8>(partByQt(text, 1));
    record.build = partByQt(text, 2);
}

void parseByQt(const QString &text, NTypes::sVersion4_t &record)
{
    record = {partByQt(text, 3), partByQt(text, 2), partByQt(text, 1), partByQt(text, 0)};
}

void parseByQt(const QString &text, NTypes::uIPv4HAddr_t &record)
{
    record.value = QHostAddress(text).toIPv4Address();
}

void parseByQt(const QString &text, NTypes::sDateTime_t &record)
{
    bool isWord = false;
    const qint64 word = text.toInt(&isWord, 10);
    const QDateTime dateTime = QDateTime::fromString(text, Qt::ISODate);
    if (isWord) {
        std::memcpy(&record, &word, sizeof record);
    } else if (dateTime.isValid()) {
        const QDate date = dateTime.date();
        const QTime time = dateTime.time();
        record.date = {static_cast<qint8>(date.day()), static_cast<qint8>(date.month()),
                       static_cast<qint16>(date.year())};
        record.time = {static_cast<qint8>(time.msec() / 10), static_cast<qint8>(time.second()),
                       static_cast<qint8>(time.minute()), static_cast<qint8>(time.hour())};
    }
}

template<typename Record>
bool textIsQts(const Record &record)
{
    const QString text = CVariant(record).toStr();
    const QString expected = textByQt(record);
    const bool same = text == expected && text.isNull() == expected.isNull();
    if (!same)
        qWarning() << "ours" << text << "Qt's" << expected;
    return same;
}

template<typename Record>
bool parsingIsQts(const QString &text)
{
    Record record{};
    parseByQt(text, record);
    const CVariant expected(record);
    const CVariant parsed = CVariant::fromStr(text, expected.type());
    const bool same = parsed.type() == expected.type() && parsed.toByteArray() == expected.toByteArray();
    if (!same)
        qWarning() << "text" << text << "ours" << parsed << "Qt's" << expected;
    return same;
}

// A text with up to two units put in, replaced or left out: mostly near to being plain.
QString mangled(QString text, QRandomGenerator &generator)
{
    static const QString units =
        QStringLiteral(" \t+-0123456789.,:/TZtxeE\u00A0\u0663\uFF15\U0001D7D8") + QChar(0);
    for (quint32 left = generator.bounded(3U); left > 0; --left) {
        const int place = generator.bounded(text.size() + 1);
        const QChar unit = units.at(generator.bounded(units.size()));
        switch (generator.bounded(3)) {
        case 0:
            text.insert(place, unit);
            break;
        case 1:
            text.replace(place, 1, unit);
            break;
        default:
            text.remove(place, 1 + generator.bounded(4));
            break;
        }
    }
    return text;
}

NTypes::sDateTime_t recordOf(const QDate &date, int second)
{
    NTypes::sDateTime_t record{};
    record.date = {static_cast<qint8>(date.day()), static_cast<qint8>(date.month()),
                   static_cast<qint16>(date.year())};
    record.time = {0, static_cast<qint8>(second % 60), static_cast<qint8>(second / 60 % 60),
                   static_cast<qint8>(second / 3600)};
    return record;
}

// The text of a record whether or not its local time exists.
QString isoText(const NTypes::sDateTime_t &record, char separator)
{
    return QString::asprintf("%04d-%02d-%02d%c%02d:%02d:%02d", record.date.year, record.date.month,
                             record.date.day, separator, record.time.hour, record.time.minute,
                             record.time.second);
}

// Fields that are mostly possible, often at or behind an end of their range.
NTypes::sDateTime_t nearlyPossible(QRandomGenerator &generator)
{
    const auto field = [&](int first, int last) { return generator.bounded(first - 1, last + 2); };
    NTypes::sDateTime_t record{};
    record.date = {static_cast<qint8>(field(1, 31)), static_cast<qint8>(field(1, 12)),
                   static_cast<qint16>(field(0, 9999))};
    record.time = {static_cast<qint8>(field(0, 99)), static_cast<qint8>(field(0, 59)),
                   static_cast<qint8>(field(0, 59)), static_cast<qint8>(field(0, 23))};
    return record;
}

} // namespace

class tst_record_texts : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void localTimesOfAZone_data();
    void localTimesOfAZone();
    void everyYear();
    void anyRecord();
    void anyBytes();
    void mangledTexts();
    void partsAtTheirLimits_data();
    void partsAtTheirLimits();
    void textsAllocateOnce_data();
    void textsAllocateOnce();
    void plainTextsAreReadInPlace_data();
    void plainTextsAreReadInPlace();
};

void tst_record_texts::localTimesOfAZone_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::newRow("no daylight saving") << QByteArray("UTC0");
    QTest::newRow("gap at two") << QByteArray("CET-1CEST,M3.5.0,M10.5.0/3");
    QTest::newRow("gap at two in the west") << QByteArray("EST5EDT,M3.2.0,M11.1.0");
    QTest::newRow("gap at midnight") << QByteArray("<-01>1<+00>,M3.5.0/0,M10.5.0/1");
    QTest::newRow("gap of half an hour") << QByteArray("<+1030>-10:30<+11>-11,M10.1.0,M4.1.0");
    QTest::newRow("gap in the south") << QByteArray("NZST-12NZDT,M9.5.0,M4.1.0/3");
}

// Every half hour of some years, so that the gaps of the zone are among them.
void tst_record_texts::localTimesOfAZone()
{
    QFETCH(const QByteArray, zone);
    const ScopedTimeZone scopedZone(zone);
    QRandomGenerator generator(20240331);
    int missing = 0;
    for (const int year : {1969, 1970, 2024, 2038}) {
        for (QDate date(year, 1, 1); date.year() == year; date = date.addDays(1)) {
            for (int start = 0; start < 24 * 3600; start += 1800) {
                const auto record = recordOf(date, start + generator.bounded(2) * generator.bounded(1800));
                QVERIFY(textIsQts(record));
                if (generator.bounded(4) == 0)
                    QVERIFY(parsingIsQts<NTypes::sDateTime_t>(isoText(record, start % 3600 ? 'T' : ' ')));
                missing += int(CVariant(record).toStr().isEmpty());
            }
        }
    }
    if (!ScopedTimeZone::followsRules() && zone != QByteArray("UTC0"))
        QSKIP("time zones cannot be set by their rules here");
    QCOMPARE(missing > 0, zone != QByteArray("UTC0"));
}

void tst_record_texts::everyYear()
{
    const ScopedTimeZone zone("CET-1CEST,M3.5.0,M10.5.0/3");
    for (int year = -32768; year <= 32767; ++year)
        QVERIFY(textIsQts(NTypes::sDateTime_t{{99, 58, 9, 7}, {1, 12, static_cast<qint16>(year)}}));
}

void tst_record_texts::anyRecord()
{
    const ScopedTimeZone zone("CET-1CEST,M3.5.0,M10.5.0/3");
    QRandomGenerator generator(4711);
    for (int i = 0; i < 50000; ++i) {
        QVERIFY(textIsQts(randomRecord<NTypes::sDateTime_t>(generator)));
        QVERIFY(textIsQts(nearlyPossible(generator)));
        QVERIFY(textIsQts(randomRecord<NTypes::sVersion_t>(generator)));
        QVERIFY(textIsQts(randomRecord<NTypes::sVersion4_t>(generator)));
        QVERIFY(textIsQts(randomRecord<NTypes::uIPv4HAddr_t>(generator)));
    }
}

void tst_record_texts::anyBytes()
{
    QRandomGenerator generator(4712);
    for (int i = 0; i < 5000; ++i) {
        const QByteArray bytes = randomBytes(generator.bounded(40), generator);
        const QString text = CVariant::fromRawData(bytes.constData(), static_cast<unsigned int>(bytes.size()),
                                                   NTypes::E_BYTEARRAY)
                                 .toStr();
        QCOMPARE(text, QString::fromLatin1(bytes.toHex()));
        QCOMPARE(text.isNull(), bytes.isEmpty());
    }
}

void tst_record_texts::mangledTexts()
{
    const ScopedTimeZone zone("CET-1CEST,M3.5.0,M10.5.0/3");
    QRandomGenerator generator(4713);
    for (int i = 0; i < 50000; ++i) {
        const auto small = [&] { return generator.bounded(generator.bounded(2) ? 300 : 40000); };
        const QString parts = QStringLiteral("%1.%2.%3").arg(small()).arg(small()).arg(small());
        const QString four = QStringLiteral("%1.%2").arg(parts).arg(small());
        QVERIFY(parsingIsQts<NTypes::sVersion_t>(mangled(parts, generator)));
        QVERIFY(parsingIsQts<NTypes::sVersion4_t>(mangled(four, generator)));
        const QString address = QHostAddress(generator.generate()).toString();
        QVERIFY(parsingIsQts<NTypes::uIPv4HAddr_t>(mangled(address, generator)));
        const QString dateTime = isoText(nearlyPossible(generator), generator.bounded(2) ? ' ' : 'T');
        QVERIFY(parsingIsQts<NTypes::sDateTime_t>(mangled(dateTime, generator)));
    }
}

void tst_record_texts::partsAtTheirLimits_data()
{
    QTest::addColumn<QString>("text");
    const auto row = [](const char *text) { QTest::newRow(text) << QString::fromUtf8(text); };
    for (const char *const text : {"",
                                   ".",
                                   "..",
                                   "...",
                                   "1",
                                   "1.2",
                                   "1.2.3",
                                   "1.2.3.4",
                                   "1.2.3.4.5",
                                   "1.2.3.",
                                   "1.2.3.4.",
                                   ".1.2.3",
                                   "1..2.3",
                                   "01.2.3",
                                   "1.02.3.4",
                                   "00.0.0",
                                   "0.0.0",
                                   "0.0.0.0",
                                   "-1.2.3",
                                   "+1.2.3",
                                   " 1.2.3",
                                   "1.2.3 ",
                                   "1. 2.3",
                                   "255.255.255.255",
                                   "256.1.1.1",
                                   "1.256.1",
                                   "32767.32767.32767",
                                   "32768.1.1",
                                   "1.1.32768",
                                   "32767.32767.32767.32767",
                                   "65535.65535.65535.65535",
                                   "99999.1.1",
                                   "4294967297.1.1",
                                   "99999999999999999999.1.1",
                                   "1.2.x",
                                   "1.2.3x",
                                   "0x10.2.3",
                                   "1.2.3.4/24",
                                   "::ffff:1.2.3.4",
                                   "::1",
                                   "\u0661.\u0662.\u0663",
                                   "2024-02-29 01:02:03",
                                   "2023-02-29 01:02:03",
                                   "2024-01-01T24:00:00",
                                   "2024-01-01 24:00:00",
                                   "2024-01-01 00:00:60",
                                   "0000-01-01 00:00:00",
                                   "0001-01-01 00:00:00",
                                   "9999-12-31 23:59:59",
                                   "0000-00-00 00:00:00",
                                   "2024-03-31 02:30:00",
                                   "2024-03-31 03:00:00",
                                   "2024-01-01t01:02:03",
                                   "2024-01-01 01:02:03.567",
                                   "2024-01-01 01:02:03Z",
                                   "2024-01-01 01:02",
                                   "2024-01-01",
                                   "-001-01-01 00:00:00",
                                   "2024/01/01 00:00:00",
                                   "12345",
                                   "-1",
                                   "2147483648"})
        row(text);
}

void tst_record_texts::partsAtTheirLimits()
{
    const ScopedTimeZone zone("CET-1CEST,M3.5.0,M10.5.0/3");
    QFETCH(const QString, text);
    QVERIFY(parsingIsQts<NTypes::sVersion_t>(text));
    QVERIFY(parsingIsQts<NTypes::sVersion4_t>(text));
    QVERIFY(parsingIsQts<NTypes::uIPv4HAddr_t>(text));
    QVERIFY(parsingIsQts<NTypes::sDateTime_t>(text));
}

void tst_record_texts::textsAllocateOnce_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("type");
    QTest::newRow("E_DATETIME") << "2024-05-06 07:08:09" << int(NTypes::E_DATETIME);
    QTest::newRow("E_VERSION") << "1.2.300" << int(NTypes::E_VERSION);
    QTest::newRow("E_VERSION_4") << "1.2.3.4" << int(NTypes::E_VERSION_4);
    QTest::newRow("E_IPV4ADDR") << "192.168.1.20" << int(NTypes::E_IPV4ADDR);
    QTest::newRow("E_DS402_ACC_REC") << "02000000000000" << int(NTypes::E_DS402_ACC_REC);
    QTest::newRow("E_DS402_I32_ARRAY") << "020000000000000000000000" << int(NTypes::E_DS402_I32_ARRAY);
    QTest::newRow("E_BYTEARRAY") << "0123456789abcdef" << int(NTypes::E_BYTEARRAY);
}

void tst_record_texts::textsAllocateOnce()
{
    if (!AllocationCounter::isAvailable())
        QSKIP("allocations are not counted here");
    const ScopedTimeZone zone("UTC0"); // glibc itself allocates while no zone is set
    QFETCH(const QString, text);
    QFETCH(const int, type);
    const CVariant value = CVariant::fromStr(text, typeOf(type));
    QCOMPARE(value.toStr(), text);
    QCOMPARE(allocationsOf([&] { return value.toStr(); }), 1);
}

void tst_record_texts::plainTextsAreReadInPlace_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("type");
    QTest::newRow("E_DATETIME") << "2024-05-06 07:08:09" << int(NTypes::E_DATETIME);
    QTest::newRow("E_DATETIME with T") << "2024-05-06T07:08:09" << int(NTypes::E_DATETIME);
    QTest::newRow("E_VERSION") << "1.2.300" << int(NTypes::E_VERSION);
    QTest::newRow("E_VERSION_4") << "1.2.3.32767" << int(NTypes::E_VERSION_4);
    QTest::newRow("E_IPV4ADDR") << "192.168.1.255" << int(NTypes::E_IPV4ADDR);
}

void tst_record_texts::plainTextsAreReadInPlace()
{
    if (!AllocationCounter::isAvailable())
        QSKIP("allocations are not counted here");
    const ScopedTimeZone zone("UTC0"); // glibc itself allocates while no zone is set
    QFETCH(const QString, text);
    QFETCH(const int, type);
    QCOMPARE(allocationsOf([&] { return CVariant::fromStr(text, typeOf(type)); }), 0);
}

QTEST_GUILESS_MAIN(tst_record_texts)

#include "tst_record_texts.moc"
