// SPDX-License-Identifier: MIT
// Without its deprecated parts Qt 5.15 writes a map upwards. This test is compiled that way, and so is what
// writes the maps of an inventory into it.
#include "devices/MapStream.h"

#include <LoggedTest.h>

#include <QString>
#include <QTest>

Q_DECLARE_METATYPE(QDataStream::ByteOrder)

static_assert(!QT_DEPRECATED_SINCE(5, 15), "the deprecated parts are compiled out");

class tst_map_order : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void goesDownwards_data();
    void goesDownwards();
};

void tst_map_order::goesDownwards_data()
{
    QTest::addColumn<QDataStream::ByteOrder>("order");
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("big-endian") << QDataStream::BigEndian
                                << QByteArray::fromHex("00000003"
                                                       "ffff 00000002 0061"
                                                       "0021 ffffffff"
                                                       "0000 00000004 0062 0063");
    QTest::newRow("little-endian") << QDataStream::LittleEndian
                                   << QByteArray::fromHex("03000000"
                                                          "ffff 02000000 6100"
                                                          "2100 ffffffff"
                                                          "0000 04000000 6200 6300");
}

void tst_map_order::goesDownwards()
{
    QFETCH(QDataStream::ByteOrder, order);
    QFETCH(QByteArray, bytes);

    const QMap<quint16, QString> map{
        {0, QStringLiteral("bc")}, {33, QString()}, {65535, QStringLiteral("a")}};
    QByteArray written;
    QDataStream stream(&written, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    stream.setByteOrder(order);
    writeMap(stream, map);
    QCOMPARE(written.toHex(' '), bytes.toHex(' '));
}

QTEST_GUILESS_MAIN(tst_map_order)
#include "tst_map_order.moc"
