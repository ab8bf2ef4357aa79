// SPDX-License-Identifier: MIT
// A number as a version, a revision and an identification code, and a text as each of them: what is read is
// written in one form, which is read as the same, and what is not read changes nothing.
#include "Traversals.h"

#include <CStr.h>

#include <InputReader.h>
#include <Properties.h>

#include <QStringList>

#include <algorithm>
#include <tuple>

namespace {

NTypes::uVersion_t versionOf(quint32 number)
{
    NTypes::uVersion_t version{};
    version.value = number;
    return version;
}

// A number and zeros in front of it, up to a width.
QString filled(quint32 number, int width)
{
    QString text = QString::number(number);
    while (text.size() < width)
        text.prepend(QLatin1Char('0'));
    return text;
}

void checkVersion(quint32 number, int width)
{
    const QStringList parts = {QString::number(number >> 24), QString::number(number >> 16 & 0xff),
                               QString::number(number & 0xffff)};
    const QString text = CStr::versionToStr(number);
    require(text == parts.join(QLatin1Char('.')), "a version is its three numbers", text);
    require(CStr::versionToStr(versionOf(number)) == text && CStr::versionToStr(number, 0, -1, 1) == text,
            "all shapes without a width write the same", text);
    require(CStr::versionToShortStr(number) == parts[0] + QLatin1Char('.') + parts[1]
                && CStr::versionToShortStr(versionOf(number)) == CStr::versionToShortStr(number),
            "the short form is major and minor", text);
    const QString wide = CStr::versionToStr(number, width, 2, 4);
    require(wide
                == QStringList({filled(number >> 24, width), filled(number >> 16 & 0xff, 2),
                                filled(number & 0xffff, 4)})
                       .join(QLatin1Char('.')),
            "each part is filled up to its width", wide);
    for (const QString &form : {text, wide}) {
        bool ok = false;
        NTypes::uVersion_t version{};
        require(CStr::stringToVersion(form, version) && version.value == number,
                "a version is read as it was written", form);
        require(CStr::stringToVersion(form, &ok).value == number && ok, "both shapes read it", form);
    }
}

void checkFourParts(quint32 number)
{
    NTypes::sVersion4x8_t version{};
    version.fourth = static_cast<quint8>(number);
    version.third = static_cast<quint8>(number >> 8);
    version.second = static_cast<quint8>(number >> 16);
    version.first = static_cast<quint8>(number >> 24);
    const QString text = CStr::versionToStr(version);
    NTypes::sVersion4x8_t again{};
    require(CStr::stringToVersion(text, again)
                && std::tie(again.first, again.second, again.third, again.fourth)
                       == std::tie(version.first, version.second, version.third, version.fourth),
            "a version of four parts is read as it was written", text);
}

template<typename Revision>
void checkRevision(Revision revision)
{
    const QString text = CStr::revisionToString(revision);
    auto again = static_cast<Revision>(~revision);
    require(CStr::stringToRevision(text, again) && again == revision, "a revision is read as it was written",
            text);
    constexpr int minorDigits = sizeof revision == 4 ? 3 : 2;
    require(text.size() - text.indexOf(QLatin1Char('.')) > minorDigits, "minor has leading zeros", text);
}

void checkIdentCode(quint32 number)
{
    const QString text = CStr::identCodeToHexCode(versionOf(number));
    require(text.size() == 10 && text.startsWith(QLatin1String("0x")) && text.mid(2) == text.mid(2).toUpper(),
            "eight upper-case digits", text);
    require(CStr::hexCodeToIdentCode(text).value == number
                && CStr::hexCodeToIdentCode(text.mid(2)).value == number,
            "a code is read as it was written", text);
}

// The three parts of a text by the number parsers that versions are defined by.
void checkVersionText(const QString &text)
{
    constexpr quint32 untouched = 0xa5a5a5a5;
    const QStringList parts = text.split(QLatin1Char('.'));
    bool isMajor = false;
    bool isMinor = false;
    bool isBuild = false;
    const quint32 major = CStr::strToU8(parts.value(0), &isMajor);
    const quint32 minor = CStr::strToU8(parts.value(1), &isMinor);
    const quint32 build = CStr::strToU16(parts.value(2), &isBuild);
    const quint32 number = major << 24 | minor << 16 | build;
    const bool hasThree = parts.size() == 3 && isMajor && isMinor && isBuild;

    NTypes::uVersion_t version = versionOf(untouched);
    require(CStr::stringToVersion(text, version) == hasThree, "exactly three numbers are a version", text);
    require(version.value == (hasThree ? number : untouched), "without success nothing is changed", text);
    NTypes::sVersion_t record = versionOf(untouched).version;
    require(CStr::stringToVersion(text, record) == hasThree && record.major == version.version.major
                && record.minor == version.version.minor && record.build == version.version.build,
            "record and number are read alike", text);

    bool ok = true;
    const quint32 loose = CStr::stringToVersion(text, &ok).value;
    const bool hasTwo = parts.size() == 2 && isMajor && isMinor;
    require(ok == (hasTwo || hasThree), "two numbers are a version without build", text);
    const bool isCounted = parts.size() == 2 || parts.size() == 3;
    require(loose
                == (!isCounted || !isMajor ? 0
                    : !isMinor             ? major << 24
                    : parts.size() == 2    ? major << 24 | minor << 16
                                           : number),
            "the parts before the failing one are read", text);
    require(loose == CStr::stringToVersion(text).value, "the flag is not needed", text);
}

void checkFourPartsText(const QString &text)
{
    NTypes::sVersion4x8_t version{};
    version.first = 0xa5;
    const QStringList parts = text.split(QLatin1Char('.'));
    const bool isVersion =
        parts.size() == 4 && std::all_of(parts.begin(), parts.end(), [](const QString &part) {
            bool ok = false;
            CStr::strToU8(part, &ok);
            return ok;
        });
    require(CStr::stringToVersion(text, version) == isVersion, "four numbers of a byte are a version", text);
    require(isVersion || (version.first == 0xa5 && version.fourth == 0), "without success nothing is changed",
            text);
    require(!isVersion
                || (version.first == CStr::strToU8(parts[0]) && version.second == CStr::strToU8(parts[1])
                    && version.third == CStr::strToU8(parts[2]) && version.fourth == CStr::strToU8(parts[3])),
            "the first part is the highest byte", text);
}

template<typename Revision>
void checkRevisionText(const QString &text)
{
    constexpr int bits = 4 * sizeof(Revision);
    constexpr auto untouched = static_cast<Revision>(0xa5a5a5a5);
    int major = -1;
    int minor = -1;
    const bool isSplit = CStr::_splitStringAtDot(text, major, minor);
    const auto fits = [](int number) { return number >= 0 && number < 1 << bits; };
    Revision revision = untouched;
    const bool isRevision = CStr::stringToRevision(text, revision);
    require(isRevision == (isSplit && fits(major) && fits(minor)), "both numbers fit or it is none", text);
    require(revision
                == (isRevision ? static_cast<Revision>(static_cast<quint32>(major) << bits
                                                       | static_cast<quint32>(minor))
                               : untouched),
            "without success nothing is changed", text);
}

void checkSplitText(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char('.'));
    int major = -1;
    int minor = -1;
    const bool isSplit = CStr::_splitStringAtDot(text, major, minor);
    if (parts.size() > 2)
        return require(!isSplit && major == -1 && minor == -1, "two points are no split", text);
    bool ok = false;
    const qlonglong last = parts.last().toInt(&ok);
    require(isSplit == ok, "the last number decides", text);
    require(major == parts.first().toInt() && minor == (parts.size() == 2 ? last : 0),
            "what is no number is 0", text);
}

} // namespace

void traverseVersionTexts(const QByteArray &input)
{
    const QString text = InputReader(input).takeText();
    InputReader reader(input);
    const auto number = reader.take<quint32>();
    checkVersion(number, reader.takeChoice(64) - 8);
    checkFourParts(number);
    checkRevision<unsigned int>(number);
    checkRevision<unsigned short>(static_cast<quint16>(number));
    checkIdentCode(number);

    const std::size_t size = sizeof(QChar) * static_cast<std::size_t>(text.size());
    bounded(65536 + 128 * size, "a text costs memory in proportion to it", [&text] {
        NTypes::uVersion_t version{};
        unsigned int revision = 0;
        CStr::stringToVersion(text, version);
        CStr::stringToVersion(text);
        CStr::stringToRevision(text, revision);
        CStr::hexCodeToIdentCode(text);
    });
    checkVersionText(text);
    checkFourPartsText(text);
    checkSplitText(text);
    checkRevisionText<unsigned int>(text);
    checkRevisionText<unsigned short>(text);
    checkIdentCode(CStr::hexCodeToIdentCode(text).value);
}
