// SPDX-License-Identifier: MIT
#include "CodeCommand.h"

#include "HexText.h"
#include "InputFile.h"
#include "NumberText.h"

#include <CHmac.h>

#include <functional>
#include <limits>

namespace j6tool {

namespace {

constexpr int maxKeyFileSize = 64 * 1024;
// With more, the divisor would no longer be a power of ten; with none, every code would be accepted.
constexpr int mostDigits = 9;
// Each step back is two more codes that a guess can hit and that are computed: its own, and that of the step
// of the far past which the scheme tries in place of the one as far ahead.
constexpr int maxTolerance = 1000;
constexpr quint64 maxShift = std::numeric_limits<quint32>::max();

// No text of these errors holds the key or a part of it, whatever it is.
Result<QByteArray> keyFromText(const QByteArray &text, const std::function<Error(const QString &)> &errorOf)
{
    // With its size: without it a zero byte would end the text, and the key be another one.
    const Result<QByteArray> key = bytesFromHex(QString::fromLatin1(text.constData(), text.size()));
    if (text.isEmpty())
        return errorOf(QStringLiteral("is empty"));
    if (!key)
        return errorOf(QStringLiteral("is not an even number of hexadecimal digits"));
    return *key;
}

Result<QByteArray> keyOfFile(const QString &fileName)
{
    const Result<QByteArray> contents = readInput(fileName, maxKeyFileSize);
    if (!contents)
        return contents.error();
    return keyFromText(contents->trimmed(),
                       [&fileName](const QString &what) { return fileError(fileName, what); });
}

Result<QByteArray> keyOption(const Arguments &arguments)
{
    const QString key = QStringLiteral("key");
    const QString keyFile = QStringLiteral("keyfile");
    if (arguments.contains(key) == arguments.contains(keyFile))
        return callError(QStringLiteral("either key or keyfile must be given"));
    if (arguments.contains(keyFile) && arguments.value(keyFile).isEmpty())
        return callError(keyFile, QStringLiteral("is empty"));
    if (arguments.contains(keyFile))
        return keyOfFile(arguments.value(keyFile));
    return keyFromText(arguments.value(key).toUtf8(),
                       [&key](const QString &what) { return callError(key, what); });
}

// What both sides of a code agree on, and how far a code may lie back.
struct CodeTerms
{
    QByteArray key;
    quint64 t0 = 0;
    quint32 step = 0;
    int digits = 0;
    quint32 tolerance = 0;
};

// Reads the options of a call one after the other; the first error stays.
class TermsReader
{
public:
    explicit TermsReader(const Arguments &arguments) : mArguments(arguments) {}

    Result<CodeTerms> read()
    {
        const Result<QByteArray> key = keyOption(mArguments);
        if (!key)
            return key.error();
        CodeTerms terms;
        terms.key = *key;
        terms.step = quint32(number("step", 30, 1, std::numeric_limits<quint32>::max()));
        terms.digits = int(number("digits", 6, 1, mostDigits));
        terms.t0 = startOfTime();
        terms.tolerance = quint32(number("tolerance", 1, 0, maxTolerance));
        checkShift(terms);
        if (mError)
            return *mError;
        return terms;
    }

private:
    qint64 number(const char *option, qint64 byDefault, qint64 lowest, qint64 highest)
    {
        const QString key = QLatin1String(option);
        if (!mArguments.contains(key))
            return byDefault;
        const Result<qint64> number = integerFromText(mArguments.value(key), lowest, highest);
        if (!number)
            fail(key, number.error().text);
        return number ? *number : lowest;
    }

    quint64 startOfTime()
    {
        const QString key = QStringLiteral("t0");
        if (!mArguments.contains(key))
            return 0;
        const Result<quint64> number =
            cardinalFromText(mArguments.value(key), std::numeric_limits<quint64>::max());
        if (!number)
            fail(key, number.error().text);
        return number ? *number : 0;
    }

    // The peers compute in 32 bits how many seconds a step lies back; beyond, another step would be accepted.
    void checkShift(const CodeTerms &terms)
    {
        const QString key = QStringLiteral("tolerance");
        if (mArguments.contains(key) && !mArguments.contains(QStringLiteral("check")))
            fail(key, QStringLiteral("needs the option 'check'"));
        if (quint64(terms.step) * terms.tolerance > maxShift)
            fail(key, QStringLiteral("%1 steps of %2 s are more than %3 s")
                          .arg(terms.tolerance)
                          .arg(terms.step)
                          .arg(maxShift));
    }

    void fail(const QString &key, const QString &what)
    {
        if (!mError)
            mError = callError(key, what);
    }

    const Arguments &mArguments;
    std::optional<Error> mError;
};

Result<ExitCode> checkCode(const CodeFunctions &functions, const CodeTerms &terms, const QString &code,
                           Output &output)
{
    if (code.size() != terms.digits) {
        return callError(QStringLiteral("check"),
                         QStringLiteral("the code has %1 characters where %2 are agreed")
                             .arg(code.size())
                             .arg(terms.digits));
    }
    const int verdict =
        functions.validate(code, terms.key, terms.t0, terms.step, terms.digits, terms.tolerance);
    if (verdict == 0) {
        output.writeLine(QStringLiteral("accepted"));
        return Done;
    }
    const QString present =
        QStringLiteral("refused: the code is not that of the present step of %1 s").arg(terms.step);
    const QString before = QStringLiteral(", nor of the last %1 before it").arg(terms.tolerance);
    output.writeLine(terms.tolerance == 0 ? present : present + before);
    return Refused;
}

} // namespace

Result<ExitCode> runCodeWith(const CodeFunctions &functions, const Arguments &arguments, Output &output)
{
    const Result<CodeTerms> terms = TermsReader(arguments).read();
    if (!terms)
        return terms.error();
    const QString check = QStringLiteral("check");
    if (arguments.contains(check))
        return checkCode(functions, *terms, arguments.value(check), output);
    output.writeLine(functions.code(terms->key, terms->t0, terms->step, terms->digits));
    return Done;
}

Result<ExitCode> runCode(const Arguments &arguments, Output &output)
{
    return runCodeWith({CHmac::totpStr, CHmac::validateTotp}, arguments, output);
}

} // namespace j6tool
