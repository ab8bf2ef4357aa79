// SPDX-License-Identifier: MIT
#ifndef VARIANTCASES_H
#define VARIANTCASES_H

#include <CVariant.h>

#include <QByteArray>
#include <QMetaType>
#include <QRegularExpression>
#include <QStringList>
#include <QVariant>

#include <functional>

// A test row that makes its value when the row runs, so that what making it logs belongs to the row.
using Make = std::function<CVariant()>;
Q_DECLARE_METATYPE(Make)

inline NTypes::eTypes_t typeOf(int number)
{
    return static_cast<NTypes::eTypes_t>(number);
}

inline QByteArray fromHex(const char *hex)
{
    return QByteArray::fromHex(QByteArray(hex));
}

// What the value holds. (Plain initialisation of a QVariant is ambiguous: a CVariant converts to much else.)
inline QVariant heldBy(const CVariant &value)
{
    return value.operator QVariant();
}

// Where the held value of a type of more than 8 bytes lies.
inline const void *placeOfHeld(const CVariant &value)
{
    return heldBy(value).constData();
}

// Log lines with "Line N" for the source line number that some of them carry.
inline QStringList withoutLineNumbers(QStringList lines)
{
    static const QRegularExpression number(QStringLiteral("\\bLine \\d+"));
    return lines.replaceInStrings(number, QStringLiteral("Line N"));
}

// The tags 0 to 32 without the gap.
inline QList<int> catalogueTags()
{
    QList<int> tags;
    for (int tag = 0; tag <= 32; ++tag) {
        if (tag != 11)
            tags << tag;
    }
    return tags;
}

#endif // VARIANTCASES_H
