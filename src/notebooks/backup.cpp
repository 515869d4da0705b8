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

size_t ListedNoteBooks(const BackupJob& job) {
    std::vector<CDatabase> list;
    LoadDatabases(job.data.DatabasesFile(), job.context, list);
    return list.size();
}

void TellAllFinished(int notes, const BackupJob& job) {
    job.ports.prompts.Message("All  " + std::to_string(ListedNoteBooks(job) + 1) + "  NoteBooks and  all  *" +
                                  std::to_string(notes) + "*  of your notes have been successfully backed up!",
                              kFinished, PromptIcon::Information);
}

void TellFailed(const BackupJob& job) {
    job.ports.prompts.Message(kFailed, kFailedTitle, PromptIcon::Error);
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

/// One NoteBook: it is loaded for its backup, and what is told of it decides what becomes of the earlier one.
class NoteBookBackup {
public:
    NoteBookBackup(const CDatabase& noteBook, const BackupJob& job)
        : job_(job),
          faults_(job.ports.faults),
          guids_(*job.context.guids),
          book_(OpenNoteBook::At(job.data, noteBook)) {}

    /// `earlier` is the backup of last time, unless that stands at the target.
    WrittenBackup Run(const std::string& wait, const std::filesystem::path& target,
                      const std::filesystem::path& earlier) {
        job_.ports.progress.ShowStandBy(wait);
        const bool isListed = Load();
        job_.ports.progress.HideStandBy();
        if (!isListed)
            return {};
        if (!book_.sources.ReadWhole())
            faults_.Tell({"The sources or their authors could not be read whole, and the backup lacks some",
                          book_.paths.Sources().string(), "the file is short, damaged or missing"});
        const ReadContext context{job_.context.now, job_.context.nowUtc, &guids_};
        return WriteBackup(Notes(context), target, earlier,
                           {.book = book_, .data = job_.data, .context = job_.context, .ports = job_.ports}, faults_);
    }

private:
    bool Load() {
        IdCounters counters;
        LoadOptions options;
        options.mode = LoadMode::ReadOnly;
        return LoadNoteBook(book_, counters, job_.context, faults_, options).listed;
    }

    ExportedNotes Notes(const ReadContext& context) {
        ExportedNotes notes = NotesOfNoteBook(book_, context, faults_);
        notes.each = [this, each = std::move(notes.each)](const auto& take) {
            guids_.Rewind();
            each(take);
        };
        return notes;
    }

    const BackupJob& job_;
    HeardFaults faults_;
    RepeatedGuids guids_;
    OpenNoteBook book_;
};

/// One run over all NoteBooks.
class BackupOfAll {
public:
    BackupOfAll(std::filesystem::path path, const BackupAllOptions& options, const BackupJob& job)
        : path_(std::move(path)), options_(options), job_(job), file_(job.data.DatabasesFile(), job.ports.faults) {}

    BackedUp Run() {
        file_.Load(job_.context);
        std::vector<CDatabase> list = file_.List();
        CDatabase main = MainNoteBook(job_.settings.Text(Option::LocalGUID));
        main.extra = job_.settings.Text(Option::PrevBackupPath);
        for (CDatabase& noteBook : list)
            BackUp(noteBook);
        BackUp(main);
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

    void BackUp(CDatabase& noteBook) {
        if (job_.ports.progress.Cancelled())
            return;
        const std::string name = FileOf(noteBook);
        const WrittenBackup written =
            NoteBookBackup(noteBook, job_)
                .Run("Loading *" + noteBook.name + "* NoteBook for backup.....", name, PathOfText(noteBook.extra));
        done_.Add(written.outcome, name);
        const std::string text = TextOfPath(name);
        if (written.outcome.notes == 0 || noteBook.extra == text)
            return;
        if (!written.isIncomplete)
            previous_.push_back(noteBook.extra);
        noteBook.extra = text;
    }

    bool Remember(std::vector<CDatabase> list, const CDatabase& main) {
        job_.settings.Set(Option::PrevBackupPath, main.extra);
        job_.storeSettings();
        return list.empty() || file_.Save(std::move(list));
    }

    void DeletePrevious() const {
        if (!options_.deletePrevious)
            return;
        for (const std::string& text : previous_) {
            const std::filesystem::path file = PathOfText(text);
            if (!IsRemembered(file) && IsExportArchive(file))
                TellFailedWrite(job_.ports.faults, "An earlier backup could not be deleted", file, RemoveFile(file));
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
    const BackupJob& job_;
    NoteBookListFile file_;
    BackedUp done_;
    std::set<std::string> names_;                    // in lower case
    std::vector<std::string> previous_;              // the files of last time whose NoteBooks have new ones
    std::vector<std::filesystem::path> remembered_;  // the backup of each NoteBook from now on
};

/// The number of notes; 0, too, if the user doesn't want it, or after a failure that has been told.
int AskAndBackUp(const BackupJob& job) {
    const Settings& settings = job.settings;
    if (job.ports.prompts.Ask("Do you wish to perform the auto-backup now?", "< Auto-Backup >") != PromptAnswer::Yes)
        return 0;
    const std::filesystem::path path = PathOfText(settings.Text(Option::BackupPath));
    if (!IsWritablePath(path)) {
        job.ports.prompts.Message(
            "The backup file path is invalid.  Please go to Options and set a new Auto-Backup file path.", kFailedTitle,
            PromptIcon::Warning);
        return 0;
    }
    const BackupAllOptions options{job.context.now.Format("_(%m-%d-%y)"), true, settings.IsOne(Option::OverwriteBkup)};
    const int notes = RunBackupAll(path, options, job).notes;
    if (notes < 0)
        TellFailed(job);
    return std::max(notes, 0);
}

}  // namespace

void BackedUp::Add(const ArchiveOutcome& outcome, const std::filesystem::path& file) {
    notes += outcome.Failed() ? kFailed : outcome.notes;
    if (outcome.notes > 0)
        files.push_back(file);
}

ArchiveOutcome BackUpNoteBook(const CDatabase& noteBook, const std::filesystem::path& target, const BackupJob& job) {
    return NoteBookBackup(noteBook, job).Run("Loading notes...(may take a few moments)", target, {}).outcome;
}

BackedUp RunBackupAll(const std::filesystem::path& path, const BackupAllOptions& options, const BackupJob& job) {
    return BackupOfAll(path, options, job).Run();
}

void BackupCurrentNoteBook(const CDatabase& open, const BackupJob& job) {
    const auto target = job.ports.prompts.AskSavePath("Backup Current NoteBook", kArchiveFilter, {});
    if (!target)
        return;
    const ArchiveOutcome made = BackUpNoteBook(open, *target, job);
    if (made.notes > 0)
        job.ports.prompts.Message(
            "All  *" + std::to_string(made.notes) + "*  of your notes have been successfully backed up!", kFinished,
            PromptIcon::Information);
    else if (made.Failed())
        TellFailed(job);
}

void BackupAllNoteBooks(const BackupJob& job) {
    const auto target = job.ports.prompts.AskSavePath("Backup All NoteBooks", kArchiveFilter, {});
    if (!target)
        return;
    const int notes = RunBackupAll(*target, {}, job).notes;
    if (notes > 0)
        TellAllFinished(notes, job);
    else if (notes < 0)
        TellFailed(job);
}

void RunAutoBackup(const BackupJob& job) {
    if (!job.settings.Flag(Option::EnableBackup))
        return job.ports.prompts.Message(
            "Your auto-backup is not enabled, please go to Options->Auto-Backup to set it up.", "Auto-Backup Disabled",
            PromptIcon::Information);
    if (const int notes = AskAndBackUp(job); notes > 0)
        TellAllFinished(notes, job);
}

void AutoBackupAtClose(const BackupJob& job, bool mayAsk) {
    Settings& settings = job.settings;
    const int uses = settings.Int(Option::BkUseCount) + 1;
    const bool isDue = uses == settings.Int(Option::BkUseTimes);
    if (isDue && !mayAsk)
        return;
    settings.Set(Option::BkUseCount, isDue ? 0 : uses);
    if (isDue)
        AskAndBackUp(job);
}

}  // namespace lore
