// SPDX-License-Identifier: MIT
// What the fixed strings do four units or a whole field at a time, beside the same done unit by unit, over
// many inputs.
#include "FixedStringClasses.h"

#include <AllocationCounter.h>
#include <CStr.h>
#include <LoggedTest.h>
#include <SmallDevice.h>

#include <QRandomGenerator>
#include <QTest>
#include <QTextCodec>
#include <QtEndian>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <iterator>
#include <memory>

namespace {

// What the quick look takes for units that need the codec is invalid to this one.
bool needsCodec(quint16 unit)
{
    return QChar::isSurrogate(unit) || unit == 0xFEFF || unit >= 0xFFFE;
}

bool isPlain(const QByteArray &bytes)
{
    bool plain = bytes.size() % 2 == 0;
    for (int i = 0; i + 1 < bytes.size(); i += 2)
        plain = plain && !needsCodec(qFromLittleEndian<quint16>(bytes.constData() + i));
    return plain;
}

// Finds an invalid character in all bytes that are not plain, so that isUTF16() tells whether it was asked.
class RefusingCodec : public QTextCodec
{
public:
    ~RefusingCodec() override = default;

    QByteArray name() const override { return QByteArrayLiteral("UTF-16"); }
    int mibEnum() const override { return 1015; }

protected:
    QString convertToUnicode(const char *bytes, int size, ConverterState *state) const override
    {
        if (state != nullptr)
            state->invalidChars += isPlain(QByteArray(bytes, size)) ? 0 : 1;
        return {};
    }

    QByteArray convertFromUnicode(const QChar *, int, ConverterState *) const override { return {}; }
};

quint16 randomUnit(QRandomGenerator &generator)
{
    static constexpr quint16 edges[] = {0,      1,      0x00FF, 0x7FFF, 0x8000, 0xD7FF,
                                        0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0xE000, 0xFEFE,
                                        0xFEFF, 0xFF00, 0xFFFD, 0xFFFE, 0xFFFF};
    const quint32 kind = generator.bounded(8U);
    if (kind == 0)
        return edges[generator.bounded(int(std::size(edges)))];
    return static_cast<quint16>(kind == 1 ? generator.bounded(0x10000U) : generator.bounded(0x20U, 0x400U));
}

// Bytes of random units, some of them with an end in the midst of a unit.
QByteArray randomUnits(int maximum, QRandomGenerator &generator)
{
    QByteArray bytes;
    for (int left = generator.bounded(maximum + 1); left > 0; --left) {
        const quint16 unit = randomUnit(generator);
        bytes.append(static_cast<char>(unit & 0xFF)).append(static_cast<char>(unit >> 8));
    }
    if (!bytes.isEmpty() && generator.bounded(8) == 0)
        bytes.chop(1);
    return bytes;
}

// The plain way to the text of a field.
QString textOf(const QByteArray &bytes)
{
    QString text;
    for (int i = 0; i + 1 < bytes.size(); i += 2) {
        const auto unit = qFromLittleEndian<quint16>(bytes.constData() + i);
        if (unit == 0)
            break;
        text.append(QChar(unit));
    }
    return text;
}

QByteArray withoutPairs(const QByteArray &bytes)
{
    QByteArray kept;
    for (int i = 0; i < bytes.size(); ++i) {
        if (i + 1 < bytes.size() && bytes.at(i) == '\xFF' && bytes.at(i + 1) == '\xFF')
            ++i;
        else
            kept.append(bytes.at(i));
    }
    return kept;
}

template<typename String>
String randomString(QRandomGenerator &generator)
{
    return String(randomUnits(String::unitCount, generator));
}

int sign(int number)
{
    return int(number > 0) - int(number < 0);
}

// How many bytes a device gives and takes at a time: a sequential one no more than a unit.
int atOnce(bool sequential)
{
    return sequential ? 2 : INT_MAX;
}

void addStreamRows()
{
    QTest::addColumn<int>("byteOrder");
    QTest::addColumn<bool>("sequential");
    QTest::newRow("big-endian") << int(QDataStream::BigEndian) << false;
    QTest::newRow("little-endian") << int(QDataStream::LittleEndian) << false;
    QTest::newRow("big-endian, sequential") << int(QDataStream::BigEndian) << true;
    QTest::newRow("little-endian, sequential") << int(QDataStream::LittleEndian) << true;
}

} // namespace

class tst_fixed_strings_at_speed : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase_data() { addClassRows(); }
    void initTestCase();

    void anyUnitsAreJudged();
    void everyUnitIsJudgedAtEveryPlace();
    void anyBytesAreTaken();
    void textEndsAtAnyPlace();
    void textsOfByteArraysAndUnits();
    void textsCompareAsStrings();
    void streamFormIsTheUnits_data() { addStreamRows(); }
    void streamFormIsTheUnits();
    void fullDeviceFailsAsForSingleUnits_data() { addStreamRows(); }
    void fullDeviceFailsAsForSingleUnits();
    void shortStreamEndsAsForSingleUnits_data() { addStreamRows(); }
    void shortStreamEndsAsForSingleUnits();
    void failedStreamsStayFailed();
    void readingFromAWriteOnlyDeviceWarnsOfEveryUnit();
    void allocations();

private:
    std::unique_ptr<RefusingCodec> mCodec;
};

void tst_fixed_strings_at_speed::initTestCase()
{
    if (!mCodec)
        mCodec = std::make_unique<RefusingCodec>();
    QCOMPARE(QTextCodec::codecForName("UTF-16"), static_cast<QTextCodec *>(mCodec.get()));
}

void tst_fixed_strings_at_speed::anyUnitsAreJudged()
{
    QRandomGenerator generator(1);
    for (int i = 0; i < 20000; ++i) {
        const QByteArray bytes = randomUnits(20, generator);
        QCOMPARE(CString32::isUTF16(bytes), isPlain(bytes));
        // A byte array's bytes may have any alignment.
        const QByteArray moved = 'x' + bytes;
        QCOMPARE(CString32::isUTF16(QByteArray::fromRawData(moved.constData() + 1, bytes.size())),
                 isPlain(bytes));
    }
}

void tst_fixed_strings_at_speed::everyUnitIsJudgedAtEveryPlace()
{
    for (int place = 0; place < 7; ++place) {
        for (int unit = 0; unit <= 0xFFFF; ++unit) {
            QByteArray bytes(14, '\x20');
            qToLittleEndian(static_cast<quint16>(unit), bytes.data() + std::ptrdiff_t{2} * place);
            QVERIFY(CString32::isUTF16(bytes) == !needsCodec(static_cast<quint16>(unit)));
        }
    }
}

void tst_fixed_strings_at_speed::anyBytesAreTaken()
{
    onClass([](auto empty) {
        using String = decltype(empty);
        constexpr bool is32 = String::unitCount == 32;
        QRandomGenerator generator(2);
        for (int i = 0; i < 5000; ++i) {
            const QByteArray bytes = randomUnits(String::unitCount + 4, generator);
            bool ok = false;
            const String string = String::fromByteArray(bytes, &ok);
            QCOMPARE(ok, isPlain(bytes));
            const QByteArray kept = String::unitCount == 128 || !ok ? bytes : withoutPairs(bytes);
            const QByteArray field = padded(kept.left(String::byteCount), String::byteCount);
            QCOMPARE(string.byteArray(), ok || is32 ? field : QByteArray(String::byteCount, '\0'));
        }
    });
}

void tst_fixed_strings_at_speed::textEndsAtAnyPlace()
{
    onClass([](auto empty) {
        using String = decltype(empty);
        QRandomGenerator generator(3);
        for (int end = 0; end <= String::unitCount; ++end) {
            for (int i = 0; i < 20; ++i) {
                QString text;
                while (text.size() < end)
                    text.append(QChar(static_cast<ushort>(generator.bounded(1U, 0x10000U))));
                String string = String(QByteArray(String::byteCount, i % 2 == 0 ? '\1' : '\xFF'));
                string = text;
                QCOMPARE(string.str(), text);
                QCOMPARE(string.str().isNull(), text.isEmpty() && String::unitCount != 128);
                QCOMPARE(string.isNull(), text.isEmpty());
            }
        }
    });
}

void tst_fixed_strings_at_speed::textsOfByteArraysAndUnits()
{
    QRandomGenerator generator(4);
    for (int i = 0; i < 5000; ++i) {
        const QByteArray bytes = randomUnits(11, generator);
        QCOMPARE(CStr::fromUtf16(bytes), textOf(bytes));
        const QByteArray moved = 'x' + bytes;
        QCOMPARE(CStr::fromUtf16(QByteArray::fromRawData(moved.constData() + 1, bytes.size())),
                 textOf(bytes));
    }
}

void tst_fixed_strings_at_speed::textsCompareAsStrings()
{
    onClass([](auto empty) {
        using String = decltype(empty);
        QRandomGenerator generator(5);
        for (int i = 0; i < 5000; ++i) {
            const auto a = randomString<String>(generator);
            auto b = randomString<String>(generator);
            if (i % 4 == 0)
                b = a.str();
            if (i % 4 == 1)
                b = a.str().left(generator.bounded(5));
            QCOMPARE(a.compareText(b) == 0, a.str() == b.str());
            QCOMPARE(a.compareText(b) < 0, a.str() < b.str());
            QCOMPARE(sign(a.compareText(b)), sign(a.str().compare(b.str())));
            QCOMPARE(sign(b.compareText(a)), -sign(a.compareText(b)));
            QCOMPARE(a.compareText(a), 0);
        }
    });
}

void tst_fixed_strings_at_speed::streamFormIsTheUnits()
{
    QFETCH(const int, byteOrder);
    QFETCH(const bool, sequential);
    onClass([&](auto empty) {
        using String = decltype(empty);
        QRandomGenerator generator(6);
        for (int i = 0; i < 500; ++i) {
            const auto string = randomString<String>(generator);
            QByteArray bytes;
            QByteArray expected;
            SmallDevice device(&bytes, INT_MAX, sequential, atOnce(sequential));
            QVERIFY(device.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
            QDataStream stream(&device);
            QDataStream plain(&expected, QIODevice::WriteOnly);
            stream.setByteOrder(QDataStream::ByteOrder(byteOrder));
            plain.setByteOrder(QDataStream::ByteOrder(byteOrder));
            unsigned short units[String::unitCount] = {};
            QVERIFY(readUnits(string, units));
            for (const unsigned short unit : units)
                plain << static_cast<qint16>(unit);
            stream << string;
            QCOMPARE(bytes, expected);

            SmallDevice source(&bytes, 0, sequential, atOnce(sequential));
            QVERIFY(source.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
            stream.setDevice(&source);
            auto read = randomString<String>(generator);
            stream >> read;
            QCOMPARE(stream.status(), QDataStream::Ok);
            QCOMPARE(read, string);
        }
    });
}

void tst_fixed_strings_at_speed::fullDeviceFailsAsForSingleUnits()
{
    QFETCH(const int, byteOrder);
    QFETCH(const bool, sequential);
    onClass([&](auto empty) {
        using String = decltype(empty);
        const auto string = countedString<String>();
        for (const int room : {0, 1, 2, 3, 15, 16, String::byteCount - 1, String::byteCount}) {
            QByteArray bytes;
            SmallDevice device(&bytes, room, sequential, atOnce(sequential));
            QVERIFY(device.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
            QDataStream stream(&device);
            stream.setByteOrder(QDataStream::ByteOrder(byteOrder));
            QByteArray all;
            QDataStream plain(&all, QIODevice::WriteOnly);
            plain.setByteOrder(QDataStream::ByteOrder(byteOrder));
            stream << string;
            plain << string;
            QCOMPARE(bytes, all.left(room));
            QCOMPARE(stream.status(), room < String::byteCount ? QDataStream::WriteFailed : QDataStream::Ok);
        }
    });
}

void tst_fixed_strings_at_speed::shortStreamEndsAsForSingleUnits()
{
    QFETCH(const int, byteOrder);
    QFETCH(const bool, sequential);
    onClass([&](auto empty) {
        using String = decltype(empty);
        QByteArray all;
        QDataStream whole(&all, QIODevice::WriteOnly);
        whole << countedString<String>() << quint16(0);
        for (int size = 0; size <= String::byteCount + 2; ++size) {
            QByteArray bytes = all.left(size);
            SmallDevice device(&bytes, 0, sequential, atOnce(sequential));
            QVERIFY(device.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
            QDataStream stream(&device);
            QDataStream plain(all.left(size));
            stream.setByteOrder(QDataStream::ByteOrder(byteOrder));
            plain.setByteOrder(QDataStream::ByteOrder(byteOrder));
            unsigned short expected[String::unitCount] = {};
            for (unsigned short &unit : expected) {
                qint16 value = 0;
                plain >> value;
                unit = static_cast<unsigned short>(value);
            }
            String string(QByteArray(String::byteCount, 'x'));
            stream >> string;
            QCOMPARE(string, String(expected));
            QCOMPARE(stream.status(), plain.status());
            QCOMPARE(stream.atEnd(), plain.atEnd());
        }
    });
}

void tst_fixed_strings_at_speed::failedStreamsStayFailed()
{
    onClass([](auto empty) {
        using String = decltype(empty);
        QByteArray bytes;
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out.setStatus(QDataStream::WriteFailed);
        out << countedString<String>();
        QCOMPARE(bytes, QByteArray());
        QCOMPARE(out.status(), QDataStream::WriteFailed);

        String string(QByteArray(String::byteCount, 'x'));
        QDataStream in(QByteArray(String::byteCount, 'y'));
        in.setStatus(QDataStream::ReadCorruptData);
        in >> string; // only a transaction stops the reading
        QCOMPARE(string, String(QByteArray(String::byteCount, 'y')));
        QCOMPARE(in.status(), QDataStream::ReadCorruptData);

        QDataStream nowhere;
        nowhere << string;
        nowhere >> string;
        QCOMPARE(string, String());
        QCOMPARE(nowhere.status(), QDataStream::Ok);
    });
}

void tst_fixed_strings_at_speed::readingFromAWriteOnlyDeviceWarnsOfEveryUnit()
{
    onClass([](auto empty) {
        using String = decltype(empty);
        QByteArray bytes;
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        auto string = countedString<String>();
        stream >> string;
        QCOMPARE(string, String());
        QCOMPARE(stream.status(), QDataStream::ReadPastEnd);
        QCOMPARE(takeLog().size(), String::unitCount);
    });
}

void tst_fixed_strings_at_speed::allocations()
{
    if (!AllocationCounter::isAvailable())
        QSKIP("allocations are not counted here");
    onClass([](auto empty) {
        using String = decltype(empty);
        const QByteArray bytes = countedString<String>().byteArray();
        QCOMPARE(allocationsOf([&] { return String::fromByteArray(bytes); }), 1);
        const String string = String::fromByteArray(bytes);
        const String other = String::fromByteArray(bytes);
        QCOMPARE(allocationsOf([&] { return string.str(); }), 1);
        QCOMPARE(allocationsOf([&] { return String(string); }), 0);
        QCOMPARE(allocationsOf([&] { return string.compareText(other); }), 0);
        QCOMPARE(allocationsOf([&] { return string.isValid(); }), 0);
    });
}

QTEST_GUILESS_MAIN(tst_fixed_strings_at_speed)

#include "tst_fixed_strings_at_speed.moc"
