// SPDX-License-Identifier: MIT
// Any number as a type, a unit and a kind of message, and any text as the name of a type and the text of a
// message: what is in no catalogue is unknown, and what is leads back.
#include "Traversals.h"

#include <CDataTypeParser.h>
#include <CMessage.h>
#include <CUnitParser.h>

#include <InputReader.h>
#include <Properties.h>
#include <StreamForm.h>

#include <QDebug>

namespace {

void checkType(NTypes::eTypes_t type)
{
    const bool isKnown = CDataTypeParser::mTypeDataMap.contains(type);
    const QString name = CDataTypeParser::typeToStr(type);
    require(name == CDataTypeParser::mTypeDataMap.value(type, QStringLiteral("UNKNOWN")),
            "a type without a row is unknown", name);
    require(CDataTypeParser::typeToEnum(type)
                == CDataTypeParser::mTypeEnumMap.value(type, QStringLiteral("E_UNKNOWN")),
            "an enumerator without a row is unknown", name);
    require(!isKnown || CDataTypeParser::strToType(name) == type, "a name leads back to its type", name);
    require(CDataTypeParser::typeSize(type) == CDataTypeParser::mDataSizeMap.value(type, 1),
            "an unknown size is 1", name);
    const QString min = CDataTypeParser::minTypeValue(type);
    const QString max = CDataTypeParser::maxTypeValue(type);
    require(min.isNull() == max.isNull() && (isKnown || min.isNull()), "a range has two ends or none", name);
    require(min.isNull() || min.toDouble() < max.toDouble(), "a range goes up", name);
}

void checkTypeName(const QString &text)
{
    const NTypes::eTypes_t type = bounded(1024, "looking up a name costs no memory",
                                          [&text] { return CDataTypeParser::strToType(text); });
    require(type == CDataTypeParser::mTypeDataMap.key(text, NTypes::E_UNKNOWN),
            "only a catalogue name names a type", text);
    require(CDataTypeParser::typeSize(text) == CDataTypeParser::typeSize(type),
            "a name has the size of its type", text);
}

void checkUnit(quint32 number)
{
    const auto unit = static_cast<Nj6Units::eUnit_t>(number);
    const bool isKnown = CUnitParser::mDigitsMap.contains(unit);
    require(CUnitParser::digits(unit) == CUnitParser::mDigitsMap.value(unit, 0),
            "an unknown unit has no digits");
    require(CUnitParser::unitStr(unit) == CUnitParser::initUnitMap().value(unit, QStringLiteral("unknown"))
                && CUnitParser::unitDescription(unit)
                       == CUnitParser::initDescriptionMap().value(unit, QStringLiteral("Unknown unit")),
            "a unit without a row is unknown");
    const Nj6Units::eUnit_t linear = CUnitParser::toLinear(unit);
    require(CUnitParser::toLinear(number) == linear
                && CUnitParser::hasLinear(number) == CUnitParser::hasLinear(unit),
            "number and code are looked up alike");
    require(CUnitParser::hasLinear(unit) == (linear != unit) && (isKnown || linear == unit),
            "a unit without a counterpart is its own");
    require(!CUnitParser::hasLinear(linear) && CUnitParser::mDigitsMap.contains(linear) == isKnown,
            "a linear unit is one of the catalogue, too");
}

void checkMessageMemory(quint32 kind, const QString &text)
{
    const std::size_t size = sizeof(QChar) * static_cast<std::size_t>(text.size());
    bounded(4096 + 32 * size, "a message costs memory in proportion to its text", [kind, &text] {
        CMessage message(static_cast<Nj6Global::eMessage_t>(kind), text);
        message.appendText(text);
        QString debug;
        QDebug(&debug).noquote() << message;
        return streamed(message).size();
    });
}

void checkMessage(quint32 kind, const QString &text, const QByteArray &stream)
{
    checkMessageMemory(kind, text);
    const CMessage message(static_cast<Nj6Global::eMessage_t>(kind), text);
    CMessage again;
    QByteArray rest;
    require(readFrom(streamed(message), again, QDataStream::BigEndian, QDataStream::Qt_5_15, &rest)
                    == QDataStream::Ok
                && rest.isEmpty() && again == message && message == again,
            "a message is read as it was written");
    again.appendText(text);
    require(again.text() == text + text && again.isNull() == text.isEmpty()
                && (again == message) == (message == again) && (again == message) == text.isEmpty(),
            "a text is appended as it is, and equality is symmetric");
    QString debug;
    QDebug(&debug).noquote() << message;
    require(debug.startsWith(QLatin1String("CMessage (")) && debug.contains(text),
            "the debug form has the text");

    // Qt makes room for a block of a text, and some more, before it looks whether the stream holds it.
    constexpr std::size_t textBlock = (std::size_t{4} << 20) + 4096;
    CMessage fromBytes;
    const QDataStream::Status status = bounded(textBlock + 16 * static_cast<std::size_t>(stream.size()),
                                               "a message costs memory in proportion to its stream",
                                               [&] { return readFrom(stream, fromBytes); });
    require(status != QDataStream::Ok || stream.startsWith(streamed(fromBytes)),
            "a message that was read is written as the same bytes");
}

} // namespace

void traverseCatalogueLookups(const QByteArray &input)
{
    InputReader reader(input);
    const QString text = InputReader(input).takeText();
    const auto number = reader.take<quint32>();
    for (const quint32 candidate : {number, number & 0xff, number & 0x1f, number | 0x80000000}) {
        checkType(static_cast<NTypes::eTypes_t>(candidate));
        checkUnit(candidate);
    }
    checkTypeName(text);
    checkMessage(number, text, input);
}
