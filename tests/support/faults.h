#pragma once

#include <algorithm>
#include <filesystem>

namespace lore {

/// The call of that number, from 1, fails with an error of the system (errno), `lasting` every one after it too; what
/// counts are the calls of this program for files and folders below a folder: those that open, look at, read, write,
/// flush, close, rename, link and remove. An empty folder ends it. Gives how many calls were counted since the last
/// order.
extern "C" long FailCallBelow(const char* folder, long number, int error, bool lasting = false);

/// Does the same thing with its first call failing, then its second, until there is no such call: `prepare()`, then
/// `attempt()`, and `check(outcome, failed)` with what the attempt gave and whether a call of it failed. Gives how many
/// calls an attempt makes in which none fails.
template <typename Prepare, typename Attempt, typename Check>
long FailEachCall(const std::filesystem::path& folder, int error, bool lasting, Prepare prepare, Attempt attempt,
                  Check check) {
    for (long number = 1;; ++number) {
        prepare();
        FailCallBelow(folder.c_str(), number, error, lasting);
        const auto outcome = attempt();
        const long calls = FailCallBelow("", 0, 0);
        check(outcome, calls >= number);
        if (calls < number)
            return calls;
    }
}

/// Whether a file that was written beside another one was left there.
inline bool HasTemporary(const std::filesystem::path& folder) {
    const std::filesystem::recursive_directory_iterator files(folder);
    return std::any_of(begin(files), end(files), [](const auto& file) { return file.path().extension() == ".tmp"; });
}

}  // namespace lore
