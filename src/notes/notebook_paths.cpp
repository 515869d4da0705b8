#include "notes/notebook_paths.h"

#include <algorithm>
#include <system_error>

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

std::filesystem::path ResolvePath(std::string_view relative, const PathRoots& roots) {
    std::string path(relative);
    std::replace(path.begin(), path.end(), '\\', '/');
    const bool inData = path.find(kDataFiles) != std::string::npos;
    if (inData)
        path = ReplaceAll(path, kInsertDatabase, roots.noteBookFolder);
    path.erase(0, path.find_first_not_of('/'));
    return (inData ? roots.data : roots.program) / path;
}

void CreateNoteBookFolders(const NoteBookPaths& paths) {
    std::error_code ignored;
    std::filesystem::create_directories(paths.Notes(), ignored);
    std::filesystem::create_directories(paths.Attachments(), ignored);
}

void ComputeFolders(const std::filesystem::path& dataRoot) {
    std::error_code ignored;
    std::filesystem::create_directories(DataPaths{dataRoot}.DataFiles(), ignored);
}

}  // namespace lore
