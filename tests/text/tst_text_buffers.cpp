// SPDX-License-Identifier: MIT
#include <CStr.h>

#include <LoggedTest.h>

#include <QTest>

#include <array>
#include <climits>
#include <vector>

namespace {

constexpr ushort byteOrderMark = 0xFEFF;
constexpr ushort guardUnit = 0xA5A5;

using Units = std::vector<ushort>;

QString textOf(const Units &units)
{
    QString text;
    for (const ushort unit : units)
        text += QChar(unit);
    return text;
}

// A heap buffer of exactly these bytes, without a QByteArray's terminator, so that a read beyond is seen.
class ExactBytes
{
public:
    explicit ExactBytes(const QByteArray &bytes) : mBytes(bytes.cbegin(), bytes.cend()) {}
    const char *data() const { return mBytes.data(); }
    QByteArray view() const { return QByteArray::fromRawData(data(), static_cast<int>(mBytes.size())); }

private:
    std::vector<char> mBytes;
};

} // namespace

class tst_text_buffers : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void latin1_data();
    void latin1();
    void latin1OfNothingIsNull();
    void latin1OfNoCharacterIsEmptyNotNull();
    void unitsOfABuffer_data();
    void unitsOfABuffer();
    void unitsOfNothingAreNull();
    void unitsOfNoCharacterAreEmptyNotNull();
    void unitsOfAByteArray_data();
    void unitsOfAByteArray();
    void byteArrayAtAnyAlignment();
    void byteArrayWithoutAUnitIsEmptyNotNull();
    void byteOrderMarkIsAUnitLikeAnyOther();
    void unpairedSurrogatesAreKept();
    void textIntoABuffer_data();
    void textIntoABuffer();
    void oddLengthCutsInsideAUnit();
    void cutDoesNotSpareSurrogatePairs();
    void buffersBelowOneUnitStayUntouched();
    void nullBufferIsNotWritten();
    void bufferTextReadsBack();
};

void tst_text_buffers::latin1_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("maxLen");
    QTest::addColumn<QString>("text");

    QTest::newRow("whole buffer without a NUL") << QByteArray("abc") << 3 << QStringLiteral("abc");
    QTest::newRow("cut by the length") << QByteArray("abc") << 2 << QStringLiteral("ab");
    QTest::newRow("up to the NUL") << QByteArray("ab\0cd", 5) << 5 << QStringLiteral("ab");
    QTest::newRow("NUL at the end") << QByteArray("ab\0", 3) << 3 << QStringLiteral("ab");
    QTest::newRow("NUL before a larger length") << QByteArray("ab\0", 3) << INT_MAX << QStringLiteral("ab");
    QTest::newRow("Latin-1, not UTF-8") << QByteArray("\xC3\xA4\xFF") << 3 << QString::fromUtf8("Ã¤ÿ");
}

void tst_text_buffers::latin1()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, maxLen);
    const ExactBytes buffer(bytes);
    QTEST(CStr::fromLatin1(buffer.data(), maxLen), "text");
}

void tst_text_buffers::latin1OfNothingIsNull()
{
    QVERIFY(CStr::fromLatin1("abc", 0).isNull());
    QVERIFY(CStr::fromLatin1("abc", -1).isNull());
    QVERIFY(CStr::fromLatin1("abc", INT_MIN).isNull());
    QVERIFY(CStr::fromLatin1(nullptr, 3).isNull());
    QVERIFY(CStr::fromLatin1(nullptr, 0).isNull());
}

void tst_text_buffers::latin1OfNoCharacterIsEmptyNotNull()
{
    const QString text = CStr::fromLatin1("", 1);
    QVERIFY(text.isEmpty());
    QVERIFY(!text.isNull());
}

void tst_text_buffers::unitsOfABuffer_data()
{
    QTest::addColumn<QString>("units");
    QTest::addColumn<int>("byteLen");
    QTest::addColumn<QString>("text");

    const QString abc = QStringLiteral("abc");
    QTest::newRow("all units, none zero") << abc << 6 << abc;
    QTest::newRow("one unit") << abc << 2 << QStringLiteral("a");
    QTest::newRow("an odd last byte is no unit") << abc << 5 << QStringLiteral("ab");
    QTest::newRow("three bytes are one unit") << abc << 3 << QStringLiteral("a");
    QTest::newRow("up to the zero unit") << textOf({'a', 'b', 0, 'c'}) << 8 << QStringLiteral("ab");
    QTest::newRow("zero unit at the end") << textOf({'a', 'b', 0}) << 6 << QStringLiteral("ab");
    QTest::newRow("zero bytes across units") << textOf({0x0041, 0x4200}) << 4 << textOf({0x0041, 0x4200});
}

void tst_text_buffers::unitsOfABuffer()
{
    QFETCH(QString, units);
    QFETCH(int, byteLen);
    const Units buffer(units.utf16(), units.utf16() + units.size());
    QTEST(CStr::fromUtf16(buffer.data(), byteLen), "text");
}

void tst_text_buffers::unitsOfNothingAreNull()
{
    const std::array<ushort, 2> units = {'a', 0};
    for (const int byteLen : {1, 0, -1, INT_MIN})
        QVERIFY(CStr::fromUtf16(units.data(), byteLen).isNull());
    for (const int byteLen : {2, 100, 1, 0})
        QVERIFY(CStr::fromUtf16(nullptr, byteLen).isNull());
}

void tst_text_buffers::unitsOfNoCharacterAreEmptyNotNull()
{
    const std::array<ushort, 2> units = {0, 'a'};
    const QString text = CStr::fromUtf16(units.data(), 4);
    QVERIFY(text.isEmpty());
    QVERIFY(!text.isNull());
}

void tst_text_buffers::unitsOfAByteArray_data()
{
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<QString>("text");

    QTest::newRow("no zero unit") << QByteArray("41 00 42 00") << QStringLiteral("AB");
    QTest::newRow("up to the zero unit") << QByteArray("41 00 00 00 42 00") << QStringLiteral("A");
    QTest::newRow("zero unit at the end") << QByteArray("41 00 42 00 00 00") << QStringLiteral("AB");
    QTest::newRow("an odd last byte is ignored") << QByteArray("41 00 42") << QStringLiteral("A");
    QTest::newRow("an odd last zero byte is ignored") << QByteArray("41 00 00") << QStringLiteral("A");
    QTest::newRow("an odd byte behind the zero unit") << QByteArray("41 00 00 00 42") << QStringLiteral("A");
    QTest::newRow("zero bytes across two units") << QByteArray("41 00 00 42") << textOf({0x0041, 0x4200});
    QTest::newRow("zero bytes across units, zero unit later")
        << QByteArray("41 00 00 42 00 00 43 00") << textOf({0x0041, 0x4200});
    QTest::newRow("units in little-endian order") << QByteArray("AC 20 03 26") << textOf({0x20AC, 0x2603});
    QTest::newRow("zero unit first") << QByteArray("00 00 41 00") << QString();
    QTest::newRow("one byte") << QByteArray("41") << QString();
    QTest::newRow("no byte") << QByteArray("") << QString();
}

void tst_text_buffers::unitsOfAByteArray()
{
    QFETCH(QByteArray, hex);
    const QByteArray bytes = QByteArray::fromHex(hex);
    QTEST(CStr::fromUtf16(bytes), "text");
    const ExactBytes exact(bytes);
    QTEST(CStr::fromUtf16(exact.view()), "text");
}

void tst_text_buffers::byteArrayAtAnyAlignment()
{
    const ExactBytes exact(QByteArray::fromHex("FF 41 00 42 00"));
    QCOMPARE(CStr::fromUtf16(QByteArray::fromRawData(exact.data() + 1, 4)), QStringLiteral("AB"));
}

void tst_text_buffers::byteArrayWithoutAUnitIsEmptyNotNull()
{
    for (const QByteArray &bytes : {QByteArray(), QByteArray(""), QByteArray("A"), QByteArray("\0\0", 2)}) {
        const QString text = CStr::fromUtf16(bytes);
        QVERIFY(text.isEmpty());
        QVERIFY(!text.isNull());
    }
}

void tst_text_buffers::byteOrderMarkIsAUnitLikeAnyOther()
{
    const Units inOrder = {byteOrderMark, 'a'};
    const Units swapped = {0xFFFE, 'a'};
    for (const Units &units : {inOrder, swapped}) {
        const QByteArray bytes(reinterpret_cast<const char *>(units.data()), 4);
        QCOMPARE(CStr::fromUtf16(units.data(), 4), textOf(units));
        QCOMPARE(CStr::fromUtf16(bytes), textOf(units));
        Units written(3, guardUnit);
        CStr::toUtf16(textOf(units), written.data(), 6);
        QVERIFY((written == Units{units[0], units[1], 0}));
    }
}

void tst_text_buffers::unpairedSurrogatesAreKept()
{
    const Units units = {0xDC00, 'a', 0xD800, 0xFFFF};
    const QByteArray bytes(reinterpret_cast<const char *>(units.data()), 8);
    QCOMPARE(CStr::fromUtf16(units.data(), 8), textOf(units));
    QCOMPARE(CStr::fromUtf16(bytes), textOf(units));
}

void tst_text_buffers::textIntoABuffer_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("byteLen");
    QTest::addColumn<QString>("units");

    const QString abc = QStringLiteral("abc");
    QTest::newRow("cut to the last unit but one") << abc << 4 << textOf({'a', 0});
    QTest::newRow("room for the zero unit alone") << abc << 2 << textOf({0});
    QTest::newRow("cut by one") << abc << 6 << textOf({'a', 'b', 0});
    QTest::newRow("exact fit") << abc << 8 << textOf({'a', 'b', 'c', 0});
    QTest::newRow("rest is filled with zeros") << abc << 14 << textOf({'a', 'b', 'c', 0, 0, 0, 0});
    QTest::newRow("empty text") << QString(QLatin1String("")) << 6 << textOf({0, 0, 0});
    QTest::newRow("null text") << QString() << 6 << textOf({0, 0, 0});
    QTest::newRow("a zero unit is copied") << textOf({'a', 0, 'b'}) << 8 << textOf({'a', 0, 'b', 0});
    QTest::newRow("units above 8 bits") << textOf({0x20AC, 0x2603}) << 6 << textOf({0x20AC, 0x2603, 0});
}

void tst_text_buffers::textIntoABuffer()
{
    QFETCH(QString, text);
    QFETCH(int, byteLen);
    QFETCH(QString, units);
    Units buffer(static_cast<std::size_t>(units.size()), guardUnit);
    buffer.push_back(guardUnit);
    CStr::toUtf16(text, buffer.data(), byteLen);
    QCOMPARE(buffer.back(), guardUnit);
    buffer.pop_back();
    QCOMPARE(textOf(buffer), units);
}

// Five bytes are zeroed and three of them filled: 'a' and the low byte of the euro sign.
void tst_text_buffers::oddLengthCutsInsideAUnit()
{
    std::array<ushort, 3> buffer = {guardUnit, guardUnit, guardUnit};
    CStr::toUtf16(textOf({'a', 0x20AC}), buffer.data(), 5);
    QCOMPARE(buffer[0], ushort('a'));
    QCOMPARE(buffer[1], ushort(0x00AC));
    QCOMPARE(buffer[2], ushort(guardUnit & 0xFF00));
}

void tst_text_buffers::cutDoesNotSpareSurrogatePairs()
{
    std::array<ushort, 2> buffer = {guardUnit, guardUnit};
    CStr::toUtf16(textOf({0xD83D, 0xDE00}), buffer.data(), 4);
    QCOMPARE(buffer[0], ushort(0xD83D));
    QCOMPARE(buffer[1], ushort(0));
}

void tst_text_buffers::buffersBelowOneUnitStayUntouched()
{
    for (const int byteLen : {1, 0, -1, -2, INT_MIN}) {
        ushort unit = guardUnit;
        CStr::toUtf16(QStringLiteral("abc"), &unit, byteLen);
        QCOMPARE(unit, guardUnit);
    }
}

// There is nothing to compare: a write would end the test program.
void tst_text_buffers::nullBufferIsNotWritten()
{
    for (const int byteLen : {100, 2, 1, 0, -1})
        CStr::toUtf16(QStringLiteral("abc"), nullptr, byteLen);
}

void tst_text_buffers::bufferTextReadsBack()
{
    std::array<ushort, 8> buffer{};
    const QString markAndSurrogate = textOf({byteOrderMark, 0xD800});
    for (const QString &text : {QStringLiteral("x"), QStringLiteral("seven c"), markAndSurrogate}) {
        CStr::toUtf16(text, buffer.data(), sizeof(buffer));
        QCOMPARE(CStr::fromUtf16(buffer.data(), sizeof(buffer)), text);
        const QByteArray bytes(reinterpret_cast<const char *>(buffer.data()), sizeof(buffer));
        QCOMPARE(CStr::fromUtf16(bytes), text);
    }
}

QTEST_GUILESS_MAIN(tst_text_buffers)

#include "tst_text_buffers.moc"
