// SPDX-License-Identifier: MIT
// The setup document and its getters, asked for by a program in an installation of its own.
#include <CCompanyStrings.h>

#include <LoggedTest.h>
#include <ScratchInstallation.h>

#include <QDir>
#include <QFile>
#include <QMap>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <type_traits>

static_assert(std::is_trivially_default_constructible<CCompanyStrings>::value
                  && std::is_empty<CCompanyStrings>::value,
              "no state of its own");

namespace {

using Section = QMap<QString, QString>;

struct Getter
{
    const char *name;
    const char *key;
};

constexpr Getter companyTexts[] = {
    {"getCompanyLongName", "NameLong"},
    {"getCompanyMediumName", "NameMedium"},
    {"getCompanyShortName", "NameShort"},
    {"getAddressName", "AddressName"},
    {"getAddressStreet", "AddressStreet"},
    {"getAddressCity", "AddressCity"},
    {"getAddressHtml", "AddressHtml"},
    {"getWebUrl", "WebUrl"},
    {"getEMail", "eMail"},
    {"getUpdateVersionFile", "UpdateVersionFile"},
    {"getUpdatePath", "UpdatePath"},
    {"getUpdateChangelogFile", "UpdateChangelogFile"},
    {"getOpenSourceUrl", "OpenSourceUrl"},
};

constexpr Getter companyImages[] = {
    {"getLogoAndNameBitmapFile_145x52", "LogoAndNameBitmap_145x52"},
    {"getLogoAndNameBitmapFile_105x30", "LogoAndNameBitmap_105x30"},
    {"getLogoAndNameBitmapFile_105x30_inverted", "LogoAndNameBitmap_105x30_inverted"},
    {"getLogoBitmapFile_32x32", "Logo_32x32"},
    {"getLogoBitmapFile_16x16", "Logo_16x16"},
};

constexpr Getter productTexts[] = {
    {"getProductEMailAddress", "eMail"},
    {"getProductUpdateVersionFile", "UpdateVersionFile"},
    {"getProductUpdatePath", "UpdatePath"},
    {"getProductUpdateChangelogFile", "UpdateChangelogFile"},
};

constexpr Getter productImages[] = {
    {"getProductPictureFile", "ProductPicture"},
    {"getProductSplashScreenBitmapFile", "SplashScreen"},
};

// The compiler knows the enumerators, and warns when one is missing here.
const char *productName(NProductCodes::EProductCode code)
{
    switch (code) {
    case NProductCodes::E_PARAMETER_EDITOR:
        return "tessera Parameter Editor";
    case NProductCodes::E_COMMISSIONING:
        return "tessera Commissioning";
    case NProductCodes::E_OSCILLOSCOPE:
        return "tessera Oscilloscope";
    case NProductCodes::E_FIRMWARE_UPDATE:
        return "tessera Firmware Update";
    case NProductCodes::E_DIAGNOSIS:
        return "tessera Diagnosis";
    case NProductCodes::E_MOTOR_EDITOR:
        return "tessera Motor Editor";
    case NProductCodes::E_DEVICE_FINDER:
        return "tessera Device Finder";
    case NProductCodes::E_AXIS_TUNING:
        return "tessera Axis Tuning";
    case NProductCodes::E_LOGIC_EDITOR:
        return "tessera Logic Editor";
    case NProductCodes::E_SAFETY_CONFIGURATION:
        return "tessera Safety Configuration";
    case NProductCodes::E_FIELDBUS_CONFIGURATION:
        return "tessera Fieldbus Configuration";
    case NProductCodes::E_PARAMETER_BACKUP:
        return "tessera Parameter Backup";
    case NProductCodes::E_EVENT_VIEWER:
        return "tessera Event Viewer";
    case NProductCodes::E_SPINDLE_MONITOR:
        return "tessera Spindle Monitor";
    case NProductCodes::E_OBJECT_DICTIONARY_BROWSER:
        return "tessera Object Dictionary Browser";
    case NProductCodes::E_USER_LEVEL_MANAGER:
        return "tessera User Level Manager";
    case NProductCodes::E_PRODUCTION_TEST:
        return "tessera Production Test";
    }
    return "no enumerator";
}

QByteArray contentsOf(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// What stands between the quotes of a value; a null text where it is not quoted or not ASCII.
QString quotedText(const QString &value)
{
    const bool quoted =
        value.size() >= 2 && value.startsWith(QLatin1Char('"')) && value.endsWith(QLatin1Char('"'));
    QString text = value.mid(1, value.size() - 2);
    text.replace(QLatin1String("\\\""), QLatin1String("\""));
    const bool ascii = std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
    return quoted && ascii && !text.contains(QLatin1Char('\\')) ? text : QString();
}

// The compiled-in document as it stands in the source tree, read here by its plain form: a section, or a key
// with a quoted value, in one line.
QMap<QString, Section> readSourceDocument()
{
    QMap<QString, Section> sections;
    QString section;
    const QStringList lines =
        QString::fromUtf8(contentsOf(QStringLiteral(J6CORE_SETUP_DOCUMENT))).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        if (line.startsWith(QLatin1Char('[')))
            sections.insert(section = line.mid(1, line.size() - 2), Section());
        else if (!line.isEmpty() && !line.startsWith(QLatin1Char(';')))
            sections[section].insert(line.section(QLatin1Char('='), 0, 0),
                                     quotedText(line.section(QLatin1Char('='), 1)));
    }
    return sections;
}

const QMap<QString, Section> &sourceDocument()
{
    static const QMap<QString, Section> read = readSourceDocument();
    return read;
}

Section company()
{
    return sourceDocument().value(QStringLiteral("COMPANY"));
}

QString sectionName(int code)
{
    return QStringLiteral("PRODUCT") + QString::number(code);
}

QString question(const Getter &getter, int code)
{
    return QLatin1String(getter.name) + QLatin1Char('=') + QString::number(code);
}

QString imageIn(const ScratchInstallation &installation, const QString &value)
{
    return value.isEmpty() ? QString() : installation.root() + QStringLiteral("etc/image/") + value;
}

QStringList lines(std::initializer_list<QString> texts)
{
    return QStringList(texts);
}

} // namespace

class tst_company_strings : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void theDocumentHasItsSections();
    void theDocumentHasItsCompanyKeys();
    void theDocumentHasItsInstallerKeys();
    void everyProductHasItsKeys_data();
    void everyProductHasItsKeys();
    void everyEnumeratorHasItsSectionAndViceVersa();

    void compiledInCompanyTexts();
    void compiledInCompanyImages();
    void compiledInProduct_data();
    void compiledInProduct();

    void anInstalledDocumentWins();
    void thereIsNoFallbackKeyByKey();
    void anInstalledProductIsRead();
    void emptyImagesAreEmpty();
    void aProductWithoutProgramGivesTheDirectory();
    void unknownProducts();
    void productSection_data();
    void productSection();
    void getImageFileTakesSectionAndKey();
    void qtWarnsOfAnEmptyKey();

    void theChoiceIsKept();
    void aDirectoryOfThatNameIsNoDocument();
    void aLinkLeadsToTheDocument();
    void anEmptyDocumentIsOne();
    void theFirstGetterCreatesTheDirectoryOfTheDocument();
    void anImageCreatesItsDirectory();
    void aProgramCreatesItsDirectory();
    void nothingIsWritten();
    void threadsGetTheSameAnswer();

    void valuesAreReadAsQtReadsThem_data();
    void valuesAreReadAsQtReadsThem();

private:
    // The lines that the program answers beside an installed document; without one for a null document.
    static QStringList answers(const QByteArray &document, const QStringList &questions);
};

QStringList tst_company_strings::answers(const QByteArray &document, const QStringList &questions)
{
    const ScratchInstallation installation(QStringLiteral(J6CORE_COMPANY_REPORTER));
    if (!document.isNull() && !installation.writeFile(QStringLiteral("etc/conf/Setup.Ini"), document))
        return {QStringLiteral("the document could not be written")};
    QStringList lines = installation.run(questions);
    // Whatever the installation's directory is called.
    return lines.replaceInStrings(installation.root(), QStringLiteral("ROOT/"));
}

void tst_company_strings::theDocumentHasItsSections()
{
    QStringList expected = {QStringLiteral("COMPANY"), QStringLiteral("INSTALLER")};
    for (int code = 400; code <= 416; ++code)
        expected += sectionName(code);
    QCOMPARE(QStringList(sourceDocument().keys()), expected);
}

void tst_company_strings::theDocumentHasItsCompanyKeys()
{
    QStringList expected;
    for (const Getter &getter : companyTexts)
        expected += QString::fromLatin1(getter.key);
    for (const Getter &getter : companyImages)
        expected += QString::fromLatin1(getter.key);
    expected.sort();
    QCOMPARE(QStringList(company().keys()), expected);
    const Section values = company();
    for (auto value = values.begin(); value != values.end(); ++value)
        QVERIFY2(!value->isEmpty(), qPrintable(value.key()));
}

void tst_company_strings::theDocumentHasItsInstallerKeys()
{
    const Section installer = sourceDocument().value(QStringLiteral("INSTALLER"));
    QCOMPARE(QStringList(installer.keys()),
             lines({QStringLiteral("CompanyDirectory"), QStringLiteral("ProductName"),
                    QStringLiteral("SplashScreen")}));
    for (const QString &value : installer)
        QVERIFY(!value.isEmpty());
}

void tst_company_strings::everyProductHasItsKeys_data()
{
    QTest::addColumn<int>("code");
    for (int code = 400; code <= 416; ++code)
        QTest::newRow(qPrintable(sectionName(code))) << code;
}

void tst_company_strings::everyProductHasItsKeys()
{
    QFETCH(int, code);
    Section values = sourceDocument().value(sectionName(code));
    for (const char *key : {"Name", "ExeFile", "SplashScreen", "eMail"}) {
        const QString value = values.take(QString::fromLatin1(key));
        QVERIFY2(!value.isNull(), key);
        if (key[0] == 'N' || key[0] == 'E')
            QVERIFY2(!value.isEmpty(), key);
    }
    // What is left appears only where the product has it.
    for (const char *key : {"UpdateVersionFile", "UpdatePath", "UpdateChangelogFile", "ProductPicture"}) {
        if (values.contains(QString::fromLatin1(key)))
            QVERIFY2(!values.take(QString::fromLatin1(key)).isEmpty(), key);
    }
    QCOMPARE(QStringList(values.keys()), QStringList());
}

void tst_company_strings::everyEnumeratorHasItsSectionAndViceVersa()
{
    for (int code = 400; code <= 416; ++code) {
        const char *expected = productName(static_cast<NProductCodes::EProductCode>(code));
        QCOMPARE(sourceDocument().value(sectionName(code)).value(QStringLiteral("Name")),
                 QString::fromLatin1(expected));
    }
    const QStringList sections = sourceDocument().keys();
    QCOMPARE(sections.filter(QStringLiteral("PRODUCT")).size(), 17);
}

void tst_company_strings::compiledInCompanyTexts()
{
    QStringList questions;
    QStringList expected;
    for (const Getter &getter : companyTexts) {
        questions += QString::fromLatin1(getter.name);
        expected += company().value(QString::fromLatin1(getter.key));
    }
    QCOMPARE(answers(QByteArray(), questions), expected);
}

void tst_company_strings::compiledInCompanyImages()
{
    QStringList questions;
    QStringList expected;
    for (const Getter &getter : companyImages) {
        questions += QString::fromLatin1(getter.name);
        expected += QStringLiteral("ROOT/etc/image/") + company().value(QString::fromLatin1(getter.key));
    }
    QCOMPARE(answers(QByteArray(), questions), expected);
}

void tst_company_strings::compiledInProduct_data()
{
    everyProductHasItsKeys_data();
}

void tst_company_strings::compiledInProduct()
{
    QFETCH(int, code);
    const Section values = sourceDocument().value(sectionName(code));
    const ScratchInstallation installation(QStringLiteral(J6CORE_COMPANY_REPORTER));
    QStringList questions = {question({"getProductName", nullptr}, code),
                             question({"getProductName(enum)", nullptr}, code),
                             question({"getProductExeFile", nullptr}, code)};
    QStringList expected = {values.value(QStringLiteral("Name")), values.value(QStringLiteral("Name")),
                            installation.root() + QStringLiteral("bin/")
                                + values.value(QStringLiteral("ExeFile"))};
    for (const Getter &getter : productTexts) {
        questions += question(getter, code);
        expected += values.value(QString::fromLatin1(getter.key));
    }
    for (const Getter &getter : productImages) {
        questions += question(getter, code);
        expected += imageIn(installation, values.value(QString::fromLatin1(getter.key)));
    }
    QCOMPARE(installation.run(questions), expected);
}

void tst_company_strings::anInstalledDocumentWins()
{
    QByteArray document = "[COMPANY]\n";
    QStringList questions;
    QStringList expected;
    for (const Getter &getter : companyTexts) {
        document += QByteArray(getter.key) + "=Our " + getter.key + '\n';
        questions += QString::fromLatin1(getter.name);
        expected += QStringLiteral("Our ") + QString::fromLatin1(getter.key);
    }
    for (const Getter &getter : companyImages) {
        document += QByteArray(getter.key) + '=' + getter.key + ".png\n";
        questions += QString::fromLatin1(getter.name);
        expected +=
            QStringLiteral("ROOT/etc/image/") + QString::fromLatin1(getter.key) + QStringLiteral(".png");
    }
    QCOMPARE(answers(document, questions), expected);
}

void tst_company_strings::thereIsNoFallbackKeyByKey()
{
    QStringList questions = {QStringLiteral("getCompanyShortName")};
    QStringList expected = {QStringLiteral("Ours")};
    for (const Getter &getter : companyTexts) {
        if (qstrcmp(getter.key, "NameShort") != 0)
            questions += QString::fromLatin1(getter.name);
    }
    for (const Getter &getter : companyImages)
        questions += QString::fromLatin1(getter.name);
    while (expected.size() < questions.size())
        expected += QString();
    // A product that the compiled-in document has.
    questions += QStringLiteral("getProductName=400");
    expected += QStringLiteral("PRODUCT400");
    QCOMPARE(answers("[COMPANY]\nNameShort=Ours\n", questions), expected);
}

void tst_company_strings::anInstalledProductIsRead()
{
    const QByteArray document = "[PRODUCT7]\nName=Ours\nExeFile=ours.exe\nSplashScreen=splash.png\n"
                                "eMail=us@example.com\nUpdateVersionFile=v.ini\nUpdatePath=/u/\n"
                                "UpdateChangelogFile=c.txt\nProductPicture=picture.png\n";
    QStringList questions = {QStringLiteral("getProductName=7"), QStringLiteral("getProductName(enum)=7"),
                             QStringLiteral("getProductExeFile=7")};
    for (const Getter &getter : productTexts)
        questions += question(getter, 7);
    for (const Getter &getter : productImages)
        questions += question(getter, 7);
    QCOMPARE(answers(document, questions),
             lines({QStringLiteral("Ours"), QStringLiteral("Ours"), QStringLiteral("ROOT/bin/ours.exe"),
                    QStringLiteral("us@example.com"), QStringLiteral("v.ini"), QStringLiteral("/u/"),
                    QStringLiteral("c.txt"), QStringLiteral("ROOT/etc/image/picture.png"),
                    QStringLiteral("ROOT/etc/image/splash.png")}));
}

void tst_company_strings::emptyImagesAreEmpty()
{
    const QByteArray document = "[COMPANY]\nLogo_16x16=\n[PRODUCT400]\nSplashScreen=\"\"\nProductPicture=\n";
    QCOMPARE(answers(document, {QStringLiteral("getLogoBitmapFile_16x16"),
                                QStringLiteral("getProductSplashScreenBitmapFile=400"),
                                QStringLiteral("getProductPictureFile=400")}),
             lines({QString(), QString(), QString()}));
}

void tst_company_strings::aProductWithoutProgramGivesTheDirectory()
{
    QCOMPARE(answers("[PRODUCT400]\nName=Ours\n[PRODUCT401]\nExeFile=\n",
                     {QStringLiteral("getProductExeFile=400"), QStringLiteral("getProductExeFile=401")}),
             lines({QStringLiteral("ROOT/bin/"), QStringLiteral("ROOT/bin/")}));
}

void tst_company_strings::unknownProducts()
{
    QStringList questions = {QStringLiteral("getProductName=999"), QStringLiteral("getProductName(enum)=999"),
                             QStringLiteral("getProductName=-1"), QStringLiteral("getProductExeFile=999")};
    QStringList expected = {QStringLiteral("PRODUCT999"), QStringLiteral("PRODUCT999"),
                            QStringLiteral("PRODUCT-1"), QStringLiteral("ROOT/bin/")};
    for (const Getter &getter : productTexts)
        questions += question(getter, 999);
    for (const Getter &getter : productImages)
        questions += question(getter, 999);
    while (expected.size() < questions.size())
        expected += QString();
    QCOMPARE(answers(QByteArray(), questions), expected);
    // A product whose name is empty has none either.
    QCOMPARE(answers("[PRODUCT400]\nName=\"\"\n", {QStringLiteral("getProductName=400")}),
             lines({QStringLiteral("PRODUCT400")}));
}

void tst_company_strings::productSection_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("expected");
    QTest::newRow("400") << 400 << QStringLiteral("PRODUCT400");
    QTest::newRow("0") << 0 << QStringLiteral("PRODUCT0");
    QTest::newRow("negative") << -5 << QStringLiteral("PRODUCT-5");
    QTest::newRow("largest") << 2147483647 << QStringLiteral("PRODUCT2147483647");
}

void tst_company_strings::productSection()
{
    QFETCH(int, code);
    QTEST(CCompanyStrings::productSection(code), "expected");
}

void tst_company_strings::getImageFileTakesSectionAndKey()
{
    const QByteArray document = "[COMPANY]\nLogo_32x32=logo.png\n[OTHER]\nPicture=below/it.png\n";
    QCOMPARE(answers(document, {QStringLiteral("getImageFile=COMPANY/Logo_32x32"),
                                QStringLiteral("getImageFile=OTHER/Picture"),
                                QStringLiteral("getImageFile=Logo_32x32")}),
             lines({QStringLiteral("ROOT/etc/image/logo.png"), QStringLiteral("ROOT/etc/image/below/it.png"),
                    QString()}));
}

void tst_company_strings::qtWarnsOfAnEmptyKey()
{
    const ScratchInstallation installation(QStringLiteral(J6CORE_COMPANY_REPORTER));
    QCOMPARE(installation.runForErrors({QStringLiteral("getImageFile=")}),
             QByteArray("\nQSettings::value: Empty key passed\n"));
}

void tst_company_strings::theChoiceIsKept()
{
    const ScratchInstallation installation(QStringLiteral(J6CORE_COMPANY_REPORTER));
    QVERIFY(installation.writeFile(QStringLiteral("other.ini"), "[COMPANY]\nNameShort=Ours\n"));
    const QString name = QStringLiteral("getCompanyShortName");
    const QString install = QStringLiteral("install=") + installation.root() + QStringLiteral("other.ini");
    const QString compiledIn = company().value(QStringLiteral("NameShort"));
    // A file that is installed later is not noticed, but by the next process.
    const QStringList kept = installation.run(
        {name, install, name, QStringLiteral("threads"), QStringLiteral("getProductName=400")});
    QCOMPARE(kept.count(compiledIn), 10);
    QCOMPARE(kept.mid(10), lines({QStringLiteral("tessera Parameter Editor")}));
    QCOMPARE(installation.run({name, QStringLiteral("getProductName=400")}),
             lines({QStringLiteral("Ours"), QStringLiteral("PRODUCT400")}));
}

void tst_company_strings::aDirectoryOfThatNameIsNoDocument()
{
    const ScratchInstallation installation(QStringLiteral(J6CORE_COMPANY_REPORTER));
    QVERIFY(QDir().mkpath(installation.root() + QStringLiteral("etc/conf/Setup.Ini")));
    QCOMPARE(installation.run({QStringLiteral("getCompanyShortName")}),
             lines({company().value(QStringLiteral("NameShort"))}));
}

void tst_company_strings::aLinkLeadsToTheDocument()
{
#ifdef Q_OS_UNIX
    const ScratchInstallation installation(QStringLiteral(J6CORE_COMPANY_REPORTER));
    const QString file = installation.root() + QStringLiteral("etc/conf/Setup.Ini");
    QVERIFY(QDir().mkpath(installation.root() + QStringLiteral("etc/conf")));
    QVERIFY(QFile::link(QStringLiteral("../ours.ini"), file));
    // To nothing at first.
    QCOMPARE(installation.run({QStringLiteral("getCompanyShortName")}),
             lines({company().value(QStringLiteral("NameShort"))}));
    QVERIFY(installation.writeFile(QStringLiteral("etc/ours.ini"), "[COMPANY]\nNameShort=Ours\n"));
    QCOMPARE(installation.run({QStringLiteral("getCompanyShortName")}), lines({QStringLiteral("Ours")}));
#else
    QSKIP("symbolic links are for unix systems");
#endif
}

void tst_company_strings::anEmptyDocumentIsOne()
{
    QCOMPARE(answers("", {QStringLiteral("getCompanyShortName"), QStringLiteral("getProductName=400")}),
             lines({QString(), QStringLiteral("PRODUCT400")}));
}

void tst_company_strings::theFirstGetterCreatesTheDirectoryOfTheDocument()
{
    const ScratchInstallation installation(QStringLiteral(J6CORE_COMPANY_REPORTER));
    QCOMPARE(installation.run({QStringLiteral("productSection=400")}), lines({QStringLiteral("PRODUCT400")}));
    QCOMPARE(installation.contents(), lines({QStringLiteral("root/bin/")}));
    QCOMPARE(installation.run({QStringLiteral("getEMail")}),
             lines({company().value(QStringLiteral("eMail"))}));
    QCOMPARE(installation.contents(), lines({QStringLiteral("root/bin/"), QStringLiteral("root/etc/"),
                                             QStringLiteral("root/etc/conf/")}));
}

void tst_company_strings::anImageCreatesItsDirectory()
{
    const ScratchInstallation installation(QStringLiteral(J6CORE_COMPANY_REPORTER));
    const QString images = QStringLiteral("root/etc/image/");
    installation.run({QStringLiteral("getProductPictureFile=999")});
    QVERIFY2(!installation.contents().contains(images), "there is no image");
    installation.run({QStringLiteral("getLogoBitmapFile_16x16")});
    QVERIFY(installation.contents().contains(images));
}

void tst_company_strings::aProgramCreatesItsDirectory()
{
    // The one that asks lies elsewhere in the installation, whose "bin/" is not there yet.
    const QTemporaryDir installation;
    const QDir root(installation.path());
    QVERIFY(root.mkdir(QStringLiteral("lib")));
    const QString asking = root.filePath(QStringLiteral("lib/asking"));
    QVERIFY(QFile::copy(QStringLiteral(J6CORE_COMPANY_REPORTER), asking));
    QCOMPARE(QProcess::execute(asking, {QStringLiteral("productSection=400")}), 0);
    QVERIFY(!root.exists(QStringLiteral("bin")));
    QCOMPARE(QProcess::execute(asking, {QStringLiteral("getProductExeFile=400")}), 0);
    QVERIFY(root.exists(QStringLiteral("bin")));
}

void tst_company_strings::nothingIsWritten()
{
    const ScratchInstallation installation(QStringLiteral(J6CORE_COMPANY_REPORTER));
    const QString file = QStringLiteral("etc/conf/Setup.Ini");
    // As Qt would not write it.
    const QByteArray document =
        "; ours\n\n[COMPANY]\r\nNameShort = Ours ; and more\n[COMPANY]\nNameShort=Ours";
    QVERIFY(installation.writeFile(file, document));
    QVERIFY(QFile::setPermissions(installation.root() + file, QFile::ReadOwner | QFile::ReadUser));
    QCOMPARE(installation.run({QStringLiteral("getCompanyShortName")}), lines({QStringLiteral("Ours")}));
    QCOMPARE(contentsOf(installation.root() + file), document);
    QCOMPARE(installation.contents(),
             lines({QStringLiteral("root/bin/"), QStringLiteral("root/etc/"),
                    QStringLiteral("root/etc/conf/"), QStringLiteral("root/etc/conf/Setup.Ini")}));
}

void tst_company_strings::threadsGetTheSameAnswer()
{
    const QStringList answer = answers(QByteArray(), {QStringLiteral("threads")});
    QCOMPARE(answer.size(), 8);
    QCOMPARE(answer.count(company().value(QStringLiteral("NameShort"))), 8);
}

void tst_company_strings::valuesAreReadAsQtReadsThem_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QString>("expected");
    const auto value = [](const char *name, const QByteArray &bytes, const QString &expected) {
        QTest::newRow(name) << "[COMPANY]\nNameLong=" + bytes + '\n' << expected;
    };
    const QString precise = QStringLiteral(u"Pr\u00E4zision");
    value("quoted", "\"a, b; c\"", QStringLiteral("a, b; c"));
    value("a list reads as empty", "Drives, Motors", QString());
    value("a comment ends a value", "Drives; Motors", QStringLiteral("Drives"));
    value("escaped quote", "\"a \\\"b\\\"\"", QStringLiteral("a \"b\""));
    value("escaped backslash", "\"C:\\\\drives\"", QStringLiteral("C:\\drives"));
    value("percent stays", "http://example.com/%20%31", QStringLiteral("http://example.com/%20%31"));
    value("placeholders stay", "%1%2", QStringLiteral("%1%2"));
    value("rich text", "<p>a<br/>b</p>", QStringLiteral("<p>a<br/>b</p>"));
    value("invalid by its own words", "@Invalid()", QString());
    value("Latin-1", "Pr\xE4zision", precise);
    value("hexadecimal", "\"Pr\\xe4zision \\x20ac\"", precise + QStringLiteral(u" \u20AC"));
    value("UTF-8 without a mark is taken as Latin-1", "Pr\xC3\xA4zision",
          QStringLiteral(u"Pr\u00C3\u00A4zision"));
    QTest::newRow("UTF-8 with a mark")
        << QByteArray("\xEF\xBB\xBF[COMPANY]\nNameLong=Pr\xC3\xA4zision\n") << precise;
#ifdef Q_OS_LINUX
    QTest::newRow("case of the key counts") << QByteArray("[COMPANY]\nnamelong=a\n") << QString();
#endif
    QTest::newRow("other section") << QByteArray("[INSTALLER]\nNameLong=a\n") << QString();
    QTest::newRow("no document at all") << QByteArray("\x00\xFF\x7F[[[=\n=", 9) << QString();
}

void tst_company_strings::valuesAreReadAsQtReadsThem()
{
    QFETCH(QByteArray, document);
    QFETCH(QString, expected);
    QCOMPARE(answers(document, {QStringLiteral("getCompanyLongName")}), lines({expected}));
}

QTEST_GUILESS_MAIN(tst_company_strings)
#include "tst_company_strings.moc"
