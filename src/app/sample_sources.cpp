#include "app/sample_sources.h"

#include "app/sample_json.h"
#include "bibliography/new_author.h"
#include "bibliography/source_record.h"

namespace lore {
namespace {

/// New ids or GUIDs by those that stand in the files.
template <typename Key, typename Value>
using Renamed = std::unordered_map<Key, Value>;

DateTime DateOf(const SampleJson& json, const char* key) {
    DateTime date = DateTime::Invalid();
    ParseDateFieldText(ReplaceAll(ReplaceAll(TextOf(json, key), "T", "-"), ":", "-"), date);
    return date;
}

CCustomSourceType TypeOf(const SampleJson& json, const ReadContext& context) {
    CCustomSourceType type;
    type.name = TextOf(json, "name");
    type.date = context.nowUtc;
    for (const SampleJson& field : ArrayOf(json, "fields"))
        type.fields.push_back({NumberOf(field, "kind"), NumberOf(field, "end"), TextOf(field, "name"),
                               TextOf(field, "value"), FlagOf(field, "underline"), FlagOf(field, "italics"),
                               FlagOf(field, "bold")});
    return type;
}

Renamed<std::string, std::string> AddTypes(const SampleJson& json, const ReadContext& context, CustomTypeList& types) {
    Renamed<std::string, std::string> guids;
    for (const SampleJson& entry : ArrayOf(json, "types")) {
        CCustomSourceType type = TypeOf(entry, context);
        type.GUID = guids[TextOf(entry, "GUID")] = context.guids->NewGuid();
        types.AddType(std::move(type));
    }
    types.SortTypes();
    types.AssignNumbers();
    return guids;
}

Renamed<int32_t, int32_t> AddAuthors(const SampleJson& json, AuthorList& authors, int& maxAuthorID) {
    Renamed<int32_t, int32_t> ids;
    AuthorIDs given{SourceList()};
    for (const SampleJson& entry : ArrayOf(json, "authors")) {
        const int32_t id = given.Take(authors, maxAuthorID);
        ids[NumberOf(entry, "AuthorID")] = id;
        authors.AddAuthor({id, TextOf(entry, "first"), TextOf(entry, "middle"), TextOf(entry, "last"), {}, {}});
    }
    return ids;
}

void TakeFields(const SampleJson& json, CSource& source) {
    source.SourceType = NumberOf(json, "SourceType", source.SourceType);
    source.FormatStyle = NumberOf(json, "FormatStyle", source.FormatStyle);
    source.YearOnly = NumberOf(json, "YearOnly");
    source.UseDateText = NumberOf(json, "UseDateText");
    source.DateText = TextOf(json, "DateText");
    source.HasDate = FlagOf(json, "HasDate");
    if (source.HasDate)
        source.SourceDate = DateOf(json, "SourceDate");
    const SampleJson fields = ArrayOf(json, "FieldTexts");
    for (size_t slot = 0; slot < std::min(fields.size(), source.FieldTexts.size()); ++slot)
        source.FieldTexts[slot] = FromUtf8(fields[slot].get_ref<const std::string&>());
}

void TakeType(const SampleJson& json, const Renamed<std::string, std::string>& guids, const CustomTypeList& types,
              const ReadContext& context, CSource& source) {
    const auto copy = json.find("CustomTypeCopy");
    if (copy == json.end())
        return;
    const auto guid = guids.find(TextOf(*copy, "GUID"));
    if (guid == guids.end())
        return;
    source.CustomTypeCopy = TypeOf(*copy, context);
    source.CustomTypeCopy.GUID = guid->second;
    source.SourceType = types.FindTypeByGUID(guid->second)->number;
}

}  // namespace

const CSource* SampleSources::Find(const std::string& key) const {
    const auto found = idByKey.find(key);
    return found == idByKey.end() ? nullptr : sources.FindSourceByID(found->second);
}

SampleSources ReadSampleSources(std::string_view sourcesJson, std::string_view typesJson, const ReadContext& context,
                                int& maxAuthorID) {
    SampleSources result;
    const auto guids = AddTypes(ParseSampleJson(typesJson), context, result.types);
    const SampleJson json = ParseSampleJson(sourcesJson);
    const auto authorIDs = AddAuthors(json, result.authors, maxAuthorID);
    for (const SampleJson& entry : ArrayOf(json, "sources")) {
        CSource source = MakeSource(context);
        TakeFields(entry, source);
        TakeType(entry, guids, result.types, context, source);
        for (const SampleJson& author : ArrayOf(entry, "AuthorIDs"))
            if (const auto id = authorIDs.find(author.get<int32_t>()); id != authorIDs.end())
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
