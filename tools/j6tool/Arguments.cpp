// SPDX-License-Identifier: MIT
#include "Arguments.h"

#include "VisibleText.h"

#include <QSet>

namespace j6tool {

QString shownWord(const QString &word, const QStringList &words)
{
    return words.contains(QStringLiteral("code")) ? QStringLiteral("a word (not shown)") : quoted(word);
}

Error callError(const QString &what)
{
    return Error{QStringLiteral("j6tool: %1").arg(what)};
}

Error callError(const QString &key, const QString &what)
{
    return callError(QStringLiteral("%1: %2").arg(visible(key), what));
}

Result<Arguments> Arguments::fromWords(const QStringList &words)
{
    QStringList parsedWords = words;
    Arguments arguments(&parsedWords);
    QSet<QString> seenKeys;
    for (const QString &word : words) {
        const int keyLength = word.indexOf(QLatin1Char('='));
        const QString key = word.left(keyLength);
        // Undecodable bytes arrive as this character; no file or value may be named by them.
        if (word.contains(QChar(QChar::ReplacementCharacter)))
            return callError(QStringLiteral("%1 is not UTF-8").arg(shownWord(word, words)));
        if (keyLength == 0)
            return callError(QStringLiteral("%1 has no key").arg(shownWord(word, words)));
        if (keyLength > 0 && seenKeys.contains(key))
            return callError(key, QStringLiteral("is given twice"));
        if (keyLength > 0) {
            seenKeys.insert(key);
            arguments.mKeys.append(key);
        } else if (arguments.mCommand.isEmpty()) {
            arguments.mCommand = word;
        } else {
            arguments.mOperands.append(word);
        }
    }
    return arguments;
}

} // namespace j6tool
