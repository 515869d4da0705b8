#include "bibliography/bibliography_file.h"

#include <memory>

#include "bibliography/source_record.h"

namespace lore {

Loaded<SourceList> LoadBibliography(const std::filesystem::path& path, const ReadContext& context) {
    std::unique_ptr<RecordReader> stream;
    Loaded<SourceList> loaded;
    loaded.file = OpenRecordFile(path, stream);
    if (!stream)
        return loaded;
    ReadFixedDouble(stream.get());
    ReadCounted(stream.get(), [&] {
        CSource source;
        ReadBibliographySource(stream.get(), context, source);
        if (source.SourceID > 0)
            loaded.value.AddTail(std::move(source));
    });
    loaded.isWhole = !stream->RanOut();
    return loaded;
}

}  // namespace lore
