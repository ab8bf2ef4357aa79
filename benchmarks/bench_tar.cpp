// SPDX-License-Identifier: MIT
// Archives indexed, members found by name and their data read, beside the same done by hand with a QFile, and
// the indexing beside libarchive and KArchive where the build has found them. The report is per member. Large
// members are holes in the file: each header is then a read of its own, and beyond that their data must cost
// nothing.
#include "KArchiveScan.h"
#include "LibArchiveScan.h"
#include "PeerReport.h"
#include "PlainTar.h"

#include <CTar.h>

#include <benchmark/benchmark.h>

#include <QHash>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <numeric>
#include <optional>
#include <string>
#include <vector>

namespace {

constexpr int blockSize = 512;

void putText(char *field, const QByteArray &text)
{
    std::memcpy(field, text.constData(), static_cast<std::size_t>(text.size()));
}

QByteArray header(const QByteArray &name, qint64 size)
{
    QByteArray block(blockSize, '\0');
    putText(block.data(), name);
    putText(block.data() + 100, "0000644");
    putText(block.data() + 124, QByteArray::number(size, 8).rightJustified(11, '0'));
    putText(block.data() + 136, "14600000000");
    putText(block.data() + 156, "0");
    putText(block.data() + 257, QByteArray("ustar\00000", 8));
    // Only libarchive and KArchive look at the checksum: the sum of all bytes, its own field taken as blanks.
    putText(block.data() + 148, "        ");
    const auto add = [](int sum, char byte) { return sum + static_cast<unsigned char>(byte); };
    const int checksum = std::accumulate(block.begin(), block.end(), 0, add);
    putText(block.data() + 148, QByteArray::number(checksum, 8).rightJustified(6, '0') + '\0');
    return block;
}

QByteArray memberName(int number)
{
    return "bundle/parameters/axis-" + QByteArray::number(number) + ".csv";
}

// The data of large members are holes in the file, but for its number at the begin of each.
bool writeArchive(const QString &fileName, int count, qint64 memberSize)
{
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    for (int i = 0; i < count; ++i) {
        const qint64 behind = file.pos() + (1 + (memberSize + blockSize - 1) / blockSize) * blockSize;
        const QByteArray data = memberSize > 0 ? QByteArray::number(i) : QByteArray();
        const QByteArray bytes = header(memberName(i), memberSize) + data;
        if (file.write(bytes) != bytes.size() || !file.seek(behind))
            return false;
    }
    const QByteArray end(2 * blockSize, '\0');
    return file.write(end) == end.size();
}

struct Archive
{
    const char *name;
    int count;
    qint64 memberSize;
    QString fileName = {};
};

int countOf(const QString &fileName)
{
    CTar archive;
    return archive.loadFile(fileName) ? archive.count() : -1;
}

int plainCount(const QString &fileName, QIODevice::OpenMode mode)
{
    PlainTar archive;
    return archive.load(fileName, mode) ? static_cast<int>(archive.members().size()) : -1;
}

bool agreesWithPlain(const Archive &archive, QIODevice::OpenMode mode)
{
    CTar ours;
    PlainTar plain;
    bool agree = ours.loadFile(archive.fileName) && plain.load(archive.fileName, mode)
                 && ours.count() == archive.count
                 && plain.members().size() == static_cast<std::size_t>(archive.count);
    for (int i = 0; agree && i < archive.count; ++i) {
        const PlainTar::Member &member = plain.members()[static_cast<std::size_t>(i)];
        const CTarFileInfo info = ours.info(i);
        agree = info.name == member.name && info.linkName == member.linkName && info.size == member.size
                && info.offset == member.offset && info.type == CTarFileInfo::E_TYPE_FILE;
    }
    return agree;
}

void addPlainScan(const Archive &archive, QIODevice::OpenMode mode, const char *peerName,
                  const Bounds &bounds)
{
    const QString fileName = archive.fileName;
    addComparison({std::string("tar load, ") + archive.name, archive.count,
                   [fileName] { benchmark::DoNotOptimize(countOf(fileName)); },
                   [fileName, mode] { benchmark::DoNotOptimize(plainCount(fileName, mode)); },
                   [archive, mode] { return agreesWithPlain(archive, mode); }, bounds, std::nullopt,
                   peerName});
}

// A reader of another library, where the build has it: ours must be ahead.
void addLibrary(const Archive &archive, const char *peerName, std::optional<int> (*count)(const QString &))
{
    const QString fileName = archive.fileName;
    if (!count(fileName)) {
        std::fprintf(stderr, "%s was not found; \"tar load, %s\" is NOT compared with it\n", peerName,
                     archive.name);
        return;
    }
    addComparison({std::string("tar load, ") + archive.name,
                   archive.count,
                   [fileName] { benchmark::DoNotOptimize(countOf(fileName)); },
                   [fileName, count] { benchmark::DoNotOptimize(count(fileName)); },
                   [fileName, count] { return count(fileName) == countOf(fileName); },
                   {1.0, 1.0},
                   std::nullopt,
                   peerName});
}

void addLoading(const Archive &archive, const Bounds &bounds)
{
    addPlainScan(archive, QIODevice::NotOpen, "qt", bounds);
    addPlainScan(archive, QIODevice::Unbuffered, "unbuffered", {std::nullopt, 1.7});
    addLibrary(archive, "libarchive", libArchiveCount);
    addLibrary(archive, "KArchive", kArchiveCount);
}

// The records and names are made when they are asked for: what loading does not do may not cost more later.
int infosOf(const QString &fileName)
{
    CTar archive;
    archive.loadFile(fileName);
    return archive.infos().size() + archive.names().size();
}

void addInfos(const Archive &archive)
{
    const QString fileName = archive.fileName;
    addComparison({std::string("tar load, infos, ") + archive.name,
                   archive.count,
                   [fileName] { benchmark::DoNotOptimize(infosOf(fileName)); },
                   [fileName] { benchmark::DoNotOptimize(plainCount(fileName, QIODevice::NotOpen)); },
                   [archive] { return infosOf(archive.fileName) == 2 * archive.count; },
                   {std::nullopt, 1.7}});
}

qint64 findAll(const QString &fileName)
{
    CTar archive;
    archive.loadFile(fileName);
    qint64 sum = 0;
    for (int i = 0; i < archive.count(); ++i)
        sum += archive.index(QString::fromLatin1(memberName(i)));
    return sum;
}

qint64 plainFindAll(const QString &fileName)
{
    PlainTar archive;
    archive.load(fileName);
    const std::vector<PlainTar::Member> &members = archive.members();
    QHash<QString, int> byName;
    for (std::size_t i = 0; i < members.size(); ++i) {
        if (!byName.contains(members[i].name))
            byName.insert(members[i].name, static_cast<int>(i));
    }
    qint64 sum = 0;
    for (std::size_t i = 0; i < members.size(); ++i)
        sum += byName.value(QString::fromLatin1(memberName(static_cast<int>(i))), -1);
    return sum;
}

void addFindingAll(const Archive &archive)
{
    const QString fileName = archive.fileName;
    addComparison({std::string("tar load, find all, ") + archive.name,
                   archive.count,
                   [fileName] { benchmark::DoNotOptimize(findAll(fileName)); },
                   [fileName] { benchmark::DoNotOptimize(plainFindAll(fileName)); },
                   [fileName] { return findAll(fileName) == plainFindAll(fileName); },
                   {std::nullopt, 1.7}});
}

// One archive open on both sides.
struct Opened
{
    explicit Opened(const Archive &archive) : count(archive.count)
    {
        ours.loadFile(archive.fileName);
        plain.load(archive.fileName);
    }

    int count;
    CTar ours;
    PlainTar plain;
};

// Each step is a prime number of members, as a tool asks for what it needs; with 1 it is the archive's order.
std::vector<int> membersByStep(int count, int step)
{
    std::vector<int> members(static_cast<std::size_t>(count));
    int number = 0;
    for (int &member : members)
        member = static_cast<int>(qint64(number++) * step % count);
    return members;
}

QByteArray dataOf(CTar &archive, int member)
{
    QByteArray data;
    archive.file(member, data);
    return data;
}

void addReading(const char *item, Opened &opened, int step, const Bounds &bounds)
{
    const std::vector<int> members = membersByStep(opened.count, step);
    const auto ours = [&opened, members] {
        for (const int member : members)
            benchmark::DoNotOptimize(dataOf(opened.ours, member));
    };
    const auto plain = [&opened, members] {
        for (const int member : members)
            benchmark::DoNotOptimize(opened.plain.data(member));
    };
    const auto check = [&opened, members] {
        return std::all_of(members.begin(), members.end(), [&opened](int member) {
            const QByteArray data = opened.plain.data(member);
            return !data.isEmpty() && dataOf(opened.ours, member) == data;
        });
    };
    addComparison({item, opened.count, ours, plain, check, bounds});
}

void addFinding(Opened &opened)
{
    constexpr int lookUps = 100;
    std::vector<QString> names;
    names.reserve(lookUps + 1);
    for (int i = 0; i < lookUps; ++i)
        names.push_back(QString::fromLatin1(memberName(i * (opened.count / lookUps))));
    names.push_back(QStringLiteral("bundle/parameters/missing"));
    const auto ours = [&opened, names] {
        for (const QString &name : names)
            benchmark::DoNotOptimize(opened.ours.index(name));
    };
    const auto plain = [&opened, names] {
        for (const QString &name : names)
            benchmark::DoNotOptimize(opened.plain.index(name));
    };
    const auto check = [&opened, names] {
        return std::all_of(names.begin(), names.end(), [&opened](const QString &name) {
            return opened.ours.index(name) == opened.plain.index(name);
        });
    };
    addComparison(
        {"tar index(name), 10,000", static_cast<int>(names.size()), ours, plain, check, {0.05, 1.3}});
}

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir directory;
    Archive archives[] = {{"10,000", 10000, 1000},
                          {"200,000", 200000, 1000},
                          {"10", 10, 1000},
                          {"10,000 empty", 10000, 0},
                          {"10,000 of 1 MiB", 10000, 1 << 20}};
    for (Archive &archive : archives) {
        archive.fileName = directory.filePath(QLatin1String(archive.name));
        if (!writeArchive(archive.fileName, archive.count, archive.memberSize))
            return 1;
    }
    const Archive &tenThousand = archives[0];
    const Archive &twoHundredThousand = archives[1];
    addLoading(tenThousand, {0.35, 1.7});
    addLoading(twoHundredThousand, {0.45, 1.7});
    addGrowth({"tar load, 10,000", "tar load, 200,000", 2.5});
    for (std::size_t i = 2; i < std::size(archives); ++i)
        addLoading(archives[i], {std::nullopt, 1.7});
    addInfos(tenThousand);
    addInfos(twoHundredThousand);
    addFindingAll(tenThousand);
    addFindingAll(twoHundredThousand);
    Opened opened(tenThousand);
    addReading("tar file(index), 10,000", opened, 7919, {0.75, 1.7});
    addReading("tar file(index), in order", opened, 1, {std::nullopt, 1.7});
    addFinding(opened);
    return runComparisons(argc, argv);
}
