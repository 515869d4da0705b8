#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/date_time.h"
#include "base/record_file.h"
#include "ports/guid_source.h"
#include "ports/read_context.h"

namespace lore {

class Settings;

/// The main NoteBook exists always and stands in no file. On disk; never change.
inline constexpr int32_t kMainNoteBookID = 2112;
inline constexpr char kMainNoteBookFolder[] = "_LBMAIN_";
inline constexpr char kMainNoteBookName[] = "LorebinderMain";
/// How lists show the main NoteBook.
inline constexpr char kMainNoteBookListName[] = "<LOREBINDER MAIN>";

/// A NoteBook as the list knows it.
struct CDatabase {
    int32_t id = -1;
    int32_t noteCount = 0;  ///< worked out for a listing; not stored
    std::string name;
    std::string folder;  ///< below "Data Files/Databases"
    std::string extra;   ///< path of the last auto-backup file; empty until then
    DateTime created;
    std::string guid;

    bool IsMain() const { return id == kMainNoteBookID; }
};

/// Empties the list and reads "Databases.dat". A record without a guid gets a new one.
FileResult LoadDatabases(const std::filesystem::path& file, const ReadContext& context, std::vector<CDatabase>& list);
/// The same where the file's version is wanted too, and how it stands beside its records.
FileResult LoadDatabases(const std::filesystem::path& file, const ReadContext& context, std::vector<CDatabase>& list,
                         double& version, RecordFileState* state = nullptr);
FileResult SaveDatabases(const std::filesystem::path& file, const std::vector<CDatabase>& list);

/// The record of the main NoteBook, whose guid is that of the installation.
CDatabase MainNoteBook(const std::string& localGUID);
/// The NoteBook with exactly this guid (this id), the main one included.
std::optional<CDatabase> FindByGuid(const std::vector<CDatabase>& list, const std::string& localGUID,
                                    std::string_view guid);
std::optional<CDatabase> FindById(const std::vector<CDatabase>& list, const std::string& localGUID, int32_t id);
/// A NoteBook by what a user types: its name, its folder's name or its guid, tried in this order.
std::optional<CDatabase> FindNoteBook(const std::vector<CDatabase>& list, const std::string& localGUID,
                                      std::string_view text);

/// The two settings that decide which NoteBook opens.
struct StartSettings {
    std::string LocalGUID;
    std::string Database;  ///< guid of the NoteBook that was open last
};

/// The NoteBook that the settings name, otherwise the main one. Changes nothing.
CDatabase StartNoteBook(const std::vector<CDatabase>& list, const StartSettings& settings);

/// Gives the installation its identity, reads the list, finds the NoteBook to open and names it in the settings, which
/// the caller stores at once. A list that can't be read is empty; `result` says how reading went.
CDatabase SelectStartNoteBook(const std::filesystem::path& databasesFile, const ReadContext& context,
                              Settings& settings, std::vector<CDatabase>& list, FileResult& result);

}  // namespace lore
