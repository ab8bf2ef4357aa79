// SPDX-License-Identifier: MIT
#ifndef USTARINDEX_H
#define USTARINDEX_H

#include "SipHash.h"

#include <CTarFileInfo.h>

#include <deque>
#include <memory_resource>
#include <string_view>
#include <vector>

class UstarBlock;

// The members of an archive in its order, with their texts still as the bytes of the archive: two heap
// allocations per member, of the record and of its name, cost more than all else about it but its reading.
// Nothing that is here once moves: vectors that grow took 30 ns more per member.
class UstarIndex
{
public:
    int count() const { return int(mMembers.size()); }
    qint64 size(int member) const { return mMembers[std::size_t(member)].size; }
    qint64 offset(int member) const { return mMembers[std::size_t(member)].offset; }
    CTarFileInfo record(int member) const;

    // The first member of this name, or -1. The names are hashed when first asked for.
    int find(const QString &name) const;

    void append(const UstarBlock &header, qint64 size, qint64 offset);

private:
    struct Member
    {
        std::string_view name() const { return {texts, nameLength}; }
        std::string_view linkName() const { return {texts + nameLength, linkNameLength}; }

        const char *texts; // the name and the link name behind it, both without end
        qint64 size;
        qint64 offset;
        quint16 nameLength;
        quint16 linkNameLength;
        char typeFlag;
    };

    // A place of the hash table: the first member of a name, beside a part of the name's hash.
    struct Slot
    {
        bool isFree() const { return member < 0; }

        quint32 tag = 0;
        qint32 member = -1;
    };

    const char *stored(std::string_view name, std::string_view linkName);
    void hashNames() const;
    void reserveSlots() const;
    void enter(std::size_t member) const;
    Slot &slotOf(std::string_view name, quint64 hash) const;

    std::deque<Member> mMembers;
    std::pmr::monotonic_buffer_resource mTexts;
    // Open addressing: a std::unordered_map, with its node for each name, took three times as long.
    SipHash mHash;
    mutable std::vector<Slot> mSlots; // none, or a power of two, of which at most half is taken
    mutable std::size_t mHashed = 0;  // so many members are in the table, or a namesake before them
};

#endif // USTARINDEX_H
