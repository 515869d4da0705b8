#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/record_file.h"
#include "bibliography/source_list.h"
#include "notes/note.h"
#include "ports/read_context.h"

namespace lore {

/// The record file of an export archive.
inline constexpr char kArchiveNotesName[] = "_ExpNotes.dat";
/// Id and guid of the note that carries the sources of a whole NoteBook. On disk; never change.
inline constexpr int32_t kSourcesNoteID = -2112;
inline constexpr char kSourcesNoteGuid[] = "TEMP_SOURCES_NOTE";

/// A note as it travels: with the full records of its sources, in the note's order.
struct ArchiveNote {
    CNote note;
    std::vector<CSource> sources;
};

/// A note with copies of those of its sources that the list knows.
ArchiveNote MakeArchiveNote(const CNote& note, const SourceList& sources);
/// The same with the authors of the sources in them.
ArchiveNote MakeArchiveNote(const CNote& note, const SourceList& sources, const AuthorList& authors);
/// The note, ready to be stored. The entry keeps all of it but the texts.
CNote TakeNote(ArchiveNote& entry);
/// Puts the records of a source's authors into it, as it travels.
void EmbedAuthors(CSource& source, const AuthorList& authors);
/// The note that carries all sources of a list; it isn't a note of the user.
ArchiveNote MakeSourcesNote(const SourceList& sources, const DateTime& now);

/// What stands before the notes. `count` is the number of notes that follow, the sources note among them: it comes
/// first.
void WriteArchiveHead(RecordWriter& stream, const DateTime& exportDate, int32_t count);
/// One note. Its sources are formatted and carry the records of their authors.
void WriteArchiveNote(RecordWriter& stream, const ArchiveNote& entry, const AuthorList& authors);

/// Writes notes with the records of those of their sources that a list knows: the same as WriteArchiveNote of
/// MakeArchiveNote, without formatting a source for each of its notes.
class ArchiveNoteWriter {
public:
    /// The lists outlive the writer and don't change.
    ArchiveNoteWriter(const SourceList& sources, const AuthorList& authors) : sources_(sources), authors_(authors) {}
    void Write(RecordWriter& stream, const CNote& note);

private:
    const std::string& RecordOf(const CSource& source);

    const SourceList& sources_;
    const AuthorList& authors_;
    std::unordered_map<int32_t, std::string> records_;  // of sources that were written lately, by id
    size_t held_ = 0;
};

/// What an archive holds whose notes are plain records.
struct PlainArchive {
    std::vector<ArchiveNote> notes;  ///< with the ids of their sources as they stand, and without these
    std::optional<ArchiveNote> sourcesNote;
};

/// Walks the notes of an archive's record file of any version up to the present one, in file order.
class ArchiveNoteReader {
public:
    explicit ArchiveNoteReader(const ReadContext& context) : context_(context) {}

    /// Reads the file. With a failure there are no notes.
    FileResult Open(const std::filesystem::path& path);
    /// The same from the bytes of a file.
    void OpenBytes(std::string diskBytes);

    double Version() const { return version_; }
    /// True if the file comes from a later version of the program: then nothing behind the version is read.
    bool IsLaterVersion() const { return version_ > kDataVersion; }
    /// The moment of reading if the file's date can't be read.
    const DateTime& ExportDate() const { return exportDate_; }
    /// How many records the file promises; a damaged file may promise any number.
    int32_t Count() const { return count_; }

    /// Reads the next note; false after the last one. Records with an id of 0 or less are passed over. The ids of the
    /// note's sources are those of the records that came with it, those of 0 or less left out.
    bool Next(ArchiveNote& entry);
    /// False if the file broke off within the note that Next went to.
    bool IsNoteWhole() const { return !stream_->RanOut(); }
    /// Once Next has given false: false if the file held less or more than its count promises.
    bool IsWhole() const { return stream_ && read_ == count_ && !stream_->RanOut() && stream_->AtEnd(); }
    /// The same: true if something stands behind what the file promises.
    bool HoldsMore() const { return stream_ && !stream_->AtEnd(); }
    /// The same: what is wrong with a file that isn't whole, after "it".
    const char* DamageText() const;
    /// How many of the records that the file promises are notes, as far as was read.
    int32_t CountOfNotes() const { return count_ - passedOver_; }
    /// The sources note, once Next has come across it.
    const std::optional<ArchiveNote>& SourcesNote() const { return sourcesNote_; }
    /// For a file that isn't whole: reads it anew as one of plain note records. Nothing unless there are some, all of
    /// them notes, and each byte has its place then. Only Version, ExportDate and SourcesNote are of use after it.
    std::optional<PlainArchive> ReadPlain();

private:
    void ReadHead();
    void ReadEntry(ArchiveNote& entry);
    void ReadSources(ArchiveNote& entry);
    bool ReadPlainRecords(bool sourcesFollow, PlainArchive& archive);
    bool ReadPlainRecord(bool sourcesFollow, PlainArchive& archive);
    void KeepSourcesNote(ArchiveNote& entry);

    const ReadContext& context_;
    std::unique_ptr<RecordReader> stream_;
    double version_ = 0.0;
    DateTime exportDate_;
    int32_t count_ = 0, read_ = 0;
    int32_t passedOver_ = 0;  // of those read, whole records that are no notes
    std::optional<ArchiveNote> sourcesNote_;
};

}  // namespace lore
