#pragma once

#include <filesystem>
#include <vector>

#include "notes/notebook_list.h"
#include "ports/fault_notice.h"
#include "ports/read_context.h"

namespace lore {

/// The list of NoteBooks for somebody who changes it. A list that can't be read is never written over, and one that is
/// damaged is kept beside, as "Databases.dat.kept", before it is written anew.
class NoteBookListFile {
public:
    NoteBookListFile(std::filesystem::path file, FaultNotice& faults) : file_(std::move(file)), faults_(faults) {}

    /// Empties the list and reads the file; a file that isn't there has no NoteBooks. A failure is told.
    void Load(const ReadContext& context);
    /// Writes a list in place of the one that was read. False, and told, if the file stays as it was.
    bool Save(std::vector<CDatabase> list);

    const std::vector<CDatabase>& List() const { return list_; }
    /// False if the file is there and could not be read: no list can be written then.
    bool IsWritable() const { return read_.Ok() || read_.Missing(); }

private:
    std::filesystem::path file_;
    FaultNotice& faults_;
    std::vector<CDatabase> list_;
    FileResult read_;
    bool isWhole_ = true;
};

}  // namespace lore
