#include "cli/json_records.h"

#include <algorithm>
#include <cstdio>

#include "base/text.h"
#include "base/utf8.h"

namespace lore {

namespace {

std::string TextOf(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

void Print(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
}

// How each type of field shows.
Json Shown(int32_t number) {
    return number;
}
Json Shown(bool flag) {
    return flag;
}
Json Shown(const std::string& bytes) {
    return JsonText(bytes);
}
Json Shown(const DateTime& date) {
    return JsonDate(date);
}
Json Shown(const LongList& ids) {
    return JsonIds(ids);
}

Json JsonTexts(const std::vector<std::string>& texts) {
    Json json = Json::array();
    for (const std::string& text : texts)
        json.push_back(JsonText(text));
    return json;
}

Json JsonAttachment(const CAttachment& a) {
    return {{"shift", a.shift},
            {"zoom", a.zoom},
            {"title", JsonText(a.title)},
            {"storedFile", JsonText(a.storedFile)},
            {"sourceFile", JsonText(a.sourceFile)},
            {"type", a.type},
            {"show", a.show}};
}

Json JsonField(const CCustomSourceField& f) {
    return {{"kind", f.kind},
            {"end", f.end},
            {"name", JsonText(f.name)},
            {"value", JsonText(f.value)},
            {"underline", f.underline},
            {"italics", f.italics},
            {"bold", f.bold}};
}

/// The fields that all forms of a source record begin with.
Json JsonSourceStart(const CSource& s) {
    return {{"SourceGUID", JsonText(s.SourceGUID)},
            {"SourceID", s.SourceID},
            {"AuthorText", JsonText(s.AuthorText)},
            {"FormatStyle", s.FormatStyle},
            {"SourceType", s.SourceType},
            {"IndentSpaces", s.IndentSpaces},
            {"AuthorsBeforeEtAl", s.AuthorsBeforeEtAl},
            {"AuthorIDs", JsonIds(s.AuthorIDs)},
            {"FieldTexts", JsonTexts(s.FieldTexts)}};
}

/// How many characters begin before each byte of a text, and before its end.
std::vector<int32_t> CharactersBefore(std::string_view text) {
    const bool isUtf8 = IsValidUtf8(text);
    std::vector<int32_t> before = {0};
    before.reserve(text.size() + 1);
    for (const char c : text)
        before.push_back(before.back() + (isUtf8 && IsContinuation(c) ? 0 : 1));
    return before;
}

/// Byte positions as characters, `behind` bytes behind them counted in. What lies beyond the text, as only a damaged
/// file has it, stays as far from its end.
Json JsonPositions(const LongList& bytes, int64_t behind, const std::vector<int32_t>& before) {
    const auto size = static_cast<int64_t>(before.size()) - 1;
    Json json = Json::array();
    for (const int64_t byte : bytes) {
        const int64_t at = std::clamp<int64_t>(byte + behind, 0, size);
        json.push_back(before[static_cast<size_t>(at)] + (byte - at));
    }
    return json;
}

Json JsonSyncInfo(const CSyncInfo& i) {
    return {{"NoteId", i.NoteId},
            {"SyncState", i.SyncState},
            {"Changed", i.Changed},
            {"OnlineNoteId", i.OnlineNoteId},
            {"NoteKey", JsonText(i.NoteKey)},
            {"NoteFile", JsonText(i.NoteFile)},
            {"Change1", JsonDate(i.Change1)},
            {"Change2", JsonDate(i.Change2)},
            {"SourcesChanged", JsonDate(i.SourcesChanged)},
            {"KeyWordsChanged", JsonDate(i.KeyWordsChanged)},
            {"CategoriesChanged", JsonDate(i.CategoriesChanged)}};
}

}  // namespace

void PrintJson(const Json& json) {
    Print(TextOf(json) + '\n');
}

void PrintJsonList(size_t count, const std::function<Json(size_t)>& make) {
    JsonPrinter printer;
    printer.Put("[");
    for (size_t i = 0; i < count; ++i) {
        if (i > 0)
            printer.Put(",");
        printer.PutJson(make(i));
    }
    printer.Put("]");
    printer.End();
}

void JsonPrinter::Put(std::string_view marks) {
    constexpr size_t kPiece = 65536;
    text_ += marks;
    if (text_.size() < kPiece)
        return;
    Print(text_);
    text_.clear();
}

void JsonPrinter::PutJson(const Json& json) {
    Put(TextOf(json));
}

void JsonPrinter::End() {
    Print(text_ + '\n');
    text_.clear();
}

Json JsonText(std::string_view bytes) {
    return ToUtf8(bytes);
}

Json JsonDate(const DateTime& date) {
    if (date.IsNull())
        return nullptr;
    return date.IsValid() ? date.Format("%Y-%m-%dT%H:%M:%S") : "invalid";
}

Json JsonIds(const LongList& ids) {
    return Json(ids.Values());
}

Json JsonColor(Rgb color) {
    return Json::array({RedOf(color), GreenOf(color), BlueOf(color)});
}

Json JsonPath(const CProCategoryTree& path) {
    Json names = Json::array();
    if (path.id < 1 && path.children.empty() && path.name.empty())
        return names;
    for (const CProCategoryTree* node = &path; node; node = node->children.empty() ? nullptr : &node->children.front())
        names.push_back(JsonText(node->name));
    return names;
}

Json JsonTree(const CProCategoryTree& tree) {
    Json children = Json::array();
    for (const CProCategoryTree& child : tree.children)
        children.push_back(JsonTree(child));
    return {
        {"id", tree.id}, {"parentID", tree.parentID}, {"name", JsonText(tree.name)}, {"children", std::move(children)}};
}

Json JsonOldTree(const CCategoryTree& tree) {
    Json entries = Json::array();
    for (const CCategory& entry : tree.entries)
        entries.push_back(
            {{"level", entry.level}, {"name", JsonText(entry.name)}, {"parentName", JsonText(entry.parentName)}});
    return entries;
}

Json JsonNoteHead(const CNote& note) {
    Json paths = Json::array();
    for (const CProCategoryTree& path : note.categories)
        paths.push_back(JsonPath(path));
    return {{"id", note.id},
            {"guid", JsonText(note.guid)},
            {"dateCreated", JsonDate(note.dateCreated)},
            {"dateEdited", JsonDate(note.dateEdited)},
            {"keyWords", JsonText(note.keyWords)},
            {"borderColor", JsonColor(note.borderColor)},
            {"sources", JsonIds(note.sources)},
            {"categories", std::move(paths)}};
}

void AddNoteBody(Json& json, const CNote& note) {
    json["plainText"] = JsonText(note.plainText);
    json["rtfText"] = JsonText(note.rtfText);
    json["spellCheck"] = note.spellCheck;
    json["reserved"] = JsonText(note.reserved);
    Json info = Json::array();
    for (const CNoteSourceInfo& entry : note.sourceInfo)
        info.push_back(Json::array({JsonText(entry.key), JsonText(entry.text)}));
    json["sourceInfo"] = std::move(info);
    Json attachments = Json::array();
    for (const CAttachment& attachment : note.attachments)
        attachments.push_back(JsonAttachment(attachment));
    json["attachments"] = std::move(attachments);
}

Json JsonNoteRecord(const CNote& note) {
    Json json = JsonNoteHead(note);
    Json trees = Json::array();
    for (const CProCategoryTree& path : note.categories)
        trees.push_back(JsonTree(path));
    json["categories"] = std::move(trees);
    AddNoteBody(json, note);
    return json;
}

Json JsonAuthor(const CAuthor& a) {
    return {{"AuthorID", a.AuthorID},   {"first", JsonText(a.first)},         {"middle", JsonText(a.middle)},
            {"last", JsonText(a.last)}, {"reserved1", JsonText(a.reserved1)}, {"reserved2", JsonText(a.reserved2)}};
}

Json JsonCustomType(const CCustomSourceType& type) {
    Json fields = Json::array();
    for (const CCustomSourceField& field : type.fields)
        fields.push_back(JsonField(field));
    return {{"GUID", JsonText(type.GUID)},
            {"name", JsonText(type.name)},
            {"date", JsonDate(type.date)},
            {"fields", std::move(fields)}};
}

Json JsonSource(const CSource& s) {
    Json json = JsonSourceStart(s);
    json["YearOnly"] = s.YearOnly;
    json["HasDate"] = s.HasDate;
    json["SourceDate"] = JsonDate(s.SourceDate);
    json["ModifiedDate"] = JsonDate(s.ModifiedDate);
    json["UseDateText"] = s.UseDateText;
    json["DateText"] = JsonText(s.DateText);
    json["CustomTypeCopy"] = JsonCustomType(s.CustomTypeCopy);
    return json;
}

Json JsonBibliographySource(const CSource& s) {
    Json json = JsonSourceStart(s);
    json["FormattedText"] = JsonText(s.FormattedText);
    json["SpanKinds"] = JsonIds(s.SpanKinds);
    const std::vector<int32_t> before = CharactersBefore(s.FormattedText);
    json["SpanStarts"] = JsonPositions(s.SpanStarts, 0, before);
    json["SpanEnds"] = JsonPositions(s.SpanEnds, 1, before);
    return json;
}

Json JsonEvent(const CTmEvent& event) {
    Json json = Json::object();
    VisitEventFields(event, [&](const char* name, const auto& field) { json[name] = Shown(field); });
    return json;
}

Json JsonReminder(const CTmReminder& reminder) {
    Json json = Json::object();
    VisitReminderFields(reminder, [&](const char* name, const auto& field) { json[name] = Shown(field); });
    return json;
}

Json JsonNoteBook(const CDatabase& noteBook) {
    return {{"id", noteBook.id},
            {"guid", JsonText(noteBook.guid)},
            {"name", JsonText(noteBook.name)},
            {"folder", JsonText(noteBook.folder)},
            {"extra", JsonText(noteBook.extra)},
            {"created", JsonDate(noteBook.created)}};
}

Json JsonListedNoteBook(const CDatabase& noteBook, size_t notes) {
    Json json = JsonNoteBook(noteBook);
    if (noteBook.IsMain())
        json["created"] = nullptr;
    json["notes"] = notes;
    return json;
}

Json JsonSyncLog(const SyncLog& log, bool hasHead) {
    Json json = Json::object();
    json["head"] = nullptr;
    if (hasHead) {
        json["head"] = {{"Linked", log.link.Linked},
                        {"OnlineNoteBookID", log.link.OnlineNoteBookID},
                        {"OnlineName", JsonText(log.link.OnlineName)},
                        {"DesktopName", JsonText(log.link.DesktopName)},
                        {"LastSync", JsonDate(log.link.LastSync)},
                        {"NoteBookGuid", JsonText(log.link.NoteBookGuid)}};
    }
    Json records = Json::array();
    for (const CSyncInfo& info : log.Records())
        records.push_back(JsonSyncInfo(info));
    json["records"] = std::move(records);
    return json;
}

}  // namespace lore
