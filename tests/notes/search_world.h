#pragma once

#include <optional>
#include <string>
#include <vector>

#include "notes/note.h"
#include "notes/note_builder.h"
#include "notes/search_match.h"
#include "ports/prompts.h"
#include "ports/silent_progress.h"
#include "rtf/rtf.h"

namespace lore {

/// Keeps every message as "icon|title|text".
class ScriptedPrompts : public Prompts {
public:
    void Message(const std::string& text, const std::string& title, PromptIcon icon) override {
        static const char* const kNames[] = {"None", "Information", "Warning", "Question", "Error"};
        shown.push_back(std::string(kNames[static_cast<int>(icon)]) + "|" + title + "|" + text);
    }
    PromptAnswer Ask(const std::string&, const std::string&, bool) override { return PromptAnswer::Cancel; }
    std::optional<std::string> AskText(const std::string&, const std::string&, const std::string&) override {
        return std::nullopt;
    }
    PromptAnswer AskWithBox(const std::string&, const std::string&, const std::string&, bool&) override {
        return PromptAnswer::Cancel;
    }
    std::vector<std::string> AskOpenPaths(const std::string&, const std::string&, bool) override { return {}; }
    std::optional<std::string> AskSavePath(const std::string&, const std::string&, const std::string&) override {
        return std::nullopt;
    }
    std::vector<std::string> shown;
};

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
