// SPDX-License-Identifier: MIT
#include <LoggedTest.h>
#include <Nj6UserLevel.h>
#include <j6Constants.h>

#include <QDateTime>
#include <QTest>

#include <type_traits>

class tst_constants : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void levelNames_data();
    void levelNames();
    void thereAreEightLevels();
    void formats_data();
    void formats();
    void formatsShowADateAndATime();
    void constantsAreUsableAtCompileTime();
    void userLevels_data();
    void userLevels();
    void userLevelIsASigned32BitEnumeration();
};

void tst_constants::levelNames_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<QString>("name");
    QTest::newRow("0") << 0 << QStringLiteral("emerg");
    QTest::newRow("1") << 1 << QStringLiteral("alert");
    QTest::newRow("2") << 2 << QStringLiteral("crit");
    QTest::newRow("3") << 3 << QStringLiteral("error");
    QTest::newRow("4") << 4 << QStringLiteral("warn");
    QTest::newRow("5") << 5 << QStringLiteral("notice");
    QTest::newRow("6") << 6 << QStringLiteral("info");
    QTest::newRow("7") << 7 << QStringLiteral("debug");
}

void tst_constants::levelNames()
{
    QFETCH(int, level);
    QFETCH(QString, name);
    QCOMPARE(QString(LEVEL_NAMES[level]), name);
    QCOMPARE(LEVEL_NAMES[level].size(), name.size());
}

void tst_constants::thereAreEightLevels()
{
    QCOMPARE(std::extent<decltype(LEVEL_NAMES)>::value, std::size_t(8));
}

void tst_constants::formats_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("text");
    QTest::newRow("date") << QString(DATE_FORMAT) << QStringLiteral("dd.MM.yyyy");
    QTest::newRow("time") << QString(TIME_FORMAT) << QStringLiteral("HH:mm:ss");
    QTest::newRow("date and time") << QString(DATE_TIME_FORMAT) << QStringLiteral("yyyy-MM-dd HH:mm:ss");
}

void tst_constants::formats()
{
    QFETCH(QString, format);
    QFETCH(QString, text);
    QCOMPARE(format, text);
}

void tst_constants::formatsShowADateAndATime()
{
    const QDateTime moment(QDate(2021, 3, 4), QTime(5, 6, 7), Qt::UTC);
    QCOMPARE(moment.date().toString(DATE_FORMAT), QStringLiteral("04.03.2021"));
    QCOMPARE(moment.time().toString(TIME_FORMAT), QStringLiteral("05:06:07"));
    QCOMPARE(moment.toString(DATE_TIME_FORMAT), QStringLiteral("2021-03-04 05:06:07"));
}

void tst_constants::constantsAreUsableAtCompileTime()
{
    // Each unit has its own copies, which therefore need no start-up order.
    constexpr int sizes =
        LEVEL_NAMES[7].size() + DATE_FORMAT.size() + TIME_FORMAT.size() + DATE_TIME_FORMAT.size();
    QCOMPARE(sizes, 5 + 10 + 8 + 19);
}

void tst_constants::userLevels_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<int>("number");
    QTest::newRow("User") << int(Nj6UserLevel::E_USER) << 0;
    QTest::newRow("OEM") << int(Nj6UserLevel::E_OEM) << 1;
    QTest::newRow("Admin") << int(Nj6UserLevel::E_ADMIN) << 16;
    QTest::newRow("V&T Technician") << int(Nj6UserLevel::E_VT_TECHNICIAN) << 48;
    QTest::newRow("V&T Production") << int(Nj6UserLevel::E_VT_PRODUCTION) << 64;
    QTest::newRow("V&T Developer") << int(Nj6UserLevel::E_VT_DEVELOPER) << 80;
}

void tst_constants::userLevels()
{
    QFETCH(int, level);
    QFETCH(int, number);
    QCOMPARE(level, number);
}

void tst_constants::userLevelIsASigned32BitEnumeration()
{
    using Underlying = std::underlying_type<Nj6UserLevel::eUserLevel_t>::type;
    QCOMPARE(sizeof(Nj6UserLevel::eUserLevel_t), std::size_t(4));
    QVERIFY(std::is_signed<Underlying>::value);
}

QTEST_GUILESS_MAIN(tst_constants)

#include "tst_constants.moc"
