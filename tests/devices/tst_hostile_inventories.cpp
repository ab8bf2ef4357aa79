// SPDX-License-Identifier: MIT
// Streams that are no inventories: cut off, altered, or made to do harm.
#include "DeviceCases.h"

#include <AllocationCounter.h>

#include <random>

Q_DECLARE_METATYPE(QDataStream::ByteOrder)
Q_DECLARE_METATYPE(QDataStream::Status)

namespace {

// Qt reads a text in blocks of 2^20 units, and makes room for a block, with a reserve of as much again,
// before it looks whether the stream holds that many.
constexpr std::size_t textBlock = std::size_t{4} << 20;
// Per byte of the stream; a small map entry costs some 8 times its bytes, and buffers grow by copying.
constexpr std::size_t bytesPerByte = 32;

bool isAffordable(std::size_t allocated, int inputSize)
{
    return allocated <= textBlock + bytesPerByte * static_cast<std::size_t>(inputSize + 64);
}

// Two devices, two sub-devices, three kinds of address. Most texts are null: a text whose length is altered
// mostly costs a whole block, which hugeTexts() tries at every place.
CDeviceList smallInventory()
{
    CDeviceList list(QStringLiteral("Plant"), sourceType(3));
    CDeviceItem device(QString(), addressType(1), cDefaultDeviceAddress, 5000, QStringLiteral("A"));
    device.setSubDevice(CSubDeviceItem(0, QString()));
    device.addSubDevice(subDeviceWithSets({{2, QString()}, {65535, QString()}}, 2), 5);
    device.setUserlevelData(rightsBytes(0));
    list.addDevice(4, device);
    device = CDeviceItem(QString(), addressType(2), QHostAddress(QStringLiteral("fe80::1")), 80, QString());
    list.addDevice(0xFFFFFFFF, device);
    return list;
}

// Uses all that was read, as a tool does that prints, edits and merges it.
void use(CDeviceList &list)
{
    static NameTable noNames;
    const QList<unsigned int> keys = list.keys();
    for (const unsigned int key : keys) {
        CDeviceItem device = list.device(key);
        const QList<unsigned char> numbers = device.mSubDevices.keys();
        for (const unsigned char number : numbers) {
            device.setAvailableParamSets(device.availableParamSets(number) ^ 0x1'0000'0001U, number);
            device.setAvailableParamSetNames(noNames.data(), number);
            device.setActiveParamSet(static_cast<short>(device.activeParamSet(number) + 1), number);
        }
        list.addDevice(key + 1, device);
    }
    CDeviceList united;
    united.addDevice(5, CDeviceItem());
    united.unite(list);
    list.clear();
}

struct Reading
{
    QDataStream::Status status;
    std::size_t allocated;
    bool survivesRoundTrip; // what was read without a fault is the same when it is written and read again
};

Reading readAndUse(const QByteArray &bytes, QDataStream::ByteOrder order)
{
    CDeviceList list;
    const AllocationCounter counter;
    Reading reading{readInto(list, bytes, QDataStream::Qt_5_15, order), counter.bytes(), true};
    if (reading.status == QDataStream::Ok) {
        CDeviceList again;
        reading.survivesRoundTrip = readInto(again, streamed(list)) == QDataStream::Ok && again == list;
    }
    use(list);
    return reading;
}

class Corrupter
{
public:
    QByteArray operator()(QByteArray bytes)
    {
        for (int faults = upTo(2) + 1; faults > 0; --faults)
            addFault(bytes);
        return bytes;
    }

private:
    // 0 .. limit - 1; 0 for an empty range.
    int upTo(int limit) { return limit > 0 ? int(mRandom() % static_cast<unsigned int>(limit)) : 0; }

    QByteArray randomBytes(int count)
    {
        QByteArray bytes;
        for (int i = 0; i < count; ++i)
            bytes.append(static_cast<char>(mRandom()));
        return bytes;
    }

    void addFault(QByteArray &bytes)
    {
        static const QVector<QByteArray> counts = {
            QByteArray::fromHex("ffffffff"), QByteArray::fromHex("7fffffff"),
            QByteArray::fromHex("00000000"), QByteArray::fromHex("00000001"),
            QByteArray::fromHex("00000010"), QByteArray::fromHex("0000ffff")};
        const int position = upTo(bytes.size());
        const int kind = upTo(100);
        if (kind < 60)
            bytes[position] = static_cast<char>(bytes.at(position) ^ (1 << upTo(8)));
        else if (kind < 90)
            bytes.replace(position, 1, randomBytes(1));
        else if (kind < 95)
            bytes.replace(position, 4, counts[upTo(counts.size())]);
        else if (kind < 97)
            bytes.remove(position, upTo(16));
        else if (kind < 99)
            bytes.insert(position, randomBytes(upTo(16)));
        else
            bytes.insert(position, bytes.mid(upTo(bytes.size()), upTo(120)));
    }

    std::mt19937 mRandom{20240607};
};

// What Qt's operators leave when a device is read field by field.
CDeviceItem readByFields(QDataStream &stream)
{
    CDeviceItem device;
    qint32 type = 0;
    stream >> device.mIdentifier >> type >> device.mHostAddress >> device.mPort >> device.mFlag1
        >> device.mFlag2 >> device.mDeviceKey >> device.mName >> device.mText1 >> device.mValue1
        >> device.mText2 >> device.mValue2;
    device.mHostAddrType = addressType(type);
    for (quint8 &right : device.mUserRights.bytes)
        stream >> right;
    stream >> device.mSubDevices;
    return device;
}

} // namespace

class tst_hostile_inventories : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void truncatedList_data();
    void truncatedList();
    void missingFieldsOfAList();
    void missingFieldsOfADevice();
    void missingEnumerations();
    void truncatedDeviceIsWhatQtLeaves_data();
    void truncatedDeviceIsWhatQtLeaves();
    void truncatedSubDevice();
    void randomCorruptions_data();
    void randomCorruptions();
    void hugeCounts_data();
    void hugeCounts();
    void hugeTexts_data();
    void hugeTexts();
    void smallestEntries_data();
    void smallestEntries();
};

void tst_hostile_inventories::truncatedList_data()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<QDataStream::ByteOrder>("order");
    QTest::newRow("5.15") << int(QDataStream::Qt_5_15) << QDataStream::BigEndian;
    QTest::newRow("5.15 little-endian") << int(QDataStream::Qt_5_15) << QDataStream::LittleEndian;
    QTest::newRow("1.0") << int(QDataStream::Qt_1_0) << QDataStream::BigEndian;
}

void tst_hostile_inventories::truncatedList()
{
    QFETCH(int, version);
    QFETCH(QDataStream::ByteOrder, order);

    const QByteArray whole = streamed(smallInventory(), version, order);
    const int endOfDevices = whole.size() - 1 - 2 * 4; // the null address and the two values
    for (int size = 0; size < whole.size(); ++size) {
        CDeviceList list = sampleList();
        const AllocationCounter counter;
        QCOMPARE(readInto(list, whole.left(size), version, order), QDataStream::ReadPastEnd);
        QVERIFY(isAffordable(counter.bytes(), size));
        // All the devices or none.
        QCOMPARE(list.size(), size < endOfDevices ? 0 : 2);
        use(list);
    }
    CDeviceList list;
    QCOMPARE(readInto(list, whole, version, order), QDataStream::Ok);
    QVERIFY(areEqual(list, smallInventory()));
}

void tst_hostile_inventories::missingFieldsOfAList()
{
    CDeviceList list = sampleList();
    QCOMPARE(readInto(list, QByteArray()), QDataStream::ReadPastEnd);
    CDeviceList expected(QString(), sourceType(0));
    expected.setSourceAddress(QHostAddress(QStringLiteral("0.0.0.0")));
    expected.setSourceValue1(0);
    QVERIFY(areEqual(list, expected));

    // Name "A", source 5, an empty device under 6, and of the address but two bytes.
    const QByteArray device = QByteArray::fromHex("ffffffff 00000000 ff 0000 00 00 00000006 ffffffff ffffffff"
                                                  "00000000 ffffffff 00000000")
                              + QByteArray(32, '\0') + QByteArray(4, '\0');
    const QByteArray bytes = QByteArray::fromHex("00000002 0041 00000005 00000001 00000006") + device
                             + QByteArray::fromHex("00 c0");
    list = sampleList();
    QCOMPARE(readInto(list, bytes), QDataStream::ReadPastEnd);
    expected = CDeviceList(QStringLiteral("A"), sourceType(5));
    expected.addDevice(6, CDeviceItem());
    expected.setSourceAddress(QHostAddress(QStringLiteral("0.0.0.0")));
    expected.setSourceValue1(0);
    QVERIFY(areEqual(list, expected));
}

void tst_hostile_inventories::missingFieldsOfADevice()
{
    const auto read = [](const char *hex) {
        CDeviceItem device = sampleDevice();
        return readInto(device, QByteArray::fromHex(hex)) == QDataStream::ReadPastEnd ? device
                                                                                      : sampleDevice();
    };
    CDeviceItem expected;
    expected.mHostAddress = QHostAddress(QStringLiteral("0.0.0.0")); // its protocol byte is missing, too
    QVERIFY(areEqual(read(""), expected));

    expected.mIdentifier = QStringLiteral("A");
    expected.mHostAddrType = addressType(2);
    QVERIFY(areEqual(read("00000002 0041 00000002"), expected));
    QVERIFY(areEqual(read("00000002 0041 00000002 00 c0a864"), expected));
    expected.mHostAddress = QHostAddress(QStringLiteral("fe80::"));
    QVERIFY(areEqual(read("00000002 0041 00000002 01 fe80"), expected));
    expected.mHostAddress.clear();
    QVERIFY(areEqual(read("00000002 0041 00000002 ff 13"), expected));

    // Of the rights the first two bytes are there, and nothing behind them.
    expected.mPort = 5000;
    expected.mFlag2 = true;
    expected.mDeviceKey = -1;
    expected.mName = QStringLiteral("B");
    expected.mValue1 = 3;
    expected.mText2 = QStringLiteral("C");
    expected.mValue2 = 4;
    expected.mUserRights.bytes[0] = 0xAA;
    expected.mUserRights.bytes[1] = 0x55;
    QVERIFY(areEqual(read("00000002 0041 00000002 ff 1388 00 01 ffffffff 00000002 0042 ffffffff 00000003"
                          "00000002 0043 00000004 aa55"),
                     expected));
}

void tst_hostile_inventories::missingEnumerations()
{
    for (int size = 0; size < 4; ++size) {
        CDeviceItem::EHostAddrType type = addressType(77);
        QCOMPARE(readInto(type, QByteArray(size, '\1')), QDataStream::ReadPastEnd);
        QCOMPARE(type, CDeviceItem::E_HOST_ADDR_NONE);
        CDeviceList::ESourceType source = sourceType(77);
        QCOMPARE(readInto(source, QByteArray(size, '\1')), QDataStream::ReadPastEnd);
        QCOMPARE(source, CDeviceList::E_SOURCE_NONE);
    }
}

void tst_hostile_inventories::truncatedDeviceIsWhatQtLeaves_data()
{
    QTest::addColumn<CDeviceItem>("device");
    QTest::addColumn<int>("version");
    QTest::addColumn<QDataStream::ByteOrder>("order");
    const auto row = [](const char *name, const CDeviceItem &device, int version,
                        QDataStream::ByteOrder order) { QTest::newRow(name) << device << version << order; };
    const CDeviceItem ipv6 = smallInventory().device(0xFFFFFFFF);
    row("IPv4", sampleDevice(), QDataStream::Qt_5_15, QDataStream::BigEndian);
    row("IPv4, little-endian", sampleDevice(), QDataStream::Qt_5_15, QDataStream::LittleEndian);
    row("IPv4, 1.0", sampleDevice(), QDataStream::Qt_1_0, QDataStream::BigEndian);
    row("IPv6", ipv6, QDataStream::Qt_5_15, QDataStream::BigEndian);
    row("IPv6, 2.0, little-endian", ipv6, QDataStream::Qt_2_0, QDataStream::LittleEndian);
    row("default", CDeviceItem(), QDataStream::Qt_5_15, QDataStream::BigEndian);
}

void tst_hostile_inventories::truncatedDeviceIsWhatQtLeaves()
{
    QFETCH(CDeviceItem, device);
    QFETCH(int, version);
    QFETCH(QDataStream::ByteOrder, order);

    const QByteArray whole = streamed(device, version, order);
    for (int size = 0; size < whole.size(); ++size) {
        CDeviceItem read = sampleDevice();
        QCOMPARE(readInto(read, whole.left(size), version, order), QDataStream::ReadPastEnd);
        QDataStream stream(whole.left(size));
        stream.setVersion(version);
        stream.setByteOrder(order);
        QVERIFY(areEqual(read, readByFields(stream)));
        QVERIFY(read.mSubDevices.isEmpty());
    }
}

void tst_hostile_inventories::truncatedSubDevice()
{
    const QByteArray whole = streamed(sampleSubDevice(3));
    for (int size = 0; size < whole.size(); ++size) {
        CSubDeviceItem subDevice = sampleSubDevice(200);
        QCOMPARE(readInto(subDevice, whole.left(size)), QDataStream::ReadPastEnd);
        QCOMPARE(int(subDevice.number()), size < 1 ? 0 : 3);
        // The version is last: its 4 bytes, and before them the active set's 2.
        QCOMPARE(subDevice.paramSetCount(), size < whole.size() - 6 ? 0 : 2);
        QCOMPARE(int(subDevice.activeParamSet()), size < whole.size() - 4 ? 0 : 2);
        QCOMPARE(int(subDevice.paramVersion().major), 0);
    }
}

void tst_hostile_inventories::randomCorruptions_data()
{
    QTest::addColumn<QDataStream::ByteOrder>("order");
    QTest::newRow("big-endian") << QDataStream::BigEndian;
    QTest::newRow("little-endian") << QDataStream::LittleEndian;
}

void tst_hostile_inventories::randomCorruptions()
{
    QFETCH(QDataStream::ByteOrder, order);

    const QByteArray whole = streamed(smallInventory(), QDataStream::Qt_5_15, order);
    Corrupter corrupt;
    QMap<QDataStream::Status, int> outcomes;
    for (int i = 0; i < 50000; ++i) {
        const QByteArray bytes = corrupt(whole);
        const Reading reading = readAndUse(bytes, order);
        if (!reading.survivesRoundTrip || !isAffordable(reading.allocated, bytes.size()))
            QFAIL(bytes.toHex().constData());
        ++outcomes[reading.status];
    }
    // Each way to end was taken often, so that the inputs were neither all hopeless nor all harmless.
    for (const QDataStream::Status status :
         {QDataStream::Ok, QDataStream::ReadPastEnd, QDataStream::ReadCorruptData})
        QVERIFY2(outcomes.value(status) > 1000, qPrintable(QString::number(outcomes.value(status))));
}

void tst_hostile_inventories::hugeCounts_data()
{
    QTest::addColumn<QByteArray>("bytes");

    const QByteArray device = QByteArray::fromHex("ffffffff 00000000 ff 0000 00 00 00000000 ffffffff ffffffff"
                                                  "00000000 ffffffff 00000000")
                              + QByteArray(32, '\0');
    const QByteArray list = QByteArray::fromHex("ffffffff 00000000");
    for (const char *count : {"ffffffff", "80000000", "7fffffff", "00000002"}) {
        const QByteArray claim = QByteArray::fromHex(count);
        QTest::addRow("devices %s", count) << list + claim;
        QTest::addRow("devices %s, one there", count)
            << list + claim + QByteArray::fromHex("00000001") + device + QByteArray(4, '\0');
        const QByteArray oneDevice = list + QByteArray::fromHex("00000001 00000001") + device;
        QTest::addRow("sub-devices %s", count) << oneDevice + claim;
        const QByteArray oneSubDevice = oneDevice + QByteArray::fromHex("00000001 01 01 ffffffff");
        QTest::addRow("parameter sets %s", count) << oneSubDevice + claim;
        QTest::addRow("parameter sets %s, one there", count)
            << oneSubDevice + claim + QByteArray::fromHex("0001 ffffffff");
    }
}

void tst_hostile_inventories::hugeCounts()
{
    QFETCH(QByteArray, bytes);

    CDeviceList list;
    const AllocationCounter counter;
    QCOMPARE(readInto(list, bytes), QDataStream::ReadPastEnd);
    QVERIFY(counter.bytes() <= bytesPerByte * static_cast<std::size_t>(bytes.size() + 64));
    QCOMPARE(list.size(), 0);
}

void tst_hostile_inventories::hugeTexts_data()
{
    QTest::addColumn<QByteArray>("length");
    QTest::addColumn<QDataStream::Status>("status");

    QTest::newRow("the largest") << QByteArray::fromHex("fffffffe") << QDataStream::ReadPastEnd;
    QTest::newRow("2 GiB") << QByteArray::fromHex("80000000") << QDataStream::ReadPastEnd;
    QTest::newRow("2 MiB") << QByteArray::fromHex("00200000") << QDataStream::ReadPastEnd;
    QTest::newRow("odd") << QByteArray::fromHex("fffffffd") << QDataStream::ReadCorruptData;
}

void tst_hostile_inventories::hugeTexts()
{
    QFETCH(QByteArray, length);
    QFETCH(QDataStream::Status, status);

    const QByteArray whole = streamed(smallInventory());
    for (int position = 0; position + 4 <= whole.size(); ++position) {
        QByteArray bytes = whole;
        bytes.replace(position, 4, length);
        const Reading reading = readAndUse(bytes, QDataStream::BigEndian);
        QVERIFY(reading.survivesRoundTrip);
        QVERIFY(isAffordable(reading.allocated, bytes.size()));
        if (position == 0)
            QCOMPARE(reading.status, status);
    }
}

void tst_hostile_inventories::smallestEntries_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("entry");

    const QByteArray device = QByteArray::fromHex("ffffffff 00000000 ff 0000 00 00 00000000 ffffffff ffffffff"
                                                  "00000000 ffffffff 00000000")
                              + QByteArray(32, '\0');
    const QByteArray list = QByteArray::fromHex("ffffffff 00000000");
    const QByteArray one = QByteArray::fromHex("00000001");
    const QByteArray none = QByteArray(4, '\0');
    QTest::newRow("devices") << list << one + device + none;
    QTest::newRow("sub-devices") << list + one + one + device
                                 << QByteArray::fromHex("01 01 ffffffff 00000000 0000 0000 00 00");
    QTest::newRow("parameter sets") << list + one + one + device + one + QByteArray::fromHex("01 01 ffffffff")
                                    << QByteArray::fromHex("0001 ffffffff");
}

// As many of the smallest entries as go into 256 KiB, under one key, and a count that claims more.
void tst_hostile_inventories::smallestEntries()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, entry);

    const QByteArray bytes =
        before + QByteArray::fromHex("ffffffff") + entry.repeated((1 << 18) / entry.size());
    CDeviceList list;
    const AllocationCounter counter;
    QCOMPARE(readInto(list, bytes), QDataStream::ReadPastEnd);
    const std::size_t allocated = counter.bytes();
    QVERIFY2(allocated <= 12 * static_cast<std::size_t>(bytes.size()),
             qPrintable(QString::number(allocated)));
    if (AllocationCounter::isAvailable())
        QVERIFY(allocated > static_cast<std::size_t>(bytes.size()));
    QCOMPARE(list.size(), 0);
}

QTEST_GUILESS_MAIN(tst_hostile_inventories)
#include "tst_hostile_inventories.moc"
