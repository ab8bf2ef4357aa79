// SPDX-License-Identifier: MIT
#include "UstarIndex.h"

#include "UstarBlock.h"

#include <algorithm>
#include <array>

namespace {

CTarFileInfo::EFileType fileType(char typeFlag)
{
    switch (typeFlag) {
    case '\0':
    case '0':
        return CTarFileInfo::E_TYPE_FILE;
    case '2':
        return CTarFileInfo::E_TYPE_LINK;
    case '5':
        return CTarFileInfo::E_TYPE_DIRECTORY;
    default:
        return CTarFileInfo::E_TYPE_OTHER;
    }
}

QLatin1String latin1(std::string_view text)
{
    return QLatin1String(text.data(), int(text.size()));
}

} // namespace

CTarFileInfo UstarIndex::record(int member) const
{
    const Member &from = mMembers[std::size_t(member)];
    CTarFileInfo info;
    info.type = fileType(from.typeFlag);
    info.name = latin1(from.name());
    info.linkName = latin1(from.linkName());
    info.size = from.size;
    info.offset = from.offset;
    return info;
}

int UstarIndex::find(const QString &name) const
{
    // A name that no header can hold is no member's.
    if (name.size() > UstarBlock::byteCount)
        return -1;
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): filled as far as it is read
    std::array<char, UstarBlock::byteCount> bytes;
    ushort units = 0;
    std::transform(name.begin(), name.end(), bytes.begin(), [&units](QChar unit) {
        units |= unit.unicode();
        return char(unit.unicode());
    });
    if (units > 0xFF)
        return -1;
    hashNames();
    const std::string_view wanted(bytes.data(), std::size_t(name.size()));
    return slotOf(wanted, mHash.hash(wanted)).member;
}

void UstarIndex::append(const UstarBlock &header, qint64 size, qint64 offset)
{
    const std::string_view name = header.name();
    const std::string_view linkName = header.linkName();
    mMembers.push_back({stored(name, linkName), size, offset, quint16(name.size()), quint16(linkName.size()),
                        header.typeFlag()});
}

const char *UstarIndex::stored(std::string_view name, std::string_view linkName)
{
    char *texts = static_cast<char *>(mTexts.allocate(name.size() + linkName.size(), 1));
    name.copy(texts, name.size());
    linkName.copy(texts + name.size(), linkName.size());
    return texts;
}

void UstarIndex::hashNames() const
{
    reserveSlots();
    for (; mHashed < mMembers.size(); ++mHashed)
        enter(mHashed);
}

// Where the table is too small, makes another one without members.
void UstarIndex::reserveSlots() const
{
    std::size_t count = std::max(mSlots.size(), std::size_t(2));
    while (count < 2 * mMembers.size())
        count *= 2;
    if (count == mSlots.size())
        return;
    mSlots.assign(count, Slot());
    mHashed = 0;
}

void UstarIndex::enter(std::size_t member) const
{
    const std::string_view name = mMembers[member].name();
    const quint64 hash = mHash.hash(name);
    Slot &slot = slotOf(name, hash);
    if (slot.isFree())
        slot = {quint32(hash >> 32), qint32(member)};
}

// The slot with a member of this name, or a free one without.
UstarIndex::Slot &UstarIndex::slotOf(std::string_view name, quint64 hash) const
{
    const auto isIt = [this, name, tag = quint32(hash >> 32)](const Slot &slot) {
        return slot.tag == tag && mMembers[std::size_t(slot.member)].name() == name;
    };
    std::size_t place = hash & (mSlots.size() - 1);
    while (!mSlots[place].isFree() && !isIt(mSlots[place]))
        place = (place + 1) & (mSlots.size() - 1);
    return mSlots[place];
}
