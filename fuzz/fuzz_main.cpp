// SPDX-License-Identifier: MIT
// The fuzzer of one topic, J6CORE_FUZZ_TOPIC: libFuzzer's main() calls what is here.
#include "Traversals.h"

#include <AllocationCounter.h>
#include <Properties.h>

#include <QLoggingCategory>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <string_view>
#include <vector>

namespace {

const Traversal &traversal()
{
    constexpr std::string_view topic = J6CORE_FUZZ_TOPIC;
    static const Traversal *const found =
        std::find_if(traversals.begin(), traversals.end(),
                     [topic](const Traversal &candidate) { return candidate.topic == topic; });
    if (found == traversals.end()) {
        std::fputs("There is no traversal " J6CORE_FUZZ_TOPIC "\n", stderr);
        std::abort();
    }
    return *found;
}

// What a traversal of so many bytes may take, all its calls together: more than ten times what the slowest
// inputs take, so that a busy machine is no finding, and less than a nanosecond for each pair of bytes.
constexpr double allowedSeconds(int size)
{
    constexpr double always = 0.5;
    constexpr double perByte = 25e-6;
    return always + perByte * size;
}

// The time that this thread has had on a processor.
double threadSeconds()
{
    timespec now = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

void traverseInTime(const QByteArray &input)
{
    const double start = threadSeconds();
    traversal().traverse(input);
    const double seconds = threadSeconds() - start;
    require(seconds <= allowedSeconds(input.size()), "the time is in proportion to the input",
            QStringLiteral("%1 s").arg(seconds));
}

// Warnings about hostile inputs are what a program would print; here they would only cost time.
void ignoreLine(QtMsgType, const QMessageLogContext &, const QString &) {}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    if (!AllocationCounter::isAvailable()) {
        std::fputs("Allocations are not seen: no bound of memory would be checked\n", stderr);
        std::abort();
    }
    qputenv("TZ", localZone);
    qInstallMessageHandler(ignoreLine);
    static std::vector<char *> arguments(*argv, *argv + *argc);
    // Before those of the caller, who may want another one.
    static std::string longestInput = "-max_len=" + std::to_string(traversal().longestInput);
    arguments.insert(arguments.begin() + 1, longestInput.data());
    if (traversal().fillsCaches) {
        static char withoutLeaks[] = "-detect_leaks=0";
        arguments.push_back(withoutLeaks);
    }
    *argc = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    *argv = arguments.data();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    try {
        traverseInTime(QByteArray(reinterpret_cast<const char *>(data), static_cast<int>(size)));
    } catch (const PropertyViolated &violation) {
        std::fprintf(stderr, "Violated: %s\n", violation.what());
        std::abort();
    }
    return 0;
}
