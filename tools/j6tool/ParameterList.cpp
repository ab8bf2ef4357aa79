// SPDX-License-Identifier: MIT
#include "ParameterList.h"

#include <utility>

namespace j6tool {

std::vector<int> ParameterList::named(const QString &name) const
{
    std::vector<int> positions;
    for (int i = 0; i < count(); ++i) {
        if (at(i).name == name)
            positions.push_back(i);
    }
    return positions;
}

void ParameterList::append(Parameter parameter)
{
    mPositions.insert(parameter.index.number(), count());
    mParameters.push_back(std::move(parameter));
}

} // namespace j6tool
