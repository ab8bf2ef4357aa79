// SPDX-License-Identifier: MIT
#include "TarCases.h"

namespace {

// The header of a file "axis" of size 0, with the field's bytes replaced.
QByteArray headerWith(tar::Field field, const QByteArray &bytes)
{
    QByteArray block = tar::header({"axis"});
    tar::put(block, field, bytes);
    return block;
}

} // namespace

class tst_tar : public TarTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void isClosedFirst();
    void indexesTheMembers();
    void typeFlags();
    void endsAtTheFirstBlockOfZeros();
    void emptyArchive();
    void filesThatAreTooShort_data();
    void filesThatAreTooShort();
    void unreadableFileIsTooShort();
    void archiveWithoutItsEndFailsBehindTheLastMember();
    void magic_data();
    void magic();
    void sizeTexts_data();
    void sizeTexts();
    void failedSizeLeavesTheErrorText();
    void nameOfAHundredBytesRunsOnIntoTheMode();
    void linkNameWithoutEndRunsOnToTheEndOfTheBlock();
    void textsAreLatin1();
    void ignoredFieldsAreIgnored();
    void extendedHeadersAreMembersOfTheirOwn();
};

void tst_tar::initTestCase()
{
    QVERIFY(mDir.isValid());
}

void tst_tar::isClosedFirst()
{
    CTar archive;
    QCOMPARE(archive.error(), QString());
    QCOMPARE(archive.count(), 0);
    QVERIFY(archive.names().isEmpty());
    QVERIFY(archive.infos().isEmpty());
    QVERIFY(!archive.info(0).isValid());
    QCOMPARE(archive.index(QString()), -1);
    QByteArray data = "untouched";
    QVERIFY(!archive.file(0, data));
    QCOMPARE(archive.error(), nothingOpen());
    QVERIFY(!archive.file(QStringLiteral("axis"), data));
    QCOMPARE(archive.error(), noSuchName());
    QCOMPARE(data, QByteArray("untouched"));
}

void tst_tar::indexesTheMembers()
{
    CTar archive;
    QVERIFY(archive.loadFile(written(tar::archive({{"etc/", "", '5'},
                                                   {"etc/axis.csv", QByteArray(1000, 'a')},
                                                   {"etc/current", "", '2', "axis.csv"},
                                                   {"etc/same", "", '1', "etc/axis.csv"},
                                                   {"drive.bin", QByteArray(512, 'b'), '\0'}}))));
    QCOMPARE(archive.error(), QString());
    QCOMPARE(archive.count(), 5);
    const QList<CTarFileInfo> expected = {
        record(3, "etc/", "", 0, 0), record(1, "etc/axis.csv", "", 1000, 512),
        record(2, "etc/current", "axis.csv", 0, 2048), record(0, "etc/same", "etc/axis.csv", 0, 2560),
        record(1, "drive.bin", "", 512, 3072)};
    QCOMPARE(archive.infos(), expected);
    for (int i = 0; i < expected.size(); ++i) {
        QCOMPARE(archive.info(i), expected[i]);
        QCOMPARE(archive.names().at(i), expected[i].name);
        QCOMPARE(archive.index(expected[i].name), i);
    }
    QCOMPARE(archive.names().size(), 5);
}

void tst_tar::typeFlags()
{
    QList<tar::Member> members;
    for (int flag = 0; flag < 256; ++flag)
        members.append({QByteArray::number(flag), "", static_cast<char>(flag)});
    CTar archive;
    QVERIFY(archive.loadFile(written(tar::archive(members))));
    QCOMPARE(archive.count(), 256);
    for (int flag = 0; flag < 256; ++flag) {
        const int expected = flag == 0 || flag == '0' ? 1 : flag == '2' ? 2 : flag == '5' ? 3 : 0;
        QCOMPARE(archive.info(flag).type, expected);
        QCOMPARE(archive.info(flag).isValid(), expected != 0);
    }
}

void tst_tar::endsAtTheFirstBlockOfZeros()
{
    CTar archive;
    const QByteArray one = tar::members({{"axis", "data"}});
    QVERIFY(archive.loadFile(written(one + tar::zeroBlocks(1) + one + "no header")));
    QCOMPARE(archive.names(), QStringList{QStringLiteral("axis")});
    // All of the 512 bytes count.
    for (const int place : {0, 1, 300, 511}) {
        QByteArray block = tar::zeroBlocks(1);
        block[place] = 1;
        QVERIFY(!archive.loadFile(written(one + block + tar::zeroBlocks())));
        QCOMPARE(archive.error(), notATarArchive());
    }
    // A header that begins with NUL is a member without a name.
    QVERIFY(archive.loadFile(written(one + tar::members({{"", "nameless"}}) + tar::archive({{"behind"}}))));
    QCOMPARE(archive.names(), (QStringList{QStringLiteral("axis"), QString(), QStringLiteral("behind")}));
    QCOMPARE(archive.info(1), record(1, "", "", 8, 1024));
}

void tst_tar::emptyArchive()
{
    CTar archive;
    QVERIFY(archive.loadFile(written(tar::zeroBlocks(1))));
    QCOMPARE(archive.count(), 0);
    QCOMPARE(archive.error(), QString());
}

void tst_tar::filesThatAreTooShort_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("count");

    QTest::newRow("empty file") << QByteArray() << 0;
    QTest::newRow("one byte") << QByteArray("u") << 1;
    QTest::newRow("all but one byte of a header") << tar::header({"axis"}).left(511) << 511;
    QTest::newRow("all but one byte of the end") << tar::zeroBlocks(1).left(511) << 511;
    QTest::newRow("no archive at all") << QByteArray("This is not a tar archive.") << 26;
}

void tst_tar::filesThatAreTooShort()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, count);
    CTar archive;
    QVERIFY(!archive.loadFile(written(bytes)));
    QCOMPARE(archive.error(), tooShort(count));
    QCOMPARE(archive.count(), 0);
}

void tst_tar::unreadableFileIsTooShort()
{
#ifdef Q_OS_LINUX
    // The first page of a process is never mapped.
    CTar archive;
    QVERIFY(!archive.loadFile(QStringLiteral("/proc/self/mem")));
    QCOMPARE(archive.error(), tooShort(0));
    QCOMPARE(archive.count(), 0);
#else
    QSKIP("NOT TESTED: this system has no file that opens but cannot be read");
#endif
}

void tst_tar::archiveWithoutItsEndFailsBehindTheLastMember()
{
    CTar archive;
    QVERIFY(!archive.loadFile(written(tar::members(threeFiles()))));
    QCOMPARE(archive.error(), tooShort(0));
    QCOMPARE(archive.count(), 3);
    QByteArray data;
    QVERIFY(archive.file(2, data));
    QCOMPARE(data, QByteArray("the third"));
    // The padding of the last member may be missing, too.
    QVERIFY(!archive.loadFile(written(tar::header({"axis", "data"}) + "data")));
    QCOMPARE(archive.error(), tooShort(0));
    QVERIFY(archive.file(0, data));
    QCOMPARE(data, QByteArray("data"));
}

void tst_tar::magic_data()
{
    QTest::addColumn<QByteArray>("magic");
    QTest::addColumn<bool>("ok");

    QTest::newRow("ustar") << QByteArray("ustar\0"
                                         "00",
                                         8)
                           << true;
    QTest::newRow("GNU form") << QByteArray("ustar  \0", 8) << true;
    QTest::newRow("further characters") << QByteArray("ustar-like") << true;
    QTest::newRow("upper case") << QByteArray("USTAR\0", 6) << false;
    QTest::newRow("one letter in upper case") << QByteArray("ustaR\0", 6) << false;
    QTest::newRow("NUL inside") << QByteArray("ust\0ar", 6) << false;
    QTest::newRow("four letters") << QByteArray("usta\0\0", 6) << false;
    QTest::newRow("blank first") << QByteArray(" ustar", 6) << false;
    QTest::newRow("none, as in the seventh edition") << QByteArray(8, '\0') << false;
    QTest::newRow("place marker") << QByteArray("%1%2%3", 6) << false;
}

void tst_tar::magic()
{
    QFETCH(QByteArray, magic);
    QFETCH(bool, ok);
    CTar archive;
    QCOMPARE(archive.loadFile(written(headerWith(tar::field::magic, magic) + tar::zeroBlocks())), ok);
    QCOMPARE(archive.count(), ok ? 1 : 0);
    // The message has always named the number 512 instead of what was read.
    QCOMPARE(archive.error(), ok ? QString() : notATarArchive());
}

void tst_tar::sizeTexts_data()
{
    QTest::addColumn<QByteArray>("text"); // from the first byte of the size on, over what is behind it
    QTest::addColumn<qint64>("size");     // -1: no number

    const auto row = [](const char *name, const QByteArray &text, qint64 size) {
        QTest::newRow(name) << text << size;
    };
    const auto nul = [](const char *text) { return QByteArray(text) + '\0'; };
    row("eleven digits", nul("00000001750"), 1000);
    row("the largest of eleven digits", nul("77777777777"), (qint64(1) << 33) - 1);
    row("one digit", nul("7"), 7);
    row("NUL ends it",
        QByteArray("17\0"
                   "17",
                   5),
        15);
    row("blanks before", nul("     1750"), 1000);
    row("blanks behind", nul("1750    "), 1000);
    row("white space around", nul("\t\n\v\f\r 1750\t\n\v\f\r "), 1000);
    row("plus", nul("+1750"), 1000);
    row("no negative number", nul("-0"), 0);

    row("empty", nul(""), -1);
    row("blanks only", nul("           "), -1);
    row("negative", nul("-1"), -1);
    row("plus and minus", nul("+-1"), -1);
    row("sign alone", nul("+"), -1);
    row("blank behind the sign", nul("+ 1"), -1);
    row("eight", nul("00000000018"), -1);
    row("hexadecimal", nul("0x17"), -1);
    row("letters", nul("axis"), -1);
    row("letters behind", nul("17k"), -1);
    row("blank inside", nul("17 50"), -1);
    row("separators", nul("1,750"), -1);
    row("fraction", nul("17.0"), -1);
    row("no blank in ASCII",
        nul("\xA0"
            "1750"),
        -1);
    row("base 256", QByteArray::fromHex("800000000000000000000200"), -1);
    row("base 256 of digits", QByteArray::fromHex("853137353000000000000000"), -1);
    row("base 256, negative", QByteArray(12, '\xFF'), -1);

    // Without a NUL the text goes on with the time of modification.
    row("twelve digits run on into the time", QByteArray("000000000001") + nul("00000000017"),
        (qint64(1) << 33) + 15);
    row("twelve zeros run on into the time", QByteArray("000000000000") + nul("00000000017"), 15);
    row("twelve digits run on into too much", QByteArray("000000001750") + nul("14600000000"),
        qint64(01750) * (qint64(1) << 33) + 014600000000);
    row("blank that ends it runs on into the time", QByteArray("00000001750 ") + nul("14600000000"), -1);
    row("blanks that end time and size",
        QByteArray("00000001750 ") + QByteArray("14600000000 ") + nul("012345"), -1);
    row("runs on into nothing", QByteArray("000000001750") + nul("            "), 1000);
    row("2^63 - 1", nul("777777777777777777777"), std::numeric_limits<qint64>::max());
    row("2^63", nul("1000000000000000000000"), -1);
    row("2^64", nul("2000000000000000000000"), -1);
    row("-2^63", nul("-1000000000000000000000"), -1);
    row("many digits", QByteArray(24, '7') + nul("1"), -1);
    row("many zeros", QByteArray(31, '0') + nul("1"), 1);
}

void tst_tar::sizeTexts()
{
    QFETCH(QByteArray, text);
    QFETCH(qint64, size);
    CTar archive;
    qint64 position = 0;
    bool end = false;
    QVERIFY(archive.loadFile(written(tar::zeroBlocks(1))));
    QVERIFY(tar::write(path("archive.tar"), headerWith(tar::field::size, text)));
    QCOMPARE(archive.readFileHeader(position, end), size >= 0);
    QCOMPARE(archive.count(), size >= 0 ? 1 : 0);
    QCOMPARE(archive.info(0).size, std::max(size, qint64(0)));
    QCOMPARE(archive.error(), QString());
    QVERIFY(!end);
    QVERIFY(size >= 0 || position == 0);
}

void tst_tar::failedSizeLeavesTheErrorText()
{
    const QByteArray bad = headerWith(tar::field::size, QByteArray("none\0", 5));
    CTar archive;
    QVERIFY(!archive.loadFile(written(tar::members(threeFiles()) + bad + tar::archive(threeFiles()))));
    QCOMPARE(archive.error(), QString());
    QCOMPARE(archive.count(), 3);
    QVERIFY(!archive.loadFile(written(QByteArray())));
    QVERIFY(!archive.loadFile(written(bad)));
    QCOMPARE(archive.error(), tooShort(0));
    QCOMPARE(archive.count(), 0);
}

void tst_tar::nameOfAHundredBytesRunsOnIntoTheMode()
{
    const QByteArray name = "a/" + QByteArray(98, 'n');
    CTar archive;
    QVERIFY(archive.loadFile(written(tar::archive({{name.left(99)}, {name}}))));
    QCOMPARE(archive.names().at(0), QString::fromLatin1(name.left(99)));
    QCOMPARE(archive.names().at(1), QString::fromLatin1(name + "0000644"));
    // Up to the first NUL, wherever that is.
    QByteArray block = tar::header({name});
    const QByteArray numbers = "00006440001750000175000000000000";
    tar::put(block, tar::field::mode, numbers);
    QVERIFY(archive.loadFile(written(block + tar::zeroBlocks())));
    QCOMPARE(archive.names().at(0), QString::fromLatin1(name + numbers + "000"));
}

void tst_tar::linkNameWithoutEndRunsOnToTheEndOfTheBlock()
{
    QByteArray block = tar::header({"link", "", '2'});
    tar::put(block, tar::field::linkName, QByteArray(512 - 157, 'l'));
    tar::put(block, tar::field::magic, "ustar");
    QByteArray text(100, 'l');
    text += "ustar" + QByteArray(512 - 157 - 105, 'l');
    CTar archive;
    QVERIFY(archive.loadFile(written(block + tar::archive({{"behind"}}))));
    QCOMPARE(archive.info(0).linkName, QString::fromLatin1(text));
    QCOMPARE(archive.info(0).linkName.size(), 355);
    QCOMPARE(archive.info(1).name, QStringLiteral("behind"));
}

void tst_tar::textsAreLatin1()
{
    QByteArray all;
    for (int byte = 1; byte < 256; ++byte)
        all += static_cast<char>(byte);
    CTar archive;
    QVERIFY(archive.loadFile(written(tar::archive({{all.left(99), "", '2', all.mid(99, 99)},
                                                   {all.mid(99, 99)},
                                                   {all.mid(198), "", '2', "\xC3\xA4"},
                                                   {""}}))));
    QCOMPARE(archive.count(), 4);
    for (int i = 0; i < 99; ++i) {
        QCOMPARE(archive.names().at(0).at(i), QChar(i + 1));
        QCOMPARE(archive.names().at(1).at(i), QChar(i + 100));
        QCOMPARE(archive.info(0).linkName.at(i), QChar(i + 100));
    }
    for (int i = 0; i < 57; ++i)
        QCOMPARE(archive.names().at(2).at(i), QChar(i + 199));
    QCOMPARE(archive.info(2).linkName, QStringLiteral("\u00C3\u00A4"));
    QCOMPARE(archive.info(3).name, QString());
    QCOMPARE(archive.index(QString()), 3);
}

void tst_tar::ignoredFieldsAreIgnored()
{
    const tar::Field fields[] = {tar::field::mode,
                                 tar::field::uid,
                                 tar::field::gid,
                                 tar::field::mtime,
                                 tar::field::checksum,
                                 tar::field::version,
                                 tar::field::userName,
                                 tar::field::groupName,
                                 {329, 8},
                                 {337, 8},
                                 tar::field::prefix,
                                 {500, 12}};
    const CTarFileInfo expected = record(1, "axis", "", 0, 0);
    for (const tar::Field field : fields) {
        for (const char byte : {'\0', 'x', '\xFF'}) {
            CTar archive;
            const QByteArray block = headerWith(field, QByteArray(field.width, byte));
            QVERIFY(archive.loadFile(written(block + tar::zeroBlocks())));
            QCOMPARE(archive.infos(), QList<CTarFileInfo>{expected});
        }
    }
}

void tst_tar::extendedHeadersAreMembersOfTheirOwn()
{
    const QByteArray longName(150, 'n');
    const QByteArray pax = "160 path=" + longName + "\n";
    CTar archive;
    QVERIFY(archive.loadFile(written(tar::archive({{"././@LongLink", longName + '\0', 'L'},
                                                   {longName.left(99), "1"},
                                                   {"PaxHeaders/x", pax, 'x'},
                                                   {"short", "22"}}))));
    QCOMPARE(archive.count(), 4);
    QCOMPARE(archive.info(0), record(0, "././@LongLink", "", 151, 0));
    QCOMPARE(archive.info(1).name, QString::fromLatin1(longName.left(99)));
    QCOMPARE(archive.info(2), record(0, "PaxHeaders/x", "", pax.size(), 2048));
    QCOMPARE(archive.info(3).name, QStringLiteral("short"));
    QByteArray data;
    QVERIFY(archive.file(2, data));
    QCOMPARE(data, pax);
}

QTEST_GUILESS_MAIN(tst_tar)
#include "tst_tar.moc"
