#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "support/read_world.h"

namespace lore {

/// Loads a file as the program does, works on what it holds, and saves it as `copy`.
using CopyFile = void (*)(const std::filesystem::path& file, const std::filesystem::path& copy,
                          const ReadContext& context);

/// One kind of record file, or one of its older forms, with what it takes to damage it.
struct RecordKind {
    const char* name;  ///< also that of a file in the corpus that uses every field
    CopyFile copyFile;
    /// Does the same for what copyFile saved; null if a copy needs many rounds to settle.
    CopyFile copyCopy;
    /// True if a sample that is loaded and saved has the same bytes. Older forms become the present one.
    bool present;
};

const std::vector<RecordKind>& RecordKinds();

/// A folder in memory, in which one file after the other is read and checked.
class RecordBench {
public:
    /// What is wrong with reading these bytes as a file of the kind; empty if nothing is: nothing is changed, what was
    /// read is bounded and takes a bounded time, and a copy that is loaded and saved stays as it is.
    std::string Check(const RecordKind& kind, const std::string& bytes);
    /// The first half of it: without the copies of the copy.
    std::string CheckReading(const RecordKind& kind, const std::string& bytes);
    /// The other half, after CheckReading.
    std::string CheckCopies(const RecordKind& kind) const;
    /// The bytes of the copy that the last check saved.
    const std::string& Saved() const { return saved_; }

private:
    std::string Copy(CopyFile copyFile, const std::string& from, const std::string& to) const;

    TempFolder folder_{MemoryFolder()};
    std::string saved_;
};

}  // namespace lore
