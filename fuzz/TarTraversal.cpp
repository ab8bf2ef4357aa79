// SPDX-License-Identifier: MIT
// Any bytes as an archive: the scan ends, nothing is read beyond what is there, and what the index says about
// a member agrees with what the archive gives.
#include "Traversals.h"

#include <CTar.h>
#include <Properties.h>

#include <sys/mman.h>
#include <unistd.h>

namespace {

// The name of a file in memory that holds the input.
QString fileOf(const QByteArray &bytes)
{
    static const int descriptor = memfd_create("archive", 0);
    require(descriptor >= 0 && ftruncate(descriptor, 0) == 0
                && pwrite(descriptor, bytes.constData(), static_cast<std::size_t>(bytes.size()), 0)
                       == bytes.size(),
            "the input can be kept as a file");
    return QStringLiteral("/proc/self/fd/%1").arg(descriptor);
}

void checkInfo(const CTarFileInfo &info, const QByteArray &archive)
{
    require(info.size >= 0, "a size is not negative");
    require(info.offset >= 0 && info.offset % 512 == 0 && info.offset + 512 <= archive.size(),
            "a header is a block of the archive");
    require(info.type >= 0 && info.type <= 3, "a type is one of the four");
    require(info.name.size() <= 512 && info.linkName.size() <= 355, "names are no longer than their fields");
}

void checkMember(CTar &archive, int index, const QByteArray &bytes)
{
    const CTarFileInfo info = archive.info(index);
    checkInfo(info, bytes);

    QByteArray data = "replaced";
    const bool isWhole = archive.file(index, data);
    require(isWhole == (data.size() == info.size), "success means all bytes of the member");
    require(data == bytes.mid(static_cast<int>(info.offset) + 512, data.size()),
            "the data are the bytes behind the header");
    require(isWhole || info.offset + 512 + data.size() == bytes.size(),
            "data are cut only by the end of the archive");

    const int first = archive.index(info.name);
    require(first >= 0 && first <= index && archive.names().at(first) == info.name,
            "a name leads to the first member that has it");
    QByteArray dataByName;
    archive.file(info.name, dataByName);
    require(first != index || dataByName == data, "by name and by index the data are the same");
}

// The steps from anywhere, as a caller may ask for them.
void checkSteps(CTar &archive, qint64 position)
{
    bool end = false;
    qint64 former = position;
    for (int steps = 0; !end && archive.readFileHeader(position, end); ++steps) {
        require(end ? position == former : position >= former + 512, "a step goes on by a block at least");
        require(steps <= 4096, "the steps come to an end");
        former = position;
    }
}

} // namespace

void traverseTar(const QByteArray &input)
{
    CTar archive;
    const bool isComplete = archive.loadFile(fileOf(input));
    const int count = archive.count();
    require(archive.names().size() == count && archive.infos().size() == count,
            "every member has a name and an information");
    require(!isComplete || archive.error().isEmpty(), "success leaves no error");
    for (int i = 0; i < count; ++i)
        checkMember(archive, i, input);
    QByteArray rest;
    require(!archive.file(count, rest) && !archive.file(-1, rest) && rest.isNull(),
            "beyond the members there are no data");
    checkSteps(archive, input.isEmpty() ? 0 : static_cast<quint8>(input.at(0)));
    require(archive.count() >= count, "the steps forget no member");
}
