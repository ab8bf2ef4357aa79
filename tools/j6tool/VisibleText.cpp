// SPDX-License-Identifier: MIT
#include "VisibleText.h"

#include <QChar>

#include <algorithm>
#include <array>

namespace j6tool {

namespace {

constexpr int quotedWidth = 60;

bool isPlainAscii(uint codePoint)
{
    return codePoint >= 0x20 && codePoint < 0x7F;
}

bool isPrintable(uint codePoint)
{
    if (isPlainAscii(codePoint))
        return true;
    const QChar::Category category = QChar::category(codePoint);
    return QChar::isPrint(codePoint) && category != QChar::Separator_Line
           && category != QChar::Separator_Paragraph;
}

// Calls function(codePoint) in order; a lone surrogate is passed as its own number.
template<typename Function>
void forEachCodePoint(const QString &text, Function function)
{
    for (int i = 0; i < text.size(); ++i) {
        const QChar unit = text.at(i);
        const bool isPair = unit.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        function(isPair ? QChar::surrogateToUcs4(unit, text.at(i + 1)) : uint(unit.unicode()));
        i += isPair ? 1 : 0;
    }
}

void appendCodePoint(QString &text, uint codePoint)
{
    if (QChar::requiresSurrogates(codePoint))
        text += QChar(QChar::highSurrogate(codePoint));
    text += QChar(QChar::requiresSurrogates(codePoint) ? QChar::lowSurrogate(codePoint) : ushort(codePoint));
}

QString hexEscape(QChar letter, uint number, int digits)
{
    return QLatin1Char('\\') + letter + QStringLiteral("%1").arg(number, digits, 16, QLatin1Char('0'));
}

QString escape(uint codePoint)
{
    switch (codePoint) {
    case '\\':
        return QStringLiteral("\\\\");
    case '\n':
        return QStringLiteral("\\n");
    case '\r':
        return QStringLiteral("\\r");
    case '\t':
        return QStringLiteral("\\t");
    default:
        break;
    }
    if (codePoint < 0x100)
        return hexEscape(QLatin1Char('x'), codePoint, 2);
    return codePoint < 0x10000 ? hexEscape(QLatin1Char('u'), codePoint, 4)
                               : hexEscape(QLatin1Char('U'), codePoint, 8);
}

struct CodePointRange
{
    uint first;
    uint last;
};

// Unicode's East Asian Width W and F, joined where what lies between is unassigned or rare.
constexpr std::array<CodePointRange, 14> wideRanges = {{
    {0x1100, 0x115F},   // Hangul initial consonants
    {0x2E80, 0x303E},   // CJK radicals to CJK punctuation
    {0x3041, 0x33FF},   // kana to CJK compatibility
    {0x3400, 0x4DBF},   // ideographs, extension A
    {0x4E00, 0x9FFF},   // ideographs
    {0xA000, 0xA4CF},   // Yi
    {0xAC00, 0xD7A3},   // Hangul syllables
    {0xF900, 0xFAFF},   // compatibility ideographs
    {0xFE30, 0xFE6F},   // vertical and small forms
    {0xFF01, 0xFF60},   // fullwidth forms
    {0xFFE0, 0xFFE6},   // fullwidth signs
    {0x1F300, 0x1F64F}, // pictographs
    {0x1F900, 0x1F9FF}, // supplementary pictographs
    {0x20000, 0x3FFFD}, // ideographs, further extensions
}};

int columns(uint codePoint)
{
    if (isPlainAscii(codePoint))
        return 1;
    const QChar::Category category = QChar::category(codePoint);
    if (category == QChar::Mark_NonSpacing || category == QChar::Mark_Enclosing)
        return 0;
    const bool isWide = std::any_of(wideRanges.begin(), wideRanges.end(), [codePoint](CodePointRange range) {
        return range.first <= codePoint && codePoint <= range.last;
    });
    return isWide ? 2 : 1;
}

void appendPrintableJson(QString &json, uint codePoint)
{
    if (isPrintable(codePoint)) {
        appendCodePoint(json, codePoint);
    } else if (QChar::requiresSurrogates(codePoint)) {
        json += hexEscape(QLatin1Char('u'), QChar::highSurrogate(codePoint), 4);
        json += hexEscape(QLatin1Char('u'), QChar::lowSurrogate(codePoint), 4);
    } else {
        json += hexEscape(QLatin1Char('u'), codePoint, 4);
    }
}

void appendJson(QString &json, uint codePoint)
{
    if (codePoint == '"' || codePoint == '\\')
        json += QLatin1Char('\\') + QChar(codePoint);
    else
        appendPrintableJson(json, codePoint);
}

} // namespace

QString visible(const QString &text)
{
    QString shown;
    shown.reserve(text.size());
    forEachCodePoint(text, [&shown](uint codePoint) {
        if (codePoint != '\\' && isPrintable(codePoint))
            appendCodePoint(shown, codePoint);
        else
            shown += escape(codePoint);
    });
    return shown;
}

QString quoted(const QString &text)
{
    // Cut before the escapes are made, too: the text may be as long as a file.
    return QLatin1Char('\'') + cutToWidth(visible(text.left(quotedWidth + 1)), quotedWidth)
           + QLatin1Char('\'');
}

int displayWidth(const QString &text)
{
    int width = 0;
    forEachCodePoint(text, [&width](uint codePoint) { width += columns(codePoint); });
    return width;
}

QString cutToWidth(const QString &text, int width)
{
    if (displayWidth(text) <= width)
        return text;
    QString cut;
    int used = 0;
    forEachCodePoint(text, [&](uint codePoint) {
        used += columns(codePoint);
        if (used < width)
            appendCodePoint(cut, codePoint);
    });
    return cut + QChar(0x2026);
}

QString jsonString(const QString &text)
{
    QString json(QLatin1Char('"'));
    forEachCodePoint(text, [&json](uint codePoint) { appendJson(json, codePoint); });
    return json + QLatin1Char('"');
}

QString visibleJson(const QString &json)
{
    QString shown;
    shown.reserve(json.size());
    forEachCodePoint(json, [&shown](uint codePoint) { appendPrintableJson(shown, codePoint); });
    return shown;
}

QString csvField(const QString &text)
{
    const auto needsQuotes = [](QChar c) {
        return c == QLatin1Char(',') || c == QLatin1Char('"') || c == QLatin1Char('\r')
               || c == QLatin1Char('\n');
    };
    if (std::none_of(text.begin(), text.end(), needsQuotes))
        return text;
    QString doubled = text;
    doubled.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + doubled + QLatin1Char('"');
}

} // namespace j6tool
