// SPDX-License-Identifier: MIT
// Every value class of the library: copies that belong to different threads share what they hold until one is
// changed, and any of them may be the last that lets go.
#include <CBenchmarkTimer.h>
#include <CCommandLineParser.h>
#include <CDateTime.h>
#include <CDeviceItem.h>
#include <CDeviceList.h>
#include <CIPv6Address.h>
#include <CMessage.h>
#include <CString128.h>
#include <CString32.h>
#include <CString64.h>
#include <CSubDeviceItem.h>
#include <CTarFileInfo.h>
#include <CTime.h>
#include <CVariant.h>

#include "types/VariantSamples.h"

#include <LoggedTest.h>
#include <Threads.h>

#include <QTest>

#include <atomic>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

using VariantSamples::rawSample;
using VariantSamples::tagName;
using VariantSamples::typedSample;
using VariantSamples::valueTags;

// What a test row does in several threads; it returns the number of values that were not as they should be.
using Work = std::function<int()>;
Q_DECLARE_METATYPE(Work)

namespace {

// All that a value holds, for most classes their stream form.
template<typename T>
QByteArray told(const T &value)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    stream << value;
    return bytes;
}

// The stream form, and what the readers make of it.
QByteArray told(const CVariant &value)
{
    return told<CVariant>(value) + value.toStr().toUtf8() + value.toByteArray();
}

QByteArray told(const CTarFileInfo &info)
{
    return QByteArray::number(info.type) + info.name.toUtf8() + info.linkName.toUtf8()
           + QByteArray::number(info.size) + QByteArray::number(info.offset);
}

QByteArray told(const CCommandLineParser &options)
{
    return options.serverName().toUtf8() + options.language().name().toUtf8();
}

// The value that all copies are made of, and how one is changed.
template<typename T>
struct Kind
{
    std::function<T()> make;
    std::function<void(T &)> change;
};

template<typename T>
QByteArray toldOfChanged(const Kind<T> &kind)
{
    T value = kind.make();
    kind.change(value);
    return told(value);
}

// Every thread has one of the copies. It makes more of it, changes one and assigns another; then it changes
// its own.
template<typename T>
int faultsOfChanges(const Kind<T> &kind)
{
    constexpr int rounds = 20;
    const T original = kind.make();
    const QByteArray before = told(original);
    const QByteArray after = toldOfChanged(kind);
    std::vector<T> copies(threadCount, original);
    std::atomic<int> faults{before == after ? 1 : 0};
    inThreads([&](int thread) {
        T &mine = copies[static_cast<std::size_t>(thread)];
        for (int i = 0; i < rounds; ++i) {
            T changed(mine);
            kind.change(changed);
            T assigned(changed);
            assigned = mine;
            const T moved(std::move(changed));
            faults += int(told(moved) != after) + int(told(assigned) != before) + int(told(mine) != before);
        }
        kind.change(mine);
        faults += int(told(mine) != after);
    });
    return faults + int(told(original) != before);
}

// Nobody but the threads has the value: the last one to let go of its copy destroys what is shared.
template<typename T>
int faultsOfReleases(const Kind<T> &kind)
{
    constexpr int rounds = 10;
    const QByteArray expected = told(kind.make());
    std::atomic<int> faults{0};
    for (int i = 0; i < rounds; ++i) {
        std::vector<std::optional<T>> copies(threadCount, kind.make());
        inThreads([&](int thread) {
            std::optional<T> &mine = copies[static_cast<std::size_t>(thread)];
            faults += int(told(*mine) != expected);
            mine.reset();
        });
    }
    return faults;
}

template<typename T>
void addRow(const char *name, const Kind<T> &kind)
{
    QTest::addRow("%s, changed", name) << Work([kind] { return faultsOfChanges(kind); });
    QTest::addRow("%s, released", name) << Work([kind] { return faultsOfReleases(kind); });
}

// Literals are constants that nobody counts the holders of; this is a text of its own.
QString text(const char *characters)
{
    return QString::fromLatin1(characters);
}

void addVariantRows()
{
    const auto change = [](CVariant &value) { value = QByteArrayLiteral("changed"); };
    for (const int tag : valueTags) {
        const QByteArray name = "CVariant " + tagName(tag);
        addRow<CVariant>(name.constData(), {[tag] { return typedSample(tag); }, change});
        addRow<CVariant>((name + " from raw data").constData(), {[tag] { return rawSample(tag); }, change});
    }
    addRow<CVariant>("CVariant, empty", {[] { return CVariant(); }, change});
    addRow<CVariant>("CVariant that holds a text",
                     {[] { return VariantSamples::tagged(text("axis"), 13); }, change});
    addRow<CVariant>("CVariant that another takes the place of",
                     {[] { return CVariant(CString64(text("axis"))); },
                      [](CVariant &value) { value = CVariant(CString64(text("gear"))); }});
    addRow<CVariant>("CVariant that is converted",
                     {[] { return CVariant(CString64(text("12"))); },
                      [](CVariant &value) { value.convertTo(NTypes::E_STRING32); }});
}

template<typename String>
void addFixedStringRows(const char *name)
{
    addRow<String>(name,
                   {[] { return String(text("axis")); }, [](String &string) { string = text("gear"); }});
    const QByteArray fromBytes = QByteArray(name) + " that takes bytes";
    addRow<String>(fromBytes.constData(),
                   {[] { return String(); }, [](String &string) { string = QByteArray("a\0x\0i\0s\0", 8); }});
}

CSubDeviceItem subDevice()
{
    CSubDeviceItem axis(1, text("Spindle"));
    axis.setAvailableParamSets(0x5);
    return axis;
}

CDeviceItem device()
{
    CDeviceItem drive(text("Drive"), static_cast<CDeviceItem::EHostAddrType>(1), cDefaultDeviceAddress, 5000,
                      text("SN 4711"));
    drive.addSubDevice(subDevice(), 3);
    return drive;
}

CDeviceList deviceList()
{
    CDeviceList list(text("Plant"), CDeviceList::E_SOURCE_NONE);
    list.setSourceAddress(cLinkLocalNetwork);
    list.addDevice(4, device());
    list.addDevice(5, device());
    return list;
}

void addDeviceRows()
{
    addRow<CSubDeviceItem>("CSubDeviceItem",
                           {subDevice, [](CSubDeviceItem &axis) { axis.setAvailableParamSets(0xC); }});
    addRow<CDeviceItem>("CDeviceItem, its text",
                        {device, [](CDeviceItem &drive) { drive.mName += QLatin1Char('!'); }});
    addRow<CDeviceItem>("CDeviceItem, a sub-device",
                        {device, [](CDeviceItem &drive) { drive.setAvailableParamSets(0xC, 3); }});
    addRow<CDeviceItem>("CDeviceItem, its address",
                        {device, [](CDeviceItem &drive) { drive.mHostAddress = cLinkLocalNetwork; }});
    addRow<CDeviceList>("CDeviceList, a device more",
                        {deviceList, [](CDeviceList &list) { list.addDevice(6, device()); }});
    addRow<CDeviceList>("CDeviceList, a device less",
                        {deviceList, [](CDeviceList &list) { list.removeDevice(4); }});
    addRow<CDeviceList>("CDeviceList, united", {deviceList, [](CDeviceList &list) {
                                                    CDeviceList other;
                                                    other.addDevice(7, list.device(5));
                                                    list.unite(other);
                                                }});
}

CTarFileInfo member()
{
    CTarFileInfo info;
    info.type = CTarFileInfo::E_TYPE_LINK;
    info.name = text("axis.csv");
    info.linkName = text("gear.csv");
    return info;
}

CCommandLineParser options()
{
    QStringList arguments = {text("server=10.0.0.1"), text("lang=de_DE")};
    return CCommandLineParser(&arguments);
}

void addOtherRows()
{
    addRow<CTime>(
        "CTime", {[] { return CTime(1500, CTime::TU_US); }, [](CTime &time) { time.setUnit(CTime::TU_MS); }});
    addRow<CDateTime>("CDateTime", {[] { return CDateTime(0x07E5030405060759, Qt::UTC); },
                                    [](CDateTime &moment) {
                                        moment.setDate({2, 1, 2022});
                                    }});
    addRow<CDateTime>("CDateTime with an offset",
                      {[] {
                           return CDateTime(QDateTime({2021, 3, 4}, {5, 6}, Qt::OffsetFromUTC, 1800));
                       },
                       [](CDateTime &moment) { moment.setTimeSpec(Qt::UTC); }});
    addRow<CIPv6Address>("CIPv6Address", {[] { return CIPv6Address(text("1:2:3:4:5:6:7:8")); },
                                          [](CIPv6Address &address) { address[15] = 9; }});
    addRow<CMessage>("CMessage", {[] { return CMessage(Nj6Global::E_MSG_INFO, text("ready")); },
                                  [](CMessage &message) { message.appendText(text(" to go")); }});
    addRow<CTarFileInfo>("CTarFileInfo", {member, [](CTarFileInfo &info) { info.name += QLatin1Char('~'); }});
    addRow<CCommandLineParser>("CCommandLineParser", {options, [](CCommandLineParser &line) {
                                                          line.setLanguage(QLocale(text("fr_FR")));
                                                      }});
}

} // namespace

class tst_shared_values : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void copiesMayBelongToDifferentThreads_data();
    void copiesMayBelongToDifferentThreads();
    void oneCommandLineMayBeReadByAllThreads();
};

void tst_shared_values::copiesMayBelongToDifferentThreads_data()
{
    QTest::addColumn<Work>("work");
    addVariantRows();
    addFixedStringRows<CString32>("CString32");
    addFixedStringRows<CString64>("CString64");
    addFixedStringRows<CString128>("CString128");
    addDeviceRows();
    addOtherRows();
}

void tst_shared_values::copiesMayBelongToDifferentThreads()
{
    QFETCH(Work, work);
    QCOMPARE(work(), 0);
}

void tst_shared_values::oneCommandLineMayBeReadByAllThreads()
{
    constexpr int rounds = 100;
    const CCommandLineParser line = options();
    std::atomic<int> right{0};
    inThreads([&](int) {
        for (int i = 0; i < rounds; ++i) {
            right += int(line.serverName() == QLatin1String("10.0.0.1"));
            right += int(line.language() == QLocale(QLocale::German, QLocale::Germany));
            right += int(line.contains(QStringLiteral("lang")) && line.count() == 2 && line.port() == 0);
        }
    });
    QCOMPARE(right.load(), threadCount * rounds * 3);
}

QTEST_GUILESS_MAIN(tst_shared_values)
#include "tst_shared_values.moc"
