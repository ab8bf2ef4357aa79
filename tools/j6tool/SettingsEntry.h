// SPDX-License-Identifier: MIT
#ifndef J6TOOL_SETTINGSENTRY_H
#define J6TOOL_SETTINGSENTRY_H

#include "Result.h"

#include <CSettingsFile.h>

#include <QString>
#include <QStringList>

#include <optional>

namespace j6tool {

// Where an entry of a settings file is.
struct SettingsEntry
{
    QString section; // empty for the entries below [General]
    QString key;
    QString version; // of bytes

    // As in messages: "Common/applanguage".
    QString name() const;
};

// How the text of an entry is taken. Texts are the plain ones: 42, not 0x0000002a.
struct SettingsType
{
    const char *name = "";
    const char *what = ""; // a text of the type is "a decimal integer from ..."

    // The text of an entry that is there; nothing when it is no value of the type.
    std::optional<QString> (*read)(const CSettingsFile &settings, const SettingsEntry &entry) = nullptr;

    // The text as read() will give it; nothing when it is none of the type. Writes it, too, unless the
    // settings are null.
    std::optional<QString> (*write)(CSettingsFile *settings, const SettingsEntry &entry,
                                    const QString &text) = nullptr;

    bool hasVersion = false;
};

// The type of this name; null when there is none.
const SettingsType *findSettingsType(const QString &name);
QStringList settingsTypeNames();

} // namespace j6tool

#endif // J6TOOL_SETTINGSENTRY_H
