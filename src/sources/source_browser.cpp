#include "sources/source_browser.h"

#include <algorithm>
#include <unordered_set>

#include "base/text.h"
#include "bibliography/author_text.h"
#include "bibliography/citation_field.h"
#include "bibliography/citation_order.h"
#include "sources/distinct_texts.h"

namespace lore {

namespace {

constexpr SourceFilter kFilters[] = {SourceFilter::Title, SourceFilter::Author, SourceFilter::Publication};
constexpr const char* kAllEntries[] = {"<-ALL TITLES->", "<-ALL AUTHORS->", "<-ALL PUBLICATIONS->"};

constexpr char kNoSourceTitle[] = "Source not selected";

const char* AllEntry(SourceFilter filter) {
    return kAllEntries[static_cast<size_t>(filter)];
}

size_t LineOf(const std::vector<std::string>& lines, std::string_view text) {
    return static_cast<size_t>(std::find(lines.begin(), lines.end(), text) - lines.begin());
}

}  // namespace

SourceBrowser::SourceBrowser(SourceStore& store, bool selects) : store_(store), selects_(selects) {
    Load();
    for (const SourceFilter filter : kFilters)
        Of(filter).entries = {AllEntry(filter)};
    FillEntries();
    shown_ = order_;
}

void SourceBrowser::Load() {
    const AuthorList& authors = store_.World().book.authors;
    all_ = store_.World().book.sources;
    all_.FormatAll(authors);
    order_ = CitationOrder(all_);
    authors_.clear();
    for (const CSource& source : all_)
        authors_.push_back(AuthorsForFilter(source.AuthorIDs, authors));
}

/// False if a choice has lost its line, and stands for all now.
bool SourceBrowser::FillEntries() {
    bool kept = true;
    for (const SourceFilter filter : kFilters) {
        Choice& choice = Of(filter);
        const std::string text = choice.entries[choice.chosen];
        choice.entries = DistinctTexts(
            all_, [&](size_t position) { return std::string(Key(filter, static_cast<uint32_t>(position))); });
        std::erase_if(choice.entries,
                      [&](const std::string& entry) { return CompareNoCase(entry, AllEntry(filter)) == 0; });
        // The line that stands for all is an entry like the others, in its place by its text.
        const auto isBefore = [](const std::string& a, const std::string& b) { return CompareNoCase(a, b) < 0; };
        choice.entries.insert(
            std::upper_bound(choice.entries.begin(), choice.entries.end(), std::string(AllEntry(filter)), isBefore),
            AllEntry(filter));
        choice.chosen = LineOf(choice.entries, text);
        if (choice.chosen == choice.entries.size()) {
            choice.chosen = LineOf(choice.entries, AllEntry(filter));
            kept = false;
        }
    }
    return kept;
}

std::string_view SourceBrowser::Key(SourceFilter filter, uint32_t position) const {
    if (filter == SourceFilter::Author)
        return authors_[position];
    return FieldText(all_[position], filter == SourceFilter::Title ? 0 : 1);
}

void SourceBrowser::Keep(SourceFilter filter) {
    const Choice& choice = Of(filter);
    const std::string_view text = Trim(choice.entries[choice.chosen]);
    if (text != AllEntry(filter))
        std::erase_if(shown_, [&](uint32_t position) { return Key(filter, position) != text; });
}

/// A choice that isn't the one that was changed counts as standing for all when it stands at its first line. That is
/// the line for all, but for lists with a text that sorts before "<".
void SourceBrowser::FilterBy(SourceFilter changed) {
    shown_ = order_;
    Keep(changed);
    for (const SourceFilter filter : kFilters) {
        if (filter != changed && Of(filter).chosen > 0)
            Keep(filter);
    }
    if (!SelectedRow())
        selected_ = -1;
}

void SourceBrowser::Choose(SourceFilter filter, size_t line) {
    Of(filter).chosen = line;
    FilterBy(filter);
}

bool SourceBrowser::ShowsFilters() const {
    return store_.World().settings.Flag(Option::ShowSrcFilters);
}

void SourceBrowser::ToggleFilters() {
    store_.World().settings.Set(Option::ShowSrcFilters, ShowsFilters() ? 0 : 1);
}

std::optional<size_t> SourceBrowser::RowOf(int32_t sourceId) const {
    const auto found = std::find_if(shown_.begin(), shown_.end(), [&](uint32_t position) {
        return sourceId > 0 && all_[position].SourceID == sourceId;
    });
    return found == shown_.end() ? std::nullopt : std::optional(static_cast<size_t>(found - shown_.begin()));
}

void SourceBrowser::Select(std::optional<size_t> row) {
    selected_ = row ? (*this)[*row].SourceID : -1;
}

std::optional<CSource> SourceBrowser::SourceToEdit() {
    EditWorld& world = store_.World();
    const CSource* const source = world.book.sources.FindSourceByID(selected_);
    if (selected_ > 0 && source)
        return *source;
    world.prompts.Message("You must select a source to edit.", kNoSourceTitle, PromptIcon::Warning);
    return std::nullopt;
}

bool SourceBrowser::Delete() {
    EditWorld& world = store_.World();
    const CSource* const source = world.book.sources.FindSourceByID(selected_);
    if (selected_ <= 0 || !source) {
        world.prompts.Message("You must select a source to delete.", kNoSourceTitle, PromptIcon::Warning);
        return false;
    }
    if (!source->NoteIDs.IsEmpty()) {
        world.prompts.Message("This source has notes tied to it, you may not delete it.", "Notes Attached!",
                              PromptIcon::Warning);
        return false;
    }
    const std::optional<size_t> row = SelectedRow();
    if (world.prompts.Ask("Do you wish to delete this source?", "Delete Source?") != PromptAnswer::Yes ||
        !store_.Remove(selected_))
        return false;
    Refresh(-1);
    // The one that has taken its place, so that the keyboard goes on from there.
    if (row && Count() > 0)
        Select(std::min(*row, Count() - 1));
    return true;
}

void SourceBrowser::Refresh(int32_t saved) {
    std::unordered_set<int32_t> ids = {saved};
    for (const uint32_t position : shown_)
        ids.insert(all_[position].SourceID);
    Load();
    if (FillEntries()) {
        shown_ = order_;
        std::erase_if(shown_, [&](uint32_t position) { return !ids.contains(all_[position].SourceID); });
    } else {
        FilterBy(SourceFilter::Title);
    }
    if (saved > 0)
        selected_ = saved;
    if (!SelectedRow())
        selected_ = -1;
}

}  // namespace lore
