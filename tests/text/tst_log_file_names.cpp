// SPDX-License-Identifier: MIT
#include <CStr.h>

#include <LoggedTest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <memory>

namespace {

QString idOfThisThread()
{
    return QString::number(reinterpret_cast<quintptr>(QThread::currentThreadId()), 16);
}

QString product()
{
    QDir directory(QCoreApplication::applicationDirPath());
    directory.cdUp();
    return directory.dirName();
}

QString nameInAnotherThread(QString *id)
{
    QString name;
    const std::unique_ptr<QThread> thread(QThread::create([&name, id] {
        *id = idOfThisThread();
        name = CStr::createLogFileName(QStringLiteral("axis"), true);
    }));
    thread->start();
    thread->wait();
    return name;
}

} // namespace

// Every test has a data directory of its own, empty at first.
class tst_log_file_names : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void baseNames_data();
    void baseNames();
    void threadId();
    void everyThreadHasItsName();
    void directoryIsCreatedAndTheFileIsNot();

private:
    void prepare() override;
    void tidy() override;
    QString logDirectory() const
    {
        return mData->path() + QStringLiteral("/VANTORIS/") + product() + QStringLiteral("/log/");
    }

    std::unique_ptr<QTemporaryDir> mData;
    bool mWasSet = false;
    QByteArray mFormer;
};

void tst_log_file_names::prepare()
{
#ifdef Q_OS_WIN
    QSKIP("The data directory follows no environment variable here.");
#endif
    mWasSet = qEnvironmentVariableIsSet("XDG_DATA_HOME");
    mFormer = qgetenv("XDG_DATA_HOME");
    mData = std::make_unique<QTemporaryDir>();
    QVERIFY(mData->isValid());
    qputenv("XDG_DATA_HOME", QFile::encodeName(mData->path()));
}

void tst_log_file_names::tidy()
{
    if (mWasSet)
        qputenv("XDG_DATA_HOME", mFormer);
    else
        qunsetenv("XDG_DATA_HOME");
    mData.reset();
}

void tst_log_file_names::baseNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("fileName");

    QTest::newRow("plain") << QStringLiteral("axis") << QStringLiteral("axis.log");
    QTest::newRow("empty: the running program") << QString() << QStringLiteral("tst_log_file_names.log");
    QTest::newRow("empty but not null")
        << QString(QLatin1String("")) << QStringLiteral("tst_log_file_names.log");
    QTest::newRow("suffix") << QStringLiteral("axis.txt") << QStringLiteral("axis.log");
    QTest::newRow("two suffixes") << QStringLiteral("axis.tar.gz") << QStringLiteral("axis.tar.log");
    QTest::newRow("already a log") << QStringLiteral("axis.log") << QStringLiteral("axis.log");
    QTest::newRow("directories") << QStringLiteral("/opt/tool/bin/axis.exe") << QStringLiteral("axis.log");
    QTest::newRow("point in a directory") << QStringLiteral("tool.d/axis") << QStringLiteral("axis.log");
    QTest::newRow("relative, upwards") << QStringLiteral("../../axis") << QStringLiteral("axis.log");
    QTest::newRow("suffix only") << QStringLiteral(".axis") << QStringLiteral(".log");
    QTest::newRow("directory only") << QStringLiteral("tool/") << QStringLiteral(".log");
    QTest::newRow("blanks") << QStringLiteral("X axis.txt") << QStringLiteral("X axis.log");
    QTest::newRow("placeholder") << QStringLiteral("%1 %2.txt") << QStringLiteral("%1 %2.log");
    QTest::newRow("umlaut") << QStringLiteral("Prüfstand.txt") << QStringLiteral("Prüfstand.log");
}

void tst_log_file_names::baseNames()
{
    QFETCH(QString, name);
    QFETCH(QString, fileName);
    QCOMPARE(CStr::createLogFileName(name, false), logDirectory() + fileName);
    fileName.insert(fileName.size() - 4, QStringLiteral("_TID") + idOfThisThread());
    QCOMPARE(CStr::createLogFileName(name, true), logDirectory() + fileName);
}

void tst_log_file_names::threadId()
{
    const QString path = CStr::createLogFileName(QStringLiteral("axis"), true);
    const QString id = path.mid(path.indexOf(QLatin1String("_TID")) + 4).chopped(4);
    QVERIFY(!id.isEmpty() && !id.startsWith(QLatin1Char('0')));
    for (const QChar digit : id)
        QVERIFY(QStringLiteral("0123456789abcdef").contains(digit));
    bool ok = false;
    QCOMPARE(id.toULongLong(&ok, 16),
             static_cast<quint64>(reinterpret_cast<quintptr>(QThread::currentThreadId())));
    QVERIFY(ok);
}

void tst_log_file_names::everyThreadHasItsName()
{
    QString id;
    const QString name = nameInAnotherThread(&id);
    QCOMPARE(name, logDirectory() + QStringLiteral("axis_TID%1.log").arg(id));
    QVERIFY(name != CStr::createLogFileName(QStringLiteral("axis"), true));
}

void tst_log_file_names::directoryIsCreatedAndTheFileIsNot()
{
    QVERIFY(!QFileInfo::exists(logDirectory()));
    const QString path = CStr::createLogFileName(QStringLiteral("axis"), false);
    QVERIFY(QFileInfo(logDirectory()).isDir());
    QVERIFY(!QFileInfo::exists(path));
    QCOMPARE(QDir(logDirectory()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList());
}

QTEST_GUILESS_MAIN(tst_log_file_names)
#include "tst_log_file_names.moc"
