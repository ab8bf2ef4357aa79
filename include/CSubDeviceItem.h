// SPDX-License-Identifier: MIT
#ifndef CSUBDEVICEITEM_H
#define CSUBDEVICEITEM_H

#include <NTypes.h>
#include <j6Core_export.h>

#include <QMap>
#include <QMetaType>
#include <QString>

class QDataStream;
class QDebug;

namespace InventoryStream {
class Reader;
class Writer;
} // namespace InventoryStream

/**
 * @brief One axis or channel inside a drive controller: its number, its name, and the parameter sets that it
 * holds.
 *
 * A value of a CDeviceItem, held there by number. Copies share their texts and sets until one is changed.
 *
 * | state   | number | name                |
 * |---------|--------|---------------------|
 * | valid   | 0..254 | any                 |
 * | null    | 255    | empty               |
 * | neither | 255    | not empty           |
 *
 * A parameter set has a number, 0..63, and a display name. A set that is made available without a name gets
 * "Param set 01" for set 0 to "Param set 64" for set 63; these are plain English texts and are not
 * translated, since they are compared and stored.
 *
 * No operation reports or logs an error. A value that was read from a stream may hold what no setter would
 * accept - sets above 63, one set number twice, any active set - and every operation is defined for it, too.
 *
 * Stream form, in the stream's version and byte order; no magic and no version of its own:
 *
 * | field          | form                                                    |
 * |----------------|---------------------------------------------------------|
 * | number         | 8-bit integer                                           |
 * | name           | QString                                                 |
 * | parameter sets | QMap of 16-bit integers and QStrings                    |
 * | active set     | 16-bit integer                                          |
 * | version        | `build` as 16-bit, `minor` and `major` as 8-bit integer |
 *
 * A QMap is its count, a 32-bit integer, and then its pairs from the highest key to the lowest.
 *
 * Reentrant; a value is used by one thread at a time, copies may be shared between threads.
 *
 * @code
 * CSubDeviceItem axis(1, QStringLiteral("Spindle"));
 * axis.setAvailableParamSets(0x5);   // sets 0 and 2, "Param set 01" and "Param set 03"
 * axis.setAvailableParamSets(0x4);   // set 0 is gone, set 2 has kept its name
 * axis.setActiveParamSet(2);         // true
 * axis.setActiveParamSet(64);        // false, the active set is still 2
 * @endcode
 */
class J6CORE_EXPORT CSubDeviceItem
{
public:
    /// @brief How many parameter sets a sub-device can have; their numbers are 0 to one less than this.
    static constexpr int maxParamSetCount = 64;

    /// @brief A null sub-device: number 255, no name, no parameter sets, active set -1, version 0.0.0.
    CSubDeviceItem() = default;
    /// @brief A sub-device of this number and name, for the rest as by default.
    CSubDeviceItem(unsigned char number, const QString &name);
    CSubDeviceItem(const CSubDeviceItem &other) = default;
    virtual ~CSubDeviceItem();

    CSubDeviceItem &operator=(const CSubDeviceItem &other) = default;

    /// @brief Whether a number is set, that is, whether it is below 255.
    bool isValid() const;
    /// @brief Whether neither a number (255) nor a name is set.
    bool isNull() const;

    /// @brief The number inside the device, 0..254; 255 when none is set.
    unsigned char number() const;
    /// @brief The display name.
    QString name() const;
    /// @brief The number of the active parameter set, -1 when there is none. The set need not be available.
    short activeParamSet() const;
    /// @brief The version of the parameter layout.
    NTypes::sVersion_t paramVersion() const;

    /**
     * @brief The parameter sets as a mask: bit k modulo 32 is set for every set k. The upper 32 bits are 0.
     *
     * Sets 32 to 63 share the bits of sets 0 to 31, as the tools that read the mask expect. The mask is
     * therefore no inverse of setAvailableParamSets(); availableParamSetNames() tells which sets there are.
     */
    unsigned long long availableParamSets() const;
    /// @brief The parameter sets, by number, with their names.
    QMap<unsigned short, QString> availableParamSetNames() const;
    /// @brief The number of parameter sets.
    int availableParamSetCount() const;
    /// @brief The same as availableParamSetCount().
    int paramSetCount() const;
    /// @brief Whether there is a set of this number, of which the low 16 bits count (65537 is set 1).
    bool containsParamSet(unsigned int set) const;

    /// @brief Sets the number; 255 leaves the sub-device without one.
    void setNumber(unsigned char number);
    /// @brief Sets the display name, any text.
    void setName(const QString &name);
    /**
     * @brief Makes `set`, 0..63, the active one. Whether such a set is available is not asked.
     * @return true when `set` is now active, also when it was before (which is how -1 can succeed); false,
     * with nothing changed, for any other number
     */
    bool setActiveParamSet(short set);
    /// @brief Sets the version of the parameter layout, any version.
    void setParamVersion(const NTypes::sVersion_t &version);
    /**
     * @brief Makes set i available for every bit i of the mask that is set and removes it for every one that
     * is not, i being 0..63.
     *
     * A set that was there keeps its name, even an empty one, and a new one gets its default name. The active
     * set and sets above 63 stay as they are.
     */
    void setAvailableParamSets(unsigned long long mask);
    /**
     * @brief Names the available parameter sets. None is added.
     * @param names 64 entries of 32 UTF-16 units each, entry i for set i, each as in a CString32: a text of
     * fewer than 32 units ends with a zero unit. An empty text stands for the default name, and units of FFFF
     * are units like any other. With a null pointer nothing happens.
     */
    void setAvailableParamSetNames(unsigned short *names);
    /// @brief Makes the sub-device null, but keeps parameter sets, active set and version: it is then in
    /// general not equal to CSubDeviceItem().
    void clear();

    /// @brief Equality of all that is held: number, name, sets with their names, active set, version.
    bool operator==(const CSubDeviceItem &other) const;
    bool operator!=(const CSubDeviceItem &other) const;

    /// @brief Writes the stream form of the class comment.
    friend J6CORE_EXPORT QDataStream &operator<<(QDataStream &stream, const CSubDeviceItem &subDevice);
    /// @brief Reads what operator<<() wrote. Where the stream runs short or is corrupt, the fields are what
    /// Qt's stream operators leave (numbers 0, texts and sets empty), and its status tells.
    friend J6CORE_EXPORT QDataStream &operator>>(QDataStream &stream, CSubDeviceItem &subDevice);

private:
    friend InventoryStream::Writer &operator<<(InventoryStream::Writer &, const CSubDeviceItem &);
    friend InventoryStream::Reader &operator>>(InventoryStream::Reader &, CSubDeviceItem &);

    unsigned char mNumber = 255;
    QString mName;
    QMap<unsigned short, QString> mParamSetNames;
    short mActiveParamSet = -1;
    NTypes::sVersion_t mParamVersion = {};
};

Q_DECLARE_TYPEINFO(CSubDeviceItem, Q_MOVABLE_TYPE);
Q_DECLARE_METATYPE(CSubDeviceItem)

/// @brief Writes `"CSubDeviceItem(1, Spindle)"`, number and name, quoted as a QString is.
J6CORE_EXPORT QDebug operator<<(QDebug debug, const CSubDeviceItem &subDevice);

#endif // CSUBDEVICEITEM_H
