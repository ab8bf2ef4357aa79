// SPDX-License-Identifier: MIT
#ifndef NJ6UNITS_H
#define NJ6UNITS_H

#include <QtGlobal>

/// @brief The physical units in which drive parameters are shown. Texts, display digits and linear
/// counterparts of the codes: CUnitParser.
namespace Nj6Units {

/**
 * @brief The unit code of a parameter, as it is stored and exchanged.
 *
 * The numbers are binding. They are grouped by tens per quantity with exceptions (0.1 degree is 111 beside
 * 80), and numbers between the listed ones have no meaning. Any 32-bit number may arrive: lookups take it as
 * unknown.
 *
 * Each comment gives the unit text in quotes, as CUnitParser::unitStr() gives it untranslated, and the
 * quantity.
 */
enum eUnit_t : qint32 {
    E_UNIT_NONE = 0,    ///< no text; a number without a unit
    E_UNIT_UNKNOWN = 1, ///< "unknown"; the unit is not known
    E_UNIT_COUNT = 2,   ///< no text; a count

    E_UNIT_TIME_MS = 10,    ///< "ms"; time in milliseconds
    E_UNIT_TIME_S = 11,     ///< "s"; time in seconds
    E_UNIT_TIME_MIN = 12,   ///< "min"; time in minutes
    E_UNIT_TIME_US = 13,    ///< "microns"; time in microseconds
    E_UNIT_TIME_NS = 14,    ///< "nanos"; time in nanoseconds
    E_UNIT_TIME_100US = 15, ///< "100microns"; time in steps of 100 microseconds

    E_UNIT_CURRENT_A = 20,    ///< "A"; current in amperes
    E_UNIT_CURRENT_MA = 21,   ///< "mA"; current in milliamperes
    E_UNIT_CURRENT_0_1A = 22, ///< "0.1 A"; current in steps of 0.1 ampere

    E_UNIT_VOLTAGE_V = 30,    ///< "V"; voltage in volts
    E_UNIT_VOLTAGE_MV = 31,   ///< "mV"; voltage in millivolts
    E_UNIT_VOLTAGE_0_1V = 32, ///< "0.1 V"; voltage in steps of 0.1 volt

    E_UNIT_SPEED_RPM = 40,       ///< "rpm"; rotary speed in revolutions per minute, linear counterpart 42
    E_UNIT_SPEED_HZ = 41,        ///< "Hz"; rotary speed in revolutions per second
    E_UNIT_SPEED_MM_PER_S = 42,  ///< "mm_per_s"; linear speed in millimetres per second
    E_UNIT_SPEED_INC_PER_S = 43, ///< "inc_per_s"; speed in increments per second

    E_UNIT_POWER_W = 50,            ///< "W"; power in watts
    E_UNIT_POWER_KW = 51,           ///< "kW"; power in kilowatts
    E_UNIT_APPARENT_POWER_VA = 52,  ///< "VA"; apparent power in volt-amperes
    E_UNIT_APPARENT_POWER_KVA = 53, ///< "kVA"; apparent power in kilovolt-amperes
    E_UNIT_ENERGY_WS = 54,          ///< "Ws"; electrical energy in watt-seconds
    E_UNIT_POWER_0_1KW = 55,        ///< "0.1 kW"; power in steps of 0.1 kilowatt

    E_UNIT_FREQ_HZ = 60,    ///< "Hz"; frequency in hertz
    E_UNIT_FREQ_KHZ = 61,   ///< "kHz"; frequency in kilohertz
    E_UNIT_FREQ_MHZ = 62,   ///< "MHz"; frequency in megahertz
    E_UNIT_FREQ_0_1HZ = 63, ///< "0.1 Hz"; frequency in steps of 0.1 hertz

    E_UNIT_POS_UM = 70,     ///< "micronm"; position in micrometres
    E_UNIT_POS_MM = 71,     ///< "mm"; position in millimetres
    E_UNIT_POS_REV = 72,    ///< "Revolution"; position in revolutions
    E_UNIT_POS_COUNTS = 73, ///< "Counts"; position in encoder counts

    E_UNIT_TEMP_DEGREE = 80,           ///< "degree"; temperature in degrees Celsius
    E_UNIT_INDUCTANCE_MH = 81,         ///< "mH"; inductance in millihenries
    E_UNIT_CAPACITY_UF = 82,           ///< "micronF"; capacitance in microfarads
    E_UNIT_RESISTOR_OHM = 83,          ///< "Ohm"; resistance in ohms
    E_UNIT_TORQUE_NM = 84,             ///< "Nm"; torque in newton-metres, linear counterpart 96
    E_UNIT_ACCEL_1S2 = 85,             ///< "1s2"; rotary acceleration in 1/s^2, linear counterpart 93
    E_UNIT_AMP_V_PER_A = 86,           ///< "v_per_a"; amplification in volts per ampere
    E_UNIT_AMP_MNM_PER_RPM = 87,       ///< "mnm_per_rpm"; rotary amplification, linear counterpart 98
    E_UNIT_ANGLE_DEGREE = 88,          ///< "angle_degree"; angle in degrees
    E_UNIT_TORQUE_CONST_NM_PER_A = 89, ///< "Nm/A"; torque constant, linear counterpart 95
    E_UNIT_INERTIA_KG_CM2 = 90,        ///< "kg_cm2"; mass moment of inertia, linear counterpart 94
    E_UNIT_VOLTAGE_CONST_V_KRPM = 91,  ///< "V_krpm"; voltage constant per 1000 rpm, linear counterpart 97
    E_UNIT_TORQUE_MNM = 92,            ///< "mNm"; torque in millinewton-metres, linear counterpart 99
    E_UNIT_ACCEL_MMS2 = 93,            ///< "mms2"; linear acceleration in mm/s^2
    E_UNIT_MASS_KG = 94,               ///< "kg"; mass in kilograms
    E_UNIT_FORCE_N_PER_A = 95,         ///< "n_per_a"; force constant in newtons per ampere
    E_UNIT_FORCE_N = 96,               ///< "N"; force in newtons
    E_UNIT_VOLTAGE_CONST_V_PER_M_PER_S = 97, ///< "v_per_m_per_s"; voltage constant per metre per second
    E_UNIT_AMP_MN_PER_MM_PER_S = 98,         ///< "mn_per_mm_per_s"; linear amplification
    E_UNIT_FORCE_MN = 99,                    ///< "mN"; force in millinewtons

    E_UNIT_PERCENT = 100,   ///< "percent"; hundredths of a whole
    E_UNIT_PERMILL = 101,   ///< "permill"; thousandths of a whole
    E_UNIT_PERCENT_S = 102, ///< "percent_s"; change in percent per second
    E_UNIT_PERMILL_S = 103, ///< "permill_s"; change in permill per second

    E_UNIT_ACCEL_INC_S2 = 110,   ///< "inc_s2"; acceleration in increments per s^2
    E_UNIT_TEMP_0_1DEGREE = 111, ///< "0.1 degree"; temperature in steps of 0.1 degree Celsius

    E_UNIT_AMP_HZ_PER_A = 120,   ///< "hz_per_a"; amplification in hertz per ampere
    E_UNIT_DEGREE_PER_KHZ = 121, ///< "degree_per_khz"; phase angle in degrees per kilohertz

    // Objects of several fields: no text, the description names the structure.
    E_UNIT_DS402_RECORD_01 = 130,              ///< no text; CiA 402 record type 01
    E_UNIT_DS402_I16_FACTOR_ARRAY_01 = 141,    ///< no text; CiA 402 array of factors, signed 16-bit
    E_UNIT_DS402_I32_FACTOR_ARRAY_02 = 142,    ///< no text; CiA 402 array of factors, signed 32-bit
    E_UNIT_DS402_I32_POS_LIMIT_ARRAY_03 = 143, ///< no text; CiA 402 array of position limits
    E_UNIT_DS402_U32_POS_ENCODER_ARRAY_04 =
        144, ///< no text; CiA 402 array of the position encoder resolution
    E_UNIT_DS402_U32_VEL_ENCODER_ARRAY_05 =
        145,                                    ///< no text; CiA 402 array of the velocity encoder resolution
    E_UNIT_DS402_U32_GEAR_RATIO_ARRAY_06 = 146, ///< no text; CiA 402 array of the gear ratio
    E_UNIT_DS402_U32_FEED_CONST_ARRAY_07 = 147, ///< no text; CiA 402 array of the feed constant
    E_UNIT_DS402_U32_FACTOR_ARRAY_08 = 148,     ///< no text; CiA 402 array of factors, unsigned 32-bit
    E_UNIT_DS402_U32_HOMING_SPEED_ARRAY_09 = 149, ///< no text; CiA 402 array of homing speeds
    E_UNIT_DS402_U32_DIGITAL_IO_ARRAY_10 = 150    ///< no text; CiA 402 array of digital inputs and outputs
};

} // namespace Nj6Units

#endif // NJ6UNITS_H
