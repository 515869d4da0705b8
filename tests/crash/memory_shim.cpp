// Stands between a program and the memory of the system: lets one allocation fail, or every one from it on. Loaded with
// LD_PRELOAD; told by the environment:
//
//   LORE_MEMORY_AT       number of the allocation, from 1; none: nothing fails
//   LORE_MEMORY_LASTING  every one from that one on fails
//   LORE_MEMORY_COUNT    file that gets the number of allocations when the program ends

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

extern "C" {
// The C library's own, under the names that it has for this purpose.
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* place, size_t size);
void* __libc_memalign(size_t alignment, size_t size);
}

namespace {

// Neither may have a constructor: the first allocations come before any runs.
std::atomic<long> calls{0};
constinit long at = 0;
constinit bool lasting = false;

/// Reads the orders, without a single allocation, ahead of every library that this one doesn't need.
__attribute__((constructor(101))) void TakeOrders() {
    const char* const number = std::getenv("LORE_MEMORY_AT");
    at = number ? std::atol(number) : 0;
    lasting = std::getenv("LORE_MEMORY_LASTING") != nullptr;
    calls = 0;
}

__attribute__((destructor)) void TellCount() {
    const char* const path = std::getenv("LORE_MEMORY_COUNT");
    if (!path)
        return;
    char line[32];
    const int length = std::snprintf(line, sizeof line, "%ld\n", calls.load());
    const int file = ::open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    [[maybe_unused]] const ssize_t ignored = ::write(file, line, static_cast<size_t>(length));
    ::close(file);
}

bool Fails() {
    const long number = ++calls;
    const bool fails = at > 0 && (number == at || (lasting && number > at));
    if (fails)
        errno = ENOMEM;
    return fails;
}

}  // namespace

extern "C" {

void* malloc(size_t size) noexcept {
    return Fails() ? nullptr : __libc_malloc(size);
}

void* calloc(size_t count, size_t size) noexcept {
    return Fails() ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* place, size_t size) noexcept {
    return Fails() ? nullptr : __libc_realloc(place, size);
}

void* memalign(size_t alignment, size_t size) noexcept {
    return Fails() ? nullptr : __libc_memalign(alignment, size);
}

void* aligned_alloc(size_t alignment, size_t size) noexcept {
    return Fails() ? nullptr : __libc_memalign(alignment, size);
}

int posix_memalign(void** place, size_t alignment, size_t size) noexcept {
    if (Fails())
        return ENOMEM;
    *place = __libc_memalign(alignment, size);
    return *place ? 0 : ENOMEM;
}

}  // extern "C"
