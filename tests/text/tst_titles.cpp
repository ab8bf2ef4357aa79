// SPDX-License-Identifier: MIT
// Build dates and version texts. What a title says of the company is tested in tst_application_titles.
#include <CStr.h>

#include <LoggedTest.h>
#include <ScopedLocale.h>

#include <QTest>

namespace {

QLocale german()
{
    return QLocale(QLocale::German, QLocale::Germany);
}

QLocale american()
{
    return QLocale(QLocale::English, QLocale::UnitedStates);
}

} // namespace

class tst_titles : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void buildDates_data();
    void buildDates();
    void buildDatesDoNotFollowTheDefaultLocale_data();
    void buildDatesDoNotFollowTheDefaultLocale();
    void textsThatAreNoBuildDate_data();
    void textsThatAreNoBuildDate();
    void wrongNumberOfPartsIsANullDate();
    void datesOfThisCompiler();
    void shortDates_data();
    void shortDates();
    void versions_data();
    void versions();
    void versionsWithDate_data();
    void versionsWithDate();
};

void tst_titles::buildDates_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QDate>("date");

    QTest::newRow("two blanks before a one-digit day") << QStringLiteral("Nov  5 2024") << QDate(2024, 11, 5);
    QTest::newRow("one-digit day") << QStringLiteral("Nov 5 2024") << QDate(2024, 11, 5);
    QTest::newRow("filled day") << QStringLiteral("Nov 05 2024") << QDate(2024, 11, 5);
    QTest::newRow("two-digit day") << QStringLiteral("Nov 15 2024") << QDate(2024, 11, 15);
    QTest::newRow("blanks everywhere") << QStringLiteral("  Nov   15  2024 ") << QDate(2024, 11, 15);
    QTest::newRow("lower case") << QStringLiteral("nov 15 2024") << QDate(2024, 11, 15);
    QTest::newRow("leap day") << QStringLiteral("Feb 29 2024") << QDate(2024, 2, 29);
    QTest::newRow("last day") << QStringLiteral("Dec 31 9999") << QDate(9999, 12, 31);
    const char *const months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                  "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    int number = 0;
    for (const char *month : months)
        QTest::newRow(month) << QString::fromLatin1(month) + QStringLiteral("  1 2024")
                             << QDate(2024, ++number, 1);
}

void tst_titles::buildDates()
{
    QFETCH(QString, text);
    QTEST(CStr::createQDateFrom__DATE__(text), "date");
}

void tst_titles::buildDatesDoNotFollowTheDefaultLocale_data()
{
    QTest::addColumn<QLocale>("locale");

    // Other month names, other digits, another order.
    QTest::newRow("German") << german();
    QTest::newRow("Arabic") << QLocale(QLocale::Arabic, QLocale::Egypt);
    QTest::newRow("Persian") << QLocale(QLocale::Persian, QLocale::Iran);
    QTest::newRow("Japanese") << QLocale(QLocale::Japanese, QLocale::Japan);
    QTest::newRow("American") << american();
    QTest::newRow("C") << QLocale::c();
}

void tst_titles::buildDatesDoNotFollowTheDefaultLocale()
{
    QFETCH(QLocale, locale);
    const ScopedLocale scoped(locale);
    QCOMPARE(CStr::createQDateFrom__DATE__(QStringLiteral("Oct  5 2024")), QDate(2024, 10, 5));
    QCOMPARE(CStr::createQDateFrom__DATE__(QStringLiteral("Dec 24 2024")), QDate(2024, 12, 24));
    QVERIFY(!CStr::createQDateFrom__DATE__(QStringLiteral("Okt  5 2024")).isValid());
    QVERIFY(!CStr::createQDateFrom__DATE__(QStringLiteral("Dez 24 2024")).isValid());
    QCOMPARE(CStr::createDate(german(), QStringLiteral("Oct  5 2024")), QStringLiteral("05.10.24"));
}

void tst_titles::textsThatAreNoBuildDate_data()
{
    QTest::addColumn<QString>("text");

    for (const char *text :
         {"", " ", "Nov", "Nov 5", "Nov 5 2024 12", "Feb 29 2023", "Nov 31 2024", "Nov 0 2024",
          "Nov 005 2024", "November 5 2024", "Okt 5 2024", "5 Nov 2024", "2024-11-05", "Nov\t5\t2024",
          "Nov 5 24", "Nov 5 20244", "Nov x 2024", "Nov - 2024", "11 5 2024"})
        QTest::addRow("'%s'", text) << QString::fromLatin1(text);
}

void tst_titles::textsThatAreNoBuildDate()
{
    QFETCH(QString, text);
    QVERIFY(!CStr::createQDateFrom__DATE__(text).isValid());
    QCOMPARE(CStr::createDate(german(), text), QString());
}

void tst_titles::wrongNumberOfPartsIsANullDate()
{
    for (const char *text : {"", "Nov", "Nov 5", "Nov 5 2024 12"})
        QVERIFY(CStr::createQDateFrom__DATE__(QString::fromLatin1(text)).isNull());
}

void tst_titles::datesOfThisCompiler()
{
    const QDate date = CStr::createQDateFrom__DATE__(QStringLiteral(__DATE__));
    QVERIFY2(date.isValid() && date >= QDate(2024, 1, 1), __DATE__);
}

void tst_titles::shortDates_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("text");

    QTest::newRow("German") << german() << QStringLiteral("05.11.24");
    QTest::newRow("American") << american() << QStringLiteral("11/5/24");
    QTest::newRow("British") << QLocale(QLocale::English, QLocale::UnitedKingdom)
                             << QStringLiteral("05/11/2024");
    QTest::newRow("C") << QLocale::c() << QStringLiteral("5 Nov 2024");
}

void tst_titles::shortDates()
{
    QFETCH(QLocale, locale);
    QTEST(CStr::createDate(locale, QStringLiteral("Nov  5 2024")), "text");
}

void tst_titles::versions_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("extra");
    QTest::addColumn<QString>("text");

    QTest::newRow("version") << QStringLiteral("1.2.3") << QString() << QStringLiteral("[ V1.2.3 ]");
    QTest::newRow("version and extra")
        << QStringLiteral("1.2.3") << QStringLiteral("Demo") << QStringLiteral("[ V1.2.3 ] - Demo");
    QTest::newRow("extra is empty but not null")
        << QStringLiteral("1.2.3") << QString(QLatin1String("")) << QStringLiteral("[ V1.2.3 ]");
    QTest::newRow("a blank is an extra")
        << QStringLiteral("1.2.3") << QStringLiteral(" ") << QStringLiteral("[ V1.2.3 ] -  ");
    QTest::newRow("empty version") << QString() << QString() << QStringLiteral("[ V ]");
    QTest::newRow("placeholders stay")
        << QStringLiteral("%2%1") << QStringLiteral("%1 %9") << QStringLiteral("[ V%2%1 ] - %1 %9");
}

void tst_titles::versions()
{
    QFETCH(QString, version);
    QFETCH(QString, extra);
    QFETCH(QString, text);
    QCOMPARE(CStr::getVersionString(version, extra), text);
    if (extra.isEmpty())
        QCOMPARE(CStr::getVersionString(version), text);
}

void tst_titles::versionsWithDate_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("buildDate");
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("extra");
    QTest::addColumn<QString>("text");

    const QString date = QStringLiteral("Nov  5 2024");
    const QString version = QStringLiteral("1.2.3");
    QTest::newRow("German") << version << date << german() << QString()
                            << QStringLiteral("[ V1.2.3 - 05.11.24 ]");
    QTest::newRow("American, extra") << version << date << american() << QStringLiteral("Demo")
                                     << QStringLiteral("[ V1.2.3 - 11/5/24 ] - Demo");
    QTest::newRow("no date") << version << QString() << german() << QString()
                             << QStringLiteral("[ V1.2.3 -  ]");
    QTest::newRow("unparsable date") << version << QStringLiteral("Feb 29 2023") << german()
                                     << QStringLiteral("x") << QStringLiteral("[ V1.2.3 -  ] - x");
    QTest::newRow("placeholders stay") << QStringLiteral("%2") << date << german() << QStringLiteral("%1")
                                       << QStringLiteral("[ V%2 - 05.11.24 ] - %1");
}

void tst_titles::versionsWithDate()
{
    QFETCH(QString, version);
    QFETCH(QString, buildDate);
    QFETCH(QLocale, locale);
    QFETCH(QString, extra);
    QFETCH(QString, text);
    const ScopedLocale other(QLocale(QLocale::Japanese, QLocale::Japan));
    QCOMPARE(CStr::getVersionString(version, buildDate, locale, extra), text);
    if (extra.isEmpty())
        QCOMPARE(CStr::getVersionString(version, buildDate, locale), text);
}

QTEST_GUILESS_MAIN(tst_titles)
#include "tst_titles.moc"
