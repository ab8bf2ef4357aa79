// SPDX-License-Identifier: MIT
// Archives of 10, 10,000 and 200,000 members indexed, and each member found by its name, beside a plain scan
// of the headers as one writes it by hand with a QFile, buffered and unbuffered, and beside libarchive where
// the build has found it. The report is per member: the same figure at every count is linear growth. Large
// members are holes in the file: each header is then a read of its own, and beyond that their data must cost
// nothing.
#include "LibArchiveScan.h"
#include "PeerReport.h"

#include <CTar.h>

#include <benchmark/benchmark.h>

#include <QHash>
#include <QTemporaryDir>

#include <cstdio>
#include <cstring>
#include <deque>
#include <numeric>
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
    // Only libarchive looks at the checksum: the sum of all bytes, its own field taken as blanks.
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

// The data of the members are holes in the file.
bool writeArchive(const QString &fileName, int count, qint64 memberSize)
{
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    for (int i = 0; i < count; ++i) {
        const qint64 blocks = 1 + (memberSize + blockSize - 1) / blockSize;
        if (file.write(header(memberName(i), memberSize)) != blockSize
            || !file.seek(file.pos() + (blocks - 1) * blockSize))
            return false;
    }
    const QByteArray end(2 * blockSize, '\0');
    return file.write(end) == end.size();
}

struct PlainMember
{
    QString name;
    QString linkName;
    char typeFlag;
    qint64 size;
    qint64 offset;
};

QString field(const char *text, int width)
{
    return QString::fromLatin1(text, static_cast<int>(qstrnlen(text, static_cast<uint>(width))));
}

std::vector<PlainMember> plainScan(const QString &fileName, QIODevice::OpenMode mode)
{
    std::vector<PlainMember> members;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | mode))
        return members;
    qint64 position = 0;
    char block[blockSize];
    while (file.seek(position) && file.read(block, blockSize) == blockSize && block[0] != '\0') {
        bool ok = false;
        const qint64 size = QByteArray(block + 124, 11).toLongLong(&ok, 8);
        if (!ok || std::memcmp(block + 257, "ustar", 5) != 0)
            break;
        members.push_back({field(block, 100), field(block + 157, 100), block[156], size, position});
        position += (1 + (size + blockSize - 1) / blockSize) * blockSize;
    }
    return members;
}

qint64 plainFindAll(const QString &fileName)
{
    const std::vector<PlainMember> members = plainScan(fileName, QIODevice::Unbuffered);
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

int countOf(const QString &fileName)
{
    CTar archive;
    return archive.loadFile(fileName) ? archive.count() : -1;
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

// Timing different work would prove nothing.
bool sidesAgree(const QString &fileName, int count)
{
    CTar archive;
    const std::vector<PlainMember> plain = plainScan(fileName, QIODevice::NotOpen);
    bool agree = archive.loadFile(fileName) && archive.count() == count
                 && plain.size() == static_cast<std::size_t>(count)
                 && plainScan(fileName, QIODevice::Unbuffered).size() == plain.size()
                 && findAll(fileName) == plainFindAll(fileName)
                 && libArchiveCount(fileName).value_or(count) == count;
    for (int i = 0; agree && i < count; ++i) {
        const PlainMember &member = plain[static_cast<std::size_t>(i)];
        const CTarFileInfo info = archive.info(i);
        agree = info.name == member.name && info.size == member.size && info.offset == member.offset;
    }
    if (!agree)
        std::fprintf(stderr, "the sides differ with %d members\n", count);
    return agree;
}

struct Archive
{
    const char *name;
    int count;
    qint64 memberSize;
};

void addArchive(const Archive &archive, const QString &fileName)
{
    const auto ours = [fileName] { benchmark::DoNotOptimize(countOf(fileName)); };
    const auto plain = [fileName](QIODevice::OpenMode mode) {
        return [fileName, mode] { benchmark::DoNotOptimize(plainScan(fileName, mode).size()); };
    };
    const std::string name = archive.name;
    addComparison({"index " + name, archive.count, ours, plain(QIODevice::NotOpen)});
    addComparison({"index " + name + " (unbuffered)", archive.count, ours, plain(QIODevice::Unbuffered)});
    if (libArchiveCount(fileName))
        addComparison({"index " + name + " (libarchive)", archive.count, ours,
                       [fileName] { benchmark::DoNotOptimize(libArchiveCount(fileName)); }});
    else
        std::fprintf(stderr, "libarchive was not found; index %s is NOT compared with it\n", archive.name);
    addComparison({"index, find all " + name, archive.count,
                   [fileName] { benchmark::DoNotOptimize(findAll(fileName)); },
                   [fileName] { benchmark::DoNotOptimize(plainFindAll(fileName)); }});
}

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir directory;
    static constexpr Archive archives[] = {{"10", 10, 1000},
                                           {"10,000", 10000, 1000},
                                           {"200,000", 200000, 1000},
                                           {"10,000 empty", 10000, 0},
                                           {"10,000 of 1 MiB", 10000, 1 << 20}};
    for (const Archive &archive : archives) {
        const QString fileName = directory.filePath(QLatin1String(archive.name));
        if (!writeArchive(fileName, archive.count, archive.memberSize)
            || !sidesAgree(fileName, archive.count))
            return 1;
        addArchive(archive, fileName);
    }
    return runComparisons(argc, argv);
}
