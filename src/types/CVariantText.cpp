// SPDX-License-Identifier: MIT
// A value as text: canonical, localised, hexadecimal and for debugging.
#include <CVariant.h>

#include <CDataTypeParser.h>

#include "CVariantHeld.h"
#include "PlainBytes.h"
#include "RecordText.h"
#include "TypeCatalogue.h"
#include "text/NumberText.h"

#include <QDebugStateSaver>

#include <algorithm>

namespace {

using ::textOf; // of the records

QString textOf(float value)
{
    return textOfSignificant(static_cast<double>(value), 6);
}

QString textOf(double value)
{
    return textOfSignificant(value, 15);
}

template<typename Integer, typename = std::enable_if_t<std::is_integral<Integer>::value>>
QString textOf(Integer value)
{
    return textOfInteger(value);
}

QString textOf(const NTypes::sCommand_t &value)
{
    return textOf(value.value);
}

template<typename Record>
QString hexOfPlain(const Record &value)
{
    return hexOf(reinterpret_cast<const char *>(&value), int(sizeof value));
}

QString textOf(const NTypes::sDs402Record01_t &value)
{
    return hexOfPlain(value);
}

template<typename T>
QString textOf(const NTypes::sDs402Array_t<T> &value)
{
    return hexOfPlain(value);
}

// The two's complement bits of an integer in as many digits as it has.
template<typename Integer>
QString hexOfInteger(Integer value)
{
    using Bits = std::make_unsigned_t<Integer>;
    constexpr int width = 2 * int(sizeof value);
    return QStringLiteral("%1").arg(static_cast<qulonglong>(static_cast<Bits>(value)), width, 16,
                                    QLatin1Char('0'));
}

// A number or record that is held as its tag says.
QString textInPlace(const QVariant &value, NTypes::eTypes_t type)
{
    switch (type) {
    case NTypes::E_F32:
        return textOf(HeldInPlace::valueIn<float>(value));
    case NTypes::E_F64:
        return textOf(HeldInPlace::valueIn<double>(value));
    case NTypes::E_U64:
        return textOfInteger(HeldInPlace::bitsIn(value));
    default:
        break;
    }
    if (type > NTypes::E_F64) {
        QString text;
        visitRecord(type, [&](auto held) {
            using Type = typename decltype(held)::Type;
            if constexpr (HeldInPlace::fits<Type>)
                text = textOf(HeldInPlace::valueIn<Type>(value));
        });
        return text;
    }
    const quint64 bits = HeldInPlace::extended(HeldInPlace::bitsIn(value), HeldInPlace::formOf(type));
    return textOfInteger(static_cast<qint64>(bits));
}

// The text of a fixed string; null for a null value.
template<typename String>
QString textOfString(const QVariant &value)
{
    const auto *const string = heldAt<String>(value);
    if (string != nullptr)
        return string->str();
    return value.isNull() ? QString() : heldAs<String>(value).str();
}

} // namespace

QString CVariant::toStr() const
{
    if (HeldInPlace::holds(mValue, HeldInPlace::formOf(mType)))
        return textInPlace(mValue, mType);
    QString text;
    if (visitFixedString(mType,
                         [&](auto held) { text = textOfString<typename decltype(held)::Type>(mValue); }))
        return text;
    const bool isBytes = mType == NTypes::E_2DF32F32 || mType == NTypes::E_BYTEARRAY;
    // A copy of the array through QVariant's conversion would cost 18 ns.
    const auto *const bytes = isBytes ? heldAt<QByteArray>(mValue) : nullptr;
    if (bytes != nullptr)
        return hexOf(*bytes);
    if (mValue.isNull() || visitPlain(mType, [&](auto held) {
            text = textOf(heldAs<typename decltype(held)::Type>(mValue));
        }))
        return text;
    return isBytes ? hexOf(toByteArray()) : mValue.toString();
}

QString CVariant::toStr(Qt::DateFormat format) const
{
    return mType == NTypes::E_DATETIME ? toDateTime().toString(format) : QString();
}

QString CVariant::toStr(QLocale::FormatType format) const
{
    return mType == NTypes::E_DATETIME ? toDateTime().toString(format) : QString();
}

QString CVariant::toLocaleStr() const
{
    const bool isFloat = mType == NTypes::E_F32 || mType == NTypes::E_F64;
    return isFloat && !mValue.isNull() ? QStringLiteral("%L1").arg(toF64()) : toStr();
}

QString CVariant::toHex(const QString &prefix) const
{
    QString hex;
    const auto takeHex = [&](auto held) {
        using Type = typename decltype(held)::Type;
        if constexpr (std::is_integral<Type>::value)
            hex = hexOfInteger(heldAs<Type>(mValue));
    };
    if (visitNumber(mType, takeHex))
        return prefix + hex;
    switch (mType) {
    case NTypes::E_UTF16CHAR:
        return prefix + hexOfInteger(mValue.toChar().unicode());
    case NTypes::E_DATETIME:
        return prefix + QString::number(wordOf(heldAs<NTypes::sDateTime_t>(mValue)), 16);
    default:
        return TypeCatalogue::contains(mType) && mType != NTypes::E_UNKNOWN ? prefix + hexOf(toByteArray())
                                                                            : prefix;
    }
}

QString CVariant::toHexSeperated(int length, const QString &separator) const
{
    const QString hex = toHex(QString());
    const int end = length < 0 ? hex.size() : std::min(length, hex.size());
    QString separated;
    for (int i = 0; i < end; i += 2) {
        separated += hex.midRef(i, 2);
        if (i + 2 < end)
            separated += separator;
    }
    return separated;
}

QDebug operator<<(QDebug debug, const CVariant &value)
{
    const QDebugStateSaver saver(debug);
    debug.nospace().noquote() << QStringLiteral("CVariant(NTypes::%1, %2)")
                                     .arg(CDataTypeParser::typeToEnum(value.mType), value.toStr());
    return debug;
}
