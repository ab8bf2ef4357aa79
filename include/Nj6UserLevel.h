// SPDX-License-Identifier: MIT
#ifndef NJ6USERLEVEL_H
#define NJ6USERLEVEL_H

#include <QtGlobal>

/// @brief The user levels of the tool family. A higher number may do more; numbers between the listed ones
/// occur.
namespace Nj6UserLevel {

/// @brief A user level as it is stored and exchanged.
enum eUserLevel_t : qint32 {
    E_USER = 0,           ///< "User"
    E_OEM = 1,            ///< "OEM"
    E_ADMIN = 16,         ///< "Admin"
    E_VT_TECHNICIAN = 48, ///< "V&T Technician"
    E_VT_PRODUCTION = 64, ///< "V&T Production"
    E_VT_DEVELOPER = 80   ///< "V&T Developer"
};

} // namespace Nj6UserLevel

#endif // NJ6USERLEVEL_H
