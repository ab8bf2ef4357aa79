// SPDX-License-Identifier: MIT
// Numbers in streams whose devices are full, short, slow, closed, in text mode or in a transaction: bytes,
// status and position are those of Qt's own operators.
#include "VariantSamples.h"

#include <LoggedTest.h>
#include <SmallDevice.h>

#include <QBuffer>
#include <QTest>

#include <limits>

using namespace VariantSamples;

namespace {

constexpr int unlimited = std::numeric_limits<int>::max();

// Values of each size; the carriage returns among their bytes are what a device in text mode leaves out.
const QVector<QVariant> &numbers()
{
    static const QVector<QVariant> values = {QVariant::fromValue(quint8(0x0D)),
                                             QVariant::fromValue(qint8(-2)),
                                             QVariant::fromValue(quint16(0xFE0D)),
                                             QVariant::fromValue(qint16(-3)),
                                             QVariant(0xFEDC0D0AU),
                                             QVariant(-4),
                                             QVariant(1.5F),
                                             QVariant(Q_UINT64_C(0x0D23456789ABCD0D)),
                                             QVariant(Q_INT64_C(-5)),
                                             QVariant(-2.25)};
    return values;
}

void writeByQt(QDataStream &stream, const QVariant &held, qint32 tag)
{
    stream << held << tag;
}

QByteArray formOf(const QVariant &held, qint32 tag)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    writeByQt(stream, held, tag);
    return bytes;
}

struct Outcome
{
    QByteArray bytes;
    QDataStream::Status status;

    bool operator==(const Outcome &other) const { return bytes == other.bytes && status == other.status; }
};

// What is on a small device, and the status, after two values have been written.
template<typename Write>
Outcome writtenTo(int room, bool sequential, int atOnce, Write write)
{
    Outcome outcome{};
    SmallDevice device(&outcome.bytes, room, sequential, atOnce);
    device.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    QDataStream stream(&device);
    write(stream);
    write(stream);
    outcome.status = stream.status();
    return outcome;
}

} // namespace

class tst_number_streams : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void smallDevicesTakeWhatTheyTakeOfQt_data();
    void smallDevicesTakeWhatTheyTakeOfQt();
    void smallDevicesGiveAllThatIsThere_data();
    void smallDevicesGiveAllThatIsThere();
    void transactionsMayBeTakenBack_data();
    void transactionsMayBeTakenBack();
    void textModeLeavesOutCarriageReturns();
    void devicesThatCannotBeReadWarnOnce();
    void devicesThatCannotBeWrittenWarnOnce();
    void failedStreamsWriteNothing();
    void failedStreamsGiveNothing();
};

void tst_number_streams::smallDevicesTakeWhatTheyTakeOfQt_data()
{
    QTest::addColumn<bool>("sequential");
    QTest::addColumn<int>("atOnce");
    QTest::newRow("random access") << false << unlimited;
    QTest::newRow("sequential") << true << unlimited;
    QTest::newRow("sequential, 8 bytes at a time") << true << 8;
    QTest::newRow("sequential, 4 bytes at a time") << true << 4;
    QTest::newRow("sequential, 3 bytes at a time") << true << 3;
}

void tst_number_streams::smallDevicesTakeWhatTheyTakeOfQt()
{
    QFETCH(const bool, sequential);
    QFETCH(const int, atOnce);
    for (const QVariant &held : numbers()) {
        const CVariant value = tagged(held, 5);
        for (int room = 0; room <= 36; ++room) {
            const Outcome ours =
                writtenTo(room, sequential, atOnce, [&](QDataStream &stream) { stream << value; });
            const Outcome plain =
                writtenTo(room, sequential, atOnce, [&](QDataStream &stream) { writeByQt(stream, held, 5); });
            QCOMPARE(ours.bytes, plain.bytes);
            QCOMPARE(ours.status, plain.status);
        }
    }
}

void tst_number_streams::smallDevicesGiveAllThatIsThere_data()
{
    QTest::addColumn<bool>("sequential");
    QTest::addColumn<int>("atOnce");
    QTest::addColumn<bool>("buffered");
    for (const bool sequential : {false, true}) {
        // A random-access device gives all that it has.
        const QVector<int> parts = sequential ? QVector<int>{unlimited, 8, 5, 4} : QVector<int>{unlimited};
        for (const int atOnce : parts) {
            for (const bool buffered : {false, true})
                QTest::addRow("%s, %d at once, %s", sequential ? "sequential" : "random access", atOnce,
                              buffered ? "buffered" : "unbuffered")
                    << sequential << atOnce << buffered;
        }
    }
}

// Two values and the beginning of a third: value, status and where the next byte is read.
void tst_number_streams::smallDevicesGiveAllThatIsThere()
{
    QFETCH(const bool, sequential);
    QFETCH(const int, atOnce);
    QFETCH(const bool, buffered);
    const QIODevice::OpenMode mode =
        QIODevice::ReadOnly | (buffered ? QIODevice::NotOpen : QIODevice::Unbuffered);
    for (const QVariant &held : numbers()) {
        QByteArray bytes = formOf(held, 5) + formOf(held, 6) + "more than the longest of all forms";
        SmallDevice device(&bytes, 0, sequential, atOnce);
        QVERIFY(device.open(mode));
        QDataStream stream(&device);
        SmallDevice plainDevice(&bytes, 0, sequential, atOnce);
        QVERIFY(plainDevice.open(mode));
        QDataStream plainStream(&plainDevice);
        for (int i = 0; i < 2 && stream.status() == QDataStream::Ok; ++i) {
            CVariant value;
            stream >> value;
            QVariant plain;
            qint32 plainTag = 0;
            plainStream >> plain >> plainTag;
            QCOMPARE(stream.status(), plainStream.status());
            QCOMPARE(device.pos(), plainDevice.pos());
            if (stream.status() == QDataStream::Ok) {
                QCOMPARE(streamed(value), streamed(plain));
                QCOMPARE(int(value.type()), plainTag);
            }
        }
    }
}

void tst_number_streams::transactionsMayBeTakenBack_data()
{
    QTest::addColumn<bool>("sequential");
    QTest::newRow("random access") << false;
    QTest::newRow("sequential") << true;
}

void tst_number_streams::transactionsMayBeTakenBack()
{
    QFETCH(const bool, sequential);
    for (const QVariant &held : numbers()) {
        QByteArray bytes = formOf(held, 5) + formOf(held, 6);
        SmallDevice device(&bytes, 0, sequential, unlimited);
        QVERIFY(device.open(QIODevice::ReadOnly));
        QDataStream stream(&device);
        CVariant value;
        for (const bool isTakenBack : {true, false}) {
            stream.startTransaction();
            stream >> value;
            QCOMPARE(streamed(value), streamed(held));
            QCOMPARE(value.type(), NTypes::E_U32);
            if (isTakenBack)
                stream.rollbackTransaction();
            else
                QVERIFY(stream.commitTransaction());
        }
        stream >> value;
        QCOMPARE(value.type(), NTypes::E_I32);
        stream.startTransaction();
        stream >> value; // the end
        QVERIFY(!stream.commitTransaction());
        QCOMPARE(stream.status(), QDataStream::ReadPastEnd);
    }
}

void tst_number_streams::textModeLeavesOutCarriageReturns()
{
    for (const QVariant &held : numbers()) {
        QByteArray bytes = formOf(held, 0x0D0D) + formOf(held, 6) + formOf(held, 7);
        QBuffer buffer(&bytes);
        QVERIFY(buffer.open(QIODevice::ReadOnly | QIODevice::Text));
        QDataStream stream(&buffer);
        CVariant value;
        stream >> value;
        QBuffer plainBuffer(&bytes);
        QVERIFY(plainBuffer.open(QIODevice::ReadOnly | QIODevice::Text));
        QDataStream plainStream(&plainBuffer);
        QVariant plain;
        qint32 plainTag = 0;
        plainStream >> plain >> plainTag;
        QCOMPARE(stream.status(), plainStream.status());
        QCOMPARE(streamed(value), streamed(plain));
        QCOMPARE(int(value.type()), plainTag);
        QCOMPARE(buffer.pos(), plainBuffer.pos());
    }
}

void tst_number_streams::devicesThatCannotBeReadWarnOnce()
{
    QByteArray bytes = formOf(QVariant(5), 6);
    QBuffer buffer(&bytes);
    CVariant value(7);
    QDataStream closed(&buffer);
    closed >> value;
    QCOMPARE(takeLog(), QStringList{QStringLiteral("QIODevice::peek (QBuffer): device not open")});
    QCOMPARE(closed.status(), QDataStream::ReadPastEnd);
    QCOMPARE(value.type(), NTypes::E_UNKNOWN);

    QVERIFY(buffer.open(QIODevice::WriteOnly | QIODevice::Append));
    QDataStream stream(&buffer);
    stream >> value;
    QCOMPARE(takeLog(), QStringList{QStringLiteral("QIODevice::peek (QBuffer): WriteOnly device")});
    QCOMPARE(stream.status(), QDataStream::ReadPastEnd);
}

void tst_number_streams::devicesThatCannotBeWrittenWarnOnce()
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QDataStream closed(&buffer);
    closed << CVariant(5);
    QCOMPARE(takeLog(), QStringList{QStringLiteral("QIODevice::write (QBuffer): device not open")});
    QCOMPARE(closed.status(), QDataStream::WriteFailed);

    QVERIFY(buffer.open(QIODevice::ReadOnly));
    QDataStream stream(&buffer);
    stream << CVariant(5);
    QCOMPARE(takeLog(), QStringList{QStringLiteral("QIODevice::write (QBuffer): ReadOnly device")});
    QCOMPARE(stream.status(), QDataStream::WriteFailed);
}

void tst_number_streams::failedStreamsWriteNothing()
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setStatus(QDataStream::WriteFailed);
    stream << CVariant(5);
    QCOMPARE(bytes, QByteArray());
    QCOMPARE(stream.status(), QDataStream::WriteFailed);
}

// As from Qt's operators, which read on unless in a transaction.
void tst_number_streams::failedStreamsGiveNothing()
{
    QDataStream stream(formOf(QVariant(5), 6) + formOf(QVariant(7), 6));
    stream.setStatus(QDataStream::ReadCorruptData);
    CVariant value(7);
    stream >> value;
    QCOMPARE(value.type(), NTypes::E_UNKNOWN);
    QCOMPARE(stream.status(), QDataStream::ReadCorruptData);
    stream.resetStatus();
    stream >> value;
    QCOMPARE(value, CVariant(7));
}

QTEST_APPLESS_MAIN(tst_number_streams)
#include "tst_number_streams.moc"
