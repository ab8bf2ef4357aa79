// SPDX-License-Identifier: MIT
#ifndef J6CONSTANTS_H
#define J6CONSTANTS_H

#include <QLatin1String>

// Common constants. Each unit that includes this header has its own copies (constants have internal linkage),
// so they are usable at any time, also while other static objects are still being built.

/// @brief Names of the log levels, most severe first; the level number is the index, 0 to 7.
constexpr QLatin1String LEVEL_NAMES[8] = {
    QLatin1String("emerg", 5), QLatin1String("alert", 5), QLatin1String("crit", 4),
    QLatin1String("error", 5), QLatin1String("warn", 4),  QLatin1String("notice", 6),
    QLatin1String("info", 4),  QLatin1String("debug", 5),
};

/// @brief Format of a date for `QDate::toString`, for example 04.03.2021.
constexpr QLatin1String DATE_FORMAT("dd.MM.yyyy", 10);

/// @brief Format of a time of day for `QTime::toString`, for example 05:06:07.
constexpr QLatin1String TIME_FORMAT("HH:mm:ss", 8);

/// @brief Format of a date with time for `QDateTime::toString`, for example 2021-03-04 05:06:07.
constexpr QLatin1String DATE_TIME_FORMAT("yyyy-MM-dd HH:mm:ss", 19);

#endif // J6CONSTANTS_H
