// SPDX-License-Identifier: MIT
#ifndef J6TOOL_COMMANDS_H
#define J6TOOL_COMMANDS_H

#include "Arguments.h"
#include "Output.h"
#include "Result.h"
#include "Table.h"

#include <QString>

#include <array>
#include <optional>

namespace j6tool {

enum ExitCode { Done = 0, Differences = 1, Refused = 1, Failed = 2 };

struct Option
{
    const char *key = nullptr;
    const char *value = "";
    bool isRequired = false;
    const char *meaning = "";
};

struct Command
{
    const char *name = "";
    const char *usage = "";
    const char *summary = "";
    std::array<Option, 7> options; // those in use first
    bool takesParameters = false;  // any other key names a parameter
    int maxOperands = 0;
    const char *details = ""; // for help, lines of at most 80 columns
    Result<ExitCode> (*run)(const Arguments &arguments, Output &output) = nullptr;
};

constexpr std::size_t commandCount = 13;
const std::array<Command, commandCount> &commands();

// The command of this name; null when there is none.
const Command *findCommand(const QString &name);

bool hasOption(const Command &command, const QString &key);

// What the call has too much or too little for its command.
std::optional<Error> checkCall(const Command &command, const Arguments &arguments);

// The option "format"; without it the aligned form.
Result<TableFormat> formatOption(const Arguments &arguments);

Result<ExitCode> runShow(const Arguments &arguments, Output &output);
Result<ExitCode> runSet(const Arguments &arguments, Output &output);
Result<ExitCode> runDiff(const Arguments &arguments, Output &output);
Result<ExitCode> runValue(const Arguments &arguments, Output &output);
Result<ExitCode> runTypes(const Arguments &arguments, Output &output);
Result<ExitCode> runUnits(const Arguments &arguments, Output &output);
Result<ExitCode> runCrc(const Arguments &arguments, Output &output);
Result<ExitCode> runDevices(const Arguments &arguments, Output &output);
Result<ExitCode> runCode(const Arguments &arguments, Output &output);
Result<ExitCode> runPaths(const Arguments &arguments, Output &output);
Result<ExitCode> runSettings(const Arguments &arguments, Output &output);
Result<ExitCode> runTar(const Arguments &arguments, Output &output);
Result<ExitCode> runHelp(const Arguments &arguments, Output &output);

} // namespace j6tool

#endif // J6TOOL_COMMANDS_H
