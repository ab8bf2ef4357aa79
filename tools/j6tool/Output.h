// SPDX-License-Identifier: MIT
#ifndef J6TOOL_OUTPUT_H
#define J6TOOL_OUTPUT_H

#include "Result.h"

#include <QByteArray>
#include <QIODevice>
#include <QString>

#include <optional>

namespace j6tool {

// Buffered UTF-8 text onto a device. A write that fails (a closed pipe, a full disk) is kept and reported by
// flush(); what is written after it is dropped.
class Output
{
public:
    explicit Output(QIODevice &device) : mDevice(device) {}
    ~Output() = default;
    Output(const Output &) = delete;
    Output &operator=(const Output &) = delete;

    void write(const QString &text);
    void writeLine(const QString &text);

    // False once a write has failed: there is no use in producing more.
    bool isGood() const { return !mError; }
    std::optional<Error> flush();

private:
    QIODevice &mDevice;
    QByteArray mBuffer;
    std::optional<Error> mError;
};

} // namespace j6tool

#endif // J6TOOL_OUTPUT_H
