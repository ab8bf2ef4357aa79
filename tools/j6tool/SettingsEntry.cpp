// SPDX-License-Identifier: MIT
#include "SettingsEntry.h"

#include "HexText.h"
#include "VisibleText.h"

#include <QLocale>

#include <algorithm>
#include <array>
#include <cmath>

namespace j6tool {

namespace {

using Text = std::optional<QString>;
using Entry = SettingsEntry;

template<typename T>
using Reader = T (CSettingsFile::*)(const QString &, const QString &, T) const;
template<typename T>
using Writer = void (CSettingsFile::*)(const QString &, const QString &, T);

// An answer that changes with the default is the default: the entry is no number of this type.
template<typename Integer>
Text readInteger(const CSettingsFile &settings, const Entry &entry, Reader<Integer> reader)
{
    const Integer number = (settings.*reader)(entry.section, entry.key, 0);
    const bool isDefault = number != (settings.*reader)(entry.section, entry.key, 1);
    return isDefault ? Text() : QString::number(number);
}

template<typename Integer>
Text writeInteger(CSettingsFile *settings, const Entry &entry, Integer number, bool ok,
                  Writer<Integer> writer)
{
    if (ok && settings != nullptr)
        (settings->*writer)(entry.section, entry.key, number);
    return ok ? QString::number(number) : Text();
}

// A list of several strings has no text.
Text readString(const CSettingsFile &settings, const Entry &entry)
{
    const QVariant held = settings.value(entry.section, entry.key, QVariant());
    return held.userType() == QMetaType::QString ? held.toString() : Text();
}

Text writeString(CSettingsFile *settings, const Entry &entry, const QString &text)
{
    if (settings != nullptr)
        settings->setString(entry.section, entry.key, text);
    return text;
}

Text readInt(const CSettingsFile &settings, const Entry &entry)
{
    return readInteger<int>(settings, entry, &CSettingsFile::integerValue);
}

Text writeInt(CSettingsFile *settings, const Entry &entry, const QString &text)
{
    bool ok = false;
    const int number = text.toInt(&ok, 10);
    return writeInteger(settings, entry, number, ok, &CSettingsFile::setIntegerValue);
}

Text readUnsigned(const CSettingsFile &settings, const Entry &entry)
{
    return readInteger<unsigned int>(settings, entry, &CSettingsFile::unsignedIntValue);
}

Text writeUnsigned(CSettingsFile *settings, const Entry &entry, const QString &text)
{
    bool ok = false;
    const unsigned int number = text.toUInt(&ok, 0);
    return writeInteger(settings, entry, number, ok, &CSettingsFile::setUnsignedIntValue);
}

Text readUnsignedLong(const CSettingsFile &settings, const Entry &entry)
{
    return readInteger<unsigned long long>(settings, entry, &CSettingsFile::unsignedLongIntValue);
}

Text writeUnsignedLong(CSettingsFile *settings, const Entry &entry, const QString &text)
{
    bool ok = false;
    const unsigned long long number = text.toULongLong(&ok, 0);
    return writeInteger(settings, entry, number, ok, &CSettingsFile::setUnsignedLongIntValue);
}

QString doubleText(double number)
{
    return QString::number(number, 'g', QLocale::FloatingPointShortest);
}

Text readDouble(const CSettingsFile &settings, const Entry &entry)
{
    const double number = settings.doubleValue(entry.section, entry.key, 0.0);
    const bool isDefault =
        !std::isnan(number) && number != settings.doubleValue(entry.section, entry.key, 1.0);
    return isDefault ? Text() : doubleText(number);
}

Text writeDouble(CSettingsFile *settings, const Entry &entry, const QString &text)
{
    bool ok = false;
    const double number = text.toDouble(&ok);
    if (!ok || !std::isfinite(number))
        return std::nullopt;
    if (settings != nullptr)
        settings->setDoubleValue(entry.section, entry.key, number);
    return doubleText(number);
}

QString boolText(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

// Every entry is true or false to those who ask.
Text readBool(const CSettingsFile &settings, const Entry &entry)
{
    return boolText(settings.boolean(entry.section, entry.key, false));
}

Text writeBool(CSettingsFile *settings, const Entry &entry, const QString &text)
{
    const bool value = text == boolText(true);
    if (!value && text != boolText(false))
        return std::nullopt;
    if (settings != nullptr)
        settings->setBoolean(entry.section, entry.key, value);
    return text;
}

// QLocale makes the C locale of every name that it does not know.
Text localeName(const QString &text)
{
    QString name = QLocale(text).name();
    return name != QLatin1String("C") || text == name ? name : Text();
}

Text readLocale(const CSettingsFile &settings, const Entry &entry)
{
    return localeName(settings.string(entry.section, entry.key, QString()));
}

Text writeLocale(CSettingsFile *settings, const Entry &entry, const QString &text)
{
    Text name = localeName(text);
    if (name && settings != nullptr)
        settings->setLocale(entry.section, entry.key, QLocale(text));
    return name;
}

Text readBytes(const CSettingsFile &settings, const Entry &entry)
{
    return hexFromBytes(settings.byteArray(entry.section, entry.key, entry.version));
}

Text writeBytes(CSettingsFile *settings, const Entry &entry, const QString &text)
{
    const Result<QByteArray> bytes = bytesFromHex(text);
    if (!bytes)
        return std::nullopt;
    if (settings != nullptr)
        settings->setByteArray(entry.section, entry.key, *bytes, entry.version);
    return hexFromBytes(*bytes);
}

constexpr std::array<SettingsType, 8> types = {{
    {"string", "one text", readString, writeString},
    {"int", "a decimal integer from -2147483648 to 2147483647", readInt, writeInt},
    {"uint", "an integer from 0 to 4294967295", readUnsigned, writeUnsigned},
    {"ulong", "an integer from 0 to 18446744073709551615", readUnsignedLong, writeUnsignedLong},
    {"double", "a number such as 1500 or -2.5e-3", readDouble, writeDouble},
    {"bool", "true or false", readBool, writeBool},
    {"locale", "a language and country such as de_DE", readLocale, writeLocale},
    {"bytes", "an even number of hexadecimal digits", readBytes, writeBytes, true},
}};

} // namespace

QString SettingsEntry::name() const
{
    return visible(section.isEmpty() ? key : section + QLatin1Char('/') + key);
}

const SettingsType *findSettingsType(const QString &name)
{
    const auto *type = std::find_if(types.begin(), types.end(), [&name](const SettingsType &row) {
        return name == QLatin1String(row.name);
    });
    return type == types.end() ? nullptr : type;
}

QStringList settingsTypeNames()
{
    QStringList names;
    for (const SettingsType &type : types)
        names += QLatin1String(type.name);
    return names;
}

} // namespace j6tool
