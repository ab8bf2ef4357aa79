// SPDX-License-Identifier: MIT
#include "Commands.h"
#include "VisibleText.h"

#include <j6Core_version.h>

#include <algorithm>
#include <cstring>

namespace j6tool {

namespace {

constexpr const char *overviewTail =
    "\n"
    "'j6tool help COMMAND' explains a command.\n"
    "\n"
    "A parameter list is CSV (RFC 4180) in UTF-8 with the header row\n"
    "index,name,type,unit,bytes: an index such as 0x6081 or 0x6081:01, a name, a type\n"
    "by its catalogue name, a unit by its code, and the bytes in hexadecimal in\n"
    "device order. An inventory is the stored form of a device list.\n"
    "\n"
    "Exit codes: 0 done, 1 differences or a refused code, 2 wrong call or bad input.\n"
    "An error is one line on standard error, for CSV 'file:line: field: what is wrong'.\n";

void writeEntry(Output &output, const QString &term, int width, const char *meaning)
{
    output.writeLine(QStringLiteral("  %1  %2").arg(term, -width).arg(QLatin1String(meaning)));
}

void writeOverview(Output &output)
{
    output.writeLine(
        QStringLiteral("j6tool %1: the parameters of servo and spindle drives on the command line")
            .arg(QLatin1String(J6CORE_VERSION_STR)));
    output.write(QStringLiteral("\nUsage: j6tool COMMAND [KEY=VALUE ...]\n\n"));
    std::size_t width = 0;
    for (const Command &command : commands())
        width = std::max(width, std::strlen(command.name));
    for (const Command &command : commands())
        writeEntry(output, QLatin1String(command.name), static_cast<int>(width), command.summary);
    output.write(QLatin1String(overviewTail));
}

QString optionTerm(const Option &option)
{
    return QStringLiteral("%1=%2").arg(QLatin1String(option.key), QLatin1String(option.value));
}

void writeCommand(Output &output, const Command &command)
{
    output.write(
        QStringLiteral("Usage: j6tool %1 %2\n\n%3\n")
            .arg(QLatin1String(command.name), QLatin1String(command.usage), QLatin1String(command.summary)));
    int width = 0;
    for (const Option &option : command.options)
        width = std::max(width, option.key == nullptr ? 0 : optionTerm(option).size());
    output.write(width > 0 ? QStringLiteral("\n") : QString());
    for (const Option &option : command.options) {
        if (option.key != nullptr)
            writeEntry(output, optionTerm(option), width, option.meaning);
    }
    if (*command.details != '\0')
        output.write(QLatin1Char('\n') + QLatin1String(command.details));
}

} // namespace

Result<ExitCode> runHelp(const Arguments &arguments, Output &output)
{
    if (arguments.operands().isEmpty()) {
        writeOverview(output);
        return Done;
    }
    const QString name = arguments.operands().first();
    const Command *command = findCommand(name);
    if (command == nullptr)
        return callError(QStringLiteral("%1 is no command ('j6tool help' lists them)").arg(quoted(name)));
    writeCommand(output, *command);
    return Done;
}

} // namespace j6tool
