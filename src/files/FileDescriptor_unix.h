// SPDX-License-Identifier: MIT
#ifndef FILEDESCRIPTOR_UNIX_H
#define FILEDESCRIPTOR_UNIX_H

#include <cerrno>
#include <utility>

#include <unistd.h>

// Owns the number of an open file; below zero there is none.
class FileDescriptor
{
public:
    explicit FileDescriptor(int number = -1) : mNumber(number) {}
    FileDescriptor(FileDescriptor &&other) noexcept : mNumber(std::exchange(other.mNumber, -1)) {}
    FileDescriptor(const FileDescriptor &other) = delete;
    FileDescriptor &operator=(const FileDescriptor &other) = delete;
    FileDescriptor &operator=(FileDescriptor &&other) noexcept
    {
        std::swap(mNumber, other.mNumber);
        return *this;
    }
    ~FileDescriptor() { close(); }

    bool isOpen() const { return mNumber >= 0; }
    int number() const { return mNumber; }

    // Whether all that was written is where it survives a power failure, or nothing is kept there at all.
    bool sync() const { return fsync(mNumber) == 0 || errno == EINVAL; }

    // Whether all that was written has been taken by the file system.
    bool close()
    {
        const int number = std::exchange(mNumber, -1);
        return number < 0 || ::close(number) == 0;
    }

private:
    int mNumber;
};

#endif // FILEDESCRIPTOR_UNIX_H
