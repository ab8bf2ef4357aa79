// SPDX-License-Identifier: MIT
// Serial numbers, names, sizes, user levels, selection entries and messages as users read them.
#include <CStr.h>

#include <QCoreApplication>
#include <QDataStream>
#include <QRegExp>

#include <algorithm>
#include <array>

namespace {

struct SizeUnit
{
    const char *format;
    int shift; // the unit is 2^shift bytes
};

constexpr std::array<SizeUnit, 6> sizeUnits = {{
    {QT_TRANSLATE_NOOP("CStr", "%1 Byte"), 0},
    {QT_TRANSLATE_NOOP("CStr", "%1 KiB"), 10},
    {QT_TRANSLATE_NOOP("CStr", "%1 MiB"), 20},
    {QT_TRANSLATE_NOOP("CStr", "%1 GiB"), 30},
    {QT_TRANSLATE_NOOP("CStr", "%1 TiB"), 40},
    {QT_TRANSLATE_NOOP("CStr", "%1 PiB"), 50},
}};

// The largest unit of which there are at least 10; the first one for whatever is less.
const SizeUnit &sizeUnitFor(long long bytes)
{
    const auto *unit = sizeUnits.end() - 1;
    while (unit != sizeUnits.begin() && bytes < 10LL << unit->shift)
        --unit;
    return *unit;
}

struct UserLevel
{
    Nj6UserLevel::eUserLevel_t level;
    const char *text;
};

constexpr std::array<UserLevel, 6> userLevels = {{
    {Nj6UserLevel::E_USER, QT_TRANSLATE_NOOP("CStr", "User")},
    {Nj6UserLevel::E_OEM, QT_TRANSLATE_NOOP("CStr", "OEM")},
    {Nj6UserLevel::E_ADMIN, QT_TRANSLATE_NOOP("CStr", "Admin")},
    {Nj6UserLevel::E_VT_TECHNICIAN, QT_TRANSLATE_NOOP("CStr", "V&T Technician")},
    {Nj6UserLevel::E_VT_PRODUCTION, QT_TRANSLATE_NOOP("CStr", "V&T Production")},
    {Nj6UserLevel::E_VT_DEVELOPER, QT_TRANSLATE_NOOP("CStr", "V&T Developer")},
}};

QString translated(const char *text)
{
    return QCoreApplication::translate("CStr", text);
}

// The text of the level with this number. A number beyond an int is no level, either.
template<typename Number>
QString textOfLevel(Number number)
{
    for (const UserLevel &row : userLevels) {
        if (static_cast<Number>(row.level) == number)
            return translated(row.text);
    }
    return QCoreApplication::translate("CStr", "Unknown (%1)").arg(number);
}

// A blank at the position, which a shorter text is filled up to with blanks.
void insertBlank(QString &text, int position)
{
    constexpr QLatin1Char blank(' ');
    text = text.leftJustified(position, blank);
    text.insert(position, blank);
}

// How many units of the text to keep so that the last word of them is whole.
int endOfWord(const QString &text, int keep)
{
    if (keep < 1)
        return keep;
    const int blank = text.lastIndexOf(QLatin1Char(' '), keep - 1);
    return blank > 0 ? blank : keep;
}

QString streamErrorFormat(QDataStream::Status status)
{
    switch (status) {
    case QDataStream::ReadPastEnd:
        return QCoreApplication::translate("CStr",
                                           "Stream ERROR while reading value \"%1\" : The data stream has "
                                           "read past the end of the data.");
    case QDataStream::ReadCorruptData:
        return QCoreApplication::translate(
            "CStr", "Stream ERROR while reading value \"%1\" : The data stream has read corrupt data.");
    default:
        return QCoreApplication::translate(
            "CStr", "Stream ERROR while reading value \"%1\" : Unknown stream status.");
    }
}

} // namespace

QString CStr::serialToString(unsigned int serial)
{
    QString text = QString::number(serial);
    for (const int position : {1, 5, 9})
        insertBlank(text, position);
    return text.trimmed();
}

QString CStr::formatSapName(const QString &name)
{
    constexpr int maxLength = 14;
    QString text = name;
    text.remove(QRegExp(QStringLiteral("\\s")));
    text.truncate(maxLength);
    for (const int position : {5, 8, 12})
        insertBlank(text, position);
    return text;
}

QString CStr::memSizeToString(long long bytes)
{
    const SizeUnit &unit = sizeUnitFor(bytes);
    const bool isWhole = &unit == &sizeUnits.front() || &unit == &sizeUnits.back();
    const auto unitSize = static_cast<double>(1LL << unit.shift);
    return translated(unit.format)
        .arg(isWhole ? QString::number(bytes >> unit.shift)
                     : QString::number(static_cast<double>(bytes) / unitSize, 'f', 1));
}

QString CStr::cutString(const QString &text, unsigned int maxLen, bool &cut, bool atWord)
{
    const QString suffix = QStringLiteral(" ...");
    cut = static_cast<qint64>(maxLen) < text.size();
    if (!cut)
        return text;
    const int keep = static_cast<int>(maxLen) - suffix.size();
    // A negative number of units to keep is the whole text.
    return text.left(atWord ? endOfWord(text, keep) : std::max(keep, 0)) + suffix;
}

int CStr::indexOfAmpersand(const QString &text)
{
    return QRegExp(QStringLiteral("(^|[^&])&(?!(&|\\W|$))"), Qt::CaseSensitive).indexIn(text);
}

QString CStr::userlevelText(Nj6UserLevel::eUserLevel_t level)
{
    return textOfLevel(static_cast<qint32>(level));
}

QString CStr::userlevelText(unsigned int level)
{
    return textOfLevel(level);
}

QString CStr::createDeviceSelectionValue(const QString &name, unsigned int serial)
{
    return QCoreApplication::translate("CStr", "%1 [s/n: %2]").arg(name, QString::number(serial));
}

QString CStr::createSubDeviceSelectionValue(const QString &subName, const QString &deviceName,
                                            unsigned int serial)
{
    return QCoreApplication::translate("CStr", "%1 - %2")
        .arg(subName, createDeviceSelectionValue(deviceName, serial));
}

bool CStr::inStreamStatus(const QDataStream &stream, const QString &valueName, QString &message)
{
    const QDataStream::Status status = stream.status();
    if (status == QDataStream::Ok)
        return true;
    message = streamErrorFormat(status).arg(valueName);
    return false;
}
