#include <ctime>

#include "trust/record_kinds.h"

namespace lore {

namespace {

constexpr double kMostSeconds = 2.0;
/// A field of one byte may become one of sixteen and a date of a few more, and a thousand entries may be made up.
constexpr size_t kMostGrowth = 64, kMostMadeUp = 2'000'000;

size_t CountEntries(const std::filesystem::path& folder) {
    size_t count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        count += entry.exists();
    return count;
}

}  // namespace

std::string RecordBench::Copy(CopyFile copyFile, const std::string& from, const std::string& to) const {
    ReadWorld world;
    copyFile(folder_ / from, folder_ / to, world.context);
    return BytesOf(folder_ / to);
}

std::string RecordBench::Check(const RecordKind& kind, const std::string& bytes) {
    const std::string finding = CheckReading(kind, bytes);
    return finding.empty() ? CheckCopies(kind) : finding;
}

std::string RecordBench::CheckReading(const RecordKind& kind, const std::string& bytes) {
    std::filesystem::remove(folder_ / "second.dat");
    std::filesystem::remove(folder_ / "third.dat");
    PutBytes(folder_ / "file.dat", bytes);
    const std::clock_t start = std::clock();
    saved_ = Copy(kind.copyFile, "file.dat", "copy.dat");
    const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    if (seconds > kMostSeconds)
        return "took " + std::to_string(seconds) + " s";
    if (BytesOf(folder_ / "file.dat") != bytes)
        return "reading changed the file";
    if (CountEntries(folder_.Path()) != 2)
        return "something stays beside the two files";
    if (saved_.size() > kMostGrowth * bytes.size() + kMostMadeUp)
        return std::to_string(bytes.size()) + " bytes became " + std::to_string(saved_.size());
    return "";
}

std::string RecordBench::CheckCopies(const RecordKind& kind) const {
    if (!kind.copyCopy)
        return "";
    // An impossible date is saved as one that can't be read, which the next reading takes for the present moment.
    const std::string second = Copy(kind.copyCopy, "copy.dat", "second.dat");
    return Copy(kind.copyCopy, "second.dat", "third.dat") == second ? "" : "a copy of the copy differs";
}

}  // namespace lore
