// SPDX-License-Identifier: MIT
#include <CStr.h>

#include <LoggedTest.h>

#include <QDataStream>
#include <QTest>

Q_DECLARE_METATYPE(QDataStream::Status)

namespace {

const QString untouched = QStringLiteral("untouched");

} // namespace

class tst_stream_status : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void okLeavesTheMessageAlone();
    void messages_data();
    void messages();
    void shortReadIsSeen();
};

void tst_stream_status::okLeavesTheMessageAlone()
{
    const QDataStream stream;
    QString message = untouched;
    QVERIFY(CStr::inStreamStatus(stream, QStringLiteral("gain"), message));
    QCOMPARE(message, untouched);
}

void tst_stream_status::messages_data()
{
    QTest::addColumn<QDataStream::Status>("status");
    QTest::addColumn<QString>("valueName");
    QTest::addColumn<QString>("expected");

    QTest::newRow("past end") << QDataStream::ReadPastEnd << QStringLiteral("gain")
                              << QStringLiteral(
                                     "Stream ERROR while reading value \"gain\" : The data stream has "
                                     "read past the end of the data.");
    QTest::newRow("corrupt") << QDataStream::ReadCorruptData << QStringLiteral("gain")
                             << QStringLiteral(
                                    "Stream ERROR while reading value \"gain\" : The data stream has "
                                    "read corrupt data.");
    QTest::newRow("write failed") << QDataStream::WriteFailed << QStringLiteral("gain")
                                  << QStringLiteral(
                                         "Stream ERROR while reading value \"gain\" : Unknown stream "
                                         "status.");
    QTest::newRow("empty name") << QDataStream::ReadCorruptData << QString()
                                << QStringLiteral(
                                       "Stream ERROR while reading value \"\" : The data stream has "
                                       "read corrupt data.");
    QTest::newRow("placeholder in the name stays")
        << QDataStream::WriteFailed << QStringLiteral("%1 \"%2\"")
        << QStringLiteral("Stream ERROR while reading value \"%1 \"%2\"\" : Unknown stream status.");
}

void tst_stream_status::messages()
{
    QFETCH(QDataStream::Status, status);
    QFETCH(QString, valueName);
    QDataStream stream;
    stream.setStatus(status);
    QString message = untouched;
    QVERIFY(!CStr::inStreamStatus(stream, valueName, message));
    QTEST(message, "expected");
    QCOMPARE(stream.status(), status);
}

void tst_stream_status::shortReadIsSeen()
{
    QDataStream stream(QByteArray(3, '\0'));
    quint32 value = 0;
    stream >> value;
    QString message;
    QVERIFY(!CStr::inStreamStatus(stream, QStringLiteral("serial"), message));
    QCOMPARE(message,
             QStringLiteral("Stream ERROR while reading value \"serial\" : The data stream has read past "
                            "the end of the data."));
}

QTEST_GUILESS_MAIN(tst_stream_status)
#include "tst_stream_status.moc"
