#include "platform/system_sources.h"

#include <array>
#include <chrono>
#include <ctime>
#include <random>
#include <sys/random.h>
#include <thread>

#include "base/guid.h"

namespace lore {

namespace {

DateTime FromBrokenDown(const std::tm& t) {
    // A leap second shows as the second before it.
    return {t.tm_year + 1900, t.tm_mon + 1, t.tm_mday, t.tm_hour, t.tm_min, t.tm_sec < 60 ? t.tm_sec : 59};
}

}  // namespace

DateTime SystemClock::Now() const {
    const std::time_t now = std::time(nullptr);
    std::tm parts = {};
    ::localtime_r(&now, &parts);
    return FromBrokenDown(parts);
}

DateTime SystemClock::NowUtc() const {
    return DateTime::FromSeconds(std::time(nullptr));
}

std::string SystemGuids::NewGuid() {
    std::array<uint8_t, 16> bytes{};
    for (size_t have = 0; have < bytes.size();) {
        const ssize_t got = ::getrandom(bytes.data() + have, bytes.size() - have, 0);
        have += got > 0 ? static_cast<size_t>(got) : 0;
    }
    bytes[6] = static_cast<uint8_t>((bytes[6] & 0x0F) | 0x40);
    bytes[8] = static_cast<uint8_t>((bytes[8] & 0x3F) | 0x80);
    return FormatGuid(bytes);
}

DateTime LocalToUtc(const DateTime& local) {
    if (!local.IsValid())
        return local;
    std::tm parts = {};
    parts.tm_year = local.Year() - 1900;
    parts.tm_mon = local.Month() - 1;
    parts.tm_mday = local.Day();
    parts.tm_hour = local.Hour();
    parts.tm_min = local.Minute();
    parts.tm_sec = local.Second();
    parts.tm_isdst = -1;
    return DateTime::FromSeconds(std::mktime(&parts));
}

void WaitFor(int milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

int RandomUpTo(int highest) {
    std::random_device device;
    return std::uniform_int_distribution(0, highest)(device);
}

ReadContext MakeReadContext(const Clock& clock, GuidSource& guids) {
    return {.now = clock.Now(), .nowUtc = clock.NowUtc(), .guids = &guids};
}

}  // namespace lore
