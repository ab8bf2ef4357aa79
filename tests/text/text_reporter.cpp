// SPDX-License-Identifier: MIT
// Prints what the library says in a program that lies where it was copied to:
//   title LOCALE DATE APP VERSION EXTRA     the application title
//   short LOCALE APP VERSION DATE BUILD     the short application title
//   questions                               context, "|" and source of every text of the library
//   language                                "User" after the texts of the system's language were loaded
// An argument "default=LOCALE" in front of these sets the default locale.
#include "RecordedQuestions.h"

#include <CStr.h>
#include <CTar.h>
#include <CUnitParser.h>
#include <Nj6Translations.h>

#include <QCoreApplication>
#include <QDataStream>
#include <QLocale>
#include <QTemporaryFile>

#include <cstdio>

namespace {

const char *const date = "Nov  5 2024";

void print(const QString &line)
{
    std::printf("%s\n", line.toUtf8().constData());
}

void askForUnitsAndLevels()
{
    for (int code = -1; code <= 1000; ++code) {
        const auto unit = static_cast<Nj6Units::eUnit_t>(code);
        CUnitParser::unitStr(unit);
        CUnitParser::unitDescription(unit);
        CStr::userlevelText(static_cast<unsigned int>(code));
    }
}

void askForSizesAndStreamMessages()
{
    for (int exponent = 0; exponent < 63; ++exponent)
        CStr::memSizeToString(1LL << exponent);
    QDataStream stream;
    for (int status = 0; status <= 10; ++status) {
        QString message;
        stream.resetStatus();
        stream.setStatus(static_cast<QDataStream::Status>(status));
        CStr::inStreamStatus(stream, QStringLiteral("gain"), message);
    }
}

void askForTitles()
{
    const QString text = QStringLiteral("x");
    const QString buildDate = QString::fromLatin1(date);
    CStr::createDeviceSelectionValue(text, 1);
    CStr::createSubDeviceSelectionValue(text, text, 1);
    CStr::getVersionString(text, text);
    CStr::createApplicationTitle(QLocale::c(), buildDate, text, text, text);
    CStr::createShortApplicationTitle(QLocale::c(), text, text, buildDate, 1);
    CStr::createLogFileName(text, true);
}

// An archive of these bytes is loaded and asked for its first member.
void askAboutArchive(const QByteArray &bytes)
{
    QTemporaryFile file;
    if (!file.open() || file.write(bytes) != bytes.size() || !file.flush())
        print(QStringLiteral("no archive written"));
    CTar archive;
    QByteArray data;
    archive.file(0, data);
    archive.loadFile(file.fileName());
    archive.file(0, data);
    archive.file(QStringLiteral("no such member"), data);
}

void askForArchiveErrors()
{
    QByteArray header(512, '\0');
    header.replace(0, 4, "axis").replace(124, 4, "1000").replace(156, 1, "0").replace(257, 5, "ustar");
    askAboutArchive(header);               // its data is missing
    askAboutArchive(QByteArray(512, 'x')); // no archive
    askAboutArchive(QByteArray());         // too short
}

void reportQuestions()
{
    const RecordedQuestions recorded;
    askForUnitsAndLevels();
    askForSizesAndStreamMessages();
    askForTitles();
    askForArchiveErrors();
    const auto questions = recorded.questions();
    for (const RecordedQuestions::Question &question : questions)
        print(QString::fromUtf8(question.first + '|' + question.second));
}

bool reportTitle(const QStringList &words)
{
    const QLocale locale(words.value(1));
    if (words.size() != 6)
        return false;
    if (words[0] == QLatin1String("title"))
        print(CStr::createApplicationTitle(locale, words[2], words[3], words[4], words[5]));
    else
        print(CStr::createShortApplicationTitle(locale, words[2], words[3], words[4], words[5].toUInt()));
    return true;
}

bool reportLanguage()
{
    QTranslator translator;
    const bool loaded = Nj6Translations::load(translator, QLocale::system());
    QCoreApplication::installTranslator(&translator);
    print(CStr::userlevelText(Nj6UserLevel::E_USER));
    return loaded == !translator.isEmpty();
}

bool report(QStringList words)
{
    if (words.value(0).startsWith(QLatin1String("default=")))
        QLocale::setDefault(QLocale(words.takeFirst().mid(8)));
    if (words == QStringList(QStringLiteral("language")))
        return reportLanguage();
    if (words != QStringList(QStringLiteral("questions")))
        return reportTitle(words);
    reportQuestions();
    return true;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    return report(QCoreApplication::arguments().mid(1)) ? 0 : 1;
}
