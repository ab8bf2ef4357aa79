// SPDX-License-Identifier: MIT
#include "DeviceCases.h"

#include <CString32.h>
#include <CVariant.h>

#include <QBitArray>
#include <QDebug>
#include <QLocale>
#include <QVariant>

#include <algorithm>
#include <functional>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

using Sets = QMap<unsigned short, QString>;
Q_DECLARE_METATYPE(Sets)

static_assert(std::is_polymorphic<CSubDeviceItem>::value && std::has_virtual_destructor<CSubDeviceItem>::value
                  && !std::is_final<CSubDeviceItem>::value,
              "a polymorphic value");
static_assert(std::is_copy_constructible<CSubDeviceItem>::value
                  && std::is_copy_assignable<CSubDeviceItem>::value,
              "a value");

namespace {

using Constant = const CSubDeviceItem &;
static_assert(
    std::is_same<decltype(std::declval<Constant>().number()), unsigned char>::value
        && std::is_same<decltype(std::declval<Constant>().name()), QString>::value
        && std::is_same<decltype(std::declval<Constant>().activeParamSet()), short>::value
        && std::is_same<decltype(std::declval<Constant>().paramVersion()), NTypes::sVersion_t>::value
        && std::is_same<decltype(std::declval<Constant>().availableParamSets()), unsigned long long>::value
        && std::is_same<decltype(std::declval<Constant>().availableParamSetNames()), Sets>::value
        && std::is_same<decltype(std::declval<Constant>().availableParamSetCount()), int>::value
        && std::is_same<decltype(std::declval<Constant>().paramSetCount()), int>::value,
    "the types of the interface");

QList<unsigned short> range(unsigned short first, unsigned short last)
{
    QList<unsigned short> numbers;
    for (unsigned short i = first; i <= last; ++i)
        numbers.append(i);
    return numbers;
}

// Written out by other means than the library's.
QString defaultName(int set)
{
    const QString number = QString::number(set + 1);
    return QStringLiteral("Param set ") + (number.size() < 2 ? QStringLiteral("0") + number : number);
}

} // namespace

Q_DECLARE_METATYPE(QList<unsigned short>)

class tst_sub_device : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void defaultNamesAreTheSameInEveryLocale(); // before the names are made for another function
    void defaults();
    void constructedWithNumberAndName();
    void copiesAreIndependent();
    void isDestroyedThroughItsBase();
    void plainAccess();
    void validAndNull_data();
    void validAndNull();
    void setsTheActiveSet_data();
    void setsTheActiveSet();
    void activeSetNeedNotBeAvailable();
    void setsFromAMask_data();
    void setsFromAMask();
    void maskHasTheOrderOfTheBitArray();
    void defaultNamesOfAllSets();
    void defaultNamesAreShared();
    void availableSetsKeepTheirNames();
    void maskLeavesSetsAbove63();
    void maskLeavesTheActiveSet();
    void maskRemovesEverySetOfOneNumber();
    void namesFromATable();
    void namesFromATableAreThoseOfFixedStrings_data();
    void namesFromATableAreThoseOfFixedStrings();
    void nameTableAddsNoSet();
    void nullNameTableIsIgnored();
    void nameTableEndsAtSet63();
    void maskOfTheSetsFoldsTo32Bits_data();
    void maskOfTheSetsFoldsTo32Bits();
    void maskIsNoInverseForHighSets();
    void containsASet_data();
    void containsASet();
    void countsItsSets();
    void clearKeepsTheParameterSets();
    void namesHoldPlaceholders();
    void equality_data();
    void equality();
    void debugForm();
    void isAMetaType();
    void exampleOfTheClassComment();
};

void tst_sub_device::defaultNamesAreTheSameInEveryLocale()
{
    const QLocale former;
    QLocale::setDefault(QLocale(QLocale::Arabic, QLocale::Egypt));
    CSubDeviceItem subDevice;
    subDevice.setAvailableParamSets(quint64(1) << 41);
    QLocale::setDefault(former);
    QCOMPARE(subDevice.availableParamSetNames().value(41), QStringLiteral("Param set 42"));
}

void tst_sub_device::defaults()
{
    const CSubDeviceItem subDevice;
    QCOMPARE(subDevice.number(), static_cast<unsigned char>(255));
    QCOMPARE(subDevice.name(), QString());
    QCOMPARE(subDevice.availableParamSetNames(), Sets());
    QCOMPARE(subDevice.activeParamSet(), short(-1));
    QVERIFY(subDevice.paramVersion() == version(0, 0, 0));
    QVERIFY(!subDevice.isValid());
    QVERIFY(subDevice.isNull());
}

void tst_sub_device::constructedWithNumberAndName()
{
    const CSubDeviceItem subDevice(7, QStringLiteral("Axis X"));
    QCOMPARE(subDevice.number(), static_cast<unsigned char>(7));
    QCOMPARE(subDevice.name(), QStringLiteral("Axis X"));
    QCOMPARE(subDevice.availableParamSetNames(), Sets());
    QCOMPARE(subDevice.activeParamSet(), short(-1));
    QVERIFY(subDevice.paramVersion() == version(0, 0, 0));
}

void tst_sub_device::copiesAreIndependent()
{
    const CSubDeviceItem original = sampleSubDevice(3);
    CSubDeviceItem copy(original);
    QVERIFY(areEqual(copy, original));
    copy.setAvailableParamSets(0);
    copy.setName(QString());
    QVERIFY(areEqual(original, sampleSubDevice(3)));
    QVERIFY(areDifferent(copy, original));

    CSubDeviceItem assigned;
    CSubDeviceItem &result = (assigned = original);
    QCOMPARE(&result, &assigned);
    QVERIFY(areEqual(assigned, original));
    const CSubDeviceItem &alias = assigned;
    assigned = alias;
    QVERIFY(areEqual(assigned, original));
}

void tst_sub_device::isDestroyedThroughItsBase()
{
    class Derived : public CSubDeviceItem
    {
    public:
        explicit Derived(bool &destroyed) : mDestroyed(destroyed) {}
        Derived(const Derived &) = delete;
        Derived &operator=(const Derived &) = delete;
        ~Derived() override { mDestroyed = true; }

    private:
        bool &mDestroyed;
    };
    bool destroyed = false;
    std::unique_ptr<CSubDeviceItem> subDevice = std::make_unique<Derived>(destroyed);
    subDevice.reset();
    QVERIFY(destroyed);
}

void tst_sub_device::plainAccess()
{
    CSubDeviceItem subDevice;
    for (int number = 0; number <= 255; ++number) {
        subDevice.setNumber(static_cast<unsigned char>(number));
        QCOMPARE(int(subDevice.number()), number);
    }
    subDevice.setName(QStringLiteral("Achse \u00e4"));
    QCOMPARE(subDevice.name(), QStringLiteral("Achse \u00e4"));

    subDevice.setParamVersion(version(255, 254, 65535));
    const NTypes::sVersion_t held = subDevice.paramVersion();
    QCOMPARE(int(held.major), 255);
    QCOMPARE(int(held.minor), 254);
    QCOMPARE(int(held.build), 65535);
}

void tst_sub_device::validAndNull_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<bool>("null");

    QTest::newRow("number 0") << 0 << QString() << true << false;
    QTest::newRow("number 254") << 254 << QString() << true << false;
    QTest::newRow("number 254, named") << 254 << QStringLiteral("A") << true << false;
    QTest::newRow("number 255") << 255 << QString() << false << true;
    QTest::newRow("number 255, empty name that is not null")
        << 255 << QString(QLatin1String("")) << false << true;
    QTest::newRow("number 255, named: neither") << 255 << QStringLiteral("A") << false << false;
}

void tst_sub_device::validAndNull()
{
    QFETCH(int, number);
    QFETCH(QString, name);
    QFETCH(bool, valid);
    QFETCH(bool, null);

    const CSubDeviceItem subDevice(static_cast<unsigned char>(number), name);
    QCOMPARE(subDevice.isValid(), valid);
    QCOMPARE(subDevice.isNull(), null);
}

void tst_sub_device::setsTheActiveSet_data()
{
    QTest::addColumn<short>("before");
    QTest::addColumn<short>("set");
    QTest::addColumn<bool>("taken");

    const auto row = [](const char *name, int before, int set, bool taken) {
        QTest::newRow(name) << static_cast<short>(before) << static_cast<short>(set) << taken;
    };
    row("0", -1, 0, true);
    row("63", -1, 63, true);
    row("64", -1, 64, false);
    row("65", 5, 65, false);
    row("the largest", 5, 32767, false);
    row("-1 when it is active", -1, -1, true);
    row("-1 when another is active", 5, -1, false);
    row("-2", -1, -2, false);
    row("the smallest", 5, -32768, false);
    row("the active one again", 5, 5, true);
    row("another", 5, 6, true);
    row("the active one, above 63", 200, 200, true);
    row("the active one, negative", -7, -7, true);
    row("from above 63 to a usable one", 200, 3, true);
    row("from above 63 to another above 63", 200, 201, false);
}

void tst_sub_device::setsTheActiveSet()
{
    QFETCH(short, before);
    QFETCH(short, set);
    QFETCH(bool, taken);

    CSubDeviceItem subDevice = subDeviceWithSets({}, before);
    QCOMPARE(subDevice.activeParamSet(), before);
    QCOMPARE(subDevice.setActiveParamSet(set), taken);
    QCOMPARE(subDevice.activeParamSet(), taken ? set : before);
}

void tst_sub_device::activeSetNeedNotBeAvailable()
{
    CSubDeviceItem subDevice(1, QStringLiteral("Axis"));
    QVERIFY(!subDevice.containsParamSet(63));
    QVERIFY(subDevice.setActiveParamSet(63));
    QCOMPARE(subDevice.activeParamSet(), short(63));
    QVERIFY(!subDevice.containsParamSet(63));
}

void tst_sub_device::setsFromAMask_data()
{
    QTest::addColumn<quint64>("mask");
    QTest::addColumn<QList<unsigned short>>("sets");

    QTest::newRow("none") << quint64(0) << QList<unsigned short>();
    QTest::newRow("0x5") << quint64(0x5) << QList<unsigned short>{0, 2};
    QTest::newRow("bit 31") << quint64(0x80000000) << QList<unsigned short>{31};
    QTest::newRow("bit 32") << quint64(0x100000000) << QList<unsigned short>{32};
    QTest::newRow("bit 63") << quint64(0x8000000000000000) << QList<unsigned short>{63};
    QTest::newRow("low half") << quint64(0xFFFFFFFF) << range(0, 31);
    QTest::newRow("high half") << quint64(0xFFFFFFFF00000000) << range(32, 63);
    QTest::newRow("all") << ~quint64(0) << range(0, 63);
}

void tst_sub_device::setsFromAMask()
{
    QFETCH(quint64, mask);
    QFETCH(QList<unsigned short>, sets);

    CSubDeviceItem fromNone;
    fromNone.setAvailableParamSets(mask);
    CSubDeviceItem fromAll;
    fromAll.setAvailableParamSets(~0ULL);
    fromAll.setAvailableParamSets(mask);
    for (const CSubDeviceItem &subDevice : {fromNone, fromAll}) {
        const Sets names = subDevice.availableParamSetNames();
        QCOMPARE(names.keys(), sets);
        for (const unsigned short set : sets)
            QCOMPARE(names.value(set), defaultName(set));
    }
}

void tst_sub_device::maskHasTheOrderOfTheBitArray()
{
    const quint64 mask = 0x8421'0000'0FF0'0013;
    const QBitArray bits = CVariant(mask).toBitArray();
    QCOMPARE(bits.size(), 64);
    CSubDeviceItem subDevice;
    subDevice.setAvailableParamSets(mask);
    for (int set = 0; set < 64; ++set)
        QCOMPARE(subDevice.containsParamSet(static_cast<unsigned int>(set)), bits.testBit(set));
}

void tst_sub_device::defaultNamesOfAllSets()
{
    CSubDeviceItem subDevice;
    subDevice.setAvailableParamSets(~0ULL);
    const Sets names = subDevice.availableParamSetNames();
    QCOMPARE(names.value(0), QStringLiteral("Param set 01"));
    QCOMPARE(names.value(8), QStringLiteral("Param set 09"));
    QCOMPARE(names.value(9), QStringLiteral("Param set 10"));
    QCOMPARE(names.value(63), QStringLiteral("Param set 64"));
    for (unsigned short set = 0; set < 64; ++set)
        QCOMPARE(names.value(set), defaultName(set));
}

void tst_sub_device::defaultNamesAreShared()
{
    CSubDeviceItem byMask;
    byMask.setAvailableParamSets(0x8);
    CSubDeviceItem byTable = subDeviceWithSets({{3, QStringLiteral("old")}});
    byTable.setAvailableParamSetNames(NameTable().data());
    QCOMPARE(byTable.availableParamSetNames().value(3), QStringLiteral("Param set 04"));
    QCOMPARE(byTable.availableParamSetNames().value(3).constData(),
             byMask.availableParamSetNames().value(3).constData());
}

void tst_sub_device::availableSetsKeepTheirNames()
{
    CSubDeviceItem subDevice;
    subDevice.setAvailableParamSets(0x5);
    QCOMPARE(subDevice.availableParamSetNames(),
             (Sets{{0, QStringLiteral("Param set 01")}, {2, QStringLiteral("Param set 03")}}));
    NameTable table;
    table.set(2, QStringLiteral("Milling"));
    subDevice.setAvailableParamSetNames(table.data());

    subDevice.setAvailableParamSets(0x4);
    QCOMPARE(subDevice.availableParamSetNames(), (Sets{{2, QStringLiteral("Milling")}}));
    subDevice.setAvailableParamSets(0x6);
    QCOMPARE(subDevice.availableParamSetNames(),
             (Sets{{1, QStringLiteral("Param set 02")}, {2, QStringLiteral("Milling")}}));
    // A set that went and came back has lost its name.
    subDevice.setAvailableParamSets(0);
    subDevice.setAvailableParamSets(0x4);
    QCOMPARE(subDevice.availableParamSetNames(), (Sets{{2, QStringLiteral("Param set 03")}}));

    // An empty name is a name.
    CSubDeviceItem nameless = subDeviceWithSets({{2, QString()}});
    nameless.setAvailableParamSets(0x4);
    QCOMPARE(nameless.availableParamSetNames(), (Sets{{2, QString()}}));
}

void tst_sub_device::maskLeavesSetsAbove63()
{
    CSubDeviceItem subDevice = subDeviceWithSets(
        {{63, QStringLiteral("a")}, {64, QStringLiteral("b")}, {65535, QStringLiteral("c")}});
    subDevice.setAvailableParamSets(0);
    QCOMPARE(subDevice.availableParamSetNames(),
             (Sets{{64, QStringLiteral("b")}, {65535, QStringLiteral("c")}}));
}

void tst_sub_device::maskLeavesTheActiveSet()
{
    CSubDeviceItem subDevice = sampleSubDevice(1);
    QCOMPARE(subDevice.activeParamSet(), short(2));
    subDevice.setAvailableParamSets(0x1);
    QCOMPARE(subDevice.activeParamSet(), short(2));
}

void tst_sub_device::maskRemovesEverySetOfOneNumber()
{
    const QMultiMap<unsigned short, QString> twice{{5, QStringLiteral("first")},
                                                   {5, QStringLiteral("second")}};
    CSubDeviceItem subDevice = subDeviceWithSets(twice);
    QCOMPARE(subDevice.paramSetCount(), 2);
    subDevice.setAvailableParamSets(0x20);
    QCOMPARE(subDevice.paramSetCount(), 2);
    subDevice.setAvailableParamSets(0);
    QCOMPARE(subDevice.paramSetCount(), 0);
}

void tst_sub_device::namesFromATable()
{
    NameTable table;
    for (int set = 0; set < 64; ++set)
        table.set(set, QStringLiteral("Name %1").arg(set));
    table.set(33, std::vector<unsigned short>{0, 'x'}); // empty, with something behind its terminator
    CSubDeviceItem subDevice;
    subDevice.setAvailableParamSets(~0ULL);
    subDevice.setAvailableParamSetNames(table.data());
    const Sets names = subDevice.availableParamSetNames();
    QCOMPARE(names.size(), 64);
    for (unsigned short set = 0; set < 64; ++set) {
        QCOMPARE(names.value(set),
                 set == 33 ? QStringLiteral("Param set 34") : QStringLiteral("Name %1").arg(set));
    }
}

void tst_sub_device::namesFromATableAreThoseOfFixedStrings_data()
{
    QTest::addColumn<QVector<unsigned short>>("units");
    QTest::addColumn<QString>("name");

    const auto row = [](const char *name, const QVector<unsigned short> &units, const QString &text) {
        QTest::newRow(name) << units << text;
    };
    row("text", {'A', 'b'}, QStringLiteral("Ab"));
    row("placeholder", {'%', '1'}, QStringLiteral("%1"));
    row("blanks are kept", {' ', 'A', ' '}, QStringLiteral(" A "));
    row("remains behind the terminator", {'A', 0, 'B'}, QStringLiteral("A"));
    row("31 units", QVector<unsigned short>(31, 'x'), QString(31, QLatin1Char('x')));
    row("32 units, without terminator", QVector<unsigned short>(32, 'x'), QString(32, QLatin1Char('x')));
    row("FFFF units are kept", {0xFFFF, 'A', 0xFFFF},
        QString(QChar(0xFFFF)) + QLatin1Char('A') + QChar(0xFFFF));
    row("unused flash", QVector<unsigned short>(32, 0xFFFF), QString(32, QChar(0xFFFF)));
    row("surrogate pair", {0xD83D, 0xDE00}, QString(QChar(0xD83D)) + QChar(0xDE00));
    row("lone surrogate", {0xDE00, 'A'}, QString(QChar(0xDE00)) + QLatin1Char('A'));
    row("byte order mark", {0xFEFF, 'A'}, QString(QChar(0xFEFF)) + QLatin1Char('A'));
    row("swapped byte order mark", {0xFFFE, 'A'}, QString(QChar(0xFFFE)) + QLatin1Char('A'));
    row("empty", {0, 'A'}, QStringLiteral("Param set 06"));
}

void tst_sub_device::namesFromATableAreThoseOfFixedStrings()
{
    QFETCH(QVector<unsigned short>, units);
    QFETCH(QString, name);

    NameTable table;
    table.set(5, std::vector<unsigned short>(units.begin(), units.end()));
    // The neighbours do not bleed into the entry.
    table.set(4, QString(32, QLatin1Char('4')));
    table.set(6, QString(32, QLatin1Char('6')));
    CSubDeviceItem subDevice;
    subDevice.setAvailableParamSets(0x20);
    subDevice.setAvailableParamSetNames(table.data());
    QCOMPARE(subDevice.availableParamSetNames(), (Sets{{5, name}}));

    unsigned short field[32] = {};
    std::copy(units.constBegin(), units.constEnd(), field);
    const QString text = CString32(field).str();
    QCOMPARE(name, text.isEmpty() ? QStringLiteral("Param set 06") : text);
}

void tst_sub_device::nameTableAddsNoSet()
{
    NameTable table;
    table.set(0, QStringLiteral("zero"));
    table.set(1, QStringLiteral("one"));
    CSubDeviceItem subDevice;
    subDevice.setAvailableParamSetNames(table.data());
    QCOMPARE(subDevice.availableParamSetNames(), Sets());
    subDevice.setAvailableParamSets(0x2);
    subDevice.setAvailableParamSetNames(table.data());
    QCOMPARE(subDevice.availableParamSetNames(), (Sets{{1, QStringLiteral("one")}}));
}

void tst_sub_device::nullNameTableIsIgnored()
{
    CSubDeviceItem subDevice = sampleSubDevice(1);
    subDevice.setAvailableParamSetNames(nullptr);
    QVERIFY(areEqual(subDevice, sampleSubDevice(1)));
}

void tst_sub_device::nameTableEndsAtSet63()
{
    NameTable table;
    table.set(63, QStringLiteral("last"));
    CSubDeviceItem subDevice =
        subDeviceWithSets({{63, QString()}, {64, QStringLiteral("b")}, {65535, QString()}});
    subDevice.setAvailableParamSetNames(table.data());
    QCOMPARE(subDevice.availableParamSetNames(),
             (Sets{{63, QStringLiteral("last")}, {64, QStringLiteral("b")}, {65535, QString()}}));
}

void tst_sub_device::maskOfTheSetsFoldsTo32Bits_data()
{
    QTest::addColumn<QList<unsigned short>>("sets");
    QTest::addColumn<quint64>("mask");

    QTest::newRow("none") << QList<unsigned short>() << quint64(0);
    QTest::newRow("0 and 2") << QList<unsigned short>{0, 2} << quint64(0x5);
    QTest::newRow("31") << QList<unsigned short>{31} << quint64(0x80000000);
    QTest::newRow("32 is on bit 0") << QList<unsigned short>{32} << quint64(0x1);
    QTest::newRow("1 and 33 share a bit") << QList<unsigned short>{1, 33} << quint64(0x2);
    QTest::newRow("63 is on bit 31") << QList<unsigned short>{63} << quint64(0x80000000);
    QTest::newRow("0 to 63") << range(0, 63) << quint64(0xFFFFFFFF);
    QTest::newRow("above 63") << QList<unsigned short>{65, 65535} << quint64(0x80000002);
}

void tst_sub_device::maskOfTheSetsFoldsTo32Bits()
{
    QFETCH(QList<unsigned short>, sets);
    QFETCH(quint64, mask);

    Sets names;
    for (const unsigned short set : sets)
        names.insert(set, QString());
    QCOMPARE(quint64(subDeviceWithSets(names).availableParamSets()), mask);
}

void tst_sub_device::maskIsNoInverseForHighSets()
{
    CSubDeviceItem subDevice;
    subDevice.setAvailableParamSets(0x8000'0001'0000'0000);
    QCOMPARE(quint64(subDevice.availableParamSets()), quint64(0x8000'0001));
}

void tst_sub_device::containsASet_data()
{
    QTest::addColumn<uint>("set");
    QTest::addColumn<bool>("contained");

    QTest::newRow("0") << 0U << false;
    QTest::newRow("1") << 1U << true;
    QTest::newRow("63") << 63U << true;
    QTest::newRow("64") << 64U << false;
    QTest::newRow("65537 asks for set 1") << 65537U << true;
    QTest::newRow("65536 asks for set 0") << 65536U << false;
    QTest::newRow("the largest asks for set 65535") << 0xFFFFFFFFU << false;
    QTest::newRow("0xFFFF003F asks for set 63") << 0xFFFF003FU << true;
}

void tst_sub_device::containsASet()
{
    QFETCH(uint, set);
    QFETCH(bool, contained);

    CSubDeviceItem subDevice;
    subDevice.setAvailableParamSets(0x8000'0000'0000'0002);
    QCOMPARE(subDevice.containsParamSet(set), contained);
}

void tst_sub_device::countsItsSets()
{
    CSubDeviceItem subDevice;
    QCOMPARE(subDevice.availableParamSetCount(), 0);
    QCOMPARE(subDevice.paramSetCount(), 0);
    subDevice.setAvailableParamSets(0x8000'0000'0000'0005);
    QCOMPARE(subDevice.availableParamSetCount(), 3);
    QCOMPARE(subDevice.paramSetCount(), 3);
}

void tst_sub_device::clearKeepsTheParameterSets()
{
    CSubDeviceItem subDevice = sampleSubDevice(3);
    const Sets names = subDevice.availableParamSetNames();
    QCOMPARE(names.size(), 2);
    subDevice.clear();
    QCOMPARE(subDevice.number(), static_cast<unsigned char>(255));
    QCOMPARE(subDevice.name(), QString());
    QVERIFY(subDevice.isNull());
    QCOMPARE(subDevice.availableParamSetNames(), names);
    QCOMPARE(subDevice.activeParamSet(), short(2));
    QVERIFY(subDevice.paramVersion() == version(1, 2, 300));
    QVERIFY(areDifferent(subDevice, CSubDeviceItem()));
}

void tst_sub_device::namesHoldPlaceholders()
{
    const QString text = QStringLiteral("100 %1 %2 %L3 %%");
    CSubDeviceItem subDevice(1, text);
    subDevice.setAvailableParamSets(0x1);
    NameTable table;
    table.set(0, text);
    subDevice.setAvailableParamSetNames(table.data());
    QCOMPARE(subDevice.name(), text);
    QCOMPARE(subDevice.availableParamSetNames().value(0), text);
    CSubDeviceItem back;
    QCOMPARE(readInto(back, streamed(subDevice)), QDataStream::Ok);
    QVERIFY(areEqual(back, subDevice));
}

void tst_sub_device::equality_data()
{
    QTest::addColumn<CSubDeviceItem>("other");
    QTest::addColumn<bool>("equal");

    const auto row = [](const char *name, bool equal, const std::function<void(CSubDeviceItem &)> &change) {
        CSubDeviceItem other = sampleSubDevice(1);
        change(other);
        QTest::newRow(name) << other << equal;
    };
    row("same", true, [](CSubDeviceItem &) {});
    row("same sets, made anew", true, [](CSubDeviceItem &other) {
        other.setAvailableParamSets(0);
        other.setAvailableParamSets(0x5);
    });
    row("number", false, [](CSubDeviceItem &other) { other.setNumber(2); });
    row("name", false, [](CSubDeviceItem &other) { other.setName(QStringLiteral("axis 1")); });
    row("one set less", false, [](CSubDeviceItem &other) { other.setAvailableParamSets(0x1); });
    row("one set more", false, [](CSubDeviceItem &other) { other.setAvailableParamSets(0x7); });
    row("another set of the same mask bit", false,
        [](CSubDeviceItem &other) { other.setAvailableParamSets(0x1'0000'0004); });
    row("name of a set", false, [](CSubDeviceItem &other) {
        NameTable table;
        table.set(2, QStringLiteral("Milling"));
        other.setAvailableParamSetNames(table.data());
    });
    row("active set", false, [](CSubDeviceItem &other) { other.setActiveParamSet(0); });
    row("version, first field", false,
        [](CSubDeviceItem &other) { other.setParamVersion(version(1, 2, 301)); });
    row("version, second field", false,
        [](CSubDeviceItem &other) { other.setParamVersion(version(1, 3, 300)); });
    row("version, third field", false,
        [](CSubDeviceItem &other) { other.setParamVersion(version(2, 2, 300)); });
}

void tst_sub_device::equality()
{
    QFETCH(CSubDeviceItem, other);
    QFETCH(bool, equal);

    const CSubDeviceItem subDevice = sampleSubDevice(1);
    QVERIFY(equal ? areEqual(subDevice, other) : areDifferent(subDevice, other));
}

void tst_sub_device::debugForm()
{
    const CSubDeviceItem subDevice(1, QStringLiteral("Axis %1 %2"));
    QString quoted;
    QDebug(&quoted) << subDevice;
    QCOMPARE(quoted.trimmed(), QStringLiteral("\"CSubDeviceItem(1, Axis %1 %2)\""));
    QString plain;
    QDebug(&plain).noquote() << subDevice;
    QCOMPARE(plain.trimmed(), QStringLiteral("CSubDeviceItem(1, Axis %1 %2)"));

    // The stream's own settings are back afterwards.
    QString mixed;
    QDebug(&mixed).space() << 1 << subDevice << 2 << 3;
    QCOMPARE(mixed.trimmed(), QStringLiteral("1 \"CSubDeviceItem(1, Axis %1 %2)\" 2 3"));
    QString tight;
    QDebug(&tight).nospace() << 1 << subDevice << 2 << 3;
    QCOMPARE(tight, QStringLiteral("1\"CSubDeviceItem(1, Axis %1 %2)\"23"));

    QString null;
    QDebug(&null) << CSubDeviceItem();
    QCOMPARE(null.trimmed(), QStringLiteral("\"CSubDeviceItem(255, )\""));
}

void tst_sub_device::isAMetaType()
{
    const QVariant variant = QVariant::fromValue(sampleSubDevice(3));
    QVERIFY(areEqual(variant.value<CSubDeviceItem>(), sampleSubDevice(3)));
}

void tst_sub_device::exampleOfTheClassComment()
{
    CSubDeviceItem axis(1, QStringLiteral("Spindle"));
    axis.setAvailableParamSets(0x5);
    QCOMPARE(axis.availableParamSetNames(),
             (Sets{{0, QStringLiteral("Param set 01")}, {2, QStringLiteral("Param set 03")}}));
    axis.setAvailableParamSets(0x4);
    QCOMPARE(axis.availableParamSetNames(), (Sets{{2, QStringLiteral("Param set 03")}}));
    QVERIFY(axis.setActiveParamSet(2));
    QVERIFY(!axis.setActiveParamSet(64));
    QCOMPARE(axis.activeParamSet(), short(2));
}

QTEST_GUILESS_MAIN(tst_sub_device)
#include "tst_sub_device.moc"
