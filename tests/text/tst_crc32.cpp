// SPDX-License-Identifier: MIT
// CRC-32 beside its definition, bit by bit: the library takes 16, 4 and single bytes in a step, wherever the
// data begins and ends.
#include <CMath.h>

#include <LoggedTest.h>

#include <QTest>

#include <random>
#include <vector>

namespace {

quint32 crc32BitByBit(const unsigned char *bytes, int size)
{
    quint32 crc = 0xFFFFFFFFU;
    for (int i = 0; i < size; ++i) {
        crc ^= bytes[i];
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1U) != 0 ? (crc >> 1) ^ 0xEDB88320U : crc >> 1;
    }
    return crc ^ 0xFFFFFFFFU;
}

std::vector<unsigned char> randomBytes(int size, std::mt19937 &random)
{
    std::vector<unsigned char> bytes(static_cast<std::size_t>(size));
    for (unsigned char &byte : bytes)
        byte = static_cast<unsigned char>(random());
    return bytes;
}

} // namespace

class tst_crc32 : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void everyLengthAtEveryAlignment();
    void everyByteAtEveryPosition();
    void longRandomData();
};

void tst_crc32::everyLengthAtEveryAlignment()
{
    constexpr int longest = 300;
    constexpr int alignments = 16;
    std::mt19937 random(1);
    const std::vector<unsigned char> bytes = randomBytes(longest + alignments, random);
    for (int alignment = 0; alignment < alignments; ++alignment) {
        const unsigned char *const data = bytes.data() + alignment;
        QCOMPARE(CMath::crc32(data, 0), 0U);
        for (int size = 1; size <= longest; ++size)
            QCOMPARE(CMath::crc32(data, size), crc32BitByBit(data, size));
    }
}

// Every entry of every table is used: one byte that is not zero, anywhere in a step.
void tst_crc32::everyByteAtEveryPosition()
{
    for (const int size : {16, 20, 21}) {
        for (int position = 0; position < size; ++position) {
            std::vector<unsigned char> bytes(static_cast<std::size_t>(size));
            for (int value = 0; value < 256; ++value) {
                bytes[static_cast<std::size_t>(position)] = static_cast<unsigned char>(value);
                QCOMPARE(CMath::crc32(bytes.data(), size), crc32BitByBit(bytes.data(), size));
            }
        }
    }
}

void tst_crc32::longRandomData()
{
    std::mt19937 random(2);
    for (int i = 0; i < 50; ++i) {
        const int size = 1 + static_cast<int>(random() % 100000);
        const int start = static_cast<int>(random() % 16);
        const std::vector<unsigned char> bytes = randomBytes(start + size, random);
        QCOMPARE(CMath::crc32(bytes.data() + start, size), crc32BitByBit(bytes.data() + start, size));
    }
}

QTEST_GUILESS_MAIN(tst_crc32)
#include "tst_crc32.moc"
