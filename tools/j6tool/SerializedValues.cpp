// SPDX-License-Identifier: MIT
#include "SerializedValues.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>

namespace j6tool {

namespace {

constexpr char otherCharacter = '\x7F'; // stands for any that no marker has
constexpr std::array<const char *, 2> markers = {"@Variant(", "@DateTime("};

// What escapes that are no numbers stand for; Qt drops all others.
constexpr const char *namedEscapes = "\"\"''\?\?\\\\a\ab\bf\fn\nr\rt\tv\v";

// Reads the values of a settings file as QSettings does, except that it keeps no account of where one ends.
class ValueText
{
public:
    explicit ValueText(const QByteArray &ini) : mNext(ini.constData()), mEnd(mNext + ini.size()) {}

    QByteArray read()
    {
        QByteArray text;
        while (mNext != mEnd) {
            const char c = *mNext++;
            if (c == '\\')
                readEscape(text);
            else if (!isPassedOver(c))
                text += c;
        }
        return text;
    }

private:
    // Quotes, blanks, line ends and the three bytes of a UTF-8 mark.
    static bool isPassedOver(char c)
    {
        return c != '\0' && std::strchr("\" \t\r\n\xEF\xBB\xBF", c) != nullptr;
    }

    void readEscape(QByteArray &text)
    {
        if (mNext == mEnd)
            return;
        const char c = *mNext++;
        if (c == 'x' && mNext != mEnd && digit(*mNext) < 16)
            readNumber(text, 16, 0);
        else if (c >= '0' && c <= '7')
            readNumber(text, 8, digit(c));
        else
            readNamed(text, c);
    }

    // As many digits as there are; of the number the low 16 bits count.
    void readNumber(QByteArray &text, unsigned int base, unsigned int number)
    {
        for (; mNext != mEnd && digit(*mNext) < base; ++mNext)
            number = (number * base + digit(*mNext)) & 0xFFFFU;
        text += number < 0x80 ? static_cast<char>(number) : otherCharacter;
    }

    static unsigned int digit(char c)
    {
        static constexpr const char *digits = "0123456789abcdef";
        const char lower = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        const char *const found = lower == '\0' ? nullptr : std::strchr(digits, lower);
        return found == nullptr ? 16 : static_cast<unsigned int>(found - digits);
    }

    static void readNamed(QByteArray &text, char c)
    {
        for (const char *escape = namedEscapes; *escape != '\0'; escape += 2) {
            if (*escape == c)
                text += escape[1];
        }
    }

    const char *mNext;
    const char *mEnd;
};

} // namespace

bool mayHoldSerializedValue(const QByteArray &ini)
{
    const QByteArray text = ValueText(ini).read();
    return std::any_of(markers.begin(), markers.end(),
                       [&text](const char *marker) { return text.contains(marker); });
}

} // namespace j6tool
