// SPDX-License-Identifier: MIT
#include "FileChecksums.h"

#include "InputFile.h"

#include <CMath.h>

#include <QtEndian>

namespace j6tool {

namespace {

// The Modbus CRC is defined for as much as 16 bits count.
constexpr int blockSize = 32 * 1024;
constexpr int crc32Size = 4;

/*
 * CMath::crc32() takes no initial value, so a block continues the checksum of those before it by its first
 * four bytes: the CRC register meets exactly these, each XORed with one byte of the register. Starting from
 * the initial register with these bytes XORed with the complement of the true one, which is the checksum so
 * far, comes to the same.
 */
quint32 continuedCrc32(quint32 crc, QByteArray block)
{
    const auto start = qFromLittleEndian<quint32>(block.constData());
    qToLittleEndian(start ^ crc, block.data());
    return CMath::crc32(block.constData(), block.size());
}

void addBlock(FileChecksums &sums, const QByteArray &block)
{
    sums.crc32 =
        sums.size == 0 ? CMath::crc32(block.constData(), block.size()) : continuedCrc32(sums.crc32, block);
    sums.crc16Modbus = CMath::crc16_modbus(block, block.size(), sums.crc16Modbus);
    sums.crc16Ccitt = CMath::crc16_ccitt(block, sums.crc16Ccitt);
    sums.size += block.size();
}

} // namespace

Result<FileChecksums> checksumsOfFile(const QString &fileName)
{
    QFile file(fileName);
    if (const std::optional<Error> error = openInput(file))
        return *error;
    const qint64 size = file.size();
    FileChecksums sums;
    sums.crc16Modbus = 0xFFFF;
    sums.crc16Ccitt = 0xFFFF;
    QByteArray block;
    while (true) {
        const Result<QByteArray> next = readBlock(file, blockSize);
        if (!next)
            return next.error();
        // A last block too short to continue with is joined to the one before it.
        if (next->size() >= crc32Size && !block.isEmpty()) {
            addBlock(sums, block);
            block.clear();
        }
        block += *next;
        if (next->size() < blockSize)
            break;
    }
    if (const std::optional<Error> error = shrinkage(file, size))
        return *error;
    addBlock(sums, block);
    return sums;
}

} // namespace j6tool
