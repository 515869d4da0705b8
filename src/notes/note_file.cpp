#include "notes/note_file.h"

namespace lore {

// A note file:
//
//   FixedDouble  version, which decides the shape of every record
//   FixedInt     count
//   note record  x count

FileResult NoteFileReader::Open(const std::filesystem::path& path) {
    // Many files are read one after the other; room that is used again leaves no gaps in memory between what is kept.
    std::string bytes = stream_ ? stream_->TakeRoom() : std::string();
    const FileResult result = ReadFile(path, bytes);
    OpenBytes(std::move(bytes));
    if (!result.Ok())
        stream_.reset();
    return result;
}

void NoteFileReader::OpenBytes(std::string diskBytes) {
    stream_ = std::make_unique<RecordReader>(std::move(diskBytes));
    version_ = ReadFixedDouble(stream_.get());
    count_ = ReadFixedInt(stream_.get());
    read_ = 0;
    taken_ = 0;
}

bool NoteFileReader::Next() {
    // Past the end there are only records without a number; one of them shows that they are missing.
    while (stream_ && read_ < count_ && !(stream_->AtEnd() && stream_->RanOut())) {
        ++read_;
        ReadNoteHead(stream_.get(), version_, context_, note_, texts_, parts_);
        if (note_.id > 0) {
            ++taken_;
            return true;
        }
    }
    return false;
}

bool NoteFileReader::NextUncounted() {
    if (!HoldsMore())
        return false;
    ReadNoteHead(stream_.get(), version_, context_, note_, texts_, parts_);
    ++taken_;
    return note_.id > 0 && note_.dateCreated.IsValid() && IsNoteWhole();
}

CNote NoteFileReader::TakeNote() {
    CNote note = std::move(note_);
    note.plainText = texts_.plainText;
    note.rtfText = texts_.rtfText;
    return note;
}

bool NoteFileReader::IsDamaged() const {
    return stream_ && (!stream_->ReadWhole() || static_cast<int64_t>(taken_) < count_);
}

const char* NoteFileReader::DamageText() const {
    if (stream_->RanOut() || HoldsMore())
        return "is short or damaged";
    return stream_->ReadWhole() ? kRecordWithoutNumber : "holds a byte that cuts a text or the file";
}

bool NoteFileReader::HoldsMore() const {
    return stream_ && !stream_->AtEnd();
}

std::string NoteFileBytes(std::span<const CNote> notes) {
    RecordWriter writer;
    WriteFixedDouble(&writer, kDataVersion);
    WriteFixedInt(&writer, static_cast<int32_t>(notes.size()));
    for (const CNote& note : notes)
        WriteNote(&writer, note);
    return writer.DiskBytes();
}

FileResult SaveNoteFile(const std::filesystem::path& path, std::span<const CNote> notes) {
    return WriteFileAtomically(path, NoteFileBytes(notes));
}

}  // namespace lore
