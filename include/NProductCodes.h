// SPDX-License-Identifier: MIT
#ifndef NPRODUCTCODES_H
#define NPRODUCTCODES_H

#include <QtGlobal>

/// @brief The codes by which the products of the tool family are known.
namespace NProductCodes {

/// @brief A product code. The setup document has one section for each, see CCompanyStrings.
enum EProductCode : qint32 {
    E_PARAMETER_EDITOR = 400,
    E_COMMISSIONING = 401,
    E_OSCILLOSCOPE = 402,
    E_FIRMWARE_UPDATE = 403,
    E_DIAGNOSIS = 404,
    E_MOTOR_EDITOR = 405,
    E_DEVICE_FINDER = 406,
    E_AXIS_TUNING = 407,
    E_LOGIC_EDITOR = 408,
    E_SAFETY_CONFIGURATION = 409,
    E_FIELDBUS_CONFIGURATION = 410,
    E_PARAMETER_BACKUP = 411,
    E_EVENT_VIEWER = 412,
    E_SPINDLE_MONITOR = 413,
    E_OBJECT_DICTIONARY_BROWSER = 414,
    E_USER_LEVEL_MANAGER = 415,
    E_PRODUCTION_TEST = 416
};

} // namespace NProductCodes

#endif // NPRODUCTCODES_H
