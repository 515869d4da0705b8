#include "notes/notebook_lists.h"

#include "base/file_copy.h"
#include "notes/file_faults.h"

namespace lore {

namespace {

template <typename List, typename Save>
bool WriteList(List& list, const std::filesystem::path& path, const char* unwritten, FaultNotice& faults, Save save) {
    FileResult result;
    if (!list.ReadWhole())
        result = KeepIfThere(path);
    if (result.Ok())
        result = save();
    if (result.Ok())
        list.MarkWhole();
    TellFailedWrite(faults, unwritten, path, result);
    return result.Ok();
}

}  // namespace

bool WriteAuthors(OpenNoteBook& book, FaultNotice& faults) {
    return WriteList(book.authors, book.paths.Authors(), "The authors could not be written", faults,
                     [&] { return book.authors.SaveAuthors(book.paths.Authors()); });
}

bool WriteSourceTypes(OpenNoteBook& book, FaultNotice& faults) {
    return WriteList(book.types, book.paths.SourceTypes(), "The source types could not be written", faults,
                     [&] { return book.types.SaveTypes(book.paths.SourceTypes()); });
}

bool WriteSources(OpenNoteBook& book, FaultNotice& faults) {
    return WriteList(book.sources, book.paths.Sources(), "The sources could not be written", faults,
                     [&] { return book.sources.SaveSources(book.paths.Sources(), book.authors); });
}

}  // namespace lore
