// SPDX-License-Identifier: MIT
#include <CDataTypeParser.h>

#include "TypeCatalogue.h"

#include <limits>

using TypeCatalogue::Range;

namespace {

// The catalogue's texts as QStrings, made once; the public maps and every lookup share them.
struct Texts
{
    std::array<QString, TypeCatalogue::rows.size()> catalogueNames;
    std::array<QString, TypeCatalogue::rows.size()> enumeratorNames;
};

// Built on first use, so that lookups work in other static initialisers too, whatever their order.
const Texts &texts()
{
    static const Texts built = [] {
        Texts names;
        for (std::size_t i = 0; i < TypeCatalogue::rows.size(); ++i) {
            names.catalogueNames[i] = QString::fromLatin1(TypeCatalogue::rows[i].catalogueName);
            names.enumeratorNames[i] = QString::fromLatin1(TypeCatalogue::rows[i].enumeratorName);
        }
        return names;
    }();
    return built;
}

template<typename Value, typename ValueOfRow>
QMap<NTypes::eTypes_t, Value> mapOfRows(ValueOfRow valueOfRow)
{
    QMap<NTypes::eTypes_t, Value> map;
    for (std::size_t i = 0; i < TypeCatalogue::rows.size(); ++i)
        map.insert(TypeCatalogue::rows[i].type, valueOfRow(i));
    return map;
}

std::size_t positionOrUnknown(NTypes::eTypes_t type)
{
    return TypeCatalogue::position(TypeCatalogue::contains(type) ? type : NTypes::E_UNKNOWN);
}

template<typename T>
QString limitText(bool largest)
{
    using Limits = std::numeric_limits<T>;
    const T limit = largest ? Limits::max() : Limits::lowest();
    if constexpr (std::is_floating_point<T>::value)
        return QString::number(static_cast<double>(limit), 'f', 6);
    else if constexpr (std::is_signed<T>::value)
        return QString::number(static_cast<qlonglong>(limit));
    else
        return QString::number(static_cast<qulonglong>(limit));
}

QString rangeText(NTypes::eTypes_t type, bool largest)
{
    switch (TypeCatalogue::rows[positionOrUnknown(type)].range) {
    case Range::None:
        return {};
    case Range::U8:
        return limitText<quint8>(largest);
    case Range::I8:
        return limitText<qint8>(largest);
    case Range::U16:
        return limitText<quint16>(largest);
    case Range::I16:
        return limitText<qint16>(largest);
    case Range::U32:
        return limitText<quint32>(largest);
    case Range::I32:
        return limitText<qint32>(largest);
    case Range::U64:
        return limitText<quint64>(largest);
    case Range::I64:
        return limitText<qint64>(largest);
    case Range::F32:
        return limitText<float>(largest);
    case Range::F64:
        return limitText<double>(largest);
    }
    Q_UNREACHABLE();
    return {};
}

} // namespace

// clazy:excludeall=non-pod-global-static -- these maps are part of the interface and are complete when the
// library is loaded.
const QMap<NTypes::eTypes_t, quint16> CDataTypeParser::mDataSizeMap =
    mapOfRows<quint16>([](std::size_t row) { return TypeCatalogue::rows[row].size; });
const QMap<NTypes::eTypes_t, QString> CDataTypeParser::mTypeDataMap =
    mapOfRows<QString>([](std::size_t row) { return texts().catalogueNames[row]; });
const QMap<NTypes::eTypes_t, QString> CDataTypeParser::mTypeEnumMap =
    mapOfRows<QString>([](std::size_t row) { return texts().enumeratorNames[row]; });

QString CDataTypeParser::typeToStr(NTypes::eTypes_t type)
{
    return texts().catalogueNames[positionOrUnknown(type)];
}

QString CDataTypeParser::typeToEnum(NTypes::eTypes_t type)
{
    return texts().enumeratorNames[positionOrUnknown(type)];
}

NTypes::eTypes_t CDataTypeParser::strToType(const QString &name)
{
    for (const TypeCatalogue::Row &row : TypeCatalogue::rows) {
        if (name == QLatin1String(row.catalogueName))
            return row.type;
    }
    return NTypes::E_UNKNOWN;
}

unsigned int CDataTypeParser::typeSize(NTypes::eTypes_t type)
{
    return TypeCatalogue::sizeOf(type);
}

unsigned int CDataTypeParser::typeSize(const QString &name)
{
    return typeSize(strToType(name));
}

QString CDataTypeParser::minTypeValue(NTypes::eTypes_t type)
{
    return rangeText(type, false);
}

QString CDataTypeParser::maxTypeValue(NTypes::eTypes_t type)
{
    return rangeText(type, true);
}
