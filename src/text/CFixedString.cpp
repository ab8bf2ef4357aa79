// SPDX-License-Identifier: MIT
#include <CFixedString.h>

#include <CString128.h>
#include <CString32.h>
#include <CString64.h>

#include "StreamBlocks.h"
#include "Utf16Check.h"
#include "Utf16Units.h"
#include "types/HeldValue.h"
#include "types/MetaTypeRegistration.h"

#include <QDebugStateSaver>
#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

// The variant's text if it holds a fixed string of just this class.
template<typename String>
bool takeText(const QVariant &variant, QString &text)
{
    if (variant.userType() != qMetaTypeId<String>())
        return false;
    text = variant.value<String>().str();
    return true;
}

// How the three classes differ, one row each.
template<typename String>
struct Traits;

template<>
struct Traits<CString32>
{
    static constexpr bool emptyFieldIsNullText = true;
    static constexpr bool keepsBytesThatAreNotUtf16 = true;
    static constexpr bool removesFillPairs = true;
    static bool takeShorterString(const QVariant &, QString &) { return false; }
};

template<>
struct Traits<CString64>
{
    static constexpr bool emptyFieldIsNullText = true;
    static constexpr bool keepsBytesThatAreNotUtf16 = false;
    static constexpr bool removesFillPairs = true;
    static bool takeShorterString(const QVariant &variant, QString &text)
    {
        return takeText<CString32>(variant, text);
    }
};

template<>
struct Traits<CString128>
{
    static constexpr bool emptyFieldIsNullText = false;
    static constexpr bool keepsBytesThatAreNotUtf16 = false;
    static constexpr bool removesFillPairs = false;
    static bool takeShorterString(const QVariant &variant, QString &text)
    {
        return takeText<CString64>(variant, text) || takeText<CString32>(variant, text);
    }
};

// Unused flash reads as FF; such pairs are no text.
QByteArray withoutFillPairs(QByteArray bytes)
{
    return bytes.replace(QByteArrayLiteral("\xFF\xFF"), QByteArray());
}

} // namespace

template<typename Derived, std::size_t N>
CFixedString<Derived, N>::CFixedString() : mBlock(new Block) // owned by the shared pointer
{
    static_assert(sizeof(Block) == sizeof(QSharedData) + byteCount, "the count, then the units");
}

template<typename Derived, std::size_t N>
CFixedString<Derived, N>::CFixedString(const QString &text) : CFixedString()
{
    assignText(text);
}

template<typename Derived, std::size_t N>
CFixedString<Derived, N>::CFixedString(const QByteArray &bytes) : CFixedString()
{
    assignBytes(bytes);
}

template<typename Derived, std::size_t N>
CFixedString<Derived, N>::CFixedString(const unsigned short (&units)[N]) : CFixedString()
{
    std::copy(std::begin(units), std::end(units), mBlock->units);
}

template<typename Derived, std::size_t N>
CFixedString<Derived, N>::CFixedString(const QVariant &variant) : CFixedString()
{
    assignVariant(variant);
}

template<typename Derived, std::size_t N>
Derived &CFixedString<Derived, N>::operator=(const QString &text)
{
    assignText(text);
    return self();
}

template<typename Derived, std::size_t N>
Derived &CFixedString<Derived, N>::operator=(const QByteArray &bytes)
{
    assignBytes(bytes);
    return self();
}

template<typename Derived, std::size_t N>
Derived &CFixedString<Derived, N>::operator=(const unsigned short (&units)[N])
{
    std::copy(std::begin(units), std::end(units), mBlock->units);
    return self();
}

template<typename Derived, std::size_t N>
Derived &CFixedString<Derived, N>::operator=(const QVariant &variant)
{
    assignVariant(variant);
    return self();
}

template<typename Derived, std::size_t N>
void CFixedString<Derived, N>::assignText(const QString &text)
{
    const int length = std::min(text.size(), unitCount);
    // NOLINTBEGIN(clang-analyzer-core.*): the block is never null
    unsigned short *const units = mBlock->units;
    std::copy_n(text.utf16(), length, units);
    if (length < unitCount)
        units[length] = 0;
    // NOLINTEND(clang-analyzer-core.*)
}

template<typename Derived, std::size_t N>
void CFixedString<Derived, N>::assignBytes(const QByteArray &bytes)
{
    // NOLINTNEXTLINE(clang-analyzer-core.NonNullParamChecker): the block is never null
    std::memcpy(mBlock->units, bytes.constData(),
                static_cast<std::size_t>(std::min(bytes.size(), byteCount)));
}

template<typename Derived, std::size_t N>
void CFixedString<Derived, N>::assignVariant(const QVariant &variant)
{
    QString text;
    if (variant.userType() == QMetaType::QString) {
        assignText(variant.toString());
    } else if (variant.userType() == QMetaType::QByteArray) {
        const QByteArray bytes = variant.toByteArray();
        if (bytes.size() <= byteCount && isUtf16(bytes))
            assignBytes(bytes);
    } else if (givesType<Derived>(variant)) {
        mBlock = variant.value<Derived>().mBlock;
    } else if (Traits<Derived>::takeShorterString(variant, text)) {
        assignText(text);
    }
}

// The text in place: the units before the first zero unit.
template<typename Derived, std::size_t N>
QStringView CFixedString<Derived, N>::text() const
{
    const unsigned short *const units = mBlock->units;
    return {units, Utf16Units::textLength(units, unitCount)};
}

template<typename Derived, std::size_t N>
QString CFixedString<Derived, N>::str() const
{
    const QStringView view = text();
    if (Traits<Derived>::emptyFieldIsNullText && view.isEmpty())
        return {};
    return view.toString();
}

template<typename Derived, std::size_t N>
int CFixedString<Derived, N>::compareText(const Derived &other) const
{
    return text().compare(other.text());
}

template<typename Derived, std::size_t N>
QByteArray CFixedString<Derived, N>::byteArray() const
{
    QByteArray bytes(byteCount, Qt::Uninitialized);
    std::memcpy(bytes.data(), mBlock->units, byteCount);
    return bytes;
}

template<typename Derived, std::size_t N>
bool CFixedString<Derived, N>::isNull() const
{
    return mBlock->units[0] == 0;
}

template<typename Derived, std::size_t N>
bool CFixedString<Derived, N>::isValid() const
{
    return isUtf16(reinterpret_cast<const char *>(mBlock->units), byteCount);
}

template<typename Derived, std::size_t N>
bool CFixedString<Derived, N>::isUTF16(const QByteArray &bytes)
{
    return isUtf16(bytes);
}

template<typename Derived, std::size_t N>
Derived CFixedString<Derived, N>::fromByteArray(const QByteArray &bytes, bool *ok)
{
    // One look at the bytes of nearly every field tells that they decode and have no pairs to remove.
    const bool isUsual = isBelowSurrogates(bytes.constData(), bytes.size());
    const bool decodes = isUsual || isUtf16(bytes);
    if (ok != nullptr)
        *ok = decodes;
    if (isUsual)
        return Derived(bytes);
    if (!decodes)
        return Traits<Derived>::keepsBytesThatAreNotUtf16 ? Derived(bytes) : Derived();
    return Derived(Traits<Derived>::removesFillPairs ? withoutFillPairs(bytes) : bytes);
}

// Different strings mostly differ early in the text, but equal texts of different history differ behind it.
template<typename Derived, std::size_t N>
bool CFixedString<Derived, N>::operator==(const Derived &other) const
{
    return std::equal(std::rbegin(mBlock->units), std::rend(mBlock->units), std::rbegin(other.mBlock->units));
}

template<typename Derived, std::size_t N>
bool CFixedString<Derived, N>::copyUnits(unsigned short *units) const
{
    if (units == nullptr)
        return false;
    std::copy_n(mBlock->units, unitCount, units);
    return true;
}

template<typename Derived, std::size_t N>
QDataStream &CFixedString<Derived, N>::write(QDataStream &stream) const
{
    if (!takesBlocks(stream)) {
        for (const unsigned short unit : mBlock->units)
            stream << static_cast<qint16>(unit);
        return stream;
    }
    unsigned short ordered[N];
    if (stream.byteOrder() == QDataStream::BigEndian)
        qToBigEndian<quint16>(mBlock->units, unitCount, ordered);
    else
        qToLittleEndian<quint16>(mBlock->units, unitCount, ordered);
    stream.writeRawData(reinterpret_cast<const char *>(ordered), byteCount);
    return stream;
}

template<typename Derived, std::size_t N>
QDataStream &CFixedString<Derived, N>::read(QDataStream &stream)
{
    unsigned short *const units = mBlock->units;
    if (!givesBlocks(stream)) {
        std::for_each(units, units + N, [&](unsigned short &unit) {
            qint16 value = 0;
            stream >> value;
            unit = static_cast<unsigned short>(value);
        });
        return stream;
    }
    unsigned short ordered[N];
    const int size = std::max(stream.readRawData(reinterpret_cast<char *>(ordered), byteCount), 0);
    const int count = size / int(sizeof(unsigned short));
    if (stream.byteOrder() == QDataStream::BigEndian)
        qFromBigEndian<quint16>(ordered, count, units);
    else
        qFromLittleEndian<quint16>(ordered, count, units);
    std::fill(units + count, units + N, static_cast<unsigned short>(0));
    return stream;
}

template<typename Derived, std::size_t N>
QDebug CFixedString<Derived, N>::print(QDebug debug) const
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << str();
    return debug;
}

template class CFixedString<CString32, 32>;
template class CFixedString<CString64, 64>;
template class CFixedString<CString128, 128>;

CString32::CString32() = default;
CString32::CString32(const CString32 &other) = default;
CString32::~CString32() = default;
CString32 &CString32::operator=(const CString32 &other) = default;

CString64::CString64() = default;
CString64::CString64(const CString64 &other) = default;
CString64::~CString64() = default;
CString64 &CString64::operator=(const CString64 &other) = default;

CString128::CString128() = default;
CString128::CString128(const CString128 &other) = default;
CString128::~CString128() = default;
CString128 &CString128::operator=(const CString128 &other) = default;

namespace {

bool registerFixedStringTypes()
{
    registerComparedType<CString32>();
    registerComparedType<CString64>();
    registerComparedType<CString128>();
    return true;
}

const bool registeredAtLoad = registerFixedStringTypes();

} // namespace
