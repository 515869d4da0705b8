#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "base/file_result.h"

namespace lore {

inline constexpr char kDataFiles[] = "Data Files";

/// The files that all NoteBooks of a data root share.
struct DataPaths {
    std::filesystem::path root;  ///< the folder that holds "Data Files"

    std::filesystem::path DataFiles() const { return root / kDataFiles; }
    std::filesystem::path Databases() const { return DataFiles() / "Databases"; }
    std::filesystem::path DatabasesFile() const { return Databases() / "Databases.dat"; }
    std::filesystem::path Events() const { return DataFiles() / "Events.dat"; }
    std::filesystem::path Reminders() const { return DataFiles() / "Rem.dat"; }
    std::filesystem::path Lexicons() const { return DataFiles() / "Lexicons"; }
    std::filesystem::path ExportTemp() const { return DataFiles() / "ExportTemp"; }
    std::filesystem::path ImportTemp() const { return DataFiles() / "ImportTemp"; }
    std::filesystem::path PrintPreview() const { return DataFiles() / "PrintPreview.nbf"; }
    std::filesystem::path Bibliography() const { return DataFiles() / "Bib.dat"; }
    std::filesystem::path Logo() const { return DataFiles() / "Logo.bmp"; }
};

/// The files of one NoteBook. A folder name that would lead out of "Databases" leads to a place where nothing is.
class NoteBookPaths {
public:
    NoteBookPaths() = default;
    NoteBookPaths(const DataPaths& data, std::string_view folder);

    const std::filesystem::path& Folder() const { return folder_; }
    std::filesystem::path Notes() const { return folder_ / "Notes"; }
    std::filesystem::path NoteFile(std::string_view name) const { return Notes() / name; }
    std::filesystem::path Attachments() const { return folder_ / "Attachments"; }
    std::filesystem::path Sources() const { return folder_ / "Sources.dat"; }
    std::filesystem::path Authors() const { return folder_ / "Authors.dat"; }
    std::filesystem::path SourceTypes() const { return folder_ / "SourceTypes.dat"; }
    std::filesystem::path Categories() const { return folder_ / "Categories.dat"; }
    /// The older file of the categories without notes of a set, 1 to 3.
    std::filesystem::path EmptyCategories(int set) const;
    std::filesystem::path LastViewList() const { return folder_ / "LastViewList.dat"; }
    std::filesystem::path SyncLog() const { return folder_ / "Sync.dat"; }

private:
    std::filesystem::path folder_;
};

/// Creates a NoteBook's folder with its folders for notes and attachments; what exists already is no failure.
FileResult CreateNoteBookFolders(const NoteBookPaths& paths);

/// Creates the folder "Data Files" below the root and what leads to it; what exists already is no failure.
FileResult ComputeFolders(const std::filesystem::path& dataRoot);

}  // namespace lore
