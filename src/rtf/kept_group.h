#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lore {

/// A group of a file in a form that can be written into another one: ASCII, with bytes beyond it as \'xx. None for a
/// group with binary data.
std::optional<std::string> KeptForm(std::string_view rtf);

/// A group for text that isn't shown, being hidden or deleted; a line feed is a line break. It means the same in any
/// file.
std::string UnshownText(std::string_view utf8, bool deleted);
/// The same for a group of a file in the form that KeptForm gives.
std::string UnshownGroup(std::string_view form, bool deleted);
/// Whether UnshownText made the group.
bool IsUnshownText(std::string_view kept);

}  // namespace lore
