// SPDX-License-Identifier: MIT
#include "VariantSamples.h"

#include <LoggedTest.h>

#include <QDate>
#include <QIODevice>
#include <QPoint>
#include <QTest>
#include <QUuid>

#include <algorithm>
#include <utility>

using namespace VariantSamples;

namespace {

QByteArray written(const CVariant &value, int version, QDataStream::ByteOrder order)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(version);
    stream.setByteOrder(order);
    stream << value;
    return bytes;
}

// All forms in which values are held: constructed, from raw data, parsed, default, and null under a tag.
QVector<CVariant> everyForm()
{
    QVector<CVariant> values = {CVariant()};
    for (const int tag : valueTags)
        values << typedSample(tag) << CVariant(typeOf(tag)) << tagged(QVariant(), tag);
    for (const int tag : {1, 2, 3, 4})
        values << rawSample(tag);
    for (const int tag : {13, 15, 18, 20})
        values << CVariant::fromStr(QStringLiteral("Gr\u00FC\u00DFe"), typeOf(tag));
    values << CVariant::fromRawData("\1\2\3", 3, NTypes::E_U8) << tagged(5, 0) << tagged(5, 11)
           << tagged(5, INT_MIN);
    return values;
}

const QVector<int> &versions()
{
    static const QVector<int> all = {QDataStream::Qt_4_2, QDataStream::Qt_4_6, QDataStream::Qt_4_8,
                                     QDataStream::Qt_5_0, QDataStream::Qt_5_6, QDataStream::Qt_5_12,
                                     QDataStream::Qt_5_15};
    return all;
}

constexpr std::array<QDataStream::ByteOrder, 2> byteOrders = {QDataStream::BigEndian,
                                                              QDataStream::LittleEndian};

// The name of a record's type as the stream holds it, in hexadecimal digits: length, text, terminating zero.
QByteArray nameInStream(const char *name, QDataStream::ByteOrder order)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(order);
    stream << name;
    return bytes.toHex();
}

// A device that cannot be positioned, like a socket.
class SequentialBuffer : public QIODevice
{
    Q_OBJECT

public:
    explicit SequentialBuffer(QByteArray bytes) : mBytes(std::move(bytes)) { open(QIODevice::ReadOnly); }

    void arrive(const QByteArray &bytes) { mBytes.append(bytes); }
    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override { return mBytes.size() + QIODevice::bytesAvailable(); }

protected:
    qint64 readData(char *data, qint64 size) override
    {
        const QByteArray bytes = mBytes.left(static_cast<int>(qMin<qint64>(size, mBytes.size())));
        mBytes.remove(0, bytes.size());
        std::copy(bytes.begin(), bytes.end(), data);
        return bytes.size();
    }

    qint64 writeData(const char *, qint64) override { return -1; }

private:
    QByteArray mBytes;
};

} // namespace

// The stream form.
class tst_variant_streams : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void goldenBytes_data();
    void goldenBytes();
    void singlePrecisionStreams();
    void heldValueThenTag();
    void everyFormSurvives_data();
    void everyFormSurvives();
    void everyTypeSurvivesSinglePrecision();
    void valuesOutsideTheCatalogueSurvive_data();
    void valuesOutsideTheCatalogueSurvive();
    void anyTagIsRead_data();
    void anyTagIsRead();
    void valuesFollowEachOther();
    void readingReplacesTheValue();
    void sequentialDevices();
    void transactionsBeginAgain();
    void numbersReturnWithTagAndValue();
    void typesAreKnownBeforeTheFirstValue();
};

// Type, null flag, for a record its name, value, tag; first in big-endian, then in little-endian order.
void tst_variant_streams::goldenBytes_data()
{
    QTest::addColumn<int>("tag");
    QTest::addColumn<int>("version");
    QTest::addColumn<QByteArray>("big");
    QTest::addColumn<QByteArray>("little");
    const auto row = [](const char *name, int tag, int version, const QByteArray &big,
                        const QByteArray &little) {
        QTest::newRow((tagName(tag) + name).constData())
            << tag << version << big.toLower() << little.toLower();
    };
    const int qt5 = QDataStream::Qt_5_15;
    const int qt4 = QDataStream::Qt_4_8;
    row(", Qt 5.15", 0, qt5, "000000000100000000", "000000000100000000");
    row(", Qt 4.8", 0, qt4, "0000000001FFFFFFFF00000000", "0000000001FFFFFFFF00000000");
    row(", Qt 5.15", 1, qt5, "0000002500C800000001", "2500000000C801000000");
    row(", Qt 4.8", 1, qt4, "0000008600C800000001", "8600000000C801000000");
    row(", Qt 5.15", 2, qt5, "00000028009C00000002", "28000000009C02000000");
    row(", Qt 5.15", 3, qt5, "0000002400EA6000000003", "240000000060EA03000000");
    row(", Qt 5.15", 4, qt5, "00000021008AD000000004", "2100000000D08A04000000");
    row(", Qt 5.15", 5, qt5, "0000000300EE6B280000000005", "030000000000286BEE05000000");
    row(", Qt 4.8", 5, qt4, "0000000300EE6B280000000005", "030000000000286BEE05000000");
    row(", Qt 5.15", 6, qt5, "000000020088CA6C0000000006", "0200000000006CCA8806000000");
    row(", Qt 5.15", 7, qt5, "00000026003FF800000000000000000007", "2600000000000000000000F83F07000000");
    row(", Qt 5.15", 8, qt5, "0000000500112233445566778800000008", "0500000000887766554433221108000000");
    row(", Qt 5.15", 9, qt5, "0000000400EEDDCCBBAA99887800000009", "0400000000788899AABBCCDDEE09000000");
    row(", Qt 5.15", 10, qt5, "0000000600C0020000000000000000000A", "060000000000000000000002C00A000000");
    row(", Qt 4.8", 10, qt4, "0000000600C0020000000000000000000A", "060000000000000000000002C00A000000");
    row(", Qt 5.15", 19, qt5, "0000000700004100000013", "0700000000410013000000");
    row(", Qt 5.15", 25, qt5, "0000000C000000000301020300000019", "0C000000000300000001020319000000");
    // A record has the number of a user type, 1024 or before Qt 5 127, and its name.
    const auto recordRow = [&row](const char *name, int tag, int version, const QByteArray &big,
                                  const QByteArray &little) {
        const bool qt4Form = version < QDataStream::Qt_5_0;
        const char *const typeName = QMetaType::typeName(heldBy(typedSample(tag)).userType());
        row(name, tag, version,
            (qt4Form ? "0000007F00" : "0000040000") + nameInStream(typeName, QDataStream::BigEndian) + big,
            (qt4Form ? "7F00000000" : "0004000000") + nameInStream(typeName, QDataStream::LittleEndian)
                + little);
    };
    recordRow(", Qt 5.15", 21, qt5, "012C050200000015", "2C01050215000000");
    recordRow(", Qt 4.8", 21, qt4, "012C050200000015", "2C01050215000000");
    recordRow(", Qt 5.15", 32, qt5, "000400030002000100000020", "040003000200010020000000");
    recordRow(", Qt 5.15", 22, qt5, "C0A8010A00000016", "0A01A8C016000000");
    recordRow(", Qt 5.15", 23, qt5, "DEADBEEF00000017", "EFBEADDE17000000");
    recordRow(", Qt 5.15", 16, qt5, "59070605040307E500000010", "590706050403E50710000000");
    recordRow(", Qt 5.15", 26, qt5, "024020000000030000001A", "020000204003001A000000");
    recordRow(", Qt 5.15", 27, qt5, "0001FFFE00030000001B", "0100FEFF03001B000000");
    recordRow(", Qt 5.15", 28, qt5, "00000001FFFFFFFE000000030000001C", "01000000FEFFFFFF030000001C000000");
    recordRow(", Qt 5.15", 29, qt5, "0000000100000002FFFFFFFF0000001D", "0100000002000000FFFFFFFF1D000000");
    const QByteArray zeros(92, '0'); // the 23 units behind the nine of "Spindle 1"
    recordRow(", Qt 5.15", 12, qt5, "005300700069006E0064006C006500200031" + zeros + "0000000C",
              "5300700069006E0064006C00650020003100" + zeros + "0C000000");
}

void tst_variant_streams::goldenBytes()
{
    QFETCH(const int, tag);
    QFETCH(const int, version);
    QFETCH(const QByteArray, big);
    QFETCH(const QByteArray, little);
    QCOMPARE(written(typedSample(tag), version, QDataStream::BigEndian).toHex(), big);
    QCOMPARE(written(typedSample(tag), version, QDataStream::LittleEndian).toHex(), little);
}

// A float follows the stream's precision, the float of a record does not.
void tst_variant_streams::singlePrecisionStreams()
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    stream.setFloatingPointPrecision(QDataStream::SinglePrecision);
    stream << typedSample(NTypes::E_F32);
    QCOMPARE(bytes, fromHex("00000026003FC0000000000007"));
    stream.device()->seek(0);
    stream << typedSample(NTypes::E_DS402_ACC_REC);
    const QByteArray name = nameInStream("NTypes::sDs402Record01_t", QDataStream::BigEndian);
    QCOMPARE(bytes.toHex(), "0000040000" + name + "024020000000030000001a");
}

// Qt's own form of the held value and then the tag, whatever the stream's version and byte order.
void tst_variant_streams::heldValueThenTag()
{
    const QVector<CVariant> values = everyForm();
    for (const CVariant &value : values) {
        for (const int version : versions()) {
            for (const QDataStream::ByteOrder order : byteOrders) {
                QByteArray expected;
                QDataStream stream(&expected, QIODevice::WriteOnly);
                stream.setVersion(version);
                stream.setByteOrder(order);
                stream << heldBy(value) << static_cast<qint32>(value.type());
                QCOMPARE(written(value, version, order).toHex(), expected.toHex());
            }
        }
    }
}

void tst_variant_streams::everyFormSurvives_data()
{
    QTest::addColumn<int>("version");
    for (const int version : versions())
        QTest::newRow(("version " + QByteArray::number(version)).constData()) << version;
}

void tst_variant_streams::everyFormSurvives()
{
    QFETCH(const int, version);
    const QVector<CVariant> values = everyForm();
    for (const CVariant &value : values) {
        for (const QDataStream::ByteOrder order : byteOrders) {
            const QByteArray bytes = written(value, version, order);
            QDataStream stream(bytes);
            stream.setVersion(version);
            stream.setByteOrder(order);
            CVariant read(QChar(u'x'));
            stream >> read;
            QCOMPARE(stream.status(), QDataStream::Ok);
            QVERIFY(stream.atEnd());
            QCOMPARE(static_cast<int>(read.type()), static_cast<int>(value.type()));
            QCOMPARE(heldBy(read).userType(), heldBy(value).userType());
            QCOMPARE(streamed(heldBy(read)).toHex(), streamed(heldBy(value)).toHex());
            QCOMPARE(read.isNull(), value.isNull());
            QCOMPARE(read.toStr(), value.toStr());
        }
    }
}

void tst_variant_streams::everyTypeSurvivesSinglePrecision()
{
    for (const int tag : valueTags) {
        if (tag == NTypes::E_F64)
            continue; // loses digits in such a stream, as any double does
        QByteArray bytes;
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out.setFloatingPointPrecision(QDataStream::SinglePrecision);
        out << typedSample(tag);
        QDataStream in(bytes);
        in.setFloatingPointPrecision(QDataStream::SinglePrecision);
        CVariant read;
        in >> read;
        QCOMPARE(in.status(), QDataStream::Ok);
        QCOMPARE(streamed(heldBy(read)), streamed(heldBy(typedSample(tag))));
    }
}

// What setRawData() stored unchecked, as far as it is no container of other values.
void tst_variant_streams::valuesOutsideTheCatalogueSurvive_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("bool") << QVariant(true);
    QTest::newRow("text") << QVariant(QStringLiteral("text"));
    QTest::newRow("date") << QVariant(QDate(2021, 3, 4));
    QTest::newRow("time") << QVariant(QTime(5, 6, 7));
    QTest::newRow("point") << QVariant(QPoint(3, 4));
    QTest::newRow("identifier") << QVariant(QUuid(QStringLiteral("{67c8770b-44f1-410a-ab9a-f9b5446f13ee}")));
}

void tst_variant_streams::valuesOutsideTheCatalogueSurvive()
{
    QFETCH(const QVariant, value);
    QDataStream stream(written(tagged(value, 5), QDataStream::Qt_5_15, QDataStream::BigEndian));
    CVariant read;
    stream >> read;
    QCOMPARE(stream.status(), QDataStream::Ok);
    QCOMPARE(read.type(), NTypes::E_U32);
    QCOMPARE(heldBy(read), value);
}

void tst_variant_streams::anyTagIsRead_data()
{
    QTest::addColumn<int>("tag");
    for (int tag = -2; tag <= 40; ++tag)
        QTest::newRow(tagName(tag).constData()) << tag;
    QTest::newRow("smallest number") << INT_MIN;
    QTest::newRow("largest number") << INT_MAX;
}

void tst_variant_streams::anyTagIsRead()
{
    QFETCH(const int, tag);
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << QVariant(5) << static_cast<qint32>(tag);
    QDataStream stream(bytes);
    CVariant value;
    stream >> value;
    QCOMPARE(stream.status(), QDataStream::Ok);
    QCOMPARE(static_cast<int>(value.type()), tag);
    QCOMPARE(heldBy(value), QVariant(5));
}

void tst_variant_streams::valuesFollowEachOther()
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    for (const int tag : valueTags)
        out << typedSample(tag);
    out << QStringLiteral("end");
    QDataStream in(bytes);
    for (const int tag : valueTags) {
        CVariant value;
        in >> value;
        QCOMPARE(static_cast<int>(value.type()), tag);
        QCOMPARE(streamed(heldBy(value)), streamed(heldBy(typedSample(tag))));
    }
    QString end;
    in >> end;
    QCOMPARE(end, QStringLiteral("end"));
    QCOMPARE(in.status(), QDataStream::Ok);
}

void tst_variant_streams::readingReplacesTheValue()
{
    const CVariant original(7);
    const CVariant copy = original;
    CVariant value = original;
    QDataStream stream(written(typedSample(12), QDataStream::Qt_5_15, QDataStream::BigEndian));
    QDataStream &returned = stream >> value;
    QCOMPARE(&returned, &stream);
    QCOMPARE(value.type(), NTypes::E_STRING32);
    QCOMPARE(value.toStr(), QStringLiteral("Spindle 1"));
    QCOMPARE(copy.toI32(), 7);
}

void tst_variant_streams::sequentialDevices()
{
    QByteArray bytes;
    for (const int tag : valueTags)
        bytes += written(typedSample(tag), QDataStream::Qt_5_15, QDataStream::BigEndian);
    SequentialBuffer device(bytes);
    QDataStream stream(&device);
    for (const int tag : valueTags) {
        CVariant value;
        stream >> value;
        QCOMPARE(stream.status(), QDataStream::Ok);
        QCOMPARE(static_cast<int>(value.type()), tag);
        QCOMPARE(streamed(heldBy(value)), streamed(heldBy(typedSample(tag))));
    }
    QVERIFY(stream.atEnd());
}

// A value that arrives in parts is read again when there is more.
void tst_variant_streams::transactionsBeginAgain()
{
    const QByteArray bytes = written(typedSample(12), QDataStream::Qt_5_15, QDataStream::BigEndian);
    for (int arrived = 0; arrived < bytes.size(); ++arrived) {
        SequentialBuffer device(bytes.left(arrived));
        QDataStream stream(&device);
        CVariant value;
        stream.startTransaction();
        stream >> value;
        QCOMPARE(stream.status(), QDataStream::ReadPastEnd);
        QVERIFY(!stream.commitTransaction());
        device.arrive(bytes.mid(arrived));
        stream.startTransaction();
        stream >> value;
        QVERIFY2(stream.commitTransaction(), qPrintable(QString::number(arrived)));
        QCOMPARE(value.toStr(), QStringLiteral("Spindle 1"));
    }
}

void tst_variant_streams::numbersReturnWithTagAndValue()
{
    QRandomGenerator generator(1905);
    for (int round = 0; round < 500; ++round) {
        for (const int tag : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}) {
            const QByteArray raw =
                randomBytes(static_cast<int>(CDataTypeParser::typeSize(typeOf(tag))), generator);
            const CVariant value = CVariant::fromByteArray(raw, typeOf(tag));
            CVariant read;
            QDataStream stream(written(value, QDataStream::Qt_5_15, QDataStream::BigEndian));
            stream >> read;
            QCOMPARE(static_cast<int>(read.type()), tag);
            if (tag != NTypes::E_F32 && tag != NTypes::E_F64) {
                QVERIFY(read == value);
                QCOMPARE(read.toByteArray(), raw);
            }
        }
    }
}

void tst_variant_streams::typesAreKnownBeforeTheFirstValue()
{
    for (const char *const name :
         {"NTypes::sVersion_t", "NTypes::sVersion4_t", "NTypes::uIPv4HAddr_t", "NTypes::sCommand_t",
          "NTypes::sDateTime_t", "NTypes::sDs402Record01_t", "NTypes::sDs402Array_t<int16_t>",
          "NTypes::sDs402Array_t<int32_t>", "NTypes::sDs402Array_t<uint16_t>",
          "NTypes::sDs402Array_t<uint32_t>", "CString32", "CString64", "CString128"}) {
        const int type = QMetaType::type(name);
        QVERIFY2(type != QMetaType::UnknownType, name);
        QCOMPARE(QMetaType::typeName(type), name);
    }
}

QTEST_GUILESS_MAIN(tst_variant_streams)
#include "tst_variant_streams.moc"
