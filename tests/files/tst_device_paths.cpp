// SPDX-License-Identifier: MIT
// CFTPath: the entry points of a device's file system.
#include <CFTPath.h>

#include <LoggedTest.h>

#include <QTest>

#include <limits>
#include <type_traits>

static_assert(std::is_trivially_default_constructible<CFTPath>::value && std::is_empty<CFTPath>::value,
              "no state of its own");
static_assert(sizeof(CFTPath::EEntryPoint) == 4, "a 32-bit number");

namespace {

struct Row
{
    int number;
    CFTPath::EEntryPoint entryPoint;
    const char *path;
    const char *name;
};

constexpr Row rows[] = {
    {0, CFTPath::E_INVALID, "<invalid>", "<invalid>"},
    {1, CFTPath::E_CONSTCONFIG, "/opt/VANTORIS/etc/conf/", "CONSTCONFIG"},
    {2, CFTPath::E_COMPANY, "/VANTORIS/", "VANTORIS"},
    {4, CFTPath::E_OPT_COMPANY, "/opt/VANTORIS/", "OPT/VANTORIS"},
    {8, CFTPath::E_TMP, "/tmp/", "TMP"},
    {16, CFTPath::E_ROOT, "/", "ROOT"},
    {32, CFTPath::E_OPT, "/opt/", "OPT"},
    {64, CFTPath::E_APPDATA, "/appdata/", "APPDATA"},
};

CFTPath::EEntryPoint entryPoint(int number)
{
    return static_cast<CFTPath::EEntryPoint>(number);
}

// Numbers that are no entry point.
void otherNumbers()
{
    QTest::addColumn<int>("number");
    for (const int number : {3, 5, 65, 127, 128, -1, std::numeric_limits<int>::min()})
        QTest::newRow(qPrintable(QString::number(number))) << number;
}

} // namespace

class tst_device_paths : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void entryPoints_data();
    void entryPoints();
    void otherNumbersAreInvalid_data();
    void otherNumbersAreInvalid();
    void theListsAreWhole();
    void toEntryPointTakesExactNamesOnly_data();
    void toEntryPointTakesExactNamesOnly();

    void subDirectories_data();
    void subDirectories();
    void theInvalidText();

    void fromPath_data();
    void fromPath();

    void toRelativePath_data();
    void toRelativePath();
    void everyPathIsRelativeToItsEntryPoint_data();
    void everyPathIsRelativeToItsEntryPoint();

    void theDocumentedExamplesHold();
};

void tst_device_paths::entryPoints_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("entryPoint");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("name");
    for (const Row &row : rows)
        QTest::newRow(row.name) << row.number << static_cast<int>(row.entryPoint)
                                << QString::fromLatin1(row.path) << QString::fromLatin1(row.name);
}

void tst_device_paths::entryPoints()
{
    QFETCH(int, number);
    QFETCH(QString, path);
    QFETCH(QString, name);
    QTEST(number, "entryPoint");
    QCOMPARE(CFTPath::toPath(::entryPoint(number)), path);
    QCOMPARE(CFTPath::toString(::entryPoint(number)), name);
    QCOMPARE(CFTPath::toEntryPoint(name), ::entryPoint(number));
    QCOMPARE(CFTPath::entryStrMap().value(::entryPoint(number), QStringLiteral("missing")), name);
}

void tst_device_paths::otherNumbersAreInvalid_data()
{
    otherNumbers();
}

void tst_device_paths::otherNumbersAreInvalid()
{
    QFETCH(int, number);
    QCOMPARE(CFTPath::toPath(::entryPoint(number)), QStringLiteral("<invalid>"));
    QCOMPARE(CFTPath::toString(::entryPoint(number)), QStringLiteral("<invalid>"));
    QCOMPARE(CFTPath::toRelativePath(QStringLiteral("tmp/a"), ::entryPoint(number)),
             QStringLiteral("/tmp/a"));
}

void tst_device_paths::theListsAreWhole()
{
    QList<CFTPath::EEntryPoint> expected;
    for (const Row &row : rows)
        expected += row.entryPoint;
    QCOMPARE(expected.size(), 8);
    QCOMPARE(CFTPath::entryPoints(), expected);
    QCOMPARE(CFTPath::entryStrMap().keys(), expected);
}

void tst_device_paths::toEntryPointTakesExactNamesOnly_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"tmp", "Tmp", "TMP/", "/TMP", " TMP", "", "OPT/", "opt/VANTORIS", "VANTORI"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void tst_device_paths::toEntryPointTakesExactNamesOnly()
{
    QFETCH(QString, name);
    QCOMPARE(CFTPath::toEntryPoint(name), CFTPath::E_INVALID);
}

void tst_device_paths::subDirectories_data()
{
    QTest::addColumn<QString>("constant");
    QTest::addColumn<QString>("expected");
    QTest::newRow("autostart") << CFTPath::PATH_AUTOSTART << QStringLiteral("autostart/");
    QTest::newRow("bin") << CFTPath::PATH_BIN << QStringLiteral("bin/");
    QTest::newRow("configurations") << CFTPath::PATH_CONFIGURATIONS << QStringLiteral("configurations/");
    QTest::newRow("conf") << CFTPath::PATH_CONF << QStringLiteral("conf/");
    QTest::newRow("param") << CFTPath::PATH_PARAM << QStringLiteral("param/");
    QTest::newRow("firmware") << CFTPath::PATH_FIRMWARE << QStringLiteral("firmware/");
    QTest::newRow("logic") << CFTPath::PATH_LOGIC << QStringLiteral("logic/");
    QTest::newRow("subdevices") << CFTPath::PATH_SUBDEVICES << QStringLiteral("subdevices/");
}

void tst_device_paths::subDirectories()
{
    QFETCH(QString, constant);
    QTEST(constant, "expected");
}

void tst_device_paths::theInvalidText()
{
    QCOMPARE(QByteArray(CFTPath::INVALID_STR), QByteArray("<invalid>"));
}

void tst_device_paths::fromPath_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("expected");
    const auto in = [](const char *path, CFTPath::EEntryPoint expected) {
        QTest::newRow(*path == '\0' ? "(empty)" : path)
            << QString::fromUtf8(path) << static_cast<int>(expected);
    };
    // Device paths.
    in("/opt/VANTORIS/etc/conf/motor.xml", CFTPath::E_CONSTCONFIG);
    in("/opt/VANTORIS/etc/conf/", CFTPath::E_CONSTCONFIG);
    in("/opt/VANTORIS/etc/conf", CFTPath::E_OPT_COMPANY);
    in("/opt/VANTORIS/bin", CFTPath::E_OPT_COMPANY);
    in("/opt/VANTORIS/", CFTPath::E_OPT_COMPANY);
    in("/opt/VANTORIS", CFTPath::E_ROOT);
    in("/VANTORIS/a", CFTPath::E_COMPANY);
    in("/tmp/a", CFTPath::E_TMP);
    in("/tmp/", CFTPath::E_TMP);
    in("/tmp", CFTPath::E_ROOT);
    in("/", CFTPath::E_ROOT);
    in("/etc/x", CFTPath::E_ROOT);
    // The root directory comes before them.
    in("/opt/x", CFTPath::E_ROOT);
    in("/appdata/x", CFTPath::E_ROOT);
    in("/OPT/x", CFTPath::E_ROOT);
    in("/APPDATA/x", CFTPath::E_ROOT);
    // Symbolic names, at the start or behind one character, whatever it is and whatever follows.
    in("CONSTCONFIG/x", CFTPath::E_CONSTCONFIG);
    in("/CONSTCONFIG/x", CFTPath::E_CONSTCONFIG);
    in("VANTORIS/x", CFTPath::E_COMPANY);
    in("/VANTORIS", CFTPath::E_COMPANY);
    in("OPT/VANTORIS/x", CFTPath::E_OPT_COMPANY);
    in("/OPT/VANTORIS/x", CFTPath::E_OPT_COMPANY);
    in("TMP", CFTPath::E_TMP);
    in("/TMP/x", CFTPath::E_TMP);
    in("xTMP", CFTPath::E_TMP);
    in("TMPfile", CFTPath::E_TMP);
    in("ROOT/x", CFTPath::E_ROOT);
    in("OPT/x", CFTPath::E_OPT);
    in("xOPT/x", CFTPath::E_OPT);
    in("APPDATA/x", CFTPath::E_APPDATA);
    in("xAPPDATA", CFTPath::E_APPDATA);
    in("<invalid>", CFTPath::E_INVALID);
    in("/<invalid>/x", CFTPath::E_INVALID);
    // Neither.
    in("x", CFTPath::E_INVALID);
    in("", CFTPath::E_INVALID);
    in("xxTMP", CFTPath::E_INVALID);
    in("tmp/a", CFTPath::E_INVALID);
    in("opt/VANTORIS/bin", CFTPath::E_INVALID);
    in("appdata/x", CFTPath::E_INVALID);
    in("\\tmp\\a", CFTPath::E_INVALID);
}

void tst_device_paths::fromPath()
{
    QFETCH(QString, path);
    QTEST(static_cast<int>(CFTPath::fromPath(path)), "expected");
}

void tst_device_paths::toRelativePath_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("expected");
    const auto relative = [](const char *name, const char *path, CFTPath::EEntryPoint entryPoint,
                             const char *expected) {
        QTest::newRow(name) << QString::fromUtf8(path) << static_cast<int>(entryPoint)
                            << QString::fromUtf8(expected);
    };
    relative("below", "/opt/VANTORIS/bin/a", CFTPath::E_OPT_COMPANY, "bin/a");
    relative("without separator at the start", "tmp/a", CFTPath::E_TMP, "a");
    relative("the entry point itself", "/tmp/", CFTPath::E_TMP, "");
    relative("its name alone is outside", "/tmp", CFTPath::E_TMP, "/tmp");
    relative("outside", "/etc/x", CFTPath::E_TMP, "/etc/x");
    relative("outside and without separator", "etc/x", CFTPath::E_TMP, "/etc/x");
    relative("case counts", "/TMP/a", CFTPath::E_TMP, "/TMP/a");
    relative("only at the start", "/a/tmp/b", CFTPath::E_TMP, "/a/tmp/b");
    relative("taken off once", "/tmp//tmp/a", CFTPath::E_TMP, "/tmp/a");
    relative("root", "/a/b", CFTPath::E_ROOT, "a/b");
    relative("empty", "", CFTPath::E_TMP, "/");
    relative("empty in root", "", CFTPath::E_ROOT, "");
    relative("invalid", "/tmp/a", CFTPath::E_INVALID, "/tmp/a");
    relative("invalid as a path", "<invalid>/a", CFTPath::E_INVALID, "/<invalid>/a");
}

void tst_device_paths::toRelativePath()
{
    QFETCH(QString, path);
    QFETCH(int, number);
    QTEST(CFTPath::toRelativePath(path, ::entryPoint(number)), "expected");
}

void tst_device_paths::everyPathIsRelativeToItsEntryPoint_data()
{
    QTest::addColumn<int>("number");
    for (const Row &row : rows) {
        if (row.number != 0)
            QTest::newRow(row.name) << row.number;
    }
}

void tst_device_paths::everyPathIsRelativeToItsEntryPoint()
{
    QFETCH(int, number);
    const QString path = CFTPath::toPath(::entryPoint(number));
    QVERIFY(path.startsWith(QLatin1Char('/')) && path.endsWith(QLatin1Char('/')));
    QCOMPARE(CFTPath::toRelativePath(path + CFTPath::PATH_PARAM, ::entryPoint(number)), CFTPath::PATH_PARAM);
}

void tst_device_paths::theDocumentedExamplesHold()
{
    const QString motor = CFTPath::toPath(CFTPath::E_CONSTCONFIG) + QStringLiteral("motor.xml");
    QCOMPARE(CFTPath::fromPath(motor), CFTPath::E_CONSTCONFIG);
    QCOMPARE(CFTPath::toRelativePath(motor, CFTPath::E_OPT_COMPANY), QStringLiteral("etc/conf/motor.xml"));
    QCOMPARE(CFTPath::toString(CFTPath::E_OPT_COMPANY), QStringLiteral("OPT/VANTORIS"));
}

QTEST_APPLESS_MAIN(tst_device_paths)
#include "tst_device_paths.moc"
