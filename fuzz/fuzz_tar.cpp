// SPDX-License-Identifier: MIT
// Any bytes as an archive: the scan ends, nothing is read beyond what is there, and what the index says about
// a member agrees with what the archive gives.
#include <CTar.h>

#include <QFile>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include <sys/mman.h>
#include <unistd.h>

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

// The name of a file in memory that holds the input.
QString fileOf(const std::uint8_t *data, std::size_t size)
{
    static const int descriptor = memfd_create("archive", 0);
    require(descriptor >= 0 && ftruncate(descriptor, 0) == 0);
    require(pwrite(descriptor, data, size, 0) == static_cast<ssize_t>(size));
    return QStringLiteral("/proc/self/fd/%1").arg(descriptor);
}

void checkMember(CTar &archive, int index, const QByteArray &bytes)
{
    const CTarFileInfo info = archive.info(index);
    require(info.size >= 0 && info.offset >= 0 && info.offset % 512 == 0
            && info.offset + 512 <= bytes.size());
    require(info.type >= 0 && info.type <= 3 && info.name.size() <= 512 && info.linkName.size() <= 355);

    QByteArray data = "replaced";
    const bool isWhole = archive.file(index, data);
    require(isWhole == (data.size() == info.size));
    require(data == bytes.mid(static_cast<int>(info.offset) + 512, data.size()));
    require(isWhole || info.offset + 512 + data.size() == bytes.size());

    const int first = archive.index(info.name);
    require(first >= 0 && first <= index && archive.names().at(first) == info.name);
    QByteArray dataByName;
    archive.file(info.name, dataByName);
    require(first != index || dataByName == data);
}

// The steps from anywhere, as a caller may ask for them.
void checkSteps(CTar &archive, qint64 position)
{
    bool end = false;
    qint64 former = position;
    for (int steps = 0; !end && archive.readFileHeader(position, end); ++steps) {
        require(end ? position == former : position >= former + 512);
        require(steps <= 4096);
        former = position;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));
    CTar archive;
    const bool isComplete = archive.loadFile(fileOf(data, size));
    const int count = archive.count();
    require(archive.names().size() == count && archive.infos().size() == count);
    require(!isComplete || archive.error().isEmpty());
    for (int i = 0; i < count; ++i)
        checkMember(archive, i, bytes);
    QByteArray rest;
    require(!archive.file(count, rest) && !archive.file(-1, rest) && rest.isNull());
    checkSteps(archive, size > 0 ? data[0] : 0);
    require(archive.count() >= count);
    return 0;
}
