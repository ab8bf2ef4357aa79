// SPDX-License-Identifier: MIT
#ifndef CUNITPARSER_H
#define CUNITPARSER_H

#include <Nj6Units.h>
#include <j6Core_export.h>

#include <QMap>
#include <QString>

/**
 * @brief The unit catalogue: texts, display digits and linear counterparts of the 72 unit codes.
 *
 * Lookups never fail; a code outside the catalogue, whatever its number, is an unknown unit. They take
 * constant time and may be called from any thread, also while the library is being loaded.
 *
 * Texts are translated at every call by QCoreApplication::translate() with the context "CUnitParser", so that
 * a change of the language shows at once; without a translation the catalogue's own text is returned. The
 * catalogue's texts are ASCII and deliberately not uniform: they are the translation keys.
 *
 * @code
 * CUnitParser::unitStr(Nj6Units::E_UNIT_TORQUE_NM);         // "Nm"
 * CUnitParser::unitDescription(Nj6Units::E_UNIT_TORQUE_NM); // "Torque [Nm]"
 * CUnitParser::digits(Nj6Units::E_UNIT_TORQUE_NM);          // 3
 * CUnitParser::toLinear(Nj6Units::E_UNIT_TORQUE_NM);        // Nj6Units::E_UNIT_FORCE_N
 * @endcode
 */
class J6CORE_EXPORT CUnitParser
{
public:
    CUnitParser() = delete;

    /// @brief Decimal digits with which a value of each unit is displayed, 72 rows. Filled at library load,
    /// read-only afterwards.
    static const QMap<Nj6Units::eUnit_t, int> mDigitsMap;

    /**
     * @brief The unit text to write after a value, translated.
     *
     * Empty for a unit that is shown without a suffix (no unit, count, the CiA 402 records and arrays); the
     * translators are then not asked. An unknown code gives the translation of "unknown", which is itself
     * looked up once more as a key (in the local 8-bit encoding) like any catalogue text.
     */
    static QString unitStr(Nj6Units::eUnit_t unit);

    /// @brief The description of the unit, for example "Time [ms]", translated. An unknown code gives the
    /// translation of "Unknown unit", looked up once more as in unitStr().
    static QString unitDescription(Nj6Units::eUnit_t unit);

    /// @brief The number of decimal digits to display, 0 to 4, as in mDigitsMap; 0 for an unknown code.
    static int digits(Nj6Units::eUnit_t unit);

    /// @brief Whether the unit is one of the eight of rotary motors that have a counterpart for linear
    /// motors.
    static bool hasLinear(Nj6Units::eUnit_t unit);
    /// @brief The same for a code that came as a plain number.
    static bool hasLinear(unsigned int unit);

    /// @brief The unit that a linear motor uses for the quantity of this rotary unit, or the code itself,
    /// known or not. Only the code is mapped, no value is converted; there is no inverse.
    static Nj6Units::eUnit_t toLinear(Nj6Units::eUnit_t unit);
    /// @brief The same for a code that came as a plain number. A number above 2^31 - 1 is returned as the
    /// negative code with the same bits.
    static Nj6Units::eUnit_t toLinear(unsigned int unit);

    /// @brief A new map of all 72 unit texts, untranslated.
    static QMap<Nj6Units::eUnit_t, QString> initUnitMap();
    /// @brief A new map of all 72 descriptions, untranslated.
    static QMap<Nj6Units::eUnit_t, QString> initDescriptionMap();
};

#endif // CUNITPARSER_H
