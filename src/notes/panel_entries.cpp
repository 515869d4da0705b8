#include "notes/panel_entries.h"

#include <algorithm>
#include <cstdio>

#include "base/id_marks.h"
#include "base/text.h"
#include "base/text_join.h"
#include "bibliography/source_types.h"

namespace lore {

namespace {

/// What stands for the notes without a source.
constexpr char kNoSourceName[] = "<NO_SOURCE>";

PanelEntry& AddEntry(std::vector<PanelEntry>& entries, PanelValue value, std::string name, int parent = -1) {
    PanelEntry& entry = entries.emplace_back();
    entry.value = value;
    entry.name = std::move(name);
    entry.parent = parent;
    entry.level = parent < 0 ? 0 : entries[static_cast<size_t>(parent)].level + 1;
    entry.end = static_cast<int>(entries.size());
    return entry;
}

/// The notes of a category in the sets in view, without duplicates.
std::vector<int32_t> NotesOf(const CProCategoryTree& node, int set, IDMarks& seen) {
    if (node.IsUnassigned() && set == kAllSets)
        return node.GetNotes(set).Values();
    std::vector<int32_t> notes;
    seen.Clear();
    for (int i = 0; i < kSetCount; ++i)
        if (SelectsSet(set, i))
            for (const int32_t note : node.notes[static_cast<size_t>(i)])
                if (seen.Add(note))
                    notes.push_back(note);
    return notes;
}

void AddCategory(std::vector<PanelEntry>& entries, const CProCategoryTree& node, int set, int parent, IDMarks& seen) {
    const auto position = static_cast<int>(entries.size());
    PanelEntry& entry = AddEntry(entries, PanelValue::Category, node.name, parent);
    entry.id = node.id;
    entry.notes = NotesOf(node, set, seen);
    for (const CProCategoryTree& child : node.children)
        AddCategory(entries, child, set, position, seen);
    entries[static_cast<size_t>(position)].end = static_cast<int>(entries.size());
}

void AddSource(std::vector<PanelEntry>& entries, const CSource& source, int parent = -1) {
    std::string name = JoinTexts(std::string(SourceTypeName(source)) + ": ", GroupKey(source, SourceGrouping::Title));
    PanelEntry& entry = AddEntry(entries, PanelValue::Source, std::move(name), parent);
    entry.id = source.SourceID;
    entry.notes = source.NoteIDs.Values();
}

void AddGroup(std::vector<PanelEntry>& entries, const SourceList& sources, const SourceGroup& group) {
    const auto position = static_cast<int>(entries.size());
    AddEntry(entries, PanelValue::SourceGroup, group.key);
    std::vector<int32_t> notes;
    for (const size_t source : group.positions) {
        AddSource(entries, sources[source], position);
        notes.insert(notes.end(), entries.back().notes.begin(), entries.back().notes.end());
    }
    PanelEntry& entry = entries[static_cast<size_t>(position)];
    entry.notes = std::move(notes);
    entry.end = static_cast<int>(entries.size());
}

const char* NameWithoutKey(SourceGrouping grouping) {
    switch (grouping) {
        case SourceGrouping::Publication:
            return "<NO_PUBLICATION>";
        case SourceGrouping::Author:
            return "<NO_AUTHOR>";
        default:
            return "<NO_TITLE>";
    }
}

/// The groups with a name each, in the order of the lower-cased names.
std::vector<SourceGroup> OrderedGroups(const SourceList& sources, SourceGrouping grouping) {
    std::vector<SourceGroup> groups = GroupSources(sources, grouping);
    std::vector<std::pair<std::string, size_t>> order;
    for (SourceGroup& group : groups) {
        if (group.key.empty())
            group.key = NameWithoutKey(grouping);
        order.emplace_back(ToLower(group.key), order.size());
    }
    std::sort(order.begin(), order.end());
    std::vector<SourceGroup> ordered;
    ordered.reserve(groups.size());
    for (const auto& [name, position] : order)
        ordered.push_back(std::move(groups[position]));
    return ordered;
}

std::string ColorName(Rgb color) {
    char text[8];
    std::snprintf(text, sizeof text, "#%02x%02x%02x", RedOf(color), GreenOf(color), BlueOf(color));
    return text;
}

}  // namespace

std::vector<PanelEntry> CategoryEntries(const CProCategoryList& forest, int set) {
    std::vector<PanelEntry> entries;
    IDMarks seen;
    for (const CProCategoryTree& root : forest.Roots())
        AddCategory(entries, root, set, -1, seen);
    return entries;
}

std::vector<PanelEntry> SourceEntries(const SourceList& sources, SourceGrouping grouping,
                                      const LongList& withoutSource) {
    const std::vector<SourceGroup> groups = OrderedGroups(sources, grouping);
    std::vector<PanelEntry> entries;
    entries.reserve(1 + groups.size() + sources.Count());
    AddEntry(entries, PanelValue::NoSource, kNoSourceName).notes = withoutSource.Values();
    for (const SourceGroup& group : groups) {
        if (grouping == SourceGrouping::Title && group.positions.size() == 1)
            AddSource(entries, sources[group.positions.front()]);
        else
            AddGroup(entries, sources, group);
    }
    return entries;
}

std::vector<PanelEntry> KeyWordEntries(const CKeyWordList& keyWords) {
    std::vector<PanelEntry> entries;
    for (const CKeyWord& keyWord : keyWords.Entries())
        AddEntry(entries, PanelValue::KeyWord, keyWord.name).notes = keyWord.notes.Values();
    return entries;
}

std::vector<PanelEntry> ColorEntries(const CSearchColorList& colors) {
    std::vector<PanelEntry> entries;
    for (const CSearchColor& color : colors.Entries()) {
        PanelEntry& entry = AddEntry(entries, PanelValue::Color, ColorName(color.color));
        entry.id = color.id;
        entry.color = color.color;
        entry.notes = color.notes.Values();
    }
    return entries;
}

}  // namespace lore
