// SPDX-License-Identifier: MIT
// What is stored under which key: in memory, with the type that was stored, and as the text of an INI file.
#include <CSettingsFile.h>

#include "SettingsIni.h"

#include <LoggedTest.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QPoint>
#include <QPointer>
#include <QTest>

#include <cmath>
#include <limits>

namespace {

const QString section = QStringLiteral("S");
const QString key = QStringLiteral("k");

using uint64 = unsigned long long;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

bool isSame(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

// The lines of the INI file that an entry of this value gives, without the section's.
template<typename Write>
QByteArray linesOf(Write write)
{
    const SettingsIni ini;
    {
        const std::unique_ptr<CSettingsFile> settings = ini.open();
        write(*settings);
    }
    return ini.contents();
}

} // namespace

class tst_settings_file : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void isASettingsObjectOfItsFile();
    void belongsToItsParent();
    void opensInTheFormatGiven();
    void keyIsSectionSlashKey_data();
    void keyIsSectionSlashKey();
    void emptySectionGivesALeadingSlash();
    void emptyKeyAfterASection();
    void entriesOfOneKeyInTwoSections();
    void containsOnlyWhatIsThere();
    void writesByItselfInTheEventLoop();
    void objectsOfOneFileSeeEachOther();

    void storesStrings();
    void storesIntegersAsInt();
    void storesUnsignedIntegersAsText_data();
    void storesUnsignedIntegersAsText();
    void storesUnsignedLongIntegersAsText_data();
    void storesUnsignedLongIntegersAsText();
    void storesDoublesAsDouble();
    void doublesOfAFileAreExact_data();
    void doublesOfAFileAreExact();
    void storesBooleansAsBool();
    void storesAnyVariant();

    void numbersAreIndependentOfTheLocale();

    void storesLocalesByName();
    void languageIsCommonApplanguage();

    void storesBytesWithTheirVersion();
    void bytesOfAnotherVersionAreEmpty_data();
    void bytesOfAnotherVersionAreEmpty();
    void bytesWithoutVersionMatchZeroZero();
    void bytesOfAnyValueSurviveAFile();
    void versionWithoutBytes();

    void exampleOfTheClassComment();

private:
    SettingsIni mIni;
};

void tst_settings_file::isASettingsObjectOfItsFile()
{
    const CSettingsFile settings(mIni.path(), QSettings::IniFormat, nullptr);
    QCOMPARE(settings.fileName(), mIni.path());
    QCOMPARE(settings.format(), QSettings::IniFormat);
    QCOMPARE(settings.parent(), nullptr);
    QCOMPARE(settings.status(), QSettings::NoError);
    QVERIFY(!QFile::exists(mIni.path()));
}

void tst_settings_file::belongsToItsParent()
{
    QObject parent;
    // NOLINTNEXTLINE(cppcoreguidelines-owning-memory): its parent deletes it
    const QPointer<CSettingsFile> child = new CSettingsFile(mIni.path(), QSettings::IniFormat, &parent);
    QCOMPARE(child->parent(), &parent);
}

void tst_settings_file::opensInTheFormatGiven()
{
    const auto readFunction = [](QIODevice &, QSettings::SettingsMap &map) {
        map.insert(QStringLiteral("S/k"), QStringLiteral("from another format"));
        return true;
    };
    const auto writeFunction = [](QIODevice &, const QSettings::SettingsMap &) { return true; };
    const QSettings::Format format =
        QSettings::registerFormat(QStringLiteral("other"), readFunction, writeFunction);
    QFile file(mIni.path(QStringLiteral("settings.other")));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("x") == 1);
    file.close();
    const CSettingsFile settings(file.fileName(), format, nullptr);
    QCOMPARE(settings.format(), format);
    QCOMPARE(settings.string(section, key, QString()), QStringLiteral("from another format"));
}

void tst_settings_file::keyIsSectionSlashKey_data()
{
    QTest::addColumn<QString>("sectionName");
    QTest::addColumn<QString>("keyName");
    QTest::addColumn<QString>("settingsKey");
    QTest::addColumn<QByteArray>("contents");

    const auto row = [](const char *name, const char *sectionName, const char *keyName,
                        const char *settingsKey, const char *contents) {
        QTest::newRow(name) << QString::fromUtf8(sectionName) << QString::fromUtf8(keyName)
                            << QString::fromUtf8(settingsKey) << QByteArray(contents);
    };
    row("plain", "Common", "applanguage", "Common/applanguage", "[Common]\napplanguage=x\n");
    row("empty section", "", "k", "k", "[General]\nk=x\n");
    row("section called General", "General", "k", "General/k", "[%General]\nk=x\n");
    row("blanks", "My Tool", "a key", "My Tool/a key", "[My%20Tool]\na%20key=x\n");
    row("beyond ASCII", "ä", "ö", "ä/ö", "[%E4]\n%F6=x\n");
    row("key with a slash", "S", "a/b", "S/a/b", "[S]\na\\b=x\n");
    row("section with a slash", "S/T", "k", "S/T/k", "[S]\nT\\k=x\n");
    row("place markers", "%1", "%2", "%1/%2", "[%251]\n%252=x\n");
}

void tst_settings_file::keyIsSectionSlashKey()
{
    QFETCH(QString, sectionName);
    QFETCH(QString, keyName);
    QFETCH(QString, settingsKey);
    const std::unique_ptr<CSettingsFile> settings = mIni.open(QStringLiteral("keys.ini"));
    settings->clear();
    settings->setString(sectionName, keyName, QStringLiteral("x"));
    QCOMPARE(settings->allKeys(), QStringList{settingsKey});
    QVERIFY(settings->QSettings::contains(settingsKey));
    QVERIFY(settings->containsEntry(sectionName, keyName));
    QCOMPARE(settings->string(sectionName, keyName, QString()), QStringLiteral("x"));
    settings->sync();
    QTEST(mIni.contents(QStringLiteral("keys.ini")), "contents");
}

void tst_settings_file::emptySectionGivesALeadingSlash()
{
    // The slash is that of the key; what becomes of it is the business of QSettings, which drops it.
    const std::unique_ptr<CSettingsFile> settings = mIni.read("top=1\n[General]\nk=2\n");
    QCOMPARE(settings->string(QString(), QStringLiteral("top"), QString()), QStringLiteral("1"));
    QCOMPARE(settings->string(QString(), key, QString()), QStringLiteral("2"));
    QCOMPARE(settings->QSettings::value(QStringLiteral("/k")), QVariant(QStringLiteral("2")));
    QVERIFY(!settings->containsEntry(QStringLiteral("General"), key));
}

void tst_settings_file::emptyKeyAfterASection()
{
    // "S/" is, for QSettings, the entry "S" of no section; and "/" the entry without a name.
    const std::unique_ptr<CSettingsFile> settings = mIni.open(QStringLiteral("empty.ini"));
    settings->setString(section, QString(), QStringLiteral("x"));
    QCOMPARE(settings->allKeys(), QStringList{QStringLiteral("S")});
    QCOMPARE(settings->string(section, QString(), QString()), QStringLiteral("x"));
    QCOMPARE(settings->string(QString(), section, QString()), QStringLiteral("x"));
    settings->setString(QString(), QString(), QStringLiteral("y"));
    QCOMPARE(settings->string(QString(), QString(), QString()), QStringLiteral("y"));
}

void tst_settings_file::entriesOfOneKeyInTwoSections()
{
    const std::unique_ptr<CSettingsFile> settings = mIni.open(QStringLiteral("two.ini"));
    settings->setIntegerValue(QStringLiteral("A"), key, 1);
    settings->setIntegerValue(QStringLiteral("B"), key, 2);
    QCOMPARE(settings->integerValue(QStringLiteral("A"), key, 0), 1);
    QCOMPARE(settings->integerValue(QStringLiteral("B"), key, 0), 2);
}

void tst_settings_file::containsOnlyWhatIsThere()
{
    const std::unique_ptr<CSettingsFile> settings = mIni.read("[S]\nk=\ninvalid=@Invalid()\n");
    QVERIFY(settings->containsEntry(section, key));
    QVERIFY(settings->containsEntry(section, QStringLiteral("invalid")));
    QVERIFY(!settings->containsEntry(section, QStringLiteral("missing")));
    QVERIFY(!settings->containsEntry(QString(), key));
    // Reading does not add.
    QCOMPARE(settings->integerValue(section, QStringLiteral("missing"), 3), 3);
    QVERIFY(!settings->containsEntry(section, QStringLiteral("missing")));
}

void tst_settings_file::writesByItselfInTheEventLoop()
{
    const std::unique_ptr<CSettingsFile> settings = mIni.open(QStringLiteral("loop.ini"));
    settings->setIntegerValue(section, key, 1);
    QVERIFY(!QFile::exists(mIni.path(QStringLiteral("loop.ini"))));
    QCoreApplication::processEvents();
    QCOMPARE(mIni.contents(QStringLiteral("loop.ini")), QByteArray("[S]\nk=1\n"));
}

void tst_settings_file::objectsOfOneFileSeeEachOther()
{
    const QString fileName = QStringLiteral("shared.ini");
    const std::unique_ptr<CSettingsFile> first = mIni.open(fileName);
    const std::unique_ptr<CSettingsFile> second = mIni.open(fileName);
    first->setUnsignedIntValue(section, QStringLiteral("a"), 1);
    second->setUnsignedIntValue(section, QStringLiteral("b"), 2);
    QCOMPARE(second->unsignedIntValue(section, QStringLiteral("a"), 7), 1U);
    QCOMPARE(first->unsignedIntValue(section, QStringLiteral("b"), 7), 2U);
    first->sync();
    second->sync();
    QCOMPARE(mIni.contents(fileName), QByteArray("[S]\na=0x00000001\nb=0x00000002\n"));
}

void tst_settings_file::storesStrings()
{
    const QStringList texts = {QString(),
                               QString::fromLatin1(""),
                               QStringLiteral("text"),
                               QStringLiteral(" a, \"b\"; c = %1 \\ \n"),
                               QStringLiteral("@at"),
                               QStringLiteral("@ByteArray(x)"),
                               QString::fromUtf8("Zürich € 😀"),
                               QString(QChar(0)) + QLatin1Char('x'),
                               QStringLiteral("[S]\nk=1")};
    for (const QString &stored : texts) {
        const std::unique_ptr<CSettingsFile> settings = mIni.open();
        settings->setString(section, key, stored);
        QCOMPARE(settings->QSettings::value(QStringLiteral("S/k")).userType(), int(QMetaType::QString));
        QCOMPARE(settings->string(section, key, QStringLiteral("default")), stored);
        QCOMPARE(mIni.reread(*settings)->string(section, key, QStringLiteral("default")), stored);
    }
}

void tst_settings_file::storesIntegersAsInt()
{
    for (const int stored :
         {0, 1, -1, 42, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        const std::unique_ptr<CSettingsFile> settings = mIni.open();
        settings->setIntegerValue(section, key, stored);
        const QVariant held = settings->value(section, key, QVariant());
        QCOMPARE(held.userType(), int(QMetaType::Int));
        QCOMPARE(held, QVariant(stored));
        QCOMPARE(settings->integerValue(section, key, 7), stored);

        const std::unique_ptr<CSettingsFile> reread = mIni.reread(*settings);
        const QVariant fromText = reread->value(section, key, QVariant());
        QCOMPARE(fromText.userType(), int(QMetaType::QString));
        QCOMPARE(fromText.toString(), QString::number(stored));
        QCOMPARE(reread->integerValue(section, key, 7), stored);
    }
    QCOMPARE(linesOf([](CSettingsFile &s) { s.setIntegerValue(section, key, -42); }),
             QByteArray("[S]\nk=-42\n"));
}

void tst_settings_file::storesUnsignedIntegersAsText_data()
{
    QTest::addColumn<unsigned int>("number");
    QTest::addColumn<QByteArray>("digits");

    QTest::newRow("42") << 42U << QByteArray("0x0000002a");
    QTest::newRow("0") << 0U << QByteArray("0x00000000");
    QTest::newRow("largest") << 4294967295U << QByteArray("0xffffffff");
    QTest::newRow("every digit") << 0x89ABCDEFU << QByteArray("0x89abcdef");
}

void tst_settings_file::storesUnsignedIntegersAsText()
{
    QFETCH(unsigned int, number);
    QFETCH(QByteArray, digits);
    const std::unique_ptr<CSettingsFile> settings = mIni.open();
    settings->setUnsignedIntValue(section, key, number);
    QCOMPARE(settings->value(section, key, QVariant()), QVariant(QString::fromLatin1(digits)));
    QCOMPARE(settings->unsignedIntValue(section, key, 7), number);
    const std::unique_ptr<CSettingsFile> reread = mIni.reread(*settings);
    QCOMPARE(mIni.contents(), "[S]\nk=" + digits + '\n');
    QCOMPARE(reread->unsignedIntValue(section, key, 7), number);
    QCOMPARE(reread->unsignedLongIntValue(section, key, 7), uint64(number));
}

void tst_settings_file::storesUnsignedLongIntegersAsText_data()
{
    QTest::addColumn<uint64>("number");
    QTest::addColumn<QByteArray>("digits");

    QTest::newRow("42") << uint64(42) << QByteArray("0x000000000000002a");
    QTest::newRow("0") << uint64(0) << QByteArray("0x0000000000000000");
    QTest::newRow("largest") << std::numeric_limits<uint64>::max() << QByteArray("0xffffffffffffffff");
    QTest::newRow("every digit") << uint64(0x0123456789ABCDEF) << QByteArray("0x0123456789abcdef");
}

void tst_settings_file::storesUnsignedLongIntegersAsText()
{
    QFETCH(uint64, number);
    QFETCH(QByteArray, digits);
    const std::unique_ptr<CSettingsFile> settings = mIni.open();
    settings->setUnsignedLongIntValue(section, key, number);
    QCOMPARE(settings->value(section, key, QVariant()), QVariant(QString::fromLatin1(digits)));
    QCOMPARE(settings->unsignedLongIntValue(section, key, 7), number);
    const std::unique_ptr<CSettingsFile> reread = mIni.reread(*settings);
    QCOMPARE(mIni.contents(), "[S]\nk=" + digits + '\n');
    QCOMPARE(reread->unsignedLongIntValue(section, key, 7), number);
    // The text has more digits, the number not always.
    const bool isSmall = number <= std::numeric_limits<unsigned int>::max();
    QCOMPARE(reread->unsignedIntValue(section, key, 7), isSmall ? static_cast<unsigned int>(number) : 7U);
}

void tst_settings_file::storesDoublesAsDouble()
{
    const std::unique_ptr<CSettingsFile> settings = mIni.open();
    settings->setDoubleValue(section, key, 2.9);
    QCOMPARE(settings->value(section, key, QVariant()).userType(), int(QMetaType::Double));
    QVERIFY(settings->doubleValue(section, key, 7.0) == 2.9);
    const std::unique_ptr<CSettingsFile> reread = mIni.reread(*settings);
    QCOMPARE(mIni.contents(), QByteArray("[S]\nk=2.9\n"));
    QCOMPARE(reread->value(section, key, QVariant()), QVariant(QStringLiteral("2.9")));
    QVERIFY(reread->doubleValue(section, key, 7.0) == 2.9);
    // It was 2 as a double; as text it is no integer.
    QCOMPARE(settings->integerValue(section, key, 7), 2);
    QCOMPARE(reread->integerValue(section, key, 7), 7);
}

void tst_settings_file::doublesOfAFileAreExact_data()
{
    QTest::addColumn<double>("number");

    QTest::newRow("zero") << 0.0;
    QTest::newRow("whole") << 5.0;
    QTest::newRow("0.1") << 0.1;
    QTest::newRow("third") << -1.0 / 3.0;
    QTest::newRow("all digits") << 0.1 + 0.2;
    QTest::newRow("largest") << std::numeric_limits<double>::max();
    QTest::newRow("smallest") << std::numeric_limits<double>::denorm_min();
    QTest::newRow("infinity") << infinity;
    QTest::newRow("minus infinity") << -infinity;
    QTest::newRow("not a number") << notANumber;
}

void tst_settings_file::doublesOfAFileAreExact()
{
    QFETCH(double, number);
    const std::unique_ptr<CSettingsFile> settings = mIni.open();
    settings->setDoubleValue(section, key, number);
    QVERIFY(isSame(settings->doubleValue(section, key, 7.0), number));
    const std::unique_ptr<CSettingsFile> reread = mIni.reread(*settings);
    QCOMPARE(reread->value(section, key, QVariant()).userType(), int(QMetaType::QString));
    QVERIFY(isSame(reread->doubleValue(section, key, 7.0), number));
}

void tst_settings_file::storesBooleansAsBool()
{
    for (const bool stored : {true, false}) {
        const std::unique_ptr<CSettingsFile> settings = mIni.open();
        settings->setBoolean(section, key, stored);
        QCOMPARE(settings->value(section, key, QVariant()).userType(), int(QMetaType::Bool));
        QCOMPARE(settings->boolean(section, key, !stored), stored);
        const std::unique_ptr<CSettingsFile> reread = mIni.reread(*settings);
        QCOMPARE(mIni.contents(), stored ? QByteArray("[S]\nk=true\n") : QByteArray("[S]\nk=false\n"));
        QCOMPARE(reread->boolean(section, key, !stored), stored);
    }
}

void tst_settings_file::storesAnyVariant()
{
    const QVariantList variants = {QVariant(),
                                   QVariant(5),
                                   QVariant(QPoint(1, -2)),
                                   QVariant(QStringList{QStringLiteral("a"), QStringLiteral("b, c")}),
                                   QVariant(QDateTime(QDate(2024, 2, 29), QTime(12, 30), Qt::UTC)),
                                   QVariant(QVariantMap{{QStringLiteral("x"), 1.5}})};
    for (const QVariant &stored : variants) {
        const std::unique_ptr<CSettingsFile> settings = mIni.open();
        settings->setValue(section, key, stored);
        QCOMPARE(settings->value(section, key, QVariant(7)), stored);
        QCOMPARE(settings->value(section, key, QVariant(7)).userType(), stored.userType());
        const QVariant reread = mIni.reread(*settings)->value(section, key, QVariant(7));
        // A number is a text now, whatever QSettings writes with its type has kept it.
        QCOMPARE(reread, stored.userType() == QMetaType::Int ? QVariant(stored.toString()) : stored);
    }
}

void tst_settings_file::numbersAreIndependentOfTheLocale()
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    const std::unique_ptr<CSettingsFile> settings = mIni.open();
    settings->setDoubleValue(section, key, 1234.5);
    settings->setIntegerValue(section, QStringLiteral("i"), 123456);
    settings->setUnsignedIntValue(section, QStringLiteral("u"), 123456);
    const std::unique_ptr<CSettingsFile> reread = mIni.reread(*settings);
    const QByteArray contents = mIni.contents();
    const double number = reread->doubleValue(section, key, 7.0);
    const int integerNumber = reread->integerValue(section, QStringLiteral("i"), 7);
    QLocale::setDefault(before);
#ifdef Q_OS_WIN // where entries stand in the order in which they were made
    QCOMPARE(contents, QByteArray("[S]\nk=1234.5\ni=123456\nu=0x0001e240\n"));
#else
    QCOMPARE(contents, QByteArray("[S]\ni=123456\nk=1234.5\nu=0x0001e240\n"));
#endif
    QVERIFY(number == 1234.5);
    QCOMPARE(integerNumber, 123456);
}

void tst_settings_file::storesLocalesByName()
{
    QCOMPARE(linesOf([](CSettingsFile &s) { s.setLocale(section, key, QLocale(QStringLiteral("de_DE"))); }),
             QByteArray("[S]\nk=de_DE\n"));
    QCOMPARE(linesOf([](CSettingsFile &s) { s.setLocale(section, key, QLocale::c()); }),
             QByteArray("[S]\nk=C\n"));
    // The name has a language and a country, no script.
    QCOMPARE(
        linesOf([](CSettingsFile &s) { s.setLocale(section, key, QLocale(QStringLiteral("zh_Hant_TW"))); }),
        QByteArray("[S]\nk=zh_TW\n"));
    const std::unique_ptr<CSettingsFile> settings = mIni.open();
    settings->setLocale(section, key, QLocale(QStringLiteral("fr_CH")));
    QCOMPARE(settings->value(section, key, QVariant()), QVariant(QStringLiteral("fr_CH")));
    QCOMPARE(settings->locale(section, key, QLocale::c()).name(), QStringLiteral("fr_CH"));
}

void tst_settings_file::languageIsCommonApplanguage()
{
    const std::unique_ptr<CSettingsFile> settings = mIni.open(QStringLiteral("language.ini"));
    settings->setLocale(QLocale(QStringLiteral("de_CH")));
    QCOMPARE(settings->allKeys(), QStringList{QStringLiteral("Common/applanguage")});
    QCOMPARE(settings->locale(QLocale::c()).name(), QStringLiteral("de_CH"));
    QCOMPARE(settings->locale(QStringLiteral("Common"), QStringLiteral("applanguage"), QLocale::c()).name(),
             QStringLiteral("de_CH"));
    settings->sync();
    QCOMPARE(mIni.contents(QStringLiteral("language.ini")), QByteArray("[Common]\napplanguage=de_CH\n"));
}

void tst_settings_file::storesBytesWithTheirVersion()
{
    const QByteArray bytes = QByteArray::fromHex("00ff0141");
    const std::unique_ptr<CSettingsFile> settings = mIni.open(QStringLiteral("bytes.ini"));
    settings->setByteArray(section, key, bytes, QStringLiteral("1.0"));
    QCOMPARE(settings->value(section, key, QVariant()), QVariant(bytes));
    QCOMPARE(settings->value(section, key, QVariant()).userType(), int(QMetaType::QByteArray));
    QCOMPARE(settings->value(section, QStringLiteral("k_version"), QVariant()),
             QVariant(QStringLiteral("1.0")));
    QCOMPARE(settings->byteArray(section, key, QStringLiteral("1.0")), bytes);
    settings->sync();
    QCOMPARE(mIni.contents(QStringLiteral("bytes.ini")),
             QByteArray("[S]\nk=@ByteArray(\\0\\xff\\x1\\x41)\nk_version=1.0\n"));
}

void tst_settings_file::bytesOfAnotherVersionAreEmpty_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("asked");
    QTest::addColumn<bool>("matches");

    const auto row = [](const char *name, const char *stored, const char *asked, bool matches) {
        QTest::newRow(name) << QString::fromUtf8(stored) << QString::fromUtf8(asked) << matches;
    };
    row("same", "1.0", "1.0", true);
    row("newer", "1.0", "1.1", false);
    row("older", "1.1", "1.0", false);
    row("case differs", "1.0a", "1.0A", false);
    row("equal as a number", "1.0", "1.00", false);
    row("blank behind", "1.0", "1.0 ", false);
    row("any text", "größe %1", "größe %1", true);
    row("both empty", "", "", true);
    row("empty is not the version of unversioned bytes", "", "0.0", false);
}

void tst_settings_file::bytesOfAnotherVersionAreEmpty()
{
    QFETCH(QString, stored);
    QFETCH(QString, asked);
    QFETCH(bool, matches);
    const std::unique_ptr<CSettingsFile> settings = mIni.open();
    settings->setByteArray(section, key, QByteArrayLiteral("data"), stored);
    const QByteArray expected = matches ? QByteArray("data") : QByteArray();
    QCOMPARE(settings->byteArray(section, key, asked), expected);
    QCOMPARE(mIni.reread(*settings)->byteArray(section, key, asked), expected);
}

void tst_settings_file::bytesWithoutVersionMatchZeroZero()
{
    const std::unique_ptr<CSettingsFile> settings = mIni.read("[S]\nk=@ByteArray(data)\ntext=data\n");
    QCOMPARE(settings->byteArray(section, key, QStringLiteral("0.0")), QByteArray("data"));
    QCOMPARE(settings->byteArray(section, key, QStringLiteral("1.0")), QByteArray());
    QCOMPARE(settings->byteArray(section, key, QString()), QByteArray());
    QCOMPARE(settings->byteArray(section, QStringLiteral("text"), QStringLiteral("0.0")), QByteArray("data"));
    QCOMPARE(settings->byteArray(section, QStringLiteral("missing"), QStringLiteral("0.0")), QByteArray());
}

void tst_settings_file::bytesOfAnyValueSurviveAFile()
{
    QByteArray bytes;
    for (int i = 0; i < 0x10000; ++i)
        bytes.append(static_cast<char>(i)).append(static_cast<char>(i >> 8));
    for (const QByteArray &stored : {bytes, QByteArray(), QByteArray("@ByteArray(x)"), QByteArray("a, b")}) {
        const std::unique_ptr<CSettingsFile> settings = mIni.open();
        settings->setByteArray(section, key, stored, QStringLiteral("1.0"));
        QCOMPARE(mIni.reread(*settings)->byteArray(section, key, QStringLiteral("1.0")), stored);
    }
}

void tst_settings_file::versionWithoutBytes()
{
    const std::unique_ptr<CSettingsFile> settings = mIni.read("[S]\nk_version=1.0\n");
    QCOMPARE(settings->byteArray(section, key, QStringLiteral("1.0")), QByteArray());
}

void tst_settings_file::exampleOfTheClassComment()
{
    const QByteArray layout = QByteArrayLiteral("layout");
    const QString drive = QStringLiteral("Drive");
    const QString scope = QStringLiteral("Scope");
    CSettingsFile settings(mIni.path(QStringLiteral("example.ini")), QSettings::IniFormat, nullptr);
    settings.setUnsignedIntValue(drive, QStringLiteral("address"), 42);
    QCOMPARE(settings.unsignedIntValue(drive, QStringLiteral("address"), 7), 42U);
    QCOMPARE(settings.unsignedIntValue(drive, QStringLiteral("no such key"), 7), 7U);
    settings.setByteArray(scope, QStringLiteral("layout"), layout, QStringLiteral("1.0"));
    QCOMPARE(settings.byteArray(scope, QStringLiteral("layout"), QStringLiteral("1.1")), QByteArray());
    QCOMPARE(settings.byteArray(scope, QStringLiteral("layout"), QStringLiteral("1.0")), layout);
    QCOMPARE(settings.locale(QLocale(QLocale::English)).language(), QLocale::English);
    settings.sync();
    QVERIFY(mIni.contents(QStringLiteral("example.ini")).contains("[Drive]\naddress=0x0000002a\n"));
}

QTEST_GUILESS_MAIN(tst_settings_file)
#include "tst_settings_file.moc"
