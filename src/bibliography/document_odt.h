#pragma once

#include <optional>
#include <string>

#include "rtf/document.h"
#include "rtf/paper.h"

namespace lore {

/// A rich text as an OpenDocument text. Only PNG and JPEG pictures are shown; links are alive if they are
/// of a kind that may be opened. Nothing if there was no memory for it.
std::optional<std::string> DocumentAsOdt(const Document& document, const Paper& paper = {});

}  // namespace lore
