#pragma once

#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "classify/category_list.h"
#include "cli/printed_prompts.h"
#include "cli/session.h"
#include "edit/edit_note_session.h"
#include "notes/open_notebook.h"
#include "ports/silent_progress.h"

namespace CLI {
class App;
}

namespace lore {

/// The options by which the command line changes a note's fields.
struct NoteChanges {
    std::optional<std::string> keyWords, color;
    std::vector<int32_t> sources;
    std::vector<std::pair<int, std::string>> categories;  ///< set and path, levels parted by "/"
    bool noSources = false;

    bool MayMakeCategories() const { return !categories.empty(); }
    void Declare(CLI::App& app);

    /// Writes what was given into the note of a session; its save makes the categories that don't exist yet. False,
    /// told on standard error, and nothing has changed, for a source that the NoteBook doesn't hold, a set or colour
    /// that there isn't, or two categories of one set.
    bool Apply(Session& session, const OpenNoteBook& book, EditNoteSession& edited, ExitStatus& status) const;

private:
    bool Check(const OpenNoteBook& book, ExitStatus& status) const;
    void ApplyCategories(Session& session, const OpenNoteBook& book, EditNoteSession& edited) const;
};

/// "R,G,B", each 0 to 255.
std::optional<Rgb> ParseColorArgument(const std::string& text);

/// What the editing of notes asks of a run of the command line.
class EditRun {
public:
    explicit EditRun(Session& session);
    /// Opens the NoteBook for a change of these notes and for new ones; see Session::OpenForWriting and
    /// LoadOptions::only. Who may make categories needs the paths of the other notes too: they may name categories that
    /// the forest has lost, whose ids aren't to be given out.
    bool Open(ExitStatus& status, std::span<const int32_t> ids = {}, bool mayMakeCategories = false) {
        LoadOptions options;
        if (!mayMakeCategories)
            options.only.emplace(ids.begin(), ids.end());
        return session_.OpenForWriting(book_, status, options);
    }
    OpenNoteBook& Book() { return book_; }
    EditWorld& World() { return world_; }

    /// From now on saves leave the notes to Write, which writes each file once for all of them. Saved then says that
    /// all the rest of the save was done.
    void CollectNotes() { world_.unwritten = &collected_; }
    /// Writes the collected notes. Gives the ids of those that could not be written, which is told.
    LongList Write();

private:
    Session& session_;
    OpenNoteBook book_;
    PrintedPrompts prompts_;
    SilentProgress progress_;
    EditWorld world_;
    std::vector<CNote> collected_;
};

}  // namespace lore
