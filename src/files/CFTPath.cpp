// SPDX-License-Identifier: MIT
#include <CFTPath.h>

#include <CPath.h>

#include <array>

namespace {

struct Row
{
    CFTPath::EEntryPoint entryPoint;
    const char *path;
    const char *name;
};

// In ascending order, in which paths are looked up.
constexpr std::array<Row, 8> rows = {{
    {CFTPath::E_INVALID, CFTPath::INVALID_STR, CFTPath::INVALID_STR},
    {CFTPath::E_CONSTCONFIG, "/opt/VANTORIS/etc/conf/", "CONSTCONFIG"},
    {CFTPath::E_COMPANY, "/VANTORIS/", "VANTORIS"},
    {CFTPath::E_OPT_COMPANY, "/opt/VANTORIS/", "OPT/VANTORIS"},
    {CFTPath::E_TMP, "/tmp/", "TMP"},
    {CFTPath::E_ROOT, "/", "ROOT"},
    {CFTPath::E_OPT, "/opt/", "OPT"},
    {CFTPath::E_APPDATA, "/appdata/", "APPDATA"},
}};

constexpr bool isAscending()
{
    for (std::size_t i = 1; i < rows.size(); ++i) {
        if (rows[i - 1].entryPoint >= rows[i].entryPoint)
            return false;
    }
    return true;
}

static_assert(isAscending(), "each entry point once, the lowest first");

// The row of an entry point; that of E_INVALID for any other number.
const Row &rowOf(CFTPath::EEntryPoint entryPoint)
{
    for (const Row &row : rows) {
        if (row.entryPoint == entryPoint)
            return row;
    }
    return rows.front();
}

bool liesIn(const QString &path, const Row &row)
{
    const int position = path.indexOf(QLatin1String(row.name));
    return position == 0 || position == 1 || path.startsWith(QLatin1String(row.path));
}

} // namespace

const QString CFTPath::PATH_AUTOSTART = QStringLiteral("autostart/");
const QString CFTPath::PATH_BIN = QStringLiteral("bin/");
const QString CFTPath::PATH_CONFIGURATIONS = QStringLiteral("configurations/");
const QString CFTPath::PATH_CONF = QStringLiteral("conf/");
const QString CFTPath::PATH_PARAM = QStringLiteral("param/");
const QString CFTPath::PATH_FIRMWARE = QStringLiteral("firmware/");
const QString CFTPath::PATH_LOGIC = QStringLiteral("logic/");
const QString CFTPath::PATH_SUBDEVICES = QStringLiteral("subdevices/");

QString CFTPath::toPath(CFTPath::EEntryPoint entryPoint)
{
    return QLatin1String(rowOf(entryPoint).path);
}

QMap<CFTPath::EEntryPoint, QString> CFTPath::entryStrMap()
{
    QMap<EEntryPoint, QString> names;
    for (const Row &row : rows)
        names.insert(row.entryPoint, QLatin1String(row.name));
    return names;
}

QString CFTPath::toString(CFTPath::EEntryPoint entryPoint)
{
    return QLatin1String(rowOf(entryPoint).name);
}

CFTPath::EEntryPoint CFTPath::toEntryPoint(const QString &name)
{
    for (const Row &row : rows) {
        if (name == QLatin1String(row.name))
            return row.entryPoint;
    }
    return E_INVALID;
}

QList<CFTPath::EEntryPoint> CFTPath::entryPoints()
{
    return entryStrMap().keys();
}

CFTPath::EEntryPoint CFTPath::fromPath(const QString &path)
{
    for (const Row &row : rows) {
        if (liesIn(path, row))
            return row.entryPoint;
    }
    return E_INVALID;
}

QString CFTPath::toRelativePath(const QString &path, CFTPath::EEntryPoint entryPoint)
{
    const QString absolute = CPath::ensurePathSeparatorAtStart(path);
    const QLatin1String base(rowOf(entryPoint).path);
    return absolute.startsWith(base) ? absolute.mid(base.size()) : absolute;
}
