#include "base/work_beside.h"

#include <utility>

#include "base/helper_threads.h"

namespace lore {

WorkBeside::~WorkBeside() {
    {
        const std::lock_guard lock(mutex_);
        isOver_ = true;
    }
    changed_.notify_all();
    threads_.clear();
}

void WorkBeside::Run(std::function<void()> work) {
    {
        const std::lock_guard lock(mutex_);
        waiting_.push_back(std::move(work));
    }
    // One that the system refuses is asked for again with the next work.
    if (threads_.size() < mostThreads_) {
        for (std::jthread& helper : StartHelpers(1, [this] { Help(); }))
            threads_.push_back(std::move(helper));
    }
    if (!threads_.empty())
        return changed_.notify_all();
    std::unique_lock lock(mutex_);
    while (!waiting_.empty())
        RunFirst(lock);
}

void WorkBeside::Forget() {
    const std::lock_guard lock(mutex_);
    waiting_.clear();
}

void WorkBeside::Wait() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return waiting_.empty() && atWork_ == 0; });
}

void WorkBeside::Help() {
    std::unique_lock lock(mutex_);
    while (true) {
        changed_.wait(lock, [this] { return isOver_ || !waiting_.empty(); });
        if (waiting_.empty())
            return;
        RunFirst(lock);
    }
}

void WorkBeside::RunFirst(std::unique_lock<std::mutex>& lock) {
    std::function<void()> work = std::move(waiting_.front());
    waiting_.pop_front();
    ++atWork_;
    lock.unlock();
    work();
    work = nullptr;  // what it holds goes before it counts as done
    lock.lock();
    --atWork_;
    changed_.notify_all();
}

}  // namespace lore
