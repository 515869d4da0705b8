#include "edit/named_files.h"

#include <filesystem>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>

#include "notes/attachment_path.h"
#include "notes/file_faults.h"
#include "notes/note_file_walk.h"

namespace lore {

namespace {

using Names = std::unordered_set<std::string>;

/// Those of the stored names that notes of a folder hold. Nothing, told, if the folder or one of its files can't be
/// read.
std::optional<Names> NamesInUse(const Names& names, const std::filesystem::path& notesFolder,
                                const ReadContext& context, const std::stop_token& stop, FaultNotice& faults) {
    std::vector<std::filesystem::path> files;
    bool isRead = ListNoteFiles(notesFolder, faults, files);
    std::vector<Names> found(files.size());
    Names used;
    WalkNoteFiles(
        files, context, kReadThreads,
        [&](size_t file, NoteFileReader& reader) {
            while (reader.Next()) {
                for (const CAttachment& attachment : reader.Head().attachments) {
                    if (std::string name = StoredName(attachment); names.contains(name))
                        found[file].insert(std::move(name));
                }
            }
        },
        [&](size_t file, const FileResult& result) {
            TellFailedRead(faults, kNoteFileUnread, files[file], result);
            isRead = isRead && (result.Ok() || result.Missing());
            used.merge(found[file]);
        },
        stop, HeadParts::Place);
    return isRead ? std::optional(std::move(used)) : std::nullopt;
}

}  // namespace

std::vector<CAttachment> WithUnnamedFiles(const std::vector<CAttachment>& attachments, const char* whose,
                                          const NamedFilesSearch& search) {
    std::vector<CAttachment> stored;
    Names names;
    for (const CAttachment& attachment : attachments) {
        std::string name = StoredName(attachment);
        if (name.empty())
            continue;
        stored.push_back(attachment);
        names.insert(std::move(name));
    }
    if (names.empty())
        return stored;
    std::optional<Names> used;
    KeptForLater met;
    const bool done = RunBeside(search.background, "Deleting Attachments....", [&](const std::stop_token& stop) {
        used = NamesInUse(names, search.paths.Notes(), search.context, stop, met);
    });
    met.TellAll(search.faults);
    if (!done || !used) {
        search.faults.Tell({std::string("The attachment files of ") + whose + " were left where they are",
                            search.paths.Attachments().string(),
                            done ? "other notes may name them, and not all of those could be read"
                                 : "other notes may name them, and the search for those was stopped"});
        return {};
    }
    std::erase_if(stored, [&](const CAttachment& attachment) { return used->contains(StoredName(attachment)); });
    return stored;
}

}  // namespace lore
