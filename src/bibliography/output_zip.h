#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace lore {

/// A file of the archive; the views must outlive the call.
struct ZipMember {
    const char* name = nullptr;
    std::string_view bytes;
    bool compressed = true;
};

/// A ZIP archive of these members in this order, the same bytes whenever it is made. Nothing if there was no memory.
std::optional<std::string> MakeZip(std::span<const ZipMember> members);

}  // namespace lore
