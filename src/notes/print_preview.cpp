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

FileResult LoadPrintPreview(const std::filesystem::path& path, const ReadContext& context,
                            std::vector<PrintNote>& notes, std::string* version, bool* whole) {
    notes.clear();
    std::unique_ptr<RecordReader> stream;
    const FileResult result = OpenRecordFile(path, stream);
    if (!stream)
        return result;
    const std::string text = ReadCountedString(stream.get());
    if (version)
        *version = text;
    ReadCounted(stream.get(), [&] {
        ReadPrintNote(stream.get(), ParseDouble(text), context, notes.emplace_back());
        if (notes.back().note.id <= 0)
            notes.pop_back();
    });
    if (whole)
        *whole = !stream->RanOut();
    return result;
}

}  // namespace lore
