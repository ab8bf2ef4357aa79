// SPDX-License-Identifier: MIT
#ifndef EQUALITY_H
#define EQUALITY_H

#include <Properties.h>

#include <functional>

// Requires that equality is symmetric, the opposite of !=, and holds for a value and itself. Written with
// functions: as operators, the checkers would take it for granted.
template<typename Value>
void requireEquality(const Value &a, const Value &b)
{
    const std::equal_to<Value> areEqual;
    const std::not_equal_to<Value> areDifferent;
    require(areEqual(a, b) == areEqual(b, a), "equality is symmetric");
    require(areDifferent(a, b) != areEqual(a, b), "!= is the opposite of equality");
    require(areEqual(a, a) && areEqual(b, b), "a value is equal to itself");
}

#endif // EQUALITY_H
