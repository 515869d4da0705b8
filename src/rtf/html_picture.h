#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "rtf/document.h"

namespace lore {

/// Makes a PNG or JPEG picture of an image file of another form; nothing if it can't.
using PictureConverter = std::function<std::optional<Picture>(const std::string& bytes)>;

/// The picture that an address holds itself, "data:image/png;base64,...". `width` and `height` are attributes in pixels
/// of the screen and may be empty. Nothing for another address, for broken base64, and for forms that nobody converts.
std::optional<Picture> ReadDataPicture(std::string_view address, std::string_view width, std::string_view height,
                                       const PictureConverter& convert);

}  // namespace lore
