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
    ReadCounted(stream, [&] { ReadBibliographySource(stream, context, entry.sources.emplace_back()); });
}

void WritePrintNote(RecordWriter* stream, const PrintNote& entry) {
    WriteNote(stream, entry.note);
    WriteFixedInt(stream, static_cast<int32_t>(entry.sources.size()));
    for (const CSource& source : entry.sources)
        WriteBibliographySource(stream, source);
}

}  // namespace

FileResult SavePrintPreview(const std::filesystem::path& path, const std::vector<PrintNote>& notes) {
    if (notes.empty())
        return {};
    RecordWriter writer;
    WriteCountedString(&writer, kDataVersionText);
    WriteFixedInt(&writer, static_cast<int32_t>(notes.size()));
    for (const PrintNote& entry : notes)
        WritePrintNote(&writer, entry);
    return SaveRecordFile(path, writer);
}

FileResult LoadPrintPreview(const std::filesystem::path& path, const ReadContext& context,
                            std::vector<PrintNote>& notes, std::string* version) {
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
    return result;
}

}  // namespace lore
