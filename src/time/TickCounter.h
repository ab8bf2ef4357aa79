// SPDX-License-Identifier: MIT
#ifndef TICKCOUNTER_H
#define TICKCOUNTER_H

#include <QtGlobal>

// The present value of the finest counter that runs evenly: the time-stamp counter where the processor has
// one, else nanoseconds of the steady clock. The build chooses between the two sources beside this header.
quint64 tickCounter();

#endif // TICKCOUNTER_H
