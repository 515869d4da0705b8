#include "notes/notebook_lists.h"

#include <string>

#include "notes/file_faults.h"
#include "notes/keep_damaged.h"

namespace lore {

namespace {

/// `records` are what the list holds, and `loss` what a write would lose of the file that was read, "" for nothing.
template <typename List, typename Save>
bool WriteList(List& list, const std::filesystem::path& path, const std::string& records, const std::string& loss,
               FaultNotice& faults, Save save) {
    FileResult result;
    if (!loss.empty())
        result = KeepDamaged("The list of " + records, path, loss, faults);
    if (result.Ok())
        result = save();
    if (result.Ok())
        list.MarkWhole();
    TellFailedWrite(faults, ("The " + records + " could not be written").c_str(), path, result);
    return result.Ok();
}

std::string LossOf(const ListFile& list) {
    return list.ReadWhole() ? "" : kNotReadWhole;
}

std::string LossOf(const SourceList& sources) {
    if (!sources.ReadWhole())
        return "it breaks off, holds more than could be read, or its authors could not be read or are missing";
    return sources.HoldsUnreadDates() ? "it holds dates that could not be read" : "";
}

}  // namespace

bool WriteAuthors(OpenNoteBook& book, FaultNotice& faults) {
    // With the new file, the next load drops the ids of those that stood in the lost one: the sources with them are
    // kept first.
    if (book.authors.IsMissing() && !book.authors.ReadWhole() && !WriteSources(book, faults))
        return false;
    return WriteList(book.authors, book.paths.Authors(), "authors", LossOf(book.authors), faults,
                     [&] { return book.authors.SaveAuthors(book.paths.Authors()); });
}

bool WriteSourceTypes(OpenNoteBook& book, FaultNotice& faults) {
    return WriteList(book.types, book.paths.SourceTypes(), "source types", LossOf(book.types), faults,
                     [&] { return book.types.SaveTypes(book.paths.SourceTypes()); });
}

bool WriteSources(OpenNoteBook& book, FaultNotice& faults) {
    return WriteList(book.sources, book.paths.Sources(), "sources", LossOf(book.sources), faults,
                     [&] { return book.sources.SaveSources(book.paths.Sources(), book.authors); });
}

bool WriteCategories(OpenNoteBook& book, const CProCategoryList& forest, FaultNotice& faults) {
    return WriteList(book.categories, book.paths.Categories(), "categories",
                     book.categories.ReadWhole() ? "" : kNotReadWhole, faults,
                     [&] { return forest.Save(book.paths.Categories()); });
}

}  // namespace lore
