#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lore {

/// A group of a file in a form that can be written into another one: ASCII, with bytes beyond it as \'xx. None for a
/// group with binary data.
std::optional<std::string> KeptForm(std::string_view rtf);

}  // namespace lore
