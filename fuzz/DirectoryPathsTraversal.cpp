// SPDX-License-Identifier: MIT
// Any two lines as paths, for all that works on the text of a path alone: nothing here asks the file system
// for more than the current directory.
#include "Traversals.h"

#include <CDir.h>
#include <CFTPath.h>
#include <CPath.h>

#include <InputReader.h>
#include <Properties.h>

#include <QDir>
#include <QStringList>

#include <algorithm>

namespace {

constexpr QLatin1Char slash('/');

void checkSeparators(const QString &path)
{
    const QString ended = CPath::ensurePathSeparatorAtEnd(path);
    const QString begun = CPath::ensurePathSeparatorAtStart(path);
    require(ended == (path.endsWith(slash) ? path : path + slash), "one separator stands at the end", path);
    require(begun == (path.startsWith(slash) ? path : slash + path), "one separator stands at the start",
            path);
    require(CPath::removePathSeparatorAtEnd(path) == (path.endsWith(slash) ? path.chopped(1) : path),
            "one separator is taken off the end", path);
    require(CPath::removePathSeparatorAtStart(path) == (path.startsWith(slash) ? path.mid(1) : path),
            "one separator is taken off the start", path);
    require(CPath::doesFilenameContainPath(path) == path.contains(slash), "a path has a separator", path);
    require(CPath::createDirIfWanted(path, false) == path, "a path is returned as it is", path);
}

void checkJoined(const QString &path, const QString &name)
{
    const QString joined = CPath::ensurePathSeparatorAtEnd(path) + name;
    require(CPath::addFileNameToPath(path, name) == joined && CDir::addFileNameToPath(path, name) == joined,
            "a file is put behind its directory", path);
    const QString directory = CPath::ensurePathSeparatorAtEnd(joined);
    require(CPath::addPathToPath(path, name) == directory && CDir::addPathToPath(path, name) == directory,
            "a directory is put behind another and ended", path);
    require(CPath::compare(directory, joined) || joined.endsWith(slash) || joined.endsWith(QLatin1Char('\\')),
            "a separator at the end makes no other path", path);
}

void checkComparison(const QString &a, const QString &b)
{
    require(CPath::compare(a, b) == CPath::compare(b, a), "paths compare symmetrically", a);
    require(CPath::compare(a, a) && CPath::compare(a, QString(a).replace(QLatin1Char('\\'), slash)),
            "separators of both kinds are equal", a);
    const auto comparable = [](QString path) {
        path.replace(QLatin1Char('\\'), slash);
        return path.endsWith(slash) ? path : path + slash;
    };
    require(CPath::compare(a, b) == (comparable(a).compare(comparable(b), Qt::CaseInsensitive) == 0),
            "paths are compared without case", a);
}

// Directories are absolute. A path that begins with ":" is one of Qt's resources, and one that holds a NUL
// is no path. Qt counts the characters of a path in 16 bits; no system takes longer ones.
void checkDirectory(const QString &path, const QString &name)
{
    const QString directory = CPath::filePath(path);
    if (path.isEmpty())
        return require(directory.isEmpty(), "the empty path has no directory");
    constexpr int maxLength = 32767;
    if (path.startsWith(QLatin1Char(':')) || path.contains(QChar(0)) || path.size() > maxLength)
        return;
    require(directory.startsWith(slash), "a directory is absolute", directory);
    require(directory.size() == 1 || !directory.endsWith(slash), "a directory has no separator at its end",
            directory);
    const QString cleaned = CPath::cleanFileName(path);
    require(cleaned.startsWith(directory + slash), "a cleaned name stays in its directory", cleaned);
    const QString cleanedName = cleaned.mid(directory.size() + 1);
    require(!cleanedName.contains(slash)
                && std::none_of(cleanedName.begin(), cleanedName.end(),
                                [](QChar c) {
                                    return QLatin1String("<>:!?|\"").contains(c)
                                           || (c.isSpace() && c != QLatin1Char(' '));
                                }),
            "a cleaned name has none of the characters that some platform refuses", cleaned);
    const QString placed = CPath::prependPathIfNoPathIsGiven(name, path);
    if (name.isEmpty() || name.contains(slash) || name.startsWith(QLatin1Char(':')))
        require(placed == name, "a name with a path stays", placed);
    else
        require(placed == CPath::addFileNameToPath(directory, name), "a bare name is placed beside the file",
                placed);
}

// The names of both lines as directories one below the other.
void checkRelativePath(const QString &base, const QString &path)
{
    const QString relative = CDir::getRelativeSubPath(base, path);
    require(relative.isEmpty() || (path.startsWith(base) && path != base), "only a path below is relative",
            path);
    require(CDir::getRelativeSubPath(path, path).isEmpty(), "a path is not below itself", path);

    const auto names = [](const QString &text) {
        QStringList parts = text.split(slash, Qt::SkipEmptyParts);
        parts.removeAll(QStringLiteral("."));
        parts.removeAll(QStringLiteral(".."));
        return parts.join(slash);
    };
    const QString below = names(path);
    const QString above = slash + names(base);
    if (!below.isEmpty())
        require(CDir::getRelativeSubPath(above, CPath::addFileNameToPath(above, below)) == below,
                "what was put behind a directory is relative to it", below);
}

CFTPath::EEntryPoint plainEntryPoint(const QString &path)
{
    const QMap<CFTPath::EEntryPoint, QString> names = CFTPath::entryStrMap();
    for (auto entry = names.begin(); entry != names.end(); ++entry) {
        if (path.startsWith(entry.value()) || path.indexOf(entry.value()) == 1
            || path.startsWith(CFTPath::toPath(entry.key())))
            return entry.key();
    }
    return CFTPath::E_INVALID;
}

void checkDevicePath(const QString &path, qint32 number)
{
    require(CFTPath::fromPath(path) == plainEntryPoint(path), "the first entry point that fits is the one",
            path);
    require(CFTPath::toEntryPoint(path) == CFTPath::entryStrMap().key(path, CFTPath::E_INVALID),
            "only a whole name is an entry point", path);
    QList<CFTPath::EEntryPoint> entryPoints = CFTPath::entryPoints();
    entryPoints.append(static_cast<CFTPath::EEntryPoint>(number));
    const QString absolute = CPath::ensurePathSeparatorAtStart(path);
    for (const CFTPath::EEntryPoint entryPoint : qAsConst(entryPoints)) {
        const QString base = CFTPath::toPath(entryPoint);
        const QString relative = CFTPath::toRelativePath(path, entryPoint);
        require(relative == (absolute.startsWith(base) ? absolute.mid(base.size()) : absolute),
                "the path of the entry point is taken off", relative);
        require(CFTPath::toEntryPoint(CFTPath::toString(entryPoint))
                    == (CFTPath::entryPoints().contains(entryPoint) ? entryPoint : CFTPath::E_INVALID),
                "a name leads back to its entry point", CFTPath::toString(entryPoint));
    }
}

} // namespace

void traverseDirectoryPaths(const QByteArray &input)
{
    const QString text = InputReader(input).takeText();
    const int lineEnd = text.indexOf(QLatin1Char('\n'));
    const QString first = text.left(lineEnd);
    const QString second = lineEnd < 0 ? QString() : text.mid(lineEnd + 1);
    const std::size_t size = sizeof(QChar) * static_cast<std::size_t>(text.size());
    bounded(65536 + 256 * size, "paths cost memory in proportion to them", [&] {
        CPath::cleanFileName(first);
        CPath::compare(first, second);
        CDir::getRelativeSubPath(first, second);
        CFTPath::fromPath(first);
    });
    for (const QString &path : {first, second}) {
        checkSeparators(path);
        checkJoined(path, first);
        checkComparison(path, second);
        checkDirectory(path, first);
        // NOLINTNEXTLINE(readability-suspicious-call-argument): either line may be the base
        checkRelativePath(path, second);
        checkDevicePath(path, InputReader(input).take<qint32>());
    }
}
