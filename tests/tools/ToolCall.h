// SPDX-License-Identifier: MIT
#ifndef TOOLCALL_H
#define TOOLCALL_H

#include <QByteArray>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

// The command as a process, for the tests of what goes in, what comes out and how it ends.
namespace ToolCall {

inline constexpr int timeout = 600000; // milliseconds; a checker of memory use may run between

struct Outcome
{
    int exitCode = -1;
    QByteArray output;
    QByteArray error;
};

inline QByteArray contentsOf(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(cannot be read)");
}

// The stored output of a call, reviewed by hand.
inline QByteArray expectedOutput(const QString &name)
{
    return contentsOf(QStringLiteral(J6TOOL_EXPECTED "/%1.txt").arg(name));
}

inline QStringList words(const char *line)
{
    return QString::fromUtf8(line).split(QLatin1Char('|'));
}

// With files of the directory by their bare names, as the stored outputs name them.
inline Outcome callIn(const QString &directory, const QStringList &arguments,
                      const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment())
{
    QProcess process;
    process.setWorkingDirectory(directory);
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(J6TOOL_PROGRAM), arguments);
    if (!process.waitForFinished(timeout) || process.exitStatus() != QProcess::NormalExit)
        return {-1, {}, process.errorString().toUtf8()};
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

// What the tool prints is UTF-8.
struct TextOutcome
{
    int exitCode = -1;
    QString output;
    QString error;
};

inline TextOutcome asText(const Outcome &outcome)
{
    return {outcome.exitCode, QString::fromUtf8(outcome.output), QString::fromUtf8(outcome.error)};
}

// What the system says of a file whose directory is not there.
inline QString noDirectoryText()
{
#ifdef Q_OS_WIN
    constexpr int pathNotFound = 3;
    return qt_error_string(pathNotFound);
#else
    return QStringLiteral("No such file or directory");
#endif
}

// In the directory of the examples.
inline Outcome call(const QStringList &arguments)
{
    return callIn(QStringLiteral(J6TOOL_EXAMPLES), arguments);
}

inline bool write(const QString &fileName, const QByteArray &contents)
{
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size();
}

} // namespace ToolCall

#endif // TOOLCALL_H
