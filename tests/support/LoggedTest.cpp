// SPDX-License-Identifier: MIT
#include "LoggedTest.h"

#include <QMutex>
#include <QMutexLocker>
#include <QTest>

namespace {

struct Record
{
    QMutex mutex;
    QStringList lines;
};

Record &record()
{
    static Record instance;
    return instance;
}

QtMessageHandler &qtTestHandler()
{
    static QtMessageHandler handler = nullptr;
    return handler;
}

QString typeName(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return QStringLiteral("debug");
    case QtInfoMsg:
        return QStringLiteral("info");
    case QtWarningMsg:
        return QStringLiteral("warning");
    default:
        return QStringLiteral("critical");
    }
}

void recordLine(QtMsgType type, const QMessageLogContext &context, const QString &line)
{
    if (type == QtFatalMsg) {
        qtTestHandler()(type, context, line);
        return;
    }
    const QMutexLocker lock(&record().mutex);
    const bool plain = type == QtWarningMsg && qstrcmp(context.category, "default") == 0;
    record().lines.append(
        plain ? line
              : QStringLiteral("[%1 %2] %3").arg(typeName(type), QLatin1String(context.category), line));
}

#ifdef Q_OS_WIN
// Without a console, QtTest would tell a debugger alone what it found, and Qt what it warns of. Children
// inherit it. Wine hides variables of such names from a program that is not started by another one.
[[maybe_unused]] const bool isToldToEverybody = qputenv("QT_FORCE_STDERR_LOGGING", "1");
#endif

} // namespace

QStringList LoggedTest::takeLog()
{
    const QMutexLocker lock(&record().mutex);
    QStringList lines;
    lines.swap(record().lines);
    return lines;
}

void LoggedTest::init()
{
    takeLog();
    qtTestHandler() = qInstallMessageHandler(recordLine);
    prepare();
}

void LoggedTest::cleanup()
{
    tidy();
    qInstallMessageHandler(qtTestHandler());
    const QStringList untaken = takeLog();
    QVERIFY2(untaken.isEmpty(),
             qPrintable(QStringLiteral("Logged and not taken:\n") + untaken.join(QLatin1Char('\n'))));
}
