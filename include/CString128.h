// SPDX-License-Identifier: MIT
#ifndef CSTRING128_H
#define CSTRING128_H

#include <CFixedString.h>

/**
 * @brief A fixed field of 128 UTF-16 units (256 bytes), the value of a parameter of type
 * `NTypes::E_STRING128`.
 *
 * All of its behaviour, and how it differs from its two companions, is described with CFixedString.
 * Registered with Qt as the meta-type "CString128".
 */
class J6CORE_EXPORT CString128 : public CFixedString<CString128, 128>
{
public:
    using CFixedString::CFixedString;
    using CFixedString::operator=;

    CString128();
    CString128(const CString128 &other);
    virtual ~CString128();

    CString128 &operator=(const CString128 &other);

    /// @brief Copies all 128 units to `units`; returns false, copying nothing, when that is null.
    bool string128(unsigned short *units) const { return copyUnits(units); }

    /// @brief A QVariant that holds this string.
    operator QVariant() const;
};

Q_DECLARE_TYPEINFO(CString128, Q_MOVABLE_TYPE);
Q_DECLARE_METATYPE(CString128)

#endif // CSTRING128_H
