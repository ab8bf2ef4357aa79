// SPDX-License-Identifier: MIT
#include "QtUnits.h"

#include <CUnitParser.h>

#include <QByteArray>
#include <QCoreApplication>
#include <QHash>
#include <QMap>

using Nj6Units::eUnit_t;

namespace {

struct Row
{
    QByteArray literal;
    int digits;
    eUnit_t linear;
};

const QMap<eUnit_t, QString> &texts()
{
    static const QMap<eUnit_t, QString> map = CUnitParser::initUnitMap();
    return map;
}

QHash<int, Row> makeRows()
{
    QHash<int, Row> rows;
    for (auto text = texts().begin(); text != texts().end(); ++text)
        rows.insert(text.key(), {text.value().toUtf8(), CUnitParser::digits(text.key()),
                                 CUnitParser::toLinear(text.key())});
    return rows;
}

const QHash<int, Row> &rows()
{
    static const QHash<int, Row> hash = makeRows();
    return hash;
}

QString translated(const char *text)
{
    return QCoreApplication::translate("CUnitParser", text);
}

} // namespace

QString QtUnits::unitText(eUnit_t unit)
{
    const auto text = texts().constFind(unit);
    if (text == texts().constEnd())
        return translated("unknown");
    return text->isEmpty() ? QString() : translated(text->toUtf8().constData());
}

QString QtUnits::unitTextOfLiteral(eUnit_t unit)
{
    const auto row = rows().constFind(unit);
    if (row == rows().constEnd())
        return translated("unknown");
    return row->literal.isEmpty() ? QString() : translated(row->literal.constData());
}

int QtUnits::digits(eUnit_t unit)
{
    const auto row = rows().constFind(unit);
    return row == rows().constEnd() ? 0 : row->digits;
}

eUnit_t QtUnits::toLinear(eUnit_t unit)
{
    const auto row = rows().constFind(unit);
    return row == rows().constEnd() ? unit : row->linear;
}
