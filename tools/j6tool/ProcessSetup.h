// SPDX-License-Identifier: MIT
#ifndef J6TOOL_PROCESSSETUP_H
#define J6TOOL_PROCESSSETUP_H

namespace j6tool {

/*
 * What must hold before anything else runs, the platform's way:
 * - The time zone is UTC. The date-times of parameters have none; in a zone whose clock skips an hour, one
 *   that lies in that hour would not exist.
 * - Writing to a closed pipe is an error that the program sees, not its end.
 * - No file that is opened later gets the number of a standard stream that the caller has closed.
 * - The standard streams carry the bytes that are read and written.
 * - Warnings go to the standard error, also where nobody sees it.
 */
void prepareProcess();

} // namespace j6tool

#endif // J6TOOL_PROCESSSETUP_H
