// SPDX-License-Identifier: MIT
#include <CSubDeviceItem.h>

#include <CStr.h>
#include <CString32.h>

#include "devices/InventoryReader.h"
#include "devices/InventoryWriter.h"
#include "devices/MapStream.h"

#include <QDataStream>
#include <QDebug>
#include <QDebugStateSaver>

#include <array>
#include <cstddef>

namespace {

constexpr int setCount = CSubDeviceItem::maxParamSetCount;

// Made once: all sub-devices share these texts.
const QString &defaultName(int set)
{
    static const std::array<QString, setCount> names = [] {
        std::array<QString, setCount> texts;
        int number = 0;
        for (QString &text : texts)
            text = QStringLiteral("Param set %1").arg(++number, 2, 10, QLatin1Char('0'));
        return texts;
    }();
    return names[static_cast<std::size_t>(set)];
}

// The text of the CString32 that has the units of entry `set`.
QString nameInTable(const unsigned short *names, int set)
{
    return CStr::fromUtf16(names + std::ptrdiff_t{CString32::unitCount} * set, CString32::byteCount);
}

} // namespace

CSubDeviceItem::CSubDeviceItem(unsigned char number, const QString &name) : mNumber(number), mName(name) {}

CSubDeviceItem::~CSubDeviceItem() = default;

bool CSubDeviceItem::isValid() const
{
    return mNumber < 255;
}

bool CSubDeviceItem::isNull() const
{
    return mNumber == 255 && mName.isEmpty();
}

unsigned char CSubDeviceItem::number() const
{
    return mNumber;
}

QString CSubDeviceItem::name() const
{
    return mName;
}

short CSubDeviceItem::activeParamSet() const
{
    return mActiveParamSet;
}

NTypes::sVersion_t CSubDeviceItem::paramVersion() const
{
    return mParamVersion;
}

unsigned long long CSubDeviceItem::availableParamSets() const
{
    quint32 mask = 0;
    for (auto set = mParamSetNames.constBegin(); set != mParamSetNames.constEnd(); ++set)
        mask |= quint32(1) << (set.key() % 32U);
    return mask;
}

QMap<unsigned short, QString> CSubDeviceItem::availableParamSetNames() const
{
    return mParamSetNames;
}

int CSubDeviceItem::availableParamSetCount() const
{
    return mParamSetNames.size();
}

int CSubDeviceItem::paramSetCount() const
{
    return availableParamSetCount();
}

bool CSubDeviceItem::containsParamSet(unsigned int set) const
{
    return mParamSetNames.contains(static_cast<unsigned short>(set));
}

void CSubDeviceItem::setNumber(unsigned char number)
{
    mNumber = number;
}

void CSubDeviceItem::setName(const QString &name)
{
    mName = name;
}

bool CSubDeviceItem::setActiveParamSet(short set)
{
    if (set == mActiveParamSet)
        return true;
    if (static_cast<unsigned short>(set) >= setCount)
        return false;
    mActiveParamSet = set;
    return true;
}

void CSubDeviceItem::setParamVersion(const NTypes::sVersion_t &version)
{
    mParamVersion = version;
}

void CSubDeviceItem::setAvailableParamSets(unsigned long long mask)
{
    for (unsigned short set = 0; set < setCount; ++set) {
        const bool available = ((mask >> set) & 1U) != 0;
        if (available == mParamSetNames.contains(set))
            continue;
        if (available)
            mParamSetNames.insert(set, defaultName(set));
        else
            mParamSetNames.remove(set);
    }
}

void CSubDeviceItem::setAvailableParamSetNames(unsigned short *names)
{
    if (names == nullptr)
        return;
    for (auto set = mParamSetNames.begin(); set != mParamSetNames.end() && set.key() < setCount; ++set) {
        const QString name = nameInTable(names, set.key());
        set.value() = name.isEmpty() ? defaultName(set.key()) : name;
    }
}

void CSubDeviceItem::clear()
{
    mNumber = 255;
    mName.clear();
}

bool CSubDeviceItem::operator==(const CSubDeviceItem &other) const
{
    return mNumber == other.mNumber && mName == other.mName && mParamSetNames == other.mParamSetNames
           && mActiveParamSet == other.mActiveParamSet && mParamVersion == other.mParamVersion;
}

bool CSubDeviceItem::operator!=(const CSubDeviceItem &other) const
{
    return !(*this == other);
}

InventoryStream::Writer &operator<<(InventoryStream::Writer &writer, const CSubDeviceItem &subDevice)
{
    writer << subDevice.mNumber << subDevice.mName;
    return writeMap(writer, subDevice.mParamSetNames) << subDevice.mActiveParamSet << subDevice.mParamVersion;
}

InventoryStream::Reader &operator>>(InventoryStream::Reader &reader, CSubDeviceItem &subDevice)
{
    const auto readName = [&reader](unsigned short set, QString &name) {
        reader.readText(name, set < setCount ? defaultName(set) : QString());
    };
    reader >> subDevice.mNumber >> subDevice.mName;
    return readMap(reader, subDevice.mParamSetNames, readName) >> subDevice.mActiveParamSet
           >> subDevice.mParamVersion;
}

QDataStream &operator<<(QDataStream &stream, const CSubDeviceItem &subDevice)
{
    InventoryStream::Writer writer(stream);
    writer << subDevice;
    return stream;
}

QDataStream &operator>>(QDataStream &stream, CSubDeviceItem &subDevice)
{
    InventoryStream::Reader reader(stream);
    reader >> subDevice;
    return stream;
}

QDebug operator<<(QDebug debug, const CSubDeviceItem &subDevice)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << QStringLiteral("CSubDeviceItem(%1, %2)")
                           .arg(QString::number(subDevice.number()), subDevice.name());
    return debug;
}
