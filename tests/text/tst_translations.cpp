// SPDX-License-Identifier: MIT
#include "GermanUnits.h"
#include "RecordedQuestions.h"
#include "TranslationFile.h"

#include <CDataTypeParser.h>
#include <CStr.h>
#include <CTar.h>
#include <CUnitParser.h>
#include <CVariant.h>
#include <LoggedTest.h>
#include <Nj6Translations.h>
#include <ScratchInstallation.h>

#include <QCoreApplication>
#include <QDataStream>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <utility>

namespace {

const QLocale &germany()
{
    static const QLocale locale(QLocale::German, QLocale::Germany);
    return locale;
}

const TranslationFile &german()
{
    static const TranslationFile file = readTranslationFile(QStringLiteral(J6CORE_GERMAN_TRANSLATIONS));
    return file;
}

// German while it lives.
class ScopedGerman
{
public:
    ScopedGerman() : mIsLoaded(Nj6Translations::load(mTranslator, germany()))
    {
        QCoreApplication::installTranslator(&mTranslator);
    }
    ~ScopedGerman() { QCoreApplication::removeTranslator(&mTranslator); }

    ScopedGerman(const ScopedGerman &) = delete;
    ScopedGerman &operator=(const ScopedGerman &) = delete;

    bool isLoaded() const { return mIsLoaded; }

private:
    QTranslator mTranslator;
    bool mIsLoaded;
};

QStringList sortedPlaceholders(const QString &text)
{
    static const QRegularExpression placeholder(QStringLiteral("%L?[0-9]+|%n"));
    QStringList found;
    for (QRegularExpressionMatchIterator match = placeholder.globalMatch(text); match.hasNext();)
        found += match.next().captured();
    found.sort();
    return found;
}

// The blanks around a text, with a point between.
QString blanksAround(const QString &text)
{
    static const QRegularExpression inner(QStringLiteral("\\S(.*\\S)?"));
    return QString(text).replace(inner, QStringLiteral("."));
}

QString streamMessage(QDataStream::Status status)
{
    QDataStream stream;
    stream.setStatus(status);
    QString message;
    CStr::inStreamStatus(stream, QStringLiteral("%1"), message);
    return message;
}

QStringList displayTexts()
{
    CTar archive;
    QByteArray data;
    archive.file(0, data);
    return {CUnitParser::unitStr(Nj6Units::E_UNIT_SPEED_RPM),
            CUnitParser::unitDescription(Nj6Units::E_UNIT_TORQUE_NM),
            CUnitParser::unitStr(static_cast<Nj6Units::eUnit_t>(3)),
            CStr::userlevelText(Nj6UserLevel::E_USER),
            CStr::userlevelText(32U),
            CStr::memSizeToString(10240),
            CStr::createSubDeviceSelectionValue(QStringLiteral("%2"), QStringLiteral("%1"), 7),
            CStr::getVersionString(QStringLiteral("1.2.3"), QStringLiteral("Demo")),
            streamMessage(QDataStream::ReadPastEnd),
            archive.error()};
}

QStringList englishTexts()
{
    return {
        QStringLiteral("rpm"),
        QStringLiteral("Torque [Nm]"),
        QStringLiteral("unknown"),
        QStringLiteral("User"),
        QStringLiteral("Unknown (32)"),
        QStringLiteral("10.0 KiB"),
        QStringLiteral("%2 - %1 [s/n: 7]"),
        QStringLiteral("[ V1.2.3 ] - Demo"),
        QStringLiteral("Stream ERROR while reading value \"%1\" : The data stream has read past the end of "
                       "the data."),
        QStringLiteral("ERROR: You must open an archive first !")};
}

QStringList germanTexts()
{
    return {QStringLiteral("1/min"),
            QStringLiteral("Drehmoment [Nm]"),
            QStringLiteral("unbekannt"),
            QStringLiteral("Benutzer"),
            QStringLiteral("Unbekannt (32)"),
            QStringLiteral("10.0 KiB"),
            QStringLiteral("%2 - %1 [Ser.-Nr.: 7]"),
            QStringLiteral("[ V1.2.3 ] - Demo"),
            QStringLiteral("Datenstrom-FEHLER beim Lesen des Werts „%1“: Es wurde über das Ende der "
                           "Daten hinaus gelesen."),
            QStringLiteral("FEHLER: Zuerst muss ein Archiv geöffnet werden!")};
}

QString flagged(bool ok, const QString &result)
{
    return result + (ok ? QStringLiteral(" ok") : QStringLiteral(" failed"));
}

QStringList typesAndUnits()
{
    QStringList results;
    for (int number = -1; number <= 40; ++number) {
        const auto type = static_cast<NTypes::eTypes_t>(number);
        const QString name = CDataTypeParser::typeToStr(type);
        results << name << CDataTypeParser::typeToEnum(type)
                << QString::number(CDataTypeParser::strToType(name));
    }
    for (int code = -1; code <= 200; ++code) {
        const auto unit = static_cast<Nj6Units::eUnit_t>(code);
        results << QString::number(CUnitParser::digits(unit)) << QString::number(CUnitParser::toLinear(unit))
                << CUnitParser::initUnitMap().value(unit) << CUnitParser::initDescriptionMap().value(unit);
    }
    return results;
}

QStringList versionsAndCodes(const QString &text)
{
    NTypes::uVersion_t three{};
    NTypes::sVersion4x8_t four{};
    quint32 revision32 = 0;
    quint16 revision16 = 0;
    bool ok = false;
    const bool isThree = CStr::stringToVersion(text, three);
    const bool isFour = CStr::stringToVersion(text, four);
    const bool is32 = CStr::stringToRevision(text, revision32);
    const bool is16 = CStr::stringToRevision(text, revision16);
    const NTypes::uVersion_t any = CStr::stringToVersion(text, &ok);
    return {flagged(isThree, CStr::versionToStr(three)),
            flagged(isFour, CStr::versionToStr(four)),
            flagged(is32, CStr::revisionToString(revision32)),
            flagged(is16, CStr::revisionToString(revision16)),
            flagged(ok, CStr::versionToShortStr(any)),
            CStr::identCodeToHexCode(CStr::hexCodeToIdentCode(text)),
            CStr::createQDateFrom__DATE__(text).toString(Qt::ISODate),
            CStr::serialToString(CStr::strToU32(0U, text)),
            CStr::formatSapName(text),
            QString::number(CStr::indexOfAmpersand(text)),
            CStr::fromF64(CStr::strToF64(0.0, text), 3),
            QString::number(CStr::strToI32(0, text))};
}

QStringList valuesOf(const QString &text)
{
    QStringList results;
    for (int number = 0; number <= NTypes::E_VERSION_4; ++number) {
        bool ok = false;
        const CVariant value = CVariant::fromStr(text, static_cast<NTypes::eTypes_t>(number), &ok);
        results << flagged(ok, value.isValid() ? value.toStr() : QString());
    }
    return results;
}

// What the library makes of texts, and every text that it reads back.
QStringList parsedResults()
{
    QStringList results = typesAndUnits();
    for (const char *text :
         {"", "1", "1.5", "1.2.3", "1.2.3.4", "0x1F", "Nov  5 2024", "&File", "2024-11-05 12:30:00",
          "10.0.0.1", "rpm", "User", "unknown", "Benutzer", "unbekannt", "10.0 KiB"})
        results << versionsAndCodes(QString::fromLatin1(text)) << valuesOf(QString::fromLatin1(text));
    return results + LoggedTest::takeLog(); // of the types that no text has
}

QStringList languageChosenFor(const QString &languages)
{
    ScratchInstallation installation(QStringLiteral(J6CORE_TEXT_REPORTER));
    installation.setVariable(QStringLiteral("LANGUAGE"), languages);
    return installation.run({QStringLiteral("language")});
}

class LanguageChanges : public QObject
{
public:
    LanguageChanges() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject *object, QEvent *event) override
    {
        mCount += event->type() == QEvent::LanguageChange ? 1 : 0;
        return QObject::eventFilter(object, event);
    }

    // Since the last call.
    int take()
    {
        QCoreApplication::sendPostedEvents();
        return std::exchange(mCount, 0);
    }

private:
    int mCount = 0;
};

} // namespace

class tst_translations : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void fileIsCompleteAndGerman();
    void everyTextIsFinishedAndCompiledIn_data();
    void everyTextIsFinishedAndCompiledIn();
    void fileHoldsExactlyTheTextsThatTheCodeAsksFor();
    void descriptionsEndWithTheTranslatedUnit();
    void everyUnitAndDescriptionIsTranslated();
    void unitsInGerman_data();
    void unitsInGerman();
    void everyUnitHasItsGermanText();
    void germanUserLevels_data();
    void germanUserLevels();

    void textsFollowTheTranslatorAtEachCall();
    void parsingNeverDependsOnATranslation();
    void placeholdersInATranslatedNameStay();

    void languages_data();
    void languages();
    void firstLanguageOfTheSystemWins_data();
    void firstLanguageOfTheSystemWins();
    void defaultLocaleIsTheDefaultArgument();
    void installedTranslatorChangesItsLanguage();
    void fileNamedLikeASuffixIsNotLoaded();
};

void tst_translations::fileIsCompleteAndGerman()
{
    QCOMPARE(german().error, QString());
    QCOMPARE(german().language, QStringLiteral("de"));
    QVERIFY(german().messages.size() > 150);
    QSet<QString> contexts;
    for (const TranslationFile::Message &message : german().messages)
        contexts.insert(message.context);
    QCOMPARE(contexts,
             (QSet<QString>{QStringLiteral("CStr"), QStringLiteral("CTar"), QStringLiteral("CUnitParser")}));
}

void tst_translations::everyTextIsFinishedAndCompiledIn_data()
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < german().messages.size(); ++index) {
        const TranslationFile::Message &message = german().messages.at(index);
        QTest::addRow("%s: %s", qPrintable(message.context), qPrintable(message.source)) << index;
    }
}

void tst_translations::everyTextIsFinishedAndCompiledIn()
{
    QFETCH(int, index);
    const TranslationFile::Message &message = german().messages.at(index);
    QCOMPARE(message.state, QString());
    QVERIFY(!message.translation.trimmed().isEmpty());
    QCOMPARE(sortedPlaceholders(message.translation), sortedPlaceholders(message.source));
    QCOMPARE(blanksAround(message.translation), blanksAround(message.source));

    const ScopedGerman scoped;
    QVERIFY(scoped.isLoaded());
    const QByteArray context = message.context.toUtf8();
    QCOMPARE(QCoreApplication::translate(context.constData(), message.source.toUtf8().constData()),
             message.translation);
}

void tst_translations::fileHoldsExactlyTheTextsThatTheCodeAsksFor()
{
    const ScratchInstallation installation(QStringLiteral(J6CORE_TEXT_REPORTER));
    QStringList asked = installation.run({QStringLiteral("questions")});
    asked.sort();
    QStringList translated;
    for (const TranslationFile::Message &message : german().messages)
        translated += message.context + QLatin1Char('|') + message.source;
    translated.sort();
    QCOMPARE(asked, translated);
    QCOMPARE(translated.removeDuplicates(), 0);
}

void tst_translations::descriptionsEndWithTheTranslatedUnit()
{
    int checked = 0;
    const QMap<Nj6Units::eUnit_t, QString> descriptions = CUnitParser::initDescriptionMap();
    const ScopedGerman scoped;
    for (auto row = descriptions.begin(); row != descriptions.end(); ++row) {
        if (!row.value().endsWith(QLatin1Char(']')))
            continue;
        const QString unit = QStringLiteral(" [") + CUnitParser::unitStr(row.key()) + QLatin1Char(']');
        const QString description = CUnitParser::unitDescription(row.key());
        QVERIFY2(description.endsWith(unit), qPrintable(description));
        ++checked;
    }
    QCOMPARE(checked, 72 - 3 - 11); // without no unit, count, unknown and the CiA 402 records
}

void tst_translations::everyUnitAndDescriptionIsTranslated()
{
    const QMap<Nj6Units::eUnit_t, QString> descriptions = CUnitParser::initDescriptionMap();
    const ScopedGerman scoped;
    for (auto row = descriptions.begin(); row != descriptions.end(); ++row) {
        const QString german = CUnitParser::unitDescription(row.key());
        const bool isSameInGerman = row.value().startsWith(QLatin1String("Position ["));
        QVERIFY2(isSameInGerman || german != row.value(), qPrintable(german));
        QVERIFY2(!CUnitParser::unitStr(row.key()).contains(QLatin1Char('_')), qPrintable(german));
    }
}

void tst_translations::unitsInGerman_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("description");

    for (const GermanUnit &row : germanUnits) {
        const QString text = QString::fromUtf8(row.text);
        const bool isBare = text.isEmpty() || row.unit == Nj6Units::E_UNIT_UNKNOWN;
        const QString brackets = isBare ? QString() : QStringLiteral(" [") + text + QLatin1Char(']');
        QTest::addRow("%d", int(row.unit))
            << int(row.unit) << text << QString::fromUtf8(row.quantity) + brackets;
    }
}

void tst_translations::unitsInGerman()
{
    QFETCH(int, unit);
    const auto code = static_cast<Nj6Units::eUnit_t>(unit);
    const ScopedGerman scoped;
    QTEST(CUnitParser::unitStr(code), "text");
    QTEST(CUnitParser::unitDescription(code), "description");
}

void tst_translations::everyUnitHasItsGermanText()
{
    QList<Nj6Units::eUnit_t> units;
    for (const GermanUnit &row : germanUnits)
        units += row.unit;
    QCOMPARE(units, CUnitParser::mDigitsMap.keys());
}

void tst_translations::germanUserLevels_data()
{
    QTest::addColumn<quint32>("level");
    QTest::addColumn<QString>("text");

    QTest::newRow("0") << 0U << QStringLiteral("Benutzer");
    QTest::newRow("1") << 1U << QStringLiteral("OEM");
    QTest::newRow("16") << 16U << QStringLiteral("Administrator");
    QTest::newRow("48") << 48U << QStringLiteral("V&T-Techniker");
    QTest::newRow("64") << 64U << QStringLiteral("V&T-Fertigung");
    QTest::newRow("80") << 80U << QStringLiteral("V&T-Entwickler");
    QTest::newRow("32") << 32U << QStringLiteral("Unbekannt (32)");
}

void tst_translations::germanUserLevels()
{
    QFETCH(quint32, level);
    const ScopedGerman scoped;
    QTEST(CStr::userlevelText(level), "text");
}

void tst_translations::textsFollowTheTranslatorAtEachCall()
{
    for (int round = 0; round < 2; ++round) {
        QCOMPARE(displayTexts(), englishTexts());
        const ScopedGerman scoped;
        QCOMPARE(displayTexts(), germanTexts());
    }
    QCOMPARE(displayTexts(), englishTexts());
}

void tst_translations::parsingNeverDependsOnATranslation()
{
    const QStringList untranslated = parsedResults();
    QVERIFY(untranslated.size() > 1000);
    {
        const ScopedGerman scoped;
        QCOMPARE(parsedResults(), untranslated);
    }
    const RecordedQuestions other(QStringLiteral("%9 of another language"));
    QCOMPARE(parsedResults(), untranslated);
    QCOMPARE(other.questions(), QSet<RecordedQuestions::Question>());
}

void tst_translations::placeholdersInATranslatedNameStay()
{
    const ScopedGerman scoped;
    QCOMPARE(CStr::createDeviceSelectionValue(QStringLiteral("%2"), 5), QStringLiteral("%2 [Ser.-Nr.: 5]"));
    QCOMPARE(streamMessage(QDataStream::ReadCorruptData),
             QStringLiteral("Datenstrom-FEHLER beim Lesen des Werts „%1“: Es wurden beschädigte Daten "
                            "gelesen."));
}

void tst_translations::languages_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("text");

    const QString benutzer = QStringLiteral("Benutzer");
    const QString user = QStringLiteral("User");
    QTest::newRow("German") << QLocale(QLocale::German) << benutzer;
    QTest::newRow("German of Austria") << QLocale(QLocale::German, QLocale::Austria) << benutzer;
    QTest::newRow("German of Switzerland") << QLocale(QLocale::German, QLocale::Switzerland) << benutzer;
    QTest::newRow("English") << QLocale(QLocale::English) << user;
    QTest::newRow("British") << QLocale(QLocale::English, QLocale::UnitedKingdom) << user;
    QTest::newRow("C") << QLocale::c() << user;
    QTest::newRow("a language without translation") << QLocale(QLocale::French) << user;
}

void tst_translations::languages()
{
    QFETCH(QLocale, locale);
    QFETCH(QString, text);
    QTranslator translator;
    const bool loaded = Nj6Translations::load(translator, locale);
    QCoreApplication::installTranslator(&translator);
    const QString level = CStr::userlevelText(Nj6UserLevel::E_USER);
    QCoreApplication::removeTranslator(&translator);
    QCOMPARE(level, text);
    QCOMPARE(loaded, text == QStringLiteral("Benutzer"));
    QCOMPARE(translator.isEmpty(), !loaded);
}

void tst_translations::firstLanguageOfTheSystemWins_data()
{
    QTest::addColumn<QString>("languages");
    QTest::addColumn<QString>("text");

    const QString benutzer = QStringLiteral("Benutzer");
    const QString user = QStringLiteral("User");
    QTest::newRow("German") << QStringLiteral("de") << benutzer;
    QTest::newRow("German of Austria") << QStringLiteral("de_AT") << benutzer;
    QTest::newRow("German before English") << QStringLiteral("de:en") << benutzer;
    QTest::newRow("English before German") << QStringLiteral("en:de") << user;
    QTest::newRow("British before German") << QStringLiteral("en_GB:de") << user;
    QTest::newRow("French, then German") << QStringLiteral("fr:de:en") << benutzer;
    QTest::newRow("French, then English") << QStringLiteral("fr:en:de") << user;
    QTest::newRow("French only") << QStringLiteral("fr") << user;
}

void tst_translations::firstLanguageOfTheSystemWins()
{
#ifdef Q_OS_WIN
    QSKIP("The system's languages follow no environment variable here.");
#endif
    QFETCH(QString, languages);
    QFETCH(QString, text);
    QCOMPARE(languageChosenFor(languages), QStringList(text));
}

void tst_translations::defaultLocaleIsTheDefaultArgument()
{
    const QLocale former;
    QTranslator translator;
    QLocale::setDefault(germany());
    const bool isGerman = Nj6Translations::load(translator);
    QLocale::setDefault(QLocale(QLocale::English));
    const bool isEnglish = !Nj6Translations::load(translator);
    QLocale::setDefault(former);
    QVERIFY(isGerman);
    QVERIFY(isEnglish);
}

void tst_translations::installedTranslatorChangesItsLanguage()
{
    QTranslator translator;
    QCoreApplication::installTranslator(&translator);
    LanguageChanges changes;
    QVERIFY(Nj6Translations::load(translator, germany()));
    QCOMPARE(displayTexts(), germanTexts());
    QVERIFY(changes.take() > 0);
    for (const QLocale &locale : {QLocale(QLocale::French), QLocale(QLocale::English), QLocale::c()}) {
        QVERIFY(!Nj6Translations::load(translator, locale));
        QCOMPARE(displayTexts(), englishTexts());
        QVERIFY(changes.take() > 0);
        QVERIFY(Nj6Translations::load(translator, germany()));
        QCOMPARE(displayTexts(), germanTexts());
        QVERIFY(changes.take() > 0);
    }
    QCoreApplication::removeTranslator(&translator);
}

// Nor any other file of the working directory.
void tst_translations::fileNamedLikeASuffixIsNotLoaded()
{
    QTemporaryDir directory;
    const QString former = QDir::currentPath();
    QVERIFY(QDir::setCurrent(directory.path()));
    for (const char *name : {".qm", "j6Core.qm", "j6Core_fr.qm", "j6Core_en.qm"})
        QFile::copy(QStringLiteral(":/j6Core/translations/j6Core_de.qm"), QString::fromLatin1(name));
    const int copied = QDir(directory.path()).entryList(QDir::Files | QDir::Hidden).size();
    QTranslator translator;
    const bool isFrench = Nj6Translations::load(translator, QLocale(QLocale::French));
    const bool isEnglish = Nj6Translations::load(translator, QLocale(QLocale::English));
    QVERIFY(QDir::setCurrent(former));
    QCOMPARE(copied, 4);
    QVERIFY(!isFrench);
    QVERIFY(!isEnglish);
    QVERIFY(translator.isEmpty());
}

QTEST_GUILESS_MAIN(tst_translations)
#include "tst_translations.moc"
