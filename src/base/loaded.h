#pragma once

#include "base/file_result.h"

namespace lore {

/// What a file gave: what became of reading it, and what stood in it.
template <typename T>
struct Loaded {
    FileResult file;
    bool isWhole =
        true;  ///< false if the file was read and is damaged: it broke off, or holds more where its reader minds that
    T value = {};

    /// True if the file was read and lacks nothing.
    bool ReadWhole() const { return file.Ok() && isWhole; }
};

}  // namespace lore
