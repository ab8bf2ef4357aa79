// SPDX-License-Identifier: MIT
#ifndef HELDSHARED_H
#define HELDSHARED_H

#include <QAtomicInt>
#include <QVariant>

#include <cstddef>
#include <new>
#include <utility>

// Fixed strings as a QVariant shares them: one block of a count and the value. Qt asks the meta-type registry
// under a lock when it makes and when it destroys one (27 ns each were measured, as much as the string itself
// costs); who knows the type need not ask.
//
// Like HeldInPlace, this touches what Qt 5 does not describe. Whether Qt's blocks have this form is seen from
// one that Qt has made, once per type; should they not, Qt's own way is taken.
namespace HeldShared {

template<typename T>
struct Block
{
    template<typename Make>
    explicit Block(Make make) : head(&value), value(make())
    {}

    QVariant::PrivateShared head;
    alignas(alignof(std::max_align_t)) T value;
};

// Where the value stands in a block.
constexpr std::ptrdiff_t valueAt = alignof(std::max_align_t);
static_assert(sizeof(QVariant::PrivateShared) <= valueAt, "behind the count");

template<typename T>
bool isFormOfQt()
{
    static const bool isForm = [] {
        const QVariant made = QVariant::fromValue(T());
        const QVariant::Private &memory = made.data_ptr();
        if (memory.is_shared == 0)
            return false;
        const auto *const block = reinterpret_cast<const char *>(memory.data.shared);
        return static_cast<const char *>(made.constData()) - block == valueAt
               && sizeof(Block<T>) == valueAt + sizeof(T);
    }();
    return isForm;
}

// Puts the value that is made into an empty QVariant.
template<typename T, typename Make>
void put(QVariant &empty, Make make)
{
    if (!isFormOfQt<T>()) {
        empty.setValue<T>(make());
        return;
    }
    QVariant::Private memory(static_cast<uint>(qMetaTypeId<T>()));
    memory.is_shared = 1;
    memory.data.shared = &(new Block<T>(make))->head; // owned by the QVariant
    empty.data_ptr() = memory;
}

inline bool isShared(const QVariant &held)
{
    return held.data_ptr().is_shared != 0;
}

// Gives up a block that others have, too, and empties the QVariant; false when this is the last one, which
// then still has it. The count is read here, so it is decreased here as well and not by Qt: a race detector,
// to which Qt is not transparent, sees that the thread that finds itself the last one comes after the others.
inline bool leave(QVariant &held)
{
    QAtomicInt &holders = held.data_ptr().data.shared->ref;
    if (holders.loadAcquire() == 1)
        return false;
    if (!holders.deref()) {
        holders.ref(); // the others have left in the meantime
        return false;
    }
    held.data_ptr() = QVariant::Private();
    return true;
}

// Empties a QVariant that is the last one to hold its value, if that is of the type.
template<typename T>
void forget(QVariant &held)
{
    const QVariant::Private memory = held.data_ptr();
    if (memory.type != static_cast<uint>(qMetaTypeId<T>()) || !isFormOfQt<T>())
        return;
    held.data_ptr() = QVariant::Private();
    delete reinterpret_cast<Block<T> *>(memory.data.shared);
}

} // namespace HeldShared

#endif // HELDSHARED_H
