// SPDX-License-Identifier: MIT
// Raw parameter bytes to a value and back.
#include <CVariant.h>

#include <CDataTypeParser.h>
#include <CStr.h>

#include "CVariantHeld.h"
#include "HeldInPlace.h"
#include "PlainBytes.h"
#include "TypeCatalogue.h"
#include "diagnostics/LogLine.h"

#include <algorithm>
#include <climits>

namespace {

// The record or number is found by its size alone; all others have rules of their own for lengths.
bool needsItsExactSize(NTypes::eTypes_t type)
{
    return visitPlain(type, [](auto) {}) || type == NTypes::E_UTF16CHAR || type == NTypes::E_2DF32F32;
}

QString typeMessage(const char *message, NTypes::eTypes_t type)
{
    return QString::fromLatin1(message).arg(type).arg(CDataTypeParser::typeToStr(type));
}

void warnConversionFailed(const QByteArray &bytes, NTypes::eTypes_t type, int line)
{
    const char *const message =
        bytes.isEmpty()
            ? "CVariant::fromByteArray() : Conversion to data type '%1 (%2)' failed, no data. Line %3."
            : "CVariant::fromByteArray() : Conversion to data type '%1 (%2)' failed. Line %3.";
    logWarning(typeMessage(message, type).arg(line));
}

void warnNotSupported(NTypes::eTypes_t type, int line)
{
    logWarning(typeMessage("CVariant::fromByteArray() : Data type %1 (%2) is not supported. Line %3.", type)
                   .arg(line));
}

CVariant severalElements(const QByteArray &bytes, NTypes::eTypes_t type, unsigned int count)
{
    const quint64 needed = quint64(count) * TypeCatalogue::sizeOf(type);
    if (static_cast<quint64>(bytes.size()) != needed) {
        warnConversionFailed(bytes, type, __LINE__);
        return {};
    }
    if (type != NTypes::E_2DF32F32) {
        warnNotSupported(type, __LINE__);
        return {};
    }
    return CVariant::fromRawData(bytes.constData(), static_cast<unsigned int>(bytes.size()), type);
}

// Bytes of a known type that is no fixed string, at least one of them; an empty result tells that they do not
// fit.
CVariant oneElement(const QByteArray &bytes, NTypes::eTypes_t type)
{
    if (needsItsExactSize(type) && bytes.size() != TypeCatalogue::sizeOf(type))
        return {};
    switch (type) {
    case NTypes::E_STRING32:
    case NTypes::E_STRING64:
    case NTypes::E_STRING128:
        return {};
    case NTypes::E_CHARSTR64:
    case NTypes::E_CHARSTR128:
    case NTypes::E_CHARSTR256:
        return CVariant().setRawData(QVariant(bytes.left(TypeCatalogue::sizeOf(type))), type);
    case NTypes::E_CHAR:
        return CVariant::fromStr(CStr::fromLatin1(bytes.constData(), bytes.size()), type);
    default:
        return CVariant::fromRawData(bytes.constData(), static_cast<unsigned int>(bytes.size()), type);
    }
}

template<typename String>
Q_ALWAYS_INLINE QByteArray fieldOf(const QVariant &value)
{
    const auto *const string = heldAt<String>(value);
    return string != nullptr ? string->byteArray() : heldAs<String>(value).byteArray();
}

// The 1, 2 or 4 to 8 bytes of a number or record as the low bits; what is above them is not defined. Two
// halves that overlap if need be, or two bytes, and zeros for the others: no branch depends on the size,
// which with mixed types would be mispredicted at every second value, for 5 ns.
inline quint64 loadedBits(const char *data, int size)
{
    constexpr int bitsPerByte = 8;
    constexpr int half = sizeof(quint32);
    static constexpr char zeros[half] = {};
    const bool isSmall = size < half;
    const char *const low = isSmall ? zeros : data;
    const char *const high = isSmall ? zeros : data + (size - half);
    const char *const small = isSmall ? data : zeros;
    const int highShift = (bitsPerByte * (size - half)) & 63;
    return loadAs<quint32>(low) | quint64(loadAs<quint32>(high)) << highShift | loadAs<quint8>(small)
           | quint64(loadAs<quint8>(small + int(size == 2))) << bitsPerByte;
}

// Bytes that are not the plain ones of their type. Not inlined: it would cost the short way its registers.
Q_NEVER_INLINE CVariant elements(const QByteArray &bytes, NTypes::eTypes_t type, unsigned int count)
{
    if (count > 1)
        return severalElements(bytes, type, count);
    if (type == NTypes::E_UNKNOWN)
        return {};
    if (!TypeCatalogue::contains(type)) {
        warnNotSupported(type, __LINE__);
        return {};
    }
    CVariant result = bytes.isEmpty() ? CVariant() : oneElement(bytes, type);
    if (result.type() == NTypes::E_UNKNOWN)
        warnConversionFailed(bytes, type, __LINE__);
    return result;
}

} // namespace

// Exactly the bytes of a number or record that is held in place, for an empty variant. All of them are the
// same work, told by a table.
Q_ALWAYS_INLINE bool CVariant::takeRaw(const char *data, int size, NTypes::eTypes_t type)
{
    const HeldInPlace::Form &form = HeldInPlace::formOf(type);
    if (size != form.size || size == 0)
        return false;
    const quint64 bits = HeldInPlace::extended(loadedBits(data, size), form);
    HeldInPlace::put(mValue, form.widenedType, bits);
    mType = type;
    return true;
}

// The bytes of a fixed string, for an empty variant, and whether they decode; if not, the caller replaces
// what is held. Not inlined, as above.
// NOLINTNEXTLINE(readability-convert-member-functions-to-static): what is emplaced is this one's
Q_NEVER_INLINE bool CVariant::takeFixedString(const QByteArray &bytes, NTypes::eTypes_t type)
{
    bool decodes = false;
    if (!bytes.isEmpty()) {
        visitFixedString(type, [&](auto held) {
            using String = typename decltype(held)::Type;
            emplace<String>([&] { return String::fromByteArray(bytes, &decodes); }, type);
        });
    }
    return decodes;
}

CVariant &CVariant::setRawData(const char *data, unsigned int size, NTypes::eTypes_t type)
{
    clear();
    if (data != nullptr && size <= sizeof(quint64) && takeRaw(data, static_cast<int>(size), type))
        return *this;
    if (type == NTypes::E_UNKNOWN || !TypeCatalogue::contains(type)) {
        logWarning(
            QStringLiteral("CVariant::setRawData() : NTypes::ETypes %1 is not supported in this method.")
                .arg(type));
        return *this;
    }
    mType = type;
    if (data == nullptr || size > static_cast<unsigned int>(INT_MAX) || size < typeSize())
        return *this;

    const auto allBytes = [&] { return QByteArray(data, static_cast<int>(size)); };
    const auto takePlain = [&](auto held) {
        mValue = heldWidened(loadAs<typename decltype(held)::Type>(data));
    };
    switch (type) {
    case NTypes::E_U8:
    case NTypes::E_I8:
        if (size > 1) {
            mValue = allBytes();
            return *this;
        }
        break;
    case NTypes::E_UTF16CHAR:
        return *this = QChar(loadAs<quint16>(data));
    case NTypes::E_CHAR:
        // One character of either width is shown alike: the tag becomes E_UTF16CHAR.
        return *this = QChar(ushort(loadAs<quint8>(data)));
    case NTypes::E_2DF32F32:
    case NTypes::E_BYTEARRAY:
        mValue = allBytes();
        return *this;
    default:
        break;
    }
    if (visitPlain(type, takePlain))
        return *this;
    if (isCharField(type)) {
        mValue = QByteArray(data, typeSize());
        return *this;
    }
    visitFixedString(type, [&](auto held) {
        using String = typename decltype(held)::Type;
        mValue.setValue(String(QByteArray::fromRawData(data, String::byteCount)));
    });
    return *this;
}

CVariant &CVariant::setRawData(const QVariant &value, NTypes::eTypes_t type)
{
    mValue = value;
    mType = type;
    return *this;
}

CVariant CVariant::fromRawData(const char *data, unsigned int size, NTypes::eTypes_t type)
{
    CVariant result;
    result.setRawData(data, size, type);
    return result;
}

// The bytes of what is not held in place.
QByteArray CVariant::otherBytes() const
{
    switch (mType) {
    case NTypes::E_STRING32:
        return fieldOf<CString32>(mValue);
    case NTypes::E_STRING64:
        return fieldOf<CString64>(mValue);
    case NTypes::E_STRING128:
        return fieldOf<CString128>(mValue);
    case NTypes::E_CHARSTR64:
    case NTypes::E_CHARSTR128:
    case NTypes::E_CHARSTR256:
    case NTypes::E_CHAR:
        return mValue.toString().toLatin1() + '\0';
    default:
        break;
    }
    QByteArray bytes;
    const auto takeBytes = [&](auto held) { bytes = bytesOf(heldAs<typename decltype(held)::Type>(mValue)); };
    return visitPlain(mType, takeBytes) ? bytes : mValue.toByteArray();
}

QByteArray CVariant::toByteArray() const
{
    const HeldInPlace::Form &form = HeldInPlace::formOf(mType);
    return HeldInPlace::holds(mValue, form) ? QByteArray(HeldInPlace::bytesIn(mValue), form.size)
                                            : otherBytes();
}

CVariant CVariant::fromByteArray(const QByteArray &bytes, NTypes::eTypes_t type, unsigned int count)
{
    CVariant result;
    if (count <= 1 && result.takeRaw(bytes.constData(), bytes.size(), type))
        return result;
    if (count > 1 || !result.takeFixedString(bytes, type))
        result = elements(bytes, type, count);
    return result;
}

CVariant CVariant::fromByteArray(const QByteArray &bytes, NTypes::eTypes_t type)
{
    return fromByteArray(bytes, type, 1);
}

CVariant &CVariant::fromByteArray(const QByteArray &bytes)
{
    return *this = fromByteArray(bytes, mType, 1);
}

CVariant::CVariant(const QByteArray &bytes, NTypes::eTypes_t type, unsigned int count)
{
    if (type >= NTypes::E_UNKNOWN && type <= NTypes::E_VERSION_4)
        takeParsed(fromByteArray(bytes, type, count), type);
}
