// SPDX-License-Identifier: MIT
#ifndef FAULT_H
#define FAULT_H

#include <array>
#include <atomic>
#include <climits>
#include <cstddef>

// What a process does to files and what may go wrong with it.
namespace faults {

// The kinds of file operations. Each stands for all functions of the C library that do this.
enum class Operation {
    Open,
    Read,
    Write,
    Sync,
    Close,
    Rename,
    Link,
    Remove,
    MakeDirectory,
    Resize,
    LookUp, // the state of a file, whether it may be used, where a link leads
    Seek,
    CopyData, // within the system, from file to file
    SetMode,
    SetTimes,
    List,
    Lock
};

inline constexpr std::array<const char *, 17> operationNames = {
    {"open", "read", "write", "sync", "close", "rename", "link", "remove", "make directory", "resize",
     "look up", "seek", "copy data", "set mode", "set times", "list", "lock"}};

inline constexpr std::size_t operationCount = operationNames.size();
static_assert(std::size_t(Operation::Lock) + 1 == operationCount, "each has a name");

enum class Effect {
    Fail,       // with the error, and nothing is done; of a close: it is done, and fails
    Halve,      // a read or a write of half the bytes, which is no error
    Shrink,     // another program has cut the file that is about to be read to half of what it was
    KillBefore, // the process ends without notice where the operation would begin
    KillMidway, // ... when half of the bytes are read or written
    KillAfter   // ... when it is done
};

// The operation of this kind that is hit, counted from 1.
struct Fault
{
    Operation operation = Operation::Open;
    int number = 0;            // 0: none is
    bool persistently = false; // so are all of this kind that follow
    Effect effect = Effect::Fail;
    int error = 0;
};

// What a file system does not do at all.
struct Limits
{
    Fault always = {};       // of another kind than the fault
    bool hidesTypes = false; // a list of its entries does not tell what they are
};

// What is to happen in a process and what has happened. It lies in memory that may be shared with the process
// that watches.
struct Plan
{
    std::array<char, PATH_MAX> directory = {}; // only what is in it, or it itself, is counted and hit
    Fault fault;
    Limits limits;
    std::array<std::atomic<int>, operationCount> counts = {};
    std::atomic<int> hits = 0; // of the first fault
};

} // namespace faults

#endif // FAULT_H
