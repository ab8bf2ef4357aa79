// SPDX-License-Identifier: MIT
#include <FileChecksums.h>

#include <CMath.h>
#include <LoggedTest.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using j6tool::checksumsOfFile;
using j6tool::Error;
using j6tool::FileChecksums;
using j6tool::Result;

namespace {

constexpr int blockSize = 32 * 1024;

QByteArray pattern(int size)
{
    QByteArray bytes(size, '\0');
    quint32 state = 1;
    for (char &byte : bytes) {
        state = state * 1664525 + 1013904223;
        byte = char(state >> 24);
    }
    return bytes;
}

} // namespace

class tst_file_checksums : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void givesTheCheckValues();
    void givesTheChecksumsOfTheWholeFile_data();
    void givesTheChecksumsOfTheWholeFile();
    void refusesFilesItCannotRead();

private:
    Result<FileChecksums> checksumsOf(const QByteArray &contents) const
    {
        QFile file(mDir.filePath(QStringLiteral("contents")));
        if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size() || !file.flush())
            return Error{file.errorString()};
        return checksumsOfFile(file.fileName());
    }

    QTemporaryDir mDir;
};

void tst_file_checksums::givesTheCheckValues()
{
    const Result<FileChecksums> sums = checksumsOf("123456789");
    QVERIFY(sums);
    QCOMPARE(sums->size, 9);
    QCOMPARE(sums->crc32, 0xCBF43926U);
    QCOMPARE(sums->crc16Modbus, quint16(0x4B37));
    QCOMPARE(sums->crc16Ccitt, quint16(0x29B1));
}

void tst_file_checksums::givesTheChecksumsOfTheWholeFile_data()
{
    QTest::addColumn<int>("size");

    for (const int blocks : {0, 1, 2, 3}) {
        for (const int offset : {-5, -4, -3, -1, 0, 1, 3, 4, 5}) {
            if (blocks * blockSize + offset >= 0)
                QTest::addRow("%d blocks and %d", blocks, offset) << blocks * blockSize + offset;
        }
    }
}

void tst_file_checksums::givesTheChecksumsOfTheWholeFile()
{
    QFETCH(int, size);
    const QByteArray contents = pattern(size);
    const Result<FileChecksums> sums = checksumsOf(contents);
    QVERIFY(sums);
    QCOMPARE(sums->size, size);
    QCOMPARE(sums->crc32, CMath::crc32(contents.constData(), size));
    QCOMPARE(sums->crc16Modbus, CMath::crc16_modbus(contents, size, 0xFFFF));
    QCOMPARE(sums->crc16Ccitt, CMath::crc16_ccitt(contents, 0xFFFF));
}

void tst_file_checksums::refusesFilesItCannotRead()
{
    const Result<FileChecksums> directory = checksumsOfFile(mDir.path());
    QVERIFY(!directory);
    QCOMPARE(directory.error().text, mDir.path() + QStringLiteral(": is a directory"));
    const Result<FileChecksums> missing = checksumsOfFile(mDir.filePath(QStringLiteral("missing")));
    QVERIFY(!missing);
    QCOMPARE(missing.error().text, mDir.filePath(QStringLiteral("missing: no such file")));
}

QTEST_GUILESS_MAIN(tst_file_checksums)
#include "tst_file_checksums.moc"
