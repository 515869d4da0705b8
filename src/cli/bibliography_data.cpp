#include "cli/bibliography_data.h"

#include <algorithm>

#include "base/file_io.h"
#include "base/text.h"
#include "bibliography/source_record.h"
#include "cli/json_records.h"

namespace lore {

namespace {

/// A number as a field of a file would be read. A fraction is cut off; what a field can't hold becomes the nearest
/// number.
int32_t NumberOf(const Json& number) {
    if (number.is_number_float())
        return static_cast<int32_t>(std::clamp<double>(number.get<double>(), INT32_MIN, INT32_MAX));
    return ParseInt(number.is_number_unsigned() ? std::to_string(number.get<uint64_t>())
                                                : std::to_string(number.get<int64_t>()));
}

// A value of the right type replaces what stands there; anything else, or none, leaves it.

void Take(const Json& from, const char* key, std::string& to) {
    if (const auto found = from.find(key); found != from.end() && found->is_string())
        to = CleanText(FromUtf8(found->get_ref<const std::string&>()));
}

void Take(const Json& from, const char* key, int32_t& to) {
    const auto found = from.find(key);
    if (found == from.end())
        return;
    if (found->is_number())
        to = NumberOf(*found);
    else if (found->is_boolean())
        to = found->get<bool>() ? 1 : 0;
}

void Take(const Json& from, const char* key, bool& to) {
    int32_t number = to ? 1 : 0;
    Take(from, key, number);
    to = number > 0;
}

void Take(const Json& from, const char* key, LongList& to) {
    const auto found = from.find(key);
    if (found == from.end() || !found->is_array())
        return;
    to.RemoveAll();
    for (const Json& value : *found) {
        if (value.is_number())
            to.AddTail(NumberOf(value));
    }
}

void Take(const Json& from, const char* key, DateTime& to) {
    const auto found = from.find(key);
    if (found == from.end())
        return;
    if (found->is_null())
        to = DateTime();
    if (!found->is_string())
        return;
    const std::string& text = found->get_ref<const std::string&>();
    int n[6] = {};
    const int read =
        std::sscanf(text.c_str(), "%9d-%9d-%9d%*1[T ]%9d:%9d:%9d", &n[0], &n[1], &n[2], &n[3], &n[4], &n[5]);
    to = read >= 3 ? DateTime(n[0], n[1], n[2], n[3], n[4], n[5]) : DateTime::Invalid();
}

void Take(const Json& from, const char* key, std::vector<std::string>& to) {
    const auto found = from.find(key);
    if (found == from.end() || !found->is_array())
        return;
    to.clear();
    for (const Json& value : *found)
        to.push_back(value.is_string() ? CleanText(FromUtf8(value.get_ref<const std::string&>())) : std::string());
}

CAuthor AuthorOf(const Json& json) {
    CAuthor author;
    Take(json, "AuthorID", author.AuthorID);
    Take(json, "first", author.first);
    Take(json, "middle", author.middle);
    Take(json, "last", author.last);
    Take(json, "reserved1", author.reserved1);
    Take(json, "reserved2", author.reserved2);
    return author;
}

CCustomSourceField FieldOf(const Json& json) {
    CCustomSourceField field;
    Take(json, "kind", field.kind);
    Take(json, "end", field.end);
    Take(json, "name", field.name);
    Take(json, "value", field.value);
    Take(json, "underline", field.underline);
    Take(json, "italics", field.italics);
    Take(json, "bold", field.bold);
    return field;
}

void TakeCustomType(const Json& from, CCustomSourceType& type) {
    const auto json = from.find("CustomTypeCopy");
    if (json == from.end() || !json->is_object())
        return;
    Take(*json, "GUID", type.GUID);
    Take(*json, "name", type.name);
    Take(*json, "date", type.date);
    const auto fields = json->find("fields");
    if (fields == json->end() || !fields->is_array())
        return;
    type.fields.clear();
    for (const Json& field : *fields)
        type.fields.push_back(FieldOf(field));
}

CSource SourceOf(const Json& json, const ReadContext& context) {
    CSource source = MakeSource(context);
    Take(json, "SourceGUID", source.SourceGUID);
    Take(json, "SourceID", source.SourceID);
    Take(json, "AuthorText", source.AuthorText);
    Take(json, "FormattedText", source.FormattedText);
    Take(json, "FormatStyle", source.FormatStyle);
    Take(json, "SourceType", source.SourceType);
    Take(json, "IndentSpaces", source.IndentSpaces);
    Take(json, "AuthorsBeforeEtAl", source.AuthorsBeforeEtAl);
    Take(json, "AuthorIDs", source.AuthorIDs);
    Take(json, "FieldTexts", source.FieldTexts);
    source.FieldTexts.resize(kFieldSlots);
    Take(json, "YearOnly", source.YearOnly);
    Take(json, "HasDate", source.HasDate);
    Take(json, "SourceDate", source.SourceDate);
    Take(json, "ModifiedDate", source.ModifiedDate);
    Take(json, "UseDateText", source.UseDateText);
    Take(json, "DateText", source.DateText);
    TakeCustomType(json, source.CustomTypeCopy);
    return source;
}

void TellForm(const std::string& file) {
    PrintError(file + " is not of the form {\"authors\":[...],\"sources\":[...]}");
}

/// Calls `take` for each element of an array; false, and told, if the key holds anything else, or an element is no
/// object.
template <typename Taker>
bool ForEach(const std::string& file, const Json& json, const char* key, Taker take) {
    const auto found = json.find(key);
    if (found == json.end())
        return true;
    if (!found->is_array()) {
        TellForm(file);
        return false;
    }
    size_t position = 0;
    for (const Json& element : *found) {
        ++position;
        if (!element.is_object()) {
            PrintError(file + ": element " + std::to_string(position) + " of \"" + key + "\" is not an object");
            return false;
        }
        take(element);
    }
    return true;
}

}  // namespace

std::optional<BibliographyData> LoadBibliographyData(Session& session, BibliographyParts parts) {
    const auto noteBook = session.NoteBook();
    if (!noteBook)
        return std::nullopt;
    const NoteBookPaths paths(session.Data(), noteBook->folder);
    BibliographyData data;
    if (parts.authors)
        session.Check(data.authors.LoadAuthors(paths.Authors()), "The authors could not be read", paths.Authors());
    session.Check(data.sources.LoadSources(paths.Sources(), session.Context()), "The sources could not be read",
                  paths.Sources());
    if (parts.types) {
        session.Check(data.types.LoadTypes(paths.SourceTypes(), session.Context()),
                      "The source types could not be read", paths.SourceTypes());
        data.sources.LinkCustomTypes(data.types);
    }
    return data;
}

std::optional<BibliographyData> ReadBibliographyJson(Session& session, const std::string& file, ExitStatus& status) {
    std::string bytes;
    status = ExitStatus::Fault;
    if (const FileResult result = ReadFileOrStream(file, bytes); !result.Ok()) {
        session.Faults().Tell({"The file could not be read", file, result.Reason()});
        return std::nullopt;
    }
    const Json json = Json::parse(bytes, nullptr, false);
    BibliographyData data;
    const auto addAuthor = [&](const Json& author) {
        data.listedAuthors.push_back(AuthorOf(author));
        data.authors.AddAuthor(data.listedAuthors.back());
    };
    const auto addSource = [&](const Json& source) { data.sources.AddTail(SourceOf(source, session.Context())); };
    if (!json.is_object()) {
        TellForm(file);
        return std::nullopt;
    }
    const bool isTaken = ForEach(file, json, "authors", addAuthor) && ForEach(file, json, "sources", addSource);
    return isTaken ? std::optional(std::move(data)) : std::nullopt;
}

}  // namespace lore
