// SPDX-License-Identifier: MIT
#ifndef TRASH_H
#define TRASH_H

#include <QString>

namespace trash {

// The longest path, in UTF-16 units, that is moved to the trash: what fits the fixed buffers of the Windows
// shell. It holds on every platform, so that a tool behaves alike everywhere.
constexpr int maxPathLength = 259;

// Moves a file, link or directory to the desktop's trash, the platform's way. The path is absolute, clean but
// for a separator at its end, and not longer than that. False: it is where it was.
bool moveToTrash(const QString &path);

} // namespace trash

#endif // TRASH_H
