// SPDX-License-Identifier: MIT
// Headers read one by one, as a caller may do it.
#include "TarCases.h"

class tst_tar_steps : public TarTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void stepAdvancesByWholeBlocks_data();
    void stepAdvancesByWholeBlocks();
    void positionsNeverWrap();
    void stepWithoutAnOpenFile();
    void stepToImpossiblePositions();
    void stepAddsTheMemberAgain();
    void stepAfterTheScanSeesTheFileAsItIs();
};

void tst_tar_steps::initTestCase()
{
    QVERIFY(mDir.isValid());
}

void tst_tar_steps::stepAdvancesByWholeBlocks_data()
{
    QTest::addColumn<qint64>("size");
    QTest::addColumn<qint64>("advance");

    const auto row = [](qint64 size, qint64 advance) {
        QTest::newRow(QByteArray::number(size).constData()) << size << advance;
    };
    row(0, 512);
    row(1, 1024);
    row(511, 1024);
    row(512, 1024);
    row(513, 512 + 1024);
    row(1024, 512 + 1024);
    row(1025, 512 + 1536);
    row((qint64(1) << 31) - 1, 512 + (qint64(1) << 31));
    row(qint64(1) << 32, 512 + (qint64(1) << 32));
    row((qint64(1) << 33) - 1, 512 + (qint64(1) << 33));
}

void tst_tar_steps::stepAdvancesByWholeBlocks()
{
    QFETCH(qint64, size);
    QFETCH(qint64, advance);
    CTar archive;
    QVERIFY(archive.loadFile(written(tar::zeroBlocks(1))));
    QVERIFY(tar::write(path("archive.tar"), QByteArray(100, 'x') + tar::header({"axis"}, size)));
    qint64 position = 100;
    bool end = false;
    QVERIFY(archive.readFileHeader(position, end));
    QCOMPARE(position, 100 + advance);
    QVERIFY(!end);
    QCOMPARE(archive.info(0), record(1, "axis", "", size, 100));
}

void tst_tar_steps::positionsNeverWrap()
{
    constexpr qint64 last = std::numeric_limits<qint64>::max();
    for (const qint64 size : {last, last - 1, last - 511, last - 512, last - 1023, qint64(1) << 62}) {
        CTar archive;
        QByteArray block = tar::header({"axis"});
        tar::put(block, tar::field::size, QByteArray::number(size, 8) + '\0');
        QVERIFY(!archive.loadFile(written(block + "data")));
        QCOMPARE(archive.error(), tooShort(0));
        QCOMPARE(archive.infos(), QList<CTarFileInfo>{record(1, "axis", "", size, 0)});

        qint64 position = 0;
        bool end = false;
        QVERIFY(archive.readFileHeader(position, end));
        // 2^63 - 1024 is the last whole block that has a header before it.
        const qint64 expected = size <= last - 1023 ? size + 512 : last;
        QCOMPARE(position, expected);
        QVERIFY(!archive.readFileHeader(position, end));
        QCOMPARE(position, expected);
        QCOMPARE(archive.count(), 2);

        QByteArray data;
        QVERIFY(!archive.file(0, data));
        QCOMPARE(archive.error(), QStringLiteral("ERROR: 4 bytes read but %1 are expected !").arg(size));
        QCOMPARE(data, QByteArray("data"));
    }
}

void tst_tar_steps::stepWithoutAnOpenFile()
{
    CTar archive;
    qint64 position = 512;
    bool end = false;
    QVERIFY(!archive.readFileHeader(position, end));
    QCOMPARE(archive.error(), QFile().errorString());
    QVERIFY(!archive.loadFile(path("missing.tar")));
    const QString missing = archive.error();
    QVERIFY(!archive.readFileHeader(position, end));
    QCOMPARE(archive.error(), missing);
    QCOMPARE(position, qint64(512));
    QVERIFY(!end);
    QCOMPARE(archive.count(), 0);
}

void tst_tar_steps::stepToImpossiblePositions()
{
    CTar archive;
    QVERIFY(archive.loadFile(written(tar::archive(threeFiles()))));
    bool end = false;
    constexpr qint64 last = std::numeric_limits<qint64>::max();
    const qint64 size = tar::archive(threeFiles()).size();
    // What a file says of a position that it cannot have.
    const auto seekError = [this](qint64 before) {
        QFile file(written(tar::archive(threeFiles())));
        file.open(QIODevice::ReadOnly);
        file.seek(before);
        return file.errorString();
    };
    for (const qint64 behind : {size, size + 1, size + 512, qint64(1) << 60, last - 511, last}) {
        qint64 position = behind;
        QVERIFY(!archive.readFileHeader(position, end));
        QCOMPARE(archive.error(), tooShort(0));
        QCOMPARE(position, behind);
    }
    qint64 position = size - 1;
    QVERIFY(!archive.readFileHeader(position, end));
    QCOMPARE(archive.error(), tooShort(1));
    for (const qint64 before : {qint64(-1), qint64(-512), std::numeric_limits<qint64>::min()}) {
        position = before;
        QVERIFY(!archive.readFileHeader(position, end));
        QCOMPARE(archive.error(), seekError(before));
        QCOMPARE(position, before);
    }
    QVERIFY(!end);
    QCOMPARE(archive.count(), 3);
}

void tst_tar_steps::stepAddsTheMemberAgain()
{
    CTar archive;
    QVERIFY(archive.loadFile(written(tar::archive(threeFiles()))));
    qint64 position = 0;
    bool end = false;
    QVERIFY(archive.readFileHeader(position, end));
    QCOMPARE(position, qint64(1024));
    QCOMPARE(archive.count(), 4);
    QCOMPARE(archive.info(3), archive.info(0));
    QCOMPARE(archive.names().at(3), archive.names().at(0));
    position = tar::members(threeFiles()).size();
    const qint64 endOfMembers = position;
    QVERIFY(archive.readFileHeader(position, end));
    QVERIFY(end);
    QCOMPARE(position, endOfMembers);
    // It sets the mark and never clears it.
    position = 1024;
    QVERIFY(archive.readFileHeader(position, end));
    QVERIFY(end);
    QCOMPARE(archive.names().at(4), QStringLiteral("second"));
}

void tst_tar_steps::stepAfterTheScanSeesTheFileAsItIs()
{
    CTar archive;
    QVERIFY(!archive.loadFile(written(tar::members({{"first"}}))));
    QVERIFY(tar::write(path("archive.tar"), tar::archive({{"FIRST"}, {"second", "data"}})));
    qint64 position = 0;
    bool end = false;
    while (!end)
        QVERIFY(archive.readFileHeader(position, end));
    QCOMPARE(archive.names(),
             (QStringList{QStringLiteral("first"), QStringLiteral("FIRST"), QStringLiteral("second")}));
    QByteArray data;
    QVERIFY(archive.file(2, data));
    QCOMPARE(data, QByteArray("data"));
}

QTEST_GUILESS_MAIN(tst_tar_steps)
#include "tst_tar_steps.moc"
