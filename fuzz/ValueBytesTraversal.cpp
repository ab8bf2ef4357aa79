// SPDX-License-Identifier: MIT
// Any bytes as a value of any type: from the device's raw form to a value and back, as single values, as
// elements, as bits and as the arguments of the typed constructors.
#include "Traversals.h"

#include <CDataTypeParser.h>
#include <CVariant.h>

#include <Properties.h>
#include <ValueChecks.h>

#include <QHostAddress>

#include <algorithm>

namespace {

bool holdsAllBytes(NTypes::eTypes_t type, int size)
{
    const bool isSmall = type == NTypes::E_U8 || type == NTypes::E_I8;
    return type == NTypes::E_2DF32F32 || type == NTypes::E_BYTEARRAY || (isSmall && size > 1);
}

// What raw bytes, at least as many as the type needs, leave as the value.
void checkContent(const CVariant &value, const QByteArray &bytes, NTypes::eTypes_t type)
{
    const QByteArray field = bytes.left(int(CDataTypeParser::typeSize(type)));
    if (type == NTypes::E_CHAR || type == NTypes::E_UTF16CHAR)
        require(value.type() == NTypes::E_UTF16CHAR
                    && heldBy(value) == QVariant(QChar(plainOf<quint16>(field))),
                "a character is the first unit or byte");
    else if (holdsAllBytes(type, bytes.size()) || isCharField(type))
        require(heldBy(value) == QVariant(isCharField(type) ? field : bytes),
                "the bytes are held as they are");
    else
        require(value.toByteArray() == field, "raw data come back as they were");
    require(type == NTypes::E_CHAR || value.type() == type, "the tag is the type's");
}

void checkRawData(const CVariant &value, const QByteArray &bytes, NTypes::eTypes_t type)
{
    CVariant replaced(QStringLiteral("replaced"));
    replaced.setRawData(bytes.constData(), static_cast<unsigned int>(bytes.size()), type);
    require(isSame(replaced, value), "raw data replace whatever was there");
    require(CVariant::fromRawData(nullptr, 5, type).isNull(), "no data give no value");
    if (type == NTypes::E_UNKNOWN || !isCatalogued(type))
        require(isEmpty(value), "an unsupported type leaves an empty variant");
    else if (bytes.size() < int(CDataTypeParser::typeSize(type)))
        require(value.type() == type && heldBy(value).isNull(),
                "too few bytes leave a null value of the type");
    else
        checkContent(value, bytes, type);
}

template<typename String>
bool isStringOf(const CVariant &value, const QByteArray &bytes)
{
    bool decodes = false;
    const String string = String::fromByteArray(bytes, &decodes);
    return bytes.isEmpty() || !decodes ? isEmpty(value) : isSame(value, CVariant(string));
}

// Whether the value is what the raw form of one value of the type gives.
bool isValueOf(const CVariant &value, const QByteArray &bytes, NTypes::eTypes_t type)
{
    const int size = int(CDataTypeParser::typeSize(type));
    if (type == NTypes::E_UNKNOWN || !isCatalogued(type) || bytes.isEmpty())
        return isEmpty(value);
    if (type == NTypes::E_STRING32)
        return isStringOf<CString32>(value, bytes);
    if (type == NTypes::E_STRING64)
        return isStringOf<CString64>(value, bytes);
    if (type == NTypes::E_STRING128)
        return isStringOf<CString128>(value, bytes);
    if (isCharField(type))
        return isSame(value, tagged(bytes.left(size), type));
    if (type == NTypes::E_CHAR)
        return isSame(value, CVariant(bytes.at(0)));
    if (type != NTypes::E_BYTEARRAY && bytes.size() != size)
        return isEmpty(value);
    return isSame(value, rawValue(bytes, type));
}

void checkByteArray(const QByteArray &bytes, NTypes::eTypes_t type)
{
    const CVariant value = bounded(allowance(bytes.size()), "a value from a byte array takes its size",
                                   [&] { return CVariant::fromByteArray(bytes, type); });
    require(isValueOf(value, bytes, type), "a byte array of just the type's bytes gives the value");
    require(isSame(CVariant::fromByteArray(bytes, type, 1), value), "one element is the value");
    CVariant member = tagged(QVariant(), type);
    require(isSame(member.fromByteArray(bytes), value), "the variant's own type does the same");
    const bool isTag = type >= NTypes::E_UNKNOWN && type <= NTypes::E_VERSION_4;
    const CVariant fallback = isTag ? tagged(value.defaultValue(type), type) : CVariant();
    require(isSame(CVariant(bytes, type), value.isNull() ? fallback : value),
            "the constructor gives the value or the default");
    if (isNumber(value.type()) || isRecord(value.type()) || value.type() == NTypes::E_BYTEARRAY)
        require(isSame(CVariant::fromByteArray(value.toByteArray(), value.type()), value),
                "a value comes back from its bytes");
}

void checkElements(const QByteArray &bytes, NTypes::eTypes_t type, unsigned int count)
{
    const CVariant value = CVariant::fromByteArray(bytes, type, count);
    const bool fits = type == NTypes::E_2DF32F32 && quint64(bytes.size()) == 8 * quint64(count);
    if (count > 1)
        require(fits ? isSame(value, tagged(bytes, type)) : isEmpty(value),
                "only pairs of floating-point numbers have several elements, and just so many");
}

// The first bits of the bytes, but for the last few.
void checkBitArrays(const QByteArray &bytes, NTypes::eTypes_t type, int fewer)
{
    QBitArray bits = QBitArray::fromBits(bytes.constData(), bytes.size() * qsizetype(8));
    bits.resize(std::max(0, bits.size() - fewer));
    const CVariant value = CVariant::fromBitArray(bits, type);
    if (!isNumber(type) || isFloatingPoint(type)) {
        require(isEmpty(value), "only an integer is made of bits");
        return;
    }
    require(value.type() == type, "an integer of bits has the type");
    const QBitArray back = value.toBitArray();
    for (int i = 0; i < back.size(); ++i)
        require(back.testBit(i) == (i < bits.size() && bits.testBit(i)), "bit i is bit i");
    CVariant assigned;
    assigned = bits;
    require(isSame(assigned, CVariant::fromBitArray(bits, NTypes::E_U64)), "without a type the bits are 64");
}

template<typename Plain>
void checkTyped(const QByteArray &bytes, NTypes::eTypes_t type, Plain (CVariant::*reader)(bool *) const)
{
    const auto plain = plainOf<Plain>(bytes);
    const CVariant value(plain);
    require(value.type() == type && value.toByteArray() == bytesOf(plain), "a typed value has its bytes");
    require(bytesOf((value.*reader)(nullptr)) == bytesOf(plain), "a typed value is read as it was given");
    CVariant assigned(QStringLiteral("replaced"));
    assigned = plain;
    require(isSame(assigned, value), "assigning is constructing");
    require(value.compareValue(rawValue(bytesOf(plain), type)) == value.compareValue(value),
            "a typed value and one of raw data are equal");
}

void checkNumbers(const QByteArray &bytes)
{
    checkTyped(bytes, NTypes::E_U8, &CVariant::toU8);
    checkTyped(bytes, NTypes::E_I8, &CVariant::toI8);
    checkTyped(bytes, NTypes::E_U16, &CVariant::toU16);
    checkTyped(bytes, NTypes::E_I16, &CVariant::toI16);
    checkTyped(bytes, NTypes::E_U32, &CVariant::toU32);
    checkTyped(bytes, NTypes::E_I32, &CVariant::toI32);
    checkTyped(bytes, NTypes::E_F32, &CVariant::toF32);
    checkTyped(bytes, NTypes::E_U64, &CVariant::toU64);
    checkTyped(bytes, NTypes::E_I64, &CVariant::toI64);
    checkTyped(bytes, NTypes::E_F64, &CVariant::toF64);
}

void checkRecords(const QByteArray &bytes)
{
    using namespace NTypes;
    checkTyped<sVersion_t>(bytes, E_VERSION, &CVariant::toVersion);
    checkTyped<sVersion4_t>(bytes, E_VERSION_4, &CVariant::toVersion4);
    checkTyped<uIPv4HAddr_t>(bytes, E_IPV4ADDR, &CVariant::toIPv4Addr);
    checkTyped<sCommand_t>(bytes, E_COMMAND, &CVariant::toCommand);
    checkTyped<sDs402Record01_t>(bytes, E_DS402_ACC_REC, &CVariant::toDS402Record01);
    checkTyped<sDs402Array_t<short>>(bytes, E_DS402_I16_ARRAY, &CVariant::toDS402Array01);
    checkTyped<sDs402Array_t<int>>(bytes, E_DS402_I32_ARRAY, &CVariant::toDS402Array02);
    checkTyped<sDs402Array_t<unsigned int>>(bytes, E_DS402_U32_ARRAY, &CVariant::toDS402Array10);
    require(isSame(plainOf<uVersion_t>(bytes), plainOf<sVersion_t>(bytes))
                && isSame(plainOf<uVersion4_t>(bytes), plainOf<sVersion4_t>(bytes))
                && isSame(plainOf<uCommand_t>(bytes), plainOf<sCommand_t>(bytes))
                && isSame(plainOf<uDateTimeVal_t>(bytes), plainOf<sDateTime_t>(bytes)),
            "a union is taken as its record");
    require(isSame(QHostAddress(plainOf<quint32>(bytes)), plainOf<uIPv4HAddr_t>(bytes)),
            "an address is taken as its number");
}

// A date-time that the calendar knows survives the way through it.
void checkDateTime(const QByteArray &bytes)
{
    const auto record = plainOf<NTypes::sDateTime_t>(bytes);
    const CVariant value(record);
    const CDateTime dateTime = value.toDateTime(Qt::UTC);
    const QTime time(record.time.hour, record.time.minute, record.time.second, record.time.hundredths * 10);
    if (QDate::isValid(record.date.year, record.date.month, record.date.day) && time.isValid())
        require(isSame(CVariant(dateTime), value), "a valid date-time comes back through the calendar");
}

template<std::size_t N>
void checkCharField(const QByteArray &bytes, bool (CVariant::*reader)(char (&)[N]) const)
{
    char text[N] = {};
    std::copy_n(bytes.constData(), std::min(bytes.size(), int(N)), text);
    char read[N];
    require((CVariant(text).*reader)(read) && std::equal(text, text + N, read),
            "an 8-bit string keeps all bytes of its field");
}

} // namespace

void traverseValueBytes(const QByteArray &input)
{
    InputReader reader(input);
    const NTypes::eTypes_t type = takeTag(reader);
    const NTypes::eTypes_t otherType = takeTag(reader);
    const unsigned int count = reader.take<quint8>();
    const QByteArray front = reader.takeBlock();
    const QByteArray bytes = reader.takeRest();
    // Close to the first value, so that they are often nearly equal.
    const QByteArray otherBytes = front + bytes.mid(front.size());

    const CVariant value = bounded(allowance(bytes.size()), "a value from raw data takes their size",
                                   [&] { return rawValue(bytes, type); });
    checkRawData(value, bytes, type);
    checkByteArray(bytes, type);
    checkElements(bytes, type, count);
    checkBitArrays(bytes, type, front.size() % 8);
    checkNumbers(bytes);
    checkRecords(bytes);
    checkDateTime(bytes);
    checkCharField(bytes, &CVariant::toCharStr64);
    checkCharField(bytes, &CVariant::toCharStr128);
    checkCharField(bytes, &CVariant::toCharStr256);
    checkValue(value);
    checkComparison(value, rawValue(otherBytes, type));
    checkComparison(value, rawValue(otherBytes, otherType));
}
