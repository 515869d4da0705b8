#pragma once

#include <cstddef>
#include <functional>
#include <future>
#include <memory>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

namespace lore {

/// At most `count` threads that run `work` beside the caller, who does the same: a system that gives fewer leaves the
/// rest to the caller. Their ends are waited for where the result goes.
std::vector<std::jthread> StartHelpers(size_t count, const std::function<void()>& work);

/// Runs `work` on another thread; where the system gives none, on that of the caller once it asks for the result. Such
/// a future is deferred: whoever waits for a time asks whether that ran out, never whether the result is ready.
template <typename Work>
auto RunOnHelper(Work&& work) {
    // A refused start has taken what is moved into it already; the deferred one would run without it.
    const auto shared = std::make_shared<std::decay_t<Work>>(std::forward<Work>(work));
    const auto run = [shared] { return (*shared)(); };
    return std::async(std::launch::async | std::launch::deferred, run);
}

}  // namespace lore
