// SPDX-License-Identifier: MIT
#include "InventoryBytes.h"

#include <InventoryCsv.h>
#include <InventoryFile.h>
#include <InventoryForm.h>
#include <InventoryText.h>

#include <AllocationCounter.h>
#include <LoggedTest.h>

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <random>

using j6tool::Error;
using j6tool::inventoryContents;
using j6tool::Output;
using j6tool::parseInventory;
using j6tool::readInventory;
using j6tool::Result;
using j6tool::writeInventory;

Q_DECLARE_METATYPE(QHostAddress)

namespace Bytes = InventoryBytes;

namespace {

const QString fileName = QStringLiteral("plant.inventory");

QByteArray contentsOf(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(cannot be read)");
}

QString errorOf(const QByteArray &contents)
{
    const Result<CDeviceList> list = parseInventory(contents, fileName);
    return list ? QStringLiteral("none") : list.error().text;
}

// What a stream of the stored form gives, whether or not it is one whole inventory.
CDeviceList streamedFrom(const QByteArray &contents)
{
    QDataStream stream(contents);
    CDeviceList list;
    stream >> list;
    return list;
}

std::optional<Error> nothingElse()
{
    return std::nullopt;
}

// The heap that reading may take: a parameter set of 6 bytes costs some 90 in its map, and a file is written
// once more to be compared. An error, which a short file can cause, too, is a text.
bool isAffordable(std::size_t allocated, int size)
{
    constexpr std::size_t bytesPerByte = 24;
    constexpr std::size_t errorTexts = 4096;
    return allocated <= bytesPerByte * static_cast<std::size_t>(size) + errorTexts;
}

void print(const CDeviceList &list)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    Output output(buffer);
    writeInventoryTable(output, list, nullptr);
    writeInventoryJson(output, list, nullptr);
    output.flush();
}

struct Reading
{
    bool isInventory;
    bool isSound; // what was read is what would be written, and it took no more memory than it may
};

Reading readAndUse(const QByteArray &contents, bool alsoPrint)
{
    const AllocationCounter counter;
    const Result<CDeviceList> list = parseInventory(contents, fileName);
    const bool isAfforded = isAffordable(counter.bytes(), contents.size());
    if (list && alsoPrint)
        print(*list);
    return {bool(list), isAfforded && (!list || inventoryContents(*list) == contents)};
}

class Corrupter
{
public:
    QByteArray operator()(QByteArray contents)
    {
        const int position = upTo(contents.size());
        const int kind = upTo(10);
        if (kind < 6)
            contents[position] = char(contents.at(position) ^ (1 << upTo(8)));
        else if (kind < 8)
            contents.replace(position, 4, counts[upTo(counts.size())]);
        else if (kind < 9)
            contents.remove(position, upTo(16) + 1);
        else
            contents.insert(position, contents.mid(upTo(contents.size()), upTo(64)));
        return contents;
    }

private:
    int upTo(int limit) { return int(mRandom() % unsigned(limit)); }

    const QVector<QByteArray> counts = {Bytes::bytes("ffffffff"), Bytes::bytes("fffffffe"),
                                        Bytes::bytes("7ffffffe"), Bytes::bytes("00200000"),
                                        Bytes::bytes("00000000"), Bytes::bytes("00000001")};
    std::mt19937 mRandom{20240711};
};

} // namespace

class tst_inventory_file : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void readsAndWritesTheGoldenBytes();
    void readsEveryKindOfAddress_data();
    void readsEveryKindOfAddress();
    void readsUnusualRecords();
    void refusesWhatIsNoWholeInventory_data();
    void refusesWhatIsNoWholeInventory();
    void refusesEveryTruncation_data();
    void refusesEveryTruncation();
    void survivesRandomCorruptions_data();
    void survivesRandomCorruptions();
    void survivesHugeLengthsAtEveryPlace_data();
    void survivesHugeLengthsAtEveryPlace();
    void readsManySmallDevicesInBoundedMemory();
    void refusesMoreDevicesThanTheLimit();
    void refusesFilesItCannotRead();
    void refusesAFileAboveTheLimit();
    void replacesAFileInOneStep();
    void keepsTheFileWhenTheLastStepIsRefused();
    void writesNoListThatItWouldNotRead();
};

void tst_inventory_file::readsAndWritesTheGoldenBytes()
{
    const Result<CDeviceList> list = parseInventory(Bytes::whole(), fileName);
    QVERIFY2(list, list ? "" : qPrintable(list.error().text));
    QCOMPARE(list->listName(), QStringLiteral("Plant"));
    QCOMPARE(int(list->sourceType()), 3);
    QCOMPARE(list->sourceAddress().toString(), QStringLiteral("fe80::1%eth1"));
    QCOMPARE(list->sourceValue1(), 17);
    QCOMPARE(list->sourceValue2(), -2);
    QCOMPARE(list->keys(), QList<unsigned int>{4});

    const CDeviceItem device = list->device(4);
    QCOMPARE(device.mIdentifier, QStringLiteral("SN"));
    QCOMPARE(int(device.mHostAddrType), 1);
    QCOMPARE(device.mHostAddress, cDefaultDeviceAddress);
    QCOMPARE(int(device.mPort), 5000);
    QVERIFY(device.mFlag1);
    QVERIFY(!device.mFlag2);
    QCOMPARE(device.mName, QStringLiteral("\u00C4"));
    QVERIFY(device.mText1.isNull());
    QCOMPARE(device.mValue1, -1);
    QVERIFY(device.mText2.isEmpty() && !device.mText2.isNull());
    QCOMPARE(device.mValue2, 7);
    QCOMPARE(device.userlevelData(), Bytes::rights());
    QCOMPARE(device.mSubDevices.keys(), QList<unsigned char>{3});
    QCOMPARE(device.mSubDevices[3].name(), QStringLiteral("X"));
    const QMap<unsigned short, QString> sets = {{0, QStringLiteral("A")}, {5, QStringLiteral("B")}};
    QCOMPARE(device.availableParamSetNames(3), sets);
    QCOMPARE(int(device.activeParamSet(3)), 5);
    QVERIFY((device.paramVersion(3) == NTypes::sVersion_t{119, 2, 3}));

    QCOMPARE(inventoryContents(*list), Bytes::whole());
    QCOMPARE(inventoryContents(CDeviceList()),
             Bytes::bytes("ffffffff 00000000 00000000 ff ffffffff 00000000"));
}

void tst_inventory_file::readsEveryKindOfAddress_data()
{
    QTest::addColumn<QByteArray>("address");
    QTest::addColumn<QHostAddress>("expected");

    QTest::newRow("null") << Bytes::bytes("ff") << QHostAddress();
    QTest::newRow("IPv4") << Bytes::bytes("00 0a000001") << QHostAddress(quint32(0x0A000001));
    QTest::newRow("IPv6") << Bytes::bytes("01 00000000000000000000000000000001 ffffffff")
                          << QHostAddress(QHostAddress::LocalHostIPv6);
    QTest::newRow("any") << Bytes::bytes("02") << QHostAddress(QHostAddress::Any);
}

void tst_inventory_file::readsEveryKindOfAddress()
{
    QFETCH(QByteArray, address);
    QFETCH(QHostAddress, expected);
    const Result<CDeviceList> list = parseInventory(
        Bytes::head() + Bytes::count(0) + address + Bytes::bytes("00000000 00000000"), fileName);
    QVERIFY2(list, list ? "" : qPrintable(list.error().text));
    QCOMPARE(list->sourceAddress().protocol(), expected.protocol());
    QCOMPARE(list->sourceAddress(), expected);
}

// What the setters can make, however odd.
void tst_inventory_file::readsUnusualRecords()
{
    CDeviceItem device;
    device.mHostAddrType = CDeviceItem::EHostAddrType(-2147483647 - 1);
    device.addSubDevice(CSubDeviceItem(0, QString(QChar(0xD800))), 255);
    device.mSubDevices.insert(7, CSubDeviceItem(8, QStringLiteral("other number")));
    CSubDeviceItem full(254, QString());
    full.setAvailableParamSets(~0ULL);
    full.setActiveParamSet(63);
    device.setSubDevice(full);
    CDeviceList list(QString(QChar(0)), CDeviceList::ESourceType(2147483647));
    list.addDevice(0, device);
    list.addDevice(4294967295U, device);
    const Result<CDeviceList> read = parseInventory(inventoryContents(list), fileName);
    QVERIFY2(read, read ? "" : qPrintable(read.error().text));
    QVERIFY(*read == list);
}

void tst_inventory_file::refusesWhatIsNoWholeInventory_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QString>("error");

    const auto row = [](const char *name, const QByteArray &contents, const char *error) {
        QTest::newRow(name) << contents
                            << QStringLiteral("plant.inventory: is no whole inventory: at byte ")
                                   + QString::fromUtf8(error);
    };
    const QByteArray head = Bytes::head();
    const QByteArray tail = Bytes::tail();
    const QByteArray one = Bytes::count(1);
    const QByteArray two = Bytes::count(2);
    const QByteArray none = Bytes::count(0);
    const QByteArray device = Bytes::device4();
    const QByteArray inDevice = head + one + Bytes::bytes("00000004") + device;
    const QByteArray inSubDevice = inDevice + one + Bytes::subDevice3();

    row("empty file", QByteArray(), "0: the file ends where 4 more bytes belong");
    row("text file", "row,key,name\n", "0: a text of 1919907628 bytes where 9 are left");
    row("trailing byte", Bytes::whole() + '\0', "180: the inventory ends, and 1 more bytes follow");
    row("twice", Bytes::whole() + Bytes::whole(), "180: the inventory ends, and 180 more bytes follow");
    row("odd text", Bytes::bytes("00000003 0050 0050 0050"), "0: a text of 3 bytes, which is odd");
    row("text a unit too long", Bytes::bytes("00000004 0050"), "0: a text of 4 bytes where 2 are left");
    row("largest even text", Bytes::bytes("fffffffe 0050"), "0: a text of 4294967294 bytes where 2 are left");
    row("largest count", head + Bytes::bytes("ffffffff") + tail,
        "18: a count of 4294967295 (device) where 37 bytes are left");
    row("one device too many", head + two + Bytes::bytes("00000004") + device + none + tail,
        "18: a count of 2 (device) where 124 bytes are left");
    row("too few devices", head + none + Bytes::bytes("00000004") + device + none + tail,
        "35: the inventory ends, and 111 more bytes follow");
    row("repeated device", head + two + Bytes::smallestDevice(4) + Bytes::smallestDevice(4) + tail,
        "99: device 4 for the second time");
    row("ascending devices", head + two + Bytes::smallestDevice(4) + Bytes::smallestDevice(5) + tail,
        "99: device 5 behind 4: keys descend");
    row("other key in the device", head + one + Bytes::bytes("00000005") + device + none + tail,
        "47: device 5 gives its key as 4");
    row("unknown protocol", head + none + Bytes::bytes("03 00000000 00000000"),
        "22: an address of the unknown protocol 3");
    row("negative protocol", head + none + Bytes::bytes("fe 00000000 00000000"),
        "22: an address of the unknown protocol -2");
    row("scope too long", head + none + Bytes::bytes("01 fe800000000000000000000000000001 00000010 00650074"),
        "39: a text of 16 bytes where 4 are left");
    row("flag of 2", Bytes::whole().replace(45, 1, Bytes::bytes("02")),
        "45: another byte than an inventory has there");
    row("largest count of sub-devices", inDevice + Bytes::bytes("ffffffff") + tail,
        "105: a count of 4294967295 (sub-device) where 37 bytes are left");
    row("repeated sub-device",
        inDevice + two + Bytes::subDevice3() + none + Bytes::subDeviceEnd() + Bytes::subDevice3() + none
            + Bytes::subDeviceEnd() + tail,
        "127: sub-device 3 for the second time");
    row("largest count of sets", inSubDevice + Bytes::bytes("ffffffff") + tail,
        "117: a count of 4294967295 (parameter set) where 37 bytes are left");
    row("more sets than there can be",
        inSubDevice + Bytes::count(65) + Bytes::bytes("0000 ffffffff").repeated(65) + tail,
        "117: a count of 65 (parameter set), above 64");
    row("repeated set", inSubDevice + two + Bytes::set5() + Bytes::set5() + Bytes::subDeviceEnd() + tail,
        "129: parameter set 5 for the second time");
    row("ascending sets", inSubDevice + two + Bytes::set0() + Bytes::set5() + Bytes::subDeviceEnd() + tail,
        "129: parameter set 5 behind 0: keys descend");
    row("set above 63", inSubDevice + one + Bytes::bytes("0040 ffffffff") + Bytes::subDeviceEnd() + tail,
        "121: parameter set 64, above 63");
    row("active set above 63", inSubDevice + none + Bytes::bytes("0040 0077 02 03") + tail,
        "121: the active parameter set 64, outside -1 to 63");
    row("active set below -1", inSubDevice + none + Bytes::bytes("fffe 0077 02 03") + tail,
        "121: the active parameter set -2, outside -1 to 63");
    QByteArray littleEndian;
    QDataStream stream(&littleEndian, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream << streamedFrom(Bytes::whole());
    row("little-endian", littleEndian, "0: a text of 167772160 bytes where 176 are left");
}

void tst_inventory_file::refusesWhatIsNoWholeInventory()
{
    QFETCH(QByteArray, contents);
    QTEST(errorOf(contents), "error");
}

void tst_inventory_file::refusesEveryTruncation_data()
{
    QTest::addColumn<QByteArray>("whole");

    QTest::newRow("golden bytes") << Bytes::whole();
    const Result<CDeviceList> plant = j6tool::readInventoryCsv(QStringLiteral(J6TOOL_EXAMPLES "/plant.csv"));
    QVERIFY2(plant, plant ? "" : qPrintable(plant.error().text));
    QTest::newRow("plant") << inventoryContents(*plant);
}

void tst_inventory_file::refusesEveryTruncation()
{
    QFETCH(QByteArray, whole);
    for (int size = 0; size < whole.size(); ++size) {
        const QByteArray part = whole.left(size);
        const AllocationCounter counter;
        const Result<CDeviceList> list = parseInventory(part, fileName);
        QVERIFY(isAffordable(counter.bytes(), size));
        QVERIFY2(!list, qPrintable(QString::number(size)));
        QVERIFY(
            list.error().text.startsWith(QLatin1String("plant.inventory: is no whole inventory: at byte ")));
    }
    QCOMPARE(errorOf(whole), QStringLiteral("none"));
}

void tst_inventory_file::survivesRandomCorruptions_data()
{
    QTest::addColumn<QByteArray>("whole");
    QTest::addColumn<int>("count");

    QTest::newRow("golden bytes") << Bytes::whole() << 100000;
    const Result<CDeviceList> extension =
        j6tool::readInventoryCsv(QStringLiteral(J6TOOL_EXAMPLES "/plant-extension.csv"));
    QVERIFY2(extension, extension ? "" : qPrintable(extension.error().text));
    QTest::newRow("plant extension") << inventoryContents(*extension) << 10000;
}

void tst_inventory_file::survivesRandomCorruptions()
{
    QFETCH(QByteArray, whole);
    QFETCH(int, count);
    Corrupter corrupt;
    int accepted = 0;
    for (int i = 0; i < count; ++i) {
        const QByteArray contents = corrupt(whole);
        const Reading reading = readAndUse(contents, i % 8 == 0);
        if (!reading.isSound)
            QFAIL(contents.toHex().constData());
        accepted += reading.isInventory ? 1 : 0;
    }
    // The inputs were neither all hopeless nor all harmless.
    QVERIFY2(accepted > count / 20 && accepted < count * 19 / 20, qPrintable(QString::number(accepted)));
}

void tst_inventory_file::survivesHugeLengthsAtEveryPlace_data()
{
    QTest::addColumn<QByteArray>("length");
    for (const char *length : {"ffffffff", "fffffffe", "80000000", "7ffffffe", "00200000", "00010000"})
        QTest::newRow(length) << Bytes::bytes(length);
}

void tst_inventory_file::survivesHugeLengthsAtEveryPlace()
{
    QFETCH(QByteArray, length);
    const QByteArray whole = Bytes::whole();
    for (int position = 0; position + length.size() <= whole.size(); ++position) {
        QByteArray contents = whole;
        contents.replace(position, length.size(), length);
        QVERIFY2(readAndUse(contents, true).isSound, contents.toHex().constData());
    }
}

void tst_inventory_file::readsManySmallDevicesInBoundedMemory()
{
    constexpr int deviceCount = 20000;
    QByteArray contents = Bytes::head() + Bytes::bytes("00004e20");
    for (quint32 key = deviceCount; key > 0; --key)
        contents += Bytes::smallestDevice(key);
    contents += Bytes::tail();
    const AllocationCounter counter;
    const Result<CDeviceList> list = parseInventory(contents, fileName);
    const std::size_t allocated = counter.bytes();
    QVERIFY2(list, list ? "" : qPrintable(list.error().text));
    QCOMPARE(list->size(), deviceCount);
    QVERIFY2(isAffordable(allocated, contents.size()), qPrintable(QString::number(allocated)));
    if (AllocationCounter::isAvailable())
        QVERIFY(allocated > std::size_t(contents.size()));
}

void tst_inventory_file::refusesMoreDevicesThanTheLimit()
{
    static_assert(j6tool::maxInventoryDevices == 250000, "the count below is one more");
    const QByteArray contents = Bytes::head() + Bytes::bytes("0003d091")
                                + Bytes::smallestDevice(0).repeated(j6tool::maxInventoryDevices + 1);
    QCOMPARE(errorOf(contents),
             QStringLiteral("plant.inventory: is no whole inventory: at byte 18: a count of "
                            "250001 (device), above 250000"));
}

void tst_inventory_file::refusesFilesItCannotRead()
{
    const QTemporaryDir dir;
    const auto errorOfFile = [](const QString &name) {
        const Result<CDeviceList> list = readInventory(name);
        return list ? QStringLiteral("none") : list.error().text;
    };
    QCOMPARE(errorOfFile(dir.path()), dir.path() + QStringLiteral(": is a directory"));
    const QString missing = dir.filePath(fileName);
    QCOMPARE(errorOfFile(missing), missing + QStringLiteral(": no such file"));
}

void tst_inventory_file::refusesAFileAboveTheLimit()
{
    const QTemporaryDir dir;
    QFile file(dir.filePath(fileName));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.resize(j6tool::maxInventoryFileSize + 1));
    const Result<CDeviceList> list = readInventory(file.fileName());
    QVERIFY(!list);
    QCOMPARE(list.error().text, file.fileName() + QStringLiteral(": is larger than 67108864 bytes"));
}

void tst_inventory_file::replacesAFileInOneStep()
{
    const QTemporaryDir dir;
    const QString name = dir.filePath(fileName);
    QVERIFY(!writeInventory(CDeviceList(), name, nothingElse));
    const Result<CDeviceList> list = parseInventory(Bytes::whole(), fileName);
    QVERIFY(list);
    QByteArray before;
    const auto look = [&] {
        before = contentsOf(name);
        return nothingElse();
    };
    QVERIFY(!writeInventory(*list, name, look));
    QCOMPARE(before, inventoryContents(CDeviceList()));
    QCOMPARE(contentsOf(name), Bytes::whole());
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList{fileName});
    const Result<CDeviceList> read = readInventory(name);
    QVERIFY(read);
    QVERIFY(*read == *list);
}

void tst_inventory_file::keepsTheFileWhenTheLastStepIsRefused()
{
    const QTemporaryDir dir;
    const QString name = dir.filePath(fileName);
    QVERIFY(!writeInventory(CDeviceList(), name, nothingElse));
    const auto refuse = [] { return std::optional<Error>(Error{QStringLiteral("no")}); };
    const std::optional<Error> error = writeInventory(streamedFrom(Bytes::whole()), name, refuse);
    QVERIFY(error);
    QCOMPARE(error->text, QStringLiteral("no"));
    QCOMPARE(contentsOf(name), inventoryContents(CDeviceList()));
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList{fileName});
}

void tst_inventory_file::writesNoListThatItWouldNotRead()
{
    const QTemporaryDir dir;
    const QString name = dir.filePath(fileName);
    // Its active set, 64, no setter accepts; a stream does.
    const CDeviceList odd = streamedFrom(Bytes::head() + Bytes::count(1) + Bytes::bytes("00000004")
                                         + Bytes::device4() + Bytes::count(1) + Bytes::subDevice3()
                                         + Bytes::count(0) + Bytes::bytes("0040 0077 02 03") + Bytes::tail());
    const std::optional<Error> oddError = writeInventory(odd, name, nothingElse);
    QVERIFY(oddError);
    QCOMPARE(oddError->text, name
                                 + QStringLiteral(": would be no whole inventory: at byte 121: the active "
                                                  "parameter set 64, outside -1 to 63"));
    constexpr int units = j6tool::maxInventoryFileSize / 2;
    const CDeviceList large(QString(units, QLatin1Char('x')), CDeviceList::E_SOURCE_NONE);
    const std::optional<Error> largeError = writeInventory(large, name, nothingElse);
    QVERIFY(largeError);
    QCOMPARE(largeError->text, name + QStringLiteral(": would be larger than 67108864 bytes"));
    QVERIFY(!QFile::exists(name));
}

QTEST_GUILESS_MAIN(tst_inventory_file)
#include "tst_inventory_file.moc"
