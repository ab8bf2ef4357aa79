// SPDX-License-Identifier: MIT
#include <CMessage.h>

#include <LoggedTest.h>
#include <StreamForm.h>

#include <QDebug>
#include <QTest>

#include <type_traits>

using Nj6Global::eMessage_t;

Q_DECLARE_METATYPE(CMessage)
Q_DECLARE_METATYPE(Nj6Global::eMessage_t)

static_assert(std::is_same<std::underlying_type_t<eMessage_t>, quint32>::value, "32 bits, the top one too");
static_assert(Nj6Global::E_MSG_NONE == 0 && Nj6Global::E_MSG_TEXT == 1 && Nj6Global::E_MSG_QUESTION == 2
                  && Nj6Global::E_MSG_INFO == 4 && Nj6Global::E_MSG_WARNING == 8
                  && Nj6Global::E_MSG_ERROR == 16 && Nj6Global::E_MSG_ALL == 0x800000FFU,
              "the numbers of the stream form");
static_assert(std::has_virtual_destructor<CMessage>::value, "made to be derived from");
static_assert(std::is_same<decltype(CMessage().text()), QString>::value, "a QString of its own");

namespace {

constexpr eMessage_t kindOf(quint32 number)
{
    return static_cast<eMessage_t>(number);
}

bool holds(const CMessage &message, quint32 type, const QString &text)
{
    return message.type() == kindOf(type) && message.text() == text;
}

// Texts that a careless use of place markers or formats would change.
const QString trickyText = QStringLiteral("%1 %2 %L1 %99 %s%n \"quoted\"");

} // namespace

class tst_message : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void isNoneWithNullTextByDefault();
    void constructsFromKindAndText();
    void copiesAreIndependent();
    void setters();
    void appendsWithNothingInBetween_data();
    void appendsWithNothingInBetween();
    void isNullGoesByTheText_data();
    void isNullGoesByTheText();
    void clearTextKeepsTheKind();
    void clearsBoth();
    void compares_data();
    void compares();
    void allIsAMaskAndNotTheSumOfTheKinds();
    void streamForm_data();
    void streamForm();
    void shortStreams();
    void corruptTexts_data();
    void corruptTexts();
    void debugForm_data();
    void debugForm();
    void debugStreamKeepsItsState();
    void exampleOfTheClassComment();
};

void tst_message::isNoneWithNullTextByDefault()
{
    const CMessage message;
    QCOMPARE(message.type(), Nj6Global::E_MSG_NONE);
    QVERIFY(message.text().isNull());
    QVERIFY(message.isNull());
}

void tst_message::constructsFromKindAndText()
{
    const CMessage message(Nj6Global::E_MSG_QUESTION, trickyText);
    QVERIFY(holds(message, 2, trickyText));
    QVERIFY(holds(CMessage(kindOf(0xFFFFFFFFU), QString()), 0xFFFFFFFFU, QString()));
}

void tst_message::copiesAreIndependent()
{
    const CMessage original(Nj6Global::E_MSG_INFO, QStringLiteral("a"));
    CMessage constructed(original);
    CMessage assigned;
    CMessage &result = (assigned = original);
    QCOMPARE(&result, &assigned);
    QVERIFY(holds(constructed, 4, QStringLiteral("a")));
    QVERIFY(holds(assigned, 4, QStringLiteral("a")));

    constructed.appendText(QStringLiteral("b"));
    assigned.clear();
    QVERIFY(holds(original, 4, QStringLiteral("a")));
    const CMessage &alias = constructed;
    constructed = alias;
    QVERIFY(holds(constructed, 4, QStringLiteral("ab")));
}

void tst_message::setters()
{
    CMessage message;
    message.setType(Nj6Global::E_MSG_ERROR);
    QVERIFY(holds(message, 16, QString()));
    message.setText(trickyText);
    QVERIFY(holds(message, 16, trickyText));
    message.setType(kindOf(12));
    QVERIFY(holds(message, 12, trickyText));
    message.setText(QString());
    QVERIFY(message.text().isNull());
}

void tst_message::appendsWithNothingInBetween_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("added");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *name, const QString &text, const QString &added,
                        const QString &expected) { QTest::newRow(name) << text << added << expected; };
    row("b to a", QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("ab"));
    row("to nothing", QString(), QStringLiteral("b"), QStringLiteral("b"));
    row("nothing", QStringLiteral("a"), QString(), QStringLiteral("a"));
    row("behind a line feed", QStringLiteral("a\n"), QStringLiteral("b"), QStringLiteral("a\nb"));
    row("behind a blank", QStringLiteral("a "), QStringLiteral(" b"), QStringLiteral("a  b"));
    row("place markers", QStringLiteral("%1"), QStringLiteral("%2"), QStringLiteral("%1%2"));
}

void tst_message::appendsWithNothingInBetween()
{
    QFETCH(QString, text);
    QFETCH(QString, added);
    QFETCH(QString, expected);

    CMessage message(Nj6Global::E_MSG_TEXT, text);
    message.appendText(added);
    QVERIFY(holds(message, 1, expected));
    // Its own text may be added, too.
    message.appendText(message.text());
    QVERIFY(holds(message, 1, expected + expected));
}

void tst_message::isNullGoesByTheText_data()
{
    QTest::addColumn<eMessage_t>("type");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("null");

    QTest::newRow("error, null") << Nj6Global::E_MSG_ERROR << QString() << true;
    QTest::newRow("error, empty") << Nj6Global::E_MSG_ERROR << QString(QLatin1String("")) << true;
    QTest::newRow("none, text") << Nj6Global::E_MSG_NONE << QStringLiteral("a") << false;
    QTest::newRow("all, blank") << Nj6Global::E_MSG_ALL << QStringLiteral(" ") << false;
}

void tst_message::isNullGoesByTheText()
{
    QFETCH(eMessage_t, type);
    QFETCH(QString, text);
    QFETCH(bool, null);
    QCOMPARE(CMessage(type, text).isNull(), null);
}

void tst_message::clearTextKeepsTheKind()
{
    CMessage message(Nj6Global::E_MSG_WARNING, QStringLiteral("a"));
    message.clearText();
    QCOMPARE(message.type(), Nj6Global::E_MSG_WARNING);
    QVERIFY(message.text().isNull());
}

void tst_message::clearsBoth()
{
    CMessage message(Nj6Global::E_MSG_WARNING, QStringLiteral("a"));
    message.clear();
    QCOMPARE(message.type(), Nj6Global::E_MSG_NONE);
    QVERIFY(message.text().isNull());
    QVERIFY(message == CMessage());
}

void tst_message::compares_data()
{
    QTest::addColumn<CMessage>("a");
    QTest::addColumn<CMessage>("b");
    QTest::addColumn<bool>("equal");

    const CMessage info(Nj6Global::E_MSG_INFO, QStringLiteral("a"));
    QTest::newRow("same") << info << CMessage(Nj6Global::E_MSG_INFO, QStringLiteral("a")) << true;
    QTest::newRow("other kind") << info << CMessage(Nj6Global::E_MSG_TEXT, QStringLiteral("a")) << false;
    QTest::newRow("other text") << info << CMessage(Nj6Global::E_MSG_INFO, QStringLiteral("A")) << false;
    QTest::newRow("both other") << info << CMessage(Nj6Global::E_MSG_TEXT, QStringLiteral("b")) << false;
    QTest::newRow("top bit") << CMessage(kindOf(0x800000FFU), QString()) << CMessage(kindOf(0xFF), QString())
                             << false;
    QTest::newRow("null and empty text")
        << CMessage() << CMessage(Nj6Global::E_MSG_NONE, QString(QLatin1String(""))) << true;
}

void tst_message::compares()
{
    QFETCH(CMessage, a);
    QFETCH(CMessage, b);
    QFETCH(bool, equal);

    QCOMPARE(a == b, equal);
    QCOMPARE(b == a, equal);
    QCOMPARE(a != b, !equal);
    QCOMPARE(b != a, !equal);
}

void tst_message::allIsAMaskAndNotTheSumOfTheKinds()
{
    quint32 sum = 0;
    for (const eMessage_t kind : {Nj6Global::E_MSG_TEXT, Nj6Global::E_MSG_QUESTION, Nj6Global::E_MSG_INFO,
                                  Nj6Global::E_MSG_WARNING, Nj6Global::E_MSG_ERROR}) {
        QCOMPARE(kind & Nj6Global::E_MSG_ALL, quint32(kind));
        QCOMPARE(sum & kind, 0U); // a bit of its own
        sum |= kind;
    }
    QCOMPARE(sum, 31U);
    QVERIFY(sum != quint32(Nj6Global::E_MSG_ALL));
}

void tst_message::streamForm_data()
{
    QTest::addColumn<quint32>("type");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("big");
    QTest::addColumn<QByteArray>("little");

    const auto row = [](const char *name, quint32 type, const QString &text, const char *big,
                        const char *little) {
        QTest::newRow(name) << type << text << QByteArray::fromHex(big) << QByteArray::fromHex(little);
    };
    // The kind; the text's number of bytes, all ones for a null text; its UTF-16 units.
    row("default", 0, QString(), "00000000 FFFFFFFF", "00000000 FFFFFFFF");
    row("empty text", 1, QString(QLatin1String("")), "00000001 00000000", "01000000 00000000");
    row("error", 16, QStringLiteral("AB"), "00000010 00000004 0041 0042", "10000000 04000000 4100 4200");
    row("all", 0x800000FFU, QString(QChar(0x20AC)), "800000FF 00000002 20AC", "FF000080 02000000 AC20");
    row("combination", 12, QStringLiteral("%1"), "0000000C 00000004 0025 0031",
        "0C000000 04000000 2500 3100");
    row("every bit", 0xFFFFFFFFU, QString(QChar(0xD800)), "FFFFFFFF 00000002 D800", "FFFFFFFF 02000000 00D8");
    row("NUL in the text", 2, QString(QChar(0)), "00000002 00000002 0000", "02000000 02000000 0000");
}

void tst_message::streamForm()
{
    QFETCH(quint32, type);
    QFETCH(QString, text);
    QFETCH(QByteArray, big);
    QFETCH(QByteArray, little);

    const CMessage message(kindOf(type), text);
    for (const int version : {int(QDataStream::Qt_4_0), int(QDataStream::Qt_4_6), int(QDataStream::Qt_5_0),
                              int(QDataStream::Qt_5_15)}) {
        for (const auto order : {QDataStream::BigEndian, QDataStream::LittleEndian}) {
            const QByteArray &golden = order == QDataStream::BigEndian ? big : little;
            QCOMPARE(streamed(message, order, version), golden);
            CMessage back(Nj6Global::E_MSG_INFO, QStringLiteral("before"));
            QByteArray rest;
            QCOMPARE(readFrom(golden + "rest", back, order, version, &rest), QDataStream::Ok);
            QVERIFY(back == message);
            QCOMPARE(back.text().isNull(), text.isNull());
            QCOMPARE(rest, QByteArray("rest"));
        }
    }
}

void tst_message::shortStreams()
{
    const QByteArray whole = QByteArray::fromHex("0000001000000004 00410042");
    for (int size = 0; size < whole.size(); ++size) {
        CMessage message(Nj6Global::E_MSG_INFO, QStringLiteral("before"));
        QCOMPARE(readFrom(whole.left(size), message), QDataStream::ReadPastEnd);
        QVERIFY(holds(message, size >= 4 ? 16 : 0, QString()));
    }
}

void tst_message::corruptTexts_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("status");

    const auto row = [](const char *name, const char *bytes, QDataStream::Status status) {
        QTest::newRow(name) << QByteArray::fromHex(bytes) << int(status);
    };
    row("length of 4 GB", "00000010 FFFFFFFE 00410042", QDataStream::ReadPastEnd);
    row("length of 2 GB", "00000010 7FFFFFFE 00410042", QDataStream::ReadPastEnd);
    row("one unit too many", "00000010 00000006 00410042", QDataStream::ReadPastEnd);
    row("odd length", "00000010 00000003 00410042", QDataStream::ReadCorruptData);
}

void tst_message::corruptTexts()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, status);

    CMessage message(Nj6Global::E_MSG_INFO, QStringLiteral("before"));
    QCOMPARE(int(readFrom(bytes, message)), status);
    QVERIFY(holds(message, 16, QString()));
}

void tst_message::debugForm_data()
{
    QTest::addColumn<quint32>("type");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    const auto row = [](quint32 type, const char *expected) {
        QTest::newRow(expected) << type << QStringLiteral("x") << QString::fromLatin1(expected);
    };
    row(0, "CMessage (E_MSG_NONE, x)");
    row(1, "CMessage (E_MSG_TEXT, x)");
    row(2, "CMessage (E_MSG_QUESTION, x)");
    row(4, "CMessage (E_MSG_INFO, x)");
    row(8, "CMessage (E_MSG_WARNING, x)");
    row(16, "CMessage (E_MSG_ERROR, x)");
    row(0x800000FFU, "CMessage (E_MSG_ALL, x)");
    row(12, "CMessage (Type 12, x)");
    row(3, "CMessage (Type 3, x)");
    row(31, "CMessage (Type 31, x)");
    row(32, "CMessage (Type 32, x)");
    row(255, "CMessage (Type 255, x)");
    // Numbers with the top bit are not negative.
    row(0x80000000U, "CMessage (Type 2147483648, x)");
    row(0xFFFFFFFFU, "CMessage (Type 4294967295, x)");

    QTest::newRow("null text") << 16U << QString() << QStringLiteral("CMessage (E_MSG_ERROR, )");
    QTest::newRow("place markers, known kind")
        << 4U << QStringLiteral("%1 %2 %L1") << QStringLiteral("CMessage (E_MSG_INFO, %1 %2 %L1)");
    QTest::newRow("place markers, unknown kind")
        << 12U << QStringLiteral("%1 %2 %L1") << QStringLiteral("CMessage (Type 12, %1 %2 %L1)");
    QTest::newRow("printf formats") << 4U << QStringLiteral("%s%n")
                                    << QStringLiteral("CMessage (E_MSG_INFO, %s%n)");
    QTest::newRow("closing bracket") << 4U << QStringLiteral("), (")
                                     << QStringLiteral("CMessage (E_MSG_INFO, ), ()");
}

void tst_message::debugForm()
{
    QFETCH(quint32, type);
    QFETCH(QString, text);
    QFETCH(QString, expected);

    const CMessage message(kindOf(type), text);
    QString plain;
    QDebug(&plain).noquote() << message;
    QCOMPARE(plain.trimmed(), expected);
    QString quoted;
    QDebug(&quoted) << message;
    QCOMPARE(quoted.trimmed(), QLatin1Char('"') + expected + QLatin1Char('"'));
}

void tst_message::debugStreamKeepsItsState()
{
    const CMessage message(Nj6Global::E_MSG_TEXT, QStringLiteral("a \"b\"\n"));
    // Quoting escapes, as for any QString.
    QString spaced;
    QDebug(&spaced).space() << 1 << message << 2 << 3;
    QCOMPARE(spaced.trimmed(), QStringLiteral("1 \"CMessage (E_MSG_TEXT, a \\\"b\\\"\\n)\" 2 3"));
    QString tight;
    QDebug(&tight).noquote().nospace() << Qt::hex << 255 << message << 255;
    QCOMPARE(tight, QStringLiteral("ffCMessage (E_MSG_TEXT, a \"b\"\n)ff"));
}

void tst_message::exampleOfTheClassComment()
{
    CMessage message(Nj6Global::E_MSG_WARNING, QStringLiteral("Encoder battery low"));
    message.appendText(QStringLiteral(": 2.9 V"));
    QCOMPARE(message.text(), QStringLiteral("Encoder battery low: 2.9 V"));
    QVERIFY((message.type() & Nj6Global::E_MSG_ALL) != 0);
    QString printed;
    QDebug(&printed).noquote() << message;
    QCOMPARE(printed.trimmed(), QStringLiteral("CMessage (E_MSG_WARNING, Encoder battery low: 2.9 V)"));
}

QTEST_GUILESS_MAIN(tst_message)
#include "tst_message.moc"
