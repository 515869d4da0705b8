#pragma once

#include <string>

namespace lore {

/// What became of a file operation. `error` is the system's number (errno), 0 when done.
struct FileResult {
    int error = 0;
    /// For a pipe, a socket or a device at the place of a file, for which the system has no number.
    static constexpr int kNoRegularFile = -1;
    /// For a link on the way to a file that leads to nothing: what it should lead to may only be away.
    static constexpr int kDeadLink = -2;
    /// For a text that was read, but of which can't be told how its bytes stand for characters.
    static constexpr int kUnknownEncoding = -3;
    bool Ok() const { return error == 0; }
    /// True if the file just isn't there, which counts as having no records.
    bool Missing() const;
    /// The system's reason in words.
    std::string Reason() const;
};

}  // namespace lore
