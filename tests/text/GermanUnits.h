// SPDX-License-Identifier: MIT
#ifndef GERMANUNITS_H
#define GERMANUNITS_H

#include <CUnitParser.h>

#include <array>

// What a German engineer reads of every unit. The text of a unit stands in brackets behind its quantity; none
// stands there for units that are shown without text.
struct GermanUnit
{
    Nj6Units::eUnit_t unit;
    const char *quantity;
    const char *text;
};

constexpr std::array<GermanUnit, 72> germanUnits = {{
    {Nj6Units::E_UNIT_NONE, "Ohne Einheit", ""},
    {Nj6Units::E_UNIT_UNKNOWN, "Unbekannte Einheit", "unbekannt"},
    {Nj6Units::E_UNIT_COUNT, "Anzahl", ""},
    {Nj6Units::E_UNIT_TIME_MS, "Zeit", "ms"},
    {Nj6Units::E_UNIT_TIME_S, "Zeit", "s"},
    {Nj6Units::E_UNIT_TIME_MIN, "Zeit", "min"},
    {Nj6Units::E_UNIT_TIME_US, "Zeit", "µs"},
    {Nj6Units::E_UNIT_TIME_NS, "Zeit", "ns"},
    {Nj6Units::E_UNIT_TIME_100US, "Zeit", "100 µs"},
    {Nj6Units::E_UNIT_CURRENT_A, "Strom", "A"},
    {Nj6Units::E_UNIT_CURRENT_MA, "Strom", "mA"},
    {Nj6Units::E_UNIT_CURRENT_0_1A, "Strom", "0,1 A"},
    {Nj6Units::E_UNIT_VOLTAGE_V, "Spannung", "V"},
    {Nj6Units::E_UNIT_VOLTAGE_MV, "Spannung", "mV"},
    {Nj6Units::E_UNIT_VOLTAGE_0_1V, "Spannung", "0,1 V"},
    {Nj6Units::E_UNIT_SPEED_RPM, "Drehzahl", "1/min"},
    {Nj6Units::E_UNIT_SPEED_HZ, "Drehzahl", "Hz"},
    {Nj6Units::E_UNIT_SPEED_MM_PER_S, "Geschwindigkeit", "mm/s"},
    {Nj6Units::E_UNIT_SPEED_INC_PER_S, "Geschwindigkeit", "Ink/s"},
    {Nj6Units::E_UNIT_POWER_W, "Leistung", "W"},
    {Nj6Units::E_UNIT_POWER_KW, "Leistung", "kW"},
    {Nj6Units::E_UNIT_APPARENT_POWER_VA, "Scheinleistung", "VA"},
    {Nj6Units::E_UNIT_APPARENT_POWER_KVA, "Scheinleistung", "kVA"},
    {Nj6Units::E_UNIT_ENERGY_WS, "Elektrische Arbeit", "Ws"},
    {Nj6Units::E_UNIT_POWER_0_1KW, "Leistung", "0,1 kW"},
    {Nj6Units::E_UNIT_FREQ_HZ, "Frequenz", "Hz"},
    {Nj6Units::E_UNIT_FREQ_KHZ, "Frequenz", "kHz"},
    {Nj6Units::E_UNIT_FREQ_MHZ, "Frequenz", "MHz"},
    {Nj6Units::E_UNIT_FREQ_0_1HZ, "Frequenz", "0,1 Hz"},
    {Nj6Units::E_UNIT_POS_UM, "Position", "µm"},
    {Nj6Units::E_UNIT_POS_MM, "Position", "mm"},
    {Nj6Units::E_UNIT_POS_REV, "Position", "Umdrehungen"},
    {Nj6Units::E_UNIT_POS_COUNTS, "Position", "Inkremente"},
    {Nj6Units::E_UNIT_TEMP_DEGREE, "Temperatur", "Grad"},
    {Nj6Units::E_UNIT_INDUCTANCE_MH, "Induktivität", "mH"},
    {Nj6Units::E_UNIT_CAPACITY_UF, "Kapazität", "µF"},
    {Nj6Units::E_UNIT_RESISTOR_OHM, "Widerstand", "Ohm"},
    {Nj6Units::E_UNIT_TORQUE_NM, "Drehmoment", "Nm"},
    {Nj6Units::E_UNIT_ACCEL_1S2, "Beschleunigung", "1/s²"},
    {Nj6Units::E_UNIT_AMP_V_PER_A, "Verstärkung", "V/A"},
    {Nj6Units::E_UNIT_AMP_MNM_PER_RPM, "Verstärkung", "mNm/(1/min)"},
    {Nj6Units::E_UNIT_ANGLE_DEGREE, "Winkel", "°"},
    {Nj6Units::E_UNIT_TORQUE_CONST_NM_PER_A, "Drehmomentkonstante", "Nm/A"},
    {Nj6Units::E_UNIT_INERTIA_KG_CM2, "Massenträgheitsmoment", "kg·cm²"},
    {Nj6Units::E_UNIT_VOLTAGE_CONST_V_KRPM, "Spannungskonstante", "V/(1000/min)"},
    {Nj6Units::E_UNIT_TORQUE_MNM, "Drehmoment", "mNm"},
    {Nj6Units::E_UNIT_ACCEL_MMS2, "Beschleunigung", "mm/s²"},
    {Nj6Units::E_UNIT_MASS_KG, "Masse", "kg"},
    {Nj6Units::E_UNIT_FORCE_N_PER_A, "Kraftkonstante", "N/A"},
    {Nj6Units::E_UNIT_FORCE_N, "Kraft", "N"},
    {Nj6Units::E_UNIT_VOLTAGE_CONST_V_PER_M_PER_S, "Spannungskonstante", "V/(m/s)"},
    {Nj6Units::E_UNIT_AMP_MN_PER_MM_PER_S, "Verstärkung", "mN/(mm/s)"},
    {Nj6Units::E_UNIT_FORCE_MN, "Kraft", "mN"},
    {Nj6Units::E_UNIT_PERCENT, "Prozent", "%"},
    {Nj6Units::E_UNIT_PERMILL, "Promille", "‰"},
    {Nj6Units::E_UNIT_PERCENT_S, "Prozent pro Sekunde", "%/s"},
    {Nj6Units::E_UNIT_PERMILL_S, "Promille pro Sekunde", "‰/s"},
    {Nj6Units::E_UNIT_ACCEL_INC_S2, "Beschleunigung", "Ink/s²"},
    {Nj6Units::E_UNIT_TEMP_0_1DEGREE, "Temperatur", "0,1 Grad"},
    {Nj6Units::E_UNIT_AMP_HZ_PER_A, "Verstärkung", "Hz/A"},
    {Nj6Units::E_UNIT_DEGREE_PER_KHZ, "Grad pro kHz", "°/kHz"},
    {Nj6Units::E_UNIT_DS402_RECORD_01, "DS402-Record Typ 01", ""},
    {Nj6Units::E_UNIT_DS402_I16_FACTOR_ARRAY_01, "DS402-I16-Array Typ 01: Faktoren", ""},
    {Nj6Units::E_UNIT_DS402_I32_FACTOR_ARRAY_02, "DS402-I32-Array Typ 02: Faktoren", ""},
    {Nj6Units::E_UNIT_DS402_I32_POS_LIMIT_ARRAY_03, "DS402-I32-Array Typ 03: Positionsgrenzen", ""},
    {Nj6Units::E_UNIT_DS402_U32_POS_ENCODER_ARRAY_04, "DS402-U32-Array Typ 04: Lagegeber", ""},
    {Nj6Units::E_UNIT_DS402_U32_VEL_ENCODER_ARRAY_05, "DS402-U32-Array Typ 05: Geschwindigkeitsgeber", ""},
    {Nj6Units::E_UNIT_DS402_U32_GEAR_RATIO_ARRAY_06, "DS402-U32-Array Typ 06: Getriebeübersetzung", ""},
    {Nj6Units::E_UNIT_DS402_U32_FEED_CONST_ARRAY_07, "DS402-U32-Array Typ 07: Vorschubkonstante", ""},
    {Nj6Units::E_UNIT_DS402_U32_FACTOR_ARRAY_08, "DS402-U32-Array Typ 08: Faktoren", ""},
    {Nj6Units::E_UNIT_DS402_U32_HOMING_SPEED_ARRAY_09,
     "DS402-U32-Array Typ 09: Referenzfahrtgeschwindigkeiten", ""},
    {Nj6Units::E_UNIT_DS402_U32_DIGITAL_IO_ARRAY_10, "DS402-U32-Array Typ 10: Digitale Ein-/Ausgänge", ""},
}};

#endif // GERMANUNITS_H
