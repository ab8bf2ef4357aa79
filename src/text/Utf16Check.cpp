// SPDX-License-Identifier: MIT
#include "Utf16Check.h"

#include <QTextCodec>
#include <QtEndian>

namespace {

bool isPlainUnit(quint16 unit)
{
    constexpr quint16 byteOrderMark = 0xFEFF;
    constexpr quint16 swappedByteOrderMark = 0xFFFE;
    return !QChar::isSurrogate(unit) && unit != byteOrderMark && unit < swappedByteOrderMark;
}

} // namespace

bool isPlainUtf16(const QByteArray &bytes)
{
    if (bytes.size() % 2 != 0)
        return false;
    for (int i = 0; i < bytes.size(); i += 2) {
        if (!isPlainUnit(qFromLittleEndian<quint16>(bytes.constData() + i)))
            return false;
    }
    return true;
}

bool isUtf16(const QByteArray &bytes)
{
    // Nearly all device texts are plain; the codec costs a look-up by name, which an application may
    // override.
    if (isPlainUtf16(bytes))
        return true;
    const QTextCodec *const codec = QTextCodec::codecForName("UTF-16");
    if (codec == nullptr)
        return false;
    QTextCodec::ConverterState state;
    codec->toUnicode(bytes.constData(), bytes.size(), &state);
    return state.invalidChars == 0;
}
