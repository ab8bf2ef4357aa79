// SPDX-License-Identifier: MIT
// Versions, identification codes and revisions as texts, and back.
#include <CStr.h>

#include <CVariant.h>

#include <QStringList>

#include <algorithm>
#include <limits>

namespace {

const QChar point = QLatin1Char('.');

NTypes::uVersion_t versionOf(unsigned int value)
{
    NTypes::uVersion_t version{};
    version.value = value;
    return version;
}

// Qt itself subtracts from the width, so that the most negative one would become the largest.
QString filledWithZeros(unsigned int number, int width)
{
    return QString::number(number).rightJustified(std::max(width, 0), QLatin1Char('0'));
}

// Major is the high half of a revision, minor the low one.
template<typename Revision>
constexpr int halfBits = std::numeric_limits<Revision>::digits / 2;

template<typename Revision>
constexpr int halfMax = (1 << halfBits<Revision>)-1;

template<typename Revision>
QString revisionText(Revision revision, int minorWidth)
{
    const unsigned int major = static_cast<unsigned int>(revision) >> halfBits<Revision>;
    const unsigned int minor = revision & static_cast<unsigned int>(halfMax<Revision>);
    return QString::number(major) + point + filledWithZeros(minor, minorWidth);
}

template<typename Revision>
bool isHalf(int number)
{
    return number >= 0 && number <= halfMax<Revision>;
}

template<typename Revision>
bool parseRevision(const QString &text, Revision &revision)
{
    int major = 0;
    int minor = 0;
    if (!CStr::_splitStringAtDot(text, major, minor) || !isHalf<Revision>(major) || !isHalf<Revision>(minor))
        return false;
    revision = static_cast<Revision>(static_cast<unsigned int>(major)
                                         << halfBits<Revision> | static_cast<unsigned int>(minor));
    return true;
}

} // namespace

QString CStr::versionToStr(unsigned int value, int majorWidth, int minorWidth, int buildWidth)
{
    const NTypes::sVersion_t version = versionOf(value).version;
    return QStringLiteral("%1.%2.%3")
        .arg(filledWithZeros(version.major, majorWidth), filledWithZeros(version.minor, minorWidth),
             filledWithZeros(version.build, buildWidth));
}

QString CStr::versionToStr(NTypes::sVersion4x8_t version)
{
    return QStringLiteral("%1.%2.%3.%4")
        .arg(QString::number(version.first), QString::number(version.second), QString::number(version.third),
             QString::number(version.fourth));
}

QString CStr::versionToStr(NTypes::uVersion_t version)
{
    return CVariant(version).toStr();
}

QString CStr::versionToStr(unsigned int value)
{
    return versionToStr(versionOf(value));
}

QString CStr::versionToShortStr(NTypes::uVersion_t version)
{
    const QString text = versionToStr(version);
    return text.left(text.lastIndexOf(point));
}

QString CStr::versionToShortStr(unsigned int value)
{
    return versionToShortStr(versionOf(value));
}

bool CStr::stringToVersion(const QString &text, NTypes::sVersion_t &version)
{
    const QStringList parts = text.split(point);
    NTypes::sVersion_t parsed{};
    if (parts.size() != 3 || !strToU8(parts[0], parsed.major) || !strToU8(parts[1], parsed.minor)
        || !strToU16(parts[2], parsed.build))
        return false;
    version = parsed;
    return true;
}

bool CStr::stringToVersion(const QString &text, NTypes::uVersion_t &version)
{
    return stringToVersion(text, version.version);
}

bool CStr::stringToVersion(const QString &text, NTypes::sVersion4x8_t &version)
{
    const QStringList parts = text.split(point);
    NTypes::sVersion4x8_t parsed{};
    if (parts.size() != 4 || !strToU8(parts[0], parsed.first) || !strToU8(parts[1], parsed.second)
        || !strToU8(parts[2], parsed.third) || !strToU8(parts[3], parsed.fourth))
        return false;
    version = parsed;
    return true;
}

NTypes::uVersion_t CStr::stringToVersion(const QString &text, bool *ok)
{
    const QStringList parts = text.split(point);
    NTypes::uVersion_t version{};
    const bool parsed = (parts.size() == 2 || parts.size() == 3) && strToU8(parts[0], version.version.major)
                        && strToU8(parts[1], version.version.minor)
                        && (parts.size() == 2 || strToU16(parts[2], version.version.build));
    if (ok != nullptr)
        *ok = parsed;
    return version;
}

QString CStr::identCodeToHexCode(NTypes::uVersion_t code)
{
    constexpr int digits = 2 * sizeof code.value;
    const QString number = QString::number(code.value, 16).toUpper();
    return QStringLiteral("0x") + number.rightJustified(digits, QLatin1Char('0'));
}

NTypes::uVersion_t CStr::hexCodeToIdentCode(const QString &text)
{
    return versionOf(text.toUInt(nullptr, 16));
}

QString CStr::revisionToString(unsigned int revision)
{
    return revisionText(revision, 3);
}

QString CStr::revisionToString(unsigned short revision)
{
    return revisionText(revision, 2);
}

bool CStr::stringToRevision(const QString &text, unsigned int &revision)
{
    return parseRevision(text, revision);
}

bool CStr::stringToRevision(const QString &text, unsigned short &revision)
{
    return parseRevision(text, revision);
}

bool CStr::_splitStringAtDot(const QString &text, int &major, int &minor)
{
    const QStringList parts = text.split(point);
    if (parts.size() > 2)
        return false;
    bool parsed = false;
    minor = 0;
    major = parts[0].toInt(&parsed);
    if (parts.size() == 2)
        minor = parts[1].toInt(&parsed); // the result is that of minor, whatever major was
    return parsed;
}
