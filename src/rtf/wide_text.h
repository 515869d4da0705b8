#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lore {

/// A text that may have two or four bytes a character (UTF-16, UTF-32), by its byte order mark, or without one where
/// its zero bytes leave no doubt, as UTF-8; any other text as it stands. Nothing if it is full of zero bytes of which
/// can't be told what they stand for.
std::optional<std::string> WithoutWideCharacters(std::string_view bytes);

}  // namespace lore
