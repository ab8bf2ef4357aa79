// SPDX-License-Identifier: MIT
// Settings files of any contents: every entry through every reader, then written and read once more.
// QSettings itself is not safe with serialised values (see CSettingsFile); inputs that hold one which it
// would take are passed over.
#include "Traversals.h"

#include <CSettingsFile.h>

#include <Properties.h>
#include <SerializedValues.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

// Files in memory where the system has such a place: many thousands are written.
QString fileName()
{
    static const QTemporaryDir directory(QDir(QStringLiteral("/dev/shm")).exists()
                                             ? QStringLiteral("/dev/shm/fuzz_settings-XXXXXX")
                                             : QString());
    // A new name each time, since QSettings remembers a file by its name.
    static quint64 count = 0;
    return directory.filePath(QStringLiteral("%1.ini").arg(++count));
}

// What a reader gives is the value or the default, nothing else.
void readEntry(const CSettingsFile &settings, const QString &section, const QString &key)
{
    const QString text = settings.string(section, key, QStringLiteral("missing"));
    const int number = settings.integerValue(section, key, 1);
    require(number == settings.integerValue(section, key, 2) || number == 1,
            "an integer is the value or the default");
    const unsigned int unsignedNumber = settings.unsignedIntValue(section, key, 2);
    if (unsignedNumber != 2 && settings.value(section, key, QVariant()).userType() == QMetaType::QString)
        require(settings.unsignedLongIntValue(section, key, 3) == unsignedNumber,
                "both widths read the same number");
    settings.doubleValue(section, key, 0.5);
    settings.boolean(section, key, true);
    require(settings.locale(section, key, QLocale::c()).numberOptions() == QLocale::OmitGroupSeparator,
            "numbers are not grouped");
    settings.value(section, key, QVariant(text));
    settings.containsEntry(section, key);
    settings.byteArray(section, key, QStringLiteral("0.0"));
    settings.byteArray(section, key, text);
}

void readAll(const CSettingsFile &settings)
{
    const QStringList entries = settings.allKeys();
    for (const QString &entry : entries) {
        const int slash = entry.indexOf(QLatin1Char('/'));
        readEntry(settings, entry.left(slash < 0 ? 0 : slash), entry.mid(slash + 1));
    }
    readEntry(settings, QString(), QStringLiteral("k"));
    settings.locale(QLocale(QLocale::German));
}

} // namespace

void traverseSettings(const QByteArray &input)
{
    if (j6tool::mayHoldSerializedValue(input))
        return;
    const QString section = QStringLiteral("S");
    const QString bytesKey = QStringLiteral("bytes");
    const QString version = QStringLiteral("1.0");
    const QString numberKey = QStringLiteral("u");
    const auto number = static_cast<unsigned int>(input.size());

    const QString name = fileName();
    {
        QFile file(name);
        require(file.open(QIODevice::WriteOnly) && file.write(input) == input.size(),
                "the input can be kept as a file");
    }
    {
        CSettingsFile settings(name, QSettings::IniFormat, nullptr);
        readAll(settings);
        settings.setByteArray(section, bytesKey, input, version);
        settings.setUnsignedIntValue(section, numberKey, number);
    }
    const QString copyName = fileName();
    require(QFile::rename(name, copyName), "the file was written");
    {
        const CSettingsFile settings(copyName, QSettings::IniFormat, nullptr);
        readAll(settings);
        require(settings.byteArray(section, bytesKey, version) == input,
                "bytes are read as they were written");
        require(settings.unsignedIntValue(section, numberKey, 0) == number,
                "a number is read as it was written");
    }
    QFile::remove(copyName);
}
