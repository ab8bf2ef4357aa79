// SPDX-License-Identifier: MIT
#include "Output.h"

namespace j6tool {

namespace {

constexpr int bufferSize = 64 * 1024;

} // namespace

void Output::write(const QString &text)
{
    if (mError)
        return;
    mBuffer += text.toUtf8();
    if (mBuffer.size() >= bufferSize)
        flush();
}

void Output::writeLine(const QString &text)
{
    write(text + QLatin1Char('\n'));
}

std::optional<Error> Output::flush()
{
    if (!mError && mDevice.write(mBuffer) != mBuffer.size())
        mError = Error{QStringLiteral("standard output: %1").arg(mDevice.errorString())};
    mBuffer.clear();
    return mError;
}

} // namespace j6tool
