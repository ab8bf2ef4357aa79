// SPDX-License-Identifier: MIT
#ifndef CSTRING64_H
#define CSTRING64_H

#include <CFixedString.h>

/**
 * @brief A fixed field of 64 UTF-16 units (128 bytes), the value of a parameter of type `NTypes::E_STRING64`.
 *
 * All of its behaviour, and how it differs from its two companions, is described with CFixedString.
 * Registered with Qt as the meta-type "CString64".
 */
class J6CORE_EXPORT CString64 : public CFixedString<CString64, 64>
{
public:
    using CFixedString::CFixedString;
    using CFixedString::operator=;

    CString64();
    CString64(const CString64 &other);
    virtual ~CString64();

    CString64 &operator=(const CString64 &other);

    /// @brief Copies all 64 units to `units`; returns false, copying nothing, when that is null.
    bool string64(unsigned short *units) const { return copyUnits(units); }

    /// @brief A QVariant that holds this string.
    operator QVariant() const;
};

Q_DECLARE_TYPEINFO(CString64, Q_MOVABLE_TYPE);
Q_DECLARE_METATYPE(CString64)

#endif // CSTRING64_H
