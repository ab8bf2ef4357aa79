// SPDX-License-Identifier: MIT
#ifndef INTERPOSITION_H
#define INTERPOSITION_H

#include "Fault.h"

namespace faults {

// The environment variable with the path of a plan that a process is to follow from its start.
inline constexpr const char *planVariable = "J6CORE_FAULT_PLAN";

// From now on this process counts and fails as the plan says; without one it does neither. A program that
// links this has the C library's file functions interposed, in all libraries that it loads.
void follow(Plan *plan);

} // namespace faults

#endif // INTERPOSITION_H
