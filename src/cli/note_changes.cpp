#include "cli/note_changes.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <limits>
#include <set>
#include <utility>

#include "base/record_file.h"
#include "base/text.h"
#include "cli/command.h"
#include "edit/category_assignment.h"
#include "edit/info_by_key.h"
#include "edit/unknown_sources.h"
#include "notes/note_store.h"
#include "notes/sync_stamp.h"

namespace lore {

namespace {

/// Of a category that is known by its name alone.
constexpr int32_t kNoID = std::numeric_limits<int32_t>::max();

/// The names in "L1/L2/L3"; blanks around a name don't count.
std::vector<std::string> LevelsOf(std::string_view path) {
    std::vector<std::string> names;
    while (!path.empty()) {
        const std::string_view piece = path.substr(0, path.find('/'));
        path.remove_prefix(std::min(piece.size() + 1, path.size()));
        std::string name = CleanText(FromUtf8(std::string(Trim(piece))));
        if (!name.empty())
            names.push_back(std::move(name));
    }
    return names;
}

/// Levels as a chain of categories. Empty for none.
CProCategoryTree ChainOf(const std::vector<std::string>& levels) {
    CProCategoryTree chain;
    CProCategoryTree* last = nullptr;
    for (const std::string& name : levels) {
        if (last)
            last = &last->AddChild(CProCategoryTree(kNoID, name));
        else
            last = &(chain = CProCategoryTree(kNoID, name));
    }
    return chain;
}

}  // namespace

std::optional<Rgb> ParseColorArgument(const std::string& text) {
    unsigned parts[3] = {};
    int used = 0;
    if (std::sscanf(text.c_str(), "%3u,%3u,%3u%n", &parts[0], &parts[1], &parts[2], &used) != 3 ||
        static_cast<size_t>(used) != text.size() || parts[0] > 255 || parts[1] > 255 || parts[2] > 255)
        return std::nullopt;
    return MakeRgb(parts[0], parts[1], parts[2]);
}

void NoteChanges::Declare(CLI::App& app) {
    app.add_option("--keywords", keyWords, "Key words, separated by commas")->type_name("TEXT");
    app.add_option("--source", sources, "A source, the main one first (repeat for more)")
        ->type_name("ID")
        ->allow_extra_args(false)
        ->transform(DecimalNumber());
    app.add_option("--category", categories, "A category, L1/L2/L3; levels that don't exist are made")
        ->type_name("SET PATH")
        ->allow_extra_args(false)
        ->transform(DecimalNumber().application_index(0));
    app.add_option("--color", color, "The border colour")->type_name("R,G,B");
}

bool NoteChanges::Check(const OpenNoteBook& book, ExitStatus& status) const {
    status = ExitStatus::WrongUsage;
    if (color && !ParseColorArgument(*color)) {
        PrintError("--color takes three numbers from 0 to 255, such as 200,30,30, not \"" + *color + "\"");
        return false;
    }
    std::set<int> sets;
    for (const auto& [set, path] : categories) {
        if (set < 1 || set > kSetCount) {
            PrintError("--category takes a set from 1 to 3, not " + std::to_string(set));
            return false;
        }
        if (!sets.insert(set).second) {
            PrintError("--category is given twice for set " + std::to_string(set) +
                       "; a note has one category of each set");
            return false;
        }
        if (const size_t levels = LevelsOf(path).size(); levels > kMaxNesting) {
            PrintError("a category has at most " + std::to_string(kMaxNesting) + " levels, not " +
                       std::to_string(levels));
            return false;
        }
    }
    status = ExitStatus::NothingFound;
    for (const int32_t source : sources) {
        if (!book.sources.FindSourceByID(source)) {
            PrintError("there is no source " + std::to_string(source) +
                       " in this NoteBook; the command \"sources\" lists them all");
            return false;
        }
    }
    return true;
}

bool NoteChanges::Apply(Session& session, const OpenNoteBook& book, EditNoteSession& edited, ExitStatus& status) const {
    if (!Check(book, status))
        return false;
    CNote& note = edited.note;
    if (keyWords)
        note.keyWords = CleanText(FromUtf8(*keyWords));
    if (color)
        note.borderColor = *ParseColorArgument(*color);
    // Sources that can't be named go on after those that are named; only --no-sources takes them away.
    UnknownSources unknown = noSources ? UnknownSources() : FindUnknownSources(note, book.sources);
    if (noSources || !sources.empty()) {
        unknown.isFirstMain = false;
        note.sources.RemoveAll();
        for (const int32_t source : sources)
            note.sources.AddUnique(source);
    }
    // As the panel of an editor does, which holds rows of sources that there are, and information for its rows only.
    LongList known;
    std::vector<CNoteSourceInfo> information;
    const auto infos = InfoByKey(note.sourceInfo);
    for (const int32_t id : note.sources) {
        const CSource* const source = book.sources.FindSourceByID(id);
        if (!source)
            continue;
        known.AddUnique(id);
        if (const auto info = infos.find(ToLower(source->SourceGUID)); info != infos.end())
            information.push_back(*info->second);
    }
    note.sources = known;
    note.sourceInfo = CollectSourceInfo(information);
    unknown.PutBack(note);
    ApplyCategories(session, book, edited);
    return true;
}

/// Levels that don't exist become new categories of the session, which the save makes if the note uses them.
void NoteChanges::ApplyCategories(Session& session, const OpenNoteBook& book, EditNoteSession& edited) const {
    CNote wanted = edited.note;
    for (const auto& [set, path] : categories) {
        const CProCategoryTree chain = ChainOf(LevelsOf(path));
        const bool isReserved = EqualNoCase(chain.name, kUnassignedName);
        wanted.categories[static_cast<size_t>(set) - 1] = isReserved ? CProCategoryTree() : chain;
    }
    PrintedPrompts nobody;
    CategoryAssignment paths(book.categories, session.GetSettings().Int(Option::MaxCategoryID), nobody);
    paths.FillUnsaved(wanted, edited.note);
    paths.WriteBack(edited.note);
    edited.newCategories = paths.NewCategories();
}

EditRun::EditRun(Session& session)
    : session_(session),
      world_{.book = book_,
             .settings = session.GetSettings(),
             .prompts = prompts_,
             .progress = progress_,
             .clock = session.GetClock(),
             .guids = session.Guids(),
             .faults = session.Faults(),
             .texts = nullptr,
             .storeSettings = [&session] { session.StoreOptions(); }} {}

LongList EditRun::Write() {
    if (collected_.empty())
        return {};
    const SyncLog& log = book_.syncLog;
    const bool isLogged = log.link.IsLinked() && std::ranges::any_of(collected_, [&log](const CNote& note) {
                              return log.FindSyncInfo(note.guid) != nullptr;
                          });
    const ReadContext context = world_.Context();
    LongList failed = NoteStore(book_, context, world_.faults, world_.texts).SaveNotes(std::exchange(collected_, {}));
    if (isLogged)
        WriteSyncLog(book_, world_.faults);
    return failed;
}

}  // namespace lore
