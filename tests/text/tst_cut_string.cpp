// SPDX-License-Identifier: MIT
#include <CStr.h>

#include <LoggedTest.h>

#include <QTest>

#include <climits>

class tst_cut_string : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void fits_data();
    void fits();
    void anywhere_data();
    void anywhere();
    void atWord_data();
    void atWord();
    void noRoomAtWordKeepsTheWholeText();
    void pairsAreCutByUnits();
    void flagIsAlwaysSet();
};

void tst_cut_string::fits_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<quint32>("maxLen");

    const QString twenty = QStringLiteral("Position of the axis");
    QTest::newRow("exactly") << twenty << 20U;
    QTest::newRow("one more") << twenty << 21U;
    QTest::newRow("INT_MAX") << twenty << quint32{INT_MAX};
    QTest::newRow("above INT_MAX") << twenty << quint32{INT_MAX} + 1U;
    QTest::newRow("UINT_MAX") << twenty << UINT_MAX;
    QTest::newRow("shorter than the suffix") << QStringLiteral("abc") << 3U;
    QTest::newRow("empty") << QString() << 0U;
}

void tst_cut_string::fits()
{
    QFETCH(QString, text);
    QFETCH(quint32, maxLen);
    for (const bool atWord : {false, true}) {
        bool cut = true;
        QCOMPARE(CStr::cutString(text, maxLen, cut, atWord), text);
        QVERIFY(!cut);
    }
}

void tst_cut_string::anywhere_data()
{
    QTest::addColumn<quint32>("maxLen");
    QTest::addColumn<QString>("result");

    // Of a text of 20 characters.
    QTest::newRow("10") << 10U << QStringLiteral("Positi ...");
    QTest::newRow("19") << 19U << QStringLiteral("Position of the ...");
    QTest::newRow("6") << 6U << QStringLiteral("Po ...");
    QTest::newRow("5") << 5U << QStringLiteral("P ...");
    QTest::newRow("4") << 4U << QStringLiteral(" ...");
    QTest::newRow("3") << 3U << QStringLiteral(" ...");
    QTest::newRow("2") << 2U << QStringLiteral(" ...");
    QTest::newRow("1") << 1U << QStringLiteral(" ...");
    QTest::newRow("0") << 0U << QStringLiteral(" ...");
}

void tst_cut_string::anywhere()
{
    QFETCH(quint32, maxLen);
    bool cut = false;
    QTEST(CStr::cutString(QStringLiteral("Position of the axis"), maxLen, cut, false), "result");
    QVERIFY(cut);
}

void tst_cut_string::atWord_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<quint32>("maxLen");
    QTest::addColumn<QString>("result");

    const QString words = QStringLiteral("Position of the axis"); // blanks at 8, 11 and 15
    QTest::newRow("last blank below") << words << 18U << QStringLiteral("Position of ...");
    QTest::newRow("blank is the last character kept") << words << 16U << QStringLiteral("Position of ...");
    QTest::newRow("blank right behind what is kept") << words << 15U << QStringLiteral("Position ...");
    QTest::newRow("keeps 9") << words << 13U << QStringLiteral("Position ...");
    QTest::newRow("keeps 8: no blank lies below") << words << 12U << QStringLiteral("Position ...");
    QTest::newRow("keeps 7: no blank lies below") << words << 11U << QStringLiteral("Positio ...");
    QTest::newRow("keeps 1") << words << 5U << QStringLiteral("P ...");
    QTest::newRow("keeps nothing") << words << 4U << QStringLiteral(" ...");
    QTest::newRow("no blank") << QStringLiteral("Positionierungsfehler") << 12U
                              << QStringLiteral("Position ...");
    QTest::newRow("only blank is the first character")
        << QStringLiteral(" Positionierung") << 12U << QStringLiteral(" Positio ...");
    QTest::newRow("first character is not the only blank")
        << QStringLiteral(" Pos 123456789") << 12U << QStringLiteral(" Pos ...");
    QTest::newRow("first two are blanks")
        << QStringLiteral("  Positionierung") << 12U << QStringLiteral("  ...");
    QTest::newRow("two blanks in a row")
        << QStringLiteral("Axis  is moving") << 12U << QStringLiteral("Axis  ...");
    QTest::newRow("only blanks") << QStringLiteral("          ") << 8U << QStringLiteral("    ...");
    QTest::newRow("other white space is no blank")
        << QStringLiteral("Axis\tis\u00A0moving on") << 14U << QStringLiteral("Axis\tis\u00A0mo ...");
}

void tst_cut_string::atWord()
{
    QFETCH(QString, text);
    QFETCH(quint32, maxLen);
    bool cut = false;
    QTEST(CStr::cutString(text, maxLen, cut, true), "result");
    QVERIFY(cut);
}

void tst_cut_string::noRoomAtWordKeepsTheWholeText()
{
    const QString text = QStringLiteral("Position of the axis");
    for (const quint32 maxLen : {0U, 1U, 2U, 3U}) {
        bool cut = false;
        QCOMPARE(CStr::cutString(text, maxLen, cut, true), QStringLiteral("Position of the axis ..."));
        QVERIFY(cut);
    }
}

void tst_cut_string::pairsAreCutByUnits()
{
    const QString text = QStringLiteral("ab\U0001F600cdefgh"); // 10 units
    bool cut = false;
    QCOMPARE(CStr::cutString(text, 7, cut, false),
             QStringLiteral("ab") + QChar(0xD83D) + QStringLiteral(" ..."));
    QCOMPARE(CStr::cutString(text, 8, cut, false), QStringLiteral("ab\U0001F600 ..."));
    QCOMPARE(CStr::cutString(text, 10, cut, false), text);
}

void tst_cut_string::flagIsAlwaysSet()
{
    bool cut = false;
    CStr::cutString(QStringLiteral("abcdef"), 5, cut, false);
    QVERIFY(cut);
    CStr::cutString(QStringLiteral("abcdef"), 6, cut, false);
    QVERIFY(!cut);
}

QTEST_GUILESS_MAIN(tst_cut_string)
#include "tst_cut_string.moc"
