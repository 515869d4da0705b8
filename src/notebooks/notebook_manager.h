#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "notebooks/notebook_list_file.h"
#include "notebooks/notebook_trash.h"
#include "notes/notebook_paths.h"
#include "notes/sync_log.h"
#include "ports/fault_notice.h"
#include "ports/progress.h"
#include "ports/prompts.h"
#include "ports/read_context.h"

namespace lore {

/// What changing the list of NoteBooks asks of the world.
struct ManagerPorts {
    Prompts& prompts;
    Progress& progress;
    FaultNotice& faults;
    /// Lets a number of milliseconds pass.
    std::function<void(int)> wait;
    /// A random number from 0 to the one given.
    std::function<int(int)> random;
    /// Frees the NoteBook of the online account that a NoteBook is linked with. May be empty; what comes of it doesn't
    /// matter here.
    std::function<void(const CDatabase&, const SyncLink&)> clearOnlineLink;
    /// Where deleted NoteBooks wait to be restored; null, and they go at once.
    NoteBookTrash* trash = nullptr;
};

/// How a deletion ended.
enum class DeleteOutcome {
    Refused,   ///< the main NoteBook stays
    Declined,  ///< the user said No
    Failed,    ///< the list could not be written: nothing was deleted
    Deleted,
};

/// Creates, renames and deletes NoteBooks. Knows nothing of the one that is open: whoever deletes that one empties the
/// current list and lets nothing be written until another one is open.
class NoteBookManager {
public:
    NoteBookManager(DataPaths data, std::string localGUID, ManagerPorts ports);

    /// Reads the list. Before everything else.
    void Load(const ReadContext& context) { file_.Load(context); }
    /// All NoteBooks but the main one, in the order of the file.
    const std::vector<CDatabase>& List() const { return file_.List(); }

    /// Asks, makes a NoteBook with folders of its own and puts it at the end of the list. The name is trimmed and has 5
    /// to 30 characters. Nothing if the name was refused, the user said No, or the list could not be written.
    std::optional<CDatabase> Create(std::string_view name, const ReadContext& context);
    /// Gives a listed NoteBook any other name. False for the main one and one that isn't listed, or if the list could
    /// not be written.
    bool ChangeName(const CDatabase& noteBook, std::string_view name);
    /// Asks with the number of notes, takes the NoteBook out of the list and deletes its folder.
    DeleteOutcome Delete(const CDatabase& noteBook, size_t noteCount);
    bool CanRestore() const { return ports_.trash && ports_.trash->Last(); }
    /// Brings the NoteBook back that was deleted last, with its folder and in its place in the list. Nothing if there
    /// is none, or if it can't be brought back, which is told: it waits on then.
    std::optional<CDatabase> Restore();

private:
    bool IsListed(const CDatabase& noteBook) const;
    void ClearOnlineLink(const CDatabase& noteBook);
    void DeleteFolder(const CDatabase& noteBook, size_t position);
    void ThrowAway(const CDatabase& noteBook, size_t position, const std::filesystem::path& folder,
                   const std::filesystem::path& trash);
    void ClearTrash();

    DataPaths data_;
    std::string localGUID_;
    ManagerPorts ports_;
    NoteBookListFile file_;
};

/// True for the same record of the list.
bool IsSameNoteBook(const CDatabase& a, const CDatabase& b);

/// A record for a new NoteBook beside a list, with a guid of its own, whose folder isn't made yet.
/// @param gap  how many numbers are passed over, from 0 on, after those of all folders
CDatabase NewNoteBook(const DataPaths& data, const std::vector<CDatabase>& list, int32_t gap, std::string name,
                      const ReadContext& context);

}  // namespace lore
