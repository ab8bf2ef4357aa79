// SPDX-License-Identifier: MIT
#include "KArchiveScan.h"

#ifdef J6CORE_HAS_KARCHIVE

#include <benchmark/benchmark.h>

#include <KArchive>
#include <KArchiveDirectory>
#include <KArchiveFile>
#include <KTar>

namespace {

int fileCount(const KArchiveDirectory *directory)
{
    int count = 0;
    const QStringList names = directory->entries();
    for (const QString &name : names) {
        const KArchiveEntry *entry = directory->entry(name);
        if (entry->isDirectory()) {
            count += fileCount(static_cast<const KArchiveDirectory *>(entry));
        } else {
            const auto *file = static_cast<const KArchiveFile *>(entry);
            benchmark::DoNotOptimize(file->size());
            benchmark::DoNotOptimize(file->position());
            ++count;
        }
    }
    return count;
}

} // namespace

std::optional<int> kArchiveCount(const QString &fileName)
{
    // The type given spares it the search for one.
    KTar archive(fileName, QStringLiteral("application/x-tar"));
    return archive.open(QIODevice::ReadOnly) ? fileCount(archive.directory()) : -1;
}

#else

std::optional<int> kArchiveCount(const QString & /*fileName*/)
{
    return std::nullopt;
}

#endif
