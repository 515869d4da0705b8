#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "base/loaded.h"
#include "base/record_file.h"
#include "bibliography/source.h"
#include "notes/note.h"
#include "ports/read_context.h"

namespace lore {

/// A note with its sources as they are cited: formatted, in the note's order, ids without a source left out.
struct PrintNote {
    CNote note;
    std::vector<CSource> sources;
};

/// Collects the hand-over file of the print program, note by note, so that large lists aren't held twice.
class PrintPreviewWriter {
public:
    /// `count` notes are added.
    explicit PrintPreviewWriter(size_t count);
    /// The sources are formatted, none is null.
    void Add(const CNote& note, const std::vector<const CSource*>& sources);
    FileResult Save(const std::filesystem::path& path) const { return SaveRecordFile(path, writer_); }

private:
    RecordWriter writer_;
};

/// What a hand-over file holds.
struct PrintPreview {
    std::string version;  ///< the text in front
    std::vector<PrintNote> notes;
};

/// Reads a hand-over file; notes and sources with an id of 0 or less are dropped. More bytes may follow them.
Loaded<PrintPreview> LoadPrintPreview(const std::filesystem::path& path, const ReadContext& context);

}  // namespace lore
