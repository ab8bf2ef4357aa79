// SPDX-License-Identifier: MIT
#ifndef MATHCHECKS_H
#define MATHCHECKS_H

#include <QByteArray>

// Powers, rounding, digits and plausibility of a number.
void checkArithmetic(double value, unsigned int places);

// The checksums of bytes; of all of them, of so many, and in two parts.
void checkChecksums(const QByteArray &bytes, int count, unsigned short init);

#endif // MATHCHECKS_H
