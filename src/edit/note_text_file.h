#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "base/file_io.h"
#include "ports/settings_store.h"

namespace lore {

/// The look of a new note's text.
struct NewTextLook {
    std::string font;     ///< UTF-8
    int halfPoints = 27;  ///< 18 pixels of the board
};

/// As the settings have it, in sizes that can be read.
NewTextLook LookOfNewText(const SettingsStore& store);

/// A file as a note's rich text, by its ending: ".rtf" as it stands, ".html" and ".htm" with its formats, everything
/// else as plain text. Pages and plain text may be UTF-16 or UTF-32, with a byte order mark or where their zero bytes
/// leave no doubt; other texts full of those are refused as kUnknownEncoding. `rtf` is empty on failure.
FileResult ReadNoteText(const std::filesystem::path& file, const NewTextLook& look, std::string& rtf);

/// Plain text (UTF-8, or Windows-1252 where it isn't that) as rich text. CR LF, LF, CR, form feed and vertical tab end
/// its lines.
std::string RtfFromText(std::string_view bytes, const NewTextLook& look);

}  // namespace lore
