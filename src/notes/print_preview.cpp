#include "notes/print_preview.h"

#include <memory>

#include "base/text.h"
#include "bibliography/source_record.h"
#include "notes/note_record.h"

namespace lore {

// "PrintPreview.nbf", the only file whose version is a text:
//
//   CountedString  version
//   FixedInt       count, then count x:
//     note record
//     FixedInt       count, then count x source in the bibliography form

namespace {

void ReadPrintNote(RecordReader* stream, double version, const ReadContext& context, PrintNote& entry) {
    ReadNote(stream, version, context, entry.note);
    ReadCounted(stream, [&] {
        ReadBibliographySource(stream, context, entry.sources.emplace_back());
        if (entry.sources.back().SourceID <= 0)
            entry.sources.pop_back();
    });
}

}  // namespace

PrintPreviewWriter::PrintPreviewWriter(size_t count) {
    WriteCountedString(&writer_, kDataVersionText);
    WriteFixedInt(&writer_, static_cast<int32_t>(count));
}

void PrintPreviewWriter::Add(const CNote& note, const std::vector<const CSource*>& sources) {
    WriteNote(&writer_, note);
    WriteFixedInt(&writer_, static_cast<int32_t>(sources.size()));
    for (const CSource* const source : sources)
        WriteBibliographySource(&writer_, *source);
}

Loaded<PrintPreview> LoadPrintPreview(const std::filesystem::path& path, const ReadContext& context) {
    std::unique_ptr<RecordReader> stream;
    Loaded<PrintPreview> loaded;
    loaded.file = OpenRecordFile(path, stream);
    if (!stream)
        return loaded;
    ReadCountedString(stream.get(), loaded.value.version);
    ReadCounted(stream.get(), [&, &notes = loaded.value.notes, number = ParseDouble(loaded.value.version)] {
        ReadPrintNote(stream.get(), number, context, notes.emplace_back());
        if (notes.back().note.id <= 0)
            notes.pop_back();
    });
    loaded.isWhole = !stream->RanOut();
    return loaded;
}

}  // namespace lore
