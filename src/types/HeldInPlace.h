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
// This is the one place that touches QVariant's memory. Qt 5 gives access to it in its header without
// describing it; the assertions hold it to what is used here, and a test compares it with what Qt makes.
namespace HeldInPlace {

using Memory = QVariant::Private;

static_assert(QT_VERSION < QT_VERSION_CHECK(6, 0, 0), "Qt 6 holds values in another way");
static_assert(sizeof(Memory::Data) == sizeof(quint64), "a value of up to 8 bytes");
static_assert(offsetof(Memory, data) == 0 && std::is_standard_layout<Memory>::value, "that begins the memory");
static_assert(sizeof(QVariant) == sizeof(Memory), "and nothing else");

// How values of a tag are held and how many bytes of them there are; all zero for a tag whose values are no
// numbers and no records of up to 8 bytes.
struct Form
{
    int type;        // as the typed constructors hold it
    int widenedType; // as raw data is held
    quint8 size;
    quint8 unusedBits; // of 64
    bool isSigned;
};

constexpr Form noForm = {-1, -1, 0, 0, false};

// The forms of the tags 0 to 32. Those of the records are complete when the library is loaded; until then
// Qt's own way is taken.
extern const std::array<Form, NTypes::E_VERSION_4 + 1> &forms;

inline const Form &formOf(NTypes::eTypes_t tag)
{
    return static_cast<quint32>(tag) < forms.size() ? forms[static_cast<quint32>(tag)] : noForm;
}

inline const Memory &memoryOf(const QVariant &value)
{
    return value.data_ptr();
}

// Whether a value is held, and in one of the two Qt types of its tag.
inline bool holds(const QVariant &value, const Form &form)
{
    const int type = static_cast<int>(memoryOf(value).type);
    return (type == form.type || type == form.widenedType) && memoryOf(value).is_null == 0;
}

inline const char *bytesIn(const QVariant &value)
{
    return reinterpret_cast<const char *>(&memoryOf(value).data);
}

inline quint64 bitsIn(const QVariant &value)
{
    quint64 bits = 0;
    std::memcpy(&bits, bytesIn(value), sizeof bits);
    return bits;
}

// The low bits of a number, all others taken from its sign.
inline quint64 extended(quint64 bits, int unusedBits, bool isSigned)
{
    const quint64 raised = bits << unusedBits;
    return isSigned ? static_cast<quint64>(static_cast<qint64>(raised) >> unusedBits) : raised >> unusedBits;
}

// The number or record as it is held, be it of the tag's size or a widened integer.
inline quint64 bitsIn(const QVariant &value, const Form &form)
{
    constexpr int unusedByInt = 32;
    return static_cast<int>(memoryOf(value).type) == form.type
               ? extended(bitsIn(value), form.unusedBits, form.isSigned)
               : extended(bitsIn(value), unusedByInt, true);
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
    std::memcpy(&held, bytesIn(value), sizeof held);
    return held;
}

// Makes the QVariant, which holds nothing that has to be freed, hold these bits as a value of the Qt type.
inline void put(QVariant &value, int type, quint64 bits)
{
    Memory memory(static_cast<uint>(type));
    std::memcpy(&memory.data, &bits, sizeof bits);
    value.data_ptr() = memory;
}

// Whether copying the memory copies the value, and nothing has to be freed.
bool isPlain(const QVariant &value);

// Forgets a plain value, so that Qt has nothing to look up when it destroys the QVariant.
inline void forget(QVariant &value)
{
    if (memoryOf(value).type > QMetaType::QChar && isPlain(value))
        value.data_ptr() = Memory();
}

// Copies a value into a QVariant that holds nothing that has to be freed.
inline void copy(const QVariant &from, QVariant &to)
{
    if (isPlain(from))
        to.data_ptr() = memoryOf(from);
    else
        to = from;
}

// Replaces what the QVariant holds by a value of the form's type.
template<typename T>
void replace(QVariant &held, const Form &form, const T &value)
{
    if (form.size != sizeof value) {
        held.setValue(value);
        return;
    }
    if (!isPlain(held))
        held.clear();
    quint64 bits = 0;
    std::memcpy(&bits, &value, sizeof value);
    put(held, form.type, bits);
}

} // namespace HeldInPlace

#endif // HELDINPLACE_H
