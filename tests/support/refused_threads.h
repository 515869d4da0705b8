#pragma once

#include <atomic>
#include <cerrno>
#include <dlfcn.h>
#include <pthread.h>
#include <system_error>
#include <thread>

namespace lore {

/// While one lives, the system gives this program no thread. Those that run go on.
class RefusedThreads {
public:
    RefusedThreads() { ++lives; }
    ~RefusedThreads() { --lives; }
    RefusedThreads(const RefusedThreads&) = delete;
    RefusedThreads& operator=(const RefusedThreads&) = delete;

    /// Whether it can be done: a sanitizer that is linked into the program stands in front.
    static bool Work() {
        const RefusedThreads none;
        try {
            std::thread([] {}).join();
        } catch (const std::system_error&) {
            return true;
        }
        return false;
    }

    static inline std::atomic<int> lives = 0;
    static inline std::atomic<int> refused = 0;  ///< threads so far
};

}  // namespace lore

// Stands in front of the C library's, for the libraries of the program as well.
extern "C" __attribute__((used)) inline int pthread_create(pthread_t* thread, const pthread_attr_t* attributes,
                                                           void* (*start)(void*), void* argument) noexcept {
    if (lore::RefusedThreads::lives > 0) {
        ++lore::RefusedThreads::refused;
        return EAGAIN;
    }
    static const auto real = reinterpret_cast<decltype(&pthread_create)>(::dlsym(RTLD_NEXT, "pthread_create"));
    return real(thread, attributes, start, argument);
}
