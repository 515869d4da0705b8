#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "rtf/paper.h"

namespace lore {

// What all OpenDocument texts share.

/// The head of a part and its opening root element "office:..." with all namespaces.
std::string BeginOdtPart(std::string_view element);

/// The end of the part "document-styles": the one page layout.
std::string EndOdtStyles(const Paper& paper);

/// A property for Western text and for the two other groups of scripts, which have their own.
void AppendForAllScripts(std::string& xml, std::string_view name, std::string_view value);

/// Text of a paragraph: blanks behind a blank, tabs and line feeds, which the format would drop, become elements;
/// characters that no XML file may hold are left out. `behindBlank` goes from one text of a paragraph to the next and
/// is true at its beginning.
void AppendOdtText(std::string& xml, std::string_view text, bool& behindBlank);

/// A length in points from one in twips.
std::string OdtPoints(int twips);

/// A picture file of the package; the views must outlive the call.
struct OdtPicture {
    std::string name;  ///< within the package, such as "Pictures/1.png"
    std::string_view mediaType;
    std::string_view bytes;
};

/// The package of an OpenDocument text. Nothing if there was no memory for it.
std::optional<std::string> MakeOdt(std::string_view content, std::string_view styles,
                                   std::span<const OdtPicture> pictures = {});

}  // namespace lore
