// SPDX-License-Identifier: MIT
// CRC-32 of a record, a block and a file, beside zlib where the build has found it.
#include "ValueSamples.h"
#include "ZlibCrc.h"

#include <CMath.h>

#include <cstdio>
#include <random>

namespace {

std::vector<QByteArray> randomBlocks(int count, int size)
{
    std::mt19937 random(1);
    std::vector<QByteArray> blocks;
    for (int i = 0; i < count; ++i) {
        QByteArray block;
        block.reserve(size);
        for (int j = 0; j < size; ++j)
            block.append(static_cast<char>(random()));
        blocks.push_back(block);
    }
    return blocks;
}

void addCrc32(const std::string &name, const std::vector<QByteArray> &blocks, Bounds bounds)
{
    addItem(
        "crc32 " + name, blocks,
        [](const QByteArray &block) { return std::optional(CMath::crc32(block.constData(), block.size())); },
        zlibCrc32, bounds, 0, "zlib");
}

} // namespace

int main(int argc, char **argv)
{
    const std::vector<QByteArray> records = randomBlocks(1000, 64);
    const std::vector<QByteArray> pages = randomBlocks(50, 4 * 1024);
    const std::vector<QByteArray> files = randomBlocks(1, 1024 * 1024);
    if (zlibCrc32({})) {
        addCrc32("64 B", records, {0.25, 1.3});
        addCrc32("4 KiB", pages, {1.5, 11.0});
        addCrc32("1 MiB", files, {1.6, 13.0});
    } else {
        std::fprintf(stderr, "zlib was not found; crc32 is NOT compared with it\n");
    }
    return runComparisons(argc, argv);
}
