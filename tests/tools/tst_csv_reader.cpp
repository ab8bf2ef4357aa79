// SPDX-License-Identifier: MIT
#include <CsvReader.h>

#include <LoggedTest.h>

#include <QTest>

using j6tool::CsvField;
using j6tool::CsvReader;
using j6tool::CsvRecord;

namespace {

constexpr int maxFields = 3;

using Texts = QVector<QByteArrayList>;

// The texts of all records; the reader's last outcome goes to `outcome`.
Texts readAll(CsvReader &reader, CsvReader::Outcome &outcome)
{
    Texts records;
    CsvRecord record;
    while ((outcome = reader.next(record)) == CsvReader::Outcome::Record) {
        QByteArrayList texts;
        for (const CsvField &field : record)
            texts.append(field.text);
        records.append(texts);
    }
    return records;
}

} // namespace

class tst_csv_reader : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void readsRecords_data();
    void readsRecords();
    void refusesWhatIsNoCsv_data();
    void refusesWhatIsNoCsv();
    void staysAtTheFault();
    void tellsWhereFieldsStand();
    void readsFieldsUpToTheLimit();
};

void tst_csv_reader::readsRecords_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<Texts>("records");

    QTest::newRow("empty") << QByteArray() << Texts{};
    QTest::newRow("byte-order mark alone") << QByteArray("\xEF\xBB\xBF") << Texts{};
    QTest::newRow("one field") << QByteArray("a") << Texts{{"a"}};
    QTest::newRow("line feeds") << QByteArray("a,b\nc,d\n") << Texts{{"a", "b"}, {"c", "d"}};
    QTest::newRow("carriage returns and line feeds")
        << QByteArray("a,b\r\nc,d\r\n") << Texts{{"a", "b"}, {"c", "d"}};
    QTest::newRow("mixed line ends") << QByteArray("a\r\nb\nc") << Texts{{"a"}, {"b"}, {"c"}};
    QTest::newRow("no line end at the end") << QByteArray("a,b\nc,d") << Texts{{"a", "b"}, {"c", "d"}};
    QTest::newRow("empty fields") << QByteArray(",,\n") << Texts{{"", "", ""}};
    QTest::newRow("empty last field at the end") << QByteArray("a,") << Texts{{"a", ""}};
    QTest::newRow("empty line") << QByteArray("a\n\nb\n") << Texts{{"a"}, {""}, {"b"}};
    QTest::newRow("blanks are part of a field") << QByteArray(" a , b \n") << Texts{{" a ", " b "}};
    QTest::newRow("quoted") << QByteArray("\"a\",\"b\"\n") << Texts{{"a", "b"}};
    QTest::newRow("quoted empty") << QByteArray("\"\",\"\"\r\n") << Texts{{"", ""}};
    QTest::newRow("quoted at the end") << QByteArray("\"a\"") << Texts{{"a"}};
    QTest::newRow("quoted comma") << QByteArray("\"a,b\",c\n") << Texts{{"a,b", "c"}};
    QTest::newRow("doubled quotes") << QByteArray("\"a \"\"b\"\"\"\n") << Texts{{"a \"b\""}};
    QTest::newRow("quoted line feed") << QByteArray("\"a\nb\",c\n") << Texts{{"a\nb", "c"}};
    QTest::newRow("quoted carriage return") << QByteArray("\"a\rb\r\n\",c\n") << Texts{{"a\rb\r\n", "c"}};
    QTest::newRow("byte-order mark") << QByteArray("\xEF\xBB\xBF\"a\",b\n") << Texts{{"a", "b"}};
    QTest::newRow("byte-order mark inside is text")
        << QByteArray("a,\xEF\xBB\xBF\n") << Texts{{"a", "\xEF\xBB\xBF"}};
    QTest::newRow("bytes above 127") << QByteArray("\xC3\xA4,\xFF\n") << Texts{{"\xC3\xA4", "\xFF"}};
}

void tst_csv_reader::readsRecords()
{
    QFETCH(QByteArray, contents);
    QFETCH(Texts, records);
    CsvReader reader(contents, maxFields);
    CsvReader::Outcome outcome = CsvReader::Outcome::Fault;
    QCOMPARE(readAll(reader, outcome), records);
    QCOMPARE(outcome, CsvReader::Outcome::End);
}

void tst_csv_reader::refusesWhatIsNoCsv_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("field");
    QTest::addColumn<QString>("what");

    const QString openQuote = QStringLiteral("the opening quote is never closed");
    const QString innerQuote = QStringLiteral("a quote inside a field that is not quoted");
    const QString textBehind = QStringLiteral("text behind the closing quote");
    const QString loneReturn = QStringLiteral("a carriage return without a line feed");
    const QString nul = QStringLiteral("contains a NUL character");
    QTest::newRow("open quote") << QByteArray("a,\"b\nc,d\n") << 1 << 1 << openQuote;
    QTest::newRow("open quote, its own line") << QByteArray("a\n\"b\nc\nd") << 2 << 0 << openQuote;
    QTest::newRow("lone quote at the end") << QByteArray("a,b,\"") << 1 << 2 << openQuote;
    QTest::newRow("inner quote") << QByteArray("a\nb,c\"d\"\n") << 2 << 1 << innerQuote;
    QTest::newRow("blank before the quote") << QByteArray(" \"a\"\n") << 1 << 0 << innerQuote;
    QTest::newRow("text behind a quote") << QByteArray("\"a\"b\n") << 1 << 0 << textBehind;
    QTest::newRow("blank behind a quote") << QByteArray("\"a\" ,b\n") << 1 << 0 << textBehind;
    QTest::newRow("line of a quoted field's end") << QByteArray("\"a\nb\"c\n") << 2 << 0 << textBehind;
    QTest::newRow("carriage return inside") << QByteArray("a\rb\n") << 1 << 0 << loneReturn;
    QTest::newRow("carriage return at the end") << QByteArray("a,b\r") << 1 << 1 << loneReturn;
    QTest::newRow("two carriage returns") << QByteArray("a\r\r\n") << 1 << 0 << loneReturn;
    QTest::newRow("NUL") << QByteArray("a,b\0\n", 5) << 1 << 1 << nul;
    QTest::newRow("NUL in quotes") << QByteArray("\"\0\"", 3) << 1 << 0 << nul;
    QTest::newRow("NUL behind a quote") << QByteArray("\"a\"\0", 4) << 1 << 0 << nul;
    QTest::newRow("UTF-16") << QByteArray("a\0,\0", 4) << 1 << 0 << nul;
    QTest::newRow("too many fields") << QByteArray("a,b,c\na,b,c,d\n") << 2 << 2
                                     << QStringLiteral("more than 3 fields");
    QTest::newRow("field too long") << QByteArray("a,") + QByteArray(CsvReader::maxFieldLength + 1, 'x') << 1
                                    << 1 << QStringLiteral("longer than 1048576 bytes");
    QTest::newRow("quoted field too long, its first line")
        << "a\n\"" + QByteArray(CsvReader::maxFieldLength + 1, '\n') + '"' << 2 << 0
        << QStringLiteral("longer than 1048576 bytes");
}

void tst_csv_reader::refusesWhatIsNoCsv()
{
    QFETCH(QByteArray, contents);
    CsvReader reader(contents, maxFields);
    CsvReader::Outcome outcome = CsvReader::Outcome::End;
    readAll(reader, outcome);
    QCOMPARE(outcome, CsvReader::Outcome::Fault);
    QTEST(reader.fault().line, "line");
    QTEST(reader.fault().field, "field");
    QTEST(reader.fault().what, "what");
}

void tst_csv_reader::staysAtTheFault()
{
    CsvReader reader(QByteArray("\"a\"b\nc\n"), maxFields);
    CsvRecord record;
    QCOMPARE(reader.next(record), CsvReader::Outcome::Fault);
    QCOMPARE(reader.next(record), CsvReader::Outcome::Fault);
}

void tst_csv_reader::tellsWhereFieldsStand()
{
    const QByteArray contents("\xEF\xBB\xBF"
                              "a,\"b\"\"\n\",c\r\n,dd\n");
    CsvReader reader(contents, maxFields);
    CsvRecord record;
    QCOMPARE(reader.next(record), CsvReader::Outcome::Record);
    QCOMPARE(record.size(), std::size_t(3));
    QCOMPARE(contents.mid(record[0].offset, record[0].length), QByteArray("a"));
    QCOMPARE(contents.mid(record[1].offset, record[1].length), QByteArray("\"b\"\"\n\""));
    QCOMPARE(contents.mid(record[2].offset, record[2].length), QByteArray("c"));
    QCOMPARE(record[1].line, 1);
    QCOMPARE(record[2].line, 2);
    QCOMPARE(reader.next(record), CsvReader::Outcome::Record);
    QCOMPARE(record[0].length, 0);
    QCOMPARE(contents.mid(record[1].offset, record[1].length), QByteArray("dd"));
    QCOMPARE(record[0].line, 3);
}

void tst_csv_reader::readsFieldsUpToTheLimit()
{
    const QByteArray longest(CsvReader::maxFieldLength, 'x');
    CsvReader reader(longest + ',' + '"' + longest + '"', maxFields);
    CsvReader::Outcome outcome = CsvReader::Outcome::Fault;
    QCOMPARE(readAll(reader, outcome), (Texts{{longest, longest}}));
    QCOMPARE(outcome, CsvReader::Outcome::End);
}

QTEST_GUILESS_MAIN(tst_csv_reader)
#include "tst_csv_reader.moc"
