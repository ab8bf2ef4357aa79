// SPDX-License-Identifier: MIT
// "j6tool paths" in an installation of its own.
#include <LoggedTest.h>
#include <ScratchInstallation.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTest>

class tst_paths_command : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void printsTheStoredOutput();
    void createsNothing_data();
    void createsNothing();
    void tellsWhatExists();
    void aFileIsNoDirectory();
    void printsPathsOfAnyLanguage();
    void takesNoBrandFromTheInstallation();

private:
    static ScratchInstallation &prepared(ScratchInstallation &installation);
    // The row of a directory in the CSV form: its name, "yes" or "no", and its path.
    static QString rowOf(const QString &name, const ScratchInstallation &installation);
};

ScratchInstallation &tst_paths_command::prepared(ScratchInstallation &installation)
{
    installation.setVariable(QStringLiteral("PROGRAMDATA"), installation.home() + QStringLiteral("all"));
    return installation;
}

QString tst_paths_command::rowOf(const QString &name, const ScratchInstallation &installation)
{
    const QStringList lines = installation.run({QStringLiteral("paths"), QStringLiteral("format=csv")});
    const QStringList rows = lines.filter(QRegularExpression(QStringLiteral("^%1,").arg(name)));
    return rows.size() == 1 ? rows.first().trimmed() : lines.join(QLatin1Char('\n'));
}

void tst_paths_command::printsTheStoredOutput()
{
    // A name of its own, in case that others have made directories for it.
    ScratchInstallation installation(QStringLiteral(J6TOOL_PROGRAM), QStringLiteral("tst_paths_command"));
    QStringList lines = prepared(installation).run({QStringLiteral("paths")});
    lines.replaceInStrings(QStringLiteral("/VANTORIS/tst_paths_command/"),
                           QStringLiteral("/VANTORIS/product/"));
    lines.replaceInStrings(installation.root(), QStringLiteral("ROOT/"));
    lines.replaceInStrings(installation.dataHome(), QStringLiteral("HOME/.local/share"));
    lines.replaceInStrings(installation.documents(), QStringLiteral("HOME/Documents"));
    lines.replaceInStrings(installation.home(), QStringLiteral("HOME/"));
    QFile expected(QStringLiteral(J6TOOL_EXPECTED "/paths.txt"));
    QVERIFY(expected.open(QIODevice::ReadOnly));
    const QStringList expectedLines = QString::fromUtf8(expected.readAll()).split(QLatin1Char('\n'));
    QCOMPARE(lines + QStringList(QString()), expectedLines);
}

void tst_paths_command::createsNothing_data()
{
    QTest::addColumn<QString>("format");
    for (const char *format : {"table", "csv", "json"})
        QTest::newRow(format) << QString::fromLatin1(format);
}

void tst_paths_command::createsNothing()
{
    QFETCH(QString, format);
    ScratchInstallation installation(QStringLiteral(J6TOOL_PROGRAM));
    const QStringList lines =
        prepared(installation).run({QStringLiteral("paths"), QStringLiteral("format=") + format});
    QVERIFY2(lines.size() > 19, qPrintable(lines.join(QLatin1Char('\n'))));
    QCOMPARE(installation.contents(), QStringList{QStringLiteral("root/bin/")});
}

void tst_paths_command::tellsWhatExists()
{
    ScratchInstallation installation(QStringLiteral(J6TOOL_PROGRAM));
    const QString common = prepared(installation).home() + QStringLiteral("all/VANTORIS/tessera/");
    QCOMPARE(rowOf(QStringLiteral("programdata"), installation), QStringLiteral("programdata,no,") + common);
    QVERIFY(QDir().mkpath(common));
    QCOMPARE(rowOf(QStringLiteral("programdata"), installation), QStringLiteral("programdata,yes,") + common);
    QCOMPARE(rowOf(QStringLiteral("etc"), installation).section(QLatin1Char(','), 0, 1),
             QStringLiteral("etc,no"));
}

void tst_paths_command::aFileIsNoDirectory()
{
    const ScratchInstallation installation(QStringLiteral(J6TOOL_PROGRAM));
    QVERIFY(installation.writeFile(QStringLiteral("etc"), "x"));
    QCOMPARE(rowOf(QStringLiteral("etc"), installation),
             QStringLiteral("etc,no,") + installation.root() + QStringLiteral("etc/"));
}

void tst_paths_command::printsPathsOfAnyLanguage()
{
    ScratchInstallation installation(QStringLiteral(J6TOOL_PROGRAM), QStringLiteral(u"Pr\u00FCfstand"));
    installation.setVariable(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    const QStringList lines = installation.run({QStringLiteral("paths"), QStringLiteral("format=json")});
    const QJsonArray rows = QJsonDocument::fromJson(lines.join(QLatin1Char('\n')).toUtf8()).array();
    QCOMPARE(rows.size(), 19);
    QCOMPARE(rows.at(0).toObject().value(QStringLiteral("path")).toString(), installation.root());
    QCOMPARE(rows.at(0).toObject().value(QStringLiteral("exists")).toString(), QStringLiteral("yes"));
}

// The names in the paths are the library's own.
void tst_paths_command::takesNoBrandFromTheInstallation()
{
    const ScratchInstallation installation(QStringLiteral(J6TOOL_PROGRAM));
    const QString before = rowOf(QStringLiteral("log"), installation);
    QVERIFY(installation.writeFile(QStringLiteral("etc/conf/Setup.Ini"),
                                   "[COMPANY]\nNameShort=Ours\n[INSTALLER]\nCompanyDirectory=Ours\n"));
    QCOMPARE(rowOf(QStringLiteral("log"), installation), before);
}

QTEST_GUILESS_MAIN(tst_paths_command)
#include "tst_paths_command.moc"
