// SPDX-License-Identifier: MIT
#ifndef CSTRING32_H
#define CSTRING32_H

#include <CFixedString.h>

/**
 * @brief A fixed field of 32 UTF-16 units (64 bytes), the value of a parameter of type `NTypes::E_STRING32`.
 *
 * All of its behaviour, and how it differs from its two companions, is described with CFixedString.
 * Registered with Qt as the meta-type "CString32".
 */
class J6CORE_EXPORT CString32 : public CFixedString<CString32, 32>
{
public:
    using CFixedString::CFixedString;
    using CFixedString::operator=;

    CString32();
    CString32(const CString32 &other);
    virtual ~CString32();

    CString32 &operator=(const CString32 &other);

    /// @brief Copies all 32 units to `units`; returns false, copying nothing, when that is null.
    bool string32(unsigned short *units) const { return copyUnits(units); }

    /// @brief A QVariant that holds this string.
    operator QVariant() const;
};

Q_DECLARE_TYPEINFO(CString32, Q_MOVABLE_TYPE);
Q_DECLARE_METATYPE(CString32)

#endif // CSTRING32_H
