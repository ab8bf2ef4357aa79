// SPDX-License-Identifier: MIT
// Settings files of any contents: every entry through every reader, then written and read once more.
// QSettings itself is not safe with serialised values (see CSettingsFile); inputs that hold one which it
// would take are passed over.
#include <CSettingsFile.h>

#include <SerializedValues.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace {

void require(bool isTrue)
{
    if (!isTrue)
        std::abort();
}

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
    require(number == settings.integerValue(section, key, 2) || number == 1);
    const unsigned int unsignedNumber = settings.unsignedIntValue(section, key, 2);
    if (unsignedNumber != 2 && settings.value(section, key, QVariant()).userType() == QMetaType::QString)
        require(settings.unsignedLongIntValue(section, key, 3) == unsignedNumber);
    settings.doubleValue(section, key, 0.5);
    settings.boolean(section, key, true);
    require(settings.locale(section, key, QLocale::c()).numberOptions() == QLocale::OmitGroupSeparator);
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

// QSettings keeps the last files in a cache, so that no run frees as much as it allocates. Left alone, the
// fuzzer would look for a leak after each; it is looked for at the end.
extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static char withoutLeaks[] = "-detect_leaks=0";
    static std::vector<char *> arguments(*argv, *argv + *argc);
    arguments.push_back(withoutLeaks);
    *argc = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    *argv = arguments.data();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray contents(reinterpret_cast<const char *>(data), static_cast<int>(size));
    if (j6tool::mayHoldSerializedValue(contents))
        return -1;
    const QString name = fileName();
    {
        QFile file(name);
        require(file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size());
    }
    {
        CSettingsFile settings(name, QSettings::IniFormat, nullptr);
        readAll(settings);
        settings.setByteArray(QStringLiteral("S"), QStringLiteral("bytes"), contents, QStringLiteral("1.0"));
        settings.setUnsignedIntValue(QStringLiteral("S"), QStringLiteral("u"),
                                     static_cast<unsigned int>(size));
    }
    const QString copyName = fileName();
    require(QFile::rename(name, copyName));
    {
        const CSettingsFile settings(copyName, QSettings::IniFormat, nullptr);
        readAll(settings);
        require(settings.byteArray(QStringLiteral("S"), QStringLiteral("bytes"), QStringLiteral("1.0"))
                == contents);
        require(settings.unsignedIntValue(QStringLiteral("S"), QStringLiteral("u"), 0) == size);
    }
    QFile::remove(copyName);
    return 0;
}
