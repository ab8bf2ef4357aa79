// SPDX-License-Identifier: MIT
#include <LoggedTest.h>
#include <NTypes.h>

#include <QDataStream>
#include <QTest>
#include <QVariant>

#include <cstring>

namespace {

QByteArray fromHex(const char *hex)
{
    return QByteArray::fromHex(QByteArray(hex));
}

template<typename Record>
Record recordOfBytes(const QByteArray &bytes)
{
    Record record = {};
    Q_ASSERT(bytes.size() == int(sizeof record));
    std::memcpy(&record, bytes.constData(), sizeof record);
    return record;
}

template<typename Record>
QByteArray bytesOf(const Record &record)
{
    return QByteArray(reinterpret_cast<const char *>(&record), int(sizeof record));
}

// The hexadecimal digits that a stream in this byte order receives, in either floating-point precision.
template<typename Value>
QByteArray streamed(const Value &value, QDataStream::ByteOrder order,
                    QDataStream::FloatingPointPrecision precision)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    stream.setByteOrder(order);
    stream.setFloatingPointPrecision(precision);
    stream << value;
    return bytes.toHex().toUpper();
}

template<typename Value>
QDataStream::Status restore(Value &value, const QByteArray &bytes, QDataStream::ByteOrder order,
                            QDataStream::FloatingPointPrecision precision)
{
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_5_15);
    stream.setByteOrder(order);
    stream.setFloatingPointPrecision(precision);
    stream >> value;
    if (stream.status() == QDataStream::Ok && !stream.atEnd())
        stream.setStatus(QDataStream::ReadCorruptData);
    return stream.status();
}

// Writing gives exactly these bytes and reading them gives the record back.
template<typename Record>
void checkStreamForm(const Record &record, const char *bigEndian, const char *littleEndian)
{
    for (const auto precision : {QDataStream::SinglePrecision, QDataStream::DoublePrecision}) {
        for (const auto order : {QDataStream::BigEndian, QDataStream::LittleEndian}) {
            const QByteArray hex(order == QDataStream::BigEndian ? bigEndian : littleEndian);
            QCOMPARE(streamed(record, order, precision), hex);
            Record back = {};
            QCOMPARE(restore(back, QByteArray::fromHex(hex), order, precision), QDataStream::Ok);
            QCOMPARE(bytesOf(back), bytesOf(record));
        }
    }
}

// A stream that ends inside the record says so; what it does not hold is zero, whatever the record was.
template<typename Record>
void checkShortStream()
{
    const QByteArray ones(int(sizeof(Record)), '\xFF');
    for (int length = 0; length < ones.size(); ++length) {
        auto record = recordOfBytes<Record>(ones);
        const auto status =
            restore(record, ones.left(length), QDataStream::LittleEndian, QDataStream::DoublePrecision);
        QCOMPARE(status, QDataStream::ReadPastEnd);
        const QByteArray read = bytesOf(record);
        QVERIFY2(read.endsWith('\0'), read.toHex().constData());
        if (length == 0)
            QCOMPARE(read, QByteArray(ones.size(), '\0'));
    }
}

} // namespace

class tst_record_streams : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    // First: nothing in this program may have made a value of these types before.
    void storedVariantIsReadBeforeAnyValueWasMade_data();
    void storedVariantIsReadBeforeAnyValueWasMade();
    void streamForms();
    void ds402RecordStreamsTheBitsOfItsFloat();
    void shortStreamsLeaveZeros();
    void variantStreamForm_data();
    void variantStreamForm();
};

void tst_record_streams::storedVariantIsReadBeforeAnyValueWasMade_data()
{
    // A QVariant in a stream: user type 0x400, not null, the name with its length and zero, the value.
    QTest::addColumn<QByteArray>("stream");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("memory");
    const auto row = [](const char *typeName, const char *value, const char *memory) {
        const QByteArray name(typeName);
        QByteArray stream = fromHex("00000400"
                                    "00"
                                    "000000");
        stream.append(char(name.size() + 1)).append(name).append('\0').append(fromHex(value));
        QTest::newRow(typeName) << stream << name << fromHex(memory);
    };
    row("NTypes::sVersion_t", "012C0502", "2C010502");
    row("NTypes::sVersion4_t", "0004000300020001", "0400030002000100");
    row("NTypes::uIPv4HAddr_t", "C0A80001", "0100A8C0");
    row("NTypes::sCommand_t", "12345678", "78563412");
    row("NTypes::sDateTime_t", "432D1E0C010307E8", "432D1E0C0103E807");
    row("NTypes::sDs402Record01_t", "023F8000001234", "020000803F3412");
    row("NTypes::sDs402Array_t<int16_t>", "00020001FFFF", "02000100FFFF");
    row("NTypes::sDs402Array_t<int32_t>", "0000000200000001FFFFFFFE", "0200000001000000FEFFFFFF");
    row("NTypes::sDs402Array_t<uint16_t>", "000200018000", "020001000080");
    row("NTypes::sDs402Array_t<uint32_t>", "000000020000000180000000", "020000000100000000000080");
}

void tst_record_streams::storedVariantIsReadBeforeAnyValueWasMade()
{
    QFETCH(QByteArray, stream);
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, memory);
    QDataStream reader(stream);
    reader.setVersion(QDataStream::Qt_5_15);
    QVariant value;
    reader >> value;
    QCOMPARE(reader.status(), QDataStream::Ok);
    QVERIFY(reader.atEnd());
    QVERIFY(!value.isNull());
    QCOMPARE(QByteArray(value.typeName()), name);
    QCOMPARE(QMetaType::sizeOf(value.userType()), memory.size());
    QCOMPARE(QByteArray(static_cast<const char *>(value.constData()), memory.size()), memory);
}

void tst_record_streams::streamForms()
{
    checkStreamForm(NTypes::sVersion_t{300, 5, 2}, "012C0502", "2C010502");
    checkStreamForm(NTypes::sVersion4_t{4, 3, 2, 1}, "0004000300020001", "0400030002000100");
    checkStreamForm(NTypes::sVersion4x8_t{4, 3, 2, 255}, "040302FF", "040302FF");
    checkStreamForm(NTypes::uIPv4HAddr_t{0xC0A80001}, "C0A80001", "0100A8C0");
    checkStreamForm(NTypes::sCommand_t{0x12345678}, "12345678", "78563412");
    checkStreamForm(NTypes::sTime_t{67, 45, 30, -12}, "432D1EF4", "432D1EF4");
    checkStreamForm(NTypes::sDate_t{1, 3, 2024}, "010307E8", "0103E807");
    checkStreamForm(NTypes::sDateTime_t{{67, 45, 30, 12}, {1, 3, 2024}}, "432D1E0C010307E8",
                    "432D1E0C0103E807");
    checkStreamForm(NTypes::sDs402Array_t<short>{{2, 256, -2}}, "00020100FFFE", "02000001FEFF");
    checkStreamForm(NTypes::sDs402Array_t<unsigned short>{{2, 256, 65534}}, "00020100FFFE", "02000001FEFF");
    checkStreamForm(NTypes::sDs402Array_t<int>{{2, 65536, -2}}, "0000000200010000FFFFFFFE",
                    "0200000000000100FEFFFFFF");
    checkStreamForm(NTypes::sDs402Array_t<unsigned int>{{2, 65536, 4294967294U}}, "0000000200010000FFFFFFFE",
                    "0200000000000100FEFFFFFF");
    checkStreamForm(NTypes::sDs402Record01_t{2, 1.0F, 0x1234}, "023F8000001234", "020000803F3412");
}

void tst_record_streams::ds402RecordStreamsTheBitsOfItsFloat()
{
    const auto withBits = [](const char *memory) {
        return recordOfBytes<NTypes::sDs402Record01_t>(fromHex(memory));
    };
    checkStreamForm(withBits("020000C07F0000"), "027FC000000000", "020000C07F0000"); // a NaN
    checkStreamForm(withBits("020100A07F0000"), "027FA000010000", "020100A07F0000"); // a signalling NaN
    checkStreamForm(withBits("02000080FF0000"), "02FF8000000000", "02000080FF0000"); // minus infinity
    checkStreamForm(withBits("02000000800000"), "02800000000000", "02000000800000"); // minus zero
    checkStreamForm(withBits("02010000000000"), "02000000010000", "02010000000000"); // the smallest number
}

void tst_record_streams::shortStreamsLeaveZeros()
{
    checkShortStream<NTypes::sVersion_t>();
    checkShortStream<NTypes::sVersion4_t>();
    checkShortStream<NTypes::sVersion4x8_t>();
    checkShortStream<NTypes::uIPv4HAddr_t>();
    checkShortStream<NTypes::sCommand_t>();
    checkShortStream<NTypes::sTime_t>();
    checkShortStream<NTypes::sDate_t>();
    checkShortStream<NTypes::sDateTime_t>();
    checkShortStream<NTypes::sDs402Array_t<short>>();
    checkShortStream<NTypes::sDs402Array_t<unsigned short>>();
    checkShortStream<NTypes::sDs402Array_t<int>>();
    checkShortStream<NTypes::sDs402Array_t<unsigned int>>();
    checkShortStream<NTypes::sDs402Record01_t>();
}

void tst_record_streams::variantStreamForm_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("bigEndian");
    const auto row = [](const QVariant &value, const char *name, const char *bigEndian) {
        QTest::newRow(name) << value << QByteArray(name) << QByteArray(bigEndian);
    };
    row(QVariant::fromValue(NTypes::sVersion_t{300, 5, 2}), "NTypes::sVersion_t", "012C0502");
    row(QVariant::fromValue(NTypes::sVersion4_t{4, 3, 2, 1}), "NTypes::sVersion4_t", "0004000300020001");
    row(QVariant::fromValue(NTypes::uIPv4HAddr_t{0xC0A80001}), "NTypes::uIPv4HAddr_t", "C0A80001");
    row(QVariant::fromValue(NTypes::sCommand_t{0x12345678}), "NTypes::sCommand_t", "12345678");
    row(QVariant::fromValue(NTypes::sDateTime_t{{67, 45, 30, 12}, {1, 3, 2024}}), "NTypes::sDateTime_t",
        "432D1E0C010307E8");
    row(QVariant::fromValue(NTypes::sDs402Record01_t{2, 1.0F, 0x1234}), "NTypes::sDs402Record01_t",
        "023F8000001234");
    row(QVariant::fromValue(NTypes::sDs402Array_t<short>{{2, 1, -1}}), "NTypes::sDs402Array_t<int16_t>",
        "00020001FFFF");
    row(QVariant::fromValue(NTypes::sDs402Array_t<int>{{2, 1, -2}}), "NTypes::sDs402Array_t<int32_t>",
        "0000000200000001FFFFFFFE");
    row(QVariant::fromValue(NTypes::sDs402Array_t<unsigned short>{{2, 1, 32768}}),
        "NTypes::sDs402Array_t<uint16_t>", "000200018000");
    row(QVariant::fromValue(NTypes::sDs402Array_t<unsigned int>{{2, 1, 2147483648U}}),
        "NTypes::sDs402Array_t<uint32_t>", "000000020000000180000000");
}

void tst_record_streams::variantStreamForm()
{
    QFETCH(QVariant, value);
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, bigEndian);
    const QByteArray length = QByteArray::number(name.size() + 1, 16).rightJustified(8, '0').toUpper();
    const QByteArray expected = "0000040000" + length + name.toHex().toUpper() + "00" + bigEndian;
    QCOMPARE(streamed(value, QDataStream::BigEndian, QDataStream::DoublePrecision), expected);
    for (const auto order : {QDataStream::BigEndian, QDataStream::LittleEndian}) {
        const auto hex = streamed(value, order, QDataStream::SinglePrecision);
        QVariant back;
        QCOMPARE(restore(back, QByteArray::fromHex(hex), order, QDataStream::SinglePrecision),
                 QDataStream::Ok);
        QCOMPARE(back.userType(), value.userType());
        QVERIFY(back == value);
    }
}

QTEST_GUILESS_MAIN(tst_record_streams)

#include "tst_record_streams.moc"
