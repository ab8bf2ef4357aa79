// SPDX-License-Identifier: MIT
#include <InventoryMerge.h>
#include <InventoryText.h>

#include <LoggedTest.h>

#include <QBuffer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using j6tool::InventoryMerge;
using j6tool::mergeInventory;
using j6tool::Output;
using j6tool::ShownMerge;
using j6tool::writeInventoryJson;
using j6tool::writeInventoryTable;

namespace {

using Writer = void (*)(Output &, const CDeviceList &, const ShownMerge *);

QString written(Writer writer, const CDeviceList &list, const ShownMerge *merge = nullptr)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    Output output(buffer);
    writer(output, list, merge);
    return output.flush() ? QStringLiteral("(error)") : QString::fromUtf8(buffer.data());
}

QJsonObject writtenJson(const CDeviceList &list, const ShownMerge *merge = nullptr)
{
    return QJsonDocument::fromJson(written(writeInventoryJson, list, merge).toUtf8()).object();
}

QJsonObject firstDeviceJson(const CDeviceList &list)
{
    return writtenJson(list).value(QLatin1String("devices")).toArray().first().toObject();
}

// A list with one device under key 4294967295 in which every member is set.
CDeviceList fullList()
{
    CDeviceItem device(QStringLiteral("Saw \"A\""), CDeviceItem::EHostAddrType(-7),
                       QHostAddress(QStringLiteral("fe80::1%eth1")), 65535, QStringLiteral("SN 7"));
    device.mFlag1 = true;
    device.mFlag2 = true;
    device.mText1 = QStringLiteral("here");
    device.mValue1 = -1;
    device.mText2 = QStringLiteral("there");
    device.mValue2 = 2147483647;
    device.setUserlevelData(QByteArray(31, '\0') + '\x5A');
    CSubDeviceItem axis(0, QStringLiteral("X"));
    axis.setAvailableParamSets(0x8000'0000'0000'0001);
    axis.setActiveParamSet(63);
    axis.setParamVersion({65535, 254, 255});
    device.setSubDevice(axis);
    CDeviceList list(QStringLiteral("Plant"), CDeviceList::ESourceType(-3));
    list.setSourceAddress(QHostAddress(QHostAddress::Any));
    list.setSourceValue1(-2147483647 - 1);
    list.setSourceValue2(5);
    list.addDevice(4294967295U, device);
    return list;
}

CDeviceItem named(const char *name)
{
    CDeviceItem device;
    device.mName = QString::fromUtf8(name);
    return device;
}

CDeviceList listOf(const std::vector<std::pair<unsigned int, CDeviceItem>> &devices)
{
    CDeviceList list;
    for (const auto &[key, device] : devices)
        list.addDevice(key, device);
    return list;
}

} // namespace

class tst_inventory_text : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void printsEveryMemberInTheTable();
    void printsDefaults();
    void printsEveryMemberInJson();
    void printsDefaultsInJson();
    void tellsANumberThatIsNotTheOneInTheDevice();
    void cutsLongTextsInTheTableOnly();
    void neverPrintsHiddenCharacters();
    void keepsExactTextsInJson();
    void mergesAndTells();
    void mergesNothing();
    void tellsAddressesOfDifferentScopesApart();
    void printsAMergeInTheTable();
    void printsAMergeInJson();
};

void tst_inventory_text::printsEveryMemberInTheTable()
{
    QCOMPARE(written(writeInventoryTable, fullList()),
             QStringLiteral(
                 "list     Plant\n"
                 "source   type -3, any, values -2147483648 and 5\n"
                 "devices  1, with 1 sub-devices\n"
                 "\n"
                 "       KEY  SUB  NAME     IDENTIFIER  KIND  ADDRESS        PORT  VERSION        ACTIVE  "
                 "DETAILS\n"
                 "4294967295       Saw \"A\"  SN 7          -7  fe80::1%eth1  65535                         "
                 "flag 1, flag 2, text 1 \"here\", value 1 -1, text 2 \"there\", value 2 2147483647, rights "
                 "000000000000000000000000000000000000000000000000000000000000005a\n"
                 "4294967295    0  X                                               255.254.65535      63  "
                 "sets 0 \"Param set 01\", 63 \"Param set 64\"\n"));
}

void tst_inventory_text::printsDefaults()
{
    CDeviceItem device;
    device.setSubDevice(CSubDeviceItem(2, QString()));
    QCOMPARE(written(writeInventoryTable, listOf({{0, device}})),
             QStringLiteral("list     \n"
                            "source   type 0, no address, values -1 and 0\n"
                            "devices  1, with 1 sub-devices\n"
                            "\n"
                            "KEY  SUB  NAME  IDENTIFIER  KIND  ADDRESS  PORT  VERSION  ACTIVE  DETAILS\n"
                            "  0                            0              0\n"
                            "  0    2                                         0.0.0      none  no sets\n"));
    QCOMPARE(written(writeInventoryTable, CDeviceList()),
             QStringLiteral("list     \n"
                            "source   type 0, no address, values -1 and 0\n"
                            "devices  0, with 0 sub-devices\n"
                            "\n"
                            "KEY  SUB  NAME  IDENTIFIER  KIND  ADDRESS  PORT  VERSION  ACTIVE  DETAILS\n"));
}

void tst_inventory_text::printsEveryMemberInJson()
{
    const QJsonObject expected = QJsonDocument::fromJson(
                                     R"({"list": {"name": "Plant", "sourceType": -3, "sourceAddress": "any",
                        "sourceValue1": -2147483648, "sourceValue2": 5},
               "devices": [{"key": 4294967295, "name": "Saw \"A\"", "identifier": "SN 7", "addressKind": -7,
                            "address": "fe80::1%eth1", "port": 65535, "flag1": true, "flag2": true,
                            "text1": "here", "value1": -1, "text2": "there", "value2": 2147483647,
                            "userRights":
                            "000000000000000000000000000000000000000000000000000000000000005a",
                            "subDevices": [{"number": 0, "ownNumber": 0, "name": "X", "activeSet": 63,
                                            "version": "255.254.65535",
                                            "parameterSets": [{"number": 0, "name": "Param set 01"},
                                                              {"number": 63, "name": "Param set 64"}]}]}]})")
                                     .object();
    QVERIFY(!expected.isEmpty());
    QCOMPARE(writtenJson(fullList()), expected);
}

void tst_inventory_text::printsDefaultsInJson()
{
    QCOMPARE(written(writeInventoryJson, listOf({{0, CDeviceItem()}, {1, CDeviceItem()}})),
             QStringLiteral(
                 "{\"list\":{\"name\":\"\",\"sourceAddress\":null,\"sourceType\":0,\"sourceValue1\":-1,"
                 "\"sourceValue2\":0},\n"
                 "\"devices\":[\n"
                 "{\"address\":null,\"addressKind\":0,\"flag1\":false,\"flag2\":false,\"identifier\":\"\","
                 "\"key\":0,\"name\":\"\",\"port\":0,\"subDevices\":[],\"text1\":\"\",\"text2\":\"\","
                 "\"userRights\":\"0000000000000000000000000000000000000000000000000000000000000000\","
                 "\"value1\":0,\"value2\":0},\n"
                 "{\"address\":null,\"addressKind\":0,\"flag1\":false,\"flag2\":false,\"identifier\":\"\","
                 "\"key\":1,\"name\":\"\",\"port\":0,\"subDevices\":[],\"text1\":\"\",\"text2\":\"\","
                 "\"userRights\":\"0000000000000000000000000000000000000000000000000000000000000000\","
                 "\"value1\":0,\"value2\":0}\n"
                 "]}\n"));
    QCOMPARE(writtenJson(CDeviceList()).value(QLatin1String("devices")), QJsonValue(QJsonArray()));
}

void tst_inventory_text::tellsANumberThatIsNotTheOneInTheDevice()
{
    CDeviceItem device;
    device.mSubDevices.insert(3, CSubDeviceItem(7, QStringLiteral("Axis")));
    const CDeviceList list = listOf({{1, device}});
    QVERIFY(written(writeInventoryTable, list).contains(QLatin1String("\n  1  3 (its own: 7)  Axis ")));
    const QJsonValue axis = firstDeviceJson(list).value(QLatin1String("subDevices")).toArray().first();
    QCOMPARE(axis[QLatin1String("number")].toInt(), 3);
    QCOMPARE(axis[QLatin1String("ownNumber")].toInt(), 7);
}

void tst_inventory_text::cutsLongTextsInTheTableOnly()
{
    const QString longText(100000, QLatin1Char('x'));
    CDeviceItem device(longText, CDeviceItem::E_HOST_ADDR_NONE, QHostAddress(), 0, longText);
    device.mText1 = longText;
    device.mHostAddress = QHostAddress(QStringLiteral("fe80::1%") + longText);
    device.setSubDevice(CSubDeviceItem(0, longText));
    CDeviceList list = listOf({{1, device}});
    const QString table = written(writeInventoryTable, list);
    QVERIFY2(table.size() < 2000, qPrintable(QString::number(table.size())));
    QCOMPARE(table.count(QChar(0x2026)), 5);
    const QJsonObject json = firstDeviceJson(list);
    for (const char *member : {"name", "identifier", "text1"})
        QCOMPARE(json[QLatin1String(member)].toString(), longText);
    QCOMPARE(json[QLatin1String("subDevices")].toArray().first()[QLatin1String("name")].toString(), longText);
    // The names of a merge are cut, too.
    InventoryMerge merge = mergeInventory(list, listOf({{1, named("other")}}));
    const ShownMerge shown = {merge, QStringLiteral("other")};
    QVERIFY(written(writeInventoryTable, list, &shown).size() < 2500);
}

// Whatever a text holds, nothing is printed that a terminal would obey or hide.
void tst_inventory_text::neverPrintsHiddenCharacters()
{
    QString hidden;
    for (ushort unit = 1; unit < 0x20; ++unit)
        hidden += QChar(unit);
    for (const int unit : {0x7F, 0x85, 0x9B, 0x200B, 0x202E, 0x2028, 0xFEFF, 0xD800})
        hidden += QChar(unit);
    CDeviceItem device(hidden, CDeviceItem::E_HOST_ADDR_NONE, QHostAddress(QStringLiteral("fe80::1")), 0,
                       hidden);
    device.mHostAddress.setScopeId(hidden);
    device.mText1 = hidden;
    device.mText2 = hidden;
    device.setSubDevice(CSubDeviceItem(0, hidden));
    CDeviceList list(hidden, CDeviceList::E_SOURCE_NONE);
    list.setSourceAddress(device.mHostAddress);
    list.addDevice(1, device);
    CDeviceItem other = device;
    other.mName += QLatin1Char('x');
    const ShownMerge merge = {mergeInventory(list, listOf({{1, other}})), hidden};
    QCOMPARE(merge.merge.kept.size(), std::size_t(1));
    for (const Writer writer : {writeInventoryTable, writeInventoryJson}) {
        QString text = written(writer, list, &merge);
        text.remove(QLatin1Char('\n'));
        for (const QChar unit : qAsConst(hidden))
            QVERIFY2(!text.contains(unit), qPrintable(QString::number(unit.unicode(), 16)));
    }
    const QJsonObject json = firstDeviceJson(list);
    QCOMPARE(json[QLatin1String("name")].toString(), hidden);
}

void tst_inventory_text::keepsExactTextsInJson()
{
    const QString text = QStringLiteral("\"\\/ \u00C4 \u8EF8 %1 \\n ") + QChar(0) + QChar(0xDC00)
                         + QChar(0xFFFF) + QString::fromUtf8("\U0001F600\U000E0001");
    const CDeviceItem device(text, CDeviceItem::E_HOST_ADDR_NONE, QHostAddress(), 0, text);
    const QJsonObject json = firstDeviceJson(listOf({{1, device}}));
    QCOMPARE(json[QLatin1String("name")].toString(), text);
    QCOMPARE(json[QLatin1String("identifier")].toString(), text);
}

void tst_inventory_text::mergesAndTells()
{
    CDeviceList list = listOf({{1, named("A")}, {2, named("B")}, {9, named("I")}});
    const CDeviceList other = listOf({{2, named("C")}, {3, named("D")}, {0, named("Z")}, {9, named("I")}});
    const InventoryMerge merge = mergeInventory(list, other);
    QVERIFY(list
            == listOf({{0, named("Z")}, {1, named("A")}, {2, named("B")}, {3, named("D")}, {9, named("I")}}));
    QCOMPARE(merge.added, (std::vector<unsigned int>{0, 3}));
    QCOMPARE(merge.equal, (std::vector<unsigned int>{9}));
    QCOMPARE(merge.kept.size(), std::size_t(1));
    QCOMPARE(merge.kept[0].key, 2U);
    QCOMPARE(merge.kept[0].name, QStringLiteral("B"));
    QCOMPARE(merge.kept[0].droppedName, QStringLiteral("C"));
}

void tst_inventory_text::mergesNothing()
{
    CDeviceList list = fullList();
    const InventoryMerge none =
        mergeInventory(list, CDeviceList(QStringLiteral("x"), CDeviceList::E_SOURCE_NONE));
    QVERIFY(none.added.empty() && none.equal.empty() && none.kept.empty());
    QVERIFY(list == fullList());
    const InventoryMerge itself = mergeInventory(list, fullList());
    QCOMPARE(itself.equal, (std::vector<unsigned int>{4294967295U}));
    QVERIFY(itself.added.empty() && itself.kept.empty());
    QVERIFY(list == fullList());
}

void tst_inventory_text::tellsAddressesOfDifferentScopesApart()
{
    CDeviceItem device = named("A");
    device.mHostAddress = QHostAddress(QStringLiteral("fe80::1%eth0"));
    CDeviceList list = listOf({{1, device}});
    device.mHostAddress.setScopeId(QStringLiteral("eth1"));
    const InventoryMerge merge = mergeInventory(list, listOf({{1, device}}));
    QVERIFY(merge.equal.empty());
    QCOMPARE(merge.kept.size(), std::size_t(1));
    QCOMPARE(list.device(1).mHostAddress.scopeId(), QStringLiteral("eth0"));
}

void tst_inventory_text::printsAMergeInTheTable()
{
    CDeviceList list = listOf({{2, named("%1 %3")}, {5, named("E")}});
    const CDeviceList other = listOf({{2, named("%2\n")}, {3, named("D")}, {5, named("E")}});
    const ShownMerge merge = {mergeInventory(list, other), QStringLiteral("%2.inventory")};
    const QString text = written(writeInventoryTable, list, &merge);
    QVERIFY2(text.endsWith(QLatin1String("\n"
                                         "\nunited with %2.inventory: 1 added, 1 equal in both, 1 kept\n"
                                         "kept device 2 \"%1 %3\", dropped the other's \"%2\\n\"\n")),
             qPrintable(text));
    QVERIFY(text.contains(QLatin1String("\n  3       D ")));
}

void tst_inventory_text::printsAMergeInJson()
{
    CDeviceList list = listOf({{2, named("B")}, {5, named("E")}});
    const CDeviceList other =
        listOf({{2, named("C")}, {3, named("D")}, {5, named("E")}, {4294967295U, named("F")}});
    const ShownMerge merge = {mergeInventory(list, other), QStringLiteral("a \"b\".inventory")};
    const QJsonObject json = writtenJson(list, &merge);
    QCOMPARE(json.keys(),
             (QStringList{QStringLiteral("devices"), QStringLiteral("list"), QStringLiteral("united")}));
    QCOMPARE(json[QLatin1String("devices")].toArray().size(), 4);
    QCOMPARE(json[QLatin1String("united")].toObject(),
             (QJsonObject{{QStringLiteral("with"), QStringLiteral("a \"b\".inventory")},
                          {QStringLiteral("added"), QJsonArray{3, 4294967295LL}},
                          {QStringLiteral("equal"), QJsonArray{5}},
                          {QStringLiteral("kept"), QJsonArray{2}}}));
}

QTEST_GUILESS_MAIN(tst_inventory_text)
#include "tst_inventory_text.moc"
