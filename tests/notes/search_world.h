#pragma once

#include <string>
#include <vector>

#include "notes/note.h"
#include "notes/note_builder.h"
#include "notes/search_match.h"
#include "ports/silent_progress.h"
#include "rtf/rtf.h"
#include "support/scripted_ports.h"

namespace lore {

/// Keeps the stand-by texts, and an empty one for each end.
class KeptProgress : public SilentProgress {
public:
    void ShowStandBy(const std::string& text) override { standBy.push_back(text); }
    void HideStandBy() override { standBy.emplace_back(); }
    std::vector<std::string> standBy;
};

inline NoteMatcher MatcherFor(const std::string& text) {
    NoteSearch search;
    ParseSearchString(text, nullptr, search);
    return NoteMatcher(search);
}

/// A day's note with this RTF body.
inline CNote TextNote(int32_t id, const std::string& body, int day = 1) {
    CNote note = DayNote(id, day);
    note.rtfText = "{\\rtf1\\ansi\\ansicpg1252 " + body + "}";
    note.plainText = PlainText(note.rtfText);
    return note;
}

}  // namespace lore
