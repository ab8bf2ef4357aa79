// SPDX-License-Identifier: MIT
#include "KArchiveScan.h"

#ifdef J6CORE_HAS_KARCHIVE

#include <benchmark/benchmark.h>

#include <vector>

#include <KArchive>
#include <KArchiveDirectory>
#include <KArchiveFile>
#include <KTar>

namespace {

int fileCount(const KArchiveDirectory *root)
{
    int count = 0;
    std::vector<const KArchiveDirectory *> directories = {root};
    while (!directories.empty()) {
        const KArchiveDirectory *directory = directories.back();
        directories.pop_back();
        const QStringList names = directory->entries();
        for (const QString &name : names) {
            const KArchiveEntry *entry = directory->entry(name);
            if (entry->isDirectory()) {
                directories.push_back(static_cast<const KArchiveDirectory *>(entry));
                continue;
            }
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
