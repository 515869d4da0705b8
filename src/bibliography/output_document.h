#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "bibliography/citation_spans.h"
#include "bibliography/source_list.h"
#include "rtf/paper.h"

namespace lore {

// A bibliography as plain values, between the citations and the writers of the file forms.

/// A stretch of an entry with an emphasis, in characters; `end` stands behind the last one.
struct EmphasisRange {
    size_t begin = 0;
    size_t end = 0;
    int32_t kind = kEmphasisNone;
    bool operator==(const EmphasisRange&) const = default;
};

/// The largest hanging indent of an entry, whatever a record asks for: half a line of text.
inline constexpr int kMostIndentSpaces = 40;

/// A source as it is written: a paragraph with its looks.
struct BibliographyEntry {
    std::string text;                     ///< UTF-8, one paragraph: no control characters, no blanks at its ends
    std::vector<EmphasisRange> emphasis;  ///< ascending, none over another, kinds 1 to 7
    int indentSpaces = 0;                 ///< hanging indent in blanks, 0 to kMostIndentSpaces
    bool rightToLeft = false;             ///< its first letter is of a script that runs to the left
};

/// A typeface that a bibliography can be set in.
struct BibliographyFont {
    std::string_view name;     ///< as files state it
    std::string_view twin;     ///< the free font with the same measures
    std::string_view generic;  ///< "serif" and so on, where neither is there
    std::string_view family;   ///< the same in the words of office programs
    int twipsOfSpace;          ///< a blank of the hanging indent
};
inline constexpr BibliographyFont kBibliographyFonts[] = {
    {"Times New Roman", "Liberation Serif", "serif", "roman", 120},
    {"Arial", "Liberation Sans", "sans-serif", "swiss", 120},
    {"Courier New", "Liberation Mono", "monospace", "modern", 144}};

/// All that the writers of the file forms see of a bibliography.
struct BibliographyDocument {
    std::vector<BibliographyEntry> entries;
    BibliographyFont font = kBibliographyFonts[0];
    Paper paper;  ///< of the forms for office programs
};

/// The entries of sources that are formatted already, in list order. Where spans overlap the first one holds, as on
/// screen.
BibliographyDocument MakeBibliographyDocument(const SourceList& formatted);

/// The look that a kind of emphasis gives.
struct EmphasisLook {
    bool bold = false;
    bool italic = false;
    bool underline = false;
};
EmphasisLook LookOf(int32_t kind);

/// A stretch of an entry with one look and one link.
struct BibliographyPiece {
    std::string text;              ///< UTF-8, never empty
    int32_t kind = kEmphasisNone;  ///< of its emphasis
    std::string link;              ///< the web address that it is part of, UTF-8; empty if it is none
};

/// The whole text of an entry in pieces. Web addresses (http, https, ftp) are links, without the punctuation that ends
/// the sentence around them.
std::vector<BibliographyPiece> PiecesOf(const BibliographyEntry& entry);

}  // namespace lore
