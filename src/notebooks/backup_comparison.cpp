#include "notebooks/backup_comparison.h"

#include <cstdint>
#include <fstream>
#include <string>
#include <unordered_set>

#include "base/text.h"
#include "exchange/archive_notes.h"
#include "exchange/import_archive.h"
#include "exchange/zip_reader.h"
#include "notes/attachment_path.h"

namespace lore {

namespace {

/// Length and a 64-bit sum of bytes that come piece by piece, so that two streams are compared without holding either.
class StreamSum {
public:
    void Add(std::string_view bytes) {
        for (const char c : bytes)
            sum_ = (sum_ ^ static_cast<unsigned char>(c)) * 0x100000001B3u;
        length_ += bytes.size();
    }
    bool operator==(const StreamSum&) const = default;

private:
    uint64_t sum_ = 0xCBF29CE484222325u;
    uint64_t length_ = 0;
};

class Comparison {
public:
    Comparison(const ExportedNotes& notes, size_t count, const ExportJob& job, std::vector<std::string>& lacking)
        : notes_(notes), count_(count), job_(job), lacking_(lacking) {}

    ArchiveResult Run(const std::filesystem::path& archive) {
        ArchiveResult result = zip_.Open(archive);
        const ZipItem* records = nullptr;
        if (result.Ok())
            result = FindRecordFile(zip_, records);
        if (!result.Ok())
            return ArchiveResult::Failure("the backup could not be imported: " + result.reason);
        const StreamSum expected = ExpectedRecords();
        StreamSum found;
        result = zip_.Unpack(*records, [&found](std::string_view piece) {
            found.Add(piece);
            return true;
        });
        if (result.Ok() && found != expected)
            return ArchiveResult::Failure("the notes of the backup aren't those of the NoteBook");
        return result.Ok() ? CompareAttachments() : result;
    }

private:
    StreamSum ExpectedRecords() {
        StreamSum sum;
        RecordWriter head;
        WriteArchiveHead(head, job_.context.now, static_cast<int32_t>(count_ + 1));
        WriteArchiveNote(head, MakeSourcesNote(job_.book.sources, job_.context.now), job_.book.authors);
        sum.Add(head.DiskBytes());
        ArchiveNoteWriter writer(job_.book.sources, job_.book.authors);
        notes_.each([&](const CNote& note) {
            RecordWriter record;
            writer.Write(record, note);
            sum.Add(record.DiskBytes());
            for (const CAttachment& attachment : note.attachments) {
                if (std::string name = StoredName(attachment); !name.empty())
                    attached_.insert(std::move(name));
            }
            return true;
        });
        return sum;
    }

    /// A file that isn't in the NoteBook was told when the archive was made.
    ArchiveResult CompareAttachments() {
        for (const std::string& name : attached_) {
            const ZipItem* const item = zip_.Find(ToUtf8(name));
            if (!item) {
                lacking_.push_back(name);
                continue;
            }
            std::ifstream file(job_.book.paths.Attachments() / name, std::ios::binary);
            if (!file)
                continue;
            std::string room;
            const ArchiveResult result = zip_.Unpack(*item, [&](std::string_view piece) {
                room.resize(piece.size());
                return file.read(room.data(), static_cast<std::streamsize>(room.size())) && room == piece;
            });
            if (!result.Ok() || file.peek() != std::ifstream::traits_type::eof())
                return ArchiveResult::Failure("the attachment " + name +
                                              " of the backup isn't the one of the NoteBook");
        }
        return {};
    }

    const ExportedNotes& notes_;
    size_t count_;
    const ExportJob& job_;
    std::vector<std::string>& lacking_;
    ZipReader zip_;
    std::unordered_set<std::string> attached_;
};

}  // namespace

ArchiveResult CompareBackup(const std::filesystem::path& archive, const ExportedNotes& notes, size_t count,
                            const ExportJob& job, std::vector<std::string>& lacking) {
    return Comparison(notes, count, job, lacking).Run(archive);
}

}  // namespace lore
