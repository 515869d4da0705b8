#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lore {

/// Bytes of a named encoding ("koi8-r"; "UTF-16" goes by its byte order mark, which it takes away) as UTF-8. What
/// stands for no character becomes U+FFFD. Nothing for an encoding that isn't known.
std::optional<std::string> DecodedFrom(const std::string& encoding, std::string_view bytes);

}  // namespace lore
