// SPDX-License-Identifier: MIT
#ifndef CALENDARS_H
#define CALENDARS_H

#include <QCalendar>

// Qt 5.15 makes its table of calendars when the first date is parsed or formatted, and without a lock: of two
// threads that are the first, one takes a good date for an invalid one. A source that does either includes
// this, so that the table is made when the library is loaded.
inline const bool calendarsAreMade = QCalendar().isValid();

#endif // CALENDARS_H
