#include "cli/bibliography_data.h"

#include <algorithm>
#include <functional>

#include "base/file_io.h"
#include "base/text.h"
#include "bibliography/source_record.h"
#include "cli/command.h"
#include "cli/json_records.h"
#include "notes/file_faults.h"

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

// Each takes a value and is true, or leaves what stands there if the value is of another type.

bool TakeText(const Json& from, std::string& to) {
    if (from.is_string())
        to = CleanText(FromUtf8(from.get_ref<const std::string&>()));
    else if (from.is_number())
        to = from.dump();
    return from.is_string() || from.is_number();
}

bool TakeNumber(const Json& from, int32_t& to) {
    if (from.is_number())
        to = NumberOf(from);
    else if (from.is_boolean())
        to = from.get<bool>() ? 1 : 0;
    return from.is_number() || from.is_boolean();
}

/// What is no date makes the date invalid: the moment that stood there would be taken for the one that was meant.
bool TakeDate(const Json& from, DateTime& to) {
    if (from.is_null()) {
        to = DateTime();
        return true;
    }
    const auto date = from.is_string() ? ParseDate(from.get_ref<const std::string&>()) : std::nullopt;
    to = date ? date->date : DateTime::Invalid();
    return to.IsValid() || from == "invalid";
}

/// Is told of each value that is left out.
using Tell = std::function<void(const std::string&)>;

constexpr char kText[] = "a text", kNumber[] = "a number", kList[] = "a list", kObject[] = "an object";

/// The fields of one record of a file. A value of the right type replaces what stands there, a missing one leaves it; a
/// value of another type is told with the name of the record and its key.
class RecordFields {
public:
    RecordFields(const Json& json, std::string name, const Tell& tell)
        : json_(json), name_(std::move(name)), tell_(tell) {}

    void Take(const char* key, std::string& to) const {
        Take(key, kText, [&](const Json& value) { return TakeText(value, to); });
    }
    void Take(const char* key, int32_t& to) const {
        Take(key, kNumber, [&](const Json& value) { return TakeNumber(value, to); });
    }
    void Take(const char* key, bool& to) const {
        int32_t number = to ? 1 : 0;
        Take(key, "true or false", [&](const Json& value) { return TakeNumber(value, number); });
        to = number > 0;
    }
    void Take(const char* key, DateTime& to) const {
        Take(key, "a date that exists, as YYYY-MM-DDTHH:MM:SS", [&](const Json& value) { return TakeDate(value, to); });
    }
    void Take(const char* key, LongList& to) const {
        TakeEach(key, kNumber, [&](const Json& value, size_t) {
            if (value.is_number())
                to.AddTail(NumberOf(value));
            return value.is_number();
        });
    }
    /// Texts for the slots that `to` has.
    void Take(const char* key, std::vector<std::string>& to) const {
        TakeEach(key, kText, [&](const Json& value, size_t slot) {
            std::string text;
            const bool isTaken = TakeText(value, slot < to.size() ? to[slot] : text);
            if (!text.empty())
                tell_(name_ + ": " + Element(key, slot) + " is left out: only " + std::to_string(to.size()) +
                      " have a place");
            return isTaken;
        });
    }
    /// `take` gets the fields of the record that stands under the key.
    template <typename Taker>
    void TakeRecord(const char* key, Taker take) const {
        Take(key, kObject, [&](const Json& value) {
            if (value.is_object())
                take(RecordFields(value, name_ + ", " + Quoted(key), tell_));
            return value.is_object();
        });
    }
    /// A list of records replaces all that stand there.
    template <typename Record>
    void TakeRecords(const char* key, std::vector<Record>& to, Record (*recordOf)(const RecordFields&)) const {
        std::vector<Record> records;
        const bool isList = TakeEach(key, kObject, [&](const Json& value, size_t position) {
            if (value.is_object())
                records.push_back(recordOf(RecordFields(value, name_ + ", " + Element(key, position), tell_)));
            return value.is_object();
        });
        if (isList)
            to = std::move(records);
    }

private:
    static std::string Quoted(const char* key) { return std::string("\"") + key + "\""; }
    static std::string Element(const char* key, size_t position) {
        return "element " + std::to_string(position + 1) + " of " + Quoted(key);
    }
    void TellType(const std::string& place, const char* wanted) const {
        tell_(name_ + ": " + place + " is left out: it must be " + wanted);
    }
    /// False if nothing stands there, or nothing that could be taken.
    template <typename Taker>
    bool Take(const char* key, const char* wanted, Taker take) const {
        const auto found = json_.find(key);
        const bool isTaken = found != json_.end() && take(*found);
        if (found != json_.end() && !isTaken)
            TellType(Quoted(key), wanted);
        return isTaken;
    }
    template <typename Taker>
    bool TakeEach(const char* key, const char* wanted, Taker take) const {
        return Take(key, kList, [&](const Json& list) {
            for (size_t i = 0; list.is_array() && i < list.size(); ++i) {
                if (!take(list[i], i))
                    TellType(Element(key, i), wanted);
            }
            return list.is_array();
        });
    }

    const Json& json_;
    std::string name_;
    const Tell& tell_;
};

CAuthor AuthorOf(const RecordFields& fields) {
    CAuthor author;
    fields.Take("AuthorID", author.AuthorID);
    fields.Take("first", author.first);
    fields.Take("middle", author.middle);
    fields.Take("last", author.last);
    fields.Take("reserved1", author.reserved1);
    fields.Take("reserved2", author.reserved2);
    return author;
}

CCustomSourceField FieldOf(const RecordFields& fields) {
    CCustomSourceField field;
    fields.Take("kind", field.kind);
    fields.Take("end", field.end);
    fields.Take("name", field.name);
    fields.Take("value", field.value);
    fields.Take("underline", field.underline);
    fields.Take("italics", field.italics);
    fields.Take("bold", field.bold);
    return field;
}

void TakeCustomType(const RecordFields& fields, CCustomSourceType& type) {
    fields.Take("GUID", type.GUID);
    fields.Take("name", type.name);
    fields.Take("date", type.date);
    fields.TakeRecords("fields", type.fields, FieldOf);
}

CSource SourceOf(const RecordFields& fields, const ReadContext& context) {
    CSource source = MakeSource(context);
    fields.Take("SourceGUID", source.SourceGUID);
    fields.Take("SourceID", source.SourceID);
    fields.Take("AuthorText", source.AuthorText);
    fields.Take("FormattedText", source.FormattedText);
    fields.Take("FormatStyle", source.FormatStyle);
    fields.Take("SourceType", source.SourceType);
    fields.Take("IndentSpaces", source.IndentSpaces);
    fields.Take("AuthorsBeforeEtAl", source.AuthorsBeforeEtAl);
    fields.Take("AuthorIDs", source.AuthorIDs);
    fields.Take("FieldTexts", source.FieldTexts);
    fields.Take("YearOnly", source.YearOnly);
    fields.Take("HasDate", source.HasDate);
    fields.Take("SourceDate", source.SourceDate);
    fields.Take("ModifiedDate", source.ModifiedDate);
    fields.Take("UseDateText", source.UseDateText);
    fields.Take("DateText", source.DateText);
    fields.TakeRecord("CustomTypeCopy", [&](const RecordFields& type) { TakeCustomType(type, source.CustomTypeCopy); });
    return source;
}

void TellForm(const std::string& file) {
    PrintError(file + " is not of the form {\"authors\":[...],\"sources\":[...]}");
}

/// Calls `take` for each element of an array, with its name; false, and told, if the key holds anything else, or an
/// element is no object.
template <typename Taker>
bool ForEach(const std::string& file, const Json& json, const char* key, const char* name, Taker take) {
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
        take(element, name + (" " + std::to_string(position)));
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
        session.Check(data.authors.LoadAuthors(paths.Authors()), kAuthorsUnread, paths.Authors());
    session.Check(data.sources.LoadSources(paths.Sources(), session.Context()), kSourcesUnread, paths.Sources());
    if (parts.types) {
        session.Check(data.types.LoadTypes(paths.SourceTypes(), session.Context()), kSourceTypesUnread,
                      paths.SourceTypes());
        data.sources.LinkCustomTypes(data.types);
    }
    return data;
}

std::optional<BibliographyData> ReadBibliographyJson(Session& session, const std::string& file, ExitStatus& status) {
    std::string bytes;
    status = ExitStatus::Fault;
    if (const FileResult result = ReadFileOrStream(file, bytes); !result.Ok()) {
        session.Faults().Tell({kFileUnread, file, result.Reason()});
        return std::nullopt;
    }
    const Json json = Json::parse(bytes, nullptr, false);
    BibliographyData data;
    const Tell tell = [&](const std::string& value) {
        session.Faults().Tell({"A value could not be taken", file, value});
    };
    const auto addAuthor = [&](const Json& author, const std::string& name) {
        data.listedAuthors.push_back(AuthorOf({author, name, tell}));
        data.authors.AddAuthor(data.listedAuthors.back());
    };
    const auto addSource = [&](const Json& source, const std::string& name) {
        data.sources.AddTail(SourceOf({source, name, tell}, session.Context()));
    };
    if (!json.is_object()) {
        TellForm(file);
        return std::nullopt;
    }
    const bool isTaken =
        ForEach(file, json, "authors", "author", addAuthor) && ForEach(file, json, "sources", "source", addSource);
    return isTaken ? std::optional(std::move(data)) : std::nullopt;
}

}  // namespace lore
