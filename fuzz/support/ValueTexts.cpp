// SPDX-License-Identifier: MIT
// The texts of any value.
#include "ValueChecks.h"

#include <CDataTypeParser.h>

#include <Properties.h>

#include <QHostAddress>

#include <algorithm>

namespace {

// The bytes from the last to the first: a little-endian number as it is written.
QByteArray reversed(QByteArray bytes)
{
    std::reverse(bytes.begin(), bytes.end());
    return bytes;
}

QString expectedHex(const CVariant &value)
{
    const NTypes::eTypes_t type = value.type();
    const QByteArray bytes = value.toByteArray();
    if (!isCatalogued(type) || type == NTypes::E_UNKNOWN || isFloatingPoint(type))
        return QString();
    if (isNumber(type))
        return QString::fromLatin1(reversed(bytes).toHex());
    if (type == NTypes::E_UTF16CHAR)
        return QStringLiteral("%1").arg(heldBy(value).toChar().unicode(), 4, 16, QLatin1Char('0'));
    if (type == NTypes::E_DATETIME)
        return QString::number(plainOf<quint64>(bytes), 16);
    return QString::fromLatin1(bytes.toHex());
}

void checkHex(const CVariant &value)
{
    const QString hex = value.toHex(QString());
    require(hex == expectedHex(value), "the hexadecimal text is that of the bytes");
    require(value.toHex(QStringLiteral("0x")) == QLatin1String("0x") + hex, "the prefix stands in front");
    for (const int length : {-1, 0, 1, 3, 4, 1000}) {
        const int cut = length < 0 ? hex.size() : length + length % 2;
        QString pairs = value.toHexSeperated(length, QStringLiteral("::"));
        require(!pairs.endsWith(QLatin1Char(':')), "a separator stands between pairs only");
        pairs.remove(QLatin1Char(':'));
        require(pairs == hex.left(cut), "the pairs are those of the hexadecimal text");
    }
}

QString parts(std::initializer_list<unsigned int> numbers)
{
    QStringList texts;
    for (const unsigned int number : numbers)
        texts.append(QString::number(number));
    return texts.join(QLatin1Char('.'));
}

QString dateTimeText(const NTypes::sDateTime_t &record)
{
    if (record == NTypes::sDateTime_t{})
        return QStringLiteral("0000-00-00 00:00:00");
    const QDate date(record.date.year, record.date.month, record.date.day);
    const QTime time(record.time.hour, record.time.minute, record.time.second, record.time.hundredths * 10);
    return QDateTime(date, time).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

QString integerText(const CVariant &value)
{
    switch (value.type()) {
    case NTypes::E_I8:
    case NTypes::E_I16:
    case NTypes::E_I32:
    case NTypes::E_I64:
        return QString::number(value.toI64());
    default:
        return QString::number(value.toU64());
    }
}

// The text of a value that is held as its tag says, the plain way.
QString plainText(const CVariant &value)
{
    const NTypes::eTypes_t type = value.type();
    const QByteArray bytes = value.toByteArray();
    switch (type) {
    case NTypes::E_F32:
        return QString::number(static_cast<double>(plainOf<float>(bytes)), 'g', 6);
    case NTypes::E_F64:
        return QString::number(plainOf<double>(bytes), 'g', 15);
    case NTypes::E_DATETIME:
        return dateTimeText(plainOf<NTypes::sDateTime_t>(bytes));
    case NTypes::E_VERSION: {
        const auto version = plainOf<NTypes::sVersion_t>(bytes);
        return parts({version.major, version.minor, version.build});
    }
    case NTypes::E_VERSION_4: {
        const auto version = plainOf<NTypes::sVersion4_t>(bytes);
        return parts({version.first, version.second, version.third, version.fourth});
    }
    case NTypes::E_IPV4ADDR:
        return QHostAddress(plainOf<quint32>(bytes)).toString();
    case NTypes::E_COMMAND:
        return QString::number(plainOf<quint32>(bytes));
    default:
        return isNumber(type) ? integerText(value) : QString::fromLatin1(bytes.toHex());
    }
}

// Whether the value is a number, a record or bytes, held just as its tag says or widened: its text follows
// from its raw bytes alone.
bool hasPlainText(const CVariant &value)
{
    const NTypes::eTypes_t type = value.type();
    if (value.isNull() || isFixedString(type) || isCharField(type) || type == NTypes::E_UTF16CHAR)
        return false;
    return isSame(value, rawValue(value.toByteArray(), type))
           || (isNumber(type) && isSame(value, value.convertTo(type)));
}

} // namespace

void checkTexts(const CVariant &value)
{
    const QString text = value.toStr();
    require(value.operator QString() == text, "the operator gives the same text");
    require(!heldBy(value).isNull() || text.isNull(), "no value has a null text");
    require(!hasPlainText(value) || text == plainText(value), "the text is that of the plain way", text);
    require(isFloatingPoint(value.type()) || value.toLocaleStr() == text,
            "only floating point follows the locale");
    const bool isDateTime = value.type() == NTypes::E_DATETIME;
    require(isDateTime || value.toStr(Qt::ISODate).isNull(), "only a date-time has a format");
    require(isDateTime || value.toStr(QLocale::ShortFormat).isNull(),
            "only a date-time has a locale's format");
    checkHex(value);
    QString shown;
    QDebug(&shown).nospace() << value;
    require(shown.trimmed()
                == QStringLiteral("CVariant(NTypes::%1, %2)")
                       .arg(CDataTypeParser::typeToEnum(value.type()), text)
                       .trimmed(),
            "the debug form shows the type and the text");
}
