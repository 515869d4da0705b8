#include "notes/category_conversion.h"

#include <algorithm>
#include <string>
#include <system_error>
#include <vector>

#include "notes/file_faults.h"
#include "notes/keep_damaged.h"
#include "notes/note_file.h"
#include "notes/note_file_walk.h"
#include "notes/notebook_lists.h"

namespace lore {

namespace {

/// A file that broke off, or holds something behind its notes, stays as it is.
bool Stays(const NoteFileReader& reader) {
    return !reader.IsNoteWhole() || reader.HoldsMore();
}

/// The notes of files that stay go on naming their old ids.
void MarkKeptNotes(CategoryConversion& conversion, const std::filesystem::path& file, const ReadContext& context) {
    NoteFileReader reader(context);
    if (!reader.Open(file).Ok())
        return;  // told when it is converted
    std::vector<CNote> notes;
    while (reader.Next())
        notes.push_back(reader.Head());
    if (Stays(reader))
        std::for_each(notes.begin(), notes.end(), [&](const CNote& note) { conversion.MarkKept(note); });
}

/// False if it could not be written.
bool ConvertFile(CategoryConversion& conversion, const std::filesystem::path& file, const ReadContext& context,
                 FaultNotice& faults) {
    NoteFileReader reader(context);
    const FileResult opened = reader.Open(file);
    TellFailedRead(faults, kNoteFileUnread, file, opened);
    if (!opened.Ok())
        return true;
    std::vector<CNote> notes;
    while (reader.Next())
        notes.push_back(reader.TakeNote());
    for (CNote& note : notes)
        conversion.MergeNote(note);
    const bool stays = Stays(reader);
    if (stays)
        faults.Tell({"A note file could not be converted", file.string(), "The file is damaged"});
    if (stays || notes.empty())
        return true;
    FileResult result;
    if (reader.IsDamaged())
        result = KeepDamaged("A note file", file, std::string("it ") + reader.DamageText(), faults);
    if (result.Ok())
        result = SaveNoteFile(file, notes);
    TellFailedWrite(faults, kNoteFileUnwritten, file, result);
    return result.Ok();
}

}  // namespace

bool NeedsCategoryConversion(const NoteBookPaths& paths) {
    std::error_code error;
    return std::filesystem::symlink_status(paths.Categories(), error).type() == std::filesystem::file_type::not_found;
}

CategoryConversion::CategoryConversion(int& maxCategoryID)
    : merger_(std::make_unique<CategoryMerger>(forest_, maxCategoryID)) {}

void CategoryConversion::MarkKept(const CNote& note) {
    for (const CProCategoryTree& path : note.categories)
        merger_->MarkLost(DeepestCategoryID(path));
}

void CategoryConversion::MergeNote(CNote& note) {
    for (int set = 1; set <= kSetCount; ++set)
        merger_->MergePath(note.id, note.categories[static_cast<size_t>(set - 1)], set);
}

void CategoryConversion::MergeEmptyCategories(const NoteBookPaths& paths, FaultNotice& faults) {
    for (int set = 1; set <= kSetCount; ++set) {
        std::vector<CCategoryTree> trees;
        const std::filesystem::path file = paths.EmptyCategories(set);
        TellFailedRead(faults, "A file of older categories could not be read", file, LoadEmptyCategories(file, trees));
        merger_->MergeEmptyCategories(trees);
    }
}

CProCategoryList CategoryConversion::Finish() {
    merger_.reset();
    return std::move(forest_);
}

bool ConvertCategories(const NoteBookPaths& paths, int& maxCategoryID, const ReadContext& context,
                       FaultNotice& faults) {
    std::vector<std::filesystem::path> files;
    if (!ListNoteFiles(paths.Notes(), faults, files))
        return false;
    CategoryConversion conversion(maxCategoryID);
    for (const std::filesystem::path& file : files)
        MarkKeptNotes(conversion, file, context);
    bool written = true;
    for (const std::filesystem::path& file : files)
        written = ConvertFile(conversion, file, context, faults) && written;
    conversion.MergeEmptyCategories(paths, faults);
    OpenNoteBook book;
    book.paths = paths;
    book.categories = conversion.Finish();
    book.categories.RaiseMaxCategoryID(maxCategoryID);
    return WriteCategories(book, book.categories, faults) && written;
}

}  // namespace lore
