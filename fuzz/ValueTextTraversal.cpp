// SPDX-License-Identifier: MIT
// Any text as a value of any type: what a user types, or a parameter list holds. The plain parsers of Qt tell
// what a number has to be; every other type is parsed, shown and parsed again.
#include "Traversals.h"

#include <CDataTypeParser.h>
#include <CVariant.h>

#include <PlainParsing.h>
#include <Properties.h>
#include <ValueChecks.h>

#include <cmath>

namespace {

bool isParsedAsNumber(NTypes::eTypes_t type)
{
    return isNumber(type) || type == NTypes::E_COMMAND;
}

void checkNumber(const CVariant &value, bool ok, const QString &text, NTypes::eTypes_t type)
{
    bool parsed = false;
    const CVariant plain = PlainParsing::number(text, type, parsed);
    require(isSame(value, plain), "a number is what Qt's parser makes of it");
    require(ok == parsed, "a number succeeds where Qt's parser does");
    require(ok || value.toF64() == 0.0, "what is no number is 0");
}

// The limits of an integer type in decimal; a type without limits has none.
void checkRange(const CVariant &value)
{
    if (!isNumber(value.type()) || isFloatingPoint(value.type()))
        return;
    const QString lowest = CDataTypeParser::minTypeValue(value.type());
    const QString largest = CDataTypeParser::maxTypeValue(value.type());
    if (value.type() == NTypes::E_U64)
        require(value.toStr().toULongLong() <= largest.toULongLong(), "a number is in its type's range");
    else
        require(value.toStr().toLongLong() >= lowest.toLongLong()
                    && value.toStr().toLongLong() <= largest.toLongLong(),
                "a number is in its type's range");
}

// Whether the text that a value gives is one that gives the value again, as far as it shows it.
bool hasReadableText(const CVariant &value)
{
    constexpr double largestReadable = 1.79769313486231e308; // what 15 digits show of more is too large
    const auto isShort = [](quint16 number) { return number <= 32767; };
    const auto version = value.toVersion4();
    switch (value.type()) {
    case NTypes::E_F64:
        return !std::isfinite(value.toF64()) || std::fabs(value.toF64()) <= largestReadable;
    case NTypes::E_DATETIME:
        return !value.toStr().isEmpty() && value.toDateTime(Qt::LocalTime).isValid();
    case NTypes::E_CHAR:
        return static_cast<unsigned char>(value.toChar()) < 0x80; // shown as UTF-8
    case NTypes::E_VERSION:
        return isShort(value.toVersion().build);
    case NTypes::E_VERSION_4:
        return isShort(version.first) && isShort(version.second) && isShort(version.third)
               && isShort(version.fourth);
    default:
        return !value.isNull();
    }
}

void checkStability(const CVariant &value)
{
    const QString text = value.toStr();
    const CVariant again = CVariant::fromStr(text, value.type());
    if (!hasReadableText(value))
        return;
    require(again.toStr() == text, "text, value and text again are the same", text);
    const CVariant third = CVariant::fromStr(again.toStr(), value.type());
    require(isSame(third, again), "a value that was read from its own text does not change");
}

void checkConstructors(const QString &text, NTypes::eTypes_t type, const CVariant &value)
{
    const bool isTag = type >= NTypes::E_UNKNOWN && type <= NTypes::E_VERSION_4;
    const CVariant fallback = isTag ? tagged(value.defaultValue(type), type) : CVariant();
    require(isSame(CVariant(text, type), isTag && !value.isNull() ? value : fallback),
            "the constructor gives the value or the default");
    CVariant member = tagged(QVariant(), type);
    if (isTag)
        require(isSame(member.fromStr(text), CVariant(text, type)), "the variant's own type does the same");
    const QByteArray utf8 = text.toUtf8();
    require(isSame(CVariant(utf8.constData(), type), CVariant(QString::fromUtf8(utf8.constData()), type)),
            "a text of bytes is UTF-8");
    const QByteArray latin1 = text.toLatin1();
    const QLatin1String latin1Text(latin1);
    require(isSame(CVariant(latin1Text, type), CVariant(QString(latin1Text), type)),
            "a Latin-1 text is the same text");
}

void checkDeduced(const QString &text)
{
    const CVariant value(text);
    require(isSame(value, PlainParsing::value(text, tagOfText(text))),
            "a text is a fixed string of its length");
    require(isSame(CVariant(QVariant(text)), value), "a QVariant of a text is the same");
    CVariant assigned;
    assigned = text;
    require(isSame(assigned, value), "assigning a text is constructing from it");
}

} // namespace

void traverseValueText(const QByteArray &input)
{
    InputReader reader(input);
    const NTypes::eTypes_t type = takeTag(reader);
    const QString text = reader.takeText();

    bool ok = false;
    const CVariant value = bounded(allowance(text.size()), "a value from a text takes its length",
                                   [&] { return CVariant::fromStr(text, type, &ok); });
    if (isParsedAsNumber(type))
        checkNumber(value, ok, text, type);
    else if (type == NTypes::E_UNKNOWN || !isCatalogued(type))
        require(value.type() == NTypes::E_UNKNOWN && value.isNull() && !ok, "an unsupported type gives none");
    else
        require(isSame(value, PlainParsing::value(text, type)) && ok == heldBy(value).isValid(),
                "a text gives the value that the plain way gives");
    checkRange(value);
    checkStability(value);
    checkConstructors(text, type, value);
    checkDeduced(text);
    checkValue(value);
}
