#include "notebooks/backup.h"

#include <algorithm>
#include <set>

#include "base/file_io.h"
#include "base/text.h"
#include "notebooks/backup_file.h"
#include "notebooks/notebook_list_file.h"
#include "notes/file_faults.h"
#include "notes/note_book_loader.h"

namespace lore {

namespace {

constexpr char kFailed[] = "The backup has failed, please contact support if problem persists.";
constexpr char kFailedTitle[] = "Backup Failed";
constexpr char kFinished[] = "Finished!";

/// A path that stands as text in a record or a setting.
std::filesystem::path PathOfText(const std::string& text) {
    return ToUtf8(text);
}

std::string TextOfPath(const std::filesystem::path& path) {
    return FromUtf8(path.string());
}

size_t ListedNoteBooks(const BackupWorld& world) {
    std::vector<CDatabase> list;
    LoadDatabases(world.data.DatabasesFile(), world.context, list);
    return list.size();
}

void TellAllFinished(int notes, const BackupWorld& world) {
    world.prompts.Message("All  " + std::to_string(ListedNoteBooks(world) + 1) + "  NoteBooks and  all  *" +
                              std::to_string(notes) + "*  of your notes have been successfully backed up!",
                          kFinished, PromptIcon::Information);
}

void TellFailed(const BackupWorld& world) {
    world.prompts.Message(kFailed, kFailedTitle, PromptIcon::Error);
}

/// Gives notes that have no GUID the same new one each time that they are read.
class RepeatedGuids : public GuidSource {
public:
    explicit RepeatedGuids(GuidSource& source) : source_(source) {}
    std::string NewGuid() override {
        if (next_ == given_.size())
            given_.push_back(source_.NewGuid());
        return given_[next_++];
    }
    void Rewind() { next_ = 0; }

private:
    GuidSource& source_;
    std::vector<std::string> given_;
    size_t next_ = 0;
};

/// `isShort` is set if the NoteBook could not be read whole, or attachment files are missing that the backup of last
/// time has, `earlier` or what stands at the target.
int LoadAndBackUp(const CDatabase& noteBook, const std::string& wait, const std::filesystem::path& target,
                  const std::filesystem::path& earlier, const BackupWorld& world, bool& isShort) {
    HeardFaults faults(world.faults, isShort);
    world.progress.ShowStandBy(wait);
    OpenNoteBook book;
    book.database = noteBook;
    book.paths = NoteBookPaths(world.data, noteBook.folder);
    IdCounters counters;
    LoadOptions options;
    options.mode = LoadMode::ReadOnly;
    const bool listed = LoadNoteBook(book, counters, world.context, faults, options).listed;
    world.progress.HideStandBy();
    if (!listed)
        return 0;
    if (!book.sources.ReadWhole())
        faults.Tell({"The sources or their authors could not be read whole, and the backup lacks some",
                     book.paths.Sources().string(), "the file is short, damaged or missing"});
    const ExportWorld exportWorld{book, world.data, world.context, world.prompts, world.progress, world.faults};
    RepeatedGuids guids(*world.context.guids);
    const ReadContext context{world.context.now, world.context.nowUtc, &guids};
    ExportedNotes notes = NotesOfNoteBook(book, context, faults);
    notes.each = [&guids, each = std::move(notes.each)](const auto& take) {
        guids.Rewind();
        each(take);
    };
    return WriteBackup(notes, target, earlier, exportWorld, isShort);
}

/// One run over all NoteBooks.
class BackupOfAll {
public:
    BackupOfAll(std::filesystem::path path, const BackupAllOptions& options, const BackupWorld& world)
        : path_(std::move(path)), options_(options), world_(world), file_(world.data.DatabasesFile(), world.faults) {}

    BackedUp Run() {
        file_.Load(world_.context);
        std::vector<CDatabase> list = file_.List();
        CDatabase main = MainNoteBook(world_.settings.Text(Option::LocalGUID));
        main.extra = world_.settings.Text(Option::PrevBackupPath);
        for (CDatabase& noteBook : list)
            done_.notes += BackUp(noteBook);
        done_.notes += BackUp(main);
        for (const CDatabase& noteBook : list)
            remembered_.push_back(PathOfText(noteBook.extra));
        remembered_.push_back(PathOfText(main.extra));
        if (options_.keepRecord && Remember(std::move(list), main))
            DeletePrevious();
        return std::move(done_);
    }

private:
    /// A NoteBook without notes takes its name too: its backup of last time may stand there.
    std::string FileOf(const CDatabase& noteBook) {
        std::string folder;
        for (int number = 1;; ++number) {
            std::string name = BackupFileName(path_.string(), ToUtf8(noteBook.name), options_.dateText, folder);
            if (names_.insert(ToLower(name)).second)
                return name;
            folder = ToUtf8(noteBook.folder) + (number > 1 ? " " + std::to_string(number) : "");
        }
    }

    int BackUp(CDatabase& noteBook) {
        if (world_.progress.Cancelled())
            return 0;
        const std::string name = FileOf(noteBook);
        bool isShort = false;
        const int notes = LoadAndBackUp(noteBook, "Loading *" + noteBook.name + "* NoteBook for backup.....", name,
                                        PathOfText(noteBook.extra), world_, isShort);
        const std::string text = TextOfPath(name);
        if (notes > 0 && noteBook.extra != text) {
            // What this backup lacks may stand in the one of last time.
            if (!isShort)
                previous_.push_back(noteBook.extra);
            noteBook.extra = text;
        }
        if (notes > 0)
            done_.files.emplace_back(name);
        return notes;
    }

    bool Remember(std::vector<CDatabase> list, const CDatabase& main) {
        world_.settings.Set(Option::PrevBackupPath, main.extra);
        world_.storeSettings();
        return list.empty() || file_.Save(std::move(list));
    }

    void DeletePrevious() const {
        if (!options_.deletePrevious)
            return;
        for (const std::string& text : previous_) {
            const std::filesystem::path file = PathOfText(text);
            if (!IsRemembered(file) && IsExportArchive(file))
                TellFailedWrite(world_.faults, "An earlier backup could not be deleted", file, RemoveFile(file));
        }
    }

    /// Names that differ may stand for one file, such as on a disk that doesn't tell "a" from "A".
    bool IsRemembered(const std::filesystem::path& file) const {
        return std::any_of(remembered_.begin(), remembered_.end(), [&](const std::filesystem::path& other) {
            std::error_code missing;
            return other == file || std::filesystem::equivalent(other, file, missing);
        });
    }

    std::filesystem::path path_;
    const BackupAllOptions& options_;
    const BackupWorld& world_;
    NoteBookListFile file_;
    BackedUp done_;
    std::set<std::string> names_;                    // in lower case
    std::vector<std::string> previous_;              // the files of last time whose NoteBooks have new ones
    std::vector<std::filesystem::path> remembered_;  // the backup of each NoteBook from now on
};

/// The number of notes; 0, too, if the user doesn't want it, or after a failure that has been told.
int AskAndBackUp(const BackupWorld& world) {
    const Settings& settings = world.settings;
    if (world.prompts.Ask("Do you wish to perform the auto-backup now?", "< Auto-Backup >") != PromptAnswer::Yes)
        return 0;
    const std::filesystem::path path = PathOfText(settings.Text(Option::BackupPath));
    if (!IsWritablePath(path)) {
        world.prompts.Message(
            "The backup file path is invalid.  Please go to Options and set a new Auto-Backup file path.", kFailedTitle,
            PromptIcon::Warning);
        return 0;
    }
    const BackupAllOptions options{world.context.now.Format("_(%m-%d-%y)"), true,
                                   settings.IsOne(Option::OverwriteBkup)};
    const int notes = RunBackupAll(path, options, world).notes;
    if (notes < 0)
        TellFailed(world);
    return std::max(notes, 0);
}

}  // namespace

int BackUpNoteBook(const CDatabase& noteBook, const std::filesystem::path& target, const BackupWorld& world) {
    bool isShort = false;
    return LoadAndBackUp(noteBook, "Loading notes...(may take a few moments)", target, {}, world, isShort);
}

BackedUp RunBackupAll(const std::filesystem::path& path, const BackupAllOptions& options, const BackupWorld& world) {
    return BackupOfAll(path, options, world).Run();
}

void BackupCurrentNoteBook(const CDatabase& open, const BackupWorld& world) {
    const auto target = world.prompts.AskSavePath("Backup Current NoteBook", kArchiveFilter, {});
    if (!target)
        return;
    const int notes = BackUpNoteBook(open, *target, world);
    if (notes > 0)
        world.prompts.Message("All  *" + std::to_string(notes) + "*  of your notes have been successfully backed up!",
                              kFinished, PromptIcon::Information);
    else if (notes < 0)
        TellFailed(world);
}

void BackupAllNoteBooks(const BackupWorld& world) {
    const auto target = world.prompts.AskSavePath("Backup All NoteBooks", kArchiveFilter, {});
    if (!target)
        return;
    const int notes = RunBackupAll(*target, {}, world).notes;
    if (notes > 0)
        TellAllFinished(notes, world);
    else if (notes < 0)
        TellFailed(world);
}

void RunAutoBackup(const BackupWorld& world) {
    if (!world.settings.Flag(Option::EnableBackup))
        return world.prompts.Message("Your auto-backup is not enabled, please go to Options->Auto-Backup to set it up.",
                                     "Auto-Backup Disabled", PromptIcon::Information);
    if (const int notes = AskAndBackUp(world); notes > 0)
        TellAllFinished(notes, world);
}

void AutoBackupAtClose(const BackupWorld& world) {
    Settings& settings = world.settings;
    settings.Set(Option::BkUseCount, settings.Int(Option::BkUseCount) + 1);
    if (settings.Int(Option::BkUseCount) != settings.Int(Option::BkUseTimes))
        return;
    settings.Set(Option::BkUseCount, 0);
    AskAndBackUp(world);
}

}  // namespace lore
