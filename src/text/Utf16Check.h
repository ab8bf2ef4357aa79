// SPDX-License-Identifier: MIT
#ifndef UTF16CHECK_H
#define UTF16CHECK_H

#include <QByteArray>

// Whether Qt's text codec "UTF-16" decodes the bytes without an invalid character.
bool isUtf16(const char *bytes, int size);
bool isUtf16(const QByteArray &bytes);

// Whether all units lie below the surrogates, at D800: the quick look that answers for nearly all device
// texts. Such bytes are UTF-16 without asking the
// codec, and have no two FF bytes side by side, in one unit or across two.
bool isBelowSurrogates(const char *bytes, int size);

#endif // UTF16CHECK_H
