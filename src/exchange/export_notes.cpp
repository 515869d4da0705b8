#include "exchange/export_notes.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <future>
#include <system_error>
#include <unistd.h>
#include <unordered_set>

#include "base/text.h"
#include "exchange/archive_notes.h"
#include "exchange/zip_writer.h"
#include "notes/check_note.h"
#include "notes/file_faults.h"
#include "notes/note_file.h"

namespace lore {

namespace {

/// How hard attachments are packed. Above level 4 the time doubles for a few hundredths of the size.
constexpr int kLevel = 4;
constexpr size_t kThreads = 2;
constexpr size_t kBatchBytes = size_t{256} << 10;
/// How long the window's thread waits for others before it looks to the window.
constexpr std::chrono::milliseconds kPollTime{4};
constexpr int kWholeArchive = 1000;  // the range of the progress while it is written

/// A folder for what an export spools; it goes with the export. What a crash has left beside it goes at once.
class SpoolFolder {
public:
    explicit SpoolFolder(std::filesystem::path path) : path_(std::move(path)) {
        std::error_code ignored;
        std::filesystem::remove_all(path_.parent_path(), ignored);
        std::filesystem::create_directories(path_, ignored);
    }
    ~SpoolFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    SpoolFolder(const SpoolFolder&) = delete;
    SpoolFolder& operator=(const SpoolFolder&) = delete;
    const std::filesystem::path& Path() const { return path_; }

private:
    std::filesystem::path path_;
};

/// One run of ExportNotes.
class Exporter {
public:
    Exporter(const std::filesystem::path& target, const ExportWorld& world)
        : target_(target),
          world_(world),
          folder_(world.data.ExportTemp() / target.stem()),
          records_(folder_.Path() / kArchiveNotesName, kThreads),
          writer_(world.book.sources, world.book.authors),
          archive_(kLevel) {}

    int Run(const ExportedNotes& notes, bool allSources) {
        world_.progress.SetRange(0, static_cast<int>(notes.count) + 2);
        world_.progress.Show();
        world_.progress.SetMessage("Exporting notes...");
        ArchiveResult result = WriteRecords(notes, allSources);
        if (result.Ok())
            result = WriteArchive();
        world_.progress.Hide();
        if (result.kind == ArchiveResult::Kind::Cancelled)
            return 0;
        if (!result.Ok())
            world_.prompts.Message(result.reason, kArchivingError, PromptIcon::Error);
        return result.Ok() ? static_cast<int>(written_) : -1;
    }

private:
    ArchiveResult WriteRecords(const ExportedNotes& notes, bool allSources) {
        if (const FileResult opened = records_.Open(); !opened.Ok())
            return ArchiveResult::Failure(records_.File().string() + ": " + opened.Reason());
        if (allSources)
            WriteArchiveNote(batch_, MakeSourcesNote(world_.book.sources, world_.context.now), world_.book.authors);
        notes.each([&](const CNote& note) {
            writer_.Write(batch_, note);
            ++written_;
            world_.progress.StepIt();
            if (batch_.Logical().size() > kBatchBytes)
                HandOverBatch();
            AddAttachments(note);
            return !world_.progress.Cancelled();
        });
        HandOverBatch();
        const FileResult finished = records_.Finish();
        if (world_.progress.Cancelled())
            return {ArchiveResult::Kind::Cancelled, {}};
        if (!finished.Ok())
            return ArchiveResult::Failure(records_.File().string() + ": " + finished.Reason());
        // The head stands in front, but only now it is known how many notes could be read.
        RecordWriter head;
        WriteArchiveHead(head, world_.context.now, static_cast<int32_t>(written_ + (allSources ? 1 : 0)));
        archive_.AddPacked(kArchiveNotesName, PackPiece(head.DiskBytes(), {}), records_);
        return {};
    }

    void HandOverBatch() {
        while (!records_.TakesMore(kPollTime))
            world_.progress.SetPosition(static_cast<int>(written_));
        records_.Append(batch_.DiskBytes());
        batch_ = {};
    }

    void AddAttachments(const CNote& note) {
        for (const CAttachment& attachment : note.attachments) {
            const std::string name = StoredName(attachment);
            if (name.empty() || !attached_.insert(name).second)
                continue;
            const std::filesystem::path path = world_.book.paths.Attachments() / name;
            std::error_code error;
            if (!std::filesystem::is_regular_file(path, error))
                Tell(path, error ? error.value() : ENOENT);
            else if (::access(path.c_str(), R_OK) != 0)
                Tell(path, errno);
            else if (ToLower(name) == ToLower(kArchiveNotesName) || !archive_.AddFile(ToUtf8(name), path))
                Tell(path, EEXIST);
        }
    }

    void Tell(const std::filesystem::path& path, int error) {
        world_.faults.Tell({"An attachment file is missing in the archive", path.string(), FileResult{error}.Reason()});
    }

    ArchiveResult WriteArchive() {
        Progress& progress = world_.progress;
        progress.SetRange(0, kWholeArchive);
        progress.SetMessage("Compressing export file...");
        std::atomic<int> position = 0;
        std::atomic<bool> cancelled = false;
        const ZipWriter::Watch watch{[&](double part) { position = static_cast<int>(part * kWholeArchive); },
                                     [&] { return cancelled.load(); }};
        auto writing = std::async(std::launch::async, [&] { return archive_.Write(target_, watch); });
        while (writing.wait_for(kPollTime) != std::future_status::ready) {
            progress.SetPosition(position);
            cancelled = progress.Cancelled();
        }
        return writing.get();
    }

    const std::filesystem::path& target_;
    const ExportWorld& world_;
    SpoolFolder folder_;
    PackedStream records_;
    ArchiveNoteWriter writer_;
    ZipWriter archive_;
    RecordWriter batch_;
    std::unordered_set<std::string> attached_;
    size_t written_ = 0;
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
    return {book.index.Count(), [&book, &context, &faults](const auto& take) {
                NoteFileReader reader(context);
                for (const CNoteIDsPath& file : book.index.Entries()) {
                    const FileResult opened = reader.Open(file.path);
                    TellFailedRead(faults, kNoteFileUnread, file.path, opened);
                    std::unordered_set<int32_t> wanted(file.ids.begin(), file.ids.end());
                    while (reader.Next()) {
                        if (wanted.erase(reader.Head().id) != 0 && !take(reader.TakeNote()))
                            return;
                    }
                }
            }};
}

int ExportNotes(const ExportedNotes& notes, const std::filesystem::path& target, bool allSources,
                const ExportWorld& world) {
    if (notes.count == 0)
        return 0;
    return Exporter(target, world).Run(notes, allSources);
}

void RunExportCommand(const ExportedNotes& notes, ExportScope scope, const ExportWorld& world) {
    Prompts& prompts = world.prompts;
    if (notes.count == 0)
        return prompts.Message("There are no notes in the current list.", "Invalid Notes", PromptIcon::Warning);
    const auto target = prompts.AskSavePath("Export Notes", kArchiveFilter, {});
    if (!target)
        return;
    const int exported = ExportNotes(notes, *target, false, world);
    if (exported < 0)
        return prompts.Message("The export has failed, please contact support if problem persists.", "Export Failed",
                               PromptIcon::Error);
    if (exported == 0)
        return;
    const char* const format = scope == ExportScope::CurrentList
                                   ? "All  *%d*  of your current notes have been successfully exported!"
                                   : "Your  *%d*  notes have been successfully exported!";
    char text[100];
    std::snprintf(text, sizeof text, format, exported);
    prompts.Message(text, "Finished!", PromptIcon::Information);
}

}  // namespace lore
