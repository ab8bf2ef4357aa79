// SPDX-License-Identifier: MIT
// Window titles, made by a program in an installation of its own.
#include <LoggedTest.h>
#include <ScratchInstallation.h>

#include <QTest>

namespace {

const char *const ownDocument = "[COMPANY]\n"
                                "NameLong=\"Long name of %1 and %2\"\n"
                                "NameShort=\"%3 short\"\n";

QStringList titleWith(const QByteArray &document, const QStringList &words)
{
    const ScratchInstallation installation(QStringLiteral(J6CORE_TEXT_REPORTER));
    if (!document.isEmpty() && !installation.writeFile(QStringLiteral("etc/conf/Setup.Ini"), document))
        return {QStringLiteral("no document written")};
    return installation.run(words);
}

} // namespace

class tst_application_titles : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void titles_data();
    void titles();
    void namesComeFromTheSetupDocument();
    void placeholdersInNamesStay();
    void defaultLocaleDoesNotMatter();
};

void tst_application_titles::titles_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QString>("title");

    const auto row = [](const char *name, const QStringList &words, const QString &title) {
        QTest::newRow(name) << words << title;
    };
    const auto long_ = [](const char *locale, const char *date, const char *extra) {
        return QStringList{QStringLiteral("title"), QLatin1String(locale),   QLatin1String(date),
                           QStringLiteral("Scope"), QStringLiteral("1.2.3"), QLatin1String(extra)};
    };
    const auto short_ = [](const char *locale, const char *date, const char *build) {
        return QStringList{QStringLiteral("short"), QLatin1String(locale), QStringLiteral("Scope"),
                           QStringLiteral("1.2.3"), QLatin1String(date),   QLatin1String(build)};
    };
    row("German", long_("de_DE", "Nov  5 2024", ""),
        QStringLiteral("Scope - Long AG - [ V1.2.3 - 05.11.24 ]"));
    row("American", long_("en_US", "Nov  5 2024", ""),
        QStringLiteral("Scope - Long AG - [ V1.2.3 - 11/5/24 ]"));
    row("extra", long_("de_DE", "Nov  5 2024", "Demo"),
        QStringLiteral("Scope - Long AG - [ V1.2.3 - 05.11.24 ] - Demo"));
    row("no date", long_("de_DE", "", ""), QStringLiteral("Scope - Long AG - [ V1.2.3 -  ]"));
    row("unparsable date", long_("de_DE", "Feb 29 2023", "Demo"),
        QStringLiteral("Scope - Long AG - [ V1.2.3 -  ] - Demo"));

    row("short", short_("de_DE", "Nov  5 2024", "77"),
        QStringLiteral("Short Scope - V1.2.3 - [ Build 77 - 2024-11-05 ]"));
    row("short, the locale is not used", short_("en_US", "Nov  5 2024", "77"),
        QStringLiteral("Short Scope - V1.2.3 - [ Build 77 - 2024-11-05 ]"));
    row("short, no date", short_("de_DE", "", "0"), QStringLiteral("Short Scope - V1.2.3 - [ Build 0 ]"));
    row("short, an unparsable date leaves its place empty", short_("de_DE", "Feb 29 2023", "77"),
        QStringLiteral("Short Scope - V1.2.3 - [ Build 77 -  ]"));
    row("short, a blank is no date, but not empty", short_("de_DE", " ", "77"),
        QStringLiteral("Short Scope - V1.2.3 - [ Build 77 -  ]"));
    row("short, largest build", short_("de_DE", "", "4294967295"),
        QStringLiteral("Short Scope - V1.2.3 - [ Build 4294967295 ]"));
}

void tst_application_titles::titles()
{
    QFETCH(QStringList, words);
    QFETCH(QString, title);
    const QByteArray document = "[COMPANY]\nNameLong=\"Long AG\"\nNameShort=\"Short\"\n";
    QCOMPARE(titleWith(document, words), QStringList(title));
}

void tst_application_titles::namesComeFromTheSetupDocument()
{
    const QString version = QStringLiteral("1.2.3");
    const QString app = QStringLiteral("Scope");
    const QString locale = QStringLiteral("C");
    QCOMPARE(
        titleWith({}, {QStringLiteral("title"), locale, QString(), app, version, QString()}),
        QStringList(QStringLiteral("Scope - VANTORIS Drive Systems, makers of tessera - [ V1.2.3 -  ]")));
    QCOMPARE(titleWith({}, {QStringLiteral("short"), locale, app, version, QString(), QStringLiteral("1")}),
             QStringList(QStringLiteral("VANTORIS Scope - V1.2.3 - [ Build 1 ]")));
}

void tst_application_titles::placeholdersInNamesStay()
{
    const QString locale = QStringLiteral("de_DE");
    const QString date = QStringLiteral("Nov 5 2024");
    QCOMPARE(titleWith(ownDocument, {QStringLiteral("title"), locale, date, QStringLiteral("%2 %3"),
                                     QStringLiteral("%1"), QStringLiteral("%2")}),
             QStringList(QStringLiteral("%2 %3 - Long name of %1 and %2 - [ V%1 - 05.11.24 ] - %2")));
    QCOMPARE(titleWith(ownDocument, {QStringLiteral("short"), locale, QStringLiteral("%1 %3"),
                                     QStringLiteral("%2"), date, QStringLiteral("5")}),
             QStringList(QStringLiteral("%3 short %1 %3 - V%2 - [ Build 5 - 2024-11-05 ]")));
}

void tst_application_titles::defaultLocaleDoesNotMatter()
{
    QCOMPARE(
        titleWith(ownDocument, {QStringLiteral("default=ar_EG"), QStringLiteral("short"),
                                QStringLiteral("de_DE"), QStringLiteral("Scope"), QStringLiteral("1.2.3"),
                                QStringLiteral("Oct 15 2024"), QStringLiteral("1234567")}),
        QStringList(QStringLiteral("%3 short Scope - V1.2.3 - [ Build 1234567 - 2024-10-15 ]")));
    QCOMPARE(titleWith(ownDocument, {QStringLiteral("default=ar_EG"), QStringLiteral("title"),
                                     QStringLiteral("de_DE"), QStringLiteral("Oct 15 2024"),
                                     QStringLiteral("Scope"), QStringLiteral("1.2.3"), QString()}),
             QStringList(QStringLiteral("Scope - Long name of %1 and %2 - [ V1.2.3 - 15.10.24 ]")));
}

QTEST_GUILESS_MAIN(tst_application_titles)
#include "tst_application_titles.moc"
