#include "notes/text_cache.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "rtf/rtf.h"

namespace lore {

namespace {

uint64_t KeyOf(NotePlace place) {
    return uint64_t{place.file} << 32 | place.record;
}

/// The room in which a thread joins the texts of a file, used again for the next one so that no gaps stay in memory.
std::string& Spare() {
    thread_local std::string spare;
    return spare;
}

}  // namespace

bool TextCache::Reserve(size_t bytes) {
    if (bytes_.fetch_add(bytes) + bytes <= budget_)
        return true;
    bytes_ -= bytes;
    return false;
}

void TextCache::Begin(size_t fileCount) {
    Clear();
    loading_.resize(fileCount);
}

void TextCache::Take(NotePlace place, int32_t noteId, std::string_view rtfText) {
    Loading& file = loading_[place.file];
    if (file.overBudget)
        return;
    if (file.texts.bytes.empty())
        file.texts.bytes.swap(Spare());
    const size_t before = file.texts.bytes.size();
    thread_local std::string text;
    PlainText(rtfText, text);
    file.texts.Add(noteId, place.record, text);
    if (Reserve(file.texts.bytes.size() - before))
        return;
    bytes_ -= before;
    file = {{}, true};
}

void TextCache::EndFile(size_t file) {
    FoldedTexts& texts = loading_[file].texts;
    std::string exact(texts.bytes);
    texts.bytes.swap(exact);
    exact.clear();
    Spare().swap(exact);
    texts.slices.shrink_to_fit();
}

void TextCache::Finish(const std::vector<ShownNote>& shown) {
    std::unordered_set<uint64_t> places;
    for (const ShownNote& note : shown)
        places.insert(KeyOf(note.place));
    for (uint32_t i = 0; i < loading_.size(); ++i) {
        // What doesn't show isn't found; its bytes stay where they are.
        std::erase_if(loading_[i].texts.slices, [&](const FoldedTexts::Slice& slice) {
            return !places.contains(KeyOf({i, slice.record}));
        });
    }
}

void TextCache::Attach(const std::vector<std::string>& paths) {
    for (size_t i = 0; i < std::min(paths.size(), loading_.size()); ++i) {
        if (!loading_[i].overBudget)
            Hold(paths[i], std::move(loading_[i].texts));
    }
    loading_ = {};
}

void TextCache::Hold(const std::string& path, FoldedTexts texts) {
    const FoldedTexts& held = files_[path] = std::move(texts);
    for (uint32_t i = 0; i < held.slices.size(); ++i)
        places_[held.slices[i].id] = {&held, i};
}

void TextCache::UpdateFile(const std::string& path, const std::vector<CNote>& notes, const std::vector<bool>& shown) {
    RemoveFile(path);
    FoldedTexts texts;
    for (uint32_t i = 0; i < notes.size(); ++i) {
        if (shown.empty() || shown[i])
            texts.Add(notes[i].id, i, PlainText(notes[i].rtfText));
    }
    texts.bytes.shrink_to_fit();
    if (Reserve(texts.bytes.size()))
        Hold(path, std::move(texts));
}

void TextCache::RemoveFile(const std::string& path) {
    const auto file = files_.find(path);
    if (file == files_.end())
        return;
    for (const FoldedTexts::Slice& slice : file->second.slices) {
        const auto place = places_.find(slice.id);
        if (place != places_.end() && place->second.file == &file->second)
            places_.erase(place);
    }
    bytes_ -= file->second.bytes.size();
    files_.erase(file);
}

void TextCache::Clear() {
    loading_ = {};
    files_.clear();
    places_.clear();
    bytes_ = 0;
}

std::optional<std::string_view> TextCache::TextOf(int32_t id) const {
    const auto place = places_.find(id);
    if (place == places_.end())
        return std::nullopt;
    return place->second.file->TextOf(place->second.file->slices[place->second.slice]);
}

std::optional<std::vector<int32_t>> TextCache::SearchFile(const std::string& path, const NoteMatcher& matcher) const {
    const auto file = files_.find(path);
    if (file == files_.end())
        return std::nullopt;
    const std::vector<uint8_t> matches = matcher.MatchSlices(file->second);
    std::vector<int32_t> ids;
    for (size_t i = 0; i < matches.size(); ++i) {
        if (matches[i])
            ids.push_back(file->second.slices[i].id);
    }
    return ids;
}

}  // namespace lore
