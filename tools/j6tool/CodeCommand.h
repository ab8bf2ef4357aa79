// SPDX-License-Identifier: MIT
#ifndef J6TOOL_CODECOMMAND_H
#define J6TOOL_CODECOMMAND_H

#include "Commands.h"

#include <QByteArray>
#include <QString>

namespace j6tool {

// The two functions of CHmac that look at the clock. A test puts others in their place, which have a time of
// their own.
struct CodeFunctions
{
    QString (*code)(const QByteArray &key, quint64 t0, quint32 step, int digits);
    // 0 when the code is accepted, else 1; its length is `digits`.
    int (*validate)(const QString &code, const QByteArray &key, quint64 t0, quint32 step, int digits,
                    quint32 tolerance);
};

Result<ExitCode> runCodeWith(const CodeFunctions &functions, const Arguments &arguments, Output &output);

} // namespace j6tool

#endif // J6TOOL_CODECOMMAND_H
