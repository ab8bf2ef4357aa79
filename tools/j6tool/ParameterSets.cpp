// SPDX-License-Identifier: MIT
#include "ParameterSets.h"

#include "NumberText.h"
#include "VisibleText.h"

#include <CString32.h>

#include <QStringList>

#include <algorithm>
#include <array>
#include <cstddef>

namespace j6tool {

namespace {

constexpr int setCount = CSubDeviceItem::maxParamSetCount;
constexpr int nameSize = CString32::unitCount;
constexpr QLatin1Char separator(';');

// The parts between single semicolons; a double one is a semicolon of its part.
QStringList splitEntries(const QString &text)
{
    QStringList entries(QString{});
    for (int i = 0; i < text.size(); ++i) {
        if (text.at(i) != separator) {
            entries.last() += text.at(i);
        } else if (text.midRef(i + 1, 1) == separator) {
            entries.last() += separator;
            ++i;
        } else {
            entries.append(QString());
        }
    }
    return entries;
}

// The sets and their names as the sub-device's setters take them.
class SetTable
{
public:
    std::optional<Error> add(const QString &entry)
    {
        const int equals = entry.indexOf(QLatin1Char('='));
        const Result<qint64> number = integerFromText(entry.left(equals), 0, setCount - 1);
        if (!number)
            return number.error();
        if (((mMask >> *number) & 1U) != 0)
            return Error{QStringLiteral("%1 is the set %2 for the second time")
                             .arg(quoted(entry), QString::number(*number))};
        mMask |= 1ULL << *number;
        return equals < 0 ? std::nullopt : addName(int(*number), entry.mid(equals + 1));
    }

    void giveTo(CSubDeviceItem &subDevice)
    {
        subDevice.setAvailableParamSets(mMask);
        subDevice.setAvailableParamSetNames(mNames.data());
    }

private:
    std::optional<Error> addName(int number, const QString &name)
    {
        if (name.isEmpty() || name.size() > nameSize) {
            return Error{QStringLiteral("%1 is no name of the set %2 (1 to %3 UTF-16 units)")
                             .arg(quoted(name), QString::number(number), QString::number(nameSize))};
        }
        std::copy(name.utf16(), name.utf16() + name.size(),
                  mNames.begin() + std::ptrdiff_t{number} * nameSize);
        return std::nullopt;
    }

    quint64 mMask = 0;
    std::array<unsigned short, std::size_t{setCount} *nameSize> mNames = {};
};

} // namespace

std::optional<Error> setParameterSets(CSubDeviceItem &subDevice, const QString &text)
{
    if (text.isEmpty())
        return std::nullopt;
    SetTable sets;
    const QStringList entries = splitEntries(text);
    for (const QString &entry : entries) {
        if (std::optional<Error> error = sets.add(entry))
            return error;
    }
    sets.giveTo(subDevice);
    return std::nullopt;
}

} // namespace j6tool
