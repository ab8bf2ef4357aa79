// SPDX-License-Identifier: MIT
#include <InventoryCsv.h>
#include <InventoryForm.h>
#include <ParameterSets.h>

#include <LoggedTest.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <array>
#include <limits>

using j6tool::parseInventoryCsv;
using j6tool::readInventoryCsv;
using j6tool::Result;

namespace {

const QString fileName = QStringLiteral("plant.csv");

using Sets = QMap<unsigned short, QString>;

QString errorOf(const QByteArray &contents)
{
    const Result<CDeviceList> list = parseInventoryCsv(contents, fileName);
    return list ? QStringLiteral("none") : list.error().text;
}

// The only device of a list whose only device row has this value in this column.
QString errorOfDeviceField(const QByteArray &column, const QByteArray &field)
{
    return errorOf("row,key," + column + "\ndevice,1," + field + '\n');
}

QString errorOfSubDeviceField(const QByteArray &column, const QByteArray &field)
{
    return errorOf("row,key,number," + column + "\ndevice,1,,\nsub-device,1,0," + field + '\n');
}

} // namespace

Q_DECLARE_METATYPE(Sets)

class tst_inventory_csv : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void readsEveryColumn();
    void givesEmptyFieldsTheirDefaults_data();
    void givesEmptyFieldsTheirDefaults();
    void readsAddresses_data();
    void readsAddresses();
    void readsTheLimitsOfEveryNumber();
    void readsParameterSets_data();
    void readsParameterSets();
    void readsQuotedTextsAndLineEnds();
    void refusesBadHeaders_data();
    void refusesBadHeaders();
    void refusesBadRows_data();
    void refusesBadRows();
    void refusesBadDeviceFields_data();
    void refusesBadDeviceFields();
    void refusesBadSubDeviceFields_data();
    void refusesBadSubDeviceFields();
    void refusesFieldsOfOtherRows_data();
    void refusesFieldsOfOtherRows();
    void tellsTheFirstErrorOnly();
    void refusesMoreDevicesThanTheLimit();
    void refusesFilesItCannotRead();
};

void tst_inventory_csv::readsEveryColumn()
{
    const QByteArray rights = QByteArray::fromHex("00ff").repeated(16);
    const QByteArray contents =
        "row,key,name,identifier,kind,address,port,flag1,flag2,text1,value1,text2,value2,rights,number,sets,"
        "active,version\n"
        "list,,\"W\xC3\xBCrk, 1\",,3,10.20.0.5,,,,,-17,,2,,,,,\n"
        "device,7,Saw,SN 7,-1,10.20.0.7,5000,1,0,here,-5,there,6,"
        + rights.toHex().toUpper()
        + ",,,,\n"
          "sub-device,7,Blade,,,,,,,,,,,,3,2=Rough;0,2,3.2.65535\n"
          "device,4294967295,,,0,,,0,1,,,,,,,,,\n";
    const Result<CDeviceList> list = parseInventoryCsv(contents, fileName);
    QVERIFY2(list, list ? "" : qPrintable(list.error().text));

    CDeviceList expected(QStringLiteral("W\u00FCrk, 1"), CDeviceList::ESourceType(3));
    expected.setSourceAddress(QHostAddress(quint32(0x0A140005)));
    expected.setSourceValue1(-17);
    expected.setSourceValue2(2);
    CDeviceItem saw(QStringLiteral("Saw"), CDeviceItem::EHostAddrType(-1), QHostAddress(quint32(0x0A140007)),
                    5000, QStringLiteral("SN 7"));
    saw.mFlag1 = true;
    saw.mText1 = QStringLiteral("here");
    saw.mValue1 = -5;
    saw.mText2 = QStringLiteral("there");
    saw.mValue2 = 6;
    saw.setUserlevelData(rights);
    CSubDeviceItem blade(3, QStringLiteral("Blade"));
    blade.setAvailableParamSets(0x5);
    std::array<unsigned short, std::size_t{64} * 32> names = {};
    const QString rough = QStringLiteral("Rough");
    std::copy(rough.utf16(), rough.utf16() + rough.size(), names.begin() + std::ptrdiff_t{2} * 32);
    blade.setAvailableParamSetNames(names.data());
    blade.setActiveParamSet(2);
    blade.setParamVersion({65535, 2, 3});
    saw.setSubDevice(blade);
    expected.addDevice(7, saw);
    CDeviceItem other;
    other.mFlag2 = true;
    expected.addDevice(4294967295U, other);
    QCOMPARE(list->device(7).availableParamSetNames(3),
             (Sets{{0, QStringLiteral("Param set 01")}, {2, QStringLiteral("Rough")}}));
    QVERIFY(*list == expected);
}

void tst_inventory_csv::givesEmptyFieldsTheirDefaults_data()
{
    QTest::addColumn<QByteArray>("contents");

    QTest::newRow("columns missing") << QByteArray("row,key\ndevice,5\n");
    QTest::newRow("number column only") << QByteArray("key,number,row\n5,,device\n");
    QTest::newRow("fields empty") << QByteArray(
        "row,key,name,identifier,kind,address,port,flag1,flag2,text1,value1,text2,value2,rights,number,sets,"
        "active,version\nlist,,,,,,,,,,,,,,,,,\ndevice,5,,,,,,,,,,,,,,,,\n");
}

void tst_inventory_csv::givesEmptyFieldsTheirDefaults()
{
    QFETCH(QByteArray, contents);
    const Result<CDeviceList> list = parseInventoryCsv(contents, fileName);
    QVERIFY2(list, list ? "" : qPrintable(list.error().text));
    CDeviceList expected;
    expected.addDevice(5, CDeviceItem());
    QVERIFY(*list == expected);
    QCOMPARE(list->sourceValue1(), -1);
    // Null and not only empty: the stored bytes do not depend on which columns there are.
    QVERIFY(list->listName().isNull());
    QVERIFY(list->device(5).mName.isNull() && list->device(5).mText2.isNull());

    const Result<CDeviceList> none = parseInventoryCsv("row,key", fileName);
    QVERIFY(none);
    QVERIFY(*none == CDeviceList());
    const Result<CDeviceList> axis =
        parseInventoryCsv("row,key,number\ndevice,5,\nsub-device,5,0\n", fileName);
    QVERIFY(axis);
    QVERIFY(axis->device(5).mSubDevices.value(0) == CSubDeviceItem(0, QString()));
}

void tst_inventory_csv::readsAddresses_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<QString>("address"); // empty: refused

    const auto row = [](const char *field, const char *address) {
        QTest::newRow(field) << QByteArray(field) << QString::fromUtf8(address);
    };
    row("10.20.1.255", "10.20.1.255");
    row("0.0.0.0", "0.0.0.0");
    row("fd3a::9e02:0:11", "fd3a::9e02:0:11");
    row("FD3A::11", "fd3a::11");
    row("::", "::");
    row("fe80::1%eth1", "fe80::1%eth1");
    row("::ffff:1.2.3.4", "::ffff:1.2.3.4");
    row("10.20.1", "");
    row("10.20.1.256", "");
    row("010.20.1.11", "");
    row("0x0a.20.1.11", "");
    row("10.20.1.11:5000", "");
    row(" 10.20.1.11", "");
    row("10.20.1.11 ", "");
    row("168427521", "");
    row("drive-7.example", "");
    row("any", "");
    row("[fe80::1]", "");
    row("fe80::1%", "");
    row("fe80::1% eth1", "");
    row(" fe80::1", "");
    row("fe80::1/64", "");
    row("fe80::1::2", "");
    row("fe80::0x1", "");
    row("fe80::+1", "");
    row("fe80::-1", "");
    row("fe80:1", "");
}

void tst_inventory_csv::readsAddresses()
{
    QFETCH(QByteArray, field);
    QFETCH(QString, address);
    const Result<CDeviceList> list = parseInventoryCsv("row,key,address\ndevice,1," + field + '\n', fileName);
    if (address.isEmpty()) {
        QVERIFY(!list);
        QCOMPARE(list.error().text, QStringLiteral("plant.csv:2: address: '%1' is no IPv4 or IPv6 address")
                                        .arg(QString::fromUtf8(field)));
    } else {
        QVERIFY2(list, list ? "" : qPrintable(list.error().text));
        QCOMPARE(list->device(1).mHostAddress.toString(), address);
    }
}

void tst_inventory_csv::readsTheLimitsOfEveryNumber()
{
    const Result<CDeviceList> list =
        parseInventoryCsv("row,key,kind,port,value1,value2,number,active,version\n"
                          "list,,-2147483648,,2147483647,-2147483648,,,\n"
                          "device,0,2147483647,65535,-2147483648,2147483647,,,\n"
                          "sub-device,0,,,,,254,63,255.255.65535\n"
                          "sub-device,0,,,,,000,-1,0.0.0\n",
                          fileName);
    QVERIFY2(list, list ? "" : qPrintable(list.error().text));
    QCOMPARE(qint32(list->sourceType()), std::numeric_limits<qint32>::min());
    QCOMPARE(list->sourceValue1(), 2147483647);
    QCOMPARE(list->sourceValue2(), std::numeric_limits<qint32>::min());
    const CDeviceItem device = list->device(0);
    QCOMPARE(qint32(device.mHostAddrType), 2147483647);
    QCOMPARE(int(device.mPort), 65535);
    QCOMPARE(device.mValue1, std::numeric_limits<qint32>::min());
    QCOMPARE(device.mValue2, 2147483647);
    QCOMPARE(device.mSubDevices.keys(), (QList<unsigned char>{0, 254}));
    QCOMPARE(int(device.activeParamSet(254)), 63);
    QVERIFY((device.paramVersion(254) == NTypes::sVersion_t{65535, 255, 255}));
    QCOMPARE(int(device.activeParamSet(0)), -1);
}

void tst_inventory_csv::readsParameterSets_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<Sets>("sets");

    QTest::newRow("none") << QString() << Sets();
    QTest::newRow("number") << "63" << Sets{{63, QStringLiteral("Param set 64")}};
    QTest::newRow("name") << "0=Rough" << Sets{{0, QStringLiteral("Rough")}};
    QTest::newRow("several, in any order") << "5;0=Rough;2=Fine"
                                           << Sets{{0, QStringLiteral("Rough")},
                                                   {2, QStringLiteral("Fine")},
                                                   {5, QStringLiteral("Param set 06")}};
    QTest::newRow("name with everything")
        << "1= a=b, \"\u00FC\" " << Sets{{1, QStringLiteral(" a=b, \"\u00FC\" ")}};
    QTest::newRow("semicolon in the name")
        << "1=a;;b;2=c" << Sets{{1, QStringLiteral("a;b")}, {2, QStringLiteral("c")}};
    QTest::newRow("semicolons only") << "1=;;;;;2"
                                     << Sets{{1, QStringLiteral(";;")}, {2, QStringLiteral("Param set 03")}};
    QTest::newRow("a default name") << "1=Param set 07" << Sets{{1, QStringLiteral("Param set 07")}};
    QTest::newRow("longest name") << QStringLiteral("63=") + QString(32, QLatin1Char('x'))
                                  << Sets{{63, QString(32, QLatin1Char('x'))}};
    Sets all;
    QStringList texts;
    for (unsigned short set = 0; set < 64; ++set) {
        all[set] = QString(32, QChar(ushort(0x4E00 + set)));
        texts.append(QString::number(set) + QLatin1Char('=') + all[set]);
    }
    QTest::newRow("all") << texts.join(QLatin1Char(';')) << all;
}

void tst_inventory_csv::readsParameterSets()
{
    QFETCH(QString, text);
    QFETCH(Sets, sets);
    CSubDeviceItem subDevice;
    const auto error = j6tool::setParameterSets(subDevice, text);
    QVERIFY2(!error, error ? qPrintable(error->text) : "");
    QCOMPARE(subDevice.availableParamSetNames(), sets);
}

void tst_inventory_csv::readsQuotedTextsAndLineEnds()
{
    const Result<CDeviceList> list = parseInventoryCsv("\xEF\xBB\xBFname,row,\"key\"\r\n"
                                                       "\"Saw \"\"A\"\",\nleft\",\"device\",\"1\"\r\n"
                                                       "list,device,2",
                                                       fileName);
    QVERIFY2(list, list ? "" : qPrintable(list.error().text));
    QCOMPARE(list->device(1).mName, QStringLiteral("Saw \"A\",\nleft"));
    QCOMPARE(list->device(2).mName, QStringLiteral("list"));
}

void tst_inventory_csv::refusesBadHeaders_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QString>("error");

    const auto row = [](const char *name, const QByteArray &contents, const char *error) {
        QTest::newRow(name) << contents << QString::fromUtf8(error);
    };
    row("empty file", "", "plant.csv:1: header: the column 'row' is missing");
    row("empty line", "\n", "plant.csv:1: header: '' is no column");
    row("no row", "key,name\n", "plant.csv:1: header: the column 'row' is missing");
    row("no key", "row,name\n", "plant.csv:1: header: the column 'key' is missing");
    row("unknown", "row,key,Port\n", "plant.csv:1: header: 'Port' is no column");
    row("on another line", "row,key,\"\n\",prt\n", "plant.csv:1: header: '\\n' is no column");
    row("not UTF-8", "row,key,\xFC\n", "plant.csv:1: header: '\uFFFD' is no column");
    row("twice", "row,key,row\n", "plant.csv:1: header: 'row' is there twice");
    row("semicolons", "row;key\n", "plant.csv:1: header: 'row;key' is no column");
    row("of a parameter list", "index,name,type,unit,bytes\n", "plant.csv:1: header: 'index' is no column");
    row("too many",
        "row,key,name,identifier,kind,address,port,flag1,flag2,text1,value1,text2,value2,rights,number,sets,"
        "active,version,more\n",
        "plant.csv:1: record: more than 18 fields");
    row("open quote", "row,\"key\n", "plant.csv:1: record: the opening quote is never closed");
}

void tst_inventory_csv::refusesBadHeaders()
{
    QFETCH(QByteArray, contents);
    QTEST(errorOf(contents), "error");
}

void tst_inventory_csv::refusesBadRows_data()
{
    QTest::addColumn<QByteArray>("rows");
    QTest::addColumn<QString>("error");

    const auto row = [](const char *name, const QByteArray &rows, const char *error) {
        QTest::newRow(name) << rows << QString::fromUtf8(error);
    };
    row("empty line", "\n", "plant.csv:2: record: 1 of 4 fields");
    row("too few fields", "device,1,\n", "plant.csv:2: record: 3 of 4 fields");
    row("too many fields", "device,1,,,\n", "plant.csv:2: record: 5 of 4 fields");
    row("far too many fields", "device,1" + QByteArray(30, ',') + '\n',
        "plant.csv:2: record: more than 18 fields");
    row("open quote", "device,1,\"a,\n", "plant.csv:2: name: the opening quote is never closed");
    row("NUL", QByteArray("device,1,a\0b,\n", 14), "plant.csv:2: name: contains a NUL character");
    row("not UTF-8", "device,1,M\xFCller,\n", "plant.csv:2: name: 'M\uFFFDller' is not UTF-8");
    row("no kind of row", ",1,,\n", "plant.csv:2: row: '' is none of list, device, sub-device");
    row("unknown kind of row", "Device,1,,\n",
        "plant.csv:2: row: 'Device' is none of list, device, sub-device");
    row("second list", "list,,a,\nlist,,b,\n", "plant.csv:3: row: 'list' is not the first row");
    row("list behind a device", "device,1,,\nlist,,b,\n", "plant.csv:3: row: 'list' is not the first row");
    row("no key", "device,,a,\n", "plant.csv:2: key: '' is no number from 0 to 4294967295");
    row("negative key", "device,-1,a,\n", "plant.csv:2: key: '-1' is no number from 0 to 4294967295");
    row("large key", "device,4294967296,a,\n",
        "plant.csv:2: key: '4294967296' is no number from 0 to 4294967295");
    row("very large key", "device,99999999999999999999,a,\n",
        "plant.csv:2: key: '99999999999999999999' is no number from 0 to 4294967295");
    row("hexadecimal key", "device,0x10,a,\n", "plant.csv:2: key: '0x10' is no number from 0 to 4294967295");
    row("key with a blank", "device, 1,a,\n", "plant.csv:2: key: ' 1' is no number from 0 to 4294967295");
    row("key with a sign", "device,+1,a,\n", "plant.csv:2: key: '+1' is no number from 0 to 4294967295");
    row("wide digits", "device,\xEF\xBC\x91,a,\n",
        "plant.csv:2: key: '\uFF11' is no number from 0 to 4294967295");
    row("duplicate key", "device,1,a,\ndevice,2,b,\ndevice,01,c,\n",
        "plant.csv:4: key: '01' is on line 2 already");
    row("sub-device of no device", "device,1,a,\nsub-device,2,x,0\n",
        "plant.csv:3: key: '2' is the key of no device above");
    row("sub-device in front of its device", "sub-device,1,x,0\ndevice,1,a,\n",
        "plant.csv:2: key: '1' is the key of no device above");
    row("sub-device without a key", "device,1,a,\nsub-device,,x,0\n",
        "plant.csv:3: key: '' is no number from 0 to 4294967295");
    row("sub-device without a number", "device,1,a,\nsub-device,1,x,\n",
        "plant.csv:3: number: '' is no number from 0 to 254");
    row("duplicate sub-device",
        "device,1,a,\ndevice,2,a,\nsub-device,1,x,7\nsub-device,2,x,7\nsub-device,1,x,007\n",
        "plant.csv:6: number: '007' is on line 4 already");
    row("line numbers count quoted line feeds", "device,1,\"a\nb\",\ndevice,x,a,\n",
        "plant.csv:4: key: 'x' is no number from 0 to 4294967295");
    row("a field on a later line of its record", "sub-device,1,\"a\nb\",x\n",
        "plant.csv:3: number: 'x' is no number from 0 to 254");
    row("control characters are made visible", "\"\x1B[31m\n\",1,,\n",
        "plant.csv:2: row: '\\x1b[31m\\n' is none of list, device, sub-device");
}

void tst_inventory_csv::refusesBadRows()
{
    QFETCH(QByteArray, rows);
    QTEST(errorOf("row,key,name,number\n" + rows), "error");
}

void tst_inventory_csv::refusesBadDeviceFields_data()
{
    QTest::addColumn<QByteArray>("column");
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<QString>("error");

    const auto row = [](const char *column, const char *field, const char *error) {
        QTest::addRow("%s %s", column, field)
            << QByteArray(column) << QByteArray(field)
            << QStringLiteral("plant.csv:2: %1: ").arg(QLatin1String(column)) + QString::fromUtf8(error);
    };
    row("kind", "wired", "'wired' is no number from -2147483648 to 2147483647");
    row("kind", "2147483648", "'2147483648' is no number from -2147483648 to 2147483647");
    row("kind", "-2147483649", "'-2147483649' is no number from -2147483648 to 2147483647");
    row("kind", "-", "'-' is no number from -2147483648 to 2147483647");
    row("kind", "--1", "'--1' is no number from -2147483648 to 2147483647");
    row("port", "65536", "'65536' is no number from 0 to 65535");
    row("port", "-1", "'-1' is no number from 0 to 65535");
    row("port", "http", "'http' is no number from 0 to 65535");
    row("port", "5e3", "'5e3' is no number from 0 to 65535");
    row("flag1", "2", "'2' is no number from 0 to 1");
    row("flag1", "true", "'true' is no number from 0 to 1");
    row("flag2", "yes", "'yes' is no number from 0 to 1");
    row("value1", "1.5", "'1.5' is no number from -2147483648 to 2147483647");
    row("value2", "1 ", "'1 ' is no number from -2147483648 to 2147483647");
    row("rights", "00f", "'00f' has an odd number of hexadecimal digits");
    row("rights", "0g", "'0g' is not hexadecimal");
    row("rights", "0000", "'0000' has 2 bytes where user rights have 32");
    row("rights", "000000000000000000000000000000000000000000000000000000000000000000",
        "'00000000000000000000000000000000000000000000000000000000000\u2026' has 33 bytes where user rights "
        "have 32");
    row("text1", "\x80", "'\uFFFD' is not UTF-8");
}

void tst_inventory_csv::refusesBadDeviceFields()
{
    QFETCH(QByteArray, column);
    QFETCH(QByteArray, field);
    QTEST(errorOfDeviceField(column, field), "error");
}

void tst_inventory_csv::refusesBadSubDeviceFields_data()
{
    QTest::addColumn<QByteArray>("column");
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<QString>("error");

    const auto row = [](const char *column, const QByteArray &field, const char *error) {
        QTest::addRow("%s %s", column, field.constData())
            << QByteArray(column) << field
            << QStringLiteral("plant.csv:3: %1: ").arg(QLatin1String(column)) + QString::fromUtf8(error);
    };
    row("active", "64", "'64' is no number from -1 to 63");
    row("active", "-2", "'-2' is no number from -1 to 63");
    row("active", "none", "'none' is no number from -1 to 63");
    row("version", "3.2", "'3.2' is no UNIT_VERSION (three numbers such as 1.2.300, at most 255.255.65535)");
    row("version", "256.0.0",
        "'256.0.0' is no UNIT_VERSION (three numbers such as 1.2.300, at most 255.255.65535)");
    row("sets", "64", "'64' is no number from 0 to 63");
    row("sets", "-1=a", "'-1' is no number from 0 to 63");
    row("sets", "=a", "'' is no number from 0 to 63");
    row("sets", "a", "'a' is no number from 0 to 63");
    row("sets", ";", "'' is no number from 0 to 63");
    row("sets", "0;", "'' is no number from 0 to 63");
    row("sets", "0; 1", "' 1' is no number from 0 to 63");
    row("sets", "0;;1", "'0;1' is no number from 0 to 63");
    row("sets", "\"0,1\"", "'0,1' is no number from 0 to 63");
    row("sets", "0=a;1;0=%2 %1", "'0=%2 %1' is the set 0 for the second time");
    row("sets", "0=", "'' is no name of the set 0 (1 to 32 UTF-16 units)");
    row("sets", "63=%3 abcdefghijklmnopqrstuvwxyz1234",
        "'%3 abcdefghijklmnopqrstuvwxyz1234' is no name of the set 63 (1 to 32 UTF-16 units)");
}

void tst_inventory_csv::refusesBadSubDeviceFields()
{
    QFETCH(QByteArray, column);
    QFETCH(QByteArray, field);
    QTEST(errorOfSubDeviceField(column, field), "error");
}

void tst_inventory_csv::refusesFieldsOfOtherRows_data()
{
    QTest::addColumn<QByteArray>("row");
    QTest::addColumn<QStringList>("columns"); // those that have no meaning for the row

    const QStringList ofDevices = {QStringLiteral("identifier"), QStringLiteral("port"),
                                   QStringLiteral("flag1"),      QStringLiteral("flag2"),
                                   QStringLiteral("text1"),      QStringLiteral("text2"),
                                   QStringLiteral("rights")};
    const QStringList ofSubDevices = {QStringLiteral("number"), QStringLiteral("sets"),
                                      QStringLiteral("active"), QStringLiteral("version")};
    QTest::newRow("list") << QByteArray("list,") << ofDevices + ofSubDevices;
    QTest::newRow("device") << QByteArray("device,1") << ofSubDevices;
    QTest::newRow("sub-device") << QByteArray("sub-device,1")
                                << ofDevices
                                       + QStringList{QStringLiteral("kind"), QStringLiteral("address"),
                                                     QStringLiteral("value1"), QStringLiteral("value2")};
}

void tst_inventory_csv::refusesFieldsOfOtherRows()
{
    QFETCH(QByteArray, row);
    QFETCH(QStringList, columns);
    for (const QString &column : qAsConst(columns)) {
        const QByteArray contents = "row,key," + column.toUtf8() + '\n' + row + ",0\n";
        QCOMPARE(errorOf(contents), QStringLiteral("plant.csv:2: %1: '0' has no meaning for a %2")
                                        .arg(column, QString::fromUtf8(row.left(row.indexOf(',')))));
    }
    if (row == "list,")
        QCOMPARE(errorOf("row,key\nlist,0\n"),
                 QStringLiteral("plant.csv:2: key: '0' has no meaning for a list"));
}

// In the order of the record's members, whatever the order of the columns.
void tst_inventory_csv::tellsTheFirstErrorOnly()
{
    QCOMPARE(errorOf("port,address,kind,key,row\nx,y,z,1,device\n"),
             QStringLiteral("plant.csv:2: kind: 'z' is no number from -2147483648 to 2147483647"));
    QCOMPARE(errorOf("port,address,kind,key,row\nx,y,1,1,device\n"),
             QStringLiteral("plant.csv:2: address: 'y' is no IPv4 or IPv6 address"));
}

void tst_inventory_csv::refusesMoreDevicesThanTheLimit()
{
    QByteArray contents = "row,key\n";
    for (int key = 0; key <= j6tool::maxInventoryDevices; ++key)
        contents += "device," + QByteArray::number(key) + '\n';
    QCOMPARE(errorOf(contents), QStringLiteral("plant.csv:250002: key: more than 250000 devices"));
}

void tst_inventory_csv::refusesFilesItCannotRead()
{
    const QTemporaryDir dir;
    const auto errorOfFile = [](const QString &name) {
        const Result<CDeviceList> list = readInventoryCsv(name);
        return list ? QStringLiteral("none") : list.error().text;
    };
    QCOMPARE(errorOfFile(dir.path()), dir.path() + QStringLiteral(": is a directory"));
    QFile file(dir.filePath(fileName));
    QCOMPARE(errorOfFile(file.fileName()), file.fileName() + QStringLiteral(": no such file"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.resize(j6tool::maxInventoryCsvSize + 1));
    QCOMPARE(errorOfFile(file.fileName()),
             file.fileName() + QStringLiteral(": is larger than 33554432 bytes"));
}

QTEST_GUILESS_MAIN(tst_inventory_csv)
#include "tst_inventory_csv.moc"
