// SPDX-License-Identifier: MIT
#include "Commands.h"
#include "InputFile.h"
#include "SerializedValues.h"
#include "SettingsEntry.h"
#include "VisibleText.h"

#include <CSettingsFile.h>

#include <QFileInfo>

namespace j6tool {

namespace {

constexpr int maxFileSize = 64 * 1024 * 1024;

struct SettingsCall
{
    QString fileName;
    SettingsEntry entry;
    const SettingsType *type = nullptr;
    std::optional<QString> value; // to be written, as it will be read

    Error fileError(const QString &what) const
    {
        return Error{QStringLiteral("%1: %2").arg(visible(fileName), what)};
    }
    Error entryError(const QString &what) const
    {
        return fileError(QStringLiteral("%1: %2").arg(entry.name(), what));
    }
    QString misfit(const QString &text) const
    {
        return QStringLiteral("%1 is not %2").arg(quoted(text), QLatin1String(type->what));
    }
};

QString option(const Arguments &arguments, const char *name, const QString &absent)
{
    const QString key = QLatin1String(name);
    return arguments.contains(key) ? arguments.value(key) : absent;
}

Result<SettingsCall> parseCall(const Arguments &arguments)
{
    const QString typeName = option(arguments, "type", QStringLiteral("string"));
    SettingsCall call;
    call.fileName = arguments.value(QStringLiteral("file"));
    call.entry = {arguments.value(QStringLiteral("section")), arguments.value(QStringLiteral("key")),
                  option(arguments, "version", QStringLiteral("0.0"))};
    call.type = findSettingsType(typeName);
    if (call.type == nullptr) {
        return callError(QStringLiteral("type"),
                         QStringLiteral("%1 is none of %2")
                             .arg(quoted(typeName), settingsTypeNames().join(QLatin1String(", "))));
    }
    if (arguments.contains(QStringLiteral("version")) && !call.type->hasVersion)
        return callError(QStringLiteral("version"), QStringLiteral("is for type=bytes only"));
    const QString valueKey = QStringLiteral("value");
    if (arguments.contains(valueKey)) {
        call.value = call.type->write(nullptr, call.entry, arguments.value(valueKey));
        if (!call.value)
            return callError(valueKey, call.misfit(arguments.value(valueKey)));
    }
    return call;
}

// Whether QSettings may be trusted with the file; a new one is made only where there is a place for it.
std::optional<Error> checkFile(const SettingsCall &call)
{
    const QFileInfo info(call.fileName);
    if (call.value && !info.exists()) {
        if (QFileInfo(info.path()).isDir())
            return std::nullopt;
        return call.fileError(QStringLiteral("there is no such directory"));
    }
    if (info.exists() && !info.isDir() && !info.isFile())
        return call.fileError(QStringLiteral("is no regular file"));
    const Result<QByteArray> contents = readInput(call.fileName, maxFileSize);
    if (!contents)
        return contents.error();
    if (mayHoldSerializedValue(*contents)) {
        return call.fileError(QStringLiteral("holds serialised values (@Variant or @DateTime), which are "
                                             "neither safe to read nor sure to be kept"));
    }
    return std::nullopt;
}

// QSettings passes over lines that it does not understand, and loses them when it writes.
std::optional<Error> checkForm(const SettingsCall &call, const CSettingsFile &settings)
{
    settings.allKeys();
    if (settings.status() != QSettings::NoError)
        return call.fileError(QStringLiteral("is no settings file in INI form"));
    return std::nullopt;
}

Result<QString> readEntry(const SettingsCall &call, const CSettingsFile &settings)
{
    const SettingsEntry &entry = call.entry;
    if (!settings.containsEntry(entry.section, entry.key))
        return call.entryError(QStringLiteral("there is no such entry"));
    const QString version =
        settings.string(entry.section, entry.key + QLatin1String("_version"), QStringLiteral("0.0"));
    if (call.type->hasVersion && version != entry.version) {
        return call.entryError(
            QStringLiteral("has the version %1, not %2").arg(quoted(version), quoted(entry.version)));
    }
    const std::optional<QString> text = call.type->read(settings, entry);
    if (!text)
        return call.entryError(call.misfit(settings.string(entry.section, entry.key, QString())));
    return *text;
}

// What the entry is before a change, as far as it has a text.
QString formerText(const SettingsCall &call, const CSettingsFile &settings)
{
    if (!settings.containsEntry(call.entry.section, call.entry.key))
        return QStringLiteral("(none)");
    const Result<QString> text = readEntry(call, settings);
    return quoted(text ? *text : settings.string(call.entry.section, call.entry.key, QString()));
}

Result<ExitCode> writeEntry(const SettingsCall &call, CSettingsFile &settings, Output &output)
{
    const Error cannotWrite = call.fileError(QStringLiteral("cannot be written"));
    if (!settings.isWritable())
        return cannotWrite;
    // What cannot be told is not done.
    output.writeLine(QStringLiteral("%1: %2 -> %3")
                         .arg(call.entry.name(), formerText(call, settings), quoted(*call.value)));
    if (const std::optional<Error> error = output.flush())
        return *error;
    call.type->write(&settings, call.entry, *call.value);
    settings.sync();
    if (settings.status() != QSettings::NoError)
        return cannotWrite;
    return Done;
}

} // namespace

Result<ExitCode> runSettings(const Arguments &arguments, Output &output)
{
    const Result<SettingsCall> call = parseCall(arguments);
    if (!call)
        return call.error();
    if (const std::optional<Error> error = checkFile(*call))
        return *error;
    CSettingsFile settings(call->fileName, QSettings::IniFormat, nullptr);
    if (const std::optional<Error> error = checkForm(*call, settings))
        return *error;
    if (call->value)
        return writeEntry(*call, settings, output);
    const Result<QString> text = readEntry(*call, settings);
    if (!text)
        return text.error();
    output.writeLine(visible(*text));
    return Done;
}

} // namespace j6tool
