#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace lore {

/// Runs work beside the caller, on at most so many threads that are kept, and begins it in the order in which it comes;
/// where the system gives none of them, on the thread of the caller, at once. One thread is the caller of all members.
class WorkBeside {
public:
    explicit WorkBeside(size_t mostThreads = 1) : mostThreads_(mostThreads) {}
    /// Waits until all is done.
    ~WorkBeside();
    WorkBeside(const WorkBeside&) = delete;
    WorkBeside& operator=(const WorkBeside&) = delete;

    void Run(std::function<void()> work);
    /// Forgets what hasn't begun.
    void Forget();
    /// Waits until all is done.
    void Wait();

private:
    void Help();
    void RunFirst(std::unique_lock<std::mutex>& lock);

    const size_t mostThreads_;
    std::mutex mutex_;  // of what stands below, but the threads
    std::condition_variable changed_;
    std::deque<std::function<void()>> waiting_;
    size_t atWork_ = 0;
    bool isOver_ = false;
    std::vector<std::jthread> threads_;
};

}  // namespace lore
