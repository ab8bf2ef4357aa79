// SPDX-License-Identifier: MIT
#include <CStr.h>

#include <LoggedTest.h>
#include <ScopedLocale.h>

#include <QTest>

#include <climits>

namespace {

constexpr quint32 untouched32 = 0xA1B2C3D4U;
constexpr quint16 untouched16 = 0xA1B2U;

} // namespace

class tst_revisions : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void texts32_data();
    void texts32();
    void texts16_data();
    void texts16();
    void texts_data();
    void texts();
    void textsThatAreNoRevision_data();
    void textsThatAreNoRevision();
    void minorIsANumberNotAFraction();
    void unparsableMajorBeforeAPointCountsAsZero();
    void every16BitRevisionReadsBack();

    void splits_data();
    void splits();
    void moreThanOnePointStoresNothing();

private:
    ScopedLocale mLocale{QLocale(QLocale::Arabic, QLocale::Egypt)};
};

void tst_revisions::texts32_data()
{
    QTest::addColumn<quint32>("revision");
    QTest::addColumn<QString>("text");

    QTest::newRow("one digit") << 0x00010005U << QStringLiteral("1.005");
    QTest::newRow("two digits") << 0x00010063U << QStringLiteral("1.099");
    QTest::newRow("three digits") << 0x0002007BU << QStringLiteral("2.123");
    QTest::newRow("four digits") << 0x00031234U << QStringLiteral("3.4660");
    QTest::newRow("minor 0") << 0x00010000U << QStringLiteral("1.000");
    QTest::newRow("zero") << 0U << QStringLiteral("0.000");
    QTest::newRow("major above a byte") << 0x01000001U << QStringLiteral("256.001");
    QTest::newRow("largest") << 0xFFFFFFFFU << QStringLiteral("65535.65535");
}

void tst_revisions::texts32()
{
    QFETCH(quint32, revision);
    QFETCH(QString, text);
    QCOMPARE(CStr::revisionToString(revision), text);
    quint32 readBack = ~revision;
    QVERIFY(CStr::stringToRevision(text, readBack));
    QCOMPARE(readBack, revision);
}

void tst_revisions::texts16_data()
{
    QTest::addColumn<quint16>("revision");
    QTest::addColumn<QString>("text");

    QTest::newRow("one digit") << quint16{0x0105} << QStringLiteral("1.05");
    QTest::newRow("two digits") << quint16{0x010C} << QStringLiteral("1.12");
    QTest::newRow("three digits") << quint16{0x02FF} << QStringLiteral("2.255");
    QTest::newRow("minor 0") << quint16{0x0100} << QStringLiteral("1.00");
    QTest::newRow("zero") << quint16{0} << QStringLiteral("0.00");
    QTest::newRow("largest") << quint16{0xFFFF} << QStringLiteral("255.255");
}

void tst_revisions::texts16()
{
    QFETCH(quint16, revision);
    QTEST(CStr::revisionToString(revision), "text");
}

void tst_revisions::texts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("ok32");
    QTest::addColumn<quint32>("revision32");
    QTest::addColumn<bool>("ok16");
    QTest::addColumn<quint16>("revision16");

    QTest::newRow("minor 300 is above a byte")
        << QStringLiteral("1.300") << true << 0x0001012CU << false << untouched16;
    QTest::newRow("both") << QStringLiteral("1.5") << true << 0x00010005U << true << quint16{0x0105};
    QTest::newRow("major alone") << QStringLiteral("7") << true << 0x00070000U << true << quint16{0x0700};
    QTest::newRow("255.255") << QStringLiteral("255.255") << true << 0x00FF00FFU << true << quint16{0xFFFF};
    QTest::newRow("256.0") << QStringLiteral("256.0") << true << 0x01000000U << false << untouched16;
    QTest::newRow("0.256") << QStringLiteral("0.256") << true << 0x00000100U << false << untouched16;
    QTest::newRow("65535.65535") << QStringLiteral("65535.65535") << true << 0xFFFFFFFFU << false
                                 << untouched16;
    QTest::newRow("blanks") << QStringLiteral(" 1 . 5 ") << true << 0x00010005U << true << quint16{0x0105};
    QTest::newRow("signs") << QStringLiteral("+1.-0") << true << 0x00010000U << true << quint16{0x0100};
}

void tst_revisions::texts()
{
    QFETCH(QString, text);
    quint32 revision32 = untouched32;
    quint16 revision16 = untouched16;
    QTEST(CStr::stringToRevision(text, revision32), "ok32");
    QTEST(CStr::stringToRevision(text, revision16), "ok16");
    QTEST(revision32, "revision32");
    QTEST(revision16, "revision16");
}

void tst_revisions::textsThatAreNoRevision_data()
{
    QTest::addColumn<QString>("text");

    for (const char *text :
         {"",        "x",    ".",   "1.",    "1.x",        "x.",           "1.2.3",
          "..",      "1..2", "-1",  "-1.0",  "1.-1",       "65536",        "65536.0",
          "0.65536", "1,5",  "0x1", "1.0x5", "2147483648", "1.4294967296", "4294967296.1.1",
          "1.2.",    ".1.2"})
        QTest::addRow("'%s'", text) << QString::fromLatin1(text);
}

void tst_revisions::textsThatAreNoRevision()
{
    QFETCH(QString, text);
    quint32 revision32 = untouched32;
    quint16 revision16 = untouched16;
    QVERIFY(!CStr::stringToRevision(text, revision32));
    QVERIFY(!CStr::stringToRevision(text, revision16));
    QCOMPARE(revision32, untouched32);
    QCOMPARE(revision16, untouched16);
}

void tst_revisions::minorIsANumberNotAFraction()
{
    for (const char *text : {"1.5", "1.05", "1.005", "1.0000005"}) {
        quint32 revision = 0;
        QVERIFY(CStr::stringToRevision(QString::fromLatin1(text), revision));
        QCOMPARE(revision, 0x00010005U);
    }
}

void tst_revisions::unparsableMajorBeforeAPointCountsAsZero()
{
    for (const char *text : {"x.5", ".5", "2147483648.5"}) {
        quint32 revision32 = untouched32;
        quint16 revision16 = untouched16;
        QVERIFY(CStr::stringToRevision(QString::fromLatin1(text), revision32));
        QVERIFY(CStr::stringToRevision(QString::fromLatin1(text), revision16));
        QCOMPARE(revision32, 5U);
        QCOMPARE(revision16, quint16{5});
    }
}

void tst_revisions::every16BitRevisionReadsBack()
{
    for (quint32 number = 0; number <= USHRT_MAX; ++number) {
        const auto revision = static_cast<quint16>(number);
        auto readBack = static_cast<quint16>(~number);
        QVERIFY(CStr::stringToRevision(CStr::revisionToString(revision), readBack));
        QCOMPARE(readBack, revision);
    }
}

void tst_revisions::splits_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<int>("major");
    QTest::addColumn<int>("minor");

    QTest::newRow("one part") << QStringLiteral("12") << true << 12 << 0;
    QTest::newRow("one part, no number") << QStringLiteral("x") << false << 0 << 0;
    QTest::newRow("empty") << QString() << false << 0 << 0;
    QTest::newRow("two parts") << QStringLiteral("12.34") << true << 12 << 34;
    QTest::newRow("no number behind the point") << QStringLiteral("12.x") << false << 12 << 0;
    QTest::newRow("nothing behind the point") << QStringLiteral("12.") << false << 12 << 0;
    QTest::newRow("no number before the point: the last one decides")
        << QStringLiteral("x.34") << true << 0 << 34;
    QTest::newRow("no number at all") << QStringLiteral("x.y") << false << 0 << 0;
    QTest::newRow("point alone") << QStringLiteral(".") << false << 0 << 0;
    QTest::newRow("negative") << QStringLiteral("-12.-34") << true << -12 << -34;
    QTest::newRow("largest of 32 bits")
        << QStringLiteral("2147483647.2147483647") << true << INT_MAX << INT_MAX;
    QTest::newRow("smallest of 32 bits") << QStringLiteral("-2147483648") << true << INT_MIN << 0;
    QTest::newRow("above 32 bits") << QStringLiteral("2147483648") << false << 0 << 0;
    QTest::newRow("minor above 32 bits") << QStringLiteral("1.2147483648") << false << 1 << 0;
}

void tst_revisions::splits()
{
    QFETCH(QString, text);
    int major = 77;
    int minor = 88;
    QTEST(CStr::_splitStringAtDot(text, major, minor), "ok");
    QTEST(major, "major");
    QTEST(minor, "minor");
}

void tst_revisions::moreThanOnePointStoresNothing()
{
    for (const char *text : {"1.2.3", "..", "1.2.3.4"}) {
        int major = 77;
        int minor = 88;
        QVERIFY(!CStr::_splitStringAtDot(QString::fromLatin1(text), major, minor));
        QCOMPARE(major, 77);
        QCOMPARE(minor, 88);
    }
}

QTEST_GUILESS_MAIN(tst_revisions)
#include "tst_revisions.moc"
