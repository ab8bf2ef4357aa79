// SPDX-License-Identifier: MIT
#include "DeviceCases.h"

#include <QDebug>
#include <QVariant>

#include <functional>
#include <limits>
#include <type_traits>
#include <utility>

static_assert(!std::is_polymorphic<CDeviceList>::value, "no virtual operation");
static_assert(std::is_copy_constructible<CDeviceList>::value && std::is_copy_assignable<CDeviceList>::value,
              "a value");
static_assert(std::is_same<std::underlying_type_t<CDeviceList::ESourceType>, qint32>::value
                  && CDeviceList::E_SOURCE_NONE == 0,
              "signed 32-bit, 0 is not known");

// The member functions as clients call them.
template<typename Function, typename Member>
constexpr bool isOf(Member)
{
    return std::is_same<Function, Member>::value;
}
using List = CDeviceList;
static_assert(isOf<void (List::*)(unsigned int, const CDeviceItem &)>(&List::addDevice)
                  && isOf<void (List::*)(unsigned int)>(&List::removeDevice)
                  && isOf<bool (List::*)(unsigned int) const>(&List::contains)
                  && isOf<CDeviceItem (List::*)(unsigned int) const>(&List::device)
                  && isOf<int (List::*)() const>(&List::size) && isOf<int (List::*)() const>(&List::count)
                  && isOf<void (List::*)()>(&List::clear)
                  && isOf<void (List::*)(const CDeviceList &)>(&List::unite),
              "the types of the interface");

namespace {

using Keys = QList<unsigned int>;

CDeviceItem named(const char *name)
{
    CDeviceItem device;
    device.mName = QString::fromLatin1(name);
    device.mDeviceKey = 1234;
    return device;
}

// "key name key name", in the list's order.
QString contents(const CDeviceList &list)
{
    QStringList parts;
    const Keys keys = list.keys();
    for (const unsigned int key : keys)
        parts << QString::number(key) << list.device(key).mName;
    return parts.join(QLatin1Char(' '));
}

} // namespace

class tst_device_list : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void defaults();
    void constructedWithNameAndType();
    void copiesAreIndependent();
    void movedFromCanBeUsedAgain();
    void sourceIsSetAndRead();
    void sourceTypeKeepsAnyNumber();
    void addedDeviceGetsItsKey_data();
    void addedDeviceGetsItsKey();
    void addedDeviceReplaces();
    void addedDeviceIsACopy();
    void missingDeviceIsADefaultOne();
    void removesADevice();
    void removesNothingWithoutADevice();
    void countsItsDevices();
    void keysAreInUnsignedOrder();
    void clearKeepsTheRest();
    void unites();
    void unites_data();
    void uniteSetsTheKeys();
    void uniteKeepsNameAndSource();
    void uniteLeavesTheOther();
    void uniteWithItself();
    void uniteWithACopy();
    void equality_data();
    void equality();
    void ipv6ScopesAreEqual();
    void debugForm();
    void isAMetaType();
    void exampleOfTheClassComment();
};

void tst_device_list::defaults()
{
    const CDeviceList list;
    QCOMPARE(list.listName(), QString());
    QCOMPARE(list.sourceType(), CDeviceList::E_SOURCE_NONE);
    QCOMPARE(list.size(), 0);
    QCOMPARE(list.keys(), Keys());
    QVERIFY(list.sourceAddress().isNull());
    QCOMPARE(list.sourceValue1(), -1);
    QCOMPARE(list.sourceValue2(), 0);
}

void tst_device_list::constructedWithNameAndType()
{
    const CDeviceList list(QStringLiteral("Plant %1"), sourceType(5));
    QCOMPARE(list.listName(), QStringLiteral("Plant %1"));
    QCOMPARE(list.sourceType(), sourceType(5));
    QCOMPARE(list.size(), 0);
    QVERIFY(list.sourceAddress().isNull());
    QCOMPARE(list.sourceValue1(), -1);
    QCOMPARE(list.sourceValue2(), 0);
}

void tst_device_list::copiesAreIndependent()
{
    const CDeviceList original = sampleList();
    CDeviceList copy(original);
    QVERIFY(areEqual(copy, original));
    copy.removeDevice(4);
    copy.setSourceValue1(0);
    QVERIFY(areEqual(original, sampleList()));
    QVERIFY(areDifferent(copy, original));

    CDeviceList assigned;
    CDeviceList &result = (assigned = original);
    QCOMPARE(&result, &assigned);
    QVERIFY(areEqual(assigned, original));
    const CDeviceList &alias = assigned;
    assigned = alias;
    QVERIFY(areEqual(assigned, original));
}

void tst_device_list::movedFromCanBeUsedAgain()
{
    CDeviceList source = sampleList();
    CDeviceList constructed(std::move(source));
    QVERIFY(areEqual(constructed, sampleList()));
    source = CDeviceList();
    source.addDevice(1, named("A"));
    QCOMPARE(contents(source), QStringLiteral("1 A"));

    CDeviceList assigned;
    assigned.addDevice(9, named("former"));
    assigned = std::move(constructed);
    QVERIFY(areEqual(assigned, sampleList()));
    constructed = assigned;
    constructed.clear();
    QVERIFY(areEqual(assigned, sampleList()));

    CDeviceList &alias = assigned;
    assigned = std::move(alias);
    QVERIFY(areEqual(assigned, sampleList()));
}

void tst_device_list::sourceIsSetAndRead()
{
    CDeviceList list(QStringLiteral("Plant"), sourceType(5));
    list.setSourceType(sourceType(6));
    list.setSourceAddress(cLinkLocalNetwork);
    list.setSourceValue1(std::numeric_limits<int>::min());
    list.setSourceValue2(std::numeric_limits<int>::max());
    QCOMPARE(list.sourceType(), sourceType(6));
    QCOMPARE(list.sourceAddress(), cLinkLocalNetwork);
    QCOMPARE(list.sourceValue1(), std::numeric_limits<int>::min());
    QCOMPARE(list.sourceValue2(), std::numeric_limits<int>::max());
    QCOMPARE(list.listName(), QStringLiteral("Plant"));
}

void tst_device_list::sourceTypeKeepsAnyNumber()
{
    for (const qint32 number :
         {1, -1, std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max()}) {
        CDeviceList list;
        list.setSourceType(sourceType(number));
        QCOMPARE(qint32(list.sourceType()), number);
        QCOMPARE(qint32(CDeviceList(QString(), sourceType(number)).sourceType()), number);
    }
}

void tst_device_list::addedDeviceGetsItsKey_data()
{
    QTest::addColumn<uint>("key");
    QTest::addColumn<int>("deviceKey");

    QTest::newRow("4") << 4U << 4;
    QTest::newRow("0") << 0U << 0;
    QTest::newRow("the largest positive one") << 0x7FFFFFFFU << 0x7FFFFFFF;
    QTest::newRow("the smallest negative one") << 0x80000000U << std::numeric_limits<int>::min();
    QTest::newRow("the largest") << 0xFFFFFFFFU << -1;
}

void tst_device_list::addedDeviceGetsItsKey()
{
    QFETCH(uint, key);
    QFETCH(int, deviceKey);

    CDeviceItem device = sampleDevice();
    QVERIFY(device.mDeviceKey != deviceKey);
    CDeviceList list;
    list.addDevice(key, device);
    QVERIFY(list.contains(key));
    device.mDeviceKey = deviceKey;
    QVERIFY(areEqual(list.device(key), device));
}

void tst_device_list::addedDeviceReplaces()
{
    CDeviceList list;
    list.addDevice(4, sampleDevice());
    list.addDevice(4, named("new"));
    QCOMPARE(list.size(), 1);
    CDeviceItem expected = named("new");
    expected.mDeviceKey = 4;
    QVERIFY(areEqual(list.device(4), expected));
}

void tst_device_list::addedDeviceIsACopy()
{
    CDeviceItem device = sampleDevice();
    CDeviceList list;
    list.addDevice(4, device);
    QCOMPARE(device.mDeviceKey, 7);
    device.mName = QStringLiteral("changed");
    QCOMPARE(list.device(4).mName, QStringLiteral("Spindle drive"));
    CDeviceItem read = list.device(4);
    read.mName = QStringLiteral("changed");
    QVERIFY(areDifferent(read, list.device(4)));
    QCOMPARE(list.device(4).mName, QStringLiteral("Spindle drive"));
}

void tst_device_list::missingDeviceIsADefaultOne()
{
    for (const CDeviceList &list : {CDeviceList(), sampleList()}) {
        QVERIFY(!list.contains(7));
        QVERIFY(areEqual(list.device(7), CDeviceItem()));
        QVERIFY(!list.device(7).isValid());
    }
}

void tst_device_list::removesADevice()
{
    CDeviceList list = sampleList();
    list.removeDevice(4);
    QVERIFY(!list.contains(4));
    QCOMPARE(list.keys(), Keys{0xFFFFFFFF});
    list.removeDevice(0xFFFFFFFF);
    QCOMPARE(list.size(), 0);
}

void tst_device_list::removesNothingWithoutADevice()
{
    CDeviceList list = sampleList();
    list.removeDevice(5);
    QVERIFY(areEqual(list, sampleList()));
    CDeviceList empty;
    empty.removeDevice(0);
    QVERIFY(areEqual(empty, CDeviceList()));
}

void tst_device_list::countsItsDevices()
{
    CDeviceList list;
    QCOMPARE(list.size(), 0);
    QCOMPARE(list.count(), 0);
    list.addDevice(9, CDeviceItem());
    list.addDevice(1, CDeviceItem());
    list.addDevice(9, CDeviceItem());
    QCOMPARE(list.size(), 2);
    QCOMPARE(list.count(), 2);
}

void tst_device_list::keysAreInUnsignedOrder()
{
    CDeviceList list;
    for (const unsigned int key : {0x80000000U, 5U, 0xFFFFFFFFU, 0U, 0x7FFFFFFFU})
        list.addDevice(key, CDeviceItem());
    QCOMPARE(list.keys(), (Keys{0, 5, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF}));
}

void tst_device_list::clearKeepsTheRest()
{
    CDeviceList list = sampleList();
    list.clear();
    QCOMPARE(list.size(), 0);
    QCOMPARE(list.listName(), QStringLiteral("Plant"));
    QCOMPARE(list.sourceType(), sourceType(3));

    CDeviceList fresh(QStringLiteral("Plant"), sourceType(3));
    fresh.setSourceAddress(cLinkLocalNetwork);
    fresh.setSourceValue1(11);
    fresh.setSourceValue2(-12);
    QVERIFY(areEqual(list, fresh));
}

void tst_device_list::unites_data()
{
    using Devices = QList<QPair<unsigned int, const char *>>;
    QTest::addColumn<CDeviceList>("list");
    QTest::addColumn<CDeviceList>("other");
    QTest::addColumn<QString>("united");

    const auto row = [](const char *name, const Devices &ours, const Devices &theirs, const char *united) {
        CDeviceList lists[2];
        for (const auto &[key, device] : ours)
            lists[0].addDevice(key, named(device));
        for (const auto &[key, device] : theirs)
            lists[1].addDevice(key, named(device));
        QTest::newRow(name) << lists[0] << lists[1] << QString::fromLatin1(united);
    };
    row("one key in common", {{1, "A"}, {2, "B"}}, {{2, "C"}, {3, "D"}}, "1 A 2 B 3 D");
    row("none in common", {{1, "A"}, {4, "B"}}, {{2, "C"}, {3, "D"}}, "1 A 2 C 3 D 4 B");
    row("all in common", {{1, "A"}, {2, "B"}}, {{1, "C"}, {2, "D"}}, "1 A 2 B");
    row("before all", {{5, "A"}}, {{1, "C"}, {2, "D"}}, "1 C 2 D 5 A");
    row("behind all", {{5, "A"}}, {{6, "C"}, {4294967295U, "D"}}, "5 A 6 C 4294967295 D");
    row("with an empty list", {{1, "A"}}, {}, "1 A");
    row("an empty list", {}, {{1, "C"}, {2, "D"}}, "1 C 2 D");
    row("two empty lists", {}, {}, "");
}

void tst_device_list::unites()
{
    QFETCH(CDeviceList, list);
    QFETCH(CDeviceList, other);
    QFETCH(QString, united);

    list.unite(other);
    QCOMPARE(contents(list), united);
    const Keys keys = list.keys();
    for (const unsigned int key : keys)
        QCOMPARE(unsigned(list.device(key).mDeviceKey), key);
}

// A device whose key is not the one it is held under can come from a stream.
void tst_device_list::uniteSetsTheKeys()
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << QString() << qint32(0) << QMap<unsigned int, CDeviceItem>{{8, named("A")}, {9, named("B")}}
           << QHostAddress() << qint32(-1) << qint32(0);
    CDeviceList other;
    QCOMPARE(readInto(other, bytes), QDataStream::Ok);
    QCOMPARE(other.device(8).mDeviceKey, 1234);

    CDeviceList list;
    list.addDevice(9, named("C"));
    list.unite(other);
    QCOMPARE(list.device(8).mDeviceKey, 8);
    QCOMPARE(contents(list), QStringLiteral("8 A 9 C"));
}

void tst_device_list::uniteKeepsNameAndSource()
{
    CDeviceList list = sampleList();
    CDeviceList other(QStringLiteral("Other"), sourceType(99));
    other.setSourceAddress(cDefaultDeviceAddress);
    other.setSourceValue1(98);
    other.setSourceValue2(97);
    other.addDevice(5, named("A"));
    list.unite(other);

    CDeviceList expected = sampleList();
    expected.addDevice(5, named("A"));
    QVERIFY(areEqual(list, expected));
}

void tst_device_list::uniteLeavesTheOther()
{
    CDeviceList list;
    list.addDevice(4, named("A"));
    const CDeviceList other = sampleList();
    list.unite(other);
    QVERIFY(areEqual(other, sampleList()));
    QCOMPARE(list.size(), 2);
}

void tst_device_list::uniteWithItself()
{
    CDeviceList list = sampleList();
    const CDeviceList &alias = list;
    list.unite(alias);
    QVERIFY(areEqual(list, sampleList()));
}

void tst_device_list::uniteWithACopy()
{
    CDeviceList list = sampleList();
    CDeviceList copy = list;
    copy.addDevice(5, named("A"));
    list.unite(copy);
    QVERIFY(areEqual(list, copy));
}

void tst_device_list::equality_data()
{
    QTest::addColumn<CDeviceList>("other");
    QTest::addColumn<bool>("equal");

    const auto row = [](const char *name, bool equal, const std::function<void(CDeviceList &)> &change) {
        CDeviceList other = sampleList();
        change(other);
        QTest::newRow(name) << other << equal;
    };
    const auto rename = [](CDeviceList &other) {
        CDeviceList renamed(QStringLiteral("plant"), other.sourceType());
        renamed.setSourceAddress(other.sourceAddress());
        renamed.setSourceValue1(other.sourceValue1());
        renamed.setSourceValue2(other.sourceValue2());
        renamed.unite(other);
        other = renamed;
    };
    row("same", true, [](CDeviceList &) {});
    row("same device, added again", true, [](CDeviceList &other) { other.addDevice(4, sampleDevice()); });
    row("list name", false, rename);
    row("source type", false, [](CDeviceList &other) { other.setSourceType(sourceType(4)); });
    row("one device less", false, [](CDeviceList &other) { other.removeDevice(4); });
    row("one device more", false, [](CDeviceList &other) { other.addDevice(5, CDeviceItem()); });
    row("another key", false, [](CDeviceList &other) {
        other.addDevice(5, other.device(4));
        other.removeDevice(4);
    });
    row("another device", false, [](CDeviceList &other) {
        CDeviceItem device = other.device(4);
        device.setActiveParamSet(1, 5);
        other.addDevice(4, device);
    });
    row("source address", false, [](CDeviceList &other) { other.setSourceAddress(cDefaultDeviceAddress); });
    row("source address, null", false, [](CDeviceList &other) { other.setSourceAddress(QHostAddress()); });
    row("source value 1", false, [](CDeviceList &other) { other.setSourceValue1(-1); });
    row("source value 2", false, [](CDeviceList &other) { other.setSourceValue2(12); });
}

void tst_device_list::equality()
{
    QFETCH(CDeviceList, other);
    QFETCH(bool, equal);

    QVERIFY(equal ? areEqual(sampleList(), other) : areDifferent(sampleList(), other));
}

void tst_device_list::ipv6ScopesAreEqual()
{
    CDeviceList list;
    list.setSourceAddress(QHostAddress(QStringLiteral("fe80::1%eth0")));
    CDeviceList other;
    other.setSourceAddress(QHostAddress(QStringLiteral("fe80::1%eth1")));
    QVERIFY(areEqual(list, other));
}

void tst_device_list::debugForm()
{
    CDeviceList list(QStringLiteral("Plant %1 %2"), sourceType(3));
    list.unite(sampleList());
    QString quoted;
    QDebug(&quoted) << list;
    QCOMPARE(quoted.trimmed(), QStringLiteral("\"CDeviceList(Plant %1 %2, 2)\""));
    QString plain;
    QDebug(&plain).noquote() << list;
    QCOMPARE(plain.trimmed(), QStringLiteral("CDeviceList(Plant %1 %2, 2)"));

    // The stream's own settings are back afterwards.
    QString mixed;
    QDebug(&mixed).space() << 1 << CDeviceList() << 2 << 3;
    QCOMPARE(mixed.trimmed(), QStringLiteral("1 \"CDeviceList(, 0)\" 2 3"));
    QString tight;
    QDebug(&tight).nospace() << 1 << CDeviceList() << 2 << 3;
    QCOMPARE(tight, QStringLiteral("1\"CDeviceList(, 0)\"23"));
}

void tst_device_list::isAMetaType()
{
    const QVariant variant = QVariant::fromValue(sampleList());
    QVERIFY(areEqual(variant.value<CDeviceList>(), sampleList()));
}

void tst_device_list::exampleOfTheClassComment()
{
    CDeviceList plant(QStringLiteral("Plant"), CDeviceList::E_SOURCE_NONE);
    plant.addDevice(4, CDeviceItem());
    QCOMPARE(plant.device(4).mDeviceKey, 4);
    QVERIFY(!plant.device(7).isValid());
    CDeviceList found;
    found.addDevice(4, named("found"));
    found.addDevice(5, CDeviceItem());
    plant.unite(found);
    QCOMPARE(plant.keys(), (Keys{4, 5}));
    QCOMPARE(plant.device(4).mName, QString());
}

QTEST_GUILESS_MAIN(tst_device_list)
#include "tst_device_list.moc"
