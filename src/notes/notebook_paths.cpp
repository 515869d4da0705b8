#include "notes/notebook_paths.h"

#include "base/file_io.h"
#include "base/text.h"

namespace lore {

namespace {

/// A folder that no program makes, for a name that isn't one: were it taken as it is, deleting that NoteBook would
/// delete others with it.
constexpr char kNowhere[] = "_INVALID_";

std::string SafeFolderName(std::string_view folder) {
    const std::string_view name = LastPathComponent(folder);
    const bool unusable = name.empty() || name == "." || name == ".." || name.find('\0') != std::string_view::npos;
    return std::string(unusable ? std::string_view(kNowhere) : name);
}

}  // namespace

NoteBookPaths::NoteBookPaths(const DataPaths& data, std::string_view folder)
    : folder_(data.Databases() / SafeFolderName(folder)) {}

std::filesystem::path NoteBookPaths::EmptyCategories(int set) const {
    return folder_ / ("Empty" + std::to_string(set) + "Cats.dat");
}

FileResult CreateNoteBookFolders(const NoteBookPaths& paths) {
    const FileResult notes = MakeFolders(paths.Notes()), attachments = MakeFolders(paths.Attachments());
    return notes.Ok() ? attachments : notes;
}

FileResult ComputeFolders(const std::filesystem::path& dataRoot) {
    return MakeFolders(DataPaths{dataRoot}.DataFiles());
}

}  // namespace lore
