// SPDX-License-Identifier: MIT
#include "HeldInPlace.h"

#include <limits>

namespace {

using HeldInPlace::Form;
using Forms = std::array<Form, NTypes::E_VERSION_4 + 1>;

constexpr int bitsPerByte = 8;

constexpr Form number(int type, int widenedType, int size, bool isSigned)
{
    return {type, widenedType, static_cast<quint8>(size),
            static_cast<quint8>(bitsPerByte * (int(sizeof(quint64)) - size)), isSigned};
}

constexpr Forms numberForms()
{
    Forms all{};
    for (Form &form : all)
        form = HeldInPlace::noForm;
    all[NTypes::E_U8] = number(QMetaType::UChar, QMetaType::Int, 1, false);
    all[NTypes::E_I8] = number(QMetaType::SChar, QMetaType::Int, 1, true);
    all[NTypes::E_U16] = number(QMetaType::UShort, QMetaType::Int, 2, false);
    all[NTypes::E_I16] = number(QMetaType::Short, QMetaType::Int, 2, true);
    all[NTypes::E_U32] = number(QMetaType::UInt, QMetaType::UInt, 4, false);
    all[NTypes::E_I32] = number(QMetaType::Int, QMetaType::Int, 4, true);
    all[NTypes::E_F32] = number(QMetaType::Float, QMetaType::Float, 4, false);
    all[NTypes::E_U64] = number(QMetaType::ULongLong, QMetaType::ULongLong, 8, false);
    all[NTypes::E_I64] = number(QMetaType::LongLong, QMetaType::LongLong, 8, true);
    all[NTypes::E_F64] = number(QMetaType::Double, QMetaType::Double, 8, false);
    return all;
}

Forms allForms = numberForms();

// The types of the records, counted from QMetaType::User; they are among the first that a program registers.
quint64 recordTypes = 0;

template<typename Record>
void addRecord(NTypes::eTypes_t tag)
{
    const int type = qMetaTypeId<Record>();
    const int position = type - QMetaType::User;
    if (position >= std::numeric_limits<quint64>::digits)
        return; // Qt's way serves it
    allForms[static_cast<std::size_t>(tag)] = number(type, type, sizeof(Record), false);
    recordTypes |= quint64(1) << position;
}

bool addRecords()
{
    addRecord<NTypes::sDateTime_t>(NTypes::E_DATETIME);
    addRecord<NTypes::sVersion_t>(NTypes::E_VERSION);
    addRecord<NTypes::uIPv4HAddr_t>(NTypes::E_IPV4ADDR);
    addRecord<NTypes::sCommand_t>(NTypes::E_COMMAND);
    addRecord<NTypes::sDs402Record01_t>(NTypes::E_DS402_ACC_REC);
    addRecord<NTypes::sDs402Array_t<qint16>>(NTypes::E_DS402_I16_ARRAY);
    addRecord<NTypes::sDs402Array_t<quint16>>(NTypes::E_DS402_U16_ARRAY);
    addRecord<NTypes::sVersion4_t>(NTypes::E_VERSION_4);
    return true;
}

const bool addedAtLoad = addRecords();

constexpr quint64 bitOf(int type)
{
    return quint64(1) << type;
}

// Qt's own numbers and characters.
constexpr quint64 plainTypes = bitOf(QMetaType::UnknownType) | bitOf(QMetaType::Bool) | bitOf(QMetaType::Int)
                               | bitOf(QMetaType::UInt) | bitOf(QMetaType::LongLong)
                               | bitOf(QMetaType::ULongLong) | bitOf(QMetaType::Double)
                               | bitOf(QMetaType::QChar) | bitOf(QMetaType::Long) | bitOf(QMetaType::Short)
                               | bitOf(QMetaType::Char) | bitOf(QMetaType::ULong) | bitOf(QMetaType::UShort)
                               | bitOf(QMetaType::UChar) | bitOf(QMetaType::Float) | bitOf(QMetaType::SChar);

bool isAmong(quint64 types, uint position)
{
    return position < uint(std::numeric_limits<quint64>::digits) && ((types >> position) & 1) != 0;
}

} // namespace

const Forms &HeldInPlace::forms = allForms;

bool HeldInPlace::isPlain(const QVariant &value)
{
    const Memory &memory = memoryOf(value);
    return memory.is_shared == 0
           && (isAmong(plainTypes, memory.type) || isAmong(recordTypes, memory.type - uint(QMetaType::User)));
}
