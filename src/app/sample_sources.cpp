#include "app/sample_sources.h"

#include <utility>

#include "app/sample_json.h"
#include "app/source_json.h"
#include "bibliography/new_author.h"

namespace lore {
namespace {

/// New ids or GUIDs by those that stand in the files.
template <typename Key>
using Renamed = std::unordered_map<Key, Key>;

Renamed<std::string> AddTypes(const SampleJson& json, const ReadContext& context, const TellLeftOut& tell,
                              CustomTypeList& types) {
    Renamed<std::string> guids;
    for (const SampleJson& entry : ArrayOf(json, "types")) {
        CCustomSourceType type = TypeOfJson(entry, "type", tell);
        type.date = context.nowUtc;
        type.GUID = guids[type.GUID] = context.guids->NewGuid();
        types.AddType(std::move(type));
    }
    types.SortTypes();
    types.AssignNumbers();
    return guids;
}

Renamed<int32_t> AddAuthors(const SampleJson& json, const TellLeftOut& tell, AuthorList& authors, int& maxAuthorID) {
    Renamed<int32_t> ids;
    AuthorIDs given{SourceList()};
    for (const SampleJson& entry : ArrayOf(json, "authors")) {
        CAuthor author = AuthorOfJson(entry, "author", tell);
        author.AuthorID = ids[author.AuthorID] = given.Take(authors, maxAuthorID);
        authors.AddAuthor(author);
    }
    return ids;
}

}  // namespace

const CSource* SampleSources::Find(const std::string& key) const {
    const auto found = idByKey.find(key);
    return found == idByKey.end() ? nullptr : sources.FindSourceByID(found->second);
}

SampleSources ReadSampleSources(std::string_view sourcesJson, std::string_view typesJson, const ReadContext& context,
                                int& maxAuthorID) {
    SampleSources result;
    const TellLeftOut tell = [&](const std::string& value) { result.leftOut.push_back(value); };
    const auto guids = AddTypes(ParseSampleJson(typesJson), context, tell, result.types);
    const SampleJson json = ParseSampleJson(sourcesJson);
    const auto authorIDs = AddAuthors(json, tell, result.authors, maxAuthorID);
    for (const SampleJson& entry : ArrayOf(json, "sources")) {
        CSource source = SourceOfJson(entry, "source " + TextOf(entry, "key"), tell, context);
        CCustomSourceType& type = source.CustomTypeCopy;
        if (const auto guid = guids.find(type.GUID); guid != guids.end()) {
            type.GUID = guid->second;
            type.date = context.nowUtc;
            source.SourceType = result.types.FindTypeByGUID(type.GUID)->number;
        }
        for (const int32_t author : std::exchange(source.AuthorIDs, {}))
            if (const auto id = authorIDs.find(author); id != authorIDs.end())
                source.AuthorIDs.AddTail(id->second);
        source.SourceID = result.sources.NewSourceID();
        source.SourceGUID = context.guids->NewGuid();
        result.idByKey[TextOf(entry, "key")] = source.SourceID;
        result.sources.AddTail(std::move(source));
    }
    result.sources.LinkCustomTypes(result.types);
    return result;
}

}  // namespace lore
