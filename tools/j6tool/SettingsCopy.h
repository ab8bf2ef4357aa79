// SPDX-License-Identifier: MIT
#ifndef J6TOOL_SETTINGSCOPY_H
#define J6TOOL_SETTINGSCOPY_H

#include "Result.h"

#include <CSettingsFile.h>

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <memory>
#include <optional>

namespace j6tool {

/*
 * The settings of a file in a temporary copy of it. QSettings itself never works on a user's file: what it
 * cannot read there it takes for missing, and would write the rest without it; and where the disk is full it
 * replaces the file by an empty one and calls that done. A process that is killed leaves the copy in the
 * temporary directory.
 */
class SettingsCopy
{
public:
    // Takes over the contents of a settings file. An error tells what is wrong with them or with the copy,
    // without a file name.
    std::optional<Error> open(const QByteArray &contents);

    // Only when it is open.
    CSettingsFile &settings() const { return *mSettings; }

    // The contents of a file with these settings, to be asked for once.
    Result<QByteArray> contents() const;

private:
    QTemporaryDir mDirectory;
    QString mEnd; // a section of the copy that no file has
    std::unique_ptr<CSettingsFile> mSettings;
};

} // namespace j6tool

#endif // J6TOOL_SETTINGSCOPY_H
