// SPDX-License-Identifier: MIT
// What is built when it is first needed may be needed by several threads at once.
#include "files/TarWriter.h"

#include <LoggedTest.h>
#include <LineEnds.h>
#include <ScopedTimeZone.h>
#include <ScratchInstallation.h>

#include <QFile>
#include <QTest>

#include <algorithm>

class tst_first_use : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void allThreadsGetTheSame_data();
    void allThreadsGetTheSame();
    void everyThreadWritesToTheSettings();
    void everyThreadWritesToTheTrace();
};

void tst_first_use::allThreadsGetTheSame_data()
{
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *expected) {
        QTest::newRow(name) << QString::fromUtf8(expected);
    };
    row("types", "UNIT_U16|E_U16|3|2|UNIT_U16|E_U16|65535|UNIT_U16");
    row("units", "Nm|Drehmoment [Nm]|3|Nm");
    row("durations", "min|6|1:02:05");
    row("moments", "2021-03-04T10:36:07");
    row("fixed-strings", "axis|gear|drive");
    row("variants", "1500|-2.25|192.168.1.10|axis");
    row("meta-types", "1|1|1|1");
    row("own-meta-types", "1");
    row("sub-devices", "Param set 01|Param set 03");
    row("numbers", "1.250|-42|3|3421780262");
    row("codes", "7/zfauXrL6LSdBbV8YTfnCWafHk=");
    row("addresses", "fe80:0:0:0:0:0:0:1");
    row("german-texts", "Benutzer|Administrator|10 Byte");
    row("titles", "VANTORIS tool - V1.2 - [ Build 7 - 2024-11-05 ]|[ V1.2 ] - test");
    row("company-strings", "VANTORIS|VANTORIS Drive Systems|tessera Oscilloscope|PRODUCT999");
    row("paths", "bin/|etc/|etc/conf/|1|1");
    row("device-paths", "OPT/VANTORIS|/opt/VANTORIS/etc/conf/|4|firmware/");
    row("log-files", "1|1");
    row("archives", "1|first|second|513");
    row("directories", "1|2|1");
    row("temporary-directories", "1|1");
    row("waits", "CPU Ticks|1");
}

void tst_first_use::allThreadsGetTheSame()
{
    QFETCH(QString, expected);
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    if (!ScopedTimeZone::followsRules() && name == QLatin1String("moments"))
        QSKIP("the time zone cannot be set here");
    ScratchInstallation installation(QStringLiteral(FIRST_USER));
    QVERIFY(installation.isComplete());
    installation.setVariable(QStringLiteral("TZ"), QStringLiteral("Asia/Kolkata"));
    QVERIFY(installation.writeFile(QStringLiteral("etc/bundle.tar"),
                                   tar::archive({{"first", "1st"}, {"second", QByteArray(513, 'x')}})));
    QCOMPARE(installation.run({name, QStringLiteral("de_DE")}), QStringList(expected));
}

void tst_first_use::everyThreadWritesToTheSettings()
{
    const ScratchInstallation installation(QStringLiteral(FIRST_USER));
    QVERIFY(installation.writeFile(QStringLiteral("etc/tool.ini"), "[Common]\nbefore=1\n"));
    QCOMPARE(installation.run({QStringLiteral("settings")}), QStringList(QStringLiteral("1")));
    QFile file(installation.root() + QStringLiteral("etc/tool.ini"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(withPlainLineEnds(file.readAll()),
             QByteArray("[Common]\nbefore=1\nthread0=0\nthread1=1\nthread2=2\nthread3=3\n"
                        "thread4=4\nthread5=5\nthread6=6\nthread7=7\n"));
}

void tst_first_use::everyThreadWritesToTheTrace()
{
    const ScratchInstallation installation(QStringLiteral(FIRST_USER));
    QCOMPARE(installation.run({QStringLiteral("trace")}), QStringList(QStringLiteral("traced")));
    QFile file(installation.root() + QStringLiteral("bin/first_user_NewDelTrace.txt"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = file.readAll().split('\n');
    QCOMPARE(lines.size(), 8 * 50 * 2 + 1);
    for (int thread = 0; thread < 8; ++thread) {
        const QByteArray first = " axis.cpp;0 load " + QByteArray::number(thread) + " Thread ";
        const auto isFirst = [&first](const QByteArray &line) { return line.contains(first); };
        QCOMPARE(std::count_if(lines.begin(), lines.end(), isFirst), 1);
    }
}

QTEST_GUILESS_MAIN(tst_first_use)
#include "tst_first_use.moc"
