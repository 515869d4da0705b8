#pragma once

#include <filesystem>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "base/record_file.h"
#include "notes/note.h"
#include "notes/note_record.h"
#include "ports/read_context.h"

namespace lore {

/// What is wrong with a record file that is read whole but for a record that was passed over, after "it" or "the file".
inline constexpr char kRecordWithoutNumber[] = "holds a record without a number";

/// Walks the notes of one file in file order without copying their texts. Records with an id of 0 or less are no notes
/// and are passed over.
class NoteFileReader {
public:
    explicit NoteFileReader(const ReadContext& context, HeadParts parts = HeadParts::All)
        : context_(context), parts_(parts) {}

    /// Reads the file. With a failure there are no notes.
    FileResult Open(const std::filesystem::path& path);
    /// The same from the bytes of a file.
    void OpenBytes(std::string diskBytes);

    /// Goes to the next note; false after the last one.
    bool Next();
    /// Once Next has given false: goes on to what stands behind the last note, as if it were counted. False unless that
    /// is a whole note.
    bool NextUncounted();
    /// The note that Next went to, its texts empty. It may be moved from.
    CNote& Head() { return note_; }
    std::string_view PlainText() const { return texts_.plainText; }
    std::string_view RtfText() const { return texts_.rtfText; }
    /// Takes the note with copies of its texts.
    CNote TakeNote();
    /// The position of the current note among the notes of the file, from 0.
    size_t NoteNumber() const { return taken_ - 1; }

    /// False if the file broke off within the current note.
    bool IsNoteWhole() const { return !stream_->RanOut(); }

    double Version() const { return version_; }
    int32_t Count() const { return count_; }
    /// Once Next has given false: true if the notes aren't all that the file holds. It broke off, holds something
    /// behind its notes or a byte that cuts a text, or has records that are no notes.
    bool IsDamaged() const;
    /// What is wrong with a damaged file, after "it" or "the file".
    const char* DamageText() const;
    /// Once Next has given false: true if something stands behind the notes.
    bool HoldsMore() const;

private:
    const ReadContext& context_;
    HeadParts parts_;
    std::unique_ptr<RecordReader> stream_;
    double version_ = 0.0;
    int32_t count_ = 0, read_ = 0;
    size_t taken_ = 0;
    CNote note_;
    NoteTexts texts_;
};

/// The bytes of a note file for the disk.
std::string NoteFileBytes(std::span<const CNote> notes);

/// Rewrites a note file as a whole, in the current shape.
FileResult SaveNoteFile(const std::filesystem::path& path, std::span<const CNote> notes);

}  // namespace lore
