#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

#include "notes/search_match.h"
#include "ports/fault_notice.h"
#include "ports/read_context.h"

namespace lore {

/// A note that matches.
struct SearchResult {
    int32_t id = 0;
    std::vector<TextRange> hits;  ///< by their begin, in characters of the plain text
    std::string displayRtf;       ///< the marked text, if asked for
};

/// What a search gives beside the ids, and how it may be stopped.
struct SearchOptions {
    bool hits = true;  ///< false leaves the hits empty
    bool marked = false;
    int threads = 2;            ///< that read files; the results are the same for every number
    std::stop_token stop = {};  ///< once requested, results may be missing
};

/// The result for a note that matches.
SearchResult ResultFor(int32_t id, std::string_view rtfText, const NoteMatcher& matcher, const SearchOptions& options);

/// Reads every note file of a folder and gives the notes that match, files by name, notes in file order. Of a note that
/// stands twice only the copy that shows counts. A search for SHOWALL gives all notes without hits, one without terms
/// none. Holds no more than one file for each thread in memory.
std::vector<SearchResult> SearchDatabase(const std::filesystem::path& notesFolder, const NoteMatcher& matcher,
                                         const SearchOptions& options, const ReadContext& context, FaultNotice& faults);

/// The same for some files, given by their paths; one that is missing is told.
std::vector<SearchResult> SearchFiles(std::span<const std::filesystem::path> files, const NoteMatcher& matcher,
                                      const SearchOptions& options, const ReadContext& context, FaultNotice& faults);

}  // namespace lore
