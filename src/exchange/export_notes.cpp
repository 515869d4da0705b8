#include "exchange/export_notes.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <future>
#include <iterator>
#include <memory>
#include <system_error>
#include <unistd.h>
#include <unordered_map>
#include <unordered_set>

#include "base/helper_threads.h"
#include "base/text.h"
#include "exchange/archive_notes.h"
#include "exchange/scratch_folder.h"
#include "exchange/zip_directory.h"
#include "exchange/zip_writer.h"
#include "notes/attachment_path.h"
#include "notes/data_files.h"
#include "notes/note_file.h"
#include "notes/note_file_walk.h"

namespace lore {

namespace {

/// How hard attachments are packed. Above level 4 the time doubles for a few hundredths of the size.
constexpr int kLevel = 4;
constexpr size_t kThreads = 2;
constexpr size_t kBatchBytes = size_t{256} << 10;
/// How long the window's thread waits for others before it looks to the window.
constexpr std::chrono::milliseconds kPollTime{4};
constexpr int kWholeArchive = 1000;  // the range of the progress while it is written

/// One run of ExportNotes.
class Exporter {
public:
    Exporter(const std::filesystem::path& target, const ExportJob& job)
        : target_(target),
          job_(job),
          folder_(job.data.ExportTemp() / ("Export" + std::to_string(::getpid())), job.data.ExportTemp()),
          records_(folder_.Path() / kArchiveNotesName, kThreads),
          writer_(job.book.sources, job.book.authors),
          archive_(kLevel) {}

    ArchiveOutcome Run(const ExportedNotes& notes, ExportedSources sources) {
        job_.ports.progress.SetRange(0, static_cast<int>(notes.count) + 2);
        job_.ports.progress.Show();
        job_.ports.progress.SetMessage("Exporting notes...");
        ArchiveResult result = WriteRecords(notes, sources);
        if (result.Ok())
            result = WriteArchive();
        job_.ports.progress.Hide();
        if (result.kind == ArchiveResult::Kind::Cancelled)
            return {.kind = Kind::Cancelled};
        if (!result.Ok()) {
            job_.ports.prompts.Message(result.reason, kArchivingError, PromptIcon::Error);
            return {.kind = Kind::Failed};
        }
        return {.kind = written_ > 0 ? Kind::Done : Kind::Nothing, .notes = static_cast<int>(written_)};
    }

private:
    using Kind = ArchiveOutcome::Kind;

    ArchiveResult WriteRecords(const ExportedNotes& notes, ExportedSources sources) {
        const bool isBackup = sources == ExportedSources::All;
        if (const FileResult opened = records_.Open(); !opened.Ok())
            return ArchiveResult::Failure(records_.File().string() + ": " + opened.Reason());
        if (isBackup)
            WriteArchiveNote(batch_, MakeSourcesNote(job_.book.sources, job_.context.now), job_.book.authors);
        notes.each([&](const CNote& note) {
            writer_.Write(batch_, note);
            ++written_;
            job_.ports.progress.StepIt();
            if (batch_.Logical().size() > kBatchBytes)
                HandOverBatch();
            AddAttachments(note);
            return !job_.ports.progress.Cancelled();
        });
        HandOverBatch();
        const FileResult finished = records_.Finish();
        if (job_.ports.progress.Cancelled())
            return {ArchiveResult::Kind::Cancelled, {}};
        if (!finished.Ok())
            return ArchiveResult::Failure(records_.File().string() + ": " + finished.Reason());
        // The head stands in front, but only now it is known how many notes could be read.
        RecordWriter head;
        WriteArchiveHead(head, job_.context.now, static_cast<int32_t>(written_ + (isBackup ? 1 : 0)));
        archive_.AddPacked(kArchiveNotesName, PackPiece(head.DiskBytes(), {}), records_);
        return {};
    }

    void HandOverBatch() {
        while (!records_.TakesMore(kPollTime))
            job_.ports.progress.SetPosition(static_cast<int>(written_));
        records_.Append(batch_.DiskBytes());
        batch_ = {};
    }

    void AddAttachments(const CNote& note) {
        for (const CAttachment& attachment : note.attachments) {
            const std::string name = StoredName(attachment);
            if (name.empty() || !attached_.insert(name).second)
                continue;
            const std::filesystem::path path = job_.book.paths.Attachments() / name;
            std::error_code error;
            if (!std::filesystem::is_regular_file(path, error))
                Tell(path, error ? error.value() : ENOENT);
            else if (::access(path.c_str(), R_OK) != 0)
                Tell(path, errno);
            else if (ZipFileName(ToUtf8(name)) != ToUtf8(name))
                Tell(path, EINVAL);  // no reader would find it under its name
            else if (ToLower(name) == ToLower(kArchiveNotesName) || !archive_.AddFile(ToUtf8(name), path))
                Tell(path, EEXIST);
        }
    }

    void Tell(const std::filesystem::path& path, int error) {
        job_.ports.faults.Tell(
            {"An attachment file is missing in the archive", path.string(), FileResult{error}.Reason()});
    }

    ArchiveResult WriteArchive() {
        Progress& progress = job_.ports.progress;
        progress.SetRange(0, kWholeArchive);
        progress.SetMessage("Compressing export file...");
        std::atomic<int> position = 0;
        std::atomic<bool> cancelled = false;
        const ZipWriter::Watch watch{[&](double part) { position = static_cast<int>(part * kWholeArchive); },
                                     [&] { return cancelled.load(); }};
        auto writing = RunOnHelper([&] {
            ArchiveResult result = archive_.Write(target_, watch);
            folder_.Remove();
            return result;
        });
        while (writing.wait_for(kPollTime) == std::future_status::timeout) {
            progress.SetPosition(position);
            cancelled = progress.Cancelled();
        }
        return writing.get();
    }

    const std::filesystem::path& target_;
    const ExportJob& job_;
    ScratchFolder folder_;
    PackedStream records_;
    ArchiveNoteWriter writer_;
    ZipWriter archive_;
    RecordWriter batch_;
    std::unordered_set<std::string> attached_;
    size_t written_ = 0;
};

/// The notes of a NoteBook file by file, as often as they are asked for.
class BookWalk {
public:
    using Take = std::function<bool(const CNote&)>;

    BookWalk(const OpenNoteBook& book, const ReadContext& context, FaultNotice& faults)
        : book_(book), faults_(faults), reader_(context) {}

    void Run(const Take& take) {
        std::unordered_set<std::string> walked;
        for (const CNoteIDsPath& file : book_.index.Entries()) {
            walked.insert(file.path);
            if (!RunFile(file, take))
                return;
        }
        // A damaged file may have lost all its notes.
        for (const std::filesystem::path& file : NoteFilesOf(book_.paths.Notes(), faults_)) {
            if (!walked.contains(file.string()))
                RunFile({file.string(), {}}, take);
        }
    }

private:
    bool RunFile(const CNoteIDsPath& file, const Take& take) {
        std::unordered_set<int32_t> wanted(file.ids.begin(), file.ids.end());
        const std::unordered_map<int32_t, size_t> shown = ShownOfSeveral(file);
        const FileResult opened = reader_.Open(file.path);
        while (reader_.Next()) {
            const int32_t id = reader_.Head().id;
            const auto chosen = shown.find(id);
            const bool isShown = chosen == shown.end() || chosen->second == reader_.NoteNumber();
            if (isShown && wanted.erase(id) != 0 && !take(reader_.TakeNote()))
                return false;
        }
        const char* const damage = reader_.IsDamaged() ? reader_.DamageText() : nullptr;
        if (!told_.contains(file.path) && TellOfNoteFile(faults_, file.path, opened, damage, !wanted.empty()))
            told_.insert(file.path);
        return true;
    }

    /// The position of the record that shows, for each note of the file that may stand there more than once.
    std::unordered_map<int32_t, size_t> ShownOfSeveral(const CNoteIDsPath& file) {
        std::unordered_set<int32_t> ids;
        std::copy_if(file.ids.begin(), file.ids.end(), std::inserter(ids, ids.end()),
                     [this](int32_t id) { return book_.index.HasHiddenCopy(id); });
        std::unordered_map<int32_t, size_t> chosen;
        if (ids.empty() || !reader_.Open(file.path).Ok())
            return chosen;
        CopyChoice<size_t> choice;
        while (reader_.Next()) {
            if (ids.contains(reader_.Head().id))
                choice.Add(CopyOf(reader_, file.path), reader_.NoteNumber());
        }
        choice.TakeShown([&](int32_t id, size_t position) { chosen.emplace(id, position); });
        return chosen;
    }

    const OpenNoteBook& book_;
    FaultNotice& faults_;
    NoteFileReader reader_;
    std::unordered_set<std::string> told_;
};

}  // namespace

ExportedNotes NotesOfList(const CNoteList& list) {
    return {list.Count(), [&list](const auto& take) {
                for (size_t i = 0; i < list.Count() && take(list[i]); ++i) {
                }
            }};
}

ExportedNotes NotesOfList(const std::vector<CNote>& notes) {
    return {notes.size(),
            [&notes](const auto& take) { static_cast<void>(std::all_of(notes.begin(), notes.end(), take)); }};
}

ExportedNotes NotesOfNoteBook(const OpenNoteBook& book, const ReadContext& context, FaultNotice& faults) {
    return {book.index.Count(),
            [walk = std::make_shared<BookWalk>(book, context, faults)](const auto& take) { walk->Run(take); }};
}

std::string WhyNoArchive(const std::filesystem::path& target, const DataPaths& data) {
    if (IsDataFile(data, target))
        return "it belongs to the data folder; please choose another file";
    std::error_code error;
    const std::filesystem::file_type type = std::filesystem::status(target, error).type();
    if (type == std::filesystem::file_type::directory)
        return FileResult{EISDIR}.Reason();
    if (type == std::filesystem::file_type::none)
        return FileResult{error.value()}.Reason();
    const std::filesystem::path name = target.filename();
    return name.empty() || name == "." || name == ".." ? "it isn't the name of a file" : "";
}

ArchiveOutcome ExportNotes(const ExportedNotes& notes, const std::filesystem::path& target, ExportedSources sources,
                           const ExportJob& job) {
    if (notes.count == 0) {
        notes.each([](const CNote&) { return true; });  // tells of files whose notes can't be read
        return {};
    }
    if (const std::string reason = WhyNoArchive(target, job.data); !reason.empty()) {
        job.ports.prompts.Message(target.string() + ": " + reason, kArchivingError, PromptIcon::Error);
        return {.kind = ArchiveOutcome::Kind::Failed};
    }
    return Exporter(target, job).Run(notes, sources);
}

void RunExportCommand(const ExportedNotes& notes, ExportScope scope, const ExportJob& job) {
    Prompts& prompts = job.ports.prompts;
    if (notes.count == 0)
        return prompts.Message("There are no notes in the current list.", "Invalid Notes", PromptIcon::Warning);
    const auto target = prompts.AskSavePath("Export Notes", kArchiveFilter, {});
    if (!target)
        return;
    const ArchiveOutcome exported = ExportNotes(notes, *target, ExportedSources::OfNotes, job);
    if (exported.Failed())
        return prompts.Message("The export has failed, please contact support if problem persists.", "Export Failed",
                               PromptIcon::Error);
    if (exported.notes == 0)
        return;
    const std::string count = "*" + std::to_string(exported.notes) + "*";
    prompts.Message(scope == ExportScope::CurrentList
                        ? "All  " + count + "  of your current notes have been successfully exported!"
                        : "Your  " + count + "  notes have been successfully exported!",
                    "Finished!", PromptIcon::Information);
}

}  // namespace lore
