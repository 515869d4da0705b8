#include "app/source_json.h"

#include <algorithm>
#include <optional>

#include "base/date_time.h"
#include "base/text.h"
#include "bibliography/source_record.h"

namespace lore {

namespace {

/// A number as a field of a file would be read. A fraction is cut off; what a field can't hold becomes the nearest
/// number.
int32_t NumberOf(const SourceJson& number) {
    if (number.is_number_float())
        return static_cast<int32_t>(std::clamp<double>(number.get<double>(), INT32_MIN, INT32_MAX));
    return ParseInt(number.is_number_unsigned() ? std::to_string(number.get<uint64_t>())
                                                : std::to_string(number.get<int64_t>()));
}

/// The number of an author, which pairs records: one that is changed would be that of another author. Nothing for what
/// is no whole number, or has no room in a record.
std::optional<int32_t> AuthorIDOf(const SourceJson& json) {
    if (!json.is_number())
        return std::nullopt;
    const int32_t id = NumberOf(json);
    return json == SourceJson(id) ? std::optional(id) : std::nullopt;
}

// Each takes a value and is true, or leaves what stands there if the value is of another type.

bool TakeValue(const SourceJson& from, std::string& to) {
    if (!from.is_string() && !from.is_number())
        return false;
    to = from.is_string() ? CleanText(FromUtf8(from.get_ref<const std::string&>())) : from.dump();
    return true;
}

bool TakeValue(const SourceJson& from, int32_t& to) {
    if (!from.is_number() && !from.is_boolean())
        return false;
    to = from.is_number() ? NumberOf(from) : static_cast<int32_t>(from.get<bool>());
    return true;
}

bool TakeValue(const SourceJson& from, bool& to) {
    int32_t number = to ? 1 : 0;
    const bool isTaken = TakeValue(from, number);
    to = number > 0;
    return isTaken;
}

/// What is no date makes the date invalid: the moment that stood there would be taken for the one that was meant.
bool TakeValue(const SourceJson& from, DateTime& to) {
    const auto date = from.is_string() ? ParseDate(from.get_ref<const std::string&>()) : std::nullopt;
    to = date ? date->date : from.is_null() ? DateTime() : DateTime::Invalid();
    return to.IsValid() || from.is_null() || from == "invalid";
}

constexpr char kAuthorID[] = "a whole number from -2147483648 to 2147483647";
constexpr char kList[] = "a list", kObject[] = "an object";
template <typename Value>
constexpr const char* kWanted = "a number";
template <>
constexpr const char* kWanted<std::string> = "a text";
template <>
constexpr const char* kWanted<bool> = "true or false";
template <>
constexpr const char* kWanted<DateTime> = "a date that exists, as YYYY-MM-DDTHH:MM:SS";

/// The fields of one record of a file. A value of the right type replaces what stands there, a missing one leaves it; a
/// value of another type is told with the name of the record and its key.
class RecordFields {
public:
    RecordFields(const SourceJson& json, std::string name, const TellLeftOut& tell)
        : json_(json), name_(std::move(name)), tell_(tell) {}

    template <typename Value>
    void Take(const char* key, Value& to) const {
        Take(key, kWanted<Value>, [&](const SourceJson& value) { return TakeValue(value, to); });
    }
    void TakeAuthorID(const char* key, int32_t& to) const {
        Take(key, kAuthorID, [&](const SourceJson& value) {
            const std::optional<int32_t> id = AuthorIDOf(value);
            to = id.value_or(to);
            return id.has_value();
        });
    }
    void TakeAuthorIDs(const char* key, LongList& to) const {
        TakeEach(key, kAuthorID, [&](const SourceJson& value, size_t) {
            const std::optional<int32_t> id = AuthorIDOf(value);
            if (id)
                to.AddTail(*id);
            return id.has_value();
        });
    }
    /// Texts for the slots that `to` has.
    void Take(const char* key, std::vector<std::string>& to) const {
        TakeEach(key, kWanted<std::string>, [&](const SourceJson& value, size_t slot) {
            std::string text;
            const bool isTaken = TakeValue(value, slot < to.size() ? to[slot] : text);
            if (!text.empty())
                tell_(name_ + ": " + Element(key, slot) + " is left out: only " + std::to_string(to.size()) +
                      " have a place");
            return isTaken;
        });
    }
    template <typename Record>
    void Take(const char* key, Record& to, Record (*recordOf)(const RecordFields&)) const {
        Take(key, kObject, [&](const SourceJson& value) {
            if (value.is_object())
                to = recordOf(RecordFields(value, name_ + ", " + Quoted(key), tell_));
            return value.is_object();
        });
    }
    /// A list of records replaces all that stand there.
    template <typename Record>
    void Take(const char* key, std::vector<Record>& to, Record (*recordOf)(const RecordFields&)) const {
        std::vector<Record> records;
        const bool isList = TakeEach(key, kObject, [&](const SourceJson& value, size_t position) {
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
        return Take(key, kList, [&](const SourceJson& list) {
            for (size_t i = 0; list.is_array() && i < list.size(); ++i) {
                if (!take(list[i], i))
                    TellType(Element(key, i), wanted);
            }
            return list.is_array();
        });
    }

    const SourceJson& json_;
    std::string name_;
    const TellLeftOut& tell_;
};

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

CCustomSourceType TypeOf(const RecordFields& fields) {
    CCustomSourceType type;
    fields.Take("GUID", type.GUID);
    fields.Take("name", type.name);
    fields.Take("date", type.date);
    fields.Take("fields", type.fields, FieldOf);
    return type;
}

}  // namespace

CAuthor AuthorOfJson(const SourceJson& json, std::string name, const TellLeftOut& tell) {
    const RecordFields fields(json, std::move(name), tell);
    CAuthor author;
    fields.TakeAuthorID("AuthorID", author.AuthorID);
    fields.Take("first", author.first);
    fields.Take("middle", author.middle);
    fields.Take("last", author.last);
    fields.Take("reserved1", author.reserved1);
    fields.Take("reserved2", author.reserved2);
    return author;
}

CCustomSourceType TypeOfJson(const SourceJson& json, std::string name, const TellLeftOut& tell) {
    return TypeOf(RecordFields(json, std::move(name), tell));
}

CSource SourceOfJson(const SourceJson& json, std::string name, const TellLeftOut& tell, const ReadContext& context) {
    const RecordFields fields(json, std::move(name), tell);
    CSource source = MakeSource(context);
    fields.Take("SourceGUID", source.SourceGUID);
    fields.Take("SourceID", source.SourceID);
    fields.Take("AuthorText", source.AuthorText);
    fields.Take("FormattedText", source.FormattedText);
    fields.Take("FormatStyle", source.FormatStyle);
    fields.Take("SourceType", source.SourceType);
    fields.Take("IndentSpaces", source.IndentSpaces);
    fields.Take("AuthorsBeforeEtAl", source.AuthorsBeforeEtAl);
    fields.TakeAuthorIDs("AuthorIDs", source.AuthorIDs);
    fields.Take("FieldTexts", source.FieldTexts);
    fields.Take("YearOnly", source.YearOnly);
    fields.Take("HasDate", source.HasDate);
    fields.Take("SourceDate", source.SourceDate);
    fields.Take("ModifiedDate", source.ModifiedDate);
    fields.Take("UseDateText", source.UseDateText);
    fields.Take("DateText", source.DateText);
    fields.Take("CustomTypeCopy", source.CustomTypeCopy, TypeOf);
    return source;
}

}  // namespace lore
