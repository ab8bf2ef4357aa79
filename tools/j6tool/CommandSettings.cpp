// SPDX-License-Identifier: MIT
#include "Commands.h"
#include "InputFile.h"
#include "OutputFile.h"
#include "SerializedValues.h"
#include "SettingsCopy.h"
#include "SettingsEntry.h"
#include "VisibleText.h"

#include <QFileInfo>
#include <QLockFile>

namespace j6tool {

namespace {

constexpr int maxFileSize = 64 * 1024 * 1024;

struct SettingsCall
{
    QString fileName;
    SettingsEntry entry;
    const SettingsType *type = nullptr;
    std::optional<QString> value; // to be written, as it will be read

    Error fileError(const QString &what) const { return j6tool::fileError(fileName, what); }
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

// The contents of the file, if QSettings may be trusted with them; none where a new file is to be made and
// there is a place for it.
Result<std::optional<QByteArray>> readContents(const SettingsCall &call)
{
    const QFileInfo info(call.fileName);
    if (call.value && !info.exists()) {
        if (QFileInfo(info.path()).isDir())
            return std::optional<QByteArray>();
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
    return std::make_optional(*contents);
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

Result<ExitCode> writeEntry(const SettingsCall &call, const SettingsCopy &copy, bool isNew, Output &output)
{
    const QString change =
        QStringLiteral("%1: %2 -> %3")
            .arg(call.entry.name(), formerText(call, copy.settings()), quoted(*call.value));
    call.type->write(&copy.settings(), call.entry, *call.value);
    const Result<QByteArray> contents = copy.contents();
    if (!contents)
        return call.fileError(contents.error().text);
    // What cannot be told is not done.
    const auto tell = [&output, &change] {
        output.writeLine(change);
        return output.flush();
    };
    // What is new overwrites nothing: a file may only have seemed to be missing.
    if (const std::optional<Error> error = (isNew ? makeFile : replaceFile)(call.fileName, *contents, tell))
        return *error;
    return Done;
}

Result<ExitCode> runCall(const SettingsCall &call, Output &output)
{
    const Result<std::optional<QByteArray>> contents = readContents(call);
    if (!contents)
        return contents.error();
    SettingsCopy copy;
    if (const std::optional<Error> error = copy.open(contents->value_or(QByteArray())))
        return call.fileError(error->text);
    if (call.value)
        return writeEntry(call, copy, !*contents, output);
    const Result<QString> text = readEntry(call, copy.settings());
    if (!text)
        return text.error();
    output.writeLine(visible(*text));
    return Done;
}

} // namespace

Result<ExitCode> runSettings(const Arguments &arguments, Output &output)
{
    const Result<SettingsCall> call = parseCall(arguments);
    if (!call)
        return call.error();
    // While it is changed nobody else changes it who takes QSettings' own lock.
    const QFileInfo info(call->fileName);
    const bool hasPlace = info.exists() ? info.isFile() : QFileInfo(info.path()).isDir();
    QLockFile lock(call->fileName + QLatin1String(".lock"));
    if (call->value && hasPlace && !lock.lock())
        return call->fileError(QStringLiteral("cannot be written"));
    return runCall(*call, output);
}

} // namespace j6tool
