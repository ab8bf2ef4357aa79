// SPDX-License-Identifier: MIT
#include "Utf16Check.h"

#include "Utf16Units.h"

#include <QTextCodec>
#include <QtEndian>

namespace {

bool isPlainUnit(quint16 unit)
{
    constexpr quint16 byteOrderMark = 0xFEFF;
    constexpr quint16 swappedByteOrderMark = 0xFFFE;
    return !QChar::isSurrogate(unit) && unit != byteOrderMark && unit < swappedByteOrderMark;
}

// Whether the bytes need no codec to be told as UTF-16: an even number of them and no surrogate, byte-order
// mark or FFFF unit among them.
bool isPlainUtf16(const char *bytes, int size)
{
    if (size % 2 != 0)
        return false;
    for (int i = 0; i < size; i += 2) {
        if (!isPlainUnit(qFromLittleEndian<quint16>(bytes + i)))
            return false;
    }
    return true;
}

} // namespace

bool isBelowSurrogates(const char *bytes, int size)
{
    using namespace Utf16Units;
    if (size % 2 != 0)
        return false;
    int i = 0;
    for (; i + stepBytes <= size; i += stepBytes) {
        if (reachesSurrogates(load(bytes + i)))
            return false;
    }
    return !reachesSurrogates(load(bytes + i, size - i));
}

bool isUtf16(const char *bytes, int size)
{
    // Nearly all device texts are plain; the codec costs a look-up by name (180 ns), which an application may
    // override.
    if (isBelowSurrogates(bytes, size) || isPlainUtf16(bytes, size))
        return true;
    const QTextCodec *const codec = QTextCodec::codecForName("UTF-16");
    if (codec == nullptr)
        return false;
    QTextCodec::ConverterState state;
    codec->toUnicode(bytes, size, &state);
    return state.invalidChars == 0;
}

bool isUtf16(const QByteArray &bytes)
{
    return isUtf16(bytes.constData(), bytes.size());
}
