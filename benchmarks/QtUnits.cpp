// SPDX-License-Identifier: MIT
#include "QtUnits.h"

#include <CUnitParser.h>

#include <QByteArray>
#include <QCoreApplication>
#include <QHash>

using Nj6Units::eUnit_t;

namespace {

struct Row
{
    QString text;
    QByteArray literal;
    int digits;
    eUnit_t linear;
};

QHash<int, Row> makeRows()
{
    const QMap<eUnit_t, QString> texts = CUnitParser::initUnitMap();
    QHash<int, Row> rows;
    for (auto text = texts.begin(); text != texts.end(); ++text)
        rows.insert(text.key(),
                    {text.value(), text.value().toUtf8(), CUnitParser::mDigitsMap.value(text.key()),
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
    const auto row = rows().constFind(unit);
    if (row == rows().constEnd())
        return translated("unknown");
    return row->text.isEmpty() ? QString() : translated(row->text.toUtf8().constData());
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
