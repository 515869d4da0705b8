#include "printsave/content_source.h"

#include <algorithm>

#include "notes/note_list_document.h"
#include "printsave/note_pictures.h"

namespace lore {

namespace {

constexpr size_t kFirstSources = 100, kFirstNotes = 20;
constexpr int kTextWidth = 642;  // pixels between the margins of the standard paper

PrintContent ComposedNotes(const std::vector<PrintNote>& notes, const NoteBookPaths& paths,
                           const BoardOptions& options) {
    Document document = ComposeNoteList(
        notes, options, [&](const CAttachment& attachment) { return AttachedPicture(paths, attachment, kTextWidth); });
    MakePicturesPlain(document, kTextWidth);
    return PrintContent(std::move(document));
}

}  // namespace

ContentSource SourceOfBibliography(std::shared_ptr<const HandOver> read) {
    if (read->sources.Count() <= kFirstSources)
        return {PrintContent(read->sources)};
    SourceList first;
    for (size_t i = 0; i < kFirstSources; ++i)
        first.AddTail(read->sources[i]);
    return {PrintContent(first), [read] { return PrintContent(read->sources); }};
}

ContentSource SourceOfNotes(std::shared_ptr<const HandOver> read, const NoteBookPaths& paths,
                            const BoardOptions& options) {
    if (read->notes.size() <= kFirstNotes)
        return {ComposedNotes(read->notes, paths, options)};
    const std::vector<PrintNote> first(read->notes.begin(), read->notes.begin() + kFirstNotes);
    return {ComposedNotes(first, paths, options),
            [read, paths, options] { return ComposedNotes(read->notes, paths, options); }};
}

}  // namespace lore
