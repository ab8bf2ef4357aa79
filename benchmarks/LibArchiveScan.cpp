// SPDX-License-Identifier: MIT
#include "LibArchiveScan.h"

#ifdef J6CORE_HAS_LIBARCHIVE

#include <benchmark/benchmark.h>

#include <QFile>

#include <memory>

#include <archive.h>
#include <archive_entry.h>

namespace {

struct FreeArchive
{
    void operator()(archive *reader) const { archive_read_free(reader); }
};

} // namespace

std::optional<int> libArchiveCount(const QString &fileName)
{
    constexpr std::size_t readSize = 4096;
    const std::unique_ptr<archive, FreeArchive> reader(archive_read_new());
    if (archive_read_support_format_tar(reader.get()) != ARCHIVE_OK
        || archive_read_open_filename(reader.get(), QFile::encodeName(fileName).constData(), readSize)
               != ARCHIVE_OK)
        return -1;
    int count = 0;
    archive_entry *entry = nullptr;
    int status = archive_read_next_header(reader.get(), &entry);
    while (status == ARCHIVE_OK) {
        benchmark::DoNotOptimize(archive_entry_pathname(entry));
        benchmark::DoNotOptimize(archive_entry_size(entry));
        ++count;
        status = archive_read_next_header(reader.get(), &entry);
    }
    return status == ARCHIVE_EOF ? count : -1;
}

#else

std::optional<int> libArchiveCount(const QString & /*fileName*/)
{
    return std::nullopt;
}

#endif
