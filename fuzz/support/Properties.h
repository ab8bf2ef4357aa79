// SPDX-License-Identifier: MIT
#ifndef PROPERTIES_H
#define PROPERTIES_H

#include <AllocationCounter.h>

#include <QString>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <type_traits>

// Thrown by require(). It leaves the traversal: a fuzzer ends with the input as its finding, a test fails.
class PropertyViolated : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// What has to hold whatever the input is. The property is a phrase for the report: "the size is the number of
// bytes".
inline void require(bool holds, const char *property)
{
    if (!holds)
        throw PropertyViolated(property);
}

// Also with what the property was violated by.
inline void require(bool holds, const char *property, const QString &culprit)
{
    if (!holds)
        throw PropertyViolated(std::string(property) + ": " + culprit.toStdString());
}

// Calls the action and gives what it gives; requires that it asked for no more memory, all its allocations
// added up, than the limit in bytes. State the limit as a function of the size of the input.
template<typename Action>
auto bounded(std::size_t limit, const char *property, const Action &action)
{
    const AllocationCounter counter;
    const auto check = [&counter, limit, property] {
        const std::size_t bytes = counter.bytes();
        require(bytes <= limit, property, QString::number(bytes));
    };
    if constexpr (std::is_void_v<decltype(action())>) {
        action();
        check();
    } else {
        auto result = action();
        check();
        return result;
    }
}

#endif // PROPERTIES_H
