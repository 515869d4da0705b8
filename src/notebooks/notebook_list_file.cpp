#include "notebooks/notebook_list_file.h"

#include "notes/file_faults.h"
#include "notes/keep_damaged.h"

namespace lore {

void NoteBookListFile::Load(const ReadContext& context) {
    double version = 0.0;
    isWhole_ = true;
    RecordFileState state;
    read_ = LoadDatabases(file_, context, list_, version, &state);
    isWhole_ = state.isWhole;
    TellFailedRead(faults_, kNoteBooksUnread, file_, read_);
}

bool NoteBookListFile::Save(std::vector<CDatabase> list) {
    constexpr char kUnwritten[] = "The list of NoteBooks could not be written";
    FileResult result = IsWritable() ? FileResult{} : read_;
    if (result.Ok() && !isWhole_) {
        result = KeepDamaged("The list of NoteBooks", file_, "it breaks off, or holds more than its records", faults_);
        isWhole_ = result.Ok();
    }
    if (result.Ok())
        result = MakeFolders(file_.parent_path());
    if (result.Ok())
        result = SaveDatabases(file_, list);
    TellFailedWrite(faults_, kUnwritten, file_, result);
    if (result.Ok())
        list_ = std::move(list);
    return result.Ok();
}

}  // namespace lore
