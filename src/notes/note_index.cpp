#include "notes/note_index.h"

#include <algorithm>

namespace lore {

void NoteIndex::AddToIndex(std::string_view path, int32_t id) {
    if (id <= 0 || places_.contains(id))
        return;
    const auto [file, isNew] = byPath_.try_emplace(std::string(path), static_cast<uint32_t>(entries_.size()));
    if (isNew)
        entries_.push_back({std::string(path), {}, 0});
    Entry& entry = entries_[file->second];
    places_.emplace(id, Place{file->second, static_cast<uint32_t>(entry.ids.size())});
    entry.ids.push_back(id);
}

const std::string* NoteIndex::FindPath(int32_t id) const {
    const auto hit = places_.find(id);
    return hit == places_.end() ? nullptr : &entries_[hit->second.entry].path;
}

void NoteIndex::RemoveFromIndex(int32_t id) {
    const auto hit = places_.find(id);
    if (hit == places_.end())
        return;
    const Place place = hit->second;
    places_.erase(hit);
    taken_.Add(id);
    Entry& entry = entries_[place.entry];
    entry.ids[place.position] = 0;
    if (++entry.removed * 2 > entry.ids.size())
        Compact(place.entry);
}

int32_t NoteIndex::GiveID(int& lastGiven) {
    const int32_t id =
        free_.Find(int64_t{lastGiven} + 1, [this](int32_t other) { return Contains(other) || taken_.Contains(other); });
    taken_.Add(id);
    lastGiven = std::max(lastGiven, id);
    return id;
}

/// Closes the gaps of an entry. It runs when half of the entry are gaps, so each removal pays for a constant share.
void NoteIndex::Compact(uint32_t number) {
    Entry& entry = entries_[number];
    std::erase(entry.ids, 0);
    entry.removed = 0;
    for (size_t i = 0; i < entry.ids.size(); ++i)
        places_[entry.ids[i]].position = static_cast<uint32_t>(i);
}

void NoteIndex::AddHiddenCopy(std::string_view path, int32_t id) {
    hidden_.emplace(id, path);
}

std::vector<std::string> NoteIndex::HiddenPaths(int32_t id) const {
    std::vector<std::string> paths;
    const auto [first, last] = hidden_.equal_range(id);
    for (auto it = first; it != last; ++it)
        paths.push_back(it->second);
    return paths;
}

std::vector<CNoteIDsPath> NoteIndex::Entries() const {
    std::vector<CNoteIDsPath> result;
    for (const Entry& entry : entries_) {
        std::vector<int32_t> ids = entry.ids;
        std::erase(ids, 0);
        if (!ids.empty())
            result.push_back({entry.path, LongList(std::move(ids))});
    }
    return result;
}

LongList NoteIndex::AllIDs() const {
    std::vector<int32_t> ids;
    ids.reserve(places_.size());
    for (const Entry& entry : entries_)
        std::copy_if(entry.ids.begin(), entry.ids.end(), std::back_inserter(ids), [](int32_t id) { return id != 0; });
    return LongList(std::move(ids));
}

}  // namespace lore
