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

}  // namespace lore
