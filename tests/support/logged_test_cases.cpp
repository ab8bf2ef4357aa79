// SPDX-License-Identifier: MIT
// Test functions that pass or fail by what they log. tst_logged_test runs each and knows which is which.
#include <LoggedTest.h>

#include <QLoggingCategory>
#include <QTest>

#include <thread>

class logged_test_cases : public LoggedTest
{
    Q_OBJECT

protected:
    void prepare() override;
    void tidy() override;

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    void logsNothing();
    void takesTheWarning();
    void takesSeveralInOrder();
    void takesOtherKinds();
    void takesFromAnotherThread();
    void takesTwice();
    void takesInTidy();

    void leavesAWarning();
    void leavesADebugLine();
    void leavesAnInfoLine();
    void leavesACriticalLine();
    void leavesALineOfACategory();
    void leavesALineOfAnotherThread();
    void leavesTheSecondWarning();
    void leavesALineInPrepare();
    void leavesALineInTidy();
    void leavesAnEmptyLine();
    void missesAWarning();
    void missesTheSecondWarning();
    void takesAnotherText();
    void takesAnotherKind();
    void leavesAWarningAndSkips();
};

namespace {

Q_LOGGING_CATEGORY(drive, "drive")

bool isFunction(const char *name)
{
    return qstrcmp(QTest::currentTestFunction(), name) == 0;
}

} // namespace

// Outside of the test functions lines go to QtTest as ever.
void logged_test_cases::initTestCase()
{
    LoggedTest::takeLog();
}

void logged_test_cases::cleanupTestCase()
{
    qWarning("after all of them");
}

void logged_test_cases::prepare()
{
    if (isFunction("leavesALineInPrepare"))
        qWarning("while preparing");
}

void logged_test_cases::tidy()
{
    if (isFunction("leavesALineInTidy") || isFunction("takesInTidy"))
        qWarning("while tidying");
    if (isFunction("takesInTidy"))
        QCOMPARE(takeLog(), QStringList{QStringLiteral("while tidying")});
}

void logged_test_cases::logsNothing()
{
    QCOMPARE(takeLog(), QStringList());
}

void logged_test_cases::takesTheWarning()
{
    qWarning("motor is hot");
    QCOMPARE(takeLog(), QStringList{QStringLiteral("motor is hot")});
}

void logged_test_cases::takesSeveralInOrder()
{
    qWarning("first");
    qWarning("second");
    QCOMPARE(takeLog(), (QStringList{QStringLiteral("first"), QStringLiteral("second")}));
}

void logged_test_cases::takesOtherKinds()
{
    qDebug("a");
    qInfo("b");
    qCritical("c");
    qCWarning(drive, "d");
    const QStringList expected = {QStringLiteral("[debug default] a"), QStringLiteral("[info default] b"),
                                  QStringLiteral("[critical default] c"),
                                  QStringLiteral("[warning drive] d")};
    QCOMPARE(takeLog(), expected);
}

void logged_test_cases::takesFromAnotherThread()
{
    std::thread([] { qWarning("elsewhere"); }).join();
    QCOMPARE(takeLog(), QStringList{QStringLiteral("elsewhere")});
}

void logged_test_cases::takesTwice()
{
    qWarning("first");
    QCOMPARE(takeLog(), QStringList{QStringLiteral("first")});
    QCOMPARE(takeLog(), QStringList());
    qWarning("second");
    QCOMPARE(takeLog(), QStringList{QStringLiteral("second")});
}

void logged_test_cases::takesInTidy() {}

void logged_test_cases::leavesAWarning()
{
    qWarning("motor is hot");
}

void logged_test_cases::leavesADebugLine()
{
    qDebug("motor is hot");
}

void logged_test_cases::leavesAnInfoLine()
{
    qInfo("motor is hot");
}

void logged_test_cases::leavesACriticalLine()
{
    qCritical("motor is hot");
}

void logged_test_cases::leavesALineOfACategory()
{
    qCWarning(drive, "motor is hot");
}

void logged_test_cases::leavesALineOfAnotherThread()
{
    std::thread([] { qWarning("elsewhere"); }).join();
}

void logged_test_cases::leavesTheSecondWarning()
{
    qWarning("first");
    QCOMPARE(takeLog(), QStringList{QStringLiteral("first")});
    qWarning("second");
}

void logged_test_cases::leavesALineInPrepare() {}

void logged_test_cases::leavesALineInTidy() {}

void logged_test_cases::leavesAnEmptyLine()
{
    qWarning().noquote().nospace() << QString();
}

void logged_test_cases::missesAWarning()
{
    QCOMPARE(takeLog(), QStringList{QStringLiteral("motor is hot")});
}

void logged_test_cases::missesTheSecondWarning()
{
    qWarning("first");
    QCOMPARE(takeLog(), (QStringList{QStringLiteral("first"), QStringLiteral("second")}));
}

void logged_test_cases::takesAnotherText()
{
    qWarning("motor is hot");
    QCOMPARE(takeLog(), QStringList{QStringLiteral("motor is cold")});
}

void logged_test_cases::takesAnotherKind()
{
    qDebug("motor is hot");
    QCOMPARE(takeLog(), QStringList{QStringLiteral("motor is hot")});
}

void logged_test_cases::leavesAWarningAndSkips()
{
    qWarning("motor is hot");
    QSKIP("not here");
}

QTEST_GUILESS_MAIN(logged_test_cases)
#include "logged_test_cases.moc"
