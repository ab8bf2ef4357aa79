// SPDX-License-Identifier: MIT
#ifndef THREADS_H
#define THREADS_H

#include <atomic>
#include <cstddef>
#include <thread>
#include <vector>

// More than the machine has processors, so that threads are interrupted, too.
constexpr int threadCount = 8;

// Runs work(0) ... work(7) in eight threads. None begins before all are there, so that what they do first
// they do at once. The threads are the standard library's: a thread sanitizer follows their synchronisation
// even where it cannot see into Qt's.
template<typename Work>
void inThreads(Work work)
{
    std::atomic<int> arrived{0};
    std::vector<std::thread> threads;
    threads.reserve(static_cast<std::size_t>(threadCount));
    for (int i = 0; i < threadCount; ++i) {
        threads.emplace_back([&arrived, &work, i] {
            ++arrived;
            while (arrived < threadCount)
                std::this_thread::yield();
            work(i);
        });
    }
    for (std::thread &thread : threads)
        thread.join();
}

#endif // THREADS_H
