#include "app/print_commands.h"

#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "bibliography/citation.h"
#include "notes/note_finder.h"
#include "notes/print_preview.h"

namespace lore {

namespace {

/// Starts the print program, which finds the settings as they are now.
bool StartPrintProgram(CLorebinderApp& app, const std::vector<std::string>& arguments) {
    app.StoreSettings();
    ProcessLauncher* const companions = app.Ports().companions;
    if (!companions)
        return false;
    const std::optional<std::string> failed = companions->StartCompanion(kPrintProgram, arguments);
    if (failed)
        app.Ports().faults.Tell({"The program for printing could not be started", kPrintProgram, *failed});
    return !failed;
}

/// Gives notes their sources as they are cited now. Each source is formatted once, on a copy.
class FormattedSources {
public:
    explicit FormattedSources(const OpenNoteBook& book) : book_(book) {}

    /// The sources that the NoteBook knows, in the note's order, each once.
    std::vector<const CSource*> Of(const CNote& note) {
        std::vector<const CSource*> sources;
        std::unordered_set<int32_t> seen;
        for (const int32_t id : note.sources) {
            if (const CSource* const source = seen.insert(id).second ? Find(id) : nullptr)
                sources.push_back(source);
        }
        return sources;
    }

private:
    const CSource* Find(int32_t id) {
        const auto [found, added] = formatted_.try_emplace(id);
        const CSource* const source = added ? book_.sources.FindSourceByID(id) : nullptr;
        if (source)
            FormatSource(found->second.emplace(*source), book_.authors);
        return found->second ? &*found->second : nullptr;
    }

    const OpenNoteBook& book_;
    std::unordered_map<int32_t, std::optional<CSource>> formatted_;
};

/// Tells of the notes that the NoteBook doesn't know.
void TellUnknown(const NoteIndex& index, const LongList& ids, FaultNotice& faults) {
    constexpr size_t kMostNamed = 10;
    std::string named;
    size_t count = 0;
    for (const int32_t id : ids) {
        if (index.Contains(id))
            continue;
        if (++count <= kMostNamed)
            named += (named.empty() ? "" : ", ") + std::to_string(id);
    }
    if (count > 0)
        faults.Tell({std::to_string(count) + (count == 1 ? " note was" : " notes were") + " left out of the print",
                     {},
                     "this NoteBook has no note with the number " + named + (count > kMostNamed ? " ..." : "")});
}

/// Gives how many notes were written.
size_t WritePreview(const CLorebinderApp& app, const LongList& ids, FaultNotice& faults, const std::stop_token& stop) {
    std::vector<CNote> notes = FindNotes(app.NoteBook().index, ids, app.Context(), faults, stop);
    if (stop.stop_requested())
        return 0;
    TellUnknown(app.NoteBook().index, ids, faults);
    if (notes.empty())
        return 0;
    FormattedSources sources(app.NoteBook());
    PrintPreviewWriter writer(notes.size());
    for (CNote& note : notes) {
        writer.Add(note, sources.Of(note));
        note = CNote();
    }
    const std::filesystem::path path = app.Data().PrintPreview();
    const FileResult result = writer.Save(path);
    if (!result.Ok())
        faults.Tell({"The notes could not be handed over for printing", path.string(), result.Reason()});
    return result.Ok() ? notes.size() : 0;
}

}  // namespace

bool PrintCurrentNotes(CLorebinderApp& app) {
    return PrintNotes(app, app.List().GetNoteIDs());
}

bool PrintNotes(CLorebinderApp& app, const LongList& ids) {
    const AppPorts& ports = app.Ports();
    if (ids.Count() == 0) {
        ports.prompts.Message("Unable to save, there are no notes in the current list.", "Invalid Notes",
                              PromptIcon::Warning);
        return false;
    }
    KeptForLater faults;
    size_t written = 0;
    const bool done = RunBeside(ports.background, "Preparing Preview....",
                                [&](const std::stop_token& stop) { written = WritePreview(app, ids, faults, stop); });
    faults.TellAll(ports.faults);
    return done && written > 0 && StartPrintProgram(app, {});
}

bool CreateBibliography(CLorebinderApp& app, const SourceList& selected) {
    if (selected.Count() == 0)
        return false;
    const AppPorts& ports = app.Ports();
    const std::filesystem::path path = app.Data().Bibliography();
    FileResult result;
    const bool done = RunBeside(ports.background, "Preparing Sources....", [&](const std::stop_token&) {
        result = selected.SaveBibliography(path, app.NoteBook().authors);
    });
    if (!result.Ok())
        ports.faults.Tell({"The bibliography could not be handed over for printing", path.string(), result.Reason()});
    return done && result.Ok() && StartPrintProgram(app, {path.string()});
}

}  // namespace lore
