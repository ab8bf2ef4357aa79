// SPDX-License-Identifier: MIT
#include "HeldInPlace.h"

namespace {

using HeldInPlace::Form;
using Forms = std::array<Form, NTypes::E_VERSION_4 + 1>;

constexpr Form numberForm(int type, int widenedType, std::size_t size, bool isSigned)
{
    constexpr std::size_t bitsPerByte = 8;
    return {static_cast<quint32>(type), static_cast<quint32>(widenedType),
            isSigned ? quint64(1) << (bitsPerByte * size - 1) : 0, static_cast<quint8>(size),
            static_cast<quint8>(bitsPerByte * (sizeof(quint64) - size))};
}

template<typename Record>
Form recordForm()
{
    return numberForm(qMetaTypeId<Record>(), qMetaTypeId<Record>(), sizeof(Record), false);
}

Forms allForms()
{
    Forms all{};
    all.fill(HeldInPlace::noForm);
    all[NTypes::E_U8] = numberForm(QMetaType::UChar, QMetaType::Int, 1, false);
    all[NTypes::E_I8] = numberForm(QMetaType::SChar, QMetaType::Int, 1, true);
    all[NTypes::E_U16] = numberForm(QMetaType::UShort, QMetaType::Int, 2, false);
    all[NTypes::E_I16] = numberForm(QMetaType::Short, QMetaType::Int, 2, true);
    all[NTypes::E_U32] = numberForm(QMetaType::UInt, QMetaType::UInt, 4, false);
    all[NTypes::E_I32] = numberForm(QMetaType::Int, QMetaType::Int, 4, true);
    all[NTypes::E_F32] = numberForm(QMetaType::Float, QMetaType::Float, 4, false);
    all[NTypes::E_U64] = numberForm(QMetaType::ULongLong, QMetaType::ULongLong, 8, false);
    all[NTypes::E_I64] = numberForm(QMetaType::LongLong, QMetaType::LongLong, 8, true);
    all[NTypes::E_F64] = numberForm(QMetaType::Double, QMetaType::Double, 8, false);
    all[NTypes::E_DATETIME] = recordForm<NTypes::sDateTime_t>();
    all[NTypes::E_VERSION] = recordForm<NTypes::sVersion_t>();
    all[NTypes::E_IPV4ADDR] = recordForm<NTypes::uIPv4HAddr_t>();
    all[NTypes::E_COMMAND] = recordForm<NTypes::sCommand_t>();
    all[NTypes::E_DS402_ACC_REC] = recordForm<NTypes::sDs402Record01_t>();
    all[NTypes::E_DS402_I16_ARRAY] = recordForm<NTypes::sDs402Array_t<qint16>>();
    all[NTypes::E_DS402_U16_ARRAY] = recordForm<NTypes::sDs402Array_t<quint16>>();
    all[NTypes::E_VERSION_4] = recordForm<NTypes::sVersion4_t>();
    return all;
}

} // namespace

const Forms HeldInPlace::forms = allForms();
