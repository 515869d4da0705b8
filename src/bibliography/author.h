#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "base/record_file.h"

namespace lore {

/// A person's name, stored once per NoteBook.
struct CAuthor {
    int32_t AuthorID = -1;
    std::string first;
    std::string middle;  ///< any text, without its period
    std::string last;
    std::string reserved1, reserved2;  ///< no screen sets them; copied, stored and compared with the others
};

}  // namespace lore
