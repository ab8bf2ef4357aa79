// SPDX-License-Identifier: MIT
// Settings files of any contents: every entry through every reader, beside the rules for its type; then
// values of every type written, and the file read once more. QSettings itself is not safe with serialised
// values (see CSettingsFile); inputs that hold one which it would take are passed over.
#include "Traversals.h"

#include <CSettingsFile.h>

#include <InputReader.h>
#include <Properties.h>
#include <SerializedValues.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>

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

template<typename Number>
Number numberOr(Number byDefault, bool ok, Number number)
{
    return ok ? number : byDefault;
}

// Numbers as an INI file gives them, texts or something else that is none.
void checkNumbers(const CSettingsFile &settings, const QString &section, const QString &key)
{
    const QVariant entry = settings.value(section, key, QVariant());
    const bool isText = entry.userType() == QMetaType::QString;
    const QString text = isText ? entry.toString() : QString();
    bool ok = false;
    const int integer = text.toInt(&ok, 10);
    require(settings.integerValue(section, key, -7) == numberOr(-7, ok, integer), "an integer is decimal",
            text);
    const uint cardinal = text.toUInt(&ok, 0);
    require(settings.unsignedIntValue(section, key, 7) == numberOr(7U, ok, cardinal),
            "an unsigned number tells its base", text);
    const qulonglong longCardinal = text.toULongLong(&ok, 0);
    require(settings.unsignedLongIntValue(section, key, 7) == numberOr(qulonglong(7), ok, longCardinal),
            "a long unsigned number tells its base", text);
    const double number = text.toDouble(&ok);
    const double read = settings.doubleValue(section, key, 0.5);
    require(read == numberOr(0.5, ok, number) || (std::isnan(read) && std::isnan(number)),
            "a number has a point, whatever the locale", text);
}

void checkEntry(const CSettingsFile &settings, const QString &section, const QString &key)
{
    const bool isThere = settings.containsEntry(section, key);
    const QVariant entry = settings.value(section, key, QStringLiteral("missing"));
    require(entry == settings.value(section, key, QStringLiteral("other")) || !isThere,
            "a default is for an entry that is missing", key);
    const QString text = settings.string(section, key, QStringLiteral("missing"));
    require(text == (isThere ? entry.toString() : QStringLiteral("missing")), "the text is that of the entry",
            key);
    require(settings.boolean(section, key, true) == (!isThere || entry.toBool()),
            "the flag is that of the entry", key);
    checkNumbers(settings, section, key);

    const QLocale byDefault(QLocale::German);
    const QLocale locale = settings.locale(section, key, byDefault);
    const QString name = isThere ? text : QString();
    require(locale.numberOptions() == QLocale::OmitGroupSeparator, "numbers are not grouped", key);
    require(locale.name() == (name.isEmpty() ? byDefault : QLocale(name)).name(),
            "the locale is the one of the text", name);

    const QString version = settings.string(section, key + QStringLiteral("_version"), QStringLiteral("0.0"));
    require(settings.byteArray(section, key, version)
                == settings.value(section, key, QVariant()).toByteArray(),
            "bytes of this version are read", key);
    require(settings.byteArray(section, key, version + QLatin1Char('x')).isEmpty(),
            "bytes of another version are not", key);
}

QMap<QString, QVariant> checkEntries(const CSettingsFile &settings)
{
    QMap<QString, QVariant> entries;
    const QStringList names = settings.allKeys();
    for (const QString &name : names) {
        const int slash = name.indexOf(QLatin1Char('/'));
        checkEntry(settings, name.left(slash < 0 ? 0 : slash), name.mid(slash + 1));
        entries.insert(name, settings.QSettings::value(name));
    }
    checkEntry(settings, QString(), QStringLiteral("no such key"));
    settings.locale(QLocale(QLocale::German));
    return entries;
}

// The first entry that is not the same in both.
QString difference(const QMap<QString, QVariant> &now, const QMap<QString, QVariant> &before)
{
    QStringList names = now.keys();
    names += before.keys();
    for (const QString &name : qAsConst(names)) {
        if (now.value(name) != before.value(name) || now.contains(name) != before.contains(name)) {
            return QStringLiteral("%1: \"%2\" instead of \"%3\"")
                .arg(name, now.value(name).toString(), before.value(name).toString());
        }
    }
    return QString();
}

// Whether all entries are written as they were read. Those of sections and keys without a name, which is a
// slash too many, are listed, but nobody can ask for them; once written they stand elsewhere, perhaps in
// place of others. A section "general" is written as "General".
bool canKeepNames(const CSettingsFile &settings)
{
    const QLatin1String general("General/");
    const QStringList names = settings.allKeys();
    return std::all_of(names.begin(), names.end(), [&](const QString &name) {
        return settings.contains(name) && !name.startsWith(QLatin1Char('/'))
               && !name.endsWith(QLatin1Char('/')) && !name.contains(QLatin1String("//"))
               && (name.startsWith(general) || !name.startsWith(general, Qt::CaseInsensitive));
    });
}

// One value of every type, made of the input.
class Values
{
public:
    explicit Values(const QByteArray &input)
        : mBytes(input), mText(InputReader(input).takeText()),
          mKey(QStringLiteral("key ") + mText.left(32).remove(QLatin1Char('/')).remove(QLatin1Char('\\')))
    {
        InputReader reader(input);
        mNumber = reader.take<quint64>();
        std::memcpy(&mReal, &mNumber, sizeof mReal);
    }

    void write(CSettingsFile &settings) const
    {
        settings.setByteArray(section(), QStringLiteral("bytes"), mBytes, mText);
        settings.setString(section(), mKey, mText);
        settings.setUnsignedIntValue(section(), QStringLiteral("u"), static_cast<uint>(mNumber));
        settings.setUnsignedLongIntValue(section(), QStringLiteral("ull"), mNumber);
        settings.setIntegerValue(section(), QStringLiteral("i"), static_cast<int>(mNumber));
        settings.setDoubleValue(section(), QStringLiteral("d"), mReal);
        settings.setBoolean(section(), QStringLiteral("b"), mNumber % 2 == 1);
        settings.setLocale(section(), QStringLiteral("l"), QLocale(mText));
    }

    void check(const CSettingsFile &settings) const
    {
        const auto text = [&settings](const char *key) {
            return settings.string(section(), QLatin1String(key), QString());
        };
        require(settings.byteArray(section(), QStringLiteral("bytes"), mText) == mBytes,
                "bytes are read as they were written");
        require(settings.string(section(), mKey, QStringLiteral("missing")) == mText,
                "a text is read as it was written", mText);
        require(text("u") == QStringLiteral("0x%1").arg(static_cast<uint>(mNumber), 8, 16, QLatin1Char('0'))
                    && settings.unsignedIntValue(section(), QStringLiteral("u"), 7)
                           == static_cast<uint>(mNumber),
                "an unsigned number has eight hexadecimal digits", text("u"));
        require(text("ull") == QStringLiteral("0x%1").arg(mNumber, 16, 16, QLatin1Char('0'))
                    && settings.unsignedLongIntValue(section(), QStringLiteral("ull"), 7) == mNumber,
                "a long unsigned number has sixteen", text("ull"));
        require(settings.integerValue(section(), QStringLiteral("i"), 7) == static_cast<int>(mNumber),
                "an integer is read as it was written", text("i"));
        const double real = settings.doubleValue(section(), QStringLiteral("d"), 7.5);
        require(real == mReal || (std::isnan(real) && std::isnan(mReal)),
                "a number is read as it was written", text("d"));
        require(settings.boolean(section(), QStringLiteral("b"), mNumber % 2 == 0) == (mNumber % 2 == 1),
                "a flag is read as it was written", text("b"));
        require(text("l") == QLocale(mText).name()
                    && settings.locale(section(), QStringLiteral("l"), QLocale()).name()
                           == QLocale(text("l")).name(),
                "a locale is read as it was written", text("l"));
    }

    // A section that no tool and no seed has.
    static QString section() { return QStringLiteral("written by the traversal"); }

private:
    QByteArray mBytes;
    QString mText;
    QString mKey;
    quint64 mNumber = 0;
    double mReal = 0.0;
};

// Reading, and changing what was read. That the changes are written, when the settings go, is not bounded:
// for each character that is escaped Qt makes the room for its line anew, which adds up to the square of its
// length.
template<typename Action>
void boundedByFile(const QString &name, const Action &action)
{
    // An entry of a few bytes is read by some twenty calls.
    const auto size = static_cast<std::size_t>(QFileInfo(name).size());
    bounded(1048576 + 4096 * size, "settings cost memory in proportion to their file", action);
}

} // namespace

void traverseSettings(const QByteArray &input)
{
    if (j6tool::mayHoldSerializedValue(input))
        return;
    const Values values(input);
    const QString name = fileName();
    {
        QFile file(name);
        require(file.open(QIODevice::WriteOnly) && file.write(input) == input.size(),
                "the input can be kept as a file");
    }
    QMap<QString, QVariant> entries;
    bool areNamesKept = false;
    {
        std::optional<CSettingsFile> settings;
        boundedByFile(name, [&] {
            settings.emplace(name, QSettings::IniFormat, nullptr);
            entries = checkEntries(*settings);
            areNamesKept = canKeepNames(*settings);
            values.write(*settings);
            values.check(*settings);
        });
    }
    const QString copyName = fileName();
    require(QFile::rename(name, copyName), "the file was written");
    {
        std::optional<CSettingsFile> settings;
        boundedByFile(copyName, [&] {
            settings.emplace(copyName, QSettings::IniFormat, nullptr);
            values.check(*settings);
            settings->remove(Values::section());
            const QMap<QString, QVariant> entriesNow = checkEntries(*settings);
            require(!areNamesKept || entriesNow == entries, "what else was there is there as it was",
                    difference(entriesNow, entries));
        });
    }
    QFile::remove(copyName);
}
