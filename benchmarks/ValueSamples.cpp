// SPDX-License-Identifier: MIT
#include "ValueSamples.h"

#include <CDataTypeParser.h>
#include <CUnitParser.h>

#include <QtEndian>

#include <cmath>
#include <cstring>
#include <random>

namespace {

using Random = std::mt19937;

constexpr int sampleCount = 1000;

int uniform(int first, int last, Random &random)
{
    return std::uniform_int_distribution<int>(first, last)(random);
}

// A number of one to seven digits, small ones as often as large ones.
qint32 magnitude(Random &random)
{
    return static_cast<qint32>(std::pow(10.0, std::uniform_real_distribution<double>(0.0, 7.0)(random)));
}

double wholeNumber(Random &random)
{
    return uniform(0, 1, random) == 0 ? magnitude(random) : -magnitude(random);
}

double decimalNumber(Random &random)
{
    switch (uniform(0, 9, random)) {
    case 0:
    case 1:
    case 2:
        return wholeNumber(random);
    case 3:
    case 4:
        return wholeNumber(random) * std::uniform_real_distribution<double>(0.0, 1.0)(random);
    default:
        return wholeNumber(random) / std::pow(10.0, uniform(1, 4, random));
    }
}

template<typename T>
QByteArray bytesOf(T value)
{
    QByteArray bytes(int(sizeof value), Qt::Uninitialized);
    qToLittleEndian(value, bytes.data());
    return bytes;
}

QByteArray floatBytes(NTypes::eTypes_t type, double number)
{
    return type == NTypes::E_F32 ? bytesOf(static_cast<float>(number)) : bytesOf(number);
}

QByteArray integerBytes(NTypes::eTypes_t type, Random &random)
{
    const bool isSigned =
        type == NTypes::E_I8 || type == NTypes::E_I16 || type == NTypes::E_I32 || type == NTypes::E_I64;
    const qint64 number = magnitude(random);
    return bytesOf(isSigned && uniform(0, 1, random) == 0 ? -number : number)
        .left(static_cast<int>(CDataTypeParser::typeSize(type)));
}

QByteArray textBytes(Random &random)
{
    QByteArray field(64, '\0');
    const QString text = QStringLiteral("Axis %1").arg(uniform(1, 100, random));
    std::memcpy(field.data(), text.utf16(), 2 * static_cast<std::size_t>(text.size()));
    return field;
}

// No hour at which clocks change: a time that does not exist has no text, and the two sides differ there.
QByteArray dateTimeBytes(Random &random)
{
    QByteArray bytes(8, '\0');
    constexpr int firstOfField[] = {1, 1, 1, 4, 1, 1};
    constexpr int lastOfField[] = {99, 59, 59, 22, 28, 12};
    for (int i = 0; i < 6; ++i)
        bytes[i] = static_cast<char>(uniform(firstOfField[i], lastOfField[i], random));
    qToLittleEndian(static_cast<quint16>(uniform(2000, 2030, random)), bytes.data() + 6);
    return bytes;
}

QByteArray randomBytes(int size, Random &random)
{
    QByteArray bytes;
    for (int i = 0; i < size; ++i)
        bytes.append(static_cast<char>(uniform(0, 255, random)));
    return bytes;
}

QByteArray versionBytes(Random &random)
{
    return bytesOf(static_cast<quint32>(uniform(1, 9, random)) << 24
                   | static_cast<quint32>(uniform(0, 20, random)) << 16
                   | static_cast<quint32>(uniform(0, 999, random)));
}

QByteArray valueBytes(NTypes::eTypes_t type, Random &random)
{
    switch (type) {
    case NTypes::E_F32:
    case NTypes::E_F64:
        return floatBytes(type, decimalNumber(random));
    case NTypes::E_STRING32:
        return textBytes(random);
    case NTypes::E_VERSION:
        return versionBytes(random);
    case NTypes::E_IPV4ADDR:
        return randomBytes(4, random);
    case NTypes::E_DATETIME:
        return dateTimeBytes(random);
    case NTypes::E_BYTEARRAY:
        return randomBytes(8, random);
    default:
        return integerBytes(type, random);
    }
}

QString shownText(const QByteArray &bytes, NTypes::eTypes_t type)
{
    return CVariant::fromByteArray(bytes, type).toStr();
}

Nj6Units::eUnit_t anyUnit(Random &random)
{
    static const QList<Nj6Units::eUnit_t> units = CUnitParser::mDigitsMap.keys();
    return units.at(uniform(0, units.size() - 1, random));
}

using BytesOfType = QByteArray (*)(NTypes::eTypes_t type, Random &random);

// `typeOf` chooses the type of each sample.
template<typename TypeOf>
ValueSamples makeSamples(TypeOf typeOf, BytesOfType bytesOfType = valueBytes)
{
    Random random(1);
    ValueSamples samples;
    for (int i = 0; i < sampleCount; ++i) {
        ValueSample sample;
        sample.type = typeOf(random);
        sample.unit = anyUnit(random);
        sample.bytes = bytesOfType(sample.type, random);
        sample.text = shownText(sample.bytes, sample.type);
        sample.editedText =
            i % 2 == 0 ? sample.text : shownText(bytesOfType(sample.type, random), sample.type);
        sample.ours = CVariant::fromByteArray(sample.bytes, sample.type);
        sample.oursEdited = CVariant::fromStr(sample.editedText, sample.type);
        sample.peer = QtPeer::fromBytes(sample.bytes, sample.type);
        sample.peerEdited = QtPeer::fromText(sample.editedText, sample.type);
        samples.push_back(sample);
    }
    return samples;
}

NTypes::eTypes_t anyNumberType(Random &random)
{
    return static_cast<NTypes::eTypes_t>(uniform(NTypes::E_U8, NTypes::E_F64, random));
}

NTypes::eTypes_t anyType(Random &random)
{
    constexpr NTypes::eTypes_t others[] = {NTypes::E_STRING32, NTypes::E_VERSION, NTypes::E_IPV4ADDR,
                                           NTypes::E_DATETIME};
    return uniform(1, 100, random) <= 6 ? others[uniform(0, 3, random)] : anyNumberType(random);
}

} // namespace

ValueSamples numberSamples()
{
    return makeSamples(anyNumberType);
}

ValueSamples mixedSamples()
{
    return makeSamples(anyType);
}

ValueSamples samplesOf(NTypes::eTypes_t type)
{
    return makeSamples([type](Random &) { return type; });
}

ValueSamples wholeNumberSamples()
{
    return makeSamples(anyNumberType, [](NTypes::eTypes_t type, Random &random) {
        const bool isFloat = type == NTypes::E_F32 || type == NTypes::E_F64;
        return isFloat ? floatBytes(type, magnitude(random) % 1000000) : integerBytes(type, random);
    });
}
