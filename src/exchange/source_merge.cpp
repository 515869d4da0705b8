#include "exchange/source_merge.h"

#include <unordered_set>

#include "base/text.h"
#include "bibliography/custom_type_fields.h"

namespace lore {

namespace {

bool HasCustomType(const CSource& source) {
    return source.SourceType >= kFirstCustomType && !source.CustomTypeCopy.GUID.empty();
}

}  // namespace

void SourceMerge::AddTypes(const std::vector<CSource>& sources) {
    for (const CSource& source : sources) {
        if (!HasCustomType(source) || book_.sources.FindSourceByGUID(source.SourceGUID) ||
            book_.types.FindTypeByGUID(source.CustomTypeCopy.GUID))
            continue;
        CCustomSourceType type = source.CustomTypeCopy;
        ClearValues(type);
        book_.types.AddType(std::move(type));
        newTypes_ = true;
    }
}

void SourceMerge::NumberTypes() {
    if (newTypes_)
        book_.types.SortTypes();
    book_.types.AssignNumbers();
}

int32_t SourceMerge::Merge(const CSource& source) {
    if (const CSource* known = book_.sources.FindSourceByGUID(source.SourceGUID))
        return known->SourceID;
    CSource added = source;
    added.SourceID = book_.sources.NewSourceID();
    ranOut_ = ranOut_ || added.SourceID == 0;
    added.NoteIDs.RemoveAll();
    added.AuthorIDs.RemoveAll();
    std::unordered_map<int32_t, const CAuthor*> authors;
    for (const CAuthor& author : source.EmbeddedAuthors)
        authors.emplace(author.AuthorID, &author);
    for (const int32_t id : source.AuthorIDs) {
        if (const auto found = authors.find(id); found != authors.end())
            added.AuthorIDs.AddTail(MergeAuthor(*found->second));
    }
    added.EmbeddedAuthors.clear();
    LinkType(added);
    const int32_t id = added.SourceID;
    book_.sources.AddTail(std::move(added));
    newSources_ = true;
    return id;
}

int32_t SourceMerge::MergeAuthor(const CAuthor& author) {
    const int32_t known = book_.authors.FindAuthorByName(author);
    if (known >= 0)
        return known;
    CAuthor added = author;
    if (!authorIDs_)
        authorIDs_.emplace(book_.sources);
    added.AuthorID = authorIDs_->Take(book_.authors, counters_.MaxAuthorID);
    ranOut_ = ranOut_ || added.AuthorID == 0;
    book_.authors.AddAuthor(added);
    newAuthors_ = true;
    return added.AuthorID;
}

void SourceMerge::LinkType(CSource& source) const {
    if (!HasCustomType(source))
        return;
    if (const CCustomSourceType* type = book_.types.FindTypeByGUID(source.CustomTypeCopy.GUID)) {
        source.CustomTypeCopy = MergeCustomType(*type, source.CustomTypeCopy);
        source.SourceType = type->number;
    }
}

void SourceMerge::MergeSourcesOf(ArchiveNote& entry) {
    entry.note.sources.RemoveAll();
    for (const CSource& source : entry.sources)
        entry.note.sources.AddUnique(Merge(source));
}

void KeepSourceInfo(ArchiveNote& imported, const CNote& existing) {
    std::unordered_set<std::string> sources, known;
    for (const CSource& source : imported.sources)
        sources.insert(ToLower(source.SourceGUID));
    for (const CNoteSourceInfo& info : imported.note.sourceInfo)
        known.insert(ToLower(info.key));
    for (const CNoteSourceInfo& info : existing.sourceInfo) {
        const std::string key = ToLower(info.key);
        if (sources.contains(key) && known.insert(key).second)
            imported.note.sourceInfo.push_back(info);
    }
}

}  // namespace lore
