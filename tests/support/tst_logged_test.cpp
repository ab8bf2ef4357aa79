// SPDX-License-Identifier: MIT
// Functions that must fail do fail: the exit code says so, and the output names the line.
#include <LineEnds.h>
#include <LoggedTest.h>

#include <QProcess>
#include <QTest>

namespace {

struct Outcome
{
    int exitCode;
    QString output;
};

// Runs these functions of the test program that stands beside this one.
Outcome run(const QStringList &functions)
{
    constexpr int timeout = 120000;
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral(LOGGED_TEST_CASES), functions);
    if (!process.waitForFinished(timeout) || process.exitStatus() != QProcess::NormalExit)
        return {-1, process.errorString()};
    return {process.exitCode(), QString::fromLocal8Bit(withPlainLineEnds(process.readAll()))};
}

QString failureOf(const char *function)
{
    return QStringLiteral("FAIL!  : logged_test_cases::%1() ").arg(QLatin1String(function));
}

QString passOf(const char *function)
{
    return QStringLiteral("PASS   : logged_test_cases::%1()").arg(QLatin1String(function));
}

} // namespace

class tst_logged_test : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void linesThatAreTakenPass_data();
    void linesThatAreTakenPass();
    void linesThatAreLeftFail_data();
    void linesThatAreLeftFail();
    void linesThatDoNotComeFail_data();
    void linesThatDoNotComeFail();
    void linesDoNotReachTheNextFunction();
    void linesBetweenTheFunctionsGoToQtTest();
};

void tst_logged_test::linesThatAreTakenPass_data()
{
    QTest::addColumn<QByteArray>("function");

    for (const char *function : {"logsNothing", "takesTheWarning", "takesSeveralInOrder", "takesOtherKinds",
                                 "takesFromAnotherThread", "takesTwice", "takesInTidy"})
        QTest::newRow(function) << QByteArray(function);
}

void tst_logged_test::linesThatAreTakenPass()
{
    QFETCH(QByteArray, function);

    const Outcome outcome = run({QString::fromLatin1(function)});
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.output));
    QVERIFY2(outcome.output.contains(passOf(function.constData())), qPrintable(outcome.output));
}

void tst_logged_test::linesThatAreLeftFail_data()
{
    QTest::addColumn<QString>("line");

    const auto row = [](const char *function, const char *line) {
        QTest::newRow(function) << QString::fromLatin1(line);
    };
    row("leavesAWarning", "motor is hot");
    row("leavesADebugLine", "[debug default] motor is hot");
    row("leavesAnInfoLine", "[info default] motor is hot");
    row("leavesACriticalLine", "[critical default] motor is hot");
    row("leavesALineOfACategory", "[warning drive] motor is hot");
    row("leavesALineOfAnotherThread", "elsewhere");
    row("leavesTheSecondWarning", "second");
    row("leavesALineInPrepare", "while preparing");
    row("leavesALineInTidy", "while tidying");
    row("leavesAnEmptyLine", "");
    row("leavesAWarningAndSkips", "motor is hot");
}

void tst_logged_test::linesThatAreLeftFail()
{
    QFETCH(QString, line);

    const char *function = QTest::currentDataTag();
    const Outcome outcome = run({QString::fromLatin1(function)});
    QVERIFY2(outcome.exitCode == 1, qPrintable(outcome.output));
    QVERIFY2(outcome.output.contains(failureOf(function)), qPrintable(outcome.output));
    QVERIFY2(outcome.output.contains(QStringLiteral("Logged and not taken:\n") + line + QLatin1Char(')')),
             qPrintable(outcome.output));
}

void tst_logged_test::linesThatDoNotComeFail_data()
{
    QTest::addColumn<QString>("difference");

    QTest::newRow("missesAWarning") << QStringLiteral("Compared lists have different sizes.");
    QTest::newRow("missesTheSecondWarning") << QStringLiteral("Compared lists have different sizes.");
    QTest::newRow("takesAnotherText") << QStringLiteral("Compared lists differ at index 0.");
    QTest::newRow("takesAnotherKind") << QStringLiteral("Compared lists differ at index 0.");
}

void tst_logged_test::linesThatDoNotComeFail()
{
    QFETCH(QString, difference);

    const char *function = QTest::currentDataTag();
    const Outcome outcome = run({QString::fromLatin1(function)});
    QVERIFY2(outcome.exitCode == 1, qPrintable(outcome.output));
    QVERIFY2(outcome.output.contains(failureOf(function) + difference), qPrintable(outcome.output));
}

void tst_logged_test::linesDoNotReachTheNextFunction()
{
    const Outcome outcome = run({QStringLiteral("leavesAWarning"), QStringLiteral("logsNothing")});
    QVERIFY2(outcome.exitCode == 1, qPrintable(outcome.output));
    QVERIFY2(outcome.output.contains(failureOf("leavesAWarning")), qPrintable(outcome.output));
    QVERIFY2(outcome.output.contains(passOf("logsNothing")), qPrintable(outcome.output));
}

void tst_logged_test::linesBetweenTheFunctionsGoToQtTest()
{
    const Outcome outcome = run({QStringLiteral("logsNothing")});
    QVERIFY2(outcome.output.contains(
                 QStringLiteral("QWARN  : logged_test_cases::cleanupTestCase() after all of them")),
             qPrintable(outcome.output));
}

QTEST_GUILESS_MAIN(tst_logged_test)
#include "tst_logged_test.moc"
