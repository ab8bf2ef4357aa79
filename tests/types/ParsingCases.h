// SPDX-License-Identifier: MIT
#ifndef PARSINGCASES_H
#define PARSINGCASES_H

#include "VariantSamples.h"

#include <QTest>
#include <QVariant>

// The rows of the tests that parse a text as a value of a type.
namespace ParsingCases {

inline void addColumns()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<QVariant>("value");
}

inline QTestData &newRow(const char *text, int type, const char *note = "")
{
    const QByteArray name = VariantSamples::tagName(type) + " '" + text + "'" + note;
    return QTest::newRow(name.constData()) << QString::fromUtf8(text) << type;
}

// A number of the type in the exact Qt type of its tag.
template<typename Number>
void number(const char *text, int type, bool ok, Number value)
{
    newRow(text, type) << ok << QVariant::fromValue(value);
}

} // namespace ParsingCases

#endif // PARSINGCASES_H
