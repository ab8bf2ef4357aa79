// SPDX-License-Identifier: MIT
#ifndef TYPECATALOGUE_H
#define TYPECATALOGUE_H

#include <NTypes.h>

#include <array>

// The one table of the value types. Names, sizes and ranges everywhere in the library come from these rows.
namespace TypeCatalogue {

// The numeric range of a type; an array type has that of one element.
enum class Range : quint8 { None, U8, I8, U16, I16, U32, I32, U64, I64, F32, F64 };

struct Row
{
    NTypes::eTypes_t type;
    const char *catalogueName;
    const char *enumeratorName;
    quint16 size;
    Range range;
};

constexpr std::array<Row, 32> rows = {{
    {NTypes::E_UNKNOWN, "UNKNOWN", "E_UNKNOWN", 1, Range::None},
    {NTypes::E_U8, "UNIT_U8", "E_U8", 1, Range::U8},
    {NTypes::E_I8, "UNIT_I8", "E_I8", 1, Range::I8},
    {NTypes::E_U16, "UNIT_U16", "E_U16", 2, Range::U16},
    {NTypes::E_I16, "UNIT_I16", "E_I16", 2, Range::I16},
    {NTypes::E_U32, "UNIT_U32", "E_U32", 4, Range::U32},
    {NTypes::E_I32, "UNIT_I32", "E_I32", 4, Range::I32},
    {NTypes::E_F32, "UNIT_F32", "E_F32", 4, Range::F32},
    {NTypes::E_U64, "UNIT_U64", "E_U64", 8, Range::U64},
    {NTypes::E_I64, "UNIT_I64", "E_I64", 8, Range::I64},
    {NTypes::E_F64, "UNIT_F64", "E_F64", 8, Range::F64},
    // 11 is not assigned.
    {NTypes::E_STRING32, "UNIT_STRING32", "E_STRING32", 64, Range::None},
    {NTypes::E_CHARSTR64, "UNIT_CHARSTR64", "E_CHARSTR64", 64, Range::None},
    {NTypes::E_STRING128, "UNIT_STRING128", "E_STRING128", 256, Range::None},
    {NTypes::E_CHARSTR256, "UNIT_CHARSTR256", "E_CHARSTR256", 256, Range::None},
    {NTypes::E_DATETIME, "UNIT_DATETIME", "E_DATETIME", 8, Range::None},
    {NTypes::E_STRING64, "UNIT_STRING64", "E_STRING64", 128, Range::None},
    {NTypes::E_CHARSTR128, "UNIT_CHARSTR128", "E_CHARSTR128", 128, Range::None},
    {NTypes::E_UTF16CHAR, "UNIT_UTF16CHAR", "E_UTF16CHAR", 2, Range::None},
    {NTypes::E_CHAR, "UNIT_CHAR", "E_CHAR", 1, Range::None},
    {NTypes::E_VERSION, "UNIT_VERSION", "E_VERSION", 4, Range::None},
    {NTypes::E_IPV4ADDR, "UNIT_IPV4ADDR", "E_IPV4ADDR", 4, Range::None},
    {NTypes::E_COMMAND, "UNIT_COMMAND", "E_COMMAND", 4, Range::None},
    {NTypes::E_2DF32F32, "UNIT_2D_F32_F32", "E_2DF32F32", 8, Range::F32},
    {NTypes::E_BYTEARRAY, "UNIT_BYTEARRAY", "E_BYTEARRAY", 1, Range::U8},
    // The misspelling is the catalogue's name, known to stored files.
    {NTypes::E_DS402_ACC_REC, "UNIT_DS402_ACCERLERATION_REC", "E_DS402_ACC_REC", 7, Range::F32},
    {NTypes::E_DS402_I16_ARRAY, "UNIT_DS402_I16_ARRAY", "E_DS402_I16_ARRAY", 6, Range::I16},
    {NTypes::E_DS402_I32_ARRAY, "UNIT_DS402_I32_ARRAY", "E_DS402_I32_ARRAY", 12, Range::I32},
    {NTypes::E_DS402_DIO_ARRAY, "UNIT_DS402_DIO_ARRAY", "E_DS402_DIO_ARRAY", 12, Range::U32},
    {NTypes::E_DS402_U16_ARRAY, "UNIT_DS402_U16_ARRAY", "E_DS402_U16_ARRAY", 6, Range::U16},
    {NTypes::E_DS402_U32_ARRAY, "UNIT_DS402_U32_ARRAY", "E_DS402_U32_ARRAY", 12, Range::U32},
    {NTypes::E_VERSION_4, "UNIT_VERSION_4", "E_VERSION_4", 8, Range::None},
}};

// The row's position: the tags are dense but for 11.
constexpr int lastTag = NTypes::E_VERSION_4;
constexpr int unassignedTag = 11;

// Whether the number is a tag of the catalogue.
constexpr bool contains(qint32 tag)
{
    return tag >= 0 && tag <= lastTag && tag != unassignedTag;
}

// The row of a tag that the catalogue contains.
constexpr std::size_t position(qint32 tag)
{
    return static_cast<std::size_t>(tag < unassignedTag ? tag : tag - 1);
}

constexpr bool everyRowStandsAtItsPosition()
{
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (!contains(rows[i].type) || position(rows[i].type) != i)
            return false;
    }
    return true;
}
static_assert(everyRowStandsAtItsPosition(), "the rows are sorted, unique and complete");

// The size in bytes of a value of the type; 1 for a number without a row.
constexpr quint16 sizeOf(qint32 tag)
{
    return contains(tag) ? rows[position(tag)].size : quint16(1);
}

} // namespace TypeCatalogue

#endif // TYPECATALOGUE_H
