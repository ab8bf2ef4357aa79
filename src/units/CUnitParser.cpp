// SPDX-License-Identifier: MIT
#include <CUnitParser.h>

#include "UnitCatalogue.h"

#include <QCoreApplication>

using Nj6Units::eUnit_t;

namespace {

// An empty text has no translation; translators may answer an empty key with the heading of their file.
QString translated(const char *text)
{
    return *text == '\0' ? QString() : QCoreApplication::translate("CUnitParser", text);
}

// The translated default stands for the text of the missing row and is translated like one.
QString translatedDefault(const char *text)
{
    return translated(translated(text).toLocal8Bit().constData());
}

template<typename Value, typename ValueOfRow>
QMap<eUnit_t, Value> mapOfRows(ValueOfRow valueOfRow)
{
    QMap<eUnit_t, Value> map;
    for (const UnitCatalogue::Row &row : UnitCatalogue::rows)
        map.insert(row.code, valueOfRow(row));
    return map;
}

} // namespace

// clazy:excludeall=non-pod-global-static -- the map is part of the interface and complete when the library is
// loaded.
const QMap<eUnit_t, int> CUnitParser::mDigitsMap =
    mapOfRows<int>([](const UnitCatalogue::Row &row) { return row.digits; });

QString CUnitParser::unitStr(eUnit_t unit)
{
    const UnitCatalogue::Row *const row = UnitCatalogue::find(unit);
    return row ? translated(row->text) : translatedDefault(UnitCatalogue::unknownText);
}

QString CUnitParser::unitDescription(eUnit_t unit)
{
    const UnitCatalogue::Row *const row = UnitCatalogue::find(unit);
    return row ? translated(row->description) : translatedDefault(UnitCatalogue::unknownDescription);
}

int CUnitParser::digits(eUnit_t unit)
{
    const UnitCatalogue::Row *const row = UnitCatalogue::find(unit);
    return row ? row->digits : 0;
}

bool CUnitParser::hasLinear(eUnit_t unit)
{
    return toLinear(unit) != unit;
}

bool CUnitParser::hasLinear(unsigned int unit)
{
    return hasLinear(static_cast<eUnit_t>(unit));
}

eUnit_t CUnitParser::toLinear(eUnit_t unit)
{
    const UnitCatalogue::Row *const row = UnitCatalogue::find(unit);
    return row ? row->linear : unit;
}

eUnit_t CUnitParser::toLinear(unsigned int unit)
{
    return toLinear(static_cast<eUnit_t>(unit));
}

QMap<eUnit_t, QString> CUnitParser::initUnitMap()
{
    return mapOfRows<QString>([](const UnitCatalogue::Row &row) { return QString::fromLatin1(row.text); });
}

QMap<eUnit_t, QString> CUnitParser::initDescriptionMap()
{
    return mapOfRows<QString>(
        [](const UnitCatalogue::Row &row) { return QString::fromLatin1(row.description); });
}
