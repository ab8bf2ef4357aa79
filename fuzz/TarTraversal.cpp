// SPDX-License-Identifier: MIT
// Any bytes as an archive: the scan ends and finds what a plain one finds, nothing is read beyond what is
// there, and what the index says about a member agrees with what the archive gives, also when the file has
// become shorter since.
#include "Traversals.h"

#include <CTar.h>

#include <PlainTar.h>
#include <Properties.h>

#include <limits>

#ifdef Q_OS_LINUX
#include <sys/mman.h>
#include <unistd.h>
#else
#include <QTemporaryFile>
#endif

namespace {

#ifdef Q_OS_LINUX

// A file in memory that holds the input. It is the same one each time.
class ArchiveFile
{
public:
    static void write(const QByteArray &bytes)
    {
        require(mDescriptor >= 0, "there is a file in memory");
        cutTo(0);
        require(pwrite(mDescriptor, bytes.constData(), static_cast<std::size_t>(bytes.size()), 0)
                    == bytes.size(),
                "the input can be kept as a file");
    }

    static QString name() { return QStringLiteral("/proc/self/fd/%1").arg(mDescriptor); }
    static void cutTo(int size) { require(ftruncate(mDescriptor, size) == 0, "the file can be cut"); }

private:
    static const int mDescriptor;
};

const int ArchiveFile::mDescriptor = memfd_create("archive", 0);

#else

// A file that holds the input. It is the same one each time.
class ArchiveFile
{
public:
    static void write(const QByteArray &bytes)
    {
        cutTo(0);
        require(file().seek(0) && file().write(bytes) == bytes.size() && file().flush(),
                "the input can be kept as a file");
    }

    static QString name() { return file().fileName(); }
    static void cutTo(int size) { require(file().resize(size), "the file can be cut"); }

private:
    static QTemporaryFile &file()
    {
        static QTemporaryFile instance;
        require(instance.isOpen() || instance.open(), "there is a file");
        return instance;
    }
};

#endif

std::size_t proportional(const QByteArray &bytes)
{
    return 65536 + 16 * static_cast<std::size_t>(bytes.size());
}

bool load(CTar &archive, const QByteArray &bytes)
{
    return bounded(proportional(bytes), "an index costs memory in proportion to the archive",
                   [&archive] { return archive.loadFile(ArchiveFile::name()); });
}

void checkInfo(const CTarFileInfo &info, const QByteArray &archive)
{
    require(info.size >= 0, "a size is not negative");
    require(info.offset >= 0 && info.offset % 512 == 0 && info.offset + 512 <= archive.size(),
            "a header is a block of the archive");
    require(info.type >= 0 && info.type <= 3, "a type is one of the four");
    require(info.name.size() <= 512 && info.linkName.size() <= 355, "names are no longer than their fields");
}

// The archive gives what lies behind the header in the bytes, which are all that the file holds now.
void checkData(CTar &archive, int index, const QByteArray &bytes)
{
    const CTarFileInfo info = archive.info(index);
    QByteArray data = "replaced";
    const auto size = static_cast<std::size_t>(bytes.size());
    const bool isWhole =
        bounded(proportional(bytes) + 2 * size, "data cost no more memory than the archive has",
                [&] { return archive.file(index, data); });
    require(isWhole == (data.size() == info.size), "success means all bytes of the member");
    require(isWhole || !archive.error().isEmpty(), "a failure has a text");
    const qint64 left = std::max<qint64>(0, bytes.size() - info.offset - 512);
    const auto expected = static_cast<int>(std::min(left, info.size));
    require(data == bytes.mid(static_cast<int>(info.offset) + 512, expected),
            "the data are the bytes behind the header, as far as there are");
}

void checkMember(CTar &archive, int index, const QByteArray &bytes)
{
    const CTarFileInfo info = archive.info(index);
    checkInfo(info, bytes);
    checkData(archive, index, bytes);
    const int first = archive.index(info.name);
    require(first >= 0 && first <= index && archive.names().at(first) == info.name,
            "a name leads to the first member that has it");
    for (int i = 0; i < first; ++i)
        require(archive.info(i).name != info.name, "no member before it has the name");
    QByteArray data;
    QByteArray dataByName;
    archive.file(index, data);
    archive.file(info.name, dataByName);
    require(first != index || dataByName == data, "by name and by index the data are the same");
}

void checkWithPlainReader(const CTar &archive, bool isComplete, const QByteArray &bytes)
{
    const PlainTar plain(bytes);
    require(isComplete == plain.isWhole, "a plain reader reaches the end, too");
    require(archive.infos() == plain.members, "a plain reader finds the same members");
    // A position that no file can have is told by the file in words of its own.
    const bool isFar = !plain.members.isEmpty() && plain.members.last().size > qint64(1) << 40;
    require(isFar || archive.error() == plain.error, "a plain reader finds the same fault", archive.error());
    for (int i = 0; i < plain.members.size(); ++i)
        require(archive.info(i) == plain.members.at(i) && archive.names().at(i) == plain.members.at(i).name,
                "all lists have the same members");
}

// The steps from anywhere, as a caller may ask for them.
void checkSteps(CTar &archive, qint64 position)
{
    bool end = false;
    qint64 former = position;
    for (int steps = 0; !end && archive.readFileHeader(position, end); ++steps) {
        require(end ? position == former
                    : position >= former + 512 || position == std::numeric_limits<qint64>::max(),
                "a step goes on by a block at least");
        require(steps <= 4096, "the steps come to an end");
        former = position;
    }
    require(position == former, "a failing step goes nowhere");
}

void checkMissing(CTar &archive)
{
    QByteArray data;
    const QString missing = QStringLiteral("no archive has this \u20ac");
    require(archive.index(missing) == -1 && !archive.file(missing, data),
            "a name that is missing leads nowhere");
    require(archive.error() == QLatin1String("ERROR: File \"%1\" does not exist in the archive !"),
            "the text for a missing name deliberately holds its place");
    for (const int index : {-1, archive.count(), std::numeric_limits<int>::max()}) {
        require(!archive.file(index, data) && archive.info(index) == CTarFileInfo(),
                "beyond the members is nothing");
        require(archive.error()
                    == QStringLiteral("ERROR: Index %1 must be between the limits 0 and %2. !")
                           .arg(index)
                           .arg(archive.count()),
                "the text names the index and the count");
    }
    require(data.isNull(), "without a member the data are untouched");
}

} // namespace

void traverseTar(const QByteArray &input)
{
    ArchiveFile::write(input);
    CTar archive;
    const bool isComplete = load(archive, input);
    const int count = archive.count();
    checkWithPlainReader(archive, isComplete, input);
    for (int i = 0; i < count; ++i)
        checkMember(archive, i, input);
    checkMissing(archive);
    const int somewhere = input.isEmpty() ? 0 : static_cast<quint8>(input.at(0));
    checkSteps(archive, somewhere);
    checkSteps(archive, std::numeric_limits<qint64>::max() - somewhere);
    require(archive.count() >= count, "the steps forget no member");

    require(load(archive, input) == isComplete && archive.count() == count,
            "an archive is read again as it was");
    const QByteArray rest = input.left(input.size() * somewhere / 256);
    ArchiveFile::cutTo(rest.size());
    for (int i = 0; i < count; ++i)
        checkData(archive, i, rest);
    checkSteps(archive, 0);
}
