#pragma once

#include <span>
#include <string_view>

namespace lore {

/// A file that was compiled into the program.
struct SampleFile {
    std::string_view name;  ///< its path below samples/lighthouses, with "/"
    std::string_view bytes;
};

/// What the sample NoteBook is made from, by name in byte order.
std::span<const SampleFile> SampleFiles();

/// The bytes of one of them; empty if there is none of this name.
std::string_view SampleFileBytes(std::string_view name);

}  // namespace lore
