// SPDX-License-Identifier: MIT
#include "PlainParsing.h"

#include "ValueChecks.h"

#include <CDataTypeParser.h>

#include <QHostAddress>
#include <QStringList>

// Base 0: "0x" is hexadecimal, a leading zero octal. 8 and 16 bits keep the low-order bits of 32. A
// floating-point number that fails is 0, never infinity.
CVariant PlainParsing::number(const QString &text, NTypes::eTypes_t type, bool &ok)
{
    switch (type) {
    case NTypes::E_U8:
        return static_cast<unsigned char>(text.toUInt(&ok, 0));
    case NTypes::E_I8:
        return static_cast<signed char>(text.toInt(&ok, 0));
    case NTypes::E_U16:
        return static_cast<unsigned short>(text.toUInt(&ok, 0));
    case NTypes::E_I16:
        return static_cast<short>(text.toInt(&ok, 0));
    case NTypes::E_I32:
        return text.toInt(&ok, 0);
    case NTypes::E_U64:
        return text.toULongLong(&ok, 0);
    case NTypes::E_I64:
        return text.toLongLong(&ok, 0);
    case NTypes::E_F32: {
        const float number = text.toFloat(&ok);
        return ok ? number : 0.0F;
    }
    case NTypes::E_F64: {
        const double number = text.toDouble(&ok);
        return ok ? number : 0.0;
    }
    default: // also the command
        return text.toUInt(&ok, 0);
    }
}

namespace {

template<typename String>
CVariant plainString(const QString &text)
{
    unsigned short units[String::unitCount] = {};
    for (int i = 0; i < String::unitCount && i < text.size(); ++i)
        units[i] = text.at(i).unicode();
    return CVariant(units);
}

CVariant plainCharField(const QString &text, NTypes::eTypes_t type)
{
    QByteArray field = text.toLatin1().left(int(CDataTypeParser::typeSize(type)));
    const int end = field.indexOf('\0');
    field.truncate(end < 0 ? field.size() : end);
    return tagged(QString::fromLatin1(field), type);
}

quint16 part(const QStringList &parts, int index)
{
    return static_cast<quint16>(parts.value(index).toShort(nullptr, 10));
}

CVariant plainVersion(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char('.'), Qt::KeepEmptyParts);
    return NTypes::sVersion_t{part(parts, 2), static_cast<quint8>(part(parts, 1)),
                              static_cast<quint8>(part(parts, 0))};
}

CVariant plainVersion4(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char('.'), Qt::KeepEmptyParts);
    return NTypes::sVersion4_t{part(parts, 3), part(parts, 2), part(parts, 1), part(parts, 0)};
}

CVariant plainDateTime(const QString &text)
{
    bool isInteger = false;
    const int number = text.toInt(&isInteger);
    if (isInteger)
        return plainOf<NTypes::sDateTime_t>(bytesOf(static_cast<qint64>(number)));
    const QDateTime dateTime = QDateTime::fromString(text, Qt::ISODate);
    const QDate date = dateTime.date();
    const QTime time = dateTime.time();
    NTypes::sDateTime_t record{};
    if (dateTime.isValid()) {
        record.date = {static_cast<qint8>(date.day()), static_cast<qint8>(date.month()),
                       static_cast<qint16>(date.year())};
        record.time = {static_cast<qint8>(time.msec() / 10), static_cast<qint8>(time.second()),
                       static_cast<qint8>(time.minute()), static_cast<qint8>(time.hour())};
    }
    return record;
}

} // namespace

CVariant PlainParsing::value(const QString &text, NTypes::eTypes_t type)
{
    switch (type) {
    case NTypes::E_STRING32:
        return plainString<CString32>(text);
    case NTypes::E_STRING64:
        return plainString<CString64>(text);
    case NTypes::E_STRING128:
        return plainString<CString128>(text);
    case NTypes::E_UTF16CHAR:
        return text.isEmpty() ? QChar(0) : text.at(0);
    case NTypes::E_CHAR:
        return text.isEmpty() ? '\0' : QString(text.at(0)).toLatin1().at(0);
    case NTypes::E_DATETIME:
        return plainDateTime(text);
    case NTypes::E_VERSION:
        return plainVersion(text);
    case NTypes::E_VERSION_4:
        return plainVersion4(text);
    case NTypes::E_IPV4ADDR:
        return QHostAddress(text);
    default:
        return isCharField(type) ? plainCharField(text, type)
                                 : rawValue(QByteArray::fromHex(text.toLatin1()), type);
    }
}
