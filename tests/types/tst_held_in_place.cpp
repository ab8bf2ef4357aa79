// SPDX-License-Identifier: MIT
// Numbers and records that are read and written in the memory of a QVariant: it looks as Qt makes it, and
// every answer is the one of the long way.
#include "VariantSamples.h"

#include <LoggedTest.h>

#include <QTest>

#include <cmath>
#include <cstring>
#include <limits>

using namespace VariantSamples;

namespace {

constexpr int rounds = 2000;

// The tags whose values are held in place.
QVector<int> numberTags()
{
    return {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
}

QVector<int> recordTags()
{
    return {16, 21, 22, 23, 26, 27, 30, 32};
}

int sizeOfTag(int tag)
{
    return static_cast<int>(CDataTypeParser::typeSize(typeOf(tag)));
}

// All that Qt knows of a held value: 8 bytes, type and flags. Bytes beyond the value's size do not count.
bool isSameMemory(const QVariant &a, const QVariant &b, int size)
{
    const auto &left = a.data_ptr();
    const auto &right = b.data_ptr();
    return std::memcmp(&left.data, &right.data, static_cast<std::size_t>(size)) == 0
           && left.type == right.type && left.is_shared == right.is_shared && left.is_null == right.is_null;
}

// A value that Qt calls null although it has a type.
QVariant flaggedNull(QVariant value)
{
    value.data_ptr().is_null = 1;
    return value;
}

template<typename T>
QVariant byQt(const QByteArray &bytes)
{
    return QVariant::fromValue(recordOf<T>(bytes));
}

// The raw bytes as Qt holds them: small integers widened.
QVariant heldByQt(int tag, const QByteArray &bytes)
{
    switch (tag) {
    case 1:
        return int(recordOf<quint8>(bytes));
    case 2:
        return int(recordOf<qint8>(bytes));
    case 3:
        return int(recordOf<quint16>(bytes));
    case 4:
        return int(recordOf<qint16>(bytes));
    case 5:
        return byQt<quint32>(bytes);
    case 6:
        return byQt<qint32>(bytes);
    case 7:
        return byQt<float>(bytes);
    case 8:
        return byQt<quint64>(bytes);
    case 9:
        return byQt<qint64>(bytes);
    case 10:
        return byQt<double>(bytes);
    case 16:
        return byQt<NTypes::sDateTime_t>(bytes);
    case 21:
        return byQt<NTypes::sVersion_t>(bytes);
    case 22:
        return byQt<NTypes::uIPv4HAddr_t>(bytes);
    case 23:
        return byQt<NTypes::sCommand_t>(bytes);
    case 26:
        return byQt<NTypes::sDs402Record01_t>(bytes);
    case 27:
        return byQt<NTypes::sDs402Array_t<qint16>>(bytes);
    case 30:
        return byQt<NTypes::sDs402Array_t<quint16>>(bytes);
    case 32:
        return byQt<NTypes::sVersion4_t>(bytes);
    default:
        return QVariant();
    }
}

// The same number in a Qt type that its tag does not hold, so that Qt is asked for everything. A double only
// when it is a float as well.
QVariant heldOtherwise(int tag, const QByteArray &bytes)
{
    const QVariant held = heldByQt(tag, bytes);
    switch (tag) {
    case 7:
        return held.toDouble();
    case 8:
        return held.value<qint64>();
    case 9:
        return held.value<quint64>();
    case 10:
        return QVariant(static_cast<float>(held.toDouble()));
    default:
        return QVariant(held.value<qint64>());
    }
}

// Floating point is a float in both types, and no NaN of the kind that changes with its type.
QByteArray randomNumber(int tag, QRandomGenerator &generator)
{
    QByteArray bytes = randomBytes(sizeOfTag(tag), generator);
    if (tag != NTypes::E_F32 && tag != NTypes::E_F64)
        return bytes;
    const auto number = recordOf<float>(bytes);
    const float usable = std::isnan(number) ? std::numeric_limits<float>::quiet_NaN() : number;
    return tag == NTypes::E_F32 ? bytesOf(usable) : bytesOf(static_cast<double>(usable));
}

void addTagRows(const QVector<int> &tags)
{
    QTest::addColumn<int>("tag");
    for (const int tag : tags)
        QTest::newRow(tagName(tag).constData()) << tag;
}

struct Answers
{
    QVector<double> numbers;
    QVector<bool> flags;

    bool operator==(const Answers &other) const
    {
        const auto isSame = [](double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); };
        return std::equal(numbers.begin(), numbers.end(), other.numbers.begin(), isSame)
               && flags == other.flags;
    }
};

Answers answersOf(const CVariant &value)
{
    Answers answers;
    const auto add = [&](auto read) {
        bool ok = false;
        answers.numbers.append(static_cast<double>(read(ok)));
        answers.flags.append(ok);
    };
    add([&](bool &ok) { return value.toU8(&ok); });
    add([&](bool &ok) { return value.toI8(&ok); });
    add([&](bool &ok) { return value.toU16(&ok); });
    add([&](bool &ok) { return value.toI16(&ok); });
    add([&](bool &ok) { return value.toU32(&ok); });
    add([&](bool &ok) { return value.toI32(&ok); });
    add([&](bool &ok) { return value.toF32(&ok); });
    add([&](bool &ok) { return value.toU64(&ok); });
    add([&](bool &ok) { return value.toI64(&ok); });
    add([&](bool &ok) { return value.toF64(&ok); });
    for (int target = 0; target <= 32; ++target)
        answers.flags.append(value.canConvertTo(typeOf(target)));
    return answers;
}

// Every Qt type that a number may be held in, with random content.
QVector<QVariant> heldNumbers(QRandomGenerator &generator)
{
    const QByteArray bytes = randomBytes(8, generator);
    return {QVariant(recordOf<qint32>(bytes)),
            QVariant(recordOf<quint32>(bytes)),
            QVariant(recordOf<qint64>(bytes)),
            QVariant(recordOf<quint64>(bytes)),
            QVariant(recordOf<double>(bytes)),
            QVariant(recordOf<float>(bytes)),
            QVariant(std::numeric_limits<float>::infinity()),
            QVariant::fromValue(recordOf<quint8>(bytes)),
            QVariant::fromValue(recordOf<qint8>(bytes)),
            QVariant::fromValue(recordOf<quint16>(bytes)),
            QVariant::fromValue(recordOf<qint16>(bytes)),
            QVariant(QVariant::Int),
            QVariant(QVariant::Double),
            QVariant(true),
            QVariant(QStringLiteral("12"))};
}

struct StreamWay
{
    QDataStream::Version version;
    QDataStream::ByteOrder order;
    QDataStream::FloatingPointPrecision precision;

    void prepare(QDataStream &stream) const
    {
        stream.setVersion(version);
        stream.setByteOrder(order);
        stream.setFloatingPointPrecision(precision);
    }
};

QVector<StreamWay> streamWays()
{
    QVector<StreamWay> ways;
    for (const auto version : {QDataStream::Qt_4_0, QDataStream::Qt_4_5, QDataStream::Qt_4_6,
                               QDataStream::Qt_4_9, QDataStream::Qt_5_0, QDataStream::Qt_5_15}) {
        for (const auto order : {QDataStream::BigEndian, QDataStream::LittleEndian}) {
            for (const auto precision : {QDataStream::SinglePrecision, QDataStream::DoublePrecision})
                ways.append({version, order, precision});
        }
    }
    return ways;
}

template<typename Write>
QByteArray written(const StreamWay &way, Write write)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    way.prepare(stream);
    write(stream);
    return bytes;
}

// What Qt's own operators read: nothing unless all of it is there.
CVariant readByQt(QDataStream &stream)
{
    QVariant value;
    qint32 tag = 0;
    stream >> value >> tag;
    return stream.status() == QDataStream::Ok ? tagged(value, tag) : CVariant();
}

bool isReadAsByQt(const QByteArray &bytes, const StreamWay &way)
{
    QDataStream stream(bytes);
    way.prepare(stream);
    CVariant value;
    stream >> value;
    QDataStream plainStream(bytes);
    way.prepare(plainStream);
    const CVariant plain = readByQt(plainStream);
    const bool isSameEnd =
        (stream.status() == QDataStream::Ok) == (plainStream.status() == QDataStream::Ok)
        && (stream.status() != QDataStream::Ok || stream.device()->pos() == plainStream.device()->pos());
    return isSameEnd && value.type() == plain.type() && streamed(value) == streamed(plain);
}

} // namespace

class tst_held_in_place : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void memoryIsThatOfQt_data();
    void memoryIsThatOfQt();
    void emptyMemoryIsThatOfQt();
    void nothingIsHeldInPlaceOfAString_data();
    void nothingIsHeldInPlaceOfAString();
    void copiesAreThatOfQt_data();
    void copiesAreThatOfQt();
    void whatQtHoldsOutlivesTheVariant_data();
    void whatQtHoldsOutlivesTheVariant();
    void numbersAnswerAsTheLongWay_data();
    void numbersAnswerAsTheLongWay();
    void integersBeyondTheirTagAnswerAsTheLongWay_data();
    void integersBeyondTheirTagAnswerAsTheLongWay();
    void nullNumbersAreNoZeros_data();
    void nullNumbersAreNoZeros();
    void nullStringsHaveNoText_data();
    void nullStringsHaveNoText();
    void stringsAreSharedWithQt_data();
    void stringsAreSharedWithQt();
    void stringsOfQtAreDestroyed_data();
    void stringsOfQtAreDestroyed();
    void numbersCompareAsTheLongWay_data();
    void numbersCompareAsTheLongWay();
    void recordsGiveTheirBytes_data();
    void recordsGiveTheirBytes();
    void streamIsThatOfQt();
    void readingIsThatOfQt();
};

void tst_held_in_place::memoryIsThatOfQt_data()
{
    addTagRows(numberTags() + recordTags());
}

void tst_held_in_place::memoryIsThatOfQt()
{
    QFETCH(int, tag);
    QRandomGenerator generator(1);
    const int size = sizeOfTag(tag);
    const int heldSize = tag <= NTypes::E_I16 ? int(sizeof(int)) : size;
    for (int i = 0; i < rounds; ++i) {
        const QByteArray bytes = i == 0 ? QByteArray(size, '\0') : randomBytes(size, generator);
        const QVariant expected = heldByQt(tag, bytes);
        const QVariant ours = CVariant::fromByteArray(bytes, typeOf(tag));
        QVERIFY2(isSameMemory(ours, expected, heldSize), bytes.toHex().constData());
    }
}

void tst_held_in_place::emptyMemoryIsThatOfQt()
{
    CVariant variant = CVariant::fromByteArray(QByteArray(4, '\1'), NTypes::E_VERSION);
    variant.setRawData(nullptr, 0, NTypes::E_VERSION);
    QVERIFY(isSameMemory(variant, QVariant(), 8));
    QVERIFY(isSameMemory(CVariant(), QVariant(), 8));
}

void tst_held_in_place::nothingIsHeldInPlaceOfAString_data()
{
    addTagRows({12, 14, 17});
}

// Qt can be brought to make a value of no type that it does not call null: type and flags are all 0.
void tst_held_in_place::nothingIsHeldInPlaceOfAString()
{
    QFETCH(int, tag);
    const int any = 5;
    const QVariant nothing(QMetaType::UnknownType, &any);
    QVERIFY(!nothing.isValid() && nothing.data_ptr().is_null == 0);
    QCOMPARE(tagged(nothing, tag).toByteArray(), QByteArray(sizeOfTag(tag), '\0'));
}

void tst_held_in_place::copiesAreThatOfQt_data()
{
    addTagRows(numberTags() + recordTags());
}

void tst_held_in_place::copiesAreThatOfQt()
{
    QFETCH(int, tag);
    const int size = sizeOfTag(tag);
    for (const CVariant &sample : {typedSample(tag), rawSample(tag)}) {
        const CVariant copy(sample);
        CVariant assigned(CString32(QStringLiteral("before")));
        assigned = sample;
        QVERIFY(isSameMemory(copy, sample, size));
        QVERIFY(isSameMemory(assigned, sample, size));
        QCOMPARE(copy.type(), typeOf(tag));
        QCOMPARE(assigned.type(), typeOf(tag));
        CVariant replaced(sample);
        replaced = CVariant(CString32(QStringLiteral("after")));
        QCOMPARE(replaced.toStr(), QStringLiteral("after"));
        CVariant &itself = replaced;
        replaced = itself;
        QCOMPARE(replaced.toStr(), QStringLiteral("after"));
    }
}

void tst_held_in_place::whatQtHoldsOutlivesTheVariant_data()
{
    addTagRows(numberTags() + recordTags());
}

void tst_held_in_place::whatQtHoldsOutlivesTheVariant()
{
    QFETCH(int, tag);
    QVariant held;
    {
        const CVariant variant = typedSample(tag);
        held = variant;
    }
    QCOMPARE(tagged(held, tag).toByteArray(), sampleBytes(tag));
    QVERIFY(held == QVariant(typedSample(tag)) || tag >= NTypes::E_2DF32F32);
}

void tst_held_in_place::numbersAnswerAsTheLongWay_data()
{
    addTagRows(numberTags());
}

void tst_held_in_place::numbersAnswerAsTheLongWay()
{
    QFETCH(int, tag);
    QRandomGenerator generator(2);
    for (int i = 0; i < rounds; ++i) {
        const QByteArray bytes = randomNumber(tag, generator);
        const CVariant fast = CVariant::fromByteArray(bytes, typeOf(tag));
        const CVariant slow = tagged(heldOtherwise(tag, bytes), tag);
        QVERIFY2(answersOf(fast) == answersOf(slow), bytes.toHex().constData());
        QCOMPARE(fast.toStr(), slow.toStr());
        QCOMPARE(fast.toByteArray(), slow.toByteArray());
    }
}

void tst_held_in_place::integersBeyondTheirTagAnswerAsTheLongWay_data()
{
    addTagRows({1, 2, 3, 4});
}

// An int that an 8- or 16-bit integer could not be: it is read whole, and its text and bytes are cut.
void tst_held_in_place::integersBeyondTheirTagAnswerAsTheLongWay()
{
    QFETCH(int, tag);
    QRandomGenerator generator(7);
    for (int i = 0; i < rounds; ++i) {
        const auto number = static_cast<int>(generator.generate()) >> generator.bounded(32);
        const CVariant fast = tagged(number, tag);
        const CVariant slow = tagged(qint64(number), tag);
        QVERIFY2(answersOf(fast) == answersOf(slow), QByteArray::number(number).constData());
        QCOMPARE(fast.toStr(), slow.toStr());
        QCOMPARE(fast.toByteArray(), slow.toByteArray());
        QVERIFY(fast.compareValue(slow));
        QVERIFY(fast.compareValue(tagged(number, tag)));
        QVERIFY(!fast.compareValue(tagged(number ^ 1 << generator.bounded(31), tag)));
        QCOMPARE(fast.compareValue(CVariant::fromByteArray(fast.toByteArray(), typeOf(tag))),
                 fast.toI32() == CVariant::fromByteArray(fast.toByteArray(), typeOf(tag)).toI32());
    }
}

void tst_held_in_place::nullNumbersAreNoZeros_data()
{
    addTagRows(numberTags() + recordTags());
}

void tst_held_in_place::nullNumbersAreNoZeros()
{
    QFETCH(int, tag);
    const QVariant zero = heldByQt(tag, QByteArray(sizeOfTag(tag), '\0'));
    const CVariant null = tagged(flaggedNull(zero), tag);
    for (const CVariant &value : {null, CVariant(null)}) {
        QVERIFY(value.isNull());
        QVERIFY(value.toStr().isNull());
        QCOMPARE(value.toByteArray(), QByteArray(sizeOfTag(tag), '\0'));
        QCOMPARE(value.compareValue(tagged(zero, tag)), tag != NTypes::E_VERSION_4);
    }
    CVariant replaced(null);
    replaced = tagged(zero, tag);
    QVERIFY(!replaced.isNull());
    QVERIFY(!replaced.toStr().isNull());
}

void tst_held_in_place::nullStringsHaveNoText_data()
{
    addTagRows({12, 14, 17});
}

void tst_held_in_place::nullStringsHaveNoText()
{
    QFETCH(int, tag);
    const CVariant value = typedSample(tag);
    QVERIFY(!value.toStr().isEmpty());
    const CVariant null = tagged(flaggedNull(value), tag);
    QVERIFY(null.isNull());
    QVERIFY(null.toStr().isNull());
    QCOMPARE(null.toByteArray(), value.toByteArray());
    QVERIFY(!null.compareValue(value));
}

void tst_held_in_place::stringsAreSharedWithQt_data()
{
    addTagRows({12, 14, 17});
}

void tst_held_in_place::stringsAreSharedWithQt()
{
    QFETCH(int, tag);
    const QString text = QStringLiteral("spindle");
    QVariant held;
    const auto holders = [&held] { return held.data_ptr().data.shared->ref.loadRelaxed(); };
    {
        CVariant parsed = CVariant::fromStr(text, typeOf(tag));
        held = parsed;
        QCOMPARE(holders(), 2);
        {
            CVariant copy(parsed);
            QCOMPARE(holders(), 3);
            copy = 5;
            QCOMPARE(holders(), 2);
            copy = parsed;
            QCOMPARE(holders(), 3);
        }
        QCOMPARE(holders(), 2);
        parsed.setRawData(nullptr, 0, typeOf(tag));
        QCOMPARE(holders(), 1);
    }
    QCOMPARE(tagged(held, tag).toStr(), text);
    QCOMPARE(holders(), 1);
}

void tst_held_in_place::stringsOfQtAreDestroyed_data()
{
    QTest::addColumn<QVariant>("held");
    QTest::newRow("CString32") << QVariant::fromValue(CString32(QStringLiteral("axis")));
    QTest::newRow("CString64") << QVariant::fromValue(CString64(QStringLiteral("axis")));
    QTest::newRow("CString128") << QVariant::fromValue(CString128(QStringLiteral("axis")));
    QTest::newRow("null CString32") << flaggedNull(QVariant::fromValue(CString32()));
    QTest::newRow("null CString128") << flaggedNull(QVariant::fromValue(CString128()));
    QTest::newRow("record on the heap") << QVariant::fromValue(NTypes::sDs402Array_t<qint32>{{1, 2, 3}});
    QTest::newRow("list") << QVariant(QStringList{QStringLiteral("axis")});
}

// Whatever the tag says of it; the last holder destroys it.
void tst_held_in_place::stringsOfQtAreDestroyed()
{
    QFETCH(QVariant, held);
    const QVariant made = held;
    for (const int tag : {0, 6, 12, 14, 17, 22, 28, 33, -1}) {
        QVariant own = made;
        own.detach(); // a value of its own
        CVariant value = tagged(own, tag);
        own.clear();
        QCOMPARE(streamed(value), streamed(made));
        CVariant copy(value);
        value = 5;
        QCOMPARE(streamed(copy), streamed(made));
        copy.setRawData(nullptr, 0, NTypes::E_I32);
        QVERIFY(isSameMemory(copy, QVariant(), 0));
    }
}

void tst_held_in_place::numbersCompareAsTheLongWay_data()
{
    addTagRows(numberTags());
}

// Few different values, so that equal ones meet.
void tst_held_in_place::numbersCompareAsTheLongWay()
{
    QFETCH(int, tag);
    QRandomGenerator generator(3);
    QVector<QByteArray> values;
    for (int i = 0; i < 40; ++i)
        values.append(randomNumber(tag, generator));
    for (const QByteArray &a : values) {
        for (const QByteArray &b : values) {
            const CVariant fastA = CVariant::fromByteArray(a, typeOf(tag));
            const CVariant fastB = CVariant::fromByteArray(b, typeOf(tag));
            const CVariant slowA = tagged(heldOtherwise(tag, a), tag);
            const CVariant slowB = tagged(heldOtherwise(tag, b), tag);
            QCOMPARE(fastA.compareValue(fastB), slowA.compareValue(slowB));
            QCOMPARE(fastA.compareValue(slowB), slowA.compareValue(fastB));
        }
    }
}

void tst_held_in_place::recordsGiveTheirBytes_data()
{
    addTagRows(recordTags());
}

void tst_held_in_place::recordsGiveTheirBytes()
{
    QFETCH(int, tag);
    QRandomGenerator generator(4);
    const int size = sizeOfTag(tag);
    for (int i = 0; i < rounds; ++i) {
        const QByteArray bytes = randomBytes(size, generator);
        const CVariant value = CVariant::fromByteArray(bytes, typeOf(tag));
        QCOMPARE(value.toByteArray(), bytes);
        const bool isComparable = tag != NTypes::E_VERSION_4; // which no number can be read from
        QCOMPARE(value.compareValue(CVariant::fromByteArray(bytes, typeOf(tag))), isComparable);
        QByteArray other = bytes;
        const int position = generator.bounded(size);
        other[position] = static_cast<char>(other.at(position) ^ (1 << generator.bounded(8)));
        QVERIFY(!value.compareValue(CVariant::fromByteArray(other, typeOf(tag))));
    }
}

void tst_held_in_place::streamIsThatOfQt()
{
    QRandomGenerator generator(5);
    const QVector<StreamWay> ways = streamWays();
    for (const StreamWay &way : ways) {
        for (int i = 0; i < 50; ++i) {
            const QVector<QVariant> numbers = heldNumbers(generator);
            for (const QVariant &held : numbers) {
                const qint32 tag = generator.bounded(40);
                const QByteArray ours =
                    written(way, [&](QDataStream &stream) { stream << tagged(held, tag); });
                const QByteArray plain = written(way, [&](QDataStream &stream) { stream << held << tag; });
                QCOMPARE(ours, plain);
            }
        }
    }
}

// Whole, cut at every place, and with every byte of type and flag changed.
void tst_held_in_place::readingIsThatOfQt()
{
    QRandomGenerator generator(6);
    const QVector<StreamWay> ways = streamWays();
    for (const StreamWay &way : ways) {
        const QVector<QVariant> numbers = heldNumbers(generator);
        for (const QVariant &held : numbers) {
            const QByteArray bytes =
                written(way, [&](QDataStream &stream) { stream << held << qint32(7) << quint8(99); });
            for (int length = 4; length <= bytes.size(); ++length)
                QVERIFY2(isReadAsByQt(bytes.left(length), way), bytes.left(length).toHex().constData());
        }
        const QByteArray beyondFloat = written(way, [](QDataStream &stream) {
            stream << quint32(QMetaType::Float) << qint8(0) << 1e300 << qint32(7) << quint64(0);
        });
        QVERIFY(isReadAsByQt(beyondFloat, way));
    }
}

QTEST_APPLESS_MAIN(tst_held_in_place)
#include "tst_held_in_place.moc"
