// SPDX-License-Identifier: MIT
#include "Commands.h"

#include <CPath.h>

#include <QFileInfo>

#include <vector>

namespace j6tool {

namespace {

struct Directory
{
    const char *name;
    QString (*path)();
};

// Asked for without creating it.
template<QString (*Path)(bool create)>
QString existingOrNot()
{
    return Path(false);
}

constexpr Directory directories[] = {
    {"install", CPath::installPath},
    {"bin", existingOrNot<CPath::binPath>},
    {"lib", existingOrNot<CPath::libPath>},
    {"etc", existingOrNot<CPath::etcPath>},
    {"txt", existingOrNot<CPath::txtPath>},
    {"image", existingOrNot<CPath::imagePath>},
    {"doc", existingOrNot<CPath::docPath>},
    {"constConfig", existingOrNot<CPath::constConfigPath>},
    {"constConfigOdict", existingOrNot<CPath::constConfigOdictPath>},
    {"constData", existingOrNot<CPath::constDataPath>},
    {"appdata", CPath::appdataPath},
    {"config", existingOrNot<CPath::configPath>},
    {"log", existingOrNot<CPath::logPath>},
    {"userdata", CPath::userdataPath},
    {"motor", existingOrNot<CPath::motorPath>},
    {"param", existingOrNot<CPath::paramPath>},
    {"data", existingOrNot<CPath::dataPath>},
    {"project", existingOrNot<CPath::projectPath>},
    {"programdata", existingOrNot<CPath::programdataPath>},
};

QStringList directoryRow(const Directory &directory)
{
    const QString path = directory.path();
    const bool exists = QFileInfo(path).isDir();
    return {QLatin1String(directory.name), exists ? QStringLiteral("yes") : QStringLiteral("no"), path};
}

} // namespace

Result<ExitCode> runPaths(const Arguments &arguments, Output &output)
{
    const Result<TableFormat> format = formatOption(arguments);
    if (!format)
        return format.error();
    std::vector<QStringList> rows;
    for (const Directory &directory : directories)
        rows.push_back(directoryRow(directory));
    Table({{QStringLiteral("directory")}, {QStringLiteral("exists")}, {QStringLiteral("path")}}, rows)
        .write(output, *format);
    return Done;
}

} // namespace j6tool
