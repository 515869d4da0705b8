#include "exchange/archive_notes.h"

#include <utility>

#include "base/text.h"
#include "bibliography/source_record.h"
#include "notes/note_record.h"

namespace lore {

// _ExpNotes.dat:
//
//   FixedDouble  version
//   DateField    export date
//   FixedInt     count, then count x entry
//
// An entry, the sources note too, which is the first of the count if there is one:
//
//   note record
//   FixedInt     count, then count x source in the export form
//
// Some files have the sources note between the date and the count, and don't count it. The id of its record, -2112,
// then stands where no count could.
//
// In others an entry is a plain note record: nothing follows that of a note, so that the ids of its sources tell
// something only if the sources note brings these. Nothing or its sources follow the record of that one. No mark tells
// such a file; it doesn't come out even when it is read as one of ours, nor does one of ours as such a file, broken off
// or not, unless it breaks off right behind the record of its only note: then it is one.

namespace {

constexpr size_t kIntWidth = 16;
constexpr size_t kMostHeldBytes = size_t{16} << 20;

std::vector<const CSource*> KnownSources(const CNote& note, const SourceList& sources) {
    LongList ids;
    ids.Merge(note.sources);
    std::vector<const CSource*> known;
    for (const int32_t id : ids) {
        if (const CSource* source = sources.FindSourceByID(id))
            known.push_back(source);
    }
    return known;
}

/// What ReadFixedInt would give, without taking it.
int32_t PeekFixedInt(const RecordReader& stream) {
    std::string_view field = stream.Rest().substr(0, kIntWidth);
    field = field.substr(0, field.find('\0'));
    if (const size_t end = field.find('\n'); end != std::string_view::npos)
        field = field.substr(0, end);
    return ParseInt(field);
}

}  // namespace

ArchiveNote MakeArchiveNote(const CNote& note, const SourceList& sources) {
    ArchiveNote entry{note, {}};
    for (const CSource* source : KnownSources(note, sources))
        entry.sources.push_back(*source);
    return entry;
}

ArchiveNote MakeArchiveNote(const CNote& note, const SourceList& sources, const AuthorList& authors) {
    ArchiveNote entry = MakeArchiveNote(note, sources);
    for (CSource& source : entry.sources)
        EmbedAuthors(source, authors);
    return entry;
}

CNote TakeNote(ArchiveNote& entry) {
    std::string plainText = std::move(entry.note.plainText), rtfText = std::move(entry.note.rtfText);
    CNote note = entry.note;
    note.plainText = std::move(plainText);
    note.rtfText = std::move(rtfText);
    return note;
}

void EmbedAuthors(CSource& source, const AuthorList& authors) {
    source.EmbeddedAuthors.clear();
    for (const int32_t id : source.AuthorIDs) {
        if (const CAuthor* author = authors.FindAuthorByID(id))
            source.EmbeddedAuthors.push_back(*author);
    }
}

ArchiveNote MakeSourcesNote(const SourceList& sources, const DateTime& now) {
    ArchiveNote entry;
    entry.note.id = kSourcesNoteID;
    entry.note.guid = kSourcesNoteGuid;
    entry.note.dateCreated = entry.note.dateEdited = now;
    entry.sources.assign(sources.begin(), sources.end());
    for (const CSource& source : entry.sources)
        entry.note.sources.AddTail(source.SourceID);
    return entry;
}

void WriteArchiveHead(RecordWriter& stream, const DateTime& exportDate, int32_t count) {
    WriteFixedDouble(&stream, kDataVersion);
    WriteDateField(&stream, exportDate);
    WriteFixedInt(&stream, count);
}

void WriteArchiveNote(RecordWriter& stream, const ArchiveNote& entry, const AuthorList& authors) {
    WriteNote(&stream, entry.note);
    WriteFixedInt(&stream, static_cast<int32_t>(entry.sources.size()));
    for (const CSource& source : entry.sources)
        WriteExportSource(&stream, source, authors);
}

void ArchiveNoteWriter::Write(RecordWriter& stream, const CNote& note) {
    WriteNote(&stream, note);
    const std::vector<const CSource*> known = KnownSources(note, sources_);
    WriteFixedInt(&stream, static_cast<int32_t>(known.size()));
    for (const CSource* source : known)
        stream.Append(RecordOf(*source));
}

const std::string& ArchiveNoteWriter::RecordOf(const CSource& source) {
    if (held_ > kMostHeldBytes) {
        records_.clear();
        held_ = 0;
    }
    std::string& record = records_[source.SourceID];
    if (record.empty()) {
        RecordWriter stream;
        WriteExportSource(&stream, source, authors_);
        record = stream.Logical();
        held_ += record.size();
    }
    return record;
}

FileResult ArchiveNoteReader::Open(const std::filesystem::path& path) {
    const FileResult result = OpenRecordFile(path, stream_);
    ReadHead();
    return result;
}

void ArchiveNoteReader::OpenBytes(std::string diskBytes) {
    stream_ = std::make_unique<RecordReader>(std::move(diskBytes));
    ReadHead();
}

void ArchiveNoteReader::ReadHead() {
    version_ = 0.0;
    exportDate_ = context_.now;
    count_ = read_ = passedOver_ = 0;
    sourcesNote_.reset();
    if (!stream_)
        return;
    ReadFixedDouble(stream_.get(), version_);
    if (IsLaterVersion())
        return;
    ReadDateField(stream_.get(), exportDate_);
    if (PeekFixedInt(*stream_) == kSourcesNoteID) {
        ArchiveNote entry;
        ReadEntry(entry);
        KeepSourcesNote(entry);
    }
    ReadFixedInt(stream_.get(), count_);
}

bool ArchiveNoteReader::Next(ArchiveNote& entry) {
    while (read_ < count_ && stream_->WantsEntry()) {
        ++read_;
        ReadEntry(entry);
        if (entry.note.id > 0)
            return true;
        passedOver_ += IsNoteWhole() ? 1 : 0;
        KeepSourcesNote(entry);
    }
    return false;
}

void ArchiveNoteReader::ReadEntry(ArchiveNote& entry) {
    ReadNote(stream_.get(), version_, context_, entry.note);
    ReadSources(entry);
}

void ArchiveNoteReader::ReadSources(ArchiveNote& entry) {
    entry.sources.clear();
    entry.note.sources.RemoveAll();
    ReadCounted(stream_.get(), [&] {
        CSource source;
        ReadExportSource(stream_.get(), version_, context_, source);
        if (source.SourceID <= 0)
            return;
        entry.note.sources.AddTail(source.SourceID);
        entry.sources.push_back(std::move(source));
    });
}

void ArchiveNoteReader::KeepSourcesNote(ArchiveNote& entry) {
    if (entry.note.guid == kSourcesNoteGuid)
        sourcesNote_ = std::move(entry);
}

const char* ArchiveNoteReader::DamageText() const {
    return HoldsMore() ? "holds more than it announces" : "breaks off";
}

std::optional<PlainArchive> ArchiveNoteReader::ReadPlain() {
    if (!stream_ || IsLaterVersion())
        return std::nullopt;
    PlainArchive archive;
    bool isEven = ReadPlainRecords(false, archive);
    if (!isEven && archive.sourcesNote) {
        archive = {};
        isEven = ReadPlainRecords(true, archive);
    }
    return isEven && !archive.notes.empty() ? std::optional(std::move(archive)) : std::nullopt;
}

bool ArchiveNoteReader::ReadPlainRecords(bool sourcesFollow, PlainArchive& archive) {
    stream_->Rewind();
    ReadFixedDouble(stream_.get());
    DateTime exportDate;
    ReadDateField(stream_.get(), exportDate);
    bool isInStep = PeekFixedInt(*stream_) != kSourcesNoteID || ReadPlainRecord(sourcesFollow, archive);
    const int32_t count = ReadFixedInt(stream_.get());
    for (int32_t i = 0; i < count && isInStep; ++i)
        isInStep = ReadPlainRecord(sourcesFollow, archive);
    return isInStep && stream_->AtEnd() && !stream_->RanOut();
}

bool ArchiveNoteReader::ReadPlainRecord(bool sourcesFollow, PlainArchive& archive) {
    ReadContext undated = context_;
    undated.now = DateTime();
    ArchiveNote entry;
    ReadNote(stream_.get(), version_, undated, entry.note);
    // What is read from a wrong place on may end where the file does, but has no date.
    const bool hasDate = !entry.note.dateCreated.IsNull() || !entry.note.dateEdited.IsNull();
    for (DateTime* const date : {&entry.note.dateCreated, &entry.note.dateEdited})
        *date = date->IsNull() ? context_.now : *date;
    if (entry.note.id <= 0 && entry.note.guid == kSourcesNoteGuid) {
        if (sourcesFollow)
            ReadSources(entry);
        archive.sourcesNote = std::move(entry);
    } else if (entry.note.id > 0 && hasDate) {
        archive.notes.push_back(std::move(entry));
    } else {
        return false;
    }
    return !stream_->RanOut();
}

}  // namespace lore
