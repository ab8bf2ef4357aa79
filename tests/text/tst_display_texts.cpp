// SPDX-License-Identifier: MIT
#include <CStr.h>

#include <LoggedTest.h>
#include <ScopedLocale.h>

#include <QTest>

#include <climits>
#include <limits>

namespace {

constexpr qint64 kibi = 1024;
constexpr qint64 mebi = 1024 * kibi;
constexpr qint64 gibi = 1024 * mebi;
constexpr qint64 tebi = 1024 * gibi;
constexpr qint64 pebi = 1024 * tebi;

} // namespace

// Runs under a locale with decimal comma and group points, which no text here may notice.
class tst_display_texts : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void serials_data();
    void serials();
    void sapNames_data();
    void sapNames();
    void sapNamesLoseAllWhiteSpaceOfUnicode();
    void sapNamesKeepWhatOnlyLooksEmpty();
    void memorySizes_data();
    void memorySizes();
    void ampersands_data();
    void ampersands();
    void userLevels_data();
    void userLevels();
    void everyOtherLevelIsUnknown();
    void negativeLevelIsShownAsItsOverloadSeesIt();
    void selectionEntries_data();
    void selectionEntries();
    void exampleOfTheManual();

private:
    ScopedLocale mLocale{QLocale(QLocale::German, QLocale::Germany)};
};

void tst_display_texts::serials_data()
{
    QTest::addColumn<quint32>("serial");
    QTest::addColumn<QString>("text");

    QTest::newRow("zero") << 0U << QStringLiteral("0");
    QTest::newRow("1 digit") << 7U << QStringLiteral("7");
    QTest::newRow("2 digits") << 12U << QStringLiteral("1 2");
    QTest::newRow("3 digits") << 123U << QStringLiteral("1 23");
    QTest::newRow("4 digits") << 1234U << QStringLiteral("1 234");
    QTest::newRow("5 digits") << 12345U << QStringLiteral("1 234 5");
    QTest::newRow("6 digits") << 123456U << QStringLiteral("1 234 56");
    QTest::newRow("7 digits") << 1234567U << QStringLiteral("1 234 567");
    QTest::newRow("8 digits") << 12345678U << QStringLiteral("1 234 567 8");
    QTest::newRow("9 digits") << 123456789U << QStringLiteral("1 234 567 89");
    QTest::newRow("10 digits") << 1234567890U << QStringLiteral("1 234 567 890");
    QTest::newRow("largest") << 4294967295U << QStringLiteral("4 294 967 295");
}

void tst_display_texts::serials()
{
    QFETCH(quint32, serial);
    QTEST(CStr::serialToString(serial), "text");
}

void tst_display_texts::sapNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");

    const auto row = [](const char *name, const char *text) {
        QTest::addRow("%d characters", static_cast<int>(qstrlen(name)))
            << QString::fromLatin1(name) << QString::fromLatin1(text);
    };
    row("", "             ");
    row("A", "A            ");
    row("AB", "AB           ");
    row("ABC", "ABC          ");
    row("ABCD", "ABCD         ");
    row("ABCDE", "ABCDE        ");
    row("ABCDEF", "ABCDE F      ");
    row("ABCDEFG", "ABCDE FG     ");
    row("ABCDEFGH", "ABCDE FG H   ");
    row("ABCDEFGHI", "ABCDE FG HI  ");
    row("ABCDEFGHIJ", "ABCDE FG HIJ ");
    row("ABCDEFGHIJK", "ABCDE FG HIJ K");
    row("ABCDEFGHIJKL", "ABCDE FG HIJ KL");
    row("ABCDEFGHIJKLM", "ABCDE FG HIJ KLM");
    row("ABCDEFGHIJKLMN", "ABCDE FG HIJ KLMN");
    row("ABCDEFGHIJKLMNO", "ABCDE FG HIJ KLMN");
    row("ABCDEFGHIJKLMNOP", "ABCDE FG HIJ KLMN");
    QTest::newRow("already formatted")
        << QStringLiteral("ABCDE FG HIJ KLMN") << QStringLiteral("ABCDE FG HIJ KLMN");
    QTest::newRow("white space is removed before cutting")
        << QStringLiteral("  A B C D E F G H I J K L M N  ") << QStringLiteral("ABCDE FG HIJ KLMN");
    QTest::newRow("white space only") << QStringLiteral(" \t\r\n") << QStringLiteral("             ");
    QTest::newRow("pairs are cut by units")
        << QStringLiteral("ABCDEFGHIJKLM\U0001F600") << QStringLiteral("ABCDE FG HIJ KLM") + QChar(0xD83D);
}

void tst_display_texts::sapNames()
{
    QFETCH(QString, name);
    QTEST(CStr::formatSapName(name), "text");
}

void tst_display_texts::sapNamesLoseAllWhiteSpaceOfUnicode()
{
    for (const int unit : {0x09, 0x0A, 0x0B, 0x0C, 0x0D, 0x20, 0x85, 0xA0, 0x1680, 0x2000, 0x200A, 0x2028,
                           0x2029, 0x202F, 0x205F, 0x3000}) {
        const QString name = QStringLiteral("ABCDEFG%1HIJKLMN").arg(QChar(unit));
        QCOMPARE(CStr::formatSapName(name), QStringLiteral("ABCDE FG HIJ KLMN"));
    }
}

void tst_display_texts::sapNamesKeepWhatOnlyLooksEmpty()
{
    for (const int unit : {0x08, 0x1C, 0x200B, 0x2060, 0xFEFF}) {
        const QChar character(unit);
        QCOMPARE(CStr::formatSapName(QString(character)), character + QString(12, QLatin1Char(' ')));
    }
}

void tst_display_texts::memorySizes_data()
{
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<QString>("text");

    const auto row = [](qint64 bytes, const char *text) {
        QTest::addRow("%lld", static_cast<long long>(bytes)) << bytes << QString::fromLatin1(text);
    };
    row(std::numeric_limits<qint64>::min(), "-9223372036854775808 Byte");
    row(-10 * pebi, "-11258999068426240 Byte");
    row(-10240, "-10240 Byte");
    row(-1, "-1 Byte");
    row(0, "0 Byte");
    row(1, "1 Byte");
    row(1536, "1536 Byte");
    row(10239, "10239 Byte");
    row(10240, "10.0 KiB");
    row(10 * kibi + 51, "10.0 KiB"); // 10.0498
    row(10 * kibi + 52, "10.1 KiB"); // 10.0508
    row(1000 * kibi, "1000.0 KiB");
    row(mebi, "1024.0 KiB");
    row(10485759, "10240.0 KiB"); // rounded up, still in KiB
    row(10485760, "10.0 MiB");
    row(mebi * 25 / 2, "12.5 MiB");
    row(gibi, "1024.0 MiB");
    row(10737418239, "10240.0 MiB");
    row(10737418240, "10.0 GiB");
    row(tebi, "1024.0 GiB");
    row(10 * tebi - 1, "10240.0 GiB");
    row(10 * tebi, "10.0 TiB");
    row(pebi, "1024.0 TiB");
    row(10 * pebi - 1, "10240.0 TiB");
    row(10 * pebi, "10 PiB");
    row(11 * pebi - 1, "10 PiB"); // truncated
    row(11 * pebi, "11 PiB");
    row(std::numeric_limits<qint64>::max(), "8191 PiB");
}

void tst_display_texts::memorySizes()
{
    QFETCH(qint64, bytes);
    QTEST(CStr::memSizeToString(bytes), "text");
}

void tst_display_texts::ampersands_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("position");

    QTest::newRow("first character") << QStringLiteral("&File") << 0;
    QTest::newRow("second character") << QStringLiteral("F&ile") << 0;
    QTest::newRow("behind a blank in front") << QStringLiteral(" &File") << 0;
    QTest::newRow("inside") << QStringLiteral("Save &as") << 4;
    QTest::newRow("before the last character") << QStringLiteral("Qui&t") << 2;
    QTest::newRow("none") << QStringLiteral("File") << -1;
    QTest::newRow("empty") << QString() << -1;
    QTest::newRow("alone") << QStringLiteral("&") << -1;
    QTest::newRow("at the end") << QStringLiteral("File&") << -1;
    QTest::newRow("doubled") << QStringLiteral("Search && Replace") << -1;
    QTest::newRow("doubled in front") << QStringLiteral("&&File") << -1;
    QTest::newRow("doubled inside") << QStringLiteral("F&&ile") << -1;
    QTest::newRow("tripled") << QStringLiteral("F&&&ile") << -1;
    QTest::newRow("before a blank") << QStringLiteral("Search & Replace") << -1;
    QTest::newRow("before a sign") << QStringLiteral("&-") << -1;
    QTest::newRow("before a digit") << QStringLiteral("&1") << 0;
    QTest::newRow("before an underscore") << QStringLiteral("&_") << 0;
    QTest::newRow("before an umlaut") << QStringLiteral("\u00DC&\u00F6") << 0;
    QTest::newRow("before an upper-case letter") << QStringLiteral("x &Y") << 1;
    QTest::newRow("behind a doubled one") << QStringLiteral("A && &B") << 4;
    QTest::newRow("behind one before a blank") << QStringLiteral("A & &B") << 3;
    QTest::newRow("the first of two") << QStringLiteral("x&A&B") << 0;
    QTest::newRow("behind a line feed") << QStringLiteral("A\n&B") << 1;
}

void tst_display_texts::ampersands()
{
    QFETCH(QString, text);
    QTEST(CStr::indexOfAmpersand(text), "position");
}

void tst_display_texts::userLevels_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<QString>("text");

    QTest::newRow("0") << 0 << QStringLiteral("User");
    QTest::newRow("1") << 1 << QStringLiteral("OEM");
    QTest::newRow("16") << 16 << QStringLiteral("Admin");
    QTest::newRow("48") << 48 << QStringLiteral("V&T Technician");
    QTest::newRow("64") << 64 << QStringLiteral("V&T Production");
    QTest::newRow("80") << 80 << QStringLiteral("V&T Developer");
    for (const int level : {2, 15, 17, 32, 47, 49, 63, 65, 79, 81, 256, 272, 65536, INT_MAX})
        QTest::addRow("%d", level) << level
                                   << QStringLiteral("Unknown (") + QString::number(level) + QLatin1Char(')');
}

void tst_display_texts::userLevels()
{
    QFETCH(int, level);
    QFETCH(QString, text);
    QCOMPARE(CStr::userlevelText(static_cast<quint32>(level)), text);
    QCOMPARE(CStr::userlevelText(static_cast<Nj6UserLevel::eUserLevel_t>(level)), text);
}

void tst_display_texts::everyOtherLevelIsUnknown()
{
    int known = 0;
    for (quint32 level = 0; level < 1000; ++level) {
        const bool isUnknown = CStr::userlevelText(level) == QStringLiteral("Unknown (%1)").arg(level);
        known += isUnknown ? 0 : 1;
    }
    QCOMPARE(known, 6);
}

void tst_display_texts::negativeLevelIsShownAsItsOverloadSeesIt()
{
    QCOMPARE(CStr::userlevelText(static_cast<Nj6UserLevel::eUserLevel_t>(-1)),
             QStringLiteral("Unknown (-1)"));
    QCOMPARE(CStr::userlevelText(UINT_MAX), QStringLiteral("Unknown (4294967295)"));
}

void tst_display_texts::selectionEntries_data()
{
    QTest::addColumn<QString>("subName");
    QTest::addColumn<QString>("name");
    QTest::addColumn<quint32>("serial");
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("subDevice");

    QTest::newRow("plain") << QStringLiteral("Axis 1") << QStringLiteral("Spindle") << 1234567890U
                           << QStringLiteral("Spindle [s/n: 1234567890]")
                           << QStringLiteral("Axis 1 - Spindle [s/n: 1234567890]");
    QTest::newRow("empty names") << QString() << QString() << 0U << QStringLiteral(" [s/n: 0]")
                                 << QStringLiteral(" -  [s/n: 0]");
    QTest::newRow("largest serial") << QStringLiteral("a") << QStringLiteral("b") << UINT_MAX
                                    << QStringLiteral("b [s/n: 4294967295]")
                                    << QStringLiteral("a - b [s/n: 4294967295]");
    QTest::newRow("placeholders in names stay")
        << QStringLiteral("%2 %1") << QStringLiteral("%1%2%99") << 5U << QStringLiteral("%1%2%99 [s/n: 5]")
        << QStringLiteral("%2 %1 - %1%2%99 [s/n: 5]");
}

void tst_display_texts::selectionEntries()
{
    QFETCH(QString, subName);
    QFETCH(QString, name);
    QFETCH(quint32, serial);
    QTEST(CStr::createDeviceSelectionValue(name, serial), "device");
    QTEST(CStr::createSubDeviceSelectionValue(subName, name, serial), "subDevice");
}

void tst_display_texts::exampleOfTheManual()
{
    QCOMPARE(CStr::versionToStr(0x01020003U, 2, 2, 4), QStringLiteral("01.02.0003"));
    QCOMPARE(CStr::revisionToString(0x00010005U), QStringLiteral("1.005"));
    QCOMPARE(CStr::memSizeToString(10240), QStringLiteral("10.0 KiB"));
    QCOMPARE(CStr::userlevelText(Nj6UserLevel::E_OEM), QStringLiteral("OEM"));
    QCOMPARE(CStr::createDeviceSelectionValue(QStringLiteral("X axis"), 7),
             QStringLiteral("X axis [s/n: 7]"));
}

QTEST_GUILESS_MAIN(tst_display_texts)
#include "tst_display_texts.moc"
