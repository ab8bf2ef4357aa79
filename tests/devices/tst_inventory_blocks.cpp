// SPDX-License-Identifier: MIT
// Inventories are written and read in blocks. Here beside them plain records go field by field through Qt's
// own operators: the bytes, what is read, the status and the place where the stream stands are the same.
#include "DeviceCases.h"
#include "LimitedDevices.h"
#include "RandomInventory.h"

#include <QBuffer>
#include <QTemporaryFile>

#include <functional>

Q_DECLARE_METATYPE(QDataStream::ByteOrder)
Q_DECLARE_METATYPE(QDataStream::Status)

namespace {

// How a stream is set up.
struct Form
{
    int version = QDataStream::Qt_5_15;
    QDataStream::ByteOrder order = QDataStream::BigEndian;

    void applyTo(QDataStream &stream) const
    {
        stream.setVersion(version);
        stream.setByteOrder(order);
    }
};

template<typename T>
QByteArray written(const T &value, const Form &form = {})
{
    return streamed(value, form.version, form.order);
}

// All that reading one value out of a device shows.
struct Reading
{
    QByteArray value; // written again, which tells null texts from empty ones
    QDataStream::Status status;
    qint64 position;

    friend bool operator==(const Reading &a, const Reading &b)
    {
        return a.value == b.value && a.status == b.status && a.position == b.position;
    }
};

template<typename T>
Reading readingOf(QIODevice &device, const Form &form = {}, QDataStream::Status before = QDataStream::Ok)
{
    QDataStream stream(&device);
    form.applyTo(stream);
    stream.setStatus(before);
    T value;
    stream >> value;
    return {written(value), stream.status(), device.pos()};
}

template<typename T>
Reading readingOf(const QByteArray &bytes, const Form &form = {})
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return readingOf<T>(buffer, form);
}

} // namespace

class tst_inventory_blocks : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void listsAreTheirFieldsInTurn_data();
    void listsAreTheirFieldsInTurn();
    void singleRecordsAreTheirFieldsInTurn_data();
    void singleRecordsAreTheirFieldsInTurn();
    void textsOfEveryLengthAroundABlock_data();
    void textsOfEveryLengthAroundABlock();
    void corruptStreamsEndAlike_data();
    void corruptStreamsEndAlike();
    void truncatedStreamsEndAlike();
    void everyKindOfDevice_data();
    void everyKindOfDevice();
    void formerFailuresStayAlike();
    void whatIsReadReplacesWhatWas();
    void transactionsCanBeRolledBack();
    void transactionsEndAlike_data();
    void transactionsEndAlike();
    void withoutADevice();
    void recordsBehindEachOther();
    void fullDevicesEndAlike();
    void defaultNamesAreShared();
    void unitesAsKeyByKey();
};

namespace {

void addFormRows()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<QDataStream::ByteOrder>("order");
    for (const int version :
         {QDataStream::Qt_1_0, QDataStream::Qt_2_0, QDataStream::Qt_2_1, QDataStream::Qt_3_3,
          QDataStream::Qt_4_5, QDataStream::Qt_5_0, QDataStream::Qt_5_12, QDataStream::Qt_5_15}) {
        QTest::addRow("%d big-endian", version) << version << QDataStream::BigEndian;
        QTest::addRow("%d little-endian", version) << version << QDataStream::LittleEndian;
    }
}

bool holdsZero(const ListFields &list)
{
    QStringList texts = {list.name};
    for (const DeviceFields &device : list.devices) {
        texts << device.identifier << device.name << device.text1 << device.text2;
        for (const SubDeviceFields &subDevice : device.subDevices)
            texts << subDevice.name << subDevice.sets.values();
    }
    return texts.join(QString()).contains(QChar::Null);
}

} // namespace

void tst_inventory_blocks::listsAreTheirFieldsInTurn_data()
{
    addFormRows();
}

void tst_inventory_blocks::listsAreTheirFieldsInTurn()
{
    QFETCH(int, version);
    QFETCH(QDataStream::ByteOrder, order);

    const Form form{version, order};
    RandomInventory random;
    for (int i = 0; i < 40; ++i) {
        const ListFields fields = random.list(12);
        const QByteArray bytes = written(fields, form);
        QVERIFY(readingOf<CDeviceList>(bytes, form) == readingOf<ListFields>(bytes, form));
        CDeviceList list;
        QCOMPARE(readInto(list, bytes, version, order), QDataStream::Ok);
        // A text in the form of Qt 1 is read to its first NUL: there the second time is like the first.
        const QByteArray rewritten = written(list, form);
        QVERIFY(rewritten == bytes || (version < QDataStream::Qt_2_0 && holdsZero(fields)));
        QCOMPARE(readInto(list, rewritten, version, order), QDataStream::Ok);
        QVERIFY(written(list, form) == rewritten);
    }
}

void tst_inventory_blocks::singleRecordsAreTheirFieldsInTurn_data()
{
    addFormRows();
}

void tst_inventory_blocks::singleRecordsAreTheirFieldsInTurn()
{
    QFETCH(int, version);
    QFETCH(QDataStream::ByteOrder, order);

    const Form form{version, order};
    RandomInventory random;
    for (int i = 0; i < 60; ++i) {
        const QByteArray deviceBytes = written(random.device(), form);
        QVERIFY(readingOf<CDeviceItem>(deviceBytes, form) == readingOf<DeviceFields>(deviceBytes, form));
        const QByteArray subDeviceBytes = written(random.subDevice(), form);
        QVERIFY(readingOf<CSubDeviceItem>(subDeviceBytes, form)
                == readingOf<SubDeviceFields>(subDeviceBytes, form));
    }
}

void tst_inventory_blocks::textsOfEveryLengthAroundABlock_data()
{
    QTest::addColumn<int>("from");
    QTest::newRow("first block read, 512 bytes") << 200;
    QTest::newRow("second") << 460;
    QTest::newRow("largest block, 8192 bytes") << 4040;
    QTest::newRow("two of them") << 8140;
}

void tst_inventory_blocks::textsOfEveryLengthAroundABlock()
{
    QFETCH(int, from);

    for (int length = from; length < from + 80; ++length) {
        ListFields list;
        list.name = QString(length, QChar(ushort(0x1234)));
        list.devices[5].address = QHostAddress(QStringLiteral("2001:db8::5%eth1"));
        const QByteArray bytes = written(list);
        QVERIFY(readingOf<CDeviceList>(bytes) == readingOf<ListFields>(bytes));
        CDeviceList read;
        QCOMPARE(readInto(read, bytes), QDataStream::Ok);
        QVERIFY(written(read) == bytes);
    }
}

void tst_inventory_blocks::corruptStreamsEndAlike_data()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<QDataStream::ByteOrder>("order");
    QTest::newRow("5.15") << int(QDataStream::Qt_5_15) << QDataStream::BigEndian;
    QTest::newRow("5.15 little-endian") << int(QDataStream::Qt_5_15) << QDataStream::LittleEndian;
    QTest::newRow("2.0") << int(QDataStream::Qt_2_0) << QDataStream::BigEndian;
}

void tst_inventory_blocks::corruptStreamsEndAlike()
{
    QFETCH(int, version);
    QFETCH(QDataStream::ByteOrder, order);

    const Form form{version, order};
    RandomInventory random;
    QMap<QDataStream::Status, int> outcomes;
    for (int i = 0; i < 800; ++i) {
        const QByteArray bytes = random.corrupted(written(random.list(3), form));
        const Reading reading = readingOf<CDeviceList>(bytes, form);
        if (!(reading == readingOf<ListFields>(bytes, form)))
            QFAIL(bytes.toHex().constData());
        ++outcomes[reading.status];
    }
    for (const QDataStream::Status status :
         {QDataStream::Ok, QDataStream::ReadPastEnd, QDataStream::ReadCorruptData})
        QVERIFY2(outcomes.value(status) > 10, qPrintable(QString::number(outcomes.value(status))));
}

void tst_inventory_blocks::truncatedStreamsEndAlike()
{
    RandomInventory random;
    const QByteArray bytes = written(random.list(6));
    for (int size = 0; size < bytes.size(); size += 1 + size / 200) {
        const QByteArray part = bytes.left(size);
        QVERIFY(readingOf<CDeviceList>(part) == readingOf<ListFields>(part));
    }
}

using MakeDevice = std::function<QIODevice *(const QByteArray &, QObject *)>;
Q_DECLARE_METATYPE(MakeDevice)

void tst_inventory_blocks::everyKindOfDevice_data()
{
    QTest::addColumn<MakeDevice>("make");

    const auto buffer = [](const QByteArray &bytes, QIODevice::OpenMode mode, QObject *parent) {
        auto *const device = new QBuffer(parent);
        device->setData(bytes);
        device->open(mode);
        return device;
    };
    const auto file = [](const QByteArray &bytes, QIODevice::OpenMode mode, QObject *parent) {
        auto *const device = new QTemporaryFile(parent);
        device->open();
        device->write(bytes);
        device->close();
        auto *const reopened = new QFile(device->fileName(), parent);
        reopened->open(mode);
        return reopened;
    };
    constexpr QIODevice::OpenMode readOnly = QIODevice::ReadOnly;
    constexpr auto text = QIODevice::ReadOnly | QIODevice::Text;
    constexpr auto unbuffered = QIODevice::ReadOnly | QIODevice::Unbuffered;
    QTest::newRow("buffer") << MakeDevice(
        [=](auto &bytes, auto *parent) { return buffer(bytes, readOnly, parent); });
    QTest::newRow("buffer, read and write")
        << MakeDevice([=](auto &bytes, auto *parent) { return buffer(bytes, QIODevice::ReadWrite, parent); });
    QTest::newRow("buffer of text") << MakeDevice(
        [=](auto &bytes, auto *parent) { return buffer(bytes, text, parent); });
    QTest::newRow("buffer, not at its start") << MakeDevice([=](auto &bytes, auto *parent) {
        auto *const device = buffer("abc" + bytes, readOnly, parent);
        device->seek(3);
        return device;
    });
    QTest::newRow("buffer, with a byte put back") << MakeDevice([=](auto &bytes, auto *parent) {
        auto *const device = buffer(bytes, readOnly, parent);
        device->ungetChar(device->read(1).at(0));
        return device;
    });
    QTest::newRow("file") << MakeDevice(
        [=](auto &bytes, auto *parent) { return file(bytes, readOnly, parent); });
    QTest::newRow("file without a buffer")
        << MakeDevice([=](auto &bytes, auto *parent) { return file(bytes, unbuffered, parent); });
    QTest::newRow("sequential") << MakeDevice(
        [](auto &bytes, auto *parent) { return new SequentialDevice(bytes, parent); });
    for (const int piece : {1, 32, 64, 1000}) {
        QTest::addRow("not more than %d bytes at once", piece) << MakeDevice(
            [piece](auto &bytes, auto *parent) { return new PiecewiseDevice(bytes, piece, parent); });
    }
    QTest::newRow("fails after some bytes") << MakeDevice(
        [](auto &bytes, auto *parent) { return new FailingDevice(bytes, bytes.size() / 2, parent); });
}

void tst_inventory_blocks::everyKindOfDevice()
{
    QFETCH(MakeDevice, make);

    RandomInventory random;
    for (int i = 0; i < 30; ++i) {
        QByteArray bytes = written(random.list(30));
        if (i % 3 == 0)
            bytes = random.corrupted(bytes);
        QObject parent;
        QIODevice *const ours = make(bytes, &parent);
        QIODevice *const plain = make(bytes, &parent);
        QVERIFY(readingOf<CDeviceList>(*ours) == readingOf<ListFields>(*plain));
        QVERIFY(ours->readAll() == plain->readAll());
    }
}

void tst_inventory_blocks::formerFailuresStayAlike()
{
    RandomInventory random;
    for (const QDataStream::Status status : {QDataStream::ReadPastEnd, QDataStream::ReadCorruptData}) {
        for (int i = 0; i < 20; ++i) {
            const QByteArray bytes = written(random.list(10));
            QBuffer ours;
            ours.setData(bytes);
            ours.open(QIODevice::ReadOnly);
            QBuffer plain;
            plain.setData(bytes);
            plain.open(QIODevice::ReadOnly);
            QVERIFY(readingOf<CDeviceList>(ours, {}, status) == readingOf<ListFields>(plain, {}, status));
        }
    }
}

namespace {

// The value after it was read, and read again from other bytes.
template<typename T>
QByteArray writtenAfter(const QByteArray &former, const QByteArray &bytes)
{
    T value;
    readInto(value, former);
    readInto(value, bytes);
    return written(value);
}

} // namespace

// Also where the new bytes end early or are corrupt: of the former devices and names none is left.
void tst_inventory_blocks::whatIsReadReplacesWhatWas()
{
    RandomInventory random;
    for (int i = 0; i < 200; ++i) {
        const QByteArray former = written(random.list(4));
        const QByteArray bytes = random.corrupted(written(random.list(2)));
        QVERIFY(writtenAfter<CDeviceList>(former, bytes) == writtenAfter<ListFields>(former, bytes));
        const QByteArray formerAxis = written(random.subDevice());
        const QByteArray axis = random.corrupted(written(random.subDevice()));
        QVERIFY(writtenAfter<CSubDeviceItem>(formerAxis, axis)
                == writtenAfter<SubDeviceFields>(formerAxis, axis));
    }
}

void tst_inventory_blocks::transactionsCanBeRolledBack()
{
    RandomInventory random;
    for (int i = 0; i < 30; ++i) {
        const QByteArray bytes = written(random.list(30));
        QBuffer buffer;
        buffer.setData("ab" + bytes);
        buffer.open(QIODevice::ReadOnly);
        buffer.seek(2);
        QDataStream stream(&buffer);
        CDeviceList list;
        stream.startTransaction();
        stream >> list;
        QCOMPARE(buffer.pos(), qint64(bytes.size() + 2));
        stream.rollbackTransaction();
        QCOMPARE(buffer.pos(), qint64(2));
        stream.resetStatus();
        stream.startTransaction();
        stream >> list;
        QVERIFY(stream.commitTransaction());
        QVERIFY(buffer.atEnd());
        QVERIFY(written(list) == bytes);
    }
}

namespace {

// What reading within a transaction shows, when it failed before the list or is to fail behind it, too.
struct TransactedReading
{
    Reading reading;
    bool committed;
    QByteArray rest;

    friend bool operator==(const TransactedReading &a, const TransactedReading &b)
    {
        return a.reading == b.reading && a.committed == b.committed && a.rest == b.rest;
    }
};

template<typename T>
TransactedReading transactedReadingOf(QIODevice &device, QDataStream::Status before)
{
    QDataStream stream(&device);
    stream.startTransaction();
    stream.setStatus(before);
    T value;
    stream >> value;
    const Reading reading{written(value), stream.status(), device.pos()};
    const bool committed = stream.commitTransaction();
    return {reading, committed, device.readAll()};
}

} // namespace

void tst_inventory_blocks::transactionsEndAlike_data()
{
    QTest::addColumn<bool>("sequential");
    QTest::addColumn<QDataStream::Status>("before");
    for (const bool sequential : {false, true}) {
        for (const auto before : {QDataStream::Ok, QDataStream::ReadPastEnd, QDataStream::ReadCorruptData}) {
            QTest::addRow("%s, status %d", sequential ? "sequential" : "buffer", int(before))
                << sequential << before;
        }
    }
}

void tst_inventory_blocks::transactionsEndAlike()
{
    QFETCH(bool, sequential);
    QFETCH(QDataStream::Status, before);

    RandomInventory random;
    for (int i = 0; i < 60; ++i) {
        QByteArray bytes = written(random.list(10)) + "what follows";
        if (i % 2 == 0)
            bytes = random.corrupted(bytes);
        QBuffer ourBuffer(&bytes);
        QBuffer plainBuffer(&bytes);
        SequentialDevice ourPieces(bytes, nullptr);
        SequentialDevice plainPieces(bytes, nullptr);
        ourBuffer.open(QIODevice::ReadOnly);
        plainBuffer.open(QIODevice::ReadOnly);
        QIODevice &ours = sequential ? static_cast<QIODevice &>(ourPieces) : ourBuffer;
        QIODevice &plain = sequential ? static_cast<QIODevice &>(plainPieces) : plainBuffer;
        QVERIFY(transactedReadingOf<CDeviceList>(ours, before)
                == transactedReadingOf<ListFields>(plain, before));
    }
}

// A stream without a device takes and gives nothing.
void tst_inventory_blocks::withoutADevice()
{
    QDataStream stream;
    CDeviceList list(QStringLiteral("Plant"), static_cast<CDeviceList::ESourceType>(1));
    stream << list;
    stream >> list;
    takeLog(); // a debug build of Qt warns
    QCOMPARE(list.count(), 0);
    QCOMPARE(stream.status(), QDataStream::Ok);
}

void tst_inventory_blocks::recordsBehindEachOther()
{
    RandomInventory random;
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    QVector<QByteArray> devices;
    for (int i = 0; i < 200; ++i) {
        const DeviceFields device = random.device();
        devices += written(device);
        out << device << qint32(i);
    }
    QDataStream in(bytes);
    for (int i = 0; i < devices.size(); ++i) {
        CDeviceItem device;
        qint32 number = -1;
        in >> device >> number;
        QCOMPARE(number, i);
        QVERIFY(written(device) == devices.at(i));
    }
    QVERIFY(in.atEnd());
}

void tst_inventory_blocks::fullDevicesEndAlike()
{
    RandomInventory random;
    const QByteArray bytes = written(random.list(20));
    CDeviceList list;
    QCOMPARE(readInto(list, bytes), QDataStream::Ok);
    for (int room = 0; room <= bytes.size(); room += 1 + room / 50) {
        FullDevice device(room);
        QDataStream stream(&device);
        stream << list;
        QCOMPARE(stream.status(), room < bytes.size() ? QDataStream::WriteFailed : QDataStream::Ok);
        QVERIFY(device.bytes() == bytes.left(room));
    }
}

// The default names are made once, and what is read shares them.
void tst_inventory_blocks::defaultNamesAreShared()
{
    CSubDeviceItem made;
    made.setAvailableParamSets(~0ULL);
    CSubDeviceItem read;
    QCOMPARE(readInto(read, streamed(made)), QDataStream::Ok);
    const auto madeNames = made.availableParamSetNames();
    const auto readNames = read.availableParamSetNames();
    QCOMPARE(readNames.size(), 64);
    QCOMPARE(readNames, madeNames);
    for (auto name = readNames.begin(); name != readNames.end(); ++name)
        QCOMPARE(name->constData(), madeNames.find(name.key())->constData());
}

// Where a key belongs is not looked up anew for each; keys in runs, with gaps, and twice.
void tst_inventory_blocks::unitesAsKeyByKey()
{
    RandomInventory random;
    for (int i = 0; i < 300; ++i) {
        const CDeviceList list = random.keys();
        const CDeviceList other = random.keys();
        CDeviceList expected = list;
        const QList<unsigned int> keys = other.keys();
        for (const unsigned int key : keys) {
            if (!expected.contains(key))
                expected.addDevice(key, other.device(key));
        }
        CDeviceList united = list;
        united.unite(other);
        QVERIFY(written(united) == written(expected));
        QVERIFY(areEqual(united, expected));
        QCOMPARE(united == list, united.size() == list.size());
    }
}

QTEST_GUILESS_MAIN(tst_inventory_blocks)
#include "tst_inventory_blocks.moc"
