// SPDX-License-Identifier: MIT
#include "FixedStringClasses.h"

#include <LoggedTest.h>

#include <QDataStream>
#include <QDebug>
#include <QTest>
#include <QVariant>

#include <atomic>
#include <functional>
#include <thread>
#include <type_traits>
#include <vector>

namespace {

template<typename String>
using Change = std::function<void(String &)>;

// Every operation that changes a string; each of these leaves other content than countedString() has.
template<typename String>
std::vector<Change<String>> changes()
{
    return {
        [](String &string) { string = QStringLiteral("text"); },
        [](String &string) { string = QByteArray("\x01\x02\x03", 3); },
        [](String &string) {
            const unsigned short units[String::unitCount] = {7};
            string = units;
        },
        [](String &string) { string = QVariant(QStringLiteral("variant")); },
        [](String &string) { string = QVariant(QByteArray("\x41\x00", 2)); },
        [](String &string) { string = QVariant::fromValue(String(QStringLiteral("own type"))); },
        [](String &string) { string = String(QStringLiteral("copied")); },
        [](String &string) {
            QDataStream stream(QByteArray(String::byteCount, '\x11'));
            stream >> string;
        },
    };
}

template<typename String>
QByteArray streamed(const String &string, QDataStream::ByteOrder order)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(order);
    stream << string;
    return bytes;
}

} // namespace

class tst_fixed_strings : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase_data() { addClassRows(); }

    void fieldSizes();
    void onlyTheDestructorIsVirtual();
    void newStringIsAllZero();

    void textFillsTheField_data();
    void textFillsTheField();
    void textsWithSpecialUnits_data();
    void textsWithSpecialUnits();
    void shorterTextKeepsTheTail();
    void emptyTextWritesOneZeroUnit();
    void textOneShortOfTheFieldIsTerminated();
    void textOfTheFieldLengthIsNotTerminated();

    void bytesAreCopiedRaw_data();
    void bytesAreCopiedRaw();
    void bytesKeepWhatTheyDoNotReach();
    void oddByteCountLeavesAHalfWrittenUnit();
    void unitsAreCopiedWhole();

    void textEndsAtTheFirstZeroUnit();
    void zeroBytesOfTwoUnitsEndNoText();
    void conversionOperators();
    void arrayReader();
    void arrayReaderRefusesNull();
    void equalityCountsTheTail();
    void everyUnitCountsForEquality();

    void copiesAreIndependent();
    void assignmentToItself();
    void copiesInSeveralThreads();

    void streamFormIsTheUnits();
    void streamRestoresTheTail();
    void shortStreamLeavesZeros();
    void variantStreamForm();

    void debugForm_data();
    void debugForm();
    void debugFormAddsNoSeparator();
    void debugFormKeepsTheState();
};

void tst_fixed_strings::fieldSizes()
{
    QFETCH_GLOBAL(int, units);
    onClass([units](auto empty) {
        using String = decltype(empty);
        QCOMPARE(int(String::unitCount), units);
        QCOMPARE(int(String::byteCount), 2 * units);
        QCOMPARE(empty.byteArray().size(), 2 * units);
    });
}

void tst_fixed_strings::onlyTheDestructorIsVirtual()
{
    onClass([](auto empty) {
        using String = decltype(empty);
        QVERIFY(std::has_virtual_destructor<String>::value);
        QCOMPARE(sizeof(String), 2 * sizeof(void *)); // the table and the shared block
        QVERIFY(std::is_copy_constructible<String>::value);
        QVERIFY(std::is_copy_assignable<String>::value);
    });
}

void tst_fixed_strings::newStringIsAllZero()
{
    onClass([](auto empty) {
        QCOMPARE(empty.byteArray(), QByteArray(decltype(empty)::byteCount, '\0'));
        QVERIFY(empty.str().isEmpty());
        QVERIFY(empty.isNull());
        QVERIFY(empty.isValid());
    });
}

void tst_fixed_strings::textFillsTheField_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<bool>("moreThanField"); // the length is counted from the field's
    QTest::newRow("one unit") << 1 << false;
    QTest::newRow("31 units") << 31 << false;
    QTest::newRow("two below the field") << -2 << true;
    QTest::newRow("one below the field") << -1 << true;
    QTest::newRow("the field") << 0 << true;
    QTest::newRow("one above the field") << 1 << true;
    QTest::newRow("far above the field") << 1000 << true;
}

void tst_fixed_strings::textFillsTheField()
{
    QFETCH(int, length);
    QFETCH(bool, moreThanField);
    onClass([=](auto empty) {
        using String = decltype(empty);
        const QString text = textOfLength(length + (moreThanField ? String::unitCount : 0));
        const QString cut = text.left(String::unitCount);
        const String constructed(text);
        String assigned;
        String &result = (assigned = text);
        QCOMPARE(&result, &assigned);
        for (const String &string : {constructed, assigned}) {
            QCOMPARE(string.str(), cut);
            QCOMPARE(string.byteArray(), padded(unitBytes(cut), String::byteCount));
            QVERIFY(!string.isNull());
        }
    });
}

void tst_fixed_strings::textsWithSpecialUnits_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("surrogate pair") << QString::fromUcs4(U"A\U0001F600B");
    QTest::newRow("byte-order mark is a unit") << QString(QChar(0xFEFF)) + QStringLiteral("AB");
    QTest::newRow("swapped byte-order mark is a unit") << QString(QChar(0xFFFE)) + QStringLiteral("AB");
    QTest::newRow("unit FFFF") << QStringLiteral("A") + QChar(0xFFFF) + QStringLiteral("B");
    QTest::newRow("high surrogate alone") << QStringLiteral("A") + QChar(0xD800) + QStringLiteral("B");
    QTest::newRow("low surrogate alone") << QString(QChar(0xDC00));
    QTest::newRow("unit 0100 has a zero low byte") << QString(QChar(0x0100)) + QChar(0x0200) + QChar(0x00FF);
}

void tst_fixed_strings::textsWithSpecialUnits()
{
    QFETCH(QString, text);
    onClass([text](auto empty) {
        using String = decltype(empty);
        const String string(text);
        QCOMPARE(string.str(), text);
        QCOMPARE(string.byteArray(), padded(unitBytes(text), String::byteCount));
    });
}

void tst_fixed_strings::shorterTextKeepsTheTail()
{
    onClass([](auto string) {
        using String = decltype(string);
        string = QStringLiteral("abcdef");
        string = QStringLiteral("abc");
        QCOMPARE(string.str(), QStringLiteral("abc"));
        QCOMPARE(string.byteArray(), padded(fromHex("610062006300000065006600"), String::byteCount));
        QVERIFY(string != String(QStringLiteral("abc")));
    });
}

void tst_fixed_strings::emptyTextWritesOneZeroUnit()
{
    for (const QString &text : {QString(), QString(QLatin1String(""))}) {
        onClass([text](auto string) {
            string = QStringLiteral("abc");
            string = text;
            QVERIFY(string.str().isEmpty());
            QVERIFY(string.isNull());
            QCOMPARE(string.byteArray(), padded(fromHex("000062006300"), decltype(string)::byteCount));
        });
    }
}

void tst_fixed_strings::textOneShortOfTheFieldIsTerminated()
{
    onClass([](auto string) {
        const int units = decltype(string)::unitCount;
        string = textOfLength(units);
        string = QString(units - 1, QLatin1Char('x'));
        QCOMPARE(string.str(), QString(units - 1, QLatin1Char('x')));
        QCOMPARE(string.byteArray().right(4), fromHex("78000000"));
    });
}

void tst_fixed_strings::textOfTheFieldLengthIsNotTerminated()
{
    onClass([](auto string) {
        const int units = decltype(string)::unitCount;
        string = QString(units, QLatin1Char('x')) + QLatin1Char('y');
        QCOMPARE(string.str(), QString(units, QLatin1Char('x')));
        QCOMPARE(string.byteArray().right(4), fromHex("78007800"));
    });
}

void tst_fixed_strings::bytesAreCopiedRaw_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("moreThanField");
    QTest::newRow("none") << 0 << false;
    QTest::newRow("one") << 1 << false;
    QTest::newRow("two") << 2 << false;
    QTest::newRow("one below the field") << -1 << true;
    QTest::newRow("the field") << 0 << true;
    QTest::newRow("one above the field") << 1 << true;
    QTest::newRow("44 above the field (300 for 256)") << 44 << true;
}

void tst_fixed_strings::bytesAreCopiedRaw()
{
    QFETCH(int, size);
    QFETCH(bool, moreThanField);
    onClass([=](auto assigned) {
        using String = decltype(assigned);
        QByteArray bytes;
        for (int i = 0; i < size + (moreThanField ? String::byteCount : 0); ++i)
            bytes.append(char(i % 251 + 1));
        const QByteArray expected = padded(bytes.left(String::byteCount), String::byteCount);
        QCOMPARE(String(bytes).byteArray(), expected);
        String &result = (assigned = bytes);
        QCOMPARE(&result, &assigned);
        QCOMPARE(assigned.byteArray(), expected);
    });
}

void tst_fixed_strings::bytesKeepWhatTheyDoNotReach()
{
    onClass([](auto string) {
        string = QStringLiteral("abcdef");
        string = fromHex("58005900");
        QCOMPARE(string.str(), QStringLiteral("XYcdef")); // no terminator is written
        string = QByteArray();
        QCOMPARE(string.str(), QStringLiteral("XYcdef"));
    });
}

void tst_fixed_strings::oddByteCountLeavesAHalfWrittenUnit()
{
    onClass([](auto string) {
        using String = decltype(string);
        string = QString(3, QChar(0x4E2D));
        string = fromHex("410042");
        QCOMPARE(string.byteArray(), padded(fromHex("4100424E2D4E"), String::byteCount));
        QCOMPARE(String(fromHex("410042")).str(), QStringLiteral("AB"));
    });
}

void tst_fixed_strings::unitsAreCopiedWhole()
{
    onClass([](auto assigned) {
        using String = decltype(assigned);
        unsigned short units[String::unitCount] = {0x0041, 0x0000, 0x1234};
        units[String::unitCount - 1] = 0xABCD;
        QByteArray expected = padded(fromHex("410000003412"), String::byteCount);
        expected[String::byteCount - 2] = '\xCD';
        expected[String::byteCount - 1] = '\xAB';
        QCOMPARE(String(units).byteArray(), expected);
        assigned = textOfLength(String::unitCount);
        String &result = (assigned = units);
        QCOMPARE(&result, &assigned);
        QCOMPARE(assigned.byteArray(), expected);
        QCOMPARE(assigned.str(), QStringLiteral("A"));
    });
}

void tst_fixed_strings::textEndsAtTheFirstZeroUnit()
{
    onClass([](auto string) {
        string = fromHex("41004200"
                         "0000"
                         "4300"
                         "0000"
                         "4400");
        QCOMPARE(string.str(), QStringLiteral("AB"));
        QVERIFY(!string.isNull());
    });
}

void tst_fixed_strings::zeroBytesOfTwoUnitsEndNoText()
{
    onClass([](auto string) {
        // 41 00 | 00 42: two zero bytes side by side, but no zero unit in the whole field.
        const int units = decltype(string)::unitCount;
        string = fromHex("41000042").repeated(units / 2);
        QCOMPARE(string.str().size(), units);
        QCOMPARE(string.str().left(2), QString(QChar(0x0041)) + QChar(0x4200));
    });
}

void tst_fixed_strings::conversionOperators()
{
    onClass([](auto string) {
        string = QStringLiteral("abc");
        const QString text = string;
        QCOMPARE(text, QStringLiteral("abc"));
        const QByteArray bytes = string;
        QCOMPARE(bytes, padded(fromHex("610062006300"), decltype(string)::byteCount));
    });
}

void tst_fixed_strings::arrayReader()
{
    onClass([](auto empty) {
        using String = decltype(empty);
        const auto string = countedString<String>();
        std::array<unsigned short, String::unitCount + 1> units = {};
        units.back() = 0xBEEF;
        QVERIFY(readUnits(string, units.data()));
        for (std::size_t i = 0; i < units.size() - 1; ++i)
            QCOMPARE(int(units[i]), int(0x0141 + i));
        QCOMPARE(int(units.back()), 0xBEEF);     // nothing is written behind the field
        QVERIFY(readUnits(empty, units.data())); // an empty field is copied as well
        QCOMPARE(int(units.front()), 0);
    });
}

void tst_fixed_strings::arrayReaderRefusesNull()
{
    onClass([](auto empty) { QVERIFY(!readUnits(empty, nullptr)); });
}

void tst_fixed_strings::equalityCountsTheTail()
{
    onClass([](auto held) {
        using String = decltype(held);
        held = QStringLiteral("abcdef");
        held = QStringLiteral("abc");
        const String fresh(QStringLiteral("abc"));
        QCOMPARE(held.str(), fresh.str());
        QVERIFY(held != fresh);
        QVERIFY(!(held == fresh));
        held = padded(fresh.byteArray(), String::byteCount);
        QVERIFY(held == fresh);
        QVERIFY(!(held != fresh));
    });
}

void tst_fixed_strings::everyUnitCountsForEquality()
{
    onClass([](auto empty) {
        using String = decltype(empty);
        const auto string = countedString<String>();
        QVERIFY(string == countedString<String>());
        for (int byte = 0; byte < String::byteCount; ++byte) {
            QByteArray bytes = string.byteArray();
            bytes[byte] = char(bytes.at(byte) ^ 0x40);
            QVERIFY(String(bytes) != string);
            QVERIFY(!(String(bytes) == string));
        }
    });
}

void tst_fixed_strings::copiesAreIndependent()
{
    onClass([](auto empty) {
        using String = decltype(empty);
        for (const Change<String> &change : changes<String>()) {
            auto original = countedString<String>();
            const String constructed(original);
            String assigned;
            assigned = original;
            QVERIFY(constructed == original && assigned == original);
            change(original);
            QVERIFY(original != countedString<String>());
            QVERIFY(constructed == countedString<String>());
            QVERIFY(assigned == countedString<String>());
            change(assigned);
            QVERIFY(assigned != countedString<String>());
            QVERIFY(constructed == countedString<String>());
        }
    });
}

void tst_fixed_strings::assignmentToItself()
{
    onClass([](auto string) {
        using String = decltype(string);
        string = countedString<String>();
        const String &alias = string;
        string = alias;
        QVERIFY(string == countedString<String>());
        string = string.byteArray();
        QVERIFY(string == countedString<String>());
        string = string.str();
        QVERIFY(string == countedString<String>());
        string = QVariant::fromValue(string);
        QVERIFY(string == countedString<String>());
    });
}

void tst_fixed_strings::copiesInSeveralThreads()
{
    onClass([](auto empty) {
        using String = decltype(empty);
        const auto shared = countedString<String>();
        std::atomic<int> faults{0};
        std::vector<std::thread> threads;
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back([&faults, mine = shared, i] {
                for (int round = 0; round < 2000; ++round) {
                    String copy(mine);
                    String other;
                    other = copy;
                    copy = QString::number(i);
                    if (copy.str() != QString::number(i) || other != mine)
                        ++faults;
                }
            });
        }
        for (std::thread &thread : threads)
            thread.join();
        QCOMPARE(faults.load(), 0);
        QVERIFY(shared == countedString<String>());
    });
}

void tst_fixed_strings::streamFormIsTheUnits()
{
    onClass([](auto string) {
        using String = decltype(string);
        string = QStringLiteral("AB") + QChar(0x1234) + QChar(0xFEDC);
        const QByteArray little = padded(fromHex("410042003412DCFE"), String::byteCount);
        const QByteArray big = padded(fromHex("004100421234FEDC"), String::byteCount);
        QCOMPARE(streamed(string, QDataStream::BigEndian), big);
        QCOMPARE(streamed(string, QDataStream::LittleEndian), little);
        String back;
        QDataStream bigStream(big);
        bigStream >> back;
        QVERIFY(back == string);
        QDataStream littleStream(little);
        littleStream.setByteOrder(QDataStream::LittleEndian);
        back = countedString<String>();
        littleStream >> back;
        QVERIFY(back == string);
    });
}

void tst_fixed_strings::streamRestoresTheTail()
{
    onClass([](auto string) {
        using String = decltype(string);
        string = countedString<String>();
        string = QStringLiteral("ab");
        const QByteArray bytes = streamed(string, QDataStream::BigEndian);
        QCOMPARE(bytes.size(), int(String::byteCount)); // no length, no mark
        QDataStream stream(bytes + QByteArray("next"));
        String back;
        stream >> back;
        QCOMPARE(stream.status(), QDataStream::Ok);
        QVERIFY(back == string);
        QCOMPARE(stream.device()->bytesAvailable(), qint64(4)); // what follows is not touched
    });
}

void tst_fixed_strings::shortStreamLeavesZeros()
{
    onClass([](auto empty) {
        using String = decltype(empty);
        for (const int held : {0, 1, 2, 5, String::byteCount - 2, String::byteCount - 1}) {
            QDataStream stream(QByteArray(held, '\x41'));
            auto string = countedString<String>();
            stream >> string;
            QCOMPARE(stream.status(), QDataStream::ReadPastEnd);
            QCOMPARE(string.byteArray(), padded(QByteArray(held / 2 * 2, '\x41'), String::byteCount));
        }
    });
}

void tst_fixed_strings::variantStreamForm()
{
    onClass([](auto string) {
        using String = decltype(string);
        string = QStringLiteral("AB");
        const QByteArray name(QMetaType::typeName(qMetaTypeId<String>()));
        QByteArray expected =
            fromHex("0000040000000000").append(char(name.size() + 1)).append(name).append('\0');
        expected += padded(fromHex("00410042"), String::byteCount);
        QByteArray bytes;
        QDataStream writer(&bytes, QIODevice::WriteOnly);
        writer.setVersion(QDataStream::Qt_5_15);
        writer << QVariant::fromValue(string);
        QCOMPARE(bytes.toHex(), expected.toHex());
        QDataStream reader(bytes);
        reader.setVersion(QDataStream::Qt_5_15);
        QVariant back;
        reader >> back;
        QCOMPARE(back.userType(), qMetaTypeId<String>());
        QVERIFY(back == QVariant::fromValue(string));
        QVERIFY(back != QVariant::fromValue(String(QStringLiteral("AC"))));
    });
}

void tst_fixed_strings::debugForm_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("quoted");
    QTest::newRow("plain") << QStringLiteral("abc") << QStringLiteral("\"abc\"");
    QTest::newRow("empty") << QString() << QStringLiteral("\"\"");
    QTest::newRow("quotes are escaped as in a QString")
        << QStringLiteral("a\"b") << QStringLiteral("\"a\\\"b\"");
    QTest::newRow("line feed is escaped as in a QString")
        << QStringLiteral("a\nb") << QStringLiteral("\"a\\nb\"");
}

void tst_fixed_strings::debugForm()
{
    QFETCH(QString, text);
    QFETCH(QString, quoted);
    onClass([=](auto string) {
        string = text;
        QString output;
        QDebug(&output).nospace() << string;
        QCOMPARE(output, quoted);
        output.clear();
        QDebug(&output).nospace().noquote() << string;
        QCOMPARE(output, text);
    });
}

void tst_fixed_strings::debugFormAddsNoSeparator()
{
    onClass([](auto string) {
        string = QStringLiteral("abc");
        QString output;
        QDebug(&output).nospace() << 1 << string << 2;
        QCOMPARE(output, QStringLiteral("1\"abc\"2"));
        output.clear();
        QDebug(&output) << 1 << string << 2; // the blank is the one of the restored stream
        QCOMPARE(output.trimmed(), QStringLiteral("1 \"abc\" 2"));
    });
}

void tst_fixed_strings::debugFormKeepsTheState()
{
    onClass([](auto string) {
        string = QStringLiteral("abc");
        QString output;
        QDebug debug(&output);
        debug << string;
        QVERIFY(debug.autoInsertSpaces());
        debug.nospace().noquote() << Qt::hex << string;
        QVERIFY(!debug.autoInsertSpaces());
        debug << 255 << QStringLiteral("x");
        QVERIFY(output.endsWith(QStringLiteral("abcffx")));
    });
}

QTEST_GUILESS_MAIN(tst_fixed_strings)

#include "tst_fixed_strings.moc"
