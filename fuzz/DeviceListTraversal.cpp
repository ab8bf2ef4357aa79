// SPDX-License-Identifier: MIT
// Any bytes as the stream of a device list, in any version of the stream and both byte orders: read from a
// buffer, where the library looks ahead, and from a device that only hands out what comes next, where Qt's
// own operators read field by field.
#include "Traversals.h"

#include <CDeviceList.h>

#include <Equality.h>
#include <InputReader.h>
#include <Properties.h>
#include <Streams.h>

#include <QDebug>

#include <algorithm>

namespace {

// Before Qt 2.1 a text was 8-bit.
bool keepsTexts(const StreamForm &form)
{
    return form.version >= QDataStream::Qt_2_1;
}

// Reads the list as it was written, and finds the same.
void checkRoundTrip(const CDeviceList &list, const StreamForm &form)
{
    const QByteArray bytes = written(list, form);
    const Reading<CDeviceList> again = readFrom(bytes, form, CDeviceList());
    require(again.status == QDataStream::Ok && again.rest.isEmpty(), "what was written is read to its end");
    require(!keepsTexts(form) || again.value == list, "what was written is read as an equal list");
    require(written(again.value, form) == bytes, "what was read is written as the same bytes");
    requireEquality(list, again.value);
}

// What unite() and addDevice() make of two lists.
void checkUnited(const CDeviceList &own, const CDeviceList &other)
{
    CDeviceList united = own;
    united.unite(other);
    require(united.listName() == own.listName() && united.sourceType() == own.sourceType()
                && united.sourceAddress() == own.sourceAddress()
                && united.sourceValue1() == own.sourceValue1() && united.sourceValue2() == own.sourceValue2(),
            "uniting adds devices only");
    const QList<unsigned int> keys = other.keys();
    for (const unsigned int key : keys) {
        require(united.contains(key), "a device of either list is there", QString::number(key));
        if (own.contains(key))
            require(united.device(key) == own.device(key), "the own device stays");
        else
            require(united.device(key).mDeviceKey == static_cast<qint32>(key),
                    "a device that is added has its key");
    }
    require(united.count() <= own.count() + other.count() && united.count() >= own.count(),
            "nothing else is added");
    united.unite(united);
    CDeviceList twice = united;
    twice.unite(other);
    requireEquality(twice, united);
    require(twice == united, "uniting once more adds nothing");
}

void checkDevices(const CDeviceList &list)
{
    CDeviceList changed = list;
    QList<unsigned int> keys = list.keys();
    require(keys.size() == list.count() && list.size() == list.count(), "every device has a key");
    require(std::is_sorted(keys.begin(), keys.end()), "keys ascend");
    keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
    for (const unsigned int key : qAsConst(keys)) {
        const CDeviceItem device = list.device(key);
        requireEquality(device, list.device(key));
        changed.addDevice(key, CDeviceItem());
        require(changed.device(key).mDeviceKey == static_cast<qint32>(key),
                "a device gets the key of its place");
        changed.removeDevice(key);
    }
    QString debug;
    QDebug(&debug).noquote() << list;
    require(debug.trimmed().endsWith(QStringLiteral(", %1)").arg(list.count())),
            "the debug form has the number of devices");
    changed.clear();
    require(changed.count() == 0 && changed.listName() == list.listName(), "clearing keeps the name");
}

} // namespace

void traverseDeviceList(const QByteArray &input)
{
    // Qt makes room for a block of a text before it looks whether the stream holds it; and a map entry costs
    // some 8 times its bytes, and buffers grow by copying.
    constexpr std::size_t textBlock = std::size_t{4} << 20;
    constexpr std::size_t bytesPerByte = 32;
    InputReader reader(input);
    StreamForm form;
    form.order = reader.takeChoice(2) == 0 ? QDataStream::BigEndian : QDataStream::LittleEndian;
    // The first one is the form of inventories in files.
    form.version = QDataStream::Qt_5_15 - reader.takeChoice(QDataStream::Qt_5_15);
    const QByteArray bytes = reader.takeRest();
    const std::size_t limit = textBlock + bytesPerByte * static_cast<std::size_t>(bytes.size() + 64);

    const Reading<CDeviceList> ahead = bounded(limit, "a list costs memory in proportion to its stream",
                                               [&] { return readFrom(bytes, form, CDeviceList()); });
    const Reading<CDeviceList> inOrder = readSequentially(bytes, form, CDeviceList());
    require(ahead.status == inOrder.status, "both ways of reading find the same fault");
    require(ahead.rest == inOrder.rest, "both ways of reading take the same bytes");
    require(ahead.value == inOrder.value && inOrder.value == ahead.value,
            "both ways of reading give one list");

    checkRoundTrip(ahead.value, form);
    checkDevices(ahead.value);
    const CDeviceList half = readFrom(bytes.left(bytes.size() / 2), form, CDeviceList()).value;
    requireEquality(half, ahead.value);
    checkUnited(ahead.value, half);
    checkUnited(CDeviceList(), ahead.value);
}
