#pragma once

#include <functional>
#include <nlohmann/json.hpp>
#include <string>

#include "bibliography/author.h"
#include "bibliography/source.h"
#include "calendar/event.h"
#include "calendar/reminder.h"
#include "classify/category_tree.h"
#include "classify/old_category.h"
#include "notes/note.h"
#include "notes/notebook_list.h"
#include "notes/sync_log.h"

namespace lore {

// The records as JSON, the keys spelled as their fields are named. Texts are Unicode.

using Json = nlohmann::ordered_json;

/// Prints one JSON document and a line feed on standard output.
void PrintJson(const Json& json);
/// Prints a list of `count` documents, each made when its turn has come: as PrintJson prints them all in one list,
/// without holding them at the same time.
void PrintJsonList(size_t count, const std::function<Json(size_t)>& make);

/// Prints a document that is put together from pieces, as soon as there is enough for a write.
class JsonPrinter {
public:
    /// Brackets, commas and keys, as they are.
    void Put(std::string_view marks);
    void PutJson(const Json& json);
    /// Prints what is left, and a line feed.
    void End();

private:
    std::string text_;
};

Json JsonText(std::string_view bytes);
/// "YYYY-MM-DDTHH:MM:SS", "invalid" for an invalid date, null for a null date.
Json JsonDate(const DateTime& date);
Json JsonIds(const LongList& ids);
Json JsonColor(Rgb color);

/// The names down a note's path, an empty list for an empty path.
Json JsonPath(const CProCategoryTree& path);
/// A category record with its subtree: id, parentID, name, children.
Json JsonTree(const CProCategoryTree& tree);
Json JsonOldTree(const CCategoryTree& tree);

/// What `notes` prints of a note.
Json JsonNoteHead(const CNote& note);
/// Adds what `note` prints beside it.
void AddNoteBody(Json& json, const CNote& note);
/// A note as `dump` prints it, the paths as trees.
Json JsonNoteRecord(const CNote& note);

Json JsonAuthor(const CAuthor& author);
Json JsonCustomType(const CCustomSourceType& type);
Json JsonSource(const CSource& source);
/// A source as the hand-over file for printing holds it; its spans in characters, both ends belong to a span.
Json JsonBibliographySource(const CSource& source);

Json JsonEvent(const CTmEvent& event);
Json JsonReminder(const CTmReminder& reminder);
Json JsonNoteBook(const CDatabase& noteBook);
/// The same as a listing shows it, with its number of notes; the main NoteBook has no date of creation.
Json JsonListedNoteBook(const CDatabase& noteBook, size_t notes);
Json JsonSyncLog(const SyncLog& log, bool hasHead);

}  // namespace lore
