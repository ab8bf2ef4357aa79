// SPDX-License-Identifier: MIT
#ifndef CDATATYPEPARSER_H
#define CDATATYPEPARSER_H

#include <NTypes.h>
#include <j6Core_export.h>

#include <QMap>
#include <QString>

/**
 * @brief Lookup service of the type catalogue: names, byte sizes and ranges of the value types.
 *
 * All members are static; there are no instances. Lookups never fail, take constant time (strToType() walks
 * the 32 rows) and may be called from any thread.
 *
 * @code
 * CDataTypeParser::typeToStr(NTypes::E_U16);    // "UNIT_U16"
 * CDataTypeParser::strToType("UNIT_U16");       // NTypes::E_U16
 * CDataTypeParser::maxTypeValue(NTypes::E_U16); // "65535"
 * @endcode
 */
class J6CORE_EXPORT CDataTypeParser
{
public:
    CDataTypeParser() = delete;

    /// @brief Size in bytes of each type, 32 rows. Filled at library load, read-only afterwards.
    static const QMap<NTypes::eTypes_t, quint16> mDataSizeMap;
    /// @brief Catalogue name of each type ("UNIT_U8" ...), 32 rows. Filled at library load, read-only
    /// afterwards.
    static const QMap<NTypes::eTypes_t, QString> mTypeDataMap;
    /// @brief Enumerator name of each type ("E_U8" ...), 32 rows. Filled at library load, read-only
    /// afterwards.
    static const QMap<NTypes::eTypes_t, QString> mTypeEnumMap;

    /// @brief The catalogue name; "UNKNOWN" for a number without a row (11, negatives, 33 and above).
    static QString typeToStr(NTypes::eTypes_t type);

    /// @brief The enumerator name; "E_UNKNOWN" for a number without a row.
    static QString typeToEnum(NTypes::eTypes_t type);

    /// @brief The type with this catalogue name (exact, case-sensitive); E_UNKNOWN when there is none.
    /// Inverse of typeToStr(). Enumerator names are not accepted.
    static NTypes::eTypes_t strToType(const QString &name);

    /// @brief The size in bytes of a value, of one element for E_BYTEARRAY; 1 for a number without a row.
    static unsigned int typeSize(NTypes::eTypes_t type);

    /// @brief The size in bytes of the type with this catalogue name; 1 for an unknown name.
    static unsigned int typeSize(const QString &name);

    /**
     * @brief The smallest value of the type (of one element for an array type) as decimal text.
     *
     * Floating-point limits are in fixed notation with six decimals. A type without a numeric range gives a
     * null string, which means no limit.
     */
    static QString minTypeValue(NTypes::eTypes_t type);

    /// @brief The largest value of the type; otherwise as minTypeValue().
    static QString maxTypeValue(NTypes::eTypes_t type);
};

#endif // CDATATYPEPARSER_H
