// SPDX-License-Identifier: MIT
#ifndef TEXTBUFFERCHECKS_H
#define TEXTBUFFERCHECKS_H

#include <QByteArray>

// The raw text buffers of CStr: the bytes as Latin-1 and as UTF-16, as a whole and so many of them, and back.
void checkTextBuffers(const QByteArray &bytes, int size);

#endif // TEXTBUFFERCHECKS_H
