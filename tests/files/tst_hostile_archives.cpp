// SPDX-License-Identifier: MIT
// Archives that are cut off, altered, or made to do harm.
#include "TarCases.h"

#include <AllocationCounter.h>

#include <algorithm>
#include <random>

namespace {

// The rules of the reader once more, over bytes in memory and with Qt's conversions.
struct Reading
{
    bool isComplete = false;
    QString error;
    QList<CTarFileInfo> infos;
};

QString textAt(const QByteArray &block, int offset)
{
    const QByteArray rest = block.mid(offset);
    const int end = rest.indexOf('\0');
    return QString::fromLatin1(end < 0 ? rest : rest.left(end));
}

int typeOf(char flag)
{
    const QByteArray known("0\0"
                           "25",
                           4);
    const int place = known.indexOf(flag);
    return place < 0 ? 0 : std::max(1, place);
}

qint64 sizeIn(const QByteArray &block)
{
    const QString text = textAt(block, 124);
    const bool isAscii = std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
    bool ok = false;
    const qint64 size = text.toLongLong(&ok, 8);
    return ok && isAscii ? size : -1;
}

Reading reference(const QByteArray &bytes)
{
    Reading reading;
    qint64 position = 0;
    while (true) {
        const QByteArray block = position < bytes.size() ? bytes.mid(int(position), 512) : QByteArray();
        if (block.size() < 512) {
            reading.error = tooShort(block.size());
            return reading;
        }
        reading.isComplete = block == tar::zeroBlocks(1);
        if (reading.isComplete)
            return reading;
        if (textAt(block, 257).left(5) != QLatin1String("ustar")) {
            reading.error = notATarArchive();
            return reading;
        }
        CTarFileInfo info;
        info.type = typeOf(block.at(156));
        info.name = textAt(block, 0);
        info.linkName = textAt(block, 157);
        info.size = sizeIn(block);
        info.offset = position;
        if (info.size < 0)
            return reading;
        reading.infos.append(info);
        // The archives here are small: what is beyond them is beyond them.
        position = std::min(position + 512 + (std::min(info.size, qint64(1) << 32) + 511) / 512 * 512,
                            qint64(1) << 40);
    }
}

// Memory in proportion to the file, whatever it says. A name takes two bytes per character and a record with
// its texts some 200 more.
bool isAffordable(std::size_t allocated, int size)
{
    return allocated <= 32768 + std::size_t(size) * 8;
}

class Corrupter
{
public:
    QByteArray operator()(QByteArray bytes)
    {
        for (int faults = 1 + upTo(3); faults > 0; --faults)
            addFault(bytes);
        return bytes;
    }

private:
    int upTo(int limit) { return limit > 0 ? int(mRandom() % unsigned(limit)) : 0; }

    // Mostly into headers and there into the fields that are read.
    int place(const QByteArray &bytes)
    {
        static constexpr int read[] = {0, 99, 100, 124, 130, 135, 136, 147, 156, 157, 257, 261, 511};
        const int header = upTo(bytes.size() / 512 + 1) * 512;
        const int offset = upTo(3) == 0 ? upTo(512) : read[upTo(13)] + upTo(2);
        return std::min(header + offset, std::max(bytes.size() - 1, 0));
    }

    void addFault(QByteArray &bytes)
    {
        static const QByteArrayList sizes = {"777777777777777777777",
                                             "00000001000 14600000000",
                                             "77777777777",
                                             "000000010000000000000000",
                                             "-0000000001",
                                             "           ",
                                             QByteArray::fromHex("80000000000000000000ffff"),
                                             QByteArray::fromHex("ffffffffffffffffffffffff")};
        const int kind = upTo(100);
        const int at = place(bytes);
        if (kind < 50)
            bytes.replace(at, 1, QByteArray(1, char(mRandom())));
        else if (kind < 75)
            bytes.replace(at / 512 * 512 + 124, 1, sizes[upTo(sizes.size())]);
        else if (kind < 85)
            bytes.replace(at, upTo(512), QByteArray(upTo(512), upTo(2) == 0 ? '\0' : '0'));
        else if (kind < 90)
            bytes.truncate(at);
        else if (kind < 95)
            bytes.remove(at, upTo(600));
        else
            bytes.insert(at / 512 * 512, bytes.mid(upTo(bytes.size() / 512 + 1) * 512, 512));
    }

    std::mt19937 mRandom{20240607};
};

// A file of this size whose bytes are zero except for those given; false where the file system has no holes
// or no files as large.
bool writeSparse(const QString &fileName, qint64 size, const QMap<qint64, QByteArray> &pieces)
{
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || !file.resize(size))
        return false;
    for (auto piece = pieces.begin(); piece != pieces.end(); ++piece) {
        if (!file.seek(piece.key()) || file.write(piece.value()) != piece.value().size())
            return false;
    }
    return true;
}

} // namespace

class tst_hostile_archives : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cutOffAnywhere();
    void randomCorruptions();
    void sizesThatTheFileDoesNotHold_data();
    void sizesThatTheFileDoesNotHold();
    void dataOfMoreThanAByteArrayHolds_data();
    void dataOfMoreThanAByteArrayHolds();
    void membersBeyondATerabyte();
    void manyMembersOfOneName();

private:
    // Whether the archive reads as the reference reads it, and each member's data is the file's.
    bool readsAsTheReference(const QByteArray &bytes);

    QString fileName() const { return mDir.filePath(QStringLiteral("archive.tar")); }

    QTemporaryDir mDir;
};

void tst_hostile_archives::initTestCase()
{
    QVERIFY(mDir.isValid());
}

bool tst_hostile_archives::readsAsTheReference(const QByteArray &bytes)
{
    const Reading expected = reference(bytes);
    if (!tar::write(fileName(), bytes))
        return false;
    CTar archive;
    const AllocationCounter counter;
    const bool isComplete = archive.loadFile(fileName());
    if (!isAffordable(counter.bytes(), bytes.size()))
        return false;
    bool agrees = isComplete == expected.isComplete && archive.error() == expected.error
                  && archive.infos() == expected.infos;
    for (int i = 0; agrees && i < expected.infos.size(); ++i) {
        const CTarFileInfo &info = expected.infos[i];
        QByteArray data;
        const AllocationCounter dataCounter;
        const bool isWhole = archive.file(i, data);
        agrees = isAffordable(dataCounter.bytes(), bytes.size())
                 && data == bytes.mid(int(info.offset) + 512, int(std::min(info.size, qint64(1) << 30)))
                 && isWhole == (data.size() == info.size) && archive.names().at(i) == info.name
                 && archive.names().indexOf(info.name) == archive.index(info.name);
    }
    return agrees;
}

void tst_hostile_archives::cutOffAnywhere()
{
    const QByteArray whole = tar::archive({{"dir/", "", '5'},
                                           {"dir/axis", QByteArray(700, 'a')},
                                           {"link", "", '2', "dir/axis"},
                                           {QByteArray(100, 'n'), "last"}});
    QCOMPARE(whole.size(), 9 * 512);
    for (int size = 0; size <= whole.size(); ++size) {
        QVERIFY2(readsAsTheReference(whole.left(size)), QByteArray::number(size).constData());
        QCOMPARE(reference(whole.left(size)).isComplete, size >= 8 * 512);
    }
}

void tst_hostile_archives::randomCorruptions()
{
    const QByteArray whole = tar::archive({{"dir/", "", '5'},
                                           {"dir/axis", QByteArray(700, 'a')},
                                           {"link", "", '2', "dir/axis"},
                                           {QByteArray(100, 'n'), "last"}});
    Corrupter corrupt;
    int complete = 0;
    int tooShorts = 0;
    int noArchives = 0;
    int badSizes = 0;
    for (int i = 0; i < 100000; ++i) {
        const QByteArray bytes = corrupt(whole);
        if (!readsAsTheReference(bytes))
            QFAIL(bytes.toHex().constData());
        const Reading reading = reference(bytes);
        complete += reading.isComplete ? 1 : 0;
        noArchives += reading.error == notATarArchive() ? 1 : 0;
        badSizes += !reading.isComplete && reading.error.isEmpty() ? 1 : 0;
        tooShorts += reading.error.contains(QLatin1String("too short")) ? 1 : 0;
    }
    // The corruptions must meet every outcome.
    const QString outcomes = QStringLiteral("%1 complete, %2 too short, %3 no archives, %4 bad sizes")
                                 .arg(complete)
                                 .arg(tooShorts)
                                 .arg(noArchives)
                                 .arg(badSizes);
    QVERIFY2(std::min({complete, tooShorts, noArchives, badSizes}) > 3000, qPrintable(outcomes));
}

void tst_hostile_archives::sizesThatTheFileDoesNotHold_data()
{
    QTest::addColumn<QByteArray>("sizeText");
    QTest::addColumn<QByteArray>("size");

    QTest::newRow("one more") << QByteArray("5") << QByteArray("5");
    QTest::newRow("8 GiB") << QByteArray("77777777777") << QByteArray("8589934591");
    QTest::newRow("4 TiB") << QByteArray("100000000000000") << QByteArray("4398046511104");
    QTest::newRow("2^63 - 1") << QByteArray("777777777777777777777") << QByteArray("9223372036854775807");
}

void tst_hostile_archives::sizesThatTheFileDoesNotHold()
{
    QFETCH(QByteArray, sizeText);
    QFETCH(QByteArray, size);
    for (const char typeFlag : {'0', '2', '5', '1', 'L'}) {
        QByteArray block = tar::header({"axis", "", typeFlag, "target"});
        tar::put(block, tar::field::size, sizeText + '\0');
        QVERIFY(tar::write(fileName(), tar::members({{"first", "1st"}}) + block + "data"));
        CTar archive;
        QVERIFY(!archive.loadFile(fileName()));
        QCOMPARE(archive.error(), tooShort(0));
        QCOMPARE(archive.count(), 2);
        QByteArray data;
        const AllocationCounter counter;
        QVERIFY(!archive.file(1, data));
        QVERIFY(counter.bytes() < 4096);
        QCOMPARE(archive.error(), QString::fromLatin1("ERROR: 4 bytes read but " + size + " are expected !"));
        QCOMPARE(data, QByteArray("data"));
        QVERIFY(archive.file(0, data));
        QCOMPARE(data, QByteArray("1st"));
    }
}

void tst_hostile_archives::dataOfMoreThanAByteArrayHolds_data()
{
    QTest::addColumn<qint64>("size");

    // Its own header and the zero behind the bytes count for the limit of 2 GiB, too.
    constexpr qint64 limit = std::numeric_limits<int>::max();
    QTest::newRow("one more") << limit - qint64(sizeof(QByteArrayData));
    QTest::newRow("2^31 - 1") << limit;
    QTest::newRow("2^31") << limit + 1;
    QTest::newRow("3 GiB") << (qint64(3) << 30);
    QTest::newRow("4 GiB and 4 bytes") << (qint64(4) << 30) + 4;
}

void tst_hostile_archives::dataOfMoreThanAByteArrayHolds()
{
    QFETCH(qint64, size);
    const qint64 padding = (512 - size % 512) % 512;
    if (!writeSparse(fileName(), 512 + size + padding + 1024,
                     {{0, tar::header({"huge"}, size)}, {512 + size - 1, QByteArray("x")}}))
        QSKIP("NOT TESTED: the file system of the temporary directory has no files of 4 GiB with holes");
    CTar archive;
    QVERIFY(archive.loadFile(fileName()));
    QCOMPARE(archive.info(0).size, size);
    QByteArray data = "replaced";
    const AllocationCounter counter;
    QVERIFY(!archive.file(0, data));
    QVERIFY(counter.bytes() < 4096);
    QCOMPARE(archive.error(), QStringLiteral("ERROR: 0 bytes read but %1 are expected !").arg(size));
    QCOMPARE(data, QByteArray());
}

void tst_hostile_archives::membersBeyondATerabyte()
{
    constexpr qint64 size = qint64(1) << 40;
    QByteArray block = tar::header({"hole"});
    tar::put(block, tar::field::size, QByteArray::number(size + 1, 8) + '\0');
    const qint64 behind = 512 + size + 512;
    const QByteArray rest = tar::archive({{"behind", "found"}});
    if (!writeSparse(fileName(), behind + rest.size(), {{0, block}, {behind, rest}}))
        QSKIP("NOT TESTED: the file system of the temporary directory has no files of 1 TiB with holes");
    CTar archive;
    QVERIFY(archive.loadFile(fileName()));
    QCOMPARE(archive.infos(),
             (QList<CTarFileInfo>{record(1, "hole", "", size + 1, 0), record(1, "behind", "", 5, behind)}));
    QByteArray data;
    QVERIFY(archive.file(1, data));
    QCOMPARE(data, QByteArray("found"));
    const AllocationCounter counter;
    QVERIFY(!archive.file(0, data));
    QVERIFY(counter.bytes() < 4096);
    QCOMPARE(archive.error(), QStringLiteral("ERROR: 0 bytes read but 1099511627777 are expected !"));
}

void tst_hostile_archives::manyMembersOfOneName()
{
    constexpr int count = 20000;
    QByteArray bytes = tar::header({"first"});
    for (int i = 0; i < count; ++i)
        bytes += tar::header({"same"});
    QVERIFY(tar::write(fileName(), bytes + tar::zeroBlocks()));
    CTar archive;
    QVERIFY(archive.loadFile(fileName()));
    QCOMPARE(archive.count(), count + 1);
    QCOMPARE(archive.index(QStringLiteral("same")), 1);
    QCOMPARE(archive.index(QStringLiteral("first")), 0);
    QCOMPARE(archive.index(QStringLiteral("other")), -1);
}

QTEST_GUILESS_MAIN(tst_hostile_archives)
#include "tst_hostile_archives.moc"
