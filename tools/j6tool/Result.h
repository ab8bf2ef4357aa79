// SPDX-License-Identifier: MIT
#ifndef J6TOOL_RESULT_H
#define J6TOOL_RESULT_H

#include <QString>

#include <utility>
#include <variant>

namespace j6tool {

// What went wrong, as the one line that the user reads: "file:line: field: what is wrong" or a part of it.
struct Error
{
    QString text;
};

// A value, or why there is none.
template<typename T>
class Result
{
public:
    // cppcheck-suppress noExplicitConstructor ; a function returns the one or the other
    Result(T value) : mHeld(std::move(value)) {}
    // cppcheck-suppress noExplicitConstructor ; a function returns the one or the other
    Result(Error error) : mHeld(std::move(error)) {}

    explicit operator bool() const { return std::holds_alternative<T>(mHeld); }
    const T &operator*() const { return *std::get_if<T>(&mHeld); }
    T &operator*() { return *std::get_if<T>(&mHeld); }
    const T *operator->() const { return std::get_if<T>(&mHeld); }
    T *operator->() { return std::get_if<T>(&mHeld); }

    const Error &error() const { return *std::get_if<Error>(&mHeld); }

private:
    std::variant<T, Error> mHeld;
};

} // namespace j6tool

#endif // J6TOOL_RESULT_H
