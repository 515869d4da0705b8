#include "notes/filter_panels.h"

#include <algorithm>

#include "base/text.h"

namespace lore {

namespace {

std::string Fold(std::string_view text) {
    return ToLower(ToUtf8(text));
}

}  // namespace

void FilterPanel::SetEntries(std::vector<PanelEntry> entries, const LongList* listed) {
    entries_ = std::move(entries);
    folded_.clear();
    if (listed)
        Mark(*listed);
    Count();
    Narrow();
}

void FilterPanel::CountNotes(const LongList& listed) {
    Mark(listed);
    Count();
}

void FilterPanel::Mark(const LongList& listed) {
    listed_.Clear();
    for (const int32_t note : listed)
        listed_.Add(note);
}

void FilterPanel::SetFilter(std::string_view text) {
    filter_ = Fold(Trim(text));
    Narrow();
}

void FilterPanel::Count() {
    for (PanelEntry& entry : entries_)
        entry.inList = static_cast<int>(std::count_if(entry.notes.begin(), entry.notes.end(),
                                                      [&](int32_t note) { return listed_.Contains(note); }));
}

bool FilterPanel::Matches(int position) const {
    return !filter_.empty() && folded_[static_cast<size_t>(position)].find(filter_) != std::string::npos;
}

void FilterPanel::Narrow() {
    if (!filter_.empty() && folded_.empty())
        std::transform(entries_.begin(), entries_.end(), std::back_inserter(folded_),
                       [](const PanelEntry& entry) { return Fold(entry.name); });
    std::vector<bool> keep(entries_.size(), filter_.empty());
    // Backwards, so that an entry's subtree has been decided when its turn comes.
    for (int i = static_cast<int>(entries_.size()) - 1; i >= 0 && !filter_.empty(); --i) {
        if (Matches(i))
            keep[static_cast<size_t>(i)] = true;
        if (keep[static_cast<size_t>(i)] && At(i).parent >= 0)
            keep[static_cast<size_t>(At(i).parent)] = true;
    }
    shown_.clear();
    for (size_t i = 0; i < keep.size(); ++i)
        if (keep[i])
            shown_.push_back(static_cast<int>(i));
}

std::string FilterPanel::Counts(int position) const {
    return std::to_string(At(position).inList) + "/" + std::to_string(At(position).notes.size());
}

std::string FilterPanel::Caption(int position) const {
    const std::string counts = "(" + Counts(position) + ")";
    return At(position).value == PanelValue::Color ? counts : At(position).name + " " + counts;
}

LongList FilterPanel::NotesOf(int position, PanelScope scope) const {
    IDMarks below, taken;
    std::vector<int32_t> notes;
    for (int i = position + 1; i < At(position).end; ++i)
        for (const int32_t note : At(i).notes)
            if (below.Add(note) && scope == PanelScope::OnlyInEntries)
                notes.push_back(note);
    if (scope != PanelScope::OnlyInEntries)
        for (const int32_t note : At(position).notes)
            if (taken.Add(note) && (scope == PanelScope::All || !below.Contains(note)))
                notes.push_back(note);
    return LongList(std::move(notes));
}

LongList FilterPanel::NotesOfAll() const {
    IDMarks taken;
    std::vector<int32_t> notes;
    for (const PanelEntry& entry : entries_)
        for (const int32_t note : entry.notes)
            if (taken.Add(note))
                notes.push_back(note);
    return LongList(std::move(notes));
}

PanelOrder FilterPanel::OrderOf(int position, const PanelCommand& command) const {
    PanelOrder order;
    order.action = command.action;
    if (position < 0) {
        order.notes = NotesOfAll();
        return order;
    }
    const PanelEntry& entry = At(position);
    order.value = entry.value;
    order.id = entry.id;
    order.name = entry.name;
    order.color = entry.color;
    int from = position;
    while (command.action == PanelAction::ClearTree && At(from).parent >= 0)
        from = At(from).parent;
    order.notes = NotesOf(from, command.scope);
    return order;
}

}  // namespace lore
