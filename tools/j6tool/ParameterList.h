// SPDX-License-Identifier: MIT
#ifndef J6TOOL_PARAMETERLIST_H
#define J6TOOL_PARAMETERLIST_H

#include "ObjectIndex.h"

#include <CUnitParser.h>
#include <NTypes.h>

#include <QByteArray>
#include <QHash>
#include <QString>

#include <vector>

namespace j6tool {

// A drive parameter as a list holds it: its address, name, type and unit, and its value as the device's
// bytes, which always fit the type.
struct Parameter
{
    ObjectIndex index;
    QString name;
    NTypes::eTypes_t type = NTypes::E_UNKNOWN;
    Nj6Units::eUnit_t unit = Nj6Units::E_UNIT_NONE;
    QByteArray bytes;
    int line = 0; // where the parameter stands in its file
};

// Parameters in the order of their file. Indices are unique, names need not be.
class ParameterList
{
public:
    static constexpr int maxCount = 250000;

    int count() const { return int(mParameters.size()); }
    const Parameter &at(int position) const { return mParameters[std::size_t(position)]; }

    // The position of a parameter; -1 when there is none.
    int find(ObjectIndex index) const { return mPositions.value(index.number(), -1); }
    // The positions of all parameters of this name (exact, case-sensitive), in order.
    std::vector<int> named(const QString &name) const;

    // The index must be new.
    void append(Parameter parameter);
    void setBytes(int position, const QByteArray &bytes) { mParameters[std::size_t(position)].bytes = bytes; }

private:
    std::vector<Parameter> mParameters;
    QHash<quint32, int> mPositions;
};

} // namespace j6tool

#endif // J6TOOL_PARAMETERLIST_H
