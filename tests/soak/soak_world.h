#pragma once

#include <deque>
#include <filesystem>
#include <memory>
#include <optional>
#include <random>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "app/notebook_commands.h"
#include "app/writing_commands.h"
#include "calendar/calendar_world.h"
#include "soak/soak_model.h"
#include "support/memory_store.h"
#include "support/read_world.h"
#include "support/scripted_ports.h"

namespace lore {

/// The program holds something else than the model.
struct Difference : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class AnsweredQuestion : public SeriesQuestion {
public:
    SeriesReach Ask(ModifyEventMode) override { return answer; }
    SeriesReach answer = SeriesReach::Cancel;
};

/// The application as a window uses it, on a data folder of its own, beside the model of what it holds.
class Soak : public ScriptedPorts {
public:
    Soak(const std::filesystem::path& folder, uint64_t seed);

    // Chance. The same seed gives the same row of actions on every machine.

    size_t Below(size_t count) { return count == 0 ? 0 : random_() % count; }
    bool Chance(size_t percent) { return Below(100) < percent; }
    template <typename Container>
    auto& AnyOf(Container& container) {
        return *std::next(container.begin(), static_cast<std::ptrdiff_t>(Below(container.size())));
    }
    std::string AnyWords();
    std::string AnyName();  ///< of a category
    std::string AnyKeyWord();
    Rgb AnyColor();
    std::string Unique(const char* start) { return start + std::to_string(++serial_); }
    /// A path that the NoteBook has, or one that goes on from there, or nothing.
    Path AnyPath();

    // The program.

    CLorebinderApp& App() { return *app_; }
    WritingCommands& Commands() { return *commands_; }
    NoteBookTrash& Trash() { return *trash_; }
    const CalendarWorld& Calendar() const { return *calendar_; }
    /// Ends the application as its window does, and starts it anew.
    void Restart();
    void Tick();
    DateTime Now() const { return clock.now; }
    const std::filesystem::path& Scratch() const { return scratch_; }
    /// All questions of the next command are answered with Yes.
    void SayYes() { prompts.answers.assign(8, PromptAnswer::Yes); }

    MemoryStore store;
    AnsweredQuestion question;

    // The model.

    ModelBook& Open();
    std::deque<ModelBook> books;  ///< the main one first, the others in the order of the list
    std::vector<std::pair<size_t, ModelBook>> deletedBooks;
    std::vector<ModelArchive> archives;
    std::map<std::string, ModelEvent> events;  ///< by EventId
    uint64_t NewVersion() { return ++version_; }
    size_t NoteCount() const { return CountOf(&ModelBook::notes); }
    size_t SourceCount() const { return CountOf(&ModelBook::sources); }

    // Checks. A difference ends the run.

    void Note(const std::string& action) { actions_.push_back(action); }
    const std::deque<std::string>& Actions() const { return actions_; }
    /// What was told and asked is forgotten; a fault that was told is a difference.
    void EndAction();
    void Require(bool holds, const std::string& text) const;
    /// A note as it lies on the disk, and as the current list shows it.
    void CheckNote(const std::string& guid);
    void CheckList();
    /// All of the open NoteBook, from its files; notes get the ids that they have there.
    void CheckOpenBook() { CheckBook(Open()); }
    /// Every NoteBook and the calendar from the files, and the lists that the application holds.
    void CheckAll();
    void CheckEvents();

private:
    /// How many entries a part has in all NoteBooks.
    template <typename Part>
    size_t CountOf(Part ModelBook::*part) const {
        size_t count = 0;
        for (const ModelBook& book : books)
            count += (book.*part).size();
        return count;
    }
    void Start();
    void CheckBook(ModelBook& book);
    void CheckPicture();
    void CompareNote(const CNote& note, const ModelNote& wanted, const OpenNoteBook& book) const;

    std::mt19937_64 random_;
    std::filesystem::path root_, scratch_;
    uint64_t serial_ = 0, version_ = 0;
    std::deque<std::string> actions_;
    std::unique_ptr<NoteBookTrash> trash_;
    std::unique_ptr<CLorebinderApp> app_;
    std::unique_ptr<WritingCommands> commands_;
    NoReminderServer server_;
    std::optional<CalendarWorld> calendar_;
};

/// A kind of action and how often it comes. It gives false if it found nothing to work on.
struct SoakAction {
    const char* name;
    size_t weight;
    bool (*run)(Soak&);
};
std::span<const SoakAction> NoteActions();
std::span<const SoakAction> ListActions();
std::span<const SoakAction> CategoryActions();
std::span<const SoakAction> SourceActions();
std::span<const SoakAction> BookActions();
std::span<const SoakAction> CalendarActions();

// What the model makes of deletions and copies, from whichever command they come.

void DeleteInModel(Soak& soak, const std::set<int32_t>& ids);
void CopyInModel(Soak& soak, const std::vector<ModelNote>& notes, ModelBook& target);
/// Puts a note of elsewhere into a NoteBook, with the sources and categories that it brings.
void BringIn(ModelBook& book, ModelNote note, const ModelSources& sources);
/// Notes that an export has written, as an archive to import later.
void ArchiveInModel(Soak& soak, const std::set<int32_t>& ids, const std::filesystem::path& file, bool all);
std::filesystem::path ArchivePlace(Soak& soak);

}  // namespace lore
