// SPDX-License-Identifier: MIT
#ifndef TRANSLATIONFILE_H
#define TRANSLATIONFILE_H

#include <QFile>
#include <QString>
#include <QVector>
#include <QXmlStreamReader>

// The messages of a .ts file in their order.
struct TranslationFile
{
    struct Message
    {
        QString context;
        QString source;
        QString translation;
        QString state; // empty for a finished translation; otherwise "unfinished", "vanished" or "obsolete"
    };

    QString language;
    QVector<Message> messages;
    QString error; // empty when the whole file was read
};

inline TranslationFile readTranslationFile(const QString &path)
{
    TranslationFile result;
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    QXmlStreamReader xml(&file);
    QString context;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("TS"))
            result.language = xml.attributes().value(QLatin1String("language")).toString();
        else if (xml.name() == QLatin1String("name"))
            context = xml.readElementText();
        else if (xml.name() == QLatin1String("source"))
            result.messages.append({context, xml.readElementText(), QString(), QStringLiteral("missing")});
        else if (xml.name() == QLatin1String("translation") && !result.messages.isEmpty()) {
            result.messages.last().state = xml.attributes().value(QLatin1String("type")).toString();
            result.messages.last().translation = xml.readElementText(QXmlStreamReader::IncludeChildElements);
        }
    }
    result.error = xml.errorString();
    return result;
}

#endif // TRANSLATIONFILE_H
