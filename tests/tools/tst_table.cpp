// SPDX-License-Identifier: MIT
#include <Output.h>
#include <Table.h>
#include <VisibleText.h>

#include <LoggedTest.h>

#include <QBuffer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using j6tool::csvField;
using j6tool::cutToWidth;
using j6tool::displayWidth;
using j6tool::Error;
using j6tool::jsonString;
using j6tool::Output;
using j6tool::quoted;
using j6tool::Table;
using j6tool::TableFormat;
using j6tool::visible;

namespace {

// Takes a number of bytes and then no more, as a disk does.
class FullDevice : public QIODevice
{
    Q_OBJECT

public:
    explicit FullDevice(qint64 capacity) : mCapacity(capacity) { open(QIODevice::WriteOnly); }

    qint64 taken() const { return mTaken; }

protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(const char *, qint64 size) override
    {
        if (mTaken + size > mCapacity) {
            setErrorString(QStringLiteral("it is full"));
            return -1;
        }
        mTaken += size;
        return size;
    }

private:
    qint64 mCapacity;
    qint64 mTaken = 0;
};

QByteArray written(const Table &table, TableFormat format)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    Output output(buffer);
    table.write(output, format);
    return output.flush() ? QByteArray("(error)") : buffer.data();
}

Table sample()
{
    return Table(
        {{QStringLiteral("name")}, {QStringLiteral("size"), true}, {QStringLiteral("note"), false, 6}},
        {{QStringLiteral("a, \"b\""), QStringLiteral("7"), QStringLiteral("line\n2")},
         {QStringLiteral("\u00E4\u4E16"), QString(), QStringLiteral("abcdef")},
         {QStringLiteral("a\\b"), QStringLiteral("1234567"), QStringLiteral("abcdefg")},
         {QString(), QStringLiteral("0"), QString()}});
}

} // namespace

class tst_table : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void makesTextsVisible_data();
    void makesTextsVisible();
    void quotesTexts();
    void measuresTexts_data();
    void measuresTexts();
    void cutsTexts_data();
    void cutsTexts();
    void writesAlignedColumns();
    void writesCsv();
    void writesJson();
    void writesEmptyTables();
    void writesValidJsonForEveryCharacter();
    void keepsTheErrorOfADevice();
};

void tst_table::makesTextsVisible_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("json");

    const auto row = [](const char *name, const QString &text, const char *shown, const char *json) {
        QTest::newRow(name) << text << QString::fromUtf8(shown) << QString::fromUtf8(json);
    };
    row("empty", QString(), "", "\"\"");
    row("plain", QStringLiteral("a b~"), "a b~", "\"a b~\"");
    row("not ASCII", QStringLiteral("\u00E4 \u00B5 \u4E16 \U0001F600"), "\u00E4 \u00B5 \u4E16 \U0001F600",
        "\"\u00E4 \u00B5 \u4E16 \U0001F600\"");
    row("quote", QStringLiteral("\"'"), "\"'", "\"\\\"'\"");
    row("backslash", QStringLiteral("\\n"), "\\\\n", "\"\\\\n\"");
    row("line ends and tab", QStringLiteral("\r\n\t"), "\\r\\n\\t", "\"\\u000d\\u000a\\u0009\"");
    row("NUL", QString(QChar(0)), "\\x00", "\"\\u0000\"");
    row("escape and delete", QStringLiteral("\x1B[31m\x7F"), "\\x1b[31m\\x7f", "\"\\u001b[31m\\u007f\"");
    row("8-bit control", QString(QChar(0x9B)), "\\x9b", "\"\\u009b\"");
    row("zero-width and right-to-left", QStringLiteral("\u200B\u202E"), "\\u200b\\u202e",
        "\"\\u200b\\u202e\"");
    row("line and paragraph separator", QStringLiteral("\u2028\u2029"), "\\u2028\\u2029",
        "\"\\u2028\\u2029\"");
    row("byte-order mark", QString(QChar(0xFEFF)), "\\ufeff", "\"\\ufeff\"");
    row("lone high surrogate", QString(QChar(0xD800)) + QLatin1Char('a'), "\\ud800a", "\"\\ud800a\"");
    row("lone low surrogate", QString(QChar(0xDC00)), "\\udc00", "\"\\udc00\"");
    row("surrogates in the wrong order", QString(QChar(0xDC00)) + QChar(0xD800), "\\udc00\\ud800",
        "\"\\udc00\\ud800\"");
    row("private use", QString(QChar(0xE000)), "\\ue000", "\"\\ue000\"");
    row("tag character", QStringLiteral("\U000E0001"), "\\U000e0001", "\"\\udb40\\udc01\"");
}

void tst_table::makesTextsVisible()
{
    QFETCH(QString, text);
    QTEST(visible(text), "shown");
    QTEST(jsonString(text), "json");
}

void tst_table::quotesTexts()
{
    QCOMPARE(quoted(QStringLiteral("a\n")), QStringLiteral("'a\\n'"));
    const QString sixty = QStringLiteral("0123456789").repeated(6);
    QCOMPARE(quoted(sixty), QStringLiteral("'%1'").arg(sixty));
    QCOMPARE(quoted(sixty + QLatin1Char('0')), QStringLiteral("'%1\u2026'").arg(sixty.left(59)));
    QCOMPARE(quoted(QString(1000000, QChar(1))).size(), 62);
}

void tst_table::measuresTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("width");

    QTest::newRow("empty") << QString() << 0;
    QTest::newRow("ASCII") << QStringLiteral("abc") << 3;
    QTest::newRow("Latin") << QStringLiteral("\u00E4\u00B5") << 2;
    QTest::newRow("combining") << QStringLiteral("a\u0308") << 1;
    QTest::newRow("enclosing") << QStringLiteral("1\u20DD") << 1;
    QTest::newRow("ideographs") << QStringLiteral("\u4E16\u754C") << 4;
    QTest::newRow("kana") << QStringLiteral("\u30AB") << 2;
    QTest::newRow("halfwidth kana") << QStringLiteral("\uFF76") << 1;
    QTest::newRow("fullwidth") << QStringLiteral("\uFF21") << 2;
    QTest::newRow("Hangul") << QStringLiteral("\uD55C") << 2;
    QTest::newRow("pictograph") << QStringLiteral("\U0001F600") << 2;
    QTest::newRow("Greek outside the first plane") << QStringLiteral("\U0001D6FC") << 1;
}

void tst_table::measuresTexts()
{
    QFETCH(QString, text);
    QTEST(displayWidth(text), "width");
}

void tst_table::cutsTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("cut"); // to 4 columns

    QTest::newRow("shorter") << QStringLiteral("abc") << QStringLiteral("abc");
    QTest::newRow("as long") << QStringLiteral("abcd") << QStringLiteral("abcd");
    QTest::newRow("longer") << QStringLiteral("abcde") << QStringLiteral("abc\u2026");
    QTest::newRow("wide") << QStringLiteral("\u4E16\u754C\u4E16") << QStringLiteral("\u4E16\u2026");
    QTest::newRow("combining marks do not count")
        << QStringLiteral("a\u0308b\u0308c\u0308d\u0308") << QStringLiteral("a\u0308b\u0308c\u0308d\u0308");
    QTest::newRow("pairs stay whole")
        << QStringLiteral("a\U0001F600\U0001F600") << QStringLiteral("a\U0001F600\u2026");
}

void tst_table::cutsTexts()
{
    QFETCH(QString, text);
    QTEST(cutToWidth(text, 4), "cut");
}

void tst_table::writesAlignedColumns()
{
    QCOMPARE(QString::fromUtf8(written(sample(), TableFormat::Aligned)),
             QStringLiteral("NAME       SIZE  NOTE\n"
                            "a, \"b\"        7  line\\\u2026\n"
                            "\u00E4\u4E16              abcdef\n"
                            "a\\\\b    1234567  abcde\u2026\n"
                            "              0\n"));
}

void tst_table::writesCsv()
{
    QCOMPARE(QString::fromUtf8(written(sample(), TableFormat::Csv)),
             QStringLiteral("name,size,note\r\n"
                            "\"a, \"\"b\"\"\",7,line\\n2\r\n"
                            "\u00E4\u4E16,,abcdef\r\n"
                            "a\\\\b,1234567,abcdefg\r\n"
                            ",0,\r\n"));
    QCOMPARE(csvField(QStringLiteral("a\r")), QStringLiteral("\"a\r\""));
    QCOMPARE(csvField(QStringLiteral("a\n")), QStringLiteral("\"a\n\""));
    QCOMPARE(csvField(QStringLiteral(" a'")), QStringLiteral(" a'"));
}

void tst_table::writesJson()
{
    QCOMPARE(QString::fromUtf8(written(sample(), TableFormat::Json)),
             QStringLiteral("[\n"
                            "  {\"name\": \"a, \\\"b\\\"\", \"size\": 7, \"note\": \"line\\u000a2\"},\n"
                            "  {\"name\": \"\u00E4\u4E16\", \"size\": null, \"note\": \"abcdef\"},\n"
                            "  {\"name\": \"a\\\\b\", \"size\": 1234567, \"note\": \"abcdefg\"},\n"
                            "  {\"name\": \"\", \"size\": 0, \"note\": \"\"}\n"
                            "]\n"));
}

void tst_table::writesEmptyTables()
{
    const Table table({{QStringLiteral("a")}, {QStringLiteral("b")}}, {});
    QCOMPARE(written(table, TableFormat::Aligned), QByteArray("A  B\n"));
    QCOMPARE(written(table, TableFormat::Csv), QByteArray("a,b\r\n"));
    QCOMPARE(written(table, TableFormat::Json), QByteArray("[]\n"));
}

void tst_table::writesValidJsonForEveryCharacter()
{
    QString all;
    for (uint unit = 0; unit < 0xD800; ++unit)
        all += QChar(unit);
    const QJsonDocument document = QJsonDocument::fromJson('[' + jsonString(all).toUtf8() + ']');
    QCOMPARE(document.array().size(), 1);
    QCOMPARE(document.array().first().toString(), all);
}

void tst_table::keepsTheErrorOfADevice()
{
    FullDevice device(100000);
    Output output(device);
    const QString line(1023, QLatin1Char('x'));
    for (int i = 0; i < 1000; ++i)
        output.writeLine(line);
    QVERIFY(!output.isGood());
    QCOMPARE(device.taken(), qint64(64 * 1024));
    const std::optional<Error> error = output.flush();
    QVERIFY(error);
    QCOMPARE(error->text, QStringLiteral("standard output: it is full"));
}

QTEST_GUILESS_MAIN(tst_table)
#include "tst_table.moc"
