#pragma once

#include <string>

namespace lore {

/// What became of working on an archive.
struct ArchiveResult {
    enum class Kind { Done, Cancelled, Failed };
    Kind kind = Kind::Done;
    std::string reason;  ///< of a failure, in words: what, and which part of the archive

    bool Ok() const { return kind == Kind::Done; }
    static ArchiveResult Failure(std::string reason) { return {Kind::Failed, std::move(reason)}; }
};

/// What became of making an archive of notes. A failure has been told.
struct ArchiveOutcome {
    enum class Kind { Done, Nothing, Cancelled, Failed };
    Kind kind = Kind::Nothing;
    int notes = 0;  ///< in the archive; above 0 only if it was done

    bool Failed() const { return kind == Kind::Failed; }
};

}  // namespace lore
