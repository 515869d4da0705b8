#include <algorithm>
#include <functional>
#include <utility>

#include "app/panel_actions.h"
#include "base/text.h"
#include "notes/sort_compare.h"
#include "soak/soak_world.h"

namespace lore {

namespace {

using Ids = std::set<int32_t>;

std::string Lower(std::string_view text) {
    return ToUtf8(ToLower(text));
}

/// Whether a text holds a term, as a whole word if it stands in quotes.
bool Holds(const std::string& words, std::string term) {
    const std::string text = Lower(words);
    const bool whole = term.starts_with('"');
    if (whole)
        term = term.substr(1, term.size() - 2);
    term = Lower(term);
    const auto isWordAt = [&](size_t at) {
        return at < text.size() && (std::isalnum(static_cast<unsigned char>(text[at])) != 0 || (text[at] & 0x80) != 0);
    };
    for (size_t at = text.find(term); at != std::string::npos; at = text.find(term, at + 1))
        if (!whole || ((at == 0 || !isWordAt(at - 1)) && !isWordAt(at + term.size())))
            return true;
    return false;
}

bool Search(Soak& soak) {
    static const char* const terms[] = {
        "lamp",        "\"fog\"", "word1", "\"word1\"",  "FRESNEL", "\xE7\x81\xAF\xE5\x8F\xB0",
        "caf\xC3\xA9", "text9",   "\\par", "\"word22\"", "nowhere", "50%"};
    std::vector<std::string> wanted;
    for (size_t count = 1 + soak.Below(3); count > 0; --count)
        wanted.emplace_back(terms[soak.Below(std::size(terms))]);
    const bool all = soak.Chance(50), everything = soak.Chance(5);
    std::string text = everything ? kShowAll : FromUtf8(wanted.front());
    for (size_t i = 1; i < wanted.size() && !everything; ++i)
        text = FromUtf8(ToUtf8(text) + (all ? " AND " : " OR ") + wanted[i]);
    const SearchScope scope = everything || soak.Chance(70) ? SearchScope::Database : SearchScope::CurrentNotes;
    soak.Note("  " + text + (scope == SearchScope::Database ? "" : " in the list"));
    Ids found;
    ModelBook& book = soak.Open();
    for (const auto& [guid, note] : book.notes) {
        const auto holds = [&words = note.words](const std::string& term) { return Holds(words, term); };
        const bool matches = everything || (all ? std::all_of(wanted.begin(), wanted.end(), holds)
                                                : std::any_of(wanted.begin(), wanted.end(), holds));
        if (matches && (scope == SearchScope::Database || book.listed.contains(note.id)))
            found.insert(note.id);
    }
    soak.Require(soak.App().Search(text, scope) == SearchOutcome::Done, "a search wasn't done");
    const std::string told = soak.prompts.seen.back(), expected = "*" + std::to_string(found.size()) + "*";
    soak.Require(told.find(expected) != std::string::npos, told + " instead of " + expected);
    book.listed.insert(found.begin(), found.end());
    return true;
}

bool Sort(Soak& soak) {
    static const int32_t orders[] = {kAddToTop,     kAddToBottom, kSourceUp,      kSourceDown,    kCategoryUp,
                                     kCategoryDown, kDateAddedUp, kDateAddedDown, kDateChangedUp, kDateChangedDown};
    const int32_t order = orders[soak.Below(std::size(orders))];
    soak.App().SetSortOrder(order);
    const CNoteList& list = soak.App().List();
    for (size_t i = 1; i < list.Count(); ++i) {
        const CNote &a = list[i - 1], &b = list[i];
        const bool byCreation = order == kDateAddedUp || order == kDateAddedDown;
        const int64_t first = (byCreation ? a.dateCreated : a.dateEdited).Seconds();
        const int64_t second = (byCreation ? b.dateCreated : b.dateEdited).Seconds();
        if (order == kDateAddedUp || order == kDateChangedUp)
            soak.Require(first <= second, "order of dates");
        if (order == kDateAddedDown || order == kDateChangedDown)
            soak.Require(first >= second, "order of dates downwards");
    }
    return true;
}

bool Move(Soak& soak) {
    const CNoteList& list = soak.App().List();
    if (list.Count() < 2)
        return false;
    const size_t from = soak.Below(list.Count()), to = soak.Below(list.Count());
    const int32_t moved = list[from].id, target = list[to].id;
    std::vector<int32_t> wanted = list.GetNoteIDs().Values();
    wanted.erase(wanted.begin() + static_cast<std::ptrdiff_t>(from));
    wanted.insert(wanted.begin() + static_cast<std::ptrdiff_t>(to), moved);
    soak.App().MoveNote(moved, target);
    soak.Require(list.GetNoteIDs().Values() == wanted, "order after a drag");
    return true;
}

bool TakeOut(Soak& soak) {
    ModelBook& book = soak.Open();
    if (book.listed.empty())
        return false;
    if (soak.Chance(15)) {
        soak.App().ClearList();
        book.listed.clear();
        return true;
    }
    LongList out;
    for (size_t count = 1 + soak.Below(5); count > 0 && !book.listed.empty(); --count) {
        const int32_t id = *std::next(book.listed.begin(), static_cast<std::ptrdiff_t>(soak.Below(book.listed.size())));
        out.AddTail(id);
        book.listed.erase(id);
    }
    soak.App().TakeOut(out);
    return true;
}

// The panels.

struct PanelWork {
    Soak& soak;
    PanelKind kind = PanelKind::Categories;
    int set = kAllSets;
    FilterPanel panel = {};

    void Fill() {
        const OpenNoteBook& open = soak.App().NoteBook();
        static constexpr SourceGrouping groupings[] = {SourceGrouping::Title, SourceGrouping::Author,
                                                       SourceGrouping::Publication};
        switch (kind) {
            case PanelKind::Categories:
                panel.SetEntries(CategoryEntries(open.categories, set));
                break;
            case PanelKind::Sources:
                panel.SetEntries(SourceEntries(open.sources, groupings[soak.Below(3)], open.notesWithoutSource));
                break;
            case PanelKind::KeyWords:
                panel.SetEntries(KeyWordEntries(open.keyWords));
                break;
            case PanelKind::Colors:
                panel.SetEntries(ColorEntries(open.colors));
        }
        panel.CountNotes(soak.App().List().GetNoteIDs());
    }

    Path PathOf(int position) const {
        Path path;
        for (; position >= 0; position = panel.Entries()[static_cast<size_t>(position)].parent)
            path.insert(path.begin(), panel.Entries()[static_cast<size_t>(position)].name);
        return path;
    }

    Ids Having(const std::function<bool(const ModelNote&)>& has) const {
        Ids ids;
        for (const auto& [guid, note] : soak.Open().notes)
            if (has(note))
                ids.insert(note.id);
        return ids;
    }

    /// The notes that an entry should have.
    Ids Wanted(int position) const {
        const PanelEntry& entry = panel.Entries()[static_cast<size_t>(position)];
        switch (entry.value) {
            case PanelValue::Category:
                return entry.id == kUnassignedID ? soak.Open().Unassigned(set)
                                                 : soak.Open().NotesBelow(PathOf(position), set);
            case PanelValue::NoSource:
                return Having([](const ModelNote& note) { return note.sources.empty(); });
            case PanelValue::Source: {
                const std::string guid = soak.App().NoteBook().sources.FindSourceByID(entry.id)->SourceGUID;
                return Having([&](const ModelNote& note) {
                    return std::count(note.sources.begin(), note.sources.end(), guid) > 0;
                });
            }
            case PanelValue::KeyWord:
                return Having([&](const ModelNote& note) {
                    return std::any_of(note.keyWords.begin(), note.keyWords.end(), [&](const std::string& keyWord) {
                        return ToUtf8(keyWord) == ToUtf8(entry.name);
                    });
                });
            case PanelValue::Color:
                return Having([&](const ModelNote& note) { return note.color == entry.color; });
            case PanelValue::SourceGroup: {
                Ids ids;
                for (int below = position + 1; below < entry.end; ++below)
                    ids.merge(Wanted(below));
                return ids;
            }
        }
        return {};
    }

    void Check() const {
        const Ids& listed = soak.Open().listed;
        for (size_t i = 0; i < panel.Entries().size(); ++i) {
            const PanelEntry& entry = panel.Entries()[i];
            const Ids now(entry.notes.begin(), entry.notes.end()), wanted = Wanted(static_cast<int>(i));
            soak.Require(now == wanted, "panel entry " + entry.name + " has " + std::to_string(now.size()) +
                                            " notes instead of " + std::to_string(wanted.size()));
            if (entry.value == PanelValue::SourceGroup)
                continue;
            const auto inList =
                std::count_if(wanted.begin(), wanted.end(), [&](int32_t id) { return listed.contains(id); });
            soak.Require(entry.inList == inList, "panel entry " + entry.name + " counts " +
                                                     std::to_string(entry.inList) + " listed notes instead of " +
                                                     std::to_string(inList));
        }
    }

    void CheckFilter() {
        static const char* const texts[] = {"a", "KEY1", "<", "k\xC3\xBC", "nothing like it", ""};
        const std::string text = texts[soak.Below(std::size(texts))];
        panel.SetFilter(text);
        std::set<int> wanted;
        for (int i = 0; i < static_cast<int>(panel.Entries().size()); ++i)
            if (Lower(panel.Entries()[static_cast<size_t>(i)].name).find(Lower(text)) != std::string::npos)
                for (int up = i; up >= 0; up = panel.Entries()[static_cast<size_t>(up)].parent)
                    wanted.insert(up);
        soak.Require(std::vector<int>(wanted.begin(), wanted.end()) == panel.Shown(), "filter " + text);
        panel.SetFilter("");
    }
};

bool LookAtPanel(Soak& soak) {
    PanelWork work{soak, static_cast<PanelKind>(soak.Below(4)), static_cast<int>(soak.Below(4))};
    work.Fill();
    work.Check();
    work.CheckFilter();
    return true;
}

void Touch(Soak& soak, ModelNote& note) {
    note.edited = soak.Now().Seconds();
    note.version = soak.NewVersion();
}

template <typename Change>
void ForEach(Soak& soak, const Ids& ids, Change change) {
    ModelUndo undo;
    for (const int32_t id : ids) {
        ModelNote& note = *soak.Open().FindByID(id);
        const ModelNote former = note;
        if (!change(note))
            continue;
        Touch(soak, note);
        undo.changes.push_back({former, note});
    }
    if (!undo.changes.empty())
        soak.Open().undoables.push_back(std::move(undo));
}

bool SetColor(ModelNote& note, Rgb color) {
    return std::exchange(note.color, color) != color;
}

bool AttachKeyWord(ModelNote& note, const std::string& name) {
    if (std::any_of(note.keyWords.begin(), note.keyWords.end(),
                    [&](const std::string& one) { return ToUtf8(one) == ToUtf8(name); }))
        return false;
    note.keyWords.push_back(name);
    return true;
}

bool RemoveKeyWord(ModelNote& note, const std::string& name) {
    return std::erase_if(note.keyWords, [&](const std::string& one) { return ToUtf8(one) == ToUtf8(name); }) > 0;
}

/// Gives a note what an entry stands for.
bool AddToEntry(const PanelWork& work, const PanelEntry& entry, int position, ModelNote& note) {
    if (entry.value == PanelValue::Color)
        return SetColor(note, entry.color);
    if (entry.value == PanelValue::KeyWord)
        return AttachKeyWord(note, entry.name);
    if (entry.value == PanelValue::Category) {
        Path& path = note.paths[static_cast<size_t>(work.set == kAllSets ? 0 : work.set - 1)];
        const Path wanted = work.PathOf(position);
        return std::exchange(path, wanted) != wanted;
    }
    const std::string guid = work.soak.App().NoteBook().sources.FindSourceByID(entry.id)->SourceGUID;
    const bool isNew = std::count(note.sources.begin(), note.sources.end(), guid) == 0;
    if (isNew)
        note.sources.push_back(guid);
    return isNew;
}

/// What a command of an entry should make of the model.
void RunInModel(PanelWork& work, const PanelOrder& order, const PanelEntry& entry, int32_t focus, int position) {
    Soak& soak = work.soak;
    ModelBook& book = soak.Open();
    const Ids notes(order.notes.begin(), order.notes.end()), focused = focus > 0 ? Ids{focus} : Ids();
    const Ids listed = book.listed;
    switch (order.action) {
        case PanelAction::Gather:
        case PanelAction::SelectAll:
            book.listed.insert(notes.begin(), notes.end());
            break;
        case PanelAction::TakeOut:
        case PanelAction::ClearTree:
        case PanelAction::ClearAll:
            for (const int32_t id : notes)
                book.listed.erase(id);
            break;
        case PanelAction::SetListColor:
            ForEach(soak, listed, [&](ModelNote& note) { return SetColor(note, entry.color); });
            break;
        case PanelAction::RemoveListColor:
            ForEach(soak, listed, [&](ModelNote& note) { return note.color == entry.color && SetColor(note, 0); });
            break;
        case PanelAction::AttachKeyWord:
            ForEach(soak, listed, [&](ModelNote& note) { return AttachKeyWord(note, entry.name); });
            break;
        case PanelAction::RemoveKeyWord:
            ForEach(soak, listed, [&](ModelNote& note) { return RemoveKeyWord(note, entry.name); });
            break;
        case PanelAction::AddNote:
            ForEach(soak, focused, [&](ModelNote& note) { return AddToEntry(work, entry, position, note); });
            break;
        case PanelAction::Delete:
            if (!notes.empty())
                DeleteInModel(soak, notes);
            break;
        default:
            break;
    }
}

void CopyTo(Soak& soak, const Ids& notes, const std::string& bookGuid) {
    std::vector<ModelNote> copied;
    for (const int32_t id : notes)
        copied.push_back(*soak.Open().FindByID(id));
    for (ModelBook& book : soak.books)
        if (book.record.guid == bookGuid)
            CopyInModel(soak, copied, book);
}

/// What would take too long to be done each time it comes up.
bool IsSlow(Soak& soak, const PanelOrder& order) {
    const bool isLarge = order.notes.Count() > 25 || soak.Open().listed.size() > 60;
    const PanelFamily family = FamilyOf(order.action);
    return isLarge && family != PanelFamily::List && family != PanelFamily::Tree;
}

bool RunPanelCommand(Soak& soak) {
    PanelWork work{soak, static_cast<PanelKind>(soak.Below(4)), static_cast<int>(soak.Below(4))};
    soak.App().GetSettings().Set(Option::CtrlBarCatSet, work.set);
    work.set = CategorySetOf(work.set);
    work.Fill();
    if (work.panel.Entries().empty())
        return false;
    const int position = static_cast<int>(soak.Below(work.panel.Entries().size()));
    const PanelEntry entry = work.panel.Entries()[static_cast<size_t>(position)];
    const std::vector<PanelCommand> commands = EntryCommands(work.kind, entry, soak.books.size() > 1);
    const PanelCommand command = commands[soak.Below(commands.size())];
    PanelOrder order = work.panel.OrderOf(position, command);
    const Ids notes(order.notes.begin(), order.notes.end());
    if (command.scope == PanelScope::All && FamilyOf(order.action) != PanelFamily::Tree)
        soak.Require(notes == work.Wanted(position), "notes of a command of " + entry.name);
    if (order.action == PanelAction::Print || (IsSlow(soak, order) && !soak.Chance(10)))
        return false;
    soak.Note("  " + std::string(command.text) + " of " + entry.name);
    const Rgb color = soak.AnyColor();
    const CNoteList& list = soak.App().List();
    const int32_t focus = list.IsEmpty() ? -1 : list[soak.Below(list.Count())].id;
    std::vector<CDatabase> targets = CopyTargets(soak.App());
    std::filesystem::path archive;
    if (order.action == PanelAction::Copy)
        order.noteBook = static_cast<int>(soak.Below(targets.size()));
    if (order.action == PanelAction::Export && !notes.empty())
        soak.prompts.savePaths = {(archive = ArchivePlace(soak)).string()};
    soak.SayYes();
    PanelActions(soak.App(), soak.Commands(), [&] { return std::optional(color); }).Run(order, focus);
    if (!archive.empty())
        ArchiveInModel(soak, notes, archive, false);
    if (order.action == PanelAction::SetColor)
        ForEach(soak, notes, [&](ModelNote& note) { return SetColor(note, color); });
    if (order.action == PanelAction::Copy)
        CopyTo(soak, notes, targets[static_cast<size_t>(order.noteBook)].guid);
    RunInModel(work, order, entry, focus, position);
    if (focus > 0 && soak.Open().FindByID(focus))
        soak.CheckNote(soak.Open().FindByID(focus)->guid);
    return true;
}

}  // namespace

std::span<const SoakAction> ListActions() {
    static constexpr SoakAction actions[] = {{"search", 70, Search},
                                             {"sort", 30, Sort},
                                             {"move a note in the list", 20, Move},
                                             {"take notes out of the list", 40, TakeOut},
                                             {"look at a panel", 40, LookAtPanel},
                                             {"command of a panel", 100, RunPanelCommand}};
    return actions;
}

}  // namespace lore
