#include "bibliography/bibliography_file.h"

#include <memory>

#include "bibliography/source_record.h"

namespace lore {

FileResult LoadBibliography(const std::filesystem::path& path, const ReadContext& context, SourceList& sources,
                            bool& whole) {
    sources.RemoveAll();
    whole = false;
    std::unique_ptr<RecordReader> stream;
    const FileResult result = OpenRecordFile(path, stream);
    if (!stream)
        return result;
    ReadFixedDouble(stream.get());
    ReadCounted(stream.get(), [&] {
        CSource source;
        ReadBibliographySource(stream.get(), context, source);
        if (source.SourceID > 0)
            sources.AddTail(std::move(source));
    });
    whole = !stream->RanOut();
    return result;
}

}  // namespace lore
