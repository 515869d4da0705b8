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

std::string Joined(const struct iovec* parts, int count) {
    std::string bytes;
    for (int i = 0; i < count; ++i)
        bytes.append(static_cast<const char*>(parts[i].iov_base), parts[i].iov_len);
    return bytes;
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

ssize_t write(int number, const void* bytes, size_t count) {
    static const auto real = Real<ssize_t (*)(int, const void*, size_t)>("write");
    return Strikes("write", PathOf(number), Written(PlaceOf(number), bytes, count)) ? -1 : real(number, bytes, count);
}

ssize_t pwrite64(int number, const void* bytes, size_t count, off64_t at) {
    static const auto real = Real<ssize_t (*)(int, const void*, size_t, off64_t)>("pwrite64");
    return Strikes("write", PathOf(number), Written(at, bytes, count)) ? -1 : real(number, bytes, count, at);
}

ssize_t pwrite(int number, const void* bytes, size_t count, off_t at) {
    static const auto real = Real<ssize_t (*)(int, const void*, size_t, off_t)>("pwrite");
    return Strikes("write", PathOf(number), Written(at, bytes, count)) ? -1 : real(number, bytes, count, at);
}

ssize_t writev(int number, const struct iovec* parts, int count) {
    static const auto real = Real<ssize_t (*)(int, const struct iovec*, int)>("writev");
    const std::string bytes = Joined(parts, count);
    return Strikes("write", PathOf(number), Written(PlaceOf(number), bytes.data(), bytes.size()))
               ? -1
               : real(number, parts, count);
}

int ftruncate64(int number, off64_t length) {
    static const auto real = Real<int (*)(int, off64_t)>("ftruncate64");
    return Strikes("truncate", PathOf(number), std::to_string(length)) ? -1 : real(number, length);
}

int ftruncate(int number, off_t length) {
    static const auto real = Real<int (*)(int, off_t)>("ftruncate");
    return Strikes("truncate", PathOf(number), std::to_string(length)) ? -1 : real(number, length);
}

int fsync(int number) {
    static const auto real = Real<int (*)(int)>("fsync");
    return Strikes("fsync", PathOf(number)) ? -1 : real(number);
}

int fdatasync(int number) {
    static const auto real = Real<int (*)(int)>("fdatasync");
    return Strikes("fsync", PathOf(number)) ? -1 : real(number);
}

int rename(const char* from, const char* to) {
    static const auto real = Real<int (*)(const char*, const char*)>("rename");
    return Strikes("rename", Absolute(from), Absolute(to)) ? -1 : real(from, to);
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) {
    static const auto real = Real<int (*)(int, const char*, int, const char*, unsigned)>("renameat2");
    return Strikes("rename", Absolute(from), Absolute(to)) ? -1 : real(fromFolder, from, toFolder, to, flags);
}

int link(const char* from, const char* to) {
    static const auto real = Real<int (*)(const char*, const char*)>("link");
    return Strikes("link", Absolute(from), Absolute(to)) ? -1 : real(from, to);
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) {
    static const auto real = Real<int (*)(int, const char*, int, const char*, int)>("linkat");
    return Strikes("link", Absolute(from), Absolute(to)) ? -1 : real(fromFolder, from, toFolder, to, flags);
}

int unlink(const char* path) {
    static const auto real = Real<int (*)(const char*)>("unlink");
    return Strikes("unlink", Absolute(path)) ? -1 : real(path);
}

int rmdir(const char* path) {
    static const auto real = Real<int (*)(const char*)>("rmdir");
    return Strikes("unlink", Absolute(path)) ? -1 : real(path);
}

int remove(const char* path) {
    static const auto real = Real<int (*)(const char*)>("remove");
    return Strikes("unlink", Absolute(path)) ? -1 : real(path);
}

int unlinkat(int folder, const char* path, int flags) {
    static const auto real = Real<int (*)(int, const char*, int)>("unlinkat");
    const std::string full = *path == '/' || folder == AT_FDCWD ? Absolute(path) : PathOf(folder) + "/" + path;
    return Strikes("unlink", full) ? -1 : real(folder, path, flags);
}

int mkdir(const char* path, mode_t mode) {
    static const auto real = Real<int (*)(const char*, mode_t)>("mkdir");
    return Strikes("mkdir", Absolute(path)) ? -1 : real(path, mode);
}

ssize_t read(int number, void* bytes, size_t count) {
    static const auto real = Real<ssize_t (*)(int, void*, size_t)>("read");
    return TheOrders().reads && Strikes("read", PathOf(number)) ? -1 : real(number, bytes, count);
}

ssize_t pread(int number, void* bytes, size_t count, off_t at) {
    static const auto real = Real<ssize_t (*)(int, void*, size_t, off_t)>("pread");
    return TheOrders().everyCall && Strikes("read", PathOf(number)) ? -1 : real(number, bytes, count, at);
}

int fstat(int number, struct stat* info) {
    static const auto real = Real<int (*)(int, struct stat*)>("fstat");
    return TheOrders().everyCall && Strikes("stat", PathOf(number)) ? -1 : real(number, info);
}

dirent* readdir(DIR* folder) {
    static const auto real = Real<dirent* (*)(DIR*)>("readdir");
    return TheOrders().everyCall && Strikes("readdir", PathOf(::dirfd(folder))) ? nullptr : real(folder);
}

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

DIR* opendir(const char* path) {
    static const auto real = Real<DIR* (*)(const char*)>("opendir");
    return TheOrders().reads && Strikes("open", Absolute(path)) ? nullptr : real(path);
}

int open(const char* path, int flags, ...) {
    static const auto real = Real<int (*)(const char*, int, ...)>("open");
    va_list list;
    va_start(list, flags);
    const mode_t mode = ModeOf(flags, list);
    va_end(list);
    return FailsToOpen(path, flags) ? -1 : real(path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    static const auto real = Real<int (*)(const char*, int, ...)>("open64");
    va_list list;
    va_start(list, flags);
    const mode_t mode = ModeOf(flags, list);
    va_end(list);
    return FailsToOpen(path, flags) ? -1 : real(path, flags, mode);
}

FILE* fopen64(const char* path, const char* mode) {
    static const auto real = Real<FILE* (*)(const char*, const char*)>("fopen64");
    return FailsToOpen(path, mode) ? nullptr : real(path, mode);
}

FILE* fopen(const char* path, const char* mode) {
    static const auto real = Real<FILE* (*)(const char*, const char*)>("fopen");
    return FailsToOpen(path, mode) ? nullptr : real(path, mode);
}

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
