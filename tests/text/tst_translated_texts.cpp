// SPDX-License-Identifier: MIT
// Which part of each text of CStr a translator may change, whatever the language.
#include <CStr.h>

#include <CCompanyStrings.h>
#include <LoggedTest.h>

#include <QCoreApplication>
#include <QDataStream>
#include <QTest>
#include <QTranslator>

namespace {

// Installed while it lives: puts every text of CStr into angle brackets.
class MarkedTexts : public QTranslator
{
public:
    MarkedTexts() { QCoreApplication::installTranslator(this); }
    ~MarkedTexts() override { QCoreApplication::removeTranslator(this); }

    MarkedTexts(const MarkedTexts &) = delete;
    MarkedTexts &operator=(const MarkedTexts &) = delete;

    bool isEmpty() const override { return false; }

    QString translate(const char *context, const char *source, const char *disambiguation,
                      int n) const override
    {
        Q_UNUSED(disambiguation)
        Q_UNUSED(n)
        const bool isOwn = QLatin1String(context) == QLatin1String("CStr");
        return isOwn ? QLatin1Char('<') + QString::fromUtf8(source) + QLatin1Char('>') : QString();
    }
};

} // namespace

class tst_translated_texts : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void userLevelsAreTranslated();
    void sizesAreTranslated();
    void entriesAndTitlesAreTranslated();
    void streamMessagesAreTranslated();
};

void tst_translated_texts::userLevelsAreTranslated()
{
    const MarkedTexts marked;
    QStringList texts;
    for (const unsigned int level : {0U, 1U, 16U, 48U, 64U, 80U, 32U}) {
        texts += CStr::userlevelText(level);
        QCOMPARE(CStr::userlevelText(static_cast<Nj6UserLevel::eUserLevel_t>(level)), texts.last());
    }
    QCOMPARE(texts, (QStringList{QStringLiteral("<User>"), QStringLiteral("<OEM>"), QStringLiteral("<Admin>"),
                                 QStringLiteral("<V&T Technician>"), QStringLiteral("<V&T Production>"),
                                 QStringLiteral("<V&T Developer>"), QStringLiteral("<Unknown (32)>")}));
}

void tst_translated_texts::sizesAreTranslated()
{
    const MarkedTexts marked;
    QStringList texts;
    for (int shift = 0; shift <= 50; shift += 10)
        texts += CStr::memSizeToString(10LL << shift);
    QCOMPARE(texts, (QStringList{QStringLiteral("<10 Byte>"), QStringLiteral("<10.0 KiB>"),
                                 QStringLiteral("<10.0 MiB>"), QStringLiteral("<10.0 GiB>"),
                                 QStringLiteral("<10.0 TiB>"), QStringLiteral("<10 PiB>")}));
}

void tst_translated_texts::entriesAndTitlesAreTranslated()
{
    const MarkedTexts marked;
    const QLocale german(QLocale::German, QLocale::Germany);
    const QString app = QStringLiteral("Scope");
    const QString version = QStringLiteral("1.2.3");
    const QString extra = QStringLiteral("Demo");
    const QString date = QStringLiteral("Nov  5 2024");
    QCOMPARE(CStr::createDeviceSelectionValue(QStringLiteral("X"), 7), QStringLiteral("<X [s/n: 7]>"));
    QCOMPARE(CStr::createSubDeviceSelectionValue(QStringLiteral("A"), QStringLiteral("X"), 7),
             QStringLiteral("<A - <X [s/n: 7]>>"));
    QCOMPARE(CStr::getVersionString(version, extra), QStringLiteral("<[ V1.2.3 ]>< - Demo>"));
    QCOMPARE(CStr::createApplicationTitle(german, date, app, version, extra),
             QStringLiteral("<Scope - ") + CCompanyStrings::getCompanyLongName()
                 + QStringLiteral(" - <[ V1.2.3 - 05.11.24 ]>< - Demo>>"));
    QCOMPARE(CStr::createShortApplicationTitle(german, app, version, date, 77),
             QLatin1Char('<') + CCompanyStrings::getCompanyShortName()
                 + QStringLiteral(" Scope - V1.2.3> - [ <Build >77 - 2024-11-05 ]"));
}

void tst_translated_texts::streamMessagesAreTranslated()
{
    const MarkedTexts marked;
    for (const QDataStream::Status status :
         {QDataStream::ReadPastEnd, QDataStream::ReadCorruptData, QDataStream::WriteFailed}) {
        QDataStream stream;
        stream.setStatus(status);
        QString message;
        QVERIFY(!CStr::inStreamStatus(stream, QStringLiteral("%1"), message));
        QVERIFY2(message.startsWith(QLatin1String("<Stream ERROR while reading value \"%1\" : "))
                     && message.endsWith(QLatin1String(".>")),
                 qPrintable(message));
    }
}

QTEST_GUILESS_MAIN(tst_translated_texts)
#include "tst_translated_texts.moc"
