#pragma once

#include <string>
#include <vector>

#include "bibliography/source_builder.h"
#include "exchange/export_notes.h"
#include "exchange/import_notes.h"
#include "notes/note_book_loader.h"
#include "notes/note_builder.h"
#include "notes/note_finder.h"
#include "support/scripted_ports.h"

namespace lore {

/// How many bytes the disk seems to have left; below 0 for what it has.
extern int64_t bytesLeft;

/// A NoteBook on the disk that exports and imports, with ports that note all they are told.
struct ExchangeBook : UserPorts {
    NoteBookFolder folder;
    ReadWorld world;
    OpenNoteBook book;
    IdCounters counters;
    int reloads = 0;
    ImportChanges* changes = nullptr;  ///< what an import tells of itself

    ExchangeBook() { Load(); }

    void Load() {
        book = {};
        book.paths = folder.paths;
        LoadNoteBook(book, counters, world.context, faults, {});
    }
    std::filesystem::path Attachment(const std::string& name) const { return folder.paths.Attachments() / name; }
    std::set<std::string> AttachmentNames() const { return NamesIn(folder.paths.Attachments()); }
    std::vector<CNote> Notes() { return FindNotes(book.index, book.index.AllIDs(), world.context, faults); }
    ExportJob ForExport() { return {book, folder.data, world.context, {prompts, progress, faults}}; }
    /// The number of notes, -1 for a failure.
    int Export(const std::filesystem::path& target, const std::vector<CNote>& notes,
               ExportedSources sources = ExportedSources::OfNotes) {
        const ArchiveOutcome made = ExportNotes(NotesOfList(notes), target, sources, ForExport());
        return made.Failed() ? -1 : made.notes;
    }
    ImportOutcome Import(const std::filesystem::path& path, ImportChooser& chooser) {
        const auto reload = [this] {
            ++reloads;
            Load();
        };
        return ImportNotes(path, chooser,
                           {book,
                            folder.data,
                            counters,
                            world.context,
                            {prompts, progress, faults},
                            book.index.Count(),
                            reload,
                            changes});
    }
};

/// Takes what the list offers, after a test has had its way with it.
class TestChooser : public ImportChooser {
public:
    std::function<void(ImportComparison&)> change = [](ImportComparison&) {};
    bool cancels = false;
    std::vector<std::string> seen;

    bool ChooseNotes(ImportComparison& comparison, ImportArchive&) override {
        for (const ImportRow& row : comparison.Rows())
            seen.push_back(ImportComparison::StatusText(row));
        change(comparison);
        return !cancels;
    }
};

/// A NoteBook with three sources by three authors, one type, two categories and two notes with files.
inline void FillBook(ExchangeBook& made) {
    const NoteBookPaths& paths = made.folder.paths;
    AuthorList authors = ThreeAuthors();
    authors.SaveAuthors(paths.Authors());
    PutSources(paths, {FullSource(1011), FullSource(1012), FullSource(1013)}, authors);
    CustomTypeList types;
    types.AddType(FullSource(1011).CustomTypeCopy);
    types.SaveTypes(paths.SourceTypes());
    PutCategories(paths, {PathOf({{3, "Lights"}, {4, "Lenses"}}), PathOf({{9, "Places"}})});
    CNote full = FullNote(7);
    full.sourceInfo = {{"{SOURCE 1011}", "p. 7"}};
    CNote day = DayNote(8);
    day.rtfText = "{\\rtf1 Second note}";
    day.plainText = "Second note";
    day.attachments.push_back({0, 1.0, "Log", "0000002.txt", "", 2, false});
    made.folder.Put("SRC0000001011.dat", {full});
    made.folder.Put("DAY01012020.dat", {day});
    PutBytes(made.Attachment("0000001.png"), "a picture");
    PutBytes(made.Attachment("0000002.txt"), std::string(5000, 'l'));
    made.Load();
}

}  // namespace lore
