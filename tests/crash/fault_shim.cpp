// Stands between a program and the system: counts the calls that change files below one folder, and kills the process
// before one of them or lets it fail. Loaded with LD_PRELOAD; told by the environment:
//
//   LORE_FAULT_UNDER    the folder
//   LORE_FAULT_LOG      file that gets a line for each call: name, path, second path
//   LORE_FAULT_BYTES    the log also gets the place and the bytes of each write, and whether a file is emptied
//   LORE_FAULT_AT       number of the call, from 1; none: only log
//   LORE_FAULT          KILL, or the number of an error
//   LORE_FAULT_LASTING  every call from that one on fails
//   LORE_FAULT_READS    calls that open a file or a folder to read it, and that read, count too
//
// A test program may hold it as well, and give its orders by FailCallBelow (support/faults.h).

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

const char* Env(const char* name) {
    const char* const value = std::getenv(name);
    return value ? value : "";
}

struct Orders {
    std::string under = Env("LORE_FAULT_UNDER");
    std::string log = Env("LORE_FAULT_LOG");
    long at = std::atol(Env("LORE_FAULT_AT"));
    std::string fault = Env("LORE_FAULT");
    bool lasting = *Env("LORE_FAULT_LASTING") != '\0';
    bool bytes = *Env("LORE_FAULT_BYTES") != '\0';
    bool reads = *Env("LORE_FAULT_READS") != '\0';
    bool everyCall = false;  // those too that look at an open file, go on in a folder or close a file
};

Orders& TheOrders() {
    static Orders orders;
    return orders;
}

std::atomic<long> calls{0};

template <typename Function>
Function Real(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

std::string PathOf(int number) {
    char path[4096];
    const ssize_t length = ::readlink(("/proc/self/fd/" + std::to_string(number)).c_str(), path, sizeof path);
    return length > 0 ? std::string(path, static_cast<size_t>(length)) : std::string();
}

std::string Absolute(const char* path) {
    if (!path || *path == '/')
        return path ? path : "";
    char here[4096];
    return std::string(::getcwd(here, sizeof here) ? here : "") + "/" + path;
}

void Log(const std::string& line) {
    static const auto openFile = Real<int (*)(const char*, int, ...)>("open");
    static const auto writeFile = Real<ssize_t (*)(int, const void*, size_t)>("write");
    if (TheOrders().log.empty())
        return;
    static const int file = openFile(TheOrders().log.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
    [[maybe_unused]] const ssize_t ignored = writeFile(file, line.data(), line.size());
}

/// True if the call must fail, with errno set. A killed process doesn't come back.
bool Strikes(const char* name, const std::string& path, const std::string& second = {}) {
    const Orders& orders = TheOrders();
    if (orders.under.empty() || path.compare(0, orders.under.size(), orders.under) != 0)
        return false;
    const long number = ++calls;
    const bool strikes = orders.at > 0 && (number == orders.at || (orders.lasting && number > orders.at));
    if (!strikes) {
        Log(std::string(name) + "\t" + path + "\t" + second + "\n");
        return false;
    }
    if (orders.fault == "KILL")
        ::kill(::getpid(), SIGKILL);
    Log("FAILED\t" + std::string(name) + "\t" + path + "\n");
    errno = std::atoi(orders.fault.c_str());
    return true;
}

/// The place and the bytes of a write as they stand in the log; nothing unless they are asked for.
std::string Written(off64_t at, const void* bytes, size_t count) {
    if (!TheOrders().bytes)
        return {};
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text = std::to_string(at) + "\t";
    for (size_t i = 0; i < count; ++i) {
        const unsigned char byte = static_cast<const unsigned char*>(bytes)[i];
        text += {kDigits[byte >> 4], kDigits[byte & 15]};
    }
    return text;
}

/// Where the next write of a file lands.
off64_t PlaceOf(int number) {
    const int flags = ::fcntl(number, F_GETFL);
    struct stat info = {};
    if (flags >= 0 && (flags & O_APPEND) != 0 && ::fstat(number, &info) == 0)
        return info.st_size;
    return ::lseek64(number, 0, SEEK_CUR);
}

std::string Written(off64_t at, const struct iovec* parts, int count) {
    std::string bytes;
    for (int i = 0; i < count; ++i)
        bytes.append(static_cast<const char*>(parts[i].iov_base), parts[i].iov_len);
    return Written(at, bytes.data(), bytes.size());
}

std::string Emptied(bool isEmptied) {
    return TheOrders().bytes && isEmptied ? "emptied" : "";
}

mode_t ModeOf(int flags, va_list list) {
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? static_cast<mode_t>(va_arg(list, int)) : 0;
}

bool FailsToOpen(const char* path, int flags) {
    if ((flags & (O_CREAT | O_TRUNC)) != 0)
        return Strikes("create", Absolute(path), Emptied((flags & O_TRUNC) != 0));
    return TheOrders().reads && Strikes("open", Absolute(path));
}

bool FailsToOpen(const char* path, const char* mode) {
    if (std::strchr(mode, 'r') == nullptr)
        return Strikes("create", Absolute(path), Emptied(*mode == 'w'));
    return TheOrders().reads && Strikes("open", Absolute(path));
}

}  // namespace

extern "C" {

// One line for each function of the system: what it gives back, its name, parameters and arguments, what it gives back
// when it fails, and whether it has to.
#define LORE_CALL(result, name, parameters, arguments, failed, strikes) \
    result name parameters {                                            \
        static const auto real = Real<result(*) parameters>(#name);     \
        return (strikes) ? (failed) : real arguments;                   \
    }

LORE_CALL(ssize_t, write, (int number, const void* bytes, size_t count), (number, bytes, count), -1,
          Strikes("write", PathOf(number), Written(PlaceOf(number), bytes, count)))
LORE_CALL(ssize_t, pwrite64, (int number, const void* bytes, size_t count, off64_t at), (number, bytes, count, at), -1,
          Strikes("write", PathOf(number), Written(at, bytes, count)))
LORE_CALL(ssize_t, pwrite, (int number, const void* bytes, size_t count, off_t at), (number, bytes, count, at), -1,
          Strikes("write", PathOf(number), Written(at, bytes, count)))
LORE_CALL(ssize_t, writev, (int number, const struct iovec* parts, int count), (number, parts, count), -1,
          Strikes("write", PathOf(number), Written(PlaceOf(number), parts, count)))
LORE_CALL(int, ftruncate64, (int number, off64_t length), (number, length), -1,
          Strikes("truncate", PathOf(number), std::to_string(length)))
LORE_CALL(int, ftruncate, (int number, off_t length), (number, length), -1,
          Strikes("truncate", PathOf(number), std::to_string(length)))
LORE_CALL(int, fsync, (int number), (number), -1, Strikes("fsync", PathOf(number)))
LORE_CALL(int, fdatasync, (int number), (number), -1, Strikes("fsync", PathOf(number)))
LORE_CALL(int, rename, (const char* from, const char* to), (from, to), -1,
          Strikes("rename", Absolute(from), Absolute(to)))
LORE_CALL(int, renameat2, (int folder, const char* from, int other, const char* to, unsigned flags),
          (folder, from, other, to, flags), -1, Strikes("rename", Absolute(from), Absolute(to)))
LORE_CALL(int, link, (const char* from, const char* to), (from, to), -1, Strikes("link", Absolute(from), Absolute(to)))
LORE_CALL(int, linkat, (int folder, const char* from, int other, const char* to, int flags),
          (folder, from, other, to, flags), -1, Strikes("link", Absolute(from), Absolute(to)))
LORE_CALL(int, unlink, (const char* path), (path), -1, Strikes("unlink", Absolute(path)))
LORE_CALL(int, rmdir, (const char* path), (path), -1, Strikes("unlink", Absolute(path)))
LORE_CALL(int, remove, (const char* path), (path), -1, Strikes("unlink", Absolute(path)))
LORE_CALL(int, unlinkat, (int folder, const char* path, int flags), (folder, path, flags), -1,
          Strikes("unlink", *path == '/' || folder == AT_FDCWD ? Absolute(path) : PathOf(folder) + "/" + path))
LORE_CALL(int, mkdir, (const char* path, mode_t mode), (path, mode), -1, Strikes("mkdir", Absolute(path)))
LORE_CALL(ssize_t, read, (int number, void* bytes, size_t count), (number, bytes, count), -1,
          (TheOrders().reads) && Strikes("read", PathOf(number)))
LORE_CALL(ssize_t, pread, (int number, void* bytes, size_t count, off_t at), (number, bytes, count, at), -1,
          (TheOrders().everyCall) && Strikes("read", PathOf(number)))
LORE_CALL(int, fstat, (int number, struct stat* info), (number, info), -1,
          (TheOrders().everyCall) && Strikes("stat", PathOf(number)))
LORE_CALL(dirent*, readdir, (DIR * folder), (folder), nullptr,
          (TheOrders().everyCall) && Strikes("readdir", PathOf(::dirfd(folder))))
LORE_CALL(DIR*, opendir, (const char* path), (path), nullptr, (TheOrders().reads) && Strikes("open", Absolute(path)))
LORE_CALL(FILE*, fopen64, (const char* path, const char* mode), (path, mode), nullptr, FailsToOpen(path, mode))
LORE_CALL(FILE*, fopen, (const char* path, const char* mode), (path, mode), nullptr, FailsToOpen(path, mode))

int close(int number) {
    static const auto real = Real<int (*)(int)>("close");
    const bool fails = TheOrders().everyCall && Strikes("close", PathOf(number));
    const int error = errno;
    const int result = real(number);
    if (!fails)
        return result;
    errno = error;
    return -1;
}

// The mode of a new file comes only where one is made.
#define LORE_OPEN(name)                                                       \
    int name(const char* path, int flags, ...) {                              \
        static const auto real = Real<int (*)(const char*, int, ...)>(#name); \
        va_list list;                                                         \
        va_start(list, flags);                                                \
        const mode_t mode = ModeOf(flags, list);                              \
        va_end(list);                                                         \
        return FailsToOpen(path, flags) ? -1 : real(path, flags, mode);       \
    }

LORE_OPEN(open)
LORE_OPEN(open64)

long FailCallBelow(const char* folder, long number, int error, bool lasting) {
    Orders& orders = TheOrders();
    orders.under = folder;
    orders.at = number;
    orders.fault = std::to_string(error);
    orders.lasting = lasting;
    orders.reads = orders.everyCall = *folder != '\0';
    return calls.exchange(0);
}

}  // extern "C"
