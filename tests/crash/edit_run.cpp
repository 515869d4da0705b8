// What the dialogs on sources and categories save, without a window: "edit_run FOLDER STEP" opens the data folder as
// the desktop program does, makes one change, and ends with 0, or with 3 if the change or a part of it was told as a
// fault.

#include <cstdio>
#include <cstring>
#include <functional>

#include "app/category_editing.h"
#include "app/writing_commands.h"
#include "platform/ini_store.h"
#include "platform/system_sources.h"
#include "sources/custom_types_editor.h"
#include "sources/source_editor.h"
#include "support/scripted_ports.h"

namespace lore {
namespace {

struct EditRun {
    explicit EditRun(const std::filesystem::path& root)
        : store(root / "settings.ini"), app(root, {prompts, progress, clock, guids, store, faults}) {
        app.LoadOptions();
        app.SelectStartNoteBook();
        app.FinishStartup();
        commands = std::make_unique<WritingCommands>(app);
    }

    /// Each note of a source gets a remark on each of its sources.
    bool Remark() {
        for (const int32_t id : app.NoteBook().index.AllIDs()) {
            EditNoteSession session = *commands->EditNote(id);
            for (const int32_t source : session.note.sources)
                session.note.sourceInfo.push_back(
                    {app.NoteBook().sources.FindSourceByID(source)->SourceGUID, "p. " + std::to_string(id)});
            FixedNoteText text(session.note.rtfText);
            if (session.SaveNote(text) != SaveOutcome::Saved)
                return false;
        }
        return true;
    }

    bool EditFirstSource(const std::function<void(SourceEditor&)>& change) {
        SourceEditor editor = SourceEditor::ForSource(commands->Sources(), app.NoteBook().sources[0]);
        change(editor);
        return editor.Save();
    }

    bool EditTrees() {
        CategoryEditing editing(app, *commands);
        CategoryTrees& trees = editing.Model();
        const auto idOf = [&](const char* name) { return app.NoteBook().categories.FindRootByName(name)->id; };
        prompts.answers = {PromptAnswer::Yes, PromptAnswer::Yes};
        prompts.texts = {"Ocean", "Fresh"};
        return trees.RenameCategory(idOf("Sea")) && trees.CreateRoot() && trees.DropOn(idOf("Land"), idOf("Sky")) &&
               trees.DeleteCategory(idOf("Gone")) && editing.Save();
    }

    bool Run(const char* step) {
        const std::pair<const char*, std::function<bool()>> kSteps[] = {
            {"remark", [this] { return Remark(); }},
            {"title", [this] { return EditFirstSource([](SourceEditor& editor) { editor.SetField(0, "Retitled"); }); }},
            {"type", [this] { return EditFirstSource([](SourceEditor& editor) { editor.ChangeType(2); }); }},
            {"unused", [this] { return commands->Sources().Remove(app.NoteBook().sources[1].SourceID); }},
            {"trees", [this] { return EditTrees(); }}};
        for (const auto& [name, run] : kSteps)
            if (std::strcmp(name, step) == 0)
                return run();
        return false;
    }

    IniStore store;
    ScriptedPrompts prompts;
    ScriptedProgress progress;
    SystemClock clock;
    SystemGuids guids;
    NotedFaults faults;
    CLorebinderApp app;
    std::unique_ptr<WritingCommands> commands;
};

}  // namespace
}  // namespace lore

int main(int argc, char** argv) {
    if (argc != 3)
        return 2;
    lore::EditRun edit(argv[1]);
    const bool done = edit.Run(argv[2]) && edit.app.FlushStore();
    for (const lore::Fault& fault : edit.faults.faults)
        std::fprintf(stderr, "edit_run: %s: %s: %s\n", fault.what.c_str(), fault.path.c_str(), fault.reason.c_str());
    return done && edit.faults.faults.empty() ? 0 : 3;
}
