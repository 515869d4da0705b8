#include "bibliography/source_list.h"

#include <algorithm>

#include "bibliography/citation.h"
#include "bibliography/citation_order.h"
#include "bibliography/old_text_date.h"
#include "bibliography/selection_order.h"
#include "bibliography/source_record.h"

namespace lore {

// Sources.dat and Bib.dat
//
//   FixedDouble    version
//   FixedInt       number of sources
//   source *       main form in Sources.dat, bibliography form in Bib.dat

namespace {

void WriteListHead(RecordWriter* stream, double version, size_t count) {
    WriteFixedDouble(stream, version);
    WriteFixedInt(stream, static_cast<int32_t>(count));
}

}  // namespace

FileResult SourceList::LoadSources(const std::filesystem::path& path, const ReadContext& context) {
    RemoveAll();
    bool isDropped = false;
    holdsUnreadDates_ = false;
    const FileResult result = LoadFile(path, [&](RecordReader* stream) {
        ReadCounted(stream, [&] {
            CSource source;
            ReadSource(stream, Version(), context, source);
            holdsUnreadDates_ = holdsUnreadDates_ || (HasTextDates(Version()) && HoldsUnreadDate(source));
            if (source.SourceID > 0)
                sources_.push_back(std::move(source));
            else
                isDropped = true;
        });
    });
    if (isDropped)
        MarkPassedOver();
    Reindex();
    return result;
}

FileResult SourceList::SaveSources(const std::filesystem::path& path, const AuthorList& authors, double version) {
    FormatAll(authors);
    RecordWriter stream;
    WriteListHead(&stream, version, sources_.size());
    for (const CSource& source : sources_)
        WriteSource(&stream, source);
    FileResult result = SaveRecordFile(path, stream);
    holdsUnreadDates_ = holdsUnreadDates_ && !result.Ok();
    return result;
}

FileResult SourceList::SaveBibliography(const std::filesystem::path& path, const AuthorList& authors) const {
    if (sources_.empty())
        return {};
    RecordWriter stream;
    WriteListHead(&stream, kDataVersion, sources_.size());
    for (CSource copy : sources_) {
        FormatSource(copy, authors);
        WriteBibliographySource(&stream, copy);
    }
    return SaveRecordFile(path, stream);
}

const CSource* SourceList::FindSourceByID(int32_t id) const {
    const auto found = byId_.find(id);
    return found == byId_.end() ? nullptr : &sources_[found->second];
}

CSource* SourceList::FindSourceByID(int32_t id) {
    const auto found = byId_.find(id);
    return found == byId_.end() ? nullptr : &sources_[found->second];
}

const CSource* SourceList::FindSourceByGUID(std::string_view guid) const {
    const auto found = byGuid_.find(std::string(guid));
    return found == byGuid_.end() ? nullptr : &sources_[found->second];
}

void SourceList::AddTail(CSource source) {
    sources_.push_back(std::move(source));
    Index(sources_.size() - 1);
}

bool SourceList::ReplaceSource(int32_t id, CSource source) {
    const auto found = byId_.find(id);
    if (found == byId_.end())
        return false;
    CSource& old = sources_[found->second];
    const bool sameKeys = old.SourceID == source.SourceID && old.SourceGUID == source.SourceGUID;
    old = std::move(source);
    if (!sameKeys)
        Reindex();
    return true;
}

bool SourceList::RemoveSource(int32_t id) {
    const auto found = byId_.find(id);
    if (found == byId_.end())
        return false;
    sources_.erase(sources_.begin() + static_cast<ptrdiff_t>(found->second));
    Reindex();
    return true;
}

void SourceList::RemoveAll() {
    sources_.clear();
    reservedID_ = 0;
    lost_.Clear();
    Reindex();
}

int32_t SourceList::NextSourceID() const {
    return std::max({largestID_, reservedID_, kFirstID - 1});
}

int32_t SourceList::NewSourceID() const {
    return free_.Find(lost_.Behind(int64_t{NextSourceID()} + 1),
                      [this](int32_t id) { return byId_.contains(id) || lost_.Contains(id); });
}

void SourceList::AddNoteID(int32_t sourceId, int32_t noteId) {
    if (sourceId <= 0)
        return;
    if (CSource* const source = FindSourceByID(sourceId))
        source->NoteIDs.AddUnique(noteId);
    else
        lost_.Add(sourceId);
}

void SourceList::RemoveNoteID(int32_t sourceId, int32_t noteId) {
    if (CSource* source = sourceId > 0 ? FindSourceByID(sourceId) : nullptr)
        source->NoteIDs.RemoveValue(noteId);
}

bool SourceList::NameAuthors() const {
    return std::any_of(begin(), end(), [](const CSource& source) { return !source.AuthorIDs.IsEmpty(); });
}

void SourceList::FormatAll(const AuthorList& authors) {
    for (CSource& source : sources_)
        FormatSource(source, authors);
}

void SourceList::SortSources(const AuthorList& authors) {
    FormatAll(authors);
    Arrange(CitationOrder(sources_));
}

void SourceList::Arrange(const std::vector<uint32_t>& order) {
    Reorder(sources_, order);
    Reindex();
}

void SourceList::LinkCustomTypes(const CustomTypeList& types) {
    for (CSource& source : sources_) {
        if (source.SourceType < kFirstCustomType)
            continue;
        if (const CCustomSourceType* type = types.FindTypeByGUID(source.CustomTypeCopy.GUID))
            source.CustomTypeCopy = MergeCustomType(*type, source.CustomTypeCopy);
    }
}

void SourceList::Index(size_t position) {
    const CSource& source = sources_[position];
    byId_.try_emplace(source.SourceID, static_cast<uint32_t>(position));
    byGuid_.try_emplace(source.SourceGUID, static_cast<uint32_t>(position));
    largestID_ = std::max(largestID_, source.SourceID);
}

void SourceList::Reindex() {
    byId_.clear();
    byGuid_.clear();
    byId_.reserve(sources_.size());
    byGuid_.reserve(sources_.size());
    largestID_ = 0;
    free_ = FreeIDs(kFirstID);
    for (size_t i = 0; i < sources_.size(); ++i)
        Index(i);
}

}  // namespace lore
