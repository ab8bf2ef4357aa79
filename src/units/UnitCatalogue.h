// SPDX-License-Identifier: MIT
#ifndef UNITCATALOGUE_H
#define UNITCATALOGUE_H

#include <Nj6Units.h>

#include <QtGlobal>

#include <array>

// The one table of the units. Texts, digits and counterparts everywhere in the library come from these rows.
namespace UnitCatalogue {

struct Row
{
    Nj6Units::eUnit_t code;
    const char *text;
    const char *description;
    int digits;
    Nj6Units::eUnit_t linear; // the code itself where a linear motor uses the same unit
};

constexpr Row unit(Nj6Units::eUnit_t code, const char *text, const char *description, int digits)
{
    return {code, text, description, digits, code};
}

constexpr Row rotary(Nj6Units::eUnit_t code, const char *text, const char *description, int digits,
                     Nj6Units::eUnit_t linear)
{
    return {code, text, description, digits, linear};
}

// What an unknown code shows; translation keys like the texts of the rows.
constexpr const char *unknownText = QT_TRANSLATE_NOOP("CUnitParser", "unknown");
constexpr const char *unknownDescription = QT_TRANSLATE_NOOP("CUnitParser", "Unknown unit");

// clang-format off
constexpr std::array<Row, 72> rows = {{
    unit(Nj6Units::E_UNIT_NONE, "", QT_TRANSLATE_NOOP("CUnitParser", "No unit"), 3),
    unit(Nj6Units::E_UNIT_UNKNOWN, QT_TRANSLATE_NOOP("CUnitParser", "unknown"),
         QT_TRANSLATE_NOOP("CUnitParser", "Unknown unit"), 3),
    unit(Nj6Units::E_UNIT_COUNT, "", QT_TRANSLATE_NOOP("CUnitParser", "Count"), 0),
    unit(Nj6Units::E_UNIT_TIME_MS, QT_TRANSLATE_NOOP("CUnitParser", "ms"),
         QT_TRANSLATE_NOOP("CUnitParser", "Time [ms]"), 0),
    unit(Nj6Units::E_UNIT_TIME_S, QT_TRANSLATE_NOOP("CUnitParser", "s"),
         QT_TRANSLATE_NOOP("CUnitParser", "Time [s]"), 1),
    unit(Nj6Units::E_UNIT_TIME_MIN, QT_TRANSLATE_NOOP("CUnitParser", "min"),
         QT_TRANSLATE_NOOP("CUnitParser", "Time [min]"), 0),
    unit(Nj6Units::E_UNIT_TIME_US, QT_TRANSLATE_NOOP("CUnitParser", "microns"),
         QT_TRANSLATE_NOOP("CUnitParser", "Time [microns]"), 3),
    unit(Nj6Units::E_UNIT_TIME_NS, QT_TRANSLATE_NOOP("CUnitParser", "nanos"),
         QT_TRANSLATE_NOOP("CUnitParser", "Time [nanos]"), 0),
    unit(Nj6Units::E_UNIT_TIME_100US, QT_TRANSLATE_NOOP("CUnitParser", "100microns"),
         QT_TRANSLATE_NOOP("CUnitParser", "Time [100microns]"), 0),
    unit(Nj6Units::E_UNIT_CURRENT_A, QT_TRANSLATE_NOOP("CUnitParser", "A"),
         QT_TRANSLATE_NOOP("CUnitParser", "Current [A]"), 2),
    unit(Nj6Units::E_UNIT_CURRENT_MA, QT_TRANSLATE_NOOP("CUnitParser", "mA"),
         QT_TRANSLATE_NOOP("CUnitParser", "Current [mA]"), 0),
    unit(Nj6Units::E_UNIT_CURRENT_0_1A, QT_TRANSLATE_NOOP("CUnitParser", "0.1 A"),
         QT_TRANSLATE_NOOP("CUnitParser", "Current [0.1 A]"), 0),
    unit(Nj6Units::E_UNIT_VOLTAGE_V, QT_TRANSLATE_NOOP("CUnitParser", "V"),
         QT_TRANSLATE_NOOP("CUnitParser", "Voltage [V]"), 1),
    unit(Nj6Units::E_UNIT_VOLTAGE_MV, QT_TRANSLATE_NOOP("CUnitParser", "mV"),
         QT_TRANSLATE_NOOP("CUnitParser", "Voltage [mV]"), 0),
    unit(Nj6Units::E_UNIT_VOLTAGE_0_1V, QT_TRANSLATE_NOOP("CUnitParser", "0.1 V"),
         QT_TRANSLATE_NOOP("CUnitParser", "Voltage [0.1 V]"), 0),
    rotary(Nj6Units::E_UNIT_SPEED_RPM, QT_TRANSLATE_NOOP("CUnitParser", "rpm"),
           QT_TRANSLATE_NOOP("CUnitParser", "Speed [RPM]"), 3, Nj6Units::E_UNIT_SPEED_MM_PER_S),
    unit(Nj6Units::E_UNIT_SPEED_HZ, QT_TRANSLATE_NOOP("CUnitParser", "Hz"),
         QT_TRANSLATE_NOOP("CUnitParser", "Speed [Hz]"), 2),
    unit(Nj6Units::E_UNIT_SPEED_MM_PER_S, QT_TRANSLATE_NOOP("CUnitParser", "mm_per_s"),
         QT_TRANSLATE_NOOP("CUnitParser", "Speed [mm_per_s]"), 3),
    unit(Nj6Units::E_UNIT_SPEED_INC_PER_S, QT_TRANSLATE_NOOP("CUnitParser", "inc_per_s"),
         QT_TRANSLATE_NOOP("CUnitParser", "Speed [inc_per_s]"), 0),
    unit(Nj6Units::E_UNIT_POWER_W, QT_TRANSLATE_NOOP("CUnitParser", "W"),
         QT_TRANSLATE_NOOP("CUnitParser", "Power [W]"), 1),
    unit(Nj6Units::E_UNIT_POWER_KW, QT_TRANSLATE_NOOP("CUnitParser", "kW"),
         QT_TRANSLATE_NOOP("CUnitParser", "Power [kW]"), 3),
    unit(Nj6Units::E_UNIT_APPARENT_POWER_VA, QT_TRANSLATE_NOOP("CUnitParser", "VA"),
         QT_TRANSLATE_NOOP("CUnitParser", "Apparent Power [VA]"), 1),
    unit(Nj6Units::E_UNIT_APPARENT_POWER_KVA, QT_TRANSLATE_NOOP("CUnitParser", "kVA"),
         QT_TRANSLATE_NOOP("CUnitParser", "Apparent Power [kVA]"), 3),
    unit(Nj6Units::E_UNIT_ENERGY_WS, QT_TRANSLATE_NOOP("CUnitParser", "Ws"),
         QT_TRANSLATE_NOOP("CUnitParser", "Electrical Power [Ws]"), 1),
    unit(Nj6Units::E_UNIT_POWER_0_1KW, QT_TRANSLATE_NOOP("CUnitParser", "0.1 kW"),
         QT_TRANSLATE_NOOP("CUnitParser", "Power [0.1 kW]"), 0),
    unit(Nj6Units::E_UNIT_FREQ_HZ, QT_TRANSLATE_NOOP("CUnitParser", "Hz"),
         QT_TRANSLATE_NOOP("CUnitParser", "Frequency [Hz]"), 0),
    unit(Nj6Units::E_UNIT_FREQ_KHZ, QT_TRANSLATE_NOOP("CUnitParser", "kHz"),
         QT_TRANSLATE_NOOP("CUnitParser", "Frequency [kHz]"), 0),
    unit(Nj6Units::E_UNIT_FREQ_MHZ, QT_TRANSLATE_NOOP("CUnitParser", "MHz"),
         QT_TRANSLATE_NOOP("CUnitParser", "Frequency [MHz]"), 0),
    unit(Nj6Units::E_UNIT_FREQ_0_1HZ, QT_TRANSLATE_NOOP("CUnitParser", "0.1 Hz"),
         QT_TRANSLATE_NOOP("CUnitParser", "Frequency [0.1 Hz]"), 0),
    unit(Nj6Units::E_UNIT_POS_UM, QT_TRANSLATE_NOOP("CUnitParser", "micronm"),
         QT_TRANSLATE_NOOP("CUnitParser", "Position [micronm]"), 3),
    unit(Nj6Units::E_UNIT_POS_MM, QT_TRANSLATE_NOOP("CUnitParser", "mm"),
         QT_TRANSLATE_NOOP("CUnitParser", "Position [mm]"), 3),
    unit(Nj6Units::E_UNIT_POS_REV, QT_TRANSLATE_NOOP("CUnitParser", "Revolution"),
         QT_TRANSLATE_NOOP("CUnitParser", "Position [Revolution]"), 0),
    unit(Nj6Units::E_UNIT_POS_COUNTS, QT_TRANSLATE_NOOP("CUnitParser", "Counts"),
         QT_TRANSLATE_NOOP("CUnitParser", "Position [Counts]"), 0),
    unit(Nj6Units::E_UNIT_TEMP_DEGREE, QT_TRANSLATE_NOOP("CUnitParser", "degree"),
         QT_TRANSLATE_NOOP("CUnitParser", "Temperature [degree]"), 1),
    unit(Nj6Units::E_UNIT_INDUCTANCE_MH, QT_TRANSLATE_NOOP("CUnitParser", "mH"),
         QT_TRANSLATE_NOOP("CUnitParser", "Inductance [mH]"), 3),
    unit(Nj6Units::E_UNIT_CAPACITY_UF, QT_TRANSLATE_NOOP("CUnitParser", "micronF"),
         QT_TRANSLATE_NOOP("CUnitParser", "Capacity [micronF]"), 3),
    unit(Nj6Units::E_UNIT_RESISTOR_OHM, QT_TRANSLATE_NOOP("CUnitParser", "Ohm"),
         QT_TRANSLATE_NOOP("CUnitParser", "Resistor [Ohm]"), 3),
    rotary(Nj6Units::E_UNIT_TORQUE_NM, QT_TRANSLATE_NOOP("CUnitParser", "Nm"),
           QT_TRANSLATE_NOOP("CUnitParser", "Torque [Nm]"), 3, Nj6Units::E_UNIT_FORCE_N),
    rotary(Nj6Units::E_UNIT_ACCEL_1S2, QT_TRANSLATE_NOOP("CUnitParser", "1s2"),
           QT_TRANSLATE_NOOP("CUnitParser", "Acceleration [1s2]"), 3, Nj6Units::E_UNIT_ACCEL_MMS2),
    unit(Nj6Units::E_UNIT_AMP_V_PER_A, QT_TRANSLATE_NOOP("CUnitParser", "v_per_a"),
         QT_TRANSLATE_NOOP("CUnitParser", "Amplification [v_per_a]"), 3),
    rotary(Nj6Units::E_UNIT_AMP_MNM_PER_RPM, QT_TRANSLATE_NOOP("CUnitParser", "mnm_per_rpm"),
           QT_TRANSLATE_NOOP("CUnitParser", "Amplification [mnm_per_rpm]"), 3,
           Nj6Units::E_UNIT_AMP_MN_PER_MM_PER_S),
    unit(Nj6Units::E_UNIT_ANGLE_DEGREE, QT_TRANSLATE_NOOP("CUnitParser", "angle_degree"),
         QT_TRANSLATE_NOOP("CUnitParser", "Angle [angle_degree]"), 1),
    rotary(Nj6Units::E_UNIT_TORQUE_CONST_NM_PER_A, QT_TRANSLATE_NOOP("CUnitParser", "Nm/A"),
           QT_TRANSLATE_NOOP("CUnitParser", "Torque constant [Nm/A]"), 3, Nj6Units::E_UNIT_FORCE_N_PER_A),
    rotary(Nj6Units::E_UNIT_INERTIA_KG_CM2, QT_TRANSLATE_NOOP("CUnitParser", "kg_cm2"),
           QT_TRANSLATE_NOOP("CUnitParser", "Mass moment of inertia [kg_cm2]"), 3, Nj6Units::E_UNIT_MASS_KG),
    rotary(Nj6Units::E_UNIT_VOLTAGE_CONST_V_KRPM, QT_TRANSLATE_NOOP("CUnitParser", "V_krpm"),
           QT_TRANSLATE_NOOP("CUnitParser", "Voltage constant [V_krpm]"), 2,
           Nj6Units::E_UNIT_VOLTAGE_CONST_V_PER_M_PER_S),
    rotary(Nj6Units::E_UNIT_TORQUE_MNM, QT_TRANSLATE_NOOP("CUnitParser", "mNm"),
           QT_TRANSLATE_NOOP("CUnitParser", "Torque [mNm]"), 0, Nj6Units::E_UNIT_FORCE_MN),
    unit(Nj6Units::E_UNIT_ACCEL_MMS2, QT_TRANSLATE_NOOP("CUnitParser", "mms2"),
         QT_TRANSLATE_NOOP("CUnitParser", "Acceleration [mms2]"), 3),
    unit(Nj6Units::E_UNIT_MASS_KG, QT_TRANSLATE_NOOP("CUnitParser", "kg"),
         QT_TRANSLATE_NOOP("CUnitParser", "Mass [kg]"), 3),
    unit(Nj6Units::E_UNIT_FORCE_N_PER_A, QT_TRANSLATE_NOOP("CUnitParser", "n_per_a"),
         QT_TRANSLATE_NOOP("CUnitParser", "Force [n_per_a]"), 3),
    unit(Nj6Units::E_UNIT_FORCE_N, QT_TRANSLATE_NOOP("CUnitParser", "N"),
         QT_TRANSLATE_NOOP("CUnitParser", "Force [N]"), 4),
    unit(Nj6Units::E_UNIT_VOLTAGE_CONST_V_PER_M_PER_S, QT_TRANSLATE_NOOP("CUnitParser", "v_per_m_per_s"),
         QT_TRANSLATE_NOOP("CUnitParser", "Voltage constant [v_per_m_per_s]"), 2),
    unit(Nj6Units::E_UNIT_AMP_MN_PER_MM_PER_S, QT_TRANSLATE_NOOP("CUnitParser", "mn_per_mm_per_s"),
         QT_TRANSLATE_NOOP("CUnitParser", "Amplification [mn_per_mm_per_s]"), 3),
    unit(Nj6Units::E_UNIT_FORCE_MN, QT_TRANSLATE_NOOP("CUnitParser", "mN"),
         QT_TRANSLATE_NOOP("CUnitParser", "Force [mN]"), 3),
    unit(Nj6Units::E_UNIT_PERCENT, QT_TRANSLATE_NOOP("CUnitParser", "percent"),
         QT_TRANSLATE_NOOP("CUnitParser", "Percent [percent]"), 1),
    unit(Nj6Units::E_UNIT_PERMILL, QT_TRANSLATE_NOOP("CUnitParser", "permill"),
         QT_TRANSLATE_NOOP("CUnitParser", "Permill [permill]"), 0),
    unit(Nj6Units::E_UNIT_PERCENT_S, QT_TRANSLATE_NOOP("CUnitParser", "percent_s"),
         QT_TRANSLATE_NOOP("CUnitParser", "Percent per second [percent_s]"), 1),
    unit(Nj6Units::E_UNIT_PERMILL_S, QT_TRANSLATE_NOOP("CUnitParser", "permill_s"),
         QT_TRANSLATE_NOOP("CUnitParser", "Permill per second [permill_s]"), 0),
    unit(Nj6Units::E_UNIT_ACCEL_INC_S2, QT_TRANSLATE_NOOP("CUnitParser", "inc_s2"),
         QT_TRANSLATE_NOOP("CUnitParser", "Acceleration [inc_s2]"), 3),
    unit(Nj6Units::E_UNIT_TEMP_0_1DEGREE, QT_TRANSLATE_NOOP("CUnitParser", "0.1 degree"),
         QT_TRANSLATE_NOOP("CUnitParser", "Temperature [0.1 degree]"), 0),
    unit(Nj6Units::E_UNIT_AMP_HZ_PER_A, QT_TRANSLATE_NOOP("CUnitParser", "hz_per_a"),
         QT_TRANSLATE_NOOP("CUnitParser", "Amplification [hz_per_a]"), 2),
    unit(Nj6Units::E_UNIT_DEGREE_PER_KHZ, QT_TRANSLATE_NOOP("CUnitParser", "degree_per_khz"),
         QT_TRANSLATE_NOOP("CUnitParser", "Degree per kHz [degree_per_khz]"), 1),
    unit(Nj6Units::E_UNIT_DS402_RECORD_01, "", QT_TRANSLATE_NOOP("CUnitParser", "DS402 Record Type 01"), 0),
    unit(Nj6Units::E_UNIT_DS402_I16_FACTOR_ARRAY_01, "",
         QT_TRANSLATE_NOOP("CUnitParser", "DS402 I16 Factor Array Type 01"), 0),
    unit(Nj6Units::E_UNIT_DS402_I32_FACTOR_ARRAY_02, "",
         QT_TRANSLATE_NOOP("CUnitParser", "DS402 I32 Factor Array Type 02"), 0),
    unit(Nj6Units::E_UNIT_DS402_I32_POS_LIMIT_ARRAY_03, "",
         QT_TRANSLATE_NOOP("CUnitParser", "DS402 I32 Position Limit Array Type 03"), 0),
    unit(Nj6Units::E_UNIT_DS402_U32_POS_ENCODER_ARRAY_04, "",
         QT_TRANSLATE_NOOP("CUnitParser", "DS402 U32 Position Encoder Array Type 04"), 0),
    unit(Nj6Units::E_UNIT_DS402_U32_VEL_ENCODER_ARRAY_05, "",
         QT_TRANSLATE_NOOP("CUnitParser", "DS402 U32 Velocity Encoder Array Type 05"), 0),
    unit(Nj6Units::E_UNIT_DS402_U32_GEAR_RATIO_ARRAY_06, "",
         QT_TRANSLATE_NOOP("CUnitParser", "DS402 U32 Gear Ratio Array Type 06"), 0),
    unit(Nj6Units::E_UNIT_DS402_U32_FEED_CONST_ARRAY_07, "",
         QT_TRANSLATE_NOOP("CUnitParser", "DS402 U32 Feed Constant Array Type 07"), 0),
    unit(Nj6Units::E_UNIT_DS402_U32_FACTOR_ARRAY_08, "",
         QT_TRANSLATE_NOOP("CUnitParser", "DS402 U32 Factor Array Type 08"), 0),
    unit(Nj6Units::E_UNIT_DS402_U32_HOMING_SPEED_ARRAY_09, "",
         QT_TRANSLATE_NOOP("CUnitParser", "DS402 U32 Homing Speed Array Type 09"), 0),
    unit(Nj6Units::E_UNIT_DS402_U32_DIGITAL_IO_ARRAY_10, "",
         QT_TRANSLATE_NOOP("CUnitParser", "DS402 U32 Digital IO Array Type 10"), 0),
}};
// clang-format on

constexpr bool areSortedAndUnique()
{
    for (std::size_t i = 1; i < rows.size(); ++i) {
        if (rows[i - 1].code >= rows[i].code)
            return false;
    }
    return rows.front().code >= 0;
}
static_assert(areSortedAndUnique(), "ascending codes, none twice, none negative");

constexpr qint32 lastCode = rows.back().code;
static_assert(lastCode == 150, "the codes reach from 0 to 150");

// Where the row of each code stands, counted from 1; 0 for a code without a row.
constexpr auto numbersByCode()
{
    std::array<quint8, lastCode + 1> numbers{};
    for (std::size_t i = 0; i < rows.size(); ++i)
        numbers[static_cast<std::size_t>(rows[i].code)] = static_cast<quint8>(i + 1);
    return numbers;
}
constexpr auto rowNumbers = numbersByCode();

// The row of a code; null for any number that is not in the catalogue.
constexpr const Row *find(qint32 code)
{
    if (code < 0 || code > lastCode || rowNumbers[static_cast<std::size_t>(code)] == 0)
        return nullptr;
    return &rows[rowNumbers[static_cast<std::size_t>(code)] - 1u];
}

template<typename Condition>
constexpr bool everyRow(Condition holdsFor)
{
    for (const Row &row : rows) {
        if (!holdsFor(row))
            return false;
    }
    return true;
}
static_assert(everyRow([](const Row &row) { return find(row.code) == &row; }),
              "the numbers lead to the rows");

// The mapping is one step: a counterpart is a row of its own and has none itself.
static_assert(everyRow([](const Row &row) {
                  const Row *const linear = find(row.linear);
                  return linear && linear->linear == linear->code;
              }),
              "every linear code exists and is linear");

// Translation keys are compared by their bytes: ASCII is the same in every local encoding.
constexpr bool isAscii(const char *text)
{
    while (*text > 0 && *text < 0x7F)
        ++text;
    return *text == '\0';
}
static_assert(everyRow([](const Row &row) { return isAscii(row.text) && isAscii(row.description); })
                  && isAscii(unknownText) && isAscii(unknownDescription),
              "the texts are ASCII");

} // namespace UnitCatalogue

#endif // UNITCATALOGUE_H
