// SPDX-License-Identifier: MIT
#ifndef UTF16CHECK_H
#define UTF16CHECK_H

#include <QByteArray>

// Whether Qt's text codec "UTF-16" decodes the bytes without an invalid character.
bool isUtf16(const QByteArray &bytes);

// Whether the bytes need no codec to be told as UTF-16: an even number of them and no surrogate, byte-order
// mark or FFFF unit among them.
bool isPlainUtf16(const QByteArray &bytes);

#endif // UTF16CHECK_H
