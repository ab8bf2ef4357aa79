// SPDX-License-Identifier: MIT
#include "Variants.h"

#include <CString128.h>
#include <CString32.h>
#include <CString64.h>
#include <NTypes.h>

#include <QBitArray>
#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocale>
#include <QPoint>
#include <QRegularExpression>
#include <QStringList>
#include <QUrl>
#include <QUuid>
#include <QVector>

namespace {

QString takeString(InputReader &reader)
{
    return InputReader(reader.takeBlock()).takeText();
}

template<typename Plain>
QVariant plain(InputReader &reader)
{
    return QVariant::fromValue(reader.take<Plain>());
}

QVariant boolean(InputReader &reader)
{
    return reader.takeChoice(2) == 1;
}

QVariant text(InputReader &reader)
{
    return takeString(reader);
}

QVariant longText(InputReader &reader)
{
    return takeString(reader).repeated(reader.takeChoice(9));
}

QVariant bytes(InputReader &reader)
{
    return reader.takeBlock();
}

// Bytes of the size of a string field.
QVariant field(InputReader &reader)
{
    const int size = 64 << reader.takeChoice(3);
    return reader.takeBlock().leftJustified(size, '\0', true);
}

template<typename String>
QVariant fixedString(InputReader &reader)
{
    return QVariant::fromValue(String(reader.takeBlock()));
}

QVariant date(InputReader &reader)
{
    return QDate::fromJulianDay(reader.take<qint32>());
}

QVariant time(InputReader &reader)
{
    return QTime::fromMSecsSinceStartOfDay(reader.take<qint32>());
}

QVariant dateTime(InputReader &reader)
{
    const auto spec = reader.takeChoice(2) == 0 ? Qt::UTC : Qt::LocalTime;
    return QDateTime::fromMSecsSinceEpoch(reader.take<qint64>() >> 10, spec);
}

QVariant otherValue(InputReader &reader)
{
    const int number = reader.take<qint32>();
    switch (reader.takeChoice(8)) {
    case 0:
        return QUrl(takeString(reader));
    case 1:
        return QLocale(takeString(reader));
    case 2:
        return QUuid::createUuidV5(QUuid(), takeString(reader));
    case 3:
        return QPoint(number, 7);
    case 4:
        return QPointF(number, 7.5);
    case 5:
        return QBitArray(number % 100 < 0 ? 0 : number % 100, true);
    case 6:
        return QRegularExpression(takeString(reader));
    default:
        return QJsonDocument(QJsonArray{number});
    }
}

QVariant nullValue(InputReader &reader)
{
    return QVariant(static_cast<QVariant::Type>(reader.takeChoice(QMetaType::QJsonDocument)));
}

using Make = QVariant (*)(InputReader &reader);

constexpr Make makers[] = {
    plain<qint32>,
    plain<quint32>,
    plain<qint64>,
    plain<quint64>,
    plain<double>,
    plain<float>,
    plain<qint8>,
    plain<quint8>,
    plain<qint16>,
    plain<quint16>,
    plain<long>,
    plain<unsigned long>,
    plain<char>,
    plain<QChar>,
    boolean,
    text,
    longText,
    bytes,
    field,
    date,
    time,
    dateTime,
    otherValue,
    nullValue,
    fixedString<CString32>,
    fixedString<CString64>,
    fixedString<CString128>,
    plain<NTypes::sVersion_t>,
    plain<NTypes::sVersion4_t>,
    plain<NTypes::uIPv4HAddr_t>,
    plain<NTypes::sCommand_t>,
    plain<NTypes::sDateTime_t>,
    plain<NTypes::sDs402Record01_t>,
    plain<NTypes::sDs402Array_t<qint16>>,
    plain<NTypes::sDs402Array_t<qint32>>,
    plain<NTypes::sDs402Array_t<quint16>>,
    plain<NTypes::sDs402Array_t<quint32>>,
};

constexpr int makerCount = int(std::size(makers));
constexpr int containerCount = 5;
constexpr int deepest = 4;

QVariant single(InputReader &reader)
{
    return reader.atEnd() ? QVariant() : makers[reader.takeChoice(makerCount)](reader);
}

QVariant wrapped(const QVariant &inner, int container, InputReader &reader)
{
    switch (container) {
    case 0:
        return QVariantList{inner, single(reader)};
    case 1:
        return QVariantMap{{takeString(reader), inner}};
    case 2:
        return QVariantHash{{takeString(reader), inner}};
    case 3:
        return QStringList{takeString(reader), inner.toString()};
    default:
        return QVariant(QMetaType::QVariant, &inner);
    }
}

} // namespace

// The containers from the inside to the outside, each announced by a byte in front.
QVariant takeVariant(InputReader &reader)
{
    if (reader.atEnd())
        return {};
    QVector<int> containers;
    int choice = reader.takeChoice(makerCount + containerCount);
    for (; choice >= makerCount && containers.size() < deepest;
         choice = reader.takeChoice(makerCount + containerCount))
        containers.append(choice - makerCount);
    QVariant variant = makers[choice % makerCount](reader);
    for (const int container : qAsConst(containers))
        variant = wrapped(variant, container, reader);
    return variant;
}
