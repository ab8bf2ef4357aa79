// SPDX-License-Identifier: MIT
#include "DateTimeCases.h"

#include <QDataStream>
#include <QDebug>
#include <QLocale>
#include <QTimeZone>

#include <functional>
#include <limits>
#include <type_traits>

using NTypes::sDateTime_t;

static_assert(!std::is_polymorphic<CDateTime>::value, "no virtual operation");
static_assert(sizeof(CDateTime) == sizeof(QDateTime), "one QDateTime is the only member");
static_assert(std::is_copy_constructible<CDateTime>::value && std::is_copy_assignable<CDateTime>::value,
              "a value");
static_assert(std::is_convertible<QDateTime, CDateTime>::value, "a QDateTime becomes a CDateTime by itself");
static_assert(!std::is_convertible<long long, CDateTime>::value
                  && !std::is_convertible<sDateTime_t, CDateTime>::value
                  && !std::is_convertible<NTypes::uDateTimeVal_t, CDateTime>::value,
              "a packed form never becomes a CDateTime unseen");

namespace {

QByteArray streamed(const std::function<void(QDataStream &)> &write, int version,
                    QDataStream::ByteOrder order)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(version);
    stream.setByteOrder(order);
    write(stream);
    return bytes;
}

} // namespace

Q_DECLARE_METATYPE(QDataStream::ByteOrder)

class tst_date_time : public DateTimeTest
{
    Q_OBJECT

private Q_SLOTS:
    void isNullAndLocalByDefault();
    void copiesAQDateTime();
    void takesTheDefaultSpecificationAsLocalTime();
    void isoTexts_data();
    void isoTexts();
    void textFormsAreThoseOfQDateTime();
    void localeTextIsInTheDefaultLocale();
    void compares_data();
    void compares();
    void packedFormsCompareWithoutBecomingADateTime();
    void streamsAsQDateTime_data();
    void streamsAsQDateTime();
    void streamGoldenBytes_data();
    void streamGoldenBytes();
    void shortStreamShowsInTheStatus();
    void anUnknownTimeSpecIsCorruptData_data();
    void anUnknownTimeSpecIsCorruptData();
    void aTimeZoneThatDoesNotExistIsWrittenAsNone();
    void readsAZoneOfTheWriterAsQt_data();
    void readsAZoneOfTheWriterAsQt();
    void aZoneOfTheWriterHasAKnownCountryAndName();
    void debugForm();
    void exampleOfTheClassComment();
};

void tst_date_time::isNullAndLocalByDefault()
{
    const CDateTime value;
    QVERIFY(value.isNull());
    QVERIFY(!value.isValid());
    QCOMPARE(value.timeSpec(), Qt::LocalTime);
    QVERIFY(sameFields(value, QDateTime()));
}

void tst_date_time::copiesAQDateTime()
{
    const QDateTime source(sampleDate, sampleTime, Qt::OffsetFromUTC, 7200);
    const CDateTime constructed(source);
    QVERIFY(sameFields(constructed, source));
    QVERIFY(constructed.isValid());
    QVERIFY(!constructed.isNull());

    const CDateTime copied(constructed);
    QVERIFY(sameFields(copied, source));

    CDateTime assigned;
    assigned = constructed;
    QVERIFY(sameFields(assigned, source));
    const CDateTime &alias = assigned;
    assigned = alias;
    QVERIFY(sameFields(assigned, source));

    CDateTime assignedQt;
    CDateTime &result = (assignedQt = source);
    QCOMPARE(&result, &assignedQt);
    QVERIFY(sameFields(assignedQt, source));

    const QDateTime back = assignedQt;
    QVERIFY(sameFields(back, source));
}

void tst_date_time::takesTheDefaultSpecificationAsLocalTime()
{
    const QByteArray bytes = QByteArray::fromHex(sampleBytes);
    const sDateTime_t record = recordOf(bytes);
    const QDateTime expected(sampleDate, sampleTime, Qt::LocalTime);
    for (const CDateTime &made : {CDateTime(sampleWord), CDateTime(record), CDateTime(unionOf(record)),
                                  CDateTime::fromI64ByteArray(bytes)})
        QVERIFY(sameFields(made, expected));

    // 05:06 local time is 04:06 UTC.
    const QDateTime instant = utc(2021, 3, 4, 4, 6, 7, 890);
    for (const CDateTime &made :
         {startedIn(Qt::UTC).fromValue(sampleWord), startedIn(Qt::UTC).fromValue(record),
          startedIn(Qt::UTC).fromValue(unionOf(record)), startedIn(Qt::UTC).fromValue(bytes)})
        QVERIFY(sameFields(made, instant));

    const CDateTime value(instant);
    QVERIFY(sameFields(value.toQDateTime(), expected));
    QCOMPARE(value.toI64(), sampleWord);
    sDateTime_t written{};
    QCOMPARE(value.toDateTime(written), sampleWord);
    QCOMPARE(bytesOf(written), bytes);
    QCOMPARE(value.toI64ByteArray(), bytes);
    QCOMPARE(CDateTime(utc(2021, 3, 4, 23, 30)).toIsoDate(), QStringLiteral("2021-03-05"));
    QCOMPARE(value.toIsoDateTime(), QStringLiteral("2021-03-04T05:06:07"));
}

void tst_date_time::isoTexts_data()
{
    QTest::addColumn<QDateTime>("value");
    QTest::addColumn<Qt::TimeSpec>("spec");
    QTest::addColumn<QString>("date");
    QTest::addColumn<QString>("dateTime");

    const auto row = [](const char *name, const QDateTime &value, Qt::TimeSpec spec, const char *date,
                        const char *dateTime) {
        QTest::newRow(name) << value << spec << QString::fromLatin1(date) << QString::fromLatin1(dateTime);
    };
    row("UTC as UTC", utc(2021, 3, 4, 5, 6, 7, 890), Qt::UTC, "2021-03-04", "2021-03-04T05:06:07Z");
    row("UTC as local time", utc(2021, 3, 4, 23, 6, 7, 890), Qt::LocalTime, "2021-03-05",
        "2021-03-05T00:06:07");
    row("local time as UTC", local(2021, 1, 1, 0, 30), Qt::UTC, "2020-12-31", "2020-12-31T23:30:00Z");
    row("offset as UTC", QDateTime(sampleDate, sampleTime, Qt::OffsetFromUTC, 7200), Qt::OffsetFromUTC,
        "2021-03-04", "2021-03-04T03:06:07Z");
    row("null", QDateTime(), Qt::UTC, "", "");
    row("time without a date", QDateTime(QDate(), sampleTime), Qt::LocalTime, "", "");
    row("year 10000", utc(10000, 1, 1, 0, 0), Qt::UTC, "", "");
    row("year 1", utc(1, 1, 1, 0, 0), Qt::UTC, "0001-01-01", "0001-01-01T00:00:00Z");
}

void tst_date_time::isoTexts()
{
    QFETCH(QDateTime, value);
    QFETCH(Qt::TimeSpec, spec);
    QFETCH(QString, date);
    QFETCH(QString, dateTime);

    QCOMPARE(CDateTime(value).toIsoDate(spec), date);
    QCOMPARE(CDateTime(value).toIsoDateTime(spec), dateTime);
}

void tst_date_time::textFormsAreThoseOfQDateTime()
{
    const QDateTime source(sampleDate, sampleTime, Qt::OffsetFromUTC, 7200);
    const CDateTime value(source);
    QCOMPARE(value.toString(Qt::ISODate), QStringLiteral("2021-03-04T05:06:07+02:00"));
    QCOMPARE(value.toString(Qt::ISODateWithMs), QStringLiteral("2021-03-04T05:06:07.890+02:00"));
    QCOMPARE(value.toString(Qt::RFC2822Date), QStringLiteral("04 Mar 2021 05:06:07 +0200"));
    QCOMPARE(value.toString(Qt::TextDate), source.toString(Qt::TextDate));
    QCOMPARE(value.toString(QStringLiteral("dd.MM.yyyy HH-mm-ss.zzz")),
             QStringLiteral("04.03.2021 05-06-07.890"));
    QCOMPARE(value.toString(QString()), source.toString(QString()));
    QCOMPARE(CDateTime().toString(Qt::ISODate), QString());
    QCOMPARE(CDateTime().toString(QStringLiteral("yyyy")), QString());
}

void tst_date_time::localeTextIsInTheDefaultLocale()
{
    const QLocale former;
    const CDateTime value(sampleWord, Qt::UTC);
    QStringList longTexts;
    for (const QLocale &locale : {QLocale(QLocale::German, QLocale::Germany),
                                  QLocale(QLocale::Japanese, QLocale::Japan), QLocale(QLocale::C)}) {
        QLocale::setDefault(locale);
        for (const QLocale::FormatType type :
             {QLocale::LongFormat, QLocale::ShortFormat, QLocale::NarrowFormat})
            QCOMPARE(value.toString(type), locale.toString(QDateTime(value), type));
        longTexts += value.toString(QLocale::LongFormat);
    }
    QLocale::setDefault(former);
    QVERIFY2(longTexts[0].contains(QStringLiteral("März")), qPrintable(longTexts[0]));
    QVERIFY2(longTexts[1].contains(QStringLiteral("3月")), qPrintable(longTexts[1]));
    QVERIFY2(longTexts[2].contains(QStringLiteral("March")), qPrintable(longTexts[2]));
}

void tst_date_time::compares_data()
{
    QTest::addColumn<QDateTime>("a");
    QTest::addColumn<QDateTime>("b");
    QTest::addColumn<int>("order"); // of a against b

    const QDateTime moment = utc(2021, 3, 4, 5, 6, 7, 890);
    QTest::newRow("equal") << moment << moment << 0;
    QTest::newRow("1 ms later") << moment << moment.addMSecs(1) << -1;
    QTest::newRow("1 ms earlier") << moment << moment.addMSecs(-1) << 1;
    QTest::newRow("same instant in local time") << moment << local(2021, 3, 4, 6, 6, 7, 890) << 0;
    QTest::newRow("same fields in local time are an hour earlier")
        << moment << local(2021, 3, 4, 5, 6, 7, 890) << 1;
    QTest::newRow("same instant at an offset")
        << moment << QDateTime(sampleDate, QTime(7, 6, 7, 890), Qt::OffsetFromUTC, 7200) << 0;
    QTest::newRow("same instant in a zone")
        << moment << QDateTime(sampleDate, QTime(2, 6, 7, 890), QTimeZone(-10800)) << 0;
    QTest::newRow("before the epoch") << utc(1950, 1, 1, 0, 0) << utc(1970, 1, 1, 0, 0) << -1;
    QTest::newRow("negative year") << utc(-5, 1, 1, 0, 0) << utc(5, 1, 1, 0, 0) << -1;
    QTest::newRow("null and null") << QDateTime() << QDateTime() << 0;
}

void tst_date_time::compares()
{
    QFETCH(QDateTime, a);
    QFETCH(QDateTime, b);
    QFETCH(int, order);

    const CDateTime left(a);
    const CDateTime right(b);
    QCOMPARE(left == right, order == 0);
    QCOMPARE(left != right, order != 0);
    QCOMPARE((left < right), order < 0);
    QCOMPARE(left > right, order > 0);
    QCOMPARE(left <= right, order <= 0);
    QCOMPARE(left >= right, order >= 0);
    QCOMPARE((right < left), order > 0);
    QCOMPARE(right > left, order < 0);
    QCOMPARE(right <= left, order >= 0);
    QCOMPARE(right >= left, order <= 0);

    QCOMPARE(left == b, order == 0);
    QCOMPARE(left != b, order != 0);
    QCOMPARE(b == left, order == 0);
    QCOMPARE(b != left, order != 0);
    QCOMPARE((left < b), order < 0);
    QCOMPARE(left >= b, order >= 0);
}

void tst_date_time::packedFormsCompareWithoutBecomingADateTime()
{
    const CDateTime value(utc(2021, 3, 4, 5, 6, 7, 895));
    const sDateTime_t record = recordOf(QByteArray::fromHex(sampleBytes));
    QVERIFY(value == record);
    QVERIFY(record == value);
    QVERIFY(value == sampleWord);
    QVERIFY(value != sampleWord + 1);
    QVERIFY(value != CDateTime(sampleWord, Qt::UTC));
}

void tst_date_time::streamsAsQDateTime_data()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<QDataStream::ByteOrder>("order");

    const QVector<QPair<const char *, int>> versions = {
        {"3.3", QDataStream::Qt_3_3},  {"4.0", QDataStream::Qt_4_0}, {"4.8", QDataStream::Qt_4_8},
        {"5.0", QDataStream::Qt_5_0},  {"5.2", QDataStream::Qt_5_2}, {"5.12", QDataStream::Qt_5_12},
        {"5.15", QDataStream::Qt_5_15}};
    for (const auto &[name, version] : versions) {
        QTest::addRow("%s big-endian", name) << version << QDataStream::BigEndian;
        QTest::addRow("%s little-endian", name) << version << QDataStream::LittleEndian;
    }
}

void tst_date_time::streamsAsQDateTime()
{
    QFETCH(int, version);
    QFETCH(QDataStream::ByteOrder, order);

    for (const QDateTime &source :
         {QDateTime(), utc(2021, 3, 4, 5, 6, 7, 891), local(2021, 7, 4, 5, 6, 7, 891),
          QDateTime(sampleDate, sampleTime, Qt::OffsetFromUTC, 7200),
          QDateTime(sampleDate, sampleTime, QTimeZone(-10800)), QDateTime(QDate(), sampleTime, Qt::UTC),
          utc(-32768, 1, 1, 0, 0)}) {
        const QByteArray expected = streamed([&](QDataStream &stream) { stream << source; }, version, order);
        QByteArray bytes =
            streamed([&](QDataStream &stream) { stream << CDateTime(source); }, version, order);
        QCOMPARE(bytes.toHex(), expected.toHex());

        bytes += '\x5a';
        QDataStream qtStream(bytes);
        QDataStream stream(bytes);
        for (QDataStream *each : {&qtStream, &stream}) {
            each->setVersion(version);
            each->setByteOrder(order);
        }
        QDateTime expectedBack;
        qtStream >> expectedBack;
        CDateTime back(utc(1999, 9, 9, 9, 9));
        stream >> back;
        QVERIFY(sameFields(back, expectedBack));
        QCOMPARE(stream.status(), QDataStream::Ok);
        // Not a byte more was read than written.
        quint8 guard = 0;
        stream >> guard;
        QCOMPARE(guard, quint8(0x5a));
    }
}

void tst_date_time::streamGoldenBytes_data()
{
    QTest::addColumn<QDateTime>("value");
    QTest::addColumn<int>("version");
    QTest::addColumn<QDataStream::ByteOrder>("order");
    QTest::addColumn<QByteArray>("bytes");

    // 2021-03-04 is Julian day 2459278 = 0x25868E; 05:06:07.890 is 18367890 = 0x01184592 ms after midnight.
    const auto row = [](const char *name, const QDateTime &value, int version, QDataStream::ByteOrder order,
                        const char *hex) {
        QTest::newRow(name) << value << version << order << QByteArray::fromHex(hex);
    };
    const QDateTime inUtc(sampleDate, sampleTime, Qt::UTC);
    row("UTC", inUtc, QDataStream::Qt_5_15, QDataStream::BigEndian, "000000000025868e 01184592 01");
    row("UTC, little-endian", inUtc, QDataStream::Qt_5_15, QDataStream::LittleEndian,
        "8e86250000000000 92451801 01");
    row("UTC, 4.8", inUtc, QDataStream::Qt_4_8, QDataStream::BigEndian, "0025868e 01184592 02");
    row("local time", QDateTime(sampleDate, sampleTime, Qt::LocalTime), QDataStream::Qt_5_15,
        QDataStream::BigEndian, "000000000025868e 01184592 00");
    row("offset +02:00", QDateTime(sampleDate, sampleTime, Qt::OffsetFromUTC, 7200), QDataStream::Qt_5_15,
        QDataStream::BigEndian, "000000000025868e 01184592 02 00001c20");
    row("null", QDateTime(), QDataStream::Qt_5_15, QDataStream::BigEndian, "8000000000000000 ffffffff 00");
}

void tst_date_time::streamGoldenBytes()
{
    QFETCH(QDateTime, value);
    QFETCH(int, version);
    QFETCH(QDataStream::ByteOrder, order);
    QFETCH(QByteArray, bytes);

    const CDateTime dateTime(value);
    QCOMPARE(streamed([&](QDataStream &stream) { stream << dateTime; }, version, order).toHex(),
             bytes.toHex());
    QDataStream stream(bytes);
    stream.setVersion(version);
    stream.setByteOrder(order);
    CDateTime back;
    stream >> back;
    QVERIFY(sameFields(back, value));
    QVERIFY(stream.atEnd());
}

void tst_date_time::shortStreamShowsInTheStatus()
{
    const QByteArray whole = QByteArray::fromHex("000000000025868e0118459201");
    for (int size = 0; size < whole.size(); ++size) {
        QDataStream stream(whole.left(size));
        stream.setVersion(QDataStream::Qt_5_15);
        CDateTime value;
        stream >> value;
        QCOMPARE(stream.status(), QDataStream::ReadPastEnd);
    }
}

void tst_date_time::anUnknownTimeSpecIsCorruptData_data()
{
    QTest::addColumn<int>("version");
    QTest::newRow("5.0") << int(QDataStream::Qt_5_0);
    QTest::newRow("5.2") << int(QDataStream::Qt_5_2);
    QTest::newRow("5.15") << int(QDataStream::Qt_5_15);
}

// Of such a value Qt would read foreign memory.
void tst_date_time::anUnknownTimeSpecIsCorruptData()
{
    QFETCH(int, version);
    const QByteArray dateAndTime = QByteArray::fromHex("000000000025868e01184592");
    for (int spec = -0x80; spec < 0x80; ++spec) {
        QDataStream stream(dateAndTime + static_cast<char>(spec) + QByteArray(32, '\0'));
        stream.setVersion(version);
        CDateTime value(utc(1999, 9, 9, 9, 9));
        stream >> value;
        const bool isKnown = spec >= Qt::LocalTime && spec <= Qt::TimeZone;
        QCOMPARE(stream.status(), isKnown ? QDataStream::Ok : QDataStream::ReadCorruptData);
        QCOMPARE(value.isNull(), !isKnown);
        QCOMPARE(QDateTime(value).date(), isKnown ? sampleDate : QDate());
    }
}

void tst_date_time::aTimeZoneThatDoesNotExistIsWrittenAsNone()
{
    const auto inZone = [](const QString &name) {
        QByteArray bytes = QByteArray::fromHex("000000000025868e0118459203");
        QDataStream stream(&bytes, QIODevice::Append);
        stream << name;
        return bytes;
    };
    const QByteArray inNone = inZone(QStringLiteral("-No Time Zone Specified!"));
    // The last ones are files, and one that never ends; Qt would open them.
    for (const QByteArray &bytes :
         {inZone(QStringLiteral("Nowhere/City")), inNone, inZone(QStringLiteral("Europe/../Europe/Berlin")),
          inZone(QStringLiteral("./UTC")), inZone(QStringLiteral("Europe//Berlin")),
          inZone(QStringLiteral("..")), inZone(QStringLiteral("/UTC")), inZone(QStringLiteral("UTC/")),
          inZone(QStringLiteral("../../../dev/zero"))}) {
        CDateTime value;
        QDataStream in(bytes);
        in >> value;
        QCOMPARE(in.status(), QDataStream::Ok);
        QVERIFY(!value.isValid());
        QCOMPARE(value.timeSpec(), Qt::TimeZone);
        QCOMPARE(QDateTime(value).date(), sampleDate);
        QCOMPARE(streamed([&value](QDataStream &stream) { stream << value; }, QDataStream::Qt_5_15,
                          QDataStream::BigEndian)
                     .toHex(),
                 inNone.toHex());
    }
}

void tst_date_time::readsAZoneOfTheWriterAsQt_data()
{
    const auto row = [](const char *name, const QTimeZone &zone) {
        QTest::newRow(name) << QDateTime(sampleDate, QTime(5, 6, 7), zone);
    };
    QTest::addColumn<QDateTime>("written");
    row("its own", QTimeZone("Plant/Hall 3", 5400, QStringLiteral("Hall time"), QStringLiteral("HT"),
                             QLocale::Germany, QStringLiteral("by the gate")));
    row("an offset", QTimeZone(-12600));
    row("the system's", QTimeZone("Europe/Berlin"));
#ifdef Q_OS_UNIX
    row("a rule", QTimeZone("<+03>-3")); // of POSIX
#endif
}

void tst_date_time::readsAZoneOfTheWriterAsQt()
{
    QFETCH(QDateTime, written);
    QVERIFY(written.isValid());
    const QByteArray bytes = streamed([&written](QDataStream &stream) { stream << written; },
                                      QDataStream::Qt_5_15, QDataStream::BigEndian);
    QDataStream in(bytes);
    CDateTime value;
    in >> value;
    QCOMPARE(in.status(), QDataStream::Ok);
    QVERIFY(in.atEnd());
    QCOMPARE(QDateTime(value), written);
    QCOMPARE(QDateTime(value).timeZone(), written.timeZone());
    QCOMPARE(streamed([&value](QDataStream &stream) { stream << value; }, QDataStream::Qt_5_15,
                      QDataStream::BigEndian)
                 .toHex(),
             bytes.toHex());
}

void tst_date_time::aZoneOfTheWriterHasAKnownCountryAndName()
{
    const auto read = [](const QString &id, qint32 country) {
        QByteArray bytes = QByteArray::fromHex("000000000025868e0118459203");
        QDataStream out(&bytes, QIODevice::Append);
        out << QStringLiteral("OffsetFromUtc") << id << qint32(3600) << QStringLiteral("Hall time")
            << QStringLiteral("HT") << country << QString();
        QDataStream in(bytes);
        CDateTime value;
        in >> value;
        return QDateTime(value);
    };
    const QDateTime inHall = read(QStringLiteral("Hall"), QLocale::Germany);
    QCOMPARE(inHall.offsetFromUtc(), 3600);
    QCOMPARE(inHall.timeZone().country(), QLocale::Germany);
    for (const qint32 unknown : {-1, QLocale::LastCountry + 1, std::numeric_limits<qint32>::max()})
        QCOMPARE(read(QStringLiteral("Hall"), unknown).timeZone().country(), QLocale::AnyCountry);
    const QDateTime elsewhere = read(QStringLiteral("../../../dev/zero"), QLocale::Germany);
    QCOMPARE(elsewhere.timeSpec(), Qt::TimeZone);
    QVERIFY(!elsewhere.timeZone().isValid());
    QCOMPARE(elsewhere.date(), sampleDate);
}

void tst_date_time::debugForm()
{
    const CDateTime value(sampleWord, Qt::UTC);
    QString quoted;
    QDebug(&quoted) << value;
    QCOMPARE(quoted.trimmed(), QStringLiteral("\"CDateTime(2021-03-04 05:06:07)\""));

    QString plain;
    QDebug(&plain).noquote() << value;
    QCOMPARE(plain.trimmed(), QStringLiteral("CDateTime(2021-03-04 05:06:07)"));

    // The stream's own settings are back afterwards.
    QString mixed;
    QDebug(&mixed).space() << 1 << value << 2 << 3;
    QCOMPARE(mixed.trimmed(), QStringLiteral("1 \"CDateTime(2021-03-04 05:06:07)\" 2 3"));
    QString tight;
    QDebug(&tight).nospace() << 1 << value << 2 << 3;
    QCOMPARE(tight, QStringLiteral("1\"CDateTime(2021-03-04 05:06:07)\"23"));

    QString null;
    QDebug(&null) << CDateTime();
    QCOMPARE(null.trimmed(), QStringLiteral("\"CDateTime()\""));
}

void tst_date_time::exampleOfTheClassComment()
{
    moveTo(india);
    CDateTime moment(0x07E5030405060759, Qt::UTC);
    QCOMPARE(moment.toI64ByteArray(Qt::UTC).toHex(), QByteArray("590706050403e507"));
    QCOMPARE(moment.toIsoDateTime(Qt::UTC), QStringLiteral("2021-03-04T05:06:07Z"));
    moment.fromValue(0x07E5030405060759, Qt::LocalTime);
    QVERIFY(sameFields(moment, utc(2021, 3, 3, 23, 36, 7, 890)));
}

QTEST_GUILESS_MAIN(tst_date_time)
#include "tst_date_time.moc"
