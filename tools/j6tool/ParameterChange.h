// SPDX-License-Identifier: MIT
#ifndef J6TOOL_PARAMETERCHANGE_H
#define J6TOOL_PARAMETERCHANGE_H

#include "ParameterList.h"

#include <QString>

namespace j6tool {

// The value of a parameter in a sentence: texts in double quotes, all others with their unit text behind.
QString describedValue(const Parameter &parameter);

struct ParameterChange
{
    QString before;
    QString after;
};

// Two states of one parameter. Texts that are equal although the bytes are not have the bytes behind them.
ParameterChange describedChange(const Parameter &before, const Parameter &after);

} // namespace j6tool

#endif // J6TOOL_PARAMETERCHANGE_H
