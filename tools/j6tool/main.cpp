// SPDX-License-Identifier: MIT
#include "Arguments.h"
#include "Commands.h"
#include "Output.h"
#include "ProcessSetup.h"

#include <QCoreApplication>
#include <QFile>
#include <QLocale>
#include <QTextCodec>

#include <clocale>
#include <cstdio>

namespace j6tool {

namespace {

// Arguments, file names and output are UTF-8 and numbers are in the C locale whatever the user's environment
// says: the same call must give the same bytes on every machine.
void fixTextForms()
{
    constexpr int utf8Mib = 106;
    QTextCodec::setCodecForLocale(QTextCodec::codecForMib(utf8Mib));
    QLocale::setDefault(QLocale::c());
    std::setlocale(LC_ALL, "C");
}

Result<ExitCode> runCommand(const QStringList &words, Output &output)
{
    const Result<Arguments> arguments = Arguments::fromWords(words);
    if (!arguments)
        return arguments.error();
    const bool isCallForHelp =
        arguments->command() == QLatin1String("--help") || arguments->command() == QLatin1String("-h");
    const QString name = isCallForHelp ? QStringLiteral("help") : arguments->command();
    if (name.isEmpty())
        return callError(QStringLiteral("no command is given ('j6tool help' lists them)"));
    const Command *command = findCommand(name);
    if (command == nullptr)
        return callError(
            QStringLiteral("%1 is no command ('j6tool help' lists them)").arg(shownWord(name, words)));
    if (const std::optional<Error> error = checkCall(*command, *arguments))
        return *error;
    return command->run(*arguments, output);
}

int run(const QStringList &words)
{
    // Output buffers itself; a second buffer would hide that a write has failed.
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    QFile standardOutput;
    standardOutput.open(stdout, QIODevice::WriteOnly | QIODevice::Unbuffered);
    Output output(standardOutput);
    const Result<ExitCode> result = runCommand(words, output);
    const std::optional<Error> error = result ? output.flush() : result.error();
    if (!error)
        return *result;
    std::fprintf(stderr, "%s\n", error->text.toUtf8().constData());
    return Failed;
}

} // namespace

} // namespace j6tool

int main(int argc, char *argv[])
{
    j6tool::prepareProcess();
    const QCoreApplication application(argc, argv);
    j6tool::fixTextForms();
    return j6tool::run(QCoreApplication::arguments().mid(1));
}
