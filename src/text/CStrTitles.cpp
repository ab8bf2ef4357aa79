// SPDX-License-Identifier: MIT
// Build dates, window titles and the names of log files.
#include <CStr.h>

#include "Calendars.h"

#include <CCompanyStrings.h>
#include <CPath.h>

#include <QCoreApplication>
#include <QFileInfo>
#include <QStringList>
#include <QThread>

namespace {

QString withExtra(const QString &title, const QString &extra)
{
    if (extra.isEmpty())
        return title;
    return title + QCoreApplication::translate("CStr", " - %1").arg(extra);
}

QString threadIdText()
{
    return QString::number(reinterpret_cast<quintptr>(QThread::currentThreadId()), 16);
}

} // namespace

QDate CStr::createQDateFrom__DATE__(const QString &text)
{
    constexpr QLatin1Char blank(' ');
    QStringList parts = text.split(blank, Qt::SkipEmptyParts);
    if (parts.size() != 3)
        return {};
    parts[1] = parts[1].rightJustified(2, QLatin1Char('0'));
    // The C locale has the compiler's month names, whatever the default locale is.
    return QLocale::c().toDate(parts.join(blank), QStringLiteral("MMM dd yyyy"));
}

QString CStr::createDate(const QLocale &locale, const QString &text)
{
    return locale.toString(createQDateFrom__DATE__(text), QLocale::ShortFormat);
}

QString CStr::getVersionString(const QString &version, const QString &extra)
{
    return withExtra(QCoreApplication::translate("CStr", "[ V%1 ]").arg(version), extra);
}

QString CStr::getVersionString(const QString &version, const QString &buildDate, const QLocale &locale,
                               const QString &extra)
{
    const QString date = createDate(locale, buildDate);
    return withExtra(QCoreApplication::translate("CStr", "[ V%1 - %2 ]").arg(version, date), extra);
}

QString CStr::createApplicationTitle(const QLocale &locale, const QString &buildDate, const QString &appName,
                                     const QString &version, const QString &extra)
{
    return QCoreApplication::translate("CStr", "%1 - %2 - %3")
        .arg(appName, CCompanyStrings::getCompanyLongName(),
             getVersionString(version, buildDate, locale, extra));
}

QString CStr::createShortApplicationTitle(const QLocale &locale, const QString &appName,
                                          const QString &version, const QString &buildDate,
                                          unsigned int build)
{
    Q_UNUSED(locale)
    QString title = QCoreApplication::translate("CStr", "%1 %2 - V%3")
                        .arg(CCompanyStrings::getCompanyShortName(), appName, version);
    title += QStringLiteral(" - [ ") + QCoreApplication::translate("CStr", "Build ") + QString::number(build);
    if (!buildDate.isEmpty())
        title += QStringLiteral(" - ") + createQDateFrom__DATE__(buildDate).toString(Qt::ISODate);
    return title + QStringLiteral(" ]");
}

QString CStr::createLogFileName(const QString &name, bool withThreadId)
{
    const QString file = name.isEmpty() ? QCoreApplication::applicationFilePath() : name;
    QString baseName = QFileInfo(file).completeBaseName();
    if (withThreadId)
        baseName += QStringLiteral("_TID") + threadIdText();
    return CPath::logPath(true) + baseName + QStringLiteral(".log");
}
