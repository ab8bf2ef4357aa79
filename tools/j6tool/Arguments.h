// SPDX-License-Identifier: MIT
#ifndef J6TOOL_ARGUMENTS_H
#define J6TOOL_ARGUMENTS_H

#include "Result.h"

#include <CCommandLineParser.h>

#include <QString>
#include <QStringList>

namespace j6tool {

// An error of the call itself: "j6tool: what is wrong", or "j6tool: key: what is wrong".
Error callError(const QString &what);
Error callError(const QString &key, const QString &what);

// The word of a call in quotes. Not in a call for a code: whatever is wrong with the word, it may be the key.
QString shownWord(const QString &word, const QStringList &words);

/*
 * The words of a call: the first bare one is the command, further bare ones are its operands, all others are
 * options of the form key=value. CCommandLineParser holds the options. What it would pass over in silence is
 * an error here: a word that begins with "=" and a key that is given twice.
 */
class Arguments
{
public:
    // The words behind the program's path.
    static Result<Arguments> fromWords(const QStringList &words);

    const QString &command() const { return mCommand; } // empty when there is none
    const QStringList &operands() const { return mOperands; }
    const QStringList &keys() const { return mKeys; } // in the order of the call

    bool contains(const QString &key) const { return mOptions.contains(key); }
    QString value(const QString &key) const { return mOptions.value(key); }
    // The option "lang"; without it the C locale.
    QLocale language() const { return mOptions.language(); }

private:
    explicit Arguments(QStringList *words) : mOptions(words) {}

    QString mCommand;
    QStringList mOperands;
    QStringList mKeys;
    CCommandLineParser mOptions;
};

} // namespace j6tool

#endif // J6TOOL_ARGUMENTS_H
