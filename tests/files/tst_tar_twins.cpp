// SPDX-License-Identifier: MIT
// What is done fast, beside the same done plainly: headers out of windows and one by one, names by their hash
// and from the first to the last; and the sizes beside Qt's numbers.
#include "TarCases.h"

#include "files/SipHash.h"
#include "files/UstarBlock.h"
#include "files/UstarWindow.h"

#include <algorithm>
#include <random>

namespace {

constexpr int blockSize = tar::blockSize;

// What an archive gives: from loadFile(), and from a reader that fetches one block after the other.
struct Reading
{
    bool ok = false;
    QString error;
    QList<CTarFileInfo> infos;
};

QString textAt(const QByteArray &block, tar::Field field)
{
    const int end = block.indexOf('\0', field.offset);
    return QString::fromLatin1(block.mid(field.offset, end < 0 ? -1 : end - field.offset));
}

// Qt's number without its ideas of white space and digits beyond ASCII.
qint64 sizeOf(const QByteArray &block)
{
    const QString text = textAt(block, tar::field::size);
    const bool isAscii = std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
    bool ok = false;
    const qint64 size = text.toLongLong(&ok, 8);
    return ok && isAscii ? std::max(size, qint64(-1)) : -1;
}

int typeOf(char flag)
{
    return flag == '0' || flag == '\0' ? 1 : flag == '2' ? 2 : flag == '5' ? 3 : 0;
}

Reading readPlainly(const QString &fileName)
{
    Reading reading;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return reading;
    qint64 position = 0;
    while (true) {
        const QByteArray block = file.seek(position) ? file.read(blockSize) : QByteArray();
        if (block.size() < blockSize) {
            reading.error = tooShort(block.size());
            return reading;
        }
        if (block == tar::zeroBlocks(1)) {
            reading.ok = true;
            return reading;
        }
        if (!block.mid(tar::field::magic.offset).startsWith("ustar")) {
            reading.error = notATarArchive();
            return reading;
        }
        const qint64 size = sizeOf(block);
        if (size < 0)
            return reading;
        CTarFileInfo info = record(typeOf(block[tar::field::typeFlag.offset]), "", "", size, position);
        info.name = textAt(block, tar::field::name);
        info.linkName = textAt(block, tar::field::linkName);
        reading.infos.append(info);
        position += blockSize + std::min(size, qint64(1) << 40) / blockSize * blockSize;
        position += size % blockSize == 0 ? 0 : blockSize;
    }
}

Reading readBySteps(const QString &fileName)
{
    CTar archive;
    archive.loadFile(fileName);
    const int count = archive.count();
    qint64 position = 0;
    bool end = false;
    bool ok = true;
    while (ok && !end)
        ok = archive.readFileHeader(position, end);
    return {ok, archive.error(), archive.infos().mid(count)};
}

bool isSame(const Reading &left, const Reading &right)
{
    return left.ok == right.ok && left.error == right.error && left.infos == right.infos;
}

// Members of every kind, and what is no member.
class RandomArchive
{
public:
    QByteArray operator()()
    {
        QByteArray bytes;
        for (int i = upTo(60); i > 0; --i)
            bytes += upTo(200) == 0 ? garbage() : member();
        bytes += tar::zeroBlocks(upTo(3));
        if (upTo(3) == 0)
            bytes.truncate(upTo(2) == 0 ? upTo(bytes.size() + 1) : upTo(bytes.size() / 512 + 1) * 512);
        return bytes;
    }

private:
    int upTo(int limit) { return int(mRandom() % unsigned(limit)); }

    QByteArray randomBytes(int count)
    {
        QByteArray bytes(count, '\0');
        std::generate(bytes.begin(), bytes.end(), [this] { return char(mRandom()); });
        return bytes;
    }

    QByteArray garbage()
    {
        static const QByteArrayList blocks = {QByteArray(512, 'x'), QByteArray(511, '\0') + 'x',
                                              tar::header({"axis"}).replace("ustar", "vstar"),
                                              tar::header({"axis"}).replace("0000000000", "000000000x")};
        return upTo(5) == 0 ? randomBytes(512) : blocks[upTo(blocks.size())];
    }

    QByteArray name()
    {
        static const QByteArrayList names = {"", "axis", "a", "axis/\xFC", QByteArray(99, 'n'), "./axis"};
        return upTo(2) == 0 ? names[upTo(names.size())] : QByteArray::number(upTo(1000), 36);
    }

    // Around blocks, pages and windows; mostly small.
    int size()
    {
        static constexpr int edges[] = {0,           512,         4096 - 512, 4096, 8192,
                                        8192 + 4096, 65536 - 512, 65536,      69632};
        const int edge = edges[upTo(upTo(8) == 0 ? int(std::size(edges)) : 2)];
        return std::max(edge + upTo(3) - 1, 0);
    }

    QByteArray member()
    {
        static constexpr char flags[] = {'0', '\0', '2', '5', '1', 'x', 'L', '\xFF'};
        const int dataSize = size();
        QByteArray block = tar::header({name(), "", flags[upTo(8)], upTo(3) == 0 ? name() : ""}, dataSize);
        if (upTo(8) == 0)
            tar::put(block, tar::field::name, QByteArray(100, 'r')); // runs on
        if (upTo(8) == 0)
            tar::put(block, tar::field::prefix, randomBytes(155));
        if (upTo(8) == 0)
            tar::put(block, tar::field::checksum, randomBytes(8));
        if (upTo(8) == 0)
            tar::put(block, tar::field::size, (' ' + tar::octal(dataSize, 9) + ' ').leftJustified(12, '\0'));
        return block + tar::padded(QByteArray(dataSize, 'd'));
    }

    std::mt19937 mRandom{20261121};
};

// The archive's answers against what was read plainly and the bytes of the file.
bool answersLike(const Reading &expected, CTar &archive, const QByteArray &bytes)
{
    QStringList names;
    for (const CTarFileInfo &info : expected.infos)
        names.append(info.name);
    bool same = archive.count() == names.size();
    for (int i = 0; same && i < names.size(); ++i) {
        const CTarFileInfo &info = expected.infos[i];
        QByteArray data;
        const bool isWhole = archive.file(i, data);
        same = archive.info(i) == info && isWhole == (data.size() == info.size)
               && data == bytes.mid(int(info.offset) + blockSize, int(std::min(info.size, qint64(1) << 30)))
               && archive.index(info.name) == names.indexOf(info.name);
    }
    for (const char *name : {"", "axis", "none", "axis/\xFC"})
        same = same && archive.index(QString::fromLatin1(name)) == names.indexOf(QString::fromLatin1(name));
    return same && archive.names() == names && archive.infos() == expected.infos
           && archive.info(0) == expected.infos.value(0);
}

UstarBlock blockOf(const QByteArray &bytes)
{
    return UstarBlock(bytes.constData());
}

} // namespace

class tst_tar_twins : public TarTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void randomArchives();
    void cutOffAtEveryBlock();
    void windowsGrowWhileMembersAreSmall();
    void sizes();
    void namesAgainstALinearSearch();
    void namesThatNoHeaderHolds();
    void namesThatComeLater();
    void recordsAreTheSameWheneverTheyAreMade();
    void archiveThatTheSystemCannotRead();
    void publishedHashes();

private:
    // The last archive that was written, read in all three ways.
    bool readsAlike(const QByteArray &bytes);
};

void tst_tar_twins::initTestCase()
{
    QVERIFY(mDir.isValid());
}

bool tst_tar_twins::readsAlike(const QByteArray &bytes)
{
    const Reading expected = readPlainly(path("archive.tar"));
    CTar archive;
    const bool ok = archive.loadFile(path("archive.tar"));
    // The infos are compared by answersLike(), after it has asked for single ones.
    return isSame(expected, {ok, archive.error(), expected.infos})
           && isSame(expected, readBySteps(path("archive.tar"))) && answersLike(expected, archive, bytes);
}

void tst_tar_twins::randomArchives()
{
    RandomArchive random;
    int complete = 0;
    int tooShorts = 0;
    int others = 0;
    for (int i = 0; i < 600; ++i) {
        const QByteArray bytes = random();
        written(bytes);
        QVERIFY2(readsAlike(bytes), QByteArray::number(i).constData());
        const Reading reading = readPlainly(path("archive.tar"));
        complete += reading.ok ? 1 : 0;
        tooShorts += reading.error.contains(QLatin1String("too short")) ? 1 : 0;
        others += reading.ok || reading.error.contains(QLatin1String("too short")) ? 0 : 1;
    }
    const QString outcomes =
        QStringLiteral("%1 complete, %2 too short, %3 others").arg(complete).arg(tooShorts).arg(others);
    QVERIFY2(std::min({complete, tooShorts, others}) > 30, qPrintable(outcomes));
}

void tst_tar_twins::cutOffAtEveryBlock()
{
    QList<tar::Member> members;
    for (const int size : {0, 1, 511, 512, 513, 4000, 9000, 30000, 70000, 100, 100, 5000})
        members.append({QByteArray::number(size), QByteArray(size, 'd')});
    QByteArray bytes = tar::archive(members + members.mid(0, 6));
    written(bytes);
    for (int blocks = bytes.size() / blockSize; blocks >= 0; --blocks) {
        for (const int more : {1, 0, -1}) {
            const int size = blocks * blockSize + more;
            if (size < 0 || size > bytes.size())
                continue;
            bytes.truncate(size);
            QVERIFY(QFile::resize(path("archive.tar"), size));
            QVERIFY2(readsAlike(bytes), QByteArray::number(size).constData());
        }
        bytes.resize(blocks * blockSize);
    }
}

void tst_tar_twins::windowsGrowWhileMembersAreSmall()
{
    UstarWindow window;
    const auto moved = [&window](qint64 position) {
        const qint64 byteCount = window.moveTo(position);
        window.setCount(byteCount);
        return byteCount;
    };
    // The end of each is the end of a page.
    QCOMPARE(moved(0), qint64(4096));
    QVERIFY(window.holdsBlock(0) && window.holdsBlock(3584) && !window.holdsBlock(4096));
    QVERIFY(!window.holdsBlock(3585));
    QCOMPARE(moved(4096), qint64(8192));
    QVERIFY(window.holdsBlock(4096) && !window.holdsBlock(4095) && !window.holdsBlock(12288));
    QCOMPARE(moved(12288 + 512), qint64(16384 - 512));
    QCOMPARE(moved(28672), qint64(32768));
    QCOMPARE(moved(61440 + 4095), qint64(65536 - 4095));
    QCOMPARE(moved(126976), qint64(65536));
    // Behind a large member, and back.
    QCOMPARE(moved(126976 + 65536 + 4096), qint64(4096));
    QCOMPARE(moved(126976 + 65536 + 8192), qint64(8192));
    QCOMPARE(moved(1024), qint64(3072));
    // Back by less than a page, as to a block that the last read did not have whole.
    QCOMPARE(moved(3584), qint64(512));
    QCOMPARE(moved(1024), qint64(3072));
    // Nothing was read.
    window.setCount(0);
    QVERIFY(!window.holdsBlock(1024));
    QCOMPARE(moved(1024), qint64(3072));
}

void tst_tar_twins::sizes()
{
    std::mt19937 random(20261121);
    const QByteArray digits = "0123456701234567012345670123456789 +-x\t\xB0";
    int numbers = 0;
    for (int i = 0; i < 200000; ++i) {
        QByteArray block(blockSize, '\0');
        const auto last = random() % 16 == 0 ? digits.size() : 32;
        for (int k = 0, length = random() % 4 == 0 ? int(random() % 24) : 11; k < length; ++k)
            block[tar::field::size.offset + k] = digits[int(random() % unsigned(last))];
        if (random() % 8 == 0)
            block[tar::field::size.offset + int(random() % 12)] = char(random());
        const qint64 expected = sizeOf(block);
        QCOMPARE(blockOf(block).size().value_or(-1), expected);
        numbers += expected >= 0 ? 1 : 0;
    }
    QVERIFY2(numbers > 50000 && numbers < 190000, QByteArray::number(numbers).constData());
}

void tst_tar_twins::namesAgainstALinearSearch()
{
    std::mt19937 random(20261121);
    for (const unsigned different : {1U, 2U, 10U, 300U, 100000U}) {
        QList<tar::Member> members;
        for (int i = 0; i < 500; ++i)
            members.append(
                {QByteArray::number(uint(random() % different), 36) + QByteArray(int(random() % 3), '/')});
        CTar archive;
        QVERIFY(archive.loadFile(written(tar::archive(members))));
        const QStringList names = archive.names();
        for (unsigned i = 0; i < 600; ++i) {
            const QString name = QString::number(i, 36);
            QCOMPARE(archive.index(name), names.indexOf(name));
        }
        for (const QString &name : names)
            QCOMPARE(archive.index(name), names.indexOf(name));
    }
}

void tst_tar_twins::namesThatNoHeaderHolds()
{
    QByteArray longest = tar::header({"axis"});
    longest.replace(0, 124, QByteArray(124, 'n'));
    CTar archive;
    QVERIFY(archive.loadFile(written(tar::archive({{"axis"}, {"\xFC"}}).prepend(longest))));
    QCOMPARE(archive.index(QStringLiteral("axis")), 1);
    QCOMPARE(archive.index(QString(QChar(0xFC))), 2);
    QCOMPARE(archive.index(QString(124, QLatin1Char('n')) + QStringLiteral("00000000000")), 0);
    QCOMPARE(archive.index(QString()), -1);
    // The same low bytes.
    QCOMPARE(archive.index(QString(QChar(0x1FC))), -1);
    QCOMPARE(archive.index(QStringLiteral("axi") + QChar(0x173)), -1);
    // An end that is no end.
    QCOMPARE(archive.index(QStringLiteral("axis") + QChar(0)), -1);
    for (const int length : {123, 511, 512, 513, 100000})
        QCOMPARE(archive.index(QString(length, QLatin1Char('n'))), -1);
}

void tst_tar_twins::namesThatComeLater()
{
    QList<tar::Member> members;
    for (int i = 0; i < 300; ++i)
        members.append({QByteArray::number(i % 200)});
    CTar archive;
    QVERIFY(!archive.loadFile(written(QByteArray())));
    written(tar::archive(members));
    qint64 position = 0;
    bool end = false;
    for (int i = 0; i < 300; ++i) {
        QCOMPARE(archive.index(QString::number(i)), -1);
        QVERIFY(archive.readFileHeader(position, end));
        QCOMPARE(archive.index(QString::number(i % 200)), i % 200);
        QCOMPARE(archive.names().size(), i + 1);
    }
    for (int i = 0; i < 200; ++i)
        QCOMPARE(archive.index(QString::number(i)), i);
}

void tst_tar_twins::recordsAreTheSameWheneverTheyAreMade()
{
    CTar archive;
    QVERIFY(!archive.loadFile(written(tar::members(threeFiles()))));
    const CTarFileInfo expected = record(1, "second", "", 513, 1024);
    QCOMPARE(archive.info(1), expected);
    const QStringList three = archive.names();
    QCOMPARE(archive.infos().at(1), expected);
    QCOMPARE(archive.info(1), expected);
    qint64 position = 0;
    bool end = false;
    QVERIFY(archive.readFileHeader(position, end));
    QCOMPARE(archive.info(3), archive.info(0));
    QCOMPARE(archive.info(4), CTarFileInfo());
    QCOMPARE(archive.infos().size(), 4);
    QCOMPARE(archive.infos().at(3).name, archive.names().at(3));
    // A list that was handed out stays as it was.
    QCOMPARE(three.size(), 3);
}

// A resource of the program has no handle to read it by: it is read by QFile.
void tst_tar_twins::archiveThatTheSystemCannotRead()
{
    QFile resource(QStringLiteral(":/bundle.tar"));
    QVERIFY(resource.open(QIODevice::ReadOnly));
    const QByteArray bytes = resource.readAll();
    written(bytes);
    const Reading expected = readPlainly(path("archive.tar"));
    CTar archive;
    QVERIFY(archive.loadFile(QStringLiteral(":/bundle.tar")));
    QVERIFY(archive.count() >= 2);
    QVERIFY(answersLike(expected, archive, bytes));
}

// The vectors of the paper's authors: the bytes 0, 1, 2 ... as the key and as the text.
void tst_tar_twins::publishedHashes()
{
    const SipHash hash({0x0706050403020100, 0x0F0E0D0C0B0A0908});
    char text[63];
    for (int i = 0; i < 63; ++i)
        text[i] = char(i);
    const auto of = [&](std::size_t length) { return hash.hash(std::string_view(text, length)); };
    QCOMPARE(of(0), quint64(0x726FDB47DD0E0E31));
    QCOMPARE(of(1), quint64(0x74F839C593DC67FD));
    QCOMPARE(of(7), quint64(0xAB0200F58B01D137));
    QCOMPARE(of(8), quint64(0x93F5F5799A932462));
    QCOMPARE(of(15), quint64(0xA129CA6149BE45E5));
    // Two of them are keyed apart.
    QVERIFY(SipHash().hash("axis") != SipHash().hash("axis"));
}

QTEST_GUILESS_MAIN(tst_tar_twins)
#include "tst_tar_twins.moc"
