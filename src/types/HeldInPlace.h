// SPDX-License-Identifier: MIT
#ifndef HELDINPLACE_H
#define HELDINPLACE_H

#include <NTypes.h>

#include <QVariant>

#include <array>
#include <cstddef>
#include <cstring>
#include <type_traits>

// Numbers and records of up to 8 bytes as a QVariant keeps them: in its own memory. Through Qt's functions
// every look at a record, every copy and every destruction asks the meta-type registry under a lock (57 ns
// each were measured) and a typed read of a number takes 10 ns; what is done here takes 1 ns.
//
// This, HeldShared.h and heldAt() are all that touches QVariant's memory. Qt 5 gives access to it in its
// header without describing it; the assertions hold it to what is used here, and a test compares it with what
// Qt makes.
namespace HeldInPlace {

using Memory = QVariant::Private;

static_assert(QT_VERSION < QT_VERSION_CHECK(6, 0, 0), "Qt 6 holds values in another way");
static_assert(offsetof(Memory, data) == 0 && std::is_standard_layout<Memory>::value
                  && sizeof(Memory::Data) == sizeof(quint64) && sizeof(Memory) == 2 * sizeof(quint64)
                  && sizeof(QVariant) == sizeof(Memory),
              "eight bytes of value and a word of type and flags");

// How values of a tag are held and how many bytes of them there are.
struct Form
{
    quint32 type;        // as the typed constructors hold it
    quint32 widenedType; // as raw data is held
    quint64 signBit;     // of the signed integers, else 0
    quint8 size;
    quint8 unusedBits; // of 64
};

// Of tags whose values are no numbers and no records of up to 8 bytes; no QVariant has such a type.
constexpr Form noForm = {~quint32(0), ~quint32(0), 0, 0, 0};

// The forms of the tags 0 to 32, there when the library is loaded; until then they are all zero, and Qt's own
// way is taken.
extern const std::array<Form, NTypes::E_VERSION_4 + 1> forms;

inline const Form &formOf(NTypes::eTypes_t tag)
{
    // cppcheck-suppress returnTempReference ; both are there for the program's whole life
    return static_cast<quint32>(tag) < forms.size() ? forms[static_cast<quint32>(tag)] : noForm;
}

// The type of what is held; with a flag in the two highest bits when it is null or not in place.
inline quint32 typeIn(const QVariant &value)
{
    quint32 type = 0;
    std::memcpy(&type, reinterpret_cast<const char *>(&value.data_ptr()) + sizeof(Memory::Data), sizeof type);
    return type;
}

inline bool isEmpty(const QVariant &value)
{
    return value.data_ptr().type == QMetaType::UnknownType;
}

// Whether a value is held, and in one of the two Qt types of its tag. A product, because with mixed types the
// branch of an || would be mispredicted, for 5 ns.
inline bool holds(const QVariant &value, const Form &form)
{
    const quint32 type = typeIn(value);
    return quint64(type ^ form.type) * quint64(type ^ form.widenedType) == 0;
}

inline const char *bytesIn(const QVariant &value)
{
    return reinterpret_cast<const char *>(&value.data_ptr().data);
}

inline quint64 bitsIn(const QVariant &value)
{
    quint64 bits = 0;
    std::memcpy(&bits, bytesIn(value), sizeof bits);
    return bits;
}

// The low bits of a number or record, all others taken from its sign.
inline quint64 extended(quint64 bits, const Form &form)
{
    const quint64 used = bits << form.unusedBits >> form.unusedBits;
    return (used ^ form.signBit) - form.signBit;
}

// The number or record as it is held, be it of the tag's size or a widened integer (which is an int).
inline quint64 bitsIn(const QVariant &value, const Form &form)
{
    return extended(bitsIn(value), typeIn(value) == form.type ? form : forms[NTypes::E_I32]);
}

// Whether a QVariant holds values of the type in place.
template<typename T>
constexpr bool fits = std::is_trivially_copyable<T>::value && sizeof(T) <= sizeof(Memory::Data);

// The first bytes of what is held.
template<typename T>
T valueIn(const QVariant &value)
{
    static_assert(fits<T>, "held in place");
    T held{};
    // cppcheck-suppress memsetClass ; no such type fits
    std::memcpy(&held, bytesIn(value), sizeof held);
    return held;
}

// Makes an empty QVariant hold these bits as a value of the Qt type.
inline void put(QVariant &empty, quint32 type, quint64 bits)
{
    // In two steps; field by field the compiler would keep old flags for a while.
    char *const memory = reinterpret_cast<char *>(&empty.data_ptr());
    std::memcpy(memory, &bits, sizeof bits);
    std::memcpy(memory + sizeof bits, &type, sizeof type);
}

// Forgets a value that is held as its tag says, so that Qt has nothing to look up when it destroys the
// QVariant.
inline void forget(QVariant &value, NTypes::eTypes_t tag)
{
    if (holds(value, formOf(tag)))
        value.data_ptr() = Memory();
}

// Copies a value of the tag into an empty QVariant; one that is not in place is shared, as by Qt.
inline void copy(const QVariant &from, NTypes::eTypes_t tag, QVariant &to)
{
    if (holds(from, formOf(tag))) {
        to.data_ptr() = from.data_ptr();
    } else if (from.data_ptr().is_shared != 0) {
        from.data_ptr().data.shared->ref.ref();
        to.data_ptr() = from.data_ptr();
    } else {
        to = from;
    }
}

// Puts a value of the tag's own type into an empty QVariant.
template<typename T>
void put(QVariant &empty, NTypes::eTypes_t tag, const T &value)
{
    static_assert(fits<T>, "held in place");
    const Form &form = formOf(tag);
    if (form.size != sizeof value) {
        empty.setValue(value);
        return;
    }
    quint64 bits = 0;
    std::memcpy(&bits, &value, sizeof value);
    put(empty, form.type, bits);
}

} // namespace HeldInPlace

#endif // HELDINPLACE_H
